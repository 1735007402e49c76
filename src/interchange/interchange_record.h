#pragma once
// A data line of an interchange file taken apart: its record, the account table it names
// and the value of every field the reader takes. Nothing here touches a database, so that
// the reader's parsing can be tried on any input (fuzz/).
#include "interchange_layout.h"
#include "interchange_values.h"

#include <QString>

#include <cstddef>
#include <optional>
#include <utility>
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
    int number = -1;  // the field of the record's number, in `fields`
    // The same for every record of one kind and table that one reader reads.
    std::size_t shape = 0;

    // The field of that column; null when the reader does not take it.
    const RecordField* find(const QString& column) const;
    const RecordField* numberField() const {
        return number < 0 ? nullptr : &fields[static_cast<std::size_t>(number)];
    }
};

// Takes data lines apart for one import: a partial one reads customers, suppliers and the
// chart only, and the saldo columns are read with the treasury option on.
class RecordReader {
public:
    RecordReader(bool partial, bool treasury) : partial_(partial), treasury_(treasury) {}

    // The record of a line, or nullopt for a line the reader passes over: the header's, an
    // empty one, a key unknown in the mode. Throws ValueError for a field its column cannot
    // take, or an account table that is not one of the chart's.
    std::optional<ParsedRecord> read(const QString& line);

private:
    // The fields a record of one kind and table reads, with their columns' definitions.
    struct Plan {
        std::size_t shape = 0;
        std::vector<std::pair<const FieldLayout*, store::FieldDef>> fields;
        int number = -1;
    };
    const Plan& plan(const RecordLayout& layout, const QString& table);

    bool partial_;
    bool treasury_;
    std::vector<std::pair<QString, Plan>> plans_;  // by key and table
};

}  // namespace tallora::interchange
