#pragma once
// The answer of the AEAT's service to a submission (RespuestaSuministro): its CSV, the time to
// wait before the next submission, the state of the whole and of every record; and how it is
// kept, beside the records it answers, in the record file.
#include "submission.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <optional>
#include <vector>

namespace tallora::verifactu {

struct AnswerLine {
    QString numSerie, fecha;
    QString operacion;  // "Alta" or "Anulacion"
    QString estado;     // Correcto, AceptadoConErrores, Incorrecto
    QString codigo, descripcion;
};

struct ServiceAnswer {
    QString csv;
    int waitSeconds = 60;  // TiempoEsperaEnvio
    QString estadoEnvio;   // Correcto, ParcialmenteCorrecto, Incorrecto
    std::vector<AnswerLine> lines;
    QString fault;  // a SOAP fault's text: the submission as a whole was refused
};

// Nothing when the text is neither an answer nor a fault.
std::optional<ServiceAnswer> parseAnswer(const QByteArray& body);

// Keeps the answer (in Envios, whole) and a row of it for each record of `submission` it
// names (in Respuestas), and the time before which nothing else may be sent. A record the
// answer does not name gets none, so it is sent again.
void keepAnswer(const QString& path, const Submission& submission, const ServiceAnswer& answer,
                const QByteArray& body, const QDateTime& when);

// The instant before which the service asked not to be sent anything; invalid for none.
QDateTime nextSendAllowed(const QString& path);

}  // namespace tallora::verifactu
