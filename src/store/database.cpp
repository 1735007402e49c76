#include "database.h"

#include "collation.h"

#include <QFileInfo>

#include <sqlite3.h>

namespace tallora::store {
namespace {

QString engineMessage(sqlite3* db) { return QString::fromUtf8(sqlite3_errmsg(db)); }

[[noreturn]] void fail(sqlite3* db, int rc, const QString& context) {
    const QString what = db ? engineMessage(db) : QString::fromUtf8(sqlite3_errstr(rc));
    throw StoreError(context.isEmpty() ? what : what + QStringLiteral(" (") + context + u')', rc);
}

QString fileOf(sqlite3* db) {
    const char* name = db ? sqlite3_db_filename(db, "main") : nullptr;
    return name ? QString::fromUtf8(name) : QString();
}

}  // namespace

Database Database::open(const QString& path, Mode mode) {
    if (mode == Mode::OpenExisting && !QFileInfo(path).isFile())
        throw StoreError(QStringLiteral("file not found: %1").arg(path), SQLITE_CANTOPEN);
    sqlite3* db = nullptr;
    const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_FULLMUTEX |
                      (mode == Mode::CreateIfMissing ? SQLITE_OPEN_CREATE : 0);
    const int rc = sqlite3_open_v2(path.toUtf8().constData(), &db, flags, nullptr);
    if (rc != SQLITE_OK) {
        const QString message = db ? engineMessage(db) : QString::fromUtf8(sqlite3_errstr(rc));
        sqlite3_close(db);
        throw StoreError(message + QStringLiteral(" (") + path + u')', rc);
    }
    sqlite3_extended_result_codes(db, 1);
    sqlite3_busy_timeout(db, 5000);
    Database database(db, path);
    registerTextRules(db);
    // A damaged file is found at once, not in the middle of an operation.
    database.execute(QStringLiteral("PRAGMA schema_version"));
    return database;
}

Database::Database(Database&& other) noexcept : db_(other.db_), path_(std::move(other.path_)) {
    other.db_ = nullptr;
}

Database& Database::operator=(Database&& other) noexcept {
    if (this != &other) {
        close();
        db_ = other.db_;
        path_ = std::move(other.path_);
        other.db_ = nullptr;
    }
    return *this;
}

Database::~Database() { close(); }

void Database::close() noexcept {
    if (db_) sqlite3_close_v2(db_);
    db_ = nullptr;
}

void Database::execute(const QString& sql) {
    char* error = nullptr;
    const int rc = sqlite3_exec(db_, sql.toUtf8().constData(), nullptr, nullptr, &error);
    if (rc != SQLITE_OK) {
        const QString message = error ? QString::fromUtf8(error) : engineMessage(db_);
        sqlite3_free(error);
        throw StoreError(message + QStringLiteral(" (") + path_ + u')', rc);
    }
}

Statement Database::prepare(const QString& sql) {
    sqlite3_stmt* stmt = nullptr;
    const int rc = sqlite3_prepare_v2(db_, sql.toUtf8().constData(), -1, &stmt, nullptr);
    if (rc != SQLITE_OK) fail(db_, rc, path_);
    return Statement(stmt, db_);
}

std::int64_t Database::lastInsertId() const { return sqlite3_last_insert_rowid(db_); }

int Database::changes() const { return sqlite3_changes(db_); }

void Database::attach(const QString& path, const QString& alias) {
    if (!QFileInfo(path).isFile())
        throw StoreError(QStringLiteral("file not found: %1").arg(path), SQLITE_CANTOPEN);
    Statement st = prepare(QStringLiteral("ATTACH DATABASE ? AS ") + quoteIdentifier(alias));
    st.bind(1, path);
    st.execute();
}

void Database::detach(const QString& alias) {
    execute(QStringLiteral("DETACH DATABASE ") + quoteIdentifier(alias));
}

Statement::Statement(Statement&& other) noexcept
    : stmt_(other.stmt_), db_(other.db_), done_(other.done_) {
    other.stmt_ = nullptr;
}

Statement& Statement::operator=(Statement&& other) noexcept {
    if (this != &other) {
        sqlite3_finalize(stmt_);
        stmt_ = other.stmt_;
        db_ = other.db_;
        done_ = other.done_;
        other.stmt_ = nullptr;
    }
    return *this;
}

Statement::~Statement() { sqlite3_finalize(stmt_); }

void Statement::check(int rc) const {
    if (rc != SQLITE_OK) fail(db_, rc, fileOf(db_));
}

Statement& Statement::bind(int index, std::nullptr_t) {
    check(sqlite3_bind_null(stmt_, index));
    return *this;
}

Statement& Statement::bind(int index, std::int64_t value) {
    check(sqlite3_bind_int64(stmt_, index, value));
    return *this;
}

Statement& Statement::bind(int index, double value) {
    check(sqlite3_bind_double(stmt_, index, value));
    return *this;
}

Statement& Statement::bind(int index, bool value) {
    return bind(index, static_cast<std::int64_t>(value ? -1 : 0));
}

Statement& Statement::bind(int index, Money value) { return bind(index, value.units()); }

Statement& Statement::bind(int index, const QString& value) {
    if (value.isNull()) return bind(index, nullptr);
    const QByteArray utf8 = value.toUtf8();
    check(sqlite3_bind_text(stmt_, index, utf8.constData(), static_cast<int>(utf8.size()),
                            SQLITE_TRANSIENT));
    return *this;
}

Statement& Statement::bind(int index, QDate value) {
    if (!value.isValid()) return bind(index, nullptr);
    return bind(index, value.toString(Qt::ISODate));
}

Statement& Statement::bind(int index, const QDateTime& value) {
    if (!value.isValid()) return bind(index, nullptr);
    return bind(index, value.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")));
}

int Statement::indexOf(const char* name) const {
    const int index = sqlite3_bind_parameter_index(stmt_, name);
    if (index == 0)
        throw StoreError(QStringLiteral("unknown parameter %1").arg(QString::fromUtf8(name)));
    return index;
}

int Statement::execute() {
    const int rc = sqlite3_step(stmt_);
    if (rc == SQLITE_ROW) {
        sqlite3_reset(stmt_);
        return 0;
    }
    if (rc != SQLITE_DONE) {
        const QString message = engineMessage(db_);
        sqlite3_reset(stmt_);
        throw StoreError(message + QStringLiteral(" (") + fileOf(db_) + u')', rc);
    }
    const int changed = sqlite3_changes(db_);
    sqlite3_reset(stmt_);
    return changed;
}

bool Statement::next() {
    if (done_) return false;
    const int rc = sqlite3_step(stmt_);
    if (rc == SQLITE_ROW) return true;
    done_ = true;
    if (rc != SQLITE_DONE) {
        const QString message = engineMessage(db_);
        sqlite3_reset(stmt_);
        throw StoreError(message + QStringLiteral(" (") + fileOf(db_) + u')', rc);
    }
    return false;
}

void Statement::reset() {
    sqlite3_reset(stmt_);
    sqlite3_clear_bindings(stmt_);
    done_ = false;
}

int Statement::columnCount() const { return sqlite3_column_count(stmt_); }

QString Statement::columnName(int column) const {
    return QString::fromUtf8(sqlite3_column_name(stmt_, column));
}

int Statement::columnIndex(const QString& name) const {
    for (int i = 0; i < columnCount(); ++i)
        if (columnName(i).compare(name, Qt::CaseInsensitive) == 0) return i;
    return -1;
}

bool Statement::isNull(int column) const {
    return sqlite3_column_type(stmt_, column) == SQLITE_NULL;
}

std::int64_t Statement::int64(int column) const { return sqlite3_column_int64(stmt_, column); }

std::int32_t Statement::int32(int column) const {
    return static_cast<std::int32_t>(sqlite3_column_int64(stmt_, column));
}

double Statement::real(int column) const { return sqlite3_column_double(stmt_, column); }

bool Statement::boolean(int column) const { return sqlite3_column_int64(stmt_, column) != 0; }

Money Statement::money(int column) const { return Money::fromUnits(int64(column)); }

QString Statement::text(int column) const {
    const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(stmt_, column));
    if (!bytes) return QString();
    return QString::fromUtf8(bytes, sqlite3_column_bytes(stmt_, column));
}

QDate Statement::date(int column) const {
    return QDate::fromString(text(column).left(10), Qt::ISODate);
}

QDateTime Statement::dateTime(int column) const {
    const QString t = text(column);
    if (t.size() <= 10) return QDateTime(QDate::fromString(t, Qt::ISODate), QTime(0, 0));
    return QDateTime::fromString(t, QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

Transaction::Transaction(Database& db, Kind kind) : db_(db) {
    db_.execute(kind == Kind::Immediate ? QStringLiteral("BEGIN IMMEDIATE") : QStringLiteral("BEGIN"));
}

Transaction::~Transaction() {
    if (!open_) return;
    // Never throws: a failed rollback leaves SQLite to roll back when the connection closes.
    sqlite3_exec(db_.handle(), "ROLLBACK", nullptr, nullptr, nullptr);
}

void Transaction::commit() {
    db_.execute(QStringLiteral("COMMIT"));
    open_ = false;
}

QString quoteLiteral(const QString& value) {
    char* quoted = sqlite3_mprintf("%Q", value.toUtf8().constData());
    const QString out = QString::fromUtf8(quoted);
    sqlite3_free(quoted);
    return out;
}

QString quoteIdentifier(const QString& name) {
    char* quoted = sqlite3_mprintf("\"%w\"", name.toUtf8().constData());
    const QString out = QString::fromUtf8(quoted);
    sqlite3_free(quoted);
    return out;
}

}  // namespace tallora::store
