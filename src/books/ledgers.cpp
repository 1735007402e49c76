#include "ledgers.h"

#include "context/money.h"
#include "context/working_context.h"
#include "schema/creation.h"
#include "schema/inquiry_filter.h"
#include "store/database.h"

#include <vector>

namespace tallora::books {
namespace {

using store::Database;

// mayor's texts are cut to their columns here, where the program composes them.
constexpr int kDocument = 40;
constexpr int kName = 80;

QString partyCondition(const QString& column, std::optional<std::int64_t> party,
                       const QString& joiner) {
    return party ? QStringLiteral(" %1 %2 = %3").arg(joiner, column).arg(*party) : QString();
}

// Step 5: the balance runs by account, starting from each account's opening row.
void runBalances(Database& db) {
    auto rows = db.prepare(
        QStringLiteral("select Id, cuenta, D, H, saldo from mayor order by cuenta asc, data asc, "
                       "Id asc"));
    auto update = db.prepare(QStringLiteral("update mayor set saldo = ? where Id = ?"));
    std::optional<std::int64_t> account;
    Money balance;
    std::vector<std::pair<std::int64_t, Money>> balances;
    while (rows.next()) {
        const std::int64_t cuenta = rows.int64(1);
        if (account != cuenta) {
            account = cuenta;
            balance = rows.money(4);
        }
        balance += rows.money(2) - rows.money(3);
        balances.emplace_back(rows.int64(0), balance);
    }
    rows.reset();
    for (const auto& [id, value] : balances) {
        update.reset();
        update.bind(1, value).bind(2, id);
        update.execute();
    }
}

Database openMayor(const WorkingContext& ctx, const QString& invoices) {
    Database db = Database::open(ctx.exerciseFile(schema::db::Tesorer));
    db.attach(ctx.exerciseFile(invoices), QStringLiteral("fras"));
    db.attach(ctx.exerciseFile(schema::db::Gest), QStringLiteral("gest"));
    return db;
}

QDate firstOfYear(const WorkingContext& ctx) {
    return QDate(ctx.Exercici.toInt(), 1, 1);
}

}  // namespace

void Genera_Mayor_Clients(const WorkingContext& ctx, std::optional<std::int64_t> client) {
    Database db = openMayor(ctx, schema::db::FrasOut);
    store::Transaction tx(db, store::Transaction::Kind::Immediate);
    db.execute(QStringLiteral("delete from mayor"));
    db.prepare(QStringLiteral("insert into mayor (data, cuenta, nombrecuenta, contrapartida, "
                              "documento, D, H, saldo) select ?, client, nom, '-', "
                              "'Saldo inicial ...', 0, 0, coalesce(saldo, 0) from gest.clients%1 "
                              "order by client asc")
                   .arg(partyCondition(QStringLiteral("client"), client, QStringLiteral("where"))))
        .bind(1, firstOfYear(ctx))
        .execute();
    // The counter-account is "700." whatever the invoice's group.
    db.execute(
        QStringLiteral("insert into mayor (data, cuenta, nombrecuenta, contrapartida, "
                       "documento, D, H) select data, Client, NomClient, "
                       "substr('700.' || Compte || ' - ' || coalesce(NomCompte, ''), 1, %1), "
                       "substr('N/fra. ' || coalesce(Descripcio, ''), 1, %2), TOTAL, 0 "
                       "from fras.FrasOut%3 order by Client asc, data asc, Ordre asc")
            .arg(kName)
            .arg(kDocument)
            .arg(partyCondition(QStringLiteral("Client"), client, QStringLiteral("where"))));
    // A collection falls on the side opposite to the bank's, hence D and H crossed. A return
    // keeps its own text ("Devolución ..."), case and all.
    db.execute(
        QStringLiteral(
            "insert into mayor (data, cuenta, nombrecuenta, contrapartida, documento, D, H) "
            "select m.data, m.cliente, coalesce(c.nom, ''), "
            "substr('57.' || m.entidad || ' - ' || coalesce(e.entidad, ''), 1, %1), "
            "substr(case when substr(m.concepto, 1, 7) = 'Devoluc' collate binary "
            "then m.concepto else 'Pag. ' || coalesce(m.concepto, '') end, 1, %2), m.H, m.D "
            "from movimientos m left join entidades e on e.Id = m.entidad "
            "left join gest.clients c on c.client = m.cliente where m.cliente <> 0%3 "
            "order by m.data asc, m.Id asc")
            .arg(kName)
            .arg(kDocument)
            .arg(partyCondition(QStringLiteral("m.cliente"), client, QStringLiteral("and"))));
    runBalances(db);
    tx.commit();
}

void Genera_Mayor_Proveidors(const WorkingContext& ctx, std::optional<std::int64_t> proveidor) {
    Database db = openMayor(ctx, schema::db::FrasIn);
    store::Transaction tx(db, store::Transaction::Kind::Immediate);
    db.execute(QStringLiteral("delete from mayor"));
    db.prepare(
          QStringLiteral("insert into mayor (data, cuenta, nombrecuenta, contrapartida, "
                         "documento, D, H, saldo) select ?, proveidor, nom, '-', "
                         "'Saldo inicial ...', 0, 0, coalesce(saldo, 0) from "
                         "gest.Proveidors%1 order by proveidor asc")
              .arg(partyCondition(QStringLiteral("proveidor"), proveidor, QStringLiteral("where"))))
        .bind(1, firstOfYear(ctx))
        .execute();
    // No date order here: the balance's order supplies it.
    db.execute(
        QStringLiteral("insert into mayor (data, cuenta, nombrecuenta, contrapartida, "
                       "documento, D, H) select data, Proveidor, NomProveidor, "
                       "substr(Grup || '.' || Compte || ' - ' || coalesce(NomCompte, ''), "
                       "1, %1), substr(coalesce(Descripcio, ''), 1, %2), 0, TOTAL "
                       "from fras.FrasIN%3 order by Proveidor asc")
            .arg(kName)
            .arg(kDocument)
            .arg(partyCondition(QStringLiteral("Proveidor"), proveidor, QStringLiteral("where"))));
    // Suppliers have no returns: every payment is "Pag. ".
    db.execute(
        QStringLiteral(
            "insert into mayor (data, cuenta, nombrecuenta, contrapartida, documento, D, H) "
            "select m.data, m.proveedor, coalesce(p.nom, ''), "
            "substr('57.' || m.entidad || ' - ' || coalesce(e.entidad, ''), 1, %1), "
            "substr('Pag. ' || coalesce(m.concepto, ''), 1, %2), m.H, m.D "
            "from movimientos m left join entidades e on e.Id = m.entidad "
            "left join gest.Proveidors p on p.proveidor = m.proveedor where m.proveedor <> 0%3 "
            "order by m.data asc, m.Id asc")
            .arg(kName)
            .arg(kDocument)
            .arg(partyCondition(QStringLiteral("m.proveedor"), proveidor, QStringLiteral("and"))));
    runBalances(db);
    tx.commit();
}

void Filtra_FrasOUT(const WorkingContext& ctx, std::optional<std::int64_t> client) {
    Database db = Database::open(ctx.exerciseFile(schema::db::FrasOut));
    schema::replaceSelFras(
        db,
        QStringLiteral("select * from frasOUT ") +
            partyCondition(QStringLiteral("client"), client, QStringLiteral("where")).trimmed());
}

void Filtra_FrasIN(const WorkingContext& ctx, std::optional<std::int64_t> proveidor) {
    Database db = Database::open(ctx.exerciseFile(schema::db::FrasIn));
    schema::replaceSelFras(
        db, QStringLiteral("select * from frasIN ") +
                partyCondition(QStringLiteral("proveidor"), proveidor, QStringLiteral("where"))
                    .trimmed());
}

}  // namespace tallora::books
