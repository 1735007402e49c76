// The sales inquiry's logic: the search with its filters, orders and the quirks it keeps,
// the deletion with the money rows and the detail frame.
#include "sales/sale_inquiry.h"
#include "sales/sale_posting.h"
#include "sales_fixture.h"

namespace tallora::testing {
namespace {

using namespace sales;

class SaleInquiryTest : public SalesData {
protected:
    std::int64_t post(SaleEntry e, const QString& entitat = {}) {
        Recalcula_Apunt(f.ctx, e, e.reEnabled);
        if (!entitat.isEmpty()) {
            e.entitat = entitat;
            e.entitatId = 2;
        }
        const PostingResult r = GrabaApunt(f.ctx, e, ventas());
        EXPECT_TRUE(r.ok()) << r.error.toStdString();
        return r.ordre;
    }
    QStringList found(const SaleFilter& filter) {
        QStringList out;
        for (const SaleRow& r : Busca_Vendes(f.ctx, filter).rows) out << QString::number(r.ordre);
        return out;
    }
};

TEST_F(SaleInquiryTest, TwoCustomersOfOneNameAreFoundTogether) {
    exec(gest(), "insert into Clients (client, nom) values (3, 'Ferreteria Puig')");
    SaleEntry a = entry();
    a.txtBase[0] = "100";
    post(a);
    SaleEntry b = entry();
    b.txtBase[0] = "200";
    b.clientNumber = 3;
    post(b);
    SaleEntry c = reEntry("0");
    c.txtBase[0] = "50";
    post(c);
    SaleFilter filter;
    filter.customer = "Ferreteria Puig";
    EXPECT_EQ(found(filter), (QStringList{"1", "2"}));
    filter.order = SaleOrder::Import;
    filter.customer.clear();
    EXPECT_EQ(found(filter), (QStringList{"3", "1", "2"}));
    const SaleSearch all = Busca_Vendes(f.ctx, {});
    EXPECT_EQ(all.total, Money::fromUnits((1210000 + 2420000 + 631000)));
}

TEST_F(SaleInquiryTest, DatesAtTheirDefaultsAddNoConditionAndAnAmountReadsItsCommas) {
    SaleEntry a = entry();
    a.txtBase[0] = "1500";
    post(a);
    exec(frasOut(), "update FrasOut set data = '2025-12-31'");
    SaleFilter filter;
    filter.range.from = QDate(2026, 1, 1);
    filter.range.to = QDate(2026, 12, 31);
    EXPECT_EQ(found(filter), QStringList{"1"});
    filter.range.to = QDate(2026, 6, 30);
    EXPECT_EQ(found(filter), QStringList{"1"}) << "only a to-date: data <= it";
    filter.range.from = QDate(2026, 2, 1);
    EXPECT_EQ(found(filter), QStringList{});
    SaleFilter amount;
    amount.range.operacio = ">=";
    amount.range.import = "1815,00";
    EXPECT_EQ(found(amount), QStringList{"1"});
    amount.range.import = "1.815,00";  // the dot stays: 1.815 is read as one point eight
    EXPECT_EQ(found(amount), QStringList{"1"});
    amount.range.operacio = "<=";
    EXPECT_EQ(found(amount), QStringList{});
}

TEST_F(SaleInquiryTest, DeletingACollectedSaleTakesEverythingWithIt) {
    f.ctx.Tesoreria = true;
    SaleEntry a = entry();
    a.txtBase[0] = "100";
    post(a, "Banco Sabadell");
    SaleEntry b = entry();
    b.txtBase[0] = "100";
    post(b);
    EXPECT_EQ(rows(tesorer(), "select FrasOut from movimientos"), QStringList{"1"});
    EXPECT_TRUE(Esborra_Venda(f.ctx, 1));
    EXPECT_TRUE(rows(tesorer(), "select FrasOut from movimientos").isEmpty());
    EXPECT_TRUE(Esborra_Venda(f.ctx, 2));
    EXPECT_TRUE(rows(cartera(), "select FrasOut from cartera").isEmpty());
    EXPECT_FALSE(Esborra_Venda(f.ctx, 2));
}

TEST_F(SaleInquiryTest, TheDetailShowsEachRateTheExemptAndWhoCollected) {
    f.ctx.Tesoreria = true;
    SaleEntry a = reEntry("0");
    a.txtBase[0] = "100";
    a.txtBase[1] = "10";
    a.txtBaseIRPF = "100";
    a.Text1 = "15";
    post(a, "Banco Sabadell");
    exec(frasOut(), "update FrasOut set total = total + 50000");  // 5,00 exempt
    const auto d = Mes_FraOut(f.ctx, 1);
    ASSERT_TRUE(d);
    EXPECT_EQ(d->lblMesID, "ID: 1");
    EXPECT_EQ(d->lblMesClient, "Colmado Ruiz");
    EXPECT_EQ(d->lblMesCompte, "7000001 - Ventas mercaderias");
    EXPECT_EQ(d->lblMesDescripcio, "FACTURA: F-1");
    ASSERT_EQ(d->MesGrid.size(), 4u);
    EXPECT_EQ(d->MesGrid[0].rate, "21%");
    EXPECT_EQ(d->MesGrid[0].base, "100,00");
    EXPECT_EQ(d->MesGrid[0].re, "5,20");
    EXPECT_EQ(d->MesGrid[1].rate, "10%");
    EXPECT_EQ(d->MesGrid[3].rate, "0%");
    EXPECT_EQ(d->MesGrid[3].base, "5,00");
    EXPECT_EQ(d->MesGridIRPF.rate, "15%");
    EXPECT_EQ(d->MesGridIRPF.iva, "15,00");
    EXPECT_EQ(d->lblMesPagada, M(6677) + "Banco Sabadell");
    exec(frasOut(), "update FrasOut set Cobrada = 0");
    EXPECT_EQ(Mes_FraOut(f.ctx, 1)->lblMesPagada, M(6676));
    EXPECT_FALSE(Mes_FraOut(f.ctx, 9));
}

}  // namespace
}  // namespace tallora::testing
