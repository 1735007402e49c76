// The records screen from the keyboard: the list with its states, the company's setting, the
// check of the chain (F5), the sending with a certificate (against a local HTTPS server), Esc.
#include "verifactu/ui/form_verifactu.h"
#include "../fake_service.h"
#include "../record_company.h"
#include "context/dialogs.h"
#include "context/working_context.h"
#include "store/database.h"
#include "verifactu/record_chain.h"
#include "verifactu/record_file.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QtTest>

using namespace tallora;

class FormVerifactuTest : public QObject {
    Q_OBJECT

    struct Company : testing::RecordCompany {
        ScriptedDialogs dialogs;
    };

    static QString cell(FormVerifactu& form, int row, int column) {
        return form.findChild<QTableWidget*>("GridRegistros")->item(row, column)->text();
    }

private slots:
    void listsTheRecordsWithTheirStateAndCount() {
        Company c;
        c.addRecords(2);
        FormVerifactu form(c.ctx, c.dialogs);
        form.show();
        QVERIFY(QTest::qWaitForWindowExposed(&form));
        auto* grid = form.findChild<QTableWidget*>("GridRegistros");
        QCOMPARE(grid->rowCount(), 2);
        QCOMPARE(cell(form, 0, 1), QStringLiteral("Alta F1"));
        QCOMPARE(cell(form, 1, 2), QStringLiteral("F-2"));
        QCOMPARE(cell(form, 1, 3), QStringLiteral("15/03/2026"));
        QCOMPARE(cell(form, 1, 4), QStringLiteral("121,00"));
        QCOMPARE(cell(form, 0, 6), QStringLiteral("Por enviar"));
        QCOMPARE(form.findChild<QLabel*>("lblPendientes")->text(),
                 QStringLiteral("2 registros, 2 por enviar"));
        QVERIFY(form.findChild<QPushButton*>("cmdEnviar")->isEnabled());
        QCOMPARE(grid->currentRow(), 1);
        // Enter on a record without an answer says so.
        QTest::keyClick(grid, Qt::Key_Return);
        QVERIFY(c.dialogs.lastText().contains(QStringLiteral("aún no tiene respuesta")));
    }

    void theSettingIsTheCompanysAndChangesAtOnce() {
        Company c;
        FormVerifactu form(c.ctx, c.dialogs);
        auto* on = form.findChild<QCheckBox*>("chkActivo");
        QVERIFY(on->isChecked());
        on->setChecked(false);
        QVERIFY(!verifactu::recordsEnabled(c.ctx));
        form.findChild<QComboBox*>("cmbEntorno")->setCurrentIndex(1);
        store::Database db = store::Database::open(c.path);
        QCOMPARE(verifactu::setting(db, "Entorno"), QStringLiteral("pruebas"));
        QVERIFY(!form.findChild<QPushButton*>("cmdEnviar")->isEnabled());
    }

    void f5ChecksTheChainAndNamesABrokenRecord() {
        Company c;
        c.addRecords(3);
        FormVerifactu form(c.ctx, c.dialogs);
        form.show();
        QVERIFY(QTest::qWaitForWindowExposed(&form));
        QTest::keyClick(&form, Qt::Key_F5);
        QCOMPARE(c.dialogs.lastText(), QStringLiteral("3 registros: la cadena es correcta"));
        {
            store::Database db = store::Database::open(c.path);
            db.execute("drop trigger RegistrosInalterables");
            db.execute("update Registros set NumSerie = 'F-9' where Id = 3");
        }
        QTest::keyClick(&form, Qt::Key_F5);
        QVERIFY2(c.dialogs.lastText().contains(QStringLiteral("registro 3 ")),
                 qPrintable(c.dialogs.lastText()));
    }

    void sendingTakesTheCertificateAndShowsTheStates() {
        Company c;
        c.addRecords(2);
        testing::FakeService service;
        QVERIFY(service.ok());
        c.sendTo(service.url());
        service.queue(
            "<env:Envelope xmlns:env=\"http://schemas.xmlsoap.org/soap/envelope/\"><env:Body>"
            "<r:RespuestaRegFactuSistemaFacturacion xmlns:r=\"x\" xmlns:t=\"y\"><r:CSV>CSV123"
            "</r:CSV><r:TiempoEsperaEnvio>0</r:TiempoEsperaEnvio><r:EstadoEnvio>"
            "ParcialmenteCorrecto</r:EstadoEnvio><r:RespuestaLinea><r:IDFactura><t:NumSerieFactura>"
            "F-1</t:NumSerieFactura><t:FechaExpedicionFactura>15-03-2026</t:FechaExpedicionFactura>"
            "</r:IDFactura><r:EstadoRegistro>Correcto</r:EstadoRegistro></r:RespuestaLinea>"
            "<r:RespuestaLinea><r:IDFactura><t:NumSerieFactura>F-2</t:NumSerieFactura>"
            "<t:FechaExpedicionFactura>15-03-2026</t:FechaExpedicionFactura></r:IDFactura>"
            "<r:EstadoRegistro>Incorrecto</r:EstadoRegistro><r:CodigoErrorRegistro>1100"
            "</r:CodigoErrorRegistro><r:DescripcionErrorRegistro>Valor incorrecto"
            "</r:DescripcionErrorRegistro></r:RespuestaLinea></"
            "r:RespuestaRegFactuSistemaFacturacion>"
            "</env:Body></env:Envelope>");
        // The refused record goes again in the same run, and is refused again.
        service.queue(
            "<env:Envelope xmlns:env=\"http://schemas.xmlsoap.org/soap/envelope/\"><env:Body>"
            "<r:RespuestaRegFactuSistemaFacturacion xmlns:r=\"x\" xmlns:t=\"y\"><r:CSV>CSV124"
            "</r:CSV><r:TiempoEsperaEnvio>0</r:TiempoEsperaEnvio><r:EstadoEnvio>Incorrecto"
            "</r:EstadoEnvio><r:RespuestaLinea><r:IDFactura><t:NumSerieFactura>F-2"
            "</t:NumSerieFactura><t:FechaExpedicionFactura>15-03-2026</t:FechaExpedicionFactura>"
            "</r:IDFactura><r:EstadoRegistro>Incorrecto</r:EstadoRegistro><r:CodigoErrorRegistro>"
            "1100</r:CodigoErrorRegistro><r:DescripcionErrorRegistro>Valor incorrecto"
            "</r:DescripcionErrorRegistro></r:RespuestaLinea></"
            "r:RespuestaRegFactuSistemaFacturacion>"
            "</env:Body></env:Envelope>");
        FormVerifactu form(c.ctx, c.dialogs);
        int asked = 0;
        form.setCertificateSource([&]() -> std::optional<verifactu::ServiceSettings> {
            ++asked;
            verifactu::ServiceSettings s;
            s.certificate = service.clientPkcs12();
            s.password = "secreto";
            s.extraAuthorities = {service.authority()};
            return s;
        });
        QSignalSpy sent(&form, &FormVerifactu::recordsSent);
        form.show();
        QVERIFY(QTest::qWaitForWindowExposed(&form));
        QTest::keyClick(&form, Qt::Key_E, Qt::ControlModifier);
        QCOMPARE(asked, 1);
        QCOMPARE(sent.count(), 1);
        QCOMPARE(service.received().size(), std::size_t{2});
        QVERIFY2(c.dialogs.lastText().contains(QStringLiteral("Correctos: 1")),
                 qPrintable(c.dialogs.lastText()));
        QVERIFY(c.dialogs.lastText().contains(QStringLiteral("Incorrectos: 2")));
        QCOMPARE(cell(form, 0, 6), QStringLiteral("Correcto"));
        QCOMPARE(cell(form, 1, 6), QStringLiteral("Incorrecto"));
        QCOMPARE(form.findChild<QLabel*>("lblPendientes")->text(),
                 QStringLiteral("2 registros, 1 por enviar"));
        // Enter shows the answer of the selected record: its code, text and CSV.
        QTest::keyClick(form.findChild<QTableWidget*>("GridRegistros"), Qt::Key_Return);
        QVERIFY2(c.dialogs.lastText().contains(QStringLiteral("1100 Valor incorrecto")),
                 qPrintable(c.dialogs.lastText()));
        QVERIFY(c.dialogs.lastText().contains(QStringLiteral("CSV: CSV124")));
    }

    void aCancelledCertificateSendsNothing() {
        Company c;
        c.addRecords(1);
        FormVerifactu form(c.ctx, c.dialogs);
        form.setCertificateSource([] { return std::optional<verifactu::ServiceSettings>(); });
        QSignalSpy sent(&form, &FormVerifactu::recordsSent);
        form.sendPending();
        QCOMPARE(sent.count(), 0);
        QVERIFY(c.dialogs.shown().empty());
    }

    void escCloses() {
        Company c;
        FormVerifactu form(c.ctx, c.dialogs);
        form.show();
        QVERIFY(QTest::qWaitForWindowExposed(&form));
        QTest::keyClick(&form, Qt::Key_Escape);
        QVERIFY(!form.isVisible());
    }
};

QTEST_MAIN(FormVerifactuTest)
#include "form_verifactu_test.moc"
