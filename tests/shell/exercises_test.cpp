#include "context/messages.h"
#include "context/month_lock.h"
#include "master/chart_template.h"
#include "schema/creation.h"
#include "schema/upgrades.h"
#include "start_fixture.h"

#include <QRegularExpression>

using namespace tallora;
using namespace tallora::shell;
using namespace tallora::testing;
using Answer = Dialogs::Answer;
using Kind = ScriptedDialogs::Shown::Kind;
namespace db = tallora::schema::db;

namespace {

class Exercises : public StartFixture {
protected:
    void SetUp() override {
        ASSERT_EQ(master::prepareTemplates(ctx), QString());
        openNewCompany();
        dialogs.clear();
    }

    QString company() const { return companyFolder("B1234567"); }
    QString ex(const QString& year) const { return exerciseFolder("B1234567", year); }
    QString lst() const { return company() + files::ExerciciLst; }

    // The accounts of the starting chart of one table, in the template's order.
    std::vector<master::ChartAccount> templateAccounts(const QString& table) const {
        std::vector<master::ChartAccount> out;
        for (const auto& a : master::readChartText(ctx.resourcesDir + "charts/chart_esp.tsv"))
            if (a.table == table) out.push_back(a);
        return out;
    }

    // Compres of an exercise: "Compte|NomCompte|Saldo" per row in the order of Compte.
    QStringList accounts(const QString& year, const QString& table) const {
        return column(ex(year) + db::Comptes,
                      QStringLiteral("select Compte || '|' || NomCompte || '|' || Saldo from %1 "
                                     "order by Compte")
                          .arg(table));
    }

    bool remove(const QString& year, std::initializer_list<Answer> answers) {
        for (Answer a : answers) dialogs.setNextAnswer(a);
        return Elimina_Exercici(ctx, dialogs, year);
    }
};

}  // namespace

TEST_F(Exercises, ARateWrittenZeroIsRefusedWith6997) {
    for (int position = 0; position < 10; ++position) {
        auto e = exercise("2026");
        QString& rate = position < 3   ? e.iva[position]
                        : position < 6 ? e.re[position - 3]
                                       : e.ivas[position - 6];
        rate = "0";
        dialogs.clear();
        EXPECT_FALSE(Graba_Exercici(ctx, dialogs, e)) << position;
        ASSERT_EQ(dialogs.shown().size(), 1u) << position;
        EXPECT_EQ(dialogs.shown()[0].kind, Kind::Stop);
        EXPECT_EQ(dialogs.lastText(), Missatge(ctx, 6997));
    }
    EXPECT_FALSE(QFileInfo::exists(ex("2026")));
    EXPECT_FALSE(QFileInfo::exists(company() + "2026.DAT"));
    EXPECT_TRUE(ctx.Exercici.isEmpty());
}

TEST_F(Exercises, ARateOfZeroWithDecimalsIsAccepted) {
    auto e = exercise("2026");
    e.iva[2] = "0,00";
    e.ivas[3] = "0,0";
    EXPECT_TRUE(createExercise(e));
    EXPECT_TRUE(QFileInfo::exists(company() + "2026.DAT"));
}

TEST_F(Exercises, AYearAlreadyListedIsRefusedWith128AndABeep) {
    ASSERT_TRUE(createExercise("2026"));
    dialogs.clear();
    EXPECT_FALSE(Graba_Exercici(ctx, dialogs, exercise("2026")));
    EXPECT_EQ(dialogs.beeps(), 1);
    ASSERT_EQ(dialogs.shown().size(), 1u);
    EXPECT_EQ(dialogs.shown()[0].kind, Kind::Stop);
    EXPECT_EQ(dialogs.lastText(), Missatge(ctx, 128));
    EXPECT_EQ(exerciseRows(ctx), QStringList{"2026"});
}

TEST_F(Exercises, TheConfirmationAnsweredNoCreatesNothing) {
    auto e = exercise("2026");
    e.botiga = true;
    dialogs.setNextAnswer(Answer::No);
    EXPECT_FALSE(Graba_Exercici(ctx, dialogs, e));
    ASSERT_EQ(dialogs.shown().size(), 1u);
    const QString text = dialogs.shown()[0].text;
    EXPECT_TRUE(text.startsWith(Missatge(ctx, 129)));
    EXPECT_TRUE(text.endsWith(Missatge(ctx, 37)));
    for (const QString part : {"2026", "Euros", "TICKETS", "16", "0,5", "4,5"})
        EXPECT_TRUE(text.contains(part)) << part.toStdString();
    EXPECT_FALSE(QFileInfo::exists(ex("2026")));
    EXPECT_FALSE(QFileInfo::exists(company() + "2026.DAT"));
    EXPECT_FALSE(QFileInfo::exists(lst()));
    EXPECT_TRUE(ctx.Exercici.isEmpty());
}

TEST_F(Exercises, TheBookWordShownForInvoicesIsFacturas) {
    dialogs.setNextAnswer(Answer::No);
    EXPECT_FALSE(Graba_Exercici(ctx, dialogs, exercise("2026")));
    EXPECT_TRUE(dialogs.lastText().contains("FACTURAS"));
    EXPECT_FALSE(dialogs.lastText().contains("TICKETS"));
}

TEST_F(Exercises, TheFirstExerciseGetsTheSeededChartOfTheTemplate) {
    ASSERT_TRUE(createExercise("2026"));
    EXPECT_EQ(ctx.Exercici, "2026");
    for (const QString& table : schema::accountTables()) {
        const auto expected = templateAccounts(table);
        ASSERT_FALSE(expected.empty()) << table.toStdString();
        auto db = store::Database::open(ex("2026") + db::Comptes);
        auto st =
            db.prepare(QStringLiteral("select Compte, Grup, NomGrup, NomCompte, Tipus, Saldo, "
                                      "Debe, Haber from %1 order by Compte")
                           .arg(table));
        std::size_t n = 0;
        while (st.next()) {
            ASSERT_LT(n, expected.size()) << table.toStdString();
            EXPECT_EQ(st.int64(0), static_cast<std::int64_t>(n + 1));
            EXPECT_EQ(st.int64(1), expected[n].grup);
            EXPECT_EQ(st.text(2), expected[n].nomGrup);
            EXPECT_EQ(st.text(3), expected[n].nomCompte);
            EXPECT_EQ(st.text(4), expected[n].tipus);
            EXPECT_EQ(st.int64(5), 0);
            EXPECT_EQ(st.int64(6), 0);
            EXPECT_EQ(st.int64(7), 0);
            ++n;
        }
        EXPECT_EQ(n, expected.size()) << table.toStdString();
    }
    EXPECT_EQ(scalar(ex("2026") + db::Gest, "select count(*) from Clients"), 0);
    EXPECT_EQ(scalar(ex("2026") + db::Gest, "select count(*) from Proveidors"), 0);
    EXPECT_EQ(scalar(ex("2026") + db::FrasIn, "select count(*) from FrasIN"), 0);
    EXPECT_EQ(scalar(ex("2026") + db::FrasOut, "select count(*) from FrasOut"), 0);
    // The treasury database of a first exercise comes from the upgrades, not from the seed.
    EXPECT_FALSE(QFileInfo::exists(ex("2026") + db::Tesorer));
}

TEST_F(Exercises, TheFirstExerciseZeroesTheBalancesOfALeftOverFolder) {
    const QString comptes = ex("2026") + db::Comptes;
    QDir().mkpath(ex("2026"));
    schema::createTables(comptes, db::Comptes, schema::accountTables());
    run(comptes, "insert into Compres (Grup, NomCompte, Saldo) values (60, 'Resta', 990000)");
    ASSERT_TRUE(createExercise("2026"));
    EXPECT_EQ(scalar(comptes, "select Saldo from Compres where NomCompte = 'Resta'"), 0);
    EXPECT_EQ(scalar(comptes, "select count(*) from Compres"),
              static_cast<std::int64_t>(templateAccounts("Compres").size() + 1));
}

TEST_F(Exercises, TheParametersFileIsThreeLinesInTheExactFormat) {
    NewExercise e = exercise("2026");
    e.iva = {"21", "10", "4"};
    e.re = {"5,2", "1,4", "0,5"};
    e.ivas = {"21", "10", "4", "0,00"};
    ASSERT_TRUE(createExercise(e));
    const QString dat = company() + "2026.DAT";
    EXPECT_EQ(readTextFile(dat).value_or(""),
              "\"2026\",\"Euros\",1,\"21\",\"10\",\"4\"\r\n"
              "\"5,2\",\"1,4\",\"0,5\",\"FACTURES\"\r\n"
              "\"21\",\"10\",\"4\",\"0,00\"\r\n");
    const auto lines = linesOf(dat);
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(textsOf(lines[0]), (QStringList{"2026", "Euros", "1", "21", "10", "4"}));
    EXPECT_EQ(lines[0][2].kind, NotationItem::Kind::Bare);
    for (int i : {0, 1, 3, 4, 5}) EXPECT_EQ(lines[0][i].kind, NotationItem::Kind::Quoted) << i;
    EXPECT_EQ(textsOf(lines[1]), (QStringList{"5,2", "1,4", "0,5", "FACTURES"}));
    EXPECT_EQ(textsOf(lines[2]), (QStringList{"21", "10", "4", "0,00"}));
    for (const auto& item : lines[2]) EXPECT_EQ(item.kind, NotationItem::Kind::Quoted);
}

TEST_F(Exercises, AShopExerciseWritesZeroAndTickets) {
    auto e = exercise("2026");
    e.botiga = true;
    ASSERT_TRUE(createExercise(e));
    const auto lines = linesOf(company() + "2026.DAT");
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[0][2].text, "0");
    EXPECT_EQ(lines[1].back().text, "TICKETS");
}

TEST_F(Exercises, TheListGetsYearAndCurrencyPerExercise) {
    ASSERT_TRUE(createExercise("2025"));
    ASSERT_TRUE(createExercise("2026"));
    EXPECT_EQ(readTextFile(lst()).value_or(""), "\"2025\",\"Euros\"\r\n\"2026\",\"Euros\"\r\n");
    EXPECT_EQ(exerciseRows(ctx), (QStringList{"2025", "2026"}));
    EXPECT_EQ(currencies(), QStringList{"Euros"});
}

TEST(NewExerciseDefaults, AreTheRatesOfTheFrameAndTheYearOfToday) {
    const NewExercise e = defaultNewExercise(QDate(2027, 6, 30));
    EXPECT_EQ(e.exercici, "2027");
    EXPECT_EQ(e.moneda, "Euros");
    EXPECT_FALSE(e.botiga);
    EXPECT_EQ(e.iva, (std::array<QString, 3>{"16", "7", "4"}));
    EXPECT_EQ(e.re, (std::array<QString, 3>{"4", "1", "0,5"}));
    EXPECT_EQ(e.ivas, (std::array<QString, 4>{"16", "7", "4", "4,5"}));
}

TEST_F(Exercises, TheYearBeforeIsCarriedOver) {
    ASSERT_TRUE(createExercise("2025"));
    ASSERT_TRUE(openExercise("2025"));
    const QString old = ex("2025");
    run(old + db::Gest,
        "insert into Clients (nom, saldo) values ('Client u', 1000000), ('Client dos', 20000)");
    run(old + db::Gest, "insert into Proveidors (nom, saldo) values ('Proveidor u', 500000)");
    run(old + db::Comptes, "update Compres set Saldo = 1234500 where Compte = 1");
    run(old + db::Comptes, "update Serveis set Saldo = 10000");
    run(old + db::Comptes, "update Otras set Saldo = 555000 where Grup = 170");
    schema::prepareStatementTable(ctx);
    const QString tesorer = old + db::Tesorer;
    run(tesorer, "update entidades set Saldo = 770000");
    run(tesorer, "insert into entidades (Grup, entidad, Saldo) values (572, 'Banc', 90000)");
    run(tesorer, "insert into movimientos (data, entidad, D) values ('2025-01-02', 1, 100000)");
    run(tesorer,
        "insert into otros_movimientos (data, asiento, Importe) values ('2025-01-03', 1, 5000)");
    run(tesorer, "insert into mayor (data, cuenta) values ('2025-01-04', 1)");
    run(tesorer,
        "insert into movimientos_extracto (Id, data, entidad) values (1, '2025-01-05', 1)");
    run(old + db::FrasOut,
        "insert into FrasOut (Ordre, data, Client, NomClient, TOTAL) values (1, '2025-02-01', 1, "
        "'Client u', 10000)");
    const QString cartera = company() + db::Cartera;
    run(cartera,
        "insert into cartera (data, cliente, In_Out, Ejercicio, Total, Pendiente) values "
        "('2025-03-01', 1, 'Out', '2025', 300000, 100000), ('2025-03-02', 1, 'Out', '2025', 50000, "
        "0)");
    run(cartera,
        "insert into cartera (data, proveedor, In_Out, Ejercicio, Total, Pendiente) values "
        "('2025-03-03', 1, 'In', '2025', 400000, 150000)");
    const QStringList oldCompres =
        column(old + db::Comptes, "select NomCompte from Compres order by Compte");

    restoreCompanyFolder(ctx);
    ASSERT_EQ(ctx.Directori, company());
    ASSERT_TRUE(createExercise("2026"));
    const QString now = ex("2026");

    // Customers and suppliers pass, their balances recalculated from the portfolio.
    EXPECT_EQ(column(now + db::Gest, "select nom || '|' || saldo from Clients order by client"),
              (QStringList{"Client u|1250000", "Client dos|20000"}));
    EXPECT_EQ(column(now + db::Gest, "select nom || '|' || saldo from Proveidors"),
              QStringList{"Proveidor u|750000"});
    // The chart passes with its balances zeroed; Otras keeps its balance.
    EXPECT_EQ(column(now + db::Comptes, "select NomCompte from Compres order by Compte"),
              oldCompres);
    for (const QString& table : schema::accountTables())
        EXPECT_EQ(scalar(now + db::Comptes, "select count(*) from " + table + " where Saldo <> 0"),
                  0)
            << table.toStdString();
    EXPECT_EQ(scalar(now + db::Comptes, "select Saldo from Otras where Grup = 170"), 555000);
    EXPECT_EQ(scalar(now + db::Comptes, "select count(*) from Otras"), 3);
    // Treasury accounts pass with a zero balance and no movements.
    EXPECT_EQ(
        column(now + db::Tesorer, "select entidad || '|' || Saldo from entidades order by Id"),
        (QStringList{Missatge(ctx, 6646) + "|0", "Banc|0"}));
    for (const char* table : {"movimientos", "otros_movimientos", "mayor", "movimientos_extracto"})
        EXPECT_EQ(scalar(now + db::Tesorer, QStringLiteral("select count(*) from %1").arg(table)),
                  0)
            << table;
    // Invoices do not pass; the year before is left as it was.
    EXPECT_EQ(scalar(now + db::FrasOut, "select count(*) from FrasOut"), 0);
    EXPECT_EQ(scalar(tesorer, "select count(*) from movimientos"), 1);
    EXPECT_EQ(scalar(old + db::Comptes, "select Saldo from Compres where Compte = 1"), 1234500);
    EXPECT_EQ(scalar(old + db::Gest, "select saldo from Clients where client = 1"), 1000000);
}

TEST_F(Exercises, WithoutAPortfolioCustomersPassAsTheyAre) {
    ASSERT_TRUE(createExercise("2025"));
    run(ex("2025") + db::Gest, "insert into Clients (nom) values ('Client u')");
    run(ex("2025") + db::Gest, "insert into Proveidors (nom) values ('Proveidor u')");
    ASSERT_TRUE(createExercise("2026"));
    EXPECT_EQ(column(ex("2026") + db::Gest, "select nom from Clients"), QStringList{"Client u"});
    EXPECT_EQ(column(ex("2026") + db::Gest, "select nom from Proveidors"),
              QStringList{"Proveidor u"});
    EXPECT_FALSE(QFileInfo::exists(ex("2026") + db::Tesorer));
    EXPECT_FALSE(QFileInfo::exists(company() + db::Cartera));
}

TEST_F(Exercises, AGapYearCarriesNothingAndKeepsTheSeed) {
    ASSERT_TRUE(createExercise("2005"));
    run(ex("2005") + db::Gest, "insert into Clients (nom) values ('Client u')");
    run(ex("2005") + db::Comptes, "insert into Compres (Grup, NomCompte) values (60, 'Nova 2005')");
    // A folder left over by an earlier run: its balance shows whether the zeroing ran.
    const QString comptes = ex("2007") + db::Comptes;
    QDir().mkpath(ex("2007"));
    schema::createTables(comptes, db::Comptes, schema::accountTables());
    run(comptes, "insert into Compres (Grup, NomCompte, Saldo) values (60, 'Resta', 990000)");

    ASSERT_TRUE(createExercise("2007"));
    EXPECT_EQ(scalar(ex("2007") + db::Gest, "select count(*) from Clients"), 0);
    EXPECT_EQ(scalar(comptes, "select count(*) from Compres where NomCompte = 'Nova 2005'"), 0);
    EXPECT_EQ(scalar(comptes, "select Saldo from Compres where NomCompte = 'Resta'"), 990000);
    QStringList seeded;
    for (const auto& a : templateAccounts("Serveis")) seeded << a.nomCompte;
    EXPECT_EQ(column(comptes, "select NomCompte from Serveis order by Compte"), seeded);
    EXPECT_EQ(exerciseRows(ctx), (QStringList{"2005", "2007"}));
    EXPECT_TRUE(QFileInfo::exists(company() + "2007.DAT"));
}

TEST_F(Exercises, RemovingAnEmptyExerciseAsksOnce) {
    ASSERT_TRUE(createExercise("2025"));
    ASSERT_TRUE(createExercise("2026"));
    const QString before = readTextFile(lst()).value_or("");
    dialogs.clear();
    EXPECT_TRUE(remove("2025", {Answer::Yes}));
    ASSERT_EQ(dialogs.shown().size(), 1u);
    EXPECT_EQ(dialogs.shown()[0].text, Missatge(ctx, 127) + Missatge(ctx, 25));
    EXPECT_FALSE(QFileInfo::exists(ex("2025")));
    EXPECT_FALSE(QFileInfo::exists(company() + "2025.DAT"));
    EXPECT_TRUE(QFileInfo::exists(ex("2026")));
    EXPECT_EQ(readTextFile(lst()).value_or(""), "\"2026\",\"Euros\"\r\n");
    EXPECT_EQ(readTextFile(company() + files::ExerciciCop).value_or("<missing>"), before);
}

TEST_F(Exercises, RemovingAnExerciseWithACustomerAsksTwiceAndNoAtEitherStops) {
    ASSERT_TRUE(createExercise("2026"));
    run(ex("2026") + db::Gest, "insert into Clients (nom) values ('Client u')");
    dialogs.clear();
    EXPECT_FALSE(remove("2026", {Answer::No}));
    ASSERT_EQ(dialogs.shown().size(), 1u);
    EXPECT_EQ(dialogs.shown()[0].text, Missatge(ctx, 126) + Missatge(ctx, 26) + Missatge(ctx, 25));
    EXPECT_TRUE(QFileInfo::exists(ex("2026") + db::Gest));

    dialogs.clear();
    EXPECT_FALSE(remove("2026", {Answer::Yes, Answer::No}));
    EXPECT_EQ(dialogs.shown().size(), 2u);
    EXPECT_TRUE(QFileInfo::exists(ex("2026") + db::Gest));
    EXPECT_EQ(exerciseRows(ctx), QStringList{"2026"});

    dialogs.clear();
    EXPECT_TRUE(remove("2026", {Answer::Yes, Answer::Yes}));
    EXPECT_EQ(dialogs.shown().size(), 2u);
    EXPECT_FALSE(QFileInfo::exists(ex("2026")));
}

TEST_F(Exercises, AnyPostedRowMakesTheExerciseNotEmpty) {
    ASSERT_TRUE(createExercise("2025"));
    ASSERT_TRUE(createExercise("2026"));
    ASSERT_TRUE(createExercise("2027"));
    run(ex("2025") + db::Gest, "insert into Proveidors (nom) values ('Proveidor u')");
    run(ex("2026") + db::FrasIn,
        "insert into FrasIN (Ordre, data, Proveidor, NomProveidor) values (1, '2026-01-01', 1, "
        "'P')");
    run(ex("2027") + db::FrasOut,
        "insert into FrasOut (Ordre, data, Client, NomClient) values (1, '2027-01-01', 1, 'C')");
    for (const QString year : {"2025", "2026", "2027"}) {
        dialogs.clear();
        EXPECT_FALSE(remove(year, {Answer::No})) << year.toStdString();
        EXPECT_TRUE(dialogs.lastText().startsWith(Missatge(ctx, 126))) << year.toStdString();
    }
}

TEST_F(Exercises, RemovingTheLastExerciseLeavesAnEmptyListAndTheCompanyRemovable) {
    ASSERT_TRUE(createExercise("2026"));
    EXPECT_TRUE(remove("2026", {Answer::Yes}));
    EXPECT_TRUE(QFileInfo::exists(lst()));
    EXPECT_EQ(readTextFile(lst()).value_or("<missing>"), QString());
    EXPECT_TRUE(exerciseRows(ctx).isEmpty());
    dialogs.setNextAnswer(Answer::Yes);
    EXPECT_TRUE(Elimina_Empresa(ctx, dialogs, unit, OMPLE_LLISTA_Empreses(unit).value(0)));
    EXPECT_FALSE(QFileInfo::exists(company()));
    EXPECT_TRUE(OMPLE_LLISTA_Empreses(unit).isEmpty());
}

TEST_F(Exercises, RemovalWithoutARowOrKeyDoesNothing) {
    EXPECT_FALSE(Elimina_Exercici(ctx, dialogs, QString()));
    EXPECT_FALSE(Treu_Exercici_de_Llista(ctx, dialogs, QString()));
    EXPECT_TRUE(dialogs.shown().empty());
    EXPECT_FALSE(QFileInfo::exists(company() + files::ExerciciCop));
}

TEST_F(Exercises, OpeningAnExerciseSetsTheContextAndRunsItsSteps) {
    auto e = exercise("2026");
    e.iva = {"21", "10", "4"};
    e.re = {"5,2", "1,4", "0,5"};
    e.ivas = {"21", "10", "4", "0,00"};
    e.botiga = true;
    ASSERT_TRUE(createExercise(e));
    std::array<int, 12> lock{};
    lock[2] = lock[6] = 1;
    ASSERT_TRUE(writeMonthLock(ex("2026") + "2026blocks.DAT", lock));
    ctx.Exercici.clear();
    ctx.chkmesos.fill(1);

    EXPECT_TRUE(openExercise("2026"));
    EXPECT_EQ(ctx.Directori, ex("2026"));
    EXPECT_EQ(ctx.Exercici, "2026");
    EXPECT_EQ(ctx.Moneda, "Euros");
    EXPECT_EQ(ctx.ModeExercici, "TICKETS");
    EXPECT_EQ(ctx.TipusIVA, (std::array<double, 3>{21, 10, 4}));
    EXPECT_EQ(ctx.TipusRE, (std::array<double, 3>{5.2, 1.4, 0.5}));
    EXPECT_EQ(ctx.TipusIVAs, (std::array<double, 4>{21, 10, 4, 0}));
    EXPECT_EQ(ctx.TipusREText, (std::array<QString, 3>{"5.2", "1.4", "0.5"}));
    EXPECT_EQ(ctx.TipusIVAsText[3], "0");
    EXPECT_EQ(ctx.chkmesos, lock);
    // The safety copy, then the upgrades.
    EXPECT_TRUE(QFileInfo::exists(company() + "bkp/copia_v4/2026/" + db::Gest));
    EXPECT_TRUE(QFileInfo::exists(ex("2026") + db::Supl));
    EXPECT_TRUE(QFileInfo::exists(ex("2026") + db::Tesorer));
    EXPECT_EQ(dialogs.shown().size(), 1u);  // only the confirmation of the creation
}

TEST_F(Exercises, ARateThatIsNotANumberCountsZero) {
    ASSERT_TRUE(createExercise("2026"));
    ExerciseParams p = *readExerciseParams(company() + "2026.DAT");
    p.iva[1] = "x";
    p.ivas[0] = "";
    ASSERT_TRUE(writeExerciseParams(company() + "2026.DAT", p));
    EXPECT_TRUE(openExercise("2026"));
    EXPECT_EQ(ctx.TipusIVA, (std::array<double, 3>{16, 0, 4}));
    EXPECT_EQ(ctx.TipusIVAText[1], "0");
    EXPECT_EQ(ctx.TipusIVAs, (std::array<double, 4>{0, 7, 4, 4.5}));
    EXPECT_EQ(ctx.ModeExercici, "FACTURES");
}

TEST_F(Exercises, WithoutItsParametersFileTheYearComesFromTheRow) {
    ASSERT_TRUE(createExercise("2026"));
    ASSERT_TRUE(QFile::remove(company() + "2026.DAT"));
    ctx.TipusIVA = {21, 10, 4};
    ctx.Moneda = "Ptes.";
    EXPECT_TRUE(openExercise("2026"));
    EXPECT_EQ(ctx.Exercici, "2026");
    EXPECT_EQ(ctx.Directori, ex("2026"));
    EXPECT_EQ(ctx.Moneda, QString());
    EXPECT_EQ(ctx.TipusIVA, (std::array<double, 3>{0, 0, 0}));
}

TEST_F(Exercises, OpeningWithoutARowBeeps) {
    const QString before = ctx.Directori;
    EXPECT_FALSE(Obre_Exercici(ctx, dialogs, QString()));
    EXPECT_EQ(dialogs.beeps(), 1);
    EXPECT_EQ(ctx.Directori, before);
}

TEST_F(Exercises, GoingBackRestoresTheCompanyFolder) {
    ASSERT_TRUE(createExercise("2026"));
    ASSERT_TRUE(openExercise("2026"));
    ASSERT_EQ(ctx.Directori, ex("2026"));
    restoreCompanyFolder(ctx);
    EXPECT_EQ(ctx.Directori, company());
    restoreCompanyFolder(ctx);
    EXPECT_EQ(ctx.Directori, company());
    // And the next exercise is made beside the first, not inside it.
    ASSERT_TRUE(createExercise("2027"));
    EXPECT_TRUE(QFileInfo::exists(ex("2027") + db::Gest));
}

TEST_F(Exercises, AListWrittenInAnotherSpellingIsReadAndAppendedTo) {
    writeRaw(company() + "Exercici.LST", "\"2025\",\"Euros\"\r\n");
    EXPECT_EQ(exerciseRows(ctx), QStringList{"2025"});
    ASSERT_TRUE(createExercise("2026"));
    EXPECT_EQ(exerciseRows(ctx), (QStringList{"2025", "2026"}));
    EXPECT_EQ(QDir(company()).entryList({"*.lst"}, QDir::Files), QStringList{"Exercici.LST"});
    dialogs.setNextAnswer(Answer::Yes);
    EXPECT_TRUE(Elimina_Exercici(ctx, dialogs, "2025"));
    EXPECT_EQ(exerciseRows(ctx), QStringList{"2026"});
    EXPECT_EQ(QDir(company()).entryList({"*.lst"}, QDir::Files), QStringList{"Exercici.LST"});
}

TEST_F(Exercises, ANewExerciseHasNoMonthLocked) {
    ASSERT_TRUE(createExercise("2026"));
    ctx.chkmesos.fill(1);
    ASSERT_TRUE(openExercise("2026"));
    EXPECT_EQ(ctx.chkmesos, (std::array<int, 12>{}));
    EXPECT_EQ(Mes_Per_Defecte(ctx), std::nullopt);
}

TEST_F(Exercises, OnlyAYearOfFourDigitsIsCreatedAndNothingIsMadeForAnother) {
    for (const QString year : {"", "20", "20265", "2o26", " 2026"}) {
        dialogs.clear();
        EXPECT_FALSE(Graba_Exercici(ctx, dialogs, exercise(year))) << year.toStdString();
        EXPECT_EQ(dialogs.beeps(), 1);
        ASSERT_EQ(dialogs.shown().size(), 1u) << "refused before the confirmation";
        EXPECT_EQ(dialogs.shown()[0].kind, Kind::Stop);
        EXPECT_EQ(dialogs.lastText(),
                  Missatge(ctx, 114) + u' ' + Missatge(ctx, 655) + QStringLiteral(": ") + year);
    }
    // No database, no parameters file, no list line, no folder but the company's own.
    EXPECT_EQ(QDir(company()).entryList(QDir::Dirs | QDir::NoDotAndDotDot), QStringList{});
    EXPECT_TRUE(QDir(company())
                    .entryList({"*.DAT"}, QDir::Files)
                    .filter(QRegularExpression("^[0-9]"))
                    .isEmpty());
    EXPECT_FALSE(QFileInfo::exists(lst()));
    EXPECT_TRUE(exerciseRows(ctx).isEmpty());
    EXPECT_TRUE(ctx.Exercici.isEmpty());
    EXPECT_TRUE(isExerciseYear("2026"));
    EXPECT_FALSE(isExerciseYear("٢٠٢٦"));  // digits of another script name no folder here
}

TEST_F(Exercises, ANewExerciseStartsOnItsOwnLineAfterALineWithoutItsEnd) {
    // A list edited by hand, its last line without a line end.
    writeRaw(lst(), "\"2025\",\"Euros\"");
    ASSERT_TRUE(createExercise("2026"));
    EXPECT_EQ(exerciseRows(ctx), (QStringList{"2025", "2026"}));
    EXPECT_EQ(readTextFile(lst()).value(),
              QStringLiteral("\"2025\",\"Euros\"\r\n\"2026\",\"Euros\"\r\n"));
}

TEST_F(Exercises, AListThatCannotBeWrittenShowsWhyAndWhere) {
    // A folder where the list should be: the safe write cannot replace it.
    QDir().mkpath(lst());
    EXPECT_FALSE(createExercise("2026"));
    const auto& shown = dialogs.shown();
    ASSERT_FALSE(shown.empty());
    EXPECT_EQ(shown.back().kind, Kind::Stop);
    EXPECT_TRUE(shown.back().text.endsWith(QStringLiteral(": ") + lst()))
        << shown.back().text.toStdString();
    const QString why = shown.back().text.chopped(lst().size() + 2);
    EXPECT_FALSE(why.isEmpty());
    EXPECT_FALSE(why.contains(QStringLiteral("Unknown error"), Qt::CaseInsensitive))
        << why.toStdString();
}
