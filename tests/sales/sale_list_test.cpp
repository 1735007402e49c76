// The printed sales list of the inquiry: its formulas, the layout of each kind of exercise,
// and the search it runs first, rendered to a PDF and read back as text.
#include "context/dialogs.h"
#include "context/messages.h"
#include "sales/sale_reports.h"
#include "store/database.h"

#include "../report/report_fixture.h"

#include <QFileInfo>

#include <gtest/gtest.h>

using namespace tallora;
using namespace tallora::sales;
using tallora::testing::ReportFixture;

namespace {

class SaleList : public ::testing::Test {
protected:
    void SetUp() override {
        f.ctx.TipusIVA = {21, 10, 4};
        f.ctx.Decimal = ',';
        store::Database::open(f.ctx.exerciseFile(schema::db::FrasOut))
            .execute(QStringLiteral(
                "insert into FrasOut (Ordre, data, Client, NomClient, Descripcio, NomCompte, "
                "TOTAL, Base1, Iva1, RE1, Base2, Iva2, RE2, Base3, Iva3, RE3, Retencio) values "
                "(1, '2026-03-15', 1, 'Ferreteria Puig', 'F-1', 'Ventas', 1210000, 1000000, "
                "210000, 0, 0, 0, 0, 0, 0, 0, 0), (2, '2026-04-02', 2, 'Colmado Ruiz', 'F-2', "
                "'Ventas', 1262000, 1000000, 210000, 52000, 0, 0, 0, 0, 0, 0, 0)"));
    }
    ReportFixture f;
    ScriptedDialogs dialogs;
    report::ReportJob job;
};

}  // namespace

TEST_F(SaleList, TheListPrintsTheSearchWithItsRatesAndSums) {
    SaleFilter filter;
    filter.customer = QStringLiteral("Colmado Ruiz");
    const QString pdf = f.file(QStringLiteral("ventas.pdf"));
    const auto r = Imprimeix_Llista(f.ctx, dialogs, job, nullptr, filter,
                                    {report::Destination::File, pdf}, QDate(2026, 5, 2));
    ASSERT_TRUE(r.ok()) << r.error.toStdString();
    EXPECT_EQ(QFileInfo(job.ReportFileName).fileName(), QStringLiteral("llisvend.rpt"));
    EXPECT_EQ(job.WindowTitle, Missatge(f.ctx, 816));
    const QStringList formulas = tallora::testing::formulasOf(job);
    EXPECT_EQ(
        formulas.mid(0, 6),
        (QStringList{
            "Nom= 'Comercial Brenwick S.L.'", "lbl_titulo= 'LISTADO DE VENTAS / FACTURAS EMITIDAS'",
            "lbl_fecha= '02/05/2026'", "txtbase1='21 %'", "txtbase2='10 %'", "txtbase3='4 %'"}));
    const QString text = tallora::testing::pdfPages(pdf).join(u'\f');
    EXPECT_TRUE(text.contains(QStringLiteral("Colmado Ruiz"))) << text.toStdString();
    EXPECT_FALSE(text.contains(QStringLiteral("Ferreteria Puig")));
    EXPECT_TRUE(text.contains(QStringLiteral("126,20")));
    EXPECT_TRUE(text.contains(QStringLiteral("Página 1 de 1")));

    f.ctx.ModeExercici = QStringLiteral("TICKETS");
    ASSERT_TRUE(Imprimeix_Llista(f.ctx, dialogs, job, nullptr, {}, {report::Destination::File, pdf},
                                 QDate(2026, 5, 2))
                    .ok());
    EXPECT_EQ(QFileInfo(job.ReportFileName).fileName(), QStringLiteral("llisven2.rpt"));
    EXPECT_FALSE(tallora::testing::formulasOf(job).join(u'\n').contains("txtbase1"));
    EXPECT_TRUE(tallora::testing::pdfPages(pdf).join(u'\f').contains(QStringLiteral("247,20")));
}
