// The arithmetic of the sales entry: the split of a typed total, the recomputation from the
// bases, the date check and the quotas of a base typed by hand.
#include "sales_fixture.h"

namespace tallora::testing {
namespace {

using sales::Reparteix_Total;
using sales::Recalcula_Apunt;
using sales::SaleEntry;

class SaleEntryTest : public SalesData {};

TEST_F(SaleEntryTest, TotalAt21WithoutRecargoSplitsIntoBaseAndIva) {
    SaleEntry e = entry("121,00");
    Reparteix_Total(f.ctx, e, 21, false);
    EXPECT_EQ(e.txtBase[0], "100,00");
    EXPECT_EQ(e.txtIVA[0], "21,00");
    EXPECT_EQ(e.txtRE[0], "0");
    for (int i : {1, 2}) {
        EXPECT_EQ(e.txtBase[i], "0");
        EXPECT_EQ(e.txtIVA[i], "0");
        EXPECT_EQ(e.txtRE[i], "0");
    }
    EXPECT_EQ(e.txtTotal, "121,00") << "the split never changes the total";
}

TEST_F(SaleEntryTest, RecargoDividesByOnePlusBothRates) {
    SaleEntry e = reEntry("121,00");
    Reparteix_Total(f.ctx, e, 21, true);
    // 121 / 1,262 = 95,8795...
    EXPECT_EQ(e.txtBase[0], "95,88");
    EXPECT_EQ(e.txtIVA[0], "20,13");
    EXPECT_EQ(e.txtRE[0], "4,99");
}

TEST_F(SaleEntryTest, WithholdingIsAddedBeforeDividing) {
    SaleEntry e = entry("100,00");
    e.txtBaseIRPF = "100";
    e.Text1 = "15";
    Reparteix_Total(f.ctx, e, 21, false);
    // (100 + 15) / 1,21 = 95,0413...
    EXPECT_EQ(e.txtRetencio, "15,00");
    EXPECT_EQ(e.txtBase[0], "95,04");
    EXPECT_EQ(e.txtIVA[0], "19,96");
}

TEST_F(SaleEntryTest, TwoEqualRatesSendTheSplitToTheLaterColumn) {
    f.ctx.TipusIVA = {21, 21, 4};
    SaleEntry e = entry("121,00");
    Reparteix_Total(f.ctx, e, 21, false);
    EXPECT_EQ(e.txtBase[0], "0");
    EXPECT_EQ(e.txtBase[1], "100,00");
    EXPECT_EQ(e.txtIVA[1], "21,00");
}

TEST_F(SaleEntryTest, OtherRatesColumnsGetTheirOwnRate) {
    SaleEntry e = entry("110,00");
    Reparteix_Total(f.ctx, e, 10, false);
    EXPECT_EQ(e.txtBase[0], "0");
    EXPECT_EQ(e.txtBase[1], "100,00");
    EXPECT_EQ(e.txtIVA[1], "10,00");
    e = reEntry("104,50");
    Reparteix_Total(f.ctx, e, 4, true);
    EXPECT_EQ(e.txtBase[2], "100,00");
    EXPECT_EQ(e.txtIVA[2], "4,00");
    EXPECT_EQ(e.txtRE[2], "0,50");
}

TEST_F(SaleEntryTest, RateZeroLeavesEveryBaseAtZero) {
    SaleEntry e = entry("121,00");
    e.txtBase[0] = "50,00";
    Reparteix_Total(f.ctx, e, 0, false);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(e.txtBase[i], "0");
        EXPECT_EQ(e.txtIVA[i], "0");
    }
}

TEST_F(SaleEntryTest, APostedSaleIsNeverSplit) {
    SaleEntry e = entry("121,00");
    e.lblOrdre = "7";
    e.txtBase[0] = "90,00";
    Reparteix_Total(f.ctx, e, 21, false);
    EXPECT_EQ(e.txtBase[0], "90,00");
}

TEST_F(SaleEntryTest, WithBillingTheSplitRecomputesFromTheBases) {
    f.ctx.Facturacio = true;
    SaleEntry e = entry("999,00");
    e.txtBase[0] = "100,00";
    Reparteix_Total(f.ctx, e, 21, false);
    EXPECT_EQ(e.txtBase[0], "100,00");
    EXPECT_EQ(e.txtTotal, "121,00");
}

TEST_F(SaleEntryTest, NegativeTotalSplitsToNegativeAmounts) {
    SaleEntry e = entry("-121,00");
    Reparteix_Total(f.ctx, e, 21, false);
    EXPECT_EQ(e.txtBase[0], "-100,00");
    EXPECT_EQ(e.txtIVA[0], "-21,00");
}

TEST_F(SaleEntryTest, RecomputeAddsTheRoundedAmountsLessTheWithholding) {
    SaleEntry e = reEntry("0");
    e.txtBase = {"100,00", "50,00", "0"};
    Recalcula_Apunt(f.ctx, e, true);
    EXPECT_EQ(e.txtIVA[0], "21,00");
    EXPECT_EQ(e.txtIVA[1], "5,00");
    EXPECT_EQ(e.txtRE[0], "5,20");
    EXPECT_EQ(e.txtRE[1], "0,70");
    EXPECT_EQ(e.txtTotal, "181,90");

    e.txtBaseIRPF = "100,00";
    e.Text1 = "15";
    Recalcula_Apunt(f.ctx, e, true);
    EXPECT_EQ(e.txtRetencio, "15,00");
    EXPECT_EQ(e.txtTotal, "166,90");
}

TEST_F(SaleEntryTest, RecomputeSumsRoundedQuotasNotExactProducts) {
    SaleEntry e = entry("0");
    // 0,04 x 10 % and 0,10 x 4 % are 0,004 each: both show 0,00, so the total is 0,14 and
    // not the 0,15 of the exact products.
    e.txtBase = {"0", "0,04", "0,10"};
    Recalcula_Apunt(f.ctx, e, false);
    EXPECT_EQ(e.txtIVA[1], "0,00");
    EXPECT_EQ(e.txtIVA[2], "0,00");
    EXPECT_EQ(e.txtTotal, "0,14");
}

TEST_F(SaleEntryTest, RecomputeWithoutRecargoLeavesTheRecargoFields) {
    SaleEntry e = entry("0");
    e.txtBase[0] = "100,00";
    e.txtRE[0] = "3,00";
    Recalcula_Apunt(f.ctx, e, false);
    EXPECT_EQ(e.txtRE[0], "3,00");
    EXPECT_EQ(e.txtTotal, "124,00");
}

TEST_F(SaleEntryTest, RecomputeKeepsATypedWithholdingWhenThePercentIsZero) {
    SaleEntry e = entry("0");
    e.txtBase[0] = "100,00";
    e.Text1 = "";
    e.txtBaseIRPF = "";
    e.txtRetencio = "7,00";
    Recalcula_Apunt(f.ctx, e, false);
    EXPECT_EQ(e.Text1, "0");
    EXPECT_EQ(e.txtBaseIRPF, "0");
    EXPECT_EQ(e.txtRetencio, "7,00");
    EXPECT_EQ(e.txtTotal, "114,00");
}

TEST_F(SaleEntryTest, RecomputeAddsTheExemptDifference) {
    SaleEntry e = entry("0");
    e.txtBase[0] = "100,00";
    e.Exempta = Money::fromUnits(250000);
    Recalcula_Apunt(f.ctx, e, false);
    EXPECT_EQ(e.txtTotal, "146,00");
}

TEST_F(SaleEntryTest, RecomputeUsesTheContextRates) {
    f.ctx.TipusIVA = {18, 8, 4};
    SaleEntry e = entry("0");
    e.lblOrdre = "3";
    e.txtBase[0] = "100,00";
    Recalcula_Apunt(f.ctx, e, false);
    EXPECT_EQ(e.txtIVA[0], "18,00");
}

TEST_F(SaleEntryTest, DateRollingIntoAnotherMonthIsNoDate) {
    EXPECT_FALSE(sales::Valida_Data(f.ctx, "31", "2"));
    EXPECT_FALSE(sales::Valida_Data(f.ctx, "31", "4"));
    EXPECT_FALSE(sales::Valida_Data(f.ctx, "29", "2")) << "2026 is not a leap year";
    EXPECT_FALSE(sales::Valida_Data(f.ctx, "10", "13"));
    EXPECT_FALSE(sales::Valida_Data(f.ctx, "0", "5"));
    EXPECT_FALSE(sales::Valida_Data(f.ctx, "", "5"));
    EXPECT_EQ(sales::Valida_Data(f.ctx, "31", "12"), QDate(2026, 12, 31));
    EXPECT_EQ(sales::Valida_Data(f.ctx, "1", "1"), QDate(2026, 1, 1));
    f.ctx.Exercici = "2028";
    EXPECT_EQ(sales::Valida_Data(f.ctx, "29", "2"), QDate(2028, 2, 29));
}

TEST_F(SaleEntryTest, ABaseTypedByHandGivesItsQuotas) {
    SaleEntry e = reEntry("0");
    e.txtBase[1] = "200";
    ASSERT_TRUE(sales::baseTyped(f.ctx, e, 1));
    EXPECT_EQ(e.txtBase[1], "200,00");
    EXPECT_EQ(e.txtIVA[1], "20,00");
    EXPECT_EQ(e.txtRE[1], "2,80");
    e.reEnabled = false;
    e.txtRE[1] = "0";
    e.txtBase[1] = "100";
    ASSERT_TRUE(sales::baseTyped(f.ctx, e, 1));
    EXPECT_EQ(e.txtRE[1], "0") << "a disabled recargo field is not touched";
}

TEST_F(SaleEntryTest, ABaseChangedOnAPostedSaleKeepsTheTypedQuota) {
    SaleEntry e = entry("0");
    e.lblOrdre = "4";
    e.txtBase[0] = "200";
    e.txtIVA[0] = "41,5";
    ASSERT_TRUE(sales::baseTyped(f.ctx, e, 0));
    EXPECT_EQ(e.txtBase[0], "200,00");
    EXPECT_EQ(e.txtIVA[0], "41,50");
}

TEST_F(SaleEntryTest, ABaseThatIsNotANumberIsRefusedAndEmptyOnesAreLeft) {
    SaleEntry e = entry("0");
    e.txtBase[0] = "12a";
    EXPECT_FALSE(sales::baseTyped(f.ctx, e, 0));
    e.txtBase[0] = "-";
    e.txtIVA[0] = "5";
    EXPECT_TRUE(sales::baseTyped(f.ctx, e, 0));
    EXPECT_EQ(e.txtIVA[0], "5");
}

TEST_F(SaleEntryTest, PesetasShowNoDecimals) {
    f.ctx.Moneda = "Ptes.";
    SaleEntry e = entry("12100");
    Reparteix_Total(f.ctx, e, 21, false);
    EXPECT_EQ(e.txtBase[0], "10.000");
    EXPECT_EQ(e.txtIVA[0], "2.100");
}

TEST_F(SaleEntryTest, LookUpsOfCustomerAndAccount) {
    EXPECT_TRUE(sales::Verifica_Client(f.ctx, "Ferreteria Puig"));
    EXPECT_TRUE(sales::Verifica_Client(f.ctx, "ferreteria puig"));
    EXPECT_FALSE(sales::Verifica_Client(f.ctx, "Nadie"));
    EXPECT_FALSE(sales::Verifica_Client(f.ctx, ""));
    EXPECT_TRUE(sales::Client_RE(f.ctx, "Colmado Ruiz"));
    EXPECT_FALSE(sales::Client_RE(f.ctx, "Ferreteria Puig"));
    const auto account = sales::Verifica_compte_venda(f.ctx, "Servicios prestados");
    ASSERT_TRUE(account);
    EXPECT_EQ(account->Grup, 705);
    EXPECT_EQ(account->NomGrup, "Servicios");
    EXPECT_EQ(account->Compte, 7050001);
    EXPECT_FALSE(sales::Verifica_compte_venda(f.ctx, "Compras"));
    EXPECT_FALSE(sales::Verifica_compte_venda(f.ctx, ""));
}

TEST_F(SaleEntryTest, IrpfOfABaseAndAPercent) {
    EXPECT_EQ(sales::irpfOf(f.ctx, "1.000,00", "15"), "150,00");
    EXPECT_EQ(sales::irpfOf(f.ctx, "abc", "15"), "");
    EXPECT_EQ(sales::irpfOf(f.ctx, "", "15"), "");
}

TEST_F(SaleEntryTest, ActivaREClearsTheRecargoOfACustomerWithoutIt) {
    SaleEntry e;
    e.txtRE = {QStringLiteral("5,20"), QStringLiteral("1,40"), QStringLiteral("0,50")};
    sales::Activa_RE(e, true);
    EXPECT_TRUE(e.reEnabled);
    EXPECT_EQ(e.txtRE[0], QStringLiteral("5,20"));
    sales::Activa_RE(e, false);
    EXPECT_FALSE(e.reEnabled);
    for (const QString& re : e.txtRE) EXPECT_EQ(re, QStringLiteral("0"));
}

}  // namespace
}  // namespace tallora::testing

