#include "treasury_accounts.h"

#include "banking/account_numbers.h"

#include "context/common_helpers.h"
#include "context/dialogs.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "master_store.h"
#include "schema/creation.h"

namespace tallora::master {
namespace {

namespace db = schema::db;
using store::Database;
using store::Statement;

template <typename Key>
std::optional<TreasuryAccount> firstTreasuryAccount(const WorkingContext& ctx, const QString& sql,
                                                    Key key) {
    Database d = Database::open(ctx.exerciseFile(db::Tesorer));
    Statement st = d.prepare(sql);
    st.bind(1, key);
    if (!st.next()) return std::nullopt;
    TreasuryAccount t;
    t.id = detail::textOf(st, QStringLiteral("Id"));
    // The group list has two entries: 570 is cash, any other value shows as a bank.
    t.grup = detail::textOf(st, QStringLiteral("Grup")) == QString::number(kGrupCaja) ? kGrupCaja
                                                                                      : kGrupBancos;
    t.entidad = detail::textOf(st, QStringLiteral("entidad"));
    t.ccc = detail::textOf(st, QStringLiteral("ccc"));
    t.saldo = detail::amountTextOf(ctx, st, QStringLiteral("saldo"));
    return t;
}

template <typename Key>
std::optional<OtherAccount> firstOtherAccount(const WorkingContext& ctx, const QString& sql,
                                              Key key) {
    Database d = Database::open(ctx.exerciseFile(db::Comptes));
    Statement st = d.prepare(sql);
    st.bind(1, key);
    if (!st.next()) return std::nullopt;
    OtherAccount o;
    o.compte = detail::textOf(st, QStringLiteral("Compte"));
    o.grup = detail::textOf(st, QStringLiteral("Grup"));
    o.nomGrup = detail::textOf(st, QStringLiteral("NomGrup"));
    o.nomCompte = detail::textOf(st, QStringLiteral("NomCompte"));
    o.saldo = detail::amountTextOf(ctx, st, QStringLiteral("Saldo"));
    o.tipus = detail::textOf(st, QStringLiteral("Tipus"));
    return o;
}

// Asks, refuses when `movementsSql` finds a movement of the account, deletes.
Outcome deleteWithoutMovements(const WorkingContext& ctx, Dialogs& dialogs, const QString& key,
                               const QString& movementsSql, const QString& database,
                               const QString& deleteSql) {
    return detail::deletion(ctx, dialogs, 6663, [&]() -> Outcome {
        // Only movements protect an account: other movements and receipts are not looked at.
        if (detail::anyRowIn(ctx.exerciseFile(db::Tesorer), movementsSql, key))
            return detail::refuse(ctx, dialogs, 6653);
        Database d = Database::open(ctx.exerciseFile(database));
        Statement del = d.prepare(deleteSql);
        detail::bindKey(del, 1, key);
        return Outcome::wrote(del.execute());
    });
}

}  // namespace

QStringList treasuryAccountNames(const WorkingContext& ctx) {
    return detail::firstColumn(
        ctx.exerciseFile(db::Tesorer),
        QStringLiteral("select entidad from entidades order by entidad asc"));
}

std::optional<TreasuryAccount> treasuryAccountByName(const WorkingContext& ctx,
                                                     const QString& entidad) {
    return firstTreasuryAccount(
        ctx, QStringLiteral("select * from entidades where entidad=? order by Id"), entidad);
}

std::optional<TreasuryAccount> treasuryAccountById(const WorkingContext& ctx, const QString& id) {
    const auto number = detail::wholeNumberOf(id);
    if (!number) return std::nullopt;
    return firstTreasuryAccount(ctx, QStringLiteral("select * from entidades where Id=?"), *number);
}

Outcome saveTreasuryAccount(const WorkingContext& ctx, Dialogs& dialogs, TreasuryAccount& t,
                            bool isNew) {
    if (t.entidad.trimmed().isEmpty())
        return detail::refuse(ctx, dialogs, 6654, QStringLiteral("txtcuenta"));
    detail::sanitise({&t.entidad, &t.ccc, &t.saldo});
    t.ccc = banking::storedAccount(t.ccc);
    if (t.saldo.isEmpty()) t.saldo = QStringLiteral("0");
    const auto saldo = detail::amountOf(ctx, t.saldo);
    if (!saldo)
        return detail::refuseBadNumber(ctx, dialogs, 6742, t.saldo, QStringLiteral("txtsaldo"));
    if (t.grup != kGrupCaja) t.grup = kGrupBancos;

    return detail::saving(ctx, dialogs, [&]() -> Outcome {
        Database d = Database::open(ctx.exerciseFile(db::Tesorer));
        if (isNew) {
            if (detail::anyRow(d, QStringLiteral("select * from entidades where entidad=?"),
                               t.entidad))
                return detail::refuse(ctx, dialogs, 6843, QStringLiteral("txtcuenta"));
            Statement ins = d.prepare(QStringLiteral(
                "Insert into entidades (Grup, entidad, ccc, saldo) values (?, ?, ?, ?)"));
            ins.bind(1, t.grup)
                .bind(2, detail::stored(t.entidad))
                .bind(3, detail::stored(t.ccc))
                .bind(4, *saldo);
            const int affected = ins.execute();
            t.id = QString::number(d.lastInsertId());
            return Outcome::wrote(affected);
        }
        // Movements hold the Id: a rename needs no cascade.
        Statement up = d.prepare(
            QStringLiteral("update entidades set Grup=?, entidad=?, ccc=?, saldo=? where Id = ?"));
        up.bind(1, t.grup)
            .bind(2, detail::stored(t.entidad))
            .bind(3, detail::stored(t.ccc))
            .bind(4, *saldo);
        detail::bindKey(up, 5, t.id);
        return Outcome::wrote(up.execute());
    });
}

Outcome deleteTreasuryAccount(const WorkingContext& ctx, Dialogs& dialogs, const QString& id) {
    return deleteWithoutMovements(
        ctx, dialogs, id, QStringLiteral("select * from movimientos where entidad = ?"),
        db::Tesorer, QStringLiteral("delete from entidades where Id = ?"));
}

QStringList otherAccountNames(const WorkingContext& ctx) {
    return detail::firstColumn(
        ctx.exerciseFile(db::Comptes),
        QStringLiteral("select NomCompte from Otras order by NomCompte asc"));
}

std::optional<OtherAccount> otherAccountByName(const WorkingContext& ctx,
                                               const QString& nomCompte) {
    return firstOtherAccount(
        ctx, QStringLiteral("select * from Otras where NomCompte=? order by Compte"), nomCompte);
}

std::optional<OtherAccount> otherAccountByNumber(const WorkingContext& ctx, const QString& compte) {
    const auto number = detail::wholeNumberOf(compte);
    if (!number) return std::nullopt;
    return firstOtherAccount(ctx, QStringLiteral("select * from Otras where Compte=?"), *number);
}

Outcome saveOtherAccount(const WorkingContext& ctx, Dialogs& dialogs, OtherAccount& o, bool isNew) {
    if (o.nomCompte.trimmed().isEmpty())
        return detail::refuse(ctx, dialogs, 6654, QStringLiteral("txtdescripcio"));
    detail::sanitise({&o.nomCompte, &o.saldo, &o.nomGrup});
    if (o.saldo.isEmpty()) o.saldo = QStringLiteral("0");
    if (o.grup.trimmed().isEmpty()) o.grup = QStringLiteral("0");
    const auto saldo = detail::amountOf(ctx, o.saldo);
    if (!saldo)
        return detail::refuseBadNumber(ctx, dialogs, 6742, o.saldo, QStringLiteral("txtsaldo"));
    const auto grup = detail::wholeNumberOf(o.grup);
    if (!grup)
        return detail::refuseBadNumber(ctx, dialogs, 6671, o.grup, QStringLiteral("txtGrup"));

    return detail::saving(ctx, dialogs, [&]() -> Outcome {
        Database d = Database::open(ctx.exerciseFile(db::Comptes));
        // Otras.NomGrup refuses an empty text, so a blank group name is kept as null.
        if (isNew) {
            // Only this table is searched, not the chart of the seven families.
            if (detail::anyRow(d, QStringLiteral("select * from Otras where NomCompte=?"),
                               o.nomCompte))
                return detail::refuse(ctx, dialogs, 6843, QStringLiteral("txtdescripcio"));
            Statement ins =
                d.prepare(QStringLiteral("Insert into Otras (Grup, NomGrup, NomCompte, Saldo, "
                                         "Tipus) values (?, ?, ?, ?, ?)"));
            ins.bind(1, *grup);
            detail::bindTextOrNull(ins, 2, o.nomGrup);
            ins.bind(3, detail::stored(o.nomCompte))
                .bind(4, *saldo)
                .bind(5, detail::stored(o.tipus));
            const int affected = ins.execute();
            o.compte = QString::number(d.lastInsertId());
            return Outcome::wrote(affected);
        }
        Statement up = d.prepare(QStringLiteral(
            "update Otras set NomCompte=?, Saldo=?, Grup=?, NomGrup=?, Tipus=? where Compte = ?"));
        up.bind(1, detail::stored(o.nomCompte)).bind(2, *saldo).bind(3, *grup);
        detail::bindTextOrNull(up, 4, o.nomGrup);
        up.bind(5, detail::stored(o.tipus));
        detail::bindKey(up, 6, o.compte);
        return Outcome::wrote(up.execute());
    });
}

Outcome deleteOtherAccount(const WorkingContext& ctx, Dialogs& dialogs, const QString& compte) {
    return deleteWithoutMovements(
        ctx, dialogs, compte, QStringLiteral("select * from movimientos where cuenta = ?"),
        db::Comptes, QStringLiteral("delete from Otras where Compte = ?"));
}

}  // namespace tallora::master
