// The treasury commands of tallora5-cli: runs with partial and full settlements, the draft,
// the statement with a return and a deletion, and other movements with their inquiry.
#include "cli_fixture.h"
#include "store/database.h"

using namespace tallora;
using tallora::clitest::Result;

namespace {

const QString K = QStringLiteral("B1234567");
const QString Y = QStringLiteral("2026");

class cliTreasury : public clitest::CliFixture {
protected:
    // A company with treasury, the cash account 1 and a bank 2, a customer and a supplier,
    // two purchases to pay (100,00 and 50,00) and a sale of 121,00 to collect.
    void open() {
        createCompany("Fusteria Pons", "B12345678", true);
        createExercise(K, Y);
        ASSERT_EQ(run({"exercise-open", K, Y}).code, 0);
        ASSERT_EQ(run({"customer-add", K, Y, "--name", "Bar Centre"}).code, 0);
        ASSERT_EQ(run({"supplier-add", K, Y, "--name", "Olis del Camp"}).code, 0);
        const Result bank =
            run({"treasury-account-add", K, Y, "--name", "Banco Norte", "--kind", "bank"});
        ASSERT_EQ(bank.code, 0) << bank;
        ASSERT_TRUE(bank.out.endsWith("\n2\n")) << bank;
        const QString exercise = company(K) + Y + "/";
        store::Database::open(exercise + "FrasIN.mdb")
            .execute(
                "insert into FrasIN (Ordre, data, Proveidor, NomProveidor, TOTAL, descripcio, "
                "Pagada, Marca) values (1, '2026-02-01', 1, 'Olis del Camp', 1000000, 'A-1', 0, 0),"
                "(2, '2026-02-03', 1, 'Olis del Camp', 500000, 'A-2', 0, 0)");
        store::Database::open(exercise + "FrasOUT.mdb")
            .execute(
                "insert into FrasOut (Ordre, data, Client, Total, Descripcio, Cobrada, Marca) "
                "values (1, '2026-02-05', 1, 1210000, 'Fra. 1', 0, 0)");
        store::Database::open(company(K) + "cartera.mdb")
            .execute(
                "insert into cartera (Id, data, cliente, proveedor, In_Out, Ejercicio, Factura, "
                "Total, Pendiente, FrasOut, FrasIn) values "
                "(1, '2026-02-01', 0, 1, 'In', '2026', 'A-1', 1000000, 0, 0, 1),"
                "(2, '2026-02-03', 0, 1, 'In', '2026', 'A-2', 500000, 0, 0, 2),"
                "(3, '2026-02-05', 1, 0, 'Out', '2026', 'Fra. 1', 1210000, 0, 1, 0)");
    }
};

}  // namespace

TEST_F(cliTreasury, APaymentRunWithAPartialAndAFullReceipt) {
    ASSERT_NO_FATAL_FAILURE(open());
    Result r = run({"payment-run", K, Y, "1:40", "2", "--account", "2", "--date", "10/03/2026"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_EQ(r.out, "1\t2\tS/Fra. A-2\t50,00\tsettled\n2\t1\tS/Fra. A-1\t40,00\tpartial\n");
    r = run({"draft", K, Y, "payments", "--open"});
    EXPECT_EQ(r.out, "1\t01/02/2026\tA-1\t100,00\t60,00\n");
    r = run({"draft", K, Y, "payments"});
    EXPECT_EQ(r.out, msg(6726) + "\t0\n");
    r = run({"statement", K, Y, "2"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_EQ(r.out,
              "\t\tSaldo Inicial...\t\t\t\t0,00\n"
              "1\t10/03/2026\tS/Fra. A-2\tOlis del Camp\t\t50,00\t-50,00\n"
              "2\t10/03/2026\tS/Fra. A-1\tOlis del Camp\t\t40,00\t-90,00\n");
    // The cash account has none: no line at all.
    EXPECT_EQ(run({"statement", K, Y, "1"}).out, "");
}

TEST_F(cliTreasury, MoreThanIsDueIsRefusedAndNothingIsWritten) {
    ASSERT_NO_FATAL_FAILURE(open());
    const Result r =
        run({"collection-run", K, Y, "3:130", "--account", "1", "--date", "01/03/2026"});
    EXPECT_NE(r.code, 0);
    EXPECT_TRUE(r.err.contains(msg(6702))) << r;
    EXPECT_EQ(run({"draft", K, Y, "collections"}).out, msg(6716) + "\t0\n");
    EXPECT_EQ(run({"statement", K, Y}).out, "");
    // Receipts of the other side, unknown accounts, dates of another year, a draft without
    // receipts: refused before anything is written.
    EXPECT_NE(run({"collection-run", K, Y, "1", "--account", "1"}).code, 0);
    EXPECT_NE(run({"payment-run", K, Y, "1", "--account", "9"}).code, 0);
    EXPECT_NE(run({"payment-run", K, Y, "1", "--account", "1", "--date", "01/01/2025"}).code, 0);
    EXPECT_NE(run({"payment-run", K, Y, "--account", "1"}).code, 0);
    const Result noAccount = run({"payment-run", K, Y, "1"});
    EXPECT_NE(noAccount.code, 0);
    EXPECT_TRUE(noAccount.err.contains(msg(6728))) << noAccount;
    // A refused command takes its receipts back out of the draft: none waits to be paid.
    EXPECT_EQ(run({"draft", K, Y, "payments"}).out, msg(6726) + "\t0\n");
    // One the screen left in the draft goes with the next run; --empty takes it out first.
    ASSERT_EQ(run({"payment-run", K, Y, "2", "--account", "2", "--date", "01/03/2026"}).code, 0);
    store::Database::open(company(K) + "cartera.mdb")
        .execute("update cartera set Borrador = 's', Temporal = Total where Id = 1");
    EXPECT_EQ(run({"draft", K, Y, "payments"}).out,
              "1\t01/02/2026\tA-1\t100,00\t100,00\n" + msg(6726) + "\t100,00\n");
    EXPECT_EQ(run({"draft", K, Y, "payments", "--empty"}).out, msg(6726) + "\t0\n");
    // A receipt named twice is a usage error.
    EXPECT_EQ(run({"payment-run", K, Y, "1", "1", "--account", "2"}).code, 2);
}

TEST_F(cliTreasury, AReturnedCollectionComesBackToThePortfolio) {
    ASSERT_NO_FATAL_FAILURE(open());
    ASSERT_EQ(run({"collection-run", K, Y, "3", "--account", "2", "--date", "01/03/2026"}).code, 0);
    EXPECT_NE(run({"return-receipt", K, Y, "1", "--date", "15/03/2026"}).code, 0);  // asks
    Result r = run({"--yes", "return-receipt", K, Y, "1", "--date", "15/03/2026"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_EQ(r.out, "2\n");
    r = run({"statement", K, Y, "2", "--from", "10/03/2026"});
    EXPECT_EQ(r.out,
              "\t\tSaldo Inicial...\t\t\t\t0,00\n"
              "2\t15/03/2026\tDevolución n/fra. N/Fra. Fra. 1\tBar Centre\t\t121,00\t0,00\n");
    EXPECT_EQ(run({"draft", K, Y, "collections", "--open"}).out,
              "4\t15/03/2026\tN/Fra. Fra. 1\t121,00\t121,00\n");
    // A return is not returned, and deleting the collection takes every movement of the sale.
    EXPECT_NE(run({"--yes", "return-receipt", K, Y, "2"}).code, 0);
    r = run({"--yes", "movement-remove", K, Y, "1"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_EQ(run({"statement", K, Y}).out, "");
}

TEST_F(cliTreasury, OtherMovementsAddChangeListAndRemove) {
    ASSERT_NO_FATAL_FAILURE(open());
    // The exercise starts with the chart's other accounts; the loan gets the next number.
    const Result loan = run({"other-account-add", K, Y, "--name", "Préstamo BBV", "--group", "170",
                             "--group-name", "Deudas", "--kind", "liability"});
    ASSERT_EQ(loan.code, 0) << loan;
    const QString loanNumber = loan.out.trimmed().section(u'\n', -1);
    Result r = run({"other-movement-add", K, Y, "--date", "05/03/2026", "--concept", "Retirada",
                    "--amount", "300", "--from-treasury", "2", "--to-treasury", "1"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_EQ(r.out, "1\n");
    r = run({"other-movement-add", K, Y, "--date", "06/03/2026", "--concept", "Cuota", "--amount",
             "150,5", "--from-treasury", "2", "--to-other", loanNumber});
    EXPECT_EQ(r.out, "2\n");
    r = run({"other-movements", K, Y});
    EXPECT_EQ(r.out,
              "1\t05/03/2026\tRetirada\t300,00\tCaja efectivo\tBanco Norte\n"
              "2\t06/03/2026\tCuota\t150,50\tPréstamo BBV\tBanco Norte\n");
    EXPECT_EQ(run({"other-movements", K, Y, "--account", loanNumber}).out.count('\n'), 1);
    EXPECT_EQ(run({"other-movements", K, Y, "--amount", "200", "--operator", ">="}).out.count('\n'),
              1);
    r = run({"other-movement-change", K, Y, "1", "--amount", "250"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_EQ(run({"statement", K, Y, "1"}).out,
              "\t\tSaldo Inicial...\t\t\t\t0,00\n"
              "5\t05/03/2026\tRetirada\t\t250,00\t\t250,00\n");
    EXPECT_NE(run({"other-movement-remove", K, Y, "1"}).code, 0);  // asks
    ASSERT_EQ(run({"--yes", "other-movement-remove", K, Y, "1"}).code, 0);
    EXPECT_EQ(run({"statement", K, Y, "1"}).out, "");
    // Refusals: a side named twice, no concept (the screen's message).
    EXPECT_NE(run({"other-movement-add", K, Y, "--from-treasury", "1", "--from-other", "1"}).code,
              0);
    r = run({"other-movement-add", K, Y, "--amount", "5", "--from-treasury", "1", "--to-other",
             loanNumber});
    EXPECT_NE(r.code, 0);
    EXPECT_TRUE(r.err.contains(msg(6733))) << r;
}
