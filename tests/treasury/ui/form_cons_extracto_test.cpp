// The statement screen: every account at the start, the account's lines with the opening
// line, the refusal of a search without an account, a receipt returned (whole and partly
// collected), a return never returned, the double-entry detail, deletion, and the opening
// line that no key acts on.
#include "treasury/ui/form_cons_extracto.h"
#include "context/dialogs.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "report/report_job.h"
#include "screen_helpers.h"
#include "treasury/other_movements.h"
#include "treasury_exercise.h"

#include <QAction>
#include <QComboBox>
#include <QDateEdit>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QToolBar>
#include <QtTest>

using namespace tallora;
using testing::child;

namespace {

// Banco Norte (5, opening 100,00) has a sale of 121,00 collected whole and 30,00 of a sale
// of 100,00 still in the portfolio; 20,00 went from the cash account to the bank.
class Exercise : public testing::TreasuryExercise {
public:
    Exercise() {
        run(file("gest.mdb"), "insert into Clients (client, nom) values (1, 'Bar Centre')");
        run(file("tesorer.mdb"),
            "insert into entidades (Id, Grup, entidad, Saldo) values (5, 572, 'Banco Norte', "
            "1000000)");
        run(file("FrasOUT.mdb"),
            "insert into FrasOut (Ordre, data, Client, Total, Descripcio, Cobrada, Marca) values "
            "(1, '2026-02-01', 1, 1210000, 'F-1', -1, -1), (2, '2026-02-02', 1, 1000000, 'F-2', "
            "0, -1)");
        run(cartera(),
            "insert into cartera (Id, data, cliente, In_Out, Ejercicio, Factura, Total, "
            "Pendiente, FrasOut) values (9, '2026-02-02', 1, 'Out', '2026', 'F-2', 1000000, "
            "300000, 2)");
        run(file("tesorer.mdb"),
            "insert into movimientos (Id, data, entidad, cliente, FrasOut, concepto, D, H) values "
            "(1, '2026-03-01', 5, 1, 1, 'N/Fra. F-1', 1210000, 0), "
            "(2, '2026-03-02', 5, 1, 2, 'N/Fra. F-2', 300000, 0)");
        treasury::OtherMovement e;
        e.data = QDate(2026, 3, 5);
        e.concepto = QStringLiteral("Ingreso de caja");
        e.importe = QStringLiteral("20");
        e.saleTesoreria = 1;
        e.entraTesoreria = 5;
        treasury::postOtherMovement(ctx, dialogs, e);
    }
    int movementCount() const {
        return rows(file("tesorer.mdb"), "select count(*) from movimientos").first().toInt();
    }
};

QStringList line(const QTableWidget* grid, int r) {
    QStringList out;
    for (int c = 0; c < grid->columnCount(); ++c)
        out << (grid->item(r, c) ? grid->item(r, c)->text() : QString());
    return out;
}

int rowOf(const QTableWidget* grid, const QString& text) {
    for (int r = 0; r < grid->rowCount(); ++r)
        if (grid->item(r, 2)->text().startsWith(text)) return r;
    return -1;
}

void chooseAccount(QWidget* form, const QString& name) {
    auto* list = child<QComboBox>(form, "CmbTesoreria");
    list->setCurrentIndex(list->findText(name));
    emit list->activated(list->currentIndex());
}

}  // namespace

class FormConsExtractoTest : public QObject {
    Q_OBJECT
private slots:
    void everyAccountAtTheStartThenOneWithItsOpeningLine();
    void aReceiptReturnedWholeAndInPartAndAReturnNeverReturned();
    void theDetailDeletionAndTheOpeningLine();
    void buscarAndPrintWithoutAnAccountAreRefused();
};

void FormConsExtractoTest::everyAccountAtTheStartThenOneWithItsOpeningLine() {
    Exercise x;
    FormConsEXTRACTO form(x.ctx, x.dialogs);
    testing::show(form, {1200, 640});
    QCOMPARE(form.windowTitle(), Missatge(x.ctx, 6745));
    auto* grid = form.grid();
    QCOMPARE(grid->horizontalHeaderItem(4)->text(), Missatge(x.ctx, 6747));
    // Every account at once: the opening line at 0,00, and one balance across them.
    QCOMPARE(grid->rowCount(), 5);
    QCOMPARE(line(grid, 0), (QStringList{"", "", "Saldo Inicial...", "", "", "", "0,00"}));
    QCOMPARE(grid->item(0, 2)->background().color(), QColor(0xE0, 0xE0, 0xE0));
    QCOMPARE(line(grid, 4).last(), QStringLiteral("151,00"));
    QVERIFY(!child<QLineEdit>(&form, "txtImport")->isVisible());
    QCOMPARE(child<QLineEdit>(&form, "txtApunts")->text(), QStringLiteral("4"));

    // A date without an account is refused, and the list waits for one.
    auto* from = child<QDateEdit>(&form, "Dtdata1");
    from->setDate(QDate(2026, 3, 2));
    emit from->editingFinished();
    QCOMPARE(x.dialogs.shown().back().kind, ScriptedDialogs::Shown::Kind::Stop);
    QCOMPARE(x.dialogs.lastText(), Missatge(x.ctx, 6750));
    QCOMPARE(grid->rowCount(), 0);
    QCOMPARE(QApplication::focusWidget(), child<QComboBox>(&form, "CmbTesoreria"));

    // From 2 March: the collection of the 1st is not shown, but its money is in the balance.
    chooseAccount(&form, QStringLiteral("BANCO NORTE"));
    QCOMPARE(grid->rowCount(), 3);
    QCOMPARE(line(grid, 0).last(), QStringLiteral("100,00"));
    QCOMPARE(line(grid, 1),
             (QStringList{"2", "02/03/2026", "N/Fra. F-2", "Bar Centre", "30,00", "", "251,00"}));
    QCOMPARE(line(grid, 2).mid(2), (QStringList{"Ingreso de caja", "", "20,00", "", "271,00"}));
    child<QToolBar>(&form, "reset_Dtdata1")->actions().first()->trigger();
    QCOMPARE(grid->rowCount(), 4);
    QCOMPARE(x.dialogs.shown().size(), std::size_t{1});
}

void FormConsExtractoTest::aReceiptReturnedWholeAndInPartAndAReturnNeverReturned() {
    Exercise x;
    FormConsEXTRACTO form(x.ctx, x.dialogs);
    testing::show(form, {1200, 640});
    chooseAccount(&form, QStringLiteral("BANCO NORTE"));
    auto* grid = form.grid();
    auto* date = child<QDateEdit>(&form, "FechaDevolucion");
    QCOMPARE(date->minimumDate(), QDate(2026, 1, 1));
    date->setDate(QDate(2026, 4, 15));
    auto* button = child<QPushButton>(&form, "btnDevolucion");

    grid->selectRow(rowOf(grid, QStringLiteral("N/Fra. F-1")));
    x.dialogs.setNextAnswer(Dialogs::Answer::Yes);
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(x.dialogs.lastText(),
             Missatge(x.ctx, 6987) + QStringLiteral("\nID: 1\nDe: Bar Centre\nConcep: N/Fra. F-1"));
    QCOMPARE(x.rows(x.cartera(), "select data, Total, Pendiente, FrasOut from cartera order by Id"),
             (QStringList{"2026-02-02|1000000|300000|2", "2026-04-15|1210000|0|1"}));
    QCOMPARE(x.rows(x.file("FrasOUT.mdb"), "select Cobrada, Marca from FrasOut where Ordre = 1"),
             QStringList{"0|-1"});
    const int back = rowOf(grid, Missatge(x.ctx, 6985));
    QVERIFY(back > 0);
    QCOMPARE(line(grid, back).mid(1),
             (QStringList{"15/04/2026", Missatge(x.ctx, 6985) + " n/fra. N/Fra. F-1", "Bar Centre",
                          "", "121,00", "150,00"}));

    // A return is never returned.
    const int before = x.movementCount();
    grid->selectRow(back);
    x.dialogs.setNextAnswer(Dialogs::Answer::Yes);
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(x.movementCount(), before);

    // Part of a receipt still in the portfolio: what was settled comes down, the total stands.
    grid->selectRow(rowOf(grid, QStringLiteral("N/Fra. F-2")));
    x.dialogs.setNextAnswer(Dialogs::Answer::Yes);
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(x.rows(x.cartera(), "select Total, Pendiente from cartera where FrasOut = 2"),
             QStringList{"1000000|0"});
    QCOMPARE(x.movementCount(), before + 1);
    // No: nothing moves.
    grid->selectRow(rowOf(grid, QStringLiteral("N/Fra. F-2")));
    x.dialogs.setNextAnswer(Dialogs::Answer::No);
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(x.movementCount(), before + 1);
    QCOMPARE(x.dialogs.pendingAnswers(), std::size_t{0});
}

void FormConsExtractoTest::theDetailDeletionAndTheOpeningLine() {
    Exercise x;
    FormConsEXTRACTO form(x.ctx, x.dialogs);
    testing::show(form, {1200, 640});
    chooseAccount(&form, QStringLiteral("BANCO NORTE"));
    auto* grid = form.grid();
    QList<qint64> opened;
    connect(&form, &FormConsEXTRACTO::modifyRequested, [&](qint64 id) { opened << id; });

    // The opening line: no key acts on it.
    grid->setFocus();
    grid->selectRow(0);
    QTest::keyClick(grid, Qt::Key_Return);
    QTest::keyClick(grid, Qt::Key_Delete);
    QTest::mouseClick(child<QPushButton>(&form, "btnDevolucion"), Qt::LeftButton);
    QVERIFY(opened.isEmpty());
    QVERIFY(x.dialogs.shown().empty());

    auto* more = form.findChild<QAction*>(QStringLiteral("masinfo"));
    QVERIFY(more);
    more->trigger();
    QVERIFY(!form.detail()->isVisible());  // nothing to show on the opening line
    grid->selectRow(1);
    QVERIFY(form.detail()->isVisible());
    QCOMPARE(child<QLabel>(&form, "lblCuentaDebe")->text(), QStringLiteral("(57.5)  Banco Norte"));
    QCOMPARE(child<QLabel>(&form, "lblCuentaHaber")->text(),
             QStringLiteral("  (430.1)  Bar Centre"));
    QCOMPARE(child<QLabel>(&form, "lblDebe")->text(), QStringLiteral("121,00"));
    QCOMPARE(child<QLabel>(&form, "lblHaber")->text(), QStringLiteral("121,00"));
    QTest::mouseClick(child<QPushButton>(&form, "btn_Mes_close"), Qt::LeftButton);
    QVERIFY(!form.detail()->isVisible());
    QVERIFY(!more->isChecked());

    grid->selectRow(1);
    QTest::keyClick(grid, Qt::Key_Return);
    QCOMPARE(opened, QList<qint64>{1});

    // Deleting the transfer takes its movement on the cash account too.
    grid->selectRow(rowOf(grid, QStringLiteral("Ingreso de caja")));
    x.dialogs.setNextAnswer(Dialogs::Answer::Yes);
    QTest::keyClick(grid, Qt::Key_Delete);
    QVERIFY(x.dialogs.lastText().startsWith(Missatge(x.ctx, 815) + QStringLiteral("\nID: ")));
    QCOMPARE(x.rows(x.file("tesorer.mdb"), "select Id from movimientos order by Id"),
             (QStringList{"1", "2"}));
    QCOMPARE(grid->rowCount(), 3);
    QVERIFY(x.dialogs.shown().back().kind != ScriptedDialogs::Shown::Kind::Stop);
}

void FormConsExtractoTest::buscarAndPrintWithoutAnAccountAreRefused() {
    Exercise x;
    report::ReportJob job;
    FormConsEXTRACTO form(x.ctx, x.dialogs, &job);
    testing::show(form, {1200, 640});
    auto* list = child<QComboBox>(&form, "CmbTesoreria");
    form.grid()->setFocus();
    form.tool(QStringLiteral("Buscar"))->trigger();
    QCOMPARE(x.dialogs.lastText(), Missatge(x.ctx, 6750));
    QCOMPARE(QApplication::focusWidget(), list);
    form.grid()->setFocus();
    form.tool(QStringLiteral("Imprimir"))->trigger();
    QCOMPARE(x.dialogs.shown().size(), std::size_t{2});
    QCOMPARE(x.dialogs.lastText(), Missatge(x.ctx, 6750));
    QCOMPARE(QApplication::focusWidget(), list);
    QVERIFY(job.ReportFileName.isEmpty());
}

QTEST_MAIN(FormConsExtractoTest)
#include "form_cons_extracto_test.moc"
