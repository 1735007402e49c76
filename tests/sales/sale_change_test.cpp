// Modifica_Venda and the saving of a change: the three cases of the money rows, and the
// rates of a posted sale that never change.
#include "sales/sale_change.h"
#include "sales/sale_posting.h"
#include "sales/sale_validation.h"
#include "sales_fixture.h"
#include "treasury/runs.h"

namespace tallora::testing {
namespace {

using sales::LoadedSale;

class SaleChangeTest : public SalesData {
protected:
    void SetUp() override {
        SalesData::SetUp();
        f.ctx.Tesoreria = true;
    }
    std::int64_t post(SaleEntry e, const QString& entitat = {}, std::int64_t id = 0) {
        sales::Reparteix_Total(f.ctx, e, 21, e.reEnabled);
        if (!entitat.isEmpty()) {
            e.entitat = entitat;
            e.entitatId = id;
        }
        const auto account = sales::Verifica_compte_venda(f.ctx, e.txtTipus);
        const auto r = sales::GrabaApunt(f.ctx, e, *account);
        EXPECT_TRUE(r.ok()) << r.error.toStdString();
        return r.ordre;
    }
    LoadedSale load(std::int64_t number) {
        auto loaded = sales::Modifica_Venda(f.ctx, QString::number(number));
        EXPECT_TRUE(loaded);
        return loaded ? *loaded : LoadedSale{};
    }
    sales::PostingResult save(SaleEntry& e) {
        const auto verdict = sales::Verifica_Apunt(f.ctx, dialogs, e, {});
        EXPECT_TRUE(verdict.ok) << dialogs.lastText().toStdString();
        if (!verdict.ok) return {};
        return sales::GrabaApunt(f.ctx, e, *verdict.account);
    }
    QStringList movements() {
        return rows(tesorer(), "select data, entidad, cliente, FrasOut, concepto, D, H "
                               "from movimientos order by Id");
    }
    QStringList receipts() {
        return rows(cartera(), "select data, cliente, Ejercicio, Factura, Total, Pendiente, "
                               "FrasOut, Vencimiento from cartera order by Id");
    }
};

TEST_F(SaleChangeTest, APostedSaleLoadsIntoTheEntry) {
    SaleEntry e = reEntry("121,00");
    e.txtdescripcio = "F-9";
    e.cmbSerie = "/Rect";
    e.concepte[0] = "Reparto";
    const auto n = post(e, "Banco Sabadell", 2);
    const LoadedSale s = load(n);
    EXPECT_EQ(s.entry.lblOrdre, "1");
    EXPECT_EQ(s.entry.lblFecha, "15/03/2026");
    EXPECT_EQ(s.entry.txtDia, "15");
    EXPECT_EQ(s.entry.txtMes, "3");
    EXPECT_EQ(s.entry.txtClient, "Colmado Ruiz");
    EXPECT_EQ(s.entry.clientNumber, 2);
    EXPECT_EQ(s.entry.txtTipus, "Ventas mercaderias");
    EXPECT_EQ(s.entry.txtdescripcio, "F-9/Rect") << "the series stays inside the description";
    EXPECT_EQ(s.entry.cmbSerie, "");
    EXPECT_EQ(s.entry.txtTotal, "121,00");
    EXPECT_EQ(s.entry.txtBase[0], "95,88");
    EXPECT_EQ(s.entry.txtIVA[0], "20,13");
    EXPECT_EQ(s.entry.txtRE[0], "4,99");
    EXPECT_EQ(s.entry.txtBase[1], "0,00");
    EXPECT_EQ(s.entry.entitat, "Banco Sabadell");
    EXPECT_EQ(s.entry.entitatId, 2);
    EXPECT_EQ(s.entry.concepte[0], "Reparto");
    EXPECT_EQ(s.Tiva[0], 21);
    EXPECT_EQ(s.Tre[0], 5.2);
    EXPECT_FALSE(s.settled);
}

TEST_F(SaleChangeTest, AnEmptyOrUnknownNumberLoadsNothing) {
    EXPECT_FALSE(sales::Modifica_Venda(f.ctx, ""));
    EXPECT_FALSE(sales::Modifica_Venda(f.ctx, "77"));
}

TEST_F(SaleChangeTest, TheRefusalWhileAnEntryIsTypedJoinsThreeMessages) {
    sales::refuseChangeInProgress(f.ctx, dialogs);
    ASSERT_EQ(dialogs.shown().size(), 1u);
    EXPECT_EQ(dialogs.shown()[0].kind, ScriptedDialogs::Shown::Kind::Stop);
    EXPECT_EQ(dialogs.lastText(), M(657) + "\n\n" + M(658) + "\n\n" + M(659));
}

TEST_F(SaleChangeTest, APendingSaleChangedToAnAccountLosesItsReceiptAndGainsOneMovement) {
    const auto n = post(entry("121,00"));
    ASSERT_EQ(receipts().size(), 1);
    LoadedSale s = load(n);
    s.entry.entitat = "Banco Sabadell";
    s.entry.entitatId = 2;
    ASSERT_TRUE(save(s.entry).ok());
    EXPECT_TRUE(receipts().isEmpty());
    EXPECT_EQ(movements(), QStringList{"2026-03-15|2|1|1|N/Fra. F-1|1210000|0"});
    EXPECT_EQ(rows(frasOut(), "select Cobrada from FrasOut"), QStringList{"-1"});
}

TEST_F(SaleChangeTest, ACollectedSaleWithTheAccountClearedBecomesAReceipt) {
    const auto n = post(entry("121,00"), "Banco Sabadell", 2);
    ASSERT_EQ(movements().size(), 1);
    LoadedSale s = load(n);
    s.entry.entitat.clear();
    s.entry.entitatId.reset();
    s.entry.venciment = QDate(2026, 6, 30);
    ASSERT_TRUE(save(s.entry).ok());
    EXPECT_TRUE(movements().isEmpty());
    EXPECT_EQ(receipts(), QStringList{"2026-03-15|1|2026|F-1|1210000|0|1|2026-06-30"});
    EXPECT_EQ(rows(frasOut(), "select Cobrada from FrasOut"), QStringList{"0"});
}

TEST_F(SaleChangeTest, AChangeRebuildsTheMoneyRowsFromTheNewAmounts) {
    const auto n = post(entry("121,00"));
    exec(cartera(), "update cartera set Pendiente = 500000");
    LoadedSale s = load(n);
    s.entry.txtTotal = "242,00";
    s.entry.txtBase[0] = "200,00";
    s.entry.txtIVA[0] = "42,00";
    ASSERT_TRUE(save(s.entry).ok());
    // A pending sale saved again starts a fresh receipt: what was collected on account goes.
    EXPECT_EQ(rows(cartera(), "select Total, Pendiente from cartera"), QStringList{"2420000|0"});
    EXPECT_EQ(rows(frasOut(), "select TOTAL, Base1, Iva1 from FrasOut"),
              QStringList{"2420000|2000000|420000"});
}

TEST_F(SaleChangeTest, ASettledSaleKeepsItsMoneyRowsAndRewritesOnlyTexts) {
    const auto n = post(entry("121,00"), "Banco Sabadell", 2);
    exec(frasOut(), "update FrasOut set Marca = -1");
    exec(cartera(), "insert into cartera (data, cliente, In_Out, Ejercicio, Factura, Total, "
                    "Pendiente, FrasOut) values ('2026-03-15', 1, 'Out', '2026', 'F-1', 1210000, "
                    "600000, 1)");
    LoadedSale s = load(n);
    EXPECT_TRUE(s.settled);
    EXPECT_EQ(s.entry.entitat, "Marca");
    EXPECT_FALSE(s.entry.entitatId);
    s.entry.txtClient = s.entry.listClientsText = "Colmado Ruiz";
    s.entry.clientNumber = 2;
    s.entry.txtdescripcio = "F-1b";
    s.entry.txtTotal = "242,00";
    s.entry.txtBase[0] = "200,00";
    s.entry.txtIVA[0] = "42,00";
    s.entry.venciment = QDate(2026, 5, 1);
    ASSERT_TRUE(save(s.entry).ok());
    // The movement keeps its amount; the receipt keeps what was collected on account.
    EXPECT_EQ(movements(), QStringList{"2026-03-15|2|2|1|F-1b|1210000|0"});
    EXPECT_EQ(receipts(), QStringList{"2026-03-15|2|2026|F-1b|2420000|600000|1|2026-05-01"});
    EXPECT_EQ(rows(frasOut(), "select Cobrada, Marca, NomClient from FrasOut"),
              QStringList{"0|-1|Colmado Ruiz"});
}

TEST_F(SaleChangeTest, ASalePartlyCollectedInARunIsLockedToItsMark) {
    const auto n = post(entry("121,00"));
    const auto open = treasury::openReceipts(f.ctx, treasury::kCollections);
    ASSERT_EQ(open.size(), 1u);
    ASSERT_TRUE(
        treasury::Passa_Recibo(f.ctx, dialogs, treasury::kCollections, open[0].id, "60")->moved);
    ASSERT_FALSE(
        treasury::Contabilizar(f.ctx, dialogs, treasury::kCollections, 2, QDate(2026, 4, 1))
            .refusal);
    EXPECT_EQ(rows(frasOut(), "select Cobrada, Marca from FrasOut"), QStringList{"0|-1"});
    LoadedSale s = load(n);
    EXPECT_TRUE(s.settled);
    EXPECT_EQ(s.entry.entitat, "Marca");
    EXPECT_FALSE(s.entry.entitatId);
}

TEST_F(SaleChangeTest, ThePostedRatesAreNeverRewritten) {
    const auto n = post(entry("121,00"));
    f.ctx.TipusIVA = {18, 8, 4};
    f.ctx.TipusRE = {4, 1, 0.5};
    LoadedSale s = load(n);
    EXPECT_EQ(s.Tiva[0], 21) << "the captions show the stored rates";
    sales::Recalcula_Apunt(f.ctx, s.entry, false);
    EXPECT_EQ(s.entry.txtIVA[0], "18,00") << "a recalculation uses the context's";
    s.entry.txtIVA[0] = "21,00";
    s.entry.txtTotal = "121,00";
    ASSERT_TRUE(save(s.entry).ok());
    EXPECT_EQ(rows(frasOut(), "select TIva1, TIva2, TRE1 from FrasOut"),
              QStringList{"210000|100000|52000"});
}

TEST_F(SaleChangeTest, ADateMovedIntoALockedMonthIsRefused) {
    const auto n = post(entry("121,00"));
    f.ctx.chkmesos[4] = 1;
    LoadedSale s = load(n);
    s.entry.txtMes = "5";
    const auto verdict = sales::Verifica_Apunt(f.ctx, dialogs, s.entry, {});
    EXPECT_FALSE(verdict.ok);
    EXPECT_EQ(dialogs.lastText(), M(622));
    EXPECT_EQ(rows(frasOut(), "select data from FrasOut"), QStringList{"2026-03-15"});
}

TEST_F(SaleChangeTest, AReceiptOfAnotherExerciseWithTheSameNumberIsLeftAlone) {
    exec(cartera(), "insert into cartera (data, cliente, In_Out, Ejercicio, Factura, Total, "
                    "FrasOut) values ('2025-11-02', 1, 'Out', '2025', 'F-old', 50000, 1)");
    const auto n = post(entry("121,00"));
    LoadedSale s = load(n);
    s.entry.entitat = "Banco Sabadell";
    s.entry.entitatId = 2;
    ASSERT_TRUE(save(s.entry).ok());
    EXPECT_EQ(rows(cartera(), "select Ejercicio, Factura from cartera"),
              QStringList{"2025|F-old"});
}

TEST_F(SaleChangeTest, ASaleGoneMeanwhileWritesNothing) {
    const auto n = post(entry("121,00"));
    LoadedSale s = load(n);
    exec(frasOut(), "delete from FrasOut");
    s.entry.entitat = "Banco Sabadell";
    s.entry.entitatId = 2;
    const auto account = sales::Verifica_compte_venda(f.ctx, s.entry.txtTipus);
    const auto r = sales::GrabaApunt(f.ctx, s.entry, *account);
    EXPECT_EQ(r.affected, 0);
    EXPECT_FALSE(r.ok());
    EXPECT_TRUE(movements().isEmpty());
    EXPECT_EQ(receipts().size(), 1) << "the receipt of the vanished sale is not touched";
}

}  // namespace
}  // namespace tallora::testing
