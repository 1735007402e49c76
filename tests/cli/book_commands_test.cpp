// The book command of tallora5-cli on an exercise posted through the companion: the rows
// and summary as text, the printed PDF, the spreadsheets, the period refused, the withholding list
// that reads the journal as the last purchases book left it, and the words it refuses.
#include "../report/report_fixture.h"
#include "cli_fixture.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace tallora;
using tallora::clitest::Result;

namespace {

const QString K = QStringLiteral("B1234567");
const QString Y = QStringLiteral("2025");

class cliBooks : public clitest::CliFixture {
protected:
    void open(const QStringList& exercise = {}) {
        createCompany("Fusteria Pons", "B12345678");
        createExercise(
            K, Y,
            QStringList{"--iva1", "21", "--iva2", "10", "--iva3", "4", "--re1", "5.2", "--ivas1",
                        "21", "--ivas2", "10", "--ivas3", "4", "--ivas4", "21"} +
                exercise);
        Result r = run({"exercise-open", K, Y});
        ASSERT_EQ(r.code, 0) << r;
        r = on("customer-add", {"--name", "Colmado Ruiz", "--nif", "B11111111"});
        ASSERT_EQ(r.code, 0) << r;
        r = on("supplier-add", {"--name", "Maderas Soler", "--nif", "B22222222"});
        ASSERT_EQ(r.code, 0) << r;
    }
    Result on(const QString& command, const QStringList& rest = {}) {
        return run(QStringList{command, K, Y} + rest);
    }
    Result book(const QString& name, const QStringList& rest) {
        return run(QStringList{"book", name, K, Y} + rest);
    }
    void postSale(const QString& day, const QString& month, const QString& total) {
        const Result r =
            on("post-sale", {"--day", day, "--month", month, "--customer", "Colmado Ruiz",
                             "--account", "700 Ventas de mercaderías", "--total", total});
        ASSERT_EQ(r.code, 0) << r;
    }
};

}  // namespace

TEST_F(cliBooks, TheSalesBookPrintsItsRowsAndSummaryAsText) {
    open();
    postSale("15", "1", "121,00");
    postSale("20", "2", "242,00");
    postSale("2", "4", "12,10");
    const Result r = book("sales", {"--from", "1", "--to", "3", "--text"});
    ASSERT_EQ(r.code, 0) << r;
    const QStringList lines = r.out.split(u'\n');
    EXPECT_EQ(lines.value(0),
              "OrdreIVAr\tdata\tdescripcio\tNomClient\tnif\tBaseIVA\tTipusIVA\t"
              "IVA\tTipusREC\tREC\tRET\tTOTAL");
    EXPECT_EQ(lines.value(1),
              "1\t15/01/2025\t1\tColmado Ruiz\tB11111111\t100,00\t21,00\t21,00\t"
              "0,00\t0,00\t0,00\t121,00");
    EXPECT_EQ(lines.value(2).section(u'\t', 0, 1), "2\t20/02/2025");
    EXPECT_EQ(lines.value(3), "");
    EXPECT_EQ(lines.mid(4, 5), (QStringList{"base1\t300,00", "iva1\t63,00", "ivar1\t21 %",
                                            "rer1\t5,2 %", "rec1\t0,00"}));
}

TEST_F(cliBooks, APeriodEndingBeforeItStartsIsRefused) {
    open();
    const Result r = book("sales", {"--from", "4", "--to", "3", "--text"});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_TRUE(r.err.contains(msg(6142))) << r;
    EXPECT_TRUE(r.out.isEmpty()) << r;
}

TEST_F(cliBooks, TheSuppliersWithholdingListShowsTheJournalTheLastBookLeft) {
    open();
    Result r = on("post-purchase",
                  {"--group", "Serveis", "--day", "10", "--month", "2", "--supplier",
                   "Maderas Soler", "--account", "6230 Asesoría y gestoría", "--total", "1060,00",
                   "--irpf-base", "1000", "--irpf-percent", "15", "--base1", "1000"});
    ASSERT_EQ(r.code, 0) << r;
    r = book("purchases", {"--irpf", "--text"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_EQ(r.out.section(u'\n', 1, 1), "");
    r = book("purchases", {"--text"});
    ASSERT_EQ(r.code, 0) << r;
    r = book("purchases", {"--irpf", "--text"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_EQ(r.out.section(u'\n', 1, 1).section(u'\t', 3),
              "MADERAS SOLER\tB22222222\t"
              "1.000,00\t15,00\t150,00\t1.060,00");
}

TEST_F(cliBooks, TheBookIsPrintedToAPdfFile) {
    open();
    postSale("15", "1", "121,00");
    const QString pdf = unit.filePath("ventas.pdf");
    const Result r = book("sales", {"--pdf", pdf, "--date", "31/03/2025", "--series", "normal"});
    ASSERT_EQ(r.code, 0) << r;
    const QString text = tallora::testing::pdfPages(pdf).join(u'\f');
    EXPECT_TRUE(text.contains("Libro de ventas / ingresos")) << text.toStdString();
    EXPECT_TRUE(text.contains("31/03/2025"));
    EXPECT_TRUE(text.contains(QStringLiteral("DESDE ENERO HASTA DICIEMBRE - Facturación general")));
    EXPECT_TRUE(text.contains(QStringLiteral("Página 1 de 1")));
    EXPECT_TRUE(text.contains("Colmado Ruiz"));
}

TEST_F(cliBooks, TheBookIsSavedAsASpreadsheetWithItsValues) {
    open();
    postSale("15", "1", "121,00");
    postSale("20", "2", "242,00");
    const QString xlsx = unit.filePath("ventas.xlsx");
    Result r = book("sales", {"--xlsx", xlsx, "--from", "1", "--to", "3"});
    ASSERT_EQ(r.code, 0) << r;
    const QJsonArray sheets = QJsonDocument::fromJson(tallora::testing::readXlsx(xlsx)).array();
    ASSERT_EQ(sheets.size(), 1);
    const QJsonArray rows = sheets[0].toObject()[u"rows"].toArray();
    const auto cell = [](const QJsonArray& row, int c) {
        const QJsonArray typed = row[c].toArray();
        return typed.isEmpty() ? QString() : typed[0].toString() + u':' + typed[1].toString();
    };
    // The title and period above, then the rows of the book as the text gives them.
    QStringList all;
    for (const QJsonValue& row : rows) all << cell(row.toArray(), 0);
    EXPECT_TRUE(all.contains(QStringLiteral("s:Fusteria Pons   ") +
                             QDate::currentDate().toString(u"dd/MM/yyyy")))
        << all.join(u'|').toStdString();
    const qsizetype first = all.indexOf(QStringLiteral("n:1"));
    ASSERT_GE(first, 0);
    const QJsonArray sale = rows[first].toArray();
    EXPECT_EQ(cell(sale, 1), "d:2025-01-15");
    EXPECT_EQ(cell(sale, 3), "s:Colmado Ruiz");
    EXPECT_EQ(cell(sale, 4), "s:B11111111");
    EXPECT_EQ(cell(sale, 5), "n:100");
    EXPECT_EQ(cell(sale, 7), "n:21");
    EXPECT_EQ(cell(sale, 11), "n:121");
    EXPECT_EQ(cell(rows[first + 1].toArray(), 5), "n:200");
    // The sums of the period under their columns.
    const QJsonArray sums = rows[first + 2].toArray();
    EXPECT_EQ(cell(sums, 5), "n:300");
    EXPECT_EQ(cell(sums, 7), "n:63");
    EXPECT_EQ(cell(sums, 11), "n:363");

    const QString csv = unit.filePath("ventas.csv");
    r = book("sales", {"--csv", csv, "--from", "1", "--to", "3"});
    ASSERT_EQ(r.code, 0) << r;
    QFile file(csv);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(file.readAll());
    EXPECT_TRUE(
        text.contains(QStringLiteral("\r\n1;15/01/2025;1;Colmado Ruiz;B11111111;100,00;21,00;"
                                     "21,00;;;;121,00\r\n")))
        << text.toStdString();
}

TEST_F(cliBooks, AWithholdingListDoesNotGoWithATicketsExercise) {
    open({"--kind", "TICKETS"});
    const Result r = book("sales", {"--irpf", "--text"});
    EXPECT_EQ(r.code, 1) << r;
}

TEST_F(cliBooks, WrongWordsAreUsageErrors) {
    open();
    for (const QStringList& words : {QStringList{"ledger", "--text"}, QStringList{"sales"},
                                     QStringList{"sales", "--text", "--pdf", "x.pdf"},
                                     QStringList{"sales", "--xlsx", "x.xlsx", "--csv", "x.csv"},
                                     QStringList{"347", "--series", "abonos", "--text"},
                                     QStringList{"347", "--from", "1", "--text"},
                                     QStringList{"provisions", "--irpf", "--text"},
                                     QStringList{"sales", "--from", "13", "--text"},
                                     QStringList{"sales", "--series", "otros", "--text"}}) {
        const Result r = book(words.first(), words.mid(1));
        EXPECT_EQ(r.code, 2) << words.join(u' ').toStdString() << '\n' << r;
    }
}

TEST_F(cliBooks, TheCustomersLedgerRunsItsBalanceFromTheOpening) {
    open();
    postSale("15", "1", "121,00");
    postSale("20", "2", "242,00");
    const Result r = book("ledger-customers", {"--party", "1", "--text"});
    ASSERT_EQ(r.code, 0) << r;
    // Without treasury control the ledger is not rebuilt: mayor is as the exercise left it.
    EXPECT_EQ(r.out, "cuenta\tnombrecuenta\tdata\tcontrapartida\tdocumento\tD\tH\tsaldo\n") << r;
    const Result list = book("ledger-customers", {"--invoices", "--text"});
    ASSERT_EQ(list.code, 0) << list;
    EXPECT_TRUE(list.out.contains(
        "\t15/01/2025\t1\tColmado Ruiz\t1\t70\t700 Ventas de mercaderías\t121,00\n"))
        << list;
    EXPECT_TRUE(list.out.contains("\t242,00\n")) << list;
}

TEST_F(cliBooks, WithTreasuryTheCustomersLedgerIsBuiltAndPrinted) {
    createCompany("Fusteria Pons", "B12345678", true);
    createExercise(K, Y, {"--iva1", "21", "--iva2", "10", "--iva3", "4"});
    ASSERT_EQ(run({"exercise-open", K, Y}).code, 0);
    ASSERT_EQ(on("customer-add", {"--name", "Colmado Ruiz", "--balance", "100"}).code, 0);
    postSale("15", "1", "50,00");
    const Result r = book("ledger-customers", {"--text"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_EQ(r.out.split(u'\n').mid(1, 2),
              (QStringList{"1\tColmado Ruiz\t01/01/2025\t-\tSaldo inicial ...\t0,00\t0,00\t100,00",
                           "1\tColmado Ruiz\t15/01/2025\t700.1 - 700 Ventas de mercaderías\t"
                           "N/fra. 1\t50,00\t0,00\t150,00"}))
        << r;
    const QString pdf = QDir(unit.path()).filePath("mayor.pdf");
    const Result printed = book("ledger-customers", {"--pdf", pdf});
    EXPECT_EQ(printed.code, 0) << printed;
    EXPECT_GT(QFileInfo(pdf).size(), 0);
}

TEST_F(cliBooks, TheExtractsRefuseWordsThatAreNotTheirs) {
    open();
    EXPECT_EQ(book("ledger-sales", {"--party", "1", "--text"}).code, 2);
    EXPECT_EQ(book("ledger-expenses", {"--from", "3", "--text"}).code, 2);
    EXPECT_EQ(book("ledger-customers", {}).code, 2);
}

TEST_F(cliBooks, TheSummaryOfBalancesNeedsTreasuryControl) {
    open();
    const Result r = book("trial-balance", {"--text"});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_TRUE(r.err.contains(msg(6979))) << r;
}

TEST_F(cliBooks, TheSummaryOfBalancesAsTextEndsWithItsTotals) {
    createCompany("Fusteria Pons", "B12345678", true);
    createExercise(K, Y, {"--iva1", "21", "--iva2", "10", "--iva3", "4"});
    ASSERT_EQ(run({"exercise-open", K, Y}).code, 0);
    ASSERT_EQ(on("customer-add", {"--name", "Colmado Ruiz"}).code, 0);
    postSale("15", "1", "121,00");
    const Result r = book("trial-balance", {"--text"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_TRUE(r.out.startsWith("Cuenta\tDescripcion\tSaldoD\tSaldoH\n430\t")) << r;
    EXPECT_TRUE(r.out.contains("\n700\t" + msg(6960) + "\t\t100,00\n")) << r;
    EXPECT_TRUE(r.out.contains("\n477\t" + msg(6962) + "\t\t21,00\n")) << r;
    EXPECT_TRUE(r.out.endsWith("D_TOTAL\t121,00\nH_TOTAL\t121,00\n")) << r;
}

TEST_F(cliBooks, TheOperatingStatementAsTextGivesItsMonthsAndResults) {
    open();
    postSale("15", "3", "121,00");
    const Result r = book("operating-statement", {"--from", "3", "--to", "6", "--text"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_TRUE(r.out.contains("\t700 Ventas de mercaderías\t0,00\t0,00\t100,00\t0,00\t")) << r;
    EXPECT_TRUE(r.out.contains("\n" + msg(6154) + "\t0,00\t0,00\t100,00\t100,00\t100,00\t100,00\t"))
        << r;
    EXPECT_EQ(book("operating-statement", {"--level", "4", "--text"}).code, 2);
    EXPECT_EQ(book("sales", {"--level", "2", "--text"}).code, 2);
    const Result refused = book("operating-statement", {"--from", "6", "--to", "3", "--text"});
    EXPECT_EQ(refused.code, 1) << refused;
    EXPECT_TRUE(refused.err.contains(msg(6142))) << refused;
}
