// Formula texts as the screens write them.
#include "report/formula.h"

#include <gtest/gtest.h>

#include <array>

using namespace tallora::report;

namespace {

Formula parsed(const QString& text) {
    const auto f = parseFormula(text);
    EXPECT_TRUE(f.has_value()) << text.toStdString();
    return f.value_or(Formula{});
}

}  // namespace

TEST(Formula, NameBeforeTheEqualsSignAndValueBetweenTheQuotes) {
    const Formula f = parsed(QStringLiteral("nom_empresa= 'Comercial Brenwick S.L.'"));
    EXPECT_EQ(f.name, QStringLiteral("nom_empresa"));
    EXPECT_EQ(f.value, QStringLiteral("Comercial Brenwick S.L."));
}

TEST(Formula, ABlankBeforeTheClosingQuoteIsNotPartOfTheValue) {
    EXPECT_EQ(parsed(QStringLiteral("lbl_end_total= '1.234,56 Euros '")).value,
              QStringLiteral("1.234,56 Euros"));
    EXPECT_EQ(parsed(QStringLiteral("lbl_vencimiento= 'Vencimiento: '")).value,
              QStringLiteral("Vencimiento:"));
}

TEST(Formula, WithoutTheEqualsSignTheNameEndsAtTheQuote) {
    const Formula f = parsed(QStringLiteral("lbl_factura 'Factura nº: '"));
    EXPECT_EQ(f.name, QStringLiteral("lbl_factura"));
    EXPECT_EQ(f.value, QStringLiteral("Factura nº:"));
}

TEST(Formula, EmptyValuesAndQuotesInsideTheValue) {
    EXPECT_EQ(parsed(QStringLiteral("lbl_titulo_gral= ''")).value, QString());
    EXPECT_EQ(parsed(QStringLiteral("nom= 'Cal Pep d'Or'")).value, QStringLiteral("Cal Pep d'Or"));
    EXPECT_EQ(parsed(QStringLiteral("periode= '  Periodo:  DESDE ENERO'")).value,
              QStringLiteral("  Periodo:  DESDE ENERO"));
}

TEST(Formula, TextsThatAreNoFormula) {
    EXPECT_FALSE(parseFormula(QString()).has_value());
    EXPECT_FALSE(parseFormula(QStringLiteral("   ")).has_value());
    EXPECT_FALSE(parseFormula(QStringLiteral("= 'x'")).has_value());
    const Formula bare = parsed(QStringLiteral("copias= 3"));
    EXPECT_EQ(bare.value, QStringLiteral("3"));
}

TEST(Formula, NamesIgnoreCaseAndTheLaterIndexWins) {
    std::array<QString, 71> texts;
    texts[0] = QStringLiteral("Nom= 'Primera'");
    texts[5] = QStringLiteral("lbl_fecha= '15/03/2026'");
    texts[40] = QStringLiteral("NOM= 'Segunda'");
    const FormulaSet set(texts);
    EXPECT_EQ(set.value(QStringLiteral("nom")), QStringLiteral("Segunda"));
    EXPECT_EQ(set.value(QStringLiteral("LBL_FECHA")), QStringLiteral("15/03/2026"));
    EXPECT_TRUE(set.contains(QStringLiteral("Lbl_Fecha")));
    EXPECT_FALSE(set.contains(QStringLiteral("lbl_pagina")));
    EXPECT_EQ(set.value(QStringLiteral("lbl_pagina")), QString());
}
