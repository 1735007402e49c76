#pragma once
// Other movements (FrmTesoreriaOtros, FormConsOtros): money that moves without an invoice,
// from one account to another, each side a treasury account (entidades) or another account
// (Otras). An entry is one `otros_movimientos` row numbered by its Asiento, and a movement of
// tesorer.mdb for each treasury side: a transfer between two treasury accounts makes two,
// an entry between two other accounts none. The screen and the companion share these.
//
// Every write is one transaction of tesorer.mdb: a changed entry is deleted and written
// again under its number, and a failure leaves the old entry as it was. Store failures are
// thrown as store::StoreError.
#include "context/fwd.h"
#include "context/money.h"
#include "schema/inquiry_filter.h"
#include "store/database.h"

#include <QDate>
#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

namespace tallora::treasury {

// An entry of a combo: the account's number (item data) and its upper-cased name.
struct AccountItem {
    std::int64_t id = 0;
    QString name;
};
// OMPLE_LLISTA_Entitats: the treasury accounts by name; OMPLE_LLISTA_Comptes: the other
// accounts by name.
std::vector<AccountItem> treasuryAccountItems(const WorkingContext& ctx);
std::vector<AccountItem> otherAccountItems(const WorkingContext& ctx);

// A treasury account's name and its bank account field (entidades.entidad and ccc, empty when
// blank); nothing when no account has the Id.
struct TreasuryAccountFields {
    QString entidad, ccc;
};
std::optional<TreasuryAccountFields> treasuryAccountFields(const WorkingContext& ctx,
                                                           std::int64_t id);

// The fields of the screen. Of each side one account is set, the other stays 0.
struct OtherMovement {
    std::optional<std::int64_t> asiento;  // lblOrdre: none for a new entry
    QDate data;
    QString concepto;
    QString importe;  // as typed, with the program's decimal mark
    std::int64_t saleTesoreria = 0, saleOtra = 0, entraTesoreria = 0, entraOtra = 0;
};

// The field a refusal sends the focus to.
enum class OtherField { SaleTesoreria, EntraTesoreria, Concepte, Importe, Fecha };
struct OtherPosting {
    std::optional<OtherField> refused;  // the checks, in their order, with their messages
    std::int64_t asiento = 0;           // the entry written
};

// btnContabilizar: messages 6730, 6731 (stop icon), 6733, 6732, 622, then the entry.
OtherPosting postOtherMovement(const WorkingContext& ctx, Dialogs& dialogs, OtherMovement entry);
// The entry's rows written through `db` (tesorer.mdb as main) inside the caller's
// transaction, once the checks have passed and the concept is clean: a changed entry
// replaces its old rows under the same number. Gives the entry's number.
std::int64_t writeOtherMovement(store::Database& db, const OtherMovement& entry, Money importe);

// Calcula_Asiento: the highest number + 1, 1 on an empty table.
std::int64_t Calcula_Asiento(const WorkingContext& ctx);

// Modifica_Otros: the entry as the screen shows it (the amount through Format_Import);
// nothing when no entry has the number.
std::optional<OtherMovement> loadOtherMovement(const WorkingContext& ctx, std::int64_t asiento);

// The question before a deletion: message 815, then "(" + number + ") " + the concept.
QString deleteOtherQuestion(const WorkingContext& ctx, std::int64_t asiento,
                            const QString& concepto);
// Deletes the entry and its movements.
void deleteOtherMovement(const WorkingContext& ctx, std::int64_t asiento);

// FormConsOtros's filters: dates and amount as every inquiry has them (on the entry's
// importe), and the other account, matched on either side.
struct OtherFilter {
    schema::DateAmountFilter dates;
    std::optional<std::int64_t> cuenta;
};
struct OtherRow {
    std::int64_t asiento = 0;
    QString data;  // dd/mm/yyyy
    QString concepto;
    QString importe;  // Format_Import
    QString entra;    // the account the money enters, by name
    QString sale;     // the account it leaves
    Money amount;     // importe, for the inquiry's total
};
// The search, also kept as the view SelOtros_movimientos of tesorer.mdb for the list
// report. By date, then number.
std::vector<OtherRow> searchOtherMovements(const WorkingContext& ctx, const OtherFilter& filter);

// Modifica_Moviment: where a movement of the statement came from, and so which editor opens.
enum class MovementOrigin { None, Provision, Invoice, Other };
struct MovementSource {
    MovementOrigin origin = MovementOrigin::None;
    std::int64_t number = 0;  // Supl's Ordre, or Otros's Asiento
};
// Nothing when no movement has the Id.
std::optional<MovementSource> movementSource(const WorkingContext& ctx, std::int64_t id);

}  // namespace tallora::treasury
