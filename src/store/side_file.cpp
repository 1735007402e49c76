#include "side_file.h"

namespace tallora::store {

FieldDef fieldOf(const char* name, FieldType type) {
    FieldDef f;
    f.name = QString::fromLatin1(name);
    f.type = type;
    return f;
}

FieldDef textField(const char* name, int size, bool zeroLength) {
    FieldDef f = fieldOf(name, FieldType::Text);
    f.size = size;
    f.zeroLength = zeroLength;
    return f;
}

FieldDef memoField(const char* name) {
    FieldDef f = fieldOf(name, FieldType::Memo);
    f.zeroLength = true;
    return f;
}

FieldDef counterField(const char* name) {
    FieldDef f = fieldOf(name, FieldType::Long);
    f.autoIncrement = true;
    return f;
}

TableDef settingsTable() {
    TableDef t;
    t.name = QStringLiteral("Ajustes");
    t.fields = {textField("Nombre", 40), textField("Valor", 255, true)};
    return t;
}

namespace {
QString settingsOf(const QString& alias) {
    return alias.isEmpty() ? QStringLiteral("Ajustes") : alias + QStringLiteral(".Ajustes");
}
}  // namespace

QString readSetting(Database& db, const QString& name, const QString& alias) {
    auto st =
        db.prepare(QStringLiteral("select Valor from %1 where Nombre = ?").arg(settingsOf(alias)));
    st.bind(1, name);
    return st.next() && !st.isNull(0) ? st.text(0) : QString();
}

void writeSetting(Database& db, const QString& name, const QString& value, const QString& alias) {
    const QString table = settingsOf(alias);
    db.prepare(QStringLiteral("delete from %1 where Nombre = ?").arg(table))
        .bind(1, name)
        .execute();
    db.prepare(QStringLiteral("insert into %1 (Nombre, Valor) values (?, ?)").arg(table))
        .bind(1, name)
        .bind(2, value)
        .execute();
}

}  // namespace tallora::store
