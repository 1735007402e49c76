// The books on a generated year of 100,000 invoices, posted by the screens' own rules: the
// journal rebuilt on both sides, the sales book and the purchases book of the second quarter
// made and read as they are printed (stored query, rows in the printed order, footer
// summary), and that sales book printed to a PDF. Each is set beside the raw SQLite cost of
// the same work in the same run, through the C API with one prepared statement: the
// journal's rows inserted from memory into an empty Diari in one transaction, and each book's
// rows and per-rate sums read straight from Diari. The ratios and the pages per second are
// printed at the end; the aim is the journal within 3 times its raw cost and each book within
// 3 times its query. The statements of the year (operating statement, summary of balances,
// ledger of every customer) are set beside the same grouped sums or ordered scans.
#include "bench_exercise.h"
#include "books/journal_builder.h"
#include "books/ledgers.h"
#include "books/operating_statement.h"
#include "books/trial_balance.h"
#include "books/vat_book_queries.h"
#include "books/vat_books.h"
#include "context/dialogs.h"
#include "context/file_tree.h"
#include "context/list_files.h"
#include "context/working_context.h"
#include "raw_sqlite.h"
#include "report/report_job.h"
#include "schema/creation.h"
#include "shell/sample_exercise.h"
#include "stopwatch.h"
#include "store/database.h"

#include <QDate>
#include <QDir>
#include <QGuiApplication>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <cstdint>
#include <cstdio>
#include <exception>
#include <map>
#include <string>
#include <vector>

using namespace tallora;

namespace {

constexpr int kInvoices = 100000;
// The second quarter.
constexpr int kFrom = 4;
constexpr int kTo = 6;
constexpr const char* kFirstDay = "2026-04-01";
constexpr const char* kLastDay = "2026-06-30";
constexpr double kGoal = 3;

[[noreturn]] void fail(const QString& what) {
    benchFail("bench_books", what);
}

// The pages of the printed book.
int printedPages = 0;

// A company with treasury and its exercise 2026 as the start leaves them, with the rates of
// the day, the sample year posted and the journal built once.
struct Year {
    Year() {
        ctx.resourcesDir = QStringLiteral(TALLORA_SOURCE_DIR "/resources/");

        try {
            shell::openSampleCompany(ctx, dialogs, dir.path(), QDate(2026, 7, 1));
        } catch (const std::exception& e) {
            fail(QString::fromUtf8(e.what()));
        }

        std::fprintf(stderr, "bench_books: posting %d invoices...\n", kInvoices);
        shell::SampleOptions options;
        options.invoices = kInvoices;
        options.seed = 1;
        try {
            sample = shell::fillSampleExercise(ctx, options);
        } catch (const std::exception& e) {
            fail(QString::fromUtf8(e.what()));
        }
        books::Genera_Diari_Vendes(ctx);
        books::Genera_Diari_Compres(ctx);
        journalRows = journalCount();
        if (journalRows < kInvoices) fail(QStringLiteral("the journal lacks rows"));
    }

    QString llibre() const { return ctx.exerciseFile(schema::db::Llibre); }

    std::int64_t journalCount() const {
        store::Database db = store::Database::open(llibre());
        store::Statement st = db.prepare(QStringLiteral("select count(*) from Diari"));
        st.next();
        return st.int64(0);
    }

    QTemporaryDir dir;
    WorkingContext ctx;
    ScriptedDialogs dialogs;
    shell::SampleSummary sample;
    std::int64_t journalRows = 0;
    // The rows each book printed, for the raw queries to match.
    int salesRows = 0, purchaseRows = 0;
};

Year& year() {
    static Year y;
    return y;
}

using raw::exec;
using raw::prepare;
sqlite3* openRaw(const QString& path) {
    return raw::open(path);
}

// --- The journal's rows in memory ------------------------------------------------------

// Every row of Diari as the builders leave it, in the order they wrote it, column by column
// in one array; texts in one buffer.
struct JournalInMemory {
    struct Cell {
        std::int64_t value = 0;  // an integer, or where the text begins in `texts`
        std::uint32_t size = 0;  // the text's bytes
        int type = SQLITE_NULL;
    };
    std::vector<std::string> columns;  // all but the key the table numbers itself
    std::vector<Cell> cells;
    std::string texts;
    std::int64_t rows = 0;
    QTemporaryDir dir;  // where the empty copy of the table lives
    QString copy;
};

JournalInMemory& journal() {
    static JournalInMemory j = [] {
        JournalInMemory m;
        sqlite3* db = openRaw(year().llibre());
        sqlite3_stmt* names =
            prepare(db, "select name from pragma_table_info('Diari') where pk = 0 order by cid");
        while (sqlite3_step(names) == SQLITE_ROW)
            m.columns.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(names, 0)));
        sqlite3_finalize(names);
        std::string list;
        for (const std::string& c : m.columns) list += (list.empty() ? "" : ", ") + c;
        sqlite3_stmt* rows = prepare(db, "select " + list + " from Diari order by rowid");
        const int width = static_cast<int>(m.columns.size());
        while (sqlite3_step(rows) == SQLITE_ROW) {
            for (int c = 0; c < width; ++c) {
                JournalInMemory::Cell cell;
                cell.type = sqlite3_column_type(rows, c);
                if (cell.type == SQLITE_INTEGER) {
                    cell.value = sqlite3_column_int64(rows, c);
                } else if (cell.type == SQLITE_TEXT) {
                    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(rows, c));
                    cell.value = static_cast<std::int64_t>(m.texts.size());
                    cell.size = static_cast<std::uint32_t>(sqlite3_column_bytes(rows, c));
                    m.texts.append(text, cell.size);
                } else if (cell.type != SQLITE_NULL) {
                    fail(QStringLiteral("a journal column holds neither integer nor text"));
                }
                m.cells.push_back(cell);
            }
            ++m.rows;
        }
        sqlite3_finalize(rows);
        sqlite3_close(db);
        if (m.rows != year().journalRows) fail(QStringLiteral("the journal was not read whole"));

        // The empty copy: the same table, columns, checks and indexes in a file of its own.
        WorkingContext other;
        other.Directori = withTrailingSlash(m.dir.path());
        books::prepareJournal(other);
        m.copy = other.exerciseFile(schema::db::Llibre);
        return m;
    }();
    return j;
}

std::int64_t countRows(sqlite3* db, const char* sql) {
    sqlite3_stmt* st = prepare(db, sql);
    const std::int64_t n = sqlite3_step(st) == SQLITE_ROW ? sqlite3_column_int64(st, 0) : -1;
    sqlite3_finalize(st);
    return n;
}

// --- The quarter straight from Diari --------------------------------------------------

// Reads every column of every row as the book's rows are read: texts as texts, numbers as
// numbers. Gives the rows read.
int scanRows(sqlite3* db, const char* sql) {
    sqlite3_stmt* st = prepare(db, sql);
    sqlite3_bind_text(st, 1, kFirstDay, -1, SQLITE_STATIC);
    sqlite3_bind_text(st, 2, kLastDay, -1, SQLITE_STATIC);
    const int width = sqlite3_column_count(st);
    int rows = 0;
    std::int64_t sum = 0;
    while (sqlite3_step(st) == SQLITE_ROW) {
        for (int c = 0; c < width; ++c) {
            if (sqlite3_column_type(st, c) == SQLITE_TEXT)
                benchmark::DoNotOptimize(sqlite3_column_text(st, c));
            else
                sum += sqlite3_column_int64(st, c);
        }
        ++rows;
    }
    sqlite3_finalize(st);
    benchmark::DoNotOptimize(sum);
    return rows;
}

// The per-rate sums of the footer. Gives the rates found.
int rateSums(sqlite3* db, const char* sql) {
    sqlite3_stmt* st = prepare(db, sql);
    sqlite3_bind_text(st, 1, kFirstDay, -1, SQLITE_STATIC);
    sqlite3_bind_text(st, 2, kLastDay, -1, SQLITE_STATIC);
    const int width = sqlite3_column_count(st);
    int rates = 0;
    std::int64_t sum = 0;
    while (sqlite3_step(st) == SQLITE_ROW) {
        for (int c = 0; c < width; ++c) sum += sqlite3_column_int64(st, c);
        ++rates;
    }
    sqlite3_finalize(st);
    benchmark::DoNotOptimize(sum);
    return rates;
}

// The ratio of our time to the raw one beside it, once both have run.
void ratioCounter(benchmark::State& state, const char* ours, const char* raw) {
    const auto& s = seconds();
    if (s.count(ours) && s.count(raw) && s.at(raw) > 0) {
        state.counters["x raw"] = s.at(ours) / s.at(raw);
        state.SetLabel("goal: within 3 times the raw cost");
    }
}

}  // namespace

// --- The journal ------------------------------------------------------------------------

static void BM_JournalRebuild(benchmark::State& state) {
    Year& y = year();
    for (auto _ : state) {
        Stopwatch watch("journal");
        books::Genera_Diari_Vendes(y.ctx);
        books::Genera_Diari_Compres(y.ctx);
        watch.stop();
        state.PauseTiming();
        if (y.journalCount() != y.journalRows) fail(QStringLiteral("the rebuild lost rows"));
        state.ResumeTiming();
    }
    state.counters["rows"] = static_cast<double>(y.journalRows);
    state.counters["rows/s"] = benchmark::Counter(static_cast<double>(y.journalRows),
                                                  benchmark::Counter::kIsIterationInvariantRate);
    state.counters["invoices/s"] =
        benchmark::Counter(kInvoices, benchmark::Counter::kIsIterationInvariantRate);
}
BENCHMARK(BM_JournalRebuild)->Iterations(3)->UseRealTime()->Unit(benchmark::kMillisecond);

// The same rows from an array in memory into an empty Diari: one transaction, one prepared
// insert, every column bound.
static void BM_RawJournalInsert(benchmark::State& state) {
    const JournalInMemory& j = journal();
    sqlite3* db = openRaw(j.copy);
    std::string names, marks;
    for (const std::string& c : j.columns) {
        names += (names.empty() ? "" : ", ") + c;
        marks += marks.empty() ? "?" : ", ?";
    }
    const std::string sql = "insert into Diari (" + names + ") values (" + marks + ")";
    const int width = static_cast<int>(j.columns.size());
    for (auto _ : state) {
        state.PauseTiming();
        exec(db, "delete from Diari");
        state.ResumeTiming();
        Stopwatch watch("raw journal");
        exec(db, "begin immediate");
        sqlite3_stmt* insert = prepare(db, sql);
        const JournalInMemory::Cell* cell = j.cells.data();
        for (std::int64_t row = 0; row < j.rows; ++row) {
            for (int c = 1; c <= width; ++c, ++cell) {
                if (cell->type == SQLITE_INTEGER)
                    sqlite3_bind_int64(insert, c, cell->value);
                else if (cell->type == SQLITE_TEXT)
                    sqlite3_bind_text(insert, c, j.texts.data() + cell->value,
                                      static_cast<int>(cell->size), SQLITE_STATIC);
                else
                    sqlite3_bind_null(insert, c);
            }
            if (sqlite3_step(insert) != SQLITE_DONE) fail(QString::fromUtf8(sqlite3_errmsg(db)));
            sqlite3_reset(insert);
        }
        sqlite3_finalize(insert);
        exec(db, "commit");
        watch.stop();
        state.PauseTiming();
        if (countRows(db, "select count(*) from Diari") != j.rows)
            fail(QStringLiteral("the raw insert lost rows"));
        state.ResumeTiming();
    }
    sqlite3_close(db);
    state.counters["rows/s"] = benchmark::Counter(static_cast<double>(j.rows),
                                                  benchmark::Counter::kIsIterationInvariantRate);
    ratioCounter(state, "journal", "raw journal");
}
BENCHMARK(BM_RawJournalInsert)->Iterations(3)->UseRealTime()->Unit(benchmark::kMillisecond);

// --- The books of the quarter -----------------------------------------------------------

// The stored query made, its rows read in the printed order with amounts and dates as
// printed, and the footer's summary.
static void BM_SalesBook(benchmark::State& state) {
    Year& y = year();
    int rows = 0;
    for (auto _ : state) {
        Stopwatch watch("sales book");
        if (!books::Genera_SelIVAr(y.ctx, kFrom, kTo, {}, {}))
            fail(QStringLiteral("SelIVAr was not made"));
        const QStringList lines = books::bookRows(y.ctx, books::Book::Sales);
        const QStringList summary = books::bookSummary(y.ctx, books::Book::Sales);
        watch.stop();
        rows = static_cast<int>(lines.size()) - 1;
        if (rows <= 0 || summary.isEmpty()) fail(QStringLiteral("the sales book came out empty"));
    }
    y.salesRows = rows;
    state.counters["rows"] = rows;
    state.counters["rows/s"] =
        benchmark::Counter(rows, benchmark::Counter::kIsIterationInvariantRate);
}
BENCHMARK(BM_SalesBook)->Iterations(5)->UseRealTime()->Unit(benchmark::kMillisecond);

static void BM_RawSalesQuery(benchmark::State& state) {
    Year& y = year();
    sqlite3* db = openRaw(y.llibre());
    int rows = 0;
    for (auto _ : state) {
        Stopwatch watch("raw sales book");
        rows = scanRows(db,
                        "select OrdreIVAr, data, descripcio, NomClient, nif, BaseIVA, TipusIVA, "
                        "IVA, TipusREC, REC, RET, TOTAL from Diari where data between ?1 and ?2 "
                        "and Debe_Haber = 'D' order by Apunt");
        const int rates = rateSums(db,
                                   "select TipusIVA, sum(BaseIVA), sum(IVA), sum(REC) from Diari "
                                   "where data between ?1 and ?2 and Debe_Haber = 'D' "
                                   "group by TipusIVA");
        watch.stop();
        if (rates == 0) fail(QStringLiteral("no sales rate in the quarter"));
    }
    sqlite3_close(db);
    if (y.salesRows != 0 && rows != y.salesRows)
        fail(QStringLiteral("the raw query read %1 sales rows, the book %2")
                 .arg(rows)
                 .arg(y.salesRows));
    state.counters["rows/s"] =
        benchmark::Counter(rows, benchmark::Counter::kIsIterationInvariantRate);
    ratioCounter(state, "sales book", "raw sales book");
}
BENCHMARK(BM_RawSalesQuery)->Iterations(5)->UseRealTime()->Unit(benchmark::kMillisecond);

static void BM_PurchasesBook(benchmark::State& state) {
    Year& y = year();
    int rows = 0;
    for (auto _ : state) {
        Stopwatch watch("purchases book");
        if (!books::Genera_SelIVAs(y.ctx, kFrom, kTo, false, false, {}, {}))
            fail(QStringLiteral("SelIVAs was not made"));
        const QStringList lines = books::bookRows(y.ctx, books::Book::Purchases);
        const QStringList summary = books::bookSummary(y.ctx, books::Book::Purchases);
        watch.stop();
        rows = static_cast<int>(lines.size()) - 1;
        if (rows <= 0 || summary.isEmpty())
            fail(QStringLiteral("the purchases book came out empty"));
    }
    y.purchaseRows = rows;
    state.counters["rows"] = rows;
    state.counters["rows/s"] =
        benchmark::Counter(rows, benchmark::Counter::kIsIterationInvariantRate);
}
BENCHMARK(BM_PurchasesBook)->Iterations(5)->UseRealTime()->Unit(benchmark::kMillisecond);

static void BM_RawPurchasesQuery(benchmark::State& state) {
    Year& y = year();
    sqlite3* db = openRaw(y.llibre());
    int rows = 0;
    for (auto _ : state) {
        Stopwatch watch("raw purchases book");
        rows = scanRows(db,
                        "select OrdreIVAs, data, descripcio, NomProveidor, nif, BaseIVA, "
                        "TipusIVA, IVA, RET, TOTAL, COMPRES, SERVEIS, TRIBUTS, PERSONAL, "
                        "AMORTITZACIONS, INVERSIONS from Diari where data between ?1 and ?2 "
                        "and Debe_Haber = 'H' order by data, descripcio, Apunt");
        const int rates = rateSums(db,
                                   "select TipusIVA, sum(BaseIVA), sum(IVA) from Diari where "
                                   "data between ?1 and ?2 and Debe_Haber = 'H' "
                                   "group by TipusIVA");
        watch.stop();
        if (rates == 0) fail(QStringLiteral("no purchases rate in the quarter"));
    }
    sqlite3_close(db);
    if (y.purchaseRows != 0 && rows != y.purchaseRows)
        fail(QStringLiteral("the raw query read %1 purchases rows, the book %2")
                 .arg(rows)
                 .arg(y.purchaseRows));
    state.counters["rows/s"] =
        benchmark::Counter(rows, benchmark::Counter::kIsIterationInvariantRate);
    ratioCounter(state, "purchases book", "raw purchases book");
}
BENCHMARK(BM_RawPurchasesQuery)->Iterations(5)->UseRealTime()->Unit(benchmark::kMillisecond);

// --- The printed book -------------------------------------------------------------------

// The quarter's sales book, its data prepared and its job filled as the books dialog does,
// laid out and written to a PDF file.
static void BM_SalesBookPdf(benchmark::State& state) {
    Year& y = year();
    books::BookRequest request;
    request.fromMonth = kFrom;
    request.toMonth = kTo;
    request.printDate = QDate(2026, 7, 1);
    if (!books::prepareBook(y.ctx, y.dialogs, books::Book::Sales, request))
        fail(QStringLiteral("the sales book's period was refused"));
    report::ReportJob job;
    books::fillSalesBook(job, y.ctx, request);
    job.Destination = report::Destination::File;
    job.PrintFileName = y.dir.filePath(QStringLiteral("llibrei1.pdf"));
    int pages = 0;
    for (auto _ : state) {
        Stopwatch watch("sales book pdf");
        const report::ReportResult result = job.Action(y.ctx, y.dialogs);
        watch.stop();
        if (!result.ok()) fail(QStringLiteral("the sales book did not print: ") + result.error);
        pages = result.pages;
    }
    printedPages = pages;
    state.counters["pages"] = pages;
    state.counters["pages/s"] =
        benchmark::Counter(pages, benchmark::Counter::kIsIterationInvariantRate);
}
BENCHMARK(BM_SalesBookPdf)->Iterations(2)->UseRealTime()->Unit(benchmark::kMillisecond);

// The statements of the whole year: the operating statement (its tables made, the exempt parts
// made good, the grouped sums written), the summary of balances and the ledger of every
// customer, each beside the raw cost of the same grouped sums or ordered scan.
static void BM_OperatingStatement(benchmark::State& state) {
    Year& y = year();
    books::OperatingRequest r;
    for (auto _ : state) {
        Stopwatch watch("operating statement");
        if (!books::prepareOperatingStatement(y.ctx, y.dialogs, r))
            fail(QStringLiteral("the operating statement was refused"));
        watch.stop();
    }
}
BENCHMARK(BM_OperatingStatement)->Iterations(3)->UseRealTime()->Unit(benchmark::kMillisecond);

// The sums of `sql` over the whole file, every column of every row read.
std::int64_t rawSums(sqlite3* db, const char* sql) {
    sqlite3_stmt* st = prepare(db, sql);
    std::int64_t sum = 0, rows = 0;
    while (sqlite3_step(st) == SQLITE_ROW) {
        for (int c = 0; c < sqlite3_column_count(st); ++c) sum += sqlite3_column_int64(st, c);
        ++rows;
    }
    sqlite3_finalize(st);
    benchmark::DoNotOptimize(sum);
    return rows;
}

static void BM_RawOperatingSums(benchmark::State& state) {
    Year& y = year();
    sqlite3* out = openRaw(y.ctx.exerciseFile(schema::db::FrasOut));
    sqlite3* in = openRaw(y.ctx.exerciseFile(schema::db::FrasIn));
    for (auto _ : state) {
        Stopwatch watch("raw operating statement");
        const std::int64_t a = rawSums(out,
                                       "select NomCompte, strftime('%m', data), sum(TOTAL - "
                                       "Iva1 - Iva2 - Iva3 - RE1 - RE2 - RE3 + Retencio) "
                                       "from FrasOut group by 1, 2");
        const std::int64_t b = rawSums(in,
                                       "select NomCompte, strftime('%m', data), sum(Base1 + "
                                       "Base2 + Base3 + Base4 + Exempta) from FrasIN "
                                       "group by 1, 2");
        watch.stop();
        if (a == 0 || b == 0) fail(QStringLiteral("no sums for the operating statement"));
    }
    sqlite3_close(out);
    sqlite3_close(in);
    ratioCounter(state, "operating statement", "raw operating statement");
}
BENCHMARK(BM_RawOperatingSums)->Iterations(3)->UseRealTime()->Unit(benchmark::kMillisecond);

static void BM_TrialBalance(benchmark::State& state) {
    Year& y = year();
    for (auto _ : state) {
        Stopwatch watch("trial balance");
        if (!books::Genera_Saldos(y.ctx, y.dialogs))
            fail(QStringLiteral("the summary of balances was refused"));
        watch.stop();
    }
}
BENCHMARK(BM_TrialBalance)->Iterations(5)->UseRealTime()->Unit(benchmark::kMillisecond);

static void BM_RawTrialBalanceSums(benchmark::State& state) {
    Year& y = year();
    sqlite3* db = openRaw(y.ctx.exerciseFile(schema::db::Tesorer));
    const std::string attach =
        "attach '" + y.ctx.exerciseFile(schema::db::FrasIn).toStdString() + "' as fin; attach '" +
        y.ctx.exerciseFile(schema::db::FrasOut).toStdString() + "' as fout; attach '" +
        y.ctx.companyFile(schema::db::Cartera).toStdString() + "' as cartera";
    exec(db, attach.c_str());
    for (auto _ : state) {
        Stopwatch watch("raw trial balance");
        rawSums(db, "select sum(total), sum(Pendiente) from cartera.cartera where cliente <> 0");
        rawSums(db, "select sum(total), sum(Pendiente) from cartera.cartera where proveedor <> 0");
        rawSums(db, "select sum(D), sum(H) from movimientos");
        rawSums(db,
                "select Grup, sum(total), sum(Iva1), sum(Iva2), sum(Iva3), sum(Iva4), "
                "sum(Retencio) from fin.FrasIN group by Grup");
        rawSums(db,
                "select sum(total), sum(Iva1), sum(Iva2), sum(Iva3), sum(RE1), sum(RE2), "
                "sum(RE3), sum(Retencio) from fout.FrasOut");
        watch.stop();
    }
    sqlite3_close(db);
    ratioCounter(state, "trial balance", "raw trial balance");
}
BENCHMARK(BM_RawTrialBalanceSums)->Iterations(5)->UseRealTime()->Unit(benchmark::kMillisecond);

static void BM_CustomersLedger(benchmark::State& state) {
    Year& y = year();
    for (auto _ : state) {
        Stopwatch watch("customers ledger");
        books::Genera_Mayor_Clients(y.ctx, std::nullopt);
        watch.stop();
    }
}
BENCHMARK(BM_CustomersLedger)->Iterations(3)->UseRealTime()->Unit(benchmark::kMillisecond);

static void BM_RawCustomersScan(benchmark::State& state) {
    Year& y = year();
    sqlite3* db = openRaw(y.ctx.exerciseFile(schema::db::Tesorer));
    const std::string attach = "attach '" + y.ctx.exerciseFile(schema::db::FrasOut).toStdString() +
                               "' as fout; attach '" +
                               y.ctx.exerciseFile(schema::db::Gest).toStdString() + "' as gest";
    exec(db, attach.c_str());
    for (auto _ : state) {
        Stopwatch watch("raw customers ledger");
        const std::int64_t rows =
            rawSums(db, "select client, saldo from gest.clients order by client") +
            rawSums(db,
                    "select Client, data, Ordre, TOTAL from fout.FrasOut order by Client, "
                    "data, Ordre") +
            rawSums(db,
                    "select cliente, data, Id, D, H from movimientos where cliente <> 0 "
                    "order by data, Id");
        watch.stop();
        if (rows == 0) fail(QStringLiteral("nothing for the customers' ledger"));
    }
    sqlite3_close(db);
    ratioCounter(state, "customers ledger", "raw customers ledger");
}
BENCHMARK(BM_RawCustomersScan)->Iterations(3)->UseRealTime()->Unit(benchmark::kMillisecond);

int main(int argc, char** argv) {
    // Printing measures text with real fonts; no screen is needed for that.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    const auto ratio = [](const char* what, const char* ours, const char* raw) {
        const auto& s = seconds();
        if (s.count(ours) && s.count(raw) && s.at(raw) > 0) {
            const double times = s.at(ours) / s.at(raw);
            std::printf("%s: %.1f times the raw SQLite cost (%.0f ms against %.0f ms), %s\n", what,
                        times, s.at(ours) * 1000, s.at(raw) * 1000,
                        times <= kGoal ? "within the goal of 3" : "beyond the goal of 3");
        }
    };
    ratio("journal rebuild of both sides", "journal", "raw journal");
    ratio("sales book of a quarter", "sales book", "raw sales book");
    ratio("purchases book of a quarter", "purchases book", "raw purchases book");
    ratio("operating statement of the year", "operating statement", "raw operating statement");
    ratio("summary of balances", "trial balance", "raw trial balance");
    ratio("ledger of every customer", "customers ledger", "raw customers ledger");
    const auto& s = seconds();
    if (s.count("sales book pdf") && s.at("sales book pdf") > 0)
        std::printf("sales book of a quarter to PDF: %d pages in %.0f ms, %.1f pages/s\n",
                    printedPages, s.at("sales book pdf") * 1000,
                    printedPages / s.at("sales book pdf"));
    return 0;
}
