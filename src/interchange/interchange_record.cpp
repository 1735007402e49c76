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

const RecordReader::Plan& RecordReader::plan(const RecordLayout& layout, const QString& table) {
    const QString id = layout.key + table;
    for (const auto& [key, p] : plans_)
        if (key == id) return p;
    Plan p;
    p.shape = plans_.size() + 1;
    const schema::TableCatalog& catalog = schema::TableCatalog::builtIn();
    const QString& number = layout.numberColumn();
    for (const FieldLayout& f : layout.fields) {
        if (!isRead(f, treasury_)) continue;
        if (f.column == number) p.number = static_cast<int>(p.fields.size());
        p.fields.emplace_back(&f, catalog.field(layout.database, table, f.column));
    }
    plans_.emplace_back(id, std::move(p));
    return plans_.back().second;
}

std::optional<ParsedRecord> RecordReader::read(const QString& line) {
    const QString key = fieldText(line, 1, 4);
    if (key.isEmpty() || key == QStringLiteral("INF")) return std::nullopt;
    const RecordLayout* layout = layoutFor(key);
    if (!layout || (partial_ && !isSelectionKey(key))) return std::nullopt;
    ParsedRecord r;
    r.layout = layout;
    r.table = layout->table;
    if (r.table.isEmpty()) {
        const FieldLayout& name = layout->fields.front();
        r.table = accountTable(fieldText(line, name.readColumn(), name.width));
    }
    const Plan& p = plan(*layout, r.table);
    r.shape = p.shape;
    r.number = p.number;
    const bool account = key == u"5CTA";
    r.fields.reserve(p.fields.size());
    for (const auto& [f, def] : p.fields) {
        QString text = fieldText(line, f->readColumn(), f->width);
        // An account without a kind takes "-".
        if (account && f->column == u"Tipus" && text.isEmpty()) text = QStringLiteral("-");
        try {
            Value v = parseValue(text, def, f->role);
            r.fields.push_back({f, std::move(text), std::move(v)});
        } catch (const ValueError& e) {
            throw e.inColumn(f->column);
        }
    }
    return r;
}

}  // namespace tallora::interchange
