// The books' launches: the period refused before anything is rebuilt, the layout of each
// book and exercise mode, the formulas in their order, the withholding list that reads the
// journal as it was left, and each book of a fixed exercise against its expected rows,
// summary and printed text in tests/data/books/<book>/.
#include "books/vat_books.h"
#include "../report/report_fixture.h"
#include "books/journal_builder.h"
#include "books_fixture.h"
#include "context/file_tree.h"
#include "context/messages.h"

#include <QDir>

using namespace tallora;
using namespace tallora::books;
using namespace tallora::testing;

namespace {

class VatBooks : public BooksData {
protected:
    void SetUp() override {
        BooksData::SetUp();
        f.ctx.resourcesDir = sourcePath(QStringLiteral("resources/"));
    }

    // The fixed exercise of tests/data/books/exercise/.
    void loadExercise() {
        const QString data = sourcePath(QStringLiteral("tests/data/books/exercise/"));
        ReportFixture::loadRows(gest(), "Clients", data + "Clients.tsv");
        ReportFixture::loadRows(gest(), "Proveidors", data + "Proveidors.tsv");
        ReportFixture::loadRows(frasOut(), "FrasOut", data + "FrasOut.tsv");
        ReportFixture::loadRows(frasIn(), "FrasIN", data + "FrasIN.tsv");
        ReportFixture::loadRows(supl(), "Suplidos", data + "Suplidos.tsv");
    }

    BookRequest request(int from, int to, Series series = Series::All) {
        BookRequest r;
        r.fromMonth = from;
        r.toMonth = to;
        r.series = series;
        r.printDate = QDate(2026, 4, 20);
        r.print = {report::Destination::File, f.unit.filePath(QStringLiteral("book.pdf"))};
        r.progress = [this](int p) { steps << p; };
        return r;
    }

    report::ReportResult launch(Book book, const BookRequest& r) {
        job = {};
        return launchBook(f.ctx, dialogs, job, nullptr, book, r);
    }

    QList<int> steps;
    report::ReportJob job;
};

// Compares `actual` with the file; on a difference writes it (and the PDF it was read from)
// beside the test for a look.
void expectFile(const QString& folder, const QString& name, const QString& actual,
                const QString& pdf = {}) {
    const auto expected = readTextFile(folder + name);
    if (expected == actual) return;
    const QString saved = QDir::current().filePath(QDir(folder).dirName() + u'.' + name);
    QFile out(saved);
    if (out.open(QIODevice::WriteOnly)) out.write(actual.toUtf8());
    if (!pdf.isEmpty()) {
        QFile::remove(saved + QStringLiteral(".pdf"));
        QFile::copy(pdf, saved + QStringLiteral(".pdf"));
    }
    ADD_FAILURE() << (folder + name).toStdString() << " differs; the actual text is in "
                  << saved.toStdString();
}

}  // namespace

TEST_F(VatBooks, APeriodEndingBeforeItStartsIsRefusedBeforeAnythingIsRebuilt) {
    sale(1, "2026-01-10", "F-1", 121, {100, 0, 0});
    purchase(1, "2026-01-10", 60, 121, {100, 0, 0, 0});
    for (Book book : {Book::Sales, Book::Purchases, Book::Provisions}) {
        dialogs.clear();
        const auto result = launch(book, request(5, 4));
        EXPECT_EQ(result.status, report::ReportResult::Status::Cancelled);
        EXPECT_EQ(shown(), QStringList{"S:" + Missatge(f.ctx, 6142)});
    }
    EXPECT_FALSE(QFile::exists(llibre()));
    EXPECT_TRUE(steps.isEmpty());
    EXPECT_TRUE(job.ReportFileName.isEmpty());
}

TEST_F(VatBooks, EachBookTakesItsLayoutAndATicketsExerciseTheSimplifiedOnes) {
    const struct {
        Book book;
        const char* factures;
        const char* tickets;
    } cases[] = {{Book::Sales, "llibrei1.rpt", "llibrei2.rpt"},
                 {Book::SalesWithholding, "llibrer1.rpt", "llibrei2.rpt"},
                 {Book::Purchases, "llibred1.rpt", "llibred3.rpt"},
                 {Book::PurchasesVat, "llibrem2.rpt", "llibrem2.rpt"},
                 {Book::Investments, "llibrem2.rpt", "llibrem2.rpt"},
                 {Book::PurchasesWithholding, "llibrer2.rpt", "llibrer2.rpt"},
                 {Book::Provisions, "llibre_s.rpt", "llibre_s.rpt"},
                 {Book::Declaration, "500000.rpt", "500000.rpt"}};
    for (const auto& c : cases) {
        for (const char* mode : {"FACTURES", "TICKETS"}) {
            f.ctx.ModeExercici = QLatin1String(mode);
            ASSERT_TRUE(launch(c.book, request(1, 3)).ok()) << dialogs.lastText().toStdString();
            EXPECT_EQ(QFileInfo(job.ReportFileName).fileName(),
                      QLatin1String(f.ctx.ModeExercici == "TICKETS" ? c.tickets : c.factures));
            // No footer summary is computed for a TICKETS exercise.
            const bool summary = formulasOf(job).join(u'\n').contains(QStringLiteral("base1='"));
            const bool expected = c.book != Book::Provisions && c.book != Book::Declaration &&
                                  f.ctx.ModeExercici == "FACTURES";
            EXPECT_EQ(summary, expected) << c.factures << ' ' << mode;
        }
    }
}

TEST_F(VatBooks, TheSalesBookHasItsFormulasInOrderAndTheSummaryAfterThem) {
    f.ctx.Exercici = QStringLiteral("2026");
    ASSERT_TRUE(launch(Book::Sales, request(1, 3, Series::CreditNotes)).ok());
    const QStringList formulas = formulasOf(job);
    EXPECT_EQ(formulas.mid(0, 12),
              (QStringList{"lbl_titulo_gral= 'IVA REPERCUTIDO'", "lbl_bar_retencion= 'Retención'",
                           "lbl_bar_cuota_iva= 'Cuota IVA'", "lbl_bar_cuota_re= 'Cuota R.E.'",
                           "lbl_bar_cuota= 'Cuota'", "lbl_bar_importe= 'Importe'",
                           "Nom= 'Comercial Brenwick S.L.'", "NIF= 'B12345674'",
                           "lbl_ejercicio= 'Ejercicio: 2026'",
                           "periode= ' Periodo:  DESDE ENERO HASTA MARZO - Abonos'",
                           "lbl_titulo= 'Libro de ventas / ingresos'",
                           "lbl_bar_identificacion= 'Identificación'"}));
    EXPECT_TRUE(formulas.contains("lbl_fecha= '20/04/2026'"));
    EXPECT_EQ(formulas.at(formulas.indexOf("base1='0,00 '") - 1), "lbl_acumulado= 'ACUMULADO'");
    EXPECT_EQ(job.WindowTitle, Missatge(f.ctx, 6155));
    EXPECT_EQ(job.DataFiles[0], llibre());
    EXPECT_EQ(steps, (QList<int>{10, 20, 60, 95, 0}));
}

TEST_F(VatBooks, ABookTakesNoOrderFromTheReportBeforeIt) {
    sale(1, "2026-01-10", "F-1", 121, {100, 0, 0});
    job.SortFields = QStringList{QStringLiteral("+{cartera.data}")};
    const auto result = launchBook(f.ctx, dialogs, job, nullptr, Book::Sales, request(1, 3));
    EXPECT_TRUE(result.ok()) << result.error.toStdString();
    EXPECT_TRUE(job.SortFields.isEmpty());
}

TEST_F(VatBooks, ThePurchasesBooksNameTheirTitles) {
    ASSERT_TRUE(launch(Book::Investments, request(1, 12)).ok());
    EXPECT_EQ(formulasOf(job).mid(0, 2),
              (QStringList{"lbl_titulo= 'LIBRO DE INVERSIONES'", "lbl_titulo_gral= ''"}));
    EXPECT_EQ(job.WindowTitle, Missatge(f.ctx, 6174));
    ASSERT_TRUE(launch(Book::PurchasesWithholding, request(1, 12)).ok());
    EXPECT_EQ(formulasOf(job).mid(0, 2),
              (QStringList{"lbl_titulo= 'Retención IRPF'",
                           "lbl_titulo_gral= 'Listado de retenciones IRPF con acumulados por "
                           "proveedor'"}));
    ASSERT_TRUE(launch(Book::Purchases, request(1, 12)).ok());
    EXPECT_EQ(formulasOf(job).mid(0, 2), (QStringList{"lbl_titulo= 'LIBRO DE FACTURAS RECIBIDAS'",
                                                      "lbl_titulo_gral= 'IVA SOPORTADO'"}));
}

TEST_F(VatBooks, TheWithholdingListOfSuppliersReadsTheJournalAsTheLastBookLeftIt) {
    purchase(1, "2026-02-01", 62, 850000, {1000000, 0, 0, 0}, 150000);
    ASSERT_TRUE(launch(Book::PurchasesWithholding, request(1, 12)).ok());
    EXPECT_EQ(bookRows(f.ctx, Book::PurchasesWithholding).size(), 1);  // the names alone
    ASSERT_TRUE(launch(Book::Purchases, request(1, 12)).ok());
    ASSERT_TRUE(launch(Book::PurchasesWithholding, request(1, 12)).ok());
    EXPECT_EQ(bookRows(f.ctx, Book::PurchasesWithholding).size(), 2);
}

TEST_F(VatBooks, TheWithholdingListsNameThePartiesInAlphabeticalOrder) {
    purchase(1, "2026-02-01", 62, 850000, {1000000, 0, 0, 0}, 150000);
    purchase(2, "2026-02-02", 62, 850000, {1000000, 0, 0, 0}, 150000);
    exec(frasIn(), "update FrasIN set Proveidor = 2, NomProveidor = 'Aceites Sur' where Ordre = 2");
    ASSERT_TRUE(launch(Book::Purchases, request(1, 12)).ok());
    ASSERT_TRUE(launch(Book::PurchasesWithholding, request(1, 12)).ok());
    const QString text = pdfPages(job.PrintFileName).join(u'\n');
    const auto first = text.indexOf(QStringLiteral("Aceites Sur"));
    const auto second = text.indexOf(QStringLiteral("Olis del Camp"));
    EXPECT_TRUE(first >= 0 && second > first) << text.toStdString();
}

TEST_F(VatBooks, TheDeclarationKeepsThePartiesOverTheThresholdWithTheirQuarters) {
    exec(gest(),
         "insert into Clients (client, nom, nif, poblacio) values (1, 'Bar Centre', "
         "'B11111111', 'Vic')");
    sale(1, "2026-01-10", "F-1", 20000000, {0, 0, 0});
    sale(2, "2026-05-10", "F-2", 10050600, {0, 0, 0});  // 3.005,06 with the first: not over
    ASSERT_TRUE(launch(Book::Declaration, request(1, 12)).ok());
    EXPECT_EQ(bookRows(f.ctx, Book::Declaration).size(), 1);
    sale(3, "2026-11-10", "F-3", 100, {0, 0, 0});
    ASSERT_TRUE(launch(Book::Declaration, request(1, 12)).ok());
    EXPECT_EQ(bookRows(f.ctx, Book::Declaration).value(1),
              "CLIENTES\t1\tB11111111\tBar Centre\t2.000,00\t1.005,06\t0,00\t0,01\t3.005,07");
    EXPECT_EQ(job.DataFiles[7], llibre());
    EXPECT_EQ(job.DataFiles[9], gest());
    EXPECT_EQ(job.DataFiles[0], comptes());
}

TEST_F(VatBooks, TheDeclarationLeavesOutWhatOtherReturnsDeclare) {
    // Each over the threshold alone: a shop's takings without a customer, an intra-community
    // sale and a sale with withholding.
    sale(1, "2026-01-10", "F-1", 50000000, {0, 0, 0});
    sale(2, "2026-01-11", "F-2", 50000000, {0, 0, 0});
    sale(3, "2026-01-12", "F-3", 50000000, {0, 0, 0}, 7500000, 50000000);
    exec(frasOut(), "update FrasOut set Client = 0 where Ordre = 1");
    exec(frasOut(), "update FrasOut set Clasificacion = 'Intracomunitaria' where Ordre = 2");
    ASSERT_TRUE(launch(Book::Declaration, request(1, 12)).ok());
    EXPECT_EQ(bookRows(f.ctx, Book::Declaration).size(), 1);
    exec(frasOut(), "update FrasOut set Clasificacion = '' where Ordre = 2");
    ASSERT_TRUE(launch(Book::Declaration, request(1, 12)).ok());
    EXPECT_EQ(bookRows(f.ctx, Book::Declaration).value(1).section(u'\t', 8), "5.000,00");
}

TEST_F(VatBooks, EachBookOfTheFixedExerciseGivesItsExpectedRowsSummaryAndPages) {
    loadExercise();
    const struct {
        const char* folder;
        Book book;
        int from, to;
        Series series;
        const char* mode;
    } cases[] = {
        {"sales", Book::Sales, 1, 3, Series::All, "FACTURES"},
        {"sales_abonos", Book::Sales, 1, 12, Series::CreditNotes, "FACTURES"},
        {"sales_irpf", Book::SalesWithholding, 1, 3, Series::All, "FACTURES"},
        {"sales_tickets", Book::Sales, 1, 3, Series::All, "TICKETS"},
        {"purchases", Book::Purchases, 1, 3, Series::All, "FACTURES"},
        {"purchases_tickets", Book::Purchases, 1, 3, Series::All, "TICKETS"},
        {"purchases_vat", Book::PurchasesVat, 1, 3, Series::All, "FACTURES"},
        {"investments", Book::Investments, 1, 12, Series::All, "FACTURES"},
        {"purchases_irpf", Book::PurchasesWithholding, 1, 3, Series::All, "FACTURES"},
        {"provisions", Book::Provisions, 1, 3, Series::All, "FACTURES"},
        {"declaration", Book::Declaration, 1, 12, Series::All, "FACTURES"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.folder);
        f.ctx.ModeExercici = QLatin1String(c.mode);
        ASSERT_TRUE(launch(c.book, request(c.from, c.to, c.series)).ok())
            << dialogs.lastText().toStdString();
        const QString folder =
            sourcePath(QStringLiteral("tests/data/books/%1/").arg(QLatin1String(c.folder)));
        expectFile(folder, "rows.txt", bookRows(f.ctx, c.book).join(u'\n') + u'\n');
        QString summary = bookSummary(f.ctx, c.book).join(u'\n');
        expectFile(folder, "summary.txt", summary.isEmpty() ? summary : summary + u'\n');
        expectFile(folder, "expected.txt", pdfPages(job.PrintFileName).join(u'\f'),
                   job.PrintFileName);
        // The same book as a spreadsheet, read back by openpyxl.
        BookRequest sheet = request(c.from, c.to, c.series);
        sheet.print = {report::Destination::Xlsx, f.unit.filePath(QStringLiteral("book.xlsx"))};
        ASSERT_TRUE(launch(c.book, sheet).ok()) << dialogs.lastText().toStdString();
        expectFile(folder, "sheet.txt",
                   QString::fromUtf8(readXlsx(sheet.print.printFileName, true)));
    }
}
