// The extracts, the summary of balances and the operating statement of the fixed exercise of
// tests/data/books/exercise/, each against its expected rows and printed text in
// tests/data/statements/<report>/.
#include "../report/report_fixture.h"
#include "books/ledger_reports.h"
#include "books/operating_statement.h"
#include "books/trial_balance.h"
#include "books_fixture.h"
#include "context/file_tree.h"

#include <QDir>

using namespace tallora;
using namespace tallora::books;
using namespace tallora::testing;

namespace {

class Statements : public BooksData {
protected:
    void SetUp() override {
        BooksData::SetUp();
        f.ctx.resourcesDir = sourcePath(QStringLiteral("resources/"));
        f.ctx.Tesoreria = true;
        const QString data = sourcePath(QStringLiteral("tests/data/books/exercise/"));
        ReportFixture::loadRows(gest(), "Clients", data + "Clients.tsv");
        ReportFixture::loadRows(gest(), "Proveidors", data + "Proveidors.tsv");
        ReportFixture::loadRows(frasOut(), "FrasOut", data + "FrasOut.tsv");
        ReportFixture::loadRows(frasIn(), "FrasIN", data + "FrasIN.tsv");
        ReportFixture::loadRows(supl(), "Suplidos", data + "Suplidos.tsv");
    }
    QString pdf() const { return f.unit.filePath(QStringLiteral("statement.pdf")); }
    report::PrintRequest print() const { return {report::Destination::File, pdf()}; }
    QString xlsx() const { return f.unit.filePath(QStringLiteral("statement.xlsx")); }
    report::PrintRequest sheet() const { return {report::Destination::Xlsx, xlsx()}; }
    // The spreadsheet saved, as openpyxl reads it.
    QString sheetText() const { return QString::fromUtf8(readXlsx(xlsx(), true)); }

    ScriptedDialogs dialogs;
    report::ReportJob job;
};

// Compares `actual` with the file; on a difference writes it (and the PDF) beside the test.
void expectFile(const QString& folder, const QString& name, const QString& actual,
                const QString& pdf) {
    const auto expected = readTextFile(folder + name);
    if (expected == actual) return;
    const QString saved = QDir::current().filePath(QDir(folder).dirName() + u'.' + name);
    QFile out(saved);
    if (out.open(QIODevice::WriteOnly)) out.write(actual.toUtf8());
    QFile::remove(saved + QStringLiteral(".pdf"));
    QFile::copy(pdf, saved + QStringLiteral(".pdf"));
    ADD_FAILURE() << (folder + name).toStdString() << " differs; the actual text is in "
                  << saved.toStdString();
}

QString folderOf(const char* name) {
    return sourcePath(QStringLiteral("tests/data/statements/%1/").arg(QLatin1String(name)));
}

}  // namespace

TEST_F(Statements, EachExtractOfTheExerciseAsExpected) {
    const struct {
        const char* folder;
        Extract extract;
        bool ledger;
    } cases[] = {
        {"ledger_customers", Extract::Customers, true},
        {"invoices_customers", Extract::Customers, false},
        {"ledger_suppliers", Extract::Suppliers, true},
        {"invoices_suppliers", Extract::Suppliers, false},
        {"expenses", Extract::Expenses, true},
        {"sales", Extract::Sales, true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.folder);
        LedgerRequest r;
        r.extract = c.extract;
        r.ledger = c.ledger;
        r.printDate = QDate(2026, 4, 20);
        r.print = print();
        job = {};
        ASSERT_TRUE(launchLedger(f.ctx, dialogs, job, nullptr, r).ok())
            << dialogs.lastText().toStdString();
        expectFile(folderOf(c.folder), "rows.txt", ledgerRows(f.ctx, r).join(u'\n') + u'\n', pdf());
        expectFile(folderOf(c.folder), "expected.txt", pdfPages(pdf()).join(u'\f'), pdf());
        r.print = sheet();
        ASSERT_TRUE(launchLedger(f.ctx, dialogs, job, nullptr, r).ok());
        expectFile(folderOf(c.folder), "sheet.txt", sheetText(), pdf());
    }
}

TEST_F(Statements, TheSummaryOfBalancesOfTheExerciseAsExpected) {
    ASSERT_TRUE(launchTrialBalance(f.ctx, dialogs, job, nullptr, QDate(2026, 4, 20), print()).ok())
        << dialogs.lastText().toStdString();
    const auto totals = Genera_Saldos(f.ctx, dialogs);
    ASSERT_TRUE(totals);
    expectFile(folderOf("trial_balance"), "rows.txt",
               trialBalanceRows(f.ctx, *totals).join(u'\n') + u'\n', pdf());
    expectFile(folderOf("trial_balance"), "expected.txt", pdfPages(pdf()).join(u'\f'), pdf());
    ASSERT_TRUE(launchTrialBalance(f.ctx, dialogs, job, nullptr, QDate(2026, 4, 20), sheet()).ok());
    expectFile(folderOf("trial_balance"), "sheet.txt", sheetText(), pdf());
}

TEST_F(Statements, TheOperatingStatementOfEachLevelAsExpected) {
    // The chart of the fixed exercise: its invoices' accounts by family.
    for (const char* table :
         {"Ingresos", "Compres", "Serveis", "Personal", "Tributs", "Amortitzacions", "Inversions"})
        exec(comptes(), QStringLiteral("delete from %1").arg(QLatin1String(table)));
    exec(comptes(),
         "insert into Ingresos (Grup, NomGrup, Compte, NomCompte, Tipus) values "
         "(70, 'Ventas', 1, 'Ventas de mercaderías', 'Ventas'), "
         "(75, 'Otros ingresos', 2, 'Alquileres cobrados', 'Otros ingresos')");
    exec(comptes(),
         "insert into Compres (Grup, NomGrup, Compte, NomCompte, Tipus) values "
         "(60, 'Compras', 1, 'Compras', 'Compras')");
    exec(comptes(),
         "insert into Serveis (Grup, NomGrup, Compte, NomCompte, Tipus) values "
         "(62, 'Servicios exteriores', 1, 'Servicios exteriores', 'Servicios')");
    exec(comptes(),
         "insert into Tributs (Grup, NomGrup, Compte, NomCompte, Tipus) values "
         "(63, 'Tributos', 1, 'Tributos', 'Tributos')");
    exec(comptes(),
         "insert into Amortitzacions (Grup, NomGrup, Compte, NomCompte, Tipus) values "
         "(68, 'Amortizaciones', 1, 'Amortizaciones', 'Amortizaciones')");
    exec(comptes(),
         "insert into Inversions (Grup, NomGrup, Compte, NomCompte, Tipus) values "
         "(20, 'Inmovilizado', 1, 'Inmovilizado', 'Inmovilizado')");
    for (int level : {1, 2, 3}) {
        SCOPED_TRACE(level);
        const QByteArray name = QStringLiteral("operating_statement_%1").arg(level).toLatin1();
        OperatingRequest r{level, 1, 3, QDate(2026, 4, 20), print()};
        job = {};
        ASSERT_TRUE(launchOperatingStatement(f.ctx, dialogs, job, nullptr, r).ok())
            << dialogs.lastText().toStdString();
        expectFile(folderOf(name.constData()), "rows.txt",
                   operatingStatementRows(f.ctx).join(u'\n') + u'\n', pdf());
        expectFile(folderOf(name.constData()), "expected.txt", pdfPages(pdf()).join(u'\f'), pdf());
        r.print = sheet();
        ASSERT_TRUE(launchOperatingStatement(f.ctx, dialogs, job, nullptr, r).ok());
        expectFile(folderOf(name.constData()), "sheet.txt", sheetText(), pdf());
    }
}
