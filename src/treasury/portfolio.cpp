#include "portfolio.h"

#include "context/common_helpers.h"
#include "context/dialogs.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "schema/creation.h"
#include "store/database.h"

#include <QHash>

namespace tallora::treasury {
namespace {

using schema::db::Cartera;
using schema::db::Gest;

std::vector<Party> parties(const WorkingContext& ctx, const QString& sql) {
    store::Database db = store::Database::open(ctx.exerciseFile(Gest));
    store::Statement st = db.prepare(sql);
    std::vector<Party> out;
    while (st.next()) out.push_back({st.int64(0), st.text(1)});
    return out;
}

// Every name of the table by number, read in one statement.
QHash<std::int64_t, QString> namesOf(const WorkingContext& ctx, Tab tab) {
    QHash<std::int64_t, QString> names;
    const auto all = parties(ctx, tab == Tab::Clientes
                                      ? QStringLiteral("select client, nom from Clients")
                                      : QStringLiteral("select proveidor, nom from Proveidors"));
    for (const Party& p : all) names.insert(p.number, p.nom);
    return names;
}

// What is still due in one direction, or "0" when it has no row.
QString due(const WorkingContext& ctx, store::Database& db, const QString& inOut) {
    store::Statement st = db.prepare(
        QStringLiteral("select sum(total), sum(Pendiente) from cartera where In_Out = ?"));
    st.bind(1, inOut);
    if (!st.next() || st.isNull(0)) return QStringLiteral("0");
    return Format_Import(ctx, st.money(0) - st.money(1));
}

}  // namespace

std::vector<Party> OMPLE_LLISTA_Clients(const WorkingContext& ctx) {
    return parties(ctx, QStringLiteral("select Client, nom from Clients order by nom desc"));
}

std::vector<Party> OMPLE_LLISTA_Proveidors(const WorkingContext& ctx) {
    return parties(ctx, QStringLiteral("select proveidor, nom from Proveidors order by nom desc"));
}

std::vector<Recibo> Llista_Recibos(const WorkingContext& ctx, const PortfolioFilter& filter) {
    const bool customers = filter.tab == Tab::Clientes;
    const QHash<std::int64_t, QString> names = namesOf(ctx, filter.tab);
    const QString party = customers ? QStringLiteral("cliente") : QStringLiteral("proveedor");
    QString sql = QStringLiteral(
                      "select Id, data, Vencimiento, %1, Factura, Total, Pendiente from cartera "
                      "where In_Out = ?")
                      .arg(party);
    if (filter.party) sql += QStringLiteral(" and %1 = ?").arg(party);
    sql += filter.orden == Orden::Fecha ? QStringLiteral(" order by data asc, Id asc")
                                        : QStringLiteral(" order by Vencimiento asc, Id asc");
    store::Database db = store::Database::open(ctx.companyFile(Cartera));
    store::Statement st = db.prepare(sql);
    st.bind(1, customers ? "Out" : "In");
    if (filter.party) st.bind(2, *filter.party);
    std::vector<Recibo> rows;
    while (st.next()) {
        Recibo r;
        r.id = st.int64(0);
        r.data = Format_Data(st.date(1));
        r.vencimiento = Format_Data(st.date(2));
        r.party = st.isNull(3) ? QString() : names.value(st.int64(3));
        r.factura = st.text(4);
        r.total = Format_Import(ctx, st.money(5));
        r.pendiente = Format_Import(ctx, st.money(6));
        rows.push_back(std::move(r));
    }
    return rows;
}

Totals Totales(const WorkingContext& ctx) {
    store::Database db = store::Database::open(ctx.companyFile(Cartera));
    return {due(ctx, db, QStringLiteral("Out")), due(ctx, db, QStringLiteral("In"))};
}

bool Treu_Recibo(const WorkingContext& ctx, Dialogs& dialogs, const Recibo& recibo) {
    const QString question = Missatge(ctx, 6686) + QStringLiteral("\n(") +
                             QString::number(recibo.id) + QStringLiteral(") ") + recibo.party +
                             QStringLiteral(" Factura: ") + recibo.factura +
                             QStringLiteral(" Total: ") + recibo.total;
    if (dialogs.yesNo(question) != Dialogs::Answer::Yes) return false;
    try {
        store::Database db = store::Database::open(ctx.companyFile(Cartera));
        store::Statement del = db.prepare(QStringLiteral("delete from Cartera where Id = ?"));
        del.bind(1, recibo.id).execute();
        return true;
    } catch (const store::StoreError& e) {
        dialogs.stop(e.message());
        return false;
    }
}

}  // namespace tallora::treasury
