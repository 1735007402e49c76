#include "repair.h"

#include "database.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <optional>

namespace tallora::store {
namespace {

bool isSound(Database& db) {
    Statement check = db.prepare(QStringLiteral("PRAGMA integrity_check"));
    return check.next() && check.text(0) == QStringLiteral("ok") && !check.next();
}

struct SchemaEntry {
    QString type, name, sql;
};

// Copies the rows of one table one by one, up to the first that cannot be read.
int copyRows(Database& damaged, Database& fresh, const QString& table) {
    int copied = 0;
    try {
        Statement read = damaged.prepare(QStringLiteral("SELECT * FROM ") + quoteIdentifier(table));
        QStringList marks;
        for (int i = 0; i < read.columnCount(); ++i) marks << QStringLiteral("?");
        Statement write = fresh.prepare(QStringLiteral("INSERT INTO %1 VALUES (%2)")
                                            .arg(quoteIdentifier(table), marks.join(u',')));
        while (read.next()) {
            write.reset();
            for (int i = 0; i < read.columnCount(); ++i) {
                if (read.isNull(i)) write.bind(i + 1, nullptr);
                else write.bind(i + 1, read.text(i));  // column affinity restores numbers
            }
            try {
                write.execute();
                ++copied;
            } catch (const StoreError&) {
                // A row that breaks a rule of its table is left out; the next one is tried.
            }
        }
    } catch (const StoreError&) {
        // The rest of the table cannot be read.
    }
    return copied;
}

// The rows a damaged table says it holds; nullopt when even that cannot be read.
std::optional<int> countRows(Database& damaged, const QString& table) {
    try {
        Statement count =
            damaged.prepare(QStringLiteral("SELECT count(*) FROM ") + quoteIdentifier(table));
        if (count.next()) return static_cast<int>(count.int64(0));
    } catch (const StoreError&) {
    }
    return std::nullopt;
}

QString damagedCopyPath(const QString& path, const QString& folder, const QString& stamp) {
    const QFileInfo file(path);
    QString dir = folder.isEmpty() ? file.absolutePath() : folder;
    QDir().mkpath(dir);
    if (!dir.endsWith(u'/')) dir += u'/';
    return dir + file.fileName() + QStringLiteral(".damaged-") + stamp;
}

// A rename, or a copy and a removal when the two places are on different volumes.
bool moveFile(const QString& from, const QString& to) {
    if (QFile::rename(from, to)) return true;
    return QFile::copy(from, to) && QFile::remove(from);
}

}  // namespace

RepairResult repairDatabase(const QString& path, const QString& damagedFolder) {
    RepairResult result;
    std::vector<SchemaEntry> schema;
    {
        Database db = Database::open(path);  // throws when even the header is unreadable
        bool sound = false;
        try {
            sound = isSound(db);
        } catch (const StoreError&) {
        }
        if (sound) return result;
        result.damaged = true;
        Statement st = db.prepare(QStringLiteral(
            "SELECT type, name, sql FROM sqlite_master WHERE sql IS NOT NULL AND name NOT LIKE "
            "'sqlite\\_%' ESCAPE '\\' ORDER BY type = 'table' DESC, rowid"));
        while (st.next()) schema.push_back({st.text(0), st.text(1), st.text(2)});
    }
    const QString stamp = QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMddHHmmss"));
    const QString freshPath = path + QStringLiteral(".rebuilt-") + stamp;
    {
        Database damaged = Database::open(path);
        Database fresh = Database::open(freshPath, Database::Mode::CreateIfMissing);
        Transaction tx(fresh);
        for (const SchemaEntry& e : schema)
            if (e.type == u"table") fresh.execute(e.sql);
        result.rowsCounted = 0;
        for (const SchemaEntry& e : schema) {
            if (e.type != u"table") continue;
            const auto counted = countRows(damaged, e.name);
            if (!counted)
                result.rowsCounted = -1;
            else if (result.rowsCounted >= 0)
                result.rowsCounted += *counted;
            result.rowsRecovered += copyRows(damaged, fresh, e.name);
        }
        for (const SchemaEntry& e : schema) {
            if (e.type == u"table") continue;
            try {
                fresh.execute(e.sql);
            } catch (const StoreError&) {
            }
        }
        tx.commit();
    }
    result.damagedCopy = damagedCopyPath(path, damagedFolder, stamp);
    if (!moveFile(path, result.damagedCopy) || !QFile::rename(freshPath, path))
        throw StoreError(QStringLiteral("cannot replace %1 with its repaired copy").arg(path));
    return result;
}

void compactDatabase(const QString& source, const QString& target) {
    if (QFile::exists(target)) throw StoreError(QStringLiteral("%1 already exists").arg(target));
    Database db = Database::open(source);
    Statement st = db.prepare(QStringLiteral("VACUUM INTO ?"));
    st.bind(1, target);
    st.execute();
}

}  // namespace tallora::store
