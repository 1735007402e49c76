#pragma once
// What the texts of a compiled layout's bands hold over its rows: the fields of a row, and the
// sums and counts of a group, a page or the whole report. The paginator writes them as text;
// a report's spreadsheet keeps amounts, dates and numbers as values. One reading for both, so
// a book saved as a spreadsheet holds what its pages print.
#include "compiled_layout.h"
#include "context/fwd.h"
#include "report_data.h"
#include "spreadsheet.h"

#include <cstdint>
#include <vector>

namespace tallora::report {

// Where a band is read: its row (-1 when there is none) and the level of its group sums.
struct BandPlace {
    int row = -1;
    int level = -1;
};

// The rows laid out so far, for the sums and counts of a page and of the pages before.
struct PageProgress {
    int pageFirstRow = 0;
    int printed = 0;
};

class BandValues {
public:
    BandValues(const CompiledLayout& layout, const ReportRows& rows, const WorkingContext& ctx);

    int rowCount() const { return n_; }
    int levels() const { return levels_; }
    // The outermost group level whose value changes at `row` (levels() when none does).
    int changeLevel(int row) const { return changeLevel_[static_cast<std::size_t>(row)]; }

    // A piece as printed. Page numbers are the paginator's own and come out empty here.
    QString text(const CompiledPiece& piece, const BandPlace& where,
                 const PageProgress& progress = {}) const;
    // A whole text as printed, page numbers left out.
    QString text(const CompiledText& item, const BandPlace& where,
                 const PageProgress& progress = {}) const;
    // A whole text as a spreadsheet's cell: a lone amount, date, quantity, sum or count keeps
    // its value; a right-aligned text that reads as an amount (a total handed in by a formula)
    // becomes one; a lone whole number without leading zeros becomes a number; anything else
    // is its printed text.
    Cell cell(const CompiledText& item, const BandPlace& where,
              const PageProgress& progress = {}) const;

private:
    std::pair<int, int> range(SumScope scope, const BandPlace& where,
                              const PageProgress& progress) const;
    Cell fieldCell(const CompiledPiece& p, int row) const;
    Cell sumCell(const CompiledPiece& p, const BandPlace& where,
                 const PageProgress& progress) const;

    const CompiledLayout& l_;
    const ReportRows& rows_;
    const WorkingContext& ctx_;
    const int n_;
    const int levels_;
    std::vector<int> changeLevel_;
    std::vector<std::vector<int>> groupStart_, groupEnd_;
    // Prefix sums of every slot, so that any run of rows sums in constant time.
    std::vector<std::vector<std::int64_t>> money_;
    std::vector<std::vector<double>> number_;
};

}  // namespace tallora::report
