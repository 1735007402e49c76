#pragma once
// Money: an exact amount in ten-thousandths of the currency unit.
//
// Amounts are stored and summed in this form so that long sums balance to the cent; rate
// products (IVA, RE, IRPF) are worked in double and come back through fromDouble.
#include <QString>
#include <QStringView>

#include <compare>
#include <cstdint>
#include <optional>

namespace tallora {

class Money {
public:
    static constexpr std::int64_t kScale = 10000;

    constexpr Money() = default;
    static constexpr Money fromUnits(std::int64_t tenThousandths) { return Money(tenThousandths); }
    // Rounds half away from zero to four decimals, on the value's shortest decimal form.
    static Money fromDouble(double value);
    // Reads an amount written with `decimalMark` ('.' or ','); the other of the two is taken
    // as a thousands mark and skipped. Blanks around, a leading sign and more than four
    // decimals (rounded) are accepted; anything else, or an amount beyond the range, is not.
    static std::optional<Money> parse(QStringView text, QChar decimalMark);

    constexpr std::int64_t units() const { return units_; }
    double toDouble() const { return static_cast<double>(units_) / kScale; }
    // Grouped display form with `decimals` places (0 to 4), rounded half away from zero.
    QString format(int decimals, QChar decimalMark) const;
    // Plain form with a point and no grouping, as SQL and interchange files take it.
    QString toPlainText(int decimals = 2) const;

    Money operator-() const;
    Money& operator+=(Money other);
    Money& operator-=(Money other);
    friend Money operator+(Money a, Money b) { return a += b; }
    friend Money operator-(Money a, Money b) { return a -= b; }
    friend constexpr auto operator<=>(Money, Money) = default;
    friend constexpr bool operator==(Money, Money) = default;

private:
    constexpr explicit Money(std::int64_t units) : units_(units) {}
    std::int64_t units_ = 0;
};

// The character that groups thousands when `decimalMark` separates decimals.
QChar groupMarkFor(QChar decimalMark);

}  // namespace tallora
