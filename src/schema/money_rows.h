#pragma once
// The money rows a posted invoice leaves with the treasury option: a movement of the
// treasury account that settled it (tesorer.mdb) or a receipt of the portfolio still to
// settle (the company's cartera.mdb). Sales and purchases write the same rows from opposite
// sides; a Side says which. Every statement runs on a connection that has the two files
// attached as "tesorer" and "cartera", inside the posting's transaction.
#include "context/fwd.h"
#include "context/money.h"
#include "store/database.h"

#include <QDate>
#include <QString>

#include <cstdint>
#include <optional>

namespace tallora::schema {

struct MoneySide {
    const char* party;          // "cliente" or "proveedor"
    const char* invoice;        // "FrasOut" or "FrasIn"
    const char* inOut;          // "Out" (to collect) or "In" (to pay)
    const char* conceptPrefix;  // "N/Fra. " or "S/Fra. "
    bool debit;                 // the money comes in (D) or goes out (H)
};
inline constexpr MoneySide kSaleSide{"cliente", "FrasOut", "Out", "N/Fra. ", true};
inline constexpr MoneySide kPurchaseSide{"proveedor", "FrasIn", "In", "S/Fra. ", false};

// What the rows say of the invoice.
struct MoneyRow {
    QDate data;
    std::int64_t party = 0;
    QString factura;  // description and series
    Money total;
    QDate vencimiento;
};

// movimientos.concepto holds 40 characters; the concept is a label, so it is cut there rather
// than refuse a whole posting over it.
inline constexpr int kConceptLength = 40;

void insertMovement(store::Database& db, const MoneySide& side, const MoneyRow& row,
                    std::int64_t entitat, std::int64_t ordre);
void insertReceipt(store::Database& db, const WorkingContext& ctx, const MoneySide& side,
                   const MoneyRow& row, std::int64_t ordre);
void deleteMovements(store::Database& db, const MoneySide& side, std::int64_t ordre);
// The portfolio holds every exercise of the company and invoice numbers restart each year:
// a receipt is found by its number within the exercise, or another year's receipt of the
// same number would be touched.
void deleteReceipts(store::Database& db, const WorkingContext& ctx, const MoneySide& side,
                    std::int64_t ordre);
// The receipt of an invoice settled in a run follows the invoice's change.
void updateReceipt(store::Database& db, const WorkingContext& ctx, const MoneySide& side,
                   const MoneyRow& row, std::int64_t ordre);

// The treasury account of the first movement whose `column` (FrasOut, FrasIn, Supl) holds
// `number`: its name by Nom_Entitat, and its Id when the name was found. Nothing when no
// movement has the number. Opens tesorer.mdb of the exercise.
struct MovementAccount {
    QString name;
    std::optional<std::int64_t> id;
};
std::optional<MovementAccount> movementAccount(const WorkingContext& ctx, const QString& column,
                                               std::int64_t number);

// An amount field as it goes into a Currency column; the check of the entry has made it a
// number, so anything else is a store fault.
Money storedAmount(const WorkingContext& ctx, const QString& text);
// An empty caption is stored as an empty text, not as a missing value.
QString storedText(const QString& text);
// A dd/mm/yyyy caption as a date.
QDate captionDate(const QString& text);

}  // namespace tallora::schema
