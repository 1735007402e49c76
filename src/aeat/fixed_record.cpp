#include "fixed_record.h"

#include <stdexcept>

namespace tallora::aeat {

QString agencyText(const QString& text) {
    QString out;
    out.reserve(text.size());
    for (QChar c : text.toUpper()) {
        if (c == u'Ñ' || c == u'Ç') {
            out += c;
            continue;
        }
        // The base letter of an accented one: its canonical decomposition's first character.
        const QString plain = QString(c).normalized(QString::NormalizationForm_D);
        const QChar base = plain.isEmpty() ? c : plain.at(0);
        if (base.unicode() < 0x20 || base.unicode() > 0xFF)
            out += u' ';
        else
            out += base;
    }
    return out;
}

qint64 cents(Money m) {
    const std::int64_t u = m.units();
    const std::int64_t half = u >= 0 ? 50 : -50;
    return (u + half) / 100;
}

FixedRecord::FixedRecord(int length) : line_(length, u' ') {}

void FixedRecord::put(int position, const QString& value) {
    if (position < 1 || position - 1 + value.size() > line_.size())
        throw std::out_of_range("field outside the record");
    line_.replace(position - 1, value.size(), value);
}

FixedRecord& FixedRecord::text(int position, int length, const QString& value) {
    put(position, agencyText(value).left(length).leftJustified(length, u' '));
    return *this;
}

FixedRecord& FixedRecord::number(int position, int length, qint64 value) {
    if (value < 0) throw std::invalid_argument("negative value in an unsigned field");
    QString digits = QString::number(value);
    if (digits.size() > length) throw std::overflow_error("number too long for its field");
    put(position, digits.rightJustified(length, u'0'));
    return *this;
}

FixedRecord& FixedRecord::signedAmount(int position, int length, Money value) {
    const qint64 c = cents(value);
    if (c >= 0) return number(position, length, c);
    // "N" takes the first digit's place.
    number(position + 1, length - 1, -c);
    put(position, QStringLiteral("N"));
    return *this;
}

FixedRecord& FixedRecord::amountWithSign(int signPosition, int position, int length, Money value) {
    const qint64 c = cents(value);
    if (signPosition > 0) put(signPosition, c < 0 ? QStringLiteral("N") : QStringLiteral(" "));
    return number(position, length, c < 0 ? -c : c);
}

FixedRecord& FixedRecord::amount(int position, int length, Money value) {
    return amountWithSign(0, position, length, value);
}

}  // namespace tallora::aeat
