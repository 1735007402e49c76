// The bank through tallora5-cli: mandates and IBANs kept for customers and suppliers, a
// collection run and a payment run sent as SEPA files valid against their schemas and
// written again from their records, the settings, and a Norma 43 statement shown.
#include "../banking/sepa_schema.h"
#include "../table_rows.h"
#include "cli_fixture.h"
#include "shell/settings_files.h"
#include "store/database.h"

#include <QFile>

using namespace tallora;
using tallora::clitest::Result;

namespace {

const QString K = QStringLiteral("B1234567");
const QString Y = QStringLiteral("2026");

class cliBank : public clitest::CliFixture {
protected:
    void SetUp() override {
        clitest::CliFixture::SetUp();
        createCompany("Fusteria Pons", "B12345678", true);
        if (billing()) ASSERT_TRUE(settings::writeFactMod(company(K), {true, QString(), 1}));
        createExercise(K, Y);
        ASSERT_EQ(run({"exercise-open", K, Y}).code, 0);
        ASSERT_EQ(on("treasury-account-add", {"--name", "Banco Norte", "--kind", "bank", "--ccc",
                                              "ES91 2100 0418 4502 0005 1332"})
                      .code,
                  0);
    }

    // The billing module, which the sample exercise does without.
    virtual bool billing() const { return true; }
    Result on(const QString& command, const QStringList& rest = {}) {
        return run(QStringList{command, K, Y} + rest);
    }
    QString file(const QString& name) const { return unit.path() + u'/' + name; }
    QByteArray read(const QString& path) const {
        QFile f(path);
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }
    void receipt(int id, const char* inOut, int party, const char* factura, int cents) {
        store::Database::open(company(K) + QStringLiteral("cartera.mdb"))
            .execute(QStringLiteral("insert into cartera (Id, data, cliente, proveedor, In_Out, "
                                    "Ejercicio, Factura, Total, Pendiente) values (%1, "
                                    "'2026-03-01', %2, %3, '%4', '2026', '%5', %6, 0)")
                         .arg(id)
                         .arg(QString::fromLatin1(inOut) == "Out" ? party : 0)
                         .arg(QString::fromLatin1(inOut) == "In" ? party : 0)
                         .arg(QString::fromLatin1(inOut), QString::fromLatin1(factura))
                         .arg(static_cast<qint64>(cents) * 100));
    }
};

// The same company without the billing module.
class cliBankSample : public cliBank {
protected:
    bool billing() const override { return false; }
};

// A statement of account 2100 0418 0200051332 in the bank's fixed records.
QByteArray statement(const QStringList& movements, const QString& opening, const QString& closing,
                     int credits, const QString& total) {
    QStringList lines;
    lines << QStringLiteral(
                 "11210004180200051332260301260331200000000100000978"
                 "3FUSTERIA PONS             ")
                 .leftJustified(80);
    lines << movements;
    lines << (QStringLiteral("332100041802000513320000000000000000000%1%2%3978")
                  .arg(credits, 5, 10, QLatin1Char('0'))
                  .arg(total.rightJustified(14, u'0'))
                  .arg(u'2' + closing.rightJustified(14, u'0')))
                 .leftJustified(80);
    lines << (QStringLiteral("88999999999999999999") +
              QString::number(lines.size()).rightJustified(6, u'0'))
                 .leftJustified(80);
    Q_UNUSED(opening);
    return lines.join(QStringLiteral("\r\n")).toLatin1() + "\r\n";
}

QString credit(const char* date, const char* cents, const char* reference) {
    const QString day = QString::fromLatin1(date);
    return (QStringLiteral("22    0418") + day + day + QStringLiteral("02002") + u'2' +
            QString::fromLatin1(cents).rightJustified(14, u'0') + QStringLiteral("0000000000") +
            QString::fromLatin1(reference).leftJustified(12))
        .leftJustified(80);
}

}  // namespace

TEST_F(cliBank, AStatementsCollectionsAreMatchedImportedOnceAndMeetTheBanksBalance) {
    ASSERT_EQ(on("treasury-account-change", {"2", "--balance", "1000"}).code, 0);
    ASSERT_EQ(on("customer-add", {"--name", "Bar Neptuno"}).code, 0);
    receipt(1, "Out", 1, "F-1", 12100);
    receipt(2, "Out", 1, "F-2", 5000);
    QFile f(file("marzo.n43"));
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(statement({credit("260304", "5000", "F-2"), credit("260303", "12100", "F-1")}, "100000",
                      "117100", 2, "17100"));
    f.close();
    Result r = on("n43-import", {"2", file("marzo.n43")});
    ASSERT_EQ(r.code, 0) << r;
    QStringList lines = r.out.split(u'\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 2) << r;
    EXPECT_TRUE(lines[0].startsWith("2\t04/03/2026\t50,00\tCobro de recibo\t2\tBar Neptuno\tF-2"))
        << lines[0].toStdString();
    EXPECT_TRUE(lines[1].startsWith("3\t03/03/2026\t121,00\tCobro de recibo\t1\t"))
        << lines[1].toStdString();
    const QString before = on("statement", {"2"}).out;
    EXPECT_FALSE(before.contains("F-1")) << "nothing written without --accept-matches";
    r = on("n43-import", {"2", file("marzo.n43"), "--accept-matches"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_TRUE(r.out.endsWith("imported\t2\t0\t0\t0\t0\t0\n")) << r;
    r = on("statement", {"2"});
    EXPECT_TRUE(r.out.trimmed().endsWith("1.171,00")) << r;
    EXPECT_TRUE(on("portfolio").out.startsWith(msg(6681))) << "no receipt left";
    r = on("n43-import", {"2", file("marzo.n43"), "--accept-matches"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_EQ(r.out.count("Ya importado"), 2) << r;
    EXPECT_TRUE(r.out.endsWith("imported\t0\t0\t0\t0\t0\t2\n")) << r;
    EXPECT_TRUE(on("statement", {"2"}).out.trimmed().endsWith("1.171,00"));
    ASSERT_EQ(on("treasury-account-add",
                 {"--name", "Otro banco", "--kind", "bank", "--ccc", "12341234161234567890"})
                  .code,
              0);
    r = on("n43-import", {"3", file("marzo.n43")});
    EXPECT_NE(r.code, 0) << "the file holds another account";
    EXPECT_TRUE(r.err.contains("no account of")) << r;
}

// A generated year: the statement a bank would send for the customers' pending receipts,
// each collected three days after it fell due, with the invoice as reference.
TEST_F(cliBankSample, AGeneratedYearsPendingReceiptsAreMatchedInFullAndTheBalanceIsTheBanks) {
    Result r = on("sample-exercise", {"--invoices", "160", "--seed", "11"});
    ASSERT_EQ(r.code, 0) << r;
    r = on("portfolio");
    ASSERT_EQ(r.code, 0) << r;
    QStringList movements;
    qint64 total = 0;
    for (const QString& row : r.out.split(u'\n', Qt::SkipEmptyParts)) {
        const QStringList f = row.split(u'\t');
        if (f.size() != 7) continue;  // the totals
        const QDate date = QDate::fromString(f[3].isEmpty() ? f[2] : f[3], "dd/MM/yyyy").addDays(3);
        if (date.year() != 2026) continue;
        const auto cents = [](QString amount) {
            return amount.remove(u'.').remove(u',').toLongLong();
        };
        const qint64 due = cents(f[5]) - cents(f[6]);
        if (due <= 0) continue;
        movements << credit(date.toString("yyMMdd").toLatin1().constData(),
                            QByteArray::number(due).constData(), f[4].toLatin1().constData());
        total += due;
    }
    ASSERT_GE(movements.size(), 10) << "the sample leaves receipts pending";
    QFile f(file("year.n43"));
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(statement(movements, "100000", QString::number(100000 + total),
                      static_cast<int>(movements.size()), QString::number(total)));
    f.close();
    // The statement's account is a new one: the sample's runs went through the others.
    ASSERT_EQ(on("treasury-account-change", {"2", "--ccc", "12341234161234567890"}).code, 0);
    r = on("treasury-account-add", {"--name", "Banco Extracto", "--kind", "bank", "--ccc",
                                    "21000418450200051332", "--balance", "1000"});
    ASSERT_EQ(r.code, 0) << r;
    const QString bank = r.out.trimmed().split(u'\n').last();
    r = on("n43-import", {bank, file("year.n43"), "--accept-matches"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_EQ(r.out.count("Cobro de recibo"), movements.size()) << r;
    EXPECT_TRUE(
        r.out.endsWith(QStringLiteral("imported\t%1\t0\t0\t0\t0\t0\n").arg(movements.size())))
        << r;
    // The account statement ends at the bank's closing balance.
    const QString closing = QStringLiteral("%1").arg(100000 + total);
    r = on("statement", {bank});
    const QString balance = r.out.trimmed().split(u'\n').last().split(u'\t').last();
    EXPECT_EQ(QString(balance).remove(u'.').remove(u','), closing) << r;
    // Read again: every line known, nothing written.
    const QString before = r.out;
    r = on("n43-import", {bank, file("year.n43"), "--accept-matches"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_EQ(r.out.count("Ya importado"), movements.size());
    EXPECT_EQ(on("statement", {bank}).out, before);
}

TEST_F(cliBank, ASpanishIbanIsKeptAsItsCccAndTheMandateBesideIt) {
    EXPECT_EQ(on("treasury-accounts").out.split(u'\t').value(3), "21000418450200051332");
    Result r = on("customer-add", {"--name", "Bar Neptuno", "--ccc", "ES7712341234161234567890",
                                   "--mandate", "NEP-1", "--mandate-date", "01/03/2025"});
    ASSERT_EQ(r.code, 0) << r;
    r = on("customer-add",
           {"--name", "Otro", "--mandate", "NEP-1", "--mandate-date", "01/03/2025"});
    EXPECT_NE(r.code, 0) << "a mandate reference belongs to one customer";
    r = on("customer-add", {"--name", "Otro", "--mandate", "X-2", "--mandate-date", "31/02/2025"});
    EXPECT_NE(r.code, 0) << "not a date";
    r = on("supplier-add",
           {"--name", "Olis del Camp", "--iban", "DE89370400440532013000", "--bic", "COBADEFFXXX"});
    ASSERT_EQ(r.code, 0) << r;
    r = on("supplier-add", {"--name", "Mal", "--iban", "DE89370400440532013001"});
    EXPECT_NE(r.code, 0) << "a wrong IBAN is refused";
    r = on("sepa-parties");
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_EQ(r.out, QStringLiteral("customer\t1\tBar Neptuno\tES77 1234 1234 1612 3456 7890\t"
                                    "NEP-1\t01/03/2025\tFRST\n"
                                    "supplier\t1\tOlis del Camp\tDE89 3704 0044 0532 0130 00\t"
                                    "COBADEFFXXX\n"));
    EXPECT_EQ(on("customers").out.split(u'\t').last().trimmed(), "12341234161234567890");
}

TEST_F(cliBank, TheMandateAndTheSuppliersIbanPassToTheNextExercise) {
    ASSERT_EQ(on("customer-add", {"--name", "Bar Neptuno", "--ccc", "12341234161234567890",
                                  "--mandate", "NEP-1", "--mandate-date", "01/03/2025"})
                  .code,
              0);
    ASSERT_EQ(
        on("supplier-add", {"--name", "Olis del Camp", "--iban", "DE89370400440532013000"}).code,
        0);
    createExercise(K, "2027");
    ASSERT_EQ(run({"exercise-open", K, "2027"}).code, 0);
    const Result r = run({"sepa-parties", K, "2027"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_EQ(r.out, QStringLiteral("customer\t1\tBar Neptuno\tES77 1234 1234 1612 3456 7890\t"
                                    "NEP-1\t01/03/2025\tFRST\n"
                                    "supplier\t1\tOlis del Camp\tDE89 3704 0044 0532 0130 00\t\n"));
    // Removing the customer takes its mandate with it.
    ASSERT_EQ(run({"--yes", "customer-remove", K, "2027", "1"}).code, 0);
    EXPECT_FALSE(run({"sepa-parties", K, "2027"}).out.contains("NEP-1"));
}

TEST_F(cliBank, ACollectionRunGoesAsADirectDebitAndIsWrittenAgainFromItsRecord) {
    ASSERT_EQ(on("customer-add", {"--name", "Bar Neptuno", "--ccc", "12341234161234567890",
                                  "--mandate", "NEP-1", "--mandate-date", "01/03/2025"})
                  .code,
              0);
    ASSERT_EQ(on("customer-add", {"--name", "Sin Mandato", "--ccc", "21000418450200051332"}).code,
              0);
    receipt(1, "Out", 1, "F-1", 12100);
    receipt(2, "Out", 2, "F-2", 5000);
    // Without --yes the list of what cannot go stops everything.
    Result r = on("sepa-debit", {"1", "2", "--account", "2", "--date", "10/05/2026",
                                 "--collection-date", "15/05/2026", "--out", file("r.xml")});
    EXPECT_NE(r.code, 0) << r;
    EXPECT_TRUE(r.out.contains("Sin Mandato") || r.err.contains("Sin Mandato")) << r;
    EXPECT_FALSE(QFile::exists(file("r.xml")));
    EXPECT_EQ(on("draft", {"collections"}).out.count(u'\n'), 1) << "the draft left empty";
    r = run({"--yes", "sepa-debit", K, Y, "1", "2", "--account", "2", "--date", "10/05/2026",
             "--collection-date", "15/05/2026", "--out", file("r.xml")});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_TRUE(r.out.contains("remittance\t1\t1\t121,00\t")) << r;
    const QByteArray xml = read(file("r.xml"));
    EXPECT_EQ(tallora::testing::sepaSchemaErrors(xml, "pain.008.001.02"), QString())
        << xml.constData();
    EXPECT_TRUE(xml.contains("<CtrlSum>121.00</CtrlSum>"));
    EXPECT_TRUE(xml.contains("<SeqTp>FRST</SeqTp>"));
    EXPECT_TRUE(xml.contains("<Id>ES97000B12345678</Id>")) << xml.constData();
    r = on("sepa-runs");
    EXPECT_EQ(r.out, "1\tdebit\t10/05/2026\t15/05/2026\tpain.008.001.02\t1\t121,00\n") << r;
    ASSERT_EQ(on("sepa-file", {"1", file("again.xml")}).code, 0);
    EXPECT_EQ(read(file("again.xml")), xml);
    EXPECT_NE(on("sepa-file", {"2", file("none.xml")}).code, 0);
    // The second receipt waits in the open list; the mandate is now recurrent.
    EXPECT_TRUE(on("draft", {"collections", "--open"}).out.startsWith("2\t"));
    EXPECT_TRUE(on("sepa-parties").out.contains("\tRCUR\n"));

    // The bank credits the file's total in one line: the run wrote it already.
    const QString movements = on("statement", {"2"}).out;
    QFile f(file("mayo.n43"));
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(statement({credit("260516", "12100", "REMESA")}, "100000", "112100", 1, "12100"));
    f.close();
    r = on("n43-import", {"2", file("mayo.n43"), "--accept-matches"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_TRUE(r.out.startsWith("2\t16/05/2026\t121,00\tRemesa ya contabilizada\t1\t")) << r;
    EXPECT_TRUE(r.out.endsWith("imported\t0\t0\t0\t0\t1\t0\n")) << r;
    EXPECT_EQ(on("statement", {"2"}).out, movements) << "no movement written twice";
    r = on("n43-import", {"2", file("mayo.n43")});
    EXPECT_TRUE(r.out.contains("Ya importado")) << r;
}

TEST_F(cliBank, APaymentRunGoesAsATransferInTheVersionSet) {
    ASSERT_EQ(
        on("supplier-add", {"--name", "Olis del Camp", "--iban", "ES0521053014113400002160"}).code,
        0);
    receipt(1, "In", 1, "A-77", 24200);
    Result r = on("sepa-settings", {"--suffix", "001", "--versions", "current"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_EQ(r.out, "ES97001B12345678\tpain.008.001.08\tpain.001.001.09\n");
    r = on("sepa-transfer", {"1", "--account", "2", "--date", "10/05/2026", "--execution-date",
                             "12/05/2026", "--out", file("t.xml")});
    ASSERT_EQ(r.code, 0) << r;
    const QByteArray xml = read(file("t.xml"));
    EXPECT_TRUE(xml.contains("pain.001.001.09"));
    EXPECT_TRUE(xml.contains("<Dt>2026-05-12</Dt>"));
    EXPECT_TRUE(xml.contains("<CtrlSum>242.00</CtrlSum>"));
    on("sepa-settings", {"--versions", "classic"});
    receipt(2, "In", 1, "A-78", 1000);
    r = on("sepa-transfer",
           {"2", "--account", "2", "--date", "10/05/2026", "--out", file("t2.xml")});
    ASSERT_EQ(r.code, 0) << r;
    const QByteArray classic = read(file("t2.xml"));
    EXPECT_EQ(tallora::testing::sepaSchemaErrors(classic, "pain.001.001.03"), QString())
        << classic.constData();
    EXPECT_TRUE(classic.contains("<ReqdExctnDt>2026-05-10</ReqdExctnDt>"));
}

TEST_F(cliBank, AStatementIsShownOrRefusedSayingWhere) {
    const QString good = QStringLiteral(TALLORA_SOURCE_DIR "/tests/data/norma43/one_account.n43");
    Result r = run({"n43-show", good});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_TRUE(r.out.startsWith("account\t")) << r;
    EXPECT_GT(r.out.count(u'\n'), 1);
    QByteArray bytes = read(good);
    const qsizetype at = bytes.indexOf("\n33");
    ASSERT_GT(at, 0);
    bytes[at + 30] = bytes[at + 30] == '1' ? '2' : '1';  // a digit of the debits' total
    QFile bad(file("bad.n43"));
    ASSERT_TRUE(bad.open(QIODevice::WriteOnly));
    bad.write(bytes);
    bad.close();
    r = run({"n43-show", file("bad.n43")});
    EXPECT_NE(r.code, 0);
    EXPECT_TRUE(r.err.contains("line ")) << r;
}
