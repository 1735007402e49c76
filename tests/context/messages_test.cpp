#include "context/messages.h"
#include "context/working_context.h"

#include <gtest/gtest.h>

#include <set>

using namespace tallora;

namespace {

std::set<int> numbersOf(int base) {
    std::set<int> numbers;
    for (const auto& [key, text] : MessageCatalogue::builtIn().entries())
        if (key >= base && key < base + 10000) numbers.insert(key - base);
    return numbers;
}

}  // namespace

TEST(Messages, BothLanguagesHaveTheSameNumbersAndNoEmptyText) {
    const std::set<int> spanish = numbersOf(20000);
    const std::set<int> catalan = numbersOf(10000);
    EXPECT_EQ(spanish.size(), 861u);
    EXPECT_EQ(spanish, catalan);
    for (const auto& [key, text] : MessageCatalogue::builtIn().entries())
        EXPECT_FALSE(text.trimmed().isEmpty()) << "message " << key;
}

TEST(Messages, LeadingAndTrailingBlanksAgreeBetweenLanguages) {
    // The texts are concatenated with values, so a blank at either end is part of them.
    // Rows whose Catalan text was given as it stands are the exceptions.
    const std::set<int> givenAsTheyStand{24, 25};
    const auto& entries = MessageCatalogue::builtIn().entries();
    for (int n : numbersOf(20000)) {
        if (givenAsTheyStand.count(n)) continue;
        const QString& es = entries.at(20000 + n);
        const QString& ca = entries.at(10000 + n);
        EXPECT_EQ(es.startsWith(u' '), ca.startsWith(u' ')) << n;
        EXPECT_EQ(es.endsWith(u' '), ca.endsWith(u' ')) << n;
        EXPECT_EQ(es.count(u'|'), ca.count(u'|')) << n;
        EXPECT_EQ(es.count(u'\n'), ca.count(u'\n')) << n;
    }
}

TEST(Messages, MissatgeFollowsBaseIdioma) {
    WorkingContext ctx;
    ASSERT_TRUE(ctx.setIdioma("esp"));
    EXPECT_EQ(Missatge(ctx, 1), QStringLiteral("Nueva"));
    EXPECT_EQ(Missatge(ctx, 6407), QStringLiteral("¿Estás seguro/a que deseas salir?"));
    EXPECT_EQ(Missatge(ctx, 6640), QStringLiteral("Su sistema no tiene ninguna impresora disponible."));
    ASSERT_TRUE(ctx.setIdioma("cat"));
    EXPECT_EQ(ctx.BaseIdioma, 10000);
    EXPECT_EQ(Missatge(ctx, 1), QStringLiteral("Nova"));
    EXPECT_EQ(Missatge(ctx, 6407), QStringLiteral("Estàs segur/a que vols sortir?"));
    EXPECT_EQ(Missatge(ctx, 6640), QStringLiteral("El seu sistema no té cap impresora disponible."));
}

TEST(Messages, SpanishTextsKeepTheirBlanks) {
    WorkingContext ctx;
    EXPECT_EQ(Missatge(ctx, 24), QStringLiteral("Se eliminará la empresa. "));
    EXPECT_EQ(Missatge(ctx, 24) + Missatge(ctx, 25),
              QStringLiteral("Se eliminará la empresa. ¿Esta seguro/a?"));
    EXPECT_EQ(Missatge(ctx, 26), QStringLiteral("¡ATENCION! "));
    EXPECT_EQ(Missatge(ctx, 6000), QStringLiteral(" LIBRO DE INGRESOS | IVA REPERCUTIDO"));
}

TEST(Messages, CatalanRowsGivenAsTheyStand) {
    WorkingContext ctx;
    ctx.setIdioma("cat");
    EXPECT_EQ(Missatge(ctx, 3), QStringLiteral("Esborrar"));
    EXPECT_EQ(Missatge(ctx, 8), QStringLiteral("Unitat de treball"));
    EXPECT_EQ(Missatge(ctx, 24), QStringLiteral("S'esborrará l'empresa."));
    EXPECT_EQ(Missatge(ctx, 25), QStringLiteral(" Està segur/a?"));
    EXPECT_EQ(Missatge(ctx, 26), QStringLiteral("ATENCIÓ! "));
    EXPECT_EQ(Missatge(ctx, 104), QStringLiteral("Usuari Actual"));
}

TEST(Messages, AnUnknownNumberIsAProgramError) {
    WorkingContext ctx;
    EXPECT_THROW(Missatge(ctx, 9), UnknownMessage);  // a gap in block 0
    EXPECT_THROW(Missatge(ctx, 9999), UnknownMessage);
    ctx.BaseIdioma = 30000;
    EXPECT_THROW(Missatge(ctx, 1), UnknownMessage);
}

TEST(Messages, ParseUnescapesAndRefusesMalformedRows) {
    const auto c = MessageCatalogue::parse("# comment\n5\tUno\\nDos\\t|\\\\\tU\\n\r\n");
    EXPECT_EQ(c.text(20005), QStringLiteral("Uno\nDos\t|\\"));
    EXPECT_EQ(c.text(10005), QStringLiteral("U\n"));
    EXPECT_THROW(MessageCatalogue::parse("5\tonly two"), std::runtime_error);
    EXPECT_THROW(MessageCatalogue::parse("x\ta\tb"), std::runtime_error);
    EXPECT_THROW(MessageCatalogue::parse("10000\ta\tb"), std::runtime_error);
}
