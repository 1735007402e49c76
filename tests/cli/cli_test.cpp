// tallora5-cli runs the logic of the screens on a temporary unit: what it prints, what it
// writes and the exit code of each command.
#include "cli/cli_dialogs.h"
#include "cli_fixture.h"
#include "context/list_files.h"
#include "context/month_lock.h"
#include "context/notation.h"
#include "shell/settings_files.h"
#include "store/database.h"

#include <QDate>
#include <QFileInfo>

using namespace tallora;
using tallora::clitest::Result;

namespace {

// The suites start with "cli" so that ctest -R cli selects them.
class cliCommands : public clitest::CliFixture {
protected:
    void addCustomer(const QString& gest, const QString& name) {
        auto db = store::Database::open(gest);
        db.prepare("insert into Clients (nom, NIF) values (?, ?)")
            .bind(1, name)
            .bind(2, "X1")
            .execute();
    }
    static int customerCount(const QString& gest, const QString& name) {
        auto db = store::Database::open(gest);
        auto st = db.prepare("select count(*) from Clients where nom = ?");
        st.bind(1, name);
        st.next();
        return st.int32(0);
    }
};

// ---- help and the command line ------------------------------------------------------------

TEST_F(cliCommands, HelpDocumentsEveryCommandAndOption) {
    for (const QStringList& args :
         {QStringList{"--help"}, QStringList{"help"}, QStringList{"companies", "--help"}}) {
        const Result r = runRaw(args);
        EXPECT_EQ(r.code, 0) << r;
        EXPECT_TRUE(r.err.isEmpty()) << r;
        for (const char* word :
             {"units",          "companies",       "company-create",  "company-remove",
              "exercises",      "exercise-create", "exercise-remove", "exercise-open",
              "months",         "month-lock",      "month-unlock",    "repair",
              "compact",        "--unit",          "--program-dir",   "--yes",
              "--help",         "--name",          "--address",       "--town",
              "--postal-code",  "--nif",           "--treasury",      "--year",
              "--kind",         "FACTURES",        "TICKETS",         "--currency",
              "--iva1",         "--iva2",          "--iva3",          "--re1",
              "--re2",          "--re3",           "--ivas1",         "--ivas2",
              "--ivas3",        "--ivas4",         "Example",         "company-change",
              "exercise-rates", "--no-treasury"})
            EXPECT_TRUE(r.out.contains(QString::fromLatin1(word))) << word;
    }
}

TEST_F(cliCommands, UsageErrorsExitTwoWithAReasonAndChangeNothing) {
    const QStringList cases[] = {
        {},
        {"bogus"},
        {"--frob", "companies"},
        {"companies", "extra"},
        {"companies", "--year", "2025"},
        {"company-remove"},
        {"company-create", "--name"},
        {"company-create", "--name", "A", "--nif", "B1234567/"},
        {"company-create", "--name", QString(41, u'N'), "--nif", "B1234567"},
        {"company-create", "--yes=1", "--name", "A", "--nif", "B1234567"},
        {"exercise-create", "B1234567"},
        {"exercise-create", "B1234567", "--year", "25"},
        {"exercise-create", "B1234567", "--year", "2025", "--kind", "tickets"},
        {"exercise-create", "B1234567", "--year", "2025", "--currency", "Ptes."},
        {"exercise-create", "B1234567", "--year", "2025", "--iva1", "abc"},
        {"exercise-create", "B1234567", "--year", "2025", "--re2", ""},
        {"exercise-create", "B1234567", "--year", "2025", "--year", "2026"},
        {"exercise-remove", "B1234567"},
        {"months", "B1234567", "20x5"},
        {"month-lock", "B1234567", "2025"},
        {"month-lock", "B1234567", "2025", "0"},
        {"month-lock", "B1234567", "2025", "13"},
        {"month-unlock", "B1234567", "2025", "x"},
        {"repair", "B1234567", "2025", "1"},
    };
    for (const QStringList& args : cases) {
        const Result r = run(args);
        EXPECT_EQ(r.code, 2) << args.join(' ').toStdString() << "\n" << r;
        EXPECT_TRUE(r.out.isEmpty()) << r;
        const QStringList lines = r.err.split(u'\n', Qt::SkipEmptyParts);
        ASSERT_EQ(lines.size(), 2) << r;
        EXPECT_TRUE(lines[0].startsWith("tallora5-cli: ")) << r;
        EXPECT_TRUE(lines[1].contains("tallora5-cli --help")) << r;
    }
    EXPECT_TRUE(filesUnder(unit.path()).isEmpty());
    EXPECT_TRUE(filesUnder(program.path()).isEmpty());
}

TEST_F(cliCommands, AnEmptyUnitIsAUsageError) {
    const Result r = runRaw({"companies", "--unit", "", "--program-dir", program.path()});
    EXPECT_EQ(r.code, 2) << r;
    EXPECT_TRUE(r.err.contains("--unit")) << r;
}

TEST_F(cliCommands, GlobalOptionsMayFollowTheCommand) {
    createCompany("Fusteria Pons", "B12345678");
    const Result r = runRaw({"companies", "--program-dir", program.path(), "--unit", unit.path()});
    EXPECT_EQ(r.code, 0) << r;
    EXPECT_EQ(r.out, "B1234567\tFusteria Pons\n");
}

// ---- units and companies ------------------------------------------------------------------

TEST_F(cliCommands, UnitsListTheDefaultFirstAndEachOnce) {
    const Result r = run({"units"});
    ASSERT_EQ(r.code, 0) << r;
    const QStringList lines = r.out.split(u'\n', Qt::SkipEmptyParts);
    ASSERT_FALSE(lines.isEmpty());
    // A fresh program folder remembers no unit: the home folder is the default.
    EXPECT_EQ(lines.front(), QDir::homePath());
    EXPECT_EQ(QSet<QString>(lines.begin(), lines.end()).size(), lines.size());
    for (const QString& available : availableUnits()) EXPECT_TRUE(lines.contains(available));
}

TEST_F(cliCommands, AFreshUnitHasNoCompanies) {
    const Result r = run({"companies"});
    EXPECT_EQ(r.code, 0) << r;
    EXPECT_TRUE(r.out.isEmpty()) << r;
    EXPECT_TRUE(r.err.isEmpty()) << r;
}

TEST_F(cliCommands, CompanyCreateWritesTheCompanyAndPrintsItsNif) {
    const Result r =
        run({"company-create", "--yes", "--name", "Fusteria d'Pons", "--address", "Carrer Major 1",
             "--town", "Vic", "--postal-code", "08500", "--nif", "B12345678"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_EQ(r.out, "B12345678\n");
    EXPECT_TRUE(r.err.isEmpty()) << r;
    // The name field turns the apostrophe as it is typed.
    const QString name = QStringLiteral("Fusteria d\u00B4Pons");
    EXPECT_EQ(run({"companies"}).out, "B1234567\t" + name + "\n");
    const auto data = readCompanyData(company("B1234567") + "B1234567.Dat");
    ASSERT_TRUE(data.has_value());
    EXPECT_EQ(*data, (CompanyData{name, "Carrer Major 1", "Vic", "08500", "B12345678"}));
    EXPECT_FALSE(readOptionFlag(company("B1234567") + files::TesorerCfg));
    ASSERT_TRUE(QFileInfo::exists(company("B1234567") + files::TesorerCfg));
}

TEST_F(cliCommands, TreasuryOptionIsWrittenTrue) {
    createCompany("Bar Centre", "B87654321", true);
    EXPECT_TRUE(readOptionFlag(company("B8765432") + files::TesorerCfg));
}

TEST_F(cliCommands, CompanyCreateWithoutYesRefusesAndWritesNothing) {
    const Result r = run({"company-create", "--name", "Fusteria Pons", "--nif", "B12345678"});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_TRUE(r.out.isEmpty()) << r;
    EXPECT_TRUE(r.err.contains(msg(36))) << r;
    EXPECT_TRUE(r.err.contains(msg(37))) << r;
    EXPECT_TRUE(r.err.contains("--yes")) << r;
    EXPECT_TRUE(filesUnder(unit.path()).isEmpty());
    EXPECT_FALSE(QFileInfo::exists(llibres()));
}

TEST_F(cliCommands, ShortNifIsRefusedWithItsMessageAndEightCharactersPass) {
    Result r = run({"--yes", "company-create", "--name", "Fusteria Pons", "--nif", "1234567"});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_EQ(r.err, msg(34) + "\n");
    EXPECT_TRUE(filesUnder(unit.path()).isEmpty());
    r = run({"--yes", "company-create", "--name", "Fusteria Pons"});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_EQ(r.err, msg(34) + "\n");
    r = run({"--yes", "company-create", "--name", "Fusteria Pons", "--nif", "12345678"});
    EXPECT_EQ(r.code, 0) << r;
    EXPECT_EQ(r.out, "12345678\n");
}

TEST_F(cliCommands, CompanyWithoutNameIsRefusedWithItsMessage) {
    const Result r = run({"--yes", "company-create", "--nif", "B12345678"});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_EQ(r.err, msg(35) + "\n");
    EXPECT_TRUE(filesUnder(unit.path()).isEmpty());
}

TEST_F(cliCommands, FiveCompaniesOnOneNifAndTheSixthIsRefused) {
    const QStringList expected{"B12345678", "-B12345678", "--B12345678", "---B12345678",
                               "----B12345678"};
    for (int i = 0; i < 5; ++i) {
        const Result r = run({"--yes", "company-create", "--name",
                              QStringLiteral("Empresa %1").arg(i + 1), "--nif", "B12345678"});
        ASSERT_EQ(r.code, 0) << r;
        EXPECT_EQ(r.out, expected[i] + "\n");
    }
    const Result sixth =
        run({"--yes", "company-create", "--name", "Empresa 6", "--nif", "B12345678"});
    EXPECT_EQ(sixth.code, 1) << sixth;
    EXPECT_TRUE(sixth.out.contains(msg(38))) << sixth;
    EXPECT_EQ(run({"companies"}).out,
              "B1234567\tEmpresa 1\n-B123456\tEmpresa 2\n--B12345\tEmpresa 3\n"
              "---B1234\tEmpresa 4\n----B123\tEmpresa 5\n");
}

TEST_F(cliCommands, KeysStartingWithDashesReachTheirCompany) {
    for (int i = 0; i < 3; ++i) createCompany(QStringLiteral("Empresa %1").arg(i + 1), "B12345678");
    // "--B12345" is no option: its first letter is a capital.
    Result r = run({"exercises", "--B12345"});
    EXPECT_EQ(r.code, 0) << r;
    // After a lone "--" every word is an argument, lowercase or not.
    r = run({"--yes", "company-remove", "--", "--B12345"});
    EXPECT_EQ(r.code, 0) << r;
    r = run({"--yes", "company-remove", "-B123456"});
    EXPECT_EQ(r.code, 0) << r;
    EXPECT_EQ(run({"companies"}).out, "B1234567\tEmpresa 1\n");
    EXPECT_FALSE(QFileInfo::exists(company("--B12345")));
    EXPECT_FALSE(QFileInfo::exists(company("-B123456")));
}

TEST_F(cliCommands, UnknownKeyIsRefusedClearly) {
    createCompany("Fusteria Pons", "B12345678");
    for (const QStringList& args :
         {QStringList{"exercises", "Z9999999"}, QStringList{"--yes", "company-remove", "Z9999999"},
          QStringList{"months", "Z9999999", "2025"},
          QStringList{"--yes", "exercise-create", "Z9999999", "--year", "2025"}}) {
        const Result r = run(args);
        EXPECT_EQ(r.code, 1) << r;
        EXPECT_TRUE(r.err.contains("Z9999999")) << r;
    }
    EXPECT_FALSE(QFileInfo::exists(company("Z9999999")));
}

TEST_F(cliCommands, CompanyRemoveAsksAndRefusesWhileItHasExercises) {
    createCompany("Fusteria Pons", "B12345678");
    createExercise("B1234567", "2025");

    Result r = run({"company-remove", "B1234567"});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_TRUE(r.err.contains(msg(24) + msg(25))) << r;

    r = run({"--yes", "company-remove", "B1234567"});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_EQ(r.out, msg(26) + msg(27) + "\n");
    EXPECT_TRUE(QFileInfo::exists(company("B1234567") + "B1234567.Dat"));
    EXPECT_EQ(run({"companies"}).out, "B1234567\tFusteria Pons\n");

    ASSERT_EQ(run({"--yes", "exercise-remove", "B1234567", "2025"}).code, 0);
    r = run({"--yes", "company-remove", "B1234567"});
    EXPECT_EQ(r.code, 0) << r;
    EXPECT_TRUE(run({"companies"}).out.isEmpty());
    EXPECT_FALSE(QFileInfo::exists(company("B1234567")));
}

// ---- exercises ----------------------------------------------------------------------------

TEST_F(cliCommands, ExerciseCreateWritesDefaultsAndListsTheYear) {
    createCompany("Fusteria Pons", "B12345678");
    EXPECT_TRUE(run({"exercises", "B1234567"}).out.isEmpty());
    createExercise("B1234567", "2025");
    const Result r = run({"exercises", "B1234567"});
    EXPECT_EQ(r.code, 0) << r;
    EXPECT_EQ(r.out, "2025\n");
    const auto params = readExerciseParams(company("B1234567") + "2025.DAT");
    ASSERT_TRUE(params.has_value());
    EXPECT_EQ(params->moneda, "Euros");
    EXPECT_EQ(params->tipusLlibre, 1);
    EXPECT_EQ(params->modeExercici, "FACTURES");
    EXPECT_EQ(params->iva, (std::array<QString, 3>{"16", "7", "4"}));
    EXPECT_EQ(params->re, (std::array<QString, 3>{"4", "1", "0,5"}));
    EXPECT_EQ(params->ivas, (std::array<QString, 4>{"16", "7", "4", "4,5"}));
    for (const char* db : {"gest.mdb", "Comptes.mdb", "FrasIN.mdb", "FrasOUT.mdb"})
        EXPECT_TRUE(QFileInfo::exists(company("B1234567") + "2025/" + db)) << db;
}

TEST_F(cliCommands, ExerciseCreateTakesKindAndRatesAsTyped) {
    createCompany("Bar Centre", "B12345678");
    createExercise(
        "B1234567", "2025",
        {"--kind",  "TICKETS", "--currency", "Euros", "--iva1",  "21",  "--iva2",  "10",
         "--iva3",  "4",       "--re1",      "5,2",   "--re2",   "1,4", "--re3",   "0,5",
         "--ivas1", "21",      "--ivas2",    "10",    "--ivas3", "4",   "--ivas4", "0,00"});
    const auto params = readExerciseParams(company("B1234567") + "2025.DAT");
    ASSERT_TRUE(params.has_value());
    EXPECT_EQ(params->tipusLlibre, 0);
    EXPECT_EQ(params->modeExercici, "TICKETS");
    EXPECT_EQ(params->iva, (std::array<QString, 3>{"21", "10", "4"}));
    EXPECT_EQ(params->re, (std::array<QString, 3>{"5,2", "1,4", "0,5"}));
    EXPECT_EQ(params->ivas, (std::array<QString, 4>{"21", "10", "4", "0,00"}));
}

TEST_F(cliCommands, RateZeroIsRefusedWhileZeroWithDecimalsPasses) {
    createCompany("Fusteria Pons", "B12345678");
    for (const char* option : {"--iva2", "--re3", "--ivas4"}) {
        const Result r =
            run({"--yes", "exercise-create", "B1234567", "--year", "2025", option, "0"});
        EXPECT_EQ(r.code, 1) << r;
        EXPECT_EQ(r.err, msg(6997) + "\n");
    }
    EXPECT_FALSE(QFileInfo::exists(company("B1234567") + "2025"));
    EXPECT_TRUE(run({"exercises", "B1234567"}).out.isEmpty());
    const Result r =
        run({"--yes", "exercise-create", "B1234567", "--year", "2025", "--iva2", "0,00"});
    EXPECT_EQ(r.code, 0) << r;
}

TEST_F(cliCommands, AYearThatExistsIsRefused) {
    createCompany("Fusteria Pons", "B12345678");
    createExercise("B1234567", "2025");
    const Result r = run({"--yes", "exercise-create", "B1234567", "--year", "2025"});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_EQ(r.err, msg(128) + "\n");
    EXPECT_EQ(run({"exercises", "B1234567"}).out, "2025\n");
}

TEST_F(cliCommands, ExerciseCreateWithoutYesRefusesAndWritesNothing) {
    createCompany("Fusteria Pons", "B12345678");
    // Opening the company writes its missing option files; take the tree after that.
    ASSERT_EQ(run({"exercises", "B1234567"}).code, 0);
    const QStringList before = filesUnder(unit.path());
    const Result r = run({"exercise-create", "B1234567", "--year", "2025"});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_TRUE(r.err.contains(msg(129))) << r;
    EXPECT_TRUE(r.err.contains("--yes")) << r;
    EXPECT_EQ(filesUnder(unit.path()), before);
    EXPECT_FALSE(QFileInfo::exists(company("B1234567") + "2025"));
}

TEST_F(cliCommands, TheYearBeforeCarriesItsCustomers) {
    createCompany("Fusteria Pons", "B12345678");
    createExercise("B1234567", "2024");
    addCustomer(company("B1234567") + "2024/gest.mdb", "Maria Soler");
    createExercise("B1234567", "2025");
    EXPECT_EQ(customerCount(company("B1234567") + "2025/gest.mdb", "Maria Soler"), 1);
    // With a gap of a year nothing passes.
    createExercise("B1234567", "2027");
    EXPECT_EQ(customerCount(company("B1234567") + "2027/gest.mdb", "Maria Soler"), 0);
    EXPECT_EQ(run({"exercises", "B1234567"}).out, "2024\n2025\n2027\n");
}

TEST_F(cliCommands, ExerciseRemoveAsksTwiceWhenItHoldsData) {
    createCompany("Fusteria Pons", "B12345678");
    createExercise("B1234567", "2025");
    addCustomer(company("B1234567") + "2025/gest.mdb", "Maria Soler");

    Result r = run({"exercise-remove", "B1234567", "2025"});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_TRUE(r.err.contains(msg(126))) << r;
    EXPECT_TRUE(QFileInfo::exists(company("B1234567") + "2025/gest.mdb"));
    EXPECT_EQ(run({"exercises", "B1234567"}).out, "2025\n");

    r = run({"--yes", "exercise-remove", "B1234567", "2026"});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_TRUE(r.err.contains("2026")) << r;

    r = run({"--yes", "exercise-remove", "B1234567", "2025"});
    EXPECT_EQ(r.code, 0) << r;
    EXPECT_FALSE(QFileInfo::exists(company("B1234567") + "2025"));
    EXPECT_FALSE(QFileInfo::exists(company("B1234567") + "2025.DAT"));
    EXPECT_TRUE(run({"exercises", "B1234567"}).out.isEmpty());
}

TEST_F(cliCommands, ExerciseOpenTakesTheSafetyCopyAndPreparesTreasury) {
    createCompany("Bar Centre", "B12345678", true);
    createExercise("B1234567", "2025");
    Result r = run({"exercise-open", "B1234567", "2025"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_EQ(r.out, company("B1234567") + "2025/\n");
    EXPECT_TRUE(QFileInfo::exists(company("B1234567") + "bkp/copia_v4/2025/gest.mdb"));
    EXPECT_TRUE(QFileInfo::exists(company("B1234567") + "cartera.mdb"));
    // The upgrades made the treasury database on the first opening; from now on only the
    // shell's start, with treasury on, puts a missing cash account back.
    const QString tesorer = company("B1234567") + "2025/tesorer.mdb";
    store::Database::open(tesorer).execute("delete from entidades");
    r = run({"exercise-open", "B1234567", "2025"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_TRUE(QFileInfo::exists(company("B1234567") + "bkp/" +
                                  QString::number(QDate::currentDate().dayOfWeek()) +
                                  "/2025/gest.mdb"));
    auto db = store::Database::open(tesorer);
    auto st = db.prepare("select Grup, entidad from entidades");
    ASSERT_TRUE(st.next());
    EXPECT_EQ(st.int32(0), 570);
    EXPECT_EQ(st.text(1), msg(6646));
    EXPECT_FALSE(st.next());
}

TEST_F(cliCommands, ExerciseOpenWithoutTreasuryLeavesItsAccountsAlone) {
    createCompany("Fusteria Pons", "B12345678");
    createExercise("B1234567", "2025");
    ASSERT_EQ(run({"exercise-open", "B1234567", "2025"}).code, 0);
    const QString tesorer = company("B1234567") + "2025/tesorer.mdb";
    store::Database::open(tesorer).execute("delete from entidades");
    ASSERT_EQ(run({"exercise-open", "B1234567", "2025"}).code, 0);
    auto db = store::Database::open(tesorer);
    EXPECT_FALSE(db.prepare("select * from entidades").next());
}

TEST_F(cliCommands, ExerciseOpenOfAnUnknownYearIsRefused) {
    createCompany("Fusteria Pons", "B12345678");
    const Result r = run({"exercise-open", "B1234567", "2025"});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_TRUE(r.out.isEmpty()) << r;
    EXPECT_FALSE(QFileInfo::exists(company("B1234567") + "bkp"));
}

// ---- month lock ---------------------------------------------------------------------------

TEST_F(cliCommands, MonthLockShowsLockedAndWritesTwelveLines) {
    createCompany("Fusteria Pons", "B12345678");
    createExercise("B1234567", "2025");
    Result r = run({"months", "B1234567", "2025"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_FALSE(r.out.contains("locked"));

    r = run({"month-lock", "B1234567", "2025", "1", "3", "12"});
    ASSERT_EQ(r.code, 0) << r;
    r = run({"months", "B1234567", "2025"});
    ASSERT_EQ(r.code, 0) << r;
    const QStringList lines = r.out.split(u'\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 12);
    for (int month = 1; month <= 12; ++month) {
        const bool locked = month == 1 || month == 3 || month == 12;
        EXPECT_EQ(lines[month - 1],
                  QStringLiteral("%1\t%2\t%3")
                      .arg(month)
                      .arg(msg(5000 + month), QString(locked ? "locked" : "open")));
    }
    const QString file = company("B1234567") + "2025/2025blocks.DAT";
    const auto content = readTextFile(file);
    ASSERT_TRUE(content.has_value());
    EXPECT_EQ(content->split(u'\n', Qt::SkipEmptyParts).size(), 12);
    EXPECT_EQ(readMonthLock(file), (std::array<int, 12>{1, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0, 1}));

    r = run({"month-unlock", "B1234567", "2025", "3", "12"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_EQ(readMonthLock(file), (std::array<int, 12>{1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
}

TEST_F(cliCommands, MonthsOfAnUnknownExerciseAreRefused) {
    createCompany("Fusteria Pons", "B12345678");
    const Result r = run({"month-lock", "B1234567", "2025", "1"});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_TRUE(r.err.contains("2025")) << r;
    EXPECT_FALSE(QFileInfo::exists(company("B1234567") + "2025"));
}

// ---- maintenance --------------------------------------------------------------------------

TEST_F(cliCommands, RepairAndCompactEndWithTheirMessageAndKeepTheData) {
    createCompany("Fusteria Pons", "B12345678");
    createExercise("B1234567", "2025");
    addCustomer(company("B1234567") + "2025/gest.mdb", "Maria Soler");
    for (const char* command : {"repair", "compact"}) {
        const Result r = run({command, "B1234567", "2025"});
        EXPECT_EQ(r.code, 0) << r;
        EXPECT_EQ(r.out, msg(6611) + "\n");
    }
    EXPECT_EQ(customerCount(company("B1234567") + "2025/gest.mdb", "Maria Soler"), 1);
    const QStringList left = filesUnder(company("B1234567"));
    for (const QString& file : left) EXPECT_FALSE(file.endsWith(u'N')) << file.toStdString();
    const Result unknown = run({"compact", "B1234567", "2024"});
    EXPECT_EQ(unknown.code, 1) << unknown;
}

// ---- language -----------------------------------------------------------------------------

TEST_F(cliCommands, MessagesFollowTheLanguageOfTheProgramFolder) {
    ASSERT_TRUE(settings::writeIdioma(program.path(), "cat"));
    WorkingContext catalan;
    ASSERT_TRUE(catalan.setIdioma("cat"));
    const Result r = run({"--yes", "company-create", "--nif", "B12345678"});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_EQ(r.err, Missatge(catalan, 35) + "\n");
    EXPECT_NE(Missatge(catalan, 35), msg(35));
}

// ---- the message boxes --------------------------------------------------------------------

TEST(cliDialogs, QuestionsWithoutYesAreShownAndAnsweredNo) {
    QString out, err;
    QTextStream o(&out), e(&err);
    cli::CliDialogs dialogs(o, e, false);
    EXPECT_EQ(dialogs.yesNo("¿Seguro?"), Dialogs::Answer::No);
    EXPECT_TRUE(dialogs.refused());
    EXPECT_EQ(dialogs.okCancel("¿Añadir?"), Dialogs::Answer::Cancel);
    o.flush();
    e.flush();
    EXPECT_TRUE(out.isEmpty());
    EXPECT_TRUE(err.startsWith("¿Seguro?\n"));
    EXPECT_TRUE(err.contains("No"));
    EXPECT_TRUE(err.contains("¿Añadir?\n"));
    EXPECT_TRUE(err.contains("Cancel"));
    EXPECT_EQ(err.count("--yes"), 2);
}

TEST(cliDialogs, YesAnswersEveryQuestion) {
    QString out, err;
    QTextStream o(&out), e(&err);
    cli::CliDialogs dialogs(o, e, true);
    EXPECT_EQ(dialogs.yesNo("¿Seguro?"), Dialogs::Answer::Yes);
    EXPECT_EQ(dialogs.okCancel("¿Añadir?"), Dialogs::Answer::Ok);
    dialogs.beep();
    EXPECT_FALSE(dialogs.refused());
    dialogs.information("Hecho");
    EXPECT_FALSE(dialogs.refused());
    dialogs.stop("No se puede");
    EXPECT_TRUE(dialogs.refused());
    o.flush();
    e.flush();
    EXPECT_EQ(out, "Hecho\n");
    EXPECT_EQ(err, "No se puede\n");
}

}  // namespace

TEST_F(cliCommands, CompanyChangeKeepsTheKeyAndSwitchesTreasuryAsTheScreenDoes) {
    createCompany("Fusteria Pons", "B12345678");
    createExercise("B1234567", "2026");
    Result r = run({"company-change", "B1234567", "2026", "--name", "Fusteria Nova"});
    EXPECT_EQ(r.code, 1) << r;  // the question needs --yes
    EXPECT_EQ(readCompanyData(company("B1234567") + "B1234567.Dat")->nom,
              QStringLiteral("Fusteria Pons"));
    r = run({"--yes", "company-change", "B1234567", "2026", "--name", "Fusteria Nova", "--nif",
             "C99999999", "--treasury"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_TRUE(r.out.contains(msg(6405))) << r;
    const auto data = readCompanyData(company("B1234567") + "B1234567.Dat");
    EXPECT_EQ(data, (CompanyData{"Fusteria Nova", "", "", "", "C99999999"}));
    EXPECT_EQ(run({"companies"}).out, QStringLiteral("B1234567\tFusteria Nova\n"));
    EXPECT_TRUE(readCompanyFlags(company("B1234567")).tesoreria);
    EXPECT_TRUE(QFileInfo::exists(company("B1234567") + "2026/tesorer.mdb"));
    r = run({"--yes", "company-change", "B1234567", "2026", "--no-treasury"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_FALSE(readCompanyFlags(company("B1234567")).tesoreria);
    EXPECT_EQ(readCompanyData(company("B1234567") + "B1234567.Dat")->nom,
              QStringLiteral("Fusteria Nova"));
    EXPECT_EQ(run({"company-change", "B1234567", "2026", "--treasury", "--no-treasury"}).code, 2);
}

TEST_F(cliCommands, ExerciseRatesRewriteTheParametersAndRefuseZero) {
    createCompany("Fusteria Pons", "B12345678");
    createExercise("B1234567", "2026");
    Result r = run({"--yes", "exercise-rates", "B1234567", "2026", "--iva1", "0"});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_TRUE(r.err.contains(msg(6997)) || r.out.contains(msg(6997))) << r;
    r = run({"--yes", "exercise-rates", "B1234567", "2026", "--iva1", "21", "--iva2", "10", "--re1",
             "5,2", "--ivas1", "21"});
    ASSERT_EQ(r.code, 0) << r;
    const auto params = readExerciseParams(company("B1234567") + "2026.DAT");
    ASSERT_TRUE(params);
    EXPECT_EQ(params->iva, (std::array<QString, 3>{"21", "10", "4"}));
    EXPECT_EQ(params->re, (std::array<QString, 3>{"5,2", "1", "0,5"}));
    EXPECT_EQ(params->ivas, (std::array<QString, 4>{"21", "7", "4", "4,5"}));
    EXPECT_EQ(params->tipusLlibre, 1);
    EXPECT_EQ(params->modeExercici, QStringLiteral("FACTURES"));
}
