#pragma once
// The databases an interchange file is made from and read into, on one connection: the
// exercise's gest.mdb as the main file and every other one that exists attached, so that
// an export reads one state of them and an import writes all of them or none.
#include "context/fwd.h"
#include "interchange_layout.h"
#include "store/database.h"

#include <QString>
#include <QStringList>

#include <exception>

namespace tallora::interchange {

class InterchangeFiles {
public:
    explicit InterchangeFiles(const WorkingContext& ctx);

    store::Database& db() { return db_; }
    // The path of a database file of the record's area.
    QString path(const QString& database, Area area) const;
    // The files that exist, by file name, in the order they are attached.
    const QStringList& present() const { return present_; }
    bool has(const QString& database) const { return present_.contains(database); }
    // "alias"."table" for SQL; the table must be checked with hasTable first.
    QString tableRef(const QString& database, const QString& table) const;
    // True when the database exists and holds the table, without regard to case.
    bool hasTable(const QString& database, const QString& table);

private:
    const WorkingContext& ctx_;
    store::Database db_;
    QStringList present_;
};

// Where a database of the record's area is: the exercise folder or the company's.
QString databaseFile(const WorkingContext& ctx, const QString& database, Area area);
// What went wrong, as a message can say it: the store's own text, or the fault's.
QString faultReason(const std::exception& e);

// The area of a database file by its name.
Area areaOf(const QString& database);

}  // namespace tallora::interchange
