// The inquiries of quotes, drafts, proformas and delivery notes: the name and title of each,
// the rows of its own type only, the customer filter, Enter handing the document over to be
// changed, Esborrar with its question, a document turned into an invoice dropping out at the
// next search, and the actions without a selected row.
#include "sales/ui/form_cons_docs.h"
#include "../../master/ui/screen_fixture.h"
#include "context/messages.h"
#include "sales/billing_document.h"
#include "sales/billing_lines.h"
#include "sales/document_numbers.h"
#include "sales/sale_posting.h"

#include <QAction>
#include <QComboBox>
#include <QTableWidget>
#include <QToolBar>

#include <utility>
#include <vector>

using namespace tallora;
using namespace tallora::testing;
using sales::DocType;

namespace {

// The exercise with billing on, two customers and a sales account.
class DocumentsScreen : public ScreenExercise {
public:
    DocumentsScreen() {
        ctx.Facturacio = true;
        ctx.Tesoreria = false;
        ctx.ModeExercici = QStringLiteral("FACTURES");
        ctx.TipusIVA = {21, 10, 4};
        ctx.TipusRE = {5.2, 1.4, 0.5};
        exec(exerciseFile("gest.mdb"),
             "insert into Clients (client, nom, direccio, poblacio, NIF, RE) values "
             "(1, 'Ferreteria Puig', 'C/ Major 1', 'Vic', 'B11111111', 0), "
             "(2, 'Colmado Ruiz', 'Pl. Nova 3', 'Olot', '22222222J', 0)");
        exec(exerciseFile("Comptes.mdb"),
             "insert into Ingresos (Grup, NomGrup, Compte, NomCompte) values "
             "(700, 'Ventas', 7000001, 'Ventas mercaderias')");
        schema::upgradeBilling(ctx);
    }
    static void exec(const QString& path, const char* sql) {
        store::Database::open(path).execute(QString::fromUtf8(sql));
    }
    static sales::SalesAccount ventas() { return {700, "Ventas", 7000001, "Ventas mercaderias"}; }

    // A new document of `kind` on day/month of 2026 for a customer, with one line of
    // `text` as its one line (1 x 100,00 at 21 %), saved as the sales screen saves it: its number,
    // or -1 when the save failed.
    std::int64_t save(DocType kind, int day, int month, std::int64_t client, const QString& name,
                      const QString& text) {
        sales::clearLines(ctx);
        sales::SaleEntry e;
        e.txtDia = QString::number(day);
        e.txtMes = QString::number(month);
        e.lblFecha = QDate(2026, month, day).toString(QStringLiteral("dd/MM/yyyy"));
        e.txtClient = e.listClientsText = name;
        e.clientNumber = client;
        e.txtTipus = e.listVendesText = QStringLiteral("Ventas mercaderias");
        e.txtdescripcio = QStringLiteral("-");
        e.venciment = QDate(2026, month, day);
        e.billing.type = kind;
        sales::LineFields line;
        line.cantidad = QStringLiteral("1");
        line.concepto = text;
        line.precio = QStringLiteral("100");
        line.iva = QStringLiteral("21");
        sales::saveLine(ctx, e, line);
        sales::sumLines(ctx, e, false);
        const sales::PostingResult r = sales::GrabaApunt(ctx, e, ventas());
        return r.ok() ? r.ordre : -1;
    }
    // Document `number` of `kind` opened and saved as an invoice; the invoice's number, or -1.
    std::int64_t invoice(DocType kind, std::int64_t number) {
        sales::clearLines(ctx);
        auto e = sales::openDocument(ctx, kind, number);
        if (!e) return -1;
        e->billing.type = DocType::Factura;
        const sales::PostingResult r = sales::GrabaApunt(ctx, *e, ventas());
        return r.ok() ? r.ordre : -1;
    }

    QString factFile() const { return ctx.companyFile(schema::db::Fact); }
    QStringList fact(const QString& sql) const { return rows(factFile(), sql); }
    // The Id of the header of document `number` in `column`.
    QString idOf(const QString& column, int number) const {
        return fact(QStringLiteral("select Id from documentos where %1 = %2 and Ejercicio = 2026")
                        .arg(column)
                        .arg(number))
            .value(0);
    }
    QString M(int n) const { return Missatge(ctx, n); }
};

// Two quotes of different customers and months, a draft, a proforma, a delivery note and an
// invoice, which no inquiry of these lists.
void saveDocuments(DocumentsScreen& x) {
    QCOMPARE(x.save(DocType::Presupuesto, 15, 3, 1, "Ferreteria Puig", "Tablero"), 1);
    QCOMPARE(x.save(DocType::Borrador, 16, 3, 2, "Colmado Ruiz", "Cola"), 1);
    QCOMPARE(x.save(DocType::Proforma, 17, 3, 1, "Ferreteria Puig", "Barniz"), 1);
    QCOMPARE(x.save(DocType::Albaran, 18, 3, 2, "Colmado Ruiz", "Lija"), 1);
    QCOMPARE(x.save(DocType::Presupuesto, 20, 6, 2, "Colmado Ruiz", "Puerta"), 2);
    QCOMPARE(x.save(DocType::Factura, 10, 3, 1, "Ferreteria Puig", "Marco"), 1);
}

template <typename W>
W* child(QWidget* form, const char* name) {
    return form->findChild<W*>(QString::fromLatin1(name));
}
// Every row of the grid, its cells joined by '|'.
QStringList gridRows(const QTableWidget* grid) {
    QStringList out;
    for (int r = 0; r < grid->rowCount(); ++r) {
        QStringList cells;
        for (int c = 0; c < grid->columnCount(); ++c)
            cells << (grid->item(r, c) ? grid->item(r, c)->text() : QString());
        out << cells.join(u'|');
    }
    return out;
}
void show(QWidget& form) {
    form.resize(1100, 640);
    form.show();
    QVERIFY(QTest::qWaitForWindowActive(&form));
}

}  // namespace

class FormConsDocsTest : public QObject {
    Q_OBJECT

private slots:
    void nameAndTitleFollowTheType() {
        DocumentsScreen x;
        const struct {
            DocType kind;
            const char* name;
            int title;
        } cases[] = {{DocType::Presupuesto, "FormConsDOCS_Pre", 6844},
                     {DocType::Borrador, "FormConsDOCS_Bor", 6847},
                     {DocType::Proforma, "FormConsDOCS_Pro", 6846},
                     {DocType::Albaran, "FormConsDOCS_Alb", 7016}};
        for (const auto& c : cases) {
            FormConsDOCS form(x.ctx, x.dialogs, c.kind);
            QVERIFY(form.type() == c.kind);
            QCOMPARE(form.objectName(), QString::fromLatin1(c.name));
            QCOMPARE(form.windowTitle(), x.M(c.title));
            auto* grid = form.grid();
            QCOMPARE(grid->objectName(), QStringLiteral("DbGrid1"));
            QCOMPARE(grid->columnCount(), 4);
            QCOMPARE(grid->horizontalHeaderItem(3)->text(), x.M(6845).trimmed());
        }
        FormConsDOCS quotes(x.ctx, x.dialogs, DocType::Presupuesto);
        QCOMPARE(quotes.windowTitle(), QStringLiteral("CONSULTA PRESUPUESTOS"));
        QVERIFY2(x.dialogs.shown().empty(), qPrintable(x.dialogs.lastText()));
    }

    void eachListsOnlyItsOwnType() {
        DocumentsScreen x;
        saveDocuments(x);
        const struct {
            DocType kind;
            QStringList rows;
        } cases[] = {
            {DocType::Presupuesto,
             {x.idOf("Presupuesto", 1) + "|15/03/2026|Ferreteria Puig|1",
              x.idOf("Presupuesto", 2) + "|20/06/2026|Colmado Ruiz|2"}},
            {DocType::Borrador, {x.idOf("Borrador", 1) + "|16/03/2026|Colmado Ruiz|1"}},
            {DocType::Proforma, {x.idOf("Proforma", 1) + "|17/03/2026|Ferreteria Puig|1"}},
            {DocType::Albaran, {x.idOf("Albaran", 1) + "|18/03/2026|Colmado Ruiz|1"}},
        };
        for (const auto& c : cases) {
            FormConsDOCS form(x.ctx, x.dialogs, c.kind);
            QCOMPARE(gridRows(form.grid()), c.rows);
        }
        QVERIFY2(x.dialogs.shown().empty(), qPrintable(x.dialogs.lastText()));
    }

    void theCustomerFilterNarrows() {
        DocumentsScreen x;
        saveDocuments(x);
        FormConsDOCS form(x.ctx, x.dialogs, DocType::Presupuesto);
        show(form);
        QCOMPARE(form.grid()->rowCount(), 2);
        auto* customers = child<QComboBox>(&form, "CmbClients");
        QCOMPARE(customers->currentIndex(), -1);
        // The list is in order of name: "C" is Colmado Ruiz.
        customers->setFocus();
        type(&form, "C");
        QCOMPARE(customers->currentText(), QStringLiteral("Colmado Ruiz"));
        QVERIFY(form.filter().client.has_value());
        QCOMPARE(*form.filter().client, std::int64_t{2});
        QCOMPARE(gridRows(form.grid()),
                 QStringList{x.idOf("Presupuesto", 2) + "|20/06/2026|Colmado Ruiz|2"});
        // Its reset button gives every customer back.
        auto* reset = child<QToolBar>(&form, "reset_CmbClients");
        QVERIFY(reset);
        reset->actions().first()->trigger();
        QCOMPARE(customers->currentIndex(), -1);
        QCOMPARE(form.grid()->rowCount(), 2);
    }

    void enterAsksForTheChangeOfTheDocument() {
        DocumentsScreen x;
        saveDocuments(x);
        FormConsDOCS form(x.ctx, x.dialogs, DocType::Presupuesto);
        show(form);
        std::vector<std::pair<DocType, qint64>> requested;
        QObject::connect(&form, &FormConsDOCS::modifyRequested, [&](DocType kind, qint64 number) {
            requested.emplace_back(kind, number);
        });
        form.grid()->setFocus();
        form.grid()->selectRow(1);
        enter(&form);
        QCOMPARE(requested.size(), std::size_t{1});
        QVERIFY(requested[0].first == DocType::Presupuesto);
        QCOMPARE(requested[0].second, qint64{2});
        form.grid()->selectRow(0);
        form.tool("Modificar")->trigger();
        QCOMPARE(requested.size(), std::size_t{2});
        QCOMPARE(requested[1].second, qint64{1});
        // Nothing was opened here, nor asked.
        QVERIFY(x.dialogs.shown().empty());
        QCOMPARE(x.fact("select Presupuesto from documentos where Presupuesto <> 0 order by Id"),
                 (QStringList{"1", "2"}));
    }

    void esborrarAsksThenDeletesAndKeepsTheCounter() {
        DocumentsScreen x;
        saveDocuments(x);
        FormConsDOCS form(x.ctx, x.dialogs, DocType::Presupuesto);
        show(form);
        form.grid()->selectRow(1);
        x.dialogs.setNextAnswer(Dialogs::Answer::No);
        form.tool("Esborrar")->trigger();
        QCOMPARE(x.dialogs.lastText(), x.M(815) + "\n(2) Colmado Ruiz");
        QCOMPARE(form.grid()->rowCount(), 2);
        QCOMPARE(x.fact("select Presupuesto from documentos where Presupuesto <> 0 order by Id"),
                 (QStringList{"1", "2"}));

        form.grid()->selectRow(1);
        x.dialogs.setNextAnswer(Dialogs::Answer::Yes);
        form.tool("Esborrar")->trigger();
        QCOMPARE(x.dialogs.pendingAnswers(), std::size_t{0});
        QCOMPARE(gridRows(form.grid()),
                 QStringList{x.idOf("Presupuesto", 1) + "|15/03/2026|Ferreteria Puig|1"});
        QCOMPARE(x.fact("select Presupuesto from documentos where Presupuesto <> 0"),
                 QStringList{"1"});
        QCOMPARE(x.fact("select concepto from detalle where Presupuesto <> 0"),
                 QStringList{"Tablero"});
        // The other types keep their documents, and the number is not given again.
        QCOMPARE(x.fact("select count(*) from documentos"), QStringList{"5"});
        QCOMPARE(x.fact("select Presupuesto from Numeracion_Documentos where Ejercicio = 2026"),
                 QStringList{"2"});
        QCOMPARE(sales::Seguent_Document(x.ctx, sales::kinds::Presupuesto), std::int64_t{3});
    }

    void aDocumentTurnedIntoAnInvoiceGoesAtTheNextSearch() {
        DocumentsScreen x;
        saveDocuments(x);
        FormConsDOCS drafts(x.ctx, x.dialogs, DocType::Borrador);
        show(drafts);
        QCOMPARE(drafts.grid()->rowCount(), 1);
        QCOMPARE(x.invoice(DocType::Borrador, 1), 2);
        QCOMPARE(x.fact("select FrasOut, Borrador, Client from documentos where FrasOut = 2"),
                 QStringList{"2|0|2"});
        drafts.tool("Buscar")->trigger();
        QCOMPARE(drafts.grid()->rowCount(), 0);
        QCOMPARE(drafts.statusText(), x.M(811).trimmed());

        FormConsDOCS proformas(x.ctx, x.dialogs, DocType::Proforma);
        QCOMPARE(proformas.grid()->rowCount(), 1);
        QCOMPARE(x.invoice(DocType::Proforma, 1), 3);
        // Back in front, the screen searches again.
        proformas.refreshLists();
        QCOMPARE(proformas.grid()->rowCount(), 0);
        QVERIFY2(x.dialogs.shown().empty(), qPrintable(x.dialogs.lastText()));
    }

    void withoutASelectedRowNothingHappens() {
        DocumentsScreen x;
        saveDocuments(x);
        FormConsDOCS form(x.ctx, x.dialogs, DocType::Presupuesto);
        show(form);
        int requested = 0;
        QObject::connect(&form, &FormConsDOCS::modifyRequested, [&] { ++requested; });
        form.grid()->clearSelection();
        QVERIFY(!form.selectedOrdre().has_value());
        // An answer is queued so that a wrong question shows as a failure, not a throw.
        x.dialogs.setNextAnswer(Dialogs::Answer::Yes);
        form.tool("Modificar")->trigger();
        form.tool("Esborrar")->trigger();
        QCOMPARE(requested, 0);
        QVERIFY2(x.dialogs.shown().empty(), qPrintable(x.dialogs.lastText()));
        QCOMPARE(x.dialogs.pendingAnswers(), std::size_t{1});
        QCOMPARE(form.grid()->rowCount(), 2);
        QCOMPARE(x.fact("select Presupuesto from documentos where Presupuesto <> 0 order by Id"),
                 (QStringList{"1", "2"}));

        // A search that finds nothing leaves nothing to act on either.
        FormConsDOCS notes(x.ctx, x.dialogs, DocType::Albaran);
        show(notes);
        auto* customers = child<QComboBox>(&notes, "CmbClients");
        customers->setCurrentIndex(customers->findText(QStringLiteral("Ferreteria Puig")));
        notes.Buscar();
        QCOMPARE(notes.grid()->rowCount(), 0);
        QObject::connect(&notes, &FormConsDOCS::modifyRequested, [&] { ++requested; });
        notes.tool("Modificar")->trigger();
        notes.tool("Esborrar")->trigger();
        QCOMPARE(requested, 0);
        QVERIFY2(x.dialogs.shown().empty(), qPrintable(x.dialogs.lastText()));
        QCOMPARE(x.fact("select Albaran from documentos where Albaran <> 0"), QStringList{"1"});
    }
};

QTEST_MAIN(FormConsDocsTest)
#include "form_cons_docs_test.moc"
