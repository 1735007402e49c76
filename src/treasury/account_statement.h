#pragma once
// The account statement (FormConsEXTRACTO): the movements of one treasury account, or of all
// of them, with a running balance from the account's opening balance over the whole
// exercise, built in the work table movimientos_extracto of tesorer.mdb and read through the
// view Selmovimientos_extracto, which the printed statement also reads. Here a movement is
// also undone: deleted with what goes with it, or returned as an unpaid receipt.
//
// The build is one transaction with one prepared insert and the counterparts' names read
// once; deletion and return are each one transaction over tesorer.mdb, the company's
// cartera.mdb and the exercise's invoice file. Store failures are thrown as
// store::StoreError.
#include "context/fwd.h"
#include "context/money.h"
#include "store/database.h"

#include <QDate>
#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

namespace tallora::treasury {

// Construeix_Extracto: the work table anew for `entidad`, or for every account. Gives the
// opening balance the running balance started from (0 without an account).
Money Construeix_Extracto(const WorkingContext& ctx, std::optional<std::int64_t> entidad);

// A line of the grid. The opening line ("Saldo Inicial...") has no Id and shows the
// account's stored opening balance in `saldo`. D and H are blank when their text starts with
// "0"; the balance always shows.
struct StatementLine {
    std::optional<std::int64_t> id;
    QString data;
    QString concepto;
    QString contrapartida;
    QString debe;
    QString haber;
    QString saldo;
};

// Busca_Extracto after the account check: the build, the view with the dates (a date at its
// default 1/1 or 31/12 of the exercise does not filter) and the lines, the opening line
// first; no line at all when no movement passes.
std::vector<StatementLine> Busca_Extracto(const WorkingContext& ctx,
                                          std::optional<std::int64_t> entidad, const QDate& from,
                                          const QDate& to);

// One movement as a line of the grid, without its balance: what the questions of Esborrar
// and btnDevolucion name. Nothing when no movement has the Id.
std::optional<StatementLine> movementLine(const WorkingContext& ctx, std::int64_t id);

// Esborrar: the movement and what goes with it, by its origin. For an invoice: the invoice
// is no longer settled, its receipts go, every movement of the invoice goes (all its partial
// settlements), and then the invoice may be put back in the portfolio (AddCartera with its
// question). For a provision only the provision goes, the movement stays; for another
// movement the entry and both its movements. False when no movement has the Id.
bool deleteMovement(const WorkingContext& ctx, Dialogs& dialogs, std::int64_t id);

// btnDevolucion: the receipt of the movement comes back unpaid on `date`: the invoice is no
// longer settled, the portfolio gets a new receipt of the amount (or, when the invoice
// still has one, its settled part lowers), and the contrary movement is written. A movement
// whose concept begins "Devoluc" (a return) and one of no invoice do nothing. Gives the
// contrary movement's Id when one was written.
std::optional<std::int64_t> returnReceipt(const WorkingContext& ctx, std::int64_t id,
                                          const QDate& date);

// The aliases of the exercise's invoice files on a connection whose main file is tesorer.mdb.
inline const QString kSalesInvoices = QStringLiteral("frasout");
inline const QString kPurchaseInvoices = QStringLiteral("frasin");
// returnReceipt's writes through `db` inside the caller's transaction: `db` is tesorer.mdb
// with the company's cartera.mdb attached as "cartera" and the invoice file of the
// movement's side under its alias above.
std::optional<std::int64_t> writeReturn(store::Database& db, const WorkingContext& ctx,
                                        std::int64_t id, const QDate& date);

// The questions before Esborrar (815) and btnDevolucion (6987), the movement named under
// them on three lines: its Id, counterpart and concept.
QString deleteMovementQuestion(const WorkingContext& ctx, const StatementLine& line);
QString returnReceiptQuestion(const WorkingContext& ctx, const StatementLine& line);

}  // namespace tallora::treasury
