#pragma once
// GrabaApunt of FormSuplidos, Modifica_Suplido and the day log of a provision or
// disbursement. The Suplidos row and its movement (tesorer.mdb) are written in one
// transaction over the attached files: a failure leaves neither.
#include "provision_entry.h"

#include "context/day_log.h"
#include "context/fwd.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

namespace tallora::purchases {

struct ProvisionResult {
    std::int64_t ordre = 0;
    int affected = 0;  // rows the Suplidos statement wrote or changed
    QString error;     // the store's message when nothing was written
    bool ok() const { return error.isEmpty() && affected == 1; }
};

// Writes an entry that Verifica_Suplido passed. A new entry is numbered and inserted; a
// posted one is updated and its movement deleted and written again (never edited). A
// disbursement's movement takes the money out (H) from the supplier; a provision's brings
// it in (D) from the customer. On success the entry holds the sanitised texts and a
// description "-" replaced by the number.
ProvisionResult GrabaApunt(const WorkingContext& ctx, ProvisionEntry& entry);

// Modifica_Suplido: posted entry `number` loaded back; nothing when there is no such row.
std::optional<ProvisionEntry> Modifica_Suplido(const WorkingContext& ctx, const QString& number);

// The rows of one posting in the day log.
std::vector<JournalRow> Diari_Suplido(const WorkingContext& ctx, const ProvisionEntry& entry,
                                      const ProvisionResult& result, bool change);

}  // namespace tallora::purchases
