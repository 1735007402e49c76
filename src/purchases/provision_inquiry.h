#pragma once
// FormConsSupl's logic: the search over provisions and disbursements (kept as the view
// SelFras of Supl.mdb, which the list prints from) and the deletion of an entry with its
// movement.
#include "context/fwd.h"
#include "context/money.h"
#include "schema/inquiry_filter.h"

#include <QDate>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>
#include <vector>

namespace tallora::purchases {

// The order options: by date, by type, by party, by amount.
enum class ProvisionOrder { Data, Tipus, Party, Import };

struct ProvisionFilter {
    QString party;                // CmbClients: NomProveidor; empty for any
    std::optional<bool> suplido;  // CmbTipus: "S" (true) or "P" (false); none for any
    schema::DateAmountFilter range;
    ProvisionOrder order = ProvisionOrder::Data;
};

// OMPLE_LLISTA_Clients of the inquiry: the names that Suplidos holds, once each.
QStringList provisionParties(const WorkingContext& ctx);
// OMPLE_LLISTA_Vendes: messages 6501 and 6502, the two rows of CmbTipus.
QStringList provisionTypes(const WorkingContext& ctx);

QString provisionSelectionSql(const WorkingContext& ctx, const ProvisionFilter& filter);

struct ProvisionRow {
    std::int64_t ordre = 0;
    QDate data;
    QString nomProveidor, nomTipus, descripcio;
    Money total;
};
struct ProvisionSearch {
    std::vector<ProvisionRow> rows;
    Money total;
};

// Buscar: SelFras of Supl.mdb made anew for `filter`, then read.
ProvisionSearch Buscar_Suplidos(const WorkingContext& ctx, const ProvisionFilter& filter);

// Esborrar after the question: the Suplidos row and, with treasury, its movement, in one
// transaction. False when no row had the number.
bool Esborra_Suplido(const WorkingContext& ctx, std::int64_t ordre);

}  // namespace tallora::purchases
