// FormConsIN's logic: the search kept as the view SelFras, its filters and orders, the
// deletion with the treasury rows, the detail frame, and the exempt recalculations.
#include "purchases/purchase_inquiry.h"
#include "purchases/exempt_amounts.h"
#include "purchases_fixture.h"
#include "store/database.h"

namespace tallora::testing {
namespace {

using purchases::PurchaseFilter;
using purchases::PurchaseOrder;

class PurchaseInquiryTest : public PurchasesData {
protected:
    void SetUp() override {
        PurchasesData::SetUp();
        f.ctx.Exercici = "2026";
        exec(frasIn(),
             "insert into FrasIN (Ordre, data, Proveidor, NomProveidor, Grup, NomGrup, Compte, "
             "NomCompte, descripcio, TOTAL, Base1, Iva1, TipusIva1, TipusIva2, TipusIva3, "
             "TipusIva4, Exempta, BaseIRPF, TipusIRPF, Retencio, Pagada) values "
             "(1, '2026-03-15', 1, 'MADERAS SOLER', 60, 'Compras', 6000001, "
             "'Compras mercaderias', 'F-1', 1210000, 1000000, 210000, 210000, 100000, 40000, "
             "210000, 0, 0, 0, 0, 0), "
             "(2, '2026-01-10', 2, 'GESTORIA PUIG', 62, 'Servicios', 6230001, 'Asesoria', "
             "'G-7', 1000000, 0, 0, 210000, 100000, 40000, 210000, 1000000, 0, 0, 0, -1), "
             "(3, '2026-06-01', 1, 'MADERAS SOLER', 60, 'Compras', 6000001, "
             "'Compras mercaderias', 'F-2', 12345000, 0, 0, 210000, 100000, 40000, 210000, 0, "
             "0, 0, 0, 0)");
    }
    QStringList ids(const PurchaseFilter& filter) {
        QStringList out;
        for (const auto& r : purchases::Buscar(f.ctx, filter).rows) out << QString::number(r.ordre);
        return out;
    }
    PurchaseFilter all() const {
        PurchaseFilter filter;
        filter.range.from = QDate(2026, 1, 1);
        filter.range.to = QDate(2026, 12, 31);
        return filter;
    }
};

TEST_F(PurchaseInquiryTest, EverythingByDefaultWithTotalAndCount) {
    const auto search = purchases::Buscar(f.ctx, all());
    ASSERT_EQ(search.rows.size(), 3u);
    EXPECT_EQ(search.total, Money::fromUnits(1210000 + 1000000 + 12345000));
    EXPECT_EQ(search.rows[1].nomProveidor, "GESTORIA PUIG");
    EXPECT_EQ(search.rows[1].data, QDate(2026, 1, 10));
    EXPECT_EQ(search.rows[1].descripcio, "G-7");
}

TEST_F(PurchaseInquiryTest, OrdersAsTheOptionsSay) {
    PurchaseFilter filter = all();
    filter.order = PurchaseOrder::Data;
    EXPECT_EQ(ids(filter), (QStringList{"2", "1", "3"}));
    filter.order = PurchaseOrder::Natur;
    EXPECT_EQ(ids(filter), (QStringList{"2", "1", "3"}));
    filter.order = PurchaseOrder::Prov;
    EXPECT_EQ(ids(filter), (QStringList{"2", "1", "3"}));
    filter.order = PurchaseOrder::Import;
    EXPECT_EQ(ids(filter), (QStringList{"2", "1", "3"}));
    filter.order = PurchaseOrder::Id;
    EXPECT_EQ(ids(filter), (QStringList{"1", "2", "3"}));
}

TEST_F(PurchaseInquiryTest, SupplierAndAmountEqualFilterTogether) {
    PurchaseFilter filter = all();
    filter.supplier = "maderas soler";
    filter.range.import = "121";
    EXPECT_EQ(ids(filter), QStringList{"1"});
    const QString sql = purchases::selectionSql(f.ctx, filter);
    EXPECT_TRUE(
        sql.startsWith("select * from FrasIN where nomproveidor = 'maderas soler' and "
                       "total = "))
        << sql.toStdString();
    filter.range.operacio = ">=";
    EXPECT_EQ(ids(filter), (QStringList{"1", "3"}));
    filter.range.operacio = "<>";
    EXPECT_EQ(ids(filter), QStringList{"3"});
}

TEST_F(PurchaseInquiryTest, OnlyTheCommaOfATypedAmountIsConvertedAndTheDotPasses) {
    PurchaseFilter filter = all();
    filter.range.import = "1234,5";
    EXPECT_EQ(ids(filter), QStringList{"3"});
    // "1.234,50" reads as 1.234 once its comma is a point too: nothing is that.
    filter.range.import = "1.234,50";
    EXPECT_TRUE(ids(filter).isEmpty());
    filter.range.import = "-";
    EXPECT_EQ(ids(filter).size(), 3) << "a lone sign is no condition";
}

TEST_F(PurchaseInquiryTest, AQuoteInAFilterIsAValueNotSql) {
    PurchaseFilter filter = all();
    filter.supplier = "x' or '1'='1";
    EXPECT_TRUE(ids(filter).isEmpty());
    filter = all();
    filter.range.import = "1) or (1=1";
    EXPECT_TRUE(ids(filter).isEmpty());
}

TEST_F(PurchaseInquiryTest, DatesAtTheExercisesEdgesAreNoCondition) {
    PurchaseFilter filter = all();
    filter.range.from = QDate(2026, 3, 1);
    EXPECT_EQ(ids(filter), (QStringList{"1", "3"}));
    filter.range.to = QDate(2026, 5, 31);
    EXPECT_EQ(ids(filter), QStringList{"1"});
    filter.range.from = QDate(2026, 1, 1);
    EXPECT_EQ(ids(filter), (QStringList{"1", "2"}));
    EXPECT_FALSE(purchases::selectionSql(f.ctx, all()).contains("data"));
}

TEST_F(PurchaseInquiryTest, TheSeparatorOfTheAccountsIsSearchedAsTextAndFindsNothing) {
    const QStringList accounts = purchases::OMPLE_LLISTA_Comptes(f.ctx);
    ASSERT_GE(accounts.size(), 7);
    EXPECT_EQ(accounts[0], "Compras mercaderias");
    EXPECT_EQ(accounts[1], purchases::kAccountSeparator);
    EXPECT_EQ(accounts[2], "Asesoria");
    EXPECT_EQ(accounts.count(purchases::kAccountSeparator), 5);
    PurchaseFilter filter = all();
    filter.account = purchases::kAccountSeparator;
    EXPECT_TRUE(ids(filter).isEmpty());
    filter.account = "Asesoria";
    EXPECT_EQ(ids(filter), QStringList{"2"});
}

TEST_F(PurchaseInquiryTest, TheSearchIsKeptAsTheViewSelFras) {
    PurchaseFilter filter = all();
    filter.supplier = "GESTORIA PUIG";
    purchases::Buscar(f.ctx, filter);
    EXPECT_EQ(rows(frasIn(), "select Ordre from SelFras"), QStringList{"2"});
    filter.supplier.clear();
    purchases::Buscar(f.ctx, filter);
    EXPECT_EQ(rows(frasIn(), "select count(*) from SelFras"), QStringList{"3"});
}

TEST_F(PurchaseInquiryTest, DeletingAPaidEntryRemovesItsMovementAndAPendingOneItsReceipt) {
    f.ctx.Tesoreria = true;
    exec(tesorer(),
         "insert into movimientos (entidad, proveedor, FrasIn, H) values "
         "(2, 2, 2, 1000000), (2, 5, 0, 1)");
    exec(cartera(),
         "insert into cartera (proveedor, In_Out, Ejercicio, FrasIn, Total) values "
         "(1, 'In', '2026', 1, 1210000), (1, 'In', '2025', 1, 5)");
    EXPECT_TRUE(purchases::Esborra_Compra(f.ctx, 2));
    EXPECT_EQ(rows(tesorer(), "select FrasIn from movimientos"), QStringList{"0"});
    EXPECT_TRUE(purchases::Esborra_Compra(f.ctx, 1));
    EXPECT_EQ(rows(cartera(), "select Ejercicio from cartera"), QStringList{"2025"});
    EXPECT_EQ(rows(frasIn(), "select Ordre from FrasIN"), QStringList{"3"});
    EXPECT_FALSE(purchases::Esborra_Compra(f.ctx, 9));
    EXPECT_EQ(purchases::deleteQuestion(f.ctx, 3, "F-2"), M(815) + "\n(3) F-2");
}

TEST_F(PurchaseInquiryTest, TheDetailFrameOfAnEntry) {
    f.ctx.Tesoreria = true;
    exec(tesorer(), "insert into movimientos (entidad, proveedor, FrasIn, H) values (2, 2, 2, 1)");
    const auto d = purchases::Mes_FraIN(f.ctx, 1);
    ASSERT_TRUE(d);
    EXPECT_EQ(d->lblMesID, "ID: 1");
    EXPECT_EQ(d->lblMesClient, "MADERAS SOLER");
    EXPECT_EQ(d->lblMesNIF, "B11111111");
    EXPECT_EQ(d->lblMesGrup, "60 - Compras");
    EXPECT_EQ(d->lblMesCompte, "6000001 - Compras mercaderias");
    EXPECT_EQ(d->lblMesDescripcio, "FACTURA: F-1");
    ASSERT_EQ(d->MesGrid.size(), 5u);
    EXPECT_EQ(d->MesGrid[0].rate, "21%");
    EXPECT_EQ(d->MesGrid[0].base, "100,00");
    EXPECT_EQ(d->MesGrid[0].quota, "21,00");
    EXPECT_EQ(d->MesGrid[4].rate, "0%");
    EXPECT_EQ(d->MesGrid[4].quota, "0,00");
    EXPECT_EQ(d->lblMesTotal, "TOTAL: 121,00");
    EXPECT_EQ(d->lblMesPagada, M(6676));
    const auto paid = purchases::Mes_FraIN(f.ctx, 2);
    EXPECT_EQ(paid->lblMesPagada, M(6677) + "Banco Sabadell");
    f.ctx.ModeExercici = "TICKETS";
    const auto ticket = purchases::Mes_FraIN(f.ctx, 2);
    ASSERT_EQ(ticket->MesGrid.size(), 1u);
    EXPECT_EQ(ticket->MesGrid[0].rate, M(231));
    EXPECT_EQ(ticket->MesGrid[0].base, "100,00");
    EXPECT_FALSE(purchases::Mes_FraIN(f.ctx, 9));
}

TEST_F(PurchaseInquiryTest, ExemptAmountsAreWorkedOutAgainFromTheStoredAmounts) {
    exec(frasIn(), "update FrasIN set Retencio = 150000 where Ordre = 1");
    purchases::Exempta_Factures(f.ctx);
    EXPECT_EQ(rows(frasIn(), "select Exempta from FrasIN order by Ordre"),
              (QStringList{"150000", "1000000", "12345000"}));
    purchases::Exempta_Tickets(f.ctx);
    EXPECT_EQ(rows(frasIn(), "select Exempta from FrasIN order by Ordre"),
              (QStringList{"1360000", "1000000", "12345000"}));
}

}  // namespace
}  // namespace tallora::testing
