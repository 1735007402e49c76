#pragma once
// Mes_EXTRACTO: a movement of the statement read as a double-entry line, for the detail
// frame MesFrame. The treasury account is written 57.<Id> whatever its group, a customer
// 430.<number>, a supplier 400.<number>, another account <Grup>.<Compte>.
#include "context/fwd.h"

#include <QString>

#include <cstdint>
#include <optional>

namespace tallora::treasury {

struct MovementEntry {
    QString id, fecha, descripcio;    // lblID, lblFecha, lblDescripcio
    QString debe, haber;              // lblDebe, lblHaber: the amount on both sides
    QString cuentaDebe, cuentaHaber;  // lblCuentaDebe, lblCuentaHaber
};

// An invoice's settlement puts the treasury account on the side of the money (debit for
// money in) and the party on the other; another movement debits the account the money
// enters and credits the one it leaves. A provision's movement names no accounts. Nothing
// when no movement has the Id.
std::optional<MovementEntry> Mes_EXTRACTO(const WorkingContext& ctx, std::int64_t id);

}  // namespace tallora::treasury
