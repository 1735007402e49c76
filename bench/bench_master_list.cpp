// The customers screen on a company with 5,000 customers: how long the list takes to fill
// (OMPLE_LLISTA, as the screen opens and after every save) and to find a name by its first
// letters, the worst case being a name near the end of the list.
#include "context/dialogs.h"
#include "context/working_context.h"
#include "master/ui/customers_form.h"
#include "schema/creation.h"
#include "store/database.h"

#include <QApplication>
#include <QDir>
#include <QLineEdit>
#include <QListWidget>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

using namespace tallora;

namespace {

constexpr int kCustomers = 5000;

struct Company {
    Company() {
        ctx.Directori = dir.filePath(QStringLiteral("2026/"));
        QDir().mkpath(ctx.Directori);
        ctx.Moneda = QStringLiteral("Euros");
        schema::createExerciseDatabases(ctx.Directori);
        store::Database db = store::Database::open(ctx.Directori + schema::db::Gest);
        store::Transaction tx(db);
        store::Statement st =
            db.prepare("insert into Clients (nom, poblacio, NIF) values (?, ?, ?)");
        for (int i = 0; i < kCustomers; ++i) {
            st.reset();
            st.bind(1, QStringLiteral("Cliente %1 de Prueba, S.L.").arg(i, 5, 10, QChar(u'0')))
                .bind(2, QStringLiteral("Granollers"))
                .bind(3, QStringLiteral("B%1").arg(10000000 + i))
                .execute();
        }
        tx.commit();
    }
    QTemporaryDir dir;
    WorkingContext ctx;
    ScriptedDialogs dialogs;
};

Company& company() {
    static Company c;
    return c;
}

}  // namespace

static void BM_OpenCustomersScreen(benchmark::State& state) {
    Company& c = company();
    for (auto _ : state) {
        frmclients form(c.ctx, c.dialogs);
        benchmark::DoNotOptimize(form.list()->count());
    }
    state.counters["customers/s"] =
        benchmark::Counter(kCustomers, benchmark::Counter::kIsIterationInvariantRate);
}
BENCHMARK(BM_OpenCustomersScreen)->Unit(benchmark::kMillisecond);

static void BM_RefillList(benchmark::State& state) {
    Company& c = company();
    frmclients form(c.ctx, c.dialogs);
    for (auto _ : state) form.OMPLE_LLISTA();
    state.counters["customers/s"] =
        benchmark::Counter(kCustomers, benchmark::Counter::kIsIterationInvariantRate);
}
BENCHMARK(BM_RefillList)->Unit(benchmark::kMillisecond);

static void BM_FindByPrefixNearTheEnd(benchmark::State& state) {
    Company& c = company();
    frmclients form(c.ctx, c.dialogs);
    QLineEdit* search = form.searchBox();
    for (auto _ : state) {
        search->setText(QStringLiteral("Cliente 04998"));
        benchmark::DoNotOptimize(form.list()->currentRow());
        search->clear();
    }
}
BENCHMARK(BM_FindByPrefixNearTheEnd)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
