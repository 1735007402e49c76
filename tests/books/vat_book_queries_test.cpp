// The VAT books' stored queries (the period with February's end, the series and class
// filters, withholding, investments) and the footer summaries with their difference line.
#include "books/vat_book_queries.h"
#include "books/journal_builder.h"
#include "books_fixture.h"
#include "report/report_job.h"

using namespace tallora;
using namespace tallora::books;
using namespace tallora::testing;

namespace {

class VatQueries : public BooksData {
protected:
    QStringList view(const char* name, const char* columns = "Ordre") const {
        return rows(llibre(), QStringLiteral("select %1 from %2 order by Apunt")
                                  .arg(QLatin1String(columns), QLatin1String(name)));
    }

    QStringList sales(int from, int to, Series series = Series::All, bool irpf = false) {
        Genera_Diari_Vendes(f.ctx);
        const SeriesFilter s = seriesFilter(series);
        EXPECT_TRUE(Genera_SelIVAr(f.ctx, from, to, s.serie, s.clasificacion, irpf));
        return view("SelIVAr");
    }

    QStringList purchases(int from, int to, bool nomesIva, bool inversions,
                          Series series = Series::All, bool irpf = false) {
        Genera_Diari_Compres(f.ctx);
        const SeriesFilter s = seriesFilter(series);
        EXPECT_TRUE(
            Genera_SelIVAs(f.ctx, from, to, nomesIva, inversions, s.serie, s.clasificacion, irpf));
        return rows(llibre(), QStringLiteral("select Ordre from SelIVAs"));
    }

    static QStringList formulas(const report::ReportJob& job) {
        QStringList out;
        for (const QString& t : job.Formulas)
            if (!t.isEmpty()) out << t;
        return out;
    }
};

}  // namespace

TEST_F(VatQueries, ThePeriodRunsFromTheFirstDayToTheLastOfItsMonths) {
    sale(1, "2026-01-01", "F-1", 121, {100, 0, 0});
    sale(2, "2026-03-31", "F-2", 121, {100, 0, 0});
    sale(3, "2026-04-01", "F-3", 121, {100, 0, 0});
    purchase(7, "2026-03-31", 60, 121, {100, 0, 0, 0});
    Genera_Diari_Compres(f.ctx);
    EXPECT_EQ(sales(1, 3), (QStringList{"1", "2"}));
    EXPECT_EQ(sales(4, 4), QStringList{"3"});
    EXPECT_EQ(sales(5, 12), QStringList{});
    // Only the sales side: the purchase of the same day, in the journal, is not in the book.
    EXPECT_EQ(rows(llibre(), "select count(*) from Diari"), QStringList{"4"});
}

TEST_F(VatQueries, FebruaryEndsOnTheCalendarsLastDay) {
    f.ctx.Exercici = QStringLiteral("2028");
    sale(1, "2028-02-28", "F-1", 121, {100, 0, 0});
    sale(2, "2028-02-29", "F-2", 121, {100, 0, 0});
    sale(3, "2028-03-01", "F-3", 121, {100, 0, 0});
    EXPECT_EQ(sales(2, 2), (QStringList{"1", "2"}));
    EXPECT_EQ(periodLimits(f.ctx, 2, 2).second, QDate(2028, 2, 29));
    f.ctx.Exercici = QStringLiteral("2026");
    EXPECT_EQ(periodLimits(f.ctx, 1, 2).second, QDate(2026, 2, 28));
    EXPECT_EQ(periodLimits(f.ctx, 4, 6), std::make_pair(QDate(2026, 4, 1), QDate(2026, 6, 30)));
}

TEST_F(VatQueries, TheSeriesFilterReadsTheSalesDescriptionAsTheJournalKeptIt) {
    sale(1, "2026-01-10", "F-1", 121, {100, 0, 0});
    sale(2, "2026-01-11", "1/Abon", -121, {-100, 0, 0});
    // Eight characters: the journal keeps "2/Abon", still found.
    sale(3, "2026-01-12", "A-12/Abon", -121, {-100, 0, 0});
    // The mark lies left of the last six characters: no longer found.
    sale(4, "2026-01-13", "R/Abon-0004", -121, {-100, 0, 0});
    sale(5, "2026-01-14", "7/Rect", 121, {100, 0, 0});
    EXPECT_EQ(sales(1, 12, Series::CreditNotes), (QStringList{"2", "3"}));
    EXPECT_EQ(sales(1, 12, Series::Rectifying), QStringList{"5"});
    EXPECT_EQ(sales(1, 12, Series::Normal), (QStringList{"1", "4"}));
    EXPECT_EQ(sales(1, 12, Series::All), (QStringList{"1", "2", "3", "4", "5"}));
}

TEST_F(VatQueries, TheClassFilterReadsTheClassification) {
    sale(1, "2026-01-10", "F-1", 121, {100, 0, 0});
    sale(2, "2026-01-11", "F-2", 100, {100, 0, 0});
    sale(3, "2026-01-12", "F-3", 100, {100, 0, 0});
    sale(4, "2026-01-13", "F-4", 100, {100, 0, 0});
    exec(frasOut(), "update FrasOut set Clasificacion = 'Intracomunitaria' where Ordre = 2");
    exec(frasOut(), "update FrasOut set Clasificacion = 'Canarias' where Ordre = 3");
    exec(frasOut(), "update FrasOut set Clasificacion = 'Factura simplificada' where Ordre = 4");
    EXPECT_EQ(sales(1, 12, Series::Intra), QStringList{"2"});
    EXPECT_EQ(sales(1, 12, Series::Canarias), QStringList{"3"});
    // General invoicing leaves out what is classified as some kind of "Factura".
    EXPECT_EQ(sales(1, 12, Series::Normal), (QStringList{"1", "2", "3"}));
}

TEST_F(VatQueries, TheWithholdingListKeepsTheSalesWithWithholding) {
    sale(1, "2026-01-10", "F-1", 121, {100, 0, 0});
    sale(2, "2026-01-11", "F-2", 850000, {1000000, 0, 0}, 150000, 1000000);
    EXPECT_EQ(sales(1, 12, Series::All, true), QStringList{"2"});
}

TEST_F(VatQueries, ThePurchasesViewsKeepTheVatBookTheInvestmentsAndTheWithholding) {
    purchase(1, "2026-02-03", 60, 121, {100, 0, 0, 0});
    purchase(2, "2026-02-01", 20, 121, {100, 0, 0, 0});
    purchase(3, "2026-02-02", 64, 500000, {0, 0, 0, 0}, 100000);  // no VAT, withheld
    // Ordered by date, then description.
    EXPECT_EQ(purchases(1, 12, false, false), (QStringList{"2", "3", "1"}));
    EXPECT_EQ(purchases(1, 12, true, false), (QStringList{"2", "1"}));
    EXPECT_EQ(purchases(1, 12, true, true), QStringList{"2"});
    EXPECT_EQ(purchases(1, 12, false, false, Series::All, true), QStringList{"3"});
    EXPECT_EQ(purchases(3, 12, false, false), QStringList{});
}

TEST_F(VatQueries, AnInvestmentsBookOfATicketsExerciseFiltersOnTheGroupAlone) {
    f.ctx.ModeExercici = QStringLiteral("TICKETS");
    purchase(1, "2026-02-01", 20, 500000, {0, 0, 0, 0});  // no VAT number, group 20
    purchase(2, "2026-02-02", 20, 121, {100, 0, 0, 0});
    EXPECT_EQ(purchases(1, 12, true, true), (QStringList{"1", "2"}));
    f.ctx.ModeExercici = QStringLiteral("FACTURES");
    EXPECT_EQ(purchases(1, 12, true, true), QStringList{"2"});
}

TEST_F(VatQueries, TheProvisionsViewTakesTheMonths) {
    exec(supl(),
         "insert into Suplidos (Ordre, data, Proveidor, NomProveidor, TOTAL, descripcio) values "
         "(1, '2026-05-31', 0, 'Notaría', 10000, 'S-1'), (2, '2026-06-01', 0, 'Registro', 20000, "
         "'S-2'), (3, '2026-05-01', 0, 'Gestoría', 30000, 'S-0')");
    ASSERT_TRUE(Genera_SelFras_Suplidos(f.ctx, 5, 5));
    EXPECT_EQ(rows(supl(), "select Ordre from SelFras"), (QStringList{"3", "1"}));
}

TEST_F(VatQueries, WithNoInvoiceEveryRateLinePrintsZeroAndItsRate) {
    Genera_Diari_Vendes(f.ctx);
    ASSERT_TRUE(Genera_SelIVAr(f.ctx, 1, 3, {}, {}));
    report::ReportJob job;
    Resum_IVAr(f.ctx, job);
    EXPECT_EQ(formulas(job),
              (QStringList{"base1='0,00 '", "iva1='0,00 '", "ivar1='21 %'", "rer1='5,2 %'",
                           "rec1='0,00 '", "base2='0,00 '", "iva2='0,00 '", "ivar2='10 %'",
                           "rer2='1,4 %'", "rec2='0,00 '", "base3='0,00 '", "iva3='0,00 '",
                           "ivar3='4 %'", "rer3='0,5 %'", "rec3='0,00 '"}));
    EXPECT_FALSE(salesSummary(f.ctx).difference);
}

TEST_F(VatQueries, TheSalesSummaryAddsEachRateAndShowsAnOldRateAsTheDifference) {
    sale(1, "2026-01-10", "F-1", 3640000, {1000000, 1000000, 1000000});
    sale(2, "2026-01-11", "F-2", 12100000, {10000000, 0, 0});
    sale(3, "2026-01-12", "F-3", 1160000, {1000000, 0, 0});
    sale(4, "2026-01-13", "F-4", 1000000, {0, 0, 0});  // no VAT: at no rate
    sale(5, "2026-01-14", "F-5", 1000000, {1000000, 0, 0});
    exec(frasOut(), "update FrasOut set TIva1 = 160000, Iva1 = 160000, RE1 = 0 where Ordre = 3");
    exec(frasOut(), "update FrasOut set TIva1 = 0, Iva1 = 0, RE1 = 0 where Ordre = 5");
    Genera_Diari_Vendes(f.ctx);
    ASSERT_TRUE(Genera_SelIVAr(f.ctx, 1, 1, {}, {}));
    report::ReportJob job;
    Resum_IVAr(f.ctx, job);
    EXPECT_EQ(formulas(job).mid(0, 5),
              (QStringList{"base1='1.100,00 '", "iva1='231,00 '", "ivar1='21 %'", "rer1='5,2 %'",
                           "rec1='57,20 '"}));
    EXPECT_EQ(formulas(job).mid(5, 2), (QStringList{"base2='100,00 '", "iva2='10,00 '"}));
    EXPECT_EQ(formulas(job).mid(15),
              (QStringList{"base4='100,00 '", "ivar4='dif %'", "iva4='16,00 '", "rec4='0,00 '",
                           "rer4='dif %'"}));
}

TEST_F(VatQueries, ARateWithDecimalsReachesTheSqlAsItsText) {
    f.ctx.TipusIVA[1] = 10.5;
    f.ctx.TipusIVAText[1] = QStringLiteral("10.5");
    sale(1, "2026-01-10", "F-1", 1105000, {0, 1000000, 0});
    exec(frasOut(), "update FrasOut set TIva2 = 105000, Iva2 = 105000 where Ordre = 1");
    Genera_Diari_Vendes(f.ctx);
    ASSERT_TRUE(Genera_SelIVAr(f.ctx, 1, 12, {}, {}));
    report::ReportJob job;
    Resum_IVAr(f.ctx, job);
    EXPECT_EQ(formulas(job).mid(5, 5),
              (QStringList{"base2='100,00 '", "iva2='10,50 '", "ivar2='10,5 %'", "rer2='1,4 %'",
                           "rec2='0,00 '"}));
    EXPECT_FALSE(salesSummary(f.ctx).difference);
}

TEST_F(VatQueries, ThePurchasesSummaryHasFourRatesAndItsOwnDifferenceText) {
    purchase(1, "2026-01-10", 60, 1210000, {1000000, 0, 0, 0});
    purchase(2, "2026-01-11", 60, 1180000, {1000000, 0, 0, 0});
    exec(frasIn(), "update FrasIN set TipusIva1 = 180000, Iva1 = 180000 where Ordre = 2");
    Genera_Diari_Compres(f.ctx);
    ASSERT_TRUE(Genera_SelIVAs(f.ctx, 1, 12, false, false, {}, {}));
    report::ReportJob job;
    Resum_IVAs(f.ctx, job);
    EXPECT_EQ(
        formulas(job),
        (QStringList{"txtbase1='21 %'", "base1='100,00 '", "quota1='21,00 '", "txtbase2='10 %'",
                     "base2='0,00 '", "quota2='0,00 '", "txtbase3='4 %'", "base3='0,00 '",
                     "quota3='0,00 '", "txtbase4='0 %'", "base4='0,00 '", "quota4='0,00 '",
                     "txtbase5='dif. %'", "base5='100,00 '", "quota5='18,00 '"}));
}

TEST_F(VatQueries, TheSummariesFollowTheFilterOfTheView) {
    sale(1, "2026-01-10", "F-1", 1210000, {1000000, 0, 0});
    sale(2, "2026-01-11", "2/Abon", -121000, {-100000, 0, 0});
    Genera_Diari_Vendes(f.ctx);
    const SeriesFilter abonos = seriesFilter(Series::CreditNotes);
    ASSERT_TRUE(Genera_SelIVAr(f.ctx, 1, 12, abonos.serie, abonos.clasificacion));
    const SalesSummary s = salesSummary(f.ctx);
    EXPECT_EQ(s.rates[0].base, Money::fromUnits(-100000));
    EXPECT_EQ(s.rates[0].quota, Money::fromUnits(-21000));
}
