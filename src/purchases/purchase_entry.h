#pragma once
// The working entry of the purchases screen and the arithmetic that links its amounts.
//
// As on the sales screen, the entry is the set of the screen's field texts: the screen copies
// its widgets into a PurchaseEntry, calls the procedures here and copies the texts back.
// Amounts are texts in the money format; later steps read back the text, not the value that
// produced it. Base and quota of a split are carried at four decimals (Money) before they
// are shown at two, so that base + quota may miss the total by a cent, which the check of
// the entry absorbs as exempt.
#include "context/entry_fields.h"
#include "context/fwd.h"
#include "context/money.h"
#include "store/database.h"

#include <QDate>
#include <QString>

#include <array>
#include <cstdint>
#include <optional>

namespace tallora::purchases {

// The six expense groups of ComboOP, in the list's order: caption message, table of
// Comptes.mdb, and the Grup by which a posted entry finds its group again.
struct ExpenseGroup {
    int message;
    const char* table;
    int grup;
};
inline constexpr std::array<ExpenseGroup, 6> kExpenseGroups{{{6623, "Compres", 60},
                                                             {6624, "Serveis", 62},
                                                             {6625, "Tributs", 63},
                                                             {6626, "Personal", 64},
                                                             {6627, "Amortitzacions", 68},
                                                             {6628, "Inversions", 20}}};

// Taula_Grup: the table of list index `group`; empty for no group (-1) or one out of range.
QString Taula_Grup(int group);
// The list index of a posted entry's Grup; -1 when no group has it.
int groupOfGrup(std::int64_t grup);

// The expense account found by Verifica_compte_Despesa.
struct ExpenseAccount {
    std::int64_t Grup = 0;
    QString NomGrup;
    std::int64_t Compte = 0;
    QString NomCompte;
};

struct PurchaseEntry {
    int group = -1;    // ComboOP.ListIndex
    QString lblOrdre;  // number of a posted entry being changed; empty for a new entry
    QString lblFecha;  // dd/mm/yyyy, set by the date check
    QString txtDia, txtMes;
    QString txtProveidor;
    // The selected row of ListProv: its text (the name upper-cased) and item data.
    QString listProvText;
    std::optional<std::int64_t> supplierNumber;
    QString txtDespesa;
    QString listDespesesText;  // the selected row of ListDespeses, upper-cased
    QString txtdescripcio;
    QString cmbSerie;  // "", "/Abon" or "/Rect"
    QString txtTotal = QStringLiteral("0");
    QString txtBaseIRPF = QStringLiteral("0");
    QString txtTipus = QStringLiteral("0");  // IRPF percent
    QString txtRetencio = QStringLiteral("0");
    std::array<QString, 4> txtBase{QStringLiteral("0"), QStringLiteral("0"), QStringLiteral("0"),
                                   QStringLiteral("0")};
    std::array<QString, 4> txtIVA{QStringLiteral("0"), QStringLiteral("0"), QStringLiteral("0"),
                                  QStringLiteral("0")};
    // Set by the check of the entry, never typed.
    QString txtexempta = QStringLiteral("0");
    // ListEntitats: its text ("", an account name, or "Marca") and the account's Id.
    QString entitat;
    std::optional<std::int64_t> entitatId;
    QDate venciment;        // DtVencimiento: the due date of a purchase left to pay
    QString clasificacion;  // text of CmbClasificacion; empty for no selection

    bool isNew() const { return lblOrdre.isEmpty(); }
};

// Look-ups of the screen (gest.mdb and Comptes.mdb of the open exercise).
bool Verifica_Proveidor(const WorkingContext& ctx, const QString& name);
std::optional<ExpenseAccount> Verifica_compte_Despesa(const WorkingContext& ctx, int group,
                                                      const QString& name);

// A rate as its captions show it, with the program's decimal mark ("21", "4,5").
QString rateText(const WorkingContext& ctx, double rate);

// "1T" to "4T" by the month of `date`.
QString Periode(const QDate& date);

// The highest Ordre of `table` (FrasIN, Suplidos) on `db` plus one, 1 when empty: numbers
// freed at the top are used again. A posting calls it inside its transaction.
std::int64_t nextOrdre(store::Database& db, const QString& table);
// Calcula_Ordre read outside a posting.
std::int64_t Calcula_Ordre(const WorkingContext& ctx);

// Splits the total (plus the withholding) by `rate` (percent) into base and quota of the
// rate's slot, the last of equal rates winning; the other slots, and all of them for rate 0,
// become "0". Acts only on a new entry.
void Calcula_Bases(const WorkingContext& ctx, PurchaseEntry& entry, double rate);

// The withholding of txtBaseIRPF x txtTipus / 100, written into txtRetencio; then, when a
// rate of CmbIva is in hand (`rate`), the split again.
void Calcula_Retencio(const WorkingContext& ctx, PurchaseEntry& entry, std::optional<double> rate);

// Leaving txtBase(i): a new entry gets its quota from the base and the exercise's rate; an
// entry being changed only has its amounts reformatted. False when the base is no number.
bool baseLeft(const WorkingContext& ctx, PurchaseEntry& entry, int index);

}  // namespace tallora::purchases
