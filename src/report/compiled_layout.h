#pragma once
// A layout bound to its rows: formulas filled in, fields turned into columns of the rows
// read, lengths turned into dots, fonts into FontBook indexes.
#include "formula.h"
#include "layout.h"
#include "rendered_report.h"
#include "text_fitting.h"

#include <optional>
#include <vector>

namespace tallora::report {

class DataSource;

struct CompiledPiece {
    TextPiece::Kind kind = TextPiece::Kind::Literal;  // formulas arrive as literals
    QString text;
    ValueFormat format = ValueFormat::Plain;
    SumScope scope = SumScope::Report;
    int column = -1;  // a field: its column in the rows read
    int slot = -1;    // a sum: its slot in CompiledLayout::sums
};

struct CompiledText {
    QRectF box;  // dots
    TextStyle style;
    std::vector<CompiledPiece> pieces;
    bool changes = false;        // differs from one place to another (fields, page, sums)
    bool usesPageCount = false;  // known only when every page is laid out
    // The runs of a text that never changes, made once, and the bottom they reach.
    mutable std::optional<std::vector<TextRun>> fixedRuns;
    mutable double fixedBottom = 0;
};

struct CompiledBand {
    BandKind kind = BandKind::Detail;
    int line = 0;
    int level = -1;        // group bands: 0 for the outermost group
    double minHeight = 0;  // dots: the declared height or the lowest line or box
    std::vector<CompiledText> texts;
    std::vector<LineRun> lines;
    std::vector<BoxRun> boxes;
};

struct SumSlot {
    int column = 0;
    int minus = -1;      // a column taken away from `column` row by row, or -1
    bool money = false;  // summed exactly as Money; otherwise as double
};

struct CompiledLayout {
    std::optional<CompiledBand> reportHeader, pageHeader, columnHeader, detail, pageFooter,
        reportFooter;
    bool reportHeaderBelow = false;  // under the page and column headers of the first page
    std::vector<std::optional<CompiledBand>> groupHeaders, groupFooters;  // by level
    std::vector<bool> groupRepeats;                                       // by level
    std::vector<int> groupColumns;                                        // by level
    std::vector<SumSlot> sums;
    std::vector<int> sourceColumns;  // the source column of each column of the rows read

    // The column of the rows read that holds source column `source`, added on first use.
    int rowColumn(int source);
};

// Binds `layout` to `source` (null when the layout has no data statement). Throws
// ReportError "file:line: ..." for a field the source does not have.
CompiledLayout compileLayout(const Layout& layout, DataSource* source, const FormulaSet& formulas,
                             FontBook& fonts);

}  // namespace tallora::report
