// The interchange file of a generated year of 100,000 invoices: the export of the whole
// exercise, and its import whole into another company's exercise (wiping, reading every line,
// inserting every record in one transaction), each in records per second. Beside them, the
// raw SQLite cost of inserting the same rows in one transaction through the C API, from
// memory, with one prepared insert per table. The ratio is printed at the end; the aim is an
// import within 3 times its raw cost.
#include "context/dialogs.h"
#include "context/working_context.h"
#include "interchange/interchange_export.h"
#include "interchange/interchange_import.h"
#include "raw_sqlite.h"
#include "schema/creation.h"
#include "shell/sample_exercise.h"
#include "stopwatch.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <cstdio>
#include <exception>
#include <map>
#include <string>
#include <vector>

using namespace tallora;

namespace {

constexpr int kInvoices = 100000;
constexpr double kGoal = 3;
const QDateTime kNow(QDate(2026, 11, 23), QTime(10, 0, 0));

[[noreturn]] void fail(const QString& what) {
    benchFail("bench_interchange", what);
}

struct Installation {
    explicit Installation(bool fill) {
        ctx.resourcesDir = QStringLiteral(TALLORA_SOURCE_DIR "/resources/");
        try {
            shell::openSampleCompany(ctx, dialogs, dir.path(), QDate(2026, 7, 1));
            if (!fill) return;
            std::fprintf(stderr, "bench_interchange: posting %d invoices...\n", kInvoices);
            shell::SampleOptions options;
            options.invoices = kInvoices;
            shell::fillSampleExercise(ctx, options);
        } catch (const std::exception& e) {
            fail(QString::fromUtf8(e.what()));
        }
    }
    QTemporaryDir dir;
    WorkingContext ctx;
    ScriptedDialogs dialogs;
};

struct Year {
    Installation source{true};
    Installation target{false};
    QString file = source.dir.filePath(QStringLiteral("year.dat"));
    qint64 records = 0;
};

Year& year() {
    static Year y;
    return y;
}

// The databases an import writes, by alias, as they lie beside each other.
const std::vector<std::pair<const char*, QString>>& databases() {
    static const std::vector<std::pair<const char*, QString>> all{
        {"comptes", schema::db::Comptes}, {"frasout", schema::db::FrasOut},
        {"frasin", schema::db::FrasIn},   {"supl", schema::db::Supl},
        {"tesorer", schema::db::Tesorer}, {"cartera", schema::db::Cartera}};
    return all;
}

QString pathOf(const WorkingContext& ctx, const QString& database) {
    return database == schema::db::Cartera ? ctx.companyFile(database) : ctx.exerciseFile(database);
}

using raw::exec;
using raw::prepare;

// gest.mdb with the other files attached, as the import has them.
sqlite3* openRaw(const WorkingContext& ctx) {
    sqlite3* db = raw::open(ctx.exerciseFile(schema::db::Gest));
    for (const auto& [alias, database] : databases())
        exec(db, "attach database '" + pathOf(ctx, database).toStdString() + "' as " + alias);
    return db;
}

// Every row the import wrote, table by table, with its values as SQLite holds them.
struct RowsInMemory {
    struct Table {
        std::string name;  // alias.table
        int width = 0;
        std::vector<sqlite3_value*> cells;
    };
    std::vector<Table> tables;
    std::int64_t rows = 0;
    ~RowsInMemory() {
        for (Table& t : tables)
            for (sqlite3_value* v : t.cells) sqlite3_value_free(v);
    }
};

const std::vector<std::string>& importedTables() {
    static const std::vector<std::string> all{"main.Clients",           "main.Proveidors",
                                              "comptes.Amortitzacions", "comptes.Compres",
                                              "comptes.Ingresos",       "comptes.Inversions",
                                              "comptes.Personal",       "comptes.Serveis",
                                              "comptes.Tributs",        "comptes.Otras",
                                              "frasout.FrasOut",        "frasin.FrasIN",
                                              "supl.Suplidos",          "tesorer.entidades",
                                              "tesorer.movimientos",    "tesorer.otros_movimientos",
                                              "cartera.cartera"};
    return all;
}

RowsInMemory& rowsInMemory() {
    static RowsInMemory m = [] {
        RowsInMemory r;
        sqlite3* db = openRaw(year().target.ctx);
        for (const std::string& name : importedTables()) {
            RowsInMemory::Table t{name, 0, {}};
            sqlite3_stmt* st = prepare(db, "select * from " + name);
            t.width = sqlite3_column_count(st);
            while (sqlite3_step(st) == SQLITE_ROW) {
                for (int c = 0; c < t.width; ++c)
                    t.cells.push_back(sqlite3_value_dup(sqlite3_column_value(st, c)));
                ++r.rows;
            }
            sqlite3_finalize(st);
            r.tables.push_back(std::move(t));
        }
        sqlite3_close(db);
        return r;
    }();
    return m;
}

}  // namespace

static void BM_Export(benchmark::State& state) {
    Year& y = year();
    for (auto _ : state) {
        Stopwatch watch("export");
        y.records = interchange::writeInterchangeFile(y.source.ctx, y.file, {}, {}, kNow);
        watch.stop();
    }
    if (y.records < kInvoices) fail(QStringLiteral("the export lacks records"));
    state.counters["records"] = static_cast<double>(y.records);
    state.counters["records/s"] = benchmark::Counter(static_cast<double>(y.records),
                                                     benchmark::Counter::kIsIterationInvariantRate);
    state.counters["MB"] = static_cast<double>(QFile(y.file).size()) / 1e6;
}
BENCHMARK(BM_Export)->Iterations(3)->UseRealTime()->Unit(benchmark::kMillisecond);

static void BM_Import(benchmark::State& state) {
    Year& y = year();
    const interchange::FileHeader header = interchange::readHeader(y.target.ctx, y.file);
    qint64 imported = 0;
    for (auto _ : state) {
        Stopwatch watch("import");
        imported = interchange::importInterchangeFile(y.target.ctx, y.file, header,
                                                      interchange::presetFor(header), {});
        watch.stop();
    }
    if (imported != y.records) fail(QStringLiteral("the import lost records"));
    state.counters["records/s"] = benchmark::Counter(static_cast<double>(imported),
                                                     benchmark::Counter::kIsIterationInvariantRate);
}
BENCHMARK(BM_Import)->Iterations(3)->UseRealTime()->Unit(benchmark::kMillisecond);

// The same rows from memory into the emptied tables of the same files: one transaction, one
// prepared insert per table, every column bound.
static void BM_RawInsert(benchmark::State& state) {
    const RowsInMemory& m = rowsInMemory();
    sqlite3* db = openRaw(year().target.ctx);
    for (auto _ : state) {
        state.PauseTiming();
        for (const auto& t : m.tables) exec(db, "delete from " + t.name);
        state.ResumeTiming();
        Stopwatch watch("raw insert");
        exec(db, "begin immediate");
        for (const auto& t : m.tables) {
            std::string marks;
            for (int c = 0; c < t.width; ++c) marks += c ? ", ?" : "?";
            sqlite3_stmt* insert = prepare(db, "insert into " + t.name + " values (" + marks + ")");
            for (std::size_t i = 0; i < t.cells.size(); i += static_cast<std::size_t>(t.width)) {
                for (int c = 0; c < t.width; ++c)
                    sqlite3_bind_value(insert, c + 1, t.cells[i + static_cast<std::size_t>(c)]);
                if (sqlite3_step(insert) != SQLITE_DONE)
                    fail(QString::fromUtf8(sqlite3_errmsg(db)));
                sqlite3_reset(insert);
            }
            sqlite3_finalize(insert);
        }
        exec(db, "commit");
        watch.stop();
    }
    sqlite3_close(db);
    state.counters["rows/s"] = benchmark::Counter(static_cast<double>(m.rows),
                                                  benchmark::Counter::kIsIterationInvariantRate);
}
BENCHMARK(BM_RawInsert)->Iterations(3)->UseRealTime()->Unit(benchmark::kMillisecond);

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    const auto& s = seconds();
    const qint64 records = year().records;
    if (s.count("export"))
        std::printf("export: %lld records in %.0f ms, %.0f records/s\n",
                    static_cast<long long>(records), s.at("export") * 1000,
                    records / s.at("export"));
    if (s.count("import"))
        std::printf("import: %lld records in %.0f ms, %.0f records/s\n",
                    static_cast<long long>(records), s.at("import") * 1000,
                    records / s.at("import"));
    if (s.count("import") && s.count("raw insert") && s.at("raw insert") > 0) {
        const double times = s.at("import") / s.at("raw insert");
        std::printf(
            "import: %.1f times the raw SQLite cost of inserting the same rows (%.0f ms), %s\n",
            times, s.at("raw insert") * 1000,
            times <= kGoal ? "within the goal of 3" : "beyond the goal of 3");
    }
    return 0;
}
