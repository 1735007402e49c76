// The purchases screen typed from the keyboard only, group to posting: without treasury,
// left to pay, paid by an account, and in a shop's exercise; every column written is
// checked, and so are the exempt amount's question, the refusals, the change of a purchase
// settled in a payment run and the way out.
#include "purchases/ui/form_compres.h"
#include "purchases_screen.h"
#include "treasury/runs.h"

#include <QFrame>

using namespace tallora;
using namespace tallora::testing;

namespace {

const char* kAllColumns =
    "TOTAL, Ordre, BaseIRPF, TipusIRPF, Retencio, Base1, TipusIva1, Iva1, Base2, TipusIva2, "
    "Iva2, Base3, TipusIva3, Iva3, Base4, TipusIva4, Iva4, Proveidor, NomProveidor, descripcio, "
    "data, Grup, NomGrup, Compte, NomCompte, Exempta, Periode, Venciment, Pagada, Clasificacion, "
    "Marca";

// 121,00 at 21 % of supplier 1 in Compres on 15/03, with nothing else.
const QString kPlainRow =
    "1210000|1|0|0|0|1000000|210000|210000|0|100000|0|0|40000|0|0|0|0|1|MADERAS SOLER|F-1|"
    "2026-03-15|60|Compras|6000001|Compras mercaderias|0|1T|2026-03-15|%1||0";

}  // namespace

class FormCompresTest : public QObject {
    Q_OBJECT

private:
    void open(FormCompres& form) {
        form.resize(1024, 700);
        form.show();
        QVERIFY(QTest::qWaitForWindowActive(&form));
        QCOMPARE(focusName(&form), QStringLiteral("ComboOP"));
        QVERIFY(!child<QWidget>(&form, "PanelDades")->isEnabled());
    }
    // The group by Enter, then day, month, supplier and account by their first letters,
    // description and total; the focus ends past the total.
    void typeHead(FormCompres& form, const PurchasesScreen& x, const QString& total) {
        enter(&form);
        QVERIFY(child<QWidget>(&form, "PanelDades")->isEnabled());
        QCOMPARE(child<QLabel>(&form, "lblproces")->text(), x.M(709).trimmed());
        QCOMPARE(child<QPushButton>(&form, "btnTancar")->text(), x.M(6408));
        QCOMPARE(focusName(&form), QStringLiteral("txtDia"));
        type(&form, "15");
        enter(&form);
        QCOMPARE(focusName(&form), QStringLiteral("txtMes"));
        type(&form, "3");
        enter(&form);
        QCOMPARE(focusName(&form), QStringLiteral("txtProveidor"));
        type(&form, "mad");
        enter(&form);
        QCOMPARE(text(&form, "txtProveidor"), QStringLiteral("MADERAS SOLER"));
        QCOMPARE(focusName(&form), QStringLiteral("txtDespesa"));
        type(&form, "com");
        enter(&form);
        QCOMPARE(text(&form, "txtDespesa"), QStringLiteral("COMPRAS MERCADERIAS"));
        QCOMPARE(focusName(&form), QStringLiteral("txtdescripcio"));
        type(&form, "F-1");
        enter(&form);
        QCOMPARE(focusName(&form), QStringLiteral("txtTotal"));
        type(&form, total);
        enter(&form);
    }
    // From CmbIva: the rate `rows` down the list, then the three IRPF fields.
    void typeRateAndIrpf(FormCompres& form, int rows) {
        QCOMPARE(focusName(&form), QStringLiteral("CmbIva"));
        for (int i = 0; i < rows; ++i) press(&form, Qt::Key_Down);
        enter(&form);
        QCOMPARE(focusName(&form), QStringLiteral("txtBaseIRPF"));
        enter(&form);
        QCOMPARE(focusName(&form), QStringLiteral("txtTipus"));
        enter(&form);
        QCOMPARE(focusName(&form), QStringLiteral("txtRetencio"));
        enter(&form);
    }
    // Enter along the slots in use (the fourth rate is 0), the last one posting.
    void enterThroughAmounts(FormCompres& form) {
        QVERIFY(child<QWidget>(&form, "PanelIVA")->isVisible());
        QCOMPARE(focusName(&form), QStringLiteral("txtBase1"));
        QVERIFY(!child<QLineEdit>(&form, "txtBase4")->isEnabled());
        for (const char* next : {"txtIVA1", "txtBase2", "txtIVA2", "txtBase3", "txtIVA3"}) {
            enter(&form);
            QCOMPARE(focusName(&form), QString::fromLatin1(next));
        }
        enter(&form);
    }
    // After a new entry, the next one of the same group waits at the day.
    void expectNext(FormCompres& form, const PurchasesScreen& x) {
        QCOMPARE(focusName(&form), QStringLiteral("txtDia"));
        QCOMPARE(text(&form, "txtDia"), QString());
        QCOMPARE(text(&form, "txtTotal"), QStringLiteral("0"));
        QCOMPARE(child<QLabel>(&form, "lblOrdre")->text(), QString());
        QCOMPARE(child<QComboBox>(&form, "ComboOP")->currentIndex(), 0);
        // The supplier list is back in the work area, alone.
        QVERIFY(child<QWidget>(&form, "FrameList")->isVisible());
        QVERIFY(!child<QWidget>(&form, "PanelIVA")->isVisible());
        QCOMPARE(child<QPushButton>(&form, "btnTancar")->text(), x.M(6408));
        QVERIFY(!form.posting());
    }

private slots:
    void noTreasury();
    void treasuryPending();
    void treasuryPaid();
    void ticketsPostFromTheWithholding();
    void exemptDifferences();
    void changeOfASettledPurchase();
    void escapeGoesBackAndCloses();
    void theCloseBoxAsksBeforeDroppingAnEntry();
    void theDescriptionFitsItsColumn();
};

void FormCompresTest::noTreasury() {
    PurchasesScreen x;
    FormCompres form(x.ctx, x.dialogs);
    open(form);
    typeHead(form, x, "121");
    QCOMPARE(text(&form, "txtTotal"), QStringLiteral("121,00"));
    QCOMPARE(focusName(&form), QStringLiteral("CmbIva"));
    press(&form, Qt::Key_Down);  // 21 %: the split shows at once
    QCOMPARE(text(&form, "txtBase1"), QStringLiteral("100,00"));
    QCOMPARE(text(&form, "txtIVA1"), QStringLiteral("21,00"));
    typeRateAndIrpf(form, 0);
    enterThroughAmounts(form);
    QVERIFY2(x.dialogs.shown().empty(), qPrintable(x.dialogs.lastText()));
    QCOMPARE(x.purchases(kAllColumns), QStringList{kPlainRow.arg(0)});
    QCOMPARE(x.movements(), QStringList{});
    QCOMPARE(x.receipts(), QStringList{});
    const QStringList lines = journalLines(&form);
    QVERIFY(lines.contains(x.M(649)));
    QVERIFY(lines.contains("MODIFICAR"));
    QVERIFY(lines.contains(x.M(654)));
    QVERIFY(!lines.contains(x.M(6676)));  // no treasury, no line of who paid
    expectNext(form, x);
}

void FormCompresTest::treasuryPending() {
    PurchasesScreen x;
    x.ctx.Tesoreria = true;
    FormCompres form(x.ctx, x.dialogs);
    open(form);
    typeHead(form, x, "121");
    typeRateAndIrpf(form, 1);
    QCOMPARE(focusName(&form), QStringLiteral("ListEntitats"));
    QCOMPARE(child<QComboBox>(&form, "ListEntitats")->currentText(), QString());
    enter(&form);
    enterThroughAmounts(form);
    QVERIFY2(x.dialogs.shown().empty(), qPrintable(x.dialogs.lastText()));
    QCOMPARE(x.purchases(kAllColumns), QStringList{kPlainRow.arg(0)});
    const QString today = QDate::currentDate().toString(Qt::ISODate);
    QCOMPARE(x.receipts(), QStringList{"2026-03-15|1|In|2026|F-1|1210000|1|" + today});
    QCOMPARE(x.movements(), QStringList{});
    QVERIFY(journalLines(&form).contains(x.M(6676)));
    expectNext(form, x);
}

void FormCompresTest::treasuryPaid() {
    PurchasesScreen x;
    x.ctx.Tesoreria = true;
    FormCompres form(x.ctx, x.dialogs);
    open(form);
    typeHead(form, x, "110");
    typeRateAndIrpf(form, 2);  // 10 %
    QCOMPARE(focusName(&form), QStringLiteral("ListEntitats"));
    press(&form, Qt::Key_Down);
    QCOMPARE(child<QComboBox>(&form, "ListEntitats")->currentText(),
             QStringLiteral("Banco Sabadell"));
    enter(&form);
    QCOMPARE(text(&form, "txtBase2"), QStringLiteral("100,00"));
    enterThroughAmounts(form);
    QVERIFY2(x.dialogs.shown().empty(), qPrintable(x.dialogs.lastText()));
    QCOMPARE(x.purchases(kAllColumns),
             QStringList{"1100000|1|0|0|0|0|210000|0|1000000|100000|100000|0|40000|0|0|0|0|1|"
                         "MADERAS SOLER|F-1|2026-03-15|60|Compras|6000001|Compras mercaderias|"
                         "0|1T|2026-03-15|-1||0"});
    QCOMPARE(x.movements(), QStringList{"2026-03-15|2|1|0|1|0|S/Fra. F-1|0|1100000"});
    QCOMPARE(x.receipts(), QStringList{});
    QVERIFY(journalLines(&form).contains(x.M(6677) + "Banco Sabadell"));
    expectNext(form, x);
}

void FormCompresTest::ticketsPostFromTheWithholding() {
    PurchasesScreen x;
    x.ctx.ModeExercici = QStringLiteral("TICKETS");
    FormCompres form(x.ctx, x.dialogs);
    open(form);
    QVERIFY(child<QComboBox>(&form, "CmbIva")->isHidden());
    typeHead(form, x, "50,5");
    QCOMPARE(focusName(&form), QStringLiteral("txtBaseIRPF"));
    enter(&form);
    enter(&form);
    QCOMPARE(focusName(&form), QStringLiteral("txtRetencio"));
    enter(&form);
    QVERIFY2(x.dialogs.shown().empty(), qPrintable(x.dialogs.lastText()));
    // The whole amount is exempt: total plus withholding.
    QCOMPARE(x.purchases("TOTAL, Base1, Iva1, Base2, Base3, Exempta, Periode, Pagada"),
             QStringList{"505000|0|0|0|0|505000|1T|0"});
    expectNext(form, x);
}

void FormCompresTest::exemptDifferences() {
    PurchasesScreen x;
    FormCompres form(x.ctx, x.dialogs);
    open(form);
    typeHead(form, x, "121");
    typeRateAndIrpf(form, 1);
    // A quota one cent above: the sum passes the total and is refused with 923.
    enter(&form);
    retype(&form, "21,01");
    save(&form);
    QVERIFY(x.dialogs.lastText().startsWith(x.M(923)));
    QCOMPARE(x.purchases("Ordre"), QStringList{});
    QVERIFY(form.isEnabled());
    QVERIFY(!form.posting());
    // Two cents under: the question, and No writes nothing.
    x.dialogs.clear();
    child<QLineEdit>(&form, "txtIVA1")->setFocus();
    retype(&form, "20,98");
    x.dialogs.setNextAnswer(Dialogs::Answer::No);
    save(&form);
    QVERIFY(x.dialogs.lastText().startsWith(x.M(644)));
    QCOMPARE(x.purchases("Ordre"), QStringList{});
    QCOMPARE(text(&form, "txtexempta"), QStringLiteral("0"));
    // Yes stores the difference as exempt.
    x.dialogs.setNextAnswer(Dialogs::Answer::Yes);
    save(&form);
    QCOMPARE(x.purchases("TOTAL, Base1, Iva1, Exempta"), QStringList{"1210000|1000000|209800|200"});
    // One cent under is absorbed silently; the only question is the one of a purchase that
    // seems posted already.
    x.dialogs.clear();
    typeHead(form, x, "121");
    typeRateAndIrpf(form, 1);
    enter(&form);
    retype(&form, "20,99");
    x.dialogs.setNextAnswer(Dialogs::Answer::Yes);
    save(&form);
    QCOMPARE(x.dialogs.shown().size(), std::size_t{1});
    QVERIFY(x.dialogs.lastText().contains(x.M(6753).trimmed()));
    QCOMPARE(x.purchases("Ordre, Exempta"), (QStringList{"1|200", "2|100"}));
}

void FormCompresTest::changeOfASettledPurchase() {
    PurchasesScreen x;
    x.ctx.Tesoreria = true;
    FormCompres form(x.ctx, x.dialogs);
    open(form);
    typeHead(form, x, "121");
    typeRateAndIrpf(form, 1);
    enter(&form);  // left to pay
    enterThroughAmounts(form);
    // A payment run settles 10,00 of it.
    const auto open = treasury::openReceipts(x.ctx, treasury::kPayments);
    QCOMPARE(open.size(), std::size_t{1});
    QVERIFY(treasury::Passa_Recibo(x.ctx, x.dialogs, treasury::kPayments, open[0].id, "10")->moved);
    QVERIFY(!treasury::Contabilizar(x.ctx, x.dialogs, treasury::kPayments, 2, QDate(2026, 3, 20))
                 .refusal);
    QCOMPARE(x.purchases("Pagada, Marca"), QStringList{"0|-1"});
    cancel(&form);  // nothing typed: back to idle without a question
    QCOMPARE(focusName(&form), QStringLiteral("ComboOP"));
    reopenFromJournal(&form);
    QCOMPARE(child<QLabel>(&form, "lblOrdre")->text(), QStringLiteral("1"));
    QCOMPARE(text(&form, "txtProveidor"), QStringLiteral("MADERAS SOLER"));
    QCOMPARE(text(&form, "txtBase1"), QStringLiteral("100,00"));
    QCOMPARE(form.statusText(), x.M(726));
    auto* entitats = child<QComboBox>(&form, "ListEntitats");
    QCOMPARE(entitats->count(), 1);
    QCOMPARE(entitats->currentText(), QStringLiteral("Marca"));
    QVERIFY(!child<QFrame>(&form, "FrameTesoreria")->isEnabled());
    QCOMPARE(focusName(&form), QStringLiteral("txtDia"));
    for (int i = 0; i < 4; ++i) enter(&form);
    QCOMPARE(focusName(&form), QStringLiteral("txtdescripcio"));
    retype(&form, "F-1b");
    // The amounts were not on view: the first "+" shows them, the second saves.
    save(&form);
    QCOMPARE(focusName(&form), QStringLiteral("txtBase1"));
    QCOMPARE(x.purchases("descripcio"), QStringList{"F-1"});
    save(&form);
    QVERIFY2(x.dialogs.shown().empty(), qPrintable(x.dialogs.lastText()));
    QCOMPARE(x.purchases("descripcio, Pagada, Marca"), QStringList{"F-1b|0|-1"});
    const QString today = QDate::currentDate().toString(Qt::ISODate);
    // Updated, never deleted.
    QCOMPARE(x.receipts(), QStringList{"2026-03-15|1|In|2026|F-1b|1210000|1|" + today});
    QVERIFY(journalLines(&form).contains(x.M(651)));
    // A change started from the day log goes on with new entries; "Marca" is gone.
    QCOMPARE(focusName(&form), QStringLiteral("txtDia"));
    QCOMPARE(entitats->itemText(1), QStringLiteral("Banco Sabadell"));
}

void FormCompresTest::escapeGoesBackAndCloses() {
    PurchasesScreen x;
    FormCompres form(x.ctx, x.dialogs);
    open(form);
    enter(&form);
    type(&form, "4");
    x.dialogs.setNextAnswer(Dialogs::Answer::No);
    cancel(&form);
    QCOMPARE(x.dialogs.lastText(), x.M(618) + "\n\n" + x.M(25));
    QCOMPARE(text(&form, "txtDia"), QStringLiteral("4"));
    x.dialogs.setNextAnswer(Dialogs::Answer::Yes);
    cancel(&form);
    QCOMPARE(text(&form, "txtDia"), QString());
    QCOMPARE(focusName(&form), QStringLiteral("ComboOP"));
    QVERIFY(!child<QWidget>(&form, "PanelDades")->isEnabled());
    QCOMPARE(child<QPushButton>(&form, "btnTancar")->text(), x.M(308));
    QVERIFY(form.isVisible());
    cancel(&form);
    QVERIFY(!form.isVisible());
}

void FormCompresTest::theCloseBoxAsksBeforeDroppingAnEntry() {
    PurchasesScreen x;
    FormCompres form(x.ctx, x.dialogs);
    open(form);
    enter(&form);
    type(&form, "4");
    x.dialogs.setNextAnswer(Dialogs::Answer::No);
    QVERIFY(!form.close());
    QCOMPARE(x.dialogs.lastText(), x.M(618) + "\n\n" + x.M(25));
    QCOMPARE(text(&form, "txtDia"), QStringLiteral("4"));
    x.dialogs.setNextAnswer(Dialogs::Answer::Yes);
    QVERIFY(form.close());
}

void FormCompresTest::theDescriptionFitsItsColumn() {
    PurchasesScreen x;
    FormCompres form(x.ctx, x.dialogs);
    open(form);
    auto* description = child<QLineEdit>(&form, "txtdescripcio");
    QCOMPARE(description->maxLength(), 25);
    // A series takes its characters from the description's.
    auto* series = child<QComboBox>(&form, "cmbSerie");
    series->setCurrentIndex(series->findText("/Abon"));
    QCOMPARE(description->maxLength(), 20);
    series->setCurrentIndex(0);
    QCOMPARE(description->maxLength(), 25);
}

QTEST_MAIN(FormCompresTest)
#include "form_compres_test.moc"
