#include "submission.h"

#include "record_xml.h"

#include "context/working_context.h"
#include "store/database.h"

#include <QFile>

namespace tallora::verifactu {
namespace {

const QString kPendingCondition = QStringLiteral(
    "not exists (select 1 from Respuestas a where a.Registro = r.Id and "
    "a.Estado in ('Correcto', 'AceptadoConErrores'))");

QString escaped(const QString& text) {
    return text.toHtmlEscaped();
}

QString envelope(const WorkingContext& ctx, const QString& emisor, const QStringList& records) {
    const QString lr = QStringLiteral(
        "https://www2.agenciatributaria.gob.es/static_files/common/internet/dep/aplicaciones/es/"
        "aeat/tike/cont/ws/SuministroLR.xsd");
    QString xml = QStringLiteral(
                      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>"
                      "<soapenv:Envelope "
                      "xmlns:soapenv=\"http://schemas.xmlsoap.org/soap/envelope/\" "
                      "xmlns:sum=\"%1\" xmlns:sf=\"%2\">"
                      "<soapenv:Header/><soapenv:Body>"
                      "<sum:RegFactuSistemaFacturacion><sum:Cabecera>"
                      "<sf:ObligadoEmision><sf:NombreRazon>%3</sf:NombreRazon>"
                      "<sf:NIF>%4</sf:NIF></sf:ObligadoEmision></sum:Cabecera>")
                      .arg(lr, recordsNamespace(), escaped(ctx.EmpresaNom.trimmed().left(120)),
                           escaped(emisor));
    for (const QString& record : records)
        xml += QStringLiteral("<sum:RegistroFactura>") + record +
               QStringLiteral("</sum:RegistroFactura>");
    xml += QStringLiteral("</sum:RegFactuSistemaFacturacion></soapenv:Body></soapenv:Envelope>");
    return xml;
}

}  // namespace

int pendingCount(const QString& path) {
    if (!QFile::exists(path)) return 0;
    store::Database db = store::Database::open(path);
    auto st =
        db.prepare(QStringLiteral("select count(*) from Registros r where ") + kPendingCondition);
    return st.next() ? st.int32(0) : 0;
}

Submission nextSubmission(const WorkingContext& ctx, const QString& path) {
    Submission out;
    if (!QFile::exists(path)) return out;
    store::Database db = store::Database::open(path);
    // One issuer a submission: the one of the oldest record waiting.
    auto st = db.prepare(QStringLiteral("select r.Id, r.Emisor, r.Xml from Registros r where ") +
                         kPendingCondition + QStringLiteral(" order by r.Id"));
    QString emisor;
    QStringList records;
    while (st.next() && out.records.size() < kRecordsPerSubmission) {
        if (emisor.isEmpty()) emisor = st.text(1);
        if (st.text(1) != emisor) continue;
        out.records.push_back(st.int64(0));
        records << st.text(2);
    }
    if (!records.isEmpty()) out.xml = envelope(ctx, emisor, records);
    return out;
}

}  // namespace tallora::verifactu
