// The portfolio command of tallora5-cli: the receipts of each direction, of one party, in
// both orders, the totals over everything, and its refusals.
#include "cli_fixture.h"
#include "store/database.h"

using namespace tallora;
using tallora::clitest::Result;

namespace {

const QString K = QStringLiteral("B1234567");
const QString Y = QStringLiteral("2026");

class cliPortfolio : public clitest::CliFixture {
protected:
    // A company with treasury, its exercise opened once, two customers, two suppliers and
    // receipts of two exercises.
    void open(bool treasury = true) {
        createCompany("Fusteria Pons", "B12345678", treasury);
        createExercise(K, Y);
        ASSERT_EQ(run({"exercise-open", K, Y}).code, 0);
        for (const char* name : {"Bar Centre", "Ferretería Núñez S.A."})
            ASSERT_EQ(run({"customer-add", K, Y, "--name", QString::fromUtf8(name)}).code, 0);
        for (const char* name : {"Olis del Camp", "Paperera Vic"})
            ASSERT_EQ(run({"supplier-add", K, Y, "--name", QString::fromUtf8(name)}).code, 0);
        if (!treasury) return;
        store::Database::open(company(K) + QStringLiteral("cartera.mdb"))
            .execute(QStringLiteral(
                "insert into cartera (Id, data, cliente, proveedor, In_Out, Ejercicio, Factura, "
                "Total, Pendiente, FrasOut, FrasIn, Vencimiento) values "
                "(1, '2026-02-10', 2, 0, 'Out', '2026', 'F-12', 12345000, 0, 12, 0, '2026-02-28'),"
                "(2, '2025-12-20', 1, 0, 'Out', '2025', 'F-88', 500000, 125000, 88, 0, null),"
                "(3, '2026-01-05', 2, 0, 'Out', '2026', 'F-3', 1000000, 0, 3, 0, '2026-03-01'),"
                "(4, '2026-03-01', 0, 1, 'In', '2026', 'A-77', 2420000, 0, 0, 7, '2026-03-31'),"
                "(5, '2026-01-15', 0, 2, 'In', '2026', '889', 605000, 302500, 0, 2, null)"));
    }
    Result portfolio(const QStringList& more = {}) {
        return run(QStringList{"portfolio", K, Y} + more);
    }
    QString totals() const {
        return msg(6681) + QStringLiteral("\t1.372,00\n") + msg(6682) +
               QStringLiteral("\t272,25\n");
    }
};

}  // namespace

TEST_F(cliPortfolio, TheCustomersReceiptsByDateThenTheTotals) {
    ASSERT_NO_FATAL_FAILURE(open());
    const Result r = portfolio();
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_EQ(
        r.out,
        QStringLiteral("2\tBar Centre\t20/12/2025\t\tF-88\t50,00\t12,50\n"
                       "3\tFerretería Núñez S.A.\t05/01/2026\t01/03/2026\tF-3\t100,00\t0,00\n"
                       "1\tFerretería Núñez S.A.\t10/02/2026\t28/02/2026\tF-12\t1.234,50\t0,00\n") +
            totals());
    EXPECT_TRUE(r.err.isEmpty()) << r;
}

TEST_F(cliPortfolio, SuppliersPartyAndDueDateOrder) {
    ASSERT_NO_FATAL_FAILURE(open());
    Result r = portfolio({"--suppliers"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_EQ(r.out,
              QStringLiteral("5\tPaperera Vic\t15/01/2026\t\t889\t60,50\t30,25\n"
                             "4\tOlis del Camp\t01/03/2026\t31/03/2026\tA-77\t242,00\t0,00\n") +
                  totals());
    r = portfolio({"--party", "2", "--order", "due"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_EQ(
        r.out.split(u'\n').mid(0, 2).join(u'\n'),
        QStringLiteral("1\tFerretería Núñez S.A.\t10/02/2026\t28/02/2026\tF-12\t1.234,50\t0,00\n"
                       "3\tFerretería Núñez S.A.\t05/01/2026\t01/03/2026\tF-3\t100,00\t0,00"));
    // The totals cover every party whatever is listed.
    EXPECT_TRUE(r.out.endsWith(totals())) << r;
    r = portfolio({"--suppliers", "--party", "1", "--order", "date"});
    EXPECT_EQ(r.out,
              QStringLiteral("4\tOlis del Camp\t01/03/2026\t31/03/2026\tA-77\t242,00\t0,00\n") +
                  totals());
}

TEST_F(cliPortfolio, AnEmptyPortfolioShowsTotalsZero) {
    ASSERT_NO_FATAL_FAILURE(open());
    store::Database::open(company(K) + QStringLiteral("cartera.mdb"))
        .execute(QStringLiteral("delete from cartera"));
    const Result r = portfolio();
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_EQ(r.out, msg(6681) + QStringLiteral("\t0\n") + msg(6682) + QStringLiteral("\t0\n"));
}

TEST_F(cliPortfolio, AnUnknownPartyOrACompanyWithoutTreasuryIsRefused) {
    ASSERT_NO_FATAL_FAILURE(open());
    Result r = portfolio({"--party", "3"});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_TRUE(r.out.isEmpty()) << r;
    EXPECT_TRUE(r.err.contains("customer \"3\"")) << r;
    // Supplier 2 exists, customer numbers do not count on the suppliers' side.
    r = portfolio({"--suppliers", "--party", "3"});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_TRUE(r.err.contains("supplier \"3\"")) << r;
}

TEST_F(cliPortfolio, WithoutTreasuryThereIsNoPortfolio) {
    ASSERT_NO_FATAL_FAILURE(open(false));
    const Result r = portfolio();
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_TRUE(r.out.isEmpty()) << r;
    EXPECT_TRUE(r.err.contains("treasury")) << r;
}

TEST_F(cliPortfolio, WrongWordsAreUsageErrors) {
    ASSERT_NO_FATAL_FAILURE(open());
    for (const QStringList& args :
         {QStringList{"portfolio", K}, QStringList{"portfolio", K, Y, "--order", "amount"},
          QStringList{"portfolio", K, Y, "--party", "x"},
          QStringList{"portfolio", K, Y, "--suppliers=yes"},
          QStringList{"portfolio", K, Y, "--name", "x"}}) {
        const Result r = run(args);
        EXPECT_EQ(r.code, 2) << args.join(' ').toStdString() << "\n" << r;
        EXPECT_TRUE(r.out.isEmpty()) << r;
    }
    const Result help = runRaw({"--help"});
    for (const char* word : {"portfolio", "--suppliers", "--party", "--order"})
        EXPECT_TRUE(help.out.contains(QString::fromLatin1(word))) << word;
}
