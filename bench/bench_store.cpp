// The store's throughput on the work a posting day and a book do: many sales written in one
// transaction, a sum over all of them, and the open-query-close cycle every operation makes.
#include "schema/creation.h"
#include "store/database.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>

using namespace tallora;

namespace {

constexpr int kSales = 100000;

void insertSales(const QString& path, int count) {
    store::Database db = store::Database::open(path);
    store::Transaction tx(db, store::Transaction::Kind::Immediate);
    store::Statement st = db.prepare(
        "insert into FrasOut (Ordre, data, Client, NomClient, Base1, Iva1, TOTAL, TIva1) "
        "values (?, ?, ?, ?, ?, ?, ?, ?)");
    for (int i = 1; i <= count; ++i) {
        st.reset();
        st.bind(1, i)
            .bind(2, QDate(2026, 1 + i % 12, 1 + i % 28))
            .bind(3, i % 500)
            .bind(4, QStringLiteral("Cliente %1").arg(i % 500))
            .bind(5, Money::fromUnits(1000000))
            .bind(6, Money::fromUnits(210000))
            .bind(7, Money::fromUnits(1210000))
            .bind(8, Money::fromUnits(210000))
            .execute();
    }
    tx.commit();
}

}  // namespace

static void BM_InsertSalesInOneTransaction(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        QTemporaryDir dir;
        schema::createExerciseDatabases(dir.path());
        state.ResumeTiming();
        insertSales(dir.filePath("FrasOUT.mdb"), kSales);
    }
    state.SetItemsProcessed(state.iterations() * kSales);
}
BENCHMARK(BM_InsertSalesInOneTransaction)->Unit(benchmark::kMillisecond);

static void BM_SumTotalOverAllSales(benchmark::State& state) {
    QTemporaryDir dir;
    schema::createExerciseDatabases(dir.path());
    insertSales(dir.filePath("FrasOUT.mdb"), kSales);
    store::Database db = store::Database::open(dir.filePath("FrasOUT.mdb"));
    for (auto _ : state) {
        store::Statement st = db.prepare("select sum(TOTAL) from FrasOut");
        st.next();
        benchmark::DoNotOptimize(st.money(0));
    }
    state.SetItemsProcessed(state.iterations() * kSales);
}
BENCHMARK(BM_SumTotalOverAllSales)->Unit(benchmark::kMillisecond);

static void BM_OpenQueryCloseGest(benchmark::State& state) {
    QTemporaryDir dir;
    schema::createExerciseDatabases(dir.path());
    const QString gest = dir.filePath("gest.mdb");
    {
        store::Database db = store::Database::open(gest);
        for (int i = 0; i < 200; ++i)
            db.prepare("insert into Clients (nom) values (?)")
                .bind(1, QStringLiteral("Cliente %1").arg(i))
                .execute();
    }
    for (auto _ : state) {
        store::Database db = store::Database::open(gest);
        store::Statement st = db.prepare("select nom from Clients where client = ?");
        st.bind(1, 100);
        st.next();
        benchmark::DoNotOptimize(st.text(0));
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_OpenQueryCloseGest)->Iterations(1000);
