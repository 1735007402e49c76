// The operating statement built in explota.mdb: the accounts of the families that take part,
// each month's net sales and costs by account name, the months outside the period, the
// results and their cumulated values, and the exempt part of purchases made good first.
#include "books/operating_statement.h"
#include "books_fixture.h"
#include "context/dialogs.h"
#include "context/messages.h"
#include "schema/creation.h"

#include <gtest/gtest.h>

using namespace tallora;
using namespace tallora::books;

namespace {

class OperatingStatementTest : public tallora::testing::BooksData {
protected:
    void SetUp() override {
        BooksData::SetUp();
        // A small chart of our own: one income account, two costs, one investment.
        for (const char* table : {"Ingresos", "Compres", "Serveis", "Personal", "Tributs",
                                  "Amortitzacions", "Inversions", "Otras"})
            exec(comptes(), QStringLiteral("delete from %1").arg(QLatin1String(table)));
        exec(comptes(),
             "insert into Ingresos (Grup, NomGrup, Compte, NomCompte, Tipus) values "
             "(70, 'Ventas', 1, 'Ventas tienda', 'Mercaderías')");
        exec(comptes(),
             "insert into Compres (Grup, NomGrup, Compte, NomCompte, Tipus) values "
             "(60, 'Compras', 2, 'Compras género', 'Mercaderías')");
        exec(comptes(),
             "insert into Serveis (Grup, NomGrup, Compte, NomCompte, Tipus) values "
             "(62, 'Servicios', 3, 'Alquiler local', 'Arrendamientos')");
        exec(comptes(),
             "insert into Inversions (Grup, NomGrup, Compte, NomCompte, Tipus) values "
             "(20, 'Inversiones', 4, 'Mobiliario', 'Inmovilizado')");
    }
    void sale(const char* date, const char* account, std::int64_t total, std::int64_t iva,
              std::int64_t retencio = 0) {
        exec(frasOut(), QStringLiteral("insert into FrasOut (Ordre, data, NomCompte, TOTAL, Iva1, "
                                       "Retencio) values (%1, '%2', '%3', %4, %5, %6)")
                            .arg(++ordre_)
                            .arg(QLatin1String(date), QString::fromUtf8(account))
                            .arg(total)
                            .arg(iva)
                            .arg(retencio));
    }
    void purchase(const char* date, const char* account, int grup, std::int64_t total,
                  std::int64_t base, std::int64_t iva, std::int64_t retencio = 0) {
        exec(frasIn(), QStringLiteral("insert into FrasIN (Ordre, data, Grup, NomCompte, TOTAL, "
                                      "Base1, Iva1, Retencio, Exempta) values (%1, '%2', %3, "
                                      "'%4', %5, %6, %7, %8, 999999)")
                           .arg(++ordre_)
                           .arg(QLatin1String(date))
                           .arg(grup)
                           .arg(QString::fromUtf8(account))
                           .arg(total)
                           .arg(base)
                           .arg(iva)
                           .arg(retencio));
    }
    QString explota() const { return f.exercise + schema::db::Explota; }
    // An account's months 01..12 and TOTAL, in ten-thousandths.
    QString months(const char* account) const {
        const QStringList r = rows(explota(), QStringLiteral("select \"01\", \"02\", \"03\", "
                                                             "\"04\", \"05\", \"06\", \"07\", "
                                                             "\"08\", \"09\", \"10\", \"11\", "
                                                             "\"12\", TOTAL from explota where "
                                                             "NomCompte = '%1'")
                                                  .arg(QString::fromUtf8(account)));
        return r.value(0);
    }
    bool build(int from, int to) {
        return prepareOperatingStatement(f.ctx, dialogs, {1, from, to, QDate(), {}});
    }
    ScriptedDialogs dialogs;
    int ordre_ = 0;
};

}  // namespace

TEST_F(OperatingStatementTest, MarchToJuneLeavesTheOtherMonthsEmptyAndCarriesTheCumulated) {
    sale("2026-01-15", "Ventas tienda", 1210000, 210000);  // outside the period
    sale("2026-03-10", "Ventas tienda", 1210000, 210000);
    sale("2026-05-10", "Ventas tienda", 605000, 105000);
    purchase("2026-04-02", "Compras género", 60, 242000, 200000, 42000);
    purchase("2026-08-02", "Compras género", 60, 242000, 200000, 42000);  // outside
    ASSERT_TRUE(build(3, 6));
    EXPECT_EQ(months("Ventas tienda"), "0|0|1000000|0|500000|0|0|0|0|0|0|0|1500000");
    EXPECT_EQ(months("Compras género"), "0|0|0|200000|0|0|0|0|0|0|0|0|200000");
    EXPECT_EQ(rows(explota(),
                   "select \"01\", \"02\", \"03\", \"04\", \"05\", \"06\", \"07\", "
                   "\"12\", TOTAL, AC01, AC02, AC03, AC04, AC05, AC06, AC07, AC12 "
                   "from RESULTATS"),
              QStringList{"0|0|1000000|-200000|500000|0|0|0|1300000|0|0|1000000|800000|1300000|"
                          "1300000|1300000|1300000"});
}

TEST_F(OperatingStatementTest, TheLastDayOfFebruaryOfALeapYearFallsInFebruary) {
    f.ctx.Exercici = QStringLiteral("2028");
    sale("2028-02-29", "Ventas tienda", 121000, 21000);
    sale("2028-03-01", "Ventas tienda", 242000, 42000);
    ASSERT_TRUE(build(1, 12));
    EXPECT_EQ(months("Ventas tienda"), "0|100000|200000|0|0|0|0|0|0|0|0|0|300000");
}

TEST_F(OperatingStatementTest, WithholdingRaisesASalesAmount) {
    // 100 + 21 IVA - 15 withheld = 106 collected: the sale counts 100.
    sale("2026-02-10", "Ventas tienda", 1060000, 210000, 150000);
    ASSERT_TRUE(build(1, 12));
    EXPECT_EQ(months("Ventas tienda"), "0|1000000|0|0|0|0|0|0|0|0|0|0|1000000");
}

TEST_F(OperatingStatementTest, InvestmentsAndOtherAccountsStayOut) {
    purchase("2026-02-10", "Mobiliario", 20, 1210000, 1000000, 210000);
    ASSERT_TRUE(build(1, 12));
    EXPECT_TRUE(rows(explota(), "select 1 from explota where NomCompte = 'Mobiliario'").isEmpty());
    EXPECT_EQ(rows(explota(), "select NomCompte, situacio, VoD from COMPTES order by rowid"),
              (QStringList{"Ventas tienda|A|0", "Compras género|B|1", "Alquiler local|C|1"}));
    EXPECT_EQ(rows(explota(), "select NomGrup, VoD from GransGrups order by Ordre"),
              (QStringList{Missatge(f.ctx, 6140) + "|0", Missatge(f.ctx, 6141) + "|1"}));
}

TEST_F(OperatingStatementTest, APurchaseHasItsExemptPartRewrittenBeforeItCounts) {
    purchase("2026-02-10", "Compras género", 60, 1210000, 1000000, 210000);
    ASSERT_TRUE(build(1, 12));
    EXPECT_EQ(rows(frasIn(), "select Exempta from FrasIN"), QStringList{"0"});
    EXPECT_EQ(months("Compras género"), "0|1000000|0|0|0|0|0|0|0|0|0|0|1000000");
}

TEST_F(OperatingStatementTest, InAShopEveryTicketCountsWholeBeforeWithholding) {
    f.ctx.ModeExercici = QStringLiteral("TICKETS");
    purchase("2026-02-10", "Alquiler local", 62, 850000, 0, 0, 150000);
    ASSERT_TRUE(build(1, 12));
    EXPECT_EQ(rows(frasIn(), "select Exempta from FrasIN"), QStringList{"1000000"});
    EXPECT_EQ(months("Alquiler local"), "0|1000000|0|0|0|0|0|0|0|0|0|0|1000000");
}

TEST_F(OperatingStatementTest, WithoutExpenseAccountsTheResultStaysZero) {
    exec(comptes(), "delete from Compres");
    exec(comptes(), "delete from Serveis");
    sale("2026-02-10", "Ventas tienda", 1210000, 210000);
    ASSERT_TRUE(build(1, 12));
    EXPECT_EQ(rows(explota(), "select \"02\", TOTAL, AC12 from RESULTATS"), QStringList{"0|0|0"});
}

TEST_F(OperatingStatementTest, AnAccountIsLinkedByItsNameAndACreditNoteLowersItsMonth) {
    sale("2026-02-10", "VENTAS TIENDA", 1210000, 210000);
    sale("2026-02-20", "Ventas tienda", -605000, -105000);
    sale("2026-02-21", "Cuenta borrada", 1210000, 210000);
    ASSERT_TRUE(build(1, 12));
    EXPECT_EQ(months("Ventas tienda"), "0|500000|0|0|0|0|0|0|0|0|0|0|500000");
    EXPECT_EQ(rows(explota(), "select count(*) from explota"), QStringList{"3"});
}

TEST_F(OperatingStatementTest, APeriodEndingBeforeItStartsIsRefusedAndBuildsNothing) {
    EXPECT_FALSE(build(6, 3));
    ASSERT_EQ(dialogs.shown().size(), 1u);
    EXPECT_EQ(dialogs.shown().front().text, Missatge(f.ctx, 6142));
    EXPECT_FALSE(QFile::exists(explota()));
}
