#pragma once
// A thin layer over SQLite's C API: databases opened by path, statements with bound values,
// a forward cursor with typed reads, transactions.
//
// Column conventions: Currency is an INTEGER of ten-thousandths (Money); Boolean is -1 or 0;
// Date is TEXT "YYYY-MM-DD" (with " HH:MM:SS" where a time matters); text compares without
// regard to case through the collation every connection registers (collation.h).
#include "context/money.h"
#include "store_error.h"

#include <QDate>
#include <QDateTime>
#include <QString>

#include <cstdint>
#include <memory>

struct sqlite3;
struct sqlite3_stmt;

namespace tallora::store {

class Statement;

class Database {
public:
    enum class Mode { OpenExisting, CreateIfMissing };

    // Opens the file; OpenExisting refuses a missing file instead of creating an empty one.
    static Database open(const QString& path, Mode mode = Mode::OpenExisting);

    Database(Database&&) noexcept;
    Database& operator=(Database&&) noexcept;
    ~Database();

    // Runs one or more statements without values.
    void execute(const QString& sql);
    Statement prepare(const QString& sql);
    std::int64_t lastInsertId() const;
    // Rows changed by the last INSERT, UPDATE or DELETE.
    int changes() const;

    // Makes another file reachable as `alias`.table, so that one transaction covers both.
    void attach(const QString& path, const QString& alias);
    void detach(const QString& alias);

    const QString& path() const { return path_; }
    sqlite3* handle() const { return db_; }

private:
    Database(sqlite3* db, QString path) : db_(db), path_(std::move(path)) {}
    void close() noexcept;
    sqlite3* db_ = nullptr;
    QString path_;
};

// A prepared statement, also the cursor over its rows: bind values (1-based), then either
// execute() for a change or next() row by row.
class Statement {
public:
    Statement(Statement&&) noexcept;
    Statement& operator=(Statement&&) noexcept;
    ~Statement();

    Statement& bind(int index, std::nullptr_t);
    Statement& bind(int index, std::int64_t value);
    Statement& bind(int index, int value) { return bind(index, static_cast<std::int64_t>(value)); }
    Statement& bind(int index, double value);
    Statement& bind(int index, bool value);  // -1 or 0
    Statement& bind(int index, Money value);
    Statement& bind(int index, const QString& value);
    Statement& bind(int index, const char* value) { return bind(index, QString::fromUtf8(value)); }
    Statement& bind(int index, QDate value);
    Statement& bind(int index, const QDateTime& value);
    // Binds by name, e.g. ":nom".
    int indexOf(const char* name) const;

    // Runs a statement that returns no rows; gives the rows it changed.
    int execute();
    // Steps to the next row; false at the end.
    bool next();
    // True once next() has gone past the last row.
    bool atEnd() const { return done_; }
    void reset();

    int columnCount() const;
    QString columnName(int column) const;
    // The position of a column by name, without regard to case; -1 when there is none.
    int columnIndex(const QString& name) const;

    bool isNull(int column) const;
    std::int64_t int64(int column) const;
    std::int32_t int32(int column) const;
    double real(int column) const;
    bool boolean(int column) const;  // any non-zero is true
    Money money(int column) const;
    QString text(int column) const;
    QDate date(int column) const;  // invalid when null or not a date
    QDateTime dateTime(int column) const;

private:
    friend class Database;
    Statement(sqlite3_stmt* stmt, sqlite3* db) : stmt_(stmt), db_(db) {}
    void check(int rc) const;
    sqlite3_stmt* stmt_ = nullptr;
    sqlite3* db_ = nullptr;
    bool done_ = false;
};

// Begins in its constructor and rolls back in its destructor unless committed. Immediate
// takes the write lock at once (number allocation, postings).
class Transaction {
public:
    enum class Kind { Deferred, Immediate };
    explicit Transaction(Database& db, Kind kind = Kind::Deferred);
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    ~Transaction();
    void commit();

private:
    Database& db_;
    bool open_ = true;
};

// A text quoted as an SQL literal by SQLite's own quoting ('it''s'), for the few places where
// SQL text must carry a value (a view).
QString quoteLiteral(const QString& value);
// A name quoted as an SQL identifier ("01", "Clients").
QString quoteIdentifier(const QString& name);

}  // namespace tallora::store
