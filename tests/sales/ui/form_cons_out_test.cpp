// The sales inquiry from the keyboard and the mouse: the filters, total and count, Enter
// handing the sale over to be changed, Delete with the treasury rows, the detail frame and
// F11 back into the portfolio, help and Esc.
#include "sales/ui/form_cons_out.h"
#include "../../purchases/ui/purchases_screen.h"
#include "sales/sale_posting.h"
#include "widgets/obre_ajuda.h"

#include <QAction>
#include <QDateEdit>
#include <QFrame>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTableWidget>

using namespace tallora;
using namespace tallora::testing;

namespace {

// The purchases screens' exercise, with sales rates and a sales account.
class SalesInquiryScreen : public PurchasesScreen {
public:
    SalesInquiryScreen() {
        ctx.TipusIVA = {21, 10, 4};
        ctx.TipusRE = {5.2, 1.4, 0.5};
        exec(exerciseFile("Comptes.mdb"),
             "insert into Ingresos (Grup, NomGrup, Compte, NomCompte) values "
             "(700, 'Ventas', 7000001, 'Ventas mercaderias')");
    }
    QStringList sales(const char* columns) const {
        return rows(exerciseFile("FrasOUT.mdb"),
                    QStringLiteral("select %1 from FrasOut order by Ordre").arg(columns));
    }
};

// Three sales: 121,00 of Ferreteria Puig collected by the bank, 60,50 of Colmado Ruiz left to
// collect, and 60,50 of Ferreteria Puig in June.
void postSales(SalesInquiryScreen& x) {
    x.ctx.Tesoreria = true;
    struct Row {
        const char* day;
        const char* month;
        const char* customer;
        std::int64_t number;
        const char* base;
        bool bank;
    };
    const Row rows[] = {{"15", "3", "Ferreteria Puig", 1, "100", true},
                        {"20", "3", "Colmado Ruiz", 2, "50", false},
                        {"2", "6", "Ferreteria Puig", 1, "50", false}};
    for (const Row& r : rows) {
        sales::SaleEntry e;
        e.txtDia = QString::fromLatin1(r.day);
        e.txtMes = QString::fromLatin1(r.month);
        e.lblFecha =
            e.txtDia.rightJustified(2, u'0') + "/" + e.txtMes.rightJustified(2, u'0') + "/2026";
        e.txtClient = e.listClientsText = QString::fromLatin1(r.customer);
        e.clientNumber = r.number;
        e.txtTipus = e.listVendesText = QStringLiteral("Ventas mercaderias");
        e.txtdescripcio = "F-" + e.txtDia;
        e.txtBase[0] = QString::fromLatin1(r.base);
        e.venciment = QDate(2026, 7, 1);
        sales::Recalcula_Apunt(x.ctx, e, false);
        if (r.bank) {
            e.entitat = QStringLiteral("Banco Sabadell");
            e.entitatId = 2;
        }
        QVERIFY(sales::GrabaApunt(x.ctx, e, {700, "Ventas", 7000001, "Ventas mercaderias"}).ok());
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

class FormConsOutTest : public QObject {
    Q_OBJECT

private slots:
    void searchesByEveryFilter() {
        SalesInquiryScreen x;
        postSales(x);
        FormConsOUT form(x.ctx, x.dialogs);
        show(form);
        auto* grid = form.grid();
        QCOMPARE(column(grid, 0), (QStringList{"1", "2", "3"}));
        QCOMPARE(text(&form, "txtApunts"), QStringLiteral("3"));
        QCOMPARE(text(&form, "txtTotal"), QStringLiteral("242,00"));
        QCOMPARE(grid->item(1, 2)->text(), QStringLiteral("Colmado Ruiz"));
        auto* customers = child<QComboBox>(&form, "CmbClients");
        customers->setCurrentIndex(customers->findText("Ferreteria Puig"));
        emit customers->activated(customers->currentIndex());
        QCOMPARE(column(grid, 0), (QStringList{"1", "3"}));
        QCOMPARE(text(&form, "txtTotal"), QStringLiteral("181,50"));
        child<QLineEdit>(&form, "txtImport")->setFocus();
        type(&form, "60,50");
        enter(&form);
        QCOMPARE(column(grid, 0), QStringList{"3"});
        customers->setCurrentIndex(-1);
        child<QLineEdit>(&form, "txtImport")->clear();
        child<QDateEdit>(&form, "Dtdata2")->setDate(QDate(2026, 3, 31));
        form.Buscar();
        QCOMPARE(column(grid, 0), (QStringList{"1", "2"}));
        child<QRadioButton>(&form, "OpImport")->setChecked(true);
        QCOMPARE(column(grid, 0), (QStringList{"2", "1"}));
        auto* accounts = child<QComboBox>(&form, "CmbTipus");
        QCOMPARE(accounts->itemText(0), QStringLiteral("VENTAS MERCADERIAS"));
    }

    void enterHandsTheSaleOverAndDeleteTakesItsRows() {
        SalesInquiryScreen x;
        postSales(x);
        FormConsOUT form(x.ctx, x.dialogs);
        show(form);
        QSignalSpy spy(&form, &FormConsOUT::modifyRequested);
        form.grid()->setFocus();
        form.grid()->selectRow(1);
        enter(&form);
        QCOMPARE(spy.size(), 1);
        QCOMPARE(spy.first().first().toLongLong(), 2);
        form.grid()->selectRow(0);
        x.dialogs.setNextAnswer(Dialogs::Answer::No);
        press(&form, Qt::Key_Delete);
        QCOMPARE(x.dialogs.lastText(), x.M(815) + "\n(1) F-15");
        QCOMPARE(x.sales("Ordre"), (QStringList{"1", "2", "3"}));
        x.dialogs.setNextAnswer(Dialogs::Answer::Yes);
        press(&form, Qt::Key_Delete);
        QCOMPARE(x.sales("Ordre"), (QStringList{"2", "3"}));
        QCOMPARE(x.movements(), QStringList{});
        QCOMPARE(form.grid()->rowCount(), 2);
    }

    void detailFrameAndPortfolio() {
        SalesInquiryScreen x;
        postSales(x);
        FormConsOUT form(x.ctx, x.dialogs);
        show(form);
        auto* frame = child<QFrame>(&form, "MesFrame");
        form.tool("masinfo")->trigger();
        QVERIFY(frame->isVisible());
        QCOMPARE(child<QLabel>(&form, "lblMesID")->text(), QStringLiteral("ID: 1"));
        QCOMPARE(child<QLabel>(&form, "lblMesPagada")->text(), x.M(6677) + "Banco Sabadell");
        auto* grid = child<QTableWidget>(&form, "MesGrid");
        QCOMPARE(grid->rowCount(), 4);
        QCOMPARE(grid->item(0, 0)->text(), QStringLiteral("21%"));
        QCOMPARE(grid->item(0, 1)->text(), QStringLiteral("100,00"));
        form.grid()->selectRow(1);
        QCOMPARE(child<QLabel>(&form, "lblMesPagada")->text(), x.M(6676));
        // F11: the collected sale back into the portfolio.
        form.grid()->setFocus();
        form.grid()->selectRow(0);
        x.dialogs.setNextAnswer(Dialogs::Answer::Yes);
        press(&form, Qt::Key_F11);
        QCOMPARE(x.movements(), QStringList{});
        QCOMPARE(PurchasesScreen::rows(x.companyFile("cartera.mdb"),
                                       "select In_Out, Ejercicio, Factura, Total from cartera "
                                       "where FrasOut=1"),
                 QStringList{"Out|2026|F-15|1210000"});
        QCOMPARE(x.sales("Cobrada"), (QStringList{"-1", "0", "0"}));
    }

    void f1OpensTheInquiriesPageAndEscCloses() {
        SalesInquiryScreen x;
        QString opened;
        ui::setPageOpener([&](const QString& path) { opened = path; });
        FormConsOUT form(x.ctx, x.dialogs);
        show(form);
        press(&form, Qt::Key_F1);
        QVERIFY2(opened.endsWith(QStringLiteral("esp_help/5/5_1.html")), qPrintable(opened));
        cancel(&form);
        QVERIFY(!form.isVisible());
        ui::setPageOpener({});
    }
};

QTEST_MAIN(FormConsOutTest)
#include "form_cons_out_test.moc"
