// verifactu-records and verifactu-check of tallora5-cli: the records of sales posted, changed
// and deleted through the companion, and a flipped character found by the check.
#include "../table_rows.h"
#include "cli_fixture.h"
#include "store/database.h"

#include <QFile>
#include <QRegularExpression>

using namespace tallora;
using tallora::clitest::Result;

namespace {

const QString K = QStringLiteral("B1234567");
const QString Y = QStringLiteral("2025");
const QString Ventas = QStringLiteral("700 Ventas de mercaderías");

class cliVerifactu : public clitest::CliFixture {
protected:
    void SetUp() override {
        clitest::CliFixture::SetUp();
        createCompany("Fusteria Pons", "B12345678", false);
        createExercise(K, Y, {"--iva1", "21", "--iva2", "10", "--iva3", "4"});
        Result r = run({"exercise-open", K, Y});
        ASSERT_EQ(r.code, 0) << r;
        r = on("customer-add", {"--name", "Ferreteria Puig", "--nif", "B64717838"});
        ASSERT_EQ(r.code, 0) << r;
    }

    Result on(const QString& command, const QStringList& rest = {}) {
        return run(QStringList{command, K, Y} + rest);
    }
    Result sale(const QString& total, const QString& description) {
        return on("post-sale",
                  {"--day", "15", "--month", "3", "--customer", "Ferreteria Puig", "--account",
                   Ventas, "--total", total, "--description", description});
    }
    QString recordsFile() const { return company(K) + "verifactu.mdb"; }

    // The records without their times and hashes, which change from run to run.
    QStringList records() {
        const Result r = run({"verifactu-records", K});
        EXPECT_EQ(r.code, 0) << r;
        QStringList out;
        for (const QString& line : r.out.split(u'\n', Qt::SkipEmptyParts)) {
            const QStringList f = line.split(u'\t');
            EXPECT_EQ(f.size(), 9) << line.toStdString();
            if (f.size() != 9) continue;
            EXPECT_TRUE(
                QRegularExpression("^2\\d{3}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d\\+0[12]:00$")
                    .match(f[6])
                    .hasMatch())
                << f[6].toStdString();
            EXPECT_TRUE(QRegularExpression("^[0-9A-F]{64}$").match(f[7]).hasMatch());
            out << (f.mid(0, 6) + f.mid(8)).join(u'|');
        }
        return out;
    }
};

TEST_F(cliVerifactu, PostChangeAndRemoveLeaveTheirRecordsInOrder) {
    ASSERT_EQ(sale("121", "F-1").code, 0);
    ASSERT_EQ(sale("60,50", "F-2").code, 0);
    Result r = on("change-sale", {"1", "--total", "242", "--base1", "200", "--iva1", "42"});
    ASSERT_EQ(r.code, 0) << r;
    r = run({"--yes", "sale-remove", K, Y, "2"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_EQ(records(), (QStringList{"1|alta|F1|F-1|15-03-2025|121.00|pendiente",
                                      "2|alta|F1|F-2|15-03-2025|60.50|pendiente",
                                      "3|alta-subsanacion|F1|F-1|15-03-2025|242.00|pendiente",
                                      "4|anulacion||F-2|15-03-2025||pendiente"}));
    r = run({"verifactu-check", K});
    EXPECT_EQ(r.code, 0) << r;
    EXPECT_EQ(r.out, "4 registros, cadena correcta\n");
}

TEST_F(cliVerifactu, ACompanyWithoutRecordsHasAnEmptyIntactChain) {
    EXPECT_TRUE(records().isEmpty());
    const Result r = run({"verifactu-check", K});
    EXPECT_EQ(r.code, 0) << r;
    EXPECT_EQ(r.out, "0 registros, cadena correcta\n");
}

TEST_F(cliVerifactu, AFlippedCharacterIsReportedWithItsRecord) {
    for (const char* n : {"F-1", "F-2", "F-3"}) ASSERT_EQ(sale("121", n).code, 0);
    {
        store::Database db = store::Database::open(recordsFile());
        db.execute("drop trigger RegistrosInalterables");
        db.execute("update Registros set ImporteTotal = '121.01' where Id = 2");
    }
    const Result r = run({"verifactu-check", K});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_TRUE(r.err.contains("registro 2 ")) << r;
    EXPECT_TRUE(r.out.isEmpty()) << r;
}

TEST_F(cliVerifactu, TheNextSubmissionIsWrittenToAFile) {
    Result r = run({"verifactu-xml", K, unit.filePath("next.xml")});
    EXPECT_EQ(r.code, 1) << "nothing waits yet: " << r;
    ASSERT_EQ(sale("121", "F-1").code, 0);
    ASSERT_EQ(sale("60,50", "F-2").code, 0);
    r = run({"verifactu-xml", K, unit.filePath("next.xml")});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_EQ(r.out, "2 registros\n");
    QFile file(unit.filePath("next.xml"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QString xml = QString::fromUtf8(file.readAll());
    EXPECT_TRUE(
        xml.contains("<sf:NombreRazon>Fusteria Pons</sf:NombreRazon><sf:NIF>B12345678</sf:NIF>"))
        << xml.left(600).toStdString();
    EXPECT_EQ(xml.count("<sum:RegistroFactura>"), 2);
}

TEST_F(cliVerifactu, SendingNeedsTheCertificate) {
    const Result r = run({"verifactu-send", K});
    EXPECT_EQ(r.code, 2) << r;
    EXPECT_TRUE(r.err.contains("--certificate")) << r;
    const Result missing = run({"verifactu-send", K, "--certificate", unit.filePath("none.p12")});
    EXPECT_EQ(missing.code, 1) << missing;
    EXPECT_TRUE(missing.err.contains("none.p12")) << missing;
}

TEST_F(cliVerifactu, AWholeImportRecordsItsSalesOnlyWhenAsked) {
    ASSERT_EQ(sale("121", "F-1").code, 0);
    const QString file = unit.filePath("year.dat");
    Result r = on("export", {file});
    ASSERT_EQ(r.code, 0) << r;
    r = run({"--yes", "import", K, Y, file, "--whole"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_EQ(records().size(), 1);
    r = run({"--yes", "import", K, Y, file, "--whole", "--record-invoices"});
    ASSERT_EQ(r.code, 0) << r;
    // The same invoice comes back: its record is a correction of the one it had.
    EXPECT_EQ(records(), (QStringList{"1|alta|F1|F-1|15-03-2025|121.00|pendiente",
                                      "2|alta-subsanacion|F1|F-1|15-03-2025|121.00|pendiente"}));
    r = run({"--yes", "import", K, Y, file, "--customers", "--record-invoices"});
    EXPECT_EQ(r.code, 2) << r;
}

TEST_F(cliVerifactu, AnUnknownCompanyIsRefused) {
    const Result r = run({"verifactu-records", "X9999999"});
    EXPECT_EQ(r.code, 1) << r;
}

}  // namespace
