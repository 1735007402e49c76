// Provisions and disbursements: the check, the row and its movement rebuilt on every change,
// all or nothing, and the inquiry with its deletion.
#include "purchases/provision_inquiry.h"
#include "purchases/provision_posting.h"
#include "purchases_fixture.h"

namespace tallora::testing {
namespace {

using purchases::ProvisionEntry;
using purchases::ProvisionField;

class ProvisionTest : public PurchasesData {
protected:
    // A disbursement to supplier 1 on 10/02, as typed.
    ProvisionEntry disbursement(const QString& total = "50,00") const {
        ProvisionEntry e;
        e.suplido = true;
        e.txtDia = "10";
        e.txtMes = "2";
        e.txtClient = e.listClientsText = "MADERAS SOLER";
        e.partyNumber = 1;
        e.txtdescripcio = "Tasas";
        e.txtTotal = total;
        return e;
    }
    ProvisionEntry provision(const QString& total = "300,00") const {
        ProvisionEntry e = disbursement(total);
        e.suplido = false;
        e.txtClient = e.listClientsText = "COLMADO RUIZ";
        e.partyNumber = 2;
        e.txtdescripcio = "Fondos";
        return e;
    }
    purchases::ProvisionResult post(ProvisionEntry& e) {
        const bool checked = purchases::Verifica_Suplido(f.ctx, dialogs, e) == ProvisionField::None;
        EXPECT_TRUE(checked) << dialogs.lastText().toStdString();
        if (!checked) return {};
        return purchases::GrabaApunt(f.ctx, e);
    }
    void withBank(ProvisionEntry& e) const {
        e.entitat = "Banco Sabadell";
        e.entitatId = 2;
    }
    void expectRefused(ProvisionEntry e, int message, ProvisionField field) {
        dialogs.clear();
        EXPECT_EQ(purchases::Verifica_Suplido(f.ctx, dialogs, e), field);
        EXPECT_EQ(shown(), QStringList{"I:" + M(message)});
    }
    QStringList movements() {
        return rows(tesorer(),
                    "select data, entidad, proveedor, cliente, Supl, concepto, D, H "
                    "from movimientos order by Id");
    }
    QStringList suplidos() {
        return rows(supl(),
                    "select Ordre, data, Proveidor, NomProveidor, TOTAL, Tipus, NomTipus, "
                    "descripcio from Suplidos order by Ordre");
    }
};

TEST_F(ProvisionTest, EachCheckRefusesWithItsMessage) {
    ProvisionEntry e = disbursement();
    e.txtDia = "";
    expectRefused(e, 635, ProvisionField::txtDia);
    e.txtDia = "32";
    expectRefused(e, 636, ProvisionField::txtDia);
    e.txtDia = "30";
    expectRefused(e, 637, ProvisionField::txtDia);
    e = disbursement();
    e.listClientsText = "GESTORIA PUIG";
    expectRefused(e, 638, ProvisionField::txtClient);
    e = disbursement();
    e.txtClient = "maderas soler";
    dialogs.clear();
    EXPECT_EQ(purchases::Verifica_Suplido(f.ctx, dialogs, e), ProvisionField::None)
        << "the name is compared in capitals";
    e.txtTotal = "-";
    expectRefused(e, 643, ProvisionField::txtTotal);
    f.ctx.Tesoreria = true;
    expectRefused(disbursement(), 6678, ProvisionField::ListEntitats);
}

TEST_F(ProvisionTest, ALockedMonthClearsTheMonthOfANewEntryOnly) {
    f.ctx.chkmesos[1] = 1;
    ProvisionEntry e = disbursement();
    EXPECT_EQ(purchases::Verifica_Suplido(f.ctx, dialogs, e), ProvisionField::txtMes);
    EXPECT_EQ(e.txtMes, "");
    ProvisionEntry posted = disbursement();
    posted.lblOrdre = "1";
    EXPECT_EQ(purchases::Verifica_Suplido(f.ctx, dialogs, posted), ProvisionField::txtMes);
    EXPECT_EQ(posted.txtMes, "2");
}

TEST_F(ProvisionTest, WithoutTreasuryOnlyTheRowIsWritten) {
    ProvisionEntry e = disbursement();
    const auto r = post(e);
    ASSERT_TRUE(r.ok()) << r.error.toStdString();
    EXPECT_EQ(r.ordre, 1);
    EXPECT_EQ(suplidos(),
              QStringList{"1|2026-02-10|1|MADERAS SOLER|500000|S|" + M(6501) + "|Tasas"});
    EXPECT_TRUE(movements().isEmpty());
}

TEST_F(ProvisionTest, ADisbursementTakesMoneyOutAndAProvisionBringsItIn) {
    f.ctx.Tesoreria = true;
    ProvisionEntry s = disbursement();
    withBank(s);
    ASSERT_TRUE(post(s).ok());
    ProvisionEntry p = provision();
    p.txtdescripcio = "-";
    withBank(p);
    const auto r = post(p);
    ASSERT_TRUE(r.ok());
    EXPECT_EQ(p.txtdescripcio, "2") << "a dash takes the number";
    EXPECT_EQ(movements(), (QStringList{"2026-02-10|2|1|0|1|" + M(6501) + ". Tasas|0|500000",
                                        "2026-02-10|2|0|2|2|" + M(6506) + ". 2|3000000|0"}));
    EXPECT_EQ(suplidos().last(), "2|2026-02-10|2|COLMADO RUIZ|3000000|P|" + M(6506) + "|2");
}

TEST_F(ProvisionTest, TurningADisbursementIntoAProvisionRebuildsTheMovement) {
    f.ctx.Tesoreria = true;
    ProvisionEntry s = disbursement();
    withBank(s);
    ASSERT_TRUE(post(s).ok());
    auto loaded = purchases::Modifica_Suplido(f.ctx, "1");
    ASSERT_TRUE(loaded);
    EXPECT_TRUE(loaded->suplido);
    EXPECT_EQ(loaded->entitat, "Banco Sabadell");
    EXPECT_EQ(loaded->txtTotal, "50,00");
    ProvisionEntry p = *loaded;
    p.suplido = false;
    p.txtClient = p.listClientsText = "FERRETERIA PUIG";
    p.partyNumber = 1;
    p.entitat = "Caja efectivo";
    p.entitatId = 1;
    ASSERT_TRUE(post(p).ok());
    EXPECT_EQ(movements(), QStringList{"2026-02-10|1|0|1|1|" + M(6506) + ". Tasas|500000|0"});
    EXPECT_EQ(suplidos(),
              QStringList{"1|2026-02-10|1|FERRETERIA PUIG|500000|P|" + M(6506) + "|Tasas"});
}

TEST_F(ProvisionTest, AFaultInTheMovementLeavesNoRowAndAChangeUntouched) {
    f.ctx.Tesoreria = true;
    ProvisionEntry s = disbursement();
    withBank(s);
    ASSERT_TRUE(post(s).ok());
    exec(tesorer(),
         "create trigger fault before insert on movimientos "
         "begin select raise(abort, 'disk full'); end");
    ProvisionEntry second = disbursement("70,00");
    withBank(second);
    EXPECT_FALSE(purchases::GrabaApunt(f.ctx, second).ok());
    ProvisionEntry changed = *purchases::Modifica_Suplido(f.ctx, "1");
    changed.txtTotal = "99,00";
    const auto r = purchases::GrabaApunt(f.ctx, changed);
    EXPECT_FALSE(r.ok());
    EXPECT_TRUE(r.error.contains("disk full"));
    EXPECT_EQ(rows(supl(), "select Ordre, TOTAL from Suplidos"), QStringList{"1|500000"});
    EXPECT_EQ(movements().size(), 1);
}

TEST_F(ProvisionTest, TheInquiryFiltersOrdersAndDeletesWithTheMovement) {
    f.ctx.Tesoreria = true;
    f.ctx.Exercici = "2026";
    ProvisionEntry s = disbursement("50,00");
    withBank(s);
    ASSERT_TRUE(post(s).ok());
    ProvisionEntry p = provision("300,00");
    p.txtDia = "5";
    withBank(p);
    ASSERT_TRUE(post(p).ok());
    purchases::ProvisionFilter filter;
    filter.range.from = QDate(2026, 1, 1);
    filter.range.to = QDate(2026, 12, 31);
    auto search = purchases::Buscar_Suplidos(f.ctx, filter);
    ASSERT_EQ(search.rows.size(), 2u);
    EXPECT_EQ(search.rows[0].ordre, 2) << "by date first";
    EXPECT_EQ(search.total, Money::fromUnits(3500000));
    filter.suplido = true;
    search = purchases::Buscar_Suplidos(f.ctx, filter);
    ASSERT_EQ(search.rows.size(), 1u);
    EXPECT_EQ(search.rows[0].nomTipus, M(6501));
    filter.suplido.reset();
    filter.party = "colmado ruiz";
    EXPECT_EQ(purchases::Buscar_Suplidos(f.ctx, filter).rows.size(), 1u);
    filter.party.clear();
    filter.order = purchases::ProvisionOrder::Import;
    EXPECT_EQ(purchases::Buscar_Suplidos(f.ctx, filter).rows[0].ordre, 1);
    EXPECT_EQ(rows(supl(), "select count(*) from SelFras"), QStringList{"2"});
    EXPECT_EQ(purchases::provisionParties(f.ctx), (QStringList{"COLMADO RUIZ", "MADERAS SOLER"}));

    EXPECT_TRUE(purchases::Esborra_Suplido(f.ctx, 1));
    EXPECT_EQ(rows(tesorer(), "select Supl from movimientos"), QStringList{"2"});
    EXPECT_EQ(rows(supl(), "select Ordre from Suplidos"), QStringList{"2"});
}

TEST_F(ProvisionTest, TheDayLogOfAPosting) {
    f.ctx.Tesoreria = true;
    ProvisionEntry s = disbursement();
    withBank(s);
    const auto r = post(s);
    QStringList texts;
    for (const auto& row : purchases::Diari_Suplido(f.ctx, s, r, false)) texts << row.text;
    EXPECT_EQ(texts.mid(0, 7),
              (QStringList{M(649), M(650) + "10/02/2026", "MADERAS SOLER", M(6501),
                           "Descrip.: Tasas", M(6677) + "Banco Sabadell", "TOTAL: 50,00"}));
    EXPECT_TRUE(texts.contains(M(654)));
}

}  // namespace
}  // namespace tallora::testing
