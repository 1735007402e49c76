#pragma once
// GrabaApunt's writes: a sale becomes its FrasOut row and, with the treasury option, either
// a movement of the treasury account that collected it or a receipt of the portfolio.
//
// The rows live in three files (FrasOUT.mdb, tesorer.mdb, the company's cartera.mdb). They
// are attached to one connection and written in one immediate transaction, the number taken
// inside it: a failure anywhere leaves none of the rows, and two postings can never take the
// same number. The entry stays on the screen, so nothing typed is lost either.
#include "sale_entry.h"

#include "context/fwd.h"
#include "store/database.h"

#include <QString>

#include <cstdint>

namespace tallora::sales {

struct PostingResult {
    std::int64_t ordre = 0;
    // Rows the FrasOut statement wrote or changed: the journal's one signal of success.
    int affected = 0;
    // The store's message when nothing was written.
    QString error;
    bool ok() const { return error.isEmpty() && affected == 1; }
};

// The treasury account of the entry (step 4 of the posting): with the option on, the Id of
// ListEntitats unless it reads "Marca" or nothing; without the option, none.
std::optional<std::int64_t> treasuryAccount(const WorkingContext& ctx, const SaleEntry& entry);

// Writes a verified entry (Verifica_Apunt passed, `account` its sales account). A new entry
// is numbered and inserted; an entry with lblOrdre is a change of that posted sale. On
// success the entry holds the number in lblOrdre's place for the journal, the sanitised
// texts, and a description "-" replaced by the number. Store failures are caught and
// reported in the result, after the rollback.
PostingResult GrabaApunt(const WorkingContext& ctx, SaleEntry& entry, const SalesAccount& account);

// The connection a posting writes through: the exercise's FrasOUT.mdb, with tesorer.mdb and
// the company's cartera.mdb attached under the treasury option, fact.mdb under the billing
// option, and the company's record file when it keeps VERI*FACTU records.
store::Database openPosting(const WorkingContext& ctx);

// GrabaApunt's writes alone, on a connection of openPosting inside an immediate transaction
// that the caller holds, so that a loop of postings commits once per batch. The entry is
// sanitised and numbered in place. Store faults are raised, and the caller rolls back; so it
// does when a change finds no single row (affected other than 1), which writes no money rows.
PostingResult postSale(const WorkingContext& ctx, store::Database& db, SaleEntry& entry,
                       const SalesAccount& account);

// The next invoice number as GrabaApunt takes it, read outside any posting (Seguent_Ordre):
// without the billing option, the highest Ordre plus one; with it, the counter of
// Numeracion_Documentos plus one, passed over numbers FrasOut already holds.
std::int64_t Seguent_Ordre(const WorkingContext& ctx);

}  // namespace tallora::sales
