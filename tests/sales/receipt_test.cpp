// The receipt of a sale: the texts of the receipt frame, the stored query SelFras, and the
// print, rendered to a PDF and read back as text against tests/data/reports/recibo/<case>/.
#include "sales/receipt.h"
#include "context/dialogs.h"
#include "context/messages.h"
#include "report/pdf_output.h"
#include "store/database.h"
#include "verifactu/sale_qr.h"

#include "../report/report_fixture.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

#include <gtest/gtest.h>

using namespace tallora;
using namespace tallora::sales;
using tallora::testing::ReportFixture;
using tallora::testing::sourcePath;

namespace {

// An amount written with a decimal point, as Money.
Money amount(const char* text) {
    const auto m = Money::parse(QString::fromLatin1(text), u'.');
    tallora::testing::require(m.has_value(), QStringLiteral("bad amount ") + text);
    return *m;
}

// One sale of FrasOut; amounts with a decimal point, rates in percent.
struct Sale {
    int ordre = 0;
    QDate data;
    int client = 0;
    QString nomClient, descripcio, nif, direccio, poblacio;
    std::array<QString, 5> concepte;
    std::array<const char*, 3> base{"0", "0", "0"}, tiva{"21", "10", "4"}, iva{"0", "0", "0"},
        tre{"5.2", "1.4", "0.5"}, re{"0", "0", "0"};
    const char* baseIrpf = "0";
    const char* tipusIrpf = "0";
    const char* retencio = "0";
    const char* total = "0";
};

void insertSale(const QString& frasOut, const Sale& s) {
    store::Database d = store::Database::open(frasOut);
    store::Statement st = d.prepare(QStringLiteral(
        "insert into FrasOut (NomClient, Descripcio, NIF, direccio, poblacio, concepte1, "
        "concepte2, concepte3, concepte4, concepte5, Ordre, data, Client, "
        "Base1, TIva1, Iva1, TRE1, RE1, Base2, TIva2, Iva2, TRE2, RE2, "
        "Base3, TIva3, Iva3, TRE3, RE3, BaseIRPF, TipusIRPF, Retencio, TOTAL) "
        "values (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, "
        "?, ?, ?, ?, ?, ?)"));
    int i = 0;
    const auto bind = [&st, &i](const auto& value) { st.bind(++i, value); };
    for (const QString* text : {&s.nomClient, &s.descripcio, &s.nif, &s.direccio, &s.poblacio})
        bind(*text);
    for (const QString& c : s.concepte) bind(c);
    bind(s.ordre);
    bind(s.data);
    bind(s.client);
    for (int r = 0; r < 3; ++r)
        for (const char* value : {s.base[r], s.tiva[r], s.iva[r], s.tre[r], s.re[r]})
            bind(amount(value));
    for (const char* value : {s.baseIrpf, s.tipusIrpf, s.retencio, s.total}) bind(amount(value));
    st.execute();
}

// The sale of the receipt with the company's header: two rates, no RE, no withholding.
Sale shopSale() {
    Sale s;
    s.ordre = 12;
    s.data = QDate(2026, 3, 5);
    s.client = 7;
    s.nomClient = QStringLiteral("Ferretería Sánchez");
    s.descripcio = QStringLiteral("12/A");
    s.nif = QStringLiteral("B17555123");
    s.direccio = QStringLiteral("Carrer de la Força, 8");
    s.poblacio = QStringLiteral("Girona");
    s.concepte = {QStringLiteral("Reparación de persiana del escaparate"),
                  QStringLiteral("Cambio de cerradura y tres copias de llave"),
                  QStringLiteral("Desplazamiento"), QString(),
                  QStringLiteral("Pagado en efectivo")};
    s.base = {"1000", "22.33", "0"};
    s.iva = {"210", "2.23", "0"};
    s.total = "1234.56";
    return s;
}

// A professional's fee with RE and withholding, for paper with a printed header.
Sale feeSale() {
    Sale s;
    s.ordre = 13;
    s.data = QDate(2026, 12, 31);
    s.client = 9;
    s.nomClient = QStringLiteral("Drogueria d'Or");
    s.descripcio = QStringLiteral("13");
    s.nif = QStringLiteral("38111222K");
    s.direccio = QStringLiteral("Plaça Major, 1");
    s.poblacio = QStringLiteral("Figueres");
    s.concepte = {QStringLiteral("Asesoramiento fiscal del cuarto trimestre: preparación de los "
                                 "modelos de IVA y de retenciones y revisión de los libros de "
                                 "facturas emitidas"),
                  QString(), QString(), QString(), QString()};
    s.base = {"1000", "0", "0"};
    s.iva = {"210", "0", "0"};
    s.re = {"52", "0", "0"};
    s.baseIrpf = "1000";
    s.tipusIrpf = "15";
    s.retencio = "150";
    s.total = "1112";
    return s;
}

// A printer that is a PDF file: what reaches it is written to `path`.
class PdfPrinter : public report::ReportOutput {
public:
    explicit PdfPrinter(QString path) : path_(std::move(path)) {}
    void showWindow(std::shared_ptr<const report::RenderedReport>) override { ++windows; }
    bool printWithDialog(const report::RenderedReport& report, int c) override {
        ++prints;
        copies = c;
        title = report.title;
        report::writePdf(report, path_);
        return true;
    }
    const QString& path() const { return path_; }
    int prints = 0;
    int windows = 0;
    int copies = 0;
    QString title;

private:
    QString path_;
};

// Every row of `sql` on `path`, its columns joined by '|'.
QStringList rows(const QString& path, const QString& sql) {
    store::Database d = store::Database::open(path);
    store::Statement st = d.prepare(sql);
    QStringList out;
    while (st.next()) {
        QStringList cols;
        for (int c = 0; c < st.columnCount(); ++c) cols << st.text(c);
        out << cols.join(u'|');
    }
    return out;
}

class ReceiptTest : public ::testing::Test {
protected:
    ReceiptTest() : printer(f.file(QStringLiteral("recibo.pdf"))) {
        f.ctx.EmpresaNom = QStringLiteral("Comercial Brenwick S.L.");
        f.ctx.EmpresaNIF = QStringLiteral("B12345674");
        f.ctx.EmpresaDomicili = QStringLiteral("Avinguda de Jaume I, 44");
        f.ctx.EmpresaCP = QStringLiteral("17001");
        f.ctx.EmpresaPoblacio = QStringLiteral("Girona");
        f.ctx.DocsFactura = true;
        store::Database d = store::Database::open(f.gest());
        d.execute(QStringLiteral(
            "insert into Clients (client, nom, direccio, poblacio, NIF) values "
            "(7, 'Ferretería Sánchez', 'Carrer de la Força, 8', 'Girona', 'B17555123'), "
            "(9, 'Drogueria d''Or', 'Plaça Major, 1', 'Figueres', '38111222K')"));
    }

    QString frasOut() const { return f.ctx.exerciseFile(schema::db::FrasOut); }

    // The receipt of `number` printed to the PDF printer; its pages as text.
    QStringList print(int number) {
        const report::ReportResult r = Imprimeix_Rebut(f.ctx, dialogs, job, &printer, number);
        EXPECT_TRUE(r.ok()) << r.error.toStdString();
        EXPECT_EQ(r.pages, 1);
        EXPECT_EQ(printer.prints, 1);
        EXPECT_TRUE(dialogs.shown().empty());
        return tallora::testing::pdfPages(printer.path());
    }

    // Compares the text with expected.txt of the case; on a difference the text and the PDF
    // are written beside the test program, to look at and, when right, to take as expected.
    void expectGolden(const QString& caseName, const QStringList& pages) {
        const QString folder = sourcePath(QStringLiteral("tests/data/reports/recibo/") + caseName);
        const QString actual = pages.join(u'\f');
        const auto expected = readTextFile(folder + QStringLiteral("/expected.txt"));
        if (expected != actual) {
            const QString saved =
                QDir::current().filePath(caseName + QStringLiteral(".actual.txt"));
            QFile out(saved);
            if (out.open(QIODevice::WriteOnly)) out.write(actual.toUtf8());
            QFile::remove(saved.chopped(4) + QStringLiteral(".pdf"));
            QFile::copy(printer.path(), saved.chopped(4) + QStringLiteral(".pdf"));
            ADD_FAILURE() << "the receipt differs from " << folder.toStdString()
                          << "/expected.txt; it was written to " << saved.toStdString();
        }
    }

    ReportFixture f;
    ScriptedDialogs dialogs;
    report::ReportJob job;
    PdfPrinter printer;
};

}  // namespace

TEST_F(ReceiptTest, TheFrameShowsAKnownCustomer) {
    const auto texts = Mostra_Rebut(f.ctx, QStringLiteral("Ferretería Sánchez"),
                                    QStringLiteral("12"), QDate(2026, 3, 5));
    ASSERT_TRUE(texts.has_value());
    EXPECT_EQ(texts->title, QStringLiteral("RECIBO: 12"));
    EXPECT_EQ(texts->lbl_rebut_client, QStringLiteral("7  Ferretería Sánchez"));
    EXPECT_EQ(texts->lbl_rebut_domicili, QStringLiteral("Carrer de la Força, 8"));
    EXPECT_EQ(texts->lbl_rebut_poblacio, QStringLiteral("Girona"));
    EXPECT_EQ(texts->lbl_rebut_nif, QStringLiteral("B17555123"));
    EXPECT_EQ(texts->lbl_rebut_data, QStringLiteral("FECHA: 05/03/2026"));
}

TEST_F(ReceiptTest, TheNameIsMatchedAsTheStoreComparesTexts) {
    // Without regard to case, accents included, and a quote is only a character.
    const auto upper = Mostra_Rebut(f.ctx, QStringLiteral("FERRETERÍA SÁNCHEZ"),
                                    QStringLiteral("12"), QDate(2026, 3, 5));
    ASSERT_TRUE(upper.has_value());
    EXPECT_EQ(upper->lbl_rebut_client, QStringLiteral("7  Ferretería Sánchez"));
    const auto quoted = Mostra_Rebut(f.ctx, QStringLiteral("Drogueria d'Or"),
                                     QStringLiteral("40/B"), QDate(2026, 12, 31));
    ASSERT_TRUE(quoted.has_value());
    EXPECT_EQ(quoted->lbl_rebut_client, QStringLiteral("9  Drogueria d'Or"));
    EXPECT_EQ(quoted->title, QStringLiteral("RECIBO: 40/B"));
    EXPECT_EQ(quoted->lbl_rebut_data, QStringLiteral("FECHA: 31/12/2026"));
}

TEST_F(ReceiptTest, AnUnknownCustomerOpensNoFrame) {
    EXPECT_FALSE(
        Mostra_Rebut(f.ctx, QStringLiteral("Ferretería"), QStringLiteral("12"), QDate(2026, 3, 5)));
    EXPECT_FALSE(Mostra_Rebut(f.ctx, QStringLiteral("x' or '1'='1"), QStringLiteral("12"),
                              QDate(2026, 3, 5)));
    EXPECT_FALSE(Mostra_Rebut(f.ctx, QString(), QStringLiteral("12"), QDate(2026, 3, 5)));
}

TEST_F(ReceiptTest, ADashForDescriptionIsANewReceipt) {
    const auto texts = Mostra_Rebut(f.ctx, QStringLiteral("Ferretería Sánchez"),
                                    QStringLiteral("-"), QDate(2026, 1, 9));
    ASSERT_TRUE(texts.has_value());
    EXPECT_EQ(texts->title, QStringLiteral("RECIBO: NUEVO RECIBO"));
    EXPECT_EQ(texts->lbl_rebut_data, QStringLiteral("FECHA: 09/01/2026"));
    // Only a lone dash: a description that holds one is shown as it is.
    EXPECT_EQ(Mostra_Rebut(f.ctx, QStringLiteral("Ferretería Sánchez"), QStringLiteral("-1"),
                           QDate(2026, 1, 9))
                  ->title,
              QStringLiteral("RECIBO: -1"));
}

TEST_F(ReceiptTest, SelFrasGivesTheOneSaleOfTheNumberAndIsReplacedEachTime) {
    Sale s = shopSale();
    for (int ordre : {11, 12, 14}) {
        s.ordre = ordre;
        s.descripcio = QString::number(ordre);
        insertSale(frasOut(), s);
    }
    // The same number twice (Ordre is not unique): the query still gives one row.
    s.ordre = 14;
    s.descripcio = QStringLiteral("14 bis");
    insertSale(frasOut(), s);

    Prepara_SelFras(f.ctx, 12);
    EXPECT_EQ(rows(frasOut(), QStringLiteral("select Ordre, Descripcio, TOTAL from SelFras")),
              QStringList{QStringLiteral("12|12|12345600")});
    Prepara_SelFras(f.ctx, 14);
    const QStringList second = rows(frasOut(), QStringLiteral("select Ordre from SelFras"));
    EXPECT_EQ(second, QStringList{QStringLiteral("14")});
    Prepara_SelFras(f.ctx, 13);
    EXPECT_TRUE(rows(frasOut(), QStringLiteral("select * from SelFras")).isEmpty());
    // One stored query, under its own spelling.
    EXPECT_EQ(rows(frasOut(), QStringLiteral("select name from sqlite_master where type='view'")),
              QStringList{QStringLiteral("SelFras")});
}

TEST_F(ReceiptTest, SelFrasReplacesTheQueryOfAnInquiry) {
    insertSale(frasOut(), shopSale());
    store::Database::open(frasOut()).execute(
        QStringLiteral("create view selfras as select * from FrasOut where Ordre > 0"));
    Prepara_SelFras(f.ctx, 12);
    EXPECT_EQ(rows(frasOut(), QStringLiteral("select Ordre from SelFras")),
              QStringList{QStringLiteral("12")});
    EXPECT_EQ(rows(frasOut(), QStringLiteral("select name from sqlite_master where type='view'")),
              QStringList{QStringLiteral("SelFras")});
}

TEST_F(ReceiptTest, TheJobFollowsTheReceiptsContract) {
    insertSale(frasOut(), shopSale());
    f.ctx.MargeEsquerre = 22;
    f.ctx.MargeDret = 11;
    f.ctx.MargeSuperior = 17;
    f.ctx.MargeInferior = 13;
    // What a previous report left on the shell's job.
    job.DataFiles[5] = f.gest();
    job.Formulas[10] = QStringLiteral("lbl_bar_precio= 'Precio'");
    job.Formulas[50] = QStringLiteral("lbl_vencimiento= 'Vencimiento: '");
    job.SelectionFormula = QStringLiteral("client = 999");
    job.Destination = report::Destination::Window;

    print(12);
    EXPECT_EQ(job.ReportFileName, sourcePath(QStringLiteral("resources/reports/recibo.rpt")));
    EXPECT_EQ(job.DataFiles[0], frasOut());
    for (int i = 1; i < report::ReportJob::kDataFiles; ++i)
        EXPECT_TRUE(job.DataFiles[i].isEmpty()) << i;
    // The fifth is the sale's VERI*FACTU address, empty for a sale without a record.
    EXPECT_EQ(job.Formulas[4], "qr_verifactu= '" + verifactu::saleQrAddress(f.ctx, 12) + "'");
    for (int i = 5; i <= 50; ++i) EXPECT_TRUE(job.Formulas[i].isEmpty()) << i;
    EXPECT_EQ(job.Formulas[0], QStringLiteral("nom= 'Comercial Brenwick S.L.'"));
    EXPECT_EQ(job.Formulas[1], QStringLiteral("nif= 'B12345674'"));
    EXPECT_EQ(job.Formulas[2], QStringLiteral("pob= '17001-Girona'"));
    EXPECT_EQ(job.Formulas[3], QStringLiteral("dom= 'Avinguda de Jaume I, 44'"));
    EXPECT_TRUE(job.SelectionFormula.isEmpty());
    EXPECT_EQ(job.WindowTitle, QStringLiteral("RECIBO"));
    EXPECT_EQ(job.Destination, report::Destination::Printer);
    EXPECT_EQ(job.MarginLeft, 22);
    EXPECT_EQ(job.MarginRight, 11);
    EXPECT_EQ(job.MarginTop, 17);
    EXPECT_EQ(job.MarginBottom, 13);
    EXPECT_EQ(printer.windows, 0);
    EXPECT_EQ(printer.copies, 1);
    EXPECT_EQ(printer.title, QStringLiteral("RECIBO"));
}

TEST_F(ReceiptTest, TheReceiptCarriesCompanyCustomerConceptsAndTotal) {
    insertSale(frasOut(), shopSale());
    insertSale(frasOut(), feeSale());
    const QStringList pages = print(12);
    ASSERT_EQ(pages.size(), 1);
    const QString& page = pages[0];
    for (const char* text : {"Comercial Brenwick S.L.",
                             "B12345674",
                             "Avinguda de Jaume I, 44",
                             "17001-Girona",
                             "RECIBO",
                             "12/A",
                             "05/03/2026",
                             "Ferretería Sánchez",
                             "NIF: B17555123",
                             "Carrer de la Força, 8",
                             "Reparación de persiana del escaparate",
                             "Cambio de cerradura y tres copias de llave",
                             "Desplazamiento",
                             "Pagado en efectivo",
                             "1.000,00",
                             "21,00 %",
                             "210,00",
                             "22,33",
                             "10,00 %",
                             "2,23"})
        EXPECT_TRUE(page.contains(QString::fromUtf8(text))) << text;
    // The total, on the line of its caption.
    EXPECT_TRUE(page.contains(QRegularExpression(QStringLiteral("TOTAL\\s+1\\.234,56\\n"))))
        << page.toStdString();
    // Only the sale of the number.
    EXPECT_FALSE(page.contains(QStringLiteral("Drogueria")));
    expectGolden(QStringLiteral("con_membrete"), pages);
}

TEST_F(ReceiptTest, PaperWithItsOwnHeaderGetsNoCompanyData) {
    f.ctx.DocsFactura = false;
    insertSale(frasOut(), shopSale());
    insertSale(frasOut(), feeSale());
    const QStringList pages = print(13);
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(job.Formulas[i], QStringList({"nom= ''", "nif= ''", "pob= ''", "dom= ''"})[i]);
    ASSERT_EQ(pages.size(), 1);
    const QString& page = pages[0];
    for (const char* text :
         {"Comercial Brenwick", "B12345674", "Avinguda de Jaume I", "17001", "Ferretería"})
        EXPECT_FALSE(page.contains(QString::fromUtf8(text))) << text;
    for (const char* text : {"Drogueria d'Or", "NIF: 38111222K", "Plaça Major, 1", "Figueres",
                             "31/12/2026", "Asesoramiento fiscal del cuarto trimestre",
                             "libros de facturas emitidas", "5,20 %", "52,00", "15,00 %", "150,00"})
        EXPECT_TRUE(page.contains(QString::fromUtf8(text))) << text;
    EXPECT_TRUE(page.contains(QRegularExpression(QStringLiteral("TOTAL\\s+1\\.112,00\\n"))))
        << page.toStdString();
    expectGolden(QStringLiteral("sin_membrete"), pages);
}

TEST_F(ReceiptTest, TheTotalFollowsTheDecimalSetting) {
    f.ctx.Decimal = 46;
    insertSale(frasOut(), shopSale());
    const QStringList pages = print(12);
    ASSERT_EQ(pages.size(), 1);
    EXPECT_TRUE(pages[0].contains(QRegularExpression(QStringLiteral("TOTAL\\s+1,234\\.56\\n"))))
        << pages[0].toStdString();
}

TEST_F(ReceiptTest, WithoutAPrinterNothingIsPrinted) {
    insertSale(frasOut(), shopSale());
    job.ReportFileName = QStringLiteral("de un informe anterior.rpt");
    const report::ReportResult r =
        Imprimeix_Rebut(f.ctx, dialogs, job, &printer, 12, report::PrintCapabilities{{}, false});
    EXPECT_EQ(r.status, report::ReportResult::Status::Cancelled);
    EXPECT_EQ(printer.prints, 0);
    EXPECT_EQ(printer.windows, 0);
    EXPECT_FALSE(QFileInfo::exists(printer.path()));
    ASSERT_EQ(dialogs.shown().size(), 1u);
    EXPECT_EQ(dialogs.shown()[0].kind, ScriptedDialogs::Shown::Kind::Stop);
    EXPECT_EQ(dialogs.shown()[0].text, Missatge(f.ctx, 6640));
    EXPECT_EQ(job.ReportFileName, QStringLiteral("de un informe anterior.rpt"));
}

TEST_F(ReceiptTest, AnInstalledPrinterIsEnoughWithoutThePdfPrinter) {
    insertSale(frasOut(), shopSale());
    const report::ReportResult r =
        Imprimeix_Rebut(f.ctx, dialogs, job, &printer, 12,
                        report::PrintCapabilities{{QStringLiteral("Mostrador")}, false});
    EXPECT_TRUE(r.ok()) << r.error.toStdString();
    EXPECT_EQ(printer.prints, 1);
    EXPECT_TRUE(dialogs.shown().empty());
}
