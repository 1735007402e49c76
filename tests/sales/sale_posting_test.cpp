// GrabaApunt's writes: the FrasOut row column by column, the movement or the receipt, the
// numbering, and all or nothing across the three files.
#include "sales_fixture.h"
#include "sales/sale_posting.h"
#include "sales/sale_validation.h"

namespace tallora::testing {
namespace {

using sales::PostingResult;

class SalePostingTest : public SalesData {
protected:
    // Verifies and posts, as the screen does.
    PostingResult post(SaleEntry& e) {
        sales::VerifyOptions options;
        const auto verdict = sales::Verifica_Apunt(f.ctx, dialogs, e, options);
        EXPECT_TRUE(verdict.ok) << dialogs.lastText().toStdString();
        if (!verdict.ok) return {};
        return sales::GrabaApunt(f.ctx, e, *verdict.account);
    }
    SaleEntry split(const QString& total, double rate = 21) {
        SaleEntry e = entry(total);
        sales::Reparteix_Total(f.ctx, e, rate, false);
        return e;
    }
    QStringList sales(const QString& columns = "Ordre, Descripcio, Cobrada") {
        return rows(frasOut(), "select " + columns + " from FrasOut order by Ordre");
    }
    QStringList movements() {
        return rows(tesorer(), "select data, entidad, cliente, FrasOut, concepto, D, H "
                               "from movimientos order by Id");
    }
    QStringList receipts() {
        return rows(cartera(), "select data, cliente, In_Out, Ejercicio, Factura, Total, "
                               "Pendiente, FrasOut, Vencimiento, Borrador from cartera order by Id");
    }
};

TEST_F(SalePostingTest, WithoutTreasuryOnlyTheSaleIsWrittenColumnByColumn) {
    SaleEntry e = reEntry("121,00");
    sales::Reparteix_Total(f.ctx, e, 21, true);
    e.txtBaseIRPF = "0";
    e.clasificacion = "Factura Intracomunitaria";
    e.concepte = {"Uno", "Dos", "", "", "Cinco"};
    const PostingResult r = post(e);
    ASSERT_TRUE(r.ok()) << r.error.toStdString();
    EXPECT_EQ(r.ordre, 1) << "a fresh exercise starts at 1";
    EXPECT_EQ(r.affected, 1);
    const QStringList row = rows(
        frasOut(),
        "select TOTAL, Ordre, BaseIRPF, TipusIRPF, Retencio, Base1, TIva1, Iva1, TRE1, RE1, "
        "Base2, TIva2, Iva2, TRE2, RE2, Base3, TIva3, Iva3, TRE3, RE3, Client, NomClient, "
        "direccio, poblacio, NIF, concepte1, concepte2, concepte3, concepte4, concepte5, "
        "Descripcio, data, Grup, NomGrup, Compte, NomCompte, Cobrada, Clasificacion, Marca, "
        "Venciment from FrasOut");
    ASSERT_EQ(row.size(), 1);
    EXPECT_EQ(row[0],
              "1210000|1|0|0|0|958800|210000|201300|52000|49900|"
              "0|100000|0|14000|0|0|40000|0|5000|0|2|Colmado Ruiz|"
              "|||Uno|Dos|||Cinco|"
              "F-1|2026-03-15|700|Ventas|7000001|Ventas mercaderias|0|Factura Intracomunitaria|0|"
              "<null>");
    EXPECT_TRUE(movements().isEmpty());
    EXPECT_TRUE(receipts().isEmpty());
}

TEST_F(SalePostingTest, WithholdingAndTheReceiptAddressAreWritten) {
    SaleEntry e = entry("100,00");
    e.txtBaseIRPF = "100,00";
    e.Text1 = "15";
    sales::Reparteix_Total(f.ctx, e, 21, false);
    e.rebut = true;
    e.rebutDomicili = "C/ Major 1";
    e.rebutPoblacio = "Vic";
    e.rebutNif = "B11111111";
    ASSERT_TRUE(post(e).ok());
    EXPECT_EQ(sales("BaseIRPF, TipusIRPF, Retencio, Base1, Iva1, direccio, poblacio, NIF"),
              QStringList{"1000000|150000|150000|950400|199600|C/ Major 1|Vic|B11111111"});
}

TEST_F(SalePostingTest, TreasuryWithoutAccountLeavesAReceiptToCollect) {
    f.ctx.Tesoreria = true;
    SaleEntry e = split("121,00");
    ASSERT_TRUE(post(e).ok());
    EXPECT_EQ(sales(), QStringList{"1|F-1|0"});
    EXPECT_TRUE(movements().isEmpty());
    EXPECT_EQ(receipts(), QStringList{"2026-03-15|1|Out|2026|F-1|1210000|0|1|2026-04-15|n"});
}

TEST_F(SalePostingTest, TreasuryWithAnAccountRecordsTheCollection) {
    f.ctx.Tesoreria = true;
    SaleEntry e = split("121,00");
    e.entitat = "Banco Sabadell";
    e.entitatId = 2;
    ASSERT_TRUE(post(e).ok());
    EXPECT_EQ(sales(), QStringList{"1|F-1|-1"});
    EXPECT_EQ(movements(), QStringList{"2026-03-15|2|1|1|N/Fra. F-1|1210000|0"});
    EXPECT_TRUE(receipts().isEmpty());
}

TEST_F(SalePostingTest, TheTreasuryOptionOffIgnoresAChosenAccount) {
    SaleEntry e = split("121,00");
    e.entitat = "Banco Sabadell";
    e.entitatId = 2;
    ASSERT_TRUE(post(e).ok());
    EXPECT_EQ(sales(), QStringList{"1|F-1|0"});
    EXPECT_TRUE(movements().isEmpty());
}

TEST_F(SalePostingTest, ADashDescriptionTakesTheNumber) {
    exec(frasOut(), "insert into FrasOut (Ordre, NomClient) values (41, 'x')");
    SaleEntry e = split("121,00");
    e.txtdescripcio = "-";
    const PostingResult r = post(e);
    ASSERT_TRUE(r.ok());
    EXPECT_EQ(r.ordre, 42);
    EXPECT_EQ(e.txtdescripcio, "42");
    EXPECT_EQ(sales().last(), "42|42|0");
}

TEST_F(SalePostingTest, TheSeriesLivesInsideTheDescriptionConceptAndInvoice) {
    f.ctx.Tesoreria = true;
    SaleEntry e = split("-121,00");
    e.txtdescripcio = "12";
    e.cmbSerie = "/Abon";
    ASSERT_TRUE(post(e).ok());
    SaleEntry collected = split("60,50");
    collected.txtdescripcio = "12";
    collected.cmbSerie = "/Abon";
    collected.entitat = "Banco Sabadell";
    collected.entitatId = 2;
    ASSERT_TRUE(post(collected).ok());
    EXPECT_EQ(sales(), (QStringList{"1|12/Abon|0", "2|12/Abon|-1"}));
    EXPECT_EQ(rows(cartera(), "select Factura from cartera"), QStringList{"12/Abon"});
    EXPECT_EQ(rows(tesorer(), "select concepto from movimientos"), QStringList{"N/Fra. 12/Abon"});
}

TEST_F(SalePostingTest, NumbersFollowTheHighestPostedOne) {
    SaleEntry a = split("121,00");
    ASSERT_EQ(post(a).ordre, 1);
    SaleEntry b = split("242,00");
    b.txtdescripcio = "F-2";
    ASSERT_EQ(post(b).ordre, 2);
    EXPECT_EQ(sales::Seguent_Ordre(f.ctx), 3);
}

TEST_F(SalePostingTest, WithBillingANumberTakenByHandAboveTheCounterIsSkipped) {
    f.ctx.Facturacio = true;
    exec(fact(), "insert into Numeracion_Documentos (Ejercicio, FrasOut) values (2026, 4)");
    exec(frasOut(), "insert into FrasOut (Ordre, NomClient) values (5, 'x'), (6, 'y'), (9, 'z')");
    EXPECT_EQ(sales::Seguent_Ordre(f.ctx), 7);
    SaleEntry e = entry("0");
    e.txtBase[0] = "100,00";
    sales::Recalcula_Apunt(f.ctx, e, false);
    EXPECT_EQ(post(e).ordre, 7);
}

TEST_F(SalePostingTest, WithBillingAndNoCounterTheFirstNumberIsOne) {
    f.ctx.Facturacio = true;
    EXPECT_EQ(sales::Seguent_Ordre(f.ctx), 1);
}

TEST_F(SalePostingTest, TicketsWriteCustomerZeroAndTheDayCustomer) {
    f.ctx.ModeExercici = "TICKETS";
    f.ctx.Tesoreria = true;
    SaleEntry e = entry("50,00");
    e.txtClient = e.listClientsText = "";
    e.clientNumber.reset();
    e.entitat = M(6646);
    e.entitatId = 1;
    sales::VerifyOptions options;
    const auto verdict = sales::Verifica_Apunt(f.ctx, dialogs, e, options);
    ASSERT_TRUE(verdict.ok);
    ASSERT_TRUE(sales::GrabaApunt(f.ctx, e, *verdict.account).ok());
    EXPECT_EQ(sales("Client, NomClient, TOTAL, Base1, Cobrada"),
              QStringList{"0|" + M(639) + "|500000|0|-1"});
    EXPECT_EQ(rows(tesorer(), "select entidad, cliente, D from movimientos"),
              QStringList{"1|0|500000"});
}

TEST_F(SalePostingTest, TextsAreSanitisedBeforeTheyAreWritten) {
    exec(gest(), "insert into Clients (client, nom) values (3, 'L´Arbre 50 ')");
    SaleEntry e = split("121,00");
    e.txtClient = e.listClientsText = "L'Arbre 50% ";
    e.clientNumber = 3;
    e.concepte[0] = "Pago 100% + IVA";
    sales::VerifyOptions options;
    // The customer check reads the name as typed; the write stores it sanitised.
    const auto account = sales::Verifica_compte_venda(f.ctx, e.txtTipus);
    ASSERT_TRUE(sales::GrabaApunt(f.ctx, e, *account).ok());
    EXPECT_EQ(sales("NomClient, concepte1"), QStringList{"L´Arbre 50 |Pago 100  IVA"});
    EXPECT_EQ(e.txtClient, "L´Arbre 50 ");
}

TEST_F(SalePostingTest, AFaultInTheSecondWriteLeavesNoRowInAnyFile) {
    f.ctx.Tesoreria = true;
    exec(tesorer(), "create trigger fault before insert on movimientos "
                    "begin select raise(abort, 'disk full'); end");
    exec(cartera(), "create trigger fault before insert on cartera "
                    "begin select raise(abort, 'disk full'); end");
    SaleEntry collected = split("121,00");
    collected.entitat = "Banco Sabadell";
    collected.entitatId = 2;
    const SaleEntry typed = collected;
    sales::VerifyOptions options;
    const auto verdict = sales::Verifica_Apunt(f.ctx, dialogs, collected, options);
    ASSERT_TRUE(verdict.ok);
    const PostingResult r = sales::GrabaApunt(f.ctx, collected, *verdict.account);
    EXPECT_FALSE(r.ok());
    EXPECT_EQ(r.affected, 0);
    EXPECT_TRUE(r.error.contains("disk full")) << r.error.toStdString();
    EXPECT_EQ(collected.txtdescripcio, typed.txtdescripcio) << "the entry stays as typed";

    SaleEntry pending = split("121,00");
    pending.txtdescripcio = "-";
    const PostingResult p = sales::GrabaApunt(f.ctx, pending, *verdict.account);
    EXPECT_FALSE(p.ok());
    EXPECT_EQ(pending.txtdescripcio, "-");

    EXPECT_TRUE(sales().isEmpty());
    EXPECT_TRUE(movements().isEmpty());
    EXPECT_TRUE(receipts().isEmpty());
}

TEST_F(SalePostingTest, AnOverLongDescriptionIsRefusedByTheStoreAndNothingIsWritten) {
    f.ctx.Tesoreria = true;
    SaleEntry e = split("121,00");
    e.txtdescripcio = QString(38, 'x');
    e.cmbSerie = "/Rect";
    const auto account = sales::Verifica_compte_venda(f.ctx, e.txtTipus);
    const PostingResult r = sales::GrabaApunt(f.ctx, e, *account);
    EXPECT_FALSE(r.ok());
    EXPECT_FALSE(r.error.isEmpty());
    EXPECT_TRUE(sales().isEmpty());
    EXPECT_TRUE(receipts().isEmpty());
}

TEST_F(SalePostingTest, ALongConceptIsCutToTheMovementsForty) {
    f.ctx.Tesoreria = true;
    SaleEntry e = split("121,00");
    e.txtdescripcio = QString(35, 'x');
    e.cmbSerie = "/Abon";
    e.entitat = "Banco Sabadell";
    e.entitatId = 2;
    ASSERT_TRUE(post(e).ok());
    EXPECT_EQ(rows(tesorer(), "select concepto from movimientos"),
              QStringList{("N/Fra. " + QString(35, 'x') + "/Abon").left(40)});
}

}  // namespace
}  // namespace tallora::testing
