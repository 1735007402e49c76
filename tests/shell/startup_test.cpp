#include "shell/startup.h"
#include "master/chart_template.h"
#include "schema/creation.h"
#include "shell/settings_files.h"
#include "start_fixture.h"
#include "store/schema_objects.h"

using namespace tallora;
using namespace tallora::shell;
using namespace tallora::testing;
namespace db = tallora::schema::db;
namespace names = tallora::settings::names;

namespace {

class Startup : public StartFixture {
protected:
    bool hasAccount(const QString& path, const QString& name) const {
        return scalar(path, "select count(*) from Compres where NomCompte = '" + name + "'") == 1;
    }
};

}  // namespace

TEST_F(Startup, ACatalanInstallationStartsInCatalan) {
    writeRaw(programFile(names::IdiomaCfg), "\"cat\"\r\n");
    Inicia_Programa(ctx);
    EXPECT_EQ(ctx.Idioma, "cat");
    EXPECT_EQ(ctx.BaseIdioma, 10000);
    EXPECT_TRUE(hasAccount(programFile(db::Comptes), "600 Compres de mercaderies"));
}

TEST_F(Startup, AnEmptyOrMissingLanguageIsSpanish) {
    ctx.setIdioma("cat");
    Inicia_Programa(ctx);
    EXPECT_EQ(ctx.Idioma, "esp");
    EXPECT_EQ(ctx.BaseIdioma, 20000);
    EXPECT_TRUE(hasAccount(programFile(db::Comptes), "600 Compras de mercaderías"));

    ctx.setIdioma("cat");
    writeRaw(programFile(names::IdiomaCfg), "\"\"\r\n");
    Inicia_Programa(ctx);
    EXPECT_EQ(ctx.Idioma, "esp");
    EXPECT_EQ(ctx.BaseIdioma, 20000);
}

TEST_F(Startup, TheTemplatesAndTheUnitAreMadeInTheProgramFolder) {
    ctx.Unitat = "/not/the/default";
    Inicia_Programa(ctx);
    for (const QString& name : {master::templates::CtesEsp, master::templates::CtesCat, db::Comptes,
                                db::Tesorer, db::Cfg})
        EXPECT_TRUE(QFileInfo::exists(programFile(name))) << name.toStdString();
    EXPECT_EQ(ctx.Unitat, defaultUnit());
    EXPECT_TRUE(hasAccount(programFile(master::templates::CtesCat), "600 Compres de mercaderies"));
    EXPECT_TRUE(hasAccount(programFile(master::templates::CtesEsp), "600 Compras de mercaderías"));
    auto tesorer = store::Database::open(programFile(db::Tesorer));
    EXPECT_TRUE(store::tableExists(tesorer, "entidades"));
    EXPECT_EQ(scalar(programFile(db::Tesorer), "select count(*) from entidades"), 0);
}

TEST_F(Startup, TheUnitRememberedInCfgIsTaken) {
    schema::createTables(programFile(db::Cfg), db::Cfg, {"unitat"});
    run(programFile(db::Cfg), "insert into unitat (unitat) values ('/media/dades')");
    Inicia_Programa(ctx);
    EXPECT_EQ(ctx.Unitat, "/media/dades");
}

TEST_F(Startup, AChartTheUserAlreadyHasIsKept) {
    Inicia_Programa(ctx);
    run(programFile(db::Comptes), "insert into Compres (Grup, NomCompte) values (60, 'Pròpia')");
    writeRaw(programFile(names::IdiomaCfg), "\"cat\"\r\n");
    Inicia_Programa(ctx);
    EXPECT_TRUE(hasAccount(programFile(db::Comptes), "Pròpia"));
    EXPECT_TRUE(hasAccount(programFile(db::Comptes), "600 Compras de mercaderías"));
}

TEST_F(Startup, TheShellReadsTheDecimalMarkAndTheMargins) {
    ctx.Decimal = 0;
    ctx.PantallaMax = true;
    ctx.Missatgeria = false;
    EXPECT_FALSE(Inicia_MDI(ctx, nullptr));
    EXPECT_EQ(ctx.Decimal, 44);
    EXPECT_TRUE(ctx.PantallaMax);  // the window decides by the screen's height
    EXPECT_TRUE(ctx.Missatgeria);
    EXPECT_FALSE(ctx.DocsGenerar);
    EXPECT_TRUE(ctx.DocsFactura);
    EXPECT_EQ(ctx.MargeEsquerre + ctx.MargeDret + ctx.MargeSuperior + ctx.MargeInferior, 0);

    ASSERT_TRUE(settings::writeDecimal(ctx.programDir, 46));
    ASSERT_TRUE(settings::writeMargins(ctx.programDir, {11, 12, 13, 14}));
    ASSERT_TRUE(settings::writePantallaMax(ctx.programDir, false));
    writeRaw(programFile(names::MensaCfg), "#FALSE#\r\n");
    EXPECT_TRUE(Inicia_MDI(ctx, nullptr));
    EXPECT_EQ(ctx.Decimal, 46);
    EXPECT_FALSE(ctx.PantallaMax);
    EXPECT_FALSE(ctx.Missatgeria);
    EXPECT_EQ(ctx.MargeEsquerre, 11);
    EXPECT_EQ(ctx.MargeDret, 12);
    EXPECT_EQ(ctx.MargeSuperior, 13);
    EXPECT_EQ(ctx.MargeInferior, 14);
}

TEST(ScreenHeight, MaximisedFrom768Pixels) {
    EXPECT_TRUE(pantallaMaxForHeight(768));
    EXPECT_TRUE(pantallaMaxForHeight(1080));
    EXPECT_FALSE(pantallaMaxForHeight(767));
}

namespace {

// A company whose exercise folder holds only the databases of its creation.
class ShellStart : public StartFixture {
protected:
    void SetUp() override {
        ASSERT_EQ(master::prepareTemplates(ctx), QString());
        openNewCompany();
        ASSERT_TRUE(createExercise("2026"));
        ctx.Directori = exerciseFolder("B1234567", "2026");
        dialogs.clear();
    }
};

}  // namespace

TEST_F(ShellStart, WithTreasuryOffNothingOfTheTreasuryIsMade) {
    ctx.Tesoreria = false;
    Inicia_MDI(ctx, &dialogs);
    EXPECT_FALSE(QFileInfo::exists(ctx.Directori + db::Tesorer));
    EXPECT_FALSE(QFileInfo::exists(companyFolder("B1234567") + db::Cartera));
    EXPECT_TRUE(dialogs.shown().empty());
}

TEST_F(ShellStart, WithTreasuryOnTheTreasuryIsSetUp) {
    ctx.Tesoreria = true;
    Inicia_MDI(ctx, &dialogs);
    EXPECT_TRUE(QFileInfo::exists(ctx.Directori + db::Tesorer));
    EXPECT_TRUE(QFileInfo::exists(companyFolder("B1234567") + db::Cartera));
    EXPECT_EQ(scalar(ctx.Directori + db::Tesorer, "select count(*) from entidades"), 1);
    EXPECT_TRUE(dialogs.shown().empty());
}

TEST_F(ShellStart, GnradocSetsTheDocumentFlagsAndAddsTheSalesFields) {
    auto frasOut = [&] { return store::Database::open(ctx.Directori + db::FrasOut); };
    {
        auto d = frasOut();
        ASSERT_FALSE(store::fieldExists(d, "FrasOut", "NIF"));
    }
    Inicia_MDI(ctx, nullptr);
    {
        auto d = frasOut();
        EXPECT_FALSE(store::fieldExists(d, "FrasOut", "NIF"));
    }
    writeRaw(programFile(names::GnradocDat), "2\r\n");
    Inicia_MDI(ctx, nullptr);
    EXPECT_TRUE(ctx.DocsGenerar);
    EXPECT_FALSE(ctx.DocsFactura);
    auto d = frasOut();
    EXPECT_TRUE(store::fieldExists(d, "FrasOut", "NIF"));
    EXPECT_TRUE(store::fieldExists(d, "FrasOut", "concepte5"));
}
