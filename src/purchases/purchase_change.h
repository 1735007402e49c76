#pragma once
// Modifica_Compra: a posted purchase loaded back into the working entry, so that the
// purchases screen can change it and GrabaApunt save it again.
#include "purchase_entry.h"

#include "context/fwd.h"

#include <array>
#include <optional>

namespace tallora::purchases {

struct LoadedPurchase {
    PurchaseEntry entry;
    // The rates the entry was posted with, for the captions lbliva(i).
    std::array<double, 4> TipusIva{};
    // Marca -1: settled in a payment run. The treasury frame is disabled and ListEntitats
    // holds the single row "Marca".
    bool settled = false;
};

// Loads entry `number` of the open exercise; nothing for an empty number or one without a
// row. With treasury, the account that paid it (by its movement) and the due date of its
// receipt; without a receipt the due date is today's, as on a fresh screen.
std::optional<LoadedPurchase> Modifica_Compra(const WorkingContext& ctx, const QString& number);

}  // namespace tallora::purchases
