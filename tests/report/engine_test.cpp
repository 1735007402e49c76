// The engine on movements: groups, sums of every scope, formats, long texts, selection,
// order, margins, page count and the pages as pictures and on a printer.
#include "report/pdf_output.h"
#include "report/report_helpers.h"
#include "report/report_job.h"
#include "report_fixture.h"

#include "context/common_helpers.h"

#include <QFontMetricsF>
#include <QPrinter>
#include <QRegularExpression>

#include <gtest/gtest.h>

using namespace tallora;
using namespace tallora::report;
using tallora::testing::ReportFixture;
using tallora::testing::sourcePath;

namespace {

class EngineTest : public ::testing::Test {
protected:
    ReportJob job(const char* layout, int rows = 120) {
        return tallora::testing::movimentsJob(
            layout, f.file(QStringLiteral("moviments%1.mdb").arg(++made_)), rows);
    }
    // The texts of a page that start with `prefix`.
    static QStringList starting(const RenderedReport& r, int page, const QString& prefix) {
        QStringList out;
        for (const QString& t : r.pageTexts(page))
            if (t.startsWith(prefix)) out << t;
        return out;
    }
    static QStringList allTexts(const RenderedReport& r) {
        QStringList out;
        for (int p = 0; p < r.pageCount(); ++p) out << r.pageTexts(p);
        return out;
    }
    // The ids printed on a page: whole numbers right-aligned in the first column.
    static std::vector<int> idsOn(const RenderedReport& r, int page) {
        std::vector<int> ids;
        for (const TextRun& t : r.pages[page].texts) {
            bool ok = false;
            const int id = t.text.toInt(&ok);
            if (ok && t.baseline.x() < dotsFromMm(20)) ids.push_back(id);
        }
        return ids;
    }
    static QString euros(double v) {
        WorkingContext c;
        return Format_Import(c, v);
    }

    ReportFixture f;
    int made_ = 0;
};

}  // namespace

TEST_F(EngineTest, GroupSumsAndCountsCoverTheirGroup) {
    const RenderedReport r = renderReport(job("groups.rpt"), f.ctx);
    const QStringList texts = allTexts(r);
    EXPECT_TRUE(texts.contains(QStringLiteral("Total grupo A: 50")));
    EXPECT_TRUE(texts.contains(QStringLiteral("Total grupo B: 50")));
    EXPECT_TRUE(texts.contains(QStringLiteral("Total grupo C: 20")));
    // 1 to 50, 51 to 100 and 101 to 120, at 1,25 each unit of id.
    EXPECT_TRUE(texts.contains(QStringLiteral("1.593,75")));
    EXPECT_TRUE(texts.contains(QStringLiteral("4.718,75")));
    EXPECT_TRUE(texts.contains(QStringLiteral("2.762,50")));
    EXPECT_EQ(r.pageTexts(0).first(), QStringLiteral("Total 9.075,00 en 120 filas"));
    EXPECT_EQ(r.pageTexts(r.pageCount() - 1).contains(QStringLiteral("9.075,00")), true);
}

TEST_F(EngineTest, PageSumsAndCarriedSumsFollowThePages) {
    const RenderedReport r = renderReport(job("groups.rpt"), f.ctx);
    ASSERT_EQ(r.pageCount(), 3);
    int seen = 0;
    double carried = 0;
    for (int p = 0; p < r.pageCount(); ++p) {
        const std::vector<int> ids = idsOn(r, p);
        ASSERT_FALSE(ids.empty());
        EXPECT_EQ(ids.front(), seen + 1) << "page " << p + 1;
        double page = 0;
        for (int id : ids) page += id * 1.25;
        EXPECT_EQ(starting(r, p, QStringLiteral("Suma anterior")),
                  QStringList{QStringLiteral("Suma anterior ") + euros(carried)});
        carried += page;
        EXPECT_EQ(starting(r, p, QStringLiteral("Suma página")),
                  QStringList{QStringLiteral("Suma página ") + euros(page)});
        EXPECT_EQ(starting(r, p, QStringLiteral("Suma y sigue")),
                  QStringList{QStringLiteral("Suma y sigue ") + euros(carried)});
        seen = ids.back();
    }
    EXPECT_EQ(seen, 120);
    // The running sum of a detail row includes that row.
    EXPECT_TRUE(r.pageTexts(0).contains(euros(1.25 + 2.5 + 3.75)));
}

TEST_F(EngineTest, PageNumbersCountTheWholeReportAndRepeatedGroupHeadersContinue) {
    const RenderedReport r = renderReport(job("groups.rpt"), f.ctx);
    for (int p = 0; p < r.pageCount(); ++p)
        EXPECT_TRUE(r.pageTexts(p).contains(QStringLiteral("Página %1/3").arg(p + 1)));
    // Group A runs onto page 2: its header comes again right under the column header.
    const QStringList second = r.pageTexts(1);
    const qsizetype id = second.indexOf(QStringLiteral("ID"));
    ASSERT_GE(id, 0);
    EXPECT_EQ(second.value(id + 1), QStringLiteral("Grupo A"));
    EXPECT_EQ(idsOn(r, 1).front(), idsOn(r, 0).back() + 1);
    EXPECT_LE(idsOn(r, 0).back(), 50);
    // The header of group A shows once on page 1, and the report header only there.
    EXPECT_EQ(r.pageTexts(0).count(QStringLiteral("Grupo A")), 1);
    EXPECT_TRUE(starting(r, 1, QStringLiteral("Total ")).filter(QStringLiteral("filas")).isEmpty());
}

TEST_F(EngineTest, AGroupHeaderNeverEndsAPageWithoutItsFirstRow) {
    const RenderedReport r = renderReport(job("groups.rpt", 400), f.ctx);
    for (int p = 0; p < r.pageCount(); ++p) {
        const std::vector<TextRun>& texts = r.pages[p].texts;
        for (size_t i = 0; i < texts.size(); ++i) {
            if (!texts[i].text.startsWith(QStringLiteral("Grupo "))) continue;
            EXPECT_TRUE(std::any_of(
                texts.begin() + i, texts.end(),
                [](const TextRun& t) { return t.text.startsWith(QStringLiteral("Movimiento")); }))
                << "page " << p + 1;
        }
    }
}

TEST_F(EngineTest, FieldFormatsFollowTheWorkingContext) {
    ReportJob j = job("plain.rpt", 3);
    RenderedReport r = renderReport(j, f.ctx);
    QStringList texts = r.pageTexts(0);
    EXPECT_TRUE(texts.contains(QStringLiteral("02/03/2026")));  // date
    EXPECT_TRUE(texts.contains(QStringLiteral("3,000")));
    EXPECT_TRUE(texts.contains(QStringLiteral("3,75")));   // Currency, ten-thousandths
    EXPECT_TRUE(texts.contains(QStringLiteral("4,50")));   // a Double shown as money
    EXPECT_TRUE(texts.contains(QStringLiteral("7,50")));   // sum of import
    EXPECT_TRUE(texts.contains(QStringLiteral("9,000")));  // sum of quantities
    f.ctx.Decimal = 46;
    f.ctx.Moneda = QStringLiteral("Ptes.");
    texts = renderReport(j, f.ctx).pageTexts(0);
    EXPECT_TRUE(texts.contains(QStringLiteral("4")));  // 3,75 pesetas rounds to 4
    EXPECT_TRUE(texts.contains(QStringLiteral("3.000")));
    EXPECT_FALSE(texts.contains(QStringLiteral("3,75")));
}

TEST_F(EngineTest, LongTextsAreCutVisiblyOrWrappedNeverOverlapping) {
    ReportJob j = job("overflow.rpt", 3);
    {
        store::Database d = store::Database::open(j.DataFiles[0]);
        d.execute(
            QStringLiteral("update Moviments set concepte = 'Reparación de la cubierta de la nave "
                           "industrial con sustitución de canalones y bajantes' where id = 2"));
    }
    const RenderedReport r = renderReport(j, f.ctx);
    const std::vector<TextRun>& texts = r.pages[0].texts;
    const QFontMetricsF fm(r.fonts.at(0));
    std::vector<const TextRun*> cut, wrapped;
    double y3 = 0, yLastWrapped = 0;
    for (const TextRun& t : texts) {
        if (t.baseline.x() >= dotsFromMm(20) && t.baseline.x() < dotsFromMm(75) &&
            t.text.startsWith(QStringLiteral("Reparación")))
            cut.push_back(&t);
        if (t.baseline.x() >= dotsFromMm(80) && t.baseline.x() < dotsFromMm(145) &&
            !t.text.startsWith(QStringLiteral("Movimiento")))
            wrapped.push_back(&t);
        if (t.text == u"3") y3 = t.baseline.y();
    }
    ASSERT_EQ(cut.size(), 1u);
    EXPECT_TRUE(cut[0]->text.endsWith(QChar(0x2026))) << cut[0]->text.toStdString();
    EXPECT_LE(fm.horizontalAdvance(cut[0]->text), dotsFromMm(50));
    ASSERT_GE(wrapped.size(), 2u);
    QStringList words;
    for (const TextRun* t : wrapped) {
        EXPECT_LE(fm.horizontalAdvance(t->text), dotsFromMm(60) + 0.5);
        words << t->text;
        yLastWrapped = std::max(yLastWrapped, t->baseline.y());
    }
    EXPECT_EQ(words.join(u' '),
              QStringLiteral("Reparación de la cubierta de la nave industrial con sustitución de "
                             "canalones y bajantes"));
    // The next row starts below the last wrapped line.
    EXPECT_GT(y3, yLastWrapped + fm.descent());
    // Literal braces, and a formula the job does not give prints empty.
    EXPECT_TRUE(r.pageTexts(0).contains(QStringLiteral("{literal} fi")));
}

TEST_F(EngineTest, TheSelectionLimitsTheRowsWithBoundValues) {
    ReportJob j = job("plain.rpt");
    j.SelectionFormula = QStringLiteral("{Moviments.grup} = 'B' and import >= 800000");
    std::vector<int> ids;
    const RenderedReport r = renderReport(j, f.ctx);
    for (int p = 0; p < r.pageCount(); ++p)
        for (int id : idsOn(r, p)) ids.push_back(id);
    ASSERT_EQ(ids.size(), 37u);
    EXPECT_EQ(ids.front(), 64);
    EXPECT_EQ(ids.back(), 100);
    j.SelectionFormula = QStringLiteral("grup = 'O''Brien'' or 1=1 --'");
    EXPECT_TRUE(idsOn(renderReport(j, f.ctx), 0).empty());
    j.SelectionFormula = QStringLiteral("grup = \"C\" AND id < 103.5");
    EXPECT_EQ(idsOn(renderReport(j, f.ctx), 0), (std::vector<int>{101, 102, 103}));
}

TEST_F(EngineTest, SortFieldsOrderTheRowsAndGroupsComeFirst) {
    ReportJob j = job("plain.rpt", 10);
    j.SortFields = {QStringLiteral("-{Moviments.id}")};
    EXPECT_EQ(idsOn(renderReport(j, f.ctx), 0), (std::vector<int>{10, 9, 8, 7, 6, 5, 4, 3, 2, 1}));
    ReportJob g = job("groups.rpt", 120);
    g.SortFields = {QStringLiteral("-id")};
    const RenderedReport r = renderReport(g, f.ctx);
    EXPECT_EQ(idsOn(r, 0).front(), 50);  // group A first, its rows from the highest
    EXPECT_TRUE(r.pageTexts(0).contains(QStringLiteral("Grupo A")));
}

TEST_F(EngineTest, TheJobsMarginsMoveAndShrinkTheContentToFit) {
    ReportJob j = job("plain.rpt");
    const RenderedReport plain = renderReport(j, f.ctx);
    EXPECT_EQ(plain.pageLayout.margins(QPageLayout::Millimeter), QMarginsF(15, 12, 15, 12));
    EXPECT_DOUBLE_EQ(plain.scale, 1.0);
    j.MarginLeft = 40;
    j.MarginTop = 60;
    const RenderedReport moved = renderReport(j, f.ctx);
    EXPECT_EQ(moved.pageLayout.margins(QPageLayout::Millimeter), QMarginsF(40, 60, 15, 12));
    EXPECT_NEAR(moved.scale, 155.0 / 180.0, 1e-9);
    // Less height for the rows: fewer rows a page, even shrunk.
    EXPECT_LT(idsOn(moved, 0).size(), idsOn(plain, 0).size());
    const QFontMetricsF fm(moved.fonts.at(0));
    for (int p = 0; p < moved.pageCount(); ++p)
        for (const TextRun& t : moved.pages[p].texts) {
            const double right =
                dotsFromMm(40) + (t.baseline.x() + fm.horizontalAdvance(t.text)) * moved.scale;
            EXPECT_LE(right, dotsFromMm(210 - 15) + 1) << t.text.toStdString();
            EXPECT_GE(dotsFromMm(40) + t.baseline.x() * moved.scale, dotsFromMm(40) - 1);
            EXPECT_LE(dotsFromMm(60) + t.baseline.y() * moved.scale, dotsFromMm(297 - 12) + 1);
        }
}

TEST_F(EngineTest, NoRowsStillPrintsOnePageWithItsHeaders) {
    ReportJob j = job("plain.rpt");
    j.SelectionFormula = QStringLiteral("grup = 'Z'");
    const RenderedReport r = renderReport(j, f.ctx);
    ASSERT_EQ(r.pageCount(), 1);
    EXPECT_TRUE(r.pageTexts(0).contains(QStringLiteral("Movimientos")));
    EXPECT_TRUE(r.pageTexts(0).contains(QStringLiteral("Página 1")));
    EXPECT_TRUE(r.pageTexts(0).contains(QStringLiteral("0,00")));
}

TEST_F(EngineTest, ALayoutWithoutDataPrintsItsFormulas) {
    ReportJob j;
    j.ReportFileName = sourcePath(QStringLiteral("tests/data/reports/engine/formulas_only.rpt"));
    j.Formulas[7] = QStringLiteral("lbl_factura 'Factura nº: '");
    j.Formulas[35] = QStringLiteral("lbl_end_total= '1.210,00 Euros '");
    j.Formulas[2] = QStringLiteral("lbl_titulo= 'FACTURA'");
    const RenderedReport r = renderReport(j, f.ctx);
    ASSERT_EQ(r.pageCount(), 1);
    EXPECT_EQ(r.pageTexts(0),
              (QStringList{QStringLiteral("FACTURA"), QStringLiteral("Factura nº: 1.210,00 Euros"),
                           QStringLiteral("1 / 1")}));
    EXPECT_EQ(r.pageLayout.orientation(), QPageLayout::Landscape);
    EXPECT_EQ(r.pageLayout.pageSize().id(), QPageSize::A5);
}

TEST_F(EngineTest, AnItemWithWhenPrintsOnlyWhenItsFormulaHoldsAValue) {
    ReportJob j;
    j.ReportFileName = sourcePath(QStringLiteral("tests/data/reports/engine/when.rpt"));
    j.Formulas[0] = QStringLiteral("base1= '100,00 '");
    j.Formulas[1] = QStringLiteral("base2= '0,00 '");
    j.Formulas[2] = QStringLiteral("base3= '1.000,00'");
    // irpf is not given at all.
    const RenderedReport r = renderReport(j, f.ctx);
    EXPECT_EQ(r.pageTexts(0),
              (QStringList{QStringLiteral("Base 1: 100,00"), QStringLiteral("Base 3: 1.000,00"),
                           QStringLiteral("Total"), QStringLiteral("Alguna")}));
    EXPECT_EQ(r.pages[0].boxes.size(), 1u);
    EXPECT_TRUE(r.pages[0].lines.empty());
}

TEST_F(EngineTest, APageAsAPictureHasThePagesProportionsAndInk) {
    const RenderedReport r = renderReport(job("groups.rpt"), f.ctx);
    const QImage image = renderPageImage(r, 0, 100);
    EXPECT_EQ(image.size(), QSize(827, 1169));
    int dark = 0;
    for (int y = 0; y < image.height(); y += 2)
        for (int x = 0; x < image.width(); x += 2) dark += qGray(image.pixel(x, y)) < 128;
    EXPECT_GT(dark, 500);
    // Nothing is drawn in the margins.
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < qRound(14 / 25.4 * 100); ++x)
            ASSERT_EQ(image.pixel(x, y), qRgb(255, 255, 255)) << x << "," << y;
}

TEST_F(EngineTest, ThePrinterGetsTheSamePages) {
    const RenderedReport r = renderReport(job("groups.rpt"), f.ctx);
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    const QString out = f.file(QStringLiteral("printed.pdf"));
    printer.setOutputFileName(out);
    printPages(r, printer);
    const QStringList pages = tallora::testing::pdfPages(out);
    ASSERT_EQ(pages.size(), 3);
    EXPECT_TRUE(pages[1].contains(QStringLiteral("Página 2/3")));
    EXPECT_TRUE(pages[2].contains(QStringLiteral("Total grupo C: 20")));
    printer.setPrintRange(QPrinter::PageRange);
    printer.setFromTo(2, 2);
    printPages(r, printer);
    const QStringList one = tallora::testing::pdfPages(out);
    ASSERT_EQ(one.size(), 1);
    EXPECT_TRUE(one[0].contains(QStringLiteral("Página 2/3")));
}

TEST_F(EngineTest, AReportHeaderBelowComesUnderTheFirstPagesHeadersOnly) {
    const RenderedReport r = renderReport(job("opening_below.rpt"), f.ctx);
    ASSERT_GE(r.pageCount(), 2);
    EXPECT_EQ(r.pageTexts(0).mid(0, 4),
              (QStringList{QStringLiteral("Movimientos 1"), QStringLiteral("ID"),
                           QStringLiteral("Apertura"), QStringLiteral("1")}));
    EXPECT_EQ(r.pageTexts(1).mid(0, 2),
              (QStringList{QStringLiteral("Movimientos 2"), QStringLiteral("ID")}));
    EXPECT_FALSE(allTexts(r).mid(4).contains(QStringLiteral("Apertura")));
}
