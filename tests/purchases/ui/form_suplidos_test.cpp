// Provisions and disbursements typed from the keyboard only: a disbursement paid from the
// bank, a provision received in cash, the account required with treasury, none without it,
// and a change that turns a disbursement into a provision and rebuilds its movement.
#include "purchases/ui/form_suplidos.h"
#include "purchases_screen.h"

#include <QRadioButton>

using namespace tallora;
using namespace tallora::testing;

class FormSuplidosTest : public QObject {
    Q_OBJECT

private:
    void open(FormSuplidos& form) {
        form.resize(1024, 640);
        form.show();
        QVERIFY(QTest::qWaitForWindowActive(&form));
        QCOMPARE(focusName(&form), QStringLiteral("txtDia"));
    }
    // Day 5 of March, the party by its first letters, description and total.
    void typeEntry(FormSuplidos& form, const QString& party, const QString& total) {
        type(&form, "5");
        enter(&form);
        type(&form, "3");
        enter(&form);
        QCOMPARE(focusName(&form), QStringLiteral("txtClient"));
        type(&form, party);
        enter(&form);
        QCOMPARE(focusName(&form), QStringLiteral("txtdescripcio"));
        type(&form, "Tasas");
        enter(&form);
        QCOMPARE(focusName(&form), QStringLiteral("txtTotal"));
        type(&form, total);
        enter(&form);
    }

private slots:
    void disbursementPaidByTheBank();
    void provisionReceivedInCash();
    void theAccountIsRequired();
    void withoutTreasuryNoMovement();
    void aChangeRebuildsTheMovement();
};

void FormSuplidosTest::disbursementPaidByTheBank() {
    PurchasesScreen x;
    x.ctx.Tesoreria = true;
    FormSuplidos form(x.ctx, x.dialogs);
    open(form);
    QVERIFY(child<QRadioButton>(&form, "OpSuplido")->isChecked());
    QCOMPARE(child<QLabel>(&form, "lblclient")->text(), x.M(701));
    typeEntry(form, "mad", "60,1");
    QCOMPARE(text(&form, "txtClient"), QStringLiteral("MADERAS SOLER"));
    QCOMPARE(focusName(&form), QStringLiteral("ListEntitats"));
    press(&form, Qt::Key_Down);
    enter(&form);
    QVERIFY2(x.dialogs.shown().empty(), qPrintable(x.dialogs.lastText()));
    QCOMPARE(
        x.provisions("Ordre, total, Proveidor, NomProveidor, Tipus, NomTipus, descripcio, data"),
        QStringList{"1|601000|1|MADERAS SOLER|S|" + x.M(6501) + "|Tasas|2026-03-05"});
    QCOMPARE(x.movements(), QStringList{"2026-03-05|2|1|0|0|1|" + x.M(6501) + ". Tasas|0|601000"});
    const QStringList lines = journalLines(&form);
    QVERIFY(lines.contains(x.M(649)));
    QVERIFY(lines.contains("MODIFICAR"));
    QVERIFY(lines.contains(x.M(654)));
    QCOMPARE(focusName(&form), QStringLiteral("txtDia"));
    QCOMPARE(text(&form, "txtTotal"), QStringLiteral("0"));
}

void FormSuplidosTest::provisionReceivedInCash() {
    PurchasesScreen x;
    x.ctx.Tesoreria = true;
    FormSuplidos form(x.ctx, x.dialogs);
    open(form);
    QTest::mouseClick(child<QRadioButton>(&form, "OpProvision"), Qt::LeftButton);
    QCOMPARE(child<QLabel>(&form, "lblclient")->text(), x.M(602));
    QCOMPARE(focusName(&form), QStringLiteral("txtDia"));
    typeEntry(form, "col", "600");
    QCOMPARE(text(&form, "txtClient"), QStringLiteral("COLMADO RUIZ"));
    // The list: the empty row, "Banco Sabadell", then the cash account.
    press(&form, Qt::Key_Down);
    press(&form, Qt::Key_Down);
    enter(&form);
    QVERIFY2(x.dialogs.shown().empty(), qPrintable(x.dialogs.lastText()));
    QCOMPARE(x.provisions("Ordre, total, Proveidor, Tipus, NomTipus"),
             QStringList{"1|6000000|2|P|" + x.M(6506)});
    QCOMPARE(x.movements(), QStringList{"2026-03-05|1|0|2|0|1|" + x.M(6506) + ". Tasas|6000000|0"});
}

void FormSuplidosTest::theAccountIsRequired() {
    PurchasesScreen x;
    x.ctx.Tesoreria = true;
    FormSuplidos form(x.ctx, x.dialogs);
    open(form);
    typeEntry(form, "ges", "10");
    enter(&form);  // no account chosen
    QCOMPARE(x.dialogs.lastText(), x.M(6678));
    QCOMPARE(focusName(&form), QStringLiteral("ListEntitats"));
    QCOMPARE(x.provisions("Ordre"), QStringList{});
    QCOMPARE(text(&form, "txtClient"), QStringLiteral("GESTORIA PUIG"));
}

void FormSuplidosTest::withoutTreasuryNoMovement() {
    PurchasesScreen x;
    FormSuplidos form(x.ctx, x.dialogs);
    open(form);
    QVERIFY(child<QWidget>(&form, "FrameTesoreria")->isHidden());
    typeEntry(form, "ges", "10");  // Enter on the total posts
    QVERIFY2(x.dialogs.shown().empty(), qPrintable(x.dialogs.lastText()));
    QCOMPARE(x.provisions("Ordre, total, Tipus"), QStringList{"1|100000|S"});
    QCOMPARE(x.movements(), QStringList{});
}

void FormSuplidosTest::aChangeRebuildsTheMovement() {
    PurchasesScreen x;
    x.ctx.Tesoreria = true;
    FormSuplidos form(x.ctx, x.dialogs);
    open(form);
    typeEntry(form, "mad", "60,1");
    press(&form, Qt::Key_Down);
    enter(&form);
    reopenFromJournal(&form);
    QCOMPARE(child<QLabel>(&form, "lblOrdre")->text(), QStringLiteral("1"));
    QCOMPARE(child<QComboBox>(&form, "ListEntitats")->currentText(),
             QStringLiteral("Banco Sabadell"));
    QCOMPARE(form.statusText(), x.M(726));
    // Now a provision of Ferreteria Puig.
    QTest::mouseClick(child<QRadioButton>(&form, "OpProvision"), Qt::LeftButton);
    enter(&form);
    enter(&form);
    QCOMPARE(focusName(&form), QStringLiteral("txtClient"));
    retype(&form, "fer");
    enter(&form);
    save(&form);
    QVERIFY2(x.dialogs.shown().empty(), qPrintable(x.dialogs.lastText()));
    QCOMPARE(x.provisions("Ordre, Proveidor, NomProveidor, Tipus"),
             QStringList{"1|1|FERRETERIA PUIG|P"});
    QCOMPARE(x.movements(), QStringList{"2026-03-05|2|0|1|0|1|" + x.M(6506) + ". Tasas|601000|0"});
    QVERIFY(journalLines(&form).contains(x.M(651)));
}

QTEST_MAIN(FormSuplidosTest)
#include "form_suplidos_test.moc"
