#include "context/common_helpers.h"
#include "context/working_context.h"

#include <gtest/gtest.h>

using namespace tallora;

namespace {

WorkingContext contextWith(const QString& moneda, int decimal) {
    WorkingContext ctx;
    ctx.Moneda = moneda;
    ctx.Decimal = decimal;
    return ctx;
}

}  // namespace

TEST(FormatImport, TwoDecimalsWithTheConfiguredMarks) {
    EXPECT_EQ(Format_Import(contextWith("Euros", 44), 12.345), QStringLiteral("12,35"));
    EXPECT_EQ(Format_Import(contextWith("Euros", 46), 12.345), QStringLiteral("12.35"));
    EXPECT_EQ(Format_Import(contextWith("Euros", 44), 1234.5), QStringLiteral("1.234,50"));
    EXPECT_EQ(Format_Import(contextWith("Euros", 46), 1234.5), QStringLiteral("1,234.50"));
    EXPECT_EQ(Format_Import(contextWith("Euros", 44), -1234567.891), QStringLiteral("-1.234.567,89"));
    EXPECT_EQ(Format_Import(contextWith("Euros", 44), 0.0), QStringLiteral("0,00"));
}

TEST(FormatImport, PesetasHaveNoDecimals) {
    EXPECT_EQ(Format_Import(contextWith("Ptes.", 44), 1234.5), QStringLiteral("1.235"));
    EXPECT_EQ(Format_Import(contextWith("Ptes.", 44), 1234.4), QStringLiteral("1.234"));
    EXPECT_EQ(Format_Import(contextWith("Ptes.", 44), Money::fromUnits(12345000)), QStringLiteral("1.235"));
}

TEST(FormatImport, OnlyTheExactPesetaWordDropsDecimals) {
    EXPECT_EQ(Format_Import(contextWith("ptes.", 44), 1234.5), QStringLiteral("1.234,50"));
    EXPECT_EQ(Format_Import(contextWith("Ptes", 44), 1234.5), QStringLiteral("1.234,50"));
    EXPECT_EQ(Format_Import(contextWith("", 44), 1234.5), QStringLiteral("1.234,50"));
}

TEST(FormatImport, MoneyAndDoubleAgree) {
    const WorkingContext ctx = contextWith("Euros", 44);
    EXPECT_EQ(Format_Import(ctx, Money::fromUnits(123450)), QStringLiteral("12,35"));
    EXPECT_EQ(Format_Import(ctx, Money::fromDouble(2.675)), Format_Import(ctx, 2.675));
    EXPECT_EQ(Format_Import(ctx, 2.675), QStringLiteral("2,68"));
}

TEST(FormatQuantitat, ThreeDecimalsWhateverTheCurrency) {
    EXPECT_EQ(Format_Quantitat(contextWith("Ptes.", 44), 1234.5), QStringLiteral("1.234,500"));
    EXPECT_EQ(Format_Quantitat(contextWith("Euros", 46), 2.0005), QStringLiteral("2.001"));
    EXPECT_EQ(Format_Quantitat(contextWith("Euros", 44), 1.00049), QStringLiteral("1,000"));
}

TEST(NetejaText, ApostropheBecomesAcuteAndPercentPlusVanish) {
    QString text = QStringLiteral("d'Or 50% + IVA");
    const QString result = Neteja_Text(text);
    EXPECT_EQ(result, QStringLiteral("d\u00B4Or 50  IVA"));
    EXPECT_EQ(text, result) << "the argument is changed too";
}

TEST(NetejaText, DoubleQuotesAndOtherCharactersPass) {
    QString text = QStringLiteral("Bar \"El Sol\" ñ, ç; 100€ * ? _");
    EXPECT_EQ(Neteja_Text(text), QStringLiteral("Bar \"El Sol\" ñ, ç; 100€ * ? _"));
    QString many = QStringLiteral("''%%++");
    EXPECT_EQ(Neteja_Text(many), QStringLiteral("\u00B4\u00B4"));
}

TEST(TeclaDecimal, TheOtherMarkBecomesTheConfiguredOne) {
    WorkingContext ctx = contextWith("Euros", 44);
    int key = '.';
    EXPECT_EQ(Tecla_Decimal(ctx, key), ',');
    EXPECT_EQ(key, ',');
    key = ',';
    EXPECT_EQ(Tecla_Decimal(ctx, key), ',');
    ctx.Decimal = 46;
    key = ',';
    EXPECT_EQ(Tecla_Decimal(ctx, key), '.');
    key = '.';
    EXPECT_EQ(Tecla_Decimal(ctx, key), '.');
    for (int other : {int('0'), int('9'), int('-'), int('a'), 8, 13}) {
        key = other;
        EXPECT_EQ(Tecla_Decimal(ctx, key), other);
    }
}

TEST(EsNumeric, SignAloneIsNumericEmptyIsNot) {
    const WorkingContext ctx = contextWith("Euros", 44);
    EXPECT_TRUE(Es_Numeric(ctx, "-"));
    EXPECT_FALSE(Es_Numeric(ctx, ""));
    EXPECT_TRUE(Es_Numeric(ctx, "12"));
    EXPECT_TRUE(Es_Numeric(ctx, "-12,5"));
    EXPECT_TRUE(Es_Numeric(ctx, "1.234,56"));
    EXPECT_TRUE(Es_Numeric(ctx, ",5"));
    EXPECT_FALSE(Es_Numeric(ctx, "12,5,1"));
    EXPECT_FALSE(Es_Numeric(ctx, "abc"));
    EXPECT_FALSE(Es_Numeric(ctx, "+"));
    EXPECT_FALSE(Es_Numeric(ctx, "--"));
}

TEST(EsNumeric, FollowsTheConfiguredMark) {
    const WorkingContext point = contextWith("Euros", 46);
    EXPECT_TRUE(Es_Numeric(point, "1,234.56"));
    EXPECT_FALSE(Es_Numeric(point, "1.234.56"));
}

TEST(NomesDigits, DigitsInOrderOrOneOrZero) {
    EXPECT_EQ(Nomes_Digits("A-12/3"), 123);
    EXPECT_EQ(Nomes_Digits("ABC"), 1);
    EXPECT_EQ(Nomes_Digits(""), 0);
    EXPECT_EQ(Nomes_Digits("007"), 7);
    EXPECT_EQ(Nomes_Digits("FRA-2024-000123"), 2024000123);
    EXPECT_EQ(Nomes_Digits("F2024000001234"), 1234);  // beyond 32 bits: the last nine digits
}

TEST(NoLogic, TrueOnlyForZero) {
    EXPECT_TRUE(No_Logic(0));
    EXPECT_FALSE(No_Logic(-1));
    EXPECT_FALSE(No_Logic(1));
}

TEST(ColorFocus, PaleGreenOnFocusWhiteOtherwise) {
    EXPECT_EQ(Color_Focus("focus"), QStringLiteral("&HC0FFC0"));
    EXPECT_EQ(Color_Focus("nofocus"), QStringLiteral("&HFFFFFF"));
    EXPECT_EQ(Color_Focus("Focus"), QStringLiteral("&HFFFFFF"));
    EXPECT_EQ(rgbFromBgrText(Color_Focus("focus")), 0xC0FFC0u);
    EXPECT_EQ(rgbFromBgrText("&H0000FF"), 0xFF0000u);  // BGR: red is the low byte
    EXPECT_FALSE(rgbFromBgrText("C0FFC0").has_value());
}

TEST(BaseIdioma, SpanishCatalanAndNothingElse) {
    EXPECT_EQ(Base_Idioma("esp"), 20000);
    EXPECT_EQ(Base_Idioma("cat"), 10000);
    EXPECT_FALSE(Base_Idioma("eng").has_value());
    EXPECT_FALSE(Base_Idioma("").has_value());
    EXPECT_FALSE(Base_Idioma("ESP").has_value());
}
