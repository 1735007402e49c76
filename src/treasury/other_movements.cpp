#include "other_movements.h"

#include "context/common_helpers.h"
#include "context/dialogs.h"
#include "context/messages.h"
#include "context/month_lock.h"
#include "context/working_context.h"
#include "names_by_id.h"
#include "schema/creation.h"
#include "store/database.h"
#include "store/schema_objects.h"

#include <QHash>

namespace tallora::treasury {
namespace {

using schema::db::Comptes;
using schema::db::Tesorer;

std::vector<AccountItem> items(const WorkingContext& ctx, const QString& file, const QString& sql) {
    store::Database db = store::Database::open(ctx.exerciseFile(file));
    store::Statement st = db.prepare(sql);
    std::vector<AccountItem> out;
    while (st.next()) out.push_back({st.int64(0), st.isNull(1) ? QString() : st.text(1).toUpper()});
    return out;
}

void insertMovement(store::Database& db, const OtherMovement& e, std::int64_t asiento,
                    std::int64_t entidad, std::int64_t cuenta, Money d, Money h) {
    db.prepare(QStringLiteral("insert into movimientos (data, entidad, cuenta, otros, concepto, D, "
                              "H) values (?, ?, ?, ?, ?, ?, ?)"))
        .bind(1, e.data)
        .bind(2, entidad)
        .bind(3, cuenta)
        .bind(4, asiento)
        .bind(5, e.concepto)
        .bind(6, d)
        .bind(7, h)
        .execute();
}

void deleteEntry(store::Database& db, std::int64_t asiento) {
    db.prepare(QStringLiteral("delete from movimientos where Otros = ? and Otros <> 0"))
        .bind(1, asiento)
        .execute();
    db.prepare(QStringLiteral("delete from otros_movimientos where asiento = ?"))
        .bind(1, asiento)
        .execute();
}

std::int64_t nextAsiento(store::Database& db) {
    store::Statement st = db.prepare(QStringLiteral("select max(Asiento) from otros_movimientos"));
    return st.next() && !st.isNull(0) ? st.int64(0) + 1 : 1;
}

}  // namespace

std::vector<AccountItem> treasuryAccountItems(const WorkingContext& ctx) {
    return items(ctx, Tesorer,
                 QStringLiteral("select Id, entidad from entidades order by entidad asc"));
}

std::optional<TreasuryAccountFields> treasuryAccountFields(const WorkingContext& ctx,
                                                           std::int64_t id) {
    store::Database db = store::Database::open(ctx.exerciseFile(Tesorer));
    auto st = db.prepare(QStringLiteral("select entidad, ccc from entidades where Id = ?"));
    st.bind(1, id);
    if (!st.next()) return std::nullopt;
    return TreasuryAccountFields{st.text(0), st.isNull(1) ? QString() : st.text(1)};
}

std::vector<AccountItem> otherAccountItems(const WorkingContext& ctx) {
    return items(ctx, Comptes,
                 QStringLiteral("select Compte, NomCompte from Otras order by NomCompte asc"));
}

std::int64_t Calcula_Asiento(const WorkingContext& ctx) {
    store::Database db = store::Database::open(ctx.exerciseFile(Tesorer));
    return nextAsiento(db);
}

OtherPosting postOtherMovement(const WorkingContext& ctx, Dialogs& dialogs, OtherMovement e) {
    if (e.saleTesoreria == 0 && e.saleOtra == 0) {
        dialogs.stop(Missatge(ctx, 6730));
        return {OtherField::SaleTesoreria};
    }
    if (e.entraTesoreria == 0 && e.entraOtra == 0) {
        dialogs.information(Missatge(ctx, 6731));
        return {OtherField::EntraTesoreria};
    }
    if (e.concepto.trimmed().isEmpty()) {
        dialogs.information(Missatge(ctx, 6733));
        return {OtherField::Concepte};
    }
    const std::optional<Money> importe = Money::parse(e.importe.trimmed(), QChar(ctx.Decimal));
    if (!importe || *importe == Money{}) {
        dialogs.information(Missatge(ctx, 6732));
        return {OtherField::Importe};
    }
    if (!Verifica_Mes(ctx, dialogs, e.data.month())) return {OtherField::Fecha};
    Neteja_Text(e.concepto);

    store::Database db = store::Database::open(ctx.exerciseFile(Tesorer));
    store::Transaction tx(db, store::Transaction::Kind::Immediate);
    const std::int64_t asiento = writeOtherMovement(db, e, *importe);
    tx.commit();
    return {std::nullopt, asiento};
}

std::int64_t writeOtherMovement(store::Database& db, const OtherMovement& e, Money importe) {
    std::int64_t asiento = 0;
    if (e.asiento) {
        // A change is a delete and an insert under the same number.
        asiento = *e.asiento;
        deleteEntry(db, asiento);
    } else {
        asiento = nextAsiento(db);
    }
    db.prepare(
          QStringLiteral("insert into otros_movimientos (asiento, data, concepto, importe, "
                         "cta_sale_tesoreria, cta_sale_otra, cta_entra_tesoreria, cta_entra_otra) "
                         "values (?, ?, ?, ?, ?, ?, ?, ?)"))
        .bind(1, asiento)
        .bind(2, e.data)
        .bind(3, e.concepto)
        .bind(4, importe)
        .bind(5, e.saleTesoreria)
        .bind(6, e.saleOtra)
        .bind(7, e.entraTesoreria)
        .bind(8, e.entraOtra)
        .execute();
    // The movement's cuenta is the other account of the opposite side, 0 between two
    // treasury accounts.
    if (e.saleTesoreria != 0)
        insertMovement(db, e, asiento, e.saleTesoreria, e.entraOtra, {}, importe);
    if (e.entraTesoreria != 0)
        insertMovement(db, e, asiento, e.entraTesoreria, e.saleOtra, importe, {});
    return asiento;
}

std::optional<OtherMovement> loadOtherMovement(const WorkingContext& ctx, std::int64_t asiento) {
    store::Database db = store::Database::open(ctx.exerciseFile(Tesorer));
    store::Statement st = db.prepare(QStringLiteral(
        "select data, concepto, Importe, cta_sale_tesoreria, cta_sale_otra, cta_entra_tesoreria, "
        "cta_entra_otra from otros_movimientos where asiento = ?"));
    st.bind(1, asiento);
    if (!st.next()) return std::nullopt;
    OtherMovement e;
    e.asiento = asiento;
    e.data = st.date(0);
    e.concepto = st.isNull(1) ? QString() : st.text(1);
    e.importe = Format_Import(ctx, st.money(2));
    e.saleTesoreria = st.int64(3);
    e.saleOtra = st.int64(4);
    e.entraTesoreria = st.int64(5);
    e.entraOtra = st.int64(6);
    return e;
}

QString deleteOtherQuestion(const WorkingContext& ctx, std::int64_t asiento,
                            const QString& concepto) {
    return Missatge(ctx, 815) + QStringLiteral("(%1) ").arg(asiento) + concepto;
}

void deleteOtherMovement(const WorkingContext& ctx, std::int64_t asiento) {
    store::Database db = store::Database::open(ctx.exerciseFile(Tesorer));
    store::Transaction tx(db, store::Transaction::Kind::Immediate);
    deleteEntry(db, asiento);
    tx.commit();
}

std::vector<OtherRow> searchOtherMovements(const WorkingContext& ctx, const OtherFilter& f) {
    QStringList conditions;
    schema::appendDateAmount(conditions, ctx, f.dates, QStringLiteral("importe"));
    // As the inquiry has always read it: the two account sides joined by "or" after the other
    // conditions, without brackets around them.
    if (f.cuenta)
        conditions << QStringLiteral("(cta_entra_otra=%1) or (cta_sale_otra=%1)").arg(*f.cuenta);
    const QString sql = QStringLiteral("select * from otros_movimientos") +
                        schema::whereClause(conditions) +
                        QStringLiteral(" order by data asc, Asiento asc");

    // The names as stored, as the look-ups give them; only the entry screen's lists shout.
    const QHash<std::int64_t, QString> treasury =
        namesById(ctx, Tesorer, QStringLiteral("select Id, entidad from entidades"));
    const QHash<std::int64_t, QString> others =
        namesById(ctx, Comptes, QStringLiteral("select Compte, NomCompte from Otras"));
    store::Database db = store::Database::open(ctx.exerciseFile(Tesorer));
    store::createQuery(db, QStringLiteral("SelOtros_movimientos"), sql);
    store::Statement st = db.prepare(QStringLiteral(
        "select asiento, data, concepto, Importe, cta_entra_tesoreria, cta_entra_otra, "
        "cta_sale_tesoreria, cta_sale_otra from SelOtros_movimientos"));
    const auto side = [&](std::int64_t tes, std::int64_t otra) {
        return tes != 0 ? treasury.value(tes) : otra != 0 ? others.value(otra) : QString();
    };
    std::vector<OtherRow> rows;
    while (st.next()) {
        rows.push_back({st.int64(0), Format_Data(st.date(1)), st.isNull(2) ? QString() : st.text(2),
                        Format_Import(ctx, st.money(3)), side(st.int64(4), st.int64(5)),
                        side(st.int64(6), st.int64(7)), st.money(3)});
    }
    return rows;
}

std::optional<MovementSource> movementSource(const WorkingContext& ctx, std::int64_t id) {
    store::Database db = store::Database::open(ctx.exerciseFile(Tesorer));
    store::Statement st = db.prepare(
        QStringLiteral("select Supl, cliente, proveedor, Otros from movimientos where Id = ?"));
    st.bind(1, id);
    if (!st.next()) return std::nullopt;
    if (st.int64(0) != 0) return MovementSource{MovementOrigin::Provision, st.int64(0)};
    if (st.int64(1) != 0 || st.int64(2) != 0) return MovementSource{MovementOrigin::Invoice, 0};
    if (st.int64(3) != 0) return MovementSource{MovementOrigin::Other, st.int64(3)};
    return MovementSource{};
}

}  // namespace tallora::treasury
