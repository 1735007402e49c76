#include "service_client.h"

#include "record_file.h"
#include "service_answer.h"
#include "submission.h"

#include "context/messages.h"
#include "context/working_context.h"
#include "store/database.h"

#include <QBuffer>
#include <QEventLoop>
#include <QFile>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QSslConfiguration>
#include <QSslKey>
#include <QTimer>

namespace tallora::verifactu {
namespace {

const QString kProduction = QStringLiteral(
    "https://www1.agenciatributaria.gob.es/wlpl/TIKE-CONT/ws/SistemaFacturacion/VerifactuSOAP");
const QString kTest =
    QStringLiteral("https://prewww1.aeat.es/wlpl/TIKE-CONT/ws/SistemaFacturacion/VerifactuSOAP");

struct Exchange {
    QByteArray body;
    QString error;
};

std::optional<QSslConfiguration> clientConfiguration(const ServiceSettings& s, QString* error) {
    QBuffer file;
    file.setData(s.certificate);
    file.open(QIODevice::ReadOnly);
    QSslKey key;
    QSslCertificate certificate;
    QList<QSslCertificate> chain;
    if (!QSslCertificate::importPkcs12(&file, &key, &certificate, &chain, s.password)) {
        *error = QStringLiteral("certificate");
        return std::nullopt;
    }
    QSslConfiguration c = QSslConfiguration::defaultConfiguration();
    c.setPrivateKey(key);
    c.setLocalCertificate(certificate);
    c.setLocalCertificateChain(QList<QSslCertificate>{certificate} + chain);
    if (!s.extraAuthorities.isEmpty()) c.setCaCertificates(c.caCertificates() + s.extraAuthorities);
    return c;
}

Exchange post(const ServiceSettings& s, const QSslConfiguration& tls, const QByteArray& xml) {
    QNetworkAccessManager manager;
    QNetworkRequest request{QUrl(s.endpoint)};
    request.setSslConfiguration(tls);
    request.setHeader(QNetworkRequest::ContentTypeHeader,
                      QStringLiteral("text/xml; charset=utf-8"));
    request.setRawHeader("SOAPAction", "\"\"");
    request.setTransferTimeout(s.timeoutMs);
    QNetworkReply* reply = manager.post(request, xml);
    QEventLoop loop;
    QObject::connect(reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
    loop.exec();
    Exchange out;
    out.body = reply->readAll();
    // A SOAP fault comes with status 500 and a body worth reading; no body is a failure.
    if (reply->error() != QNetworkReply::NoError && out.body.isEmpty())
        out.error = reply->errorString();
    reply->deleteLater();
    return out;
}

void waitUntil(const QDateTime& at, const std::function<void(const QString&)>& progress,
               const WorkingContext& ctx) {
    const qint64 ms = QDateTime::currentDateTimeUtc().msecsTo(at);
    if (ms <= 0) return;
    if (progress)
        progress(fixedText(ctx, QStringLiteral("Esperando %1 s, como pide la AEAT..."),
                           QStringLiteral("Esperant %1 s, com demana l'AEAT..."))
                     .arg((ms + 999) / 1000));
    QEventLoop loop;
    QTimer::singleShot(static_cast<int>(ms), &loop, &QEventLoop::quit);
    loop.exec();
}

void count(SendReport& report, const ServiceAnswer& answer) {
    for (const AnswerLine& line : answer.lines) {
        if (line.estado == u"Correcto")
            ++report.correct;
        else if (line.estado == u"AceptadoConErrores")
            ++report.acceptedWithErrors;
        else
            ++report.incorrect;
    }
}

}  // namespace

QString serviceEndpoint(const QString& path) {
    if (!QFile::exists(path)) return kProduction;
    store::Database db = store::Database::open(path);
    const bool test = recordsEnvironment(db) == Environment::Test;
    const QString own = setting(
        db, test ? QStringLiteral("DireccionPruebas") : QStringLiteral("DireccionProduccion"));
    return own.isEmpty() ? (test ? kTest : kProduction) : own;
}

SendReport sendPending(const WorkingContext& ctx, const QString& path,
                       const ServiceSettings& settings,
                       const std::function<void(const QString&)>& progress) {
    SendReport report;
    QString certificateError;
    const auto tls = clientConfiguration(settings, &certificateError);
    if (!tls) {
        report.error = fixedText(ctx,
                                 QStringLiteral("No se puede leer el certificado: revise el "
                                                "archivo y su contraseña"),
                                 QStringLiteral("No es pot llegir el certificat: reviseu el "
                                                "fitxer i la seva contrasenya"));
        report.waiting = pendingCount(path);
        return report;
    }
    for (;;) {
        const Submission submission = nextSubmission(ctx, path);
        if (submission.empty()) break;
        if (const QDateTime at = nextSendAllowed(path); at.isValid()) waitUntil(at, progress, ctx);
        if (progress)
            progress(fixedText(ctx, QStringLiteral("Enviando %1 registros..."),
                               QStringLiteral("Enviant %1 registres..."))
                         .arg(submission.records.size()));
        const int before = pendingCount(path);
        const Exchange exchange = post(settings, *tls, submission.xml.toUtf8());
        if (!exchange.error.isEmpty()) {
            report.error = exchange.error;
            break;
        }
        const auto answer = parseAnswer(exchange.body);
        if (!answer) {
            report.error = fixedText(ctx, QStringLiteral("La AEAT ha dado una respuesta ilegible"),
                                     QStringLiteral("L'AEAT ha donat una resposta il·legible"));
            break;
        }
        keepAnswer(path, submission, *answer, exchange.body, QDateTime::currentDateTimeUtc());
        ++report.submissions;
        count(report, *answer);
        if (!answer->fault.isEmpty()) {
            report.error = answer->fault;
            break;
        }
        // What the service did not take waits for the next time, not for another round now.
        if (pendingCount(path) >= before) break;
    }
    report.waiting = pendingCount(path);
    return report;
}

}  // namespace tallora::verifactu
