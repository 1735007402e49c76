#pragma once
// Creation of the databases: the file when it is missing, and tables as their first
// creation makes them (without the fields that upgrades add later).
#include <QString>
#include <QStringList>

namespace tallora::schema {

// Databases by their file names, as the table definitions know them.
namespace db {
inline const QString Gest = QStringLiteral("gest.mdb");
inline const QString Comptes = QStringLiteral("Comptes.mdb");
inline const QString FrasOut = QStringLiteral("FrasOUT.mdb");
inline const QString FrasIn = QStringLiteral("FrasIN.mdb");
inline const QString Supl = QStringLiteral("Supl.mdb");
inline const QString Tesorer = QStringLiteral("tesorer.mdb");
inline const QString Llibre = QStringLiteral("LLibre.mdb");
inline const QString Explota = QStringLiteral("explota.mdb");
inline const QString Saldos = QStringLiteral("saldos.mdb");
inline const QString Cartera = QStringLiteral("cartera.mdb");
inline const QString Fact = QStringLiteral("fact.mdb");
inline const QString Cfg = QStringLiteral("cfg.mdb");
}  // namespace db

// The seven account tables, in the order they are made and read.
const QStringList& accountTables();

// Opens `path` (creating the file when missing) and creates each of `tables` of the
// database `database` that is not there yet, in the order given.
void createTables(const QString& path, const QString& database, const QStringList& tables);

// The databases of a new exercise, in this order: Clients and Proveidors in gest.mdb, the
// seven account tables in Comptes.mdb, FrasIN.mdb, FrasOUT.mdb.
void createExerciseDatabases(const QString& folder);

// True when `folder` holds a file named `stem`.<anything>, without regard to case.
bool anyFileWithStem(const QString& folder, const QString& stem);

}  // namespace tallora::schema
