// Posting sales as the sales screen does, one sale at a time: Verifica_Apunt, then GrabaApunt
// with its own transaction across FrasOUT.mdb, tesorer.mdb and cartera.mdb. A company with
// treasury control posts 10,000 sales, a third left pending (a receipt), a third collected (a
// movement) and a third plain (the sale alone, as a company without treasury posts it); then
// 1,000 of them are changed through the change branch, each loaded by Modifica_Venda and
// moved between pending and collected. Then 10,000 purchases the same way through the
// purchases screen's logic (FrasIN.mdb, tesorer.mdb, cartera.mdb), so that purchases/s
// stands beside sales/s in one run.
#include "bench_exercise.h"
#include "context/common_helpers.h"
#include "context/dialogs.h"
#include "context/entry_fields.h"
#include "context/working_context.h"
#include "purchases/purchase_posting.h"
#include "purchases/purchase_validation.h"
#include "sales/sale_change.h"
#include "sales/sale_entry.h"
#include "sales/sale_posting.h"
#include "sales/sale_validation.h"
#include "schema/creation.h"
#include "schema/upgrades.h"
#include "store/database.h"

#include <QDir>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>

using namespace tallora;

namespace {

constexpr int kSales = 10000;
constexpr int kChanges = 1000;
constexpr int kCustomers = 50;
constexpr std::int64_t kBank = 2;

[[noreturn]] void fail(const QString& what) {
    benchFail("bench_posting", what);
}

// An exercise 2026 with treasury on, its customers (every fifth with recargo), one sales
// account, and the bank beside the cash account the treasury set-up makes.
struct Exercise : BenchExercise {
    Exercise() {
        ctx.TipusIVA = {21, 10, 4};
        ctx.TipusRE = {5.2, 1.4, 0.5};
        store::Database gest = store::Database::open(ctx.exerciseFile(schema::db::Gest));
        store::Transaction tx(gest);
        auto st =
            gest.prepare(QStringLiteral("insert into Clients (client, nom, RE) values (?, ?, ?)"));
        for (int i = 1; i <= kCustomers; ++i) {
            st.reset();
            st.bind(1, i).bind(2, customer(i)).bind(3, i % 5 == 0).execute();
        }
        tx.commit();
        store::Database::open(ctx.exerciseFile(schema::db::Comptes))
            .execute(QStringLiteral("insert into Ingresos (Grup, NomGrup, Compte, NomCompte) "
                                    "values (700, 'Ventas', 1, 'Ventas mercaderias')"));
        store::Database::open(ctx.exerciseFile(schema::db::Tesorer))
            .execute(QStringLiteral("insert into entidades (Id, Grup, entidad) "
                                    "values (2, 572, 'Banco Sabadell')"));
    }

    static QString customer(int i) {
        return QStringLiteral("Cliente %1, S.L.").arg(i, 3, 10, QChar(u'0'));
    }

    // Sale i as the screen leaves it once typed.
    sales::SaleEntry sale(int i) const {
        sales::SaleEntry e;
        const int c = 1 + i % kCustomers;
        e.txtDia = QString::number(1 + i % 28);
        e.txtMes = QString::number(1 + i % 12);
        e.txtClient = e.listClientsText = customer(c);
        e.clientNumber = c;
        e.reEnabled = c % 5 == 0;
        e.txtTipus = e.listVendesText = QStringLiteral("Ventas mercaderias");
        e.txtdescripcio = QStringLiteral("-");
        e.venciment = QDate(2026, 12, 31);
        if (i % 3 == 1) {
            e.entitat = QStringLiteral("Banco Sabadell");
            e.entitatId = kBank;
        }
        // The base typed in the column of one of the three rates; quotas and total follow,
        // so that every sale balances to the cent.
        e.txtBase[static_cast<std::size_t>(i / 3 % 3)] =
            QStringLiteral("%1,%2").arg(100 + i % 900).arg(i % 100, 2, 10, QChar(u'0'));
        sales::Recalcula_Apunt(ctx, e, e.reEnabled);
        return e;
    }

    // Verifies and writes, as GrabaApunt on the screen does.
    void post(sales::SaleEntry& e, bool treasury) {
        ctx.Tesoreria = treasury;
        const sales::Verdict verdict = sales::Verifica_Apunt(ctx, dialogs, e, {});
        if (!verdict.ok) fail(QStringLiteral("refused: ") + dialogs.lastText());
        const sales::PostingResult result = sales::GrabaApunt(ctx, e, *verdict.account);
        if (!result.ok()) fail(QStringLiteral("not written: ") + result.error);
        ctx.Tesoreria = true;
    }

    void postAll() {
        for (int i = 0; i < kSales; ++i) {
            sales::SaleEntry e = sale(i);
            post(e, i % 3 != 2);
        }
    }

    // Every posting left its rows: the sales, a receipt for each pending one and a movement
    // for each collected one.
    void checkRows() const {
        const auto count = [](const QString& path, const QString& table) {
            store::Database db = store::Database::open(path);
            auto st = db.prepare(QStringLiteral("select count(*) from ") + table);
            st.next();
            return st.int32(0);
        };
        const int pending = (kSales + 2) / 3, collected = (kSales + 1) / 3;
        if (count(ctx.exerciseFile(schema::db::FrasOut), QStringLiteral("FrasOut")) != kSales ||
            count(ctx.companyFile(schema::db::Cartera), QStringLiteral("cartera")) != pending ||
            count(ctx.exerciseFile(schema::db::Tesorer), QStringLiteral("movimientos")) !=
                collected)
            fail(QStringLiteral("the rows written are not those posted"));
    }
};

}  // namespace

static void BM_PostSales(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        auto exercise = std::make_unique<Exercise>();
        state.ResumeTiming();
        exercise->postAll();
        state.PauseTiming();
        exercise->checkRows();
        exercise.reset();
        state.ResumeTiming();
    }
    state.counters["sales/s"] =
        benchmark::Counter(kSales, benchmark::Counter::kIsIterationInvariantRate);
}
// One pass is 10,000 postings; --benchmark_repetitions asks for more. The rates are of the
// wall clock: each posting waits for its commit to reach the disk.
BENCHMARK(BM_PostSales)->Iterations(1)->UseRealTime()->Unit(benchmark::kMillisecond);

static void BM_ChangeSales(benchmark::State& state) {
    Exercise exercise;
    exercise.postAll();
    exercise.checkRows();
    bool collect = true;
    for (auto _ : state) {
        // Each pass moves 1,000 pending sales to the bank, the next pass back again.
        for (int n = 0; n < kChanges; ++n) {
            const QString number = QString::number(1 + 3 * n);
            auto loaded = sales::Modifica_Venda(exercise.ctx, number);
            if (!loaded) fail(QStringLiteral("no sale ") + number);
            sales::SaleEntry& e = loaded->entry;
            if (collect) {
                e.entitat = QStringLiteral("Banco Sabadell");
                e.entitatId = kBank;
            } else {
                e.entitat.clear();
                e.entitatId.reset();
            }
            exercise.post(e, true);
        }
        collect = !collect;
    }
    // After an even number of passes every changed sale is pending again.
    exercise.checkRows();
    state.counters["changes/s"] =
        benchmark::Counter(kChanges, benchmark::Counter::kIsIterationInvariantRate);
}
BENCHMARK(BM_ChangeSales)->Iterations(2)->UseRealTime()->Unit(benchmark::kMillisecond);

// Purchases of 50 suppliers split at the four purchase rates, a third paid from the bank, a
// third left to pay and a third posted as by a company without treasury.
struct PurchaseExercise : Exercise {
    PurchaseExercise() {
        ctx.TipusIVAs = {21, 10, 4, 0};
        store::Database gest = store::Database::open(ctx.exerciseFile(schema::db::Gest));
        store::Transaction tx(gest);
        auto st =
            gest.prepare(QStringLiteral("insert into Proveidors (proveidor, nom) values (?, ?)"));
        for (int i = 1; i <= kCustomers; ++i) {
            st.reset();
            st.bind(1, i).bind(2, supplier(i)).execute();
        }
        tx.commit();
        store::Database::open(ctx.exerciseFile(schema::db::Comptes))
            .execute(QStringLiteral("insert into Compres (Grup, NomGrup, Compte, NomCompte) "
                                    "values (60, 'Compras', 1, 'Compras mercaderias')"));
    }
    static QString supplier(int i) {
        return QStringLiteral("PROVEEDOR %1, S.L.").arg(i, 3, 10, QChar(u'0'));
    }
    purchases::PurchaseEntry purchase(int i) const {
        purchases::PurchaseEntry e;
        const int s = 1 + i % kCustomers;
        e.group = 0;
        e.txtDia = QString::number(1 + i % 28);
        e.txtMes = QString::number(1 + i % 12);
        e.txtProveidor = e.listProvText = supplier(s);
        e.supplierNumber = s;
        e.txtDespesa = e.listDespesesText = QStringLiteral("COMPRAS MERCADERIAS");
        e.txtdescripcio = QStringLiteral("-");
        e.venciment = QDate(2026, 12, 31);
        if (i % 3 == 1) {
            e.entitat = QStringLiteral("Banco Sabadell");
            e.entitatId = kBank;
        }
        // The base typed in the slot of one of three rates, its quota computed on leaving
        // it, and the total typed to match, so that every purchase balances to the cent. (A
        // total split by the screen may come out a cent above the total, which the check
        // refuses.)
        const auto slot = static_cast<std::size_t>(i / 3 % 3);
        e.txtBase[slot] =
            QStringLiteral("%1,%2").arg(100 + i % 900).arg(i % 100, 2, 10, QChar(u'0'));
        purchases::baseLeft(ctx, e, static_cast<int>(slot));
        e.txtTotal =
            Format_Import(ctx, amountOf(ctx, e.txtBase[slot]) + amountOf(ctx, e.txtIVA[slot]));
        return e;
    }
    void postAll() {
        for (int i = 0; i < kSales; ++i) {
            purchases::PurchaseEntry e = purchase(i);
            ctx.Tesoreria = i % 3 != 2;
            const purchases::Verdict verdict = purchases::Verifica_Apunt(ctx, dialogs, e, {});
            if (!verdict.ok) fail(QStringLiteral("refused: ") + dialogs.lastText());
            const purchases::PostingResult result = purchases::GrabaApunt(ctx, e, *verdict.account);
            if (!result.ok()) fail(QStringLiteral("not written: ") + result.error);
            ctx.Tesoreria = true;
        }
        store::Database db = store::Database::open(ctx.exerciseFile(schema::db::FrasIn));
        auto st = db.prepare(QStringLiteral("select count(*) from FrasIN"));
        st.next();
        if (st.int32(0) != kSales)
            fail(QStringLiteral("the purchases written are not those posted"));
    }
};

static void BM_PostPurchases(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        auto exercise = std::make_unique<PurchaseExercise>();
        state.ResumeTiming();
        exercise->postAll();
        state.PauseTiming();
        exercise.reset();
        state.ResumeTiming();
    }
    state.counters["purchases/s"] =
        benchmark::Counter(kSales, benchmark::Counter::kIsIterationInvariantRate);
}
BENCHMARK(BM_PostPurchases)->Iterations(1)->UseRealTime()->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
