// The customers screen from the keyboard: new, save, search by prefix, change, cancel with
// Esc, delete answered both ways.
#include "master/ui/customers_form.h"
#include "context/messages.h"
#include "screen_fixture.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QTabWidget>

using namespace tallora;
using namespace tallora::testing;

class CustomersFormTest : public QObject {
    Q_OBJECT

private:
    QString field(const frmclients& form, const char* name) {
        return form.findChild<QLineEdit*>(QString::fromLatin1(name))->text();
    }
    QString gest(const ScreenExercise& x) { return x.exerciseFile(QStringLiteral("gest.mdb")); }

    // Ctrl+A, then the name, address and town, Enter between them, and keypad "+".
    void addCustomer(frmclients& form, const QString& name, const QString& town) {
        newRecord(&form);
        QCOMPARE(form.state(), MasterForm::State::New);
        QCOMPARE(form.statusText(), QStringLiteral("Alta ..."));
        QCOMPARE(focusName(&form), QStringLiteral("txtnom"));
        type(&form, name);
        enter(&form);
        QCOMPARE(focusName(&form), QStringLiteral("txtdireccio"));
        type(&form, QStringLiteral("C/ Major 1"));
        enter(&form);
        type(&form, town);
        save(&form);
    }

private slots:
    void newSearchChangeCancelDelete() {
        ScreenExercise x;
        frmclients form(x.ctx, x.dialogs);
        form.show();
        QVERIFY(QTest::qWaitForWindowActive(&form));
        QCOMPARE(focusName(&form), QStringLiteral("txtBuscaNom"));
        QVERIFY(!form.tool(QStringLiteral("Grabar"))->isEnabled());
        QVERIFY(!form.findChild<QWidget*>(QStringLiteral("Tabula"))->isHidden());

        addCustomer(form, QStringLiteral("Ferreteria Nova"), QStringLiteral("Vic"));
        QCOMPARE(x.dialogs.lastText(), Missatge(x.ctx, 314) + QStringLiteral("1"));
        QCOMPARE(form.state(), MasterForm::State::Browsing);
        QCOMPARE(focusName(&form), QStringLiteral("txtBuscaNom"));
        addCustomer(form, QStringLiteral("Bar Centre"), QStringLiteral("Olot"));
        QCOMPARE(listTexts(form.list()), (QStringList{"Bar Centre", "Ferreteria Nova"}));
        QCOMPARE(ScreenExercise::rows(
                     gest(x), "select nom, direccio, poblacio, saldo from Clients order by client"),
                 (QStringList{"Ferreteria Nova|C/ Major 1|Vic|0", "Bar Centre|C/ Major 1|Olot|0"}));

        // The search box finds by the start of the name, without regard to case.
        type(&form, QStringLiteral("fer"));
        QCOMPARE(form.list()->currentItem()->text(), QStringLiteral("Ferreteria Nova"));
        QCOMPARE(field(form, "txtpoblacio"), QStringLiteral("Vic"));
        press(&form, Qt::Key_Up);
        QCOMPARE(form.list()->currentItem()->text(), QStringLiteral("Bar Centre"));
        press(&form, Qt::Key_Down);

        // Enter in the search box changes the row found.
        enter(&form);
        QCOMPARE(form.state(), MasterForm::State::Changing);
        QCOMPARE(form.statusText(), Missatge(x.ctx, 314));
        QVERIFY(!form.list()->isEnabled());
        QCOMPARE(form.tool(QStringLiteral("Tancar"))->text(), Missatge(x.ctx, 6408));
        retype(&form, QStringLiteral("Ferreteria d'Osona"));
        save(&form);
        QCOMPARE(ScreenExercise::rows(gest(x), "select nom from Clients order by client"),
                 (QStringList{QStringLiteral("Ferreteria d´Osona"), "Bar Centre"}));
        QCOMPARE(form.tool(QStringLiteral("Tancar"))->text(), Missatge(x.ctx, 308));

        // Esc while changing cancels without a question and writes nothing.
        type(&form, QStringLiteral("bar"));
        enter(&form);
        retype(&form, QStringLiteral("Bar Nou"));
        const auto boxes = x.dialogs.shown().size();
        cancel(&form);
        QCOMPARE(form.state(), MasterForm::State::Browsing);
        QCOMPARE(x.dialogs.shown().size(), boxes);
        QCOMPARE(form.statusText(), QString());
        QCOMPARE(ScreenExercise::rows(gest(x), "select nom from Clients where nom like 'Bar%'"),
                 QStringList{"Bar Centre"});

        // Delete, answered No and then Yes.
        type(&form, QStringLiteral("bar"));
        x.dialogs.setNextAnswer(Dialogs::Answer::No);
        clickTool(&form, QStringLiteral("Esborrar"));
        QCOMPARE(ScreenExercise::rows(gest(x), "select count(*) from Clients"), QStringList{"2"});
        QCOMPARE(x.dialogs.lastText(), Missatge(x.ctx, 309) + Missatge(x.ctx, 25));
        x.dialogs.setNextAnswer(Dialogs::Answer::Yes);
        clickTool(&form, QStringLiteral("Esborrar"));
        QCOMPARE(ScreenExercise::rows(gest(x), "select nom from Clients"),
                 QStringList{QStringLiteral("Ferreteria d´Osona")});
        QCOMPARE(x.dialogs.lastText(), Missatge(x.ctx, 311) + QStringLiteral("1"));
        QCOMPARE(listTexts(form.list()), QStringList{QStringLiteral("Ferreteria d´Osona")});
    }

    void aRefusedSaveKeepsTheEditOpenOnTheName() {
        ScreenExercise x;
        frmclients form(x.ctx, x.dialogs);
        form.show();
        QVERIFY(QTest::qWaitForWindowActive(&form));
        addCustomer(form, QStringLiteral("Bar Centre"), QStringLiteral("Olot"));
        addCustomer(form, QStringLiteral("bar centre"), QStringLiteral("Vic"));
        QCOMPARE(x.dialogs.lastText(), Missatge(x.ctx, 6843));
        QCOMPARE(form.state(), MasterForm::State::New);
        QCOMPARE(focusName(&form), QStringLiteral("txtnom"));
        cancel(&form);
        newRecord(&form);
        save(&form);
        QCOMPARE(x.dialogs.lastText(), Missatge(x.ctx, 312));
        QCOMPARE(focusName(&form), QStringLiteral("txtnom"));
    }

    void theTaxNumberTakesLettersAndDigitsAndTheArrowsJump() {
        ScreenExercise x;
        frmclients form(x.ctx, x.dialogs);
        form.show();
        QVERIFY(QTest::qWaitForWindowActive(&form));
        newRecord(&form);
        form.findChild<QLineEdit*>(QStringLiteral("txtNIF"))->setFocus();
        type(&form, QStringLiteral("B-12.345"));
        QCOMPARE(field(form, "txtNIF"), QStringLiteral("B12345"));
        QCOMPARE(x.dialogs.beeps(), 2);
        press(&form, Qt::Key_Up);
        QCOMPARE(focusName(&form), QStringLiteral("txtsaldo"));
        type(&form, QStringLiteral("1234.5"));
        press(&form, Qt::Key_Up);
        QCOMPARE(focusName(&form), QStringLiteral("txtWeb"));
        QCOMPARE(field(form, "txtsaldo"), QStringLiteral("1.234,50"));
        form.findChild<QLineEdit*>(QStringLiteral("txtNIF"))->setFocus();
        enter(&form);
        QCOMPARE(focusName(&form), QStringLiteral("txtnom"));
    }

    void aTaxNumberFailingItsCheckIsWarnedOfAndSavedAllTheSame() {
        ScreenExercise x;
        frmclients form(x.ctx, x.dialogs);
        form.show();
        QVERIFY(QTest::qWaitForWindowActive(&form));
        auto* warning = form.findChild<QLabel*>(QStringLiteral("lblAvisoNIF"));
        QVERIFY(warning);
        newRecord(&form);
        form.findChild<QLineEdit*>(QStringLiteral("txtNIF"))->setFocus();
        type(&form, QStringLiteral("54362315Z"));
        QVERIFY(warning->isVisible());
        QVERIFY(warning->text().contains(QStringLiteral("54362315Z")));
        auto* nif = form.findChild<QLineEdit*>(QStringLiteral("txtNIF"));
        nif->setText(QStringLiteral("54362315K"));
        QVERIFY(warning->isHidden());
        nif->setText(QStringLiteral("FR12345678901"));
        QVERIFY2(warning->isHidden(), "a foreign VAT number is not checked");
        nif->setText(QStringLiteral("B64717839"));
        QVERIFY(warning->isVisible());
        form.findChild<QLineEdit*>(QStringLiteral("txtnom"))->setText(QStringLiteral("Bar Centre"));
        save(&form);
        for (const auto& box : x.dialogs.shown())
            QVERIFY2(!box.text.contains(QStringLiteral("NIF")), qPrintable(box.text));
        QCOMPARE(master::customerNames(x.ctx).size(), 1);
    }

    void withoutTreasuryOrBillingTheBalanceAndTabsAreHidden() {
        ScreenExercise x;
        x.ctx.Tesoreria = false;
        x.ctx.Facturacio = false;
        frmclients form(x.ctx, x.dialogs);
        form.show();
        QVERIFY(form.findChild<QTabWidget*>(QStringLiteral("Tabula")) == nullptr);
        QVERIFY(form.findChild<QLineEdit*>(QStringLiteral("txtsaldo"))->isHidden());
        QVERIFY(form.findChild<QWidget*>(QStringLiteral("lbl_Saldo"))->isHidden());
    }
};

QTEST_MAIN(CustomersFormTest)
#include "customers_form_test.moc"
