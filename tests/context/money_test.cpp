#include "context/money.h"

#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>

using tallora::Money;

TEST(Money, HundredThousandCentsMakeOneThousandExactly) {
    const Money cent = *Money::parse(u"0,01", u',');
    Money sum;
    for (int i = 0; i < 100000; ++i) sum += cent;
    EXPECT_EQ(sum.format(2, u','), QStringLiteral("1.000,00"));
    EXPECT_EQ(sum.units(), 1000 * Money::kScale);
}

TEST(Money, FromDoubleRoundsOnTheDecimalForm) {
    EXPECT_EQ(Money::fromDouble(12.345).units(), 123450);
    EXPECT_EQ(Money::fromDouble(0.1 + 0.2).units(), 3000);
    EXPECT_EQ(Money::fromDouble(1.00005).units(), 10001);
    EXPECT_EQ(Money::fromDouble(-1.00005).units(), -10001);
    EXPECT_EQ(Money::fromDouble(121.0 / 1.21).units(), 1000000);
}

TEST(Money, FormatRoundsHalfAwayFromZero) {
    EXPECT_EQ(Money::fromUnits(123450).format(2, u','), QStringLiteral("12,35"));
    EXPECT_EQ(Money::fromUnits(-123450).format(2, u','), QStringLiteral("-12,35"));
    EXPECT_EQ(Money::fromUnits(123449).format(2, u','), QStringLiteral("12,34"));
    EXPECT_EQ(Money::fromUnits(5000).format(0, u','), QStringLiteral("1"));
    EXPECT_EQ(Money::fromUnits(4999).format(0, u','), QStringLiteral("0"));
    EXPECT_EQ(Money::fromUnits(99995).format(2, u','), QStringLiteral("10,00"));
}

TEST(Money, FormatGroupsThousandsWithEitherMark) {
    const Money m = Money::fromUnits(12345678950);
    EXPECT_EQ(m.format(2, u','), QStringLiteral("1.234.567,90"));
    EXPECT_EQ(m.format(2, u'.'), QStringLiteral("1,234,567.90"));
    EXPECT_EQ(Money::fromUnits(9990000).format(2, u','), QStringLiteral("999,00"));
    EXPECT_EQ(Money::fromUnits(10000000).format(2, u','), QStringLiteral("1.000,00"));
}

TEST(Money, ZeroNeverShowsASign) {
    EXPECT_EQ(Money::fromUnits(-10).format(2, u','), QStringLiteral("0,00"));
    EXPECT_EQ(Money::fromDouble(-0.0).format(2, u','), QStringLiteral("0,00"));
}

TEST(Money, ParseReadsWhatFormatWrites) {
    for (std::int64_t units : {0LL, 1LL, -1LL, 123456789LL, -98765432100LL}) {
        for (QChar mark : {QChar(u','), QChar(u'.')}) {
            const Money m = Money::fromUnits(units);
            EXPECT_EQ(Money::parse(m.format(4, mark), mark), m) << units;
        }
    }
}

TEST(Money, ParseAcceptsBlanksSignsAndGroupMarks) {
    EXPECT_EQ(Money::parse(u"  1.234,5 ", u',')->units(), 12345000);
    EXPECT_EQ(Money::parse(u"-0,5", u',')->units(), -5000);
    EXPECT_EQ(Money::parse(u"+3", u',')->units(), 30000);
    EXPECT_EQ(Money::parse(u",25", u',')->units(), 2500);
    EXPECT_EQ(Money::parse(u"1,234.5", u'.')->units(), 12345000);
    // With the comma as decimal mark a point groups thousands.
    EXPECT_EQ(Money::parse(u"12.5", u',')->units(), 1250000);
}

TEST(Money, ParseRoundsBeyondFourDecimals) {
    EXPECT_EQ(Money::parse(u"0,00005", u',')->units(), 1);
    EXPECT_EQ(Money::parse(u"-0,00005", u',')->units(), -1);
    EXPECT_EQ(Money::parse(u"0,00004", u',')->units(), 0);
}

TEST(Money, ParseRefusesWhatIsNotAnAmount) {
    for (const char16_t* bad : {u"", u"   ", u"-", u"abc", u"12a", u"1,2,3", u"1 000", u"--1", u"1e3",
                                u"12-", u"99999999999999999999"})
        EXPECT_FALSE(Money::parse(bad, u',').has_value()) << QString::fromUtf16(bad).toStdString();
}

TEST(Money, ArithmeticIsExactAndChecked) {
    const Money a = Money::fromUnits(15);
    const Money b = Money::fromUnits(-20);
    EXPECT_EQ((a + b).units(), -5);
    EXPECT_EQ((a - b).units(), 35);
    EXPECT_EQ((-a).units(), -15);
    EXPECT_LT(b, a);
    const Money top = Money::fromUnits(std::numeric_limits<std::int64_t>::max());
    EXPECT_THROW(top + Money::fromUnits(1), std::overflow_error);
    EXPECT_THROW(-Money::fromUnits(std::numeric_limits<std::int64_t>::min()), std::overflow_error);
}

TEST(Money, PlainTextUsesAPointWithoutGrouping) {
    EXPECT_EQ(Money::fromUnits(12345678950).toPlainText(), QStringLiteral("1234567.90"));
    EXPECT_EQ(Money::fromUnits(-5).toPlainText(4), QStringLiteral("-0.0005"));
}
