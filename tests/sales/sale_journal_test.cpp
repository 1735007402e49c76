// The rows of the on-screen journal for a posting.
#include "sales_fixture.h"
#include "sales/sale_journal.h"

namespace tallora::testing {
namespace {

using sales::JournalPosting;
using sales::JournalRow;

class SaleJournalTest : public SalesData {
protected:
    static QStringList lines(const std::vector<JournalRow>& rows) {
        QStringList out;
        for (const JournalRow& r : rows)
            out << r.kind + ":" + r.text + (r.number ? ":" + QString::number(r.number) : "");
        return out;
    }
};

TEST_F(SaleJournalTest, TheTitleCarriesDateAndTime) {
    const auto rows = sales::journalTitle(f.ctx, QDateTime(QDate(2026, 3, 5), QTime(9, 7, 3)));
    EXPECT_EQ(lines(rows), (QStringList{"titol:" + M(614),
                                        "titol:" + M(621) + "05/03/26   Hora: 09:07:03",
                                        "blank:"}));
}

TEST_F(SaleJournalTest, APostingWritesItsLinesInOrder) {
    SaleEntry e = reEntry("116,90");
    e.txtBase = {"100,00", "0,00", "0,00"};
    e.txtIVA = {"21,00", "0,00", "0,00"};
    e.txtRE = {"5,20", "0,00", "0,00"};
    e.txtBaseIRPF = "100,00";
    e.Text1 = "15";
    e.txtRetencio = "15,00";
    e.Exempta = Money::fromUnits(57000);
    e.entitat = "Banco Sabadell";
    e.cmbSerie = "/Abon";
    JournalPosting p;
    p.ordre = 8;
    p.affected = 1;
    EXPECT_EQ(lines(sales::Diari_Apunt(f.ctx, e, p)),
              (QStringList{"START:" + M(649), "desc:" + M(650) + "15/03/2026",
                           "desc:Colmado Ruiz", "desc:Ventas mercaderias",
                           "desc:Descrip.: F-1/Abon", "desc:(Factura)",
                           "desc:" + M(6677) + "Banco Sabadell", "IMPORT_VERD:BASE: 21 % 100,00",
                           "IMPORT_VERD:IVA: 21,00", "IMPORT_VERD:R.E. 5,20", "blank:",
                           "IMPORT_VERD: BASE IVA NO APLICABLE: 5,70",
                           "IMPORT_VERD:BASE IRPF: 100,00 15% " + M(653) + ": 15,00",
                           "IMPORT_VERD:TOTAL: 116,90", "modificar:MODIFICAR:8", "blank:",
                           "resultadoSI:" + M(654), "final:" + QString(40, QChar(0x00B7)),
                           "blank:"}));
}

TEST_F(SaleJournalTest, PendingNegativeAndFailedPostings) {
    SaleEntry e = entry("-121,00");
    e.txtBase[0] = "-100,00";
    e.txtIVA[0] = "-21,00";
    JournalPosting p;
    p.affected = 0;
    p.change = true;
    const QStringList out = lines(sales::Diari_Apunt(f.ctx, e, p));
    EXPECT_EQ(out.first(), "START:" + M(651));
    EXPECT_TRUE(out.contains("desc:" + M(6676)));
    EXPECT_TRUE(out.contains("IMPORT_VERMELL:BASE: 21 % -100,00"));
    EXPECT_TRUE(out.contains("IMPORT_VERMELL:TOTAL: -121,00"));
    EXPECT_EQ(out.mid(out.size() - 3),
              (QStringList{"blank:", "resultadoNO:" + M(655), "resultadoNO:" + M(656)}));
    EXPECT_FALSE(out.join("\n").contains("MODIFICAR"));
}

TEST_F(SaleJournalTest, ASettledSaleAndAReceiptLeaveThePaymentLineOut) {
    SaleEntry e = entry("121,00");
    e.entitat = "Marca";
    JournalPosting p;
    p.affected = 1;
    EXPECT_FALSE(lines(sales::Diari_Apunt(f.ctx, e, p)).join("\n").contains(M(6676)));
    e.entitat.clear();
    e.rebut = true;
    e.rebutDomicili = "C/ Major 1";
    e.concepte = {"Uno", "", "", "", ""};
    const QStringList out = lines(sales::Diari_Apunt(f.ctx, e, p));
    EXPECT_FALSE(out.join("\n").contains(M(6676)));
    EXPECT_TRUE(out.contains("desc:C/ Major 1"));
    EXPECT_TRUE(out.contains("desc:Uno"));
}

TEST_F(SaleJournalTest, ModifyKindsNameTheirRows) {
    EXPECT_EQ(sales::modifyCaption("modificar"), "MODIFICAR");
    EXPECT_EQ(sales::modifyCaption("Bor-modificar"), "MODIFICAR (BOR)");
    EXPECT_EQ(sales::modifyCaption("Pro-modificar"), "MODIFICAR (PRO)");
    EXPECT_EQ(sales::modifyCaption("Pre-modificar"), "MODIFICAR (PRE)");
    EXPECT_EQ(sales::modifyCaption("Alb-modificar"), "MODIFICAR (ALB)");
    EXPECT_EQ(sales::modifyCaption("desc"), "");
    EXPECT_TRUE((JournalRow{"Alb-modificar", "MODIFICAR (ALB)", 3}.opensChange()));
    EXPECT_FALSE((JournalRow{"final", "", 0}.opensChange()));
}

}  // namespace
}  // namespace tallora::testing
