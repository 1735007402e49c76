#include "portfolio_balances.h"

#include "context/common_helpers.h"
#include "context/money.h"
#include "context/working_context.h"
#include "store/database.h"

namespace tallora::treasury {
namespace {

// `table`/`key` of gest.mdb against `party` of cartera, in one connection and one commit.
void recalculate(const WorkingContext& ctx, const QString& gestPath, const QString& carteraPath,
                 const QString& table, const QString& key, const QString& party) {
    auto db = store::Database::open(gestPath);
    db.attach(carteraPath, QStringLiteral("c"));
    store::Transaction tx(db, store::Transaction::Kind::Immediate);
    auto rows = db.prepare(QStringLiteral("select %1, saldo from %2 order by %1 asc").arg(key, table));
    auto sums = db.prepare(QStringLiteral("select sum(Total), sum(Pendiente) from c.cartera "
                                          "where %1 = ? group by %1").arg(party));
    auto update = db.prepare(QStringLiteral("update %1 set saldo = ? where %2 = ?").arg(table, key));
    while (rows.next()) {
        const std::int64_t id = rows.int64(0);
        sums.reset();
        sums.bind(1, id);
        if (!sums.next()) continue;
        const Money balance = rows.money(1) + sums.money(0) - sums.money(1);
        // Stored as the amount field would show it, and read back from that text.
        const auto shown = Money::parse(Format_Import(ctx, balance), ctx.decimalMark());
        update.reset();
        update.bind(1, shown.value_or(balance)).bind(2, id).execute();
    }
    tx.commit();
}

}  // namespace

void Saldo_Clients(const WorkingContext& ctx, const QString& gestPath, const QString& carteraPath) {
    recalculate(ctx, gestPath, carteraPath, QStringLiteral("Clients"), QStringLiteral("client"),
                QStringLiteral("cliente"));
}

void Saldo_Proveidors(const WorkingContext& ctx, const QString& gestPath,
                      const QString& carteraPath) {
    recalculate(ctx, gestPath, carteraPath, QStringLiteral("Proveidors"),
                QStringLiteral("proveidor"), QStringLiteral("proveedor"));
}

}  // namespace tallora::treasury
