// Verifica_Apunt step by step, and the balance check with its seven routes.
#include "sales_fixture.h"
#include "context/month_lock.h"
#include "sales/sale_validation.h"

namespace tallora::testing {
namespace {

using sales::EntryField;
using sales::SaleEntry;
using sales::Verdict;

class SaleValidationTest : public SalesData {
protected:
    Verdict verify(SaleEntry& e, sales::VerifyOptions options = {}) {
        return sales::Verifica_Apunt(f.ctx, dialogs, e, options);
    }
    // An entry split at 21 %, its amounts as the split leaves them.
    SaleEntry split(const QString& total) {
        SaleEntry e = entry(total);
        sales::Reparteix_Total(f.ctx, e, 21, false);
        return e;
    }
    void expectRefused(SaleEntry e, int message, EntryField focus) {
        dialogs.clear();
        const Verdict v = verify(e);
        EXPECT_FALSE(v.ok);
        EXPECT_EQ(v.focus, focus);
        ASSERT_EQ(dialogs.shown().size(), 1u);
        EXPECT_EQ(dialogs.shown()[0].kind, ScriptedDialogs::Shown::Kind::Information);
        EXPECT_EQ(dialogs.lastText(), M(message));
    }
};

TEST_F(SaleValidationTest, ACompleteEntryPassesAndNamesItsAccount) {
    SaleEntry e = split("121,00");
    const Verdict v = verify(e);
    ASSERT_TRUE(v.ok);
    ASSERT_TRUE(v.account);
    EXPECT_EQ(v.account->Compte, 7000001);
    EXPECT_EQ(v.account->NomGrup, "Ventas");
    EXPECT_EQ(e.lblFecha, "15/03/2026");
    EXPECT_TRUE(dialogs.shown().empty());
    EXPECT_EQ(e.Exempta, Money{});
}

TEST_F(SaleValidationTest, EachStepStopsAtItsFaultWithItsMessageAndField) {
    SaleEntry e = split("121,00");
    e.txtDia = "";
    expectRefused(e, 635, EntryField::txtDia);
    e = split("121,00");
    e.txtDia = "32";
    expectRefused(e, 636, EntryField::txtDia);
    e.txtDia = "x";
    expectRefused(e, 636, EntryField::txtDia);
    e = split("121,00");
    e.txtDia = "31";
    e.txtMes = "2";
    expectRefused(e, 637, EntryField::txtDia);
    e = split("121,00");
    e.txtClient = "";
    expectRefused(e, 638, EntryField::txtClient);
    e = split("121,00");
    e.txtClient = "Ferreteria";  // typed, but the list selected another name
    expectRefused(e, 638, EntryField::txtClient);
    e = split("121,00");
    e.txtClient = e.listClientsText = "Nadie SL";
    expectRefused(e, 640, EntryField::txtClient);
    e = split("121,00");
    e.txtTipus = "";
    expectRefused(e, 641, EntryField::txtTipus);
    e = split("121,00");
    e.listVendesText = "Servicios prestados";
    expectRefused(e, 641, EntryField::txtTipus);
    e = split("121,00");
    e.txtTipus = "ventas MERCADERIAS";
    e.listVendesText = "Ventas Mercaderias X";
    expectRefused(e, 641, EntryField::txtTipus);
    e = split("121,00");
    e.txtTipus = e.listVendesText = "Cuenta borrada";
    expectRefused(e, 642, EntryField::txtClient);
    e = split("121,00");
    e.txtTotal = "0";
    expectRefused(e, 643, EntryField::txtTotal);
    e.txtTotal = "-";
    expectRefused(e, 643, EntryField::txtTotal);
}

TEST_F(SaleValidationTest, TheAccountNameIsComparedWithoutRegardToCase) {
    SaleEntry e = split("121,00");
    e.txtTipus = "VENTAS MERCADERIAS";
    EXPECT_TRUE(verify(e).ok);
}

TEST_F(SaleValidationTest, ALockedMonthIsRefusedAndANewEntryLosesItsMonth) {
    f.ctx.chkmesos[2] = 1;
    SaleEntry e = split("121,00");
    const Verdict v = verify(e);
    EXPECT_FALSE(v.ok);
    EXPECT_EQ(dialogs.lastText(), M(622));
    EXPECT_EQ(e.txtMes, "");
    SaleEntry change = split("121,00");
    change.lblOrdre = "3";
    EXPECT_FALSE(verify(change).ok);
    EXPECT_EQ(change.txtMes, "3") << "a change keeps its month";
}

TEST_F(SaleValidationTest, TheDuplicateQuestionOnlyForNewEntries) {
    exec(frasOut(), "insert into FrasOut (Ordre, client, NomClient, TOTAL, Descripcio) values "
                    "(1, 1, 'Ferreteria Puig', 1210000, 'F-1')");
    SaleEntry e = split("121,00");
    dialogs.setNextAnswer(Dialogs::Answer::No);
    Verdict v = verify(e);
    EXPECT_FALSE(v.ok);
    EXPECT_EQ(v.focus, EntryField::txtTotal);
    EXPECT_EQ(dialogs.lastText(), M(6754));
    EXPECT_EQ(dialogs.beeps(), 1);

    dialogs.clear();
    dialogs.setNextAnswer(Dialogs::Answer::Yes);
    EXPECT_TRUE(verify(e).ok);

    dialogs.clear();
    SaleEntry change = split("121,00");
    change.lblOrdre = "1";
    EXPECT_TRUE(verify(change).ok);
    EXPECT_TRUE(dialogs.shown().empty());

    SaleEntry other = split("121,00");
    other.txtdescripcio = "F-2";
    EXPECT_TRUE(verify(other).ok);
    EXPECT_TRUE(dialogs.shown().empty());
}

TEST_F(SaleValidationTest, AClosedAmountsPanelOpensFirst) {
    SaleEntry e = split("121,00");
    sales::VerifyOptions closed;
    closed.panelOpen = false;
    const Verdict v = verify(e, closed);
    EXPECT_FALSE(v.ok);
    EXPECT_TRUE(v.openPanel);
    EXPECT_EQ(v.focus, EntryField::txtBase);
    EXPECT_TRUE(dialogs.shown().empty());
    EXPECT_TRUE(verify(e).ok) << "the next attempt goes on";
}

TEST_F(SaleValidationTest, EmptyAmountsBecomeZeroAndAreSanitised) {
    SaleEntry e = split("121,00");
    e.txtRE[0] = "";
    e.txtBaseIRPF = "";
    e.Text1 = "";
    e.txtRetencio = "-";
    ASSERT_TRUE(verify(e).ok);
    EXPECT_EQ(e.txtRE[0], "0");
    EXPECT_EQ(e.txtBaseIRPF, "0");
    EXPECT_EQ(e.Text1, "0");
}

TEST_F(SaleValidationTest, OneCentBelowThePositiveTotalIsAbsorbedAsExempt) {
    SaleEntry e = split("121,00");
    e.txtIVA[0] = "20,99";
    ASSERT_TRUE(verify(e).ok);
    EXPECT_TRUE(dialogs.shown().empty());
    EXPECT_EQ(e.Exempta, Money::fromUnits(100));
}

TEST_F(SaleValidationTest, OneCentAboveThePositiveTotalIsRefused) {
    SaleEntry e = split("121,00");
    e.txtIVA[0] = "21,01";
    const Verdict v = verify(e);
    EXPECT_FALSE(v.ok);
    ASSERT_EQ(dialogs.shown().size(), 1u);
    const QString text = dialogs.lastText();
    EXPECT_TRUE(text.startsWith(M(923))) << text.toStdString();
    EXPECT_TRUE(text.contains(M(6755) + "121,00"));
    EXPECT_TRUE(text.contains(M(6756) + "121,01"));
    EXPECT_TRUE(text.contains(M(6757)));
}

TEST_F(SaleValidationTest, ALargerDifferenceAsksAndNoStops) {
    SaleEntry e = split("121,00");
    e.txtBase[0] = "90,00";
    e.txtIVA[0] = "18,90";
    dialogs.setNextAnswer(Dialogs::Answer::No);
    EXPECT_FALSE(verify(e).ok);
    const QString q = dialogs.lastText();
    EXPECT_EQ(dialogs.shown()[0].kind, ScriptedDialogs::Shown::Kind::YesNo);
    EXPECT_TRUE(q.startsWith(M(644) + "12,10")) << q.toStdString();
    EXPECT_TRUE(q.contains(M(645) + " = 108,90"));
    EXPECT_TRUE(q.contains(M(646) + "121,00"));
    EXPECT_TRUE(q.contains("NO APLICABLE IVA = 12,10"));
    EXPECT_TRUE(q.contains(M(647)));
    EXPECT_TRUE(q.endsWith(M(648)));
    EXPECT_EQ(e.Exempta, Money{});

    dialogs.setNextAnswer(Dialogs::Answer::Yes);
    EXPECT_TRUE(verify(e).ok);
    EXPECT_EQ(e.Exempta, Money::fromUnits(121000));
}

TEST_F(SaleValidationTest, ANegativeTotalWithAnyDifferenceIsAcceptedSilently) {
    SaleEntry e = split("-121,00");
    e.txtBase[0] = "-50,00";
    e.txtIVA[0] = "-10,50";
    ASSERT_TRUE(verify(e).ok);
    EXPECT_TRUE(dialogs.shown().empty());
    EXPECT_EQ(e.Exempta, Money::fromUnits(-605000));
    SaleEntry over = split("-121,00");
    over.txtBase[0] = "-50,00";
    over.txtIVA[0] = "+80,00";
    over.txtIVA[0] = "80,00";
    ASSERT_TRUE(verify(over).ok);
    EXPECT_TRUE(dialogs.shown().empty());
}

TEST_F(SaleValidationTest, NoBasesAndNoWithholdingMakeTheWholeTotalExempt) {
    SaleEntry e = entry("80,00");
    ASSERT_TRUE(verify(e).ok);
    EXPECT_TRUE(dialogs.shown().empty());
    EXPECT_EQ(e.Exempta, Money::fromUnits(800000));
}

TEST_F(SaleValidationTest, OnlyWithholdingMakesTheTotalPlusWithholdingExempt) {
    SaleEntry e = entry("85,00");
    e.txtBaseIRPF = "100,00";
    e.Text1 = "15";
    e.txtRetencio = "15,00";
    ASSERT_TRUE(verify(e).ok);
    EXPECT_TRUE(dialogs.shown().empty());
    EXPECT_EQ(e.Exempta, Money::fromUnits(1000000));
}

TEST_F(SaleValidationTest, WithholdingIsTakenFromTheSumBeforeComparing) {
    SaleEntry e = entry("100,00");
    e.txtBaseIRPF = "100";
    e.Text1 = "15";
    sales::Reparteix_Total(f.ctx, e, 21, false);
    ASSERT_TRUE(verify(e).ok);
    EXPECT_TRUE(dialogs.shown().empty());
    EXPECT_EQ(e.Exempta, Money{});
}

TEST_F(SaleValidationTest, TicketsTakeTheDayCustomerAndNeverAsk) {
    f.ctx.ModeExercici = "TICKETS";
    SaleEntry e = entry("50,00");
    e.txtClient = e.listClientsText = "";
    e.clientNumber.reset();
    sales::VerifyOptions closed;
    closed.panelOpen = false;
    const Verdict v = verify(e, closed);
    ASSERT_TRUE(v.ok);
    EXPECT_EQ(e.txtClient, M(639));
    EXPECT_EQ(e.Exempta, Money::fromUnits(500000));
    // Bases below the total: no question and no exempt difference in this kind.
    SaleEntry typed = entry("50,00");
    typed.txtBase[0] = "10,00";
    typed.txtIVA[0] = "2,10";
    ASSERT_TRUE(verify(typed, closed).ok);
    EXPECT_TRUE(dialogs.shown().empty());
    EXPECT_EQ(typed.Exempta, Money{});
}

TEST_F(SaleValidationTest, TheClassificationHintIsNeverStored) {
    SaleEntry e = split("121,00");
    e.clasificacion = M(6854);
    sales::VerifyOptions options;
    options.classification = true;
    ASSERT_TRUE(verify(e, options).ok);
    EXPECT_EQ(e.clasificacion, "");
    e.clasificacion = M(6855);
    ASSERT_TRUE(verify(e, options).ok);
    EXPECT_EQ(e.clasificacion, M(6855));
}

}  // namespace
}  // namespace tallora::testing
