// Editing the open company's data and the open exercise's rates.
#include "shell/company_data.h"
#include "context/messages.h"
#include "master/chart_template.h"
#include "schema/creation.h"
#include "start_fixture.h"

using namespace tallora;
using namespace tallora::shell;
using namespace tallora::testing;
using Answer = Dialogs::Answer;
using Kind = ScriptedDialogs::Shown::Kind;

namespace {

class CompanyData : public StartFixture {
protected:
    void SetUp() override {
        ASSERT_EQ(master::prepareTemplates(ctx), QString());
        openNewCompany();
        ASSERT_TRUE(createExercise("2026"));
        ASSERT_TRUE(openExercise("2026"));
        dialogs.clear();
    }

    QString company() const { return companyFolder("B1234567"); }
    QString lst() const { return llibresDir(unit) + files::EmpresesLst; }

    CompanyEdit edited() const {
        CompanyEdit e = currentCompany(ctx);
        e.nom = QStringLiteral("Ferretería Nova");
        e.domicili = QStringLiteral("Pl. Mercadal, 3");
        e.poblacio = QStringLiteral("Reus");
        e.cp = QStringLiteral("43202");
        return e;
    }

    bool save(const CompanyEdit& e) {
        dialogs.setNextAnswer(Answer::Yes);
        return Graba_Empresa(ctx, dialogs, e);
    }
};

TEST_F(CompanyData, TheScreenOpensWithTheContextsValues) {
    const CompanyEdit e = currentCompany(ctx);
    EXPECT_EQ(e.nom, QStringLiteral("Ferreteria Pons"));
    EXPECT_EQ(e.domicili, QStringLiteral("C/ Major, 1"));
    EXPECT_EQ(e.cp, QStringLiteral("43201"));
    EXPECT_EQ(e.nif, QStringLiteral("B1234567"));
    EXPECT_FALSE(e.tesoreria);
    const ExerciseRates r = currentRates(ctx);
    EXPECT_EQ(r.iva, (std::array<QString, 3>{"16", "7", "4"}));
    EXPECT_EQ(r.re, (std::array<QString, 3>{"4", "1", "0,5"}));
    EXPECT_EQ(r.ivas, (std::array<QString, 4>{"16", "7", "4", "4,5"}));
}

TEST_F(CompanyData, SavingAsksWithTheFiveValuesThenWritesTheFileTheListAndTheContext) {
    CompanyEdit e = edited();
    ASSERT_TRUE(save(e));
    ASSERT_EQ(dialogs.shown().size(), 2u);
    const QString question = dialogs.shown()[0].text;
    EXPECT_TRUE(question.startsWith(Missatge(ctx, 36)));
    EXPECT_TRUE(question.endsWith(Missatge(ctx, 37)));
    for (const QString part :
         {"Ferretería Nova", "Pl. Mercadal, 3", "43202 - Reus", "NIF:  B1234567"})
        EXPECT_TRUE(question.contains(part)) << part.toStdString();
    EXPECT_EQ(dialogs.shown()[1].kind, Kind::Information);
    EXPECT_EQ(dialogs.lastText(), Missatge(ctx, 6405));
    EXPECT_EQ(
        readCompanyData(company() + "B1234567.Dat"),
        (tallora::CompanyData{"Ferretería Nova", "Pl. Mercadal, 3", "Reus", "43202", "B1234567"}));
    EXPECT_EQ(readEmpresesLst(lst()), (std::vector<CompanyEntry>{{"Ferretería Nova", "B1234567"}}));
    EXPECT_EQ(ctx.EmpresaNom, QStringLiteral("Ferretería Nova"));
    EXPECT_EQ(ctx.EmpresaCP, QStringLiteral("43202"));
}

TEST_F(CompanyData, AChangedTaxNumberKeepsTheFolderAndTheKeyOfTheList) {
    ASSERT_TRUE(addCompany(QStringLiteral("Gestoria Almirall"), QStringLiteral("A7777777")));
    dialogs.clear();
    CompanyEdit e = edited();
    e.nif = QStringLiteral("C98765432");
    ASSERT_TRUE(save(e));
    EXPECT_TRUE(QFileInfo::exists(company() + "B1234567.Dat"));
    EXPECT_FALSE(QFileInfo::exists(companyFolder("C9876543")));
    EXPECT_EQ(readCompanyData(company() + "B1234567.Dat")->nif, QStringLiteral("C98765432"));
    EXPECT_EQ(ctx.EmpresaNIF, QStringLiteral("C98765432"));
    // The other company's line stays as it was, in its place.
    EXPECT_EQ(readEmpresesLst(lst()),
              (std::vector<CompanyEntry>{{"Ferretería Nova", "B1234567"},
                                         {"Gestoria Almirall", "A7777777"}}));
    EXPECT_EQ(ctx.Directori, exerciseFolder("B1234567", "2026"));
}

TEST_F(CompanyData, AnythingButYesWritesNothing) {
    const auto before = readCompanyData(company() + "B1234567.Dat");
    dialogs.setNextAnswer(Answer::No);
    EXPECT_FALSE(Graba_Empresa(ctx, dialogs, edited()));
    EXPECT_EQ(readCompanyData(company() + "B1234567.Dat"), before);
    EXPECT_EQ(ctx.EmpresaNom, QStringLiteral("Ferreteria Pons"));
    EXPECT_EQ(readEmpresesLst(lst()), (std::vector<CompanyEntry>{{"Ferreteria Pons", "B1234567"}}));
}

TEST_F(CompanyData, WithoutItsDataFileTheCompanyIsNotSaved) {
    QFile::remove(company() + "B1234567.Dat");
    EXPECT_FALSE(save(edited()));
    EXPECT_EQ(dialogs.shown().back().kind, Kind::Stop);
    EXPECT_EQ(dialogs.lastText(), Missatge(ctx, 6406));
    EXPECT_FALSE(QFileInfo::exists(company() + "B1234567.Dat"));
    EXPECT_EQ(ctx.EmpresaNom, QStringLiteral("Ferreteria Pons"));
}

TEST_F(CompanyData, TreasuryOnIsWrittenAndPreparedAndOffIsWrittenFalse) {
    CompanyEdit e = edited();
    e.tesoreria = true;
    ASSERT_TRUE(save(e));
    EXPECT_TRUE(ctx.Tesoreria);
    EXPECT_TRUE(readCompanyFlags(company()).tesoreria);
    EXPECT_TRUE(QFileInfo::exists(ctx.Directori + "tesorer.mdb"));
    EXPECT_TRUE(QFileInfo::exists(company() + "cartera.mdb"));
    e.tesoreria = false;
    ASSERT_TRUE(save(e));
    EXPECT_FALSE(ctx.Tesoreria);
    EXPECT_FALSE(readCompanyFlags(company()).tesoreria);
}

TEST_F(CompanyData, ARateWrittenZeroIsRefusedAndNothingChanges) {
    const auto before = readTextFile(company() + "2026.DAT");
    ExerciseRates r = currentRates(ctx);
    r.ivas[3] = QStringLiteral("0");
    EXPECT_FALSE(Graba_Tipus(ctx, dialogs, r));
    ASSERT_EQ(dialogs.shown().size(), 1u);
    EXPECT_EQ(dialogs.shown()[0].kind, Kind::Stop);
    EXPECT_EQ(dialogs.lastText(), Missatge(ctx, 6997));
    EXPECT_EQ(readTextFile(company() + "2026.DAT"), before);
}

TEST_F(CompanyData, NewRatesRewriteTheParametersAndTheContextWithKindOne) {
    ExerciseRates r = currentRates(ctx);
    r.iva = {"21", "10", "4"};
    r.re = {"5,2", "1,4", "0,0"};  // "0,0" is not the text "0"
    r.ivas = {"21", "10", "4", "5"};
    dialogs.setNextAnswer(Answer::No);
    EXPECT_FALSE(Graba_Tipus(ctx, dialogs, r));
    EXPECT_EQ(dialogs.lastText(), Missatge(ctx, 6990) + Missatge(ctx, 37));
    EXPECT_EQ(ctx.TipusIVA[0], 16.0);
    dialogs.setNextAnswer(Answer::Yes);
    ASSERT_TRUE(Graba_Tipus(ctx, dialogs, r));
    EXPECT_EQ(dialogs.lastText(), Missatge(ctx, 6405));
    EXPECT_EQ(readTextFile(company() + "2026.DAT").value(),
              QStringLiteral("\"2026\",\"Euros\",1,\"21\",\"10\",\"4\"\r\n"
                             "\"5,2\",\"1,4\",\"0,0\",\"FACTURES\"\r\n"
                             "\"21\",\"10\",\"4\",\"5\"\r\n"));
    EXPECT_EQ(ctx.TipusIVA, (std::array<double, 3>{21, 10, 4}));
    EXPECT_EQ(ctx.TipusRE[0], 5.2);
    EXPECT_EQ(ctx.TipusIVAsText[0], QStringLiteral("21"));
    EXPECT_EQ(currentRates(ctx).re[0], QStringLiteral("5,2"));
}

}  // namespace
