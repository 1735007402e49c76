// The arithmetic of the purchases screen: the split of a total by a rate, the withholding,
// the quota of a typed base, the period and the next number.
#include "purchases_fixture.h"

namespace tallora::testing {
namespace {

class PurchaseEntryTest : public PurchasesData {};

TEST_F(PurchaseEntryTest, Total121AtTwentyOneGivesOneHundredAndTwentyOne) {
    const PurchaseEntry e = split("121,00");
    EXPECT_EQ(e.txtBase[0], "0") << "the last of two equal rates wins";
    EXPECT_EQ(e.txtBase[3], "100,00");
    EXPECT_EQ(e.txtIVA[3], "21,00");
    for (std::size_t i : {0u, 1u, 2u}) {
        EXPECT_EQ(e.txtBase[i], "0");
        EXPECT_EQ(e.txtIVA[i], "0");
    }
}

TEST_F(PurchaseEntryTest, TheBaseIsCarriedAtFourDecimalsSoBaseAndQuotaMayMissByACent) {
    // 100 / 1,1 = 90,9091: base 90,91 and quota 9,09 make 100,00.
    PurchaseEntry ten = split("100,00", 10);
    EXPECT_EQ(ten.txtBase[1], "90,91");
    EXPECT_EQ(ten.txtIVA[1], "9,09");
    // 1,99 / 1,21 = 1,6446: base 1,64 and quota 0,35 (1,6446 x 21 %) make 1,99.
    PurchaseEntry small = split("1,99", 21);
    EXPECT_EQ(small.txtBase[3], "1,64");
    EXPECT_EQ(small.txtIVA[3], "0,35");
}

TEST_F(PurchaseEntryTest, RateZeroZeroesAllFourSlots) {
    PurchaseEntry e = split("121,00");
    purchases::Calcula_Bases(f.ctx, e, 0);
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(e.txtBase[i], "0");
        EXPECT_EQ(e.txtIVA[i], "0");
    }
}

TEST_F(PurchaseEntryTest, TheWithholdingIsAddedToTheTotalBeforeTheSplit) {
    PurchaseEntry e = entry("106,00");
    e.txtBaseIRPF = "100,00";
    e.txtTipus = "15";
    purchases::Calcula_Bases(f.ctx, e, 21);
    EXPECT_EQ(e.txtRetencio, "15,00");
    // (106 + 15) / 1,21 = 100.
    EXPECT_EQ(e.txtBase[3], "100,00");
    EXPECT_EQ(e.txtIVA[3], "21,00");
}

TEST_F(PurchaseEntryTest, CalculaRetencioFormatsTheBaseAndSplitsAgainWithTheRate) {
    PurchaseEntry e = entry("110,00");
    e.txtBaseIRPF = "1000";
    e.txtTipus = "1";
    purchases::Calcula_Retencio(f.ctx, e, std::nullopt);
    EXPECT_EQ(e.txtBaseIRPF, "1.000,00");
    EXPECT_EQ(e.txtRetencio, "10,00");
    EXPECT_EQ(e.txtBase[1], "0") << "no rate in hand: no split";
    purchases::Calcula_Retencio(f.ctx, e, 10.0);
    EXPECT_EQ(e.txtBase[1], "109,09");
}

TEST_F(PurchaseEntryTest, AChangeIsNeverSplitAndKeepsItsQuotas) {
    PurchaseEntry e = split("121,00");
    e.lblOrdre = "4";
    e.txtTotal = "242,00";
    purchases::Calcula_Bases(f.ctx, e, 21);
    EXPECT_EQ(e.txtBase[3], "100,00");
    e.txtBase[0] = "50";
    e.txtIVA[0] = "7";
    ASSERT_TRUE(purchases::baseLeft(f.ctx, e, 0));
    EXPECT_EQ(e.txtBase[0], "50,00");
    EXPECT_EQ(e.txtIVA[0], "7,00") << "a typed quota stays on a change";
}

TEST_F(PurchaseEntryTest, LeavingABaseOfANewEntryComputesItsQuota) {
    PurchaseEntry e = entry();
    e.txtBase[2] = "50";
    ASSERT_TRUE(purchases::baseLeft(f.ctx, e, 2));
    EXPECT_EQ(e.txtBase[2], "50,00");
    EXPECT_EQ(e.txtIVA[2], "2,00");
    e.txtBase[1] = "abc";
    EXPECT_FALSE(purchases::baseLeft(f.ctx, e, 1));
}

TEST_F(PurchaseEntryTest, PeriodIsTheQuarterOfTheMonth) {
    const char* expected[] = {"1T", "1T", "1T", "2T", "2T", "2T",
                              "3T", "3T", "3T", "4T", "4T", "4T"};
    for (int m = 1; m <= 12; ++m)
        EXPECT_EQ(purchases::Periode(QDate(2026, m, 1)), QString::fromLatin1(expected[m - 1])) << m;
}

TEST_F(PurchaseEntryTest, GroupsAndTheirTables) {
    EXPECT_EQ(purchases::Taula_Grup(0), "Compres");
    EXPECT_EQ(purchases::Taula_Grup(5), "Inversions");
    EXPECT_EQ(purchases::Taula_Grup(-1), "");
    EXPECT_EQ(purchases::groupOfGrup(64), 3);
    EXPECT_EQ(purchases::groupOfGrup(20), 5);
    EXPECT_EQ(purchases::groupOfGrup(70), -1);
}

TEST_F(PurchaseEntryTest, LookUpsOfSupplierAndAccount) {
    EXPECT_TRUE(purchases::Verifica_Proveidor(f.ctx, "MADERAS SOLER"));
    EXPECT_FALSE(purchases::Verifica_Proveidor(f.ctx, ""));
    EXPECT_FALSE(purchases::Verifica_Proveidor(f.ctx, "Nadie"));
    const auto account = purchases::Verifica_compte_Despesa(f.ctx, 0, "COMPRAS MERCADERIAS");
    ASSERT_TRUE(account);
    EXPECT_EQ(account->Grup, 60);
    EXPECT_EQ(account->NomCompte, "Compras mercaderias");
    EXPECT_FALSE(purchases::Verifica_compte_Despesa(f.ctx, 1, "COMPRAS MERCADERIAS"))
        << "each group looks in its own table";
    EXPECT_FALSE(purchases::Verifica_compte_Despesa(f.ctx, -1, "COMPRAS MERCADERIAS"));
}

TEST_F(PurchaseEntryTest, TheNextNumberReusesNumbersFreedAtTheTop) {
    EXPECT_EQ(purchases::Calcula_Ordre(f.ctx), 1);
    exec(frasIn(), "insert into FrasIN (Ordre) values (1), (7)");
    EXPECT_EQ(purchases::Calcula_Ordre(f.ctx), 8);
    exec(frasIn(), "delete from FrasIN where Ordre = 7");
    EXPECT_EQ(purchases::Calcula_Ordre(f.ctx), 2);
}

}  // namespace
}  // namespace tallora::testing
