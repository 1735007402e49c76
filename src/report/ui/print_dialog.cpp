#include "print_dialog.h"

#include "report/pdf_output.h"

#include <QPrintDialog>
#include <QPrinter>

namespace tallora::report {

bool printWithPrintDialog(const RenderedReport& report, int copies, QWidget* parent) {
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(report.title);
    printer.setPageSize(report.pageLayout.pageSize());
    printer.setPageOrientation(report.pageLayout.orientation());
    printer.setCopyCount(copies);
    QPrintDialog dialog(&printer, parent);
    dialog.setWindowTitle(report.title);
    dialog.setMinMax(1, report.pageCount());
    if (dialog.exec() != QDialog::Accepted) return false;
    printPages(report, printer);
    return true;
}

}  // namespace tallora::report
