// The bank statement screen from the keyboard: a statement of the bank account read, its
// lines proposed as the receipts they collect, one line's tick taken away with Space, the
// rest imported, the same file read again showing every line imported, a bad file refused.
#include "treasury/ui/form_extracto_banco.h"
#include "context/dialogs.h"
#include "context/working_context.h"
#include "screen_helpers.h"
#include "store/database.h"
#include "treasury_exercise.h"
#include "widgets/obre_ajuda.h"

#include <QComboBox>
#include <QFile>
#include <QPushButton>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QtTest>

using namespace tallora;
using testing::child;
using testing::column;

namespace {

// A bank with its CCC, a customer with two receipts (121,00 and 50,00), and a statement of
// the bank's account that collects both.
class Exercise : public testing::TreasuryExercise {
public:
    Exercise() {
        run(file("gest.mdb"), "insert into Clients (client, nom) values (1, 'Bar Centre')");
        run(file("tesorer.mdb"),
            "insert into entidades (Id, Grup, entidad, ccc) values (5, 572, 'Banco Norte', "
            "'21000418450200051332')");
        run(cartera(),
            "insert into cartera (Id, data, cliente, proveedor, In_Out, Ejercicio, Factura, Total, "
            "Pendiente, FrasOut, FrasIn) values "
            "(1, '2026-02-01', 1, 0, 'Out', '2026', 'F-1', 1210000, 0, 1, 0), "
            "(2, '2026-02-02', 1, 0, 'Out', '2026', 'F-2', 500000, 0, 2, 0)");
    }

    QString statement() const {
        const QStringList lines{
            QStringLiteral("11210004180200051332260201260228200000000000000978"
                           "3BAR CENTRE")
                .leftJustified(80),
            // office, dates, concepts 02/002, credit, amount, document, reference 1
            QStringLiteral("22    0418260204260204020022"
                           "00000000012100"
                           "0000000000"
                           "F-1")
                .leftJustified(80),
            QStringLiteral("22    0418260205260205020022"
                           "00000000005000"
                           "0000000000"
                           "F-2")
                .leftJustified(80),
            // no debits, two credits of 171,00, a closing credit balance of 171,00
            QStringLiteral("33"
                           "21000418"
                           "0200051332"
                           "00000"
                           "00000000000000"
                           "00002"
                           "00000000017100"
                           "2"
                           "00000000017100"
                           "978")
                .leftJustified(80),
            QStringLiteral("88999999999999999999000004").leftJustified(80)};
        const QString path = dir.filePath(QStringLiteral("febrero.n43"));
        QFile f(path);
        if (f.open(QIODevice::WriteOnly)) f.write(lines.join(QStringLiteral("\r\n")).toLatin1());
        return path;
    }
    QTemporaryDir dir;
};

}  // namespace

class FormExtractoBancoTest : public QObject {
    Q_OBJECT
private slots:
    void proposesImportsAndNeverImportsTwice();
    void aFileThatDoesNotAddUpIsRefused();
    void f1OpensTheBanksPageAndEscCloses();
};

void FormExtractoBancoTest::proposesImportsAndNeverImportsTwice() {
    Exercise x;
    FormExtractoBanco form(x.ctx, x.dialogs);
    testing::show(form, {1100, 600});
    const QString path = x.statement();
    form.askFilePath = [&] { return path; };
    auto* accounts = form.accounts();
    accounts->setCurrentIndex(accounts->findText(QStringLiteral("BANCO NORTE")));
    QTest::mouseClick(child<QPushButton>(&form, "btnFichero"), Qt::LeftButton);
    QTableWidget* grid = form.grid();
    QCOMPARE(grid->rowCount(), 2);
    QCOMPARE(column(grid, 3), (QStringList{"121,00", "50,00"}));
    QCOMPARE(column(grid, 4), (QStringList{"Cobro de recibo", "Cobro de recibo"}));
    QCOMPARE(column(grid, 5), (QStringList{"F-1", "F-2"}));
    QCOMPARE(grid->item(0, 0)->checkState(), Qt::Checked);
    QVERIFY(x.dialogs.shown().empty());
    // Nothing is written before Importar.
    QCOMPARE(x.rows(x.file("tesorer.mdb"), "select count(*) from movimientos"), QStringList{"0"});

    // The second line left out from the keyboard.
    grid->setFocus();
    grid->selectRow(1);
    grid->setCurrentCell(1, 1);
    QTest::keyClick(grid, Qt::Key_Space);
    QCOMPARE(grid->item(1, 0)->checkState(), Qt::Unchecked);
    QTest::mouseClick(child<QPushButton>(&form, "btnImportar"), Qt::LeftButton);
    QCOMPARE(x.rows(x.file("tesorer.mdb"), "select data, entidad, D from movimientos"),
             QStringList{"2026-02-04|5|1210000"});
    QCOMPARE(x.rows(x.cartera(), "select Id from cartera"), QStringList{"2"});
    QVERIFY(x.dialogs.lastText().contains(QStringLiteral("1 cobros")));
    // Read again: the first line shows imported and cannot be ticked; the second is still free.
    QCOMPARE(column(grid, 4), (QStringList{"Ya importado", "Cobro de recibo"}));
    QVERIFY(!(grid->item(0, 0)->flags() & Qt::ItemIsUserCheckable));
    QTest::mouseClick(child<QPushButton>(&form, "btnImportar"), Qt::LeftButton);
    QCOMPARE(x.rows(x.file("tesorer.mdb"), "select count(*) from movimientos"), QStringList{"2"});
    QCOMPARE(column(grid, 4), (QStringList{"Ya importado", "Ya importado"}));
    QVERIFY(!child<QPushButton>(&form, "btnImportar")->isEnabled());
    QTest::mouseClick(child<QPushButton>(&form, "btnImportar"), Qt::LeftButton);
    QCOMPARE(x.rows(x.file("tesorer.mdb"), "select count(*) from movimientos"), QStringList{"2"});
}

void FormExtractoBancoTest::aFileThatDoesNotAddUpIsRefused() {
    Exercise x;
    FormExtractoBanco form(x.ctx, x.dialogs);
    testing::show(form, {1100, 600});
    QFile bad(x.dir.filePath(QStringLiteral("bad.n43")));
    QVERIFY(bad.open(QIODevice::WriteOnly));
    bad.write(QByteArray(
        "11210004180200051332260201260228200000000000000978\r\n88999999999999999999000009\r\n"));
    bad.close();
    form.Carga_Fichero(bad.fileName());
    QCOMPARE(x.dialogs.shown().size(), std::size_t{1});
    QCOMPARE(form.grid()->rowCount(), 0);
}

void FormExtractoBancoTest::f1OpensTheBanksPageAndEscCloses() {
    Exercise x;
    QStringList opened;
    ui::setPageOpener([&](const QString& path) { opened << path; });
    FormExtractoBanco form(x.ctx, x.dialogs);
    testing::show(form, {1100, 600});
    QTest::keyClick(form.grid(), Qt::Key_F1);
    QCOMPARE(opened, QStringList{x.ctx.resourcesDir + QStringLiteral("esp_help/10/10_6.html")});
    QVERIFY(QFile::exists(opened.value(0)));
    QTest::keyClick(form.grid(), Qt::Key_Escape);
    QVERIFY(!form.isVisible());
    ui::setPageOpener({});
}

QTEST_MAIN(FormExtractoBancoTest)
#include "form_extracto_banco_test.moc"
