#pragma once
// A sample exercise: customers, suppliers, accounts and a year of sales and purchases made up
// from a seed, written by the posting rules of the sales and purchases screens. It gives an
// exercise to show and to try the books, listings and treasury on at a realistic volume.
#include "context/fwd.h"

namespace tallora {
class ScriptedDialogs;
}

#include <QDate>
#include <QString>

#include <cstdint>
#include <functional>

namespace tallora::shell {

struct SampleOptions {
    int invoices = 0;  // sales and purchases together
    std::uint64_t seed = 1;
};

struct SampleSummary {
    int customers = 0;    // the sample's customers, made or found by name
    int suppliers = 0;    // likewise
    int sales = 0;        // credit notes included
    int purchases = 0;    // likewise
    int creditNotes = 0;  // of both sides
    int settled = 0;      // collected or paid through a treasury account
};

// Fills the open exercise, whose databases are as its opening leaves them. The same seed on
// the same exercise gives the same rows. Customers, suppliers and accounts of the sample's
// names that exist already are used as they are. About 55% of the invoices are sales; with
// the treasury option about half of them are settled through a treasury account, the rest
// go to the portfolio. Invoices are committed in batches, `progress` told after each; a
// fault leaves the batches before it written. Throws std::invalid_argument, before anything
// is written, for no invoices, a company with the billing module (its sales are billing
// documents), a shop's exercise (no customers, no IVA split) and a locked month (ctx.chkmesos,
// loaded as the posting screens have it); std::runtime_error when a master record is
// refused; store::StoreError for a fault of the store.
SampleSummary fillSampleExercise(const WorkingContext& ctx, const SampleOptions& options,
                                 const std::function<void(int done, int total)>& progress = {});

// A company with treasury control, "Comercial Brenwick S.L." (B1234567), and its exercise
// 2026 made and opened in a unit and program folder under `folder`, as the start leaves them,
// on `today`, with the rates of the day: sales 21, 10, 4 with recargo 5,2, 1,4, 0,5;
// purchases 21, 10, 4 and an exempt fourth. Where the benchmarks and the checks of the books
// post their generated years; ctx.resourcesDir is the caller's. Throws std::runtime_error
// with the refusal of a step.
void openSampleCompany(WorkingContext& ctx, ScriptedDialogs& dialogs, const QString& folder,
                       const QDate& today);

}  // namespace tallora::shell
