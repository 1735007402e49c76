#pragma once
// Price references of the billing lines: table referencias of the company's fact.mdb.
// The operations of the references screen, shared with tallora5-cli. Messages, store
// faults and number texts as for customers (customers.h); a missing fact.mdb is a fault.
#include "context/fwd.h"
#include "outcome.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace tallora::master {

struct PriceReference {
    QString id;  // empty for a new reference
    QString referencia, descripcion;
    QString precio;  // as Format_Import shows it
};

// OMPLE_LLISTA: every code, in order of code.
QStringList referenceCodes(const WorkingContext& ctx);
// The first reference (lowest Id) with that code, without regard to case.
std::optional<PriceReference> referenceByCode(const WorkingContext& ctx, const QString& referencia);
// Refusals 7000 (code empty or only blanks, "txtReferencia"), a price that is not an amount
// ("Precio INCORRECTO: <text>", "txtPrecio") and 6843 (new with an existing code,
// "txtReferencia"); a change may repeat a code. The code is stored as typed; description
// and price are sanitised back into `r`, an empty price saved as 0; Descripcion refuses an
// empty text, so a blank description is stored as null. Shows 314.
Outcome saveReference(const WorkingContext& ctx, Dialogs& dialogs, PriceReference& r, bool isNew);
// Asks 6999 + 25 (No: declined); deletes without a test of use (311): billing lines keep
// their own text and price.
Outcome deleteReference(const WorkingContext& ctx, Dialogs& dialogs, const QString& id);

}  // namespace tallora::master
