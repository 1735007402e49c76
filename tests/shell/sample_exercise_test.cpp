// The sample exercise: the same seed gives the same invoices and another seed others; the
// invoices asked for, of every kind and in every month, with totals that add up to the cent;
// with treasury, about half settled and the rest in the portfolio, as the postings leave them;
// a second sample on the same exercise reuses its master data and goes on numbering.
#include "shell/sample_exercise.h"
#include "../table_rows.h"
#include "schema/creation.h"
#include "shell/startup.h"
#include "start_fixture.h"
#include "store/database.h"

#include <cstdint>
#include <stdexcept>

using namespace tallora;
using namespace tallora::shell;
using namespace tallora::testing;

namespace {

namespace db = schema::db;

class SampleExerciseTest : public StartFixture {
protected:
    // A company and its exercise 2026 with today's rates, opened as exercise-open leaves it.
    void openExercise2026(const QString& nom, const QString& nif, bool treasury = false) {
        ASSERT_TRUE(addCompany(nom, nif, treasury));
        ASSERT_TRUE(openCompany(nif8Of(nif)));
        NewExercise e = exercise(QStringLiteral("2026"));
        e.iva = {QStringLiteral("21"), QStringLiteral("10"), QStringLiteral("4")};
        e.re = {QStringLiteral("5,2"), QStringLiteral("1,4"), QStringLiteral("0,5")};
        e.ivas = {QStringLiteral("21"), QStringLiteral("10"), QStringLiteral("4"),
                  QStringLiteral("5")};
        ASSERT_TRUE(createExercise(e));
        ASSERT_TRUE(openExercise(QStringLiteral("2026")));
        Inicia_MDI(ctx, &dialogs);
        ASSERT_EQ(ctx.Tesoreria, treasury);
    }

    SampleSummary fill(int invoices, std::uint64_t seed = 1) {
        SampleOptions options;
        options.invoices = invoices;
        options.seed = seed;
        return fillSampleExercise(ctx, options);
    }

    QString out() const { return ctx.exerciseFile(db::FrasOut); }
    QString in() const { return ctx.exerciseFile(db::FrasIn); }
    QString gest() const { return ctx.exerciseFile(db::Gest); }

    std::int64_t count(const QString& path, const QString& sql) const { return scalar(path, sql); }

    // Every row of `sql`, columns joined by '|'.
    static QStringList table(const QString& path, const QString& sql) {
        return tallora::testing::tableRows(path, sql);
    }

    // The first column of `sql` on tesorer.mdb with the invoices, the customers and the
    // portfolio attached as fo, fi, gest and ca.
    std::int64_t countAcross(const QString& sql) const {
        store::Database d = store::Database::open(ctx.exerciseFile(db::Tesorer));
        d.attach(out(), QStringLiteral("fo"));
        d.attach(in(), QStringLiteral("fi"));
        d.attach(gest(), QStringLiteral("gest"));
        d.attach(ctx.companyFile(db::Cartera), QStringLiteral("ca"));
        store::Statement st = d.prepare(sql);
        if (!st.next()) throw std::runtime_error("no row for " + sql.toStdString());
        return st.int64(0);
    }
};

TEST_F(SampleExerciseTest, TheSameSeedGivesTheSameInvoicesAndAnotherSeedOthers) {
    const QStringList nifs{"B1234567", "B7654321", "B2468135"};
    const std::uint64_t seeds[] = {1, 1, 2};
    QStringList sales[3], purchases[3];
    for (int i = 0; i < 3; ++i) {
        ASSERT_NO_FATAL_FAILURE(openExercise2026(QStringLiteral("Comercial %1").arg(i), nifs[i]));
        const SampleSummary s = fill(300, seeds[i]);
        EXPECT_EQ(s.sales + s.purchases, 300);
        sales[i] = table(out(), QStringLiteral("select * from FrasOut order by Ordre"));
        purchases[i] = table(in(), QStringLiteral("select * from FrasIN order by Ordre"));
    }
    EXPECT_FALSE(sales[0].isEmpty());
    EXPECT_FALSE(purchases[0].isEmpty());
    EXPECT_EQ(sales[0], sales[1]);
    EXPECT_EQ(purchases[0], purchases[1]);
    EXPECT_NE(sales[0], sales[2]);
    EXPECT_NE(purchases[0], purchases[2]);
}

TEST_F(SampleExerciseTest, FiveHundredInvoicesShowEveryKindInEveryMonth) {
    ASSERT_NO_FATAL_FAILURE(openExercise2026("Ferreteria Pons", "B1234567"));
    const SampleSummary s = fill(500);

    EXPECT_EQ(s.sales + s.purchases, 500);
    EXPECT_EQ(count(out(), "select count(*) from FrasOut"), s.sales);
    EXPECT_EQ(count(in(), "select count(*) from FrasIN"), s.purchases);
    // About 55% sales.
    EXPECT_GE(s.sales, 250);
    EXPECT_LE(s.sales, 300);
    EXPECT_EQ(count(gest(), "select count(*) from Clients"), s.customers);
    EXPECT_EQ(count(gest(), "select count(*) from Proveidors"), s.suppliers);
    EXPECT_EQ(s.settled, 0) << "nothing is settled without treasury";

    // Every sale and purchase names a customer or supplier of the master files.
    EXPECT_EQ(countAcross("select count(*) from fo.FrasOut f where not exists (select 1 from "
                          "gest.Clients c where c.client = f.Client and c.nom = f.NomClient)"),
              0);
    EXPECT_EQ(countAcross("select count(*) from fi.FrasIN f where not exists (select 1 from "
                          "gest.Proveidors p where p.proveidor = f.Proveidor and "
                          "p.nom = f.NomProveidor)"),
              0);

    // The exercise's three sales rates and four purchase rates are all used, and kept.
    for (int i = 1; i <= 3; ++i)
        EXPECT_GT(
            count(out(), QStringLiteral("select count(*) from FrasOut where Base%1 <> 0").arg(i)),
            0)
            << "sales rate " << i;
    for (int i = 1; i <= 4; ++i)
        EXPECT_GT(
            count(in(), QStringLiteral("select count(*) from FrasIN where Base%1 <> 0").arg(i)), 0)
            << "purchase rate " << i;
    EXPECT_EQ(count(out(),
                    "select count(*) from FrasOut where TIva1 <> 210000 or "
                    "TIva2 <> 100000 or TIva3 <> 40000 or TRE1 <> 52000 or "
                    "TRE2 <> 14000 or TRE3 <> 5000"),
              0);
    EXPECT_EQ(count(in(),
                    "select count(*) from FrasIN where TipusIva1 <> 210000 or "
                    "TipusIva2 <> 100000 or TipusIva3 <> 40000 or TipusIva4 <> 50000"),
              0);

    // Recargo on the sales of customers with recargo, and on theirs only.
    EXPECT_GT(count(out(), "select count(*) from FrasOut where RE1 <> 0 or RE2 <> 0 or RE3 <> 0"),
              0);
    EXPECT_EQ(countAcross("select count(*) from fo.FrasOut f join gest.Clients c on "
                          "c.client = f.Client where (c.RE <> 0) <> "
                          "(f.RE1 <> 0 or f.RE2 <> 0 or f.RE3 <> 0)"),
              0);

    // IRPF withheld on both sides: by the customers of professional services, and from the
    // professionals the company pays.
    EXPECT_GT(count(out(), "select count(*) from FrasOut where Retencio <> 0"), 0);
    EXPECT_EQ(count(out(),
                    "select count(*) from FrasOut where Retencio <> 0 and "
                    "TipusIRPF not in (150000, 70000)"),
              0);
    EXPECT_GT(count(in(),
                    "select count(*) from FrasIN where Retencio <> 0 and Grup = 62 and "
                    "TipusIRPF = 150000"),
              0);

    // Credit notes: negative, and described with their series.
    const std::int64_t saleNotes =
        count(out(), "select count(*) from FrasOut where Descripcio like '%/Abon'");
    const std::int64_t purchaseNotes =
        count(in(), "select count(*) from FrasIN where descripcio like '%/Abon'");
    EXPECT_GT(saleNotes, 0);
    EXPECT_GT(purchaseNotes, 0);
    EXPECT_EQ(saleNotes + purchaseNotes, s.creditNotes);
    EXPECT_EQ(count(out(),
                    "select count(*) from FrasOut where "
                    "(TOTAL < 0) <> (Descripcio like '%/Abon')"),
              0);
    EXPECT_EQ(count(in(),
                    "select count(*) from FrasIN where "
                    "(TOTAL < 0) <> (descripcio like '%/Abon')"),
              0);

    // Every month of the exercise's year, on both sides.
    EXPECT_EQ(count(out(), "select count(distinct substr(data, 1, 7)) from FrasOut"), 12);
    EXPECT_EQ(count(in(), "select count(distinct substr(data, 1, 7)) from FrasIN"), 12);
    EXPECT_EQ(count(out(), "select count(*) from FrasOut where data not like '2026-%'"), 0);
    EXPECT_EQ(count(in(), "select count(*) from FrasIN where data not like '2026-%'"), 0);

    // Sales in group 70; purchases in the five expense groups and a few investments.
    EXPECT_EQ(column(out(), "select distinct Grup from FrasOut"), QStringList{"70"});
    EXPECT_EQ(column(in(), "select distinct Grup from FrasIN order by Grup"),
              (QStringList{"20", "60", "62", "63", "64", "68"}));
    EXPECT_LT(count(in(), "select count(*) from FrasIN where Grup = 20"), s.purchases / 10);
}

TEST_F(SampleExerciseTest, TotalsAddUpToTheCent) {
    ASSERT_NO_FATAL_FAILURE(openExercise2026("Ferreteria Pons", "B1234567"));
    fill(500);

    // Amounts in whole cents, as the fields showed them.
    for (const char* field : {"TOTAL", "Base1", "Iva1", "RE1", "Base2", "Iva2", "RE2", "Base3",
                              "Iva3", "RE3", "Retencio"})
        EXPECT_EQ(count(out(), QStringLiteral("select count(*) from FrasOut where %1 % 100 <> 0")
                                   .arg(QLatin1String(field))),
                  0)
            << field;
    for (const char* field :
         {"TOTAL", "Base1", "Iva1", "Base2", "Iva2", "Base3", "Iva3", "Base4", "Iva4", "Retencio"})
        EXPECT_EQ(count(in(), QStringLiteral("select count(*) from FrasIN where %1 % 100 <> 0")
                                  .arg(QLatin1String(field))),
                  0)
            << field;

    // Total = bases + quotas + recargo - withholding.
    EXPECT_EQ(count(out(),
                    "select count(*) from FrasOut where TOTAL <> Base1 + Iva1 + RE1 + "
                    "Base2 + Iva2 + RE2 + Base3 + Iva3 + RE3 - Retencio"),
              0);
    EXPECT_EQ(count(in(),
                    "select count(*) from FrasIN where (Base1 <> 0 or Base2 <> 0 or "
                    "Base3 <> 0 or Base4 <> 0) and TOTAL <> Base1 + Iva1 + Base2 + Iva2 + "
                    "Base3 + Iva3 + Base4 + Iva4 - Retencio"),
              0);
    EXPECT_EQ(count(in(), "select count(*) from FrasIN where Exempta <> 0"), 0);
    // Taxes, wages and depreciation carry no IVA: a total alone, never nothing.
    EXPECT_GT(count(in(), "select count(*) from FrasIN where Grup in (63, 64, 68)"), 0);
    EXPECT_EQ(count(in(),
                    "select count(*) from FrasIN where Base1 = 0 and Base2 = 0 and "
                    "Base3 = 0 and Base4 = 0 and (Grup not in (63, 64, 68) or "
                    "TOTAL = 0 or Retencio <> 0)"),
              0);
    EXPECT_EQ(count(in(),
                    "select count(*) from FrasIN where Grup in (63, 64, 68) and "
                    "(Base1 <> 0 or Base2 <> 0 or Base3 <> 0 or Base4 <> 0)"),
              0);

    // Each quota is its base times the invoice's rate, rounded to the cent (ten-thousandths:
    // a rate of 21% is 210000, so base x rate / 1000000 is the quota).
    const QString off = QStringLiteral("abs(%1 * 1000000 - %2 * %3) > 100000000");
    for (int i = 1; i <= 3; ++i) {
        const QString n = QString::number(i);
        EXPECT_EQ(count(out(), "select count(*) from FrasOut where " +
                                   off.arg("Iva" + n, "Base" + n, "TIva" + n)),
                  0)
            << "Iva" << i;
        EXPECT_EQ(count(out(), "select count(*) from FrasOut where RE" + n + " <> 0 and " +
                                   off.arg("RE" + n, "Base" + n, "TRE" + n)),
                  0)
            << "RE" << i;
    }
    for (int i = 1; i <= 4; ++i) {
        const QString n = QString::number(i);
        EXPECT_EQ(count(in(), "select count(*) from FrasIN where " +
                                  off.arg("Iva" + n, "Base" + n, "TipusIva" + n)),
                  0)
            << "Iva" << i;
    }
    const QString withheld = off.arg(QStringLiteral("Retencio"), QStringLiteral("BaseIRPF"),
                                     QStringLiteral("TipusIRPF"));
    EXPECT_EQ(count(out(), "select count(*) from FrasOut where " + withheld), 0);
    EXPECT_EQ(count(in(), "select count(*) from FrasIN where " + withheld), 0);
}

TEST_F(SampleExerciseTest, WithTreasuryAboutHalfAreSettledAndTheRestAreInThePortfolio) {
    ASSERT_NO_FATAL_FAILURE(openExercise2026("Ferreteria Pons", "B1234567", true));
    const SampleSummary s = fill(500);

    EXPECT_EQ(count(out(), "select count(*) from FrasOut where Cobrada <> 0") +
                  count(in(), "select count(*) from FrasIN where Pagada <> 0"),
              s.settled);
    EXPECT_GE(s.settled, 200);
    EXPECT_LE(s.settled, 300);

    // A collected sale has its one movement and no receipt; any other sale its one receipt
    // and no movement.
    EXPECT_EQ(countAcross("select count(*) from fo.FrasOut f where f.Cobrada <> 0 and "
                          "(select count(*) from movimientos m where m.FrasOut = f.Ordre and "
                          "m.cliente = f.Client and m.data = f.data and m.D = f.TOTAL and "
                          "m.H = 0 and m.concepto = 'N/Fra. ' || f.Descripcio) <> 1"),
              0);
    EXPECT_EQ(countAcross("select count(*) from fo.FrasOut f where f.Cobrada <> 0 and exists "
                          "(select 1 from ca.cartera c where c.FrasOut = f.Ordre and "
                          "c.Ejercicio = '2026')"),
              0);
    EXPECT_EQ(countAcross("select count(*) from fo.FrasOut f where f.Cobrada = 0 and "
                          "(select count(*) from ca.cartera c where c.FrasOut = f.Ordre and "
                          "c.Ejercicio = '2026' and c.In_Out = 'Out' and c.cliente = f.Client "
                          "and c.data = f.data and c.Total = f.TOTAL and "
                          "c.Factura = f.Descripcio and c.Vencimiento > f.data) <> 1"),
              0);
    EXPECT_EQ(countAcross("select count(*) from fo.FrasOut f where f.Cobrada = 0 and exists "
                          "(select 1 from movimientos m where m.FrasOut = f.Ordre)"),
              0);

    // The same for purchases, paid (H) rather than collected.
    EXPECT_EQ(countAcross("select count(*) from fi.FrasIN f where f.Pagada <> 0 and "
                          "(select count(*) from movimientos m where m.FrasIn = f.Ordre and "
                          "m.proveedor = f.Proveidor and m.data = f.data and m.H = f.TOTAL and "
                          "m.D = 0 and m.concepto = 'S/Fra. ' || f.descripcio) <> 1"),
              0);
    EXPECT_EQ(countAcross("select count(*) from fi.FrasIN f where f.Pagada <> 0 and exists "
                          "(select 1 from ca.cartera c where c.FrasIn = f.Ordre and "
                          "c.Ejercicio = '2026')"),
              0);
    EXPECT_EQ(countAcross("select count(*) from fi.FrasIN f where f.Pagada = 0 and "
                          "(select count(*) from ca.cartera c where c.FrasIn = f.Ordre and "
                          "c.Ejercicio = '2026' and c.In_Out = 'In' and c.proveedor = "
                          "f.Proveidor and c.data = f.data and c.Total = f.TOTAL and "
                          "c.Factura = f.descripcio and c.Vencimiento > f.data) <> 1"),
              0);
    EXPECT_EQ(countAcross("select count(*) from fi.FrasIN f where f.Pagada = 0 and exists "
                          "(select 1 from movimientos m where m.FrasIn = f.Ordre)"),
              0);

    // Nothing else moved: one movement a settled invoice, one receipt an open one, through
    // accounts that exist, the cash box and the banks.
    EXPECT_EQ(countAcross("select count(*) from movimientos"), s.settled);
    EXPECT_EQ(countAcross("select count(*) from ca.cartera"), 500 - s.settled);
    EXPECT_EQ(countAcross("select count(*) from movimientos m where not exists "
                          "(select 1 from entidades e where e.Id = m.entidad)"),
              0);
    EXPECT_GT(countAcross("select count(*) from movimientos m join entidades e on "
                          "e.Id = m.entidad where e.Grup = 570"),
              0);
    EXPECT_GT(countAcross("select count(*) from movimientos m join entidades e on "
                          "e.Id = m.entidad where e.Grup = 572"),
              0);
}

TEST_F(SampleExerciseTest, ASecondSampleReusesTheMasterDataAndGoesOnNumbering) {
    ASSERT_NO_FATAL_FAILURE(openExercise2026("Ferreteria Pons", "B1234567"));
    const QString comptes = ctx.exerciseFile(db::Comptes);
    const QString accounts = QStringLiteral(
        "select (select count(*) from Ingresos) + (select count(*) from Compres) + "
        "(select count(*) from Serveis) + (select count(*) from Tributs) + "
        "(select count(*) from Personal) + (select count(*) from Amortitzacions) + "
        "(select count(*) from Inversions)");
    const SampleSummary first = fill(60);
    const std::int64_t chart = count(comptes, accounts);
    const SampleSummary second = fill(60, 2);

    EXPECT_EQ(second.customers, first.customers);
    EXPECT_EQ(second.suppliers, first.suppliers);
    EXPECT_EQ(count(gest(), "select count(*) from Clients"), first.customers);
    EXPECT_EQ(count(gest(), "select count(*) from Proveidors"), first.suppliers);
    EXPECT_EQ(count(comptes, accounts), chart);

    const int sales = first.sales + second.sales;
    EXPECT_EQ(count(out(), "select count(distinct Ordre) from FrasOut"), sales);
    EXPECT_EQ(count(out(), "select max(Ordre) from FrasOut"), sales);
    EXPECT_EQ(count(in(), "select count(distinct Ordre) from FrasIN"),
              first.purchases + second.purchases);
    // A sale is described by its number.
    EXPECT_EQ(count(out(),
                    "select count(*) from FrasOut where "
                    "Descripcio not in ('A-' || Ordre, 'A-' || Ordre || '/Abon')"),
              0);
}

TEST_F(SampleExerciseTest, NoInvoicesBillingAShopOrALockedMonthAreRefusedBeforeAnyWrite) {
    ASSERT_NO_FATAL_FAILURE(openExercise2026("Ferreteria Pons", "B1234567"));
    EXPECT_THROW(fill(0), std::invalid_argument);
    ctx.Facturacio = true;
    EXPECT_THROW(fill(10), std::invalid_argument);
    ctx.Facturacio = false;
    const QString mode = ctx.ModeExercici;
    ctx.ModeExercici = QStringLiteral("TICKETS");
    EXPECT_THROW(fill(10), std::invalid_argument);
    ctx.ModeExercici = mode;
    ctx.chkmesos[2] = 1;
    EXPECT_THROW(fill(10), std::invalid_argument) << "March is locked";
    EXPECT_EQ(count(gest(), "select count(*) from Clients"), 0);
    EXPECT_EQ(count(out(), "select count(*) from FrasOut"), 0);
}

}  // namespace
