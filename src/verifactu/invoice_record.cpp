#include "invoice_record.h"

#include <QCryptographicHash>
#include <QStringList>

namespace tallora::verifactu {
namespace {

QString pair(const char* name, const QString& value) {
    return QLatin1String(name) + u'=' + value.trimmed();
}

}  // namespace

QString hashText(const InvoiceRecord& r) {
    const QString previous = r.anterior ? r.anterior->huella : QString();
    QStringList pairs;
    if (r.kind == RecordKind::Alta) {
        pairs << pair("IDEmisorFactura", r.id.emisor) << pair("NumSerieFactura", r.id.numSerie)
              << pair("FechaExpedicionFactura", r.id.fecha) << pair("TipoFactura", r.tipoFactura)
              << pair("CuotaTotal", r.cuotaTotal) << pair("ImporteTotal", r.importeTotal);
    } else {
        pairs << pair("IDEmisorFacturaAnulada", r.id.emisor)
              << pair("NumSerieFacturaAnulada", r.id.numSerie)
              << pair("FechaExpedicionFacturaAnulada", r.id.fecha);
    }
    pairs << pair("Huella", previous) << pair("FechaHoraHusoGenRegistro", r.fechaHora);
    return pairs.join(u'&');
}

QString sha256Hex(const QString& text) {
    return QString::fromLatin1(
        QCryptographicHash::hash(text.toUtf8(), QCryptographicHash::Sha256).toHex().toUpper());
}

QString computeHuella(const InvoiceRecord& record) {
    return sha256Hex(hashText(record));
}

}  // namespace tallora::verifactu
