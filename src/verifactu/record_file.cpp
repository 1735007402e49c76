#include "record_file.h"

#include "context/file_tree.h"
#include "context/working_context.h"
#include "store/side_file.h"

#include <QFile>
#include <QUuid>

namespace tallora::verifactu {
namespace {

using store::counterField;
using store::fieldOf;
using store::FieldType;
using store::memoField;
using store::textField;

store::TableDef registros() {
    store::TableDef t;
    t.name = QStringLiteral("Registros");
    t.fields = {counterField("Id"),
                textField("Emisor", 60),
                textField("Clase", 1),
                textField("Ejercicio", 4),
                fieldOf("Ordre", FieldType::Long),
                textField("NumSerie", 60),
                textField("Fecha", 10),
                textField("TipoFactura", 2, true),
                fieldOf("Subsanacion", FieldType::Boolean),
                textField("ImporteTotal", 20, true),
                textField("FechaHora", 25),
                textField("Huella", 64),
                fieldOf("Xml", FieldType::Memo),
                textField("Sello", 64)};
    t.indexes = {{QStringLiteral("Emisor")}, {QStringLiteral("Ordre")}};
    return t;
}

// One row per answer of the service to a record; a record is sent again until one says it
// was taken.
store::TableDef respuestas() {
    store::TableDef t;
    t.name = QStringLiteral("Respuestas");
    t.fields = {counterField("Id"),
                fieldOf("Registro", FieldType::Long),
                fieldOf("Envio", FieldType::Long),
                textField("Estado", 20, true),
                textField("Codigo", 20, true),
                memoField("Descripcion"),
                textField("CSV", 100, true),
                textField("FechaHora", 25)};
    t.indexes = {{QStringLiteral("Registro")}};
    return t;
}

// Each piece is made when missing, so that a file left half made is completed.
// Each submission, with the service's whole answer.
store::TableDef envios() {
    store::TableDef t;
    t.name = QStringLiteral("Envios");
    t.fields = {counterField("Id"),
                textField("FechaHora", 25),
                textField("Estado", 30, true),
                textField("CSV", 100, true),
                fieldOf("Espera", FieldType::Long),
                fieldOf("Registros", FieldType::Long),
                memoField("Respuesta")};
    return t;
}

void createMissing(store::Database& db) {
    for (const store::TableDef& table :
         {registros(), store::settingsTable(), respuestas(), envios()})
        if (!store::tableExists(db, table.name)) store::createTable(db, table);
    db.execute(QStringLiteral(
        "CREATE TRIGGER IF NOT EXISTS RegistrosInalterables BEFORE UPDATE ON Registros "
        "BEGIN SELECT RAISE(ABORT, 'an invoicing record is never changed'); END"));
    db.execute(QStringLiteral(
        "CREATE TRIGGER IF NOT EXISTS RegistrosPermanentes BEFORE DELETE ON Registros "
        "BEGIN SELECT RAISE(ABORT, 'an invoicing record is never deleted'); END"));
    if (setting(db, QStringLiteral("Activo")).isEmpty())
        setSetting(db, QStringLiteral("Activo"), QStringLiteral("1"));
    if (setting(db, QStringLiteral("NumeroInstalacion")).isEmpty())
        setSetting(db, QStringLiteral("NumeroInstalacion"),
                   QUuid::createUuid().toString(QUuid::WithoutBraces));
}

}  // namespace

QString recordsPath(const WorkingContext& ctx) {
    return ctx.companyFile(kRecordsFile);
}

QString recordsPathIn(const QString& companyFolder) {
    return findFileNoCase(withTrailingSlash(companyFolder), kRecordsFile);
}

void ensureRecordsFile(const QString& path) {
    store::Database db = store::Database::open(path, store::Database::Mode::CreateIfMissing);
    if (store::tableExists(db, QStringLiteral("Envios")) &&
        !setting(db, QStringLiteral("NumeroInstalacion")).isEmpty())
        return;
    createMissing(db);
}

QString setting(store::Database& db, const QString& name, const QString& alias) {
    return store::readSetting(db, name, alias);
}

void setSetting(store::Database& db, const QString& name, const QString& value) {
    store::writeSetting(db, name, value);
}

Environment recordsEnvironment(store::Database& db) {
    return setting(db, QStringLiteral("Entorno")) == QLatin1String("pruebas")
               ? Environment::Test
               : Environment::Production;
}

void setRecordsEnvironment(store::Database& db, Environment environment) {
    setSetting(db, QStringLiteral("Entorno"),
               environment == Environment::Test ? QStringLiteral("pruebas")
                                                : QStringLiteral("produccion"));
}

bool recordsEnabled(const WorkingContext& ctx) {
    const QString path = recordsPath(ctx);
    if (!QFile::exists(path)) return true;
    store::Database db = store::Database::open(path);
    return setting(db, QStringLiteral("Activo")) != QLatin1String("0");
}

void setRecordsEnabled(const WorkingContext& ctx, bool on) {
    const QString path = recordsPath(ctx);
    ensureRecordsFile(path);
    store::Database db = store::Database::open(path);
    setSetting(db, QStringLiteral("Activo"), on ? QStringLiteral("1") : QStringLiteral("0"));
}

// The setting is read through the attached file, so that a posting opens it once.
bool attachRecords(const WorkingContext& ctx, store::Database& db) {
    const QString path = recordsPath(ctx);
    ensureRecordsFile(path);
    db.attach(path, kRecordsAlias);
    if (setting(db, QStringLiteral("Activo"), kRecordsAlias) != QLatin1String("0")) return true;
    db.detach(kRecordsAlias);
    return false;
}

bool recordsAttached(store::Database& db) {
    auto st = db.prepare(QStringLiteral("select 1 from pragma_database_list where name = ?"));
    st.bind(1, kRecordsAlias);
    return st.next();
}

}  // namespace tallora::verifactu
