// Other movements: the four combinations of sides, changes under the same number, deletion
// and the inquiry's filters.
#include "treasury/other_movements.h"
#include "context/messages.h"
#include "portfolio_fixture.h"

using namespace tallora;
using namespace tallora::treasury;
using namespace tallora::testing;

namespace {

class OtherMovements : public PortfolioData {
protected:
    void SetUp() override {
        PortfolioData::SetUp();
        exec(tesorer(), "delete from entidades");  // the cash account every exercise starts with
        exec(tesorer(), "insert into entidades (Id, Grup, entidad) values (1, 570, 'Caja')");
        exec(tesorer(), "insert into entidades (Id, Grup, entidad) values (2, 572, 'Banco Norte')");
        exec(comptes(),
             "insert into Otras (Compte, Grup, NomGrup, NomCompte) values (11, 170, 'Deudas', "
             "'Préstamo BBV')");
        exec(comptes(),
             "insert into Otras (Compte, Grup, NomGrup, NomCompte) values (12, 551, 'Socios', "
             "'Cuenta socio')");
    }

    OtherMovement entry(const QString& concepto, const QString& importe) {
        OtherMovement e;
        e.data = QDate(2026, 3, 15);
        e.concepto = concepto;
        e.importe = importe;
        return e;
    }

    QStringList movements() const {
        return rows(tesorer(),
                    "select data, entidad, cuenta, Otros, concepto, D, H from "
                    "movimientos order by Id");
    }
    QStringList entries() const {
        return rows(tesorer(),
                    "select asiento, data, concepto, Importe, cta_sale_tesoreria, "
                    "cta_sale_otra, cta_entra_tesoreria, cta_entra_otra from "
                    "otros_movimientos order by asiento");
    }
};

}  // namespace

TEST_F(OtherMovements, BankToCashMakesTwoMovementsWithoutAnOtherAccount) {
    OtherMovement e = entry("Retirada de efectivo", "300,00");
    e.saleTesoreria = 2;
    e.entraTesoreria = 1;
    const OtherPosting p = postOtherMovement(f.ctx, dialogs, e);
    ASSERT_FALSE(p.refused);
    EXPECT_EQ(p.asiento, 1);
    EXPECT_EQ(entries(), QStringList{"1|2026-03-15|Retirada de efectivo|3000000|2|0|1|0"});
    EXPECT_EQ(movements(), (QStringList{"2026-03-15|2|0|1|Retirada de efectivo|0|3000000",
                                        "2026-03-15|1|0|1|Retirada de efectivo|3000000|0"}));
    EXPECT_EQ(Calcula_Asiento(f.ctx), 2);
}

TEST_F(OtherMovements, ASideOnAnOtherAccountNamesItInTheMovement) {
    OtherMovement out = entry("Cuota préstamo", "150");
    out.saleTesoreria = 2;
    out.entraOtra = 11;
    postOtherMovement(f.ctx, dialogs, out);
    OtherMovement in = entry("Aportación socio", "1000");
    in.saleOtra = 12;
    in.entraTesoreria = 1;
    postOtherMovement(f.ctx, dialogs, in);
    OtherMovement none = entry("Traspaso entre otras", "20");
    none.saleOtra = 11;
    none.entraOtra = 11;  // the same account on both sides is not checked
    EXPECT_EQ(postOtherMovement(f.ctx, dialogs, none).asiento, 3);
    EXPECT_EQ(movements(), (QStringList{"2026-03-15|2|11|1|Cuota préstamo|0|1500000",
                                        "2026-03-15|1|12|2|Aportación socio|10000000|0"}));
    EXPECT_EQ(entries().size(), 3);
}

TEST_F(OtherMovements, TheChecksComeInTheirOrderWithTheirMessages) {
    OtherMovement e = entry("", "");
    EXPECT_EQ(postOtherMovement(f.ctx, dialogs, e).refused, OtherField::SaleTesoreria);
    e.saleTesoreria = 1;
    EXPECT_EQ(postOtherMovement(f.ctx, dialogs, e).refused, OtherField::EntraTesoreria);
    e.entraOtra = 11;
    EXPECT_EQ(postOtherMovement(f.ctx, dialogs, e).refused, OtherField::Concepte);
    e.concepto = "Pago";
    EXPECT_EQ(postOtherMovement(f.ctx, dialogs, e).refused, OtherField::Importe);
    e.importe = "0,00";
    EXPECT_EQ(postOtherMovement(f.ctx, dialogs, e).refused, OtherField::Importe);
    e.importe = "10";
    f.ctx.chkmesos[2] = 1;
    EXPECT_EQ(postOtherMovement(f.ctx, dialogs, e).refused, OtherField::Fecha);
    EXPECT_EQ(shown(), (QStringList{"S:" + Missatge(f.ctx, 6730), "I:" + Missatge(f.ctx, 6731),
                                    "I:" + Missatge(f.ctx, 6733), "I:" + Missatge(f.ctx, 6732),
                                    "I:" + Missatge(f.ctx, 6732), "S:" + Missatge(f.ctx, 622)}));
    EXPECT_TRUE(entries().isEmpty());
}

TEST_F(OtherMovements, AChangeKeepsTheNumberAndReplacesTheMovements) {
    OtherMovement e = entry("Traspaso", "300");
    e.saleTesoreria = 2;
    e.entraTesoreria = 1;
    postOtherMovement(f.ctx, dialogs, e);
    OtherMovement second = entry("Otro", "5");
    second.saleTesoreria = 1;
    second.entraOtra = 12;
    postOtherMovement(f.ctx, dialogs, second);

    std::optional<OtherMovement> loaded = loadOtherMovement(f.ctx, 1);
    ASSERT_TRUE(loaded);
    EXPECT_EQ(loaded->importe, "300,00");
    EXPECT_EQ(loaded->saleTesoreria, 2);
    EXPECT_EQ(loaded->entraTesoreria, 1);
    loaded->entraTesoreria = 0;
    loaded->entraOtra = 11;
    loaded->concepto = "Devuelve préstamo";
    EXPECT_EQ(postOtherMovement(f.ctx, dialogs, *loaded).asiento, 1);
    EXPECT_EQ(entries(), (QStringList{"1|2026-03-15|Devuelve préstamo|3000000|2|0|0|11",
                                      "2|2026-03-15|Otro|50000|1|0|0|12"}));
    EXPECT_EQ(movements(), (QStringList{"2026-03-15|1|12|2|Otro|0|50000",
                                        "2026-03-15|2|11|1|Devuelve préstamo|0|3000000"}));
    EXPECT_FALSE(loadOtherMovement(f.ctx, 9));

    deleteOtherMovement(f.ctx, 1);
    EXPECT_EQ(entries(), QStringList{"2|2026-03-15|Otro|50000|1|0|0|12"});
    EXPECT_EQ(movements(), QStringList{"2026-03-15|1|12|2|Otro|0|50000"});
}

TEST_F(OtherMovements, TheInquiryFiltersByDateAmountAndAccount) {
    const auto post = [&](int day, const QString& amount, std::int64_t saleTes,
                          std::int64_t entraOtra) {
        OtherMovement e = entry(QStringLiteral("Día %1").arg(day), amount);
        e.data = QDate(2026, 2, day);
        e.saleTesoreria = saleTes;
        e.entraOtra = entraOtra;
        postOtherMovement(f.ctx, dialogs, e);
    };
    post(20, "100", 2, 11);
    post(10, "250,5", 1, 12);
    post(5, "100", 2, 12);
    OtherFilter all{{QDate(2026, 1, 1), QDate(2026, 12, 31), {}, {}}, std::nullopt};
    auto found = searchOtherMovements(f.ctx, all);
    ASSERT_EQ(found.size(), 3u);
    EXPECT_EQ(found[0].concepto, "Día 5");
    EXPECT_EQ(found[0].entra, "Cuenta socio");
    EXPECT_EQ(found[0].sale, "Banco Norte");
    EXPECT_EQ(found[1].importe, "250,50");

    OtherFilter from = all;
    from.dates.from = QDate(2026, 2, 8);
    EXPECT_EQ(searchOtherMovements(f.ctx, from).size(), 2u);
    OtherFilter amount = all;
    amount.dates.import = "250,50";
    amount.dates.operacio = ">=";
    ASSERT_EQ(searchOtherMovements(f.ctx, amount).size(), 1u);
    amount.dates.import = "-";
    EXPECT_EQ(searchOtherMovements(f.ctx, amount).size(), 3u);
    OtherFilter account = all;
    account.cuenta = 12;
    EXPECT_EQ(searchOtherMovements(f.ctx, account).size(), 2u);
    // The view the list report reads holds the last search.
    EXPECT_EQ(rows(tesorer(), "select asiento from SelOtros_movimientos"), (QStringList{"3", "2"}));
}

TEST_F(OtherMovements, AMovementTellsWhichEditorChangesIt) {
    exec(tesorer(),
         "insert into movimientos (Id, data, entidad, Supl) values (10, '2026-01-01', 1, 4)");
    exec(tesorer(),
         "insert into movimientos (Id, data, entidad, cliente, FrasOut) values (11, '2026-01-01', "
         "1, 3, 3)");
    exec(tesorer(),
         "insert into movimientos (Id, data, entidad, Otros) values (12, '2026-01-01', 1, 7)");
    exec(tesorer(), "insert into movimientos (Id, data, entidad) values (13, '2026-01-01', 1)");
    EXPECT_EQ(movementSource(f.ctx, 10)->origin, MovementOrigin::Provision);
    EXPECT_EQ(movementSource(f.ctx, 10)->number, 4);
    EXPECT_EQ(movementSource(f.ctx, 11)->origin, MovementOrigin::Invoice);
    EXPECT_EQ(movementSource(f.ctx, 12)->origin, MovementOrigin::Other);
    EXPECT_EQ(movementSource(f.ctx, 12)->number, 7);
    EXPECT_EQ(movementSource(f.ctx, 13)->origin, MovementOrigin::None);
    EXPECT_FALSE(movementSource(f.ctx, 99));
}
