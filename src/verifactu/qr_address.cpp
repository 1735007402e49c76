#include "qr_address.h"

#include <QUrl>

namespace tallora::verifactu {
namespace {

QString encoded(const QString& value) {
    return QString::fromLatin1(QUrl::toPercentEncoding(value.trimmed()));
}

}  // namespace

QString qrAddress(const InvoiceId& id, const QString& importeTotal, Environment environment) {
    const QString base = environment == Environment::Production
                             ? QStringLiteral("https://www2.agenciatributaria.gob.es")
                             : QStringLiteral("https://prewww2.aeat.es");
    return base + QStringLiteral("/wlpl/TIKE-CONT/ValidarQR?nif=") + encoded(id.emisor) +
           QStringLiteral("&numserie=") + encoded(id.numSerie) + QStringLiteral("&fecha=") +
           encoded(id.fecha) + QStringLiteral("&importe=") + encoded(importeTotal);
}

}  // namespace tallora::verifactu
