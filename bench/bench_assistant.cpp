// The assistant's figures on a generated year of 100,000 sales and 100,000 purchases, 20,000
// receipts in the portfolio and 100,000 treasury movements: what opening an exercise costs.
#include "bench_exercise.h"

#include "shell/assistant_figures.h"
#include "store/database.h"

#include <benchmark/benchmark.h>

#include <functional>

namespace tallora {
namespace {

constexpr int kInvoices = 100000;

BenchExercise& year() {
    static BenchExercise x = [] {
        BenchExercise e;
        const auto fill = [](const QString& file, const QString& sql, int rows,
                             const std::function<void(store::Statement&, int)>& bind) {
            store::Database db = store::Database::open(file);
            store::Transaction tx(db);
            store::Statement st = db.prepare(sql);
            for (int i = 1; i <= rows; ++i) {
                st.reset();
                bind(st, i);
                st.execute();
            }
            tx.commit();
        };
        const auto invoice = [](store::Statement& st, int i) {
            st.bind(1, i)
                .bind(2, QDate(2026, 1, 1).addDays(i % 365))
                .bind(3, Money::fromUnits(1000000 + i));
        };
        fill(e.ctx.exerciseFile(schema::db::FrasOut),
             QStringLiteral("insert into FrasOut (Ordre, data, Total) values (?, ?, ?)"), kInvoices,
             invoice);
        fill(e.ctx.exerciseFile(schema::db::FrasIn),
             QStringLiteral("insert into FrasIN (Ordre, data, TOTAL) values (?, ?, ?)"), kInvoices,
             invoice);
        fill(e.ctx.companyFile(schema::db::Cartera),
             QStringLiteral("insert into cartera (data, cliente, proveedor, In_Out, Ejercicio, "
                            "Total, Pendiente) values ('2026-03-01', ?, ?, 'Out', '2026', ?, 0)"),
             kInvoices / 5, [](store::Statement& st, int i) {
                 st.bind(1, i % 2 ? i : 0).bind(2, i % 2 ? 0 : i).bind(3, Money::fromUnits(i));
             });
        fill(e.ctx.exerciseFile(schema::db::Tesorer),
             QStringLiteral("insert into movimientos (data, entidad, D, H) values "
                            "('2026-05-01', 1, ?, ?)"),
             kInvoices, [](store::Statement& st, int i) {
                 st.bind(1, Money::fromUnits(i % 2 ? 10000 : 0))
                     .bind(2, Money::fromUnits(i % 2 ? 0 : 5000));
             });
        return e;
    }();
    return x;
}

void BM_AssistantFigures(benchmark::State& state) {
    BenchExercise& x = year();
    for (auto _ : state) {
        const shell::AssistantFigures f = shell::assistantFigures(x.ctx);
        if (f.txtVentas.isEmpty() || f.txtsaldobancos == QStringLiteral("0,00"))
            benchFail("assistant", QStringLiteral("the figures came out empty"));
        benchmark::DoNotOptimize(f);
    }
}
BENCHMARK(BM_AssistantFigures)->UseRealTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tallora

BENCHMARK_MAIN();
