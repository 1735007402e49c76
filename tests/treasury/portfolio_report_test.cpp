// The printed list of the portfolio: the job's contract, and each of the four layouts
// rendered to a PDF, read back as text and compared with tests/data/reports/<layout>/.
#include "treasury/portfolio_report.h"
#include "../report/report_fixture.h"
#include "context/common_helpers.h"
#include "context/messages.h"
#include "portfolio_fixture.h"
#include "report/report_helpers.h"

#include <QRegularExpression>

using namespace tallora;
using namespace tallora::treasury;
using tallora::testing::formulasOf;
using tallora::testing::ReceiptRow;
using tallora::testing::sourcePath;

namespace {

class PortfolioReport : public tallora::testing::PortfolioData {
protected:
    void SetUp() override {
        PortfolioData::SetUp();
        f.ctx.resourcesDir = sourcePath(QStringLiteral("resources/"));
        for (const char* nom :
             {"Ferretería Núñez S.A.", "Cal Pep d´Or, Ribes & Fills S.L.", "Bar Centre",
              "Gómez Ruiz, Carmen", "Distribuciones Mediterráneo Hnos. S.L."})
            customers.push_back(customer(QString::fromUtf8(nom)));
        for (const char* nom : {"Olis del Camp", "Paperera Vic"})
            suppliers.push_back(supplier(QString::fromUtf8(nom)));
    }

    // 60 receipts of the customers over two exercises, every seventh without a due date,
    // every fourth partly collected; 8 payments due, one of a supplier no longer there.
    void fill() {
        const QDate start(2025, 11, 1);
        for (int i = 1; i <= 60; ++i) {
            const QDate data = start.addDays(i * 3);
            ReceiptRow r;
            r.party = customers[i % 5];
            r.data = data;
            if (i % 7 != 0) r.vencimiento = data.addDays(30 + (i % 3) * 15);
            r.ejercicio = QString::number(data.year());
            r.factura = QStringLiteral("F-%1/%2").arg(data.year()).arg(i, 3, 10, QChar(u'0'));
            r.total = i * 1234500LL;
            r.pendiente = i % 4 == 0 ? i * 100000LL : 0;
            r.frasOut = i;
            cobrar += r.total - r.pendiente;
            receipt(r);
        }
        for (int i = 1; i <= 8; ++i) {
            ReceiptRow r;
            r.inOut = QStringLiteral("In");
            r.party = i == 8 ? 9 : suppliers[i % 2];
            r.data = QDate(2026, 1, 2).addDays(i * 5);
            if (i % 2) r.vencimiento = r.data.addDays(60 - i);
            r.factura = QStringLiteral("Fra. %1-B").arg(700 + i);
            r.total = 999999LL * i;
            r.pendiente = i == 3 ? 999999LL : 0;
            r.frasIn = i;
            pagar += r.total - r.pendiente;
            receipt(r);
        }
    }

    PortfolioPrint print(Tab tab, bool grupo, std::optional<std::int64_t> party = std::nullopt,
                         Orden orden = Orden::Fecha) const {
        PortfolioPrint p;
        p.filter = {tab, party, orden};
        p.grupo = grupo;
        p.printDate = QDate(2026, 3, 15);
        p.destination = report::Destination::File;
        p.printFileName = f.unit.filePath(QStringLiteral("cartera.pdf"));
        return p;
    }

    // Runs the list answering Yes, and gives its pages as text.
    QStringList run(const PortfolioPrint& p) {
        dialogs.setNextAnswer(Dialogs::Answer::Yes);
        const report::ReportResult r = Imprimeix_Recibos(f.ctx, dialogs, job, nullptr, p);
        EXPECT_TRUE(r.ok()) << r.error.toStdString();
        // The list's order stays with it: the next report of the shared job starts without.
        EXPECT_TRUE(job.SortFields.isEmpty());
        return tallora::testing::pdfPages(p.printFileName);
    }

    QString euros(std::int64_t units) const {
        return Format_Import(f.ctx, Money::fromUnits(units));
    }

    std::vector<std::int64_t> customers, suppliers;
    std::int64_t cobrar = 0, pagar = 0;
    report::ReportJob job;
};

// The ids printed first on each line of the pages, in order.
QStringList idsIn(const QStringList& pages) {
    static const QRegularExpression row(QStringLiteral("^\\s*(\\d+)\\s+\\d\\d/\\d\\d/\\d{4}"),
                                        QRegularExpression::MultilineOption);
    QStringList ids;
    for (auto m = row.globalMatch(pages.join(u'\n')); m.hasNext();) ids << m.next().captured(1);
    return ids;
}

}  // namespace

TEST_F(PortfolioReport, TheJobFollowsTheListsContract) {
    fillPortfolioReport(job, f.ctx, print(Tab::Clientes, false));
    EXPECT_EQ(job.ReportFileName, sourcePath(QStringLiteral("resources/reports/teso_cli_2.rpt")));
    EXPECT_EQ(job.DataFiles[0], cartera());
    EXPECT_EQ(job.DataFiles[1], gest());
    for (int i = 2; i < report::ReportJob::kDataFiles; ++i) EXPECT_TRUE(job.DataFiles[i].isEmpty());
    EXPECT_EQ(formulasOf(job), (QStringList{
                                   QStringLiteral("lbl_titulo= 'CARTERA DE RECIBOS: Clientes'"),
                                   QStringLiteral("Nom= 'Comercial Brenwick S.L.'"),
                                   QStringLiteral("lbl_fecha= '15/03/2026'"),
                                   QStringLiteral("lbl_tit_ordre= 'ORDEN'"),
                                   QStringLiteral("lbl_tit_fecha= 'FECHA'"),
                                   QStringLiteral("lbl_tit_razon_social= 'NOMBRE O RAZON SOCIAL'"),
                                   QStringLiteral("lbl_tipo= 'FACTURA'"),
                                   QStringLiteral("lbl_pagado= 'A cuenta'"),
                                   QStringLiteral("lbl_pagina= 'Página'"),
                                   QStringLiteral("lbl_saldoneto= 'Resultado: '"),
                                   QStringLiteral("lbl_acuenta= 'Total a cuenta: '"),
                                   QStringLiteral("lbl_res_tit= 'Total pendiente: '"),
                                   QStringLiteral("lbl_tit_vencimiento= 'Vencimiento'"),
                               }));
    EXPECT_EQ(job.SortFields,
              (QStringList{QStringLiteral("+{cartera.data}"), QStringLiteral("+{cartera.Id}")}));
    EXPECT_EQ(job.SelectionFormula, QStringLiteral("{cartera.In_Out} = 'Out'"));

    report::Neteja_Informe(job);
    f.ctx.setIdioma(QStringLiteral("cat"));
    fillPortfolioReport(job, f.ctx, print(Tab::Proveedores, true, 2, Orden::Vencimiento));
    EXPECT_EQ(job.ReportFileName, sourcePath(QStringLiteral("resources/reports/teso_pro_3.rpt")));
    EXPECT_EQ(formulasOf(job).first(),
              QStringLiteral("lbl_titulo= 'CARTERA DE REBUTS: Proveïdors'"));
    EXPECT_EQ(job.SortFields, (QStringList{QStringLiteral("+{cartera.vencimiento}"),
                                           QStringLiteral("+{cartera.Id}")}));
    EXPECT_EQ(job.SelectionFormula,
              QStringLiteral("{cartera.In_Out} = 'In' and {cartera.proveedor} = 2"));
}

TEST_F(PortfolioReport, NoToTheQuestionPrintsNothing) {
    fill();
    dialogs.setNextAnswer(Dialogs::Answer::No);
    const PortfolioPrint p = print(Tab::Proveedores, false);
    const auto r = Imprimeix_Recibos(f.ctx, dialogs, job, nullptr, p);
    EXPECT_EQ(r.status, report::ReportResult::Status::Cancelled);
    EXPECT_EQ(shown(),
              QStringList{QStringLiteral("Q:") + Missatge(f.ctx, 6687) + Missatge(f.ctx, 6689)});
    EXPECT_FALSE(QFile::exists(p.printFileName));
    EXPECT_TRUE(job.ReportFileName.isEmpty());
}

TEST_F(PortfolioReport, TheCustomersListHasEveryReceiptInDateOrderAndTheTotals) {
    fill();
    const QStringList pages = run(print(Tab::Clientes, false));
    ASSERT_EQ(pages.size(), 2);
    EXPECT_EQ(shown(),
              QStringList{QStringLiteral("Q:") + Missatge(f.ctx, 6687) + Missatge(f.ctx, 6688)});
    QStringList expected;
    for (int i = 1; i <= 60; ++i) expected << QString::number(i);
    EXPECT_EQ(idsIn(pages), expected);
    const QString last = pages.last();
    EXPECT_TRUE(last.contains(QRegularExpression(
        QStringLiteral("Resultado:\\s+%1").arg(QRegularExpression::escape(euros(cobrar))))))
        << last.toStdString();
    for (int p = 0; p < 2; ++p)
        EXPECT_TRUE(pages[p].contains(QStringLiteral("Página %1 de 2").arg(p + 1))) << p;
}

TEST_F(PortfolioReport, APartyAndTheDueDateOrderLimitAndOrderTheRows) {
    fill();
    const QStringList pages = run(print(Tab::Clientes, false, customers[2], Orden::Vencimiento));
    // Customer 3 has receipts 2, 7, 12 ... 57; 7 and 42 have no due date and come first, then
    // the others by due date, a tie in the order of the rows.
    QStringList ids = idsIn(pages);
    ASSERT_EQ(ids.size(), 12);
    EXPECT_EQ(ids,
              (QStringList{"7", "42", "2", "12", "17", "22", "27", "32", "37", "47", "52", "57"}));
    EXPECT_FALSE(pages.join(u'\n').contains(QStringLiteral("Ferretería")));
}

TEST_F(PortfolioReport, EachLayoutMatchesItsExpectedText) {
    fill();
    const struct {
        const char* name;
        Tab tab;
        bool grupo;
    } cases[] = {{"teso_cli_2", Tab::Clientes, false},
                 {"teso_cli_3", Tab::Clientes, true},
                 {"teso_pro_2", Tab::Proveedores, false},
                 {"teso_pro_3", Tab::Proveedores, true}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const PortfolioPrint p = print(c.tab, c.grupo);
        const QString actual = run(p).join(u'\f');
        const QString folder =
            sourcePath(QStringLiteral("tests/data/reports/%1").arg(QLatin1String(c.name)));
        const auto expected = readTextFile(folder + QStringLiteral("/expected.txt"));
        if (expected != actual) {
            // The text and the PDF beside it, to look at and, when right, to take as expected.
            const QString saved =
                QDir::current().filePath(QLatin1String(c.name) + QStringLiteral(".actual.txt"));
            QFile out(saved);
            if (out.open(QIODevice::WriteOnly)) out.write(actual.toUtf8());
            QFile::remove(saved.chopped(4) + QStringLiteral(".pdf"));
            QFile::copy(p.printFileName, saved.chopped(4) + QStringLiteral(".pdf"));
            ADD_FAILURE() << "the list differs from expected.txt; it was written to "
                          << saved.toStdString();
        }
    }
}

TEST_F(PortfolioReport, TheGroupedListsSubtotalEachParty) {
    fill();
    const QString text = run(print(Tab::Proveedores, true)).join(u'\n');
    // Olis del Camp has payments 2, 4 and 6; Paperera Vic 1, 3 (settled in part), 5 and 7.
    const std::int64_t olis = 999999LL * (2 + 4 + 6);
    const std::int64_t paperera = 999999LL * (1 + 3 + 5 + 7);
    EXPECT_TRUE(
        text.contains(QRegularExpression(QStringLiteral("Olis del Camp\\s+%1\\s+0,00")
                                             .arg(QRegularExpression::escape(euros(olis))))))
        << text.toStdString();
    EXPECT_TRUE(text.contains(
        QRegularExpression(QStringLiteral("Resultado:\\s+%1")
                               .arg(QRegularExpression::escape(euros(paperera - 999999))))))
        << text.toStdString();
    EXPECT_TRUE(text.contains(QRegularExpression(
        QStringLiteral("Resultado:\\s+%1").arg(QRegularExpression::escape(euros(pagar))))));
}
