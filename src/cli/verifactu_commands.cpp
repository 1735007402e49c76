#include "commands.h"
#include "verifactu/chain_check.h"
#include "verifactu/record_file.h"
#include "verifactu/service_client.h"
#include "verifactu/stored_records.h"
#include "verifactu/submission.h"

#include <QFile>
#include <QSaveFile>

namespace tallora::cli {
namespace {

QString kindWord(const verifactu::StoredRecord& r) {
    if (!r.alta) return QStringLiteral("anulacion");
    return r.subsanacion ? QStringLiteral("alta-subsanacion") : QStringLiteral("alta");
}

}  // namespace

int verifactuRecordsCommand(Session& s, const CliOptions& o) {
    s.start();
    if (!s.openCompany(o.arguments[0])) return kRefused;
    verifactu::forEachRecord(
        verifactu::recordsPathIn(s.ctx.Directori), [&](const verifactu::StoredRecord& r) {
            const QStringList fields{QString::number(r.id),
                                     kindWord(r),
                                     r.tipoFactura,
                                     r.numSerie,
                                     r.fecha,
                                     r.importeTotal,
                                     r.fechaHora,
                                     r.huella,
                                     r.estado.isEmpty() ? QStringLiteral("pendiente") : r.estado};
            s.out << fields.join(u'\t') << '\n';
            return true;
        });
    return s.finish(true);
}

int verifactuCheckCommand(Session& s, const CliOptions& o) {
    s.start();
    if (!s.openCompany(o.arguments[0])) return kRefused;
    const verifactu::ChainCheck check =
        verifactu::checkChain(verifactu::recordsPathIn(s.ctx.Directori));
    if (check.broken) return s.refuse(verifactu::breakText(s.ctx, *check.broken));
    s.out << QStringLiteral("%1 registros, cadena correcta").arg(check.records) << '\n';
    return s.finish(true);
}

int verifactuXmlCommand(Session& s, const CliOptions& o) {
    s.start();
    if (!s.openCompany(o.arguments[0])) return kRefused;
    const verifactu::Submission next =
        verifactu::nextSubmission(s.ctx, verifactu::recordsPathIn(s.ctx.Directori));
    if (next.empty()) return s.refuse(QStringLiteral("no records wait to be sent"));
    QSaveFile file(o.arguments[1]);
    if (!file.open(QIODevice::WriteOnly) || file.write(next.xml.toUtf8()) < 0 || !file.commit())
        return s.refuse(QStringLiteral("cannot write %1").arg(o.arguments[1]));
    s.out << QStringLiteral("%1 registros").arg(next.records.size()) << '\n';
    return s.finish(true);
}

int verifactuSendCommand(Session& s, const CliOptions& o) {
    const QString certificate = o.value(QStringLiteral("certificate"));
    if (certificate.isEmpty())
        throw UsageError{QStringLiteral("verifactu-send needs --certificate")};
    s.start();
    if (!s.openCompany(o.arguments[0])) return kRefused;
    QFile p12(certificate);
    if (!p12.open(QIODevice::ReadOnly))
        return s.refuse(QStringLiteral("cannot read %1").arg(certificate));
    const QString path = verifactu::recordsPathIn(s.ctx.Directori);
    verifactu::ServiceSettings settings;
    settings.endpoint = verifactu::serviceEndpoint(path);
    settings.certificate = p12.readAll();
    // The password comes on standard input, so that it is in no command line and no file.
    QTextStream in(stdin);
    settings.password = in.readLine().toUtf8();
    const verifactu::SendReport report = verifactu::sendPending(
        s.ctx, path, settings, [&](const QString& step) { s.out << step << '\n'; });
    s.out << QStringLiteral(
                 "%1 envíos: %2 correctos, %3 aceptados con errores, %4 incorrectos; "
                 "%5 registros esperan")
                 .arg(report.submissions)
                 .arg(report.correct)
                 .arg(report.acceptedWithErrors)
                 .arg(report.incorrect)
                 .arg(report.waiting)
          << '\n';
    if (!report.error.isEmpty()) return s.refuse(report.error);
    return s.finish(true);
}

}  // namespace tallora::cli
