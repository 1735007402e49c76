// Treasury at the sizes a busy shop reaches: a collection run that settles 5,000 receipts in
// one transaction (the run screen's Contabilizar), and the statement of an account with
// 100,000 movements, built into its work table and read back as the screen's lines. Each is
// set beside the raw SQLite cost of the same writes or the same ordered scan, through the C
// API with one prepared statement, and the ratios are printed at the end.
#include "bench_exercise.h"
#include "context/dialogs.h"
#include "context/working_context.h"
#include "schema/creation.h"
#include "schema/upgrades.h"
#include "store/database.h"
#include "treasury/account_statement.h"
#include "treasury/runs.h"

#include <QDir>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>

using namespace tallora;

namespace {

constexpr int kReceipts = 5000;
constexpr int kMovements = 100000;
constexpr std::int64_t kBank = 2;

std::map<std::string, double>& seconds() {
    static std::map<std::string, double> s;
    return s;
}

[[noreturn]] void fail(const char* what) {
    benchFail("bench_treasury", QString::fromUtf8(what));
}

// An exercise 2026 with treasury, one customer, the bank, and what each case needs.
struct Exercise : BenchExercise {
    Exercise() {
        store::Database::open(ctx.exerciseFile(schema::db::Gest))
            .execute(QStringLiteral("insert into Clients (client, nom) values (1, 'Bar Centre')"));
        store::Database::open(ctx.exerciseFile(schema::db::Tesorer))
            .execute(QStringLiteral("insert into entidades (Id, Grup, entidad, Saldo) values "
                                    "(2, 572, 'Banco Norte', 10000000)"));
    }

    // 5,000 sales to collect and their receipts, all in the collection draft.
    void receiptsInDraft() {
        store::Database sales = store::Database::open(ctx.exerciseFile(schema::db::FrasOut));
        store::Transaction salesTx(sales);
        auto sale = sales.prepare(QStringLiteral(
            "insert into FrasOut (Ordre, data, Client, Total, Descripcio, Cobrada, Marca) "
            "values (?, '2026-03-01', 1, ?, ?, 0, 0)"));
        store::Database cartera = store::Database::open(ctx.companyFile(schema::db::Cartera));
        store::Transaction carteraTx(cartera);
        auto receipt = cartera.prepare(QStringLiteral(
            "insert into cartera (data, cliente, In_Out, Ejercicio, Factura, Total, FrasOut) "
            "values ('2026-03-01', 1, 'Out', '2026', ?, ?, ?)"));
        for (int i = 1; i <= kReceipts; ++i) {
            const Money total = Money::fromUnits(100000 + i);
            const QString factura = QStringLiteral("F-%1").arg(i);
            sale.reset();
            sale.bind(1, i).bind(2, total).bind(3, factura).execute();
            receipt.reset();
            receipt.bind(1, factura).bind(2, total).bind(3, i).execute();
        }
        salesTx.commit();
        carteraTx.commit();
        treasury::Passa_Tots(ctx, treasury::kCollections);
    }

    // 100,000 movements of the bank over the year, every tenth of the customer.
    void movements() {
        store::Database db = store::Database::open(ctx.exerciseFile(schema::db::Tesorer));
        store::Transaction tx(db);
        auto st =
            db.prepare(QStringLiteral("insert into movimientos (data, entidad, cliente, concepto, "
                                      "D, H) values (?, ?, ?, ?, ?, ?)"));
        for (int i = 0; i < kMovements; ++i) {
            st.reset();
            st.bind(1, QDate(2026, 1, 1).addDays(i % 365))
                .bind(2, kBank)
                .bind(3, i % 10 == 0 ? 1 : 0);
            st.bind(4, QStringLiteral("Movimiento %1").arg(i));
            st.bind(5, Money::fromUnits(i % 2 ? 12345 : 0))
                .bind(6, Money::fromUnits(i % 2 ? 0 : 6789));
            st.execute();
        }
        tx.commit();
    }

    int count(const QString& path, const char* table) const {
        store::Database db = store::Database::open(path);
        auto st = db.prepare(QStringLiteral("select count(*) from ") + QLatin1String(table));
        st.next();
        return st.int32(0);
    }
};

sqlite3* openRaw(const QString& path) {
    sqlite3* db = nullptr;
    if (sqlite3_open(path.toUtf8().constData(), &db) != SQLITE_OK) fail("open");
    return db;
}

void exec(sqlite3* db, const char* sql) {
    if (sqlite3_exec(db, sql, nullptr, nullptr, nullptr) != SQLITE_OK) fail(sqlite3_errmsg(db));
}

}  // namespace

static void BM_CollectionRun(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        Exercise x;
        x.receiptsInDraft();
        state.ResumeTiming();
        const auto start = std::chrono::steady_clock::now();
        const treasury::RunOutcome run = treasury::Contabilizar(
            x.ctx, x.dialogs, treasury::kCollections, kBank, QDate(2026, 4, 1));
        seconds()["run"] =
            std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        state.PauseTiming();
        if (run.refusal || run.settlements.size() != kReceipts ||
            x.count(x.ctx.exerciseFile(schema::db::Tesorer), "movimientos") != kReceipts ||
            x.count(x.ctx.companyFile(schema::db::Cartera), "cartera") != 0)
            fail("the run did not settle every receipt");
        state.ResumeTiming();
    }
    state.counters["receipts/s"] =
        benchmark::Counter(kReceipts, benchmark::Counter::kIsIterationInvariantRate);
}
BENCHMARK(BM_CollectionRun)->Iterations(1)->UseRealTime()->Unit(benchmark::kMillisecond);

// The same writes with nothing around them: a movement, the invoice's flags and the
// receipt's deletion for each of 5,000 receipts, in one transaction over the three files.
static void BM_RawCollectionWrites(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        Exercise x;
        x.receiptsInDraft();
        sqlite3* db = openRaw(x.ctx.exerciseFile(schema::db::Tesorer));
        const std::string attach =
            "attach '" + x.ctx.companyFile(schema::db::Cartera).toStdString() + "' as c; attach '" +
            x.ctx.exerciseFile(schema::db::FrasOut).toStdString() + "' as f;";
        exec(db, attach.c_str());
        state.ResumeTiming();
        const auto start = std::chrono::steady_clock::now();
        exec(db, "begin immediate");
        sqlite3_stmt *move = nullptr, *flag = nullptr, *drop = nullptr;
        sqlite3_prepare_v2(
            db,
            "insert into main.movimientos (data, entidad, cliente, FrasOut, concepto, D, H) "
            "values ('2026-04-01', 2, 1, ?, 'N/Fra. F', ?, 0)",
            -1, &move, nullptr);
        sqlite3_prepare_v2(db, "update f.FrasOut set Cobrada = -1, Marca = -1 where Ordre = ?", -1,
                           &flag, nullptr);
        sqlite3_prepare_v2(db, "delete from c.cartera where Id = ?", -1, &drop, nullptr);
        for (int i = 1; i <= kReceipts; ++i) {
            sqlite3_bind_int64(move, 1, i);
            sqlite3_bind_int64(move, 2, 100000 + i);
            sqlite3_bind_int64(flag, 1, i);
            sqlite3_bind_int64(drop, 1, i);
            for (sqlite3_stmt* st : {move, flag, drop}) {
                if (sqlite3_step(st) != SQLITE_DONE) fail(sqlite3_errmsg(db));
                sqlite3_reset(st);
            }
        }
        for (sqlite3_stmt* st : {move, flag, drop}) sqlite3_finalize(st);
        exec(db, "commit");
        seconds()["raw run"] =
            std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        state.PauseTiming();
        sqlite3_close(db);
        state.ResumeTiming();
    }
}
BENCHMARK(BM_RawCollectionWrites)->Iterations(1)->UseRealTime()->Unit(benchmark::kMillisecond);

static void BM_Statement(benchmark::State& state) {
    Exercise x;
    x.movements();
    for (auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        const auto lines =
            treasury::Busca_Extracto(x.ctx, kBank, QDate(2026, 1, 1), QDate(2026, 12, 31));
        seconds()["statement"] =
            std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        if (lines.size() != kMovements + 1) fail("the statement lacks lines");
    }
    state.counters["lines/s"] =
        benchmark::Counter(kMovements, benchmark::Counter::kIsIterationInvariantRate);
}
BENCHMARK(BM_Statement)->Iterations(1)->UseRealTime()->Unit(benchmark::kMillisecond);

// The same ordered scan of the account's movements, each row's columns read.
static void BM_RawStatementScan(benchmark::State& state) {
    Exercise x;
    x.movements();
    sqlite3* db = openRaw(x.ctx.exerciseFile(schema::db::Tesorer));
    for (auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        sqlite3_stmt* st = nullptr;
        sqlite3_prepare_v2(db,
                           "select Id, data, concepto, D, H from movimientos where entidad = 2 "
                           "order by data asc, Id asc",
                           -1, &st, nullptr);
        std::int64_t sum = 0;
        int rows = 0;
        while (sqlite3_step(st) == SQLITE_ROW) {
            sum += sqlite3_column_int64(st, 3) - sqlite3_column_int64(st, 4);
            benchmark::DoNotOptimize(sqlite3_column_text(st, 1));
            benchmark::DoNotOptimize(sqlite3_column_text(st, 2));
            ++rows;
        }
        sqlite3_finalize(st);
        benchmark::DoNotOptimize(sum);
        seconds()["raw scan"] =
            std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        if (rows != kMovements) fail("the scan lacks rows");
    }
    sqlite3_close(db);
}
BENCHMARK(BM_RawStatementScan)->Iterations(1)->UseRealTime()->Unit(benchmark::kMillisecond);

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    const auto ratio = [](const char* what, const char* ours, const char* raw) {
        const auto& s = seconds();
        if (s.count(ours) && s.count(raw) && s.at(raw) > 0)
            std::printf("%s: %.1f times the raw SQLite cost (%.0f ms against %.0f ms)\n", what,
                        s.at(ours) / s.at(raw), s.at(ours) * 1000, s.at(raw) * 1000);
    };
    ratio("collection run of 5,000 receipts", "run", "raw run");
    ratio("statement of 100,000 movements", "statement", "raw scan");
    return 0;
}
