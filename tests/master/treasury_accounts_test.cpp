#include "master/treasury_accounts.h"
#include "master_fixture.h"

using namespace tallora;
using namespace tallora::master;

namespace {

class TreasuryAccounts : public tallora::testing::MasterData {
protected:
    void SetUp() override {
        MasterData::SetUp();
        f.ctx.Tesoreria = true;
        // The set-up's cash account and other accounts are not what these tests look at; the
        // numbering starts again as in a fresh file.
        exec(tesorer(), "delete from entidades; delete from sqlite_sequence");
        exec(comptes(), "delete from Otras; delete from sqlite_sequence");
    }

    QString add(const QString& entidad, int grup, const QString& ccc = {},
                const QString& saldo = {}) {
        TreasuryAccount t;
        t.entidad = entidad;
        t.grup = grup;
        t.ccc = ccc;
        t.saldo = saldo;
        EXPECT_TRUE(saveTreasuryAccount(f.ctx, dialogs, t, true).done());
        dialogs.clear();
        return t.id;
    }

    QStringList entidades() const {
        return rows(tesorer(), "select Id, Grup, entidad, ccc, saldo from entidades order by Id");
    }
};

TEST_F(TreasuryAccounts, ANewAccountIsStoredWithItsGroup) {
    TreasuryAccount t;
    t.entidad = "Caixa de l'oficina";
    t.grup = kGrupCaja;
    t.saldo = "1.500,25";
    const Outcome out = saveTreasuryAccount(f.ctx, dialogs, t, true);
    ASSERT_TRUE(out.done());
    EXPECT_EQ(shown(), QStringList{"I:Registros guardados: 1"});
    EXPECT_EQ(t.id, "1");
    EXPECT_EQ(t.entidad, QString::fromUtf8("Caixa de l´oficina"));
    add("Banc", kGrupBancos, "2100-0000");
    EXPECT_EQ(entidades(), (QStringList{QString::fromUtf8("1|570|Caixa de l´oficina||15002500"),
                                        "2|572|Banc|2100-0000|0"}));
    const auto caixa = treasuryAccountById(f.ctx, "1");
    ASSERT_TRUE(caixa);
    EXPECT_EQ(caixa->grup, kGrupCaja);
    EXPECT_EQ(caixa->saldo, "1.500,25");
    EXPECT_EQ(treasuryAccountByName(f.ctx, "banc")->grup, kGrupBancos);
    EXPECT_EQ(treasuryAccountNames(f.ctx),
              (QStringList{"Banc", QString::fromUtf8("Caixa de l´oficina")}));
}

TEST_F(TreasuryAccounts, ABlankCccIsStoredAsAnEmptyText) {
    add("Caixa", kGrupCaja, "");
    EXPECT_EQ(rows(tesorer(), "select ccc is null, ccc = '' from entidades"), QStringList{"0|1"});
}

TEST_F(TreasuryAccounts, TheGroupIsCashOrBankWhateverTheLanguage) {
    f.ctx.setIdioma("cat");
    add("Caixa", kGrupCaja);
    add("Banc", kGrupBancos);
    add("Altre", 430);  // anything but cash is a bank
    EXPECT_EQ(rows(tesorer(), "select Grup from entidades order by Id"),
              (QStringList{"570", "572", "572"}));
    exec(tesorer(), "insert into entidades (Grup, entidad) values (0, 'Importat')");
    EXPECT_EQ(treasuryAccountByName(f.ctx, "Importat")->grup, kGrupBancos);
}

TEST_F(TreasuryAccounts, AnEmptyNameIsRefused) {
    TreasuryAccount t;
    t.ccc = "1";
    const Outcome out = saveTreasuryAccount(f.ctx, dialogs, t, true);
    EXPECT_EQ(out.kind, Outcome::Kind::Refused);
    EXPECT_EQ(out.field, "txtcuenta");
    EXPECT_EQ(shown(), QStringList{"S:Es obligatorio indiciar la descripción de la cuenta"});
    EXPECT_TRUE(entidades().isEmpty());
}

TEST_F(TreasuryAccounts, ANameIsCheckedForANewAccountOnly) {
    add("Caixa", kGrupCaja);
    add("Banc", kGrupBancos);
    TreasuryAccount t;
    t.entidad = "CAIXA";
    const Outcome out = saveTreasuryAccount(f.ctx, dialogs, t, true);
    EXPECT_EQ(out.kind, Outcome::Kind::Refused);
    EXPECT_EQ(out.field, "txtcuenta");
    EXPECT_EQ(shown(), QStringList{"S:Alta imposible, el nombre ya existe."});
    dialogs.clear();
    TreasuryAccount banc = *treasuryAccountById(f.ctx, "2");
    banc.entidad = "Caixa";
    banc.saldo = "";
    EXPECT_TRUE(saveTreasuryAccount(f.ctx, dialogs, banc, false).done());
    EXPECT_EQ(shown(), QStringList{"I:Registros guardados: 1"});
    EXPECT_EQ(entidades(), (QStringList{"1|570|Caixa||0", "2|572|Caixa||0"}));
    EXPECT_EQ(treasuryAccountByName(f.ctx, "Caixa")->id, "1");
}

TEST_F(TreasuryAccounts, ARenameKeepsTheMovementsOfTheAccount) {
    add("Banc", kGrupBancos);
    exec(tesorer(), "insert into movimientos (data, entidad, D) values ('2026-01-10', 1, 10000)");
    TreasuryAccount t = *treasuryAccountById(f.ctx, "1");
    t.entidad = "Banc nou";
    t.saldo = "12";
    ASSERT_TRUE(saveTreasuryAccount(f.ctx, dialogs, t, false).done());
    EXPECT_EQ(entidades(), QStringList{"1|572|Banc nou||120000"});
    EXPECT_EQ(rows(tesorer(), "select entidad, D from movimientos"), QStringList{"1|10000"});
}

TEST_F(TreasuryAccounts, ABalanceThatIsNotAnAmountIsRefused) {
    TreasuryAccount t;
    t.entidad = "Caixa";
    t.saldo = "1,2,3";
    const Outcome out = saveTreasuryAccount(f.ctx, dialogs, t, true);
    EXPECT_EQ(out.field, "txtsaldo");
    EXPECT_EQ(dialogs.lastText(), "Importe INCORRECTO: 1,2,3");
    EXPECT_TRUE(entidades().isEmpty());
}

TEST_F(TreasuryAccounts, AnAccountWithMovementsIsNotDeleted) {
    add("Banc", kGrupBancos);
    exec(tesorer(), "insert into movimientos (data, entidad) values ('2026-01-10', 1)");
    dialogs.setNextAnswer(Dialogs::Answer::Yes);
    EXPECT_EQ(deleteTreasuryAccount(f.ctx, dialogs, "1").kind, Outcome::Kind::Refused);
    EXPECT_EQ(shown(),
              (QStringList{QString::fromUtf8("Q:Se eliminarà la cuenta.¿Esta seguro/a?"),
                           "S:Baja imposible, esta cuenta tiene movimientos en tesoreria"}));
    EXPECT_EQ(entidades().size(), 1);
}

TEST_F(TreasuryAccounts, AnAccountWithOnlyAnOtherMovementIsDeleted) {
    add("Banc", kGrupBancos);
    exec(tesorer(),
         "insert into otros_movimientos (data, cta_sale_tesoreria) values ('2026-01-10', 1)");
    dialogs.setNextAnswer(Dialogs::Answer::Yes);
    const Outcome out = deleteTreasuryAccount(f.ctx, dialogs, "1");
    ASSERT_TRUE(out.done());
    EXPECT_EQ(dialogs.lastText(), "Se ha eliminado: 1");
    EXPECT_TRUE(entidades().isEmpty());
    EXPECT_EQ(rows(tesorer(), "select count(*) from otros_movimientos"), QStringList{"1"});
}

TEST_F(TreasuryAccounts, TheQuestionAnsweredNoTouchesNothing) {
    add("Banc", kGrupBancos);
    dialogs.setNextAnswer(Dialogs::Answer::No);
    EXPECT_EQ(deleteTreasuryAccount(f.ctx, dialogs, "1").kind, Outcome::Kind::Declined);
    EXPECT_EQ(dialogs.shown().size(), 1u);
    EXPECT_EQ(entidades().size(), 1);
}

TEST_F(TreasuryAccounts, AnOverLongCccIsRefusedWithNothingWritten) {
    TreasuryAccount t;
    t.entidad = "Banc";
    t.ccc = QString(21, u'1');
    EXPECT_EQ(saveTreasuryAccount(f.ctx, dialogs, t, true).kind, Outcome::Kind::Refused);
    EXPECT_TRUE(dialogs.lastText().contains("entidades.ccc: longer than 20 characters"));
    EXPECT_TRUE(entidades().isEmpty());
}

// Other accounts

class OtherAccounts : public TreasuryAccounts {
protected:
    QStringList otras() const {
        return rows(comptes(),
                    "select Compte, Grup, NomGrup, NomCompte, Saldo, Tipus from Otras "
                    "order by Compte");
    }
};

TEST_F(OtherAccounts, ANewAccountIsStoredSanitisedWithBlanksAsZero) {
    OtherAccount o;
    o.nomCompte = "Prèstec d'en Pere";
    o.nomGrup = "Deutes 100% + interessos";
    o.tipus = "P";
    const Outcome out = saveOtherAccount(f.ctx, dialogs, o, true);
    ASSERT_TRUE(out.done());
    EXPECT_EQ(shown(), QStringList{"I:Registros guardados: 1"});
    EXPECT_EQ(o.saldo, "0");
    EXPECT_EQ(o.grup, "0");
    EXPECT_EQ(o.compte, "1");
    EXPECT_EQ(otras(),
              QStringList{QString::fromUtf8("1|0|Deutes 100  interessos|Prèstec d´en Pere|0|P")});
    const auto shownBack = otherAccountByNumber(f.ctx, "1");
    ASSERT_TRUE(shownBack);
    EXPECT_EQ(shownBack->saldo, "0,00");
    EXPECT_EQ(shownBack->nomGrup, "Deutes 100  interessos");
}

TEST_F(OtherAccounts, KindAndGroupAreKeptAndABlankGroupNameIsNull) {
    OtherAccount o;
    o.nomCompte = "Capital";
    o.grup = "100";
    o.saldo = "3.000";
    o.tipus = "";
    ASSERT_TRUE(saveOtherAccount(f.ctx, dialogs, o, true).done());
    EXPECT_EQ(otras(), QStringList{"1|100|<null>|Capital|30000000|"});
    o.tipus = "A";
    o.nomGrup = "Fons propis";
    o.saldo = "";
    ASSERT_TRUE(saveOtherAccount(f.ctx, dialogs, o, false).done());
    EXPECT_EQ(otras(), QStringList{"1|100|Fons propis|Capital|0|A"});
    EXPECT_EQ(otherAccountNames(f.ctx), QStringList{"Capital"});
    EXPECT_EQ(otherAccountByName(f.ctx, "capital")->tipus, "A");
}

TEST_F(OtherAccounts, AGroupThatIsNotANumberIsRefused) {
    OtherAccount o;
    o.nomCompte = "Capital";
    o.grup = "1O0";
    const Outcome out = saveOtherAccount(f.ctx, dialogs, o, true);
    EXPECT_EQ(out.field, "txtGrup");
    EXPECT_EQ(dialogs.lastText(), QString::fromUtf8("Nº Grupo INCORRECTO: 1O0"));
    EXPECT_TRUE(otras().isEmpty());
}

TEST_F(OtherAccounts, AnEmptyNameIsRefused) {
    OtherAccount o;
    o.grup = "100";
    const Outcome out = saveOtherAccount(f.ctx, dialogs, o, true);
    EXPECT_EQ(out.field, "txtdescripcio");
    EXPECT_EQ(shown(), QStringList{"S:Es obligatorio indiciar la descripción de la cuenta"});
}

TEST_F(OtherAccounts, OnlyOtherAccountsAreSearchedForANewName) {
    exec(comptes(), "insert into Compres (Grup, NomCompte) values (60, 'Capital')");
    OtherAccount o;
    o.nomCompte = "Capital";
    ASSERT_TRUE(saveOtherAccount(f.ctx, dialogs, o, true).done());
    dialogs.clear();
    OtherAccount again;
    again.nomCompte = "capital";
    const Outcome out = saveOtherAccount(f.ctx, dialogs, again, true);
    EXPECT_EQ(out.field, "txtdescripcio");
    EXPECT_EQ(shown(), QStringList{"S:Alta imposible, el nombre ya existe."});
    EXPECT_EQ(otras().size(), 1);
    // A change is not checked.
    OtherAccount second;
    second.nomCompte = "Reserves";
    ASSERT_TRUE(saveOtherAccount(f.ctx, dialogs, second, true).done());
    second.nomCompte = "Capital";
    EXPECT_TRUE(saveOtherAccount(f.ctx, dialogs, second, false).done());
    EXPECT_EQ(otherAccountNames(f.ctx), (QStringList{"Capital", "Capital"}));
}

TEST_F(OtherAccounts, AnAccountCrossedByAMovementIsNotDeleted) {
    OtherAccount o;
    o.nomCompte = "Capital";
    ASSERT_TRUE(saveOtherAccount(f.ctx, dialogs, o, true).done());
    exec(tesorer(), "insert into movimientos (data, entidad, cuenta) values ('2026-01-10', 9, 1)");
    dialogs.clear();
    dialogs.setNextAnswer(Dialogs::Answer::Yes);
    EXPECT_EQ(deleteOtherAccount(f.ctx, dialogs, "1").kind, Outcome::Kind::Refused);
    EXPECT_EQ(dialogs.lastText(), "Baja imposible, esta cuenta tiene movimientos en tesoreria");
    EXPECT_EQ(otras().size(), 1);
    exec(tesorer(), "update movimientos set cuenta = 0");
    dialogs.setNextAnswer(Dialogs::Answer::Yes);
    EXPECT_TRUE(deleteOtherAccount(f.ctx, dialogs, "1").done());
    EXPECT_EQ(dialogs.lastText(), "Se ha eliminado: 1");
    EXPECT_TRUE(otras().isEmpty());
}

TEST_F(OtherAccounts, TheQuestionAnsweredNoTouchesNothing) {
    OtherAccount o;
    o.nomCompte = "Capital";
    ASSERT_TRUE(saveOtherAccount(f.ctx, dialogs, o, true).done());
    dialogs.clear();
    dialogs.setNextAnswer(Dialogs::Answer::No);
    EXPECT_EQ(deleteOtherAccount(f.ctx, dialogs, "1").kind, Outcome::Kind::Declined);
    EXPECT_EQ(shown(), QStringList{QString::fromUtf8("Q:Se eliminarà la cuenta.¿Esta seguro/a?")});
    EXPECT_EQ(otras().size(), 1);
}

}  // namespace
