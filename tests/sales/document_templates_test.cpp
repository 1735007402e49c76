// The two invoice templates laid out: a fixed invoice against the page texts kept in
// tests/data/documents/<template>/expected.txt, and a document long enough to run over pages.
#include "../report/report_fixture.h"
#include "context/billing_files.h"
#include "report/pdf_output.h"
#include "report/rendered_report.h"
#include "report/report_job.h"
#include "sales/billing_document.h"
#include "sales/billing_lines.h"
#include "sales/document_printing.h"
#include "sales/receipt.h"
#include "sales/sale_change.h"
#include "sales/sale_posting.h"
#include "sales_fixture.h"
#include "verifactu/sale_qr.h"

#include <QDir>
#include <QFile>
#include <QProcess>

namespace tallora::testing {
namespace {

using sales::DocType;

class DocumentTemplates : public SalesData {
protected:
    void SetUp() override {
        SalesData::SetUp();
        f.ctx.Facturacio = true;
        schema::upgradeBilling(f.ctx);
        f.ctx.resourcesDir = sourcePath(QStringLiteral("resources/"));
    }

    void addLine(const SaleEntry& e, const QString& cantidad, const QString& concepto,
                 const QString& precio, const QString& dto, const QString& iva) {
        sales::LineFields line;
        line.cantidad = cantidad;
        line.concepto = concepto;
        line.precio = precio;
        line.dto = dto;
        line.iva = iva;
        sales::saveLine(f.ctx, e, line);
    }

    // The fixed invoice: the heading of fact_da.tos, a customer with recargo, lines at the
    // three rates and one at IVA 0, and 15 % withheld of 100,00. It is invoice 1.
    void postInvoice() {
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
        exec(gest(), "update Clients set cp = '17800', provincia = 'Girona' where client = 2");

        SaleEntry e = reEntry("0");
        e.txtdescripcio = "-";
        e.billing.type = DocType::Factura;
        e.billing.formaPago = "Transferencia";
        e.billing.entidad = "Banco Sabadell";
        e.billing.ccc = "00810001020000123456";
        e.txtBaseIRPF = "100,00";
        e.Text1 = "15";
        sales::clearLines(f.ctx);
        addLine(e, "2", "Tablero pino", "25", "", "21");
        addLine(e, "1,5", "Barniz", "12", "10", "21");
        addLine(e, "4", "Tornillos", "2,50", "", "10");
        addLine(e, "3", "Libros", "12", "", "4");
        addLine(e, "1", "Curso formación", "40", "", "0");
        sales::sumLines(f.ctx, e, true);
        const sales::PostingResult r = sales::GrabaApunt(f.ctx, e, ventas());
        ASSERT_TRUE(r.ok()) << r.error.toStdString();
        ASSERT_EQ(r.ordre, 1);
        // 66,20 + 13,90 + 3,44 + 10,00 + 1,00 + 0,14 + 36,00 + 1,44 + 0,18 + 40,00 - 15,00.
        ASSERT_EQ(e.txtTotal, "157,30");
    }

    report::RenderedReport render(const QString& layout, std::int64_t number, DocType type,
                                  const SaleEntry& e, const sales::RateCaptions& captions) {
        report::ReportJob job;
        job.ReportFileName = sourcePath(QStringLiteral("resources/reports/") + layout);
        job.DataFiles[0] = fact();
        job.Formulas = sales::documentFormulas(f.ctx, number, type, e, captions);
        return report::renderReport(job, f.ctx);
    }

    // Invoice 1 printed with `layout` as the print of a posted invoice opens it: the sale, its
    // lines in detalle_temp and the rates it was posted with.
    report::RenderedReport renderInvoice(const QString& layout) {
        sales::clearLines(f.ctx);
        const auto loaded = sales::Modifica_Venda(f.ctx, "1");
        EXPECT_TRUE(loaded.has_value());
        if (!loaded) return {};
        return render(layout, 1, DocType::Factura, loaded->entry,
                      sales::rateCaptions(f.ctx, loaded->Tiva, loaded->Tre));
    }

    // The texts of each page a line each, the pages apart by a form feed.
    static QString pagesText(const report::RenderedReport& r) {
        QStringList pages;
        for (int p = 0; p < r.pageCount(); ++p) pages << r.pageTexts(p).join(u'\n') + u'\n';
        return pages.join(u'\f');
    }

    // Compares with expected.txt of the case; on a difference the text is written beside
    // the test program as <case>.expected.txt, to look at and, when right, to copy over.
    static void expectGolden(const QString& caseName, const QString& actual) {
        const QString folder = sourcePath(QStringLiteral("tests/data/documents/%1/").arg(caseName));
        const auto expected = readTextFile(folder + QStringLiteral("expected.txt"));
        if (expected == actual) return;
        const QString saved = QDir::current().filePath(caseName + QStringLiteral(".expected.txt"));
        QFile out(saved);
        if (out.open(QIODevice::WriteOnly)) out.write(actual.toUtf8());
        ADD_FAILURE() << (folder + QStringLiteral("expected.txt")).toStdString()
                      << " differs; the actual text is in " << saved.toStdString();
    }
};

TEST_F(DocumentTemplates, EachTemplatePrintsTheFixedInvoice) {
    ASSERT_NO_FATAL_FAILURE(postInvoice());
    for (const QString name : {"f01", "f02"}) {
        SCOPED_TRACE(name.toStdString());
        const report::RenderedReport r = renderInvoice(name + ".rpt");
        EXPECT_EQ(r.pageCount(), 1);
        expectGolden(name, pagesText(r));
    }
}

TEST_F(DocumentTemplates, ALongDocumentRepeatsItsHeaderAndEndsWithItsSummary) {
    exec(fact(), "insert into Numeracion_Documentos (Ejercicio, Presupuesto) values (2026, 26)");
    SaleEntry e = entry("0");
    e.txtdescripcio = "-";
    e.billing.type = DocType::Presupuesto;
    sales::clearLines(f.ctx);
    for (int i = 1; i <= 60; ++i)
        addLine(e, "1", QStringLiteral("Artículo %1").arg(i), "10", "", "21");
    sales::sumLines(f.ctx, e, false);
    const sales::PostingResult posted = sales::GrabaApunt(f.ctx, e, ventas());
    ASSERT_TRUE(posted.ok()) << posted.error.toStdString();
    ASSERT_EQ(posted.ordre, 27);
    ASSERT_EQ(e.txtTotal, "726,00");

    sales::clearLines(f.ctx);
    const auto opened = sales::openDocument(f.ctx, DocType::Presupuesto, 27);
    ASSERT_TRUE(opened.has_value());
    const sales::RateCaptions captions = sales::rateCaptions(f.ctx, f.ctx.TipusIVA, f.ctx.TipusRE);
    const QString caption = M(6908).trimmed();
    const QString pageWord = M(6905).trimmed();
    for (const QString name : {"f01", "f02"}) {
        SCOPED_TRACE(name.toStdString());
        const report::RenderedReport r =
            render(name + ".rpt", 27, DocType::Presupuesto, *opened, captions);
        const int pages = r.pageCount();
        EXPECT_GT(pages, 1);
        int printedLines = 0;
        for (int p = 0; p < pages; ++p) {
            SCOPED_TRACE(p);
            const QStringList texts = r.pageTexts(p);
            EXPECT_TRUE(texts.contains(caption));
            EXPECT_TRUE(texts.contains("27"));
            EXPECT_TRUE(texts.contains("Ferreteria Puig"));
            EXPECT_TRUE(
                texts.contains(QStringLiteral("%1 %2 / %3").arg(pageWord).arg(p + 1).arg(pages)))
                << texts.join(u'|').toStdString();
            const bool last = p == pages - 1;
            EXPECT_EQ(texts.contains("TOTAL"), last);
            EXPECT_EQ(texts.contains("726,00 Euros"), last);
            for (const QString& t : texts)
                if (t.startsWith(QStringLiteral("Artículo "))) ++printedLines;
        }
        EXPECT_EQ(printedLines, 60);
    }
}

// What a QR reader finds on the first page of `report` printed to PDF, as a scanner would
// see the paper: the PDF rendered by pdftoppm, the picture read by zbarimg.
QString qrOfFirstPage(const report::RenderedReport& r, const QString& folder) {
    const QString pdf = folder + QStringLiteral("/page.pdf");
    report::writePdf(r, pdf);
    QProcess render;
    render.start(QStringLiteral("pdftoppm"),
                 {"-png", "-r", "200", "-f", "1", "-l", "1", "-singlefile", pdf, folder + "/page"});
    if (!render.waitForFinished(60000) || render.exitCode() != 0) return "pdftoppm failed";
    QProcess scan;
    scan.start(QStringLiteral("zbarimg"), {"--raw", "-q", folder + "/page.png"});
    if (!scan.waitForFinished(60000)) return "zbarimg failed";
    return QString::fromUtf8(scan.readAllStandardOutput()).trimmed();
}

TEST_F(DocumentTemplates, AnInvoiceCarriesTheQrOfItsRecordWhichAReaderReadsBack) {
    f.ctx.EmpresaNIF = "B12345674";
    ASSERT_NO_FATAL_FAILURE(postInvoice());
    const QString expected =
        "https://www2.agenciatributaria.gob.es/wlpl/TIKE-CONT/ValidarQR?"
        "nif=B12345674&numserie=1&fecha=15-03-2026&importe=172.30";
    ASSERT_EQ(verifactu::saleQrAddress(f.ctx, 1), expected);
    for (const QString name : {"f01", "f02"}) {
        SCOPED_TRACE(name.toStdString());
        const report::RenderedReport r = renderInvoice(name + ".rpt");
        EXPECT_TRUE(r.pageTexts(0).contains("VERI*FACTU"));
        EXPECT_EQ(qrOfFirstPage(r, f.unit.path()), expected);
    }
    // The receipt of the sale, with the formula its print gives it.
    sales::Prepara_SelFras(f.ctx, 1);
    report::ReportJob job;
    job.ReportFileName = sourcePath(QStringLiteral("resources/reports/recibo.rpt"));
    job.DataFiles[0] = frasOut();
    job.Formulas[0] = "qr_verifactu= '" + expected + "'";
    EXPECT_EQ(qrOfFirstPage(report::renderReport(job, f.ctx), f.unit.path()), expected);
}

TEST_F(DocumentTemplates, AQuoteHasNoQrAndTakesNoRoomForIt) {
    SaleEntry e = entry("0");
    e.txtdescripcio = "-";
    e.billing.type = DocType::Presupuesto;
    sales::clearLines(f.ctx);
    addLine(e, "1", "Tablero", "10", "", "21");
    sales::sumLines(f.ctx, e, false);
    const sales::PostingResult posted = sales::GrabaApunt(f.ctx, e, ventas());
    ASSERT_TRUE(posted.ok()) << posted.error.toStdString();
    const sales::RateCaptions captions = sales::rateCaptions(f.ctx, f.ctx.TipusIVA, f.ctx.TipusRE);
    const report::RenderedReport r =
        render("f01.rpt", posted.ordre, DocType::Presupuesto, e, captions);
    EXPECT_FALSE(r.pageTexts(0).contains("VERI*FACTU"));
    EXPECT_EQ(qrOfFirstPage(r, f.unit.path()), "");
}

}  // namespace
}  // namespace tallora::testing
