// post-sale and change-sale of tallora5-cli on an opened exercise: the rows written column by
// column, the journal printed, the program's refusals and questions, and the money rows of
// a change.
#include "../table_rows.h"
#include "cli_fixture.h"
#include "context/list_files.h"
#include "shell/settings_files.h"
#include "store/database.h"

#include <QDate>
#include <QDateTime>
#include <QFileInfo>

#include <map>
#include <utility>

using namespace tallora;
using tallora::clitest::Result;

namespace {

const QString K = QStringLiteral("B1234567");
const QString Y = QStringLiteral("2025");
// The first account of the Spanish chart's sales family.
const QString Ventas = QStringLiteral("700 Ventas de mercaderías");

class cliSales : public clitest::CliFixture {
protected:
    // A company with its exercise 2025 at 21 / 10 / 4 with recargo 5,2 / 1,4 / 0,5, opened
    // once; customer 1 without recargo, customer 2 with it, and with treasury the bank 2
    // beside the cash account 1.
    void open(bool treasury, const QStringList& exercise = {}) {
        createCompany("Fusteria Pons", "B12345678", treasury);
        createExercise(K, Y,
                       QStringList{"--iva1", "21", "--iva2", "10", "--iva3", "4", "--re1", "5,2",
                                   "--re2", "1,4", "--re3", "0,5"} +
                           exercise);
        Result r = run({"exercise-open", K, Y});
        ASSERT_EQ(r.code, 0) << r;
        r = on("customer-add", {"--name", "Ferreteria Puig"});
        ASSERT_EQ(r.out, msg(314) + "1\n1\n") << r;
        r = on("customer-add", {"--name", "Colmado Ruiz", "--re", "yes"});
        ASSERT_EQ(r.out, msg(314) + "1\n2\n") << r;
        if (!treasury) return;
        r = on("treasury-account-add", {"--name", "Banco Sabadell", "--kind", "bank"});
        ASSERT_EQ(r.out, msg(314) + "1\n2\n") << r;
    }

    Result on(const QString& command, const QStringList& rest = {}) {
        return run(QStringList{command, K, Y} + rest);
    }
    // A sale of customer 1 on 15/03 to the first sales account, with the rest given.
    Result sale(const QStringList& rest, const QString& customer = "Ferreteria Puig") {
        return on("post-sale", QStringList{"--day", "15", "--month", "3", "--customer", customer,
                                           "--account", Ventas} +
                                   rest);
    }

    QString file(const QString& name) const { return company(K) + Y + u'/' + name; }
    QString frasOut() const { return file("FrasOUT.mdb"); }
    QString tesorer() const { return file("tesorer.mdb"); }
    QString cartera() const { return company(K) + "cartera.mdb"; }

    static void exec(const QString& path, const QString& sql) {
        store::Database::open(path).execute(sql);
    }
    static QStringList rows(const QString& path, const QString& sql) {
        return tallora::testing::tableRows(path, sql);
    }
    QStringList sales(const QString& columns) const {
        return rows(frasOut(), "select " + columns + " from FrasOut order by Ordre");
    }
    QStringList movements() const {
        return rows(tesorer(),
                    "select data, entidad, cliente, FrasOut, concepto, D, H "
                    "from movimientos order by Id");
    }
    QStringList receipts() const {
        return rows(cartera(),
                    "select data, cliente, In_Out, Ejercicio, Factura, Total, "
                    "Pendiente, FrasOut, Vencimiento from cartera order by Id");
    }

    // Every file of the unit with its size and time, to see that nothing was touched.
    std::map<QString, std::pair<qint64, QDateTime>> snapshot() const {
        std::map<QString, std::pair<qint64, QDateTime>> files;
        for (const QString& name : filesUnder(unit.path())) {
            const QFileInfo info(unit.path() + u'/' + name);
            files[name] = {info.size(), info.lastModified()};
        }
        return files;
    }

    // The journal of a posting that was saved: the lines between the title and the end.
    QString journal(int title, const QStringList& body, int number) const {
        const QStringList end{"MODIFICAR " + QString::number(number), "", msg(654),
                              QString(40, QChar(0x00B7)), ""};
        return (QStringList{msg(title)} + body + end).join(u'\n') + u'\n';
    }
    static QString today() { return QDate::currentDate().toString("yyyy-MM-dd"); }
};

// ---- help and the command line ------------------------------------------------------------

TEST_F(cliSales, HelpDocumentsBothCommandsAndTheirOptions) {
    const Result r = runRaw({"--help"});
    ASSERT_EQ(r.code, 0) << r;
    for (const char* word : {"post-sale",
                             "change-sale",
                             "--day",
                             "--month",
                             "--customer",
                             "--account",
                             "--description",
                             "--series",
                             "/Abon|/Rect",
                             "--total",
                             "--rate",
                             "otros",
                             "--irpf-base",
                             "--irpf-percent",
                             "--irpf-amount",
                             "--base1",
                             "--base3",
                             "--iva1",
                             "--re3",
                             "--treasury-account",
                             "--due",
                             "--classification",
                             "intra|canarias",
                             "--concept1",
                             "--concept5",
                             "--pending",
                             "tallora5-cli --unit /srv/llibres post-sale",
                             "tallora5-cli --unit /srv/llibres change-sale"})
        EXPECT_TRUE(r.out.contains(QString::fromLatin1(word))) << word;
}

TEST_F(cliSales, UsageErrorsExitTwoAndWriteNothing) {
    ASSERT_NO_FATAL_FAILURE(open(true));
    ASSERT_EQ(sale({"--total", "121"}).code, 0);
    const auto before = snapshot();
    const QStringList cases[] = {
        {"post-sale", K},
        {"post-sale", K, Y, "1"},
        {"post-sale", K, Y, "--day", "1a"},
        {"post-sale", K, Y, "--day", "123"},
        {"post-sale", K, Y, "--month", "-3"},
        {"post-sale", K, Y, "--total", "1.234,50"},
        {"post-sale", K, Y, "--total", "12,"},
        {"post-sale", K, Y, "--base2", "abc"},
        {"post-sale", K, Y, "--iva1", "1e3"},
        {"post-sale", K, Y, "--re3", "--"},
        {"post-sale", K, Y, "--irpf-amount", "x"},
        {"post-sale", K, Y, "--irpf-percent", "-15"},
        {"post-sale", K, Y, "--rate", "Otros"},
        {"post-sale", K, Y, "--rate", "21%"},
        {"post-sale", K, Y, "--series", "/Fra"},
        {"post-sale", K, Y, "--due", "31/02/2025"},
        {"post-sale", K, Y, "--due", "2025-04-30"},
        {"post-sale", K, Y, "--classification", "canaries"},
        {"post-sale", K, Y, "--pending"},
        {"post-sale", K, Y, "--treasury", "Banco Sabadell"},
        {"post-sale", K, Y, "--name", "x"},
        {"change-sale", K, Y},
        {"change-sale", K, Y, "uno"},
        {"change-sale", K, Y, "1", "--rate", "21"},
        {"change-sale", K, Y, "1", "--pending", "--treasury-account", "Banco Sabadell"},
    };
    for (const QStringList& args : cases) {
        const Result r = run(QStringList{"--yes"} + args);
        EXPECT_EQ(r.code, 2) << args.join(' ').toStdString() << "\n" << r;
        EXPECT_TRUE(r.out.isEmpty()) << r;
        EXPECT_TRUE(r.err.startsWith("tallora5-cli: ")) << r;
    }
    EXPECT_EQ(snapshot(), before);
}

// ---- a new sale ---------------------------------------------------------------------------

TEST_F(cliSales, TheTotalIsSplitByTheFirstRateAndTheJournalPrinted) {
    ASSERT_NO_FATAL_FAILURE(open(true));
    const Result r = sale({"--total", "121,00"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_TRUE(r.err.isEmpty()) << r;
    EXPECT_EQ(r.out, journal(649,
                             {msg(650) + "15/03/2025", "Ferreteria Puig", Ventas, "Descrip.: 1",
                              "(Factura)", msg(6676), "BASE: 21 % 100,00", "IVA: 21,00", "",
                              "TOTAL: 121,00"},
                             1));
    EXPECT_EQ(sales("Ordre, Descripcio, TOTAL, Base1, Iva1, RE1, Base2, Base3, Cobrada"),
              QStringList{"1|1|1210000|1000000|210000|0|0|0|0"});
}

TEST_F(cliSales, EveryColumnOfTheSaleAndItsMovement) {
    ASSERT_NO_FATAL_FAILURE(open(true));
    ASSERT_TRUE(writeOptionFlag(company(K) + files::IntraCfg, true));
    // Names are taken from the lists without regard to case.
    const Result r = on("post-sale", {"--day",
                                      "15",
                                      "--month",
                                      "3",
                                      "--customer",
                                      "colmado ruiz",
                                      "--account",
                                      Ventas.toUpper(),
                                      "--description",
                                      "F-7",
                                      "--series",
                                      "/Abon",
                                      "--total",
                                      "121",
                                      "--irpf-base",
                                      "100",
                                      "--irpf-percent",
                                      "15",
                                      "--treasury-account",
                                      "banco sabadell",
                                      "--classification",
                                      "canarias",
                                      "--concept1",
                                      "Uno",
                                      "--concept2",
                                      "Dos",
                                      "--concept5",
                                      "Cinco"});
    ASSERT_EQ(r.code, 0) << r;
    // (121 + 15) / (1 + 0,21 + 0,052) = 107,77; IVA 22,63; RE 5,60.
    EXPECT_EQ(r.out, journal(649,
                             {msg(650) + "15/03/2025", "Colmado Ruiz", Ventas, "Descrip.: F-7/Abon",
                              msg(6856), "(Factura)", msg(6677) + "Banco Sabadell",
                              "BASE: 21 % 107,77", "IVA: 22,63", "R.E. 5,60", "",
                              "BASE IRPF: 100,00 15% " + msg(653) + ": 15,00", "TOTAL: 121,00"},
                             1));
    EXPECT_EQ(
        sales("TOTAL, Ordre, BaseIRPF, TipusIRPF, Retencio, Base1, TIva1, Iva1, TRE1, RE1, "
              "Base2, TIva2, Iva2, TRE2, RE2, Base3, TIva3, Iva3, TRE3, RE3, Client, NomClient, "
              "direccio, poblacio, NIF, concepte1, concepte2, concepte3, concepte4, concepte5, "
              "Descripcio, data, Grup, NomGrup, Compte, NomCompte, Cobrada, Clasificacion, "
              "Marca, Venciment"),
        QStringList{"1210000|1|1000000|150000|150000|1077700|210000|226300|52000|56000|"
                    "0|100000|0|14000|0|0|40000|0|5000|0|2|Colmado Ruiz|"
                    "|||Uno|Dos|||Cinco|"
                    "F-7/Abon|2025-03-15|70|Ingresos|1|" +
                    Ventas + "|-1|" + msg(6856) + "|0|<null>"});
    EXPECT_EQ(movements(), QStringList{"2025-03-15|2|2|1|N/Fra. F-7/Abon|1210000|0"});
    EXPECT_TRUE(receipts().isEmpty());
}

TEST_F(cliSales, ACustomerWithRecargoTakesItInTheSplit) {
    ASSERT_NO_FATAL_FAILURE(open(false));
    const Result r = sale({"--total", "121,00"}, "Colmado Ruiz");
    ASSERT_EQ(r.code, 0) << r;
    // 121 / 1,262 = 95,88; IVA 20,13; RE 4,99.
    EXPECT_TRUE(r.out.contains("BASE: 21 % 95,88\nIVA: 20,13\nR.E. 4,99\n\nTOTAL: 121,00\n")) << r;
    EXPECT_EQ(sales("Client, Base1, Iva1, RE1, Cobrada"), QStringList{"2|958800|201300|49900|0"});
}

TEST_F(cliSales, WithholdingEntersTheSplit) {
    ASSERT_NO_FATAL_FAILURE(open(false));
    const Result r = sale({"--total", "100", "--irpf-base", "100", "--irpf-percent", "15"});
    ASSERT_EQ(r.code, 0) << r;
    // 115 / 1,21 = 95,04; IVA 19,96.
    EXPECT_TRUE(r.out.contains("BASE: 21 % 95,04\nIVA: 19,96\n\nBASE IRPF: 100,00 15% " + msg(653) +
                               ": 15,00\nTOTAL: 100,00\n"))
        << r;
    EXPECT_EQ(sales("BaseIRPF, TipusIRPF, Retencio, Base1, Iva1"),
              QStringList{"1000000|150000|150000|950400|199600"});
}

TEST_F(cliSales, AnAmountWithheldCanBeTypedAlone) {
    ASSERT_NO_FATAL_FAILURE(open(false));
    const Result r =
        sale({"--total", "100", "--rate", "otros", "--base1", "100", "--irpf-amount", "21"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_EQ(sales("BaseIRPF, TipusIRPF, Retencio, Base1, Iva1, TOTAL"),
              QStringList{"0|0|210000|1000000|210000|1000000"});
}

TEST_F(cliSales, TheRateChosenSplitsIntoItsOwnColumn) {
    ASSERT_NO_FATAL_FAILURE(open(false));
    ASSERT_EQ(sale({"--total", "110", "--rate", "10"}).code, 0);
    ASSERT_EQ(sale({"--total", "50", "--rate", "0"}).code, 0);
    EXPECT_EQ(sales("Base1, Base2, Iva2, Base3, TOTAL"),
              (QStringList{"0|1000000|100000|0|1100000", "0|0|0|0|500000"}));
}

TEST_F(cliSales, TypedBasesTakeTheirQuotasAndATypedQuotaStays) {
    ASSERT_NO_FATAL_FAILURE(open(false));
    Result r = sale({"--total", "176", "--base1", "100", "--base2", "50"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_TRUE(r.out.contains("BASE: 21 % 100,00\nIVA: 21,00\n\nBASE: 10 % 50,00\nIVA: 5,00\n\n"))
        << r;
    r = sale({"--total", "104.5", "--base3", "100"}, "Colmado Ruiz");
    ASSERT_EQ(r.code, 0) << r;
    r = sale({"--total", "120,99", "--base1", "100", "--iva1", "20,99"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_EQ(sales("Base1, Iva1, RE1, Base2, Iva2, Base3, Iva3, RE3, TOTAL"),
              (QStringList{"1000000|210000|0|500000|50000|0|0|0|1760000",
                           "0|0|0|0|0|1000000|40000|5000|1045000",
                           "1000000|209900|0|0|0|0|0|0|1209900"}));
}

TEST_F(cliSales, AmountsFollowTheProgramsDecimalMark) {
    ASSERT_TRUE(settings::writeDecimal(program.path(), 46));
    ASSERT_NO_FATAL_FAILURE(open(false));
    const Result r = sale({"--total", "1210,00"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_TRUE(r.out.contains("BASE: 21 % 1,000.00\nIVA: 210.00\n\nTOTAL: 1,210.00\n")) << r;
    EXPECT_EQ(sales("TOTAL, Base1"), QStringList{"12100000|10000000"});
}

TEST_F(cliSales, TheOnlyOpenMonthIsTakenWhenNoneIsGiven) {
    ASSERT_NO_FATAL_FAILURE(open(false));
    ASSERT_EQ(on("month-lock", {"1", "2", "4", "5", "6", "7", "8", "9", "10", "11", "12"}).code, 0);
    const Result r = on("post-sale", {"--day", "9", "--customer", "Ferreteria Puig", "--account",
                                      Ventas, "--total", "121"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_EQ(sales("data"), QStringList{"2025-03-09"});
}

TEST_F(cliSales, TicketsHaveNoCustomerAndTheTotalIsExempt) {
    ASSERT_NO_FATAL_FAILURE(open(true, {"--kind", "TICKETS"}));
    Result r = on("post-sale", {"--day", "15", "--month", "3", "--account", Ventas, "--total", "50",
                                "--treasury-account", "Banco Sabadell"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_TRUE(r.out.contains("\n" + msg(639) + "\n")) << r;
    EXPECT_TRUE(r.out.contains("\n BASE IVA NO APLICABLE: 50,00\nTOTAL: 50,00\n")) << r;
    EXPECT_EQ(sales("Client, NomClient, TOTAL, Base1, Iva1, Cobrada"),
              QStringList{"0|" + msg(639) + "|500000|0|0|-1"});
    EXPECT_EQ(movements(), QStringList{"2025-03-15|2|0|1|N/Fra. 1|500000|0"});

    const auto before = snapshot();
    for (const QString option : {"--customer", "--rate", "--base1", "--irpf-percent"}) {
        r = on("post-sale", {"--day", "15", "--month", "3", "--account", Ventas, "--total", "50",
                             option, option == "--customer" ? "Ferreteria Puig" : "10"});
        EXPECT_EQ(r.code, 1) << r;
        EXPECT_TRUE(r.out.isEmpty()) << r;
        EXPECT_TRUE(r.err.contains(option) && r.err.contains("TICKETS")) << r;
    }
    EXPECT_EQ(snapshot(), before);
}

// ---- refusals and questions ---------------------------------------------------------------

TEST_F(cliSales, RefusalsPrintTheProgramsMessageAndWriteNothing) {
    ASSERT_NO_FATAL_FAILURE(open(true));
    ASSERT_EQ(on("month-lock", {"4"}).code, 0);
    const auto before = snapshot();
    const QString overTotal =
        msg(923) + "\n\n" + msg(6755) + "121,00\n" + msg(6756) + "121,01\n\n" + msg(6757);
    const std::pair<QStringList, QString> cases[] = {
        {{"--customer", "Nadie", "--total", "121"}, msg(640)},
        {{"--account", "Ventas raras", "--total", "121"}, msg(642)},
        {{"--month", "4", "--total", "121"}, msg(622)},
        {{"--day", "31", "--month", "2", "--total", "121"}, msg(619)},
        {{"--day", "", "--total", "121"}, msg(635)},
        {{"--customer", "", "--total", "121"}, msg(638)},
        {{"--account", "", "--total", "121"}, msg(641)},
        {{"--total", "0"}, msg(643)},
        {{}, msg(643)},
        // One cent above a positive total is a fault.
        {{"--total", "121", "--base1", "100", "--iva1", "21,01"}, overTotal},
    };
    for (const auto& [args, message] : cases) {
        // Options given twice are a usage error: the case's own go to a sale built here.
        QStringList words{"--day",           "15",        "--month", "3", "--customer",
                          "Ferreteria Puig", "--account", Ventas};
        for (qsizetype i = 0; i + 1 < args.size(); i += 2) {
            const qsizetype at = words.indexOf(args[i]);
            if (at >= 0)
                words[at + 1] = args[i + 1];
            else
                words << args[i] << args[i + 1];
        }
        const Result r = run(QStringList{"--yes", "post-sale", K, Y} + words);
        EXPECT_EQ(r.code, 1) << words.join(' ').toStdString() << "\n" << r;
        EXPECT_TRUE(r.out.isEmpty()) << r;
        EXPECT_EQ(r.err, message + "\n") << r;
    }
    EXPECT_EQ(snapshot(), before);
}

TEST_F(cliSales, RefusalsOfTheCompanionWriteNothing) {
    ASSERT_NO_FATAL_FAILURE(open(true));
    const auto before = snapshot();
    Result r = sale({"--total", "121", "--rate", "7"});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_TRUE(r.err.contains("--rate") && r.err.contains("21, 10, 4")) << r;
    r = sale({"--total", "121", "--treasury-account", "Caixa Pollença"});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_TRUE(r.err.contains("\"Caixa Pollença\"")) << r;
    r = sale({"--total", "121", "--re1", "5"});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_TRUE(r.err.contains("--re1") && r.err.contains("Ferreteria Puig")) << r;
    r = sale({"--total", "121", "--classification", "intra"});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_TRUE(r.err.contains("--classification")) << r;
    EXPECT_EQ(snapshot(), before);
}

TEST_F(cliSales, TreasuryOptionsNeedTreasuryControl) {
    ASSERT_NO_FATAL_FAILURE(open(false));
    for (const QStringList& more :
         {QStringList{"--treasury-account", "Caja efectivo"}, QStringList{"--due", "30/04/2025"}}) {
        const Result r = sale(QStringList{"--total", "121"} + more);
        EXPECT_EQ(r.code, 1) << r;
        EXPECT_TRUE(r.err.contains(more[0]) && r.err.contains("treasury")) << r;
    }
    EXPECT_TRUE(sales("Ordre").isEmpty());
}

TEST_F(cliSales, WithTheBillingModuleASaleTakesItsLines) {
    createCompany("Fusteria Pons", "B12345678");
    ASSERT_TRUE(settings::writeFactMod(company(K), {true, QString(), 1}));
    createExercise(K, Y, {"--iva1", "21", "--iva2", "10", "--iva3", "4"});
    ASSERT_EQ(run({"exercise-open", K, Y}).code, 0);
    ASSERT_EQ(on("customer-add", {"--name", "Ferreteria Puig"}).code, 0);
    const Result r = on(
        "post-sale", {"--day", "15", "--month", "3", "--customer", "Ferreteria Puig", "--account",
                      Ventas, "--line", "1,5|Tablero|10|10|21", "--line", "2|Cola|5||10"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_EQ(sales("Ordre, descripcio, base1, iva1, base2, iva2, total"),
              QStringList{"1|1|135000|28400|100000|10000|273400"});
    EXPECT_EQ(rows(company(K) + "fact.mdb",
                   "select FrasOut, concepto, unidades, importe, iva from detalle order by Id"),
              (QStringList{"1|Tablero|1.5|135000|21.0", "1|Cola|2.0|100000|10.0"}));
}

TEST_F(cliSales, LinesNeedTheBillingModule) {
    ASSERT_NO_FATAL_FAILURE(open(false));
    const Result r = sale({"--line", "1|Tablero|10||21"});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_TRUE(r.err.contains("--line") && r.err.contains("billing")) << r;
    EXPECT_TRUE(sales("Ordre").isEmpty());
}

TEST_F(cliSales, ADifferenceIsAskedAndOnlyYesPostsItAsExempt) {
    ASSERT_NO_FATAL_FAILURE(open(false));
    const QStringList words{"--total", "130", "--base1", "100"};
    Result r = sale(words);
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_TRUE(r.out.isEmpty()) << r;
    EXPECT_TRUE(r.err.startsWith(msg(644) + "9,00\n" + msg(645) + " = 121,00\n" + msg(646) +
                                 "130,00\nNO APLICABLE IVA = 9,00\n"))
        << r;
    EXPECT_TRUE(r.err.endsWith("(answered No: give --yes to answer Yes)\n")) << r;
    EXPECT_TRUE(sales("Ordre").isEmpty());

    r = run(QStringList{"--yes", "post-sale", K, Y, "--day", "15", "--month", "3", "--customer",
                        "Ferreteria Puig", "--account", Ventas} +
            words);
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_TRUE(r.out.contains("\nIVA: 21,00\n\n BASE IVA NO APLICABLE: 9,00\nTOTAL: 130,00\n"))
        << r;
    EXPECT_EQ(sales("TOTAL, Base1, Iva1"), QStringList{"1300000|1000000|210000"});
}

TEST_F(cliSales, OneCentBelowTheTotalIsTakenWithoutAQuestion) {
    ASSERT_NO_FATAL_FAILURE(open(false));
    const Result r = sale({"--total", "121,01", "--base1", "100"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_TRUE(r.err.isEmpty()) << r;
    EXPECT_TRUE(r.out.contains("\n BASE IVA NO APLICABLE: 0,01\nTOTAL: 121,01\n")) << r;
}

TEST_F(cliSales, TheSameInvoiceTwiceIsAskedAndOnlyYesPostsIt) {
    ASSERT_NO_FATAL_FAILURE(open(false));
    const QStringList words{"--total", "121", "--description", "F-1"};
    ASSERT_EQ(sale(words).code, 0);
    Result r = sale(words);
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_TRUE(r.out.isEmpty()) << r;
    EXPECT_EQ(r.err, msg(6754) + "\n(answered No: give --yes to answer Yes)\n");
    EXPECT_EQ(sales("Ordre").size(), 1);
    // Another customer's invoice of the same number and amount is no duplicate.
    ASSERT_EQ(sale(words, "Colmado Ruiz").code, 0);
    r = run(QStringList{"--yes", "post-sale", K, Y, "--day", "15", "--month", "3", "--customer",
                        "Ferreteria Puig", "--account", Ventas} +
            words);
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_TRUE(r.out.contains("\nMODIFICAR 3\n")) << r;
    EXPECT_EQ(sales("Ordre, Client, Descripcio"), (QStringList{"1|1|F-1", "2|2|F-1", "3|1|F-1"}));
}

TEST_F(cliSales, AFaultOfTheStoreIsReportedAndLeavesNoRow) {
    ASSERT_NO_FATAL_FAILURE(open(true));
    // Descripcio holds 40 characters: the store refuses a longer one.
    const Result r = sale({"--total", "121", "--description", QString(41, u'x')});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_FALSE(r.err.isEmpty()) << r;
    EXPECT_TRUE(r.out.startsWith(msg(649) + "\n")) << r;
    EXPECT_TRUE(r.out.endsWith("\nTOTAL: 121,00\n\n" + msg(655) + "\n" + msg(656) + "\n")) << r;
    EXPECT_TRUE(sales("Ordre").isEmpty());
    EXPECT_TRUE(receipts().isEmpty());
    EXPECT_TRUE(movements().isEmpty());
}

// ---- treasury -----------------------------------------------------------------------------

TEST_F(cliSales, WithoutAnAccountTheSaleWaitsInThePortfolio) {
    ASSERT_NO_FATAL_FAILURE(open(true));
    ASSERT_EQ(sale({"--total", "121", "--due", "30/04/2025"}).code, 0);
    const QString before = today();
    ASSERT_EQ(sale({"--total", "60,50", "--description", "F-2"}, "Colmado Ruiz").code, 0);
    const QString after = today();
    EXPECT_EQ(sales("Ordre, Cobrada"), (QStringList{"1|0", "2|0"}));
    EXPECT_TRUE(movements().isEmpty());
    const QStringList r = receipts();
    ASSERT_EQ(r.size(), 2);
    EXPECT_EQ(r[0], "2025-03-15|1|Out|2025|1|1210000|0|1|2025-04-30");
    // The due date of a fresh screen is today's.
    EXPECT_TRUE(r[1] == "2025-03-15|2|Out|2025|F-2|605000|0|2|" + before ||
                r[1] == "2025-03-15|2|Out|2025|F-2|605000|0|2|" + after)
        << r[1].toStdString();
}

TEST_F(cliSales, AnAccountRecordsTheCollection) {
    ASSERT_NO_FATAL_FAILURE(open(true));
    const Result r = sale({"--total", "121", "--treasury-account", "Caja efectivo"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_TRUE(r.out.contains("\n(Factura)\n" + msg(6677) + "Caja efectivo\n")) << r;
    EXPECT_EQ(sales("Ordre, Cobrada"), QStringList{"1|-1"});
    EXPECT_EQ(movements(), QStringList{"2025-03-15|1|1|1|N/Fra. 1|1210000|0"});
    EXPECT_TRUE(receipts().isEmpty());
}

// ---- changing a posted sale ---------------------------------------------------------------

TEST_F(cliSales, APendingSaleChangedToAnAccountLosesItsReceipt) {
    ASSERT_NO_FATAL_FAILURE(open(true));
    ASSERT_EQ(sale({"--total", "121"}).code, 0);
    ASSERT_EQ(receipts().size(), 1);
    const Result r = on("change-sale", {"1", "--treasury-account", "Banco Sabadell"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_EQ(r.out, journal(651,
                             {msg(650) + "15/03/2025", "Ferreteria Puig", Ventas, "Descrip.: 1",
                              "(Factura)", msg(6677) + "Banco Sabadell", "BASE: 21 % 100,00",
                              "IVA: 21,00", "", "TOTAL: 121,00"},
                             1));
    EXPECT_TRUE(receipts().isEmpty());
    EXPECT_EQ(movements(), QStringList{"2025-03-15|2|1|1|N/Fra. 1|1210000|0"});
    EXPECT_EQ(sales("Ordre, Cobrada, TOTAL, Base1, Iva1"),
              QStringList{"1|-1|1210000|1000000|210000"});
}

TEST_F(cliSales, ACollectedSaleMadePendingGetsAReceiptAgain) {
    ASSERT_NO_FATAL_FAILURE(open(true));
    ASSERT_EQ(sale({"--total", "121", "--treasury-account", "Banco Sabadell"}).code, 0);
    ASSERT_EQ(movements().size(), 1);
    const Result r = on("change-sale", {"1", "--pending", "--due", "30/04/2025"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_TRUE(r.out.contains("\n(Factura)\n" + msg(6676) + "\n")) << r;
    EXPECT_TRUE(movements().isEmpty());
    EXPECT_EQ(receipts(), QStringList{"2025-03-15|1|Out|2025|1|1210000|0|1|2025-04-30"});
    EXPECT_EQ(sales("Cobrada"), QStringList{"0"});
}

TEST_F(cliSales, AChangeKeepsWhatIsNotGiven) {
    ASSERT_NO_FATAL_FAILURE(open(true));
    ASSERT_EQ(sale({"--total", "100", "--irpf-base", "100", "--irpf-percent", "15", "--description",
                    "F-1", "--concept1", "Uno", "--treasury-account", "Banco Sabadell"})
                  .code,
              0);
    const QString columns =
        "TOTAL, BaseIRPF, TipusIRPF, Retencio, Base1, Iva1, RE1, Client, NomClient, concepte1, "
        "Descripcio, data, Compte, Cobrada";
    const QStringList posted = sales(columns);
    ASSERT_EQ(posted.size(), 1);
    Result r = on("change-sale", {"1", "--day", "20"});
    ASSERT_EQ(r.code, 0) << r;
    QString expected = posted[0];
    expected.replace("2025-03-15", "2025-03-20");
    EXPECT_EQ(sales(columns), QStringList{expected});
    EXPECT_EQ(movements(), QStringList{"2025-03-20|2|1|1|N/Fra. F-1|1000000|0"});

    // A new percent recomputes the amount withheld; the bases stay as they were.
    r = on("change-sale", {"1", "--irpf-percent", "7", "--total", "108", "--series", "/Rect"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_TRUE(r.out.contains("\nDescrip.: F-1/Rect\n")) << r;
    EXPECT_EQ(sales("TOTAL, BaseIRPF, TipusIRPF, Retencio, Base1, Descripcio"),
              QStringList{"1080000|1000000|70000|70000|950400|F-1/Rect"});
}

TEST_F(cliSales, ANewCustomerRecomputesQuotasAndTotalFromTheBases) {
    ASSERT_NO_FATAL_FAILURE(open(false));
    ASSERT_EQ(sale({"--total", "121"}).code, 0);
    const Result r = on("change-sale", {"1", "--customer", "colmado ruiz"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_TRUE(r.out.contains("\nColmado Ruiz\n")) << r;
    EXPECT_EQ(sales("Client, NomClient, Base1, Iva1, RE1, TOTAL"),
              QStringList{"2|Colmado Ruiz|1000000|210000|52000|1262000"});
}

TEST_F(cliSales, ACustomerWithoutRecargoTakesTheSalesRecargoAway) {
    ASSERT_NO_FATAL_FAILURE(open(false));
    ASSERT_EQ(sale({"--total", "126,20"}, "Colmado Ruiz").code, 0);
    ASSERT_EQ(sales("RE1"), QStringList{"52000"});
    const Result r = on("change-sale", {"1", "--customer", "ferreteria puig"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_FALSE(r.out.contains("R.E.")) << r;
    EXPECT_EQ(sales("Client, Base1, Iva1, RE1, TOTAL"), QStringList{"1|1000000|210000|0|1210000"});
}

TEST_F(cliSales, TheJournalOfAChangedSaleNamesTheRatesItWasPostedWith) {
    ASSERT_NO_FATAL_FAILURE(open(false));
    ASSERT_EQ(sale({"--total", "121"}).code, 0);
    // Posted at 21 %; the exercise's first rate has since become 23 %.
    ASSERT_EQ(run({"--yes", "exercise-rates", K, Y, "--iva1", "23"}).code, 0);
    const Result r = on("change-sale", {"1", "--description", "F-1"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_TRUE(r.out.contains("BASE: 21 % 100,00\n")) << r;
}

TEST_F(cliSales, TheDescriptionIsSanitisedWhereverItIsWritten) {
    ASSERT_NO_FATAL_FAILURE(open(true));
    const Result r = sale({"--total", "121", "--description", "O'Neil 50%+IVA",
                           "--treasury-account", "Banco Sabadell"});
    ASSERT_EQ(r.code, 0) << r;
    const QString clean = QStringLiteral("O\u00B4Neil 50IVA");
    EXPECT_EQ(sales("descripcio"), QStringList{clean});
    EXPECT_EQ(rows(tesorer(), "select concepto from movimientos").value(0).contains(clean), true)
        << rows(tesorer(), "select concepto from movimientos").join(u'\n').toStdString();
    // And one waiting in the portfolio.
    ASSERT_EQ(sale({"--total", "121", "--description", "D'Or+"}).code, 0);
    EXPECT_EQ(rows(cartera(), "select Factura from cartera"), QStringList{"D\u00B4Or"});
}

// ---- the sales inquiry ------------------------------------------------------------------

TEST_F(cliSales, TheInquiryFiltersOrdersAndTotals) {
    ASSERT_NO_FATAL_FAILURE(open(false));
    ASSERT_EQ(sale({"--total", "121", "--description", "F-1"}).code, 0);
    ASSERT_EQ(sale({"--total", "1500,00", "--description", "F-2"}, "Colmado Ruiz").code, 0);
    ASSERT_EQ(on("post-sale", {"--day", "2", "--month", "4", "--customer", "Ferreteria Puig",
                               "--account", Ventas, "--total", "50", "--description", "F-3"})
                  .code,
              0);
    Result r = on("sales");
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_EQ(r.out, "1\t15/03/2025\tFerreteria Puig\t" + Ventas + "\tF-1\t121,00\n" +
                         "2\t15/03/2025\tColmado Ruiz\t" + Ventas + "\tF-2\t1.500,00\n" +
                         "3\t02/04/2025\tFerreteria Puig\t" + Ventas + "\tF-3\t50,00\n" +
                         "TOTAL\t1.671,00\n" + msg(807) + "\t3\n")
        << r;
    r = on("sales", {"--customer", "Ferreteria Puig", "--order", "amount"});
    EXPECT_TRUE(r.out.startsWith("3\t")) << r;
    EXPECT_TRUE(r.out.endsWith("TOTAL\t171,00\n" + msg(807) + "\t2\n")) << r;
    // The grouping dot must not be typed: "1500,00" is 1500.00.
    r = on("sales", {"--operator", ">=", "--amount", "1500,00"});
    EXPECT_TRUE(r.out.endsWith(msg(807) + "\t1\n")) << r;
    r = on("sales", {"--to", "31/03/2025"});
    EXPECT_TRUE(r.out.endsWith(msg(807) + "\t2\n")) << r;
}

TEST_F(cliSales, ADeletedSaleTakesItsCollectionWithIt) {
    ASSERT_NO_FATAL_FAILURE(open(true));
    ASSERT_EQ(sale({"--total", "121", "--treasury-account", "Banco Sabadell"}).code, 0);
    ASSERT_EQ(sale({"--total", "50"}).code, 0);
    Result r = on("sale-remove", {"1"});
    EXPECT_EQ(r.code, 1) << "the question needs --yes";
    EXPECT_TRUE(r.err.contains(msg(815))) << r;
    r = run({"--yes", "sale-remove", K, Y, "1"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_EQ(sales("Ordre"), QStringList{"2"});
    EXPECT_TRUE(movements().isEmpty());
    EXPECT_EQ(receipts().size(), 1);
    EXPECT_EQ(run({"--yes", "sale-remove", K, Y, "9"}).code, 1);
}

TEST_F(cliSales, ACollectedSaleGoesBackToThePortfolioKeepingCobrada) {
    ASSERT_NO_FATAL_FAILURE(open(true));
    ASSERT_EQ(sale({"--total", "121", "--treasury-account", "Banco Sabadell"}).code, 0);
    ASSERT_EQ(sales("Cobrada"), QStringList{"-1"});
    Result r = on("sale-to-portfolio", {"1"});
    EXPECT_EQ(r.code, 1) << "the question needs --yes";
    EXPECT_EQ(movements().size(), 1);
    r = run({"--yes", "sale-to-portfolio", K, Y, "1"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_TRUE(r.out.contains(msg(6870))) << r;
    EXPECT_TRUE(movements().isEmpty());
    EXPECT_EQ(receipts(), QStringList{"2025-03-15|1|Out|2025|1|1210000|0|1|<null>"});
    EXPECT_EQ(sales("Cobrada"), QStringList{"-1"});
    // Twice leaves one receipt.
    ASSERT_EQ(run({"--yes", "sale-to-portfolio", K, Y, "1"}).code, 0);
    EXPECT_EQ(receipts().size(), 1);
}

TEST_F(cliSales, APortfolioNeedsTreasuryControl) {
    ASSERT_NO_FATAL_FAILURE(open(false));
    ASSERT_EQ(sale({"--total", "121"}).code, 0);
    EXPECT_EQ(run({"--yes", "sale-to-portfolio", K, Y, "1"}).code, 1);
}

TEST_F(cliSales, AChangedBaseKeepsItsQuotasUnlessTheyAreGiven) {
    ASSERT_NO_FATAL_FAILURE(open(false));
    ASSERT_EQ(sale({"--total", "121"}).code, 0);
    Result r = on("change-sale", {"1", "--base1", "200", "--total", "242"});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_TRUE(r.err.startsWith(msg(644) + "21,00\n" + msg(645) + " = 221,00\n")) << r;
    EXPECT_EQ(sales("TOTAL, Base1, Iva1"), QStringList{"1210000|1000000|210000"});
    r = on("change-sale", {"1", "--base1", "200", "--iva1", "42", "--total", "242"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_EQ(sales("TOTAL, Base1, Iva1"), QStringList{"2420000|2000000|420000"});
}

TEST_F(cliSales, AChangeIntoALockedMonthIsRefused) {
    ASSERT_NO_FATAL_FAILURE(open(false));
    ASSERT_EQ(sale({"--total", "121"}).code, 0);
    ASSERT_EQ(on("month-lock", {"4"}).code, 0);
    const Result r = on("change-sale", {"1", "--month", "4"});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_EQ(r.err, msg(622) + "\n");
    EXPECT_EQ(sales("data"), QStringList{"2025-03-15"});
}

TEST_F(cliSales, ASaleSettledInARunKeepsItsMoneyRows) {
    ASSERT_NO_FATAL_FAILURE(open(true));
    ASSERT_EQ(sale({"--total", "121", "--description", "F-1"}).code, 0);
    // What a collection run leaves: the sale marked, the receipt paid, the run's movement.
    exec(frasOut(), "update FrasOut set Marca = -1, Cobrada = -1 where Ordre = 1");
    exec(cartera(), "update cartera set Pendiente = Total");
    exec(tesorer(),
         "insert into movimientos (data, entidad, cliente, FrasOut, concepto, D, H) "
         "values ('2025-03-31', 2, 1, 1, 'Cobro remesa', 1210000, 0)");

    const auto before = snapshot();
    for (const QStringList& more :
         {QStringList{"--pending"}, QStringList{"--treasury-account", "Banco Sabadell"}}) {
        const Result r = on("change-sale", QStringList{"1"} + more);
        EXPECT_EQ(r.code, 1) << r;
        EXPECT_TRUE(r.err.contains("collection run")) << r;
    }
    EXPECT_EQ(snapshot(), before);

    const QString day = today();
    const Result r = on("change-sale", {"1", "--description", "F-9", "--day", "20", "--total",
                                        "242", "--base1", "200", "--iva1", "42"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_TRUE(r.out.startsWith(msg(651) + "\n")) << r;
    EXPECT_TRUE(r.out.contains("\n(Factura)\nBASE: 21 % 200,00\n")) << r;
    EXPECT_EQ(sales("TOTAL, Base1, Iva1, Descripcio, data, Marca, Cobrada"),
              QStringList{"2420000|2000000|420000|F-9|2025-03-20|-1|0"});
    // Names and texts follow; the amount paid and the movement's amount stay.
    const QStringList receipt = receipts();
    ASSERT_EQ(receipt.size(), 1);
    EXPECT_TRUE(receipt[0] == "2025-03-20|1|Out|2025|F-9|2420000|1210000|1|" + day ||
                receipt[0] == "2025-03-20|1|Out|2025|F-9|2420000|1210000|1|" + today())
        << receipt[0].toStdString();
    EXPECT_EQ(movements(), QStringList{"2025-03-31|2|1|1|F-9|1210000|0"});
}

TEST_F(cliSales, AnUnknownSaleIsRefused) {
    ASSERT_NO_FATAL_FAILURE(open(true));
    ASSERT_EQ(sale({"--total", "121"}).code, 0);
    const auto before = snapshot();
    const Result r = on("change-sale", {"9", "--total", "10"});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_TRUE(r.out.isEmpty()) << r;
    EXPECT_EQ(r.err, "tallora5-cli: the exercise 2025 has no sale \"9\"\n");
    EXPECT_EQ(snapshot(), before);
}

}  // namespace
