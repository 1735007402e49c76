#include "interchange_record.h"

#include "schema/table_catalog.h"

namespace tallora::interchange {
namespace {

bool isRead(const FieldLayout& f, bool treasury) {
    switch (f.role) {
        case FieldRole::Reserved:
        case FieldRole::WrittenOnly:
        case FieldRole::TableName:
            return false;
        case FieldRole::TreasuryOnly:
            return treasury;
        default:
            return true;
    }
}

QString accountTable(const QString& named) {
    for (const QString& table : interchangeAccountTables())
        if (table.compare(named, Qt::CaseInsensitive) == 0) return table;
    throw ValueError(ValueError::Kind::AccountTable, named);
}

}  // namespace

const RecordField* ParsedRecord::find(const QString& column) const {
    for (const RecordField& f : fields)
        if (f.field->column.compare(column, Qt::CaseInsensitive) == 0) return &f;
    return nullptr;
}

std::optional<ParsedRecord> parseRecordLine(const QString& line, bool partial, bool treasury) {
    const QString key = fieldText(line, 1, 4);
    if (key.isEmpty() || key == QStringLiteral("INF")) return std::nullopt;
    const RecordLayout* layout = layoutFor(key);
    if (!layout || (partial && !isSelectionKey(key))) return std::nullopt;
    ParsedRecord r;
    r.layout = layout;
    r.table = layout->table;
    if (r.table.isEmpty()) {
        const FieldLayout& name = layout->fields.front();
        r.table = accountTable(fieldText(line, name.readColumn(), name.width));
    }
    const schema::TableCatalog& catalog = schema::TableCatalog::builtIn();
    r.fields.reserve(layout->fields.size());
    for (const FieldLayout& f : layout->fields) {
        if (!isRead(f, treasury)) continue;
        QString text = fieldText(line, f.readColumn(), f.width);
        // An account without a kind takes "-".
        if (layout->trimmedKey() == u"5CTA" && f.column == u"Tipus" && text.isEmpty())
            text = QStringLiteral("-");
        const store::FieldDef def = catalog.field(layout->database, r.table, f.column);
        try {
            Value v = parseValue(text, def, f.role);
            r.fields.push_back({&f, std::move(text), std::move(v)});
        } catch (const ValueError& e) {
            throw e.inColumn(f.column);
        }
    }
    return r;
}

}  // namespace tallora::interchange
