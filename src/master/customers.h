#pragma once
// Customers: table Clients of the exercise's gest.mdb and, with the billing option, their
// commercial row in comercial_clientes of the company's fact.mdb. The operations of the
// customers screen, apart from its widgets, so that tallora5-cli runs the very same ones.
//
// Every message goes through Dialogs with the program's own text: refusals with the stop
// icon, the counts (314, 311, 327) with the information icon, shown once the store is
// committed. A fault of the store inside a save or a deletion (an over-long text, a
// missing table or file) is shown with its description (stop icon) and gives a refusal;
// the operation's writes to every file are one transaction, so nothing is half-written.
// The reading functions have no trap: a fault raises store::StoreError to the caller.
//
// Numbers (client) are the text of the field; one that is not a whole number finds no row.
// A file that does not exist yet (the company's cartera.mdb or fact.mdb, the exercise's
// Supl.mdb) holds no rows for the tests of use and the rename, which then counts 0.
#include "context/fwd.h"
#include "outcome.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace tallora::master {

// The fields of the screen, as text the way the screen shows them.
struct Customer {
    QString client;  // number given by the store; empty for a new customer
    QString nom, direccio, poblacio, provincia, cp, nif, telefon, fax, email, web;
    bool re = false;
    QString saldo;  // opening balance, as Format_Import shows it; only with Tesoreria
    // comercial_clientes, only with Facturacio
    QString formaPago, entidad, ccc;
    // The SEPA mandate (banco.mdb), with the commercial fields: a blank reference means none.
    QString mandatoReferencia;
    QString mandatoFirma;            // dd/mm/yyyy
    bool mandatoRecurrente = false;  // a first collection has gone to the bank
};

// OMPLE_LLISTA: every customer's name, in order of name (duplicates kept).
QStringList customerNames(const WorkingContext& ctx);

// Every customer with all its fields, in the list's order (name, then number), from one
// read: for the command line, which lists numbers too.
std::vector<Customer> customerRecords(const WorkingContext& ctx);

// MUESTRA_DADES: the first customer of that name, with the commercial fields when the
// billing option is on; nothing when no customer has the name.
std::optional<Customer> customerByName(const WorkingContext& ctx, const QString& nom);
// The customer of that number, the same way; for the command line.
std::optional<Customer> customerByNumber(const WorkingContext& ctx, const QString& client);

// Grabar. `isNew` is the "Alta ..." state. The texts of `c` are passed through Neteja_Text
// and written back, an empty saldo becomes "0", so that a refused save shows what would
// have been stored; the commercial fields are stored as typed. Refusals, in this order: a
// name empty or only blanks (312, field "txtnom"); with Tesoreria, a saldo that is not an
// amount with ctx.Decimal ("Importe INCORRECTO: <text>", 6742 + 655, "txtsaldo"); a new
// customer whose sanitised name exists, without regard to case (6843, "txtnom"). saldo is
// written only with Tesoreria. With Facturacio the commercial row is inserted for a new
// customer and deleted and inserted anew on every change; a missing fact.mdb is then a
// fault of the store. A change then spreads the name to FrasOut.nomclient and to the Tipus
// 'P' rows of Suplidos. Shown: 314 with the count, and after a change 327 with the count of
// FrasOut and 327 with that of Suplidos. A new customer gets its number in c.client.
// With Facturacio, a Spanish IBAN in ccc is stored as the CCC inside it (storedAccount), and
// the mandate is written to banco.mdb in the same transaction; refused first: a reference
// with a signature date that is not a date ("txtMandatoFirma"), or that another customer's
// mandate has ("txtMandatoReferencia").
Outcome saveCustomer(const WorkingContext& ctx, Dialogs& dialogs, Customer& c, bool isNew);

// Esborrar: asks 309 + 25 (No: declined, the store untouched), then refuses with 310
// (sales in FrasOut, whatever the options), 6838 (treasury movements, then portfolio
// receipts, only with Tesoreria) or 6839 (billing documents, only with Facturacio), in
// that order; otherwise deletes the customer and, with Facturacio, its commercial row and
// its mandate, and
// tells the count of customers deleted (311). Without Tesoreria the receipts stay orphaned.
Outcome deleteCustomer(const WorkingContext& ctx, Dialogs& dialogs, const QString& client);

}  // namespace tallora::master
