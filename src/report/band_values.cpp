#include "band_values.h"

#include "context/common_helpers.h"
#include "context/working_context.h"

#include <QDate>
#include <QRegularExpression>

namespace tallora::report {
namespace {

bool isWholeNumber(const QString& text) {
    if (text.isEmpty()) return false;
    for (qsizetype i = (text[0] == u'-' ? 1 : 0); i < text.size(); ++i)
        if (!text[i].isDigit()) return false;
    return text != u"-";
}

// A cell of the engine: an integer is ten-thousandths (Currency), a real is units.
Money moneyOf(const QString& cell) {
    if (cell.isEmpty()) return Money();
    if (isWholeNumber(cell)) return Money::fromUnits(cell.toLongLong());
    return Money::fromDouble(cell.toDouble());
}

bool isZero(const QString& cell) {
    return isWholeNumber(cell) ? cell.toLongLong() == 0 : cell.toDouble() == 0.0;
}

QString numberText(double value) {
    return QString::number(value, 'g', 15);
}

QDate isoDate(const QString& cell) {
    return QDate::fromString(cell.left(10), Qt::ISODate);
}

// An amount as Format_Import writes it with `mark`: "-1.234,56", "87", "0,5".
std::optional<Money> printedAmount(const QString& text, QChar mark) {
    const QString d = QRegularExpression::escape(QString(mark));
    const QString g = QRegularExpression::escape(QString(groupMarkFor(mark)));
    const QRegularExpression pattern(
        QStringLiteral("^-?(\\d{1,3}(%1\\d{3})+|\\d+)(%2\\d+)?$").arg(g, d));
    if (!pattern.match(text).hasMatch()) return std::nullopt;
    return Money::parse(text, mark);
}

}  // namespace

BandValues::BandValues(const CompiledLayout& layout, const ReportRows& rows,
                       const WorkingContext& ctx)
    : l_(layout),
      rows_(rows),
      ctx_(ctx),
      n_(rows.rowCount()),
      levels_(static_cast<int>(layout.groupColumns.size())) {
    changeLevel_.assign(static_cast<std::size_t>(n_), levels_);
    groupStart_.assign(static_cast<std::size_t>(levels_), std::vector<int>(n_, 0));
    groupEnd_.assign(static_cast<std::size_t>(levels_), std::vector<int>(n_, n_));
    for (int r = 1; r < n_; ++r)
        for (int level = 0; level < levels_; ++level) {
            const int c = l_.groupColumns[level];
            if (rows_.cell(r, c).compare(rows_.cell(r - 1, c), Qt::CaseInsensitive) != 0) {
                changeLevel_[r] = level;
                break;
            }
        }
    for (int level = 0; level < levels_; ++level) {
        auto& start = groupStart_[level];
        auto& end = groupEnd_[level];
        for (int r = 1; r < n_; ++r) start[r] = changeLevel_[r] <= level ? r : start[r - 1];
        for (int r = n_ - 2; r >= 0; --r)
            end[r] = changeLevel_[r + 1] <= level ? r + 1 : end[r + 1];
    }
    for (const SumSlot& slot : layout.sums) {
        std::vector<std::int64_t> money(n_ + 1, 0);
        std::vector<double> number(n_ + 1, 0);
        for (int r = 0; r < n_; ++r) {
            const QString& cell = rows.cell(r, slot.column);
            std::int64_t units = slot.money ? moneyOf(cell).units() : 0;
            double value = slot.money ? 0 : cell.toDouble();
            if (slot.minus >= 0) {
                const QString& less = rows.cell(r, slot.minus);
                units -= slot.money ? moneyOf(less).units() : 0;
                value -= slot.money ? 0 : less.toDouble();
            }
            money[r + 1] = money[r] + units;
            number[r + 1] = number[r] + value;
        }
        money_.push_back(std::move(money));
        number_.push_back(std::move(number));
    }
}

std::pair<int, int> BandValues::range(SumScope scope, const BandPlace& where,
                                      const PageProgress& progress) const {
    switch (scope) {
        case SumScope::Group:
            if (where.level < 0 || where.row < 0) return {0, n_};
            return {groupStart_[where.level][where.row], groupEnd_[where.level][where.row]};
        case SumScope::Page:
            return {progress.pageFirstRow, progress.printed};
        case SumScope::Carried:
            return {0, progress.printed};
        case SumScope::Report:
            return {0, n_};
    }
    return {0, 0};
}

Cell BandValues::fieldCell(const CompiledPiece& p, int row) const {
    if (row < 0) return {};
    const QString& cell = rows_.cell(row, p.column);
    if (cell.isNull()) return {};
    switch (p.format) {
        case ValueFormat::Plain:
            return cell;
        case ValueFormat::Amount:
            if (isZero(cell)) return {};
            [[fallthrough]];
        case ValueFormat::Money:
            return moneyOf(cell);
        case ValueFormat::Quantity:
            return cell.toDouble();
        case ValueFormat::Date: {
            const QDate d = isoDate(cell);
            return d.isValid() ? Cell(d) : Cell(cell);
        }
    }
    return cell;
}

Cell BandValues::sumCell(const CompiledPiece& p, const BandPlace& where,
                         const PageProgress& progress) const {
    const auto [from, to] = range(p.scope, where, progress);
    if (p.kind == TextPiece::Kind::Count) return static_cast<qint64>(to - from);
    const auto slot = static_cast<std::size_t>(p.slot);
    if (l_.sums[slot].money) return Money::fromUnits(money_[slot][to] - money_[slot][from]);
    return number_[slot][to] - number_[slot][from];
}

QString BandValues::text(const CompiledPiece& p, const BandPlace& where,
                         const PageProgress& progress) const {
    switch (p.kind) {
        case TextPiece::Kind::Literal:
        case TextPiece::Kind::Formula:
            return p.text;
        case TextPiece::Kind::Field: {
            const Cell c = fieldCell(p, where.row);
            if (const auto* m = std::get_if<Money>(&c)) {
                // Format_Import of a real rounds it as a real: kept for the engine's reals.
                const QString& raw = rows_.cell(where.row, p.column);
                return isWholeNumber(raw) ? Format_Import(ctx_, *m)
                                          : Format_Import(ctx_, raw.toDouble());
            }
            if (const auto* q = std::get_if<double>(&c)) return Format_Quantitat(ctx_, *q);
            if (const auto* d = std::get_if<QDate>(&c)) return d->toString(u"dd/MM/yyyy");
            if (const auto* s = std::get_if<QString>(&c)) return *s;
            return {};
        }
        case TextPiece::Kind::Sum: {
            const Cell c = sumCell(p, where, progress);
            if (const auto* m = std::get_if<Money>(&c)) return Format_Import(ctx_, *m);
            const double v = std::get<double>(c);
            return p.format == ValueFormat::Quantity ? Format_Quantitat(ctx_, v) : numberText(v);
        }
        case TextPiece::Kind::Count:
            return QString::number(std::get<qint64>(sumCell(p, where, progress)));
        case TextPiece::Kind::PageNumber:
        case TextPiece::Kind::PageCount:
            return {};
    }
    return {};
}

QString BandValues::text(const CompiledText& item, const BandPlace& where,
                         const PageProgress& progress) const {
    QString s;
    for (const CompiledPiece& p : item.pieces) s += text(p, where, progress);
    return s;
}

Cell BandValues::cell(const CompiledText& item, const BandPlace& where,
                      const PageProgress& progress) const {
    const CompiledPiece* lone = nullptr;
    int pieces = 0;
    for (const CompiledPiece& p : item.pieces) {
        if (p.kind == TextPiece::Kind::Literal && p.text.trimmed().isEmpty()) continue;
        lone = &p;
        ++pieces;
    }
    if (pieces == 1) {
        switch (lone->kind) {
            case TextPiece::Kind::Field: {
                const Cell c = fieldCell(*lone, where.row);
                const auto* s = std::get_if<QString>(&c);
                if (s && isWholeNumber(*s) && s->size() <= 15 &&
                    !(s->startsWith(u'0') && s->size() > 1) && !s->startsWith(u"-0"))
                    return s->toLongLong();
                return c;
            }
            case TextPiece::Kind::Sum:
            case TextPiece::Kind::Count:
                return sumCell(*lone, where, progress);
            default:
                break;
        }
    }
    const QString printed = text(item, where, progress).trimmed();
    if (printed.isEmpty()) return {};
    if (item.style.align & Qt::AlignRight)
        if (const auto amount = printedAmount(printed, ctx_.decimalMark())) return *amount;
    const QDate date = QDate::fromString(printed, u"dd/MM/yyyy");
    if (date.isValid()) return date;
    return printed;
}

}  // namespace tallora::report
