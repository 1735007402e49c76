#pragma once
// A report as one spreadsheet sheet rather than pages: what a book, listing or ledger prints,
// read through the same layout and rows, with amounts, dates and numbers as values.
//
//   titles    the report header (unless it stands below the headers) and the page header,
//             one row a line of the layout, its texts side by side in the first cell;
//   headings  the column header, one row a line, each text under the column it stands over;
//   rows      one row a detail, and the group headers and footers and the report footer
//             (one row a line) where the pages print them, their texts in the columns they
//             stand over: a group's sums under the amounts they add up.
//
// The columns are the detail band's texts from left to right (line by line, when the detail
// has more than one); a layout without details takes those of its busiest group band. The
// page footer, page numbers and the headers' sums of the page and of the pages before are
// left out: a sheet has no pages.
#include "compiled_layout.h"
#include "context/fwd.h"
#include "report_data.h"
#include "spreadsheet.h"

namespace tallora::report {

// `name` names the sheet (the report's window title); characters a sheet's name cannot hold
// are dropped and it is cut to 31.
Sheet tabulate(const CompiledLayout& layout, const ReportRows& rows, const WorkingContext& ctx,
               const QString& name);

}  // namespace tallora::report
