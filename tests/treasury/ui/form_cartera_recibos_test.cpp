// The portfolio screen under the offscreen platform: tabs, party, order, taking a receipt
// out with Delete answered No then Yes, printing, a fault of the store, help and Esc.
#include "treasury/ui/form_cartera_recibos.h"
#include "context/dialogs.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "report/report_job.h"
#include "schema/creation.h"
#include "schema/upgrades.h"
#include "store/database.h"
#include "treasury/ui/portfolio_model.h"
#include "treasury_exercise.h"
#include "widgets/obre_ajuda.h"

#include <QAbstractItemModelTester>
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabBar>
#include <QTableView>
#include <QTemporaryDir>
#include <QToolBar>
#include <QtTest>

using namespace tallora;

namespace {

// An exercise with treasury, two customers, two suppliers and five receipts.
class Exercise : public testing::TreasuryExercise {
public:
    Exercise() {
        run(gest(),
            "insert into Clients (client, nom) values (1, 'Bar Centre'), "
            "(2, 'Ferretería Núñez S.A.')");
        run(gest(),
            "insert into Proveidors (proveidor, nom) values (1, 'Olis del Camp'), "
            "(2, 'Paperera Vic')");
        run(cartera(),
            "insert into cartera (Id, data, cliente, proveedor, In_Out, Ejercicio, Factura, Total, "
            "Pendiente, FrasOut, FrasIn, Vencimiento) values "
            "(1, '2026-02-10', 2, 0, 'Out', '2026', 'F-12', 12345000, 0, 12, 0, '2026-02-28'), "
            "(2, '2025-12-20', 1, 0, 'Out', '2025', 'F-88', 500000, 125000, 88, 0, null), "
            "(3, '2026-01-05', 2, 0, 'Out', '2026', 'F-3', 1000000, 0, 3, 0, '2026-03-01'), "
            "(4, '2026-03-01', 0, 1, 'In', '2026', 'A-77', 2420000, 0, 0, 7, '2026-03-31'), "
            "(5, '2026-01-15', 0, 2, 'In', '2026', '889', 605000, 302500, 0, 2, null)");
    }

    QString gest() const { return ctx.Directori + schema::db::Gest; }
    int count(const char* where) const {
        store::Database d = store::Database::open(cartera());
        store::Statement st =
            d.prepare(QStringLiteral("select count(*) from cartera where ") + QLatin1String(where));
        st.next();
        return st.int32(0);
    }

    report::ReportJob job;
};

// Notes what reaches the preview.
class RecordingOutput : public report::ReportOutput {
public:
    void showWindow(std::shared_ptr<const report::RenderedReport> r) override {
        shown = std::move(r);
    }
    bool printWithDialog(const report::RenderedReport&, int) override { return false; }
    std::shared_ptr<const report::RenderedReport> shown;
};

template <class W>
W* child(QWidget* form, const char* name) {
    W* w = form->findChild<W*>(QString::fromLatin1(name));
    if (!w) qFatal("no widget %s", name);
    return w;
}

// The column of every row of the grid.
QStringList column(const FormCarteraRecibos& form, int c) {
    QStringList out;
    const PortfolioModel* m = form.model();
    for (int r = 0; r < m->rowCount(); ++r) out << m->index(r, c).data().toString();
    return out;
}

QStringList headers(const FormCarteraRecibos& form) {
    QStringList out;
    for (int c = 0; c < form.model()->columnCount(); ++c)
        out << form.model()->headerData(c, Qt::Horizontal).toString();
    return out;
}

void selectRow(FormCarteraRecibos& form, int row) {
    auto* grid = child<QTableView>(&form, "DbGrid1");
    grid->setFocus();
    grid->selectRow(row);
}

void clickTool(QWidget* form, const char* bar, const char* key) {
    auto* toolbar = child<QToolBar>(form, bar);
    QAction* action = toolbar->findChild<QAction*>(QString::fromLatin1(key));
    QVERIFY(action);
    QTest::mouseClick(toolbar->widgetForAction(action), Qt::LeftButton);
}

}  // namespace

class FormCarteraRecibosTest : public QObject {
    Q_OBJECT

private slots:
    void opensOnTheCustomersByDateWithTheTotals() {
        Exercise x;
        RecordingOutput output;
        FormCarteraRecibos form(x.ctx, x.dialogs, x.job, &output);
        QAbstractItemModelTester tester(form.model(),
                                        QAbstractItemModelTester::FailureReportingMode::QtTest);
        form.resize(1024, 700);
        form.show();
        QVERIFY(QTest::qWaitForWindowExposed(&form));
        QCOMPARE(form.objectName(), QStringLiteral("FormCarteraRecibos"));
        QCOMPARE(form.windowTitle(), Missatge(x.ctx, 6680));
        auto* tabs = child<QTabBar>(&form, "TabStrip1");
        QCOMPARE(tabs->count(), 2);
        QCOMPARE(tabs->tabText(0), QStringLiteral("Clientes"));
        QCOMPARE(tabs->tabText(1), QStringLiteral("Proveedores"));
        QCOMPARE(headers(form), (QStringList{"ID", "FECHA", "Vencimiento", "Clientes", "FACTURA",
                                             "TOTAL", "A cuenta"}));
        QCOMPARE(column(form, PortfolioModel::Id), (QStringList{"2", "3", "1"}));
        QCOMPARE(column(form, PortfolioModel::Nombre),
                 (QStringList{"Bar Centre", "Ferretería Núñez S.A.", "Ferretería Núñez S.A."}));
        QCOMPARE(column(form, PortfolioModel::Fecha),
                 (QStringList{"20/12/2025", "05/01/2026", "10/02/2026"}));
        QCOMPARE(column(form, PortfolioModel::Vencimiento),
                 (QStringList{"", "01/03/2026", "28/02/2026"}));
        QCOMPARE(column(form, PortfolioModel::Total), (QStringList{"50,00", "100,00", "1.234,50"}));
        QCOMPARE(column(form, PortfolioModel::ACuenta), (QStringList{"12,50", "0,00", "0,00"}));
        QCOMPARE(form.model()
                         ->index(0, PortfolioModel::Total)
                         .data(Qt::TextAlignmentRole)
                         .value<Qt::Alignment>() &
                     Qt::AlignHorizontal_Mask,
                 Qt::AlignRight);
        QCOMPARE(child<QLineEdit>(&form, "txtCobrar")->text(), QStringLiteral("1.372,00"));
        QCOMPARE(child<QLineEdit>(&form, "txtPagar")->text(), QStringLiteral("272,25"));
        QVERIFY(child<QRadioButton>(&form, "OpFecha")->isChecked());
        QVERIFY(!child<QCheckBox>(&form, "OpGrupo")->isChecked());
        // The drop-downs list the names from Z to A, with the number as item data.
        auto* clients = child<QComboBox>(&form, "CmbClients");
        QCOMPARE(clients->count(), 2);
        QCOMPARE(clients->itemText(0), QStringLiteral("Ferretería Núñez S.A."));
        QCOMPARE(clients->itemData(0).toLongLong(), 2);
        QCOMPARE(clients->currentIndex(), -1);
        QVERIFY(clients->isVisible());
        QVERIFY(!child<QComboBox>(&form, "CmbProveidors")->isVisible());
        QVERIFY(child<QToolBar>(&form, "Toolbar1")->isVisible());
        QVERIFY(!child<QToolBar>(&form, "Toolbar2")->isVisible());
        QVERIFY(form.tool(QStringLiteral("Imprimir")));
        QVERIFY(form.tool(QStringLiteral("Cancela")));
        for (const char* name : {"btnQuitar", "DbGrid1"}) QVERIFY(child<QWidget>(&form, name));
        QVERIFY(x.dialogs.shown().empty());
    }

    void tabsPartyAndOrderRefillTheGrid() {
        Exercise x;
        FormCarteraRecibos form(x.ctx, x.dialogs, x.job, nullptr);
        QAbstractItemModelTester tester(form.model(),
                                        QAbstractItemModelTester::FailureReportingMode::QtTest);
        form.show();
        QVERIFY(QTest::qWaitForWindowExposed(&form));
        const QString cobrar = child<QLineEdit>(&form, "txtCobrar")->text();

        child<QTabBar>(&form, "TabStrip1")->setCurrentIndex(1);
        QCOMPARE(headers(form).at(PortfolioModel::Nombre), QStringLiteral("Proveedores"));
        QCOMPARE(column(form, PortfolioModel::Id), (QStringList{"5", "4"}));
        QCOMPARE(column(form, PortfolioModel::Nombre),
                 (QStringList{"Paperera Vic", "Olis del Camp"}));
        QVERIFY(child<QComboBox>(&form, "CmbProveidors")->isVisible());
        QVERIFY(!child<QComboBox>(&form, "CmbClients")->isVisible());

        // The due-date order: a row without a due date first.
        QTest::mouseClick(child<QRadioButton>(&form, "OpVencimiento"), Qt::LeftButton);
        QCOMPARE(column(form, PortfolioModel::Id), (QStringList{"5", "4"}));
        child<QTabBar>(&form, "TabStrip1")->setCurrentIndex(0);
        QCOMPARE(column(form, PortfolioModel::Id), (QStringList{"2", "1", "3"}));
        QTest::mouseClick(child<QRadioButton>(&form, "OpFecha"), Qt::LeftButton);
        QCOMPARE(column(form, PortfolioModel::Id), (QStringList{"2", "3", "1"}));

        // One customer, then every customer again with the clearing button; the totals stay.
        auto* clients = child<QComboBox>(&form, "CmbClients");
        clients->setCurrentIndex(clients->findText(QStringLiteral("Ferretería Núñez S.A.")));
        QCOMPARE(column(form, PortfolioModel::Id), (QStringList{"3", "1"}));
        QCOMPARE(child<QLineEdit>(&form, "txtCobrar")->text(), cobrar);
        clickTool(&form, "Toolbar1", "Todos");
        QCOMPARE(clients->currentIndex(), -1);
        QCOMPARE(column(form, PortfolioModel::Id), (QStringList{"2", "3", "1"}));

        // A supplier chosen on its own tab, cleared by its own button.
        child<QTabBar>(&form, "TabStrip1")->setCurrentIndex(1);
        auto* suppliers = child<QComboBox>(&form, "CmbProveidors");
        suppliers->setCurrentIndex(suppliers->findText(QStringLiteral("Olis del Camp")));
        QCOMPARE(column(form, PortfolioModel::Id), QStringList{"4"});
        clickTool(&form, "Toolbar2", "Todos");
        QCOMPARE(column(form, PortfolioModel::Id), (QStringList{"5", "4"}));
        QVERIFY(x.dialogs.shown().empty());
    }

    void deleteAsksAndTakesTheReceiptOutOnYes() {
        Exercise x;
        FormCarteraRecibos form(x.ctx, x.dialogs, x.job, nullptr);
        form.show();
        QVERIFY(QTest::qWaitForWindowExposed(&form));
        // Without a selected row the key does nothing.
        child<QTableView>(&form, "DbGrid1")->setFocus();
        QTest::keyClick(form.focusWidget(), Qt::Key_Delete);
        QVERIFY(x.dialogs.shown().empty());

        selectRow(form, 2);  // receipt 1
        x.dialogs.setNextAnswer(Dialogs::Answer::No);
        QTest::keyClick(form.focusWidget(), Qt::Key_Delete);
        QCOMPARE(x.dialogs.shown().size(), size_t(1));
        QCOMPARE(x.dialogs.lastText(),
                 Missatge(x.ctx, 6686) + QStringLiteral("\n(1) Ferretería Núñez S.A. Factura: "
                                                        "F-12 Total: 1.234,50"));
        QCOMPARE(x.count("Id = 1"), 1);
        QCOMPARE(column(form, PortfolioModel::Id), (QStringList{"2", "3", "1"}));

        x.dialogs.setNextAnswer(Dialogs::Answer::Yes);
        QTest::keyClick(form.focusWidget(), Qt::Key_Delete);
        QCOMPARE(x.count("Id = 1"), 0);
        QCOMPARE(column(form, PortfolioModel::Id), (QStringList{"2", "3"}));
        QCOMPARE(child<QLineEdit>(&form, "txtCobrar")->text(), QStringLiteral("137,50"));

        // The button does the same.
        selectRow(form, 0);
        x.dialogs.setNextAnswer(Dialogs::Answer::Yes);
        QTest::mouseClick(child<QPushButton>(&form, "btnQuitar"), Qt::LeftButton);
        QCOMPARE(column(form, PortfolioModel::Id), QStringList{"3"});

        // The last one: the grid keeps only its header, the total shows "0".
        selectRow(form, 0);
        x.dialogs.setNextAnswer(Dialogs::Answer::Yes);
        QTest::keyClick(form.focusWidget(), Qt::Key_Delete);
        QCOMPARE(form.model()->rowCount(), 0);
        QCOMPARE(headers(form).size(), 7);
        QVERIFY(!child<QTableView>(&form, "DbGrid1")->horizontalHeader()->isHidden());
        QCOMPARE(child<QLineEdit>(&form, "txtCobrar")->text(), QStringLiteral("0"));
        QCOMPARE(child<QLineEdit>(&form, "txtPagar")->text(), QStringLiteral("272,25"));
        QCOMPARE(x.dialogs.pendingAnswers(), size_t(0));
    }

    void aFaultOfTheStoreIsShownAndTheGridStays() {
        Exercise x;
        FormCarteraRecibos form(x.ctx, x.dialogs, x.job, nullptr);
        form.show();
        QVERIFY(QTest::qWaitForWindowExposed(&form));
        QVERIFY(QFile::remove(x.cartera()));
        QTest::mouseClick(child<QRadioButton>(&form, "OpVencimiento"), Qt::LeftButton);
        QCOMPARE(x.dialogs.shown().size(), size_t(1));
        QCOMPARE(x.dialogs.shown()[0].kind, ScriptedDialogs::Shown::Kind::Stop);
        QVERIFY(x.dialogs.lastText().contains(QStringLiteral("cartera.mdb")));
        QCOMPARE(column(form, PortfolioModel::Id), (QStringList{"2", "3", "1"}));
        QCOMPARE(child<QLineEdit>(&form, "txtCobrar")->text(), QStringLiteral("1.372,00"));
    }

    void printingAsksThenShowsTheListInThePreview() {
        Exercise x;
        RecordingOutput output;
        FormCarteraRecibos form(x.ctx, x.dialogs, x.job, &output);
        form.show();
        QVERIFY(QTest::qWaitForWindowExposed(&form));
        x.dialogs.setNextAnswer(Dialogs::Answer::No);
        clickTool(&form, "Toolbar", "Imprimir");
        QVERIFY(!output.shown);
        QCOMPARE(x.dialogs.lastText(), Missatge(x.ctx, 6687) + Missatge(x.ctx, 6688));

        child<QTabBar>(&form, "TabStrip1")->setCurrentIndex(1);
        QTest::mouseClick(child<QCheckBox>(&form, "OpGrupo"), Qt::LeftButton);
        x.dialogs.setNextAnswer(Dialogs::Answer::Yes);
        clickTool(&form, "Toolbar", "Imprimir");
        QVERIFY(output.shown);
        QCOMPARE(x.job.ReportFileName,
                 QStringLiteral(TALLORA_SOURCE_DIR "/resources/reports/teso_pro_3.rpt"));
        QCOMPARE(x.job.SelectionFormula, QStringLiteral("{cartera.In_Out} = 'In'"));
        QStringList texts;
        for (int p = 0; p < output.shown->pageCount(); ++p) texts << output.shown->pageTexts(p);
        QVERIFY(texts.contains(QStringLiteral("Paperera Vic")));
        QVERIFY(texts.contains(QStringLiteral("272,25")));
        QVERIFY(!texts.contains(QStringLiteral("Bar Centre")));
    }

    void exportSavesTheListOfTheTabWithoutAskingOrPrinting() {
        Exercise x;
        RecordingOutput output;
        FormCarteraRecibos form(x.ctx, x.dialogs, x.job, &output);
        form.show();
        QVERIFY(QTest::qWaitForWindowExposed(&form));
        QStringList proposed;
        QString answer;
        form.askFilePath = [&](const QString& name) {
            proposed << name;
            return answer;
        };
        child<QTabBar>(&form, "TabStrip1")->setCurrentIndex(1);
        clickTool(&form, "Toolbar", "Exportar");  // no file given: nothing happens
        QCOMPARE(proposed, QStringList{QStringLiteral("cartera_2026.xlsx")});
        QVERIFY(x.job.ReportFileName.isEmpty());

        answer = x.root.filePath(QStringLiteral("pagos.csv"));
        clickTool(&form, "Toolbar", "Exportar");
        QVERIFY(!output.shown);
        QVERIFY2(x.dialogs.shown().empty(), qPrintable(x.dialogs.lastText()));
        QFile file(answer);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QString text = QString::fromUtf8(file.readAll());
        QVERIFY2(text.contains(QStringLiteral("Paperera Vic")), qPrintable(text));
        QVERIFY(text.contains(QStringLiteral("272,25")));
        QVERIFY(!text.contains(QStringLiteral("Bar Centre")));
        QCOMPARE(form.statusText(), QStringLiteral("Fichero guardado: ") + answer);
    }

    void escClosesWithItsStatusAndF1OpensTheHelp() {
        Exercise x;
        QString opened;
        ui::setPageOpener([&](const QString& path) { opened = path; });
        FormCarteraRecibos form(x.ctx, x.dialogs, x.job, nullptr);
        QStringList statuses;
        connect(&form, &FormCarteraRecibos::statusChanged,
                [&](const QString& text) { statuses << text; });
        form.show();
        QVERIFY(QTest::qWaitForWindowActive(&form));
        QTest::keyClick(form.focusWidget(), Qt::Key_F1);
        QVERIFY(opened.contains(QStringLiteral("esp_help/")));
        QVERIFY(form.isVisible());
        QTest::keyClick(form.focusWidget(), Qt::Key_Escape);
        QCOMPARE(statuses, QStringList{QStringLiteral("Descargando ...")});
        QVERIFY(!form.isVisible());
        ui::setPageOpener({});
    }
};

QTEST_MAIN(FormCarteraRecibosTest)
#include "form_cartera_recibos_test.moc"
