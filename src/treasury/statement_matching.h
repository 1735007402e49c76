#pragma once
// A bank statement (Norma 43) matched against one treasury account of the open exercise.
// Each line of the statement's account is proposed as what it most likely is: the collection
// of an open receipt of a customer, the payment of one of a supplier, a collected receipt
// that came back unpaid, or an other movement against an account the user picks (bank
// charges get one suggested). The lines the user accepts are written in one transaction over
// tesorer.mdb, the company's cartera.mdb, both invoice files and the company's banco.mdb,
// where every line written is recorded (ApuntesBanco) so that reading the same statement
// again writes nothing twice.
//
// A line is known across imports by its key: the account, both dates, the amount, the
// concepts, the document, the references and its occurrence among identical lines of the
// account in the file, so that two identical charges on one day stay two lines.
//
// Receipts are settled as a run settles them (settleDraft), each on its line's date; a
// return is written as the account statement returns a receipt (writeReturn), an other
// movement as its screen writes one (writeOtherMovement). Store failures are thrown as
// store::StoreError after the whole import is rolled back.
#include "banking/norma43.h"
#include "context/fwd.h"
#include "other_movements.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

namespace tallora::treasury {

enum class LineKind {
    Receipt,     // collects an open receipt of a customer
    Payment,     // pays an open receipt of a supplier
    Returned,    // a collected receipt that came back unpaid (common concept 14)
    Remittance,  // the bank's one line for a SEPA file whose run already wrote its movements
    Other,       // an other movement against otherAccount, which the user may have to pick
    Imported,    // recorded by an earlier import: never written again
    NoAmount,    // moves no money: there is nothing to write
};

struct LineProposal {
    banking::N43Movement line;
    LineKind kind = LineKind::Other;
    std::int64_t receipt = 0;   // cartera.Id of a Receipt or Payment; Remesas.Id of a Remittance
    std::int64_t movement = 0;  // the collection that came back, of a Returned line
    QString party;              // the customer or supplier, by name, for the user to check
    QString factura;            // the receipt's invoice, or the returned collection's concept
    std::int64_t otherAccount = 0;  // Otras.Compte of an Other line; 0 until one is picked
    QString otherAccountName;
    QString key;  // ApuntesBanco.Clave
};

// The statement account of `file` that is the treasury account's: the one whose entity, office
// and number are those of the account's CCC (or IBAN); for an account without a number, the
// file's only account.
// Nothing when no account of the file is the treasury account's.
const banking::N43Account* statementAccountFor(const WorkingContext& ctx,
                                               const banking::N43File& file,
                                               std::int64_t treasuryAccount);

// What a proposal is, in the user's words ("Cobro", "Pago", "Devolución" …).
QString kindText(const WorkingContext& ctx, LineKind kind);

// The keys of the account's lines, in the order of its movements.
std::vector<QString> statementLineKeys(const banking::N43Account& account);

// The Otras account bank charges go to: one whose name says "bancario" in any form
// ("Servicios bancarios", "Comisiones bancàries") before one that only names a bank, and an
// account of the services group (62…) first; nothing when no name says "banc".
std::optional<AccountItem> bankChargesAccount(const WorkingContext& ctx);

// One proposal per movement of `account`, in its order; reads, writes nothing.
// A credit takes the open receipt of a customer, a debit that of a supplier, whose amount
// due is the line's and whose due date (its date when it has none) is nearest the operation
// date, 15 days either way at most; a receipt whose invoice the line's document, references
// or concepts name goes before a nearer one. A debit of common concept 14 takes instead the
// collection of the account, of the same amount, on or before the line, that has not come
// back yet. Each receipt and each collection is taken by one line at most, in line order.
// Before all that, a line whose amount is the total of a SEPA file sent from this account
// (collections for a credit, transfers for a debit), within 15 days of the bank's date and not
// matched yet, is that remittance: its run wrote the movements already, so importing it only
// records the line. Anything else is an Other line, on the bank charges account when it is a
// debit of common concept 17.
std::vector<LineProposal> proposeMatches(const WorkingContext& ctx,
                                         const banking::N43Account& account,
                                         std::int64_t treasuryAccount);

// Why nothing was written; the message was shown with the stop icon (622 for a locked month).
enum class ImportRefusal { OtherWithoutAccount, OutsideExercise, MonthLocked, DraftPending };
struct ImportResult {
    std::optional<ImportRefusal> refusal;
    int receipts = 0, payments = 0, returned = 0, others = 0;
    int remittances = 0;  // lines of SEPA files, recorded without a movement
    int skipped = 0;      // Imported and NoAmount lines, and lines recorded meanwhile
};

// Writes the accepted proposals on `treasuryAccount` in one transaction, each on its line's
// operation date. Refused, with nothing written: an Other line without an account, a line
// outside the open exercise or in a locked month, and receipts to settle while the run
// draft of their side holds receipts of the user's (it must be emptied first).
ImportResult importMatches(const WorkingContext& ctx, Dialogs& dialogs,
                           const banking::N43Account& account, std::int64_t treasuryAccount,
                           const std::vector<LineProposal>& accepted);

}  // namespace tallora::treasury
