#include "context/working_context.h"
#include "shell/ui/form_mdi.h"

#include <QLabel>
#include <QMdiArea>
#include <QStatusBar>
#include <QtTest>

using namespace tallora;

class FormMdiTest : public QObject {
    Q_OBJECT
private slots:
    void showsTheProgramNameAndThreePanels() {
        WorkingContext ctx;
        ctx.Exercici = QStringLiteral("2026");
        FormMDI window(ctx);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QCOMPARE(window.windowTitle(), QStringLiteral("Tallora 5"));
        QVERIFY(window.mdiArea());
        QCOMPARE(window.statusBar()->objectName(), QStringLiteral("Barra"));
        QVERIFY(window.statusPanel(1));
        QVERIFY(window.statusPanel(2));
        QCOMPARE(window.statusPanel(3)->text(), QStringLiteral("2026"));
        QVERIFY(!window.statusPanel(0));
        QVERIFY(!window.statusPanel(4));
        QCOMPARE(window.lblEmpresa()->text(), QStringLiteral("Tallora 5"));
    }

    void theBandNamesTheOpenCompany() {
        WorkingContext ctx;
        ctx.EmpresaNom = QStringLiteral("Ñandú, S.L.");
        FormMDI window(ctx);
        QCOMPARE(window.lblEmpresa()->text(), QStringLiteral("Ñandú, S.L."));
    }
};

QTEST_MAIN(FormMdiTest)
#include "form_mdi_test.moc"
