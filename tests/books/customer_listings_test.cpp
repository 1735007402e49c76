// The customer and supplier lists, from a gest.mdb made here to a PDF read back as text, and
// compared with the expected text of each case in tests/data/reports/listings/<case>/.
#include "books/customer_listings.h"
#include "context/dialogs.h"
#include "context/messages.h"
#include "report/report_helpers.h"
#include "report_fixture.h"

#include <QDirIterator>
#include <QRegularExpression>

#include <gtest/gtest.h>

using namespace tallora;
using namespace tallora::books;
using tallora::testing::ReportFixture;
using tallora::testing::sourcePath;

namespace {

struct ListingCase {
    QString folder;
    QMap<QString, QString> request;
    QString table;
    QList<QStringList> rows;  // the fields of the rows file, the name first
    bool customers() const { return request.value(QStringLiteral("listing")) == u"clients"; }
    ListingKind kind() const {
        return request.value(QStringLiteral("kind")) == u"domicile" ? ListingKind::Domicile
                                                                    : ListingKind::Contacts;
    }
};

ListingCase readCase(const QString& folder) {
    ListingCase c;
    c.folder = folder;
    for (const QString& line :
         splitLines(readTextFile(folder + QStringLiteral("/request.tsv")).value_or(QString()))) {
        if (line.startsWith(u'#') || line.isEmpty()) continue;
        c.request.insert(line.section(u'\t', 0, 0), line.section(u'\t', 1));
    }
    c.table = c.customers() ? QStringLiteral("Clients") : QStringLiteral("Proveidors");
    const QString rows = folder + (c.customers() ? QStringLiteral("/clients.tsv")
                                                 : QStringLiteral("/proveidors.tsv"));
    const QStringList lines = splitLines(readTextFile(rows).value_or(QString()));
    for (qsizetype i = 1; i < lines.size(); ++i) c.rows << lines[i].split(u'\t');
    return c;
}

// Runs a case in its own exercise, to a PDF, and gives its pages as text.
QStringList runCase(const ListingCase& c, ReportFixture& fx, const QString& pdf) {
    EXPECT_TRUE(fx.ctx.setIdioma(c.request.value(QStringLiteral("language"))));
    fx.ctx.EmpresaNom = c.request.value(QStringLiteral("company"));
    ReportFixture::loadRows(fx.gest(), c.table,
                            c.folder + (c.customers() ? QStringLiteral("/clients.tsv")
                                                      : QStringLiteral("/proveidors.tsv")));
    ListingRequest request{c.kind(),
                           QDate::fromString(c.request.value(QStringLiteral("date")), Qt::ISODate),
                           report::Destination::File, pdf};
    ScriptedDialogs dialogs;
    report::ReportJob job;
    const report::ReportResult r = c.customers()
                                       ? btnLListatClients(fx.ctx, dialogs, job, nullptr, request)
                                       : btnLListatProv(fx.ctx, dialogs, job, nullptr, request);
    EXPECT_TRUE(r.ok()) << r.error.toStdString();
    EXPECT_TRUE(dialogs.shown().empty());
    return tallora::testing::pdfPages(pdf);
}

class ListingTest : public ::testing::Test {
protected:
    ReportFixture f;
    ScriptedDialogs dialogs;
    report::ReportJob job;
};

QStringList caseFolders() {
    QStringList folders;
    QDirIterator it(sourcePath(QStringLiteral("tests/data/reports/listings")),
                    QDir::Dirs | QDir::NoDotAndDotDot);
    while (it.hasNext()) folders << it.next();
    folders.sort();
    return folders;
}

}  // namespace

TEST_F(ListingTest, EveryListingShowsItsTitleFormulasRowsAndRepeatedHeaders) {
    const QStringList folders = caseFolders();
    ASSERT_EQ(folders.size(), 4);
    for (const QString& folder : folders) {
        SCOPED_TRACE(folder.toStdString());
        ReportFixture local;
        const ListingCase c = readCase(folder);
        const QStringList pages = runCase(c, local, local.file(QStringLiteral("listado.pdf")));
        const QDate printDate =
            QDate::fromString(c.request.value(QStringLiteral("date")), Qt::ISODate);
        ASSERT_EQ(pages.size(), 2);
        const WorkingContext& ctx = local.ctx;
        QStringList headers{Missatge(ctx, 6100), Missatge(ctx, 6104)};
        if (c.kind() == ListingKind::Domicile)
            headers << Missatge(ctx, 6102) << Missatge(ctx, 6103);
        else
            headers << Missatge(ctx, 6107) << Missatge(ctx, 6108) << Missatge(ctx, 6112);
        const QString title = Missatge(ctx, c.customers() ? 6101 : 6111);
        const QString date = printDate.toString(QStringLiteral("dd/MM/yyyy"));
        for (int p = 0; p < 2; ++p) {
            EXPECT_TRUE(pages[p].contains(title)) << p;
            EXPECT_TRUE(pages[p].contains(local.ctx.EmpresaNom)) << p;
            EXPECT_TRUE(pages[p].contains(date)) << p;
            for (const QString& h : headers)
                EXPECT_TRUE(pages[p].contains(h)) << h.toStdString() << " on page " << p + 1;
            EXPECT_TRUE(
                pages[p].contains(QStringLiteral("%1 %2 de 2").arg(Missatge(ctx, 6113)).arg(p + 1)))
                << p;
        }
        // Every row: its code, then its name, on one line.
        const QStringList lines = (pages[0] + pages[1]).split(u'\n');
        for (int i = 0; i < c.rows.size(); ++i) {
            const QString& name = c.rows[i][0];
            const QRegularExpression row(
                QStringLiteral("^\\s*%1\\s+%2").arg(i + 1).arg(QRegularExpression::escape(name)));
            EXPECT_TRUE(std::any_of(lines.begin(), lines.end(),
                                    [&](const QString& l) { return row.match(l).hasMatch(); }))
                << "row " << i + 1 << " " << name.toStdString();
        }
        // Long texts are cut visibly.
        EXPECT_TRUE((pages[0] + pages[1]).contains(QChar(0x2026)));
    }
}

TEST_F(ListingTest, EachListingMatchesItsExpectedText) {
    for (const QString& folder : caseFolders()) {
        SCOPED_TRACE(folder.toStdString());
        ReportFixture local;
        const QString pdf = local.file(QStringLiteral("listado.pdf"));
        const QString actual = runCase(readCase(folder), local, pdf).join(u'\f');
        const auto expected = readTextFile(folder + QStringLiteral("/expected.txt"));
        if (expected != actual) {
            // The text and the PDF beside it, to look at and, when right, to take as expected.txt.
            const QString saved = QDir::current().filePath(QFileInfo(folder).fileName() +
                                                           QStringLiteral(".actual.txt"));
            QFile out(saved);
            if (out.open(QIODevice::WriteOnly)) out.write(actual.toUtf8());
            QFile::remove(saved.chopped(4) + QStringLiteral(".pdf"));
            QFile::copy(pdf, saved.chopped(4) + QStringLiteral(".pdf"));
            ADD_FAILURE() << "the listing differs from expected.txt; it was written to "
                          << saved.toStdString();
        }
    }
}

TEST_F(ListingTest, TheJobFollowsTheListingsContract) {
    f.ctx.EmpresaNom = QStringLiteral("Comercial Brenwick S.L.");
    fillCustomerListing(job, f.ctx, ListingKind::Contacts, QDate(2026, 3, 15));
    EXPECT_EQ(job.ReportFileName, sourcePath(QStringLiteral("resources/reports/cli_con.rpt")));
    EXPECT_EQ(job.DataFiles[0], f.gest());
    for (int i = 1; i < report::ReportJob::kDataFiles; ++i) EXPECT_TRUE(job.DataFiles[i].isEmpty());
    QStringList formulas;
    for (const QString& text : job.Formulas)
        if (!text.isEmpty()) formulas << text;
    EXPECT_EQ(formulas, (QStringList{
                            QStringLiteral("Nom= 'Comercial Brenwick S.L.'"),
                            QStringLiteral("lbl_codigo= 'CODIGO'"),
                            QStringLiteral("lbl_titulo= 'CLIENTES'"),
                            QStringLiteral("lbl_razon_social= 'NOMBRE O RAZON SOCIAL'"),
                            QStringLiteral("lbl_fecha= '15/03/2026'"),
                            QStringLiteral("lbl_pagina= 'Página'"),
                            QStringLiteral("lbl_email= 'CORREO ELECTRONICO'"),
                            QStringLiteral("lbl_telefono= 'TELEFONO'"),
                            QStringLiteral("lbl_titulo_gral= 'LISTADO DE CONTACTOS'"),
                        }));
    report::Neteja_Informe(job);
    f.ctx.setIdioma(QStringLiteral("cat"));
    fillSupplierListing(job, f.ctx, ListingKind::Domicile, QDate(2026, 12, 1));
    EXPECT_EQ(job.ReportFileName, sourcePath(QStringLiteral("resources/reports/pro_dom.rpt")));
    formulas.clear();
    for (const QString& text : job.Formulas)
        if (!text.isEmpty()) formulas << text;
    EXPECT_EQ(formulas, (QStringList{
                            QStringLiteral("Nom= 'Comercial Brenwick S.L.'"),
                            QStringLiteral("lbl_codigo= 'CODI'"),
                            QStringLiteral("lbl_titulo= 'PROVEÏDORS'"),
                            QStringLiteral("lbl_razon_social= 'NOM O RAÓ SOCIAL'"),
                            QStringLiteral("lbl_fecha= '01/12/2026'"),
                            QStringLiteral("lbl_pagina= 'Pàgina'"),
                            QStringLiteral("lbl_domicilio= 'DOMICILI'"),
                            QStringLiteral("lbl_poblacion= 'POBLACIÓ'"),
                        }));
}

TEST_F(ListingTest, TheLaunchSetsTitleDestinationAndMarginsAndCleansThePreviousReport) {
    f.ctx.MargeEsquerre = 25;
    f.ctx.MargeDret = 12;
    f.ctx.MargeSuperior = 18;
    f.ctx.MargeInferior = 14;
    job.Formulas[70] = QStringLiteral("lbl_resto= 'de un informe anterior'");
    job.SelectionFormula = QStringLiteral("client = 999");
    ListingRequest request{ListingKind::Contacts, QDate(2026, 3, 15), report::Destination::File,
                           f.file(QStringLiteral("contactos.pdf"))};
    ReportFixture::loadRows(
        f.gest(), QStringLiteral("Proveidors"),
        sourcePath(QStringLiteral("tests/data/reports/listings/pro_con_esp/proveidors.tsv")));
    const auto r = btnLListatProv(f.ctx, dialogs, job, nullptr, request);
    ASSERT_TRUE(r.ok()) << r.error.toStdString();
    EXPECT_TRUE(job.Formulas[70].isEmpty());
    EXPECT_TRUE(job.SelectionFormula.isEmpty());
    EXPECT_EQ(job.WindowTitle, QStringLiteral("LISTADO DE CONTACTOS - PROVEEDORES"));
    EXPECT_EQ(job.Destination, report::Destination::File);
    EXPECT_EQ(job.MarginLeft, 25);
    EXPECT_EQ(job.MarginRight, 12);
    EXPECT_EQ(job.MarginTop, 18);
    EXPECT_EQ(job.MarginBottom, 14);
    const QStringList pages = tallora::testing::pdfPages(request.printFileName);
    EXPECT_GE(pages.size(), 2);
    EXPECT_TRUE(pages.last().contains(QStringLiteral("Página %1 de %1").arg(pages.size())));
}

TEST_F(ListingTest, AnEmptyFileGivesOnePageWithItsHeaders) {
    ListingRequest request{ListingKind::Domicile, QDate(2026, 1, 2), report::Destination::File,
                           f.file(QStringLiteral("vacio.pdf"))};
    ASSERT_TRUE(btnLListatClients(f.ctx, dialogs, job, nullptr, request).ok());
    const QStringList pages = tallora::testing::pdfPages(request.printFileName);
    ASSERT_EQ(pages.size(), 1);
    EXPECT_TRUE(pages[0].contains(QStringLiteral("DOMICILIO")));
    EXPECT_TRUE(pages[0].contains(QStringLiteral("Página 1 de 1")));
}
