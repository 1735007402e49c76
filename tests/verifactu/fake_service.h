#pragma once
// A local HTTPS server that answers as the AEAT's VERI*FACTU service does: it asks for the
// client's certificate, reads each SOAP submission and answers with the next answer queued.
// Its keys and the client's PKCS#12 certificate are made by openssl for each test.
#include <QDateTime>
#include <QHostAddress>
#include <QProcess>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslServer>
#include <QSslSocket>
#include <QTemporaryDir>

#include <deque>

namespace tallora::testing {

struct Received {
    QByteArray body;
    QDateTime at;
    QString clientName;  // the common name of the certificate the client showed
};

class FakeService : public QObject {
public:
    FakeService() {
        ok_ =
            openssl({"req", "-x509", "-newkey", "rsa:2048", "-nodes", "-keyout", file("server.key"),
                     "-out", file("server.crt"), "-subj", "/CN=localhost", "-days", "2", "-addext",
                     "subjectAltName=DNS:localhost"}) &&
            openssl({"req", "-x509", "-newkey", "rsa:2048", "-nodes", "-keyout", file("client.key"),
                     "-out", file("client.crt"), "-subj", "/CN=89890001K", "-days", "2"}) &&
            openssl({"pkcs12", "-export", "-inkey", file("client.key"), "-in", file("client.crt"),
                     "-out", file("client.p12"), "-passout", "pass:secreto"});
        if (!ok_) return;
        serverCertificate_ = QSslCertificate::fromPath(file("server.crt")).value(0);
        QSslConfiguration c = QSslConfiguration::defaultConfiguration();
        c.setLocalCertificate(serverCertificate_);
        c.setPrivateKey(QSslKey(read("server.key"), QSsl::Rsa));
        c.setPeerVerifyMode(QSslSocket::VerifyPeer);
        c.setCaCertificates(QSslCertificate::fromPath(file("client.crt")));
        server_.setSslConfiguration(c);
        connect(&server_, &QTcpServer::pendingConnectionAvailable, this, [this] { accept(); });
        ok_ = server_.listen(QHostAddress::LocalHost, 0);
    }

    bool ok() const { return ok_; }
    QString url() const {
        return QStringLiteral(
                   "https://localhost:%1/wlpl/TIKE-CONT/ws/SistemaFacturacion/VerifactuSOAP")
            .arg(server_.serverPort());
    }
    QByteArray clientPkcs12() const { return read("client.p12"); }
    QSslCertificate authority() const { return serverCertificate_; }

    void queue(const QByteArray& answer, int status = 200) { answers_.push_back({answer, status}); }
    const std::vector<Received>& received() const { return received_; }

private:
    QString file(const QString& name) const { return dir_.filePath(name); }
    QByteArray read(const QString& name) const {
        QFile f(file(name));
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }
    bool openssl(const QStringList& args) {
        QProcess p;
        p.start(QStringLiteral("openssl"), args);
        return p.waitForFinished(60000) && p.exitCode() == 0;
    }

    void accept() {
        while (QTcpSocket* socket = server_.nextPendingConnection()) {
            auto* ssl = static_cast<QSslSocket*>(socket);
            auto* buffer = new QByteArray;
            connect(ssl, &QSslSocket::readyRead, this, [this, ssl, buffer] {
                *buffer += ssl->readAll();
                const qsizetype end = buffer->indexOf("\r\n\r\n");
                if (end < 0) return;
                const QByteArray head = buffer->left(end).toLower();
                const qsizetype at = head.indexOf("content-length:");
                const int length =
                    at < 0 ? 0 : head.mid(at + 15).split('\r').value(0).trimmed().toInt();
                if (buffer->size() < end + 4 + length) return;
                received_.push_back(
                    {buffer->mid(end + 4, length), QDateTime::currentDateTimeUtc(),
                     ssl->peerCertificate().subjectInfo(QSslCertificate::CommonName).value(0)});
                const auto [answer, status] =
                    answers_.empty() ? std::pair<QByteArray, int>{{}, 500} : answers_.front();
                if (!answers_.empty()) answers_.pop_front();
                ssl->write("HTTP/1.1 " + QByteArray::number(status) +
                           (status == 200 ? " OK" : " Internal Server Error") +
                           "\r\nContent-Type: text/xml; charset=utf-8\r\nContent-Length: " +
                           QByteArray::number(answer.size()) + "\r\nConnection: close\r\n\r\n" +
                           answer);
                ssl->disconnectFromHost();
            });
            connect(ssl, &QSslSocket::disconnected, this, [ssl, buffer] {
                delete buffer;
                ssl->deleteLater();
            });
        }
    }

    QTemporaryDir dir_;
    QSslServer server_;
    QSslCertificate serverCertificate_;
    std::deque<std::pair<QByteArray, int>> answers_;
    std::vector<Received> received_;
    bool ok_ = false;
};

}  // namespace tallora::testing
