#include "context/messages.h"
#include "schema/creation.h"
#include "start_fixture.h"

using namespace tallora;
using namespace tallora::shell;
using namespace tallora::testing;
using Answer = Dialogs::Answer;
using Kind = ScriptedDialogs::Shown::Kind;

namespace {

class CompanyList : public StartFixture {
protected:
    QString lst() const { return llibresDir(unit) + files::EmpresesLst; }

    NewCompany company(const QString& nom, const QString& nif) const {
        return NewCompany{nom, "C/ Major, 1", "Reus", "43201", nif, false};
    }

    bool save(NewCompany& c, std::initializer_list<Answer> answers) {
        for (Answer a : answers) dialogs.setNextAnswer(a);
        return Verifica_Empresa(ctx, dialogs, unit, c);
    }
};

}  // namespace

TEST(CompanyRow, IsFiftyTwoWideWithTheNif8AtTheRightEdge) {
    const QString row = companyRow({"Bar Pepe, S.L.", "B1234567"});
    EXPECT_EQ(row.size(), 52);
    EXPECT_TRUE(row.startsWith("Bar Pepe, S.L. "));
    EXPECT_TRUE(row.endsWith(" B1234567"));
    EXPECT_EQ(row.mid(14, 30), QString(30, u' '));
    EXPECT_EQ(nif8OfRow(row), "B1234567");
}

TEST(CompanyRow, GivesBackTheMarkedNif8OfADuplicate) {
    EXPECT_EQ(nif8OfRow(companyRow({"Bar Pepe", "-1234567"})), "-1234567");
    EXPECT_EQ(nif8OfRow(companyRow({"Bar Pepe", "----1234"})), "----1234");
    const QString longName(40, u'N');
    const QString row = companyRow({longName, "B1234567"});
    EXPECT_EQ(row.size(), 52);
    EXPECT_EQ(nif8OfRow(row), "B1234567");
}

TEST_F(CompanyList, AUnitWithoutTheFolderGivesAnEmptyList) {
    EXPECT_TRUE(OMPLE_LLISTA_Empreses(unit).isEmpty());
    EXPECT_TRUE(OMPLE_LLISTA_Empreses(tmp.filePath("nowhere")).isEmpty());
}

TEST_F(CompanyList, TheListKeepsTheOrderOfTheFile) {
    ASSERT_TRUE(addCompany("Zeta Obres", "Z1111111"));
    ASSERT_TRUE(addCompany("Alfa Serveis", "A2222222"));
    ASSERT_TRUE(addCompany("Mig Comerç", "M3333333"));
    const QStringList rows = OMPLE_LLISTA_Empreses(unit);
    ASSERT_EQ(rows.size(), 3);
    EXPECT_EQ(rows[0], companyRow({"Zeta Obres", "Z1111111"}));
    EXPECT_EQ(rows[1], companyRow({"Alfa Serveis", "A2222222"}));
    EXPECT_EQ(rows[2], companyRow({"Mig Comerç", "M3333333"}));
}

TEST_F(CompanyList, ATaxNumberOfEightCharactersIsAcceptedLettersIncluded) {
    auto c = company("Bar Pepe", "ABCDEFGH");
    EXPECT_TRUE(save(c, {Answer::Yes}));
    EXPECT_TRUE(QFileInfo::exists(companyFolder("ABCDEFGH") + "ABCDEFGH.Dat"));
    EXPECT_EQ(dialogs.beeps(), 0);
}

TEST_F(CompanyList, ATaxNumberOfSevenIsRefusedWithMessage34AndABeep) {
    auto c = company("Bar Pepe", "1234567");
    EXPECT_FALSE(save(c, {}));
    ASSERT_EQ(dialogs.shown().size(), 1u);
    EXPECT_EQ(dialogs.shown()[0].kind, Kind::Stop);
    EXPECT_EQ(dialogs.lastText(), Missatge(ctx, 34));
    EXPECT_EQ(dialogs.beeps(), 1);
    EXPECT_FALSE(QFileInfo::exists(llibresDir(unit)));

    dialogs.clear();
    auto empty = company("Bar Pepe", "");
    EXPECT_FALSE(save(empty, {}));
    EXPECT_EQ(dialogs.lastText(), Missatge(ctx, 34));
}

TEST_F(CompanyList, AnEmptyNameIsRefusedWithMessage35) {
    auto c = company("", "B1234567");
    EXPECT_FALSE(save(c, {}));
    ASSERT_EQ(dialogs.shown().size(), 1u);
    EXPECT_EQ(dialogs.lastText(), Missatge(ctx, 35));
    EXPECT_EQ(dialogs.beeps(), 1);
    EXPECT_FALSE(QFileInfo::exists(llibresDir(unit)));
}

TEST_F(CompanyList, TheConfirmationShowsTheDataAndNoWritesNothing) {
    auto c = company("Bar Pepe", "B1234567X");
    EXPECT_FALSE(save(c, {Answer::No}));
    ASSERT_EQ(dialogs.shown().size(), 1u);
    const QString text = dialogs.shown()[0].text;
    EXPECT_EQ(dialogs.shown()[0].kind, Kind::YesNo);
    EXPECT_TRUE(text.startsWith(Missatge(ctx, 36)));
    EXPECT_TRUE(text.endsWith(Missatge(ctx, 37)));
    for (const QString part : {"Bar Pepe", "C/ Major, 1", "43201", "Reus", "NIF:  B1234567X"})
        EXPECT_TRUE(text.contains(part)) << part.toStdString();
    EXPECT_FALSE(QFileInfo::exists(llibresDir(unit)));
    EXPECT_FALSE(QFileInfo::exists(lst()));
}

TEST_F(CompanyList, FiveCompaniesOnOneTaxNumberAndTheSixthIsRefused) {
    const QString nif = "12345678Z";
    const QStringList expectedNif8{"12345678", "-1234567", "--123456", "---12345", "----1234"};
    for (int i = 0; i < 5; ++i) {
        auto c = company(QStringLiteral("Empresa %1").arg(i), nif);
        dialogs.setNextAnswer(Answer::Yes);
        for (int k = 0; k < i; ++k) dialogs.setNextAnswer(Answer::Ok);
        ASSERT_TRUE(Verifica_Empresa(ctx, dialogs, unit, c)) << i;
        EXPECT_EQ(c.nif, QString(i, u'-') + nif);
        EXPECT_EQ(nif8Of(c.nif), expectedNif8[i]);
        const QString dat = companyFolder(expectedNif8[i]) + expectedNif8[i] + ".Dat";
        ASSERT_TRUE(QFileInfo::exists(dat)) << dat.toStdString();
        EXPECT_EQ(readCompanyData(dat)->nif, c.nif);
    }
    EXPECT_EQ(dialogs.pendingAnswers(), 0u);
    QStringList rowsNif8;
    for (const QString& row : OMPLE_LLISTA_Empreses(unit)) rowsNif8 << nif8OfRow(row);
    EXPECT_EQ(rowsNif8, expectedNif8);

    dialogs.clear();
    auto sixth = company("Empresa 6", nif);
    EXPECT_FALSE(save(sixth, {Answer::Yes, Answer::Ok, Answer::Ok, Answer::Ok, Answer::Ok}));
    EXPECT_EQ(dialogs.shown().back().kind, Kind::Information);
    EXPECT_EQ(dialogs.lastText(), Missatge(ctx, 38));
    EXPECT_EQ(OMPLE_LLISTA_Empreses(unit).size(), 5);
}

TEST_F(CompanyList, CancelAtTheDuplicateQuestionStops) {
    ASSERT_TRUE(addCompany("Primera", "B1234567"));
    dialogs.clear();
    auto c = company("Segona", "B1234567");
    EXPECT_FALSE(save(c, {Answer::Yes, Answer::Cancel}));
    ASSERT_EQ(dialogs.shown().size(), 2u);
    EXPECT_EQ(dialogs.shown()[1].kind, Kind::OkCancel);
    EXPECT_TRUE(dialogs.shown()[1].text.contains(Missatge(ctx, 39)));
    EXPECT_FALSE(QFileInfo::exists(companyFolder("-B123456")));
    EXPECT_EQ(OMPLE_LLISTA_Empreses(unit).size(), 1);
    EXPECT_EQ(c.nif, "B1234567");
}

TEST_F(CompanyList, TesorerCfgExistsAndSaysFalseWithTreasuryOff) {
    ASSERT_TRUE(addCompany("Sense", "B1111111", false));
    ASSERT_TRUE(addCompany("Amb", "B2222222", true));
    const auto off = itemsOf(companyFolder("B1111111") + files::TesorerCfg);
    ASSERT_EQ(off.size(), 1u);
    EXPECT_EQ(off[0].kind, NotationItem::Kind::Hashed);
    EXPECT_EQ(off[0].toBool(), false);
    const auto on = itemsOf(companyFolder("B2222222") + files::TesorerCfg);
    ASSERT_EQ(on.size(), 1u);
    EXPECT_EQ(on[0].toBool(), true);
}

TEST_F(CompanyList, TheDataFileHasFiveQuotedLines) {
    auto c =
        NewCompany{"Bar \"El Pla\"", "Av. del Port, 12", "Tarragona", "43004", "B12345678", false};
    ASSERT_TRUE(save(c, {Answer::Yes}));
    const auto lines = linesOf(companyFolder("B1234567") + "B1234567.Dat");
    ASSERT_EQ(lines.size(), 5u);
    const QStringList expected{"Bar \"El Pla\"", "Av. del Port, 12", "Tarragona", "43004",
                               "B12345678"};
    for (int i = 0; i < 5; ++i) {
        ASSERT_EQ(lines[i].size(), 1u) << i;
        EXPECT_EQ(lines[i][0].kind, NotationItem::Kind::Quoted);
        EXPECT_EQ(lines[i][0].text, expected[i]);
    }
}

TEST_F(CompanyList, TheListLineIsNameAndNif8) {
    auto c = company("Bar Pepe, S.L.", "B12345678");
    ASSERT_TRUE(save(c, {Answer::Yes}));
    EXPECT_EQ(readTextFile(lst()).value_or(""), "\"Bar Pepe, S.L.\",\"B1234567\"\r\n");
    const auto lines = linesOf(lst());
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(textsOf(lines[0]), (QStringList{"Bar Pepe, S.L.", "B1234567"}));
}

TEST_F(CompanyList, RemovalIsRefusedWhileAnExerciseIsListed) {
    ASSERT_TRUE(addCompany("Bar Pepe", "B1234567"));
    ASSERT_TRUE(
        appendExerciciLst(companyFolder("B1234567") + files::ExerciciLst, {"2026", "Euros"}));
    dialogs.clear();
    dialogs.setNextAnswer(Answer::Yes);
    const QString row = OMPLE_LLISTA_Empreses(unit).value(0);
    EXPECT_FALSE(Elimina_Empresa(ctx, dialogs, unit, row));
    ASSERT_EQ(dialogs.shown().size(), 2u);
    EXPECT_TRUE(dialogs.shown()[0].text.contains(row));
    EXPECT_TRUE(dialogs.shown()[0].text.startsWith(Missatge(ctx, 24) + Missatge(ctx, 25)));
    EXPECT_EQ(dialogs.shown()[1].kind, Kind::Information);
    EXPECT_EQ(dialogs.lastText(), Missatge(ctx, 26) + Missatge(ctx, 27));
    EXPECT_TRUE(QFileInfo::exists(companyFolder("B1234567") + "B1234567.Dat"));
    EXPECT_EQ(OMPLE_LLISTA_Empreses(unit).size(), 1);
}

TEST_F(CompanyList, RemovalFindsTheExercisesOfAFolderSpelledInOtherCapitals) {
    ASSERT_TRUE(addCompany("Bar Pepe", "B1234567"));
    ASSERT_TRUE(
        appendExerciciLst(companyFolder("B1234567") + files::ExerciciLst, {"2026", "Euros"}));
    const QString folder = companyFolder("B1234567");
    const QString lower = QDir::cleanPath(folder).replace(".EMP", ".emp");
    ASSERT_TRUE(QDir().rename(QDir::cleanPath(folder), lower));
    dialogs.clear();
    dialogs.setNextAnswer(Answer::Yes);
    EXPECT_FALSE(Elimina_Empresa(ctx, dialogs, unit, OMPLE_LLISTA_Empreses(unit).value(0)));
    EXPECT_EQ(dialogs.lastText(), Missatge(ctx, 26) + Missatge(ctx, 27));
    EXPECT_TRUE(QFileInfo::exists(lower + "/B1234567.Dat"));
}

TEST_F(CompanyList, ACompanyWithAnEmptyExerciseListIsRemovedAndTheCopyKept) {
    ASSERT_TRUE(addCompany("Primera", "A1111111"));
    ASSERT_TRUE(addCompany("Segona", "B2222222"));
    writeRaw(companyFolder("B2222222") + files::ExerciciLst, "");
    const QString before = readTextFile(lst()).value_or("");
    dialogs.clear();
    dialogs.setNextAnswer(Answer::Yes);
    EXPECT_TRUE(Elimina_Empresa(ctx, dialogs, unit, OMPLE_LLISTA_Empreses(unit).value(1)));
    EXPECT_FALSE(QFileInfo::exists(companyFolder("B2222222")));
    EXPECT_TRUE(QFileInfo::exists(companyFolder("A1111111")));
    EXPECT_EQ(OMPLE_LLISTA_Empreses(unit), QStringList{companyRow({"Primera", "A1111111"})});
    EXPECT_EQ(readTextFile(llibresDir(unit) + files::EmpresesCop).value_or("<missing>"), before);
}

TEST_F(CompanyList, RemovalAnsweredNoKeepsEverything) {
    ASSERT_TRUE(addCompany("Bar Pepe", "B1234567"));
    dialogs.setNextAnswer(Answer::No);
    EXPECT_FALSE(Elimina_Empresa(ctx, dialogs, unit, OMPLE_LLISTA_Empreses(unit).value(0)));
    EXPECT_TRUE(QFileInfo::exists(companyFolder("B1234567") + "B1234567.Dat"));
    EXPECT_EQ(OMPLE_LLISTA_Empreses(unit).size(), 1);
    EXPECT_FALSE(QFileInfo::exists(llibresDir(unit) + files::EmpresesCop));
    EXPECT_FALSE(Elimina_Empresa(ctx, dialogs, unit, QString()));
}

TEST_F(CompanyList, TreuDeLlistaWithAnEmptyKeyDoesNothing) {
    ASSERT_TRUE(addCompany("Bar Pepe", "B1234567"));
    EXPECT_FALSE(Treu_de_Llista(dialogs, unit, QString()));
    EXPECT_FALSE(QFileInfo::exists(llibresDir(unit) + files::EmpresesCop));
    EXPECT_EQ(OMPLE_LLISTA_Empreses(unit).size(), 1);
}

TEST_F(CompanyList, OpeningACompanyWithoutItsDataFileShows6995AndChangesNothing) {
    QDir().mkpath(companyFolder("B1234567"));
    ASSERT_TRUE(appendEmpresesLst(lst(), {"Bar Pepe", "B1234567"}));
    ctx.Directori = "/before/";
    ctx.EmpresaNom = "Abans";
    const QString unitBefore = ctx.Unitat = "/other-unit";
    EXPECT_FALSE(Obre_Empresa(ctx, dialogs, unit, OMPLE_LLISTA_Empreses(unit).value(0)));
    EXPECT_EQ(dialogs.shown().back().kind, Kind::Stop);
    EXPECT_EQ(dialogs.lastText(), Missatge(ctx, 6995));
    EXPECT_EQ(ctx.Directori, "/before/");
    EXPECT_EQ(ctx.EmpresaNom, "Abans");
    EXPECT_EQ(ctx.Unitat, unitBefore);
    EXPECT_FALSE(QFileInfo::exists(companyFolder("B1234567") + files::FactModCfg));
}

TEST_F(CompanyList, OpeningSetsTheContextAndWritesMissingFlagsWithFalse) {
    auto c = NewCompany{"Bar Pepe", "Av. del Port, 12", "Tarragona", "43004", "B12345678", true};
    ASSERT_TRUE(save(c, {Answer::Yes}));
    const QString folder = companyFolder("B1234567");
    ASSERT_FALSE(QFileInfo::exists(folder + files::FactModCfg));
    ASSERT_FALSE(QFileInfo::exists(folder + files::IntraCfg));
    ctx.Unitat = "/somewhere-else";
    ctx.Facturacio = ctx.Intra = true;
    EXPECT_TRUE(Obre_Empresa(ctx, dialogs, unit, OMPLE_LLISTA_Empreses(unit).value(0)));
    EXPECT_EQ(ctx.Unitat, unit);
    EXPECT_EQ(ctx.Directori, folder);
    EXPECT_EQ(ctx.EmpresaNom, "Bar Pepe");
    EXPECT_EQ(ctx.EmpresaDomicili, "Av. del Port, 12");
    EXPECT_EQ(ctx.EmpresaPoblacio, "Tarragona");
    EXPECT_EQ(ctx.EmpresaCP, "43004");
    EXPECT_EQ(ctx.EmpresaNIF, "B12345678");
    EXPECT_TRUE(ctx.Tesoreria);
    EXPECT_FALSE(ctx.Facturacio);
    EXPECT_FALSE(ctx.Intra);
    const auto factMod = itemsOf(folder + files::FactModCfg);
    ASSERT_EQ(factMod.size(), 2u);
    EXPECT_EQ(factMod[0].toBool(), false);
    EXPECT_EQ(factMod[1].kind, NotationItem::Kind::Quoted);
    EXPECT_EQ(factMod[1].text, QString());
    const auto intra = itemsOf(folder + files::IntraCfg);
    ASSERT_EQ(intra.size(), 1u);
    EXPECT_EQ(intra[0].toBool(), false);
    EXPECT_EQ(dialogs.shown().size(), 1u);  // only the confirmation of the saving
}

TEST_F(CompanyList, OpeningReadsTheFlagsThatAreThere) {
    ASSERT_TRUE(addCompany("Bar Pepe", "B1234567"));
    const QString folder = companyFolder("B1234567");
    ASSERT_TRUE(writeOptionFlag(folder + files::FactModCfg, true));
    ASSERT_TRUE(writeOptionFlag(folder + files::IntraCfg, true));
    EXPECT_TRUE(openCompany("B1234567"));
    EXPECT_FALSE(ctx.Tesoreria);
    EXPECT_TRUE(ctx.Facturacio);
    EXPECT_TRUE(ctx.Intra);
}

TEST_F(CompanyList, OpeningWithoutARowBeeps) {
    EXPECT_FALSE(Obre_Empresa(ctx, dialogs, unit, QString()));
    EXPECT_EQ(dialogs.beeps(), 1);
    EXPECT_TRUE(dialogs.shown().empty());
}

TEST_F(CompanyList, AnEmptyUnitatTableGivesTheHomeFolder) {
    EXPECT_EQ(readUnitatCfg(ctx.programDir), defaultUnit());
    EXPECT_EQ(defaultUnit(), QDir::homePath());
    ASSERT_TRUE(QFileInfo::exists(programFile(schema::db::Cfg)));
    EXPECT_EQ(scalar(programFile(schema::db::Cfg), "select count(*) from unitat"), 0);
}

TEST_F(CompanyList, OneRowOfUnitatIsTheUnitAndTwoAreNot) {
    const QString cfg = programFile(schema::db::Cfg);
    schema::createTables(cfg, schema::db::Cfg, {"unitat"});
    run(cfg, "insert into unitat (unitat) values ('/media/dades')");
    EXPECT_EQ(readUnitatCfg(ctx.programDir), "/media/dades");
    run(cfg, "insert into unitat (unitat) values ('/media/altres')");
    EXPECT_EQ(readUnitatCfg(ctx.programDir), defaultUnit());
}

TEST_F(CompanyList, ClearingUnitatLeavesTheTableEmpty) {
    const QString cfg = programFile(schema::db::Cfg);
    schema::createTables(cfg, schema::db::Cfg, {"unitat"});
    run(cfg, "insert into unitat (unitat) values ('/media/dades')");
    clearUnitatCfg(ctx.programDir);
    EXPECT_EQ(scalar(cfg, "select count(*) from unitat"), 0);
    EXPECT_EQ(readUnitatCfg(ctx.programDir), defaultUnit());
}

TEST_F(CompanyList, AShortLineOfTheListGivesAnEmptyName) {
    writeRaw(lst(), "\"1234567\"\r\n\"Bar Pepe\",\"B1234567\"\r\n");
    const QStringList rows = OMPLE_LLISTA_Empreses(unit);
    ASSERT_EQ(rows.size(), 2);
    EXPECT_EQ(rows[0], QString(45, u' ') + "1234567");
    EXPECT_EQ(nif8OfRow(rows[0]), "1234567");
    EXPECT_EQ(nif8OfRow(rows[1]), "B1234567");
}

TEST_F(CompanyList, AListWrittenInAnotherSpellingIsReadAndAppendedTo) {
    writeRaw(llibresDir(unit) + "EMPRESES.LST", "\"Antiga\",\"A1111111\"\r\n");
    ASSERT_TRUE(addCompany("Nova", "B2222222"));
    EXPECT_EQ(OMPLE_LLISTA_Empreses(unit),
              (QStringList{companyRow({"Antiga", "A1111111"}), companyRow({"Nova", "B2222222"})}));
    EXPECT_EQ(QDir(llibresDir(unit)).entryList(QDir::Files), QStringList{"EMPRESES.LST"});
}

TEST_F(CompanyList, ACompanyWithoutExercisesOpens) {
    ASSERT_TRUE(addCompany("Bar Pepe", "B1234567"));
    EXPECT_TRUE(openCompany("B1234567"));
    EXPECT_TRUE(exerciseRows(ctx).isEmpty());
    writeRaw(companyFolder("B1234567") + files::ExerciciLst, "");
    EXPECT_TRUE(openCompany("B1234567"));
    EXPECT_TRUE(exerciseRows(ctx).isEmpty());
}

TEST_F(CompanyList, ANewCompanyStartsOnItsOwnLineAfterALineWithoutItsEnd) {
    writeRaw(lst(), "\"Antiga\",\"A1111111\"");
    ASSERT_TRUE(addCompany("Nova", "B2222222"));
    EXPECT_EQ(OMPLE_LLISTA_Empreses(unit),
              (QStringList{companyRow({"Antiga", "A1111111"}), companyRow({"Nova", "B2222222"})}));
}

TEST_F(CompanyList, AListThatCannotBeWrittenShowsWhyAndWhere) {
    QDir().mkpath(lst());  // a folder where the list should be
    EXPECT_FALSE(addCompany("Nova", "B2222222"));
    ASSERT_FALSE(dialogs.shown().empty());
    const QString text = dialogs.shown().back().text;
    EXPECT_TRUE(text.endsWith(QStringLiteral(": ") + lst())) << text.toStdString();
    const QString why = text.chopped(lst().size() + 2);
    EXPECT_FALSE(why.isEmpty());
    EXPECT_FALSE(why.contains(QStringLiteral("Unknown error"), Qt::CaseInsensitive))
        << why.toStdString();
}

TEST(Units, TheHomeComesFirstThenOnlyWritableVolumesOfTheUser) {
    const std::vector<MountedVolume> volumes{
        {"/", true, false},
        {"/boot/efi", true, false},
        {"/proc", true, false},
        {"/run/user/1000", true, false},
        {"/snap/core/1", true, true},
        {"/media/ana/USB", true, false},
        {"/media/ana/CDROM", true, true},       // read-only
        {"/run/media/ana/DISC", false, false},  // not ready
        {"/run/media/ana/SD", true, false},
        {"/mnt/backup", true, false},
        {"/mnt", true, false},  // the mount folder itself
        {"/home/ana/nube", true, false},
        {"/home/ana", true, false},  // the home once more
    };
    EXPECT_EQ(userUnits("/home/ana", volumes),
              (QStringList{"/home/ana", "/media/ana/USB", "/run/media/ana/SD", "/mnt/backup",
                           "/home/ana/nube"}));
    EXPECT_EQ(userUnits("/home/ana/", {}), QStringList{"/home/ana"});
}
