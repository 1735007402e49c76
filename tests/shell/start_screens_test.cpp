// The start screens as a new user meets them: Esc never drops what was typed without a
// question, a year that is not one is refused on the screen, the exercises screen shrinks
// back when its frame closes, and the first run's settings end the first run and speak the
// language chosen in them.
#include "context/dialogs.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "schema/creation.h"
#include "shell/company_list.h"
#include "shell/exercises.h"
#include "shell/settings_files.h"
#include "shell/ui/form_configuracio.h"
#include "shell/ui/form_edita_empresa.h"
#include "shell/ui/form_mdi.h"
#include "shell/ui/form_menu.h"
#include "shell/ui/form_seleccio.h"
#include "shell/ui/session.h"
#include "store/database.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMdiArea>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QtTest>

using namespace tallora;

class StartScreensTest : public QObject {
    Q_OBJECT

    QTemporaryDir root_;

    // A fresh context on a unit of its own, with cfg.mdb pointing at it (a short name: the
    // remembered unit takes forty characters).
    WorkingContext fresh(const QString& name) {
        WorkingContext ctx;
        ctx.programDir = root_.filePath(name + QStringLiteral("/program/"));
        ctx.Unitat = root_.filePath(name + QStringLiteral("/unit"));
        ctx.resourcesDir = QStringLiteral(TALLORA_SOURCE_DIR "/resources/");
        QDir().mkpath(ctx.programDir);
        QDir().mkpath(ctx.Unitat);
        const QString cfg = ctx.programDir + schema::db::Cfg;
        schema::createTables(cfg, schema::db::Cfg, {QStringLiteral("unitat")});
        store::Database::open(cfg)
            .prepare(QStringLiteral("insert into unitat (unitat) values (?)"))
            .bind(1, ctx.Unitat)
            .execute();
        return ctx;
    }

    // A company saved and opened on the context's unit: Directori is its folder.
    static void openCompany(WorkingContext& ctx, ScriptedDialogs& dialogs) {
        shell::NewCompany c{QStringLiteral("Ferreteria Pons"),
                            QStringLiteral("C/ Major, 1"),
                            QStringLiteral("Reus"),
                            QStringLiteral("43201"),
                            QStringLiteral("B1234567"),
                            false};
        dialogs.setNextAnswer(Dialogs::Answer::Yes);
        QVERIFY(shell::Verifica_Empresa(ctx, dialogs, ctx.Unitat, c));
        QVERIFY(shell::Obre_Empresa(
            ctx, dialogs, ctx.Unitat,
            shell::companyRow(CompanyEntry{QStringLiteral("x"), QStringLiteral("B1234567")})));
        dialogs.clear();
    }

    static void showActive(QWidget* w) {
        w->show();
        w->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(w));
    }

private slots:
    void escOnTheCompanyListNeverEndsTheProgramNorDropsATypedCompany() {
        WorkingContext ctx = fresh(QStringLiteral("u1"));
        ScriptedDialogs dialogs;
        FormSeleccio form(ctx, dialogs);
        showActive(&form);
        QSignalSpy finished(&form, &QDialog::finished);

        // On the list, Esc does nothing at all.
        QTest::keyClick(form.focusWidget() ? form.focusWidget() : &form, Qt::Key_Escape);
        QVERIFY(form.isVisible());
        QCOMPARE(finished.count(), 0);

        // The panel of a new company, with a name typed: Esc asks, and No keeps it.
        form.Nova_Empresa();
        auto* panel = form.findChild<QGroupBox*>(QStringLiteral("PanelDades"));
        auto* txtnom = form.findChild<QLineEdit*>(QStringLiteral("txtnom"));
        QTRY_COMPARE(QApplication::focusWidget(), txtnom);
        QTest::keyClicks(txtnom, QStringLiteral("Bar Centre"));
        dialogs.setNextAnswer(Dialogs::Answer::No);
        QTest::keyClick(txtnom, Qt::Key_Escape);
        QCOMPARE(dialogs.lastText(), Missatge(ctx, 6622));
        QVERIFY(panel->isVisible());
        QCOMPARE(txtnom->text(), QStringLiteral("Bar Centre"));
        QCOMPARE(finished.count(), 0);

        // The close box asks the same, and No keeps the screen.
        dialogs.setNextAnswer(Dialogs::Answer::No);
        QVERIFY(!form.close());
        QVERIFY(form.isVisible());

        // Yes: the panel goes, emptied, and the list is back; the screen stays.
        dialogs.setNextAnswer(Dialogs::Answer::Yes);
        QTest::keyClick(txtnom, Qt::Key_Escape);
        QVERIFY(!panel->isVisible());
        QVERIFY(txtnom->text().isEmpty());
        QVERIFY(form.isVisible());
        QCOMPARE(finished.count(), 0);

        // An empty panel goes on Esc without a question.
        const auto asked = dialogs.shown().size();
        form.Nova_Empresa();
        QTRY_COMPARE(QApplication::focusWidget(), txtnom);
        QTest::keyClick(txtnom, Qt::Key_Escape);
        QVERIFY(!panel->isVisible());
        QCOMPARE(dialogs.shown().size(), asked);
    }

    void escOnTheExercisesHidesTheFrameFirstThenGoesBack() {
        WorkingContext ctx = fresh(QStringLiteral("u2"));
        ScriptedDialogs dialogs;
        openCompany(ctx, dialogs);
        FormMenu form(ctx, dialogs);
        showActive(&form);
        QSignalSpy finished(&form, &QDialog::finished);
        auto* frame = form.findChild<QGroupBox*>(QStringLiteral("FrameAlta"));
        auto* year = form.findChild<QLineEdit*>(QStringLiteral("txtExercici"));

        // The frame as it opened: Esc hides it without a question, the screen stays.
        form.Nou_Exercici();
        QTRY_COMPARE(QApplication::focusWidget(), year);
        QTest::keyClick(year, Qt::Key_Escape);
        QVERIFY(!frame->isVisible());
        QVERIFY(dialogs.shown().empty());
        QCOMPARE(finished.count(), 0);

        // A rate typed: Esc asks, No keeps the frame and what was typed.
        form.Nou_Exercici();
        auto* iva = form.findChild<QLineEdit*>(QStringLiteral("txtIVA1"));
        iva->setText(QStringLiteral("21"));
        dialogs.setNextAnswer(Dialogs::Answer::No);
        QTest::keyClick(iva, Qt::Key_Escape);
        QCOMPARE(dialogs.lastText(), Missatge(ctx, 6622));
        QVERIFY(frame->isVisible());
        QCOMPARE(iva->text(), QStringLiteral("21"));
        QCOMPARE(finished.count(), 0);
        dialogs.setNextAnswer(Dialogs::Answer::Yes);
        QTest::keyClick(iva, Qt::Key_Escape);
        QVERIFY(!frame->isVisible());
        QCOMPARE(finished.count(), 0);

        // Without the frame, Esc goes back to the company list.
        QTest::keyClick(form.focusWidget() ? form.focusWidget() : &form, Qt::Key_Escape);
        QCOMPARE(finished.count(), 1);
        QCOMPARE(finished.at(0).at(0).toInt(), int(QDialog::Rejected));
    }

    void anEmptyOrShortYearIsRefusedOnTheScreenAndNothingIsMade() {
        WorkingContext ctx = fresh(QStringLiteral("u3"));
        ScriptedDialogs dialogs;
        openCompany(ctx, dialogs);
        const QString company = ctx.Directori;
        FormMenu form(ctx, dialogs);
        showActive(&form);
        auto* year = form.findChild<QLineEdit*>(QStringLiteral("txtExercici"));
        for (const QString& typed : {QString(), QStringLiteral("20")}) {
            form.Nou_Exercici();
            year->setText(typed);
            dialogs.setNextAnswer(Dialogs::Answer::Yes);  // were the confirmation asked
            form.Graba_Exercici();
            QCOMPARE(dialogs.lastText(),
                     Missatge(ctx, 114) + u' ' + Missatge(ctx, 655) + QStringLiteral(": ") + typed);
            QTRY_COMPARE(QApplication::focusWidget(), year);
            QVERIFY(form.findChild<QGroupBox*>(QStringLiteral("FrameAlta"))->isVisible());
        }
        QCOMPARE(form.findChild<QListWidget*>(QStringLiteral("ListExercicis"))->count(), 0);
        QCOMPARE(QDir(company).entryList(QDir::Dirs | QDir::NoDotAndDotDot), QStringList{});
        QVERIFY(!QFileInfo::exists(company + QStringLiteral("exercici.lst")));
        QVERIFY(!QFileInfo::exists(company + QStringLiteral(".DAT")));
    }

    void theExercisesScreenShrinksBackWhenTheFrameCloses() {
        WorkingContext ctx = fresh(QStringLiteral("u4"));
        ScriptedDialogs dialogs;
        openCompany(ctx, dialogs);
        FormMenu form(ctx, dialogs);
        form.resize(form.minimumSizeHint().width() + 40, form.minimumSizeHint().height());
        showActive(&form);
        const QSize before = form.size();
        form.Nou_Exercici();
        QApplication::processEvents();
        QVERIFY(form.height() > before.height());
        form.Cancela();
        QApplication::processEvents();
        QCOMPARE(form.size(), before);
        // With the frame open it fits a screen of 768 pixels, title bar and panel aside.
        form.Nou_Exercici();
        QVERIFY(form.minimumSizeHint().height() <= 768 - 70);
    }

    void theFirstRunEndsWhenItsSettingsAreLeftAnyWay() {
        WorkingContext ctx = fresh(QStringLiteral("u5"));
        ScriptedDialogs dialogs;
        {
            Session session(ctx, dialogs);
            session.start();
            auto* settings = qobject_cast<FormConfiguracio*>(session.current());
            QVERIFY(settings);
            settings->close();  // the close box, nothing applied
            QTRY_VERIFY(qobject_cast<FormSeleccio*>(session.current()));
            session.current()->close();
        }
        QVERIFY(!settings::isFirstRun(ctx.programDir));
        QCOMPARE(settings::readDecimal(ctx.programDir), 44);
        Session again(ctx, dialogs);
        again.start();
        QVERIFY(qobject_cast<FormSeleccio*>(again.current()));
        again.current()->close();
    }

    void aLanguageChosenOnTheFirstRunShowsAtOnce() {
        WorkingContext ctx = fresh(QStringLiteral("u6"));
        ScriptedDialogs dialogs;
        Session session(ctx, dialogs);
        session.start();
        auto* settings = qobject_cast<FormConfiguracio*>(session.current());
        QVERIFY(settings);
        QCOMPARE(settings->windowTitle(), Missatge(ctx, 208));
        const QString spanishTitle = settings->windowTitle();
        settings->Tabula()->setCurrentWidget(
            settings->findChild<QWidget*>(QStringLiteral("idioma")));
        settings->findChild<QRadioButton*>(QStringLiteral("OpCat"))->click();
        dialogs.setNextAnswer(Dialogs::Answer::Yes);
        settings->findChild<QPushButton*>(QStringLiteral("btn_aplica_Idioma"))->click();
        QCOMPARE(ctx.Idioma, QStringLiteral("cat"));
        // The settings again, in Catalan, on the tab of the language; the first run goes on.
        QTRY_VERIFY(session.current() && session.current() != settings);
        auto* catalan = qobject_cast<FormConfiguracio*>(session.current());
        QVERIFY(catalan);
        QCOMPARE(catalan->windowTitle(), Missatge(ctx, 208));
        QVERIFY(catalan->windowTitle() != spanishTitle);
        QCOMPARE(catalan->Tabula()->currentWidget()->objectName(), QStringLiteral("idioma"));
        catalan->close();
        QTRY_VERIFY(qobject_cast<FormSeleccio*>(session.current()));
        session.current()->close();
    }

    void companyDataSavedInTheShellShowsAtOnceAndNewRatesCloseTheScreens() {
        WorkingContext ctx = fresh(QStringLiteral("u9"));
        ScriptedDialogs dialogs;
        openCompany(ctx, dialogs);
        shell::NewExercise e = shell::defaultNewExercise();
        e.exercici = QStringLiteral("2026");
        dialogs.setNextAnswer(Dialogs::Answer::Yes);
        QVERIFY(shell::Graba_Exercici(ctx, dialogs, e));
        QVERIFY(shell::Obre_Exercici(ctx, dialogs, QStringLiteral("2026")));
        FormMDI window(ctx, dialogs);
        showActive(&window);
        QVERIFY(!window.menuAction(QStringLiteral("mnu_Tesoreria"))->isVisible());
        QVERIFY(window.menuAction(QStringLiteral("mnuEditarEmpresa"))->isEnabled());
        window.menuAction(QStringLiteral("Clients"))->trigger();
        QCOMPARE(window.mdiArea()->subWindowList().size(), 2);

        window.menuAction(QStringLiteral("mnuEditarEmpresa"))->trigger();
        auto* form = window.findChild<FormEditaEmpresa*>();
        QVERIFY(form);
        QVERIFY(form->isModal());
        QCOMPARE(form->windowTitle(), Missatge(ctx, 6404));
        QCOMPARE(form->findChild<QLineEdit*>(QStringLiteral("txtnom"))->text(),
                 QStringLiteral("Ferreteria Pons"));
        QCOMPARE(form->findChild<QLineEdit*>(QStringLiteral("txtIVA1"))->text(),
                 QStringLiteral("16"));
        form->findChild<QLineEdit*>(QStringLiteral("txtnom"))
            ->setText(QStringLiteral("Ferreteria Nova"));
        form->findChild<QCheckBox*>(QStringLiteral("chk_tesoreria"))->setChecked(true);
        dialogs.setNextAnswer(Dialogs::Answer::Yes);
        form->findChild<QAction*>(QStringLiteral("Guardar"))->trigger();
        // Unlike Settings, the treasury entries show at once, and so does the new name.
        QVERIFY(window.menuAction(QStringLiteral("mnu_Tesoreria"))->isVisible());
        QVERIFY(window.lblEmpresa()->text().contains(QStringLiteral("Ferreteria Nova")));

        // New rates close every working screen, and this one, so that none keeps old rates.
        form->findChild<QLineEdit*>(QStringLiteral("txtIVA1"))->setText(QStringLiteral("21"));
        dialogs.setNextAnswer(Dialogs::Answer::Yes);
        form->findChild<QPushButton*>(QStringLiteral("btnGuardaIVA"))->click();
        QCOMPARE(ctx.TipusIVA[0], 21.0);
        QTRY_COMPARE(window.mdiArea()->subWindowList().size(), 1);  // the month lock only
        QTRY_VERIFY(!window.findChild<FormEditaEmpresa*>());
        window.leave(true);
    }

    void aShopsCompanyDataOfferNoRates() {
        WorkingContext ctx = fresh(QStringLiteral("u10"));
        ScriptedDialogs dialogs;
        ctx.ModeExercici = QStringLiteral("TICKETS");
        FormEditaEmpresa form(ctx, dialogs);
        QVERIFY(!form.findChild<QGroupBox*>(QStringLiteral("FrameIVA")));
        ctx.ModeExercici = QStringLiteral("FACTURES");
        FormEditaEmpresa invoices(ctx, dialogs);
        QVERIFY(invoices.findChild<QGroupBox*>(QStringLiteral("FrameIVA")));
    }
};

QTEST_MAIN(StartScreensTest)
#include "start_screens_test.moc"
