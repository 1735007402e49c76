#pragma once
// The records of an interchange file: for each key, the table it comes from and its fields
// by first column and width. Columns are counted from 1; every field is padded with blanks
// to its width and cut to it.
#include <QString>
#include <QStringList>
#include <QStringView>

#include <vector>

namespace tallora::interchange {

// How a field is written and read beyond its column's own type.
enum class FieldRole {
    Plain,         // the column's value in the form of its type
    ReFlag,        // "1" when set, "0" otherwise (the customer's recargo)
    Reserved,      // written as blanks, never read back
    WrittenOnly,   // written with its value, not read back
    TreasuryOnly,  // written and read only with the treasury option on
    TableName,     // the account table the line belongs to
    LineBreaks,    // a line break is written as "$" and "$" read back as a line break
};

struct FieldLayout {
    QString column;  // as the table names it; the table's name for TableName
    int from = 0;    // first column, from 1
    int width = 0;
    FieldRole role = FieldRole::Plain;
    int readFrom = 0;  // where the reader takes it, when not at `from`

    int readColumn() const { return readFrom ? readFrom : from; }
};

enum class Area { Exercise, Company };

struct RecordLayout {
    QString key;       // the four characters of columns 1 to 4 ("5IN " has a trailing blank)
    QString tag;       // the log's tag ("CLI: ")
    QString database;  // file name of the source database
    Area area = Area::Exercise;
    QString table;    // empty for the accounts, whose table travels in the line
    QString orderBy;  // the column the export sorts by
    std::vector<FieldLayout> fields;
    QString logText;  // the column shown after the number in the log; empty for none

    // The trimmed key, as the reader compares it ("5IN").
    QStringView trimmedKey() const { return QStringView(key).trimmed(); }
    const FieldLayout* field(const QString& column) const;
    // The column of the record's number: an account's Compte, any other record's first field.
    const QString& numberColumn() const {
        return fields.front().role == FieldRole::TableName ? orderBy : fields.front().column;
    }
    // The column right after the last field: where a full line ends.
    int lineLength(bool treasury) const;
};

// Every record in the order the export writes them.
const std::vector<RecordLayout>& recordLayouts();
// The layout of a trimmed key ("5CLI", "5IN"); null for an unknown key.
const RecordLayout* layoutFor(QStringView trimmedKey);

// The account tables in the order they travel and are wiped.
const QStringList& interchangeAccountTables();

// The customers, suppliers and chart records: all a selection can hold.
inline bool isSelectionKey(QStringView trimmedKey) {
    return trimmedKey == u"5CLI" || trimmedKey == u"5PRO" || trimmedKey == u"5CTA";
}

}  // namespace tallora::interchange
