#include "accounts.h"

#include "context/common_helpers.h"
#include "context/dialogs.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "master_store.h"
#include "schema/creation.h"
#include "schema/lookups.h"

#include <QFileInfo>

namespace tallora::master {
namespace {

namespace db = schema::db;
using store::Database;
using store::Statement;

struct FamilyFacts {
    const char* table;
    int grup;
    int caption;
};

const FamilyFacts& facts(Family f) {
    static const std::array<FamilyFacts, 7> all{{{"Ingresos", 70, 501},
                                                 {"Compres", 60, 502},
                                                 {"Serveis", 62, 503},
                                                 {"Tributs", 63, 504},
                                                 {"Personal", 64, 505},
                                                 {"Amortitzacions", 68, 506},
                                                 {"Inversions", 20, 507}}};
    return all.at(static_cast<std::size_t>(f));
}

// The family's table as an identifier of SQL text: it is one of seven fixed names.
QString tableSql(Family f) {
    return store::quoteIdentifier(familyTable(f));
}

}  // namespace

QString familyTable(Family f) {
    return QLatin1String(facts(f).table);
}

int familyGrup(Family f) {
    return facts(f).grup;
}

QString familyNomGrup(const WorkingContext& ctx, Family f) {
    switch (f) {
        // These two read the same in both languages.
        case Family::Ingresos:
            return QStringLiteral("Ingresos");
        case Family::Personal:
            return QStringLiteral("Personal");
        case Family::Compres:
            return Missatge(ctx, 511);
        case Family::Serveis:
            return Missatge(ctx, 512);
        case Family::Tributs:
            return Missatge(ctx, 513);
        case Family::Amortitzacions:
            return Missatge(ctx, 514);
        case Family::Inversions:
            return Missatge(ctx, 515);
    }
    return {};
}

int familyCaption(Family f) {
    return facts(f).caption;
}

std::optional<Family> familyByTable(const QString& table) {
    for (Family f : kFamilies)
        if (familyTable(f).compare(table, Qt::CaseInsensitive) == 0) return f;
    return std::nullopt;
}

std::vector<AccountItem> accountList(const WorkingContext& ctx, Family f) {
    Database d = Database::open(ctx.exerciseFile(db::Comptes));
    Statement st = d.prepare(QStringLiteral("select NomCompte, Compte from ") + tableSql(f) +
                             QStringLiteral(" order by NomCompte asc"));
    std::vector<AccountItem> items;
    while (st.next()) items.push_back({st.text(0), st.int32(1)});
    return items;
}

std::optional<Account> accountByNumber(const WorkingContext& ctx, Family f, std::int32_t compte) {
    Database d = Database::open(ctx.exerciseFile(db::Comptes));
    Statement st = d.prepare(QStringLiteral("select Compte, Grup, NomCompte, Tipus from ") +
                             tableSql(f) + QStringLiteral(" where Compte=?"));
    st.bind(1, compte);
    if (!st.next()) return std::nullopt;
    return Account{st.text(0), st.text(1), st.text(2), st.text(3)};
}

QStringList accountClasses(const WorkingContext& ctx, Family f) {
    Database d = Database::open(ctx.exerciseFile(db::Comptes));
    Statement st = d.prepare(QStringLiteral("select Tipus from ") + tableSql(f) +
                             QStringLiteral(" where Tipus <> '' group by Tipus order by Tipus"));
    QStringList classes;
    while (st.next()) classes << st.text(0);
    return classes;
}

Outcome saveAccount(const WorkingContext& ctx, Dialogs& dialogs, Family f, Account& a, bool isNew) {
    const int grup = familyGrup(f);
    if (a.nomCompte.trimmed().isEmpty())
        return detail::refuse(ctx, dialogs, 509, QStringLiteral("txtdescripcio"));
    if (a.tipus.trimmed().isEmpty())
        return detail::refuse(ctx, dialogs, 510, QStringLiteral("ComboExplotacio"));
    detail::sanitise({&a.nomCompte, &a.tipus});

    return detail::saving(ctx, dialogs, [&]() -> Outcome {
        if (isNew) {
            // Unique across the chart, but only when an account is made.
            if (schema::Verifica_NomCompte(ctx, dialogs, a.nomCompte))
                return Outcome::refused(QStringLiteral("txtdescripcio"));
            Database d = Database::open(ctx.exerciseFile(db::Comptes));
            Statement ins = d.prepare(
                QStringLiteral("Insert into ") + tableSql(f) +
                QStringLiteral(" (Grup, NomGrup, NomCompte, Debe, Haber, Saldo, Tipus) values "
                               "(?, ?, ?, 0, 0, 0, ?)"));
            ins.bind(1, grup)
                .bind(2, familyNomGrup(ctx, f))
                .bind(3, detail::stored(a.nomCompte))
                .bind(4, detail::stored(a.tipus));
            const int affected = ins.execute();
            a.compte = QString::number(d.lastInsertId());
            a.grup = QString::number(grup);
            return Outcome::wrote(affected);
        }
        Database d = Database::open(ctx.exerciseFile(db::Comptes));
        const bool sales =
            detail::attachIfPresent(d, ctx.exerciseFile(db::FrasOut), QStringLiteral("fo"));
        const bool purchases =
            detail::attachIfPresent(d, ctx.exerciseFile(db::FrasIn), QStringLiteral("fi"));
        store::Transaction tx(d);
        Statement up = d.prepare(QStringLiteral("update ") + tableSql(f) +
                                 QStringLiteral(" set NomCompte=?, Tipus=? where Compte = ?"));
        up.bind(1, detail::stored(a.nomCompte)).bind(2, detail::stored(a.tipus));
        detail::bindKey(up, 3, a.compte);
        const int affected = up.execute();
        // On every change, whatever changed: the invoices take the name and, in their
        // NomGrup, the account's class. The Grup keeps the other family's invoices out.
        const auto cascade = [&](const QString& sql) {
            Statement inv = d.prepare(sql);
            inv.bind(1, detail::stored(a.nomCompte)).bind(2, detail::stored(a.tipus));
            detail::bindKey(inv, 3, a.compte);
            inv.bind(4, grup);
            inv.execute();
        };
        if (sales)
            cascade(QStringLiteral(
                "Update fo.FrasOut set NomCompte=?, NomGrup=? where Compte=? and Grup=?"));
        if (purchases)
            cascade(QStringLiteral(
                "Update fi.FrasIn set NomCompte=?, NomGrup=? where Compte = ? and Grup=?"));
        tx.commit();
        return Outcome::wrote(affected);
    });
}

Outcome deleteAccount(const WorkingContext& ctx, Dialogs& dialogs, Family f, std::int32_t compte) {
    return detail::deletion(ctx, dialogs, 516, [&]() -> Outcome {
        const auto invoiced = [&](const QString& file, const QString& sql) {
            if (!QFileInfo::exists(file)) return false;
            Database d = Database::open(file);
            Statement st = d.prepare(sql);
            st.bind(1, compte).bind(2, familyGrup(f));
            return st.next();
        };
        if (invoiced(
                ctx.exerciseFile(db::FrasOut),
                QStringLiteral("select Compte, Grup from frasout where Compte=? and Grup=?")) ||
            invoiced(ctx.exerciseFile(db::FrasIn),
                     QStringLiteral("select Compte, Grup from FrasIN where Compte=? and Grup=?")))
            return detail::refuse(ctx, dialogs, 517);
        Database d = Database::open(ctx.exerciseFile(db::Comptes));
        Statement del = d.prepare(QStringLiteral("delete from ") + tableSql(f) +
                                  QStringLiteral(" where Compte = ?"));
        del.bind(1, compte);
        return Outcome::wrote(del.execute());
    });
}

}  // namespace tallora::master
