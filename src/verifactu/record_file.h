#pragma once
// The company's file of invoicing records, verifactu.mdb beside cartera.mdb: the records of
// every exercise in one chain, their submission state, and the company's VERI*FACTU settings.
// The records table refuses changes and deletions by itself, so that no code path can alter
// a record once written.
#include "qr_address.h"

#include "context/fwd.h"
#include "store/database.h"

#include <QString>

namespace tallora::verifactu {

inline const QString kRecordsFile = QStringLiteral("verifactu.mdb");
// The alias of the file on a posting's connection.
inline const QString kRecordsAlias = QStringLiteral("verifactu");

// The path of the company's record file (which may not exist yet), with an exercise open.
QString recordsPath(const WorkingContext& ctx);
// The same from the company's folder, with no exercise open.
QString recordsPathIn(const QString& companyFolder);

// Makes the file with its tables when missing; an existing file is left as it is.
void ensureRecordsFile(const QString& path);

// The company's setting; a company without the file has records on.
bool recordsEnabled(const WorkingContext& ctx);
void setRecordsEnabled(const WorkingContext& ctx, bool on);

// A setting of the file (Ajustes); empty when unset.
QString setting(store::Database& db, const QString& name, const QString& alias = QString());
void setSetting(store::Database& db, const QString& name, const QString& value);

// The tax agency's service the company sends to and whose address its QR codes carry: the
// setting Entorno, "pruebas" for the test service, production otherwise.
Environment recordsEnvironment(store::Database& db);
void setRecordsEnvironment(store::Database& db, Environment environment);

// Attaches the record file to a posting's connection, making it first, when the company has
// records on; gives whether it did. Call it before the posting's transaction begins.
bool attachRecords(const WorkingContext& ctx, store::Database& db);
// True when `db` has the record file attached.
bool recordsAttached(store::Database& db);

}  // namespace tallora::verifactu
