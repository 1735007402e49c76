// The whole start as a user walks it, from the keyboard where the program takes keys: the
// first run's settings, a new company, a new exercise, opening it, the shell, the switch to
// Catalan and the way back to the company list.
#include "context/dialogs.h"
#include "context/messages.h"
#include "context/notation.h"
#include "context/working_context.h"
#include "schema/creation.h"
#include "shell/ui/form_configuracio.h"
#include "shell/ui/form_mdi.h"
#include "shell/ui/form_menu.h"
#include "shell/ui/form_seleccio.h"
#include "shell/ui/session.h"
#include "store/database.h"
#include "widgets/obre_ajuda.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QToolBar>
#include <QtTest>

using namespace tallora;

namespace {

// Keys go where the focus is, as they do for a user.
void type(QWidget* window, const QString& text) {
    QTest::keyClicks(window->focusWidget(), text);
}
void press(QWidget* window, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(window->focusWidget(), key, modifiers);
}

}  // namespace

class StartWalkTest : public QObject {
    Q_OBJECT

private:
    QTemporaryDir root_;
    WorkingContext ctx_;
    ScriptedDialogs dialogs_;
    QStringList helpOpened_;

    QString unit() const { return root_.path() + QStringLiteral("/unit"); }

    template <typename Screen>
    Screen* currentAs(Session& session) {
        auto* screen = qobject_cast<Screen*>(session.current());
        if (screen) {
            screen->activateWindow();
            if (!QTest::qWaitForWindowActive(screen)) return nullptr;
        }
        return screen;
    }

private slots:
    void initTestCase() {
        QVERIFY(root_.isValid());
        ctx_.programDir = root_.path() + QStringLiteral("/program/");
        QDir().mkpath(ctx_.programDir);
        QDir().mkpath(unit());
        // The working unit of this run, as cfg.mdb remembers one.
        const QString cfg = ctx_.programDir + schema::db::Cfg;
        schema::createTables(cfg, schema::db::Cfg, {QStringLiteral("unitat")});
        store::Database::open(cfg).prepare(QStringLiteral("insert into unitat (unitat) values (?)"))
            .bind(1, unit())
            .execute();
        ui::setPageOpener([this](const QString& path) { helpOpened_ << path; });
    }

    void walksTheWholeStart() {
        Session session(ctx_, dialogs_);
        bool ended = false;
        connect(&session, &Session::finished, this, [&] { ended = true; });
        session.start();

        // First run: settings before anything else.
        auto* settings = currentAs<FormConfiguracio>(session);
        QVERIFY(settings);
        QVERIFY(!QFileInfo::exists(ctx_.programDir + QStringLiteral("tallora3.cfg")));
        QVERIFY(!settings->Tabula()->isTabEnabled(3));  // billing needs a company
        settings->findChild<QRadioButton*>(QStringLiteral("OpPunt"))->click();
        dialogs_.setNextAnswer(Dialogs::Answer::Yes);
        settings->findChild<QPushButton*>(QStringLiteral("btnAplicarFormatoNums"))->click();
        QCOMPARE(ctx_.Decimal, 46);
        QCOMPARE(readTextFile(ctx_.programDir + QStringLiteral("tallora3.cfg")).value(), QStringLiteral("46\r\n"));
        settings->findChild<QPushButton*>(QStringLiteral("btnCancelar"))->click();

        // The company list of the unit, still empty.
        auto* companies = currentAs<FormSeleccio>(session);
        QVERIFY(companies);
        auto* list = companies->findChild<QListWidget*>(QStringLiteral("ListEmpreses"));
        QCOMPARE(list->count(), 0);
        QTest::keyClick(companies, Qt::Key_F1);
        QVERIFY(helpOpened_.last().endsWith(QStringLiteral("esp_help/2/2.html")));

        // A new company, typed field after field with Enter.
        press(companies, Qt::Key_N, Qt::ControlModifier);
        QCOMPARE(companies->focusWidget()->objectName(), QStringLiteral("txtnom"));
        type(companies, QStringLiteral("Bar L'Estacio"));  // keys of the ASCII range only
        press(companies, Qt::Key_Return);
        type(companies, QStringLiteral("Carrer Nou, 1"));
        press(companies, Qt::Key_Return);
        type(companies, QStringLiteral("Manresa"));
        press(companies, Qt::Key_Return);
        type(companies, QStringLiteral("08240"));
        press(companies, Qt::Key_Return);
        QCOMPARE(companies->focusWidget()->objectName(), QStringLiteral("txtNIF"));
        type(companies, QStringLiteral("B12.345678"));  // the point beeps and is dropped
        QCOMPARE(qobject_cast<QLineEdit*>(companies->focusWidget())->text(), QStringLiteral("B12345678"));
        QCOMPARE(dialogs_.beeps(), 1);
        dialogs_.setNextAnswer(Dialogs::Answer::Yes);
        press(companies, Qt::Key_S, Qt::ControlModifier);
        QCOMPARE(list->count(), 1);
        QCOMPARE(list->item(0)->text().size(), 52);
        QVERIFY(list->item(0)->text().startsWith(QStringLiteral("Bar L´Estacio")));
        QVERIFY(list->item(0)->text().endsWith(QStringLiteral("B1234567")));

        // Enter on the row opens it.
        list->setFocus();
        list->setCurrentRow(0);
        press(companies, Qt::Key_Return);
        auto* exercises = currentAs<FormMenu>(session);
        QVERIFY(exercises);
        QCOMPARE(ctx_.EmpresaNIF, QStringLiteral("B12345678"));
        QCOMPARE(exercises->findChild<QLabel*>(QStringLiteral("lblNIF"))->text(), QStringLiteral("B12345678"));

        // A new exercise: year, then Enter to the rates.
        press(exercises, Qt::Key_N, Qt::ControlModifier);
        QCOMPARE(exercises->focusWidget()->objectName(), QStringLiteral("txtExercici"));
        press(exercises, Qt::Key_A, Qt::ControlModifier);
        type(exercises, QStringLiteral("2031"));
        press(exercises, Qt::Key_Down);
        QCOMPARE(exercises->findChild<QLineEdit*>(QStringLiteral("txtExercici"))->text(), QStringLiteral("2030"));
        for (int i = 0; i < 4; ++i) press(exercises, Qt::Key_Return);
        QCOMPARE(exercises->focusWidget()->objectName(), QStringLiteral("txtIVA1"));
        press(exercises, Qt::Key_A, Qt::ControlModifier);
        type(exercises, QStringLiteral("21"));
        press(exercises, Qt::Key_Return);
        QCOMPARE(exercises->focusWidget()->objectName(), QStringLiteral("txtRE1"));
        press(exercises, Qt::Key_A, Qt::ControlModifier);
        type(exercises, QStringLiteral("5,2"));  // the comma becomes the point set above
        QCOMPARE(qobject_cast<QLineEdit*>(exercises->focusWidget())->text(), QStringLiteral("5.2"));
        dialogs_.setNextAnswer(Dialogs::Answer::Yes);
        press(exercises, Qt::Key_S, Qt::ControlModifier);
        auto* years = exercises->findChild<QListWidget*>(QStringLiteral("ListExercicis"));
        QCOMPARE(years->count(), 1);
        QCOMPARE(years->item(0)->text(), QStringLiteral("2030"));

        // Enter on the year opens it: the shell.
        years->setFocus();
        years->setCurrentRow(0);
        press(exercises, Qt::Key_Return);
        auto* shell = currentAs<FormMDI>(session);
        QVERIFY(shell);
        QCOMPARE(shell->statusPanel(3)->text(), QStringLiteral("2030"));
        QCOMPARE(ctx_.TipusIVA[0], 21.0);
        QCOMPARE(ctx_.TipusRE[0], 5.2);
        QVERIFY(QFileInfo::exists(ctx_.Directori + QStringLiteral("Supl.mdb")));
        QVERIFY(!shell->menuAction(QStringLiteral("mnu_Tesoreria"))->isVisible());
        QVERIFY(shell->menuAction(QStringLiteral("frasreb"))->isEnabled());
        QVERIFY(shell->menuAction(QStringLiteral("consing"))->isEnabled());
        QVERIFY(!shell->menuAction(QStringLiteral("mnuconsPre"))->isEnabled());
        QVERIFY(shell->menuAction(QStringLiteral("mnubloc"))->isEnabled());

        // Closing the window asks; No stays.
        dialogs_.setNextAnswer(Dialogs::Answer::No);
        shell->close();
        QCOMPARE(session.current(), shell);
        QCOMPARE(dialogs_.lastText(), Missatge(ctx_, 6407));

        // Settings from the menu: Catalan, and back to the company list in Catalan.
        shell->menuAction(QStringLiteral("mnuConfiguracio"))->trigger();
        auto* options = shell->findChild<FormConfiguracio*>();
        QVERIFY(options);
        QVERIFY(options->Tabula()->isTabEnabled(3));
        options->findChild<QRadioButton*>(QStringLiteral("OpCat"))->click();
        dialogs_.setNextAnswer(Dialogs::Answer::Yes);
        options->findChild<QPushButton*>(QStringLiteral("btn_aplica_Idioma"))->click();
        QCOMPARE(ctx_.Idioma, QStringLiteral("cat"));
        auto* catalan = currentAs<FormSeleccio>(session);
        QVERIFY(catalan);
        QCOMPARE(catalan->findChild<QAction*>(QStringLiteral("Nuevo"))->text(), QStringLiteral("Nova"));
        {
            auto chart = store::Database::open(ctx_.programDir + QStringLiteral("Comptes.mdb"));
            auto st = chart.prepare(QStringLiteral("select NomGrup from Compres limit 1"));
            QVERIFY(st.next());
            QCOMPARE(st.text(0), QStringLiteral("Compres"));
        }

        // Again into the exercise, and back through the menu entry without a question.
        auto* list2 = catalan->findChild<QListWidget*>(QStringLiteral("ListEmpreses"));
        list2->setFocus();
        list2->setCurrentRow(0);
        press(catalan, Qt::Key_Return);
        auto* exercises2 = currentAs<FormMenu>(session);
        QVERIFY(exercises2);
        QCOMPARE(exercises2->windowTitle(), Missatge(ctx_, 102));
        auto* years2 = exercises2->findChild<QListWidget*>(QStringLiteral("ListExercicis"));
        years2->setFocus();
        years2->setCurrentRow(0);
        press(exercises2, Qt::Key_Return);
        auto* shell2 = currentAs<FormMDI>(session);
        QVERIFY(shell2);
        const auto questions = dialogs_.shown().size();
        shell2->menuAction(QStringLiteral("empresa"))->trigger();
        QCOMPARE(dialogs_.shown().size(), questions);
        QVERIFY(currentAs<FormSeleccio>(session));
        QVERIFY(ctx_.Directori.endsWith(QStringLiteral("B1234567.EMP/")));

        // Leaving the company list ends the program.
        QVERIFY(!ended);
        session.current()->findChild<QAction*>(QStringLiteral("Sortir"))->trigger();
        QVERIFY(ended);
        QCOMPARE(dialogs_.pendingAnswers(), 0u);
    }
};

QTEST_MAIN(StartWalkTest)
#include "start_walk_test.moc"
