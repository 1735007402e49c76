#include "provision_inquiry.h"

#include "context/messages.h"
#include "context/working_context.h"
#include "schema/creation.h"
#include "store/database.h"

namespace tallora::purchases {
namespace {

using store::Database;

QString orderBy(ProvisionOrder order) {
    switch (order) {
        case ProvisionOrder::Data:
            return QStringLiteral(" order by data asc, Ordre asc");
        case ProvisionOrder::Tipus:
            return QStringLiteral(" order by nomtipus asc, data asc, Ordre asc");
        case ProvisionOrder::Party:
            return QStringLiteral(" order by nomproveidor asc, data asc, Ordre asc");
        case ProvisionOrder::Import:
            return QStringLiteral(" order by total asc, data asc, Ordre asc");
    }
    return {};
}

}  // namespace

QStringList provisionParties(const WorkingContext& ctx) {
    QStringList names;
    Database db = Database::open(ctx.exerciseFile(schema::db::Supl));
    auto st = db.prepare(
        QStringLiteral("select distinct NomProveidor from Suplidos order by NomProveidor"));
    while (st.next()) names << st.text(0);
    return names;
}

QStringList provisionTypes(const WorkingContext& ctx) {
    return {Missatge(ctx, 6501), Missatge(ctx, 6502)};
}

QString provisionSelectionSql(const WorkingContext& ctx, const ProvisionFilter& f) {
    QStringList conditions;
    if (!f.party.isEmpty())
        conditions << schema::equalsText(QStringLiteral("NomProveidor"), f.party);
    if (f.suplido)
        conditions << schema::equalsText(QStringLiteral("Tipus"),
                                         *f.suplido ? QStringLiteral("S") : QStringLiteral("P"));
    schema::appendDateAmount(conditions, ctx, f.range);
    return QStringLiteral("select * from Suplidos") + schema::whereClause(conditions) +
           orderBy(f.order);
}

ProvisionSearch Buscar_Suplidos(const WorkingContext& ctx, const ProvisionFilter& filter) {
    Database db = Database::open(ctx.exerciseFile(schema::db::Supl));
    schema::replaceSelFras(db, provisionSelectionSql(ctx, filter));
    ProvisionSearch search;
    auto st = db.prepare(QStringLiteral(
        "select Ordre, data, NomProveidor, NomTipus, descripcio, TOTAL from SelFras"));
    while (st.next()) {
        ProvisionRow row{st.int64(0), st.date(1), st.text(2), st.text(3), st.text(4), st.money(5)};
        search.total += row.total;
        search.rows.push_back(std::move(row));
    }
    return search;
}

bool Esborra_Suplido(const WorkingContext& ctx, std::int64_t ordre) {
    Database db = Database::open(ctx.exerciseFile(schema::db::Supl));
    if (ctx.Tesoreria) db.attach(ctx.exerciseFile(schema::db::Tesorer), QStringLiteral("tesorer"));
    store::Transaction tx(db, store::Transaction::Kind::Immediate);
    const int deleted =
        db.prepare(QStringLiteral("delete from Suplidos where Ordre = ?")).bind(1, ordre).execute();
    if (ctx.Tesoreria)
        db.prepare(QStringLiteral("delete from tesorer.movimientos where Supl = ? and Supl <> 0"))
            .bind(1, ordre)
            .execute();
    tx.commit();
    return deleted > 0;
}

}  // namespace tallora::purchases
