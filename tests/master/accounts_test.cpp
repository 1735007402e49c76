#include "master/accounts.h"
#include "master_fixture.h"
#include "schema/lookups.h"

using namespace tallora;
using namespace tallora::master;

namespace {

class Accounts : public tallora::testing::MasterData {
protected:
    QString add(Family f, const QString& nom, const QString& tipus = "Ventas") {
        Account a;
        a.nomCompte = nom;
        a.tipus = tipus;
        EXPECT_TRUE(saveAccount(f, a));
        return a.compte;
    }
    bool saveAccount(Family family, Account& a, bool isNew = true) {
        const bool done = master::saveAccount(f.ctx, dialogs, family, a, isNew).done();
        dialogs.clear();
        return done;
    }

    QStringList table(const QString& name) const {
        return rows(comptes(),
                    "select Grup, NomGrup, Compte, NomCompte, Debe, Haber, Saldo, "
                    "Tipus from " +
                        name + " order by Compte");
    }

    // An invoice of the account (Grup, Compte) as posting writes it.
    void sale(int grup, int compte, const QString& nomGrup, const QString& nomCompte) {
        exec(frasOut(), QStringLiteral("insert into FrasOut (Ordre, data, Client, NomClient, Grup, "
                                       "NomGrup, Compte, NomCompte) values (1, '2026-01-10', 1, "
                                       "'C', %1, '%2', %3, '%4')")
                            .arg(grup)
                            .arg(nomGrup)
                            .arg(compte)
                            .arg(nomCompte));
    }
    void purchase(int grup, int compte, const QString& nomGrup, const QString& nomCompte) {
        exec(frasIn(), QStringLiteral("insert into FrasIN (Ordre, data, Proveidor, NomProveidor, "
                                      "Periode, Grup, NomGrup, Compte, NomCompte) values (1, "
                                      "'2026-01-10', 1, 'P', '1T', %1, '%2', %3, '%4')")
                           .arg(grup)
                           .arg(nomGrup)
                           .arg(compte)
                           .arg(nomCompte));
    }
};

TEST_F(Accounts, EachFamilyHasItsTableGroupAndCaption) {
    QStringList facts;
    for (Family fam : kFamilies)
        facts << QStringLiteral("%1 %2 %3 %4")
                     .arg(familyTable(fam))
                     .arg(familyGrup(fam))
                     .arg(familyNomGrup(f.ctx, fam))
                     .arg(familyCaption(fam));
    EXPECT_EQ(facts,
              (QStringList{"Ingresos 70 Ingresos 501", "Compres 60 Compras 502",
                           "Serveis 62 Servicios 503", "Tributs 63 Tributos 504",
                           "Personal 64 Personal 505", "Amortitzacions 68 Amortizaciones 506",
                           "Inversions 20 Inversiones 507"}));
    f.ctx.setIdioma("cat");
    QStringList catalan;
    for (Family fam : kFamilies) catalan << familyNomGrup(f.ctx, fam);
    EXPECT_EQ(catalan, (QStringList{"Ingresos", "Compres", "Serveis", "Tributs", "Personal",
                                    "Amortitzacions", "Inversions"}));
    EXPECT_EQ(familyByTable("SERVEIS"), Family::Serveis);
    EXPECT_EQ(familyByTable("Otras"), std::nullopt);
}

TEST_F(Accounts, ANewAccountGetsTheFamilyValuesAndZeroBalances) {
    Account a;
    a.nomCompte = "Lloguer de l'local";
    a.tipus = "Arrendaments + altres";
    const Outcome out = master::saveAccount(f.ctx, dialogs, Family::Compres, a, true);
    ASSERT_TRUE(out.done());
    EXPECT_EQ(shown(), QStringList{"I:Registros guardados: 1"});
    EXPECT_EQ(a.compte, "1");
    EXPECT_EQ(a.grup, "60");
    EXPECT_EQ(a.nomCompte, QString::fromUtf8("Lloguer de l´local"));
    EXPECT_EQ(a.tipus, "Arrendaments  altres");
    EXPECT_EQ(table("Compres"), QStringList{QString::fromUtf8(
                                    "60|Compras|1|Lloguer de l´local|0|0|0|Arrendaments  altres")});
    const auto shownBack = accountByNumber(f.ctx, Family::Compres, 1);
    ASSERT_TRUE(shownBack);
    EXPECT_EQ(shownBack->grup, "60");
    EXPECT_EQ(shownBack->tipus, "Arrendaments  altres");
    EXPECT_FALSE(accountByNumber(f.ctx, Family::Serveis, 1));
}

TEST_F(Accounts, DescriptionAndClassAreCompulsory) {
    Account a;
    a.tipus = "Ventas";
    Outcome out = master::saveAccount(f.ctx, dialogs, Family::Ingresos, a, true);
    EXPECT_EQ(out.field, "txtdescripcio");
    EXPECT_EQ(shown(), QStringList{"S:Es obligatorio indicar la descripción de la cuenta"});
    dialogs.clear();
    a.nomCompte = "Vendes";
    a.tipus = "";
    out = master::saveAccount(f.ctx, dialogs, Family::Ingresos, a, true);
    EXPECT_EQ(out.kind, Outcome::Kind::Refused);
    EXPECT_EQ(out.field, "ComboExplotacio");
    EXPECT_EQ(shown(),
              QStringList{QString::fromUtf8(
                  "S:Es obligatorio indicar la classificación en el balance de explotación")});
    EXPECT_TRUE(table("Ingresos").isEmpty());
}

TEST_F(Accounts, ANameIsUniqueAcrossFamiliesAtCreationButARenameMayRepeatIt) {
    add(Family::Serveis, "Assegurances");
    Account a;
    a.nomCompte = "ASSEGURANCES";
    a.tipus = "Altres";
    const Outcome out = master::saveAccount(f.ctx, dialogs, Family::Tributs, a, true);
    EXPECT_EQ(out.kind, Outcome::Kind::Refused);
    EXPECT_EQ(out.field, "txtdescripcio");
    EXPECT_EQ(shown(), QStringList{"S:Alta imposible, el nombre ya existe."});
    EXPECT_TRUE(table("Tributs").isEmpty());

    const QString n = add(Family::Tributs, "IBI");
    Account rename = *accountByNumber(f.ctx, Family::Tributs, n.toInt());
    rename.nomCompte = "Assegurances";
    EXPECT_TRUE(saveAccount(Family::Tributs, rename, false));
    EXPECT_EQ(table("Tributs"), QStringList{"63|Tributos|1|Assegurances|0|0|0|Ventas"});
}

TEST_F(Accounts, AnOtherAccountNameBlocksANewAccountOnlyWithTreasury) {
    // "Cuenta personal del titular" is one of the other accounts the treasury set-up makes.
    Account a;
    a.nomCompte = "Cuenta personal del titular";
    a.tipus = "Altres";
    f.ctx.Tesoreria = true;
    EXPECT_TRUE(schema::Verifica_NomCompte(f.ctx, dialogs, a.nomCompte));
    EXPECT_EQ(master::saveAccount(f.ctx, dialogs, Family::Personal, a, true).kind,
              Outcome::Kind::Refused);
    EXPECT_EQ(shown(), (QStringList{"S:Alta imposible, el nombre ya existe.",
                                    "S:Alta imposible, el nombre ya existe."}));
    f.ctx.Tesoreria = false;
    dialogs.clear();
    EXPECT_FALSE(schema::Verifica_NomCompte(f.ctx, dialogs, a.nomCompte));
    EXPECT_TRUE(master::saveAccount(f.ctx, dialogs, Family::Personal, a, true).done());
    EXPECT_EQ(table("Personal").size(), 1);
}

TEST_F(Accounts, ARenameWritesTheClassIntoTheInvoicesOfThatAccountOnly) {
    add(Family::Ingresos, "Vendes", "Ventas");
    add(Family::Compres, "Mercaderies", "Compras");
    sale(70, 1, "Ingresos", "Vendes");
    sale(60, 1, "Compras", "Mercaderies");  // same Compte, another family
    purchase(60, 1, "Compras", "Mercaderies");
    purchase(70, 1, "Ingresos", "Vendes");

    Account a = *accountByNumber(f.ctx, Family::Ingresos, 1);
    a.nomCompte = "Vendes d'estiu";
    a.tipus = "Ventas";
    const Outcome out = master::saveAccount(f.ctx, dialogs, Family::Ingresos, a, false);
    ASSERT_TRUE(out.done());
    EXPECT_EQ(out.affected, 1);
    EXPECT_EQ(shown(), QStringList{"I:Registros guardados: 1"});
    const QString nou = QString::fromUtf8("Vendes d´estiu");
    EXPECT_EQ(
        rows(frasOut(), "select Grup, Compte, NomGrup, NomCompte from FrasOut order by rowid"),
        (QStringList{"70|1|Ventas|" + nou, "60|1|Compras|Mercaderies"}));
    EXPECT_EQ(rows(frasIn(), "select Grup, Compte, NomGrup, NomCompte from FrasIN order by rowid"),
              (QStringList{"60|1|Compras|Mercaderies", "70|1|Ventas|" + nou}));
    EXPECT_EQ(table("Ingresos"), QStringList{"70|Ingresos|1|" + nou + "|0|0|0|Ventas"});
}

TEST_F(Accounts, TheCascadeRunsOnEveryChangeEvenWithNothingChanged) {
    add(Family::Compres, "Mercaderies", "Aprovisionaments");
    purchase(60, 1, "Compras", "Mercaderies");
    Account a = *accountByNumber(f.ctx, Family::Compres, 1);
    ASSERT_TRUE(master::saveAccount(f.ctx, dialogs, Family::Compres, a, false).done());
    EXPECT_EQ(rows(frasIn(), "select NomGrup, NomCompte from FrasIN"),
              QStringList{"Aprovisionaments|Mercaderies"});
}

TEST_F(Accounts, ListAndClassesOfAFamily) {
    EXPECT_TRUE(accountList(f.ctx, Family::Inversions).empty());
    add(Family::Serveis, "Transports", "Serveis");
    add(Family::Serveis, "assessoria", "Professionals");
    add(Family::Serveis, "Llum", "serveis");
    exec(comptes(), "insert into Serveis (Grup, NomCompte) values (62, 'Sense classe')");
    QStringList listed;
    for (const AccountItem& item : accountList(f.ctx, Family::Serveis))
        listed << item.nomCompte + u':' + QString::number(item.compte);
    EXPECT_EQ(listed, (QStringList{"assessoria:2", "Llum:3", "Sense classe:4", "Transports:1"}));
    const QStringList classes = accountClasses(f.ctx, Family::Serveis);
    EXPECT_EQ(classes.size(), 2);
    EXPECT_TRUE(classes.contains("Professionals"));
    EXPECT_EQ(classes.filter("serveis", Qt::CaseInsensitive).size(), 1);
}

TEST_F(Accounts, AnAccountWithTheCompteOfAnInvoicedAccountOfAnotherFamilyCanBeDeleted) {
    add(Family::Ingresos, "Vendes");
    add(Family::Serveis, "Transports");
    sale(70, 1, "Ingresos", "Vendes");
    purchase(70, 1, "Ingresos", "Vendes");
    dialogs.setNextAnswer(Dialogs::Answer::Yes);
    const Outcome out = deleteAccount(f.ctx, dialogs, Family::Serveis, 1);
    ASSERT_TRUE(out.done());
    EXPECT_EQ(shown(), (QStringList{QString::fromUtf8("Q:Se eliminará la cuenta. ¿Esta seguro/a?"),
                                    "I:Se ha eliminado: 1"}));
    EXPECT_TRUE(table("Serveis").isEmpty());
    EXPECT_EQ(table("Ingresos").size(), 1);
}

TEST_F(Accounts, AnAccountWithSalesOrPurchasesIsNotDeleted) {
    add(Family::Compres, "Mercaderies");
    sale(60, 1, "Compras", "Mercaderies");
    dialogs.setNextAnswer(Dialogs::Answer::Yes);
    EXPECT_EQ(deleteAccount(f.ctx, dialogs, Family::Compres, 1).kind, Outcome::Kind::Refused);
    EXPECT_EQ(shown().value(1),
              "S:La cuenta tiene facturas  en este ejercicio. No se puede eliminar. ");
    exec(frasOut(), "delete from FrasOut");
    purchase(60, 1, "Compras", "Mercaderies");
    dialogs.clear();
    dialogs.setNextAnswer(Dialogs::Answer::Yes);
    EXPECT_EQ(deleteAccount(f.ctx, dialogs, Family::Compres, 1).kind, Outcome::Kind::Refused);
    EXPECT_EQ(dialogs.lastText(),
              "La cuenta tiene facturas  en este ejercicio. No se puede eliminar. ");
    EXPECT_EQ(table("Compres").size(), 1);
}

TEST_F(Accounts, ProvisionsAndMovementsDoNotProtectAnAccount) {
    add(Family::Compres, "Mercaderies");
    exec(tesorer(), "insert into movimientos (data, cuenta) values ('2026-01-10', 1)");
    dialogs.setNextAnswer(Dialogs::Answer::Yes);
    EXPECT_TRUE(deleteAccount(f.ctx, dialogs, Family::Compres, 1).done());
}

TEST_F(Accounts, TheQuestionAnsweredNoTouchesNothing) {
    add(Family::Compres, "Mercaderies");
    dialogs.setNextAnswer(Dialogs::Answer::No);
    EXPECT_EQ(deleteAccount(f.ctx, dialogs, Family::Compres, 1).kind, Outcome::Kind::Declined);
    EXPECT_EQ(dialogs.shown().size(), 1u);
    EXPECT_EQ(table("Compres").size(), 1);
}

TEST_F(Accounts, AnOverLongDescriptionIsRefusedWithNothingWritten) {
    add(Family::Compres, "Mercaderies");
    purchase(60, 1, "Compras", "Mercaderies");
    Account a = *accountByNumber(f.ctx, Family::Compres, 1);
    a.nomCompte = QString(41, u'm');
    EXPECT_EQ(master::saveAccount(f.ctx, dialogs, Family::Compres, a, false).kind,
              Outcome::Kind::Refused);
    EXPECT_TRUE(dialogs.lastText().contains("NomCompte: longer than 40 characters"));
    EXPECT_EQ(table("Compres"), QStringList{"60|Compras|1|Mercaderies|0|0|0|Ventas"});
    EXPECT_EQ(rows(frasIn(), "select NomGrup, NomCompte from FrasIN"),
              QStringList{"Compras|Mercaderies"});
}

}  // namespace
