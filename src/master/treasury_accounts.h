#pragma once
// The accounts money moves through: cash boxes and banks (entidades of the exercise's
// tesorer.mdb) and the other balance-sheet accounts (Otras of Comptes.mdb). Both exist only
// with the treasury option. The operations of their two screens, shared with tallora5-cli.
// Messages, store faults, number texts and absent files as for customers (customers.h).
#include "context/fwd.h"
#include "outcome.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace tallora::master {

inline constexpr int kGrupCaja = 570;
inline constexpr int kGrupBancos = 572;

struct TreasuryAccount {
    QString id;            // entidades.Id; empty for a new account
    int grup = kGrupCaja;  // 570 cash, 572 banks: any other value is read and saved as 572
    QString entidad, ccc;
    QString saldo;  // opening balance, as Format_Import shows it
};

QStringList treasuryAccountNames(const WorkingContext& ctx);
std::optional<TreasuryAccount> treasuryAccountByName(const WorkingContext& ctx,
                                                     const QString& entidad);
std::optional<TreasuryAccount> treasuryAccountById(const WorkingContext& ctx, const QString& id);
// Refusals 6654 (name empty or only blanks, "txtcuenta"), a saldo that is not an amount
// ("Importe INCORRECTO: <text>", "txtsaldo") and 6843 (new with an existing name,
// "txtcuenta"). entidad, ccc and saldo are sanitised back into `t`; a blank saldo is "0", a
// blank ccc an empty text. A change has no name check and no cascade. Shows 314.
Outcome saveTreasuryAccount(const WorkingContext& ctx, Dialogs& dialogs, TreasuryAccount& t,
                            bool isNew);
// Asks 6663 + 25 (No: declined); refuses with 6653 when a movement of tesorer.mdb uses the
// account (movimientos.entidad); other movements and receipts do not count; deletes (311).
Outcome deleteTreasuryAccount(const WorkingContext& ctx, Dialogs& dialogs, const QString& id);

struct OtherAccount {
    QString compte;  // Otras.Compte; empty for a new account
    QString grup, nomGrup, nomCompte;
    QString saldo;
    QString tipus;  // "A" asset, "P" liability, or empty
};

QStringList otherAccountNames(const WorkingContext& ctx);
std::optional<OtherAccount> otherAccountByName(const WorkingContext& ctx, const QString& nomCompte);
std::optional<OtherAccount> otherAccountByNumber(const WorkingContext& ctx, const QString& compte);
// Refusals 6654 (name empty or only blanks, "txtdescripcio"), a saldo that is not an amount
// ("Importe INCORRECTO: <text>", "txtsaldo"), a grup that is not a whole number ("Nº Grupo
// INCORRECTO: <text>", "txtGrup") and 6843 (new with a name existing in Otras; the seven
// families are not searched, "txtdescripcio"). nomCompte, saldo and nomGrup are sanitised
// back into `o`; a blank saldo or grup becomes "0". Otras.NomGrup refuses an empty text,
// so a blank group name is stored as null. Shows 314.
Outcome saveOtherAccount(const WorkingContext& ctx, Dialogs& dialogs, OtherAccount& o, bool isNew);
// Asks 6663 + 25 (No: declined); refuses with 6653 when a movement of tesorer.mdb crosses
// the account (movimientos.cuenta); deletes (311).
Outcome deleteOtherAccount(const WorkingContext& ctx, Dialogs& dialogs, const QString& compte);

}  // namespace tallora::master
