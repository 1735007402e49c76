#include "context/messages.h"
#include "master/chart_template.h"
#include "sales/document_numbers.h"
#include "schema/creation.h"
#include "schema/upgrades.h"
#include "shell/settings_actions.h"
#include "shell/settings_files.h"
#include "start_fixture.h"

using namespace tallora;
using namespace tallora::shell;
using namespace tallora::testing;
using Answer = Dialogs::Answer;
using Kind = ScriptedDialogs::Shown::Kind;
namespace db = tallora::schema::db;
namespace names = tallora::settings::names;

// ---- Settings files -------------------------------------------------------------------

class SettingsFiles : public StartFixture {
protected:
    QString dir() const { return ctx.programDir; }
    QString raw(const QString& name) const {
        return readTextFile(dir() + name).value_or("<missing>");
    }
};

TEST_F(SettingsFiles, TheDecimalMarkIs44AndTheFirstRunWithoutItsFile) {
    EXPECT_TRUE(settings::isFirstRun(dir()));
    EXPECT_EQ(settings::readDecimal(dir()), 44);
    ASSERT_TRUE(settings::writeDecimal(dir(), 46));
    EXPECT_FALSE(settings::isFirstRun(dir()));
    EXPECT_EQ(raw(names::Tallora3Cfg), "46\r\n");
    const auto items = itemsOf(dir() + names::Tallora3Cfg);
    ASSERT_EQ(items.size(), 1u);
    EXPECT_EQ(items[0].kind, NotationItem::Kind::Bare);
    EXPECT_EQ(items[0].toNumber(), 46.0);
    EXPECT_EQ(settings::readDecimal(dir()), 46);
    writeRaw(dir() + names::Tallora3Cfg, "50\r\n");
    EXPECT_EQ(settings::readDecimal(dir()), 44);
}

TEST_F(SettingsFiles, TheLanguageIsSpanishUnlessTheFileSaysOtherwise) {
    EXPECT_EQ(settings::readIdioma(dir()), "esp");
    writeRaw(dir() + names::IdiomaCfg, "\"\"\r\n");
    EXPECT_EQ(settings::readIdioma(dir()), "esp");
    ASSERT_TRUE(settings::writeIdioma(dir(), "cat"));
    EXPECT_EQ(raw(names::IdiomaCfg), "\"cat\"\r\n");
    EXPECT_EQ(settings::readIdioma(dir()), "cat");
}

TEST_F(SettingsFiles, TheScreenModeIsUnknownWithoutItsFile) {
    EXPECT_EQ(settings::readPantallaMax(dir()), std::nullopt);
    ASSERT_TRUE(settings::writePantallaMax(dir(), true));
    EXPECT_EQ(raw(names::PantallaCfg), "#TRUE#\r\n");
    EXPECT_EQ(settings::readPantallaMax(dir()), true);
    ASSERT_TRUE(settings::writePantallaMax(dir(), false));
    EXPECT_EQ(itemsOf(dir() + names::PantallaCfg).at(0).toBool(), false);
    EXPECT_EQ(settings::readPantallaMax(dir()), false);
}

TEST_F(SettingsFiles, MessagingIsReadFromTheProgramFolderAndWrittenToTheCompany) {
    EXPECT_TRUE(settings::readMissatgeria(dir()));
    const QString company = tmp.filePath("company/");
    QDir().mkpath(company);
    ASSERT_TRUE(settings::writeMissatgeria(company, false));
    EXPECT_EQ(readTextFile(company + names::MensaCfg).value_or(""), "#FALSE#\r\n");
    EXPECT_TRUE(settings::readMissatgeria(dir()));
    writeRaw(dir() + names::MensaCfg, "#FALSE#\r\n");
    EXPECT_FALSE(settings::readMissatgeria(dir()));
}

TEST_F(SettingsFiles, MarginsAreOneLineOfFourAndZeroWithoutTheFile) {
    EXPECT_EQ(settings::readMargins(dir()), settings::Margins{});
    const settings::Margins m{10, 20, 30, 40};
    ASSERT_TRUE(settings::writeMargins(dir(), m));
    EXPECT_EQ(raw(names::MargeCfg), "10,20,30,40\r\n");
    const auto lines = linesOf(dir() + names::MargeCfg);
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(textsOf(lines[0]), (QStringList{"10", "20", "30", "40"}));
    EXPECT_EQ(settings::readMargins(dir()), m);
}

TEST_F(SettingsFiles, TheAssistantShowsWithoutTheSplashFile) {
    EXPECT_EQ(settings::readSplash(dir()), 1);
    ASSERT_TRUE(settings::writeSplash(dir(), 0));
    EXPECT_EQ(raw(names::SplashCfg), "0\r\n");
    EXPECT_EQ(settings::readSplash(dir()), 0);
}

TEST_F(SettingsFiles, TheDocumentFlagsFollowGnradoc) {
    auto flags = settings::readDocsFlags(dir());
    EXPECT_FALSE(flags.present);
    EXPECT_FALSE(flags.DocsGenerar);
    EXPECT_TRUE(flags.DocsFactura);
    writeRaw(dir() + names::GnradocDat, "1\r\n");
    flags = settings::readDocsFlags(dir());
    EXPECT_TRUE(flags.present);
    EXPECT_TRUE(flags.DocsGenerar);
    EXPECT_TRUE(flags.DocsFactura);
    writeRaw(dir() + names::GnradocDat, "2\r\n");
    flags = settings::readDocsFlags(dir());
    EXPECT_TRUE(flags.DocsGenerar);
    EXPECT_FALSE(flags.DocsFactura);
}

TEST_F(SettingsFiles, TheLastPairOfUrlDatWins) {
    EXPECT_EQ(settings::readUrl(dir(), "web", "https://built.in"), "https://built.in");
    writeRaw(dir() + names::UrlDat,
             "\"web\",\"https://first.example\"\r\n\"mail\",\"mailto:a@b.c\"\r\n"
             "\"web\",\"https://last.example\"\r\n");
    EXPECT_EQ(settings::readUrl(dir(), "web", "https://built.in"), "https://last.example");
    EXPECT_EQ(settings::readUrl(dir(), "mail", "x"), "mailto:a@b.c");
    EXPECT_EQ(settings::readUrl(dir(), "news", "https://built.in"), "https://built.in");
}

TEST_F(SettingsFiles, FactModIsThreeLines) {
    EXPECT_EQ(settings::readFactMod(dir()), settings::FactMod{});
    const settings::FactMod value{true, "f01.rpt", 2};
    ASSERT_TRUE(settings::writeFactMod(dir(), value));
    EXPECT_EQ(raw(files::FactModCfg), "#TRUE#\r\n\"f01.rpt\"\r\n2\r\n");
    const auto lines = linesOf(dir() + files::FactModCfg);
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[0].at(0).toBool(), true);
    EXPECT_EQ(lines[1].at(0).kind, NotationItem::Kind::Quoted);
    EXPECT_EQ(lines[1].at(0).text, "f01.rpt");
    EXPECT_EQ(lines[2].at(0).toNumber(), 2.0);
    EXPECT_EQ(settings::readFactMod(dir()), value);
}

TEST_F(SettingsFiles, FactModAsTheOpeningWritesItReadsFalse) {
    writeRaw(dir() + files::FactModCfg, "#FALSE#\r\n\"\"\r\n");
    const auto value = settings::readFactMod(dir());
    EXPECT_FALSE(value.Facturacio);
    EXPECT_EQ(value.model, QString());
    EXPECT_EQ(value.copies, 0);
}

TEST_F(SettingsFiles, FiscalDataAreTenQuotedLines) {
    EXPECT_EQ(settings::readFiscalData(dir()), std::nullopt);
    settings::FiscalData d{"Pons",      "Ferreteria Pons, S.L.",
                           "B12345678", "C/ Major, 1",
                           "Reus",      "43201",
                           "977000000", "977000001",
                           "Gràcies",   "f02.rpt"};
    ASSERT_TRUE(settings::writeFiscalData(dir(), d));
    const auto lines = linesOf(dir() + files::FactDatos);
    ASSERT_EQ(lines.size(), 10u);
    QStringList texts;
    for (const auto& line : lines) {
        ASSERT_EQ(line.size(), 1u);
        EXPECT_EQ(line[0].kind, NotationItem::Kind::Quoted);
        texts << line[0].text;
    }
    EXPECT_EQ(texts,
              (QStringList{"Pons", "Ferreteria Pons, S.L.", "B12345678", "C/ Major, 1", "Reus",
                           "43201", "977000000", "977000001", "Gràcies", "f02.rpt"}));
    EXPECT_EQ(settings::readFiscalData(dir()), d);
}

// ---- Settings actions -----------------------------------------------------------------

namespace {

// A company with an open exercise, as Settings finds it from the menu of the shell.
class SettingsActions : public StartFixture {
protected:
    void SetUp() override {
        ASSERT_EQ(master::prepareTemplates(ctx), QString());
        openNewCompany();
        ASSERT_TRUE(createExercise("2026"));
        ASSERT_TRUE(openExercise("2026"));
        dialogs.clear();
    }

    QString company() const { return companyFolder("B1234567"); }

    // The billing module on, fact.mdb made, and the counter row of the exercise.
    void billingOn() {
        ctx.Facturacio = true;
        schema::upgradeBilling(ctx);
        run(company() + db::Fact,
            "insert into Numeracion_Documentos (Ejercicio, FrasOut, Presupuesto, Proforma, "
            "Albaran) "
            "values (2026, 5, 6, 7, 8)");
    }
    QString counters() const {
        return column(company() + db::Fact,
                      "select FrasOut || ',' || Presupuesto || ',' || Proforma || ',' || Albaran "
                      "from Numeracion_Documentos where Ejercicio = 2026")
            .value(0);
    }

    // Settings as on the first run: no company, no exercise.
    void firstRun() {
        ctx.Directori.clear();
        ctx.Exercici.clear();
    }

    // Every file of the program folder and the company folder, to tell that nothing was written.
    QStringList allFiles() const {
        QStringList out;
        for (const QString& folder : {ctx.programDir, company()})
            for (const QString& name : QDir(folder).entryList(QDir::Files))
                out << folder + name + u'@' +
                           QString::number(
                               QFileInfo(folder + name).lastModified().toMSecsSinceEpoch()) +
                           u'#' + QString::number(QFileInfo(folder + name).size());
        out.sort();
        return out;
    }

    void answerNo() { dialogs.setNextAnswer(Answer::No); }
    void answerYes() { dialogs.setNextAnswer(Answer::Yes); }
};

}  // namespace

TEST_F(SettingsActions, EveryQuestionAnsweredNoChangesNothing) {
    billingOn();
    const QStringList before = allFiles();
    const QString numbers = counters();
    const WorkingContext saved = ctx;
    answerNo();
    EXPECT_FALSE(Aplica_FormatoNums(ctx, dialogs, false));
    answerNo();
    EXPECT_FALSE(Aplica_Idioma(ctx, dialogs, true));
    answerNo();
    EXPECT_FALSE(Aplica_Pantallas(ctx, dialogs, true));
    answerNo();
    EXPECT_FALSE(Aplica_Facturacion(ctx, dialogs, {false, "f01.rpt", 3}));
    answerNo();
    EXPECT_FALSE(Aplica_Numeracion(ctx, dialogs, "100", "200", "300"));
    answerNo();
    EXPECT_FALSE(Guarda_DatosFiscales(ctx, dialogs, fiscalDataFor(ctx)));
    answerNo();
    EXPECT_FALSE(Aplica_Tesoreria(ctx, dialogs, true));
    answerNo();
    EXPECT_FALSE(Aplica_Impresora(ctx, dialogs, {1, 2, 3, 4}));

    const std::vector<int> questions{6806, 6805, 6807, 6808, 6809, 6808, 6810, 6826};
    ASSERT_EQ(dialogs.shown().size(), questions.size());
    for (std::size_t i = 0; i < questions.size(); ++i) {
        EXPECT_EQ(dialogs.shown()[i].kind, Kind::YesNo);
        EXPECT_EQ(dialogs.shown()[i].text, Missatge(ctx, questions[i])) << questions[i];
    }
    EXPECT_EQ(allFiles(), before);
    EXPECT_EQ(counters(), numbers);
    EXPECT_EQ(ctx.Decimal, saved.Decimal);
    EXPECT_EQ(ctx.Idioma, "esp");
    EXPECT_EQ(ctx.BaseIdioma, 20000);
    EXPECT_EQ(ctx.PantallaMax, saved.PantallaMax);
    EXPECT_TRUE(ctx.Facturacio);
    EXPECT_FALSE(ctx.Tesoreria);
    EXPECT_EQ(ctx.MargeEsquerre, 0);
    EXPECT_FALSE(QFileInfo::exists(ctx.programDir + names::Tallora3Cfg));
    EXPECT_FALSE(QFileInfo::exists(ctx.programDir + names::IdiomaCfg));
    EXPECT_FALSE(QFileInfo::exists(ctx.programDir + names::PantallaCfg));
    EXPECT_FALSE(QFileInfo::exists(ctx.programDir + names::MargeCfg));
    EXPECT_FALSE(QFileInfo::exists(company() + files::FactDatos));
}

TEST_F(SettingsActions, TheDecimalMarkIsWrittenOnYes) {
    answerYes();
    EXPECT_TRUE(Aplica_FormatoNums(ctx, dialogs, false));
    EXPECT_EQ(ctx.Decimal, 46);
    EXPECT_EQ(itemsOf(ctx.programDir + names::Tallora3Cfg).at(0).toNumber(), 46.0);
    answerYes();
    EXPECT_TRUE(Aplica_FormatoNums(ctx, dialogs, true));
    EXPECT_EQ(ctx.Decimal, 44);
    EXPECT_EQ(settings::readDecimal(ctx.programDir), 44);
    EXPECT_EQ(decimalSample(44), "123.456,78");
    EXPECT_EQ(decimalSample(46), "123,456.78");
}

TEST_F(SettingsActions, TheLanguageChangeSwapsTheChartTemplate) {
    const QString comptes = ctx.programDir + db::Comptes;
    ASSERT_TRUE(QFileInfo::exists(comptes));
    ASSERT_EQ(scalar(comptes,
                     "select count(*) from Compres where NomCompte = '600 Compres de mercaderies'"),
              0);
    answerYes();
    EXPECT_TRUE(Aplica_Idioma(ctx, dialogs, true));
    EXPECT_EQ(ctx.Idioma, "cat");
    EXPECT_EQ(ctx.BaseIdioma, 10000);
    EXPECT_EQ(itemsOf(ctx.programDir + names::IdiomaCfg).at(0).text, "cat");
    EXPECT_EQ(scalar(comptes,
                     "select count(*) from Compres where NomCompte = '600 Compres de mercaderies'"),
              1);

    answerYes();
    EXPECT_TRUE(Aplica_Idioma(ctx, dialogs, false));
    EXPECT_EQ(ctx.BaseIdioma, 20000);
    EXPECT_EQ(settings::readIdioma(ctx.programDir), "esp");
    EXPECT_EQ(scalar(comptes,
                     "select count(*) from Compres where NomCompte = '600 Compras de mercaderías'"),
              1);
}

TEST_F(SettingsActions, TheLanguageChangeWithoutTemplatesLeavesNoChart) {
    ASSERT_TRUE(QFile::remove(ctx.programDir + master::templates::CtesCat));
    ASSERT_TRUE(QFile::remove(ctx.programDir + master::templates::CtesEsp));
    answerYes();
    EXPECT_TRUE(Aplica_Idioma(ctx, dialogs, true));
    EXPECT_FALSE(QFileInfo::exists(ctx.programDir + db::Comptes));
    EXPECT_EQ(ctx.Idioma, "cat");
    // A new exercise with nothing to carry over then starts with an empty chart.
    restoreCompanyFolder(ctx);
    ASSERT_TRUE(createExercise("2030"));
    for (const QString& table : schema::accountTables())
        EXPECT_EQ(scalar(companyFolder("B1234567") + "2030/" + db::Comptes,
                         "select count(*) from " + table),
                  0);
}

TEST_F(SettingsActions, TheScreenModeIsWrittenOnYes) {
    answerYes();
    EXPECT_TRUE(Aplica_Pantallas(ctx, dialogs, true));
    EXPECT_TRUE(ctx.PantallaMax);
    EXPECT_EQ(settings::readPantallaMax(ctx.programDir), true);
}

TEST_F(SettingsActions, TheCompanyTabsNeedAnOpenExercise) {
    firstRun();
    const QStringList before = allFiles();
    EXPECT_FALSE(Aplica_Facturacion(ctx, dialogs, {true, "f01.rpt", 1}));
    EXPECT_FALSE(Aplica_Numeracion(ctx, dialogs, "1", "1", "1"));
    EXPECT_FALSE(Guarda_DatosFiscales(ctx, dialogs, {}));
    EXPECT_FALSE(Aplica_Tesoreria(ctx, dialogs, true));
    EXPECT_FALSE(Aplica_Intra(ctx, true));
    EXPECT_FALSE(Aplica_Mensajeria(ctx, false));
    EXPECT_FALSE(nextDocumentNumbers(ctx).has_value());
    EXPECT_TRUE(dialogs.shown().empty());
    EXPECT_FALSE(ctx.Tesoreria);
    EXPECT_FALSE(ctx.Facturacio);
    EXPECT_EQ(allFiles(), before);
    // The installation tabs still work.
    answerYes();
    EXPECT_TRUE(Aplica_FormatoNums(ctx, dialogs, true));
    answerYes();
    EXPECT_TRUE(Aplica_Idioma(ctx, dialogs, true));
}

TEST_F(SettingsActions, BillingOnMakesItsDatabaseAndWritesFactMod) {
    ASSERT_FALSE(QFileInfo::exists(company() + db::Fact));
    answerYes();
    EXPECT_TRUE(Aplica_Facturacion(ctx, dialogs, {true, "f01.rpt", 2}));
    EXPECT_TRUE(ctx.Facturacio);
    EXPECT_TRUE(QFileInfo::exists(company() + db::Fact));
    EXPECT_EQ(readTextFile(company() + files::FactModCfg).value_or(""),
              "#TRUE#\r\n\"f01.rpt\"\r\n2\r\n");
    answerYes();
    EXPECT_TRUE(Aplica_Facturacion(ctx, dialogs, {false, "f01.rpt", 1}));
    EXPECT_FALSE(ctx.Facturacio);
    EXPECT_EQ(settings::readFactMod(company()).Facturacio, false);
}

TEST_F(SettingsActions, TheNextNumbersAreShownWithBillingOn) {
    EXPECT_FALSE(nextDocumentNumbers(ctx).has_value());
    billingOn();
    const auto next = nextDocumentNumbers(ctx);
    ASSERT_TRUE(next.has_value());
    EXPECT_EQ(next->facturas, "6");
    EXPECT_EQ(next->presupuestos, "7");
    EXPECT_EQ(next->proformas, "8");
    EXPECT_EQ(next->albaranes, "9");
}

TEST_F(SettingsActions, ANumberThatIsNotNumericShowsErrorAndChangesNothing) {
    billingOn();
    for (const auto& texts : std::vector<std::array<QString, 3>>{
             {"abc", "10", "10"}, {"10", "", "10"}, {"10", "10", "-"}, {"10", "1x", "10"}}) {
        dialogs.clear();
        answerYes();
        EXPECT_FALSE(Aplica_Numeracion(ctx, dialogs, texts[0], texts[1], texts[2]));
        ASSERT_EQ(dialogs.shown().size(), 2u);
        EXPECT_EQ(dialogs.shown()[1].kind, Kind::Stop);
        EXPECT_EQ(dialogs.shown()[1].text, "Error");
        EXPECT_EQ(counters(), "5,6,7,8");
    }
}

TEST_F(SettingsActions, NumbersSetTheCountersLessOneButNotDeliveryNotes) {
    billingOn();
    answerYes();
    EXPECT_TRUE(Aplica_Numeracion(ctx, dialogs, "100", "200", "300"));
    EXPECT_EQ(counters(), "99,199,299,8");
    EXPECT_EQ(sales::Seguent_Document(ctx, sales::kinds::FrasOut), 100);
    EXPECT_EQ(sales::Seguent_Document(ctx, sales::kinds::Albaran), 9);
}

TEST_F(SettingsActions, NumbersAreReadWithTheDecimalMarkOfTheProgram) {
    billingOn();
    answerYes();
    EXPECT_TRUE(Aplica_Numeracion(ctx, dialogs, "1.000", "20", "30"));
    EXPECT_EQ(counters(), "999,19,29,8");
}

TEST_F(SettingsActions, FiscalDataPassTheTextCleanerAndNeedBilling) {
    EXPECT_FALSE(Guarda_DatosFiscales(ctx, dialogs, fiscalDataFor(ctx)));
    EXPECT_TRUE(dialogs.shown().empty());
    EXPECT_FALSE(QFileInfo::exists(company() + files::FactDatos));

    billingOn();
    settings::FiscalData d = fiscalDataFor(ctx);
    EXPECT_EQ(d.nomEmpresa, "Ferreteria Pons");
    EXPECT_EQ(d.nif, "B1234567");
    EXPECT_EQ(d.domicili, "C/ Major, 1");
    EXPECT_EQ(d.poblacio, "Reus");
    EXPECT_EQ(d.cp, "43201");
    d.nomComercial = "L'Àncora";
    d.text = "Dte. 5% + IVA";
    d.telefon = "977 00 00 00";
    answerYes();
    EXPECT_TRUE(Guarda_DatosFiscales(ctx, dialogs, d));
    const auto lines = linesOf(company() + files::FactDatos);
    ASSERT_EQ(lines.size(), 10u);
    EXPECT_EQ(lines[0].at(0).text, QStringLiteral("L\u00B4\u00C0ncora"));
    EXPECT_EQ(lines[1].at(0).text, "Ferreteria Pons");
    EXPECT_EQ(lines[6].at(0).text, "977 00 00 00");
    EXPECT_EQ(lines[8].at(0).text, "Dte. 5  IVA");
    EXPECT_EQ(fiscalDataFor(ctx).nomComercial, QStringLiteral("L\u00B4\u00C0ncora"));
}

TEST_F(SettingsActions, TreasuryIsWrittenToTheCompanyAndDeletesNothing) {
    const QString tesorer = ctx.Directori + db::Tesorer;
    ASSERT_TRUE(QFileInfo::exists(tesorer));
    answerYes();
    EXPECT_TRUE(Aplica_Tesoreria(ctx, dialogs, true));
    EXPECT_TRUE(ctx.Tesoreria);
    EXPECT_EQ(itemsOf(company() + files::TesorerCfg).at(0).toBool(), true);
    answerYes();
    EXPECT_TRUE(Aplica_Tesoreria(ctx, dialogs, false));
    EXPECT_FALSE(ctx.Tesoreria);
    EXPECT_EQ(readTextFile(company() + files::TesorerCfg).value_or(""), "#FALSE#\r\n");
    EXPECT_TRUE(QFileInfo::exists(tesorer));
    EXPECT_EQ(scalar(tesorer, "select count(*) from entidades"), 1);
}

TEST_F(SettingsActions, MarginsAreWrittenOnYes) {
    answerYes();
    EXPECT_TRUE(Aplica_Impresora(ctx, dialogs, {5, 6, 7, 8}));
    EXPECT_EQ(ctx.MargeEsquerre, 5);
    EXPECT_EQ(ctx.MargeDret, 6);
    EXPECT_EQ(ctx.MargeSuperior, 7);
    EXPECT_EQ(ctx.MargeInferior, 8);
    EXPECT_EQ(readTextFile(ctx.programDir + names::MargeCfg).value_or(""), "5,6,7,8\r\n");
}

TEST_F(SettingsActions, IntraAndMessagingAskNothing) {
    EXPECT_TRUE(Aplica_Intra(ctx, true));
    EXPECT_TRUE(ctx.Intra);
    EXPECT_EQ(itemsOf(company() + files::IntraCfg).at(0).toBool(), true);
    EXPECT_TRUE(Aplica_Mensajeria(ctx, false));
    EXPECT_FALSE(ctx.Missatgeria);
    EXPECT_EQ(itemsOf(company() + names::MensaCfg).at(0).toBool(), false);
    EXPECT_FALSE(QFileInfo::exists(ctx.programDir + names::MensaCfg));
    EXPECT_TRUE(dialogs.shown().empty());
}
