#include "service_answer.h"

#include "record_file.h"
#include "record_xml.h"

#include "store/database.h"

#include <QStringList>
#include <QXmlStreamReader>

namespace tallora::verifactu {
namespace {

// The values of an answer line, by the local name of the element that holds them.
void setLineValue(AnswerLine& line, const QString& name, const QString& value) {
    if (name == u"NumSerieFactura")
        line.numSerie = value;
    else if (name == u"FechaExpedicionFactura")
        line.fecha = value;
    else if (name == u"TipoOperacion")
        line.operacion = value;
    else if (name == u"EstadoRegistro")
        line.estado = value;
    else if (name == u"CodigoErrorRegistro")
        line.codigo = value;
    else if (name == u"DescripcionErrorRegistro")
        line.descripcion = value;
}

struct BatchRecord {
    std::int64_t id = 0;
    QString numSerie, fecha, operacion;
    bool answered = false;
};

std::vector<BatchRecord> batchRecords(store::Database& db, const Submission& submission) {
    std::vector<BatchRecord> out;
    auto st =
        db.prepare(QStringLiteral("select NumSerie, Fecha, Clase from Registros where Id = ?"));
    for (const std::int64_t id : submission.records) {
        st.reset();
        st.bind(1, id);
        if (!st.next()) continue;
        out.push_back({id, st.text(0), st.text(1),
                       st.text(2) == QLatin1String("A") ? QStringLiteral("Alta")
                                                        : QStringLiteral("Anulacion")});
    }
    return out;
}

}  // namespace

std::optional<ServiceAnswer> parseAnswer(const QByteArray& body) {
    QXmlStreamReader reader(body);
    reader.setNamespaceProcessing(false);
    ServiceAnswer answer;
    bool seen = false;
    std::optional<AnswerLine> line;
    QString text;
    while (!reader.atEnd()) {
        const auto token = reader.readNext();
        if (token == QXmlStreamReader::StartElement) {
            const QString name = xmlLocalName(reader.qualifiedName());
            if (name == u"RespuestaLinea") line.emplace();
            if (name == u"RespuestaRegFactuSistemaFacturacion" || name == u"Fault") seen = true;
            text.clear();
        } else if (token == QXmlStreamReader::Characters) {
            text += reader.text();
        } else if (token == QXmlStreamReader::EndElement) {
            const QString name = xmlLocalName(reader.qualifiedName());
            const QString value = text.trimmed();
            if (name == u"RespuestaLinea" && line) {
                answer.lines.push_back(*line);
                line.reset();
            } else if (line) {
                setLineValue(*line, name, value);
            } else if (name == u"CSV") {
                answer.csv = value;
            } else if (name == u"TiempoEsperaEnvio") {
                bool ok = false;
                const int seconds = value.toInt(&ok);
                if (ok && seconds >= 0) answer.waitSeconds = seconds;
            } else if (name == u"EstadoEnvio") {
                answer.estadoEnvio = value;
            } else if (name == u"faultstring") {
                answer.fault = value;
            }
            text.clear();
        }
    }
    if (reader.hasError() || !seen) return std::nullopt;
    return answer;
}

void keepAnswer(const QString& path, const Submission& submission, const ServiceAnswer& answer,
                const QByteArray& body, const QDateTime& when) {
    store::Database db = store::Database::open(path);
    store::Transaction tx(db, store::Transaction::Kind::Immediate);
    const QString stamp = when.toUTC().toString(Qt::ISODate);
    db.prepare(QStringLiteral("insert into Envios (FechaHora, Estado, CSV, Espera, Registros, "
                              "Respuesta) values (?, ?, ?, ?, ?, ?)"))
        .bind(1, stamp)
        .bind(2, answer.fault.isEmpty() ? answer.estadoEnvio : QStringLiteral("Rechazado"))
        .bind(3, answer.csv)
        .bind(4, answer.waitSeconds)
        .bind(5, static_cast<int>(submission.records.size()))
        .bind(6, QString::fromUtf8(body))
        .execute();
    const std::int64_t envio = db.lastInsertId();
    std::vector<BatchRecord> records = batchRecords(db, submission);
    auto insert = db.prepare(QStringLiteral(
        "insert into Respuestas (Registro, Envio, Estado, Codigo, Descripcion, CSV, FechaHora) "
        "values (?, ?, ?, ?, ?, ?, ?)"));
    for (const AnswerLine& line : answer.lines) {
        for (BatchRecord& r : records) {
            if (r.answered || r.numSerie != line.numSerie || r.fecha != line.fecha ||
                (!line.operacion.isEmpty() && r.operacion != line.operacion))
                continue;
            r.answered = true;
            insert.reset();
            insert.bind(1, r.id)
                .bind(2, envio)
                .bind(3, line.estado.left(20))
                .bind(4, line.codigo.left(20))
                .bind(5, line.descripcion)
                .bind(6, answer.csv.left(100))
                .bind(7, stamp)
                .execute();
            break;
        }
    }
    setSetting(db, QStringLiteral("ProximoEnvio"),
               when.toUTC().addSecs(answer.waitSeconds).toString(Qt::ISODateWithMs));
    tx.commit();
}

QDateTime nextSendAllowed(const QString& path) {
    store::Database db = store::Database::open(path);
    QDateTime at =
        QDateTime::fromString(setting(db, QStringLiteral("ProximoEnvio")), Qt::ISODateWithMs);
    at.setTimeSpec(Qt::UTC);
    return at;
}

}  // namespace tallora::verifactu
