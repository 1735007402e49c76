#include "master/customers.h"
#include "master_fixture.h"

using namespace tallora;
using namespace tallora::master;

namespace {

class Customers : public tallora::testing::MasterData {
protected:
    Customer named(const QString& nom) {
        Customer c;
        c.nom = nom;
        return c;
    }

    // A customer saved as new; its number.
    QString add(const QString& nom, const QString& saldo = {}) {
        Customer c = named(nom);
        c.saldo = saldo;
        EXPECT_TRUE(saveCustomer(f.ctx, dialogs, c, true).done());
        dialogs.clear();
        return c.client;
    }

    QStringList clients() const {
        return rows(gest(), "select client, nom, saldo from Clients order by client");
    }

    // A sale and a provision or disbursement that carry customer `client` and its name.
    void sale(int client, const QString& nom) {
        exec(frasOut(), QStringLiteral("insert into FrasOut (Ordre, data, Client, NomClient) "
                                       "values (1, '2026-01-10', %1, '%2')")
                            .arg(client)
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

TEST_F(Customers, AnEmptyNameIsRefusedAndNothingIsWritten) {
    Customer c = named("");
    c.direccio = "C/ Major, 1";
    const Outcome out = saveCustomer(f.ctx, dialogs, c, true);
    EXPECT_EQ(out.kind, Outcome::Kind::Refused);
    EXPECT_EQ(out.field, "txtnom");
    EXPECT_EQ(shown(), QStringList{"S:Es obligatorio indicar el nombre del cliente. "});
    EXPECT_TRUE(clients().isEmpty());
}

TEST_F(Customers, ANewCustomerIsStoredSanitisedAndGetsItsNumber) {
    Customer c = named("d'Or 50% + IVA");
    c.direccio = "C/ de l'Hort, 3";
    c.poblacio = "L'Hospitalet";
    c.provincia = "Barcelona";
    c.cp = "08901";
    c.nif = "B12345678";
    c.telefon = "+34 93 000";
    c.fax = "93 001";
    c.email = "a@b.cat";
    c.web = "www.or.cat";
    c.re = true;
    const Outcome out = saveCustomer(f.ctx, dialogs, c, true);
    ASSERT_TRUE(out.done());
    EXPECT_EQ(out.affected, 1);
    EXPECT_EQ(shown(), QStringList{"I:Registros guardados: 1"});
    // The sanitised texts are handed back to the screen.
    EXPECT_EQ(c.nom, QString::fromUtf8("d´Or 50  IVA"));
    EXPECT_EQ(c.telefon, "34 93 000");
    EXPECT_EQ(rows(gest(),
                   "select client, nom, direccio, poblacio, provincia, cp, nif, telefon, "
                   "fax, email, web, RE from Clients"),
              QStringList{QString::fromUtf8("1|d´Or 50  IVA|C/ de l´Hort, 3|L´Hospitalet|"
                                            "Barcelona|08901|B12345678|34 93 000|93 001|a@b.cat|"
                                            "www.or.cat|-1")});
    EXPECT_EQ(c.client, "1");
    EXPECT_EQ(add("Segon"), "2");
}

TEST_F(Customers, ANewNameThatExistsIsRefusedAfterSanitising) {
    add("d'Or");
    Customer c = named("D'OR");
    const Outcome out = saveCustomer(f.ctx, dialogs, c, true);
    EXPECT_EQ(out.kind, Outcome::Kind::Refused);
    EXPECT_EQ(out.field, "txtnom");
    EXPECT_EQ(shown(), QStringList{"S:Alta imposible, el nombre ya existe."});
    EXPECT_EQ(clients(), QStringList{QString::fromUtf8("1|d´Or|0")});
}

TEST_F(Customers, AChangeMayDuplicateANameAndTheFirstIsShown) {
    add("Primer");
    const QString second = add("Segon");
    Customer c = *customerByNumber(f.ctx, second);
    c.nom = "Primer";
    c.poblacio = "Reus";
    ASSERT_TRUE(saveCustomer(f.ctx, dialogs, c, false).done());
    EXPECT_EQ(customerNames(f.ctx), (QStringList{"Primer", "Primer"}));
    const auto first = customerByName(f.ctx, "primer");
    ASSERT_TRUE(first);
    EXPECT_EQ(first->client, "1");
    EXPECT_EQ(first->poblacio, "");
}

TEST_F(Customers, FieldsLeftEmptyAreStoredAsEmptyTexts) {
    add("Nomes nom");
    EXPECT_EQ(rows(gest(),
                   "select count(*) from Clients where direccio = '' and poblacio = '' "
                   "and provincia = '' and cp = '' and nif = '' and telefon = '' and "
                   "fax = '' and email = '' and web = ''"),
              QStringList{"1"});
}

TEST_F(Customers, NamesAreListedInOrderOfName) {
    add("Zeta");
    add("alfa");
    add("Beta");
    EXPECT_EQ(customerNames(f.ctx), (QStringList{"alfa", "Beta", "Zeta"}));
    EXPECT_FALSE(customerByName(f.ctx, "Gamma"));
    EXPECT_FALSE(customerByNumber(f.ctx, "9"));
    EXPECT_FALSE(customerByNumber(f.ctx, "x"));
}

TEST_F(Customers, WithTreasuryTheBalanceIsWrittenAndAnEmptyOneIsZero) {
    f.ctx.Tesoreria = true;
    add("Buit", "");
    add("Ple", "1.234,50");
    EXPECT_EQ(clients(), (QStringList{"1|Buit|0", "2|Ple|12345000"}));
    const auto c = customerByName(f.ctx, "Ple");
    ASSERT_TRUE(c);
    EXPECT_EQ(c->saldo, "1.234,50");
    f.ctx.Decimal = 46;
    EXPECT_EQ(customerByName(f.ctx, "Ple")->saldo, "1,234.50");
    Customer d = named("Punt");
    d.saldo = "1,234.5";
    ASSERT_TRUE(saveCustomer(f.ctx, dialogs, d, true).done());
    EXPECT_EQ(rows(gest(), "select saldo from Clients where nom='Punt'"), QStringList{"12345000"});
}

TEST_F(Customers, AnEmptyBalanceGoesBackToTheScreenAsZero) {
    f.ctx.Tesoreria = true;
    Customer c = named("Buit");
    ASSERT_TRUE(saveCustomer(f.ctx, dialogs, c, true).done());
    EXPECT_EQ(c.saldo, "0");
}

TEST_F(Customers, ABalanceThatIsNotAnAmountIsRefused) {
    f.ctx.Tesoreria = true;
    Customer c = named("Client");
    c.saldo = "12,3,4";
    const Outcome out = saveCustomer(f.ctx, dialogs, c, true);
    EXPECT_EQ(out.kind, Outcome::Kind::Refused);
    EXPECT_EQ(out.field, "txtsaldo");
    EXPECT_EQ(shown(), QStringList{"S:Importe INCORRECTO: 12,3,4"});
    EXPECT_TRUE(clients().isEmpty());
}

TEST_F(Customers, WithoutTreasuryTheBalanceIsNeitherWrittenNorShown) {
    f.ctx.Tesoreria = true;
    const QString n = add("Client", "500,00");
    f.ctx.Tesoreria = false;
    Customer c = *customerByNumber(f.ctx, n);
    EXPECT_EQ(c.saldo, "");
    c.saldo = "7,00";
    c.nom = "Client nou";
    ASSERT_TRUE(saveCustomer(f.ctx, dialogs, c, false).done());
    EXPECT_EQ(clients(), QStringList{"1|Client nou|5000000"});
    // Not even a balance that is not an amount stops a save that does not write it.
    Customer d = named("Altre");
    d.saldo = "abc";
    EXPECT_TRUE(saveCustomer(f.ctx, dialogs, d, true).done());
    EXPECT_EQ(rows(gest(), "select saldo from Clients where nom='Altre'"), QStringList{"0"});
}

TEST_F(Customers, ARenameReachesSalesAndOnlyTheProvisionsOfCustomers) {
    const QString n = add("Vell");
    add("Altre");
    sale(1, "Vell");
    sale(1, "Vell");
    sale(2, "Altre");
    provision(1, "Vell", "P");
    provision(1, "Proveidor u", "S");  // supplier 1 of a disbursement, not this customer
    provision(2, "Altre", "P");
    Customer c = *customerByNumber(f.ctx, n);
    c.nom = "Nou d'ara";
    const Outcome out = saveCustomer(f.ctx, dialogs, c, false);
    ASSERT_TRUE(out.done());
    EXPECT_EQ(out.affected, 1);
    EXPECT_EQ(shown(), (QStringList{"I:Registros guardados: 1", "I:Registros actualizados: 2",
                                    "I:Registros actualizados: 1"}));
    const QString nou = QString::fromUtf8("Nou d´ara");
    EXPECT_EQ(rows(frasOut(), "select Client, NomClient from FrasOut order by rowid"),
              (QStringList{"1|" + nou, "1|" + nou, "2|Altre"}));
    EXPECT_EQ(rows(supl(), "select Proveidor, Tipus, NomProveidor from Suplidos order by rowid"),
              (QStringList{"1|P|" + nou, "1|S|Proveidor u", "2|P|Altre"}));
}

TEST_F(Customers, ARenameWithNothingToSpreadTellsZeroTwice) {
    const QString n = add("Sol");
    Customer c = *customerByNumber(f.ctx, n);
    ASSERT_TRUE(saveCustomer(f.ctx, dialogs, c, false).done());
    EXPECT_EQ(shown(), (QStringList{"I:Registros guardados: 1", "I:Registros actualizados: 0",
                                    "I:Registros actualizados: 0"}));
}

TEST_F(Customers, WithBillingTheCommercialRowIsMadeRebuiltAndDeleted) {
    f.ctx.Facturacio = true;
    Customer c = named("Comercial");
    c.formaPago = "Transferencia";
    c.entidad = "Banc d'Olot";
    c.ccc = "21000000000000000000";
    ASSERT_TRUE(saveCustomer(f.ctx, dialogs, c, true).done());
    // The commercial fields are not sanitised.
    EXPECT_EQ(rows(fact(), "select Id, Client, FormaPago, Entidad, ccc from comercial_clientes"),
              QStringList{"1|1|Transferencia|Banc d'Olot|21000000000000000000"});
    const auto shownBack = customerByName(f.ctx, "Comercial");
    ASSERT_TRUE(shownBack);
    EXPECT_EQ(shownBack->entidad, "Banc d'Olot");

    c.formaPago = "Recibo";
    c.ccc = "";
    ASSERT_TRUE(saveCustomer(f.ctx, dialogs, c, false).done());
    EXPECT_EQ(rows(fact(), "select Id, Client, FormaPago, Entidad, ccc from comercial_clientes"),
              QStringList{"2|1|Recibo|Banc d'Olot|"});

    dialogs.clear();
    dialogs.setNextAnswer(Dialogs::Answer::Yes);
    ASSERT_TRUE(deleteCustomer(f.ctx, dialogs, c.client).done());
    EXPECT_TRUE(clients().isEmpty());
    EXPECT_TRUE(rows(fact(), "select * from comercial_clientes").isEmpty());
}

TEST_F(Customers, WithoutBillingTheCommercialRowIsLeftAlone) {
    exec(fact(), "insert into comercial_clientes (Client, FormaPago) values (1, 'Contado')");
    Customer c = named("Sense");
    c.formaPago = "Recibo";
    ASSERT_TRUE(saveCustomer(f.ctx, dialogs, c, true).done());
    ASSERT_TRUE(saveCustomer(f.ctx, dialogs, c, false).done());
    EXPECT_EQ(customerByNumber(f.ctx, "1")->formaPago, "");
    dialogs.setNextAnswer(Dialogs::Answer::Yes);
    ASSERT_TRUE(deleteCustomer(f.ctx, dialogs, "1").done());
    EXPECT_EQ(rows(fact(), "select Client, FormaPago from comercial_clientes"),
              QStringList{"1|Contado"});
}

TEST_F(Customers, AnOverLongNameIsRefusedWithTheStoreMessageAndNothingWritten) {
    Customer c = named(QString(41, u'x'));
    const Outcome out = saveCustomer(f.ctx, dialogs, c, true);
    EXPECT_EQ(out.kind, Outcome::Kind::Refused);
    ASSERT_EQ(dialogs.shown().size(), 1u);
    EXPECT_EQ(dialogs.shown()[0].kind, ScriptedDialogs::Shown::Kind::Stop);
    EXPECT_TRUE(dialogs.lastText().contains("Clients.nom: longer than 40 characters"))
        << dialogs.lastText().toStdString();
    EXPECT_TRUE(clients().isEmpty());
}

TEST_F(Customers, AFailingStepOfAChangeLeavesEveryFileAsItWas) {
    f.ctx.Facturacio = true;
    Customer c = named("Abans");
    c.formaPago = "Contado";
    ASSERT_TRUE(saveCustomer(f.ctx, dialogs, c, true).done());
    sale(1, "Abans");
    provision(1, "Abans", "P");
    dialogs.clear();
    c.nom = "Despres";
    c.ccc = QString(21, u'9');  // one more than the commercial row holds
    const Outcome out = saveCustomer(f.ctx, dialogs, c, false);
    EXPECT_EQ(out.kind, Outcome::Kind::Refused);
    ASSERT_EQ(dialogs.shown().size(), 1u);
    EXPECT_EQ(dialogs.shown()[0].kind, ScriptedDialogs::Shown::Kind::Stop);
    EXPECT_TRUE(dialogs.lastText().contains("comercial_clientes.ccc"));
    EXPECT_EQ(clients(), QStringList{"1|Abans|0"});
    EXPECT_EQ(rows(fact(), "select Client, FormaPago from comercial_clientes"),
              QStringList{"1|Contado"});
    EXPECT_EQ(rows(frasOut(), "select NomClient from FrasOut"), QStringList{"Abans"});
    EXPECT_EQ(rows(supl(), "select NomProveidor from Suplidos"), QStringList{"Abans"});
}

TEST_F(Customers, WithBillingButNoBillingFileASaveIsRefused) {
    f.ctx.Facturacio = true;
    ASSERT_TRUE(QFile::remove(fact()));
    Customer c = named("Client");
    EXPECT_EQ(saveCustomer(f.ctx, dialogs, c, true).kind, Outcome::Kind::Refused);
    EXPECT_EQ(dialogs.shown().size(), 1u);
    EXPECT_TRUE(dialogs.lastText().startsWith("file not found"))
        << dialogs.lastText().toStdString();
    EXPECT_TRUE(clients().isEmpty());
}

// Deletion

TEST_F(Customers, TheDeleteQuestionAnsweredNoTouchesNothing) {
    add("Client");
    dialogs.setNextAnswer(Dialogs::Answer::No);
    EXPECT_EQ(deleteCustomer(f.ctx, dialogs, "1").kind, Outcome::Kind::Declined);
    EXPECT_EQ(shown(),
              QStringList{QString::fromUtf8("Q:Se eliminará el cliente. ¿Esta seguro/a?")});
    EXPECT_EQ(clients(), QStringList{"1|Client|0"});
}

TEST_F(Customers, ACustomerWithSalesCannotBeDeletedWhateverTheOptions) {
    add("Venedor");
    sale(1, "Venedor");
    for (const bool tesoreria : {false, true}) {
        for (const bool facturacio : {false, true}) {
            f.ctx.Tesoreria = tesoreria;
            f.ctx.Facturacio = facturacio;
            // Every other trace too, so that the first refusal is the one seen.
            exec(tesorer(), "insert into movimientos (data, cliente) values ('2026-01-10', 1)");
            exec(cartera(), "insert into cartera (cliente, In_Out) values (1, 'Out')");
            exec(fact(), "insert into documentos (Client) values (1)");
            dialogs.clear();
            dialogs.setNextAnswer(Dialogs::Answer::Yes);
            const Outcome out = deleteCustomer(f.ctx, dialogs, "1");
            EXPECT_EQ(out.kind, Outcome::Kind::Refused);
            EXPECT_EQ(shown(),
                      (QStringList{QString::fromUtf8("Q:Se eliminará el cliente. ¿Esta seguro/a?"),
                                   "S:Baja imposible, el cliente tiene ventas registradas. "}));
            EXPECT_EQ(clients(), QStringList{"1|Venedor|0"});
        }
    }
}

TEST_F(Customers, AReceiptRefusesTheDeletionOnlyWithTreasury) {
    add("Deutor");
    add("Altre");
    exec(cartera(), "insert into cartera (cliente, In_Out, Total) values (1, 'Out', 10000)");
    f.ctx.Tesoreria = true;
    dialogs.setNextAnswer(Dialogs::Answer::Yes);
    EXPECT_EQ(deleteCustomer(f.ctx, dialogs, "1").kind, Outcome::Kind::Refused);
    EXPECT_EQ(dialogs.lastText(), "Baja imposible, el cliente tiene apuntes en tesoreria.");
    EXPECT_EQ(clients().size(), 2);

    f.ctx.Tesoreria = false;
    dialogs.clear();
    dialogs.setNextAnswer(Dialogs::Answer::Yes);
    const Outcome out = deleteCustomer(f.ctx, dialogs, "1");
    ASSERT_TRUE(out.done());
    EXPECT_EQ(out.affected, 1);
    EXPECT_EQ(dialogs.lastText(), "Se ha eliminado: 1");
    EXPECT_EQ(dialogs.shown().back().kind, ScriptedDialogs::Shown::Kind::Information);
    EXPECT_EQ(clients(), QStringList{"2|Altre|0"});
    // The receipt stays, orphaned.
    EXPECT_EQ(rows(cartera(), "select cliente, Total from cartera"), QStringList{"1|10000"});
}

TEST_F(Customers, ATreasuryMovementRefusesTheDeletionOnlyWithTreasury) {
    add("Cobrat");
    exec(tesorer(), "insert into movimientos (data, cliente, D) values ('2026-01-10', 1, 10000)");
    f.ctx.Tesoreria = true;
    dialogs.setNextAnswer(Dialogs::Answer::Yes);
    EXPECT_EQ(deleteCustomer(f.ctx, dialogs, "1").kind, Outcome::Kind::Refused);
    EXPECT_EQ(dialogs.lastText(), "Baja imposible, el cliente tiene apuntes en tesoreria.");
    f.ctx.Tesoreria = false;
    dialogs.setNextAnswer(Dialogs::Answer::Yes);
    EXPECT_TRUE(deleteCustomer(f.ctx, dialogs, "1").done());
    EXPECT_TRUE(clients().isEmpty());
}

TEST_F(Customers, ABillingDocumentRefusesTheDeletionOnlyWithBilling) {
    add("Pressupostat");
    exec(fact(), "insert into documentos (Client, Presupuesto) values (1, 3)");
    f.ctx.Facturacio = true;
    f.ctx.Tesoreria = true;
    dialogs.setNextAnswer(Dialogs::Answer::Yes);
    EXPECT_EQ(deleteCustomer(f.ctx, dialogs, "1").kind, Outcome::Kind::Refused);
    EXPECT_EQ(dialogs.lastText(),
              "Baja imposible, el cliente tiene documentos (presupuestos, borradores, etc.)");
    f.ctx.Facturacio = false;
    dialogs.setNextAnswer(Dialogs::Answer::Yes);
    EXPECT_TRUE(deleteCustomer(f.ctx, dialogs, "1").done());
    EXPECT_TRUE(clients().isEmpty());
}

TEST_F(Customers, MovementsAreTestedBeforeDocuments) {
    add("Tot");
    exec(tesorer(), "insert into movimientos (data, cliente) values ('2026-01-10', 1)");
    exec(fact(), "insert into documentos (Client) values (1)");
    f.ctx.Tesoreria = true;
    f.ctx.Facturacio = true;
    dialogs.setNextAnswer(Dialogs::Answer::Yes);
    deleteCustomer(f.ctx, dialogs, "1");
    EXPECT_EQ(shown().value(1), "S:Baja imposible, el cliente tiene apuntes en tesoreria.");
    EXPECT_EQ(shown().size(), 2);
}

TEST_F(Customers, AnAbsentPortfolioHasNoReceipts) {
    add("Nou");
    ASSERT_TRUE(QFile::remove(cartera()));
    f.ctx.Tesoreria = true;
    dialogs.setNextAnswer(Dialogs::Answer::Yes);
    EXPECT_TRUE(deleteCustomer(f.ctx, dialogs, "1").done());
    EXPECT_TRUE(clients().isEmpty());
    EXPECT_FALSE(QFile::exists(cartera()));
}

TEST_F(Customers, DeletingANumberNoCustomerHasTellsZero) {
    dialogs.setNextAnswer(Dialogs::Answer::Yes);
    const Outcome out = deleteCustomer(f.ctx, dialogs, "42");
    EXPECT_TRUE(out.done());
    EXPECT_EQ(dialogs.lastText(), "Se ha eliminado: 0");
}

TEST_F(Customers, MessagesFollowTheLanguage) {
    f.ctx.setIdioma("cat");
    add("Client");
    dialogs.setNextAnswer(Dialogs::Answer::No);
    deleteCustomer(f.ctx, dialogs, "1");
    EXPECT_EQ(dialogs.lastText(), QString::fromUtf8("S'esborrarà el client.  Està segur/a?"));
}

}  // namespace
