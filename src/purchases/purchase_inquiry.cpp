#include "purchase_inquiry.h"

#include "context/common_helpers.h"
#include "context/entry_fields.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "purchase_entry.h"
#include "schema/creation.h"
#include "schema/lookups.h"
#include "schema/money_rows.h"
#include "store/database.h"

namespace tallora::purchases {
namespace {

using store::Database;

QString orderBy(PurchaseOrder order) {
    switch (order) {
        case PurchaseOrder::Id:
            return QStringLiteral(" order by Ordre asc");
        case PurchaseOrder::Data:
            return QStringLiteral(" order by data asc, Ordre asc");
        case PurchaseOrder::Natur:
            return QStringLiteral(" order by nomcompte asc, data asc, Ordre asc");
        case PurchaseOrder::Prov:
            return QStringLiteral(" order by nomproveidor asc, data asc, Ordre asc");
        case PurchaseOrder::Import:
            return QStringLiteral(" order by total asc, data asc, Ordre asc");
    }
    return {};
}

QString percentText(const WorkingContext& ctx, double rate) {
    return rateText(ctx, rate) + QLatin1Char('%');
}

}  // namespace

QStringList OMPLE_LLISTA_Proveidors(const WorkingContext& ctx) {
    QStringList names;
    Database db = Database::open(ctx.exerciseFile(schema::db::Gest));
    auto st = db.prepare(QStringLiteral("select nom, proveidor from proveidors order by nom asc"));
    while (st.next()) names << st.text(0);
    return names;
}

QStringList OMPLE_LLISTA_Comptes(const WorkingContext& ctx) {
    QStringList names;
    Database db = Database::open(ctx.exerciseFile(schema::db::Comptes));
    bool first = true;
    for (const char* table :
         {"Compres", "Serveis", "Personal", "Tributs", "Amortitzacions", "Inversions"}) {
        if (!first) names << kAccountSeparator;
        first = false;
        auto st =
            db.prepare(QStringLiteral("select NomCompte, Compte from %1 order by NomCompte asc")
                           .arg(QLatin1String(table)));
        while (st.next()) names << st.text(0);
    }
    return names;
}

QString selectionSql(const WorkingContext& ctx, const PurchaseFilter& f) {
    QStringList conditions;
    if (!f.supplier.isEmpty())
        conditions << schema::equalsText(QStringLiteral("nomproveidor"), f.supplier);
    if (!f.account.isEmpty())
        conditions << schema::equalsText(QStringLiteral("NomCompte"), f.account);
    schema::appendDateAmount(conditions, ctx, f.range);
    return QStringLiteral("select * from FrasIN") + schema::whereClause(conditions) +
           orderBy(f.order);
}

PurchaseSearch Buscar(const WorkingContext& ctx, const PurchaseFilter& filter) {
    Database db = Database::open(ctx.exerciseFile(schema::db::FrasIn));
    schema::replaceSelFras(db, selectionSql(ctx, filter));
    PurchaseSearch search;
    auto st = db.prepare(QStringLiteral(
        "select Ordre, data, NomProveidor, NomCompte, descripcio, TOTAL from SelFras"));
    while (st.next()) {
        PurchaseRow row{st.int64(0), st.date(1), st.text(2), st.text(3), st.text(4), st.money(5)};
        search.total += row.total;
        search.rows.push_back(std::move(row));
    }
    return search;
}

bool Esborra_Compra(const WorkingContext& ctx, std::int64_t ordre) {
    Database db = Database::open(ctx.exerciseFile(schema::db::FrasIn));
    if (ctx.Tesoreria) {
        db.attach(ctx.exerciseFile(schema::db::Tesorer), QStringLiteral("tesorer"));
        db.attach(ctx.companyFile(schema::db::Cartera), QStringLiteral("cartera"));
    }
    store::Transaction tx(db, store::Transaction::Kind::Immediate);
    const int deleted =
        db.prepare(QStringLiteral("delete from FrasIN where Ordre = ?")).bind(1, ordre).execute();
    if (ctx.Tesoreria) {
        schema::deleteMovements(db, schema::kPurchaseSide, ordre);
        schema::deleteReceipts(db, ctx, schema::kPurchaseSide, ordre);
    }
    tx.commit();
    return deleted > 0;
}

std::optional<PurchaseDetail> Mes_FraIN(const WorkingContext& ctx, std::int64_t ordre) {
    Database db = Database::open(ctx.exerciseFile(schema::db::FrasIn));
    auto st = db.prepare(QStringLiteral("select * from FrasIN where Ordre = ?"));
    st.bind(1, ordre);
    if (!st.next()) return std::nullopt;
    const auto col = [&](const char* name) { return st.columnIndex(QString::fromLatin1(name)); };
    const auto text = [&](const char* name) { return st.text(col(name)); };
    const auto amount = [&](const char* name) { return Format_Import(ctx, st.money(col(name))); };
    PurchaseDetail d;
    d.lblMesID = QStringLiteral("ID: ") + QString::number(ordre);
    d.lblMesClient = text("NomProveidor");
    d.lblMesNIF = schema::NIF_Proveidor(ctx, QString::number(st.int64(col("Proveidor"))));
    d.lblMesGrup = QString::number(st.int64(col("Grup"))) + QStringLiteral(" - ") + text("NomGrup");
    d.lblMesCompte =
        QString::number(st.int64(col("Compte"))) + QStringLiteral(" - ") + text("NomCompte");
    d.lblMesDescripcio = QStringLiteral("FACTURA: ") + text("descripcio");
    if (isTickets(ctx)) {
        d.MesGrid.push_back({Missatge(ctx, 231), amount("Exempta"), QString()});
    } else {
        static const char* const rates[] = {"TipusIva1", "TipusIva2", "TipusIva3", "TipusIva4"};
        static const char* const bases[] = {"Base1", "Base2", "Base3", "Base4"};
        static const char* const ivas[] = {"Iva1", "Iva2", "Iva3", "Iva4"};
        for (std::size_t i = 0; i < 4; ++i)
            d.MesGrid.push_back({percentText(ctx, st.money(col(rates[i])).toDouble()),
                                 amount(bases[i]), amount(ivas[i])});
        d.MesGrid.push_back({QStringLiteral("0%"), amount("Exempta"), QStringLiteral("0,00")});
    }
    d.MesGridIRPF = {percentText(ctx, st.money(col("TipusIRPF")).toDouble()), amount("BaseIRPF"),
                     amount("Retencio")};
    d.lblMesTotal = QStringLiteral("TOTAL: ") + amount("TOTAL");
    if (ctx.Tesoreria) {
        const bool paid = st.boolean(col("Pagada"));
        const auto movement = schema::movementAccount(ctx, QStringLiteral("FrasIn"), ordre);
        const bool moved = movement.has_value();
        const QString account = moved ? movement->name : QString();
        Database cartera = Database::open(ctx.companyFile(schema::db::Cartera));
        auto receipt = cartera.prepare(
            QStringLiteral("select Id from cartera where FrasIn = ? and Ejercicio = ?"));
        receipt.bind(1, ordre).bind(2, ctx.Exercici);
        const bool pending = receipt.next();
        if (pending && moved)
            d.lblMesPagada = Missatge(ctx, 6705) + account;
        else if (!pending && paid)
            d.lblMesPagada = Missatge(ctx, 6677) + account;
        else
            d.lblMesPagada = Missatge(ctx, 6676);
    }
    return d;
}

}  // namespace tallora::purchases
