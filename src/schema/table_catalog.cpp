#include "table_catalog.h"

#include <QFile>

#include <stdexcept>

namespace tallora::schema {
namespace {

store::FieldType parseType(const QString& name, int line) {
    using store::FieldType;
    for (FieldType t : {FieldType::Boolean, FieldType::Integer, FieldType::Long, FieldType::Currency,
                        FieldType::Double, FieldType::Date, FieldType::Text, FieldType::Memo})
        if (store::typeName(t) == name) return t;
    throw std::runtime_error("schema: unknown type on line " + std::to_string(line));
}

}  // namespace

TableCatalog TableCatalog::parse(const QString& tsv) {
    TableCatalog catalog;
    const QStringList lines = tsv.split(u'\n');
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const int lineNo = static_cast<int>(i + 1);
        QString line = lines[i];
        if (line.endsWith(u'\r')) line.chop(1);
        if (line.trimmed().isEmpty() || line.startsWith(u'#')) continue;
        const QStringList c = line.split(u'\t');
        auto bad = [&] { return std::runtime_error("schema: malformed line " + std::to_string(lineNo)); };
        if (c[0] == u"T") {
            if (c.size() != 3) throw bad();
            catalog.tables_.push_back({c[1], {c[2], {}, {}}, {}, {}});
            continue;
        }
        if (catalog.tables_.empty()) throw bad();
        CatalogTable& t = catalog.tables_.back();
        if (c[0] == u"F" && c.size() == 6) {
            store::FieldDef f;
            f.name = c[1];
            f.type = parseType(c[2], lineNo);
            bool ok = true;
            f.size = c[3].isEmpty() ? 0 : c[3].toInt(&ok);
            if (!ok || (f.type == store::FieldType::Text) != (f.size > 0)) throw bad();
            const QStringList flags = c[4].split(u',', Qt::SkipEmptyParts);
            f.autoIncrement = flags.contains(u"auto");
            f.zeroLength = flags.contains(u"zero");
            f.defaultSql = c[5];
            t.table.fields.push_back(f);
            t.fieldIsUpgrade.push_back(flags.contains(u"upgrade"));
        } else if (c[0] == u"I" && c.size() == 3) {
            t.table.indexes.push_back({c[1]});
            t.indexIsUpgrade.push_back(c[2] == u"upgrade");
        } else {
            throw bad();
        }
    }
    return catalog;
}

const TableCatalog& TableCatalog::builtIn() {
    static const TableCatalog catalog = [] {
        QFile file(QStringLiteral(":/schema/tables.tsv"));
        if (!file.open(QIODevice::ReadOnly)) throw std::runtime_error("schema: the built-in tables are missing");
        return parse(QString::fromUtf8(file.readAll()));
    }();
    return catalog;
}

const CatalogTable& TableCatalog::table(const QString& database, const QString& name) const {
    for (const CatalogTable& t : tables_)
        if (t.database.compare(database, Qt::CaseInsensitive) == 0 &&
            t.table.name.compare(name, Qt::CaseInsensitive) == 0)
            return t;
    throw std::out_of_range("schema: no table " + name.toStdString() + " in " + database.toStdString());
}

store::TableDef TableCatalog::creationDef(const QString& database, const QString& name) const {
    const CatalogTable& t = table(database, name);
    store::TableDef def{t.table.name, {}, {}};
    for (std::size_t i = 0; i < t.table.fields.size(); ++i)
        if (!t.fieldIsUpgrade[i]) def.fields.push_back(t.table.fields[i]);
    for (std::size_t i = 0; i < t.table.indexes.size(); ++i)
        if (!t.indexIsUpgrade[i]) def.indexes.push_back(t.table.indexes[i]);
    return def;
}

store::FieldDef TableCatalog::field(const QString& database, const QString& table,
                                    const QString& name) const {
    for (const store::FieldDef& f : this->table(database, table).table.fields)
        if (f.name.compare(name, Qt::CaseInsensitive) == 0) return f;
    throw std::out_of_range("schema: no field " + name.toStdString() + " in " + table.toStdString());
}

}  // namespace tallora::schema
