// A month of invoicing printed: 1,000 invoices of ten lines, each opened as the sales screen
// opens it (its lines into detalle_temp, its sums) and printed with the classic template to
// a PDF file of its own. Prints invoices per second.
#include "bench_exercise.h"

#include "report/report_job.h"
#include "sales/billing_document.h"
#include "sales/billing_lines.h"
#include "sales/document_printing.h"
#include "store/database.h"

#include <QFileInfo>
#include <QGuiApplication>

#include <benchmark/benchmark.h>

namespace tallora {
namespace {

constexpr int kInvoices = 1000;
constexpr int kLines = 10;

BenchExercise& month() {
    static BenchExercise x = [] {
        BenchExercise e;
        e.ctx.Facturacio = true;
        e.ctx.TipusIVA = {21, 10, 4};
        e.ctx.TipusRE = {5.2, 1.4, 0.5};
        e.ctx.EmpresaNom = QStringLiteral("Ferretería Montseny S.L.");
        e.ctx.resourcesDir = QStringLiteral(TALLORA_SOURCE_DIR "/resources");
        schema::upgradeBilling(e.ctx);
        store::Database gest = store::Database::open(e.ctx.exerciseFile(schema::db::Gest));
        gest.execute(QStringLiteral(
            "insert into Clients (client, nom, direccio, poblacio, cp, NIF) values "
            "(1, 'Construcciones Puig SL', 'C/ Major 12', 'Vic', '08500', 'B11111111')"));
        store::Database fact = store::Database::open(e.ctx.companyFile(schema::db::Fact));
        store::Transaction tx(fact);
        auto header = fact.prepare(QStringLiteral(
            "insert into documentos (Fecha, Client, Ejercicio, Vencimiento, FormaPago, FrasOut) "
            "values (?, 1, 2026, ?, 'Transferencia 30 días', ?)"));
        auto line = fact.prepare(QStringLiteral(
            "insert into detalle (fecha, concepto, unidades, pvp, dto, importe, iva, Client, "
            "Ejercicio, FrasOut) values (?, ?, ?, ?, 0, ?, ?, 1, 2026, ?)"));
        const double rates[] = {21, 21, 21, 10, 10, 4, 21, 21, 0, 21};
        for (int i = 1; i <= kInvoices; ++i) {
            const QDate date = QDate(2026, 3, 1).addDays(i % 31);
            header.reset();
            header.bind(1, date).bind(2, date.addDays(30)).bind(3, i);
            header.execute();
            for (int l = 0; l < kLines; ++l) {
                const Money price = Money::fromUnits(125000 + 2500 * l);
                line.reset();
                line.bind(1, date)
                    .bind(2, QStringLiteral("Artículo de ferretería número %1").arg(l + 1))
                    .bind(3, double(l + 1))
                    .bind(4, price)
                    .bind(5, Money::fromUnits(price.units() * (l + 1)))
                    .bind(6, rates[l])
                    .bind(7, i);
                line.execute();
            }
        }
        tx.commit();
        return e;
    }();
    return x;
}

void BM_InvoicesToPdf(benchmark::State& state) {
    BenchExercise& x = month();
    const sales::RateCaptions captions = sales::rateCaptions(x.ctx, x.ctx.TipusIVA, x.ctx.TipusRE);
    report::ReportJob job;
    int pages = 0;
    for (auto _ : state) {
        for (int i = 1; i <= kInvoices; ++i) {
            sales::SaleEntry e;
            e.txtClient = QStringLiteral("Construcciones Puig SL");
            sales::loadInvoiceDocument(x.ctx, i, e);
            sales::sumLines(x.ctx, e, false);
            const QString pdf = x.dir.filePath(QStringLiteral("factura-%1.pdf").arg(i));
            const report::ReportResult r = sales::Imprimeix_Document(
                x.ctx, x.dialogs, job, nullptr, i, sales::DocType::Factura, e, captions,
                {report::Destination::File, pdf});
            if (!r.ok() || QFileInfo(pdf).size() == 0)
                benchFail("documents", QStringLiteral("invoice %1: %2").arg(i).arg(r.error));
            pages += r.pages;
        }
    }
    state.counters["invoices/s"] =
        benchmark::Counter(double(kInvoices) * state.iterations(), benchmark::Counter::kIsRate);
    state.counters["pages"] = pages;
}
BENCHMARK(BM_InvoicesToPdf)->Iterations(1)->UseRealTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tallora

int main(int argc, char** argv) {
    // Pages are laid out with the fonts of a screen that is not shown.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
