// The sales inquiry over a year of 100,000 sales of 500 customers: the search with a
// customer filter (the view made anew and read), and the same search filling the screen's
// grid, as a user waits for it.
#include "bench_exercise.h"

#include "sales/sale_inquiry.h"
#include "sales/ui/form_cons_out.h"
#include "store/database.h"

#include <QApplication>
#include <QComboBox>
#include <QTableWidget>

#include <benchmark/benchmark.h>

namespace tallora {
namespace {

constexpr int kSales = 100000;
constexpr int kCustomers = 500;

QString customerName(int n) {
    return QStringLiteral("Cliente %1").arg(n, 3, 10, QLatin1Char('0'));
}

BenchExercise& year() {
    static BenchExercise x = [] {
        BenchExercise e;
        store::Database gest = store::Database::open(e.ctx.exerciseFile(schema::db::Gest));
        store::Transaction gt(gest);
        store::Statement customer =
            gest.prepare(QStringLiteral("insert into Clients (client, nom) values (?, ?)"));
        for (int c = 1; c <= kCustomers; ++c) {
            customer.reset();
            customer.bind(1, c).bind(2, customerName(c));
            customer.execute();
        }
        gt.commit();
        store::Database db = store::Database::open(e.ctx.exerciseFile(schema::db::FrasOut));
        store::Transaction tx(db);
        store::Statement st = db.prepare(QStringLiteral(
            "insert into FrasOut (Ordre, data, Client, NomClient, NomCompte, Descripcio, Total) "
            "values (?, ?, ?, ?, 'Ventas de mercaderías', ?, ?)"));
        for (int i = 1; i <= kSales; ++i) {
            const int c = 1 + i % kCustomers;
            st.reset();
            st.bind(1, i)
                .bind(2, QDate(2026, 1, 1).addDays(i % 365))
                .bind(3, c)
                .bind(4, customerName(c))
                .bind(5, QStringLiteral("F-%1").arg(i))
                .bind(6, Money::fromUnits(1000000 + i));
            st.execute();
        }
        tx.commit();
        return e;
    }();
    return x;
}

void BM_SearchOneCustomer(benchmark::State& state) {
    BenchExercise& x = year();
    sales::SaleFilter filter;
    filter.customer = customerName(250);
    for (auto _ : state) {
        const sales::SaleSearch found = sales::Busca_Vendes(x.ctx, filter);
        if (found.rows.size() != kSales / kCustomers)
            benchFail("sales inquiry",
                      QStringLiteral("the search found %1 sales").arg(found.rows.size()));
    }
}
BENCHMARK(BM_SearchOneCustomer)->UseRealTime()->Unit(benchmark::kMillisecond);

// The customer chosen in the screen's list: the search and the grid filled, as shown.
void BM_GridOfOneCustomer(benchmark::State& state) {
    BenchExercise& x = year();
    FormConsOUT form(x.ctx, x.dialogs);
    auto* customers = form.findChild<QComboBox*>(QStringLiteral("CmbClients"));
    const int index = customers->findText(customerName(250));
    for (auto _ : state) {
        customers->setCurrentIndex(-1);
        customers->setCurrentIndex(index);
        form.Buscar();
        if (form.grid()->rowCount() != kSales / kCustomers)
            benchFail("sales inquiry",
                      QStringLiteral("the grid shows %1 sales").arg(form.grid()->rowCount()));
    }
}
BENCHMARK(BM_GridOfOneCustomer)->UseRealTime()->Unit(benchmark::kMillisecond);

// Every sale in the grid: the slowest search the screen offers.
void BM_GridOfTheWholeYear(benchmark::State& state) {
    BenchExercise& x = year();
    FormConsOUT form(x.ctx, x.dialogs);
    for (auto _ : state) {
        form.Buscar();
        if (form.grid()->rowCount() != kSales)
            benchFail("sales inquiry",
                      QStringLiteral("the grid shows %1 sales").arg(form.grid()->rowCount()));
    }
}
BENCHMARK(BM_GridOfTheWholeYear)->Iterations(3)->UseRealTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tallora

int main(int argc, char** argv) {
    // A screen is measured, not shown: no display is needed.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
