#pragma once
// The stored queries the VAT books print from, and the per-rate summaries of their footers.
//
// SelIVAr (sales, Debe_Haber 'D') and SelIVAs (purchases, 'H') are views of Diari in
// LLibre.mdb, SelFras a view of Suplidos in Supl.mdb; each is dropped and made anew for the
// chosen months and series. The journal (journal_builder.h) must have been rebuilt first.
//
// Dates reach the views as 'YYYY-MM-DD' texts, from the first day of the first month to the
// calendar's last day of the last one (29 February in a leap year). The series filters read
// the text of the invoice number, which the journal keeps to its last six characters on the
// sales side: a "/Abon" further left is no longer found there, and that stays so.
//
// A configured rate reaches the SQL as its text, read as a number and compared with the
// Currency column (ten-thousandths): the text must use a point as decimal mark.
#include "context/fwd.h"
#include "context/money.h"
#include "report/report_job.h"

#include <QDate>
#include <QString>

#include <array>
#include <optional>
#include <utility>

namespace tallora::books {

// The series groups of the books dialog.
enum class Series { All, Normal, CreditNotes, Rectifying, Intra, Canarias };

struct SeriesFilter {
    QString serie;          // "", "NORMALS", "/Abon", "/Rect"
    QString clasificacion;  // "", "NORMALS", "ntra", "can"
    int label = 6170;       // the message that names the choice in the period text
};
SeriesFilter seriesFilter(Series series);

// First and last day of the months `from` to `to` (1 to 12) of the exercise's year.
std::pair<QDate, QDate> periodLimits(const WorkingContext& ctx, int from, int to);

// SelIVAr for the months and series; `irpf` (OpLibroIRPF) keeps the sales with withholding.
// Like every builder here it leaves quietly on a fault: a book without its query then fails
// when the report reads it. The result says whether the view was made.
bool Genera_SelIVAr(const WorkingContext& ctx, int from, int to, const QString& serie,
                    const QString& clasificacion, bool irpf = false);
// SelIVAs: `nomesIva` keeps the purchases numbered in the VAT book, `inversions` those of
// group 20 (in a TICKETS exercise the only filter); `irpf` (OpIRPFpro) those with withholding.
bool Genera_SelIVAs(const WorkingContext& ctx, int from, int to, bool nomesIva, bool inversions,
                    const QString& serie, const QString& clasificacion, bool irpf = false);
// SelFras of Supl.mdb: the provisions and disbursements of the months.
bool Genera_SelFras_Suplidos(const WorkingContext& ctx, int from, int to);

// One line of a footer summary.
struct RateSums {
    Money rate;  // the rate of the rows summed
    Money base, quota, surcharge;
};

// The sales book's footer: a line per configured rate (zeros when the period has none) and
// the first other non-zero rate found, whose rows were kept with a rate since changed.
struct SalesSummary {
    std::array<RateSums, 3> rates{};
    std::optional<RateSums> difference;
};
// The purchases book's footer: four configured rates and the difference line.
struct PurchasesSummary {
    std::array<RateSums, 4> rates{};
    std::optional<RateSums> difference;
};

// Read from the views as they stand.
SalesSummary salesSummary(const WorkingContext& ctx);
PurchasesSummary purchasesSummary(const WorkingContext& ctx);

// The summaries as the layouts read them, written into the first free formulas of `job`:
// base1..3, iva1..3, ivar1..3, rer1..3, rec1..3 and, with a difference, base4, ivar4 'dif %',
// iva4, rec4, rer4 'dif %'.
void Resum_IVAr(const WorkingContext& ctx, report::ReportJob& job);
// txtbase1..4, base1..4, quota1..4 and, with a difference, txtbase5 'dif. %', base5, quota5.
void Resum_IVAs(const WorkingContext& ctx, report::ReportJob& job);

}  // namespace tallora::books
