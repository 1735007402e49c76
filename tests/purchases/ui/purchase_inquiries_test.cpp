// The two inquiries from the keyboard and the mouse: the purchases inquiry with its filters,
// total and count, deletion with the treasury rows, the detail frame, F11 back into the
// portfolio and Modificar; the provisions inquiry with its type filter and deletion.
#include "purchases/purchase_posting.h"
#include "purchases/ui/form_cons_in.h"
#include "purchases/ui/form_cons_supl.h"
#include "purchases_screen.h"
#include "report/report_job.h"
#include "widgets/obre_ajuda.h"

#include <QAction>
#include <QDateEdit>
#include <QFile>
#include <QFrame>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTableWidget>

using namespace tallora;
using namespace tallora::testing;

namespace {

// Three purchases: 121,00 of Maderas Soler paid by the bank, 60,50 of Gestoria Puig left to
// pay, and 100,00 of Maderas Soler in June.
void postPurchases(PurchasesScreen& x) {
    x.ctx.Tesoreria = true;
    struct Row {
        const char* day;
        const char* month;
        const char* supplier;
        std::int64_t number;
        int group;
        const char* account;
        const char* total;
        std::optional<std::int64_t> bank;
    };
    const Row rows[] = {
        {"15", "3", "MADERAS SOLER", 1, 0, "COMPRAS MERCADERIAS", "121,00", 2},
        {"20", "3", "GESTORIA PUIG", 2, 1, "ASESORIA", "60,50", std::nullopt},
        {"2", "6", "MADERAS SOLER", 1, 0, "COMPRAS MERCADERIAS", "100,00", std::nullopt},
    };
    for (const Row& r : rows) {
        purchases::PurchaseEntry e;
        e.group = r.group;
        e.txtDia = QString::fromLatin1(r.day);
        e.txtMes = QString::fromLatin1(r.month);
        e.lblFecha =
            e.txtDia.rightJustified(2, u'0') + "/" + e.txtMes.rightJustified(2, u'0') + "/2026";
        e.txtProveidor = e.listProvText = QString::fromLatin1(r.supplier);
        e.supplierNumber = r.number;
        e.txtDespesa = e.listDespesesText = QString::fromLatin1(r.account);
        e.txtdescripcio = "F-" + e.txtDia;
        e.txtTotal = QString::fromLatin1(r.total);
        e.venciment = QDate(2026, 7, 1);
        purchases::Calcula_Bases(x.ctx, e, 21);
        if (r.bank) {
            e.entitat = QStringLiteral("Banco Sabadell");
            e.entitatId = r.bank;
        }
        const auto account = purchases::Verifica_compte_Despesa(x.ctx, r.group, e.txtDespesa);
        QVERIFY(account);
        QVERIFY(purchases::GrabaApunt(x.ctx, e, *account).ok());
    }
}

QStringList column(const QTableWidget* grid, int c) {
    QStringList out;
    for (int r = 0; r < grid->rowCount(); ++r) out << grid->item(r, c)->text();
    return out;
}

void show(QWidget& form) {
    form.resize(1100, 640);
    form.show();
    QVERIFY(QTest::qWaitForWindowActive(&form));
}

}  // namespace

class PurchaseInquiriesTest : public QObject {
    Q_OBJECT

private slots:
    void searchesByEveryFilter();
    void deletesWithTheTreasuryRows();
    void detailFrameAndPortfolio();
    void modifyHandsTheNumberOver();
    void provisionsByTypeAndDeletion();
    void f1OpensTheInquiriesPage();
    void exportSavesTheListAsItPrints();
};

void PurchaseInquiriesTest::searchesByEveryFilter() {
    PurchasesScreen x;
    postPurchases(x);
    FormConsIN form(x.ctx, x.dialogs);
    show(form);
    auto* grid = form.grid();
    QCOMPARE(grid->rowCount(), 3);
    QCOMPARE(column(grid, 0), (QStringList{"1", "2", "3"}));
    QCOMPARE(text(&form, "txtApunts"), QStringLiteral("3"));
    QCOMPARE(text(&form, "txtTotal"), QStringLiteral("281,50"));
    QCOMPARE(grid->item(0, 2)->text(), QStringLiteral("MADERAS SOLER"));
    QCOMPARE(grid->item(1, 5)->text(), QStringLiteral("60,50"));

    auto* suppliers = child<QComboBox>(&form, "CmbProveidors");
    suppliers->setCurrentIndex(suppliers->findText("Maderas Soler"));
    emit suppliers->activated(suppliers->currentIndex());
    QCOMPARE(column(grid, 0), (QStringList{"1", "3"}));
    QCOMPARE(text(&form, "txtTotal"), QStringLiteral("221,00"));
    QCOMPARE(focusName(&form), QStringLiteral("CmbProveidors"));

    // The amount, by Enter in its field.
    child<QLineEdit>(&form, "txtImport")->setFocus();
    type(&form, "100");
    enter(&form);
    QCOMPARE(column(grid, 0), QStringList{"3"});
    QCOMPARE(focusName(&form), QStringLiteral("txtImport"));
    // Its reset button clears it and searches again.
    QTest::mouseClick(
        form.findChild<QToolBar*>("reset_txtImport")
            ->widgetForAction(form.findChild<QToolBar*>("reset_txtImport")->actions().first()),
        Qt::LeftButton);
    QCOMPARE(column(grid, 0), (QStringList{"1", "3"}));

    // Dates: March only; order by amount.
    suppliers->setCurrentIndex(-1);
    child<QDateEdit>(&form, "Dtdata2")->setDate(QDate(2026, 3, 31));
    form.Buscar();
    QCOMPARE(column(grid, 0), (QStringList{"1", "2"}));
    child<QRadioButton>(&form, "OpImport")->setChecked(true);
    QCOMPARE(column(grid, 0), (QStringList{"2", "1"}));

    // The separator line of the accounts is searched as a name, which finds nothing.
    auto* accounts = child<QComboBox>(&form, "CmbNaturalesa");
    QCOMPARE(accounts->itemText(1), purchases::kAccountSeparator);
    accounts->setCurrentIndex(1);
    emit accounts->activated(1);
    QCOMPARE(grid->rowCount(), 0);
    QCOMPARE(text(&form, "txtApunts"), QStringLiteral("0"));
    QCOMPARE(text(&form, "txtTotal"), QStringLiteral("0,00"));
}

void PurchaseInquiriesTest::deletesWithTheTreasuryRows() {
    PurchasesScreen x;
    postPurchases(x);
    FormConsIN form(x.ctx, x.dialogs);
    show(form);
    form.grid()->setFocus();
    form.grid()->selectRow(0);
    x.dialogs.setNextAnswer(Dialogs::Answer::No);
    press(&form, Qt::Key_Delete);
    QCOMPARE(x.dialogs.lastText(), x.M(815) + "\n(1) F-15");
    QCOMPARE(x.purchases("Ordre"), (QStringList{"1", "2", "3"}));
    x.dialogs.setNextAnswer(Dialogs::Answer::Yes);
    press(&form, Qt::Key_Delete);
    QCOMPARE(x.purchases("Ordre"), (QStringList{"2", "3"}));
    QCOMPARE(x.movements(), QStringList{});  // the paid one's movement went with it
    QCOMPARE(form.grid()->rowCount(), 2);
    // The pending one takes its receipt with it.
    form.grid()->selectRow(0);
    x.dialogs.setNextAnswer(Dialogs::Answer::Yes);
    press(&form, Qt::Key_Delete);
    QCOMPARE(x.purchases("Ordre"), QStringList{"3"});
    QCOMPARE(x.receipts(), QStringList{"2026-06-02|1|In|2026|F-2|1000000|3|2026-07-01"});
}

void PurchaseInquiriesTest::detailFrameAndPortfolio() {
    PurchasesScreen x;
    postPurchases(x);
    FormConsIN form(x.ctx, x.dialogs);
    show(form);
    auto* frame = child<QFrame>(&form, "MesFrame");
    QVERIFY(!frame->isVisible());
    form.tool("masinfo")->trigger();
    QVERIFY(frame->isVisible());
    QCOMPARE(child<QLabel>(&form, "lblMesID")->text(), QStringLiteral("ID: 1"));
    QCOMPARE(child<QLabel>(&form, "lblMesPagada")->text(), x.M(6677) + "Banco Sabadell");
    auto* grid = child<QTableWidget>(&form, "MesGrid");
    QCOMPARE(grid->rowCount(), 5);
    QCOMPARE(grid->item(0, 1)->text(), QStringLiteral("100,00"));
    // A change of row follows in the frame.
    form.grid()->selectRow(1);
    QCOMPARE(child<QLabel>(&form, "lblMesID")->text(), QStringLiteral("ID: 2"));
    QCOMPARE(child<QLabel>(&form, "lblMesPagada")->text(), x.M(6676));
    QTest::mouseClick(child<QPushButton>(&form, "btn_Mes_close"), Qt::LeftButton);
    QVERIFY(!frame->isVisible());
    QVERIFY(!form.tool("masinfo")->isChecked());

    // F11: the paid purchase back into the portfolio.
    form.grid()->setFocus();
    form.grid()->selectRow(0);
    x.dialogs.setNextAnswer(Dialogs::Answer::Yes);
    press(&form, Qt::Key_F11);
    QVERIFY(std::any_of(x.dialogs.shown().begin(), x.dialogs.shown().end(),
                        [&](const auto& s) { return s.text.startsWith(x.M(6871)); }));
    QCOMPARE(x.movements(), QStringList{});
    QCOMPARE(PurchasesScreen::rows(x.companyFile("cartera.mdb"),
                                   "select In_Out, Ejercicio, Factura, Total from cartera "
                                   "where FrasIn=1"),
             QStringList{"In|2026|F-15|1210000"});
}

void PurchaseInquiriesTest::modifyHandsTheNumberOver() {
    PurchasesScreen x;
    postPurchases(x);
    FormConsIN form(x.ctx, x.dialogs);
    show(form);
    QSignalSpy spy(&form, &FormConsIN::modifyRequested);
    form.grid()->setFocus();
    form.grid()->selectRow(1);
    enter(&form);
    QCOMPARE(spy.size(), 1);
    QCOMPARE(spy.first().first().toLongLong(), 2);
    // Esc closes.
    cancel(&form);
    QVERIFY(!form.isVisible());
}

void PurchaseInquiriesTest::provisionsByTypeAndDeletion() {
    PurchasesScreen x;
    x.ctx.Tesoreria = true;
    PurchasesScreen::exec(
        x.exerciseFile("Supl.mdb"),
        "insert into Suplidos (Ordre, total, Proveidor, NomProveidor, Tipus, "
        "NomTipus, descripcio, data) values "
        "(1, 601000, 1, 'MADERAS SOLER', 'S', 'Suplido', 'Tasas', '2026-03-05'), "
        "(2, 6000000, 2, 'COLMADO RUIZ', 'P', 'Provisión', 'Fondos', '2026-03-06')");
    PurchasesScreen::exec(x.exerciseFile("tesorer.mdb"),
                          "insert into movimientos (data, entidad, cliente, Supl, concepto, D, H) "
                          "values ('2026-03-06', 2, 2, 2, 'Provisión. Fondos', 6000000, 0)");
    FormConsSupl form(x.ctx, x.dialogs);
    show(form);
    auto* grid = form.grid();
    QCOMPARE(column(grid, 0), (QStringList{"1", "2"}));
    QCOMPARE(text(&form, "txtTotal"), QStringLiteral("660,10"));
    auto* types = child<QComboBox>(&form, "CmbTipus");
    QCOMPARE(types->itemText(0), x.M(6501));
    types->setCurrentIndex(1);
    emit types->activated(1);
    QCOMPARE(column(grid, 0), QStringList{"2"});
    QCOMPARE(grid->item(0, 3)->text(), QStringLiteral("COLMADO RUIZ"));
    grid->setFocus();
    x.dialogs.setNextAnswer(Dialogs::Answer::Yes);
    press(&form, Qt::Key_Delete);
    QCOMPARE(x.provisions("Ordre"), QStringList{"1"});
    QCOMPARE(x.movements(), QStringList{});
    QCOMPARE(grid->rowCount(), 0);
}

// Both inquiries share the page of the inquiries; a key the map lacks would open the index.
void PurchaseInquiriesTest::f1OpensTheInquiriesPage() {
    PurchasesScreen x;
    x.ctx.Tesoreria = true;
    x.ctx.resourcesDir = QStringLiteral(TALLORA_SOURCE_DIR "/resources/");
    QStringList opened;
    ui::setPageOpener([&](const QString& path) { opened << path; });
    FormConsSupl provisions(x.ctx, x.dialogs);
    show(provisions);
    press(provisions.grid(), Qt::Key_F1);
    FormConsIN purchases(x.ctx, x.dialogs);
    show(purchases);
    press(purchases.grid(), Qt::Key_F1);
    ui::setPageOpener({});
    QCOMPARE(opened, (QStringList{x.ctx.resourcesDir + "esp_help/5/5_1.html",
                                  x.ctx.resourcesDir + "esp_help/5/5_1.html"}));
}

void PurchaseInquiriesTest::exportSavesTheListAsItPrints() {
    PurchasesScreen x;
    postPurchases(x);
    x.ctx.resourcesDir = QStringLiteral(TALLORA_SOURCE_DIR "/resources/");
    report::ReportJob job;
    FormConsIN form(x.ctx, x.dialogs, &job);
    show(form);
    auto* suppliers = child<QComboBox>(&form, "CmbProveidors");
    suppliers->setCurrentIndex(suppliers->findText("Maderas Soler"));
    emit suppliers->activated(suppliers->currentIndex());
    QStringList proposed;
    QString answer;
    form.askFilePath = [&](const QString& name) {
        proposed << name;
        return answer;
    };
    // Cancelled: nothing is written.
    form.tool(QStringLiteral("Exportar"))->trigger();
    QCOMPARE(proposed.size(), 1);
    QVERIFY(proposed[0].endsWith(QStringLiteral("_2026.xlsx")));
    QVERIFY(job.ReportFileName.isEmpty());

    answer = x.root.filePath(QStringLiteral("compras.csv"));
    form.tool(QStringLiteral("Exportar"))->trigger();
    QFile file(answer);
    QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(x.dialogs.lastText()));
    const QStringList lines = QString::fromUtf8(file.readAll()).split(QStringLiteral("\r\n"));
    // The supplier's two purchases, not the other one, and their total.
    QCOMPARE(lines.filter(QStringLiteral("MADERAS SOLER")).size(), 2);
    QVERIFY(lines.filter(QStringLiteral("GESTORIA PUIG")).isEmpty());
    QVERIFY2(lines.filter(QStringLiteral(";221,00")).size() == 1, qPrintable(lines.join(u'|')));
    QCOMPARE(form.statusText(), QStringLiteral("Fichero guardado: ") + answer);
    QCOMPARE(form.grid()->rowCount(), 2);  // searched again, as after printing
}

QTEST_MAIN(PurchaseInquiriesTest)
#include "purchase_inquiries_test.moc"
