#pragma once
// Where the window and printer destinations of a job go. The report library makes the
// pages; the screens (report/ui) show them and talk to the platform's print dialog.
#include "rendered_report.h"

#include <QString>

#include <memory>

namespace tallora::report {

class ReportOutput {
public:
    virtual ~ReportOutput() = default;
    // Destination window: shows the pages in a preview.
    virtual void showWindow(std::shared_ptr<const RenderedReport> report) = 0;
    // Destination printer: the platform's print dialog with `copies` proposed, then the
    // pages to the printer chosen. False when the user cancels the dialog.
    virtual bool printWithDialog(const RenderedReport& report, int copies) = 0;
};

}  // namespace tallora::report
