// The submission of the waiting records: the SOAP envelope with its header and the stored
// records, and the client against a local HTTPS server that asks for the certificate and
// answers as the AEAT's service does (partly correct, a waiting time, a fault, no server).
#include "verifactu/service_client.h"
#include "fake_service.h"
#include "record_company.h"
#include "verifactu/record_chain.h"
#include "verifactu/record_file.h"
#include "verifactu/service_answer.h"
#include "verifactu/stored_records.h"
#include "verifactu/submission.h"

#include "context/working_context.h"
#include "store/database.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace tallora::testing {
namespace {

QByteArray answer(const QString& estadoEnvio, int wait, const QStringList& lines) {
    QString body =
        QStringLiteral(
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>"
            "<env:Envelope xmlns:env=\"http://schemas.xmlsoap.org/soap/envelope/\"><env:Body>"
            "<tikR:RespuestaRegFactuSistemaFacturacion xmlns:tikR=\"https://www2.agenciatributaria."
            "gob.es/static_files/common/internet/dep/aplicaciones/es/aeat/tike/cont/ws/"
            "RespuestaSuministro.xsd\" "
            "xmlns:tik=\"https://www2.agenciatributaria.gob.es/static_files/"
            "common/internet/dep/aplicaciones/es/aeat/tike/cont/ws/SuministroInformacion.xsd\">"
            "<tikR:CSV>A-CSV-%1</tikR:CSV><tikR:DatosPresentacion><tik:NIFPresentador>89890001K"
            "</tik:NIFPresentador></tikR:DatosPresentacion>"
            "<tikR:TiempoEsperaEnvio>%2</tikR:TiempoEsperaEnvio><tikR:EstadoEnvio>%3</"
            "tikR:EstadoEnvio>")
            .arg(estadoEnvio)
            .arg(wait)
            .arg(estadoEnvio);
    for (const QString& line : lines) {
        const QStringList f = line.split(u'|');  // number, operation, state, code, text
        body += QStringLiteral(
                    "<tikR:RespuestaLinea><tikR:IDFactura><tik:IDEmisorFactura>89890001K"
                    "</tik:IDEmisorFactura><tik:NumSerieFactura>%1</tik:NumSerieFactura>"
                    "<tik:FechaExpedicionFactura>15-03-2026</tik:FechaExpedicionFactura>"
                    "</tikR:IDFactura><tikR:Operacion><tik:TipoOperacion>%2"
                    "</tik:TipoOperacion></tikR:Operacion><tikR:EstadoRegistro>%3"
                    "</tikR:EstadoRegistro>")
                    .arg(f[0], f[1], f[2]);
        if (f.size() > 3)
            body += QStringLiteral(
                        "<tikR:CodigoErrorRegistro>%1</tikR:CodigoErrorRegistro>"
                        "<tikR:DescripcionErrorRegistro>%2</tikR:DescripcionErrorRegistro>")
                        .arg(f[3], f[4]);
        body += QStringLiteral("</tikR:RespuestaLinea>");
    }
    body += QStringLiteral("</tikR:RespuestaRegFactuSistemaFacturacion></env:Body></env:Envelope>");
    return body.toUtf8();
}

class ServiceClientTest : public ::testing::Test, protected RecordCompany {
protected:
    void useService(const FakeService& service) { sendTo(service.url()); }

    verifactu::ServiceSettings settings(const FakeService& service,
                                        const QByteArray& password = "secreto") const {
        verifactu::ServiceSettings s;
        s.endpoint = verifactu::serviceEndpoint(path);
        s.certificate = service.clientPkcs12();
        s.password = password;
        s.extraAuthorities = {service.authority()};
        s.timeoutMs = 20000;
        return s;
    }

    // number|state|code of every record, in order.
    QStringList states() const {
        QStringList out;
        store::Database db = store::Database::open(path);
        auto st = db.prepare(
            "select r.NumSerie, a.Estado, a.Codigo, a.CSV from Registros r left join "
            "Respuestas a on a.Registro = r.Id order by r.Id, a.Id");
        while (st.next())
            out << QStringList{st.text(0), st.isNull(1) ? "-" : st.text(1),
                               st.isNull(2) ? "" : st.text(2), st.isNull(3) ? "" : st.text(3)}
                       .join(u'|');
        return out;
    }
};

TEST_F(ServiceClientTest, TheSubmissionCarriesItsHeaderAndTheStoredRecordsVerbatim) {
    addRecords(3);
    const verifactu::Submission s = verifactu::nextSubmission(ctx, path);
    ASSERT_EQ(s.records, (std::vector<std::int64_t>{1, 2, 3}));
    EXPECT_TRUE(
        s.xml.contains("<sum:Cabecera><sf:ObligadoEmision><sf:NombreRazon>Empresa &amp; "
                       "Prueba</sf:NombreRazon><sf:NIF>89890001K</sf:NIF>"));
    EXPECT_EQ(s.xml.count("<sum:RegistroFactura><sf:RegistroAlta>"), 3);
    verifactu::forEachRecord(path, [&](const verifactu::StoredRecord& r) {
        EXPECT_TRUE(s.xml.contains(r.xml)) << r.id;
        return true;
    });
    EXPECT_EQ(verifactu::pendingCount(path), 3);
}

TEST_F(ServiceClientTest, ASubmissionTakesAtMostAThousandRecords) {
    addRecords(1001);
    const verifactu::Submission s = verifactu::nextSubmission(ctx, path);
    EXPECT_EQ(s.records.size(), 1000u);
    EXPECT_EQ(s.records.front(), 1);
    EXPECT_EQ(s.records.back(), 1000);
    EXPECT_EQ(s.xml.count("<sum:RegistroFactura>"), 1000);
}

TEST_F(ServiceClientTest, APartlyCorrectAnswerIsKeptAndTheRefusedRecordSentAgainAfterTheWait) {
    FakeService service;
    ASSERT_TRUE(service.ok());
    addRecords(3);
    useService(service);
    service.queue(answer("ParcialmenteCorrecto", 2,
                         {"F-1|Alta|Correcto", "F-2|Alta|Incorrecto|1100|Valor incorrecto",
                          "F-3|Alta|AceptadoConErrores|2007|Aviso"}));
    service.queue(answer("Correcto", 60, {"F-2|Alta|Correcto"}));
    QStringList steps;
    const verifactu::SendReport report =
        verifactu::sendPending(ctx, path, settings(service), [&](const QString& s) { steps << s; });
    EXPECT_TRUE(report.error.isEmpty()) << report.error.toStdString();
    EXPECT_EQ(report.submissions, 2);
    EXPECT_EQ(report.correct, 2);
    EXPECT_EQ(report.acceptedWithErrors, 1);
    EXPECT_EQ(report.incorrect, 1);
    EXPECT_EQ(report.waiting, 0);
    ASSERT_EQ(service.received().size(), 2u);
    EXPECT_EQ(service.received()[0].clientName, "89890001K") << "the certificate was shown";
    EXPECT_EQ(service.received()[0].body.count("<sum:RegistroFactura>"), 3);
    EXPECT_EQ(service.received()[1].body.count("<sum:RegistroFactura>"), 1);
    EXPECT_TRUE(
        service.received()[1].body.contains("<sf:NumSerieFactura>F-2</sf:NumSerieFactura>"));
    // The second went only when the two seconds the first answer asked for were over.
    EXPECT_GE(service.received()[0].at.msecsTo(service.received()[1].at), 1900);
    EXPECT_TRUE(steps.join(u'\n').contains("Esperando")) << steps.join(u'\n').toStdString();
    EXPECT_EQ(states(), (QStringList{"F-1|Correcto||A-CSV-ParcialmenteCorrecto",
                                     "F-2|Incorrecto|1100|A-CSV-ParcialmenteCorrecto",
                                     "F-2|Correcto||A-CSV-Correcto",
                                     "F-3|AceptadoConErrores|2007|A-CSV-ParcialmenteCorrecto"}));
    // Each answer is kept whole.
    store::Database db = store::Database::open(path);
    auto st = db.prepare("select Estado, Espera, Registros, Respuesta from Envios order by Id");
    ASSERT_TRUE(st.next());
    EXPECT_EQ(st.text(0), "ParcialmenteCorrecto");
    EXPECT_EQ(st.int32(1), 2);
    EXPECT_EQ(st.int32(2), 3);
    EXPECT_TRUE(st.text(3).contains("Valor incorrecto"));
    // The next submission waits for the minute the last answer asked for.
    EXPECT_GT(verifactu::nextSendAllowed(path), QDateTime::currentDateTimeUtc().addSecs(50));
}

TEST_F(ServiceClientTest, ARecordRefusedAgainWaitsForTheNextTime) {
    FakeService service;
    ASSERT_TRUE(service.ok());
    addRecords(2);
    useService(service);
    service.queue(answer("ParcialmenteCorrecto", 0,
                         {"F-1|Alta|Correcto", "F-2|Alta|Incorrecto|1100|Valor incorrecto"}));
    service.queue(answer("Incorrecto", 0, {"F-2|Alta|Incorrecto|1100|Valor incorrecto"}));
    const verifactu::SendReport report = verifactu::sendPending(ctx, path, settings(service));
    EXPECT_EQ(service.received().size(), 2u);
    EXPECT_EQ(report.waiting, 1);
    EXPECT_TRUE(report.error.isEmpty());
}

TEST_F(ServiceClientTest, AFaultOfTheWholeSubmissionLeavesEveryRecordWaiting) {
    FakeService service;
    ASSERT_TRUE(service.ok());
    addRecords(2);
    useService(service);
    service.queue(
        "<env:Envelope xmlns:env=\"http://schemas.xmlsoap.org/soap/envelope/\"><env:Body>"
        "<env:Fault><faultcode>env:Client</faultcode><faultstring>Codigo[4102].El XML no "
        "cumple el esquema</faultstring></env:Fault></env:Body></env:Envelope>",
        500);
    const verifactu::SendReport report = verifactu::sendPending(ctx, path, settings(service));
    EXPECT_TRUE(report.error.contains("4102")) << report.error.toStdString();
    EXPECT_EQ(report.waiting, 2);
    EXPECT_EQ(states(), (QStringList{"F-1|-||", "F-2|-||"}));
}

TEST_F(ServiceClientTest, WithoutAConnectionTheRecordsWait) {
    addRecords(2);
    FakeService service;
    ASSERT_TRUE(service.ok());
    verifactu::ServiceSettings s = settings(service);
    s.endpoint = "https://localhost:1/wlpl/TIKE-CONT/ws/SistemaFacturacion/VerifactuSOAP";
    const verifactu::SendReport report = verifactu::sendPending(ctx, path, s);
    EXPECT_FALSE(report.error.isEmpty());
    EXPECT_EQ(report.submissions, 0);
    EXPECT_EQ(report.waiting, 2);
    EXPECT_EQ(states(), (QStringList{"F-1|-||", "F-2|-||"}));
}

TEST_F(ServiceClientTest, AWrongPasswordSendsNothing) {
    FakeService service;
    ASSERT_TRUE(service.ok());
    addRecords(1);
    useService(service);
    const verifactu::SendReport report =
        verifactu::sendPending(ctx, path, settings(service, "otra"));
    EXPECT_TRUE(report.error.contains("certificado")) << report.error.toStdString();
    EXPECT_TRUE(service.received().empty());
    EXPECT_EQ(report.waiting, 1);
}

TEST_F(ServiceClientTest, TheServiceAddressesAreSettingsOfTheCompany) {
    EXPECT_EQ(verifactu::serviceEndpoint(path),
              "https://www1.agenciatributaria.gob.es/wlpl/TIKE-CONT/ws/SistemaFacturacion/"
              "VerifactuSOAP");
    store::Database db = store::Database::open(path);
    verifactu::setSetting(db, "Entorno", "pruebas");
    EXPECT_EQ(verifactu::serviceEndpoint(path),
              "https://prewww1.aeat.es/wlpl/TIKE-CONT/ws/SistemaFacturacion/VerifactuSOAP");
    verifactu::setSetting(db, "DireccionPruebas", "https://localhost:8443/x");
    EXPECT_EQ(verifactu::serviceEndpoint(path), "https://localhost:8443/x");
}

TEST(ServiceAnswer, AnAnswerThatIsNeitherAnswerNorFaultIsRefused) {
    EXPECT_FALSE(verifactu::parseAnswer("<html><body>Service unavailable</body></html>"));
    EXPECT_FALSE(verifactu::parseAnswer("not xml at all"));
    const auto a = verifactu::parseAnswer(answer("Correcto", 30, {"A/1|Anulacion|Correcto"}));
    ASSERT_TRUE(a);
    EXPECT_EQ(a->waitSeconds, 30);
    ASSERT_EQ(a->lines.size(), 1u);
    EXPECT_EQ(a->lines[0].operacion, "Anulacion");
    EXPECT_EQ(a->lines[0].numSerie, "A/1");
}

}  // namespace
}  // namespace tallora::testing
