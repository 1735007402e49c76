// The purchases list (with and without the IVA split) and the provisions list, from a
// search to a PDF read back as text: title, headings, rows in the search's order and sums.
#include "purchases/purchase_reports.h"
#include "../report/report_fixture.h"
#include "purchases/provision_posting.h"
#include "purchases/purchase_posting.h"
#include "purchases/purchase_validation.h"
#include "purchases_fixture.h"

namespace tallora::testing {
namespace {

class PurchaseReportsTest : public PurchasesData {
protected:
    void SetUp() override {
        PurchasesData::SetUp();
        f.ctx.EmpresaNom = "Fusteria Pons S.L.";
        f.ctx.resourcesDir = sourcePath(QStringLiteral("resources/"));
        post("15", "121,00", "F-1", 21);
        post("2", "100,00", "F-2", 10);
        post("20", "50,00", "F-3", 0);
    }
    void post(const QString& day, const QString& total, const QString& description, double rate) {
        PurchaseEntry e = entry(total);
        e.txtDia = day;
        e.txtdescripcio = description;
        purchases::Calcula_Bases(f.ctx, e, rate);
        const auto verdict = purchases::Verifica_Apunt(f.ctx, dialogs, e, {});
        ASSERT_TRUE(verdict.ok) << dialogs.lastText().toStdString();
        ASSERT_TRUE(purchases::GrabaApunt(f.ctx, e, *verdict.account).ok());
    }
    purchases::PurchaseFilter byDate() const {
        purchases::PurchaseFilter filter;
        filter.order = purchases::PurchaseOrder::Data;
        return filter;
    }
    QString render(const std::function<report::ReportResult(const report::PrintRequest&)>& print) {
        const QString pdf = f.company + "list.pdf";
        const report::ReportResult r = print({report::Destination::File, pdf});
        EXPECT_TRUE(r.ok()) << r.error.toStdString();
        // To look at the pages: TALLORA_TEST_PDF_DIR keeps a copy of each list.
        if (const QString keep = qEnvironmentVariable("TALLORA_TEST_PDF_DIR"); !keep.isEmpty())
            QFile::copy(pdf,
                        keep + u'/' +
                            QString::fromLatin1(
                                ::testing::UnitTest::GetInstance()->current_test_info()->name()) +
                            QStringLiteral(".pdf"));
        const QStringList pages = pdfPages(pdf);
        EXPECT_EQ(pages.size(), 1);
        return pages.join(u'\f');
    }
    report::ReportJob job;
};

TEST_F(PurchaseReportsTest, ThePurchasesListShowsEachRateAndTheSums) {
    const QString text = render([&](const report::PrintRequest& request) {
        return purchases::Imprimir_Compres(f.ctx, dialogs, job, nullptr, byDate(), request,
                                           QDate(2026, 11, 22));
    });
    for (const QString& caption :
         {M(6636), QString("Fusteria Pons S.L."), QString("22/11/2026"), M(6117), M(6511), M(6512),
          M(6513), QString("10 %"), QString("21 %"), QString("2026")})
        EXPECT_TRUE(text.contains(caption)) << caption.toStdString() << "\n" << text.toStdString();
    // In the search's order: by date.
    const qsizetype f2 = text.indexOf("F-2"), f1 = text.indexOf("F-1"), f3 = text.indexOf("F-3");
    ASSERT_GE(f2, 0);
    EXPECT_LT(f2, f1);
    EXPECT_LT(f1, f3);
    EXPECT_TRUE(text.contains("90,91")) << text.toStdString();
    EXPECT_TRUE(text.contains("9,09"));
    EXPECT_TRUE(text.contains("271,00")) << "the sum of the totals";
    EXPECT_EQ(job.WindowTitle, M(924));
}

TEST_F(PurchaseReportsTest, AShopsListHasNoRateColumns) {
    f.ctx.ModeExercici = "TICKETS";
    const QString text = render([&](const report::PrintRequest& request) {
        return purchases::Imprimir_Compres(f.ctx, dialogs, job, nullptr, byDate(), request,
                                           QDate(2026, 11, 22));
    });
    EXPECT_TRUE(text.contains("Compras mercaderias")) << text.toStdString();
    EXPECT_FALSE(text.contains("10 %"));
    EXPECT_TRUE(text.contains("271,00"));
}

TEST_F(PurchaseReportsTest, TheProvisionsListFollowsTheSearch) {
    for (const bool suplido : {true, false}) {
        purchases::ProvisionEntry e;
        e.suplido = suplido;
        e.txtDia = suplido ? "3" : "9";
        e.txtMes = "2";
        e.lblFecha = QStringLiteral("%1/02/2026").arg(e.txtDia.rightJustified(2, u'0'));
        e.txtClient = suplido ? "MADERAS SOLER" : "COLMADO RUIZ";
        e.partyNumber = suplido ? 1 : 2;
        e.txtdescripcio = suplido ? "Tasas" : "Fondos";
        e.txtTotal = suplido ? "45,50" : "300,00";
        ASSERT_TRUE(purchases::GrabaApunt(f.ctx, e).ok());
    }
    purchases::ProvisionFilter filter;
    filter.suplido = true;
    const QString text = render([&](const report::PrintRequest& request) {
        return purchases::Imprimir_Suplidos(f.ctx, dialogs, job, nullptr, filter, request,
                                            QDate(2026, 11, 22));
    });
    EXPECT_TRUE(text.contains(M(6516))) << text.toStdString();
    EXPECT_TRUE(text.contains(M(6515)));
    EXPECT_TRUE(text.contains("MADERAS SOLER"));
    EXPECT_TRUE(text.contains("Tasas"));
    EXPECT_FALSE(text.contains("COLMADO RUIZ")) << "only the search's rows";
    EXPECT_TRUE(text.contains("45,50"));
    EXPECT_EQ(job.WindowTitle, M(6500));
}

}  // namespace
}  // namespace tallora::testing
