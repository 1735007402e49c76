#include "creation.h"

#include "context/file_tree.h"
#include "store/database.h"
#include "table_catalog.h"

#include <QDir>

namespace tallora::schema {

const QStringList& accountTables() {
    static const QStringList tables{"Compres",        "Serveis",    "Tributs", "Personal",
                                    "Amortitzacions", "Inversions", "Ingresos"};
    return tables;
}

void createTables(const QString& path, const QString& database, const QStringList& tables) {
    store::Database d = store::Database::open(path, store::Database::Mode::CreateIfMissing);
    const TableCatalog& catalog = TableCatalog::builtIn();
    for (const QString& table : tables)
        if (!store::tableExists(d, table)) store::createTable(d, catalog.creationDef(database, table));
}

void createExerciseDatabases(const QString& folder) {
    const QString base = withTrailingSlash(folder);
    createTables(base + db::Gest, db::Gest, {"Clients", "Proveidors"});
    createTables(base + db::Comptes, db::Comptes, accountTables());
    createTables(base + db::FrasIn, db::FrasIn, {"FrasIN"});
    createTables(base + db::FrasOut, db::FrasOut, {"FrasOut"});
}

bool anyFileWithStem(const QString& folder, const QString& stem) {
    const QDir dir(folder);
    const QStringList entries = dir.entryList(QDir::Files | QDir::Hidden | QDir::System);
    const QString prefix = stem + u'.';
    for (const QString& entry : entries)
        if (entry.startsWith(prefix, Qt::CaseInsensitive)) return true;
    return false;
}

}  // namespace tallora::schema
