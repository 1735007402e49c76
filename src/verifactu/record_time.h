#pragma once
// The time written into a legal record: the company's civil time with its offset, Madrid's
// for the mainland and the Balearics, the Canaries' for a company there, whatever the
// machine's own time zone is.
#include <QDateTime>
#include <QString>

namespace tallora::verifactu {

// True for a postal code of Las Palmas (35) or Santa Cruz de Tenerife (38).
bool isCanaryPostcode(const QString& postcode);

// "YYYY-MM-DDThh:mm:ss+hh:mm" of `instant` in Europe/Madrid, or Atlantic/Canary when `canary`.
QString recordTimestamp(const QDateTime& instant, bool canary);

}  // namespace tallora::verifactu
