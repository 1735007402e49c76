#pragma once
// Record look-ups: one value of a customer, supplier, treasury account or other account by
// its number, and the tests that warn of a duplicate invoice or account name, so that every
// screen asks them in the same way. They belong with the working-context procedures, but
// they need the store, which the context library cannot depend on, so they live here.
//
// Every look-up opens its database of the exercise in ctx.Directori for the one statement
// and closes it before returning.
//
// Arguments are the texts of the screen's fields. A number argument that is empty or blank
// runs no statement and gives the empty result. One that is not a whole number gives the
// empty result too, without a statement: no row can carry it.
//
// Failures: the look-ups by number and the two invoice tests have no trap of their own; a
// database that cannot be opened, or a table or field that is not there, raises
// store::StoreError to the caller. Verifica_NomCompte traps its own (see there).
#include "context/fwd.h"
#include "context/money.h"

#include <QString>

#include <cstdint>
#include <optional>


namespace tallora::schema {

// The name (nom) of customer `client` in gest.mdb; empty when no customer has the number.
QString Nom_Client(const WorkingContext& ctx, const QString& client);
// The NIF of customer `client`, cut to its first 13 characters: the customer's field holds
// 15, the journal's nif only 13. Empty when no customer has the number.
QString NIF_Client(const WorkingContext& ctx, const QString& client);
// The balance (saldo) of customer `client`; 0 when no customer has the number.
Money Saldo_Client(const WorkingContext& ctx, const QString& client);

// The name (nom) of supplier `proveidor` in gest.mdb; empty when none has the number.
QString Nom_Proveidor(const WorkingContext& ctx, const QString& proveidor);
// The NIF of supplier `proveidor`, as stored; empty when none has the number.
QString NIF_Proveidor(const WorkingContext& ctx, const QString& proveidor);

// The name (entidad) of treasury account `id` (entidades.Id) in tesorer.mdb; empty when
// there is none.
QString Nom_Entitat(const WorkingContext& ctx, const QString& id);
// The opening balance (Saldo) of treasury account `id`; 0 when there is none.
Money Saldo_Entitat(const WorkingContext& ctx, const QString& id);

// The name (NomCompte) of the other account `compte` (Otras.Compte) in Comptes.mdb; empty
// when there is none.
QString Nom_CompteOtras(const WorkingContext& ctx, const QString& compte);
// The group (Grup) of the other account `compte`; nothing when there is none or its group
// is not set.
std::optional<std::int32_t> Grup_CompteOtras(const WorkingContext& ctx, const QString& compte);

// Duplicate tests for a new invoice. True when no purchase (FrasIN) of supplier `proveidor`,
// or no sale (FrasOut) of customer `client`, has this total and this description; false when
// one has, and false without a statement when any of the three arguments is empty. The
// total is read as the screen formats it, with the decimal mark of ctx.Decimal and the other
// mark grouping thousands ("1.234,50" is 1234.50); a total that is not an amount matches no
// row. The description is compared as given, without regard to case.
bool Nova_FrasIN(const WorkingContext& ctx, const QString& total, const QString& descripcio,
                 const QString& proveidor);
bool Nova_FrasOUT(const WorkingContext& ctx, const QString& total, const QString& descripcio,
                  const QString& client);

// Whether an account name is taken in the chart of Comptes.mdb: the seven families, and
// Otras as well when ctx.Tesoreria is on. False when the name is free. True when it is taken,
// after message 6843 with the stop icon; True, without a statement or a message, for an
// empty name; True, without a message, when the statement fails (a missing database or
// table), so that a caller never adds an account it could not check.
bool Verifica_NomCompte(const WorkingContext& ctx, Dialogs& dialogs, const QString& name);

}  // namespace tallora::schema
