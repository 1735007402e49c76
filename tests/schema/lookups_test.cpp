#include "schema/lookups.h"

#include "context/dialogs.h"
#include "context/messages.h"
#include "schema/creation.h"
#include "schema/upgrades.h"
#include "schema_fixture.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

using namespace tallora;
using namespace tallora::schema;
using tallora::testing::ExerciseFixture;

namespace {

// Runs one statement with its values bound and gives the number of the row it inserted.
template <typename... Values>
QString insert(const QString& path, const QString& sql, const Values&... values) {
    store::Database d = store::Database::open(path);
    store::Statement st = d.prepare(sql);
    int i = 0;
    (st.bind(++i, values), ...);
    st.execute();
    return QString::number(d.lastInsertId());
}

Money amount(const char* text) {
    return *Money::parse(QString::fromLatin1(text), u'.');
}

// An exercise with every database of the set-up, the treasury ones included.
class LookupTest : public ::testing::Test {
protected:
    LookupTest() {
        createExerciseDatabases(f.exercise);
        Actualitza_Bases(f.ctx);
    }

    QString file(const QString& database) const { return f.ctx.exerciseFile(database); }

    QString addClient(const QString& nom, const QString& nif, const char* saldo) {
        return insert(file(db::Gest), "insert into Clients (nom, NIF, saldo) values (?, ?, ?)", nom,
                      nif, amount(saldo));
    }
    QString addProveidor(const QString& nom, const QString& nif) {
        return insert(file(db::Gest), "insert into Proveidors (nom, nif) values (?, ?)", nom, nif);
    }
    QString addEntitat(const QString& entidad, const char* saldo) {
        return insert(file(db::Tesorer),
                      "insert into entidades (Grup, entidad, Saldo) values (572, ?, ?)", entidad,
                      amount(saldo));
    }
    QString addOtra(int grup, const QString& nom) {
        return insert(file(db::Comptes),
                      "insert into Otras (Grup, NomGrup, NomCompte) values (?, ?, ?)", grup, nom,
                      nom);
    }
    void addAccount(const QString& table, const QString& nom) {
        insert(file(db::Comptes), "insert into " + table + " (Grup, NomCompte) values (1, ?)", nom);
    }
    void addSale(int ordre, int client, const char* total, const QString& descripcio) {
        insert(file(db::FrasOut),
               "insert into FrasOut (Ordre, Client, TOTAL, Descripcio) values (?, ?, ?, ?)", ordre,
               client, amount(total), descripcio);
    }
    void addPurchase(int ordre, int proveidor, const char* total, const QString& descripcio) {
        insert(file(db::FrasIn),
               "insert into FrasIN (Ordre, Proveidor, TOTAL, descripcio) values (?, ?, ?, ?)",
               ordre, proveidor, amount(total), descripcio);
    }
    // Removes every database of the exercise, so that any statement would fail.
    void removeDatabases() {
        for (const QString& name : QDir(f.exercise).entryList(QDir::Files))
            ASSERT_TRUE(QFile::remove(f.exercise + name));
    }

    ExerciseFixture f;
    ScriptedDialogs dialogs;
};

using LookupByNumber = LookupTest;
using LookupDuplicateInvoice = LookupTest;
using LookupAccountName = LookupTest;

// Every look-up by number gives its empty result for `number`.
void expectEveryLookUpEmpty(const WorkingContext& ctx, const QString& number) {
    SCOPED_TRACE(number.toStdString());
    EXPECT_TRUE(Nom_Client(ctx, number).isEmpty());
    EXPECT_TRUE(NIF_Client(ctx, number).isEmpty());
    EXPECT_EQ(Saldo_Client(ctx, number), Money());
    EXPECT_TRUE(Nom_Proveidor(ctx, number).isEmpty());
    EXPECT_TRUE(NIF_Proveidor(ctx, number).isEmpty());
    EXPECT_TRUE(Nom_Entitat(ctx, number).isEmpty());
    EXPECT_EQ(Saldo_Entitat(ctx, number), Money());
    EXPECT_TRUE(Nom_CompteOtras(ctx, number).isEmpty());
    EXPECT_EQ(Grup_CompteOtras(ctx, number), std::nullopt);
}

}  // namespace

// --- Look-ups by number ---------------------------------------------------------------------

TEST_F(LookupByNumber, CustomerNameNifAndBalance) {
    const QString a = addClient("Ferreteria Puig", "B12345678", "1234.5678");
    const QString b = addClient("Ñandú Viajes", "X1234567L", "-20.05");
    EXPECT_EQ(Nom_Client(f.ctx, a), "Ferreteria Puig");
    EXPECT_EQ(Nom_Client(f.ctx, b), "Ñandú Viajes");
    EXPECT_EQ(NIF_Client(f.ctx, a), "B12345678");
    EXPECT_EQ(NIF_Client(f.ctx, b), "X1234567L");
    EXPECT_EQ(Saldo_Client(f.ctx, a), Money::fromUnits(12345678));
    EXPECT_EQ(Saldo_Client(f.ctx, b), Money::fromUnits(-200500));
}

TEST_F(LookupByNumber, CustomerNifIsCutToItsFirstThirteenCharacters) {
    const QString c = addClient("Largo", "ABCDEFGHIJKLMNO", "0");
    EXPECT_EQ(NIF_Client(f.ctx, c), "ABCDEFGHIJKLM");
    const QString d = addClient("Justo", "1234567890123", "0");
    EXPECT_EQ(NIF_Client(f.ctx, d), "1234567890123");
}

TEST_F(LookupByNumber, SupplierNameAndNif) {
    const QString a = addProveidor("Papereria Vidal", "A08000001");
    const QString b = addProveidor("Gasóleos del Sur", "1234567890123");
    EXPECT_EQ(Nom_Proveidor(f.ctx, a), "Papereria Vidal");
    EXPECT_EQ(Nom_Proveidor(f.ctx, b), "Gasóleos del Sur");
    EXPECT_EQ(NIF_Proveidor(f.ctx, a), "A08000001");
    EXPECT_EQ(NIF_Proveidor(f.ctx, b), "1234567890123");
}

TEST_F(LookupByNumber, TreasuryAccountNameAndBalance) {
    const QString a = addEntitat("Banc de Sabadell", "15000.25");
    const QString b = addEntitat("La Caixa", "-3.5");
    EXPECT_EQ(Nom_Entitat(f.ctx, a), "Banc de Sabadell");
    EXPECT_EQ(Nom_Entitat(f.ctx, b), "La Caixa");
    EXPECT_EQ(Saldo_Entitat(f.ctx, a), Money::fromUnits(150002500));
    EXPECT_EQ(Saldo_Entitat(f.ctx, b), Money::fromUnits(-35000));
}

TEST_F(LookupByNumber, OtherAccountNameAndGroup) {
    const QString a = addOtra(170, "Préstamo Banco");
    const QString b = addOtra(555, "Partidas pendientes");
    EXPECT_EQ(Nom_CompteOtras(f.ctx, a), "Préstamo Banco");
    EXPECT_EQ(Nom_CompteOtras(f.ctx, b), "Partidas pendientes");
    EXPECT_EQ(Grup_CompteOtras(f.ctx, a), 170);
    EXPECT_EQ(Grup_CompteOtras(f.ctx, b), 555);
}

TEST_F(LookupByNumber, OtherAccountWithoutGroupGivesNoGroup) {
    const QString a = insert(
        file(db::Comptes), "insert into Otras (NomGrup, NomCompte) values ('Otras', 'Sin grupo')");
    EXPECT_EQ(Nom_CompteOtras(f.ctx, a), "Sin grupo");
    EXPECT_EQ(Grup_CompteOtras(f.ctx, a), std::nullopt);
}

TEST_F(LookupByNumber, UnknownNumberGivesAnEmptyResultAndZeroForTheBalances) {
    addClient("Uno", "B1", "10");
    addProveidor("Dos", "B2");
    addEntitat("Tres", "30");
    addOtra(170, "Cuatro");
    expectEveryLookUpEmpty(f.ctx, "9999");
}

TEST_F(LookupByNumber, EmptyArgumentRunsNoStatementAndGivesAnEmptyResult) {
    // With no database at all, any statement would raise; an empty argument must not try.
    removeDatabases();
    for (const QString& empty : {QString(), QString(""), QString("  ")})
        expectEveryLookUpEmpty(f.ctx, empty);
}

TEST_F(LookupByNumber, MissingDatabaseRaisesTheErrorToTheCaller) {
    removeDatabases();
    EXPECT_THROW(Nom_Client(f.ctx, "1"), store::StoreError);
    EXPECT_THROW(NIF_Client(f.ctx, "1"), store::StoreError);
    EXPECT_THROW(Saldo_Client(f.ctx, "1"), store::StoreError);
    EXPECT_THROW(Nom_Proveidor(f.ctx, "1"), store::StoreError);
    EXPECT_THROW(NIF_Proveidor(f.ctx, "1"), store::StoreError);
    EXPECT_THROW(Nom_Entitat(f.ctx, "1"), store::StoreError);
    EXPECT_THROW(Saldo_Entitat(f.ctx, "1"), store::StoreError);
    EXPECT_THROW(Nom_CompteOtras(f.ctx, "1"), store::StoreError);
    EXPECT_THROW(Grup_CompteOtras(f.ctx, "1"), store::StoreError);
    // Nothing was created by the attempt.
    EXPECT_TRUE(QDir(f.exercise).entryList(QDir::Files).isEmpty());
}

TEST_F(LookupByNumber, MissingFieldRaisesTheErrorToTheCaller) {
    // An exercise never set up for treasury has no balance field in its customers.
    ExerciseFixture bare;
    createExerciseDatabases(bare.exercise);
    const QString c = insert(bare.exercise + db::Gest, "insert into Clients (nom) values ('A')");
    EXPECT_EQ(Nom_Client(bare.ctx, c), "A");
    EXPECT_THROW(Saldo_Client(bare.ctx, c), store::StoreError);
}

TEST_F(LookupByNumber, NumberWithBlanksAroundIsFoundAndNonNumberGivesAnEmptyResult) {
    const QString c = addClient("Con blancos", "B9", "7");
    EXPECT_EQ(Nom_Client(f.ctx, " " + c + " "), "Con blancos");
    EXPECT_TRUE(Nom_Client(f.ctx, "abc").isEmpty());
    EXPECT_TRUE(Nom_Client(f.ctx, c + "x").isEmpty());
    EXPECT_EQ(Saldo_Client(f.ctx, "1 or 1=1"), Money());
}

TEST_F(LookupByNumber, ReadsTheDatabasesOfTheExerciseInDirectori) {
    const QString c = addClient("Cliente 2026", "B1", "0");
    // Another exercise of the same company, with another customer under the same number.
    const QString other = f.company + "2025/";
    ASSERT_TRUE(QDir().mkpath(other));
    createExerciseDatabases(other);
    EXPECT_EQ(insert(other + db::Gest, "insert into Clients (nom) values ('Cliente 2025')"), c);
    EXPECT_EQ(Nom_Client(f.ctx, c), "Cliente 2026");
    f.ctx.Directori = other;
    EXPECT_EQ(Nom_Client(f.ctx, c), "Cliente 2025");
}

// --- Duplicate invoices ----------------------------------------------------------------------

TEST_F(LookupDuplicateInvoice, SaleWithTheSameThreeValuesIsFound) {
    addSale(1, 7, "1234.50", "F-2026/15");
    EXPECT_FALSE(Nova_FrasOUT(f.ctx, "1.234,50", "F-2026/15", "7"));
    // The description compares without regard to case, as names do everywhere.
    EXPECT_FALSE(Nova_FrasOUT(f.ctx, "1.234,50", "f-2026/15", "7"));
}

TEST_F(LookupDuplicateInvoice, SaleDifferingInAnyOneValueIsNew) {
    addSale(1, 7, "1234.50", "F-2026/15");
    EXPECT_TRUE(Nova_FrasOUT(f.ctx, "1.234,51", "F-2026/15", "7"));
    EXPECT_TRUE(Nova_FrasOUT(f.ctx, "1.234,50", "F-2026/16", "7"));
    EXPECT_TRUE(Nova_FrasOUT(f.ctx, "1.234,50", "F-2026/15", "8"));
}

TEST_F(LookupDuplicateInvoice, FormattedTotalComparesAsItsAmount) {
    // "1.234,50" is 1234.50: neither 1.2345 (point taken as decimal) nor 123450 (comma dropped).
    addSale(1, 7, "1.2345", "A");
    addSale(2, 7, "123450", "A");
    EXPECT_TRUE(Nova_FrasOUT(f.ctx, "1.234,50", "A", "7"));
    addSale(3, 7, "1234.5", "A");
    EXPECT_FALSE(Nova_FrasOUT(f.ctx, "1.234,50", "A", "7"));
    EXPECT_FALSE(Nova_FrasOUT(f.ctx, "1234,5", "A", "7"));
}

TEST_F(LookupDuplicateInvoice, TotalFollowsTheDecimalSetting) {
    addSale(1, 7, "1234.5", "A");
    f.ctx.Decimal = '.';
    EXPECT_FALSE(Nova_FrasOUT(f.ctx, "1,234.50", "A", "7"));
    EXPECT_TRUE(Nova_FrasOUT(f.ctx, "1.23450", "A", "7"));
}

TEST_F(LookupDuplicateInvoice, NegativeTotalIsComparedWithItsSign) {
    addSale(1, 7, "-80", "Abono 3");
    EXPECT_FALSE(Nova_FrasOUT(f.ctx, "-80,00", "Abono 3", "7"));
    EXPECT_TRUE(Nova_FrasOUT(f.ctx, "80,00", "Abono 3", "7"));
}

TEST_F(LookupDuplicateInvoice, PurchaseWithTheSameThreeValuesIsFound) {
    addPurchase(1, 4, "99.99", "Fra. 881");
    EXPECT_FALSE(Nova_FrasIN(f.ctx, "99,99", "Fra. 881", "4"));
    EXPECT_TRUE(Nova_FrasIN(f.ctx, "99,98", "Fra. 881", "4"));
    EXPECT_TRUE(Nova_FrasIN(f.ctx, "99,99", "Fra. 882", "4"));
    EXPECT_TRUE(Nova_FrasIN(f.ctx, "99,99", "Fra. 881", "5"));
    EXPECT_FALSE(Nova_FrasIN(f.ctx, "99,99", "Fra. 881", " 4"));
}

TEST_F(LookupDuplicateInvoice, EachKindLooksOnlyAtItsOwnInvoices) {
    addPurchase(1, 4, "50", "X-1");
    EXPECT_TRUE(Nova_FrasOUT(f.ctx, "50,00", "X-1", "4"));
    addSale(1, 4, "60", "X-2");
    EXPECT_TRUE(Nova_FrasIN(f.ctx, "60,00", "X-2", "4"));
    EXPECT_FALSE(Nova_FrasIN(f.ctx, "50,00", "X-1", "4"));
    EXPECT_FALSE(Nova_FrasOUT(f.ctx, "60,00", "X-2", "4"));
}

TEST_F(LookupDuplicateInvoice, EmptyArgumentGivesFalseWithoutAStatement) {
    removeDatabases();
    EXPECT_FALSE(Nova_FrasOUT(f.ctx, "", "A", "1"));
    EXPECT_FALSE(Nova_FrasOUT(f.ctx, "1,00", "", "1"));
    EXPECT_FALSE(Nova_FrasOUT(f.ctx, "1,00", "A", ""));
    EXPECT_FALSE(Nova_FrasIN(f.ctx, "", "A", "1"));
    EXPECT_FALSE(Nova_FrasIN(f.ctx, "1,00", "", "1"));
    EXPECT_FALSE(Nova_FrasIN(f.ctx, "1,00", "A", ""));
    // With every argument present the statement runs and the missing database raises.
    EXPECT_THROW(Nova_FrasOUT(f.ctx, "1,00", "A", "1"), store::StoreError);
    EXPECT_THROW(Nova_FrasIN(f.ctx, "1,00", "A", "1"), store::StoreError);
}

TEST_F(LookupDuplicateInvoice, DescriptionWithAQuoteIsComparedAsText) {
    addSale(1, 7, "10", "Fra. d'Or");
    EXPECT_FALSE(Nova_FrasOUT(f.ctx, "10,00", "Fra. d'Or", "7"));
    EXPECT_TRUE(Nova_FrasOUT(f.ctx, "10,00", "Fra. d", "7"));
}

TEST_F(LookupDuplicateInvoice, TotalOrPartyThatIsNotANumberMatchesNoRow) {
    addSale(1, 7, "10", "A");
    EXPECT_TRUE(Nova_FrasOUT(f.ctx, "diez", "A", "7"));
    EXPECT_TRUE(Nova_FrasOUT(f.ctx, "10,00", "A", "siete"));
}

// --- Account names ----------------------------------------------------------------------------

TEST_F(LookupAccountName, FreeNameGivesFalseWithoutMessage) {
    addAccount("Compres", "Mercaderías");
    EXPECT_FALSE(Verifica_NomCompte(f.ctx, dialogs, "Mercaderías varias"));
    f.ctx.Tesoreria = true;
    EXPECT_FALSE(Verifica_NomCompte(f.ctx, dialogs, "Mercaderías varias"));
    EXPECT_TRUE(dialogs.shown().empty());
}

TEST_F(LookupAccountName, NameTakenInAnyFamilyGivesTrueAfterTheStopMessage) {
    for (const char* family : {"Tributs", "Amortitzacions", "Compres", "Ingresos", "Inversions",
                               "Personal", "Serveis"}) {
        const QString table = QString::fromLatin1(family);
        const QString name = "Cuenta de " + table;
        EXPECT_FALSE(Verifica_NomCompte(f.ctx, dialogs, name)) << table.toStdString();
        addAccount(table, name);
        dialogs.clear();
        EXPECT_TRUE(Verifica_NomCompte(f.ctx, dialogs, name)) << table.toStdString();
        ASSERT_EQ(dialogs.shown().size(), 1u) << table.toStdString();
        EXPECT_EQ(dialogs.shown()[0].kind, ScriptedDialogs::Shown::Kind::Stop);
        EXPECT_EQ(dialogs.shown()[0].text, "Alta imposible, el nombre ya existe.");
        dialogs.clear();
    }
}

TEST_F(LookupAccountName, NameTakenTwiceShowsOneMessage) {
    addAccount("Serveis", "Reparaciones");
    addAccount("Compres", "Reparaciones");
    EXPECT_TRUE(Verifica_NomCompte(f.ctx, dialogs, "Reparaciones"));
    EXPECT_EQ(dialogs.shown().size(), 1u);
}

TEST_F(LookupAccountName, NameComparesWithoutRegardToCase) {
    addAccount("Ingresos", "Ventas Ñandú");
    EXPECT_TRUE(Verifica_NomCompte(f.ctx, dialogs, "VENTAS ÑANDÚ"));
    EXPECT_EQ(dialogs.shown().size(), 1u);
}

TEST_F(LookupAccountName, MessageFollowsTheLanguage) {
    addAccount("Tributs", "IBI");
    ASSERT_TRUE(f.ctx.setIdioma("cat"));
    EXPECT_TRUE(Verifica_NomCompte(f.ctx, dialogs, "IBI"));
    EXPECT_EQ(dialogs.lastText(), Missatge(f.ctx, 6843));
    EXPECT_NE(dialogs.lastText(), "Alta imposible, el nombre ya existe.");
}

TEST_F(LookupAccountName, NameOnlyInOtherAccountsCountsOnlyWithTreasury) {
    addOtra(170, "Préstamo hipotecario");
    f.ctx.Tesoreria = false;
    EXPECT_FALSE(Verifica_NomCompte(f.ctx, dialogs, "Préstamo hipotecario"));
    EXPECT_TRUE(dialogs.shown().empty());
    f.ctx.Tesoreria = true;
    EXPECT_TRUE(Verifica_NomCompte(f.ctx, dialogs, "Préstamo hipotecario"));
    EXPECT_EQ(dialogs.shown().size(), 1u);
}

TEST_F(LookupAccountName, EmptyNameGivesTrueWithoutStatementOrMessage) {
    // An account whose name is empty would be found by a statement; none may run.
    addAccount("Tributs", "");
    f.ctx.Tesoreria = true;
    EXPECT_TRUE(Verifica_NomCompte(f.ctx, dialogs, ""));
    EXPECT_TRUE(dialogs.shown().empty());
}

TEST_F(LookupAccountName, FailingStatementGivesTrueWithoutMessage) {
    // An exercise without treasury set-up has no Otras table: only the treasury form fails.
    ExerciseFixture bare;
    createExerciseDatabases(bare.exercise);
    EXPECT_FALSE(Verifica_NomCompte(bare.ctx, dialogs, "Libre"));
    bare.ctx.Tesoreria = true;
    EXPECT_TRUE(Verifica_NomCompte(bare.ctx, dialogs, "Libre"));
    EXPECT_TRUE(dialogs.shown().empty());
}

TEST_F(LookupAccountName, MissingDatabaseGivesTrueWithoutMessage) {
    removeDatabases();
    EXPECT_NO_THROW(EXPECT_TRUE(Verifica_NomCompte(f.ctx, dialogs, "Libre")));
    EXPECT_TRUE(dialogs.shown().empty());
    EXPECT_FALSE(QFile::exists(f.exercise + db::Comptes));
}

TEST_F(LookupAccountName, NameWithAQuoteIsCheckedAsText) {
    EXPECT_FALSE(Verifica_NomCompte(f.ctx, dialogs, "Caf' d'Or"));
    addAccount("Serveis", "Caf' d'Or");
    EXPECT_TRUE(Verifica_NomCompte(f.ctx, dialogs, "Caf' d'Or"));
}
