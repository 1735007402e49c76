#pragma once
// The chart of accounts of the exercise's Comptes.mdb: seven families, one table each,
// an account identified by its family and its Compte. The operations of the accounts
// screen apart from its widgets, shared with tallora5-cli.
#include "context/fwd.h"
#include "outcome.h"

#include <QString>
#include <QStringList>

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

namespace tallora::master {

// In the order of the screen's options OpData0 to OpData6.
enum class Family { Ingresos, Compres, Serveis, Tributs, Personal, Amortitzacions, Inversions };
inline constexpr std::array<Family, 7> kFamilies{
    Family::Ingresos, Family::Compres,        Family::Serveis,   Family::Tributs,
    Family::Personal, Family::Amortitzacions, Family::Inversions};

// The family's table ("Ingresos", "Compres" ...), its Grup (70, 60, 62, 63, 64, 68, 20), the
// NomGrup written at creation (fixed "Ingresos" and "Personal", the others in the language
// of the context) and the message number of the option's caption (501 to 507).
QString familyTable(Family f);
int familyGrup(Family f);
QString familyNomGrup(const WorkingContext& ctx, Family f);
int familyCaption(Family f);
// The family whose table is `table`, without regard to case; nothing for another word.
std::optional<Family> familyByTable(const QString& table);

struct AccountItem {
    QString nomCompte;  // as stored; the screen shows it in capitals
    std::int32_t compte = 0;
};

// OMPLE_LLISTA: the accounts of the family in order of name.
std::vector<AccountItem> accountList(const WorkingContext& ctx, Family f);

struct Account {
    QString compte;  // empty for a new account
    QString grup;
    QString nomCompte;
    QString tipus;  // the class in the operating statement
};

// MUESTRA_DADES: the account of that Compte in the family; nothing when there is none.
std::optional<Account> accountByNumber(const WorkingContext& ctx, Family f, std::int32_t compte);
// The classes already used in the family (select Tipus group by Tipus), for the combo; an
// empty or null class is left out.
QStringList accountClasses(const WorkingContext& ctx, Family f);

// Grabar. Refusals: a description empty or only blanks (509, "txtdescripcio"), a class
// likewise (510, "ComboExplotacio"), a new name taken anywhere in the chart, Otras too
// with Tesoreria (Verifica_NomCompte, which shows 6843 itself, "txtdescripcio"). A change
// is not checked, so it may repeat a name. Description and class are sanitised back into
// `a`. A new account gets the family's Grup and NomGrup, 0 balances, and its number in
// a.compte (a.grup set too). A change, on every save whether or not a text changed, writes
// the name and the class into the invoices of that Compte and the family's Grup in FrasOut
// and FrasIn (the class goes into their NomGrup), in the same transaction. Shows 314.
Outcome saveAccount(const WorkingContext& ctx, Dialogs& dialogs, Family f, Account& a, bool isNew);

// Esborrar: asks 516 + 25 (No: declined); refuses with 517 when a sale or a purchase of
// the exercise carries this Compte and the family's Grup (an invoiced account of another
// family with the same Compte does not count); otherwise deletes (311).
Outcome deleteAccount(const WorkingContext& ctx, Dialogs& dialogs, Family f, std::int32_t compte);

}  // namespace tallora::master
