#include "account_statement.h"

#include "add_cartera.h"
#include "context/common_helpers.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "names_by_id.h"
#include "schema/creation.h"
#include "schema/inquiry_filter.h"
#include "schema/lookups.h"
#include "schema/money_rows.h"
#include "schema/upgrades.h"
#include "store/database.h"
#include "store/schema_objects.h"

#include <QHash>

namespace tallora::treasury {
namespace {

using schema::db::Cartera;
using schema::db::Tesorer;

using Names = QHash<std::int64_t, QString>;

// D and H hide a zero by their text: an amount below one shows blank too, as it always did.
QString hiddenZero(const WorkingContext& ctx, Money amount) {
    const QString text = Format_Import(ctx, amount);
    return text.startsWith(QLatin1Char('0')) ? QString() : text;
}

Money openingBalance(const WorkingContext& ctx, std::optional<std::int64_t> entidad) {
    return entidad ? schema::Saldo_Entitat(ctx, QString::number(*entidad)) : Money{};
}

// The movement as the undo actions need it.
struct Movement {
    std::int64_t entidad = 0, cliente = 0, proveedor = 0, frasIn = 0, frasOut = 0, supl = 0,
                 otros = 0;
    QString concepto;
    Money d, h;
};

// Through a connection whose main file is tesorer.mdb.
std::optional<Movement> readMovement(store::Database& db, std::int64_t id) {
    store::Statement st = db.prepare(
        QStringLiteral("select entidad, cliente, proveedor, FrasIn, FrasOut, Supl, Otros, "
                       "concepto, D, H from main.movimientos where Id = ?"));
    st.bind(1, id);
    if (!st.next()) return std::nullopt;
    return Movement{st.int64(0), st.int64(1), st.int64(2), st.int64(3),
                    st.int64(4), st.int64(5), st.int64(6), st.isNull(7) ? QString() : st.text(7),
                    st.money(8), st.money(9)};
}

// The invoice's file as main, tesorer.mdb and the portfolio attached as the money rows
// expect them.
store::Database openInvoiceSide(const WorkingContext& ctx, const schema::MoneySide& side) {
    const bool sale = &side == &schema::kSaleSide;
    store::Database db =
        store::Database::open(ctx.exerciseFile(sale ? schema::db::FrasOut : schema::db::FrasIn));
    db.attach(ctx.exerciseFile(Tesorer), QStringLiteral("tesorer"));
    db.attach(ctx.companyFile(Cartera), QStringLiteral("cartera"));
    return db;
}

// `file` is the invoice file's name on the connection: main, or an alias.
void unsettle(store::Database& db, const schema::MoneySide& side, std::int64_t ordre,
              const QString& file = QStringLiteral("main")) {
    const bool sale = &side == &schema::kSaleSide;
    db.prepare((sale ? QStringLiteral("update %1.FrasOut set Cobrada = 0 where Ordre = ?")
                     : QStringLiteral("update %1.FrasIN set Pagada = 0 where Ordre = ?"))
                   .arg(file))
        .bind(1, ordre)
        .execute();
}

// A return of a return, or of a movement of no invoice, does nothing.
bool returnable(const Movement& m) {
    return m.concepto.left(7) != QLatin1String("Devoluc") && (m.frasOut != 0 || m.frasIn != 0);
}

}  // namespace

namespace {

// A movement as the statement reads it; the counterpart's columns start at 6.
const QString kMovement = QStringLiteral(
    "select m.Id, m.data, m.concepto, m.entidad, m.D, m.H, m.cliente, m.proveedor, m.Otros, "
    "(select cta_entra_otra from otros_movimientos where Asiento = m.Otros limit 1), "
    "(select cta_sale_otra from otros_movimientos where Asiento = m.Otros limit 1) "
    "from movimientos m");

// The names of every counterpart, read once.
struct Counterparts {
    explicit Counterparts(const WorkingContext& ctx)
        : clients(
              namesById(ctx, schema::db::Gest, QStringLiteral("select Client, nom from Clients"))),
          suppliers(namesById(ctx, schema::db::Gest,
                              QStringLiteral("select Proveidor, nom from Proveidors"))),
          others(namesById(ctx, schema::db::Comptes,
                           QStringLiteral("select Compte, NomCompte from Otras"))) {}

    // The customer, else the supplier, else the other account an other movement enters,
    // else the one it leaves; blank for a transfer between treasury accounts.
    QString of(const store::Statement& st) const {
        const auto number = [&](int column) { return st.isNull(column) ? 0 : st.int64(column); };
        if (number(6) != 0) return clients.value(number(6));
        if (number(7) != 0) return suppliers.value(number(7));
        if (number(8) == 0) return {};
        if (number(9) != 0) return others.value(number(9));
        if (number(10) != 0) return others.value(number(10));
        return {};
    }

    Names clients, suppliers, others;
};

}  // namespace

Money Construeix_Extracto(const WorkingContext& ctx, std::optional<std::int64_t> entidad) {
    schema::prepareStatementTable(ctx);
    const Money opening = openingBalance(ctx, entidad);
    Money saldo = opening;
    const Counterparts names(ctx);

    store::Database db = store::Database::open(ctx.exerciseFile(Tesorer));
    store::Transaction tx(db, store::Transaction::Kind::Immediate);
    db.execute(QStringLiteral("delete from movimientos_extracto"));
    QString sql = kMovement;
    if (entidad) sql += QStringLiteral(" where m.entidad = ?");
    sql += QStringLiteral(" order by m.data asc, m.Id asc");
    store::Statement st = db.prepare(sql);
    if (entidad) st.bind(1, *entidad);
    store::Statement insert = db.prepare(QStringLiteral(
        "insert into movimientos_extracto (Id, data, concepto, contrapartida, entidad, D, H, S) "
        "values (?, ?, ?, ?, ?, ?, ?, ?)"));
    while (st.next()) {
        const Money d = st.money(4), h = st.money(5);
        saldo += d - h;
        insert.reset();
        insert.bind(1, st.int64(0));
        if (st.isNull(1))
            insert.bind(2, nullptr);
        else
            insert.bind(2, st.date(1));
        insert.bind(3, st.isNull(2) ? QString() : st.text(2));
        insert.bind(4, names.of(st)).bind(5, st.int64(3)).bind(6, d).bind(7, h).bind(8, saldo);
        insert.execute();
    }
    tx.commit();
    return opening;
}

std::optional<StatementLine> movementLine(const WorkingContext& ctx, std::int64_t id) {
    const Counterparts names(ctx);
    store::Database db = store::Database::open(ctx.exerciseFile(Tesorer));
    store::Statement st = db.prepare(kMovement + QStringLiteral(" where m.Id = ?"));
    st.bind(1, id);
    if (!st.next()) return std::nullopt;
    return StatementLine{
        id,           Format_Data(st.date(1)),      st.isNull(2) ? QString() : st.text(2),
        names.of(st), hiddenZero(ctx, st.money(4)), hiddenZero(ctx, st.money(5)),
        QString()};
}

std::vector<StatementLine> Busca_Extracto(const WorkingContext& ctx,
                                          std::optional<std::int64_t> entidad, const QDate& from,
                                          const QDate& to) {
    const Money opening = Construeix_Extracto(ctx, entidad);
    QStringList conditions;
    if (entidad) conditions << QStringLiteral("entidad = %1").arg(*entidad);
    schema::appendDateAmount(conditions, ctx, {from, to, {}, {}});
    const QString view = QStringLiteral("select * from movimientos_extracto") +
                         schema::whereClause(conditions) +
                         QStringLiteral(" order by data asc, Id asc");

    store::Database db = store::Database::open(ctx.exerciseFile(Tesorer));
    store::createQuery(db, QStringLiteral("Selmovimientos_extracto"), view);
    store::Statement st = db.prepare(QStringLiteral(
        "select Id, data, concepto, contrapartida, D, H, S from Selmovimientos_extracto "
        "order by data asc, Id asc"));
    std::vector<StatementLine> lines;
    while (st.next()) {
        if (lines.empty()) {
            StatementLine first;
            first.concepto = QStringLiteral("Saldo Inicial...");
            first.saldo = Format_Import(ctx, opening);
            lines.push_back(first);
        }
        lines.push_back({st.int64(0), Format_Data(st.date(1)),
                         st.isNull(2) ? QString() : st.text(2),
                         st.isNull(3) ? QString() : st.text(3), hiddenZero(ctx, st.money(4)),
                         hiddenZero(ctx, st.money(5)), Format_Import(ctx, st.money(6))});
    }
    return lines;
}

bool deleteMovement(const WorkingContext& ctx, Dialogs& dialogs, std::int64_t id) {
    const std::optional<Movement> m = [&] {
        store::Database db = store::Database::open(ctx.exerciseFile(Tesorer));
        return readMovement(db, id);
    }();
    if (!m) return false;
    if (m->frasOut != 0 || m->frasIn != 0) {
        const schema::MoneySide& side = m->frasOut != 0 ? schema::kSaleSide : schema::kPurchaseSide;
        const std::int64_t ordre = m->frasOut != 0 ? m->frasOut : m->frasIn;
        {
            store::Database db = openInvoiceSide(ctx, side);
            store::Transaction tx(db, store::Transaction::Kind::Immediate);
            unsettle(db, side, ordre);
            schema::deleteReceipts(db, ctx, side, ordre);
            // Every settlement of the invoice goes with it, partial ones included.
            schema::deleteMovements(db, side, ordre);
            tx.commit();
        }
        if (m->frasOut != 0)
            AddCartera_Venda(ctx, dialogs, QString::number(ordre));
        else
            AddCartera_Compra(ctx, dialogs, QString::number(ordre));
    } else if (m->supl != 0) {
        // The provision goes; its movement is left in the account on purpose.
        store::Database db = store::Database::open(ctx.exerciseFile(schema::db::Supl));
        db.prepare(QStringLiteral("delete from Suplidos where Ordre = ?"))
            .bind(1, m->supl)
            .execute();
    } else if (m->otros != 0) {
        store::Database db = store::Database::open(ctx.exerciseFile(Tesorer));
        store::Transaction tx(db, store::Transaction::Kind::Immediate);
        db.prepare(QStringLiteral("delete from otros_movimientos where Asiento = ?"))
            .bind(1, m->otros)
            .execute();
        db.prepare(QStringLiteral("delete from movimientos where Otros = ?"))
            .bind(1, m->otros)
            .execute();
        tx.commit();
    }
    return true;
}

std::optional<std::int64_t> returnReceipt(const WorkingContext& ctx, std::int64_t id,
                                          const QDate& date) {
    store::Database db = store::Database::open(ctx.exerciseFile(Tesorer));
    const std::optional<Movement> m = readMovement(db, id);
    if (!m || !returnable(*m)) return std::nullopt;
    const bool sale = m->frasOut != 0;
    db.attach(ctx.companyFile(Cartera), QStringLiteral("cartera"));
    db.attach(ctx.exerciseFile(sale ? schema::db::FrasOut : schema::db::FrasIn),
              sale ? kSalesInvoices : kPurchaseInvoices);
    store::Transaction tx(db, store::Transaction::Kind::Immediate);
    const std::optional<std::int64_t> made = writeReturn(db, ctx, id, date);
    tx.commit();
    return made;
}

std::optional<std::int64_t> writeReturn(store::Database& db, const WorkingContext& ctx,
                                        std::int64_t id, const QDate& date) {
    const std::optional<Movement> m = readMovement(db, id);
    if (!m || !returnable(*m)) return std::nullopt;
    const bool sale = m->frasOut != 0;
    const schema::MoneySide& side = sale ? schema::kSaleSide : schema::kPurchaseSide;
    const std::int64_t ordre = sale ? m->frasOut : m->frasIn;
    const std::int64_t party = sale ? m->cliente : m->proveedor;
    const Money amount = sale ? m->d : m->h;
    const QString party_ = QLatin1String(side.party), invoice = QLatin1String(side.invoice);

    unsettle(db, side, ordre, sale ? kSalesInvoices : kPurchaseInvoices);
    bool held = false;
    {
        store::Statement st = db.prepare(
            QStringLiteral("select count(*) from cartera.cartera where %1 = ? and Ejercicio = ?")
                .arg(invoice));
        st.bind(1, ordre).bind(2, ctx.Exercici);
        held = st.next() && st.int64(0) > 0;
    }
    if (held) {
        // Partly collected: what was settled comes down, the total stands.
        db.prepare(
              QStringLiteral("update cartera.cartera set Pendiente = Pendiente - ? where %1 = ? "
                             "and Ejercicio = ?")
                  .arg(invoice))
            .bind(1, amount)
            .bind(2, ordre)
            .bind(3, ctx.Exercici)
            .execute();
    } else {
        db.prepare(
              QStringLiteral("insert into cartera.cartera (data, %1, In_Out, Ejercicio, Factura, "
                             "total, %2) values (?, ?, ?, ?, ?, ?, ?)")
                  .arg(party_, invoice))
            .bind(1, date)
            .bind(2, party)
            .bind(3, QString::fromLatin1(side.inOut))
            .bind(4, ctx.Exercici)
            .bind(5, m->concepto)
            .bind(6, amount)
            .bind(7, ordre)
            .execute();
    }
    const QString concepto =
        (Missatge(ctx, 6985) + (sale ? QStringLiteral(" n/fra. ") : QStringLiteral(" ")) +
         m->concepto)
            .left(schema::kConceptLength);
    db.prepare(
          QStringLiteral("insert into main.movimientos (data, entidad, %1, %2, concepto, D, H) "
                         "values (?, ?, ?, ?, ?, ?, ?)")
              .arg(party_, invoice))
        .bind(1, date)
        .bind(2, m->entidad)
        .bind(3, party)
        .bind(4, ordre)
        .bind(5, concepto)
        .bind(6, sale ? Money{} : amount)
        .bind(7, sale ? amount : Money{})
        .execute();
    return db.lastInsertId();
}

namespace {

QString movementLines(const StatementLine& line) {
    return QStringLiteral("\nID: %1\nDe: %2\nConcep: %3")
        .arg(line.id ? QString::number(*line.id) : QString(), line.contrapartida, line.concepto);
}

}  // namespace

QString deleteMovementQuestion(const WorkingContext& ctx, const StatementLine& line) {
    return Missatge(ctx, 815) + movementLines(line);
}

QString returnReceiptQuestion(const WorkingContext& ctx, const StatementLine& line) {
    return Missatge(ctx, 6987) + movementLines(line);
}

}  // namespace tallora::treasury
