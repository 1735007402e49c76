#pragma once
// GrabaApunt's writes: a purchase becomes its FrasIN row and, with the treasury option,
// either a movement of the treasury account that paid it or a receipt of the portfolio left
// to pay.
//
// The rows live in three files (FrasIN.mdb, tesorer.mdb, the company's cartera.mdb). They
// are attached to one connection and written in one immediate transaction, the number taken
// inside it: a failure anywhere leaves none of the rows, and two postings can never take the
// same number. The entry stays on the screen, so nothing typed is lost either.
#include "purchase_entry.h"

#include "context/fwd.h"
#include "store/database.h"

#include <QString>

#include <cstdint>
#include <optional>

namespace tallora::purchases {

struct PostingResult {
    std::int64_t ordre = 0;
    // Rows the FrasIN statement wrote or changed: the day log's one signal of success.
    int affected = 0;
    // The store's message when nothing was written.
    QString error;
    bool ok() const { return error.isEmpty() && affected == 1; }
};

// The treasury account of the entry: with the option on, the Id of ListEntitats unless it
// reads "Marca" or nothing; without the option, none.
std::optional<std::int64_t> treasuryAccount(const WorkingContext& ctx, const PurchaseEntry& entry);

// Writes a verified entry (Verifica_Apunt passed, `account` its expense account). A new
// entry is numbered and inserted; an entry with lblOrdre is a change of that posted entry.
// `screenOrdre` is the number the screen computed last for a new entry (0 when none): the
// change of an entry settled in a payment run renames the movements of the sale of that
// number, as the screen always has. On success the entry holds the sanitised texts and a
// description "-" replaced by the number. Store failures are caught and reported in the
// result, after the rollback.
PostingResult GrabaApunt(const WorkingContext& ctx, PurchaseEntry& entry,
                         const ExpenseAccount& account, std::int64_t screenOrdre = 0);

// The connection a posting writes through: the exercise's FrasIN.mdb, with tesorer.mdb and
// the company's cartera.mdb attached under the treasury option.
store::Database openPosting(const WorkingContext& ctx);

// GrabaApunt's writes alone, on a connection of openPosting inside an immediate transaction
// that the caller holds, so that a loop of postings commits once per batch. The entry is
// sanitised and numbered in place. Store faults are raised, and the caller rolls back; so it
// does when a change finds no single row (affected other than 1), which writes no money rows.
PostingResult postPurchase(const WorkingContext& ctx, store::Database& db, PurchaseEntry& entry,
                           const ExpenseAccount& account, std::int64_t screenOrdre = 0);

}  // namespace tallora::purchases
