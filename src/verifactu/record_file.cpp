#include "record_file.h"

#include "context/file_tree.h"
#include "context/working_context.h"
#include "store/schema_objects.h"

#include <QFile>
#include <QUuid>

namespace tallora::verifactu {
namespace {

using store::FieldDef;
using store::FieldType;

FieldDef field(const char* name, FieldType type) {
    FieldDef f;
    f.name = QString::fromLatin1(name);
    f.type = type;
    return f;
}

FieldDef text(const char* name, int size, bool zeroLength = false) {
    FieldDef f = field(name, FieldType::Text);
    f.size = size;
    f.zeroLength = zeroLength;
    return f;
}

FieldDef memo(const char* name) {
    FieldDef f = field(name, FieldType::Memo);
    f.zeroLength = true;
    return f;
}

FieldDef counter(const char* name) {
    FieldDef f = field(name, FieldType::Long);
    f.autoIncrement = true;
    return f;
}

store::TableDef registros() {
    store::TableDef t;
    t.name = QStringLiteral("Registros");
    t.fields = {counter("Id"),
                text("Emisor", 60),
                text("Clase", 1),
                text("Ejercicio", 4),
                field("Ordre", FieldType::Long),
                text("NumSerie", 60),
                text("Fecha", 10),
                text("TipoFactura", 2, true),
                field("Subsanacion", FieldType::Boolean),
                text("ImporteTotal", 20, true),
                text("FechaHora", 25),
                text("Huella", 64),
                field("Xml", FieldType::Memo),
                text("Sello", 64)};
    t.indexes = {{QStringLiteral("Emisor")}, {QStringLiteral("Ordre")}};
    return t;
}

store::TableDef ajustes() {
    store::TableDef t;
    t.name = QStringLiteral("Ajustes");
    t.fields = {text("Nombre", 40), text("Valor", 255, true)};
    return t;
}

// One row per answer of the service to a record; a record is sent again until one says it
// was taken.
store::TableDef respuestas() {
    store::TableDef t;
    t.name = QStringLiteral("Respuestas");
    t.fields = {counter("Id"),
                field("Registro", FieldType::Long),
                field("Envio", FieldType::Long),
                text("Estado", 20, true),
                text("Codigo", 20, true),
                memo("Descripcion"),
                text("CSV", 100, true),
                text("FechaHora", 25)};
    t.indexes = {{QStringLiteral("Registro")}};
    return t;
}

// Each piece is made when missing, so that a file left half made is completed.
// Each submission, with the service's whole answer.
store::TableDef envios() {
    store::TableDef t;
    t.name = QStringLiteral("Envios");
    t.fields = {counter("Id"),
                text("FechaHora", 25),
                text("Estado", 30, true),
                text("CSV", 100, true),
                field("Espera", FieldType::Long),
                field("Registros", FieldType::Long),
                memo("Respuesta")};
    return t;
}

void createMissing(store::Database& db) {
    for (const store::TableDef& table : {registros(), ajustes(), respuestas(), envios()})
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
    const QString table =
        alias.isEmpty() ? QStringLiteral("Ajustes") : alias + QStringLiteral(".Ajustes");
    auto st = db.prepare(QStringLiteral("select Valor from %1 where Nombre = ?").arg(table));
    st.bind(1, name);
    return st.next() && !st.isNull(0) ? st.text(0) : QString();
}

void setSetting(store::Database& db, const QString& name, const QString& value) {
    db.prepare(QStringLiteral("delete from Ajustes where Nombre = ?")).bind(1, name).execute();
    db.prepare(QStringLiteral("insert into Ajustes (Nombre, Valor) values (?, ?)"))
        .bind(1, name)
        .bind(2, value)
        .execute();
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
