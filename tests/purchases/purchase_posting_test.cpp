// GrabaApunt of the purchases screen: the FrasIN row column by column, the movement or the
// receipt, the three treasury cases of a change, and all or nothing across the three files.
#include "purchases/purchase_posting.h"
#include "purchases/purchase_change.h"
#include "purchases/purchase_validation.h"
#include "purchases_fixture.h"

namespace tallora::testing {
namespace {

using purchases::PostingResult;

class PurchasePostingTest : public PurchasesData {
protected:
    PostingResult post(PurchaseEntry& e, std::int64_t screenOrdre = 0) {
        const auto verdict = purchases::Verifica_Apunt(f.ctx, dialogs, e, {});
        EXPECT_TRUE(verdict.ok) << dialogs.lastText().toStdString();
        if (!verdict.ok) return {};
        return purchases::GrabaApunt(f.ctx, e, *verdict.account, screenOrdre);
    }
    PurchaseEntry reload(std::int64_t ordre) {
        auto loaded = purchases::Modifica_Compra(f.ctx, QString::number(ordre));
        EXPECT_TRUE(loaded.has_value());
        return loaded ? loaded->entry : PurchaseEntry{};
    }
    QStringList movements() {
        return rows(tesorer(),
                    "select data, entidad, proveedor, cliente, FrasIn, FrasOut, "
                    "concepto, D, H from movimientos order by Id");
    }
    QStringList receipts() {
        return rows(cartera(),
                    "select data, proveedor, In_Out, Ejercicio, Factura, Total, "
                    "FrasIn, Vencimiento from cartera order by Id");
    }
    QStringList purchases(const QString& columns = "Ordre, descripcio, Pagada") {
        return rows(frasIn(), "select " + columns + " from FrasIN order by Ordre");
    }
};

TEST_F(PurchasePostingTest, WithoutTreasuryOnlyThePurchaseIsWrittenColumnByColumn) {
    f.ctx.Intra = true;
    PurchaseEntry e = entry("106,00");
    e.txtBaseIRPF = "100,00";
    e.txtTipus = "15";
    purchases::Calcula_Bases(f.ctx, e, 21);
    e.cmbSerie = "/Rect";
    e.clasificacion = M(6855);
    const PostingResult r = post(e);
    ASSERT_TRUE(r.ok()) << r.error.toStdString();
    EXPECT_EQ(r.ordre, 1) << "an empty FrasIN starts at 1";
    EXPECT_EQ(r.affected, 1);
    EXPECT_EQ(purchases("TOTAL, Ordre, BaseIRPF, TipusIRPF, Retencio, Base1, TipusIva1, Iva1, "
                        "Base2, TipusIva2, Iva2, Base3, TipusIva3, Iva3, Base4, TipusIva4, Iva4, "
                        "Proveidor, NomProveidor, descripcio, data, Grup, NomGrup, Compte, "
                        "NomCompte, Exempta, Periode, Venciment, Pagada, Clasificacion, Marca, "
                        "NumIVA, Protegit"),
              QStringList{"1060000|1|1000000|150000|150000|0|210000|0|0|100000|0|0|40000|0|"
                          "1000000|210000|210000|1|MADERAS SOLER|F-1/Rect|2026-03-15|60|Compras|"
                          "6000001|Compras mercaderias|0|1T|2026-03-15|0|" +
                          M(6855) + "|0|0|0"});
    EXPECT_TRUE(movements().isEmpty());
    EXPECT_TRUE(receipts().isEmpty());
}

TEST_F(PurchasePostingTest, TheRatesOfTheMomentAreKeptAndAChangeNeverRewritesThem) {
    PurchaseEntry e = entry("50,00");
    ASSERT_TRUE(post(e).ok());
    EXPECT_EQ(purchases("TipusIva1, TipusIva2, TipusIva3, TipusIva4"),
              QStringList{"210000|100000|40000|210000"})
        << "all four, also where base and quota are 0";
    f.ctx.TipusIVAs = {18, 8, 4, 0};
    PurchaseEntry changed = reload(1);
    changed.txtTotal = "60,00";
    ASSERT_TRUE(post(changed).ok());
    EXPECT_EQ(purchases("TOTAL, TipusIva1, TipusIva2, TipusIva3, TipusIva4"),
              QStringList{"600000|210000|100000|40000|210000"});
}

TEST_F(PurchasePostingTest, ADescriptionDashTakesTheNumber) {
    exec(frasIn(), "insert into FrasIN (Ordre) values (4)");
    PurchaseEntry e = split("121,00");
    e.txtdescripcio = "-";
    const PostingResult r = post(e);
    ASSERT_TRUE(r.ok());
    EXPECT_EQ(r.ordre, 5);
    EXPECT_EQ(e.txtdescripcio, "5");
    EXPECT_EQ(purchases("Ordre, descripcio").last(), "5|5");
}

TEST_F(PurchasePostingTest, TreasuryPaidWritesAMovementOnTheHSide) {
    f.ctx.Tesoreria = true;
    PurchaseEntry e = split("121,00");
    e.entitat = "Banco Sabadell";
    e.entitatId = 2;
    ASSERT_TRUE(post(e).ok());
    EXPECT_EQ(purchases(), QStringList{"1|F-1|-1"});
    EXPECT_EQ(movements(), QStringList{"2026-03-15|2|1|0|1|0|S/Fra. F-1|0|1210000"});
    EXPECT_TRUE(receipts().isEmpty());
}

TEST_F(PurchasePostingTest, TreasuryPendingWritesAReceiptToPay) {
    f.ctx.Tesoreria = true;
    PurchaseEntry e = split("121,00");
    e.cmbSerie = "/Abon";
    ASSERT_TRUE(post(e).ok());
    EXPECT_EQ(purchases(), QStringList{"1|F-1/Abon|0"});
    EXPECT_EQ(receipts(), QStringList{"2026-03-15|1|In|2026|F-1/Abon|1210000|1|2026-04-15"});
    EXPECT_TRUE(movements().isEmpty());
}

TEST_F(PurchasePostingTest, APendingEntryChangedWithAnAccountBecomesPaid) {
    f.ctx.Tesoreria = true;
    PurchaseEntry e = split("121,00");
    ASSERT_TRUE(post(e).ok());
    PurchaseEntry changed = reload(1);
    EXPECT_EQ(changed.venciment, QDate(2026, 4, 15)) << "the due date of its receipt";
    changed.entitat = "Caja efectivo";
    changed.entitatId = 1;
    ASSERT_TRUE(post(changed).ok());
    EXPECT_TRUE(receipts().isEmpty());
    EXPECT_EQ(movements(), QStringList{"2026-03-15|1|1|0|1|0|S/Fra. F-1|0|1210000"});
    EXPECT_EQ(purchases(), QStringList{"1|F-1|-1"});
}

TEST_F(PurchasePostingTest, APaidEntryLeftPendingLosesItsMovementAndGetsAReceipt) {
    f.ctx.Tesoreria = true;
    PurchaseEntry e = split("121,00");
    e.entitat = "Banco Sabadell";
    e.entitatId = 2;
    ASSERT_TRUE(post(e).ok());
    PurchaseEntry changed = reload(1);
    EXPECT_EQ(changed.entitat, "Banco Sabadell");
    changed.entitat.clear();
    changed.entitatId.reset();
    changed.venciment = QDate(2026, 5, 1);
    ASSERT_TRUE(post(changed).ok());
    EXPECT_TRUE(movements().isEmpty());
    EXPECT_EQ(receipts(), QStringList{"2026-03-15|1|In|2026|F-1|1210000|1|2026-05-01"});
    EXPECT_EQ(purchases(), QStringList{"1|F-1|0"});
}

TEST_F(PurchasePostingTest, ASettledEntryKeepsItsMoneyRowsAndUpdatesItsReceipt) {
    f.ctx.Tesoreria = true;
    PurchaseEntry e = split("121,00");
    ASSERT_TRUE(post(e).ok());
    // Settled by a payment run: Marca, its payment, and a sale 3's movement elsewhere.
    exec(frasIn(), "update FrasIN set Marca = -1");
    exec(tesorer(),
         "insert into movimientos (data, entidad, proveedor, FrasIn, concepto, D, H) "
         "values ('2026-04-01', 2, 1, 1, 'Pago', 0, 1210000)");
    exec(tesorer(),
         "insert into movimientos (data, entidad, cliente, FrasOut, concepto, D, H) "
         "values ('2026-04-02', 2, 5, 3, 'N/Fra. 3', 500000, 0)");
    auto loaded = purchases::Modifica_Compra(f.ctx, "1");
    ASSERT_TRUE(loaded);
    EXPECT_TRUE(loaded->settled);
    EXPECT_EQ(loaded->entry.entitat, "Marca");
    PurchaseEntry changed = loaded->entry;
    changed.txtProveidor = changed.listProvText = "GESTORIA PUIG";
    changed.supplierNumber = 2;
    changed.txtdescripcio = "F-9";
    changed.venciment = QDate(2026, 6, 30);
    // The screen's last new entry was number 3: the sale of that number is renamed.
    ASSERT_TRUE(post(changed, 3).ok());
    EXPECT_EQ(receipts(), QStringList{"2026-03-15|2|In|2026|F-9|1210000|1|2026-06-30"})
        << "updated, never deleted";
    EXPECT_EQ(movements(), (QStringList{"2026-04-01|2|1|0|1|0|Pago|0|1210000",
                                        "2026-04-02|2|2|5|0|3|F-9|500000|0"}));
    EXPECT_EQ(purchases("Ordre, NomProveidor, Pagada, Marca"), QStringList{"1|GESTORIA PUIG|0|-1"});
}

TEST_F(PurchasePostingTest, AReceiptOfAnotherExerciseWithTheSameNumberIsLeftAlone) {
    f.ctx.Tesoreria = true;
    exec(cartera(),
         "insert into cartera (data, proveedor, In_Out, Ejercicio, Factura, Total, "
         "FrasIn) values ('2025-06-01', 1, 'In', '2025', 'A-1', 100000, 1)");
    PurchaseEntry e = split("121,00");
    ASSERT_TRUE(post(e).ok());
    PurchaseEntry changed = reload(1);
    changed.entitat = "Caja efectivo";
    changed.entitatId = 1;
    ASSERT_TRUE(post(changed).ok());
    EXPECT_EQ(receipts(), QStringList{"2025-06-01|1|In|2025|A-1|100000|1|<null>"});
}

TEST_F(PurchasePostingTest, AFaultInTheSecondWriteLeavesNoRowInAnyFile) {
    f.ctx.Tesoreria = true;
    exec(tesorer(),
         "create trigger fault before insert on movimientos "
         "begin select raise(abort, 'disk full'); end");
    exec(cartera(),
         "create trigger fault before insert on cartera "
         "begin select raise(abort, 'disk full'); end");
    PurchaseEntry paid = split("121,00");
    paid.txtdescripcio = "-";
    paid.entitat = "Banco Sabadell";
    paid.entitatId = 2;
    const auto account = compras();
    PostingResult r = purchases::GrabaApunt(f.ctx, paid, account);
    EXPECT_FALSE(r.ok());
    EXPECT_TRUE(r.error.contains("disk full")) << r.error.toStdString();
    EXPECT_EQ(paid.txtdescripcio, "-") << "the entry stays as typed";
    PurchaseEntry pending = split("121,00");
    EXPECT_FALSE(purchases::GrabaApunt(f.ctx, pending, account).ok());
    EXPECT_TRUE(purchases().isEmpty());
    EXPECT_TRUE(movements().isEmpty());
    EXPECT_TRUE(receipts().isEmpty());
}

TEST_F(PurchasePostingTest, AFaultInAChangeLeavesThePostedEntryAsItWas) {
    f.ctx.Tesoreria = true;
    PurchaseEntry e = split("121,00");
    ASSERT_TRUE(post(e).ok());
    exec(tesorer(),
         "create trigger fault before insert on movimientos "
         "begin select raise(abort, 'disk full'); end");
    PurchaseEntry changed = reload(1);
    changed.txtTotal = "242,00";
    changed.txtBase[3] = "200,00";
    changed.txtIVA[3] = "42,00";
    changed.entitat = "Banco Sabadell";
    changed.entitatId = 2;
    EXPECT_FALSE(purchases::GrabaApunt(f.ctx, changed, compras()).ok());
    EXPECT_EQ(purchases("TOTAL, Pagada"), QStringList{"1210000|0"});
    EXPECT_EQ(receipts().size(), 1);
    EXPECT_TRUE(movements().isEmpty());
}

TEST_F(PurchasePostingTest, ModificaCompraFillsTheEntryFromTheRow) {
    PurchaseEntry e = entry("106,00");
    e.group = 0;
    e.txtBaseIRPF = "100,00";
    e.txtTipus = "15";
    purchases::Calcula_Bases(f.ctx, e, 10);
    ASSERT_TRUE(post(e).ok());
    auto loaded = purchases::Modifica_Compra(f.ctx, "1");
    ASSERT_TRUE(loaded);
    const PurchaseEntry& l = loaded->entry;
    EXPECT_EQ(l.lblOrdre, "1");
    EXPECT_EQ(l.lblFecha, "15/03/2026");
    EXPECT_EQ(l.txtDia, "15");
    EXPECT_EQ(l.txtMes, "3");
    EXPECT_EQ(l.group, 0);
    EXPECT_EQ(l.txtProveidor, "MADERAS SOLER");
    EXPECT_EQ(l.supplierNumber, 1);
    EXPECT_EQ(l.txtDespesa, "Compras mercaderias");
    EXPECT_EQ(l.txtTotal, "106,00");
    EXPECT_EQ(l.txtBaseIRPF, "100,00");
    EXPECT_EQ(l.txtRetencio, "15,00");
    EXPECT_EQ(l.txtBase[1], "110,00");
    EXPECT_EQ(l.txtIVA[1], "11,00");
    EXPECT_EQ(loaded->TipusIva, (std::array<double, 4>{21, 10, 4, 21}));
    EXPECT_FALSE(loaded->settled);
    EXPECT_FALSE(purchases::Modifica_Compra(f.ctx, "2"));
    EXPECT_FALSE(purchases::Modifica_Compra(f.ctx, ""));
}

}  // namespace
}  // namespace tallora::testing
