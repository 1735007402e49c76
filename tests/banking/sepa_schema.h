#pragma once
// Validation of a SEPA file against the ISO 20022 schema of its message, with xmllint and the
// schemas scripts/install-deps unpacks (TALLORA_SEPA_XSD_DIR).
#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>

namespace tallora::testing {

// Empty when `xml` is valid against `message`'s schema ("pain.008.001.02"); otherwise what
// xmllint said, or why it could not be asked.
inline QString sepaSchemaErrors(const QByteArray& xml, const QString& message) {
    const QString xsd = QStringLiteral(TALLORA_SEPA_XSD_DIR "/") + message + QStringLiteral(".xsd");
    if (!QFile::exists(xsd))
        return QStringLiteral("no schema at ") + xsd + " (scripts/install-deps)";
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("file.xml"));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(xml) != xml.size()) return "cannot write";
    file.close();
    QProcess lint;
    lint.start(QStringLiteral("xmllint"),
               {QStringLiteral("--noout"), QStringLiteral("--schema"), xsd, path});
    if (!lint.waitForFinished(60000)) return QStringLiteral("xmllint did not run");
    if (lint.exitStatus() == QProcess::NormalExit && lint.exitCode() == 0) return {};
    return QString::fromUtf8(lint.readAllStandardError());
}

}  // namespace tallora::testing
