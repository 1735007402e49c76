// Billing documents: the lines of detalle_temp and their sums, the documents saved in the
// posting's transaction (numbers, conversions, the old rows of a resaved document), the
// deletion, the search of the document inquiries, the print's formulas and its template.
#include "sales/billing_document.h"
#include "context/billing_files.h"
#include "sales/billing_lines.h"
#include "sales/document_inquiry.h"
#include "sales/document_numbers.h"
#include "sales/document_printing.h"
#include "sales/sale_change.h"
#include "sales/sale_posting.h"
#include "sales_fixture.h"
#include "store/schema_objects.h"

#include <QFile>
#include <QFileInfo>

namespace tallora::testing {
namespace {

using sales::DocType;
using sales::DocumentLine;
using sales::LineFields;
using sales::PostingResult;

QString sourceFile(const QString& relative) {
    return QStringLiteral(TALLORA_SOURCE_DIR "/") + relative;
}

LineFields fields(const QString& cantidad, const QString& precio, const QString& dto = {}) {
    LineFields line;
    line.cantidad = cantidad;
    line.precio = precio;
    line.dto = dto;
    return line;
}

// A line of the grid as OMPLE_GRID_Detall reads it: only the amount and the rate count.
DocumentLine gridLine(double iva, std::int64_t importeUnits) {
    DocumentLine line;
    line.concepto = QStringLiteral("x");
    line.unidades = 1;
    line.importe = Money::fromUnits(importeUnits);
    line.pvp = line.importe;
    line.iva = iva;
    return line;
}

class BillingDocumentTest : public SalesData {
protected:
    void SetUp() override {
        SalesData::SetUp();
        f.ctx.Facturacio = true;
        schema::upgradeBilling(f.ctx);
    }

    // A new entry of `type` on a fresh billing tab: no lines, the description a dash.
    SaleEntry fresh(DocType type, bool withRecargo = false) {
        SaleEntry e = withRecargo ? reEntry("0") : entry("0");
        e.txtdescripcio = "-";
        e.billing.type = type;
        sales::clearLines(f.ctx);
        return e;
    }

    void addLine(const SaleEntry& e, const QString& cantidad, const QString& concepto,
                 const QString& precio, const QString& dto, const QString& iva) {
        LineFields line = fields(cantidad, precio, dto);
        line.concepto = concepto;
        line.iva = iva;
        sales::saveLine(f.ctx, e, line);
    }

    // The amounts follow the lines, as the tab shows them after each line; then the save.
    PostingResult save(SaleEntry& e) {
        sales::sumLines(f.ctx, e, e.reEnabled);
        return sales::GrabaApunt(f.ctx, e, ventas());
    }

    // A new document of `type` with one line per concept (2 x 25,00 at 21 %); its number.
    std::int64_t postNew(DocType type, const QStringList& concepts = {"Tablero"}) {
        SaleEntry e = fresh(type);
        for (const QString& text : concepts) addLine(e, "2", text, "25", "", "21");
        const PostingResult r = save(e);
        EXPECT_TRUE(r.ok()) << r.error.toStdString();
        return r.ordre;
    }

    QStringList counter(const QString& columns) const {
        return rows(fact(),
                    "select " + columns + " from Numeracion_Documentos where Ejercicio = 2026");
    }
    QStringList documents(const QString& columns, const QString& where = "1 = 1") const {
        return rows(fact(),
                    "select " + columns + " from documentos where " + where + " order by Id");
    }
    QStringList details(const QString& columns, const QString& where = "1 = 1") const {
        return rows(fact(), "select " + columns + " from detalle where " + where + " order by Id");
    }
    QStringList tempConcepts() const {
        QStringList out;
        for (const DocumentLine& line : sales::documentLines(f.ctx)) out << line.concepto;
        return out;
    }
    void fault(const QString& table) const {
        exec(fact(), "create trigger fault before insert on " + table +
                         " begin select raise(abort, 'disk full'); end");
    }
};

// ---- the lines ----------------------------------------------------------------------------

TEST_F(BillingDocumentTest, ALineIsQuantityTimesPriceLessItsDiscount) {
    LineFields line = fields("1,5", "10", "10");
    EXPECT_EQ(sales::Calcula_Linia(f.ctx, line), "13,50");
    EXPECT_EQ(line.importe, "13,50");
}

TEST_F(BillingDocumentTest, EmptyOrUnreadableFieldsOfALineCountAsZero) {
    LineFields noDiscount = fields("2", "5", "");
    EXPECT_EQ(sales::Calcula_Linia(f.ctx, noDiscount), "10,00");
    LineFields wordDiscount = fields("2", "5", "mucho");
    EXPECT_EQ(sales::Calcula_Linia(f.ctx, wordDiscount), "10,00");
    LineFields noQuantity = fields("", "5", "10");
    EXPECT_EQ(sales::Calcula_Linia(f.ctx, noQuantity), "0,00");
    LineFields wordQuantity = fields("dos", "5");
    EXPECT_EQ(sales::Calcula_Linia(f.ctx, wordQuantity), "0,00");
    LineFields noPrice = fields("2", "");
    EXPECT_EQ(sales::Calcula_Linia(f.ctx, noPrice), "0,00");
}

TEST_F(BillingDocumentTest, ALineIsRefusedWithoutACustomerFromTheListAQuantityOrAPrice) {
    const SaleEntry chosen = entry();
    EXPECT_EQ(sales::checkLine(f.ctx, chosen, fields("1", "10")), sales::LineRefusal::None);

    SaleEntry typed = entry();
    typed.listClientsText = "Ferreteria";
    EXPECT_EQ(sales::checkLine(f.ctx, typed, fields("1", "10")), sales::LineRefusal::Customer);
    SaleEntry none = entry();
    none.txtClient = none.listClientsText = "";
    EXPECT_EQ(sales::checkLine(f.ctx, none, fields("1", "10")), sales::LineRefusal::Customer);

    EXPECT_EQ(sales::checkLine(f.ctx, chosen, fields("", "10")), sales::LineRefusal::Cantidad);
    EXPECT_EQ(sales::checkLine(f.ctx, chosen, fields("  ", "10")), sales::LineRefusal::Cantidad);
    EXPECT_EQ(sales::checkLine(f.ctx, chosen, fields("1", "")), sales::LineRefusal::Precio);
}

TEST_F(BillingDocumentTest, ALineIsInsertedSanitisedThenUpdatedByItsId) {
    const SaleEntry e = entry();
    LineFields line = fields("1,5", "10", "10");
    line.concepto = "O'Neil 50%+IVA";
    line.iva = "21";
    sales::saveLine(f.ctx, e, line);
    const QString clean = QStringLiteral("O\u00B4Neil 50IVA");
    EXPECT_EQ(line.concepto, clean);
    EXPECT_EQ(line.importe, "13,50");
    const QString columns =
        "select fecha, concepto, unidades, pvp, dto, importe, iva, client, Ejercicio "
        "from detalle_temp order by Id";
    EXPECT_EQ(rows(fact(), columns),
              QStringList{"2026-03-15|" + clean + "|1.5|100000|10.0|135000|21.0|1|2026"});

    const QStringList ids = rows(fact(), "select Id from detalle_temp");
    ASSERT_EQ(ids.size(), 1);
    line.id = ids[0];
    line.cantidad = "2";
    sales::saveLine(f.ctx, e, line);
    EXPECT_EQ(line.importe, "18,00");
    EXPECT_EQ(rows(fact(), columns),
              QStringList{"2026-03-15|" + clean + "|2.0|100000|10.0|180000|21.0|1|2026"});
}

TEST_F(BillingDocumentTest, AnEmptyDiscountAndRateAreWrittenAsZero) {
    const SaleEntry e = entry();
    LineFields line = fields("3", "4");
    line.concepto = "Cola";
    sales::saveLine(f.ctx, e, line);
    EXPECT_EQ(line.dto, "0");
    EXPECT_EQ(line.iva, "0");
    EXPECT_EQ(rows(fact(), "select unidades, pvp, dto, importe, iva from detalle_temp"),
              QStringList{"3.0|40000|0.0|120000|0.0"});
}

TEST_F(BillingDocumentTest, ALineLoadsAsTheTabShowsItAndIsDeleted) {
    const SaleEntry e = entry();
    addLine(e, "1,5", "Barniz", "10", "10", "21");
    addLine(e, "2", "Cola", "4", "", "10");
    const auto lines = sales::documentLines(f.ctx);
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0].concepto, "Barniz");
    EXPECT_EQ(lines[0].importe, Money::fromUnits(135000));
    EXPECT_EQ(lines[1].iva, 10.0);

    const auto loaded = sales::loadLine(f.ctx, lines[0].id);
    ASSERT_TRUE(loaded.has_value());
    EXPECT_EQ(loaded->id, QString::number(lines[0].id));
    EXPECT_EQ(loaded->cantidad, "1,500");
    EXPECT_EQ(loaded->concepto, "Barniz");
    EXPECT_EQ(loaded->precio, "10,00");
    EXPECT_EQ(loaded->dto, "10,00");
    EXPECT_EQ(loaded->importe, "13,50");
    EXPECT_EQ(loaded->iva, "21");
    EXPECT_FALSE(sales::loadLine(f.ctx, lines[1].id + 100).has_value());

    sales::deleteLine(f.ctx, lines[0].id);
    EXPECT_EQ(tempConcepts(), QStringList{"Cola"});
    EXPECT_FALSE(sales::loadLine(f.ctx, lines[0].id).has_value());
    addLine(e, "1", "Lija", "2", "", "21");
    sales::clearLines(f.ctx);
    EXPECT_TRUE(sales::documentLines(f.ctx).empty());
}

// ---- the sums of the lines ----------------------------------------------------------------

TEST_F(BillingDocumentTest, ALineAtRateZeroIsExemptAndNoBase) {
    SaleEntry e = entry("0");
    sales::applyLineSums(f.ctx, e, {gridLine(0, 400000)}, false);
    EXPECT_EQ(e.Exempta, Money::fromUnits(400000));
    for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(e.txtBase[i], "0,00") << i;
}

TEST_F(BillingDocumentTest, LinesFillTheBaseAndQuotaOfTheirRate) {
    SaleEntry e = entry("0");
    sales::applyLineSums(f.ctx, e,
                         {gridLine(21, 600000), gridLine(10, 500000), gridLine(21, 400000)}, false);
    EXPECT_EQ(e.txtBase[0], "100,00");
    EXPECT_EQ(e.txtIVA[0], "21,00");
    EXPECT_EQ(e.txtBase[1], "50,00");
    EXPECT_EQ(e.txtIVA[1], "5,00");
    EXPECT_EQ(e.txtBase[2], "0,00");
    EXPECT_EQ(e.txtIVA[2], "0,00");
    EXPECT_EQ(e.Exempta, Money());
}

TEST_F(BillingDocumentTest, ALineAtAnUnknownRateCountsInNoSum) {
    SaleEntry e = entry("0");
    sales::applyLineSums(f.ctx, e, {gridLine(7, 300000), gridLine(4, 1000000)}, true);
    EXPECT_EQ(e.Exempta, Money());
    EXPECT_EQ(e.txtBase[0], "0,00");
    EXPECT_EQ(e.txtBase[1], "0,00");
    EXPECT_EQ(e.txtBase[2], "100,00");
    EXPECT_EQ(e.txtIVA[2], "4,00");
    EXPECT_EQ(e.txtRE[2], "0,50");
}

TEST_F(BillingDocumentTest, RecargoOnlyForACustomerWithIt) {
    SaleEntry without = entry("0");
    sales::applyLineSums(f.ctx, without, {gridLine(21, 1000000)}, false);
    EXPECT_EQ(without.txtRE[0], "0");
    SaleEntry with = reEntry("0");
    sales::applyLineSums(f.ctx, with, {gridLine(21, 1000000), gridLine(10, 1000000)}, true);
    EXPECT_EQ(with.txtRE[0], "5,20");
    EXPECT_EQ(with.txtRE[1], "1,40");
    EXPECT_EQ(with.txtRE[2], "0,00");
}

TEST_F(BillingDocumentTest, TheTotalFollowsTheStoredLines) {
    SaleEntry e = fresh(DocType::Factura);
    addLine(e, "1", "Tablero", "100", "", "21");
    addLine(e, "1", "Curso", "40", "", "0");
    sales::sumLines(f.ctx, e, false);
    EXPECT_EQ(e.txtTotal, "161,00");
    SaleEntry r = fresh(DocType::Factura, true);
    addLine(r, "1", "Tablero", "100", "", "21");
    addLine(r, "1", "Curso", "40", "", "0");
    sales::sumLines(f.ctx, r, true);
    EXPECT_EQ(r.txtTotal, "166,20");
}

// ---- numbering and saving -----------------------------------------------------------------

TEST_F(BillingDocumentTest, TheFirstDraftOfAFreshCounterIsNumberOneColumnByColumn) {
    SaleEntry e = fresh(DocType::Borrador);
    e.billing.formaPago = "Transferencia";
    e.billing.entidad = "Banco Sabadell";
    e.billing.ccc = "00810001020000123456";
    addLine(e, "2", "Tablero", "25", "10", "21");
    const PostingResult r = save(e);
    ASSERT_TRUE(r.ok()) << r.error.toStdString();
    EXPECT_EQ(r.ordre, 1);
    EXPECT_EQ(e.txtdescripcio, "1");
    EXPECT_EQ(counter("FrasOut, Borrador, Presupuesto, Proforma, Albaran"),
              QStringList{"0|1|0|0|0"});
    EXPECT_EQ(documents("Fecha, Client, Ejercicio, Vencimiento, FormaPago, Entidad, ccc, FrasOut, "
                        "Borrador, Presupuesto, Proforma, Albaran, Compte, NomCompte, BaseIRPF, "
                        "TipusIRPF, Retencio, Temp"),
              QStringList{"2026-03-15|1|2026|2026-04-15|Transferencia|Banco Sabadell|"
                          "00810001020000123456|0|1|0|0|0|7000001|Ventas mercaderias|0|0|0|no"});
    EXPECT_EQ(details("fecha, concepto, unidades, pvp, dto, importe, iva, Client, Ejercicio, "
                      "FrasOut, Borrador, Presupuesto, Proforma, Albaran"),
              QStringList{"2026-03-15|Tablero|2.0|250000|10.0|450000|21.0|1|2026|0|1|0|0|0"});
    EXPECT_TRUE(rows(frasOut(), "select Ordre from FrasOut").isEmpty());
}

TEST_F(BillingDocumentTest, ADraftSavedAgainAsADraftKeepsItsNumberAndTakesTheNewLines) {
    exec(fact(), "insert into Numeracion_Documentos (Ejercicio, Borrador) values (2026, 4)");
    ASSERT_EQ(postNew(DocType::Borrador, {"Tablero", "Cola"}), 5);
    exec(fact(), "update Numeracion_Documentos set Borrador = 9");

    sales::clearLines(f.ctx);
    auto e = sales::openDocument(f.ctx, DocType::Borrador, 5);
    ASSERT_TRUE(e.has_value());
    EXPECT_TRUE(e->billing.loadedAs == DocType::Borrador);
    EXPECT_EQ(e->lblOrdre, "5");
    EXPECT_EQ(e->txtClient, "Ferreteria Puig");
    EXPECT_EQ(e->txtTotal, "121,00");
    const auto lines = sales::documentLines(f.ctx);
    ASSERT_EQ(lines.size(), 2u);
    sales::deleteLine(f.ctx, lines[0].id);
    addLine(*e, "1", "Barniz", "8", "", "21");

    const PostingResult r = save(*e);
    ASSERT_TRUE(r.ok()) << r.error.toStdString();
    EXPECT_EQ(r.ordre, 5);
    EXPECT_EQ(e->txtdescripcio, "5");
    EXPECT_EQ(documents("Borrador, Client"), QStringList{"5|1"});
    EXPECT_EQ(details("Borrador, concepto, importe"),
              (QStringList{"5|Cola|500000", "5|Barniz|80000"}));
    EXPECT_EQ(counter("Borrador"), QStringList{"9"});
}

TEST_F(BillingDocumentTest, ADraftSavedAsAQuoteTakesTheNextQuoteNumberAndLeavesNoDraft) {
    exec(fact(),
         "insert into Numeracion_Documentos (Ejercicio, Borrador, Presupuesto) "
         "values (2026, 4, 2)");
    ASSERT_EQ(postNew(DocType::Borrador, {"Tablero", "Cola"}), 5);
    auto e = sales::openDocument(f.ctx, DocType::Borrador, 5);
    ASSERT_TRUE(e.has_value());
    e->billing.type = DocType::Presupuesto;
    const PostingResult r = save(*e);
    ASSERT_TRUE(r.ok()) << r.error.toStdString();
    EXPECT_EQ(r.ordre, 3);
    EXPECT_EQ(e->txtdescripcio, "3");
    EXPECT_TRUE(documents("Id", "Borrador <> 0").isEmpty());
    EXPECT_TRUE(details("Id", "Borrador <> 0").isEmpty());
    EXPECT_EQ(documents("Presupuesto, Borrador, Client"), QStringList{"3|0|1"});
    EXPECT_EQ(details("Presupuesto, concepto"), (QStringList{"3|Tablero", "3|Cola"}));
    EXPECT_EQ(counter("Borrador, Presupuesto"), QStringList{"5|3"});
}

TEST_F(BillingDocumentTest, AQuoteTurnedIntoAnInvoiceIsANewSaleWithItsReceipt) {
    f.ctx.Tesoreria = true;
    exec(fact(),
         "insert into Numeracion_Documentos (Ejercicio, FrasOut, Presupuesto) "
         "values (2026, 10, 2)");
    ASSERT_EQ(postNew(DocType::Presupuesto, {"Tablero", "Cola"}), 3);
    EXPECT_TRUE(rows(cartera(), "select Id from cartera").isEmpty());

    auto e = sales::openDocument(f.ctx, DocType::Presupuesto, 3);
    ASSERT_TRUE(e.has_value());
    e->billing.type = DocType::Factura;
    const PostingResult r = save(*e);
    ASSERT_TRUE(r.ok()) << r.error.toStdString();
    EXPECT_EQ(r.ordre, 11);
    EXPECT_EQ(e->txtdescripcio, "11");
    EXPECT_EQ(rows(frasOut(),
                   "select Ordre, Descripcio, Client, NomClient, TOTAL, Base1, Iva1 "
                   "from FrasOut"),
              QStringList{"11|11|1|Ferreteria Puig|1210000|1000000|210000"});
    EXPECT_EQ(rows(cartera(),
                   "select data, cliente, In_Out, Ejercicio, Factura, Total, Pendiente, "
                   "FrasOut, Vencimiento from cartera"),
              QStringList{"2026-03-15|1|Out|2026|11|1210000|0|11|2026-04-15"});
    EXPECT_EQ(documents("FrasOut, Presupuesto, Client"), QStringList{"11|0|1"});
    EXPECT_EQ(details("FrasOut, Presupuesto, concepto"),
              (QStringList{"11|0|Tablero", "11|0|Cola"}));
    EXPECT_EQ(counter("FrasOut, Presupuesto"), QStringList{"11|3"});
}

TEST_F(BillingDocumentTest, TheNumbersOfTwoExercisesNeverMeet) {
    exec(fact(),
         "insert into documentos (Ejercicio, FrasOut, Presupuesto, Client) values "
         "(2025, 0, 1, 1), (2025, 1, 0, 1)");
    exec(fact(),
         "insert into detalle (Ejercicio, Presupuesto, FrasOut, concepto) values "
         "(2025, 1, 0, 'Presupuesto 2025'), (2025, 0, 1, 'Factura 2025')");
    EXPECT_EQ(postNew(DocType::Presupuesto), 1);
    EXPECT_EQ(postNew(DocType::Factura), 1);
    EXPECT_EQ(documents("Ejercicio, FrasOut, Presupuesto"),
              (QStringList{"2025|0|1", "2025|1|0", "2026|0|1", "2026|1|0"}));
    EXPECT_EQ(details("Ejercicio, FrasOut, Presupuesto, concepto"),
              (QStringList{"2025|0|1|Presupuesto 2025", "2025|1|0|Factura 2025", "2026|0|1|Tablero",
                           "2026|1|0|Tablero"}));
}

TEST_F(BillingDocumentTest, ANumberTakenAboveTheCounterIsPassedOver) {
    exec(fact(), "insert into Numeracion_Documentos (Ejercicio, Presupuesto) values (2026, 2)");
    exec(fact(), "insert into documentos (Ejercicio, Presupuesto, Client) values (2026, 3, 1)");
    EXPECT_EQ(postNew(DocType::Presupuesto), 4);
    EXPECT_EQ(counter("Presupuesto"), QStringList{"4"});
    EXPECT_EQ(documents("Presupuesto"), (QStringList{"3", "4"}));
}

TEST_F(BillingDocumentTest, AnInvoiceLoadedAndSavedAsADeliveryNoteStaysAsItWas) {
    ASSERT_EQ(postNew(DocType::Factura, {"Tablero", "Cola"}), 1);
    const QStringList sale = rows(frasOut(), "select * from FrasOut");
    const QStringList invoiceDocument = documents("*", "FrasOut = 1");
    const QStringList invoiceLines = details("*", "FrasOut = 1");
    ASSERT_EQ(invoiceDocument.size(), 1);
    ASSERT_EQ(invoiceLines.size(), 2);

    sales::clearLines(f.ctx);
    auto loaded = sales::Modifica_Venda(f.ctx, "1");
    ASSERT_TRUE(loaded.has_value());
    SaleEntry& e = loaded->entry;
    EXPECT_EQ(tempConcepts(), (QStringList{"Tablero", "Cola"}));
    EXPECT_TRUE(e.billing.loadedAs == DocType::Factura);
    EXPECT_TRUE(e.billing.type == DocType::Factura);
    EXPECT_EQ(e.venciment, QDate(2026, 4, 15));

    e.billing.type = DocType::Albaran;
    const PostingResult r = save(e);
    ASSERT_TRUE(r.ok()) << r.error.toStdString();
    EXPECT_EQ(r.ordre, 1);
    EXPECT_EQ(rows(frasOut(), "select * from FrasOut"), sale);
    EXPECT_EQ(documents("*", "FrasOut = 1"), invoiceDocument);
    EXPECT_EQ(details("*", "FrasOut = 1"), invoiceLines);
    EXPECT_EQ(documents("Albaran, FrasOut, Client"), (QStringList{"0|1|1", "1|0|1"}));
    EXPECT_EQ(details("concepto", "Albaran = 1"), (QStringList{"Tablero", "Cola"}));
    EXPECT_EQ(counter("FrasOut, Albaran"), QStringList{"1|1"});
}

// ---- nothing half done --------------------------------------------------------------------

TEST_F(BillingDocumentTest, AFaultResavingADraftLeavesItAsItWas) {
    exec(fact(), "insert into Numeracion_Documentos (Ejercicio, Borrador) values (2026, 4)");
    ASSERT_EQ(postNew(DocType::Borrador, {"Tablero", "Cola"}), 5);
    const QStringList header = documents("*");
    const QStringList lines = details("*");
    fault("documentos");

    auto e = sales::openDocument(f.ctx, DocType::Borrador, 5);
    ASSERT_TRUE(e.has_value());
    addLine(*e, "1", "Barniz", "8", "", "21");
    const PostingResult r = save(*e);
    EXPECT_FALSE(r.ok());
    EXPECT_TRUE(r.error.contains("disk full")) << r.error.toStdString();
    EXPECT_EQ(documents("*"), header);
    EXPECT_EQ(details("*"), lines);
}

TEST_F(BillingDocumentTest, AFaultOnTheDocumentLeavesNoSaleAndNoReceipt) {
    f.ctx.Tesoreria = true;
    fault("documentos");
    SaleEntry e = fresh(DocType::Factura);
    addLine(e, "2", "Tablero", "25", "", "21");
    const PostingResult r = save(e);
    EXPECT_FALSE(r.ok());
    EXPECT_TRUE(r.error.contains("disk full")) << r.error.toStdString();
    EXPECT_EQ(e.txtdescripcio, "-") << "the entry stays as typed";
    EXPECT_TRUE(rows(frasOut(), "select Ordre from FrasOut").isEmpty());
    EXPECT_TRUE(rows(cartera(), "select Id from cartera").isEmpty());
    EXPECT_TRUE(details("Id").isEmpty());
}

// ---- deletion and search ------------------------------------------------------------------

TEST_F(BillingDocumentTest, ADeletedDocumentTakesItsLinesAndLeavesTheCounter) {
    ASSERT_EQ(postNew(DocType::Presupuesto, {"Tablero"}), 1);
    ASSERT_EQ(postNew(DocType::Presupuesto, {"Cola", "Barniz"}), 2);
    const QStringList id = documents("Id", "Presupuesto = 2");
    ASSERT_EQ(id.size(), 1);
    EXPECT_EQ(sales::Esborra_Document(f.ctx, DocType::Presupuesto, 2, id[0].toLongLong()), 1);
    EXPECT_EQ(documents("Presupuesto"), QStringList{"1"});
    EXPECT_EQ(details("Presupuesto, concepto"), QStringList{"1|Tablero"});
    EXPECT_EQ(counter("Presupuesto"), QStringList{"2"});
    EXPECT_EQ(sales::Seguent_Document(f.ctx, sales::kinds::Presupuesto), 3);
}

TEST_F(BillingDocumentTest, TheSearchFiltersByCustomerAndDatesAndKeepsItsQuery) {
    ASSERT_EQ(postNew(DocType::Presupuesto), 1);
    SaleEntry june = fresh(DocType::Presupuesto, true);
    june.txtDia = "20";
    june.txtMes = "6";
    june.lblFecha = "20/06/2026";
    addLine(june, "1", "Cola", "4", "", "21");
    ASSERT_TRUE(save(june).ok());
    ASSERT_EQ(postNew(DocType::Borrador), 1);
    // A quote of the year before, which fact.mdb keeps beside this year's.
    exec(fact(),
         "insert into documentos (Ejercicio, Presupuesto, Client, Fecha) "
         "values (2025, 7, 1, '2025-11-30')");

    const auto found = [&](const sales::DocumentFilter& filter) {
        QStringList out;
        for (const sales::DocumentRow& r :
             sales::Busca_Documents(f.ctx, DocType::Presupuesto, filter))
            out << QStringLiteral("%1|%2|%3")
                       .arg(r.fecha.toString("yyyy-MM-dd"), r.cliente)
                       .arg(r.number);
        return out;
    };
    const QStringList all{"2025-11-30|Ferreteria Puig|7", "2026-03-15|Ferreteria Puig|1",
                          "2026-06-20|Colmado Ruiz|2"};
    EXPECT_EQ(found({}), all);
    sales::DocumentFilter year;
    year.from = QDate(2026, 1, 1);
    year.to = QDate(2026, 12, 31);
    EXPECT_EQ(found(year), all) << "dates at their defaults are no condition";

    sales::DocumentFilter customer;
    customer.client = 2;
    EXPECT_EQ(found(customer), QStringList{"2026-06-20|Colmado Ruiz|2"});
    sales::DocumentFilter march;
    march.from = QDate(2026, 3, 1);
    march.to = QDate(2026, 3, 31);
    EXPECT_EQ(found(march), QStringList{"2026-03-15|Ferreteria Puig|1"});
    sales::DocumentFilter fromApril;
    fromApril.from = QDate(2026, 4, 1);
    fromApril.to = QDate(2026, 12, 31);
    EXPECT_EQ(found(fromApril), QStringList{"2026-06-20|Colmado Ruiz|2"});

    store::Database db = store::Database::open(fact());
    EXPECT_TRUE(store::queryExists(db, "SelPress"));
}

// ---- the print: formulas and template -----------------------------------------------------

class DocumentFormulasTest : public BillingDocumentTest {
protected:
    void SetUp() override {
        BillingDocumentTest::SetUp();
        f.ctx.EmpresaNom = "Fusteria Pons";
        f.ctx.EmpresaDomicili = "C/ Major 5";
        f.ctx.EmpresaPoblacio = "Vic";
        f.ctx.EmpresaCP = "08500";
        f.ctx.EmpresaNIF = "B12345678";
        exec(gest(),
             "update Clients set cp = '08500', provincia = 'Barcelona', "
             "telefon = '938000000' where client = 1");
        quote = fresh(DocType::Presupuesto);
        quote.billing.formaPago = "Transferencia";
        quote.billing.entidad = "Banco Sabadell";
        quote.billing.ccc = "00810001020000123456";
        quote.txtBaseIRPF = "100,00";
        quote.Text1 = "15";
        addLine(quote, "1", "Tablero", "100", "", "21");
        addLine(quote, "1", "Curso", "40", "", "0");
        const PostingResult r = save(quote);
        ASSERT_TRUE(r.ok()) << r.error.toStdString();
        number = r.ordre;
        ASSERT_EQ(quote.txtTotal, "146,00");
    }
    std::array<QString, 71> formulas(DocType type = DocType::Presupuesto) const {
        return sales::documentFormulas(f.ctx, number, type, quote,
                                       sales::rateCaptions(f.ctx, f.ctx.TipusIVA, f.ctx.TipusRE));
    }

    SaleEntry quote;
    std::int64_t number = 0;
};

TEST_F(DocumentFormulasTest, TheSeventhKeepsItsFormWithoutEqualsSign) {
    EXPECT_EQ(formulas()[7], "lbl_factura '" + M(6906) + "'");
}

TEST_F(DocumentFormulasTest, TheNumberCaptionAndTitleFollowTheType) {
    const struct {
        DocType type;
        int label;
        QString title;
    } cases[] = {
        {DocType::Factura, 6906, "Factura"},   {DocType::Borrador, 6909, M(6791)},
        {DocType::Presupuesto, 6908, M(6792)}, {DocType::Proforma, 6907, "Proforma"},
        {DocType::Albaran, 7015, M(7014)},
    };
    for (const auto& c : cases) {
        const auto fm = formulas(c.type);
        EXPECT_EQ(fm[16], "lbl_factura= '" + M(c.label) + "'") << c.label;
        EXPECT_EQ(fm[36], "lbl_tipus_doc= '" + c.title + "'") << c.label;
    }
}

TEST_F(DocumentFormulasTest, TheSummaryKeepsABlankBeforeItsClosingQuote) {
    const auto fm = formulas();
    for (int i = 17; i <= 35; ++i)
        EXPECT_TRUE(fm[i].endsWith(" '") && !fm[i].endsWith("  '"))
            << i << ' ' << fm[i].toStdString();
    EXPECT_EQ(fm[50], "lbl_vencimiento= '" + M(6910) + " '");
    EXPECT_EQ(fm[35], "lbl_end_total= '146,00 Euros '");
    EXPECT_EQ(fm[17], "lbl_end_irpf1= '100,00 '");
    EXPECT_EQ(fm[19], "lbl_end_irpf3= '15,00 '");
    EXPECT_EQ(fm[20], "lbl_end_iva1a= '100,00 '");
    EXPECT_EQ(fm[21], "lbl_end_iva1b= '21 % '");
    EXPECT_EQ(fm[22], "lbl_end_iva1c= '21,00 '");
    EXPECT_EQ(fm[23], "lbl_end_iva1d= '5,2 % '");
    EXPECT_EQ(fm[26], "lbl_end_iva2b= '10 % '");
    EXPECT_EQ(fm[28], "lbl_end_iva2d= '1,4 % '");
}

TEST_F(DocumentFormulasTest, IndexFiftyOneCarriesTheExemptBase) {
    // 146,00 + 15,00 withheld - 100,00 - 21,00: the line at IVA 0.
    EXPECT_EQ(formulas()[51], "lbl_end_exenta= '40,00 '");
}

TEST_F(DocumentFormulasTest, TheHeaderRowAndTheCustomerGiveTheirFormulas) {
    const auto fm = formulas();
    const QString n = QString::number(number);
    EXPECT_EQ(fm[37], "lbl_num_doc= '" + n + "'");
    EXPECT_EQ(fm[38], "lbl_doc_fecha= '15/03/2026'");
    EXPECT_EQ(fm[39], "lbl_num_cliente= '1'");
    EXPECT_EQ(fm[46], "lbl_ven_client= '15/04/2026'");
    EXPECT_EQ(fm[47], "lbl_forma_client= 'Transferencia'");
    EXPECT_EQ(fm[48], "lbl_ent_client= 'Banco Sabadell'");
    EXPECT_EQ(fm[49], "lbl_cuen_client= '00810001020000123456'");
    EXPECT_EQ(fm[40], "lbl_nom_client= 'Ferreteria Puig'");
    EXPECT_EQ(fm[41], "lbl_dir_client= 'C/ Major 1'");
    EXPECT_EQ(fm[42], "lbl_pob_client= '08500 - Vic'");
    EXPECT_EQ(fm[43], "lbl_prov_client= 'Barcelona'");
    EXPECT_EQ(fm[44], "lbl_numnif_client= 'B11111111'");
    EXPECT_EQ(fm[45], "lbl_tel_client= '938000000'");
    EXPECT_EQ(fm[4], "lbl_fecha= '" + M(6893) + "'");
    EXPECT_EQ(fm[15], "lbl_pagina= '" + M(6905) + "'");
}

TEST_F(DocumentFormulasTest, ACustomerRenamedSinceLeavesTheCustomerFormulasEmpty) {
    exec(gest(), "update Clients set nom = 'Ferreteria Puig SL' where client = 1");
    const auto fm = formulas();
    for (int i = 40; i <= 45; ++i) EXPECT_TRUE(fm[i].isEmpty()) << i << ' ' << fm[i].toStdString();
    EXPECT_EQ(fm[37], "lbl_num_doc= '" + QString::number(number) + "'");
    EXPECT_EQ(fm[39], "lbl_num_cliente= '1'");
}

TEST_F(DocumentFormulasTest, WithoutFiscalDataTheCompanyGivesItsFourLines) {
    const auto fm = formulas();
    EXPECT_EQ(fm[0], "nom_empresa= 'Fusteria Pons'");
    EXPECT_EQ(fm[1], "dir_empresa= 'C/ Major 5'");
    EXPECT_EQ(fm[2], "pob_empresa= '08500 - Vic'");
    EXPECT_EQ(fm[3], "nif_empresa= 'B12345678'");
    for (int i = 55; i <= 58; ++i) EXPECT_TRUE(fm[i].isEmpty()) << i << ' ' << fm[i].toStdString();
}

TEST_F(DocumentFormulasTest, FiscalDataGivesTheHeading) {
    settings::FiscalData data;
    data.nomComercial = "Ferretería Montseny";
    data.nomEmpresa = "Montseny Suministros S.L.";
    data.nif = "B12345674";
    data.domicili = "C/ Industria 12";
    data.poblacio = "Manlleu";
    data.cp = "08560";
    data.telefon = "938 501 234";
    data.fax = "938 501 235";
    data.text = "Inscrita en el Registro Mercantil de Barcelona";
    ASSERT_TRUE(settings::writeFiscalData(f.ctx.companyFolder(), data));
    const auto fm = formulas();
    EXPECT_EQ(fm[0], "nom_empresa= 'Montseny Suministros S.L.'");
    EXPECT_EQ(fm[1], "dir_empresa= 'C/ Industria 12'");
    EXPECT_EQ(fm[2], "pob_empresa= '08560 - Manlleu'");
    EXPECT_EQ(fm[3], "nif_empresa= 'B12345674'");
    EXPECT_EQ(fm[55], "com_empresa= 'Ferretería Montseny'");
    EXPECT_EQ(fm[56], "tel_empresa= '938 501 234'");
    EXPECT_EQ(fm[57], "fax_empresa= '938 501 235'");
    EXPECT_EQ(fm[58], "txt_empresa= 'Inscrita en el Registro Mercantil de Barcelona'");
}

class TemplateTest : public BillingDocumentTest {
protected:
    void SetUp() override {
        BillingDocumentTest::SetUp();
        f.ctx.resourcesDir = sourceFile("resources/");
    }
    QString installed(const QString& name) const {
        return QFileInfo(sourceFile("resources/reports/" + name)).canonicalFilePath();
    }
    static QString canonical(const QString& path) { return QFileInfo(path).canonicalFilePath(); }
};

TEST_F(TemplateTest, WithoutAModelTheFirstInstalledTemplateServesOnce) {
    const sales::DocumentTemplate t = sales::Nom_Plantilla(f.ctx);
    EXPECT_EQ(canonical(t.file), installed("f01.rpt"));
    EXPECT_EQ(t.copies, 1);
}

TEST_F(TemplateTest, TheProgramFoldersOwnTemplateComesFirst) {
    QFile own(f.ctx.programDir + "f07.rpt");
    ASSERT_TRUE(own.open(QIODevice::WriteOnly));
    own.write("# a template of this installation\n");
    own.close();
    const sales::DocumentTemplate t = sales::Nom_Plantilla(f.ctx);
    EXPECT_EQ(canonical(t.file), canonical(f.ctx.programDir + "f07.rpt"));
}

TEST_F(TemplateTest, TheModelAndCopiesOfTheBillingSettingsWin) {
    ASSERT_TRUE(settings::writeFactMod(f.ctx.companyFolder(), {true, "f02.rpt", 3}));
    sales::DocumentTemplate t = sales::Nom_Plantilla(f.ctx);
    EXPECT_EQ(canonical(t.file), installed("f02.rpt"));
    EXPECT_EQ(t.copies, 3);

    ASSERT_TRUE(settings::writeFactMod(f.ctx.companyFolder(), {true, QString(), 0}));
    t = sales::Nom_Plantilla(f.ctx);
    EXPECT_EQ(canonical(t.file), installed("f01.rpt"));
    EXPECT_EQ(t.copies, 1);

    // Copies left empty by hand.
    QFile cfg(f.ctx.companyFolder() + "fact_mod.cfg");
    ASSERT_TRUE(cfg.open(QIODevice::WriteOnly | QIODevice::Truncate));
    cfg.write("#TRUE#\r\n\"f02.rpt\"\r\n\"\"\r\n");
    cfg.close();
    t = sales::Nom_Plantilla(f.ctx);
    EXPECT_EQ(canonical(t.file), installed("f02.rpt"));
    EXPECT_EQ(t.copies, 1);
}

}  // namespace
}  // namespace tallora::testing
