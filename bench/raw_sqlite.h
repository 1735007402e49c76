#pragma once
// SQLite's C API as any program would use it, for the raw figures the benchmarks set ours
// beside. A failure stops the benchmark: its timings would mean nothing.
#include "bench_exercise.h"
#include "store/collation.h"

#include <QString>

#include <sqlite3.h>

#include <string>

namespace tallora::raw {

// A plain connection: the text rules the columns declare are the only thing of ours it
// takes, as SQLite cannot compare those columns without them.
inline sqlite3* open(const QString& path) {
    sqlite3* db = nullptr;
    if (sqlite3_open_v2(path.toUtf8().constData(), &db, SQLITE_OPEN_READWRITE, nullptr) !=
        SQLITE_OK)
        benchFail("raw SQLite", QStringLiteral("cannot open ") + path);
    store::registerTextRules(db);
    return db;
}

inline void exec(sqlite3* db, const std::string& sql) {
    if (sqlite3_exec(db, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK)
        benchFail("raw SQLite", QString::fromUtf8(sqlite3_errmsg(db)));
}

inline sqlite3_stmt* prepare(sqlite3* db, const std::string& sql) {
    sqlite3_stmt* st = nullptr;
    if (sqlite3_prepare_v2(db, sql.c_str(), -1, &st, nullptr) != SQLITE_OK)
        benchFail("raw SQLite", QString::fromUtf8(sqlite3_errmsg(db)));
    return st;
}

}  // namespace tallora::raw
