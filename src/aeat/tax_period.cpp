#include "tax_period.h"

namespace tallora::aeat {

QDate TaxPeriod::last() const {
    const QDate month(year, toMonth, 1);
    return QDate(year, toMonth, month.daysInMonth());
}

std::optional<TaxPeriod> taxPeriod(int year, const QString& text) {
    const QString t = text.trimmed().toUpper();
    TaxPeriod p;
    p.year = year;
    if (t == u"0A") {
        p.code = t;
        return p;
    }
    if (t.size() == 2 && t.endsWith(u'T') && t.at(0) >= u'1' && t.at(0) <= u'4') {
        const int q = t.at(0).digitValue();
        p.fromMonth = 3 * q - 2;
        p.toMonth = 3 * q;
        p.code = t;
        return p;
    }
    bool ok = false;
    const int month = t.toInt(&ok);
    if (!ok || month < 1 || month > 12 || t.size() > 2) return std::nullopt;
    p.fromMonth = p.toMonth = month;
    p.code = QStringLiteral("%1").arg(month, 2, 10, QLatin1Char('0'));
    return p;
}

QString quarterCode(const QDate& date) {
    return QStringLiteral("%1T").arg((date.month() + 2) / 3);
}

QString monthCode(const QDate& date) {
    return QStringLiteral("%1").arg(date.month(), 2, 10, QLatin1Char('0'));
}

}  // namespace tallora::aeat
