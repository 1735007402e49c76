#include "context/dialogs.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "shell/settings_files.h"
#include "shell/ui/blockmes.h"
#include "shell/ui/form_mdi.h"

#include <QAction>
#include <QCheckBox>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QToolBar>
#include <QtTest>

using namespace tallora;

class FormMdiTest : public QObject {
    Q_OBJECT

    QTemporaryDir program_;
    WorkingContext fresh() {
        WorkingContext ctx;
        ctx.programDir = program_.path() + u'/';
        return ctx;
    }

private slots:
    void showsTheExerciseInPanelThree() {
        WorkingContext ctx = fresh();
        ScriptedDialogs dialogs;
        ctx.Exercici = QStringLiteral("2026");
        FormMDI window(ctx, dialogs);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QCOMPARE(window.statusBar()->objectName(), QStringLiteral("Barra"));
        QCOMPARE(window.statusPanel(3)->text(), QStringLiteral("2026"));
        QVERIFY(!window.statusPanel(0));
        QVERIFY(!window.statusPanel(4));
        window.Barra_Estat(QStringLiteral("Alta ..."));
        QCOMPARE(window.statusPanel(2)->text(), QStringLiteral("Alta ..."));
    }

    void readsTheInstallationSettingsAsItStarts() {
        WorkingContext ctx = fresh();
        ScriptedDialogs dialogs;
        settings::writeDecimal(ctx.programDir, 46);
        settings::writeMargins(ctx.programDir, {10, 12, 14, 16});
        settings::writePantallaMax(ctx.programDir, true);
        FormMDI window(ctx, dialogs);
        QCOMPARE(ctx.Decimal, 46);
        QCOMPARE(ctx.MargeEsquerre, 10);
        QCOMPARE(ctx.MargeInferior, 16);
        QVERIFY(ctx.PantallaMax);
        QVERIFY(window.windowState() & Qt::WindowMaximized);
    }

    void aShopHidesCustomersAndNamesItselfACommerce() {
        WorkingContext ctx = fresh();
        ScriptedDialogs dialogs;
        ctx.EmpresaNom = QStringLiteral("Ñandú, S.L.");
        ctx.ModeExercici = QStringLiteral("TICKETS");
        FormMDI window(ctx, dialogs);
        QCOMPARE(window.lblEmpresa()->text(), Missatge(ctx, 6629) + QStringLiteral("Ñandú, S.L."));
        QVERIFY(!window.menuAction(QStringLiteral("Clients"))->isVisible());
        QVERIFY(!window.BarraMDI()->findChild<QAction*>(QStringLiteral("Clients"))->isVisible());
        QVERIFY(window.menuAction(QStringLiteral("Proveidorsbd"))->isVisible());
    }

    void everyMenuEntryHasItsCaptionAndUnbuiltOnesAreDisabled() {
        WorkingContext ctx = fresh();
        ScriptedDialogs dialogs;
        ctx.Tesoreria = true;
        FormMDI window(ctx, dialogs);
        QCOMPARE(window.menuAction(QStringLiteral("mnucartera"))->text(), Missatge(ctx, 6662));
        QVERIFY(window.menuAction(QStringLiteral("mnu_Tesoreria"))->isVisible());
        QVERIFY(!window.menuAction(QStringLiteral("mnucartera"))->isEnabled());
        QVERIFY(window.menuAction(QStringLiteral("mnuRepara"))->isEnabled());
        QCOMPARE(window.BarraMDI()->findChild<QAction*>(QStringLiteral("Vendes"))->text(), Missatge(ctx, 232));
        window.Activa_BarraMDI(false);
        QVERIFY(!window.BarraMDI()->findChild<QAction*>(QStringLiteral("Ayuda"))->isEnabled());
    }

    void theMonthLockSavesAndItsCancelAsks() {
        QTemporaryDir exercise;
        WorkingContext ctx = fresh();
        ScriptedDialogs dialogs;
        ctx.Directori = exercise.path() + u'/';
        ctx.Exercici = QStringLiteral("2026");
        FormMDI window(ctx, dialogs);
        window.menuAction(QStringLiteral("mnubloc"))->trigger();
        blockmes* lock = window.monthLock();
        QVERIFY(lock->isVisibleTo(&window));
        lock->chkmesos(3)->click();
        QCOMPARE(ctx.chkmesos[2], 1);
        dialogs.setNextAnswer(Dialogs::Answer::No);
        lock->Cancelar();
        QCOMPARE(dialogs.lastText(), Missatge(ctx, 6622));
        QVERIFY(lock->chkmesos(3)->isChecked());
        lock->Guardar();
        QVERIFY(!lock->changed());
        QVERIFY(QFile::exists(ctx.Directori + QStringLiteral("2026blocks.DAT")));
        lock->chkmesos(3)->click();
        dialogs.setNextAnswer(Dialogs::Answer::Yes);
        lock->Cancelar();
        QVERIFY(lock->chkmesos(3)->isChecked());
        QCOMPARE(ctx.chkmesos[2], 1);
    }
};

QTEST_MAIN(FormMdiTest)
#include "form_mdi_test.moc"
