#pragma once
// Laid-out pages to a PDF file and to a printer.
#include "rendered_report.h"

#include <QString>

class QPrinter;

namespace tallora::report {

// Writes every page to `path` through a temporary file that takes its name only when the
// whole document is written: a fault leaves no partial file and an older file untouched.
// Throws ReportError naming the file.
void writePdf(const RenderedReport& report, const QString& path);

// Paints the pages on `printer` (those of its page range when one is chosen), whose copies,
// name or output file the caller has set.
// Throws ReportError when the printer cannot be started.
void printPages(const RenderedReport& report, QPrinter& printer);

}  // namespace tallora::report
