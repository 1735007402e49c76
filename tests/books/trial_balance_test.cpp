// The summary of balances: every line of its fixed order with its query and side, the other
// accounts by their kind, the totals that merge a repeated number, and the refusal without
// treasury control.
#include "books/trial_balance.h"
#include "books_fixture.h"
#include "context/dialogs.h"
#include "context/messages.h"

#include <gtest/gtest.h>

using namespace tallora;
using namespace tallora::books;

namespace {

class TrialBalanceTest : public tallora::testing::BooksData {
protected:
    void SetUp() override {
        BooksData::SetUp();
        f.ctx.Tesoreria = true;
        // The chart's own other accounts would stand among the lines: the tests make theirs.
        exec(comptes(), "delete from Otras");
    }
    QString saldos() const { return f.exercise + schema::db::Saldos; }
    // Number, debit, credit (empty for none), in the order of the print.
    QStringList lines() const {
        return rows(saldos(),
                    "select Cuenta, case when coalesce(SaldoD, 0) = 0 then '' else SaldoD "
                    "end, case when coalesce(SaldoH, 0) = 0 then '' else SaldoH end "
                    "from saldos order by Id");
    }
    ScriptedDialogs dialogs;
};

}  // namespace

TEST_F(TrialBalanceTest, ANewExercisePrintsEveryFixedLineEmptyAndTwoZeroTotals) {
    const auto totals = Genera_Saldos(f.ctx, dialogs);
    ASSERT_TRUE(totals);
    EXPECT_EQ(totals->debit, Money{});
    EXPECT_EQ(totals->credit, Money{});
    EXPECT_EQ(lines(), (QStringList{"430||", "400||", "570||", "600||", "620||", "630||", "640||",
                                    "680||", "700||", "472||", "477||", "473||", "473||", "200||",
                                    "554||", "554||"}));
    EXPECT_EQ(rows(saldos(), "select Descripcion from saldos where Id = 1"),
              QStringList{Missatge(f.ctx, 6952)});
}

TEST_F(TrialBalanceTest, WithoutTreasuryNothingIsBuilt) {
    f.ctx.Tesoreria = false;
    EXPECT_FALSE(Genera_Saldos(f.ctx, dialogs));
    ASSERT_EQ(dialogs.shown().size(), 1u);
    EXPECT_EQ(dialogs.shown().front().text, Missatge(f.ctx, 6979));
    EXPECT_FALSE(QFile::exists(saldos()));
}

TEST_F(TrialBalanceTest, AnInvoicePaidInFullShowsWhatWasCollected) {
    exec(cartera(),
         "insert into cartera (cliente, Total, Pendiente, In_Out) values "
         "(1, 1210000, 0, 'Out'), (1, 500000, 500000, 'Out')");
    Genera_Saldos(f.ctx, dialogs);
    EXPECT_EQ(lines().front(), "430|1210000|");
}

TEST_F(TrialBalanceTest, ACreditNoteLargerThanTheSalesPutsTheSalesLineOnTheDebitSide) {
    sale(1, "2026-02-01", "F-1", 1210000, {1000000, 0, 0});
    sale(2, "2026-03-01", "F-2/Abon", -2420000, {-2000000, 0, 0});
    const auto totals = Genera_Saldos(f.ctx, dialogs);
    const QStringList all = lines();
    // The sales net of IVA and recargo (5,2 % on the first rate): 948,00 below nothing.
    EXPECT_EQ(all[8], "700|948000|");
    // The IVA and recargo charged went negative too: on the debit side.
    EXPECT_EQ(all[10], "477|262000|");
    EXPECT_EQ(totals->debit, Money::fromUnits(1210000));
}

TEST_F(TrialBalanceTest, OtherAccountsFollowTheirKindAndAnUnknownKindHasNoAmount) {
    exec(comptes(),
         "insert into Otras (Grup, NomGrup, Compte, NomCompte, Saldo, Tipus) values "
         "(170, 'Deudas a largo plazo', 901, 'Préstamo', 5000000, 'P'), "
         "(250, 'Inversiones financieras', 902, 'Acciones', 1000000, 'A'), "
         "(129, 'Resultado', 903, 'Pérdidas', 300000, 'X')");
    exec(tesorer(), "insert into otros_movimientos (cta_sale_otra, Importe) values (901, 1000000)");
    Genera_Saldos(f.ctx, dialogs);
    const QStringList all = lines();
    ASSERT_EQ(all.size(), 19);
    EXPECT_EQ(all[11], "170||4000000");
    EXPECT_EQ(all[12], "250|1000000|");
    EXPECT_EQ(all[13], "129||");
}

TEST_F(TrialBalanceTest, ARepeatedNumberCountsItsDifferenceOnceInTheTotals) {
    exec(frasIn(),
         "insert into FrasIN (Ordre, data, Grup, TOTAL, Base1, Iva1, Retencio) values "
         "(1, '2026-01-10', 62, 850000, 1000000, 0, 150000)");
    sale(1, "2026-02-01", "F-1", 1060000, {1000000, 0, 0}, 150000, 1000000);
    const auto totals = Genera_Saldos(f.ctx, dialogs);
    const QStringList all = lines();
    EXPECT_EQ(all[11], "473||150000");
    EXPECT_EQ(all[12], "473|150000|");
    // 620 debit 100, 700 credit 100, 477 credit 21 (the sale's IVA), 473 merged to nothing.
    EXPECT_EQ(totals->debit, Money::fromUnits(1000000));
    EXPECT_EQ(totals->credit, Money::fromUnits(1210000));
}

TEST_F(TrialBalanceTest, ProvisionsReceivedStayOnTheDebitSideWhateverTheirSign) {
    exec(supl(),
         "insert into Suplidos (Ordre, TOTAL, Tipus) values (1, -300000, 'S'), "
         "(2, -100000, 'P')");
    Genera_Saldos(f.ctx, dialogs);
    const QStringList all = lines();
    EXPECT_EQ(all[14], "554|300000|");
    EXPECT_EQ(all[15], "554|100000|");
}
