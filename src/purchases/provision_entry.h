#pragma once
// Provisions and disbursements (FormSuplidos): money an agency handles for its customers
// that is not income. A provision ("P") is money received from a customer in advance; a
// disbursement ("S") is money paid to a supplier on a customer's behalf. One entry is one
// row of Suplidos in Supl.mdb and, with treasury, one movement, rebuilt on every change.
#include "context/entry_fields.h"
#include "context/fwd.h"

#include <QDate>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>
#include <vector>

namespace tallora::purchases {

struct ProvisionEntry {
    bool suplido = true;  // OpSuplido; false is OpProvision
    QString lblOrdre;     // number of a posted entry being changed; empty for a new entry
    QString lblFecha;     // dd/mm/yyyy, set by the check
    QString txtDia, txtMes;
    // txtClient names a supplier for a disbursement and a customer for a provision.
    QString txtClient;
    // The selected row of ListClients: its text (the name upper-cased) and item data.
    QString listClientsText;
    std::optional<std::int64_t> partyNumber;
    QString txtdescripcio;
    QString txtTotal = QStringLiteral("0");
    // ListEntitats: its text (an account name or nothing) and the account's Id.
    QString entitat;
    std::optional<std::int64_t> entitatId;

    bool isNew() const { return lblOrdre.isEmpty(); }
    // "S" or "P".
    QString Tipus() const { return suplido ? QStringLiteral("S") : QStringLiteral("P"); }
};

// NomTipus: message 6501 "Suplido" or 6506 "Provisión".
QString NomTipus(const WorkingContext& ctx, bool suplido);

// One row of ListClients: the name upper-cased, and the party's number.
struct PartyItem {
    QString text;
    std::int64_t number = 0;
};
// Tria_Tipus: the suppliers (OMPLE_LLISTA_Provs) for a disbursement, the customers
// (OMPLE_LLISTA_Clients) for a provision, in order of name.
std::vector<PartyItem> partyList(const WorkingContext& ctx, bool suplido);

// Calcula_OrdreSupl read outside a posting: the highest Ordre of Suplidos plus one.
std::int64_t Calcula_OrdreSupl(const WorkingContext& ctx);

// Which field a refusal of Verifica_Suplido sends the focus to.
enum class ProvisionField { None, txtDia, txtMes, txtClient, txtTotal, ListEntitats };

// Verifica_Suplido: day, date, month lock, party, total and, with treasury, the account;
// each fault shown with the information icon. A new entry's month is cleared on a lock.
ProvisionField Verifica_Suplido(const WorkingContext& ctx, Dialogs& dialogs, ProvisionEntry& entry);

}  // namespace tallora::purchases
