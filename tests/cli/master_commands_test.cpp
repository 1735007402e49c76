// The master-file commands of tallora5-cli on an opened exercise: lists, additions, changes
// and deletions, the program's refusals, and what needs treasury or billing.
#include "cli_fixture.h"
#include "context/file_tree.h"
#include "shell/settings_files.h"
#include "store/database.h"

#include <QDateTime>
#include <QFileInfo>

#include <map>
#include <utility>

using namespace tallora;
using tallora::clitest::Result;

namespace {

const QString K = QStringLiteral("B1234567");
const QString Y = QStringLiteral("2025");

class cliMasterFiles : public clitest::CliFixture {
protected:
    // A company with the options asked, its exercise 2025 created and opened once.
    void open(bool treasury, bool billing) {
        createCompany("Fusteria Pons", "B12345678", treasury);
        if (billing) {
            ASSERT_TRUE(settings::writeFactMod(company(K), {true, QString(), 1}));
        }
        createExercise(K, Y);
        const Result r = run({"exercise-open", K, Y});
        ASSERT_EQ(r.code, 0) << r;
    }

    // A command on the exercise: the command, NIF8, the year, then the rest.
    Result on(const QString& command, const QStringList& rest = {}) {
        return run(QStringList{command, K, Y} + rest);
    }
    Result yes(const QString& command, const QStringList& rest = {}) {
        return run(QStringList{"--yes", command, K, Y} + rest);
    }

    QString file(const QString& name) const { return company(K) + Y + u'/' + name; }
    QString companyFile(const QString& name) const { return company(K) + name; }

    static void exec(const QString& path, const QString& sql) {
        store::Database::open(path).execute(sql);
    }
    static int count(const QString& path, const QString& sql) {
        auto db = store::Database::open(path);
        auto st = db.prepare(sql);
        st.next();
        return st.int32(0);
    }
    static QString text(const QString& path, const QString& sql) {
        auto db = store::Database::open(path);
        auto st = db.prepare(sql);
        return st.next() ? st.text(0) : QStringLiteral("<none>");
    }

    // The number the addition printed on its last line.
    static QString number(const Result& r) {
        const QStringList lines = r.out.split(u'\n', Qt::SkipEmptyParts);
        return lines.isEmpty() ? QString() : lines.back();
    }
    static QStringList lines(const Result& r) { return r.out.split(u'\n', Qt::SkipEmptyParts); }

    // Every file of the unit with its size and time, to see that nothing was touched.
    std::map<QString, std::pair<qint64, QDateTime>> snapshot() const {
        std::map<QString, std::pair<qint64, QDateTime>> files;
        for (const QString& name : filesUnder(unit.path())) {
            const QFileInfo info(unit.path() + u'/' + name);
            files[name] = {info.size(), info.lastModified()};
        }
        return files;
    }

    // A sale and a purchase as the postings leave them, reduced to what the refusals read.
    void addSale(const QString& client, int grup = 70, const QString& compte = "1") {
        exec(file("FrasOUT.mdb"),
             QStringLiteral("insert into FrasOut (Ordre, data, Client, NomClient, Grup, Compte) "
                            "values (1, '2025-01-15', %1, 'Venda', %2, %3)")
                 .arg(client)
                 .arg(grup)
                 .arg(compte));
    }
    void addPurchase(const QString& proveidor, int grup = 60, const QString& compte = "1") {
        exec(file("FrasIN.mdb"),
             QStringLiteral("insert into FrasIN (Ordre, data, Proveidor, NomProveidor, Grup, "
                            "Compte) values (1, '2025-01-15', %1, 'Compra', %2, %3)")
                 .arg(proveidor)
                 .arg(grup)
                 .arg(compte));
    }
};

// ---- help and the command line ------------------------------------------------------------

TEST_F(cliMasterFiles, HelpDocumentsEveryMasterCommandAndOption) {
    const Result r = runRaw({"--help"});
    ASSERT_EQ(r.code, 0) << r;
    for (const char* word : {"customers",
                             "customer-add",
                             "customer-change",
                             "customer-remove",
                             "suppliers",
                             "supplier-add",
                             "supplier-change",
                             "supplier-remove",
                             "accounts",
                             "account-add",
                             "account-change",
                             "account-remove",
                             "treasury-accounts",
                             "treasury-account-add",
                             "treasury-account-change",
                             "treasury-account-remove",
                             "other-accounts",
                             "other-account-add",
                             "other-account-change",
                             "other-account-remove",
                             "references",
                             "reference-add",
                             "reference-change",
                             "reference-remove",
                             "--province",
                             "--phone",
                             "--fax",
                             "--email",
                             "--web",
                             "--re",
                             "--balance",
                             "--payment",
                             "--bank",
                             "--ccc",
                             "--class",
                             "--group",
                             "--group-name",
                             "--code",
                             "--description",
                             "--price",
                             "cash|bank",
                             "asset|liability|none",
                             "Ingresos",
                             "Compres",
                             "Serveis",
                             "Tributs",
                             "Personal",
                             "Amortitzacions",
                             "Inversions"})
        EXPECT_TRUE(r.out.contains(QString::fromLatin1(word))) << word;
}

TEST_F(cliMasterFiles, UsageErrorsExitTwoAndTouchNothing) {
    ASSERT_NO_FATAL_FAILURE(open(true, true));
    ASSERT_EQ(on("customer-add", {"--name", "Maria Soler"}).code, 0);
    const auto before = snapshot();
    const QStringList cases[] = {
        {"customers", K},
        {"customers", K, "25"},
        {"customers", K, Y, "1"},
        {"customer-add", K, Y, "--re", "si"},
        {"customer-add", K, Y, "--name", "A", "--nif", "B-1234"},
        {"customer-add", K, Y, "--name", "A", "--balance", "1.234,5"},
        {"customer-add", K, Y, "--name", "A", "--balance", "abc"},
        {"customer-add", K, Y, "--name", "A", "--balance", "12,"},
        {"customer-add", K, Y, "--name", "A", "--balance", "99999999999999999999"},
        {"customer-add", K, Y, "--name", "A", "--class", "x"},
        {"customer-change", K, Y},
        {"customer-change", K, Y, "x1", "--name", "B"},
        {"customer-change", K, Y, "1", "--re", "1"},
        {"customer-remove", K, Y, "1", "2"},
        {"customer-remove", K, Y, "-1"},
        {"supplier-add", K, Y, "--name", "A", "--re", "yes"},
        {"supplier-add", K, Y, "--name", "A", "--balance", "1,2,3"},
        {"supplier-change", K, Y, "1", "--payment", "x"},
        {"supplier-remove", K, Y},
        {"accounts", K, Y},
        {"accounts", K, Y, "Gastos"},
        {"account-add", K, Y, "Otras", "--name", "X", "--class", "Y"},
        {"account-add", K, Y, "Serveis", "--name", "X", "--balance", "1"},
        {"account-change", K, Y, "Serveis", "uno", "--name", "X"},
        {"account-remove", K, Y, "Serveis"},
        {"treasury-accounts", K, Y, "1"},
        {"treasury-account-add", K, Y, "--name", "Banc", "--kind", "caja"},
        {"treasury-account-add", K, Y, "--name", "Banc", "--kind", "bank", "--balance", "1e3"},
        {"treasury-account-change", K, Y, "1", "--group", "572"},
        {"other-account-add", K, Y, "--name", "Préstec", "--kind", "A"},
        {"other-account-add", K, Y, "--name", "Préstec", "--group", "17x"},
        {"other-account-change", K, Y, "1", "--ccc", "1"},
        {"reference-add", K, Y, "--code", "R1", "--price", "12.5.0"},
        {"reference-add", K, Y, "--code", "R1", "--name", "x"},
        {"reference-change", K, Y},
        {"reference-remove", K, Y, "R1", "R2"},
    };
    for (const QStringList& args : cases) {
        const Result r = run(QStringList{"--yes"} + args);
        EXPECT_EQ(r.code, 2) << args.join(' ').toStdString() << "\n" << r;
        EXPECT_TRUE(r.out.isEmpty()) << r;
        EXPECT_TRUE(r.err.startsWith("tallora5-cli: ")) << r;
        EXPECT_TRUE(r.err.contains("tallora5-cli --help")) << r;
    }
    EXPECT_EQ(snapshot(), before);
    // A word is checked before the company is looked for.
    EXPECT_EQ(run({"customers", "Z9999999", "20x5"}).code, 2);
}

TEST_F(cliMasterFiles, AnExerciseNeverOpenedIsRefusedUntilItIs) {
    createCompany("Fusteria Pons", "B12345678");
    createExercise(K, Y);
    for (const QStringList& args :
         {QStringList{"customers"}, QStringList{"customer-add", "--name", "Maria Soler"},
          QStringList{"accounts", "Serveis"}}) {
        const Result r = on(args[0], args.mid(1));
        EXPECT_EQ(r.code, 1) << r;
        EXPECT_TRUE(r.out.isEmpty()) << r;
        EXPECT_TRUE(r.err.contains("exercise-open " + K + " " + Y)) << r;
    }
    EXPECT_EQ(count(file("gest.mdb"), "select count(*) from Clients"), 0);
    ASSERT_EQ(run({"exercise-open", K, Y}).code, 0);
    const Result r = on("customer-add", {"--name", "Maria Soler"});
    EXPECT_EQ(r.code, 0) << r;
    EXPECT_EQ(count(file("gest.mdb"), "select count(*) from Clients"), 1);
}

TEST_F(cliMasterFiles, AnUnknownCompanyOrYearIsRefused) {
    ASSERT_NO_FATAL_FAILURE(open(false, false));
    Result r = run({"customers", "Z9999999", Y});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_TRUE(r.err.contains("Z9999999")) << r;
    r = run({"suppliers", K, "2024"});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_TRUE(r.err.contains("2024")) << r;
}

// ---- customers ----------------------------------------------------------------------------

TEST_F(cliMasterFiles, CustomerAddWritesEveryFieldAndTheListShowsThem) {
    ASSERT_NO_FATAL_FAILURE(open(true, false));
    EXPECT_EQ(on("customers").out, "");
    const Result r =
        on("customer-add",
           {"--name",    "Maria Soler", "--address",         "Carrer Major 1", "--town",
            "Vic",       "--province",  "Barcelona",         "--postal-code",  "08500",
            "--nif",     "12345678Z",   "--phone",           "938000000",      "--fax",
            "938000001", "--email",     "maria@example.com", "--web",          "www.example.com",
            "--re",      "yes",         "--balance",         "1234.5"});
    ASSERT_EQ(r.code, 0) << r;
    const QString n = number(r);
    EXPECT_EQ(r.out, msg(314) + "1\n" + n + "\n");
    EXPECT_TRUE(r.err.isEmpty()) << r;
    EXPECT_EQ(on("customers").out,
              n + "\tMaria Soler\t12345678Z\tCarrer Major 1\tVic\tBarcelona\t08500\t938000000\t"
                  "938000001\tmaria@example.com\twww.example.com\tyes\t1.234,50\t\t\t\n");
    EXPECT_EQ(count(file("gest.mdb"), "select count(*) from Clients where saldo = 12345000"), 1);
}

TEST_F(cliMasterFiles, AmountsFollowTheProgramsDecimalMark) {
    ASSERT_TRUE(settings::writeDecimal(program.path(), 46));
    ASSERT_NO_FATAL_FAILURE(open(true, false));
    ASSERT_EQ(on("customer-add", {"--name", "A", "--balance", "1234,5"}).code, 0);
    ASSERT_EQ(on("customer-add", {"--name", "B", "--balance", "-7.25"}).code, 0);
    const QStringList l = lines(on("customers"));
    ASSERT_EQ(l.size(), 2);
    EXPECT_TRUE(l[0].endsWith("\t1,234.50\t\t\t")) << l[0].toStdString();
    EXPECT_TRUE(l[1].endsWith("\t-7.25\t\t\t")) << l[1].toStdString();
    EXPECT_EQ(count(file("gest.mdb"), "select count(*) from Clients where saldo = -72500"), 1);
}

TEST_F(cliMasterFiles, CustomerRefusalsPrintTheProgramsMessageAndAddNothing) {
    ASSERT_NO_FATAL_FAILURE(open(false, false));
    ASSERT_EQ(on("customer-add", {"--name", "Maria Soler"}).code, 0);
    Result r = on("customer-add", {"--name", "Maria Soler", "--town", "Vic"});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_TRUE(r.out.isEmpty()) << r;
    EXPECT_EQ(r.err, msg(6843) + "\n");
    r = on("customer-add", {"--town", "Vic"});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_EQ(r.err, msg(312) + "\n");
    EXPECT_EQ(count(file("gest.mdb"), "select count(*) from Clients"), 1);
}

TEST_F(cliMasterFiles, CustomerChangeKeepsWhatIsNotGivenAndSpreadsTheName) {
    ASSERT_NO_FATAL_FAILURE(open(false, false));
    const Result added = on("customer-add", {"--name", "Maria Soler", "--town", "Vic", "--nif",
                                             "12345678Z", "--re", "yes", "--phone", "111"});
    ASSERT_EQ(added.code, 0) << added;
    const QString n = number(added);
    addSale(n);
    Result r = on("customer-change", {n, "--phone", "222", "--re", "no", "--name", "Maria Puig"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_TRUE(r.out.startsWith(msg(314) + "1\n")) << r;
    EXPECT_TRUE(r.out.contains(msg(327) + "1\n")) << r;
    EXPECT_EQ(on("customers").out,
              n + "\tMaria Puig\t12345678Z\t\tVic\t\t\t222\t\t\t\tno\t\t\t\t\n");
    EXPECT_EQ(text(file("FrasOUT.mdb"), "select NomClient from FrasOut"), "Maria Puig");

    r = on("customer-change", {"99", "--phone", "333"});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_TRUE(r.err.contains("\"99\"")) << r;
}

TEST_F(cliMasterFiles, CustomerRemoveAsksAndOnlyYesDeletes) {
    ASSERT_NO_FATAL_FAILURE(open(false, false));
    const QString n = number(on("customer-add", {"--name", "Maria Soler"}));
    Result r = on("customer-remove", {n});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_TRUE(r.out.isEmpty()) << r;
    EXPECT_TRUE(r.err.contains(msg(309) + msg(25))) << r;
    EXPECT_TRUE(r.err.contains("--yes")) << r;
    EXPECT_EQ(lines(on("customers")).size(), 1);

    r = yes("customer-remove", {n});
    EXPECT_EQ(r.code, 0) << r;
    EXPECT_EQ(r.out, msg(311) + "1\n");
    EXPECT_TRUE(on("customers").out.isEmpty());

    r = yes("customer-remove", {n});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_TRUE(r.err.contains("\"" + n + "\"")) << r;
}

TEST_F(cliMasterFiles, ACustomerWithSalesIsNotRemoved) {
    ASSERT_NO_FATAL_FAILURE(open(true, true));
    const QString n = number(on("customer-add", {"--name", "Maria Soler"}));
    addSale(n);
    const Result r = yes("customer-remove", {n});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_TRUE(r.out.isEmpty()) << r;
    EXPECT_EQ(r.err, msg(310) + "\n");
    EXPECT_EQ(count(file("gest.mdb"), "select count(*) from Clients"), 1);
}

TEST_F(cliMasterFiles, BalanceNeedsTreasuryAndCommercialFieldsNeedBilling) {
    ASSERT_NO_FATAL_FAILURE(open(false, false));
    Result r = on("customer-add", {"--name", "Maria Soler", "--balance", "5"});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_TRUE(r.out.isEmpty()) << r;
    EXPECT_TRUE(r.err.contains("--balance") && r.err.contains("treasury")) << r;
    r = on("supplier-add", {"--name", "Fustes Riba", "--balance", "5"});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_TRUE(r.err.contains("treasury")) << r;
    for (const char* option : {"--payment", "--bank", "--ccc"}) {
        r = on("customer-add", {"--name", "Maria Soler", option, "x"});
        EXPECT_EQ(r.code, 1) << r;
        EXPECT_TRUE(r.err.contains(option) && r.err.contains("billing")) << r;
    }
    EXPECT_EQ(count(file("gest.mdb"), "select count(*) from Clients"), 0);
    EXPECT_EQ(count(file("gest.mdb"), "select count(*) from Proveidors"), 0);
    const QString n = number(on("customer-add", {"--name", "Maria Soler"}));
    EXPECT_EQ(on("customers").out, n + "\tMaria Soler\t\t\t\t\t\t\t\t\t\tno\t\t\t\t\n");
}

TEST_F(cliMasterFiles, CommercialFieldsWithTheBillingModule) {
    ASSERT_NO_FATAL_FAILURE(open(false, true));
    const Result added =
        on("customer-add", {"--name", "Maria Soler", "--payment", "Transferencia", "--bank",
                            "Banc de Vic", "--ccc", "21000000000000000000"});
    ASSERT_EQ(added.code, 0) << added;
    const QString n = number(added);
    ASSERT_EQ(on("customer-change", {n, "--bank", "Caixa"}).code, 0);
    EXPECT_EQ(on("customers").out,
              n + "\tMaria Soler\t\t\t\t\t\t\t\t\t\tno\t\tTransferencia\tCaixa\t"
                  "21000000000000000000\n");
    EXPECT_EQ(count(companyFile("fact.mdb"), "select count(*) from comercial_clientes"), 1);
}

// ---- suppliers ----------------------------------------------------------------------------

TEST_F(cliMasterFiles, SuppliersAddChangeListAndRemove) {
    ASSERT_NO_FATAL_FAILURE(open(true, false));
    Result r = on("supplier-add", {"--name", "Fustes Riba", "--nif", "B-7654321", "--town",
                                   "Manlleu", "--balance", "-30,25"});
    ASSERT_EQ(r.code, 0) << r;
    const QString n = number(r);
    EXPECT_EQ(r.out, msg(314) + "1\n" + n + "\n");
    ASSERT_EQ(on("supplier-add", {"--name", "Alumini Sort"}).code, 0);

    r = on("supplier-add", {"--name", "fustes riba"});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_EQ(r.err, msg(6843) + "\n");
    r = on("supplier-add", {"--nif", "B1"});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_EQ(r.err, msg(412) + "\n");

    r = on("supplier-change", {n, "--email", "info@riba.cat"});
    ASSERT_EQ(r.code, 0) << r;
    QStringList l = lines(on("suppliers"));
    ASSERT_EQ(l.size(), 2);
    EXPECT_TRUE(l[0].contains("\tAlumini Sort\t")) << l[0].toStdString();
    EXPECT_EQ(l[1], n + "\tFustes Riba\tB-7654321\t\tManlleu\t\t\t\t\tinfo@riba.cat\t\t-30,25");

    addPurchase(n);
    r = yes("supplier-remove", {n});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_EQ(r.err, msg(410) + "\n");
    exec(file("FrasIN.mdb"), "delete from FrasIN");

    r = on("supplier-remove", {n});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_TRUE(r.err.contains(msg(409) + msg(25))) << r;
    EXPECT_EQ(lines(on("suppliers")).size(), 2);
    r = yes("supplier-remove", {n});
    EXPECT_EQ(r.code, 0) << r;
    EXPECT_EQ(r.out, msg(311) + "1\n");
    l = lines(on("suppliers"));
    ASSERT_EQ(l.size(), 1);
    EXPECT_TRUE(l[0].contains("\tAlumini Sort\t"));

    r = on("supplier-change", {n, "--town", "Vic"});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_TRUE(r.err.contains("\"" + n + "\"")) << r;
}

// ---- chart of accounts --------------------------------------------------------------------

TEST_F(cliMasterFiles, AccountsOfAFamilyAreListedAddedChangedAndRemoved) {
    ASSERT_NO_FATAL_FAILURE(open(false, false));
    const int before = count(file("Comptes.mdb"), "select count(*) from Serveis");
    ASSERT_GT(before, 0);
    Result r = on("accounts", {"serveis"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_EQ(lines(r).size(), before);
    for (const QString& line : lines(r)) EXPECT_EQ(line.count(u'\t'), 2) << line.toStdString();

    r = on("account-add", {"Serveis", "--name", "Lloguer magatzem", "--class", "Arrendamientos"});
    ASSERT_EQ(r.code, 0) << r;
    const QString n = number(r);
    EXPECT_EQ(r.out, msg(314) + "1\n" + n + "\n");
    EXPECT_TRUE(
        lines(on("accounts", {"Serveis"})).contains(n + "\tLloguer magatzem\tArrendamientos"));

    // A name is free only when no family of the chart holds it.
    r = on("account-add", {"Compres", "--name", "lloguer magatzem", "--class", "Compras"});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_EQ(r.err, msg(6843) + "\n");
    r = on("account-add", {"Compres", "--name", "Fusta"});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_EQ(r.err, msg(510) + "\n");
    r = on("account-add", {"Compres", "--class", "Compras"});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_EQ(r.err, msg(509) + "\n");

    r = on("account-change", {"Serveis", n, "--class", "Otros servicios"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_TRUE(
        lines(on("accounts", {"Serveis"})).contains(n + "\tLloguer magatzem\tOtros servicios"));

    addPurchase("1", 62, n);
    r = yes("account-remove", {"Serveis", n});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_EQ(r.err, msg(517) + "\n");
    exec(file("FrasIN.mdb"), "delete from FrasIN");

    r = on("account-remove", {"Serveis", n});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_TRUE(r.err.contains(msg(516) + msg(25))) << r;
    EXPECT_EQ(lines(on("accounts", {"Serveis"})).size(), before + 1);
    r = yes("account-remove", {"Serveis", n});
    EXPECT_EQ(r.code, 0) << r;
    EXPECT_EQ(r.out, msg(311) + "1\n");
    EXPECT_EQ(lines(on("accounts", {"Serveis"})).size(), before);

    r = on("account-change", {"Serveis", n, "--name", "X"});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_TRUE(r.err.contains("\"" + n + "\"")) << r;
}

// ---- treasury and other accounts ----------------------------------------------------------

TEST_F(cliMasterFiles, TreasuryCommandsNeedTreasuryAndReferencesNeedBilling) {
    ASSERT_NO_FATAL_FAILURE(open(false, false));
    const auto before = count(file("tesorer.mdb"), "select count(*) from entidades");
    const QStringList treasury[] = {
        {"treasury-accounts"},
        {"treasury-account-add", "--name", "Banc"},
        {"treasury-account-change", "1", "--name", "Banc"},
        {"treasury-account-remove", "1"},
        {"other-accounts"},
        {"other-account-add", "--name", "Préstec"},
        {"other-account-change", "1", "--name", "Préstec"},
        {"other-account-remove", "1"},
    };
    for (const QStringList& args : treasury) {
        const Result r = yes(args[0], args.mid(1));
        EXPECT_EQ(r.code, 1) << r;
        EXPECT_TRUE(r.out.isEmpty()) << r;
        EXPECT_TRUE(r.err.contains(args[0]) && r.err.contains("treasury")) << r;
    }
    EXPECT_EQ(count(file("tesorer.mdb"), "select count(*) from entidades"), before);
    const QStringList billing[] = {
        {"references"},
        {"reference-add", "--code", "R1"},
        {"reference-change", "R1", "--price", "1"},
        {"reference-remove", "R1"},
    };
    for (const QStringList& args : billing) {
        const Result r = yes(args[0], args.mid(1));
        EXPECT_EQ(r.code, 1) << r;
        EXPECT_TRUE(r.out.isEmpty()) << r;
        EXPECT_TRUE(r.err.contains(args[0]) && r.err.contains("billing")) << r;
    }
}

TEST_F(cliMasterFiles, TreasuryAccountsAddChangeListAndRemove) {
    ASSERT_NO_FATAL_FAILURE(open(true, false));
    Result r = on("treasury-accounts");
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_EQ(r.out, "1\tcash\t" + msg(6646) + "\t\t0,00\n");

    r = on("treasury-account-add", {"--name", "Banc Sabadell", "--kind", "bank", "--ccc",
                                    "00810000000000000000", "--balance", "1500"});
    ASSERT_EQ(r.code, 0) << r;
    const QString n = number(r);
    EXPECT_EQ(r.out, msg(314) + "1\n" + n + "\n");
    EXPECT_EQ(text(file("tesorer.mdb"), "select Grup from entidades where Id = " + n), "572");
    r = on("treasury-account-add", {"--name", "banc sabadell"});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_EQ(r.err, msg(6843) + "\n");
    r = on("treasury-account-add", {"--kind", "bank"});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_EQ(r.err, msg(6654) + "\n");

    ASSERT_EQ(on("treasury-account-change", {n, "--balance", "10,5"}).code, 0);
    EXPECT_TRUE(lines(on("treasury-accounts"))
                    .contains(n + "\tbank\tBanc Sabadell\t00810000000000000000\t10,50"));
    ASSERT_EQ(on("treasury-account-change", {n, "--kind", "cash"}).code, 0);
    EXPECT_EQ(text(file("tesorer.mdb"), "select Grup from entidades where Id = " + n), "570");

    exec(file("tesorer.mdb"),
         "insert into movimientos (data, entidad, concepto, D) values ('2025-02-01', " + n +
             ", 'Ingrés', 10000)");
    r = yes("treasury-account-remove", {n});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_EQ(r.err, msg(6653) + "\n");
    exec(file("tesorer.mdb"), "delete from movimientos");

    r = on("treasury-account-remove", {n});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_TRUE(r.err.contains(msg(6663) + msg(25))) << r;
    EXPECT_EQ(lines(on("treasury-accounts")).size(), 2);
    r = yes("treasury-account-remove", {n});
    EXPECT_EQ(r.code, 0) << r;
    EXPECT_EQ(r.out, msg(311) + "1\n");
    EXPECT_EQ(lines(on("treasury-accounts")).size(), 1);
}

TEST_F(cliMasterFiles, OtherAccountsAddChangeListAndRemove) {
    ASSERT_NO_FATAL_FAILURE(open(true, false));
    // The treasury set-up gives three liabilities.
    EXPECT_EQ(lines(on("other-accounts")).size(), 3);

    Result r = on("other-account-add", {"--name", "Préstec ICO", "--group", "170", "--group-name",
                                        "Deudas", "--balance", "2000", "--kind", "liability"});
    ASSERT_EQ(r.code, 0) << r;
    const QString n = number(r);
    EXPECT_EQ(r.out, msg(314) + "1\n" + n + "\n");
    EXPECT_TRUE(lines(on("other-accounts"))
                    .contains(n + "\t170\tDeudas\tPréstec ICO\t2.000,00\tliability"));
    r = on("other-account-add", {"--name", "préstec ico"});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_EQ(r.err, msg(6843) + "\n");

    ASSERT_EQ(on("other-account-change", {n, "--kind", "none"}).code, 0);
    EXPECT_TRUE(lines(on("other-accounts")).contains(n + "\t170\tDeudas\tPréstec ICO\t2.000,00\t"));
    EXPECT_EQ(text(file("Comptes.mdb"), "select Tipus from Otras where Compte = " + n), "");
    ASSERT_EQ(on("other-account-change", {n, "--kind", "asset", "--name", "Fiança"}).code, 0);
    EXPECT_TRUE(lines(on("other-accounts")).contains(n + "\t170\tDeudas\tFiança\t2.000,00\tasset"));

    exec(file("tesorer.mdb"),
         "insert into movimientos (data, entidad, cuenta, concepto, H) values ('2025-02-01', 1, " +
             n + ", 'Fiança', 10000)");
    r = yes("other-account-remove", {n});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_EQ(r.err, msg(6653) + "\n");
    exec(file("tesorer.mdb"), "delete from movimientos");

    r = on("other-account-remove", {n});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_EQ(lines(on("other-accounts")).size(), 4);
    r = yes("other-account-remove", {n});
    EXPECT_EQ(r.code, 0) << r;
    EXPECT_EQ(r.out, msg(311) + "1\n");
    EXPECT_EQ(lines(on("other-accounts")).size(), 3);
}

// ---- price references ---------------------------------------------------------------------

TEST_F(cliMasterFiles, ReferencesAddChangeListAndRemove) {
    ASSERT_NO_FATAL_FAILURE(open(false, true));
    EXPECT_EQ(on("references").out, "");
    Result r =
        on("reference-add", {"--code", "R1", "--description", "Tabla de roble", "--price", "12.5"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_EQ(r.out, msg(314) + "1\n");
    ASSERT_EQ(on("reference-add", {"--code", "R0"}).code, 0);
    EXPECT_EQ(on("references").out, "R0\t\t0,00\nR1\tTabla de roble\t12,50\n");

    r = on("reference-add", {"--code", "r1", "--price", "3"});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_EQ(r.err, msg(6843) + "\n");
    r = on("reference-add", {"--description", "Sin código"});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_EQ(r.err, msg(7000) + "\n");

    ASSERT_EQ(on("reference-change", {"R1", "--price", "13", "--code", "R2"}).code, 0);
    EXPECT_EQ(on("references").out, "R0\t\t0,00\nR2\tTabla de roble\t13,00\n");
    r = on("reference-change", {"R1", "--price", "14"});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_TRUE(r.err.contains("\"R1\"")) << r;

    r = on("reference-remove", {"R2"});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_TRUE(r.err.contains(msg(6999) + msg(25))) << r;
    EXPECT_EQ(lines(on("references")).size(), 2);
    r = yes("reference-remove", {"R2"});
    EXPECT_EQ(r.code, 0) << r;
    EXPECT_EQ(r.out, msg(311) + "1\n");
    EXPECT_EQ(on("references").out, "R0\t\t0,00\n");
}

}  // namespace
