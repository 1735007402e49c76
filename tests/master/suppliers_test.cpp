#include "master/suppliers.h"
#include "master_fixture.h"

using namespace tallora;
using namespace tallora::master;

namespace {

class Suppliers : public tallora::testing::MasterData {
protected:
    QString add(const QString& nom, const QString& saldo = {}) {
        Supplier s;
        s.nom = nom;
        s.saldo = saldo;
        EXPECT_TRUE(saveSupplier(f.ctx, dialogs, s, true).done());
        dialogs.clear();
        return s.proveidor;
    }

    QStringList suppliers() const {
        return rows(gest(), "select proveidor, nom, saldo from Proveidors order by proveidor");
    }

    static void purchase(const QString& frasIn, int proveidor, const QString& nom) {
        exec(frasIn, QStringLiteral("insert into FrasIN (Ordre, data, Proveidor, NomProveidor, "
                                    "Periode) values (1, '2026-01-10', %1, '%2', '1T')")
                         .arg(proveidor)
                         .arg(nom));
    }
    void provision(int proveidor, const QString& nom, const QString& tipus) {
        exec(supl(), QStringLiteral("insert into Suplidos (Ordre, data, Proveidor, NomProveidor, "
                                    "Periode, Tipus, NomTipus) values (1, '2026-01-10', %1, '%2', "
                                    "'1T', '%3', 'x')")
                         .arg(proveidor)
                         .arg(nom, tipus));
    }
};

TEST_F(Suppliers, AnEmptyNameIsRefused) {
    Supplier s;
    s.nif = "B1";
    const Outcome out = saveSupplier(f.ctx, dialogs, s, true);
    EXPECT_EQ(out.kind, Outcome::Kind::Refused);
    EXPECT_EQ(out.field, "txtnom");
    EXPECT_EQ(shown(), QStringList{"S:Es obligatorio indicar el nombre del proveedor. "});
    EXPECT_TRUE(suppliers().isEmpty());
}

TEST_F(Suppliers, ANewSupplierIsStoredSanitised) {
    Supplier s;
    s.nom = "Ca l'Anna 100% + 1";
    s.nif = "B'1";
    s.direccio = "Pl. de l'Oli";
    s.poblacio = "Vic";
    s.provincia = "Barcelona";
    s.cp = "08500";
    s.telefon = "938";
    s.fax = "939";
    s.email = "x@y.cat";
    s.web = "y.cat";
    const Outcome out = saveSupplier(f.ctx, dialogs, s, true);
    ASSERT_TRUE(out.done());
    EXPECT_EQ(shown(), QStringList{"I:Registros guardados: 1"});
    EXPECT_EQ(s.proveidor, "1");
    EXPECT_EQ(s.nom, QString::fromUtf8("Ca l´Anna 100  1"));
    EXPECT_EQ(rows(gest(),
                   "select nom, nif, direccio, poblacio, provincia, cp, telefon, fax, "
                   "email, web from Proveidors"),
              QStringList{QString::fromUtf8(
                  "Ca l´Anna 100  1|B´1|Pl. de l´Oli|Vic|Barcelona|08500|938|939|x@y.cat|y.cat")});
}

TEST_F(Suppliers, TheSanitisedNameIsWhatIsComparedForANewOne) {
    // A name stored with a plain apostrophe (from an import) is not the name typed now.
    exec(gest(), "insert into Proveidors (nom) values ('Ca l''Anna')");
    Supplier s;
    s.nom = "Ca l'Anna";
    EXPECT_TRUE(saveSupplier(f.ctx, dialogs, s, true).done());
    // The sanitised one is.
    Supplier again;
    again.nom = "ca l'anna";
    const Outcome out = saveSupplier(f.ctx, dialogs, again, true);
    EXPECT_EQ(out.kind, Outcome::Kind::Refused);
    EXPECT_EQ(out.field, "txtnom");
    EXPECT_EQ(dialogs.shown().back().kind, ScriptedDialogs::Shown::Kind::Stop);
    EXPECT_EQ(dialogs.lastText(), "Alta imposible, el nombre ya existe.");
    EXPECT_EQ(suppliers(), (QStringList{"1|Ca l'Anna|0", QString::fromUtf8("2|Ca l´Anna|0")}));
}

TEST_F(Suppliers, ARenameMayDuplicateAndTheFirstIsShown) {
    add("Primer");
    add("Segon");
    Supplier s = *supplierByNumber(f.ctx, "2");
    s.nom = "Primer";
    s.web = "segon.cat";
    ASSERT_TRUE(saveSupplier(f.ctx, dialogs, s, false).done());
    EXPECT_EQ(supplierNames(f.ctx), (QStringList{"Primer", "Primer"}));
    const auto shownRow = supplierByName(f.ctx, "Primer");
    ASSERT_TRUE(shownRow);
    EXPECT_EQ(shownRow->proveidor, "1");
    EXPECT_EQ(shownRow->web, "");
}

TEST_F(Suppliers, ARenameReachesPurchasesAndDisbursementsOfThisExerciseOnly) {
    add("Vell");
    add("Altre");
    purchase(frasIn(), 1, "Vell");
    purchase(frasIn(), 2, "Altre");
    provision(1, "Vell", "S");
    provision(1, "Client u", "P");  // customer 1 of a provision, not this supplier
    // An older exercise of the company keeps the old name.
    const QString older = f.company + "2025/";
    QDir().mkpath(older);
    schema::createExerciseDatabases(older);
    purchase(older + schema::db::FrasIn, 1, "Vell");

    Supplier s = *supplierByNumber(f.ctx, "1");
    s.nom = "Nou";
    ASSERT_TRUE(saveSupplier(f.ctx, dialogs, s, false).done());
    EXPECT_EQ(shown(), (QStringList{"I:Registros guardados: 1", "I:Registros actualizados: 1",
                                    "I:Registros actualizados: 1"}));
    EXPECT_EQ(rows(frasIn(), "select Proveidor, NomProveidor from FrasIN order by rowid"),
              (QStringList{"1|Nou", "2|Altre"}));
    EXPECT_EQ(rows(supl(), "select Tipus, NomProveidor from Suplidos order by rowid"),
              (QStringList{"S|Nou", "P|Client u"}));
    EXPECT_EQ(rows(older + schema::db::FrasIn, "select NomProveidor from FrasIN"),
              QStringList{"Vell"});
}

TEST_F(Suppliers, WithTreasuryTheBalanceIsWrittenAndShown) {
    f.ctx.Tesoreria = true;
    add("Buit");
    add("Ple", "-20,5");
    EXPECT_EQ(suppliers(), (QStringList{"1|Buit|0", "2|Ple|-205000"}));
    EXPECT_EQ(supplierByName(f.ctx, "Ple")->saldo, "-20,50");
    Supplier s;
    s.nom = "Dolent";
    s.saldo = "vint";
    const Outcome out = saveSupplier(f.ctx, dialogs, s, true);
    EXPECT_EQ(out.field, "txtsaldo");
    EXPECT_EQ(dialogs.lastText(), "Importe INCORRECTO: vint");
    EXPECT_EQ(suppliers().size(), 2);
}

TEST_F(Suppliers, WithoutTreasuryTheBalanceIsNeitherShownNorWritten) {
    f.ctx.Tesoreria = true;
    add("Proveidor", "300");
    f.ctx.Tesoreria = false;
    Supplier s = *supplierByNumber(f.ctx, "1");
    EXPECT_EQ(s.saldo, "");
    s.saldo = "1";
    ASSERT_TRUE(saveSupplier(f.ctx, dialogs, s, false).done());
    EXPECT_EQ(suppliers(), QStringList{"1|Proveidor|3000000"});
}

TEST_F(Suppliers, WithoutTreasuryOnlyPurchasesProtectASupplier) {
    add("Pagat");
    exec(tesorer(), "insert into movimientos (data, proveedor) values ('2026-01-10', 1)");
    exec(cartera(), "insert into cartera (proveedor, In_Out) values (1, 'In')");
    dialogs.setNextAnswer(Dialogs::Answer::Yes);
    const Outcome out = deleteSupplier(f.ctx, dialogs, "1");
    ASSERT_TRUE(out.done());
    EXPECT_EQ(shown(),
              (QStringList{QString::fromUtf8("Q:Se eliminará el proveedor. ¿Esta seguro/a?"),
                           "I:Se ha eliminado: 1"}));
    EXPECT_TRUE(suppliers().isEmpty());
}

TEST_F(Suppliers, DeletionRefusalsComeInOrder) {
    add("Proveidor");
    f.ctx.Tesoreria = true;
    purchase(frasIn(), 1, "Proveidor");
    exec(tesorer(), "insert into movimientos (data, proveedor) values ('2026-01-10', 1)");
    exec(cartera(), "insert into cartera (proveedor, In_Out) values (1, 'In')");
    const auto attempt = [&] {
        dialogs.clear();
        dialogs.setNextAnswer(Dialogs::Answer::Yes);
        EXPECT_EQ(deleteSupplier(f.ctx, dialogs, "1").kind, Outcome::Kind::Refused);
        EXPECT_EQ(dialogs.shown().back().kind, ScriptedDialogs::Shown::Kind::Stop);
        return dialogs.lastText();
    };
    EXPECT_EQ(attempt(), "Baja imposible, el proveedor tiene facturas registradas. ");
    exec(frasIn(), "delete from FrasIN");
    EXPECT_EQ(attempt(), "Baja imposible, el proveedor tiene apuntes en tesoreria.");
    exec(tesorer(), "delete from movimientos");
    EXPECT_EQ(attempt(), "Baja imposible, el proveedor tiene recibos pendientes en la cartera");
    EXPECT_EQ(suppliers().size(), 1);
}

TEST_F(Suppliers, ADisbursementDoesNotProtectASupplier) {
    add("Suplert");
    provision(1, "Suplert", "S");
    f.ctx.Tesoreria = true;
    dialogs.setNextAnswer(Dialogs::Answer::Yes);
    EXPECT_TRUE(deleteSupplier(f.ctx, dialogs, "1").done());
    EXPECT_TRUE(suppliers().isEmpty());
    EXPECT_EQ(rows(supl(), "select NomProveidor from Suplidos"), QStringList{"Suplert"});
}

TEST_F(Suppliers, TheQuestionAnsweredNoTouchesNothing) {
    add("Proveidor");
    dialogs.setNextAnswer(Dialogs::Answer::No);
    EXPECT_EQ(deleteSupplier(f.ctx, dialogs, "1").kind, Outcome::Kind::Declined);
    EXPECT_EQ(dialogs.shown().size(), 1u);
    EXPECT_EQ(suppliers().size(), 1);
}

TEST_F(Suppliers, AnOverLongNifIsRefusedWithNothingWritten) {
    Supplier s;
    s.nom = "Llarg";
    s.nif = "12345678901234";  // 14: the supplier's field holds 13
    EXPECT_EQ(saveSupplier(f.ctx, dialogs, s, true).kind, Outcome::Kind::Refused);
    EXPECT_TRUE(dialogs.lastText().contains("Proveidors.nif: longer than 13 characters"));
    EXPECT_TRUE(suppliers().isEmpty());
}

TEST_F(Suppliers, AnOverLongRenameLeavesPurchasesAsTheyWere) {
    add("Curt");
    purchase(frasIn(), 1, "Curt");
    Supplier s = *supplierByNumber(f.ctx, "1");
    s.nom = QString(41, u'n');
    EXPECT_EQ(saveSupplier(f.ctx, dialogs, s, false).kind, Outcome::Kind::Refused);
    EXPECT_EQ(dialogs.shown().size(), 1u);
    EXPECT_EQ(suppliers(), QStringList{"1|Curt|0"});
    EXPECT_EQ(rows(frasIn(), "select NomProveidor from FrasIN"), QStringList{"Curt"});
}

}  // namespace
