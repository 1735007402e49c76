#include "report_sheet.h"

#include "band_values.h"
#include "context/working_context.h"
#include "layout.h"

#include <algorithm>
#include <cmath>

namespace tallora::report {
namespace {

// Texts whose tops differ by less than this stand on one line.
const double kSameLine = dotsFromMm(1.0);

bool hasPageNumber(const CompiledText& t) {
    return std::any_of(t.pieces.begin(), t.pieces.end(), [](const CompiledPiece& p) {
        return p.kind == TextPiece::Kind::PageNumber || p.kind == TextPiece::Kind::PageCount;
    });
}

// A sum of the pages so far: in a header, about a page a sheet does not have.
bool hasPageSum(const CompiledText& t) {
    return std::any_of(t.pieces.begin(), t.pieces.end(), [](const CompiledPiece& p) {
        return p.kind == TextPiece::Kind::Sum &&
               (p.scope == SumScope::Page || p.scope == SumScope::Carried);
    });
}

bool isEmpty(const Cell& c) {
    if (std::holds_alternative<std::monostate>(c)) return true;
    const auto* s = std::get_if<QString>(&c);
    return s && s->trimmed().isEmpty();
}

// A band's texts in lines from the top, each line from the left.
std::vector<std::vector<const CompiledText*>> linesOf(const CompiledBand& band) {
    std::vector<const CompiledText*> texts;
    for (const CompiledText& t : band.texts)
        if (!hasPageNumber(t)) texts.push_back(&t);
    std::stable_sort(texts.begin(), texts.end(),
                     [](const auto* a, const auto* b) { return a->box.top() < b->box.top(); });
    std::vector<std::vector<const CompiledText*>> lines;
    for (const CompiledText* t : texts) {
        if (lines.empty() || t->box.top() - lines.back().front()->box.top() >= kSameLine)
            lines.emplace_back();
        lines.back().push_back(t);
    }
    for (auto& line : lines)
        std::stable_sort(line.begin(), line.end(), [](const auto* a, const auto* b) {
            return a->box.left() < b->box.left();
        });
    return lines;
}

class Tabulator {
public:
    Tabulator(const CompiledLayout& layout, const ReportRows& rows, const WorkingContext& ctx)
        : l_(layout),
          values_(layout, rows, ctx),
          levels_(values_.levels()),
          mark_(ctx.decimalMark()) {
        chooseColumns();
    }

    Sheet run(const QString& name) {
        Sheet sheet;
        sheet.name = sheetName(name);
        const BandPlace first{values_.rowCount() > 0 ? 0 : -1, levels_ - 1};
        if (l_.reportHeader && !l_.reportHeaderBelow) titleLines(*l_.reportHeader, first, sheet);
        if (l_.pageHeader) titleLines(*l_.pageHeader, first, sheet);
        if (l_.columnHeader) placed(*l_.columnHeader, first, sheet.headings);
        if (l_.reportHeader && l_.reportHeaderBelow) placed(*l_.reportHeader, first, rows_);
        const int n = values_.rowCount();
        for (int r = 0; r < n; ++r) {
            const int changed = r == 0 ? 0 : values_.changeLevel(r);
            if (r > 0)
                for (int level = levels_ - 1; level >= changed; --level) groupFooter(level, r - 1);
            for (int level = changed; level < levels_; ++level)
                if (l_.groupHeaders[level]) band(*l_.groupHeaders[level], {r, level}, r);
            if (l_.detail) band(*l_.detail, {r, levels_ - 1}, r + 1);
        }
        if (n > 0)
            for (int level = levels_ - 1; level >= 0; --level) groupFooter(level, n - 1);
        if (l_.reportFooter) band(*l_.reportFooter, {n - 1, levels_ - 1}, n);
        sheet.rows = std::move(rows_);
        for (const Column& c : columns_)
            sheet.widths.push_back(std::max(c.date ? 11.0 : 6.0, c.width / dotsFromMm(1.3)));
        return sheet;
    }

private:
    struct Column {
        double left = 0, right = 0, width = 0;
        bool date = false;
    };

    static QString sheetName(QString name) {
        for (const QChar c : QStringLiteral("[]:*?/\\")) name.remove(c);
        name = name.simplified().left(31);
        return name.isEmpty() ? QStringLiteral("Informe") : name;
    }

    static int changing(const CompiledBand& b) {
        return static_cast<int>(std::count_if(b.texts.begin(), b.texts.end(),
                                              [](const CompiledText& t) { return t.changes; }));
    }

    void chooseColumns() {
        if (l_.detail && changing(*l_.detail) > 0) {
            columnBand_ = &*l_.detail;
        } else {
            int most = 0;
            for (const auto* bands : {&l_.groupFooters, &l_.groupHeaders})
                for (const auto& b : *bands)
                    if (b && changing(*b) > most) {
                        most = changing(*b);
                        columnBand_ = &*b;
                    }
            if (!columnBand_ && l_.columnHeader) columnBand_ = &*l_.columnHeader;
        }
        if (!columnBand_) return;
        const bool headings = l_.columnHeader && columnBand_ == &*l_.columnHeader;
        for (const auto& line : linesOf(*columnBand_))
            for (const CompiledText* t : line) {
                if (!headings && !t->changes) continue;
                columnOf_.emplace_back(t, static_cast<int>(columns_.size()));
                const bool date = std::any_of(t->pieces.begin(), t->pieces.end(), [](auto& p) {
                    return p.format == ValueFormat::Date;
                });
                columns_.push_back({t->box.left(), t->box.right(), t->box.width(), date});
            }
    }

    // How far a text of another band stands from column `c`: from the column's edge on the
    // text's side of alignment.
    static double distance(const CompiledText& t, const Column& c) {
        const Qt::Alignment a = t.style.align;
        if (a & Qt::AlignRight) return std::abs(c.right - t.box.right());
        if (a & Qt::AlignHCenter) return std::abs((c.left + c.right) / 2 - t.box.center().x());
        return std::abs(c.left - t.box.left());
    }

    // The nearest column to `t`, or the nearest free one in `row` (-1 when none is).
    int nearest(const CompiledText& t, const SheetRow& row, bool free) const {
        int best = -1;
        for (int i = 0; i < static_cast<int>(columns_.size()); ++i) {
            if (free && !isEmpty(row[i])) continue;
            if (best < 0 || distance(t, columns_[i]) < distance(t, columns_[best])) best = i;
        }
        return best;
    }

    // A line's texts in three rounds: those that make the columns, then the values (sums,
    // counts, amounts), which keep their own cell, the nearest free one when theirs is taken;
    // then the words, in their column, or one beside it when that is taken, or else joined
    // with what it holds in the order they print.
    SheetRow row(const std::vector<const CompiledText*>& line, const BandPlace& where,
                 int printed) const {
        struct Item {
            const CompiledText* text;
            Cell cell;
            int own;
        };
        std::vector<Item> items;
        for (const CompiledText* t : line) {
            Cell cell = values_.cell(*t, where, {0, printed});
            if (isEmpty(cell)) continue;
            const auto own = std::find_if(columnOf_.begin(), columnOf_.end(),
                                          [&](const auto& c) { return c.first == t; });
            items.push_back({t, std::move(cell), own != columnOf_.end() ? own->second : -1});
        }
        if (columns_.empty()) {
            SheetRow all;
            for (Item& i : items) all.push_back(std::move(i.cell));
            return all;
        }
        SheetRow out(columns_.size());
        std::vector<double> lefts(columns_.size(), 0);
        const auto put = [&](int column, Item& i) {
            Cell& into = out[static_cast<std::size_t>(column)];
            const double left = i.text->box.left();
            if (isEmpty(into)) {
                into = std::move(i.cell);
                lefts[column] = left;
                return;
            }
            const QString mine = cellText(i.cell, mark_), theirs = cellText(into, mark_);
            into = left < lefts[column] ? mine + u' ' + theirs : theirs + u' ' + mine;
            lefts[column] = std::min(left, lefts[column]);
        };
        for (Item& i : items)
            if (i.own >= 0) put(i.own, i);
        for (Item& i : items) {
            if (i.own >= 0 || std::holds_alternative<QString>(i.cell)) continue;
            const int free = nearest(*i.text, out, true);
            put(free >= 0 ? free : nearest(*i.text, out, false), i);
        }
        for (Item& i : items) {
            if (i.own >= 0 || !std::holds_alternative<QString>(i.cell)) continue;
            int column = nearest(*i.text, out, false);
            if (!isEmpty(out[column])) {
                for (const int beside : {column - 1, column + 1}) {
                    if (beside < 0 || beside >= static_cast<int>(out.size())) continue;
                    if (!isEmpty(out[beside])) continue;
                    column = beside;
                    break;
                }
            }
            put(column, i);
        }
        return out;
    }

    // Each line of `band` as a row, its texts under their columns; empty lines left out.
    void placed(const CompiledBand& band, const BandPlace& where, std::vector<SheetRow>& out,
                int printed = 0) const {
        // The band the columns come from fills one row, however many lines it has.
        const auto lines = &band == columnBand_
                               ? std::vector<std::vector<const CompiledText*>>{allTexts(band)}
                               : linesOf(band);
        for (const auto& line : lines) {
            SheetRow r = row(line, where, printed);
            if (!std::all_of(r.begin(), r.end(), isEmpty)) out.push_back(std::move(r));
        }
    }

    static std::vector<const CompiledText*> allTexts(const CompiledBand& band) {
        std::vector<const CompiledText*> all;
        for (const auto& line : linesOf(band)) all.insert(all.end(), line.begin(), line.end());
        return all;
    }

    void band(const CompiledBand& b, const BandPlace& where, int printed) {
        placed(b, where, rows_, printed);
    }

    void groupFooter(int level, int lastRow) {
        if (l_.groupFooters[level]) band(*l_.groupFooters[level], {lastRow, level}, lastRow + 1);
    }

    // Each line of a header band as one title row: its texts joined in the first cell.
    void titleLines(const CompiledBand& b, const BandPlace& where, Sheet& sheet) const {
        for (const auto& line : linesOf(b)) {
            QStringList parts;
            for (const CompiledText* t : line) {
                if (hasPageSum(*t)) continue;
                const QString text = values_.text(*t, where).trimmed();
                if (!text.isEmpty()) parts << text;
            }
            if (!parts.isEmpty()) sheet.titles.push_back({parts.join(QStringLiteral("   "))});
        }
    }

    const CompiledLayout& l_;
    BandValues values_;
    const int levels_;
    const QChar mark_;
    const CompiledBand* columnBand_ = nullptr;
    std::vector<Column> columns_;
    std::vector<std::pair<const CompiledText*, int>> columnOf_;
    std::vector<SheetRow> rows_;
};

}  // namespace

Sheet tabulate(const CompiledLayout& layout, const ReportRows& rows, const WorkingContext& ctx,
               const QString& name) {
    return Tabulator(layout, rows, ctx).run(name);
}

}  // namespace tallora::report
