// A report saved as a spreadsheet: the same layout and rows as its pages, with amounts, dates
// and numbers as values, the groups' and the report's sums under their columns; the XLSX read
// back with openpyxl, the CSV byte for byte.
#include "report/report_job.h"
#include "report_fixture.h"

#include "context/dialogs.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

using namespace tallora;
using namespace tallora::report;
using tallora::testing::ReportFixture;

namespace {

class ReportSheetTest : public ::testing::Test {
protected:
    ReportJob job(const char* layout, int rows) {
        ReportJob j = tallora::testing::movimentsJob(
            layout, f.file(QStringLiteral("moviments%1.mdb").arg(++made_)), rows);
        j.WindowTitle = QStringLiteral("Movimientos: [marzo]");
        return j;
    }
    // The three movements of plain.rpt, to be saved as `destination` at `name` in the unit.
    ReportJob saved(int destination, const char* name) {
        ReportJob j = job("plain.rpt", 3);
        j.Destination = destination;
        j.PrintFileName = f.file(QString::fromLatin1(name));
        return j;
    }

    static QString text(const Cell& c) { return cellText(c, u','); }

    ReportFixture f;
    int made_ = 0;
};

QJsonArray readBack(const QString& path) {
    return QJsonDocument::fromJson(tallora::testing::readXlsx(path)).array();
}

QJsonArray typed(const char* type, const QString& value) {
    return QJsonArray{QString::fromLatin1(type), value};
}

}  // namespace

TEST_F(ReportSheetTest, GroupsDetailsAndSumsStandUnderTheirColumns) {
    const Sheet sheet = reportSheet(job("groups.rpt", 120), f.ctx);
    EXPECT_EQ(sheet.name, QStringLiteral("Movimientos marzo"));
    // The report header, then the page header without its page number and page sums.
    ASSERT_EQ(sheet.titles.size(), 2u);
    EXPECT_EQ(text(sheet.titles[0][0]), QStringLiteral("Total 9.075,00 en 120 filas"));
    EXPECT_EQ(text(sheet.titles[1][0]), QStringLiteral("Movimientos"));
    ASSERT_EQ(sheet.headings.size(), 1u);
    ASSERT_EQ(sheet.headings[0].size(), 4u);  // the detail's four texts
    EXPECT_EQ(text(sheet.headings[0][0]), QStringLiteral("ID"));

    // 3 group headers, 120 details, 3 group footers and the report footer.
    ASSERT_EQ(sheet.rows.size(), 127u);
    EXPECT_EQ(text(sheet.rows[0][0]), QStringLiteral("Grupo A"));
    const SheetRow& first = sheet.rows[1];
    EXPECT_EQ(std::get<qint64>(first[0]), 1);
    EXPECT_EQ(std::get<QString>(first[1]), QStringLiteral("Movimiento 1"));
    EXPECT_EQ(std::get<Money>(first[2]), Money::fromUnits(12500));
    const SheetRow& third = sheet.rows[3];
    // The running sum of the detail, row by row.
    EXPECT_EQ(std::get<Money>(third[3]), Money::fromUnits(12500 * 6));

    const SheetRow& footerA = sheet.rows[51];
    EXPECT_EQ(text(footerA[0]), QStringLiteral("Total grupo A: 50"));
    EXPECT_EQ(std::get<Money>(footerA[2]), Money::fromUnits(12500LL * (50 * 51 / 2)));
    EXPECT_TRUE(std::holds_alternative<std::monostate>(footerA[1]));
    EXPECT_EQ(text(sheet.rows[52][0]), QStringLiteral("Grupo B"));
    const SheetRow& last = sheet.rows.back();
    EXPECT_EQ(std::get<Money>(last[2]), Money::fromUnits(12500LL * (120 * 121 / 2)));
    for (std::size_t c : {0u, 1u, 3u})
        EXPECT_TRUE(std::holds_alternative<std::monostate>(last[c])) << c;
}

TEST_F(ReportSheetTest, TheXlsxHoldsNumbersAndDatesAsAReaderSeesThem) {
    const ReportJob j = saved(Destination::Xlsx, "plain.xlsx");
    ScriptedDialogs dialogs;
    const ReportResult result = j.Action(f.ctx, dialogs);
    ASSERT_TRUE(result.ok()) << result.error.toStdString();
    EXPECT_TRUE(dialogs.shown().empty());

    const QJsonArray book = readBack(j.PrintFileName);
    ASSERT_EQ(book.size(), 1);
    const QJsonObject sheet = book[0].toObject();
    EXPECT_EQ(sheet[u"name"].toString(), QStringLiteral("Movimientos marzo"));
    EXPECT_TRUE(sheet[u"frozen"].isNull());  // no column headings to freeze
    const QJsonArray rows = sheet[u"rows"].toArray();
    ASSERT_EQ(rows.size(), 5);  // the title, three rows, the sums
    EXPECT_EQ(rows[0].toArray()[0], typed("s", QStringLiteral("Movimientos")));
    const QJsonArray second = rows[2].toArray();
    ASSERT_EQ(second.size(), 6);
    EXPECT_EQ(second[0], typed("n", QStringLiteral("2")));
    EXPECT_EQ(second[1], typed("d", QStringLiteral("2026-03-03")));
    EXPECT_EQ(second[2], typed("s", QStringLiteral("A")));
    EXPECT_EQ(second[3], typed("n", QStringLiteral("3")));     // a quantity
    EXPECT_EQ(second[4], typed("n", QStringLiteral("2.50")));  // Currency
    EXPECT_EQ(second[5], typed("n", QStringLiteral("3")));     // a Double shown as money
    const QJsonArray sums = rows[4].toArray();
    EXPECT_EQ(sums[3], typed("n", QStringLiteral("9")));
    EXPECT_EQ(sums[4], typed("n", QStringLiteral("7.50")));
    EXPECT_TRUE(sums[0].isNull());
}

TEST_F(ReportSheetTest, TheCsvHoldsTheSameCellsWithTheExercisesDecimalMark) {
    const ReportJob j = saved(Destination::Csv, "plain.csv");
    ScriptedDialogs dialogs;
    ASSERT_TRUE(j.Action(f.ctx, dialogs).ok());
    QFile file(j.PrintFileName);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), QByteArray("\xEF\xBB\xBF"
                                         "Movimientos\r\n"
                                         "1;02/03/2026;A;1,5;1,25;1,50\r\n"
                                         "2;03/03/2026;A;3;2,50;3,00\r\n"
                                         "3;04/03/2026;A;4,5;3,75;4,50\r\n"
                                         ";;;9;7,50;\r\n"));
}

TEST_F(ReportSheetTest, AFileThatCannotBeWrittenIsToldAndNothingIsLeft) {
    const ReportJob j = saved(Destination::Xlsx, "no-such-folder/plain.xlsx");
    ScriptedDialogs dialogs;
    const ReportResult result = j.Action(f.ctx, dialogs);
    EXPECT_EQ(result.status, ReportResult::Status::Failed);
    ASSERT_EQ(dialogs.shown().size(), 1u);
    EXPECT_TRUE(dialogs.lastText().contains(QStringLiteral("no-such-folder")))
        << dialogs.lastText().toStdString();
    EXPECT_FALSE(QFile::exists(j.PrintFileName));
}
