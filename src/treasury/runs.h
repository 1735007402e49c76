#pragma once
// Collection and payment runs (FormCarteraCobrar, FormCarteraPagar): receipts of the
// company's portfolio are moved, whole or in part, to a draft kept in `cartera` itself
// (Borrador 's', the amount in Temporal), and one action turns the draft into treasury
// movements on a chosen account and date. Both screens and the companion's commands run on
// these functions; a RunSide holds everything the two directions differ in.
//
// A run is written in one transaction over the company's cartera.mdb, the exercise's
// tesorer.mdb and its invoice file: a failure anywhere leaves every row of the draft, every
// invoice flag and the movements as they were before the run, so that the same action does
// the whole run again. (Settling row by row would leave a half-settled draft behind an error,
// with no way for the user to tell which receipts went.)
//
// The reads and the draft's updates throw store::StoreError; the screens show its text.
#include "context/fwd.h"
#include "context/money.h"
#include "store/database.h"

#include <QDate>
#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

namespace tallora::treasury {

struct RunSide {
    const char* inOut;        // cartera.In_Out of the side's receipts
    const char* party;        // cliente / proveedor of cartera and movimientos
    const char* invoice;      // FrasOut / FrasIn of cartera and movimientos
    const char* invoiceFile;  // the exercise's invoice file
    const char* invoiceTable;
    const char* settledFlag;  // Cobrada / Pagada
    bool debit;               // the money comes in (D) or goes out (H)
    int title, instructions1, instructions2, partyLabel, openList, draftList, partialLabel,
        accountLabel, dateLabel, totalLabel, excess, noAccount;
    const char* screen;     // the form's name
    const char* partyList;  // CmbClients / CmbProveidors
    const char* dateField;  // FechaCobro / FechaPago
    const char* helpKey;
    bool partyHiddenInTickets;  // a shop's exercise has no customers
};
extern const RunSide kCollections;  // FormCarteraCobrar
extern const RunSide kPayments;     // FormCarteraPagar

// A row of either list: Id, date (dd/mm/yyyy), invoice, total, and what is left to settle
// (open list) or the amount put in the draft (draft list), through Format_Import.
struct RunRow {
    std::int64_t id = 0;
    QString data;
    QString factura;
    QString total;
    QString amount;
};

// Llista_Cartera: the open receipts of the side (of one party when given), and the draft,
// never filtered by party; rows of every exercise, by date and Id.
std::vector<RunRow> openReceipts(const WorkingContext& ctx, const RunSide& side,
                                 std::optional<std::int64_t> party = std::nullopt);
std::vector<RunRow> draftReceipts(const WorkingContext& ctx, const RunSide& side);

// Totales: the sum of the draft through Format_Import; nothing when the draft is empty (the
// screen then resets its partial amount to "0").
std::optional<QString> draftTotal(const WorkingContext& ctx, const RunSide& side);

// Passa_Recibo. `typed` is the partial amount field: blank, zero or negative mean all that
// is due. A typed amount above what is due is refused with the side's message and the stop
// icon, and what is due comes back to be shown in the field. Gives the text the field shows
// afterwards: Format_Import of 0 when the receipt went to the draft, of what is due when it
// was refused; nothing when no receipt has the Id.
struct PassResult {
    bool moved = false;
    QString field;
};
std::optional<PassResult> Passa_Recibo(const WorkingContext& ctx, Dialogs& dialogs,
                                       const RunSide& side, std::int64_t id, const QString& typed);
// Treu_Recibo: the receipt back to the open list.
void Treu_Recibo(const WorkingContext& ctx, std::int64_t id);
// Passa_Tots: every open receipt of the side, whatever party the open list shows, with all
// that is due.
void Passa_Tots(const WorkingContext& ctx, const RunSide& side);
// Buida_Borrador: the side's draft back to the open list; the other side's stays.
void Buida_Borrador(const WorkingContext& ctx, const RunSide& side);

// One settlement of a run, as the movement it wrote.
struct Settlement {
    std::int64_t receipt = 0;
    std::int64_t movement = 0;
    QString concepto;
    Money amount;
    bool settled = false;  // the receipt left the portfolio
};

// btnContabilizar. Nothing with an empty draft; refused with the side's message (stop icon)
// without an account, with message 622 when the month of `date` is locked (the screen then
// puts the focus on the date). Otherwise every receipt of the draft becomes a movement of
// `account` on `date`; a receipt settled in full marks its invoice settled and `Marca` and
// leaves the portfolio, a partial one marks `Marca` and raises `Pendiente`. The invoice is
// looked for by its number in the open exercise's file, whatever the receipt's exercise.
// Nothing when refused; the settlements, most recent receipt first, otherwise. A store
// failure is thrown after the whole run is rolled back.
enum class RunRefusal { EmptyDraft, NoAccount, MonthLocked };
struct RunOutcome {
    std::optional<RunRefusal> refusal;
    std::vector<Settlement> settlements;
};
RunOutcome Contabilizar(const WorkingContext& ctx, Dialogs& dialogs, const RunSide& side,
                        std::optional<std::int64_t> account, const QDate& date);
// Its two halves, for a screen that shows its status between them: the checks with their
// messages, then the run itself on an account that passed them.
std::optional<RunRefusal> checkRun(const WorkingContext& ctx, Dialogs& dialogs, const RunSide& side,
                                   std::optional<std::int64_t> account, const QDate& date);
std::vector<Settlement> postRun(const WorkingContext& ctx, const RunSide& side,
                                std::int64_t account, const QDate& date);

// The connection a run writes through: the exercise's tesorer.mdb, with the company's
// cartera.mdb attached as "cartera" and the side's invoice file as "fras".
store::Database openRun(const WorkingContext& ctx, const RunSide& side);
// postRun's work inside a transaction the caller holds, for an operation that writes more
// than the run (a remittance file's record). `invoices` is the alias of the side's invoice
// file on `db`: an operation that settles both sides at once attaches both files.
std::vector<Settlement> settleDraft(store::Database& db, const RunSide& side, std::int64_t account,
                                    const QDate& date,
                                    const QString& invoices = QStringLiteral("fras"));

}  // namespace tallora::treasury
