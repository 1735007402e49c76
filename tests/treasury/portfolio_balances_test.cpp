#include "treasury/portfolio_balances.h"
#include "../schema/schema_fixture.h"
#include "../shell/start_fixture.h"
#include "schema/upgrades.h"
#include "store/store_error.h"

using namespace tallora;
using namespace tallora::treasury;
using tallora::testing::column;
using tallora::testing::run;
namespace db = tallora::schema::db;

namespace {

// An exercise with its customers, suppliers and the company's portfolio.
class PortfolioBalances : public ::testing::Test {
protected:
    void SetUp() override {
        schema::createExerciseDatabases(f.exercise);
        ASSERT_TRUE(schema::Prepara_Tesoreria(f.ctx, nullptr));
        f.ctx.Moneda = "Euros";
        run(gest(),
            "insert into Clients (nom, saldo) values ('Amb rebuts', 1000000), "
            "('Sense rebuts', 250000), ('Arrodonit', 0)");
        run(gest(),
            "insert into Proveidors (nom, saldo) values ('Proveidor u', 500000), "
            "('Proveidor dos', 0)");
    }

    QString gest() const { return f.exercise + db::Gest; }
    QString cartera() const { return f.company + db::Cartera; }

    void receipt(int cliente, int proveedor, std::int64_t total, std::int64_t pendiente) {
        run(cartera(),
            QStringLiteral("insert into cartera (data, cliente, proveedor, In_Out, Ejercicio, "
                           "Total, Pendiente) values ('2026-01-10', %1, %2, '%3', '2026', %4, %5)")
                .arg(cliente)
                .arg(proveedor)
                .arg(cliente ? "Out" : "In")
                .arg(total)
                .arg(pendiente));
    }

    QStringList customers() const {
        return column(gest(), "select nom || '|' || saldo from Clients order by client");
    }
    QStringList suppliers() const {
        return column(gest(), "select nom || '|' || saldo from Proveidors order by proveidor");
    }

    tallora::testing::ExerciseFixture f;
};

}  // namespace

TEST_F(PortfolioBalances, ACustomerGainsTotalLessSettledOverAllItsRows) {
    receipt(1, 0, 300000, 100000);
    receipt(1, 0, 50000, 0);
    receipt(1, 0, 20000, 20000);
    Saldo_Clients(f.ctx, gest(), cartera());
    EXPECT_EQ(customers(),
              (QStringList{"Amb rebuts|1250000", "Sense rebuts|250000", "Arrodonit|0"}));
    EXPECT_EQ(suppliers(), (QStringList{"Proveidor u|500000", "Proveidor dos|0"}));
}

TEST_F(PortfolioBalances, TheBalanceIsKeptAsTheAmountFieldShowsIt) {
    receipt(3, 0, 12345678, 0);  // 1.234,5678 shows as 1.234,57
    Saldo_Clients(f.ctx, gest(), cartera());
    EXPECT_EQ(customers().value(2), "Arrodonit|12345700");
    f.ctx.Decimal = 46;
    Saldo_Clients(f.ctx, gest(), cartera());
    EXPECT_EQ(customers().value(2), "Arrodonit|24691400");
}

TEST_F(PortfolioBalances, InPesetasTheBalanceHasNoDecimals) {
    f.ctx.Moneda = "Ptes.";
    receipt(3, 0, 1006000, 0);  // 100,6 shows as 101
    Saldo_Clients(f.ctx, gest(), cartera());
    EXPECT_EQ(customers().value(2), "Arrodonit|1010000");
}

TEST_F(PortfolioBalances, SuppliersGainTheirPaymentsDueOnly) {
    receipt(0, 1, 400000, 150000);
    receipt(1, 0, 999999, 0);
    Saldo_Proveidors(f.ctx, gest(), cartera());
    EXPECT_EQ(suppliers(), (QStringList{"Proveidor u|750000", "Proveidor dos|0"}));
    EXPECT_EQ(customers().value(0), "Amb rebuts|1000000");
}

TEST_F(PortfolioBalances, ASupplierGainsTotalLessSettledOverAllItsRows) {
    receipt(0, 2, 300000, 100000);
    receipt(0, 2, 50000, 0);
    receipt(0, 2, 20000, 20000);
    Saldo_Proveidors(f.ctx, gest(), cartera());
    EXPECT_EQ(suppliers(), (QStringList{"Proveidor u|500000", "Proveidor dos|250000"}));
}

TEST_F(PortfolioBalances, AMissingPortfolioIsAnError) {
    EXPECT_THROW(Saldo_Clients(f.ctx, gest(), f.company + "none.mdb"), store::StoreError);
    EXPECT_EQ(customers().value(0), "Amb rebuts|1000000");
}
