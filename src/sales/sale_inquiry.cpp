#include "sale_inquiry.h"

#include "context/common_helpers.h"
#include "context/entry_fields.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "schema/creation.h"
#include "schema/money_rows.h"
#include "store/database.h"
#include "verifactu/record_chain.h"
#include "verifactu/record_file.h"

namespace tallora::sales {
namespace {

using store::Database;

QString orderBy(SaleOrder order) {
    switch (order) {
        case SaleOrder::Id:
            return QStringLiteral(" order by Ordre asc");
        case SaleOrder::Data:
            return QStringLiteral(" order by data asc, Ordre asc");
        case SaleOrder::Natur:
            return QStringLiteral(" order by nomcompte asc, data asc, Ordre asc");
        case SaleOrder::Clients:
            return QStringLiteral(" order by nomclient asc, data asc, Ordre asc");
        case SaleOrder::Import:
            return QStringLiteral(" order by total asc, data asc, Ordre asc");
    }
    return {};
}

QString percentText(const WorkingContext& ctx, Money rate) {
    return QString::number(rate.toDouble()).replace(u'.', ctx.decimalMark()) + QLatin1Char('%');
}

QStringList firstColumn(const QString& path, const QString& sql) {
    QStringList values;
    Database db = Database::open(path);
    auto st = db.prepare(sql);
    while (st.next()) values << (st.isNull(0) ? QString() : st.text(0));
    return values;
}

// The connection the deletion works on: the sales with, under the treasury option, the
// movements and the portfolio attached, as the postings have them.
Database openSales(const WorkingContext& ctx) {
    Database db = Database::open(ctx.exerciseFile(schema::db::FrasOut));
    if (ctx.Tesoreria) {
        db.attach(ctx.exerciseFile(schema::db::Tesorer), QStringLiteral("tesorer"));
        db.attach(ctx.companyFile(schema::db::Cartera), QStringLiteral("cartera"));
    }
    return db;
}

}  // namespace

QStringList customerNames(const WorkingContext& ctx) {
    return firstColumn(ctx.exerciseFile(schema::db::Gest),
                       QStringLiteral("select nom, client from clients order by nom asc"));
}

QStringList salesAccountNames(const WorkingContext& ctx) {
    QStringList names = firstColumn(
        ctx.exerciseFile(schema::db::Comptes),
        QStringLiteral("select NomCompte, Compte from Ingresos order by NomCompte asc"));
    for (QString& name : names) name = name.toUpper();
    return names;
}

QString selectionSql(const WorkingContext& ctx, const SaleFilter& f) {
    QStringList conditions;
    if (!f.customer.isEmpty())
        conditions << schema::equalsText(QStringLiteral("nomclient"), f.customer);
    if (!f.account.isEmpty())
        conditions << schema::equalsText(QStringLiteral("NomCompte"), f.account);
    schema::appendDateAmount(conditions, ctx, f.range);
    return QStringLiteral("select * from FrasOUT") + schema::whereClause(conditions) +
           orderBy(f.order);
}

SaleSearch Busca_Vendes(const WorkingContext& ctx, const SaleFilter& filter) {
    Database db = Database::open(ctx.exerciseFile(schema::db::FrasOut));
    schema::replaceSelFras(db, selectionSql(ctx, filter));
    SaleSearch search;
    auto st = db.prepare(
        QStringLiteral("select Ordre, data, NomClient, NomCompte, Descripcio, TOTAL from SelFras"));
    while (st.next()) {
        SaleRow row{st.int64(0),
                    st.isNull(1) ? QDate() : st.date(1),
                    st.isNull(2) ? QString() : st.text(2),
                    st.isNull(3) ? QString() : st.text(3),
                    st.isNull(4) ? QString() : st.text(4),
                    st.isNull(5) ? Money{} : st.money(5)};
        search.total += row.total;
        search.rows.push_back(std::move(row));
    }
    return search;
}

bool Esborra_Venda(const WorkingContext& ctx, std::int64_t ordre) {
    Database db = openSales(ctx);
    verifactu::attachRecords(ctx, db);
    store::Transaction tx(db, store::Transaction::Kind::Immediate);
    // The cancellation of the invoice's record goes with the deletion, or neither does.
    verifactu::recordDeletion(ctx, db, ordre);
    const int deleted =
        db.prepare(QStringLiteral("delete from FrasOut where Ordre = ?")).bind(1, ordre).execute();
    if (ctx.Tesoreria) {
        schema::deleteMovements(db, schema::kSaleSide, ordre);
        schema::deleteReceipts(db, ctx, schema::kSaleSide, ordre);
    }
    tx.commit();
    return deleted > 0;
}

std::optional<SaleDetail> Mes_FraOut(const WorkingContext& ctx, std::int64_t ordre) {
    Database db = Database::open(ctx.exerciseFile(schema::db::FrasOut));
    auto st = db.prepare(QStringLiteral("select * from FrasOut where Ordre = ?"));
    st.bind(1, ordre);
    if (!st.next()) return std::nullopt;
    const auto col = [&](const char* name) { return st.columnIndex(QString::fromLatin1(name)); };
    const auto text = [&](const char* name) {
        const int c = col(name);
        return st.isNull(c) ? QString() : st.text(c);
    };
    const auto money = [&](const char* name) {
        const int c = col(name);
        return st.isNull(c) ? Money{} : st.money(c);
    };
    const auto amount = [&](const char* name) { return Format_Import(ctx, money(name)); };
    SaleDetail d;
    d.lblMesID = QStringLiteral("ID: ") + QString::number(ordre);
    d.lblMesClient = text("nomclient");
    d.lblMesNIF = text("NIF");
    d.lblMesGrup = QString::number(st.int64(col("Grup"))) + QStringLiteral(" - ") + text("NomGrup");
    d.lblMesCompte =
        QString::number(st.int64(col("Compte"))) + QStringLiteral(" - ") + text("NomCompte");
    d.lblMesDescripcio = QStringLiteral("FACTURA: ") + text("descripcio");
    static const char* const rates[] = {"Tiva1", "Tiva2", "Tiva3"};
    static const char* const bases[] = {"base1", "base2", "base3"};
    static const char* const ivas[] = {"iva1", "iva2", "iva3"};
    static const char* const res[] = {"re1", "re2", "re3"};
    // What the total holds beyond bases and quotas, the withholding given back: the exempt.
    Money exempt = money("total") + money("retencio");
    for (std::size_t i = 0; i < 3; ++i) {
        exempt -= money(bases[i]) + money(ivas[i]) + money(res[i]);
        if (!isTickets(ctx))
            d.MesGrid.push_back({percentText(ctx, money(rates[i])), amount(bases[i]),
                                 amount(ivas[i]), amount(res[i])});
    }
    d.MesGrid.push_back({QStringLiteral("0%"), Format_Import(ctx, exempt), QString(), QString()});
    d.MesGridIRPF = {percentText(ctx, money("tipusirpf")), amount("baseirpf"), amount("retencio"),
                     QString()};
    d.lblMesTotal = QStringLiteral("TOTAL: ") + amount("total");
    if (ctx.Tesoreria) {
        const bool collected = st.boolean(col("Cobrada"));
        const auto movement = schema::movementAccount(ctx, QStringLiteral("FrasOut"), ordre);
        Database cartera = Database::open(ctx.companyFile(schema::db::Cartera));
        auto receipt = cartera.prepare(
            QStringLiteral("select Id from cartera where FrasOut = ? and Ejercicio = ?"));
        receipt.bind(1, ordre).bind(2, ctx.Exercici);
        const bool pending = receipt.next();
        if (movement && pending)
            d.lblMesPagada = Missatge(ctx, 6705) + movement->name;
        else if (!movement || !collected)
            d.lblMesPagada = Missatge(ctx, 6676);
        else
            d.lblMesPagada = Missatge(ctx, 6677) + movement->name;
    }
    return d;
}

}  // namespace tallora::sales
