#pragma once
// The definitions of every table of the program, read from the schema resource
// (resources/schema/tables.tsv): fields in order with type, size, options and default,
// and indexes. Fields and indexes marked "upgrade" are not made when a table is first
// created; the upgrades add them.
#include "store/schema_objects.h"

#include <QString>

#include <vector>

namespace tallora::schema {

struct CatalogTable {
    QString database;  // file name, e.g. "gest.mdb"
    store::TableDef table;
    std::vector<bool> fieldIsUpgrade;  // parallel to table.fields
    std::vector<bool> indexIsUpgrade;  // parallel to table.indexes
};

class TableCatalog {
public:
    // Throws std::runtime_error naming the line of a malformed row.
    static TableCatalog parse(const QString& tsv);
    static const TableCatalog& builtIn();

    const std::vector<CatalogTable>& tables() const { return tables_; }
    // By database and table name, without regard to case; throws std::out_of_range when unknown.
    const CatalogTable& table(const QString& database, const QString& name) const;
    // The table as its first creation makes it: no upgrade fields or indexes.
    store::TableDef creationDef(const QString& database, const QString& name) const;
    // One field's definition; throws std::out_of_range when unknown.
    store::FieldDef field(const QString& database, const QString& table, const QString& name) const;

private:
    std::vector<CatalogTable> tables_;
};

}  // namespace tallora::schema
