// export and import of tallora5-cli: what they print, the program's refusals, the question
// that needs --yes, and the mode the header or the options choose.
#include "cli_fixture.h"
#include "store/database.h"

#include <QFile>

using namespace tallora;
using tallora::clitest::Result;

namespace {

const QString K = QStringLiteral("B1234567");

class cliInterchange : public clitest::CliFixture {
protected:
    // A company with treasury, its exercises 2025 and 2026 opened once, and customers,
    // suppliers and a sale in 2026.
    void SetUp() override {
        CliFixture::SetUp();
        createCompany("Fusteria Pons", "B12345678", true);
        for (const char* year : {"2025", "2026"}) {
            createExercise(K, QString::fromLatin1(year));
            const Result r = run({"exercise-open", K, QString::fromLatin1(year)});
            ASSERT_EQ(r.code, 0) << r;
        }
        for (const char* name : {"Bar Centre", "Ferreteria Puig"}) {
            const Result r = run({"customer-add", K, "2026", "--name", QString::fromLatin1(name),
                                  "--nif", "12345678Z"});
            ASSERT_EQ(r.code, 0) << r;
        }
        const Result r = run({"supplier-add", K, "2026", "--name", "Olis del Camp"});
        ASSERT_EQ(r.code, 0) << r;
        const Result c = run({"customer-add", K, "2025", "--name", "Cliente de antes"});
        ASSERT_EQ(c.code, 0) << c;
    }

    QString gest(const char* year) const {
        return company(K) + QLatin1String(year) + QStringLiteral("/gest.mdb");
    }
    QString path(const char* name) const { return unit.filePath(QString::fromLatin1(name)); }

    static QStringList customers(const QString& gestPath) {
        QStringList out;
        store::Database d = store::Database::open(gestPath);
        store::Statement st =
            d.prepare(QStringLiteral("select client, nom from Clients order by client"));
        while (st.next()) out << st.text(0) + u' ' + st.text(1);
        return out;
    }
    static QByteArray bytes(const QString& file) {
        QFile f(file);
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }
};

TEST_F(cliInterchange, ExportPrintsARecordALineAndWritesTheWholeExercise) {
    const Result r = run({"export", K, "2026", path("todo.dat")});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_TRUE(r.out.contains(QStringLiteral("CLI: 1 Bar Centre\n"))) << r;
    EXPECT_TRUE(r.out.contains(QStringLiteral("PRO: 1 Olis del Camp\n"))) << r;
    EXPECT_TRUE(r.out.endsWith(msg(32) + u'\n')) << r;
    const QList<QByteArray> lines = bytes(path("todo.dat")).split('\n');
    ASSERT_GT(lines.size(), 9);
    EXPECT_EQ(lines[4], "INF V5.0\r");
    EXPECT_EQ(lines[5], "CNT ALL\r");
}

TEST_F(cliInterchange, ASelectionNamesItsPartsInTheHeader) {
    const Result r = run({"export", K, "2026", path("clientes.dat"), "--customers", "--chart"});
    ASSERT_EQ(r.code, 0) << r;
    const QList<QByteArray> lines = bytes(path("clientes.dat")).split('\n');
    ASSERT_GT(lines.size(), 9);
    EXPECT_EQ(lines.mid(5, 4),
              (QList<QByteArray>{"CNT PAR\r", "DAT CLI\r", "DAT ---\r", "DAT PLC\r"}));
    EXPECT_FALSE(r.out.contains(QStringLiteral("PRO: "))) << r;
}

TEST_F(cliInterchange, TheExercisesOwnSettingsNameIsRefused) {
    const Result r = run({"export", K, "2026", path("copia2026.DAT")});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_TRUE((r.out + r.err).contains(msg(6996))) << r;
    EXPECT_FALSE(QFile::exists(path("copia2026.DAT")));
}

TEST_F(cliInterchange, AnImportAsksAndWithoutYesChangesNothing) {
    ASSERT_EQ(run({"export", K, "2026", path("todo.dat")}).code, 0);
    const QStringList before = customers(gest("2025"));
    const Result r = run({"import", K, "2025", path("todo.dat")});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_TRUE((r.out + r.err).contains(msg(6890))) << r;
    EXPECT_EQ(customers(gest("2025")), before);
}

TEST_F(cliInterchange, AWholeImportReplacesTheExerciseKeepingTheNumbers) {
    ASSERT_EQ(run({"export", K, "2026", path("todo.dat")}).code, 0);
    const Result r = run({"--yes", "import", K, "2025", path("todo.dat")});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_TRUE(r.out.startsWith(msg(6614))) << r;
    EXPECT_TRUE(r.out.contains(QStringLiteral("EMPRESA: Fusteria Pons\n"))) << r;
    EXPECT_TRUE(r.out.contains(msg(6611))) << r;
    EXPECT_EQ(customers(gest("2025")), (QStringList{"1 Bar Centre", "2 Ferreteria Puig"}));
    EXPECT_TRUE(QFile::exists(company(K) + QStringLiteral("2025/_gest.bck")));
}

TEST_F(cliInterchange, ASelectionAddsCustomersWithNewNumbersAndCannotReplaceAll) {
    ASSERT_EQ(run({"export", K, "2026", path("clientes.dat"), "--customers"}).code, 0);
    const Result whole = run({"--yes", "import", K, "2025", path("clientes.dat"), "--whole"});
    EXPECT_EQ(whole.code, 1) << whole;
    EXPECT_EQ(customers(gest("2025")), QStringList{"1 Cliente de antes"});

    const Result r = run({"--yes", "import", K, "2025", path("clientes.dat")});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_EQ(customers(gest("2025")),
              (QStringList{"1 Cliente de antes", "2 Bar Centre", "3 Ferreteria Puig"}));
}

TEST_F(cliInterchange, WholeDoesNotGoWithASelection) {
    const Result r = run({"--yes", "import", K, "2025", path("x.dat"), "--whole", "--customers"});
    EXPECT_EQ(r.code, 2) << r;
}

TEST_F(cliInterchange, AMissingFileIsNotFound) {
    const Result r = run({"--yes", "import", K, "2025", path("no-such.dat")});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_TRUE((r.out + r.err).contains(msg(6612))) << r;
}

}  // namespace
