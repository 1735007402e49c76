#pragma once
// Pieces of the company's files of our own (verifactu.mdb, banco.mdb): data the exercise
// schema does not hold, kept beside cartera.mdb. Field definitions in one line each, and a
// table of named settings (Ajustes: Nombre, Valor).
#include "schema_objects.h"

#include <QString>

namespace tallora::store {

FieldDef fieldOf(const char* name, FieldType type);
FieldDef textField(const char* name, int size, bool zeroLength = false);
FieldDef memoField(const char* name);     // zero-length allowed
FieldDef counterField(const char* name);  // auto-increment Long

// The table Ajustes.
TableDef settingsTable();
// A setting of the file, through `alias` when the file is attached; empty when unset.
QString readSetting(Database& db, const QString& name, const QString& alias = QString());
// Writes the setting into the main file of `db`, or into the attached `alias`.
void writeSetting(Database& db, const QString& name, const QString& value,
                  const QString& alias = QString());

}  // namespace tallora::store
