#pragma once
// Exempta_Tickets and Exempta_Factures: the exempt amount of every purchase of the exercise
// worked out again from its stored amounts, when the books recalculate the exercise's data.
// Each runs in one transaction: all rows change or none.
#include "context/fwd.h"

namespace tallora::purchases {

// TICKETS: Exempta = TOTAL + Retencio.
void Exempta_Tickets(const WorkingContext& ctx);
// Any other kind: Exempta = (TOTAL + Retencio) - (Base1..Base4) - (Iva1..Iva4).
void Exempta_Factures(const WorkingContext& ctx);

}  // namespace tallora::purchases
