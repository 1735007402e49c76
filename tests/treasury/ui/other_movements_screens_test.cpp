// The other movements' entry screen and inquiry from the keyboard: a bank-to-cash transfer,
// the refusals, the two lists of a side kept to one account, a change, Esc and the close
// box; the inquiry's account filter, deletion of both movements and its way to the entry.
#include "context/dialogs.h"
#include "context/entry_fields.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "screen_helpers.h"
#include "treasury/ui/form_cons_otros.h"
#include "treasury/ui/frm_tesoreria_otros.h"
#include "treasury_exercise.h"
#include "widgets/obre_ajuda.h"

#include <QAction>
#include <QComboBox>
#include <QDateEdit>
#include <QLabel>
#include <QLineEdit>
#include <QTableWidget>
#include <QToolButton>
#include <QtTest>

using namespace tallora;
using testing::child;
using testing::column;

namespace {

// The cash account every exercise starts with (1, "Caja efectivo"), a bank, and a loan.
class Exercise : public testing::TreasuryExercise {
public:
    Exercise() {
        run(file("tesorer.mdb"),
            "insert into entidades (Id, Grup, entidad) values (5, 572, 'Banco Norte')");
        run(file("Comptes.mdb"),
            "insert into Otras (Grup, NomGrup, Compte, NomCompte) values "
            "(170, 'Deudas', 77, 'Préstamo ICO')");
    }
    QStringList movements() const {
        return rows(file("tesorer.mdb"),
                    "select data, entidad, cuenta, otros, concepto, D, H from movimientos "
                    "order by Id");
    }
    QStringList entries() const {
        return rows(file("tesorer.mdb"),
                    "select asiento, data, concepto, Importe, cta_sale_tesoreria, cta_sale_otra, "
                    "cta_entra_tesoreria, cta_entra_otra from otros_movimientos order by asiento");
    }
};

void show(QWidget& form) {
    testing::show(form, {1100, 640});
}

QWidget* focused() {
    return QApplication::focusWidget();
}

}  // namespace

class OtherMovementsScreensTest : public QObject {
    Q_OBJECT
private slots:
    void aTransferFromTheBankToCashFromTheKeyboard();
    void theRefusalsInTheirOrderAndOneAccountASide();
    void aChangeKeepsItsNumberAndIsRefusedWhileAnEntryIsTyped();
    void escAndTheCloseBoxAskBeforeDroppingAnEntry();
    void theInquiryFiltersDeletesAndOpensAnEntry();
};

void OtherMovementsScreensTest::aTransferFromTheBankToCashFromTheKeyboard() {
    Exercise x;
    FrmTesoreriaOtros form(x.ctx, x.dialogs);
    show(form);
    QCOMPARE(form.windowTitle(), Missatge(x.ctx, 6973));
    auto* fecha = child<QDateEdit>(&form, "Fecha");
    QCOMPARE(fecha->minimumDate(), QDate(2026, 1, 1));
    QCOMPARE(fecha->maximumDate(), QDate(2026, 12, 31));
    QCOMPARE(focused(), fecha);
    fecha->setDate(QDate(2026, 3, 10));
    QTest::keyClick(fecha, Qt::Key_Return);
    auto* sale = child<QComboBox>(&form, "cmbSaleTesoreria");
    QCOMPARE(focused(), sale);
    QCOMPARE(sale->itemText(0), QStringLiteral("BANCO NORTE"));  // by name, upper-cased
    QTest::keyClicks(sale, QStringLiteral("BAN"));
    QCOMPARE(sale->currentText(), QStringLiteral("BANCO NORTE"));
    // A chosen treasury account is the whole side: Enter goes on to where the money enters.
    QTest::keyClick(sale, Qt::Key_Return);
    auto* entra = child<QComboBox>(&form, "cmbEntraTesoreria");
    QCOMPARE(focused(), entra);
    QTest::keyClicks(entra, QStringLiteral("CAJ"));
    QCOMPARE(entra->currentText(), QStringLiteral("CAJA EFECTIVO"));
    QTest::keyClick(entra, Qt::Key_Return);
    auto* concepte = child<QLineEdit>(&form, "txtConcepte");
    QCOMPARE(focused(), concepte);
    QTest::keyClicks(concepte, QStringLiteral("Reposicion de caja"));
    QTest::keyClick(concepte, Qt::Key_Return);
    auto* importe = child<QLineEdit>(&form, "txtImporte");
    QCOMPARE(focused(), importe);
    QTest::keyClicks(importe, QStringLiteral("150,5"));
    QTest::keyClick(importe, Qt::Key_Return);

    QVERIFY(x.dialogs.shown().empty());
    QCOMPARE(x.entries(),
             QStringList{QString::fromUtf8("1|2026-03-10|Reposicion de caja|1505000|5|0|1|0")});
    // One movement on each account, neither with an other account.
    QCOMPARE(x.movements(),
             (QStringList{QString::fromUtf8("2026-03-10|5|0|1|Reposicion de caja|0|1505000"),
                          QString::fromUtf8("2026-03-10|1|0|1|Reposicion de caja|1505000|0")}));
    auto* log = form.log();
    QCOMPARE(log->rowCount(), 2);
    QCOMPARE(log->item(0, 0)->text(), QStringLiteral("1"));
    QCOMPARE(log->item(0, 3)->text(), QStringLiteral("150,50"));
    QCOMPARE(log->item(0, 4)->text(), QStringLiteral("CAJA EFECTIVO"));
    QCOMPARE(log->item(0, 5)->text(), QStringLiteral("BANCO NORTE"));
    // The screen is ready for the next entry, the date kept.
    QCOMPARE(sale->currentIndex(), -1);
    QCOMPARE(entra->currentIndex(), -1);
    QVERIFY(concepte->text().isEmpty());
    QVERIFY(importe->text().isEmpty());
    QCOMPARE(fecha->date(), QDate(2026, 3, 10));
    QCOMPARE(focused(), fecha);
}

void OtherMovementsScreensTest::theRefusalsInTheirOrderAndOneAccountASide() {
    Exercise x;
    FrmTesoreriaOtros form(x.ctx, x.dialogs);
    show(form);
    auto* saleTes = child<QComboBox>(&form, "cmbSaleTesoreria");
    auto* saleOtra = child<QComboBox>(&form, "cmbSaleOtrasCuentas");
    auto* entraTes = child<QComboBox>(&form, "cmbEntraTesoreria");
    auto* importe = child<QLineEdit>(&form, "txtImporte");
    importe->setFocus();
    QTest::keyClick(importe, Qt::Key_Return);
    QCOMPARE(x.dialogs.shown().back().kind, ScriptedDialogs::Shown::Kind::Stop);
    QCOMPARE(x.dialogs.lastText(), Missatge(x.ctx, 6730));
    QCOMPARE(focused(), saleTes);

    // Choosing the other account of a side clears its treasury account, and the reverse.
    saleTes->setCurrentIndex(0);
    saleOtra->setCurrentIndex(saleOtra->findText(QString::fromUtf8("PRÉSTAMO ICO")));
    QCOMPARE(saleTes->currentIndex(), -1);
    saleTes->setCurrentIndex(1);
    QCOMPARE(saleOtra->currentIndex(), -1);
    QTest::mouseClick(child<QToolButton>(&form, "clearSaleTesoreria"), Qt::LeftButton);
    QCOMPARE(saleTes->currentIndex(), -1);
    saleOtra->setCurrentIndex(saleOtra->findText(QString::fromUtf8("PRÉSTAMO ICO")));

    form.Contabilizar();
    QCOMPARE(x.dialogs.lastText(), Missatge(x.ctx, 6731));
    QCOMPARE(focused(), entraTes);
    entraTes->setCurrentIndex(entraTes->findText(QStringLiteral("BANCO NORTE")));
    form.Contabilizar();
    QCOMPARE(x.dialogs.lastText(), Missatge(x.ctx, 6733));
    QCOMPARE(focused(), child<QLineEdit>(&form, "txtConcepte"));
    child<QLineEdit>(&form, "txtConcepte")->setText(QStringLiteral("Préstamo"));
    form.Contabilizar();
    QCOMPARE(x.dialogs.lastText(), Missatge(x.ctx, 6732));
    QCOMPARE(focused(), importe);
    importe->setText(QStringLiteral("3000"));
    form.Contabilizar();
    QVERIFY(x.rows(x.file("tesorer.mdb"), "select count(*) from movimientos") == QStringList{"1"});
    // The loan enters the bank: one movement, its account the loan.
    QCOMPARE(x.movements(),
             QStringList{QString::fromUtf8("%1|5|77|1|Préstamo|30000000|0")
                             .arg(child<QDateEdit>(&form, "Fecha")->date().toString(Qt::ISODate))});
    QCOMPARE(x.dialogs.shown().size(), std::size_t{4});
}

void OtherMovementsScreensTest::aChangeKeepsItsNumberAndIsRefusedWhileAnEntryIsTyped() {
    Exercise x;
    treasury::OtherMovement e;
    e.data = QDate(2026, 2, 3);
    e.concepto = QStringLiteral("Ingreso");
    e.importe = QStringLiteral("20");
    e.saleTesoreria = 1;
    e.entraTesoreria = 5;
    treasury::postOtherMovement(x.ctx, x.dialogs, e);
    treasury::postOtherMovement(x.ctx, x.dialogs, e);

    FrmTesoreriaOtros form(x.ctx, x.dialogs);
    QStringList statuses;
    connect(&form, &FrmTesoreriaOtros::statusChanged, [&](const QString& t) { statuses << t; });
    int changed = 0;
    connect(&form, &FrmTesoreriaOtros::movementChanged, [&] { ++changed; });
    show(form);
    child<QLineEdit>(&form, "txtConcepte")->setText(QStringLiteral("a medias"));
    form.Modifica_Otros(1);
    QCOMPARE(x.dialogs.lastText(), Missatge(x.ctx, 657) + QStringLiteral("\n\n") +
                                       Missatge(x.ctx, 658) + QStringLiteral("\n\n") +
                                       Missatge(x.ctx, 659));
    QVERIFY(child<QLabel>(&form, "lblOrdre")->text().isEmpty());
    x.dialogs.setNextAnswer(Dialogs::Answer::Yes);
    QTest::keyClick(child<QLineEdit>(&form, "txtConcepte"), Qt::Key_Escape);

    form.Modifica_Otros(1);
    QCOMPARE(child<QLabel>(&form, "lblOrdre")->text(), QStringLiteral("1"));
    QCOMPARE(child<QDateEdit>(&form, "Fecha")->date(), QDate(2026, 2, 3));
    QCOMPARE(child<QComboBox>(&form, "cmbSaleTesoreria")->currentText(),
             QStringLiteral("CAJA EFECTIVO"));
    QCOMPARE(child<QComboBox>(&form, "cmbEntraTesoreria")->currentText(),
             QStringLiteral("BANCO NORTE"));
    QCOMPARE(child<QLineEdit>(&form, "txtImporte")->text(), QStringLiteral("20,00"));
    QCOMPARE(statuses.last(), Missatge(x.ctx, 726));
    // Now into the loan, from the keyboard: the bank's side cleared by the other list.
    auto* entraOtra = child<QComboBox>(&form, "cmbEntraOtrasCuentas");
    entraOtra->setFocus();
    QTest::keyClicks(entraOtra, QStringLiteral("PR"));
    QCOMPARE(child<QComboBox>(&form, "cmbEntraTesoreria")->currentIndex(), -1);
    QTest::keyClick(entraOtra, Qt::Key_Return);
    QTest::keyClick(child<QLineEdit>(&form, "txtConcepte"), Qt::Key_Return);
    QTest::keyClick(child<QLineEdit>(&form, "txtImporte"), Qt::Key_Return);
    QCOMPARE(changed, 1);
    QCOMPARE(x.entries(), (QStringList{"1|2026-02-03|Ingreso|200000|1|0|0|77",
                                       "2|2026-02-03|Ingreso|200000|1|0|5|0"}));
    QCOMPARE(x.rows(x.file("tesorer.mdb"),
                    "select entidad, cuenta, otros, D, H from movimientos where otros = 1"),
             QStringList{"1|77|1|0|200000"});
    QVERIFY(child<QLabel>(&form, "lblOrdre")->text().isEmpty());
    QCOMPARE(form.log()->item(1, 2)->text(), QStringLiteral("Apunte modificado"));
}

void OtherMovementsScreensTest::escAndTheCloseBoxAskBeforeDroppingAnEntry() {
    Exercise x;
    QStringList opened;
    ui::setPageOpener([&](const QString& path) { opened << path; });
    FrmTesoreriaOtros form(x.ctx, x.dialogs);
    show(form);
    QTest::keyClick(child<QDateEdit>(&form, "Fecha"), Qt::Key_F1);
    QCOMPARE(opened, QStringList{x.ctx.resourcesDir + QStringLiteral("esp_help/10/10_5_3.html")});
    auto* concepte = child<QLineEdit>(&form, "txtConcepte");
    concepte->setFocus();
    QTest::keyClicks(concepte, QStringLiteral("Algo"));
    x.dialogs.setNextAnswer(Dialogs::Answer::No);
    QTest::keyClick(concepte, Qt::Key_Escape);
    QCOMPARE(x.dialogs.lastText(),
             Missatge(x.ctx, 618) + QStringLiteral("\n\n") + Missatge(x.ctx, 25));
    QCOMPARE(concepte->text(), QStringLiteral("Algo"));
    x.dialogs.setNextAnswer(Dialogs::Answer::No);
    QVERIFY(!form.close());
    QVERIFY(form.isVisible());
    x.dialogs.setNextAnswer(Dialogs::Answer::Yes);
    QTest::keyClick(concepte, Qt::Key_Escape);
    QVERIFY(concepte->text().isEmpty());
    QVERIFY(form.isVisible());
    // With nothing typed Esc closes.
    QTest::keyClick(child<QDateEdit>(&form, "Fecha"), Qt::Key_Escape);
    QVERIFY(!form.isVisible());
    QCOMPARE(x.dialogs.pendingAnswers(), std::size_t{0});
    ui::setPageOpener({});
}

void OtherMovementsScreensTest::theInquiryFiltersDeletesAndOpensAnEntry() {
    Exercise x;
    const auto post = [&](std::int64_t saleTes, std::int64_t saleOtra, std::int64_t entraTes,
                          const char* importe, QDate data, const char* concepto) {
        treasury::OtherMovement e;
        e.data = data;
        e.concepto = QString::fromUtf8(concepto);
        e.importe = QString::fromLatin1(importe);
        e.saleTesoreria = saleTes;
        e.saleOtra = saleOtra;
        e.entraTesoreria = entraTes;
        treasury::postOtherMovement(x.ctx, x.dialogs, e);
    };
    post(0, 77, 5, "3000", QDate(2026, 4, 1), "Préstamo recibido");
    post(1, 0, 5, "10", QDate(2026, 1, 2), "Ingreso en banco");
    post(0, 77, 1, "5", QDate(2026, 6, 2), "Ajuste");

    FormConsOtros form(x.ctx, x.dialogs);
    show(form);
    QCOMPARE(form.windowTitle(), Missatge(x.ctx, 6744));
    auto* grid = form.grid();
    QCOMPARE(column(grid, 0), (QStringList{"2", "1", "3"}));
    QCOMPARE(column(grid, 3), (QStringList{"Banco Norte", "Banco Norte", "Caja efectivo"}));
    QCOMPARE(column(grid, 4), (QStringList{"Caja efectivo", QString::fromUtf8("Préstamo ICO"),
                                           QString::fromUtf8("Préstamo ICO")}));
    QCOMPARE(child<QLineEdit>(&form, "txtTotal")->text(), QStringLiteral("3.015,00"));
    QCOMPARE(child<QLineEdit>(&form, "txtApunts")->text(), QStringLiteral("3"));

    auto* account = child<QComboBox>(&form, "CmbCuenta");
    account->setCurrentIndex(account->findText(QString::fromUtf8("PRÉSTAMO ICO")));
    emit account->activated(account->currentIndex());
    QCOMPARE(column(grid, 0), (QStringList{"1", "3"}));

    QList<qint64> asked;
    connect(&form, &FormConsOtros::modifyRequested, [&](qint64 a) { asked << a; });
    grid->setFocus();
    grid->selectRow(0);
    QTest::keyClick(grid, Qt::Key_Return);
    QCOMPARE(asked, QList<qint64>{1});

    x.dialogs.setNextAnswer(Dialogs::Answer::Yes);
    QTest::keyClick(grid, Qt::Key_Delete);
    QCOMPARE(x.dialogs.lastText(),
             Missatge(x.ctx, 815) + QString::fromUtf8("(1) Préstamo recibido"));
    QCOMPARE(column(grid, 0), QStringList{"3"});
    QCOMPARE(x.rows(x.file("tesorer.mdb"), "select otros from movimientos order by Id"),
             (QStringList{"2", "2", "3"}));
    QTest::keyClick(grid, Qt::Key_Escape);
    QVERIFY(!form.isVisible());
}

QTEST_MAIN(OtherMovementsScreensTest)
#include "other_movements_screens_test.moc"
