#pragma once
// A data line of an interchange file taken apart: its record, the account table it names
// and the value of every field the reader takes. Nothing here touches a database, so that
// the reader's parsing can be tried on any input (fuzz/).
#include "interchange_layout.h"
#include "interchange_values.h"

#include <QString>

#include <optional>
#include <vector>

namespace tallora::interchange {

struct RecordField {
    const FieldLayout* field;
    QString text;  // as the file has it, trimmed
    Value value;
};

struct ParsedRecord {
    const RecordLayout* layout = nullptr;
    QString table;  // the record's table; for an account, the one the line names
    std::vector<RecordField> fields;

    // The field of that column; null when the reader does not take it.
    const RecordField* find(const QString& column) const;
};

// The record of a line, or nullopt for a line the reader passes over: the header's, an
// empty one, a key unknown in the mode (a partial import reads customers, suppliers and
// the chart only). `treasury` says whether the saldo columns are read. Throws ValueError
// for a field its column cannot take, or an account table that is not one of the chart's.
std::optional<ParsedRecord> parseRecordLine(const QString& line, bool partial, bool treasury);

}  // namespace tallora::interchange
