#include "qt_report_output.h"

#include "print_dialog.h"
#include "report_preview.h"

namespace tallora::report {

void QtReportOutput::showWindow(std::shared_ptr<const RenderedReport> report) {
    auto* preview = new ReportPreview(std::move(report), dialogs_);
    if (hook_) {
        hook_(preview);
        return;
    }
    preview->setAttribute(Qt::WA_DeleteOnClose);
    preview->show();
}

bool QtReportOutput::printWithDialog(const RenderedReport& report, int copies) {
    return printWithPrintDialog(report, copies, parent_);
}

}  // namespace tallora::report
