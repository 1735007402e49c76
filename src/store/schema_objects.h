#pragma once
// Tables, fields, indexes and stored queries of a database, made from definitions and read
// back from the database itself.
//
// How a field's type and options become SQLite:
//   Boolean  BOOLEAN   -1 or 0              Integer  SHORT     16-bit range
//   Long     LONG      32-bit range         Currency CURRENCY  integer of ten-thousandths
//   Double   DOUBLE                         Date     DATETIME  text "YYYY-MM-DD[ HH:MM:SS]"
//   Text(n)  TEXT(n)   at most n characters Memo     LONGTEXT
// Auto-increment is SQLite's only auto-numbered column, INTEGER PRIMARY KEY AUTOINCREMENT
// (numbers are never used again, as the engine numbered them before). Text columns declare
// the collation of collation.h. A text field without "zero-length allowed" refuses ''.
// Each rule is a named CHECK, so a refusal names table and field: "CHECK constraint failed:
// Clients.nom: longer than 40 characters".
// Indexes are plain, one field each, named "<table>.<field>".
// A field added to a table with rows gives them its default (SQLite fills added columns).
#include "database.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace tallora::store {

enum class FieldType { Boolean, Integer, Long, Currency, Double, Date, Text, Memo };

struct FieldDef {
    QString name;
    FieldType type = FieldType::Long;
    int size = 0;  // Text(n) only
    bool autoIncrement = false;
    bool zeroLength = false;  // an empty text is allowed
    QString defaultSql;       // an SQL literal ("0", "-1", "'Compras'"), empty for none
    bool operator==(const FieldDef&) const = default;
};

struct IndexDef {
    QString field;
    bool operator==(const IndexDef&) const = default;
};

struct TableDef {
    QString name;
    std::vector<FieldDef> fields;
    std::vector<IndexDef> indexes;
};

QString typeName(FieldType type);  // "Boolean", "Text" ...

// Makes the table with its fields in order and then its indexes.
void createTable(Database& db, const TableDef& table);
// Names are matched without regard to case.
bool tableExists(Database& db, const QString& table);
bool fieldExists(Database& db, const QString& table, const QString& field);
bool indexExists(Database& db, const QString& table, const QString& field);
// The table's name as the database spells it; empty when there is no such table.
QString actualTableName(Database& db, const QString& table);
// Adds a field at the end of the table (an auto-increment one numbers the rows in order).
void addField(Database& db, const QString& table, const FieldDef& field);
void addIndex(Database& db, const QString& table, const QString& field);

// The fields and indexes as the database holds them.
std::vector<FieldDef> describeFields(Database& db, const QString& table);
std::vector<IndexDef> describeIndexes(Database& db, const QString& table);
QStringList tableNames(Database& db);

// Stored queries are views. Creating one drops any view of that name first.
void createQuery(Database& db, const QString& name, const QString& selectSql);
void dropQuery(Database& db, const QString& name);
bool queryExists(Database& db, const QString& name);

}  // namespace tallora::store
