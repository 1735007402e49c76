// The purchases and provisions commands of tallora5-cli on an opened exercise: postings
// column by column with their day log, refusals and questions, changes with their money
// rows, the inquiries' filters and totals, and deletions.
#include "../table_rows.h"
#include "cli_fixture.h"
#include "store/database.h"

#include <QDate>

using namespace tallora;
using tallora::clitest::Result;

namespace {

const QString K = QStringLiteral("B1234567");
const QString Y = QStringLiteral("2025");
// The first account of the Spanish chart's purchases family.
const QString Compras = QStringLiteral("600 Compras de mercaderías");

class cliPurchases : public clitest::CliFixture {
protected:
    // A company with its exercise 2025, purchase rates 21 / 10 / 4 / 21, opened once;
    // supplier 1, customer 1, and with treasury the bank 2 beside the cash account 1.
    void open(bool treasury, const QStringList& exercise = {}) {
        createCompany("Fusteria Pons", "B12345678", treasury);
        createExercise(
            K, Y,
            QStringList{"--ivas1", "21", "--ivas2", "10", "--ivas3", "4", "--ivas4", "21"} +
                exercise);
        Result r = run({"exercise-open", K, Y});
        ASSERT_EQ(r.code, 0) << r;
        r = on("supplier-add", {"--name", "Maderas Soler"});
        ASSERT_EQ(r.code, 0) << r;
        r = on("customer-add", {"--name", "Colmado Ruiz"});
        ASSERT_EQ(r.code, 0) << r;
        if (!treasury) return;
        r = on("treasury-account-add", {"--name", "Banco Sabadell", "--kind", "bank"});
        ASSERT_EQ(r.code, 0) << r;
    }
    Result on(const QString& command, const QStringList& rest = {}) {
        return run(QStringList{command, K, Y} + rest);
    }
    Result purchase(const QStringList& rest) {
        return on("post-purchase",
                  QStringList{"--group", "Compres", "--day", "15", "--month", "3", "--supplier",
                              "maderas soler", "--account", Compras} +
                      rest);
    }
    QString file(const QString& name) const { return company(K) + Y + u'/' + name; }
    QString cartera() const { return company(K) + "cartera.mdb"; }
    static QStringList rows(const QString& path, const QString& sql) {
        return tallora::testing::tableRows(path, sql);
    }
    QStringList purchases(const QString& columns) const {
        return rows(file("FrasIN.mdb"), "select " + columns + " from FrasIN order by Ordre");
    }
    QStringList movements() const {
        return rows(file("tesorer.mdb"),
                    "select entidad, proveedor, cliente, FrasIn, Supl, "
                    "concepto, D, H from movimientos order by Id");
    }
};

TEST_F(cliPurchases, HelpDocumentsTheCommands) {
    const Result r = runRaw({"--help"});
    for (const char* command :
         {"post-purchase", "change-purchase", "purchases NIF8", "purchase-remove", "post-provision",
          "post-disbursement", "change-provision", "provisions NIF8", "provision-remove"})
        EXPECT_TRUE(r.out.contains(QLatin1String(command))) << command;
}

TEST_F(cliPurchases, ATotalIsSplitByTheFirstRateAndWrittenColumnByColumn) {
    open(false);
    const Result r = purchase({"--total", "121", "--description", "F-1", "--series", "/Rect"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_EQ(r.out, (QStringList{msg(649), msg(650) + "15/03/2025", "MADERAS SOLER",
                                  "600 COMPRAS DE MERCADERÍAS", "Descrip.: F-1/Rect",
                                  "BASE: 21 % 100,00", "IVA: 21,00", "", "TOTAL: 121,00",
                                  "MODIFICAR 1", "", msg(654), QString(40, QChar(0x00B7)), ""})
                             .join(u'\n') +
                         u'\n');
    EXPECT_EQ(purchases("Ordre, TOTAL, Base1, Iva1, Base4, Iva4, TipusIva1, TipusIva2, "
                        "TipusIva3, TipusIva4, Proveidor, NomProveidor, descripcio, data, Grup, "
                        "Compte, NomCompte, Exempta, Periode, Venciment, Pagada"),
              QStringList{"1|1210000|0|0|1000000|210000|210000|100000|40000|210000|1|"
                          "MADERAS SOLER|F-1/Rect|2025-03-15|60|1|" +
                          Compras + "|0|1T|2025-03-15|0"});
}

TEST_F(cliPurchases, RefusalsPrintTheProgramsMessageAndExitOne) {
    open(false);
    Result r = on("post-purchase", {"--day", "15", "--month", "3", "--supplier", "Maderas Soler",
                                    "--account", Compras, "--total", "10"});
    EXPECT_EQ(r.code, 1);
    EXPECT_TRUE(r.err.contains(msg(6632))) << r;
    r = purchase({"--total", "0"});
    EXPECT_EQ(r.code, 1);
    EXPECT_TRUE(r.err.contains(msg(643))) << r;
    r = on("post-purchase", {"--group", "Compres", "--day", "15", "--month", "3", "--supplier",
                             "Nadie", "--account", Compras, "--total", "10"});
    EXPECT_EQ(r.code, 1);
    EXPECT_TRUE(r.err.contains(msg(721))) << r;
    r = purchase({"--total", "100", "--base1", "100", "--iva1", "21"});
    EXPECT_EQ(r.code, 1);
    EXPECT_TRUE(r.err.contains(msg(923))) << r;
    r = purchase({"--total", "100", "--rate", "7"});
    EXPECT_EQ(r.code, 1);
    r = on("post-purchase", {"--group", "Ventas", "--total", "1"});
    EXPECT_EQ(r.code, 2) << r;
    EXPECT_TRUE(purchases("Ordre").isEmpty());
}

TEST_F(cliPurchases, ADifferenceIsExemptOnlyWithYes) {
    open(false);
    Result r = purchase({"--total", "100", "--base1", "80"});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_TRUE(purchases("Ordre").isEmpty());
    r = run({"--yes", "post-purchase", K, Y, "--group", "Compres", "--day", "15", "--month", "3",
             "--supplier", "Maderas Soler", "--account", Compras, "--total", "100", "--base1",
             "80"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_EQ(purchases("Base1, Iva1, Exempta"), QStringList{"800000|168000|32000"});
}

TEST_F(cliPurchases, PaidPendingChangeAndRemoveWithTheirMoneyRows) {
    open(true);
    Result r = purchase({"--total", "121", "--treasury-account", "Banco Sabadell"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_TRUE(r.out.contains(msg(6677) + "Banco Sabadell")) << r;
    EXPECT_EQ(movements(), QStringList{"2|1|0|1|0|S/Fra. 1|0|1210000"});
    r = purchase({"--total", "50", "--due", "30/04/2025"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_EQ(rows(cartera(),
                   "select proveedor, In_Out, Ejercicio, Factura, Total, FrasIn, "
                   "Vencimiento from cartera"),
              QStringList{"1|In|2025|2|500000|2|2025-04-30"});
    r = on("change-purchase", {"2", "--treasury-account", "Caja efectivo"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_TRUE(rows(cartera(), "select Id from cartera").isEmpty());
    EXPECT_EQ(movements().size(), 2);
    r = on("change-purchase", {"1", "--pending"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_EQ(movements(), QStringList{"1|1|0|2|0|S/Fra. 2|0|500000"});
    EXPECT_EQ(purchases("Ordre, Pagada"), (QStringList{"1|0", "2|-1"}));

    r = on("purchases");
    EXPECT_EQ(r.out, "1\t15/03/2025\tMADERAS SOLER\t" + Compras + "\t1\t121,00\n" +
                         "2\t15/03/2025\tMADERAS SOLER\t" + Compras + "\t2\t50,00\n" +
                         "TOTAL\t171,00\n" + msg(807) + "\t2\n")
        << r;
    r = on("purchases", {"--operator", ">=", "--amount", "100", "--order", "amount"});
    EXPECT_TRUE(r.out.startsWith("1\t")) << r;
    EXPECT_TRUE(r.out.endsWith(msg(807) + "\t1\n")) << r;

    r = on("purchase-remove", {"1"});
    EXPECT_EQ(r.code, 1) << "the question needs --yes";
    r = run({"--yes", "purchase-remove", K, Y, "1"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_TRUE(rows(cartera(), "select Id from cartera").isEmpty());
    EXPECT_EQ(purchases("Ordre"), QStringList{"2"});
    r = run({"--yes", "purchase-remove", K, Y, "9"});
    EXPECT_EQ(r.code, 1);
}

TEST_F(cliPurchases, ASettledPurchaseKeepsItsTreasuryAccount) {
    open(true);
    ASSERT_EQ(purchase({"--total", "121"}).code, 0);
    store::Database::open(file("FrasIN.mdb")).execute("update FrasIN set Marca = -1");
    Result r = on("change-purchase", {"1", "--treasury-account", "Caja efectivo"});
    EXPECT_EQ(r.code, 1) << r;
    r = on("change-purchase", {"1", "--description", "F-9"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_EQ(rows(cartera(), "select Factura from cartera"), QStringList{"F-9"});
}

TEST_F(cliPurchases, ATicketsExerciseTakesTheWholeTotalAsExempt) {
    open(false, {"--kind", "TICKETS"});
    Result r = purchase({"--rate", "21", "--total", "10"});
    EXPECT_EQ(r.code, 1) << r;
    r = purchase({"--total", "85", "--irpf-base", "100", "--irpf-percent", "15"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_EQ(purchases("TOTAL, Retencio, Exempta, Base1, Base4"),
              QStringList{"850000|150000|1000000|0|0"});
}

TEST_F(cliPurchases, ProvisionsAndDisbursementsWithTheirMovements) {
    open(true);
    Result r =
        on("post-disbursement", {"--day", "10", "--month", "2", "--supplier", "Maderas Soler",
                                 "--total", "50", "--description", "Tasas"});
    EXPECT_EQ(r.code, 1);
    EXPECT_TRUE(r.err.contains(msg(6678))) << r;
    r = on("post-disbursement",
           {"--day", "10", "--month", "2", "--supplier", "Maderas Soler", "--total", "50",
            "--description", "Tasas", "--treasury-account", "Banco Sabadell"});
    ASSERT_EQ(r.code, 0) << r;
    r = on("post-provision", {"--day", "5", "--month", "2", "--customer", "colmado ruiz", "--total",
                              "300", "--treasury-account", "Caja efectivo"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_EQ(movements(), (QStringList{"2|1|0|0|1|" + msg(6501) + ". Tasas|0|500000",
                                        "1|0|1|0|2|" + msg(6506) + ". 2|3000000|0"}));
    r = on("provisions", {"--kind", "disbursement"});
    EXPECT_EQ(r.out, "1\t10/02/2025\tMADERAS SOLER\t" + msg(6501) +
                         "\tTasas\t50,00\nTOTAL\t50,00\n" + msg(807) + "\t1\n")
        << r;
    // Turned into a provision, its party must be a customer.
    r = on("change-provision", {"1", "--kind", "provision"});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_TRUE(r.err.contains(msg(638))) << r;
    r = on("change-provision", {"1", "--kind", "provision", "--customer", "Colmado Ruiz"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_EQ(movements().last(), "2|0|1|0|1|" + msg(6506) + ". Tasas|500000|0")
        << "the movement is written anew";
    r = run({"--yes", "provision-remove", K, Y, "2"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_EQ(movements().size(), 1);
    EXPECT_EQ(rows(file("Supl.mdb"), "select Ordre, Tipus from Suplidos"), QStringList{"1|P"});
}

}  // namespace
