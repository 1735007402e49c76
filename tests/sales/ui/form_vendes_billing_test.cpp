// The billing tab of the sales screen, typed from the keyboard: lines at every rate and their
// sums, the exempt line, a quote reopened and turned into an invoice, a line changed and
// deleted, Esc on a half-typed line, the price references, a proforma printed to a PDF file,
// and the screen without the billing option.
#include "../../master/ui/screen_fixture.h"
#include "context/messages.h"
#include "report/report_job.h"
#include "sales/document_type.h"
#include "sales/ui/form_vendes.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTabBar>
#include <QTableWidget>
#include <QTemporaryDir>

using namespace tallora;
using namespace tallora::testing;

namespace {

// The exercise of the sales screens with billing on: rates 21 / 10 / 4, two customers, two
// accounts and a bank.
class BillingScreen : public ScreenExercise {
public:
    BillingScreen() {
        ctx.Facturacio = true;
        ctx.Tesoreria = false;
        ctx.ModeExercici = QStringLiteral("FACTURES");
        ctx.TipusIVA = {21, 10, 4};
        ctx.TipusRE = {5.2, 1.4, 0.5};
        // The document templates are the installed ones.
        ctx.resourcesDir = QStringLiteral(TALLORA_SOURCE_DIR "/resources/");
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
        schema::upgradeBilling(ctx);
    }
    static void exec(const QString& path, const char* sql) {
        store::Database::open(path).execute(QString::fromUtf8(sql));
    }
    QString factFile() const { return ctx.companyFile(schema::db::Fact); }
    QStringList fact(const char* sql) const { return rows(factFile(), QString::fromUtf8(sql)); }
    QStringList sales(const char* columns) const {
        return rows(exerciseFile("FrasOUT.mdb"),
                    QStringLiteral("select %1 from FrasOut order by Ordre").arg(columns));
    }
    QString M(int n) const { return Missatge(ctx, n); }
};

template <typename W>
W* child(QWidget* form, const char* name) {
    return form->findChild<W*>(QString::fromLatin1(name));
}
QString text(QWidget* form, const char* name) {
    return child<QLineEdit>(form, name)->text();
}
QRadioButton* option(QWidget* form, const char* name) {
    return child<QRadioButton>(form, name);
}
QString rate(QWidget* form) {
    return child<QComboBox>(form, "txtFacturacionIVA")->currentText();
}
QStringList bases(QWidget* form) {
    return {text(form, "txtBase1"), text(form, "txtBase2"), text(form, "txtBase3")};
}
// The grid's rows without the hidden Id: concept, quantity, price, discount, rate, amount.
QStringList gridLines(QWidget* form) {
    auto* grid = child<QTableWidget>(form, "GridFacturacion");
    QStringList out;
    for (int r = 0; r < grid->rowCount(); ++r) {
        QStringList cells;
        for (int c = 1; c < grid->columnCount(); ++c)
            cells << (grid->item(r, c) ? grid->item(r, c)->text() : QString());
        out << cells.join(u'|');
    }
    return out;
}
QStringList journalLines(QWidget* form) {
    return listTexts(child<QListWidget>(form, "ListRegistres"));
}
const char* const kOptions[] = {"OpFacturacionFactura", "OpFacturacionBorrador",
                                "OpFacturacionPresupuesto", "OpFacturacionProforma",
                                "OpFacturacionAlbaran"};

}  // namespace

class FormVendesBillingTest : public QObject {
    Q_OBJECT

private:
    void open(FormVendes& form) {
        form.resize(1024, 700);
        form.show();
        QVERIFY(QTest::qWaitForWindowActive(&form));
        QCOMPARE(focusName(&form), QStringLiteral("txtDia"));
    }
    // Day, month, Ferreteria Puig and the account, Enter after each; Enter on the description
    // opens the lines.
    void typeHead(FormVendes& form) {
        type(&form, "15");
        enter(&form);
        QCOMPARE(focusName(&form), QStringLiteral("txtMes"));
        type(&form, "3");
        enter(&form);
        QCOMPARE(focusName(&form), QStringLiteral("txtClient"));
        type(&form, "fer");
        enter(&form);
        QCOMPARE(text(&form, "txtClient"), QStringLiteral("Ferreteria Puig"));
        QCOMPARE(focusName(&form), QStringLiteral("txtTipus"));
        type(&form, "Ven");
        enter(&form);
        QCOMPARE(focusName(&form), QStringLiteral("txtdescripcio"));
        QCOMPARE(text(&form, "txtdescripcio"), QStringLiteral("-"));
        enter(&form);
        QCOMPARE(focusName(&form), QStringLiteral("txtFacturacionCantidad"));
        QVERIFY(child<QFrame>(&form, "FrameFacturacion")->isVisible());
        QCOMPARE(child<QTabBar>(&form, "TabFacturacion")->currentIndex(), 1);
    }
    // Quantity, concept, price and discount with Enter after each; the focus ends on the rate.
    void typeLine(FormVendes& form, const QString& quantity, const QString& text,
                  const QString& price, const QString& discount) {
        QCOMPARE(focusName(&form), QStringLiteral("txtFacturacionCantidad"));
        type(&form, quantity);
        enter(&form);
        QCOMPARE(focusName(&form), QStringLiteral("txtFacturacionConcepto"));
        type(&form, text);
        enter(&form);
        QCOMPARE(focusName(&form), QStringLiteral("txtFacturacionPrecio"));
        type(&form, price);
        enter(&form);
        QCOMPARE(focusName(&form), QStringLiteral("txtFacturacionDto"));
        if (!discount.isEmpty()) type(&form, discount);
        enter(&form);
        QCOMPARE(focusName(&form), QStringLiteral("txtFacturacionIVA"));
    }
    // The list searches by the keys typed within the input interval: after a pause the digit
    // starts a search of its own.
    void rateByDigit(FormVendes& form, const QString& digit) {
        QCOMPARE(focusName(&form), QStringLiteral("txtFacturacionIVA"));
        QTest::qWait(QApplication::keyboardInputInterval() + 100);
        type(&form, digit);
    }
    void rateByDown(FormVendes& form, int rows) {
        QCOMPARE(focusName(&form), QStringLiteral("txtFacturacionIVA"));
        for (int i = 0; i < rows; ++i) press(&form, Qt::Key_Down);
    }
    // Enter on the rate adds the line and the focus is back on an empty quantity.
    void addLine(FormVendes& form, const BillingScreen& x) {
        enter(&form);
        QCOMPARE(focusName(&form), QStringLiteral("txtFacturacionCantidad"));
        QCOMPARE(text(&form, "txtFacturacionCantidad"), QString());
        QCOMPARE(text(&form, "txtFacturacionConcepto"), QString());
        QCOMPARE(child<QPushButton>(&form, "btnFacturacionAlta")->text(), x.M(6790));
    }
    void clickRow(FormVendes& form, int row) {
        auto* grid = child<QTableWidget>(&form, "GridFacturacion");
        QCoreApplication::processEvents();
        const QRect cell = grid->visualItemRect(grid->item(row, 1));
        QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, cell.center());
        QCOMPARE(focusName(&form), QStringLiteral("GridFacturacion"));
        QCOMPARE(grid->currentRow(), row);
    }

private slots:
    void invoiceOfThreeRates();
    void lineAmountAsTyped();
    void exemptLineAsksForTheDifference();
    void quoteReopenedBecomesAnInvoice();
    void lineChangedAndDeleted();
    void escapeClearsAHalfTypedLine();
    void referencesOnF4();
    void proformaPrintedToPdf();
    void withoutBillingNoTypesNorTabs();
};

void FormVendesBillingTest::invoiceOfThreeRates() {
    BillingScreen x;
    FormVendes form(x.ctx, x.dialogs);
    open(form);
    for (const char* name : kOptions) {
        QVERIFY2(option(&form, name)->isVisible(), name);
        QVERIFY2(option(&form, name)->styleSheet().contains(QStringLiteral("#000080")), name);
    }
    QVERIFY(option(&form, "OpFacturacionFactura")->isChecked());
    auto* tabs = child<QTabBar>(&form, "TabFacturacion");
    QVERIFY(tabs->isVisible());
    QCOMPARE(tabs->currentIndex(), 0);
    QVERIFY(child<QTableWidget>(&form, "GridFacturacion")->isColumnHidden(0));
    typeHead(form);

    typeLine(form, "2", "Tablero", "50", QString());
    rateByDigit(form, "2");
    QCOMPARE(rate(&form), QStringLiteral("21"));
    addLine(form, x);
    QCOMPARE(gridLines(&form), QStringList{"Tablero|2,000|50,00|0,00|21|100,00"});
    QCOMPARE(bases(&form), (QStringList{"100,00", "0,00", "0,00"}));
    QCOMPARE(text(&form, "txtIVA1"), QStringLiteral("21,00"));
    QCOMPARE(text(&form, "txtTotal"), QStringLiteral("121,00"));

    typeLine(form, "1", "Barniz", "30", QString());
    rateByDown(form, 3);
    QCOMPARE(rate(&form), QStringLiteral("10"));
    addLine(form, x);
    QCOMPARE(bases(&form), (QStringList{"100,00", "30,00", "0,00"}));
    QCOMPARE(text(&form, "txtIVA2"), QStringLiteral("3,00"));
    QCOMPARE(text(&form, "txtTotal"), QStringLiteral("154,00"));

    typeLine(form, "4", "Lija", "5", QString());
    rateByDigit(form, "4");
    QCOMPARE(rate(&form), QStringLiteral("4"));
    addLine(form, x);
    QCOMPARE(gridLines(&form),
             (QStringList{"Tablero|2,000|50,00|0,00|21|100,00", "Barniz|1,000|30,00|0,00|10|30,00",
                          "Lija|4,000|5,00|0,00|4|20,00"}));
    QCOMPARE(bases(&form), (QStringList{"100,00", "30,00", "20,00"}));
    QCOMPARE(text(&form, "txtIVA3"), QStringLiteral("0,80"));
    QCOMPARE(text(&form, "txtTotal"), QStringLiteral("174,80"));
    QVERIFY2(x.dialogs.shown().empty(), qPrintable(x.dialogs.lastText()));
    QCOMPARE(x.sales("Ordre"), QStringList{});

    // Enter on the empty quantity posts the invoice.
    enter(&form);
    QVERIFY2(x.dialogs.shown().empty(), qPrintable(x.dialogs.lastText()));
    QCOMPARE(x.sales("Ordre, Descripcio, Client, NomClient, TOTAL, Base1, Iva1, Base2, Iva2, "
                     "Base3, Iva3, data"),
             QStringList{"1|1|1|Ferreteria Puig|1748000|1000000|210000|300000|30000|200000|8000|"
                         "2026-03-15"});
    QCOMPARE(x.fact("select FrasOut, Borrador, Presupuesto, Proforma, Albaran, Client, Ejercicio, "
                    "Compte, NomCompte from documentos"),
             QStringList{"1|0|0|0|0|1|2026|7000001|Ventas mercaderias"});
    QCOMPARE(x.fact("select FrasOut, Presupuesto, concepto, unidades, pvp, dto, importe, iva, "
                    "client from detalle order by Id"),
             (QStringList{"1|0|Tablero|2.0|500000|0.0|1000000|21.0|1",
                          "1|0|Barniz|1.0|300000|0.0|300000|10.0|1",
                          "1|0|Lija|4.0|50000|0.0|200000|4.0|1"}));
    QCOMPARE(x.fact("select FrasOut from Numeracion_Documentos where Ejercicio = 2026"),
             QStringList{"1"});
    const QStringList lines = journalLines(&form);
    QVERIFY(lines.contains(x.M(649)));
    QVERIFY(lines.contains("BASE: 21 % 100,00"));
    QVERIFY(lines.contains("BASE: 4 % 20,00"));
    QVERIFY(lines.contains("TOTAL: 174,80"));
    // A fresh entry: no lines left in hand.
    QCOMPARE(focusName(&form), QStringLiteral("txtDia"));
    QCOMPARE(child<QTableWidget>(&form, "GridFacturacion")->rowCount(), 0);
    QCOMPARE(x.fact("select count(*) from detalle_temp"), QStringList{"0"});
    QVERIFY(!form.posting());
}

void FormVendesBillingTest::lineAmountAsTyped() {
    BillingScreen x;
    FormVendes form(x.ctx, x.dialogs);
    open(form);
    typeHead(form);
    auto* amount = child<QLineEdit>(&form, "txtFacturacionImporte");
    QVERIFY(amount->isReadOnly());
    type(&form, "1,5");
    QCOMPARE(text(&form, "txtFacturacionCantidad"), QStringLiteral("1,5"));
    QCOMPARE(amount->text(), QStringLiteral("0,00"));
    enter(&form);
    type(&form, "Barniz");
    enter(&form);
    type(&form, "10");
    QCOMPARE(amount->text(), QStringLiteral("15,00"));
    enter(&form);
    QCOMPARE(text(&form, "txtFacturacionPrecio"), QStringLiteral("10,00"));
    QCOMPARE(focusName(&form), QStringLiteral("txtFacturacionDto"));
    type(&form, "10");
    QCOMPARE(amount->text(), QStringLiteral("13,50"));
    enter(&form);
    rateByDown(form, 2);
    QCOMPARE(amount->text(), QStringLiteral("13,50"));
    addLine(form, x);
    QCOMPARE(gridLines(&form), QStringList{"Barniz|1,500|10,00|10,00|21|13,50"});
    QCOMPARE(bases(&form), (QStringList{"13,50", "0,00", "0,00"}));
    QCOMPARE(x.fact("select unidades, pvp, dto, importe, iva from detalle_temp"),
             QStringList{"1.5|100000|10.0|135000|21.0"});
}

void FormVendesBillingTest::exemptLineAsksForTheDifference() {
    BillingScreen x;
    FormVendes form(x.ctx, x.dialogs);
    open(form);
    typeHead(form);
    typeLine(form, "1", "Tablero", "100", QString());
    rateByDown(form, 2);
    addLine(form, x);
    // No rate chosen is rate 0.
    typeLine(form, "1", "Curso", "40", QString());
    QCOMPARE(child<QComboBox>(&form, "txtFacturacionIVA")->currentIndex(), -1);
    addLine(form, x);
    QCOMPARE(gridLines(&form), (QStringList{"Tablero|1,000|100,00|0,00|21|100,00",
                                            "Curso|1,000|40,00|0,00|0|40,00"}));
    QCOMPARE(bases(&form), (QStringList{"100,00", "0,00", "0,00"}));
    QCOMPARE(text(&form, "txtTotal"), QStringLiteral("161,00"));

    x.dialogs.setNextAnswer(Dialogs::Answer::Yes);
    enter(&form);
    QCOMPARE(x.dialogs.shown().size(), std::size_t{1});
    QVERIFY2(x.dialogs.lastText().startsWith(x.M(644) + "40,00"), qPrintable(x.dialogs.lastText()));
    QCOMPARE(x.dialogs.pendingAnswers(), std::size_t{0});
    QCOMPARE(x.sales("TOTAL, Base1, Iva1, Base2, Iva2, Base3, Iva3"),
             QStringList{"1610000|1000000|210000|0|0|0|0"});
    QCOMPARE(x.fact("select concepto, importe, iva from detalle order by Id"),
             (QStringList{"Tablero|1000000|21.0", "Curso|400000|0.0"}));
    QVERIFY(journalLines(&form).contains(" BASE IVA NO APLICABLE: 40,00"));
}

void FormVendesBillingTest::quoteReopenedBecomesAnInvoice() {
    BillingScreen x;
    x.ctx.Tesoreria = true;
    FormVendes form(x.ctx, x.dialogs);
    QSignalSpy changed(&form, &FormVendes::saleChanged);
    open(form);
    auto* treasury = child<QFrame>(&form, "FrameTesoreria");
    QVERIFY(treasury->isVisible());
    press(&form, Qt::Key_3, Qt::ControlModifier);
    QVERIFY(option(&form, "OpFacturacionPresupuesto")->isChecked());
    // Only an invoice is collected.
    QVERIFY(!treasury->isVisible());
    QCOMPARE(focusName(&form), QStringLiteral("txtDia"));
    QCOMPARE(text(&form, "txtDia"), QString());
    typeHead(form);
    typeLine(form, "2", "Tablero", "25", QString());
    rateByDown(form, 2);
    addLine(form, x);
    QCOMPARE(text(&form, "txtTotal"), QStringLiteral("60,50"));
    enter(&form);
    QVERIFY2(x.dialogs.shown().empty(), qPrintable(x.dialogs.lastText()));
    QCOMPARE(x.sales("Ordre"), QStringList{});
    QCOMPARE(x.fact("select FrasOut, Presupuesto, Client from documentos"), QStringList{"0|1|1"});
    QCOMPARE(x.fact("select Presupuesto, concepto from detalle"), QStringList{"1|Tablero"});
    QCOMPARE(ScreenExercise::rows(x.companyFile("cartera.mdb"), "select * from cartera"),
             QStringList{});
    QVERIFY(journalLines(&form).contains("(Presupuesto)"));
    // The fresh entry is an invoice again.
    QVERIFY(option(&form, "OpFacturacionFactura")->isChecked());
    QVERIFY(treasury->isVisible());
    QCOMPARE(changed.size(), 0);

    form.Modifica_Document(sales::DocType::Presupuesto, QStringLiteral("1"));
    QCOMPARE(child<QLabel>(&form, "lblOrdre")->text(), QStringLiteral("1"));
    QCOMPARE(text(&form, "txtClient"), QStringLiteral("Ferreteria Puig"));
    QCOMPARE(gridLines(&form), QStringList{"Tablero|2,000|25,00|0,00|21|50,00"});
    QCOMPARE(bases(&form), (QStringList{"50,00", "0,00", "0,00"}));
    QCOMPARE(text(&form, "txtTotal"), QStringLiteral("60,50"));
    auto* quote = option(&form, "OpFacturacionPresupuesto");
    QVERIFY(quote->isChecked());
    QVERIFY2(quote->styleSheet().contains(QStringLiteral("#c00000")),
             qPrintable(quote->styleSheet()));
    for (const char* name : kOptions)
        if (QByteArray(name) != "OpFacturacionPresupuesto")
            QVERIFY2(option(&form, name)->styleSheet().contains(QStringLiteral("#000080")), name);
    QVERIFY(!treasury->isVisible());
    QCOMPARE(focusName(&form), QStringLiteral("txtFacturacionCantidad"));

    press(&form, Qt::Key_1, Qt::ControlModifier);
    QVERIFY(option(&form, "OpFacturacionFactura")->isChecked());
    QVERIFY(treasury->isVisible());
    // The colour still tells what the document was loaded as.
    QVERIFY(quote->styleSheet().contains(QStringLiteral("#c00000")));
    QCOMPARE(focusName(&form), QStringLiteral("txtFacturacionCantidad"));
    enter(&form);
    QVERIFY2(x.dialogs.shown().empty(), qPrintable(x.dialogs.lastText()));
    QCOMPARE(x.sales("Ordre, Descripcio, Client, TOTAL, Base1, Iva1"),
             QStringList{"1|1|1|605000|500000|105000"});
    QCOMPARE(x.fact("select FrasOut, Presupuesto, Client from documentos"), QStringList{"1|0|1"});
    QCOMPARE(x.fact("select FrasOut, Presupuesto, concepto from detalle"),
             QStringList{"1|0|Tablero"});
    QCOMPARE(ScreenExercise::rows(x.companyFile("cartera.mdb"),
                                  "select cliente, In_Out, Factura, Total, FrasOut from cartera"),
             QStringList{"1|Out|1|605000|1"});
    QCOMPARE(x.fact("select FrasOut, Presupuesto from Numeracion_Documentos "
                    "where Ejercicio = 2026"),
             QStringList{"1|1"});
    QCOMPARE(changed.size(), 1);
}

void FormVendesBillingTest::lineChangedAndDeleted() {
    BillingScreen x;
    FormVendes form(x.ctx, x.dialogs);
    open(form);
    typeHead(form);
    typeLine(form, "2", "Tablero", "50", QString());
    rateByDown(form, 2);
    addLine(form, x);
    typeLine(form, "1", "Barniz", "30", QString());
    rateByDown(form, 3);
    addLine(form, x);
    QCOMPARE(text(&form, "txtTotal"), QStringLiteral("154,00"));

    // Enter on a row of the grid puts the line back in the fields.
    clickRow(form, 0);
    enter(&form);
    QCOMPARE(focusName(&form), QStringLiteral("txtFacturacionCantidad"));
    QCOMPARE(text(&form, "txtFacturacionCantidad"), QStringLiteral("2,000"));
    QCOMPARE(text(&form, "txtFacturacionConcepto"), QStringLiteral("Tablero"));
    QCOMPARE(text(&form, "txtFacturacionPrecio"), QStringLiteral("50,00"));
    QCOMPARE(text(&form, "txtFacturacionDto"), QStringLiteral("0,00"));
    QCOMPARE(text(&form, "txtFacturacionImporte"), QStringLiteral("100,00"));
    QCOMPARE(rate(&form), QStringLiteral("21"));
    QCOMPARE(child<QPushButton>(&form, "btnFacturacionAlta")->text(), x.M(6795));
    retype(&form, "3");
    QCOMPARE(text(&form, "txtFacturacionImporte"), QStringLiteral("150,00"));
    enter(&form);
    enter(&form);
    enter(&form);
    enter(&form);
    QCOMPARE(focusName(&form), QStringLiteral("txtFacturacionIVA"));
    QCOMPARE(rate(&form), QStringLiteral("21"));
    addLine(form, x);
    QCOMPARE(gridLines(&form), (QStringList{"Tablero|3,000|50,00|0,00|21|150,00",
                                            "Barniz|1,000|30,00|0,00|10|30,00"}));
    QCOMPARE(bases(&form), (QStringList{"150,00", "30,00", "0,00"}));
    QCOMPARE(text(&form, "txtTotal"), QStringLiteral("214,50"));

    // Delete on a row asks; No keeps it, Yes deletes it and the sums follow.
    clickRow(form, 1);
    x.dialogs.setNextAnswer(Dialogs::Answer::No);
    press(&form, Qt::Key_Delete);
    QCOMPARE(x.dialogs.lastText(), QStringLiteral("Desea eliminar la linea: Barniz"));
    QCOMPARE(gridLines(&form).size(), 2);
    QCOMPARE(text(&form, "txtTotal"), QStringLiteral("214,50"));
    x.dialogs.setNextAnswer(Dialogs::Answer::Yes);
    press(&form, Qt::Key_Delete);
    QCOMPARE(x.dialogs.pendingAnswers(), std::size_t{0});
    QCOMPARE(gridLines(&form), QStringList{"Tablero|3,000|50,00|0,00|21|150,00"});
    QCOMPARE(bases(&form), (QStringList{"150,00", "0,00", "0,00"}));
    QCOMPARE(text(&form, "txtTotal"), QStringLiteral("181,50"));
    QCOMPARE(focusName(&form), QStringLiteral("txtFacturacionCantidad"));

    enter(&form);
    QCOMPARE(x.dialogs.shown().size(), std::size_t{2});
    QCOMPARE(x.sales("TOTAL, Base1, Iva1, Base2, Iva2"), QStringList{"1815000|1500000|315000|0|0"});
    QCOMPARE(x.fact("select concepto, unidades, importe from detalle"),
             QStringList{"Tablero|3.0|1500000"});
}

void FormVendesBillingTest::escapeClearsAHalfTypedLine() {
    BillingScreen x;
    FormVendes form(x.ctx, x.dialogs);
    open(form);
    typeHead(form);
    // Without lines the empty quantity posts nothing.
    const int beeps = x.dialogs.beeps();
    enter(&form);
    QVERIFY(x.dialogs.beeps() > beeps);
    QCOMPARE(x.sales("Ordre"), QStringList{});
    QCOMPARE(focusName(&form), QStringLiteral("txtFacturacionCantidad"));

    typeLine(form, "2", "Tablero", "50", QString());
    rateByDown(form, 2);
    addLine(form, x);
    type(&form, "3");
    enter(&form);
    type(&form, "Lija");
    enter(&form);
    type(&form, "2");
    QCOMPARE(text(&form, "txtFacturacionImporte"), QStringLiteral("6,00"));
    cancel(&form);
    QVERIFY2(x.dialogs.shown().empty(), qPrintable(x.dialogs.lastText()));
    for (const char* name : {"txtFacturacionCantidad", "txtFacturacionConcepto",
                             "txtFacturacionPrecio", "txtFacturacionDto", "txtFacturacionImporte"})
        QVERIFY2(text(&form, name).isEmpty(), name);
    QCOMPARE(focusName(&form), QStringLiteral("txtFacturacionCantidad"));
    QCOMPARE(gridLines(&form), QStringList{"Tablero|2,000|50,00|0,00|21|100,00"});
    QCOMPARE(text(&form, "txtDia"), QStringLiteral("15"));
    QCOMPARE(text(&form, "txtClient"), QStringLiteral("Ferreteria Puig"));
    QCOMPARE(text(&form, "txtTotal"), QStringLiteral("121,00"));
    QVERIFY(form.isVisible());

    // With nothing half typed, Esc is the entry's own: it asks first.
    x.dialogs.setNextAnswer(Dialogs::Answer::No);
    cancel(&form);
    QCOMPARE(x.dialogs.lastText(), x.M(618) + "\n\n" + x.M(25));
    QCOMPARE(text(&form, "txtDia"), QStringLiteral("15"));
    QCOMPARE(gridLines(&form).size(), 1);
    QVERIFY(form.isVisible());
}

void FormVendesBillingTest::referencesOnF4() {
    BillingScreen x;
    BillingScreen::exec(x.factFile(),
                        "insert into referencias (Referencia, Descripcion, Precio) "
                        "values ('TAB', 'Tablero pino', 125000)");
    FormVendes form(x.ctx, x.dialogs);
    open(form);
    typeHead(form);
    auto* frame = child<QFrame>(&form, "FacRef_frame");
    QVERIFY(!frame->isVisible());
    press(&form, Qt::Key_F4);
    QVERIFY(frame->isVisible());
    QCOMPARE(focusName(&form), QStringLiteral("FacRef_txtReferencia"));
    type(&form, "TAB");
    enter(&form);
    QVERIFY2(x.dialogs.shown().empty(), qPrintable(x.dialogs.lastText()));
    QVERIFY(!frame->isVisible());
    QCOMPARE(text(&form, "FacRef_txtReferencia"), QString());
    QCOMPARE(text(&form, "txtFacturacionConcepto"), QStringLiteral("Tablero pino"));
    QCOMPARE(text(&form, "txtFacturacionPrecio"), QStringLiteral("12,50"));
    QCOMPARE(focusName(&form), QStringLiteral("txtFacturacionCantidad"));
    type(&form, "2");
    enter(&form);
    enter(&form);
    enter(&form);
    enter(&form);
    rateByDown(form, 2);
    addLine(form, x);
    QCOMPARE(gridLines(&form), QStringList{"Tablero pino|2,000|12,50|0,00|21|25,00"});

    press(&form, Qt::Key_F4);
    type(&form, "NADA");
    enter(&form);
    QCOMPARE(x.dialogs.lastText(), x.M(7007));
    QVERIFY(frame->isVisible());
    QCOMPARE(focusName(&form), QStringLiteral("FacRef_txtReferencia"));
    QCOMPARE(text(&form, "txtFacturacionConcepto"), QString());
    // Esc closes the frame before it touches the entry.
    cancel(&form);
    QVERIFY(!frame->isVisible());
    QCOMPARE(focusName(&form), QStringLiteral("txtFacturacionCantidad"));
    QCOMPARE(text(&form, "txtDia"), QStringLiteral("15"));
    QCOMPARE(gridLines(&form).size(), 1);
}

void FormVendesBillingTest::proformaPrintedToPdf() {
    BillingScreen x;
    report::ReportJob job;
    FormVendes form(x.ctx, x.dialogs, &job, nullptr);
    QTemporaryDir pdfDir;
    QVERIFY(pdfDir.isValid());
    QString proposed;
    form.setPdfPathChooser([&](const QString& name) {
        proposed = name;
        return pdfDir.filePath(name);
    });
    open(form);
    auto* print = child<QCheckBox>(&form, "chk_imprimir");
    auto* destination = child<QComboBox>(&form, "cmbImprimir");
    QVERIFY(print->isVisible());
    QVERIFY(!destination->isEnabled());
    print->click();
    QVERIFY(print->isChecked());
    QVERIFY(destination->isEnabled());
    destination->setCurrentIndex(1);
    QCOMPARE(destination->currentText(), QStringLiteral("PDF"));

    child<QLineEdit>(&form, "txtDia")->setFocus();
    QCOMPARE(focusName(&form), QStringLiteral("txtDia"));
    press(&form, Qt::Key_4, Qt::ControlModifier);
    QVERIFY(option(&form, "OpFacturacionProforma")->isChecked());
    typeHead(form);
    typeLine(form, "1", "Tablero", "80", QString());
    rateByDown(form, 2);
    addLine(form, x);
    enter(&form);
    QVERIFY2(x.dialogs.shown().empty(), qPrintable(x.dialogs.lastText()));
    QCOMPARE(x.sales("Ordre"), QStringList{});
    QCOMPARE(x.fact("select Proforma, FrasOut, Client from documentos"), QStringList{"1|0|1"});
    QCOMPARE(proposed, QStringLiteral("Proforma 1 - Ferreteria Puig.pdf"));
    QFile pdf(pdfDir.filePath(proposed));
    QVERIFY(pdf.exists());
    QVERIFY(pdf.size() > 0);
    QVERIFY(pdf.open(QIODevice::ReadOnly));
    QCOMPARE(pdf.read(5), QByteArray("%PDF-"));
}

void FormVendesBillingTest::withoutBillingNoTypesNorTabs() {
    BillingScreen x;
    x.ctx.Facturacio = false;
    x.ctx.Tesoreria = true;
    FormVendes form(x.ctx, x.dialogs);
    open(form);
    for (const char* name : kOptions) QVERIFY2(!option(&form, name)->isVisible(), name);
    QVERIFY(!child<QTabBar>(&form, "TabFacturacion")->isVisible());
    QVERIFY(!child<QCheckBox>(&form, "chk_imprimir")->isVisible());
    QVERIFY(!child<QComboBox>(&form, "cmbImprimir")->isVisible());
    // Their keys do nothing either.
    press(&form, Qt::Key_F4);
    QVERIFY(!child<QFrame>(&form, "FrameFacturacion")->isVisible());
    QVERIFY(!child<QFrame>(&form, "FacRef_frame")->isVisible());
    QCOMPARE(focusName(&form), QStringLiteral("txtDia"));
    press(&form, Qt::Key_3, Qt::ControlModifier);
    QVERIFY(child<QFrame>(&form, "FrameTesoreria")->isVisible());
    QCOMPARE(text(&form, "txtDia"), QString());

    // The description goes on to the total, not to lines.
    type(&form, "15");
    enter(&form);
    QCOMPARE(text(&form, "txtdescripcio"), QString());
    type(&form, "3");
    enter(&form);
    type(&form, "fer");
    enter(&form);
    type(&form, "Ven");
    enter(&form);
    QCOMPARE(focusName(&form), QStringLiteral("txtdescripcio"));
    enter(&form);
    QCOMPARE(text(&form, "txtdescripcio"), QStringLiteral("-"));
    QCOMPARE(focusName(&form), QStringLiteral("txtTotal"));
    QVERIFY(!child<QFrame>(&form, "FrameFacturacion")->isVisible());
}

QTEST_MAIN(FormVendesBillingTest)
#include "form_vendes_billing_test.moc"
