#pragma once
// Values in an interchange file: the text a stored value is written as, and the value a
// field's text is read back into.
//
// Written: numbers and amounts in their plain form with the decimal comma and no grouping
// (an amount without its trailing zeros: 12,5), dates "dd/mm/yyyy" (with " hh:mm:ss" when
// the stored value has a time), a Boolean "True" or "False", a null as nothing at all.
// Read: the decimal point is taken as well as the comma; a Boolean is also "Verdadero",
// "Falso", "-1", "1" or "0"; an empty number or amount is 0, an empty date a null.
#include "context/fwd.h"
#include "context/money.h"
#include "interchange_layout.h"
#include "store/schema_objects.h"

#include <QByteArray>
#include <QDate>
#include <QDateTime>
#include <QString>

#include <cstdint>
#include <stdexcept>
#include <variant>

namespace tallora::store {
class Statement;
}

namespace tallora::interchange {

// A value ready to be bound: null, a whole number, a double, an amount, a text, a date, a
// date with its time.
using Value = std::variant<std::nullptr_t, std::int64_t, double, Money, QString, QDate, QDateTime>;

// A field's text that its column cannot take, or a record the import cannot place; what()
// says why in English, reasonText in the user's language.
class ValueError : public std::runtime_error {
public:
    enum class Kind {
        WholeNumber,
        Amount,
        Number,
        Date,
        Time,
        Boolean,
        AccountTable,      // not one of the chart's tables
        MissingTable,      // a table the exercise does not have
        RepeatedPurchase,  // a purchase's number already there
        NoFreeNumber,      // a sale's number could not be made free
    };
    ValueError(Kind kind, QString value, QString column = {});
    Kind kind() const { return kind_; }
    const QString& value() const { return value_; }
    const QString& column() const { return column_; }
    // The same fault, of the field `column`.
    ValueError inColumn(const QString& column) const { return ValueError(kind_, value_, column); }

private:
    Kind kind_;
    QString value_;
    QString column_;
};

// What is wrong, in the language of the context: the field, the text it had, and why.
QString reasonText(const WorkingContext& ctx, const ValueError& e);

// The text of column `column` of `row`, of type `type`, as the file carries it.
QString valueText(const store::Statement& row, int column, store::FieldType type, FieldRole role);

// The field's text, already taken from its columns and trimmed, as a value of `field`'s
// type. Texts pass Neteja_Text; an empty text of a field that refuses one is a null.
// Throws ValueError.
Value parseValue(const QString& text, const store::FieldDef& field, FieldRole role);

void bindValue(store::Statement& statement, int index, const Value& value);

// `text` padded with blanks to `width` bytes and cut to it, in Windows-1252.
void appendField(QByteArray& line, const QString& text, int width);
// The field at `from` (counted from 1) and `width` of a decoded line, blanks trimmed.
QString fieldText(const QString& line, int from, int width);

}  // namespace tallora::interchange
