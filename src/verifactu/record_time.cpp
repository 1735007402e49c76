#include "record_time.h"

#include <QTimeZone>

namespace tallora::verifactu {
namespace {

// Last Sunday of `month` in `year`, at 01:00 UTC: where the EU's summer time begins or ends.
QDateTime lastSundayOneUtc(int year, int month) {
    QDate day(year, month, QDate(year, month, 1).daysInMonth());
    while (day.dayOfWeek() != Qt::Sunday) day = day.addDays(-1);
    return QDateTime(day, QTime(1, 0), Qt::UTC);
}

// The offset by the EU rule, for a machine without the time zone database.
int ruleOffset(const QDateTime& utc, int standard) {
    const int year = utc.date().year();
    const bool summer = utc >= lastSundayOneUtc(year, 3) && utc < lastSundayOneUtc(year, 10);
    return standard + (summer ? 3600 : 0);
}

QString offsetText(int seconds) {
    const QChar sign = seconds < 0 ? u'-' : u'+';
    const int minutes = std::abs(seconds) / 60;
    return sign + QStringLiteral("%1:%2")
                      .arg(minutes / 60, 2, 10, QLatin1Char('0'))
                      .arg(minutes % 60, 2, 10, QLatin1Char('0'));
}

}  // namespace

bool isCanaryPostcode(const QString& postcode) {
    const QString cp = postcode.trimmed();
    return cp.size() == 5 &&
           (cp.startsWith(QLatin1String("35")) || cp.startsWith(QLatin1String("38")));
}

QString recordTimestamp(const QDateTime& instant, bool canary) {
    const QDateTime utc = instant.toUTC();
    const QTimeZone zone(canary ? "Atlantic/Canary" : "Europe/Madrid");
    const int offset =
        zone.isValid() ? zone.offsetFromUtc(utc) : ruleOffset(utc, canary ? 0 : 3600);
    const QDateTime local = utc.addSecs(offset);
    return local.toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss")) + offsetText(offset);
}

}  // namespace tallora::verifactu
