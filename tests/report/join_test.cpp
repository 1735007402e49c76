// A table of a second data file joined to the rows of a report, and sums of a difference.
#include "context/dialogs.h"
#include "report/layout_reader.h"
#include "report/report_error.h"
#include "report/report_job.h"
#include "report_fixture.h"

#include <gtest/gtest.h>

using namespace tallora;
using namespace tallora::report;
using tallora::testing::ReportFixture;
using tallora::testing::sourcePath;

namespace {

class JoinTest : public ::testing::Test {
protected:
    JoinTest() {
        store::Database d = store::Database::open(f.file(QStringLiteral("grups.mdb")),
                                                  store::Database::Mode::CreateIfMissing);
        d.execute(QStringLiteral(
            "create table Grups (codi TEXT(5), nom TEXT(40), grup TEXT(5), descompte CURRENCY);"
            "insert into Grups values ('A', 'Grupo alfa', 'g-A', 2500), "
            "('B', 'Grupo beta', 'g-B', 10000), ('A', 'Otro alfa', 'x', 999999)"));
        tallora::testing::makeMoviments(f.file(QStringLiteral("moviments.mdb")), 120);
    }
    ReportJob job() const {
        ReportJob j;
        j.ReportFileName = sourcePath(QStringLiteral("tests/data/reports/engine/join.rpt"));
        j.DataFiles[0] = f.file(QStringLiteral("moviments.mdb"));
        j.DataFiles[1] = f.file(QStringLiteral("grups.mdb"));
        return j;
    }
    static QStringList allTexts(const RenderedReport& r) {
        QStringList out;
        for (int p = 0; p < r.pageCount(); ++p) out << r.pageTexts(p);
        return out;
    }
    // The joined texts of the rows, in print order.
    static QStringList joined(const RenderedReport& r) {
        return allTexts(r).filter(QStringLiteral("["));
    }

    ReportFixture f;
};

}  // namespace

TEST_F(JoinTest, EachRowTakesTheFirstMatchingRowOrNothing) {
    const RenderedReport r = renderReport(job(), f.ctx);
    const QStringList rows = joined(r);
    // One line a row: a key found twice does not repeat the row.
    ASSERT_EQ(rows.size(), 120);
    EXPECT_EQ(rows[0], QStringLiteral("[Grupo alfa] [Grupo alfa] [g-A]"));
    EXPECT_EQ(rows[49], QStringLiteral("[Grupo alfa] [Grupo alfa] [g-A]"));
    EXPECT_EQ(rows[50], QStringLiteral("[Grupo beta] [Grupo beta] [g-B]"));
    EXPECT_EQ(rows[100], QStringLiteral("[] [] []"));
    EXPECT_TRUE(allTexts(r).contains(QStringLiteral("0,25")));
    EXPECT_TRUE(allTexts(r).contains(QStringLiteral("1,00")));
}

TEST_F(JoinTest, AFieldWithoutItsTableIsTheRowsOwnFirst) {
    ReportJob j = job();
    // grup is a field of both: without its table it is the row's, so the selection keeps B.
    j.SelectionFormula = QStringLiteral("grup = 'B'");
    EXPECT_EQ(joined(renderReport(j, f.ctx)).size(), 50);
    j.SelectionFormula = QStringLiteral("{Grups.grup} = 'g-B'");
    EXPECT_EQ(joined(renderReport(j, f.ctx)).size(), 50);
    j.SelectionFormula = QStringLiteral("{Grups.grup} = 'B'");
    EXPECT_EQ(joined(renderReport(j, f.ctx)).size(), 0);
}

TEST_F(JoinTest, SortFieldsAndSelectionsMayNameAJoinedField) {
    ReportJob j = job();
    j.SortFields = {QStringLiteral("-{Grups.nom}"), QStringLiteral("+id")};
    const QStringList rows = joined(renderReport(j, f.ctx));
    ASSERT_EQ(rows.size(), 120);
    EXPECT_EQ(rows.first(), QStringLiteral("[Grupo beta] [Grupo beta] [g-B]"));
    EXPECT_EQ(rows[50], QStringLiteral("[Grupo alfa] [Grupo alfa] [g-A]"));
    EXPECT_EQ(rows.last(), QStringLiteral("[] [] []"));
    j.SortFields.clear();
    j.SelectionFormula = QStringLiteral("{Grups.nom} = 'Grupo beta' and id > 90");
    EXPECT_EQ(joined(renderReport(j, f.ctx)).size(), 10);
}

TEST_F(JoinTest, ASumOfADifferenceTakesTheSecondFieldAwayRowByRow) {
    const QStringList texts = allTexts(renderReport(job(), f.ctx));
    // 9.075,00 of imports less 50 × 0,25 and 50 × 1,00; rows without a group take nothing off.
    EXPECT_TRUE(texts.contains(QStringLiteral("Neto 9.012,50")));
    // 1,5 × id less id over ids 1 to 120.
    EXPECT_TRUE(texts.contains(QStringLiteral("Resto 3630")));
}

TEST_F(JoinTest, AJoinedFileTheJobDoesNotGiveIsNamedWithTheLine) {
    ReportJob j = job();
    j.DataFiles[1].clear();
    ScriptedDialogs dialogs;
    j.Destination = Destination::File;
    j.PrintFileName = f.file(QStringLiteral("join.pdf"));
    const ReportResult r = j.Action(f.ctx, dialogs);
    EXPECT_EQ(r.status, ReportResult::Status::Failed);
    EXPECT_EQ(r.error, j.ReportFileName +
                           QStringLiteral(":6: no data file is given for the source \"Grups\""));
    j = job();
    j.DataFiles[1] = f.file(QStringLiteral("none.mdb"));
    EXPECT_THROW(renderReport(j, f.ctx), ReportError);
}

TEST_F(JoinTest, OneTableJoinedTwiceGoesByTheNameEachJoinGivesIt) {
    {
        // Moviment 3's concept names group g-B's code, so that the second join finds it.
        store::Database d = store::Database::open(f.file(QStringLiteral("moviments.mdb")));
        d.execute(QStringLiteral("update Moviments set concepte = 'g-B' where id = 3"));
    }
    ReportJob j = job();
    j.ReportFileName = sourcePath(QStringLiteral("tests/data/reports/engine/join_twice.rpt"));
    const QStringList texts = allTexts(renderReport(j, f.ctx));
    const QStringList rows = texts.filter(QStringLiteral("<"));
    ASSERT_EQ(rows.size(), 120);
    EXPECT_EQ(rows[0], QStringLiteral("<Grupo alfa|>"));
    EXPECT_EQ(rows[2], QStringLiteral("<Grupo alfa|Grupo beta>"));
    EXPECT_EQ(rows[100], QStringLiteral("<|>"));
    // The amount format: 0,25 and 1,00 as money, nothing for no group.
    EXPECT_TRUE(texts.contains(QStringLiteral("(0,25)")));
    EXPECT_TRUE(texts.contains(QStringLiteral("(1,00)")));
    EXPECT_EQ(texts.count(QStringLiteral("()")), 20);
    EXPECT_TRUE(texts.contains(QStringLiteral("Total 62,50")));
}

TEST(JoinLayout, AnAmountLeavesOnlyAZeroBlank) {
    ReportFixture f;
    store::Database d = store::Database::open(f.file(QStringLiteral("zeros.mdb")),
                                              store::Database::Mode::CreateIfMissing);
    d.execute(
        QStringLiteral("create table T (id LONG, v CURRENCY);"
                       "insert into T values (1, 0), (2, 5000), (3, -10000)"));
    const QString layout = f.file(QStringLiteral("zeros.rpt"));
    QFile file(layout);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(
        "data file=0 source=T order=\"+id\"\nband detail height=5\n"
        "  text x=0 y=0 w=60 value=\"{id}:[{v|amount}]\"\n");
    file.close();
    ReportJob j;
    j.ReportFileName = layout;
    j.DataFiles[0] = f.file(QStringLiteral("zeros.mdb"));
    const RenderedReport r = renderReport(j, f.ctx);
    EXPECT_EQ(r.pageTexts(0), (QStringList{QStringLiteral("1:[]"), QStringLiteral("2:[0,50]"),
                                           QStringLiteral("3:[-1,00]")}));
}

TEST(JoinLayout, TheJoinStatementReadsItsFourAttributes) {
    const Layout l = parseLayout(QStringLiteral("data file=0 source=cartera\n"
                                                "join file=1 source=Clients key=client "
                                                "field=cliente\n"),
                                 QStringLiteral("t.rpt"));
    ASSERT_EQ(l.joins.size(), 1u);
    EXPECT_EQ(l.joins[0].line, 2);
    EXPECT_EQ(l.joins[0].file, 1);
    EXPECT_EQ(l.joins[0].source, QStringLiteral("Clients"));
    EXPECT_EQ(l.joins[0].key, QStringLiteral("client"));
    EXPECT_EQ(l.joins[0].field, QStringLiteral("cliente"));
    try {
        parseLayout(QStringLiteral("data source=x\njoin file=1 source=Clients field=cliente"),
                    QStringLiteral("t.rpt"));
        ADD_FAILURE() << "a join without its key reads";
    } catch (const ReportError& e) {
        EXPECT_EQ(e.message(), QStringLiteral("t.rpt:2: \"key\" is missing"));
    }
}

TEST(JoinLayout, ASumOfADifferenceKeepsBothFields) {
    const Layout l =
        parseLayout(QStringLiteral("band report-footer\n"
                                   "text w=10 value=\"{sum(Total - Pendiente, group)|money}\""),
                    QStringLiteral("t.rpt"));
    const TextPiece& p = l.bands[0].texts[0].pieces[0];
    EXPECT_EQ(p.kind, TextPiece::Kind::Sum);
    EXPECT_EQ(p.text, QStringLiteral("Total"));
    EXPECT_EQ(p.minus, QStringLiteral("Pendiente"));
    EXPECT_EQ(p.scope, SumScope::Group);
    for (const char* bad : {"{sum(a - b - c, report)}", "{sum(a -, report)}"}) {
        EXPECT_THROW(
            parseLayout(
                QStringLiteral("band detail\ntext w=5 value=\"%1\"").arg(QLatin1String(bad)),
                QStringLiteral("t.rpt")),
            ReportError)
            << bad;
    }
}
