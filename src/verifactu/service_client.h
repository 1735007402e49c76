#pragma once
// The sending of the waiting records to the AEAT's service over HTTPS, with the company's
// electronic certificate (a PKCS#12 file and its password, which is used and never kept).
// Submissions go one after another in the order the records were written, each after the
// waiting time the previous answer gave; with no connection or a refused submission the
// records simply wait for the next time, and invoicing never depends on it.
#include "context/fwd.h"

#include <QByteArray>
#include <QList>
#include <QSslCertificate>
#include <QString>

#include <functional>

namespace tallora::verifactu {

struct ServiceSettings {
    QString endpoint;        // the service's address
    QByteArray certificate;  // the PKCS#12 file's bytes
    QByteArray password;     // its password
    // Authorities trusted besides the system's: a test's own server.
    QList<QSslCertificate> extraAuthorities;
    int timeoutMs = 120000;
};

// The addresses of the service, production and test, as the record file's settings give
// them (DireccionProduccion, DireccionPruebas), the AEAT's own by default; the environment
// (Entorno "pruebas" or production) chooses one.
QString serviceEndpoint(const QString& recordsFile);

struct SendReport {
    int submissions = 0;
    int correct = 0, acceptedWithErrors = 0, incorrect = 0;
    int waiting = 0;  // records still waiting at the end
    QString error;    // why sending stopped early; empty when everything waiting was sent
};

// Sends the records of the record file that wait, for the company of `ctx`. `progress`
// hears each step in the user's language.
SendReport sendPending(const WorkingContext& ctx, const QString& recordsFile,
                       const ServiceSettings& settings,
                       const std::function<void(const QString&)>& progress = {});

}  // namespace tallora::verifactu
