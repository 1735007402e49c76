#include "money.h"

#include "decimal_text.h"

#include <limits>
#include <stdexcept>

namespace tallora {
namespace {

std::int64_t checkedAdd(std::int64_t a, std::int64_t b) {
    std::int64_t result = 0;
    if (__builtin_add_overflow(a, b, &result)) throw std::overflow_error("amount out of range");
    return result;
}

std::int64_t unitsFromDigits(const DecimalDigits& d) {
    std::int64_t magnitude = 0;
    for (char c : d.integer + d.fraction) {
        if (__builtin_mul_overflow(magnitude, 10, &magnitude) ||
            __builtin_add_overflow(magnitude, c - '0', &magnitude))
            throw std::overflow_error("amount out of range");
    }
    return d.negative ? -magnitude : magnitude;
}

}  // namespace

QChar groupMarkFor(QChar decimalMark) { return decimalMark == u'.' ? u',' : u'.'; }

Money Money::fromDouble(double value) { return Money(unitsFromDigits(roundDouble(value, 4))); }

std::optional<Money> Money::parse(QStringView text, QChar decimalMark) {
    const QStringView s = text.trimmed();
    const QChar groupMark = groupMarkFor(decimalMark);
    qsizetype i = 0;
    bool negative = false;
    if (i < s.size() && (s[i] == u'-' || s[i] == u'+')) negative = s[i++] == u'-';
    std::string integer;
    std::string fraction;
    bool inFraction = false;
    for (; i < s.size(); ++i) {
        const QChar c = s[i];
        if (c.isDigit() && c.unicode() < 128) {
            (inFraction ? fraction : integer) += static_cast<char>(c.unicode());
        } else if (c == decimalMark && !inFraction) {
            inFraction = true;
        } else if (c == groupMark && !inFraction) {
            continue;
        } else {
            return std::nullopt;
        }
    }
    if (integer.empty() && fraction.empty()) return std::nullopt;
    if (integer.empty()) integer = "0";
    // Beyond four decimals the entry rounds half away from zero, like any other amount.
    const bool roundUp = fraction.size() > 4 && fraction[4] >= '5';
    fraction.resize(4, '0');
    try {
        std::int64_t units = unitsFromDigits({negative, integer, fraction});
        if (roundUp) units = checkedAdd(units, negative ? -1 : 1);
        return Money(units);
    } catch (const std::overflow_error&) {
        return std::nullopt;
    }
}

QString Money::format(int decimals, QChar decimalMark) const {
    const DecimalDigits d = roundTenThousandths(units_, decimals);
    return QString::fromStdString(groupDigits(d, static_cast<char>(groupMarkFor(decimalMark).unicode()),
                                              static_cast<char>(decimalMark.unicode())));
}

QString Money::toPlainText(int decimals) const {
    DecimalDigits d = roundTenThousandths(units_, decimals);
    std::string out = d.negative ? "-" : "";
    out += d.integer;
    if (!d.fraction.empty()) out += "." + d.fraction;
    return QString::fromStdString(out);
}

Money Money::operator-() const {
    if (units_ == std::numeric_limits<std::int64_t>::min())
        throw std::overflow_error("amount out of range");
    return Money(-units_);
}

Money& Money::operator+=(Money other) {
    units_ = checkedAdd(units_, other.units_);
    return *this;
}

Money& Money::operator-=(Money other) { return *this += -other; }

}  // namespace tallora
