#pragma once
// Modifica_Venda: a posted sale loaded back into the working entry, so that the sales screen
// can change it and GrabaApunt save it again (its second branch, see sale_posting.h).
#include "sale_entry.h"

#include "context/entry_fields.h"
#include "context/fwd.h"

#include <array>
#include <cstdint>
#include <optional>

namespace tallora::sales {

struct LoadedSale {
    SaleEntry entry;
    // The rates the sale was posted with, for the captions; calculations use the context's.
    std::array<double, 3> Tiva{}, Tre{};
    // Marca -1: settled in a collection run. The treasury frame hides and ListEntitats holds
    // the single row "Marca".
    bool settled = false;
};

using ::tallora::refuseChangeInProgress;

// Loads sale `number` of the open exercise; nothing for an empty number or one without a row.
// The receipt's address and concept lines are loaded too, so that saving the change keeps
// them. The due date is today's, as the screen shows on a fresh entry.
std::optional<LoadedSale> Modifica_Venda(const WorkingContext& ctx, const QString& number);

}  // namespace tallora::sales
