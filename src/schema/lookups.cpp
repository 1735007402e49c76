#include "lookups.h"

#include "context/dialogs.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "creation.h"
#include "store/database.h"

#include <utility>

namespace tallora::schema {
namespace {

using store::Database;
using store::Statement;

// An empty or blank number field stands for no number at all.
bool isBlank(const QString& argument) {
    return argument.trimmed().isEmpty();
}

// The whole number a field holds, blanks around ignored; nothing when it holds anything else.
std::optional<std::int64_t> numberOf(const QString& argument) {
    bool ok = false;
    const std::int64_t value = argument.toLongLong(&ok);
    if (!ok) return std::nullopt;
    return value;
}

// Runs `sql` on `database` of the exercise with the number bound and reads the first row
// with `read`; nothing, and no statement, when the argument is not a number.
template <typename Read>
auto firstRow(const WorkingContext& ctx, const QString& database, const QString& sql,
              const QString& argument, Read read)
    -> std::optional<decltype(read(std::declval<const Statement&>()))> {
    const auto number = numberOf(argument);
    if (!number) return std::nullopt;
    Database d = Database::open(ctx.exerciseFile(database));
    Statement st = d.prepare(sql);
    st.bind(1, *number);
    if (!st.next()) return std::nullopt;
    return read(st);
}

QString textField(const Statement& st) {
    return st.text(1);
}
Money moneyField(const Statement& st) {
    return st.money(1);
}

// The duplicate test of both invoice kinds: `sql` binds total, description and party.
bool noInvoiceWith(const WorkingContext& ctx, const QString& database, const QString& sql,
                   const QString& total, const QString& descripcio, const QString& party) {
    if (isBlank(total) || descripcio.isEmpty() || isBlank(party)) return false;
    const auto amount = Money::parse(total, ctx.decimalMark());
    const auto number = numberOf(party);
    if (!amount || !number) return true;
    Database d = Database::open(ctx.exerciseFile(database));
    Statement st = d.prepare(sql);
    st.bind(1, *amount).bind(2, descripcio).bind(3, *number);
    return !st.next();
}

constexpr int kNifWidth = 13;

}  // namespace

QString Nom_Client(const WorkingContext& ctx, const QString& client) {
    return firstRow(ctx, db::Gest, QStringLiteral("select client, nom from clients where client=?"),
                    client, textField)
        .value_or(QString());
}

QString NIF_Client(const WorkingContext& ctx, const QString& client) {
    return firstRow(ctx, db::Gest, QStringLiteral("select client, nif from clients where client=?"),
                    client, textField)
        .value_or(QString())
        .left(kNifWidth);
}

Money Saldo_Client(const WorkingContext& ctx, const QString& client) {
    return firstRow(ctx, db::Gest,
                    QStringLiteral("select client, saldo from clients where client=?"), client,
                    moneyField)
        .value_or(Money());
}

QString Nom_Proveidor(const WorkingContext& ctx, const QString& proveidor) {
    return firstRow(ctx, db::Gest,
                    QStringLiteral("select proveidor, nom from proveidors where proveidor=?"),
                    proveidor, textField)
        .value_or(QString());
}

QString NIF_Proveidor(const WorkingContext& ctx, const QString& proveidor) {
    return firstRow(ctx, db::Gest,
                    QStringLiteral("select proveidor, nif from proveidors where proveidor=?"),
                    proveidor, textField)
        .value_or(QString());
}

QString Nom_Entitat(const WorkingContext& ctx, const QString& id) {
    return firstRow(ctx, db::Tesorer,
                    QStringLiteral("select Id, entidad from entidades where Id=?"), id, textField)
        .value_or(QString());
}

Money Saldo_Entitat(const WorkingContext& ctx, const QString& id) {
    // Saldo is the third field of this statement.
    return firstRow(ctx, db::Tesorer,
                    QStringLiteral("select Id, entidad, Saldo from entidades where Id=?"), id,
                    [](const Statement& st) { return st.money(2); })
        .value_or(Money());
}

QString Nom_CompteOtras(const WorkingContext& ctx, const QString& compte) {
    return firstRow(ctx, db::Comptes,
                    QStringLiteral("select Compte, NomCompte from Otras where Compte=?"), compte,
                    textField)
        .value_or(QString());
}

std::optional<std::int32_t> Grup_CompteOtras(const WorkingContext& ctx, const QString& compte) {
    return firstRow(ctx, db::Comptes,
                    QStringLiteral("select Compte, Grup from Otras where Compte=?"), compte,
                    [](const Statement& st) {
                        return st.isNull(1) ? std::nullopt : std::optional(st.int32(1));
                    })
        .value_or(std::nullopt);
}

bool Nova_FrasIN(const WorkingContext& ctx, const QString& total, const QString& descripcio,
                 const QString& proveidor) {
    return noInvoiceWith(
        ctx, db::FrasIn,
        QStringLiteral("select Ordre from FrasIN where TOTAL=? and descripcio=? and proveidor=?"),
        total, descripcio, proveidor);
}

bool Nova_FrasOUT(const WorkingContext& ctx, const QString& total, const QString& descripcio,
                  const QString& client) {
    return noInvoiceWith(
        ctx, db::FrasOut,
        QStringLiteral("select Ordre from FrasOUT where TOTAL=? and descripcio=? and client=?"),
        total, descripcio, client);
}

bool Verifica_NomCompte(const WorkingContext& ctx, Dialogs& dialogs, const QString& name) {
    if (name.isEmpty()) return true;
    QString sql = QStringLiteral("select * from Tributs where NomCompte=?1");
    for (const char* table :
         {"Amortitzacions", "Compres", "Ingresos", "Inversions", "Personal", "Serveis"})
        sql +=
            QStringLiteral(" union select * from %1 where NomCompte=?1").arg(QLatin1String(table));
    if (ctx.Tesoreria) sql += QStringLiteral(" union select * from Otras where NomCompte=?1");
    bool taken = false;
    try {
        Database d = Database::open(ctx.exerciseFile(db::Comptes));
        Statement st = d.prepare(sql);
        st.bind(1, name);
        taken = st.next();
    } catch (const store::StoreError&) {
        // A name that cannot be checked counts as taken.
        return true;
    }
    // The database is closed before the box shows.
    if (taken) dialogs.stop(Missatge(ctx, 6843));
    return taken;
}

}  // namespace tallora::schema
