// The report engine on a long book: 10,000 rows with a group every 50 rows, every page with
// its header, column headers, page sums and carried sums. Laying the pages out in memory and
// writing them to a PDF; figures in pages and rows per second.
#include "context/working_context.h"
#include "report/pdf_output.h"
#include "report/report_job.h"
#include "store/database.h"

#include <QDate>
#include <QFile>
#include <QGuiApplication>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

using namespace tallora;

namespace {

constexpr int kRows = 10000;
constexpr int kGroupRows = 50;

const char* const kLayout = R"(# A ledger: one group a customer, a line a movement.
page  size=A4 orientation=portrait left=15 right=15 top=12 bottom=12
font  family="DejaVu Sans" size=8
data  file=0 source=Moviments order="+data"

band page-header height=18
  text x=0   y=0 w=120 size=11 bold value="{@Nom}"
  text x=120 y=0 w=60  align=right value="{@lbl_fecha}"
  text x=0   y=7 w=180 size=14 bold align=center value="{@lbl_titulo}"
band column-header height=7
  box  x=0 y=0 w=180 h=6 fill=#e4e4e4
  text x=0   y=0 w=20 h=6 bold value="Fecha"
  text x=22  y=0 w=100 h=6 bold value="Concepto"
  text x=124 y=0 w=26 h=6 bold align=right value="Importe"
  text x=152 y=0 w=28 h=6 bold align=right value="Saldo"
band group-header field=client height=6 repeat
  text x=0 y=0 w=180 bold value="Cliente {client} {nom}"
band detail height=4.5
  text x=0   y=0 w=20  value="{data|date}"
  text x=22  y=0 w=100 value="{concepte}"
  text x=124 y=0 w=26  align=right value="{import|money}"
  text x=152 y=0 w=28  align=right value="{sum(import, carried)|money}"
band group-footer field=client height=6
  line x1=124 y1=0.5 x2=180 y2=0.5 width=0.2
  text x=0   y=1 w=120 value="Total {nom}: {count(group)} movimientos"
  text x=124 y=1 w=26  align=right bold value="{sum(import, group)|money}"
band page-footer height=8
  line x1=0 y1=1 x2=180 y2=1 width=0.3
  text x=0   y=2 w=120 value="Suma página {sum(import, page)|money}   Suma y sigue {sum(import, carried)|money}"
  text x=120 y=2 w=60  align=right value="{@lbl_pagina} {#page} / {#pages}"
band report-footer height=8
  text x=124 y=1 w=26 align=right bold value="{sum(import, report)|money}"
)";

// A data file and a layout in a temporary folder, made once.
struct Book {
    Book() {
        const QString data = dir.filePath(QStringLiteral("moviments.mdb"));
        store::Database d = store::Database::open(data, store::Database::Mode::CreateIfMissing);
        d.execute(
            QStringLiteral("create table Moviments (client LONG, nom TEXT(40), data DATETIME, "
                           "concepte TEXT(60), import CURRENCY)"));
        store::Transaction t(d);
        store::Statement st =
            d.prepare(QStringLiteral("insert into Moviments values (?, ?, ?, ?, ?)"));
        for (int i = 0; i < kRows; ++i) {
            const int client = i / kGroupRows + 1;
            st.reset();
            st.bind(1, client)
                .bind(2, QStringLiteral("Cliente número %1 S.L.").arg(client))
                .bind(3, QDate(2026, 1, 1).addDays(i / 40))
                .bind(4, QStringLiteral("Factura %1 de servicios del mes").arg(i + 1))
                .bind(5, Money::fromUnits((i % 997 + 1) * 12345LL))
                .execute();
        }
        t.commit();
        QFile layout(dir.filePath(QStringLiteral("ledger.rpt")));
        layout.open(QIODevice::WriteOnly);
        layout.write(kLayout);
        layout.close();
        job.ReportFileName = layout.fileName();
        job.DataFiles[0] = data;
        job.Formulas[0] = QStringLiteral("Nom= 'Comercial Brenwick S.L.'");
        job.Formulas[1] = QStringLiteral("lbl_fecha= '15/03/2026'");
        job.Formulas[2] = QStringLiteral("lbl_titulo= 'EXTRACTO DE CLIENTES'");
        job.Formulas[3] = QStringLiteral("lbl_pagina= 'Página'");
    }
    QTemporaryDir dir;
    report::ReportJob job;
    WorkingContext ctx;
};

Book& book() {
    static Book b;
    return b;
}

void rates(benchmark::State& state, int pages) {
    state.counters["pages"] = pages;
    state.counters["pages/s"] = benchmark::Counter(static_cast<double>(pages) * state.iterations(),
                                                   benchmark::Counter::kIsRate);
    state.counters["rows/s"] = benchmark::Counter(static_cast<double>(kRows) * state.iterations(),
                                                  benchmark::Counter::kIsRate);
}

}  // namespace

static void BM_LayOutPagesInMemory(benchmark::State& state) {
    Book& b = book();
    int pages = 0;
    for (auto _ : state) {
        const report::RenderedReport r = report::renderReport(b.job, b.ctx);
        pages = r.pageCount();
        benchmark::DoNotOptimize(pages);
    }
    rates(state, pages);
}
BENCHMARK(BM_LayOutPagesInMemory)->Unit(benchmark::kMillisecond);

static void BM_RenderToPdf(benchmark::State& state) {
    Book& b = book();
    const QString pdf = b.dir.filePath(QStringLiteral("ledger.pdf"));
    int pages = 0;
    for (auto _ : state) {
        const report::RenderedReport r = report::renderReport(b.job, b.ctx);
        report::writePdf(r, pdf);
        pages = r.pageCount();
    }
    rates(state, pages);
    state.counters["MB"] = QFile(pdf).size() / 1e6;
}
BENCHMARK(BM_RenderToPdf)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv) {
    // Text is measured with real fonts; no screen is needed for that.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
