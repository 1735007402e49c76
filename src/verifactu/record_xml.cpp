#include "record_xml.h"

#include <QHash>
#include <QStringList>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

namespace tallora::verifactu {
namespace {

class Writer {
public:
    explicit Writer(QString* out) : xml_(out) {}
    void open(const char* name) { xml_.writeStartElement(q(name)); }
    void close() { xml_.writeEndElement(); }
    void field(const char* name, const QString& value) { xml_.writeTextElement(q(name), value); }
    void fieldNamed(const QString& name, const QString& value) {
        xml_.writeTextElement(QStringLiteral("sf:") + name, value);
    }
    void optional(const char* name, const QString& value) {
        if (!value.isEmpty()) field(name, value);
    }

private:
    static QString q(const char* name) { return QStringLiteral("sf:") + QLatin1String(name); }
    QXmlStreamWriter xml_;
};

QString yesNo(bool value) {
    return value ? QStringLiteral("S") : QStringLiteral("N");
}

void writeLink(Writer& w, const InvoiceRecord& r) {
    w.open("Encadenamiento");
    if (r.anterior) {
        w.open("RegistroAnterior");
        w.field("IDEmisorFactura", r.anterior->id.emisor);
        w.field("NumSerieFactura", r.anterior->id.numSerie);
        w.field("FechaExpedicionFactura", r.anterior->id.fecha);
        w.field("Huella", r.anterior->huella);
        w.close();
    } else {
        w.field("PrimerRegistro", QStringLiteral("S"));
    }
    w.close();
}

void writeSystem(Writer& w, const SystemIdentity& s) {
    w.open("SistemaInformatico");
    w.field("NombreRazon", s.productorNombre);
    w.field("NIF", s.productorNif);
    w.field("NombreSistemaInformatico", s.nombreSistema);
    w.field("IdSistemaInformatico", s.idSistema);
    w.field("Version", s.version);
    w.field("NumeroInstalacion", s.numeroInstalacion);
    w.field("TipoUsoPosibleSoloVerifactu", yesNo(s.soloVerifactu));
    w.field("TipoUsoPosibleMultiOT", yesNo(s.multiOT));
    w.field("IndicadorMultiplesOT", yesNo(s.indicadorMultiplesOT));
    w.close();
}

void writeTail(Writer& w, const InvoiceRecord& r, const SystemIdentity& s) {
    writeLink(w, r);
    writeSystem(w, s);
    w.field("FechaHoraHusoGenRegistro", r.fechaHora);
    w.field("TipoHuella", QStringLiteral("01"));
    w.field("Huella", r.huella);
}

void writeRecipient(Writer& w, const Recipient& d) {
    w.open("Destinatarios");
    w.open("IDDestinatario");
    w.field("NombreRazon", d.nombre);
    if (!d.nif.isEmpty()) {
        w.field("NIF", d.nif);
    } else {
        w.open("IDOtro");
        w.optional("CodigoPais", d.codigoPais);
        w.field("IDType", d.idType);
        w.field("ID", d.id);
        w.close();
    }
    w.close();
    w.close();
}

void writeBreakdown(Writer& w, const std::vector<BreakdownLine>& lines) {
    w.open("Desglose");
    for (const BreakdownLine& l : lines) {
        w.open("DetalleDesglose");
        w.field("Impuesto", QStringLiteral("01"));
        w.field("ClaveRegimen", l.claveRegimen);
        w.optional("CalificacionOperacion", l.calificacion);
        w.optional("OperacionExenta", l.exenta);
        w.optional("TipoImpositivo", l.tipoImpositivo);
        w.field("BaseImponibleOimporteNoSujeto", l.base);
        w.optional("CuotaRepercutida", l.cuota);
        w.optional("TipoRecargoEquivalencia", l.tipoRecargo);
        w.optional("CuotaRecargoEquivalencia", l.cuotaRecargo);
        w.close();
    }
    w.close();
}

// The record's head: its version and IDFactura, whose names end in `suffix` ("Anulada").
void writeHead(Writer& w, const InvoiceId& id, const char* suffix) {
    const QString end = QLatin1String(suffix);
    w.field("IDVersion", QStringLiteral("1.0"));
    w.open("IDFactura");
    w.fieldNamed(QStringLiteral("IDEmisorFactura") + end, id.emisor);
    w.fieldNamed(QStringLiteral("NumSerieFactura") + end, id.numSerie);
    w.fieldNamed(QStringLiteral("FechaExpedicionFactura") + end, id.fecha);
    w.close();
}

void writeAlta(Writer& w, const InvoiceRecord& r, const SystemIdentity& s) {
    w.open("RegistroAlta");
    writeHead(w, r.id, "");
    w.field("NombreRazonEmisor", r.nombreEmisor);
    if (r.subsanacion) w.field("Subsanacion", QStringLiteral("S"));
    w.field("TipoFactura", r.tipoFactura);
    w.optional("TipoRectificativa", r.tipoRectificativa);
    w.field("DescripcionOperacion", r.descripcion);
    if (r.destinatario) writeRecipient(w, *r.destinatario);
    writeBreakdown(w, r.desglose);
    w.field("CuotaTotal", r.cuotaTotal);
    w.field("ImporteTotal", r.importeTotal);
    writeTail(w, r, s);
    w.close();
}

void writeAnulacion(Writer& w, const InvoiceRecord& r, const SystemIdentity& s) {
    w.open("RegistroAnulacion");
    writeHead(w, r.id, "Anulada");
    writeTail(w, r, s);
    w.close();
}

// The element texts of a record by their path below the record ("IDFactura/NumSerieFactura"),
// and the lines of the breakdown, each as its own map.
struct ReadElements {
    QString root;
    QHash<QString, QString> values;
    std::vector<QHash<QString, QString>> lines;
};

// The path is kept as one text, grown and cut back element by element: checking a chain
// reads every record, and joining a list of names at each element cost most of it.
std::optional<ReadElements> readElements(const QString& xml) {
    QXmlStreamReader reader(xml);
    reader.setNamespaceProcessing(false);
    ReadElements out;
    QString path;
    std::vector<qsizetype> starts;  // where each open element's name begins in `path`
    QString text;
    while (!reader.atEnd()) {
        switch (reader.readNext()) {
            case QXmlStreamReader::StartElement:
                if (out.root.isEmpty()) {
                    out.root = xmlLocalName(reader.qualifiedName());
                } else {
                    starts.push_back(path.size());
                    if (!path.isEmpty()) path += u'/';
                    path += xmlLocalName(reader.qualifiedName());
                    if (path == QLatin1String("Desglose/DetalleDesglose")) out.lines.emplace_back();
                }
                text.clear();
                break;
            case QXmlStreamReader::Characters:
                text += reader.text();
                break;
            case QXmlStreamReader::EndElement: {
                if (starts.empty()) break;
                const qsizetype start = starts.back();
                starts.pop_back();
                if (starts.size() == 2 &&
                    path.startsWith(QLatin1String("Desglose/DetalleDesglose/")))
                    out.lines.back().insert(path.mid(start + 1), text);
                else if (!out.values.contains(path))
                    out.values.insert(path, text);
                path.truncate(start);
                text.clear();
                break;
            }
            default:
                break;
        }
    }
    if (reader.hasError() || out.root.isEmpty()) return std::nullopt;
    return out;
}

}  // namespace

namespace {

// The text of the first element `name` at or after `from`, unescaped; nothing when absent.
std::optional<QString> tagText(const QString& xml, QLatin1String name, qsizetype from = 0,
                               bool last = false) {
    const QString open = QStringLiteral("<sf:") + name + u'>';
    const qsizetype at = last ? xml.lastIndexOf(open) : xml.indexOf(open, from);
    if (at < 0 || at < from) return std::nullopt;
    const qsizetype start = at + open.size();
    const qsizetype end = xml.indexOf(QStringLiteral("</sf:") + name + u'>', start);
    if (end < 0) return std::nullopt;
    QString text = xml.mid(start, end - start);
    if (text.contains(u'&'))
        text.replace(QLatin1String("&lt;"), QLatin1String("<"))
            .replace(QLatin1String("&gt;"), QLatin1String(">"))
            .replace(QLatin1String("&quot;"), QLatin1String("\""))
            .replace(QLatin1String("&apos;"), QLatin1String("'"))
            .replace(QLatin1String("&amp;"), QLatin1String("&"));
    return text;
}

}  // namespace

std::optional<InvoiceRecord> chainFields(const QString& xml) {
    InvoiceRecord r;
    const bool alta = xml.startsWith(QLatin1String("<sf:RegistroAlta>"));
    if (!alta && !xml.startsWith(QLatin1String("<sf:RegistroAnulacion>"))) return std::nullopt;
    r.kind = alta ? RecordKind::Alta : RecordKind::Anulacion;
    const char* const names[2][3] = {
        {"IDEmisorFactura", "NumSerieFactura", "FechaExpedicionFactura"},
        {"IDEmisorFacturaAnulada", "NumSerieFacturaAnulada", "FechaExpedicionFacturaAnulada"}};
    const auto& id = names[alta ? 0 : 1];
    const auto emisor = tagText(xml, QLatin1String(id[0]));
    const auto numero = tagText(xml, QLatin1String(id[1]));
    const auto fecha = tagText(xml, QLatin1String(id[2]));
    const auto fechaHora = tagText(xml, QLatin1String("FechaHoraHusoGenRegistro"));
    const auto huella = tagText(xml, QLatin1String("Huella"), 0, true);
    if (!emisor || !numero || !fecha || !fechaHora || !huella) return std::nullopt;
    r.id = {*emisor, *numero, *fecha};
    r.fechaHora = *fechaHora;
    r.huella = *huella;
    if (alta) {
        const auto tipo = tagText(xml, QLatin1String("TipoFactura"));
        const auto cuota = tagText(xml, QLatin1String("CuotaTotal"));
        const auto total = tagText(xml, QLatin1String("ImporteTotal"));
        if (!tipo || !cuota || !total) return std::nullopt;
        r.tipoFactura = *tipo;
        r.cuotaTotal = *cuota;
        r.importeTotal = *total;
        r.subsanacion = tagText(xml, QLatin1String("Subsanacion")).value_or(QString()) == u"S";
    }
    const qsizetype link = xml.indexOf(QLatin1String("<sf:RegistroAnterior>"));
    if (link >= 0) {
        const auto e = tagText(xml, QLatin1String("IDEmisorFactura"), link);
        const auto n = tagText(xml, QLatin1String("NumSerieFactura"), link);
        const auto f = tagText(xml, QLatin1String("FechaExpedicionFactura"), link);
        const auto h = tagText(xml, QLatin1String("Huella"), link);
        if (!e || !n || !f || !h) return std::nullopt;
        r.anterior = ChainLink{{*e, *n, *f}, *h};
    } else if (!xml.contains(QLatin1String("<sf:PrimerRegistro>S</sf:PrimerRegistro>"))) {
        return std::nullopt;
    }
    return r;
}

QString xmlLocalName(QStringView qualified) {
    const auto colon = qualified.indexOf(u':');
    return (colon < 0 ? qualified : qualified.mid(colon + 1)).toString();
}

QString recordsNamespace() {
    return QStringLiteral(
        "https://www2.agenciatributaria.gob.es/static_files/common/internet/dep/aplicaciones/es/"
        "aeat/tike/cont/ws/SuministroInformacion.xsd");
}

QString recordXml(const InvoiceRecord& record, const SystemIdentity& system) {
    QString out;
    Writer w(&out);
    if (record.kind == RecordKind::Alta)
        writeAlta(w, record, system);
    else
        writeAnulacion(w, record, system);
    return out;
}

std::optional<InvoiceRecord> parseRecordXml(const QString& xml) {
    const auto read = readElements(xml);
    if (!read) return std::nullopt;
    const auto& v = read->values;
    InvoiceRecord r;
    if (read->root == QLatin1String("RegistroAlta")) {
        r.kind = RecordKind::Alta;
        r.id = {v.value("IDFactura/IDEmisorFactura"), v.value("IDFactura/NumSerieFactura"),
                v.value("IDFactura/FechaExpedicionFactura")};
    } else if (read->root == QLatin1String("RegistroAnulacion")) {
        r.kind = RecordKind::Anulacion;
        r.id = {v.value("IDFactura/IDEmisorFacturaAnulada"),
                v.value("IDFactura/NumSerieFacturaAnulada"),
                v.value("IDFactura/FechaExpedicionFacturaAnulada")};
    } else {
        return std::nullopt;
    }
    r.nombreEmisor = v.value("NombreRazonEmisor");
    r.subsanacion = v.value("Subsanacion") == QLatin1String("S");
    r.tipoFactura = v.value("TipoFactura");
    r.tipoRectificativa = v.value("TipoRectificativa");
    r.descripcion = v.value("DescripcionOperacion");
    if (v.contains("Destinatarios/IDDestinatario/NombreRazon")) {
        const QString d = QStringLiteral("Destinatarios/IDDestinatario/");
        r.destinatario = Recipient{v.value(d + "NombreRazon"), v.value(d + "NIF"),
                                   v.value(d + "IDOtro/CodigoPais"), v.value(d + "IDOtro/IDType"),
                                   v.value(d + "IDOtro/ID")};
    }
    for (const auto& l : read->lines) {
        r.desglose.push_back({l.value("ClaveRegimen"), l.value("CalificacionOperacion"),
                              l.value("OperacionExenta"), l.value("TipoImpositivo"),
                              l.value("BaseImponibleOimporteNoSujeto"), l.value("CuotaRepercutida"),
                              l.value("TipoRecargoEquivalencia"),
                              l.value("CuotaRecargoEquivalencia")});
    }
    r.cuotaTotal = v.value("CuotaTotal");
    r.importeTotal = v.value("ImporteTotal");
    if (v.contains("Encadenamiento/RegistroAnterior/Huella")) {
        const QString a = QStringLiteral("Encadenamiento/RegistroAnterior/");
        r.anterior = ChainLink{{v.value(a + "IDEmisorFactura"), v.value(a + "NumSerieFactura"),
                                v.value(a + "FechaExpedicionFactura")},
                               v.value(a + "Huella")};
    }
    r.fechaHora = v.value("FechaHoraHusoGenRegistro");
    r.huella = v.value("Huella");
    return r;
}

}  // namespace tallora::verifactu
