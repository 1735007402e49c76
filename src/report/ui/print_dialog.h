#pragma once
#include "report/rendered_report.h"

class QWidget;

namespace tallora::report {

// The platform's print dialog with `copies` proposed, then the pages to the printer
// chosen there. False when the dialog is cancelled; throws ReportError when the printer
// cannot be started.
bool printWithPrintDialog(const RenderedReport& report, int copies, QWidget* parent);

}  // namespace tallora::report
