#pragma once
// Suppliers: table Proveidors of the exercise's gest.mdb. The operations of the suppliers
// screen, apart from its widgets, shared with tallora5-cli. Messages, store faults, number
// texts and absent files as for customers (customers.h).
#include "context/fwd.h"
#include "outcome.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace tallora::master {

struct Supplier {
    QString proveidor;  // number given by the store; empty for a new supplier
    QString nom, nif, direccio, poblacio, provincia, cp, telefon, fax, email, web;
    QString saldo;  // as Format_Import shows it; only with Tesoreria
    // The account transfers are made to (banco.mdb), only with Tesoreria: an IBAN, or a CCC
    // that is saved as its IBAN; the BIC is optional.
    QString iban, bic;
};

// OMPLE_LLISTA: every supplier's name, in order of name.
QStringList supplierNames(const WorkingContext& ctx);
// Every supplier with all its fields, in the list's order (name, then number), from one read.
std::vector<Supplier> supplierRecords(const WorkingContext& ctx);
// MUESTRA_DADES: the first supplier of that name; saldo only with Tesoreria.
std::optional<Supplier> supplierByName(const WorkingContext& ctx, const QString& nom);
std::optional<Supplier> supplierByNumber(const WorkingContext& ctx, const QString& proveidor);

// Grabar: refusals 412 (name empty or only blanks, "txtnom"), with Tesoreria a saldo that
// is not an amount ("Importe INCORRECTO: <text>", "txtsaldo"), and 6843 (new with a name
// that exists once sanitised, "txtnom"); texts sanitised back into `s`, an empty saldo
// "0"; saldo written only with Tesoreria. 314 with the count; a change then spreads the
// name to FrasIn.nomproveidor and to the Tipus 'S' rows of Suplidos of this exercise only
// (327 for each, in that order).
Outcome saveSupplier(const WorkingContext& ctx, Dialogs& dialogs, Supplier& s, bool isNew);

// Esborrar: asks 409 + 25 (No: declined); refuses with 410 (purchases in FrasIN), and with
// Tesoreria 6841 (movements) and 6842 (receipts in the company's cartera.mdb), in that
// order; otherwise deletes (311). Disbursements do not protect a supplier.
Outcome deleteSupplier(const WorkingContext& ctx, Dialogs& dialogs, const QString& proveidor);

}  // namespace tallora::master
