#pragma once
// The fixed-position records of the tax agency's files (the "diseños de registro" of models
// 303, 111, 347 and 349): a line of blanks of a set length into which each field is put at
// its 1-based position. Text goes in capitals without accents (Ñ and Ç stay), left-aligned and
// blank-padded; numbers right-aligned and zero-padded; amounts with their implied decimals.
// The line is written in ISO-8859-1.
#include "context/money.h"

#include <QByteArray>
#include <QString>

namespace tallora::aeat {

// The text as the agency's files take it: capitals, accents and diaereses dropped except
// in Ñ and Ç, anything outside ISO-8859-1 as a blank, runs of blanks kept.
QString agencyText(const QString& text);

// The cents of an amount, rounded half away from zero.
qint64 cents(Money m);

class FixedRecord {
public:
    explicit FixedRecord(int length);

    // An(n): the text, cut to `length`, blank-padded.
    FixedRecord& text(int position, int length, const QString& value);
    // Num(n): a whole number, zero-padded; a negative one is refused (the layout has no sign).
    FixedRecord& number(int position, int length, qint64 value);
    // N(n) of the 303 and 111: the amount's cents in `length` digits, zero-padded, with "N" in
    // the first position when negative.
    FixedRecord& signedAmount(int position, int length, Money value);
    // The 347 and 349 amounts: a sign byte ("N" negative, blank positive) at `position` then
    // the cents in `length` digits. With `signPosition` 0 the amount has no sign byte and a
    // negative one is written as its absolute value.
    FixedRecord& amountWithSign(int signPosition, int position, int length, Money value);
    // Unsigned amount: the absolute value's cents in `length` digits.
    FixedRecord& amount(int position, int length, Money value);

    const QString& line() const { return line_; }
    QByteArray latin1() const { return line_.toLatin1(); }

private:
    void put(int position, const QString& value);
    QString line_;
};

}  // namespace tallora::aeat
