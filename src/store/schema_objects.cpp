#include "schema_objects.h"

#include "collation.h"

#include <QRegularExpression>

namespace tallora::store {
namespace {

QString declaredType(const FieldDef& f) {
    switch (f.type) {
        case FieldType::Boolean: return QStringLiteral("BOOLEAN");
        case FieldType::Integer: return QStringLiteral("SHORT");
        case FieldType::Long: return QStringLiteral("LONG");
        case FieldType::Currency: return QStringLiteral("CURRENCY");
        case FieldType::Double: return QStringLiteral("DOUBLE");
        case FieldType::Date: return QStringLiteral("DATETIME");
        case FieldType::Text: return QStringLiteral("TEXT(%1)").arg(f.size);
        case FieldType::Memo: return QStringLiteral("LONGTEXT");
    }
    return QString();
}

QString check(const QString& table, const QString& field, const QString& what, const QString& rule) {
    return QStringLiteral(" CONSTRAINT %1 CHECK(%2)")
        .arg(quoteIdentifier(table + u'.' + field + QStringLiteral(": ") + what), rule);
}

QString emptyTextRule(const QString& table, const QString& field) {
    return table + u'.' + field + QStringLiteral(": empty text not allowed");
}

QString columnSql(const QString& table, const FieldDef& f) {
    const QString c = quoteIdentifier(f.name);
    if (f.autoIncrement) return c + QStringLiteral(" INTEGER PRIMARY KEY AUTOINCREMENT");
    QString sql = c + u' ' + declaredType(f);
    const bool isText = f.type == FieldType::Text || f.type == FieldType::Memo;
    if (isText) sql += QStringLiteral(" COLLATE ") + QString::fromLatin1(kTextCollation);
    if (!f.defaultSql.isEmpty()) sql += QStringLiteral(" DEFAULT ") + f.defaultSql;
    const QString t = table;
    switch (f.type) {
        case FieldType::Boolean:
            sql += check(t, f.name, QStringLiteral("not a Boolean (-1 or 0)"), c + QStringLiteral(" IN (-1, 0)"));
            break;
        case FieldType::Integer:
        case FieldType::Long: {
            const bool shortType = f.type == FieldType::Integer;
            sql += check(t, f.name, QStringLiteral("not a whole number"),
                         QStringLiteral("typeof(%1) IN ('integer', 'null')").arg(c));
            sql += check(t, f.name, QStringLiteral("out of range"),
                         QStringLiteral("%1 BETWEEN %2 AND %3")
                             .arg(c, shortType ? QStringLiteral("-32768") : QStringLiteral("-2147483648"),
                                  shortType ? QStringLiteral("32767") : QStringLiteral("2147483647")));
            break;
        }
        case FieldType::Currency:
            sql += check(t, f.name, QStringLiteral("not an amount"),
                         QStringLiteral("typeof(%1) IN ('integer', 'null')").arg(c));
            break;
        case FieldType::Double:
            sql += check(t, f.name, QStringLiteral("not a number"),
                         QStringLiteral("typeof(%1) IN ('real', 'integer', 'null')").arg(c));
            break;
        case FieldType::Date:
            sql += check(t, f.name, QStringLiteral("not a date"),
                         QStringLiteral("%1 IS NULL OR typeof(%1) = 'text' AND %1 GLOB "
                                        "'[0-9][0-9][0-9][0-9]-[0-9][0-9]-[0-9][0-9]*'")
                             .arg(c));
            break;
        case FieldType::Text:
            sql += check(t, f.name, QStringLiteral("longer than %1 characters").arg(f.size),
                         QStringLiteral("length(%1) <= %2").arg(c).arg(f.size));
            break;
        case FieldType::Memo: break;
    }
    if (isText && !f.zeroLength)
        sql += QStringLiteral(" CONSTRAINT %1 CHECK(%2 <> '')")
                   .arg(quoteIdentifier(emptyTextRule(t, f.name)), c);
    return sql;
}

QString indexName(const QString& table, const QString& field) { return table + u'.' + field; }

QString tableSql(Database& db, const QString& table) {
    Statement st = db.prepare(QStringLiteral(
        "SELECT sql FROM sqlite_master WHERE type = 'table' AND name = ? COLLATE NOCASE"));
    st.bind(1, table);
    return st.next() ? st.text(0) : QString();
}

FieldType typeFromDeclared(const QString& declared, int* size) {
    const QString d = declared.toUpper();
    static const QRegularExpression text(QStringLiteral("^TEXT\\((\\d+)\\)$"));
    if (const auto m = text.match(d); m.hasMatch()) {
        *size = m.captured(1).toInt();
        return FieldType::Text;
    }
    *size = 0;
    if (d == u"BOOLEAN") return FieldType::Boolean;
    if (d == u"SHORT") return FieldType::Integer;
    if (d == u"CURRENCY") return FieldType::Currency;
    if (d == u"DOUBLE") return FieldType::Double;
    if (d == u"DATETIME") return FieldType::Date;
    if (d == u"LONGTEXT") return FieldType::Memo;
    return FieldType::Long;  // LONG, and INTEGER of the auto-numbered key
}

}  // namespace

QString typeName(FieldType type) {
    switch (type) {
        case FieldType::Boolean: return QStringLiteral("Boolean");
        case FieldType::Integer: return QStringLiteral("Integer");
        case FieldType::Long: return QStringLiteral("Long");
        case FieldType::Currency: return QStringLiteral("Currency");
        case FieldType::Double: return QStringLiteral("Double");
        case FieldType::Date: return QStringLiteral("Date");
        case FieldType::Text: return QStringLiteral("Text");
        case FieldType::Memo: return QStringLiteral("Memo");
    }
    return QString();
}

void createTable(Database& db, const TableDef& table) {
    QStringList columns;
    for (const FieldDef& f : table.fields) columns << columnSql(table.name, f);
    Transaction tx(db);
    db.execute(QStringLiteral("CREATE TABLE %1 (%2)").arg(quoteIdentifier(table.name), columns.join(u", ")));
    for (const IndexDef& index : table.indexes) addIndex(db, table.name, index.field);
    tx.commit();
}

QString actualTableName(Database& db, const QString& table) {
    Statement st = db.prepare(QStringLiteral(
        "SELECT name FROM sqlite_master WHERE type = 'table' AND name = ? COLLATE NOCASE"));
    st.bind(1, table);
    return st.next() ? st.text(0) : QString();
}

bool tableExists(Database& db, const QString& table) { return !actualTableName(db, table).isEmpty(); }

bool fieldExists(Database& db, const QString& table, const QString& field) {
    for (const FieldDef& f : describeFields(db, table))
        if (f.name.compare(field, Qt::CaseInsensitive) == 0) return true;
    return false;
}

bool indexExists(Database& db, const QString& table, const QString& field) {
    const QString actual = actualTableName(db, table);
    if (actual.isEmpty()) return false;
    Statement st = db.prepare(QStringLiteral(
        "SELECT 1 FROM sqlite_master WHERE type = 'index' AND name = ? COLLATE NOCASE"));
    st.bind(1, indexName(actual, field));
    return st.next();
}

void addIndex(Database& db, const QString& table, const QString& field) {
    const QString actual = actualTableName(db, table);
    if (actual.isEmpty()) throw StoreError(QStringLiteral("no table %1 (%2)").arg(table, db.path()));
    db.execute(QStringLiteral("CREATE INDEX %1 ON %2 (%3)")
                   .arg(quoteIdentifier(indexName(actual, field)), quoteIdentifier(actual),
                        quoteIdentifier(field)));
}

void addField(Database& db, const QString& table, const FieldDef& field) {
    const QString actual = actualTableName(db, table);
    if (actual.isEmpty()) throw StoreError(QStringLiteral("no table %1 (%2)").arg(table, db.path()));
    if (!field.autoIncrement) {
        db.execute(QStringLiteral("ALTER TABLE %1 ADD COLUMN %2")
                       .arg(quoteIdentifier(actual), columnSql(actual, field)));
        return;
    }
    // SQLite cannot add a key column: the table is made anew with it, and the rows, in the
    // order they were written, get their numbers.
    TableDef rebuilt{actual, describeFields(db, actual), describeIndexes(db, actual)};
    QStringList names;
    for (const FieldDef& f : rebuilt.fields) names << quoteIdentifier(f.name);
    rebuilt.fields.push_back(field);
    const QString old = actual + QStringLiteral("_before_") + field.name;
    Transaction tx(db);
    db.execute(QStringLiteral("ALTER TABLE %1 RENAME TO %2").arg(quoteIdentifier(actual), quoteIdentifier(old)));
    for (const IndexDef& index : rebuilt.indexes)
        db.execute(QStringLiteral("DROP INDEX %1").arg(quoteIdentifier(indexName(actual, index.field))));
    QStringList columns;
    for (const FieldDef& f : rebuilt.fields) columns << columnSql(actual, f);
    db.execute(QStringLiteral("CREATE TABLE %1 (%2)").arg(quoteIdentifier(actual), columns.join(u", ")));
    db.execute(QStringLiteral("INSERT INTO %1 (%2) SELECT %2 FROM %3 ORDER BY rowid")
                   .arg(quoteIdentifier(actual), names.join(u", "), quoteIdentifier(old)));
    db.execute(QStringLiteral("DROP TABLE %1").arg(quoteIdentifier(old)));
    for (const IndexDef& index : rebuilt.indexes) addIndex(db, actual, index.field);
    tx.commit();
}

std::vector<FieldDef> describeFields(Database& db, const QString& table) {
    std::vector<FieldDef> fields;
    const QString actual = actualTableName(db, table);
    if (actual.isEmpty()) return fields;
    const QString sql = tableSql(db, actual);
    Statement st = db.prepare(QStringLiteral("SELECT name, type, dflt_value, pk FROM pragma_table_info(?)"));
    st.bind(1, actual);
    while (st.next()) {
        FieldDef f;
        f.name = st.text(0);
        f.type = typeFromDeclared(st.text(1), &f.size);
        f.defaultSql = st.isNull(2) ? QString() : st.text(2);
        f.autoIncrement = st.int64(3) != 0 && st.text(1).compare(u"INTEGER", Qt::CaseInsensitive) == 0;
        const bool isText = f.type == FieldType::Text || f.type == FieldType::Memo;
        f.zeroLength = isText && !sql.contains(quoteIdentifier(emptyTextRule(actual, f.name)));
        fields.push_back(f);
    }
    return fields;
}

std::vector<IndexDef> describeIndexes(Database& db, const QString& table) {
    std::vector<IndexDef> indexes;
    const QString actual = actualTableName(db, table);
    Statement st = db.prepare(QStringLiteral(
        "SELECT name FROM sqlite_master WHERE type = 'index' AND tbl_name = ? AND sql IS NOT NULL "
        "ORDER BY rowid"));
    st.bind(1, actual);
    const QString prefix = actual + u'.';
    while (st.next()) {
        const QString name = st.text(0);
        if (name.startsWith(prefix)) indexes.push_back({name.mid(prefix.size())});
    }
    return indexes;
}

QStringList tableNames(Database& db) {
    QStringList names;
    Statement st = db.prepare(QStringLiteral(
        "SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT LIKE 'sqlite\\_%' ESCAPE '\\' "
        "ORDER BY rowid"));
    while (st.next()) names << st.text(0);
    return names;
}

void createQuery(Database& db, const QString& name, const QString& selectSql) {
    dropQuery(db, name);
    db.execute(QStringLiteral("CREATE VIEW %1 AS %2").arg(quoteIdentifier(name), selectSql));
}

void dropQuery(Database& db, const QString& name) {
    db.execute(QStringLiteral("DROP VIEW IF EXISTS %1").arg(quoteIdentifier(name)));
}

bool queryExists(Database& db, const QString& name) {
    Statement st = db.prepare(QStringLiteral(
        "SELECT 1 FROM sqlite_master WHERE type = 'view' AND name = ? COLLATE NOCASE"));
    st.bind(1, name);
    return st.next();
}

}  // namespace tallora::store
