// The collection and payment run screens from the keyboard: a partial and a full receipt
// collected in one run, a payment run, the refusals, the buttons between the lists, the
// sides kept apart, help and Esc.
#include "treasury/ui/form_cartera_run.h"
#include "context/dialogs.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "schema/creation.h"
#include "schema/upgrades.h"
#include "screen_helpers.h"
#include "store/database.h"
#include "treasury_exercise.h"
#include "widgets/obre_ajuda.h"

#include "banking/bank_file.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QDir>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QtTest>

using namespace tallora;
using testing::child;
using testing::column;

namespace {

// An exercise with treasury, the cash account and a bank, a customer with two sales to
// collect (121,00 and 50,00) and a supplier with a purchase to pay (242,00).
class Exercise : public testing::TreasuryExercise {
public:
    Exercise() {
        run(file("gest.mdb"), "insert into Clients (client, nom) values (1, 'Bar Centre')");
        run(file("gest.mdb"),
            "insert into Proveidors (proveidor, nom) values (1, 'Olis del Camp')");
        run(file("tesorer.mdb"),
            "insert into entidades (Id, Grup, entidad) values (5, 572, 'Banco Norte')");
        run(file("FrasOUT.mdb"),
            "insert into FrasOut (Ordre, data, Client, Total, Descripcio, Cobrada, Marca) values "
            "(1, '2026-02-01', 1, 1210000, 'F-1', 0, 0), (2, '2026-02-02', 1, 500000, 'F-2', 0, "
            "0)");
        run(file("FrasIN.mdb"),
            "insert into FrasIN (Ordre, data, Proveidor, NomProveidor, TOTAL, descripcio, Pagada, "
            "Marca) values (7, '2026-03-01', 1, 'Olis del Camp', 2420000, 'A-77', 0, 0)");
        run(cartera(),
            "insert into cartera (Id, data, cliente, proveedor, In_Out, Ejercicio, Factura, Total, "
            "Pendiente, FrasOut, FrasIn) values "
            "(1, '2026-02-01', 1, 0, 'Out', '2026', 'F-1', 1210000, 0, 1, 0), "
            "(2, '2026-02-02', 1, 0, 'Out', '2026', 'F-2', 500000, 0, 2, 0), "
            "(3, '2026-03-01', 0, 1, 'In', '2026', 'A-77', 2420000, 0, 0, 7)");
    }

    QStringList receipts() const {
        return rows(cartera(), "select Id, Borrador, Temporal, Pendiente from cartera order by Id");
    }
};

void show(QWidget& form) {
    testing::show(form, {1200, 640});
}

}  // namespace

class FormCarteraRunTest : public QObject {
    Q_OBJECT
private slots:
    void collectsAPartialAndAFullReceiptFromTheKeyboard();
    void tooMuchIsRefusedAndTheFieldShowsWhatIsDue();
    void aPaymentRunAndTheButtonsBetweenTheLists();
    void refusesWithoutAnAccountOrInALockedMonth();
    void escClosesAndF1OpensTheSidesPage();
    void sendsTheRunToTheBankAsASepaFile();
};

void FormCarteraRunTest::collectsAPartialAndAFullReceiptFromTheKeyboard() {
    Exercise x;
    FormCarteraCobrar form(x.ctx, x.dialogs);
    QStringList statuses;
    connect(&form, &FormCarteraRun::statusChanged, [&](const QString& t) { statuses << t; });
    show(form);
    QCOMPARE(form.objectName(), QStringLiteral("FormCarteraCobrar"));
    QCOMPARE(form.windowTitle(), Missatge(x.ctx, 6706));
    auto* open = form.openList();
    auto* draft = form.draftList();
    QCOMPARE(column(open, 0), (QStringList{"1", "2"}));
    QCOMPARE(column(open, 4), (QStringList{"121,00", "50,00"}));
    QCOMPARE(column(draft, 0), QStringList{});

    // 21,00 of the first receipt, typed in the partial amount, Enter.
    auto* amount = child<QLineEdit>(&form, "txtCobrar");
    amount->setFocus();
    amount->selectAll();
    QTest::keyClicks(amount, QStringLiteral("21"));
    QTest::keyClick(amount, Qt::Key_Return);
    QCOMPARE(column(draft, 0), QStringList{"1"});
    QCOMPARE(column(draft, 4), QStringList{"21,00"});
    QCOMPARE(amount->text(), QStringLiteral("0,00"));
    // The second, all that is due, by Enter on the open list.
    QCOMPARE(column(open, 0), QStringList{"2"});
    open->setFocus();
    QTest::keyClick(open, Qt::Key_Return);
    QCOMPARE(column(draft, 0), (QStringList{"1", "2"}));
    QCOMPARE(child<QLineEdit>(&form, "txtTotal")->text(), QStringLiteral("71,00"));

    auto* account = child<QComboBox>(&form, "cmbEntitats");
    account->setCurrentIndex(account->findText(QStringLiteral("BANCO NORTE")));
    child<QDateEdit>(&form, "FechaCobro")->setDate(QDate(2026, 3, 10));
    QTest::mouseClick(child<QPushButton>(&form, "btnContabilizar"), Qt::LeftButton);
    QCOMPARE(statuses, (QStringList{Missatge(x.ctx, 725), QString()}));
    QCOMPARE(x.receipts(), (QStringList{"1|n|0|210000", "3|n|0|0"}));
    QCOMPARE(
        x.rows(
            x.file("tesorer.mdb"),
            "select data, entidad, cliente, FrasOut, concepto, D, H from movimientos order by Id"),
        (QStringList{"2026-03-10|5|1|2|N/Fra. F-2|500000|0",
                     "2026-03-10|5|1|1|N/Fra. F-1|210000|0"}));
    QCOMPARE(
        x.rows(x.file("FrasOUT.mdb"), "select Ordre, Cobrada, Marca from FrasOut order by Ordre"),
        (QStringList{"1|0|-1", "2|-1|-1"}));
    QCOMPARE(column(open, 4), QStringList{"100,00"});
    QCOMPARE(draft->rowCount(), 0);
    QCOMPARE(amount->text(), QStringLiteral("0"));
    QVERIFY(x.dialogs.shown().empty());
}

void FormCarteraRunTest::tooMuchIsRefusedAndTheFieldShowsWhatIsDue() {
    Exercise x;
    FormCarteraCobrar form(x.ctx, x.dialogs);
    show(form);
    auto* amount = child<QLineEdit>(&form, "txtCobrar");
    amount->setFocus();
    amount->selectAll();
    QTest::keyClicks(amount, QStringLiteral("130"));
    QTest::keyClick(amount, Qt::Key_Return);
    QCOMPARE(x.dialogs.shown().size(), std::size_t{1});
    QCOMPARE(x.dialogs.shown()[0].text, Missatge(x.ctx, 6702));
    QCOMPARE(amount->text(), QStringLiteral("121,00"));
    QCOMPARE(form.draftList()->rowCount(), 0);
    QCOMPARE(x.receipts().first(), QStringLiteral("1|n|0|0"));
}

void FormCarteraRunTest::aPaymentRunAndTheButtonsBetweenTheLists() {
    Exercise x;
    FormCarteraPagar form(x.ctx, x.dialogs);
    show(form);
    QCOMPARE(form.windowTitle(), Missatge(x.ctx, 6720));
    QCOMPARE(column(form.openList(), 0), QStringList{"3"});
    // A collection in its own draft stays there whatever this side does.
    x.run(x.cartera(), "update cartera set Borrador = 's', Temporal = Total where Id = 1");
    form.tool(QStringLiteral("Passa_Tots"))->trigger();
    QCOMPARE(column(form.draftList(), 0), QStringList{"3"});
    form.tool(QStringLiteral("Buida_Borrador"))->trigger();
    QCOMPARE(form.draftList()->rowCount(), 0);
    QCOMPARE(x.receipts()[0], QStringLiteral("1|s|1210000|0"));
    form.tool(QStringLiteral("Passa_Recibo"))->trigger();
    form.draftList()->setFocus();
    QTest::keyClick(form.draftList(), Qt::Key_Delete);
    QCOMPARE(form.draftList()->rowCount(), 0);
    form.tool(QStringLiteral("Passa_Recibo"))->trigger();

    auto* account = child<QComboBox>(&form, "cmbEntitats");
    account->setCurrentIndex(account->findText(QStringLiteral("BANCO NORTE")));
    child<QDateEdit>(&form, "FechaPago")->setDate(QDate(2026, 4, 2));
    QTest::mouseClick(child<QPushButton>(&form, "btnContabilizar"), Qt::LeftButton);
    QCOMPARE(x.rows(x.file("tesorer.mdb"),
                    "select data, entidad, proveedor, FrasIn, concepto, D, H from movimientos"),
             QStringList{"2026-04-02|5|1|7|S/Fra. A-77|0|2420000"});
    QCOMPARE(x.rows(x.file("FrasIN.mdb"), "select Pagada, Marca from FrasIN"),
             QStringList{"-1|-1"});
    QCOMPARE(form.openList()->rowCount(), 0);
}

void FormCarteraRunTest::refusesWithoutAnAccountOrInALockedMonth() {
    Exercise x;
    FormCarteraPagar form(x.ctx, x.dialogs);
    show(form);
    // An empty draft: the button does nothing.
    QTest::mouseClick(child<QPushButton>(&form, "btnContabilizar"), Qt::LeftButton);
    QVERIFY(x.dialogs.shown().empty());
    form.tool(QStringLiteral("Passa_Recibo"))->trigger();
    QTest::mouseClick(child<QPushButton>(&form, "btnContabilizar"), Qt::LeftButton);
    QCOMPARE(x.dialogs.shown().back().text, Missatge(x.ctx, 6728));
    QCOMPARE(form.statusText(), QString());  // nothing is being written
    auto* account = child<QComboBox>(&form, "cmbEntitats");
    account->setCurrentIndex(0);
    auto* date = child<QDateEdit>(&form, "FechaPago");
    date->setDate(QDate(2026, 6, 1));
    x.ctx.chkmesos[5] = 1;
    QTest::mouseClick(child<QPushButton>(&form, "btnContabilizar"), Qt::LeftButton);
    QCOMPARE(x.dialogs.shown().back().text, Missatge(x.ctx, 622));
    QCOMPARE(form.focusWidget(), date);
    QCOMPARE(x.rows(x.file("tesorer.mdb"), "select count(*) from movimientos"), QStringList{"0"});
    QCOMPARE(form.draftList()->rowCount(), 1);
    // The date keeps inside the exercise.
    QCOMPARE(date->minimumDate(), QDate(2026, 1, 1));
    QCOMPARE(date->maximumDate(), QDate(2026, 12, 31));
}

void FormCarteraRunTest::escClosesAndF1OpensTheSidesPage() {
    Exercise x;
    QStringList opened;
    ui::setPageOpener([&](const QString& path) { opened << path; });
    FormCarteraPagar form(x.ctx, x.dialogs);
    QStringList statuses;
    connect(&form, &FormCarteraRun::statusChanged, [&](const QString& t) { statuses << t; });
    show(form);
    QTest::keyClick(form.openList(), Qt::Key_F1);
    QCOMPARE(opened, QStringList{x.ctx.resourcesDir + QStringLiteral("esp_help/10/10_3_2.html")});
    QTest::keyClick(form.openList(), Qt::Key_Escape);
    QCOMPARE(statuses, QStringList{QStringLiteral("Descargando ...")});
    QVERIFY(!form.isVisible());
    ui::setPageOpener({});
}

void FormCarteraRunTest::sendsTheRunToTheBankAsASepaFile() {
    Exercise x;
    x.ctx.EmpresaNIF = QStringLiteral("B12345678");
    x.ctx.EmpresaNom = QStringLiteral("Fusteria Pons");
    x.run(x.file("tesorer.mdb"), "update entidades set ccc = '21000418450200051332' where Id = 5");
    {
        store::Database d = store::Database::open(x.file("tesorer.mdb"));
        banking::attachBankFile(x.ctx, d);
        banking::storeMandate(d, 1, banking::Mandate{"BAR-1", QDate(2025, 1, 2), false});
    }
    schema::createTables(x.ctx.companyFile(QStringLiteral("fact.mdb")), QStringLiteral("fact.mdb"),
                         {QStringLiteral("comercial_clientes")});
    x.run(x.ctx.companyFile(QStringLiteral("fact.mdb")),
          "insert into comercial_clientes (Client, ccc) values (1, '12341234161234567890')");
    FormCarteraCobrar form(x.ctx, x.dialogs);
    show(form);
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("remesa.xml"));
    QString suggested;
    form.askFilePath = [&](const QString& s) {
        suggested = s;
        return path;
    };
    QVERIFY(!form.bankDate()->isEnabled());
    form.sepaCheck()->setChecked(true);
    QVERIFY(form.bankDate()->isEnabled());
    form.tool(QStringLiteral("Passa_Recibo"))->trigger();
    auto* account = child<QComboBox>(&form, "cmbEntitats");
    account->setCurrentIndex(account->findText(QStringLiteral("BANCO NORTE")));
    child<QDateEdit>(&form, "FechaCobro")->setDate(QDate(2026, 3, 10));
    form.bankDate()->setDate(QDate(2026, 3, 14));
    QTest::mouseClick(child<QPushButton>(&form, "btnContabilizar"), Qt::LeftButton);
    QVERIFY2(QFile::exists(path), qPrintable(x.dialogs.lastText()));
    QVERIFY(suggested.endsWith(QStringLiteral("remesa-20260314.xml")));
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray xml = file.readAll();
    QVERIFY(xml.contains("<ReqdColltnDt>2026-03-14</ReqdColltnDt>"));
    QVERIFY(xml.contains("<CtrlSum>121.00</CtrlSum>"));
    QVERIFY(x.dialogs.lastText().contains(path));
    QCOMPARE(x.rows(x.file("tesorer.mdb"), "select data, D from movimientos"),
             QStringList{"2026-03-10|1210000"});
    QCOMPARE(form.draftList()->rowCount(), 0);
}

QTEST_MAIN(FormCarteraRunTest)
#include "form_cartera_run_test.moc"
