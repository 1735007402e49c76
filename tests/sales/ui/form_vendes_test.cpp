// The sales screen typed from the keyboard only, day to posting: without treasury, with a
// pending receipt, collected by an account, and in a shop that books daily takings. Every
// column written is checked, and so are the journal, the refusals and a change.
#include "sales/ui/form_vendes.h"
#include "../../master/ui/screen_fixture.h"
#include "context/messages.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QStackedWidget>

using namespace tallora;
using namespace tallora::testing;

namespace {

// The exercise of the sales tests: rates 21 / 10 / 4, two customers, two accounts, a bank.
class SalesScreen : public ScreenExercise {
public:
    SalesScreen() {
        ctx.Facturacio = false;
        ctx.Tesoreria = false;
        ctx.ModeExercici = QStringLiteral("FACTURES");
        ctx.TipusIVA = {21, 10, 4};
        ctx.TipusRE = {5.2, 1.4, 0.5};
        exec(exerciseFile("gest.mdb"),
             "insert into Clients (client, nom, direccio, poblacio, NIF, RE) values "
             "(1, 'Ferreteria Puig', 'C/ Major 1', 'Vic', 'B11111111', 0), "
             "(2, 'Colmado Ruiz', 'Pl. Nova 3', 'Olot', '22222222J', -1)");
        exec(exerciseFile("Comptes.mdb"),
             "insert into Ingresos (Grup, NomGrup, Compte, NomCompte) values "
             "(700, 'Ventas', 7000001, 'Ventas mercaderias'), "
             "(705, 'Servicios', 7050001, 'Servicios prestados')");
        exec(exerciseFile("tesorer.mdb"),
             "insert into entidades (Id, Grup, entidad) values (2, 572, 'Banco Sabadell')");
    }
    static void exec(const QString& path, const char* sql) {
        store::Database::open(path).execute(QString::fromUtf8(sql));
    }
    QStringList sales(const char* columns) const {
        return rows(exerciseFile("FrasOUT.mdb"),
                    QStringLiteral("select %1 from FrasOut order by Ordre").arg(columns));
    }
    QString M(int n) const { return Missatge(ctx, n); }
};

const char* kAllColumns =
    "TOTAL, Ordre, BaseIRPF, TipusIRPF, Retencio, Base1, TIva1, Iva1, TRE1, RE1, Base2, TIva2, "
    "Iva2, TRE2, RE2, Base3, TIva3, Iva3, TRE3, RE3, Client, NomClient, direccio, poblacio, NIF, "
    "concepte1, concepte2, concepte3, concepte4, concepte5, Descripcio, data, Grup, NomGrup, "
    "Compte, NomCompte, Cobrada, Clasificacion, Marca";

template <typename W>
W* child(QWidget* form, const char* name) {
    return form->findChild<W*>(QString::fromLatin1(name));
}
QString text(QWidget* form, const char* name) {
    return child<QLineEdit>(form, name)->text();
}
QStringList journalLines(FormVendes& form) {
    return listTexts(child<QListWidget>(&form, "ListRegistres"));
}

}  // namespace

class FormVendesTest : public QObject {
    Q_OBJECT

private:
    void open(FormVendes& form) {
        form.resize(1024, 700);
        form.show();
        QVERIFY(QTest::qWaitForWindowActive(&form));
        QCOMPARE(focusName(&form), QStringLiteral("txtDia"));
    }
    // Day, month, customer by its first letters, account, description and total, with Enter
    // after each; the focus ends on CmbIva (or, for tickets, the sale is posted).
    void typeHead(FormVendes& form, const QString& customer, const QString& total) {
        type(&form, "15");
        enter(&form);
        QCOMPARE(focusName(&form), QStringLiteral("txtMes"));
        type(&form, "3");
        enter(&form);
        if (!customer.isEmpty()) {
            QCOMPARE(focusName(&form), QStringLiteral("txtClient"));
            type(&form, customer);
            enter(&form);
        }
        QCOMPARE(focusName(&form), QStringLiteral("txtTipus"));
        type(&form, "Ven");
        enter(&form);
        QCOMPARE(text(&form, "txtTipus"), QStringLiteral("Ventas mercaderias"));
        QCOMPARE(focusName(&form), QStringLiteral("txtdescripcio"));
        enter(&form);
        QCOMPARE(text(&form, "txtdescripcio"), QStringLiteral("-"));
        QCOMPARE(focusName(&form), QStringLiteral("txtTotal"));
        type(&form, total);
        enter(&form);
    }
    // From CmbIva: the rate `rows` down the list, the three IRPF fields, and on to the bases.
    void typeRateAndIrpf(FormVendes& form, int rows) {
        QCOMPARE(focusName(&form), QStringLiteral("CmbIva"));
        for (int i = 0; i < rows; ++i) press(&form, Qt::Key_Down);
        enter(&form);
        QCOMPARE(focusName(&form), QStringLiteral("txtBaseIRPF"));
        enter(&form);
        QCOMPARE(focusName(&form), QStringLiteral("Text1"));
        enter(&form);
        QCOMPARE(focusName(&form), QStringLiteral("txtRetencio"));
        enter(&form);
    }
    // Enter through the amounts panel to the end, which posts.
    void enterThroughAmounts(FormVendes& form) {
        QVERIFY(child<QWidget>(&form, "PanelIVA")->isVisible());
        QCOMPARE(focusName(&form), QStringLiteral("txtBase1"));
        const QStringList along{"txtIVA1", "txtBase2", "txtIVA2", "txtBase3", "txtIVA3"};
        for (const QString& next : along) {
            enter(&form);
            QCOMPARE(focusName(&form), next);
        }
        enter(&form);
    }
    void expectFresh(FormVendes& form, const SalesScreen& x) {
        QCOMPARE(focusName(&form), QStringLiteral("txtDia"));
        QCOMPARE(text(&form, "txtDia"), QString());
        QCOMPARE(text(&form, "txtTotal"), QStringLiteral("0"));
        QCOMPARE(child<QLabel>(&form, "lblOrdre")->text(), QString());
        QCOMPARE(child<QPushButton>(&form, "btnTancar")->text(), x.M(308));
        QVERIFY(!form.posting());
    }

private slots:
    void noTreasury();
    void treasuryPending();
    void treasuryCollected();
    void ticketsPostFromTheTotal();
    void refusalsKeepTheEntry();
    void monthProposalAndDateCheck();
    void changeFromTheJournal();
    void escapeAsksBeforeClearing();
};

void FormVendesTest::noTreasury() {
    SalesScreen x;
    FormVendes form(x.ctx, x.dialogs);
    open(form);
    type(&form, "1");
    QCOMPARE(child<QPushButton>(&form, "btnTancar")->text(), x.M(6408));
    press(&form, Qt::Key_Backspace);
    typeHead(form, "col", "121");
    QCOMPARE(text(&form, "txtClient"), QStringLiteral("Colmado Ruiz"));
    QCOMPARE(text(&form, "txtTotal"), QStringLiteral("121,00"));
    typeRateAndIrpf(form, 1);
    // Colmado Ruiz pays recargo: its column is in the row.
    QCOMPARE(text(&form, "txtBase1"), QStringLiteral("95,88"));
    QCOMPARE(text(&form, "txtIVA1"), QStringLiteral("20,13"));
    QCOMPARE(text(&form, "txtRE1"), QStringLiteral("4,99"));
    QCOMPARE(focusName(&form), QStringLiteral("txtBase1"));
    const QStringList along{"txtIVA1", "txtRE1", "txtBase2", "txtIVA2", "txtRE2",
                            "txtBase3", "txtIVA3", "txtRE3"};
    for (const QString& next : along) {
        enter(&form);
        QCOMPARE(focusName(&form), next);
    }
    enter(&form);
    QVERIFY2(x.dialogs.shown().empty(), qPrintable(x.dialogs.lastText()));
    QCOMPARE(x.sales(kAllColumns),
             QStringList{"1210000|1|0|0|0|958800|210000|201300|52000|49900|"
                         "0|100000|0|14000|0|0|40000|0|5000|0|2|Colmado Ruiz|||||||||"
                         "1|2026-03-15|700|Ventas|7000001|Ventas mercaderias|0||0"});
    QCOMPARE(SalesScreen::rows(x.exerciseFile("tesorer.mdb"), "select * from movimientos"),
             QStringList{});
    const QStringList lines = journalLines(form);
    QVERIFY(lines.contains(x.M(649)));
    QVERIFY(lines.contains("BASE: 21 % 95,88"));
    QVERIFY(lines.contains("TOTAL: 121,00"));
    QVERIFY(lines.contains("MODIFICAR"));
    QVERIFY(lines.contains(x.M(654)));
    expectFresh(form, x);
}

void FormVendesTest::treasuryPending() {
    SalesScreen x;
    x.ctx.Tesoreria = true;
    FormVendes form(x.ctx, x.dialogs);
    open(form);
    typeHead(form, "fer", "242");
    typeRateAndIrpf(form, 1);
    QCOMPARE(focusName(&form), QStringLiteral("ListEntitats"));
    QCOMPARE(child<QComboBox>(&form, "ListEntitats")->currentText(), QString());
    enter(&form);
    QVERIFY(child<QLineEdit>(&form, "txtRE1")->isHidden());
    enterThroughAmounts(form);
    QVERIFY2(x.dialogs.shown().empty(), qPrintable(x.dialogs.lastText()));
    QCOMPARE(x.sales(kAllColumns),
             QStringList{"2420000|1|0|0|0|2000000|210000|420000|52000|0|"
                         "0|100000|0|14000|0|0|40000|0|5000|0|1|Ferreteria Puig|||||||||"
                         "1|2026-03-15|700|Ventas|7000001|Ventas mercaderias|0||0"});
    const QString today = QDate::currentDate().toString(Qt::ISODate);
    QCOMPARE(SalesScreen::rows(x.companyFile("cartera.mdb"),
                               "select data, cliente, In_Out, Ejercicio, Factura, Total, "
                               "Pendiente, FrasOut, Vencimiento from cartera"),
             QStringList{"2026-03-15|1|Out|2026|1|2420000|0|1|" + today});
    QCOMPARE(SalesScreen::rows(x.exerciseFile("tesorer.mdb"), "select * from movimientos"),
             QStringList{});
    QVERIFY(journalLines(form).contains(x.M(6676)));
    expectFresh(form, x);
}

void FormVendesTest::treasuryCollected() {
    SalesScreen x;
    x.ctx.Tesoreria = true;
    FormVendes form(x.ctx, x.dialogs);
    open(form);
    typeHead(form, "fer", "110");
    typeRateAndIrpf(form, 2);
    QCOMPARE(focusName(&form), QStringLiteral("ListEntitats"));
    // The list: the empty row, "Banco Sabadell", then the cash account.
    press(&form, Qt::Key_Down);
    QCOMPARE(child<QComboBox>(&form, "ListEntitats")->currentText(), QStringLiteral("Banco Sabadell"));
    enter(&form);
    QCOMPARE(focusName(&form), QStringLiteral("txtBase1"));
    QCOMPARE(text(&form, "txtBase2"), QStringLiteral("100,00"));
    enterThroughAmounts(form);
    QVERIFY2(x.dialogs.shown().empty(), qPrintable(x.dialogs.lastText()));
    QCOMPARE(x.sales(kAllColumns),
             QStringList{"1100000|1|0|0|0|0|210000|0|52000|0|"
                         "1000000|100000|100000|14000|0|0|40000|0|5000|0|1|Ferreteria Puig|||||||||"
                         "1|2026-03-15|700|Ventas|7000001|Ventas mercaderias|-1||0"});
    QCOMPARE(SalesScreen::rows(x.exerciseFile("tesorer.mdb"),
                               "select data, entidad, cliente, proveedor, FrasOut, concepto, D, H "
                               "from movimientos"),
             QStringList{"2026-03-15|2|1|0|1|N/Fra. 1|1100000|0"});
    QCOMPARE(SalesScreen::rows(x.companyFile("cartera.mdb"), "select * from cartera"),
             QStringList{});
    QVERIFY(journalLines(form).contains(x.M(6677) + "Banco Sabadell"));
    expectFresh(form, x);
}

void FormVendesTest::ticketsPostFromTheTotal() {
    SalesScreen x;
    x.ctx.ModeExercici = QStringLiteral("TICKETS");
    FormVendes form(x.ctx, x.dialogs);
    open(form);
    QVERIFY(child<QLineEdit>(&form, "txtClient")->isHidden());
    QVERIFY(child<QComboBox>(&form, "CmbIva")->isHidden());
    QVERIFY(child<QLineEdit>(&form, "txtRetencio")->isHidden());
    typeHead(form, QString(), "350,5");
    QVERIFY2(x.dialogs.shown().empty(), qPrintable(x.dialogs.lastText()));
    QCOMPARE(x.sales(kAllColumns),
             QStringList{"3505000|1|0|0|0|0|210000|0|52000|0|0|100000|0|14000|0|0|40000|0|5000|0|"
                         "0|" + x.M(639) + "|||||||||1|2026-03-15|700|Ventas|7000001|"
                         "Ventas mercaderias|0||0"});
    QVERIFY(journalLines(form).contains(" BASE IVA NO APLICABLE: 350,50"));
    expectFresh(form, x);
}

void FormVendesTest::refusalsKeepTheEntry() {
    SalesScreen x;
    FormVendes form(x.ctx, x.dialogs);
    open(form);
    typeHead(form, "fer", "121");
    typeRateAndIrpf(form, 1);
    // One cent too much in the quota: refused, the entry stays, nothing is written.
    retype(&form, "100");
    enter(&form);
    retype(&form, "21,01");
    press(&form, Qt::Key_Plus, Qt::KeypadModifier);
    QVERIFY(x.dialogs.lastText().startsWith(x.M(923)));
    QCOMPARE(x.sales("Ordre"), QStringList{});
    QCOMPARE(text(&form, "txtTotal"), QStringLiteral("121,00"));
    QVERIFY(!form.posting());
    QVERIFY(form.isEnabled());
    // One cent less is absorbed as exempt, silently.
    x.dialogs.clear();
    focusName(&form);
    child<QLineEdit>(&form, "txtIVA1")->setFocus();
    retype(&form, "20,99");
    press(&form, Qt::Key_Plus, Qt::KeypadModifier);
    QVERIFY2(x.dialogs.shown().empty(), qPrintable(x.dialogs.lastText()));
    QCOMPARE(x.sales("TOTAL, Base1, Iva1"), QStringList{"1210000|1000000|209900"});
    QVERIFY(journalLines(form).contains(" BASE IVA NO APLICABLE: 0,01"));
}

void FormVendesTest::monthProposalAndDateCheck() {
    SalesScreen x;
    x.ctx.chkmesos.fill(1);
    x.ctx.chkmesos[5] = 0;
    FormVendes form(x.ctx, x.dialogs);
    open(form);
    type(&form, "31");
    enter(&form);
    QCOMPARE(form.statusText(), x.M(623));
    QCOMPARE(text(&form, "txtMes"), QStringLiteral("6"));  // the one open month
    // 31 June rolls into July.
    enter(&form);
    QCOMPARE(x.dialogs.lastText(), x.M(619));
    QCOMPARE(text(&form, "txtMes"), QString());
    QCOMPARE(focusName(&form), QStringLiteral("txtMes"));
    type(&form, "5");
    enter(&form);
    QCOMPARE(x.dialogs.lastText(), x.M(622));
    QCOMPARE(focusName(&form), QStringLiteral("txtDia"));
    QCOMPARE(text(&form, "txtDia"), QString());
    // A later field with an earlier one empty sends the focus back.
    child<QLineEdit>(&form, "txtTotal")->setFocus();
    QCOMPARE(focusName(&form), QStringLiteral("txtDia"));
    QVERIFY(x.dialogs.beeps() > 0);
}

void FormVendesTest::changeFromTheJournal() {
    SalesScreen x;
    x.ctx.Tesoreria = true;
    FormVendes form(x.ctx, x.dialogs);
    open(form);
    typeHead(form, "fer", "121");
    typeRateAndIrpf(form, 1);
    enter(&form);  // no account: pending
    enterThroughAmounts(form);
    QCOMPARE(x.sales("Ordre, Cobrada"), QStringList{"1|0"});

    // While an entry is typed the change is refused.
    type(&form, "2");
    form.Modifica_Venda(QStringLiteral("1"), true);
    QCOMPARE(x.dialogs.lastText(), x.M(657) + "\n\n" + x.M(658) + "\n\n" + x.M(659));
    press(&form, Qt::Key_Backspace);

    auto* list = child<QListWidget>(&form, "ListRegistres");
    const auto found = list->findItems(QStringLiteral("MODIFICAR"), Qt::MatchExactly);
    QCOMPARE(found.size(), 1);
    list->setCurrentItem(found[0]);
    const QPoint at = list->visualItemRect(found[0]).center();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, at);
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, at);
    QCOMPARE(child<QLabel>(&form, "lblOrdre")->text(), QStringLiteral("1"));
    QCOMPARE(text(&form, "txtClient"), QStringLiteral("Ferreteria Puig"));
    QCOMPARE(text(&form, "txtBase1"), QStringLiteral("100,00"));
    QCOMPARE(form.statusText(), x.M(726));
    // Collected now by the bank.
    auto* entitats = child<QComboBox>(&form, "ListEntitats");
    entitats->setCurrentIndex(entitats->findText(QStringLiteral("Banco Sabadell")));
    // The amounts were not on view: the first "+" shows them, the second saves.
    press(&form, Qt::Key_Plus, Qt::KeypadModifier);
    QVERIFY(child<QWidget>(&form, "PanelIVA")->isVisible());
    QCOMPARE(focusName(&form), QStringLiteral("txtBase1"));
    QCOMPARE(x.sales("Ordre, Cobrada"), QStringList{"1|0"});
    press(&form, Qt::Key_Plus, Qt::KeypadModifier);
    QVERIFY2(x.dialogs.lastText().startsWith(x.M(657)), qPrintable(x.dialogs.lastText()));
    QCOMPARE(x.sales("Ordre, Cobrada"), QStringList{"1|-1"});
    QCOMPARE(SalesScreen::rows(x.companyFile("cartera.mdb"), "select * from cartera"),
             QStringList{});
    QCOMPARE(SalesScreen::rows(x.exerciseFile("tesorer.mdb"), "select FrasOut, D from movimientos"),
             QStringList{"1|1210000"});
    QVERIFY(journalLines(form).contains(x.M(651)));
    QVERIFY(form.isVisible());  // a change from the journal stays on the screen
    expectFresh(form, x);
}

void FormVendesTest::escapeAsksBeforeClearing() {
    SalesScreen x;
    FormVendes form(x.ctx, x.dialogs);
    open(form);
    type(&form, "4");
    x.dialogs.setNextAnswer(Dialogs::Answer::No);
    cancel(&form);
    QCOMPARE(x.dialogs.lastText(), x.M(618) + "\n\n" + x.M(25));
    QCOMPARE(text(&form, "txtDia"), QStringLiteral("4"));
    x.dialogs.setNextAnswer(Dialogs::Answer::Yes);
    cancel(&form);
    QCOMPARE(text(&form, "txtDia"), QString());
    QVERIFY(form.isVisible());
    cancel(&form);
    QVERIFY(!form.isVisible());
}

QTEST_MAIN(FormVendesTest)
#include "form_vendes_test.moc"
