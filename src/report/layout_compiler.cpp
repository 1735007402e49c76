#include "compiled_layout.h"

#include "qr_code.h"
#include "report_data.h"
#include "report_error.h"

namespace tallora::report {
namespace {

class Compiler {
public:
    Compiler(const Layout& layout, DataSource* source, const FormulaSet& formulas, FontBook& fonts,
             CompiledLayout& out)
        : layout_(layout), source_(source), formulas_(formulas), fonts_(fonts), out_(out) {}

    int column(const QString& field, int line) {
        if (!source_)
            throw ReportError(
                QStringLiteral("%1:%2: field \"%3\", but the layout has no data statement")
                    .arg(layout_.path)
                    .arg(line)
                    .arg(field));
        const int c = source_->columnIndex(field);
        if (c < 0)
            throw ReportError(
                QStringLiteral("%1:%2: unknown field \"%3\": \"%4\" of %5 has no such field")
                    .arg(layout_.path)
                    .arg(line)
                    .arg(field, source_->name(), source_->path()));
        return out_.rowColumn(c);
    }

    CompiledBand band(const Band& b, int level) {
        CompiledBand cb;
        cb.kind = b.kind;
        cb.line = b.line;
        cb.level = level;
        cb.minHeight = dotsFromMm(b.height);
        for (const TextItem& t : b.texts)
            if (shown(t.when)) cb.texts.push_back(text(t));
        for (const LineItem& l : b.lines) {
            if (!shown(l.when)) continue;
            cb.lines.push_back({QPointF(dotsFromMm(l.from.x()), dotsFromMm(l.from.y())),
                                QPointF(dotsFromMm(l.to.x()), dotsFromMm(l.to.y())),
                                dotsFromMm(l.width), l.color.rgba()});
            cb.minHeight =
                std::max(cb.minHeight, dotsFromMm(std::max(l.from.y(), l.to.y()) + l.width / 2));
        }
        for (const BoxItem& x : b.boxes) {
            if (!shown(x.when)) continue;
            const QRectF r(dotsFromMm(x.box.x()), dotsFromMm(x.box.y()), dotsFromMm(x.box.width()),
                           dotsFromMm(x.box.height()));
            cb.boxes.push_back(
                {r, x.fill.isValid() ? x.fill.rgba() : 0u, dotsFromMm(x.border), x.color.rgba()});
            cb.minHeight = std::max(cb.minHeight, r.bottom());
        }
        for (const QrItem& q : b.qrs) {
            if (!shown(q.when)) continue;
            const QRectF area(dotsFromMm(q.at.x()), dotsFromMm(q.at.y()), dotsFromMm(q.size),
                              dotsFromMm(q.size));
            for (const QRectF& module : qrModules(qrText(q), area))
                cb.boxes.push_back({module, 0xff000000u, 0, 0xff000000u});
            // The quiet zone under the code, about four modules, stays clear.
            cb.minHeight = std::max(cb.minHeight, area.bottom() + area.height() * 0.12);
        }
        return cb;
    }

private:
    QString qrText(const QrItem& q) const {
        QString out;
        for (const TextPiece& p : q.pieces)
            out += p.kind == TextPiece::Kind::Formula ? formulas_.value(p.text) : p.text;
        return out.trimmed();
    }

    // An item with `when` prints only when one of its formulas ("a|b") holds a value other
    // than a zero amount.
    bool shown(const QString& when) const {
        if (when.isEmpty()) return true;
        for (const QString& name : when.split(u'|')) {
            QString value = formulas_.value(name.trimmed()).trimmed();
            value.remove(u'.').remove(u',').remove(u'0').remove(u'-').remove(u'+');
            if (!value.isEmpty()) return true;
        }
        return false;
    }

    CompiledText text(const TextItem& t) {
        CompiledText ct;
        ct.box = QRectF(dotsFromMm(t.box.x()), dotsFromMm(t.box.y()), dotsFromMm(t.box.width()),
                        dotsFromMm(t.box.height()));
        ct.style = {fonts_.indexOf(t.font), t.color.rgba(), t.align, t.wrap};
        for (const TextPiece& p : t.pieces) {
            CompiledPiece cp;
            cp.kind = p.kind;
            cp.format = p.format;
            cp.scope = p.scope;
            switch (p.kind) {
                case TextPiece::Kind::Literal:
                    cp.text = p.text;
                    break;
                case TextPiece::Kind::Formula:
                    cp.kind = TextPiece::Kind::Literal;
                    cp.text = formulas_.value(p.text);
                    break;
                case TextPiece::Kind::Field:
                    cp.column = column(p.text, t.line);
                    ct.changes = true;
                    break;
                case TextPiece::Kind::Sum:
                    cp.slot = slot(
                        column(p.text, t.line), p.minus.isEmpty() ? -1 : column(p.minus, t.line),
                        p.format == ValueFormat::Money || p.format == ValueFormat::Amount);
                    ct.changes = ct.changes || p.scope != SumScope::Report;
                    break;
                case TextPiece::Kind::Count:
                    ct.changes = ct.changes || p.scope != SumScope::Report;
                    break;
                case TextPiece::Kind::PageNumber:
                    ct.changes = true;
                    break;
                case TextPiece::Kind::PageCount:
                    ct.usesPageCount = true;
                    break;
            }
            ct.pieces.push_back(std::move(cp));
        }
        return ct;
    }

    int slot(int column, int minus, bool money) {
        for (size_t i = 0; i < out_.sums.size(); ++i)
            if (out_.sums[i].column == column && out_.sums[i].minus == minus &&
                out_.sums[i].money == money)
                return static_cast<int>(i);
        out_.sums.push_back({column, minus, money});
        return static_cast<int>(out_.sums.size() - 1);
    }

    const Layout& layout_;
    DataSource* source_;
    const FormulaSet& formulas_;
    FontBook& fonts_;
    CompiledLayout& out_;
};

}  // namespace

int CompiledLayout::rowColumn(int source) {
    for (size_t i = 0; i < sourceColumns.size(); ++i)
        if (sourceColumns[i] == source) return static_cast<int>(i);
    sourceColumns.push_back(source);
    return static_cast<int>(sourceColumns.size() - 1);
}

CompiledLayout compileLayout(const Layout& layout, DataSource* source, const FormulaSet& formulas,
                             FontBook& fonts) {
    CompiledLayout out;
    Compiler c(layout, source, formulas, fonts, out);
    const QStringList groups = layout.groupFields();
    out.groupHeaders.resize(groups.size());
    out.groupFooters.resize(groups.size());
    out.groupRepeats.resize(groups.size());
    for (int level = 0; level < groups.size(); ++level) {
        const Band* header = layout.band(BandKind::GroupHeader, groups[level]);
        out.groupColumns.push_back(c.column(groups[level], header->line));
        out.groupRepeats[level] = header->repeat;
    }
    for (const Band& b : layout.bands) {
        int level = -1;
        for (int i = 0; i < groups.size() && !b.field.isEmpty(); ++i)
            if (groups[i].compare(b.field, Qt::CaseInsensitive) == 0) level = i;
        CompiledBand cb = c.band(b, level);
        switch (b.kind) {
            case BandKind::ReportHeader:
                out.reportHeaderBelow = b.below;
                out.reportHeader = std::move(cb);
                break;
            case BandKind::PageHeader:
                out.pageHeader = std::move(cb);
                break;
            case BandKind::ColumnHeader:
                out.columnHeader = std::move(cb);
                break;
            case BandKind::GroupHeader:
                out.groupHeaders[level] = std::move(cb);
                break;
            case BandKind::Detail:
                out.detail = std::move(cb);
                break;
            case BandKind::GroupFooter:
                out.groupFooters[level] = std::move(cb);
                break;
            case BandKind::PageFooter:
                out.pageFooter = std::move(cb);
                break;
            case BandKind::ReportFooter:
                out.reportFooter = std::move(cb);
                break;
        }
    }
    return out;
}

}  // namespace tallora::report
