// Throughput of the amount type: parsing what a user types, summing, formatting for display.
#include "context/common_helpers.h"
#include "context/money.h"
#include "context/working_context.h"

#include <benchmark/benchmark.h>

using namespace tallora;

static void BM_ParseAmount(benchmark::State& state) {
    const QString text = QStringLiteral("1.234.567,89");
    for (auto _ : state) benchmark::DoNotOptimize(Money::parse(text, u','));
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_ParseAmount);

static void BM_SumCents(benchmark::State& state) {
    const Money cent = Money::fromUnits(100);
    for (auto _ : state) {
        Money sum;
        for (int i = 0; i < 100000; ++i) sum += cent;
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * 100000);
}
BENCHMARK(BM_SumCents);

static void BM_FormatImport(benchmark::State& state) {
    WorkingContext ctx;
    ctx.Moneda = QStringLiteral("Euros");
    double value = 1234.565;
    for (auto _ : state) {
        benchmark::DoNotOptimize(Format_Import(ctx, value));
        value += 0.01;
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_FormatImport);
