#include "interchange_files.h"

#include "context/working_context.h"
#include "schema/creation.h"
#include "store/store_error.h"

#include <QFileInfo>

namespace tallora::interchange {
namespace {

// Every database the records come from, the exercise's first.
const QStringList& databases() {
    static const QStringList all{schema::db::Gest,    schema::db::Comptes, schema::db::FrasOut,
                                 schema::db::FrasIn,  schema::db::Supl,    schema::db::Tesorer,
                                 schema::db::Cartera, schema::db::Fact};
    return all;
}

QString aliasOf(const QString& database) {
    if (database == schema::db::Gest) return QStringLiteral("main");
    return database.section(u'.', 0, 0).toLower();
}

}  // namespace

QString faultReason(const std::exception& e) {
    if (const auto* s = dynamic_cast<const store::StoreError*>(&e)) return s->message();
    return QString::fromUtf8(e.what());
}

Area areaOf(const QString& database) {
    return database == schema::db::Cartera || database == schema::db::Fact ? Area::Company
                                                                           : Area::Exercise;
}

QString databaseFile(const WorkingContext& ctx, const QString& database, Area area) {
    return area == Area::Company ? ctx.companyFile(database) : ctx.exerciseFile(database);
}

InterchangeFiles::InterchangeFiles(const WorkingContext& ctx)
    : ctx_(ctx), db_(store::Database::open(ctx.exerciseFile(schema::db::Gest))) {
    present_ << schema::db::Gest;
    for (const QString& database : databases()) {
        if (database == schema::db::Gest) continue;
        const QString file = path(database, areaOf(database));
        if (!QFileInfo(file).isFile()) continue;
        db_.attach(file, aliasOf(database));
        present_ << database;
    }
    // A file left with a hot journal by a killed run is rolled back on its first read: read
    // each now, before anything copies them.
    for (const QString& database : present_)
        db_.execute(QStringLiteral("select count(*) from %1.sqlite_master").arg(aliasOf(database)));
}

QString InterchangeFiles::path(const QString& database, Area area) const {
    return databaseFile(ctx_, database, area);
}

QString InterchangeFiles::tableRef(const QString& database, const QString& table) const {
    return aliasOf(database) + u'.' + store::quoteIdentifier(table);
}

bool InterchangeFiles::hasTable(const QString& database, const QString& table) {
    if (!has(database)) return false;
    store::Statement st = db_.prepare(
        QStringLiteral(
            "select 1 from %1.sqlite_master where type = 'table' and lower(name) = lower(?)")
            .arg(aliasOf(database)));
    st.bind(1, table);
    return st.next();
}

}  // namespace tallora::interchange
