#pragma once
// A report layout as read from its .rpt file (layout_reader.h tells the text form).
// Lengths are millimetres, font sizes points; each part keeps the line it came from so
// that a fault found later (a field the data do not have) still names its line.
#include <QColor>
#include <QPageLayout>
#include <QPageSize>
#include <QRectF>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace tallora::report {

enum class BandKind {
    ReportHeader,  // once, at the top of the first page
    PageHeader,    // at the top of every page
    ColumnHeader,  // under the page header, on every page
    GroupHeader,   // before the rows of each value of its field
    Detail,        // once per row
    GroupFooter,   // after the rows of each value of its field
    PageFooter,    // at the foot of every page
    ReportFooter,  // once, after the last row
};

// How a value is written.
enum class ValueFormat {
    Plain,     // as stored
    Money,     // Format_Import: an integer is ten-thousandths (Currency), a real is units
    Amount,    // as Money, but blank for zero: the in and out columns of a statement
    Quantity,  // Format_Quantitat
    Date,      // dd/mm/yyyy from YYYY-MM-DD
};

// Which rows a sum or a count covers.
enum class SumScope {
    Group,    // the rows of the group the band belongs to (the innermost for the detail)
    Page,     // the rows printed so far on this page
    Carried,  // the rows printed so far, pages before included
    Report,   // every row of the report
};

// One part of a text: a literal, or a value filled in at print time.
struct TextPiece {
    enum class Kind { Literal, Formula, Field, Sum, Count, PageNumber, PageCount };
    Kind kind = Kind::Literal;
    QString text;  // the literal, the formula's name or the field's name
    ValueFormat format = ValueFormat::Plain;
    SumScope scope = SumScope::Report;
    QString minus = {};  // a sum of `text` less this field, row by row; empty for a plain sum
};

struct FontSpec {
    QString family;
    double size = 9;  // points
    bool bold = false;
    bool italic = false;
    bool operator==(const FontSpec&) const = default;
};

struct TextItem {
    int line = 0;
    QRectF box;  // h 0: one line of the font
    FontSpec font;
    QColor color = Qt::black;
    Qt::Alignment align = Qt::AlignLeft;
    bool wrap = false;  // else a text too long is cut with an ellipsis
    std::vector<TextPiece> pieces;
    QString when;  // a formula: the item prints only when it holds a value (see layout_reader.h)
};

struct LineItem {
    int line = 0;
    QPointF from, to;
    double width = 0.2;
    QColor color = Qt::black;
    QString when;
};

struct BoxItem {
    int line = 0;
    QRectF box;
    QColor fill;  // invalid: no fill
    double border = 0;
    QColor color = Qt::black;
    QString when;
};

// A QR code of a text made of literals and formulas, `size` mm square, drawn as boxes.
struct QrItem {
    int line = 0;
    QPointF at;
    double size = 30;
    std::vector<TextPiece> pieces;
    QString when;
};

struct Band {
    BandKind kind = BandKind::Detail;
    int line = 0;
    double height = 0;
    QString field;        // group bands
    bool repeat = false;  // a group header printed again on the pages its group continues on
    bool below = false;   // a report header printed under the first page's headers
    std::vector<TextItem> texts;
    std::vector<LineItem> lines;
    std::vector<BoxItem> boxes;
    std::vector<QrItem> qrs;
};

struct DataSpec {
    int line = 0;
    int file = 0;       // index of the job's DataFiles
    QString source;     // table or stored query
    QStringList order;  // "+field" / "-field", when the job gives no SortFields
};

// Values of a second table for each row: the first row of `source` (in DataFiles(file))
// whose `key` equals the row's `field`.
struct JoinRule {
    int line = 0;
    int file = 0;
    QString source;
    QString key;
    QString field;
    QString as;  // the name its fields go by, so that one table can be joined twice
};

struct Layout {
    QString path;
    QPageSize pageSize{QPageSize::A4};
    QPageLayout::Orientation orientation = QPageLayout::Portrait;
    QMarginsF margins{15, 12, 15, 12};  // left, top, right, bottom
    FontSpec font{QStringLiteral("DejaVu Sans"), 9, false, false};
    std::optional<DataSpec> data;
    std::vector<JoinRule> joins;
    std::vector<Band> bands;

    // The band of that kind (and group field), or null.
    const Band* band(BandKind kind, const QString& field = {}) const;
    // The group fields, outermost first, as the group headers are declared.
    QStringList groupFields() const;
};

}  // namespace tallora::report
