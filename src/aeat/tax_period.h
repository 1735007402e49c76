#pragma once
// The period of a return or of a book's line as the tax agency writes it: "1T".."4T" for a
// quarter, "01".."12" for a month, "0A" for the year.
#include <QDate>
#include <QString>

#include <optional>

namespace tallora::aeat {

struct TaxPeriod {
    int year = 0;
    int fromMonth = 1, toMonth = 12;
    QString code;  // "1T", "07", "0A"

    QDate first() const { return QDate(year, fromMonth, 1); }
    QDate last() const;
    bool quarter() const { return code.endsWith(u'T'); }
};

// "1T".."4T", "1".."12" or "01".."12", "0A"; case does not matter. None for anything else.
std::optional<TaxPeriod> taxPeriod(int year, const QString& text);

// The quarter or the month a date falls in.
QString quarterCode(const QDate& date);
QString monthCode(const QDate& date);

}  // namespace tallora::aeat
