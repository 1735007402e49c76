// The billing documents of tallora5-cli on a company with the billing module: documents
// posted with their lines (the rows of fact.mdb column by column), the exempt difference,
// conversions, the list, the deletion, the print to PDF, and the words refused.
#include "../report/report_fixture.h"
#include "../table_rows.h"
#include "cli_fixture.h"
#include "context/billing_files.h"
#include "store/database.h"

#include <QFile>

using namespace tallora;
using tallora::clitest::Result;

namespace {

const QString K = QStringLiteral("B1234567");
const QString Y = QStringLiteral("2025");
const QString Ventas = QStringLiteral("700 Ventas de mercaderías");

class cliDocuments : public clitest::CliFixture {
protected:
    // A company with treasury and, unless told, the billing module; its exercise 2025 at
    // 21 / 10 / 4 with recargo, opened once; customer 1 without recargo, 2 with it.
    void open(bool billing = true) {
        ASSERT_NO_FATAL_FAILURE(createCompany("Fusteria Pons", "B12345678", true));
        if (billing) {
            ASSERT_TRUE(settings::writeFactMod(company(K), {true, QString(), 1}));
        }
        ASSERT_NO_FATAL_FAILURE(createExercise(K, Y,
                                               {"--iva1", "21", "--iva2", "10", "--iva3", "4",
                                                "--re1", "5,2", "--re2", "1,4", "--re3", "0,5"}));
        Result r = run({"exercise-open", K, Y});
        ASSERT_EQ(r.code, 0) << r;
        r = on("customer-add", {"--name", "Ferreteria Puig"});
        ASSERT_EQ(r.code, 0) << r;
        r = on("customer-add", {"--name", "Colmado Ruiz", "--re", "yes"});
        ASSERT_EQ(r.code, 0) << r;
    }

    Result on(const QString& command, const QStringList& rest = {}) {
        return run(QStringList{command, K, Y} + rest);
    }
    // A new document of `type` on day/03 to the first sales account, with the rest given.
    Result document(const QString& type, const QStringList& rest,
                    const QString& customer = "Ferreteria Puig", const QString& day = "15") {
        return on("post-document", QStringList{type, "--day", day, "--month", "3", "--customer",
                                               customer, "--account", Ventas} +
                                       rest);
    }
    static QStringList lines() {
        return {"--line", "2|Tablero|25|10|21", "--line", "1,5|Cola blanca|4||10"};
    }
    static QStringList commercial() {
        return {"--payment", "Transferencia",        "--bank-name", "Banco Sabadell",
                "--ccc",     "00810001020000123456", "--due",       "30/04/2025"};
    }

    QString fact() const { return company(K) + "fact.mdb"; }
    QString frasOut() const { return company(K) + Y + "/FrasOUT.mdb"; }
    QString cartera() const { return company(K) + "cartera.mdb"; }
    static QStringList rows(const QString& path, const QString& sql) {
        return tallora::testing::tableRows(path, sql);
    }
    QStringList documents(const QString& columns, const QString& where = "1 = 1") const {
        return rows(fact(),
                    "select " + columns + " from documentos where " + where + " order by Id");
    }
    QStringList details(const QString& columns, const QString& where = "1 = 1") const {
        return rows(fact(), "select " + columns + " from detalle where " + where + " order by Id");
    }
    QStringList counter(const QString& columns) const {
        return rows(fact(),
                    "select " + columns + " from Numeracion_Documentos where Ejercicio = 2025");
    }
};

// ---- posting ------------------------------------------------------------------------------

TEST_F(cliDocuments, EachTypeIsPostedWithItsLinesColumnByColumn) {
    ASSERT_NO_FATAL_FAILURE(open());
    const struct {
        const char* word;
        const char* journal;
    } types[] = {{"draft", "(Factura Borrador)"},
                 {"quote", "(Presupuesto)"},
                 {"proforma", "(Factura Proforma)"},
                 {"delivery-note", "(Albaran)"}};
    for (const auto& t : types) {
        const Result r = document(t.word, lines() + commercial());
        ASSERT_EQ(r.code, 0) << t.word << "\n" << r;
        EXPECT_TRUE(r.err.isEmpty()) << r;
        EXPECT_TRUE(r.out.contains("\nDescrip.: 1\n" + QString::fromLatin1(t.journal) + "\n")) << r;
        EXPECT_TRUE(
            r.out.contains("BASE: 21 % 45,00\nIVA: 9,45\n\nBASE: 10 % 6,00\nIVA: 0,60\n\n"
                           "TOTAL: 61,05\n"))
            << r;
    }
    const QString header =
        "|1|2025-03-15|2025-04-30|Transferencia|Banco Sabadell|"
        "00810001020000123456|2025|no|1|" +
        Ventas + "|0|0|0";
    EXPECT_EQ(documents("FrasOut, Borrador, Presupuesto, Proforma, Albaran, Client, Fecha, "
                        "Vencimiento, FormaPago, Entidad, ccc, Ejercicio, Temp, Compte, NomCompte, "
                        "BaseIRPF, TipusIRPF, Retencio"),
              (QStringList{"0|1|0|0|0" + header, "0|0|1|0|0" + header, "0|0|0|1|0" + header,
                           "0|0|0|0|1" + header}));
    const QString tablero = "|2025-03-15|Tablero|2.0|250000|10.0|0|450000|21.0|1|2025";
    const QString cola = "|2025-03-15|Cola blanca|1.5|40000|0.0|0|60000|10.0|1|2025";
    EXPECT_EQ(details("FrasOut, Borrador, Presupuesto, Proforma, Albaran, fecha, concepto, "
                      "unidades, pvp, dto, precio_neto, importe, iva, Client, Ejercicio"),
              (QStringList{"0|1|0|0|0" + tablero, "0|1|0|0|0" + cola, "0|0|1|0|0" + tablero,
                           "0|0|1|0|0" + cola, "0|0|0|1|0" + tablero, "0|0|0|1|0" + cola,
                           "0|0|0|0|1" + tablero, "0|0|0|0|1" + cola}));
    EXPECT_EQ(counter("FrasOut, Borrador, Presupuesto, Proforma, Albaran"),
              QStringList{"0|1|1|1|1"});
    EXPECT_TRUE(rows(frasOut(), "select Ordre from FrasOut").isEmpty());
    EXPECT_TRUE(rows(cartera(), "select Id from cartera").isEmpty());
}

TEST_F(cliDocuments, AnExemptLineIsTheDifferenceAskedAndOnlyYesPostsIt) {
    ASSERT_NO_FATAL_FAILURE(open());
    const QStringList words{"--line", "1|Tablero|100||21", "--line", "1|Curso|40||0"};
    Result r = document("quote", words);
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_TRUE(r.out.isEmpty()) << r;
    EXPECT_TRUE(r.err.startsWith(msg(644) + "40,00\n" + msg(645) + " = 121,00\n" + msg(646) +
                                 "161,00\nNO APLICABLE IVA = 40,00\n"))
        << r;
    EXPECT_TRUE(r.err.endsWith("(answered No: give --yes to answer Yes)\n")) << r;
    EXPECT_TRUE(documents("Id").isEmpty());
    EXPECT_TRUE(details("Id").isEmpty());

    r = run(QStringList{"--yes", "post-document", K, Y, "quote", "--day", "15", "--month", "3",
                        "--customer", "Ferreteria Puig", "--account", Ventas} +
            words);
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_TRUE(r.out.contains("\n BASE IVA NO APLICABLE: 40,00\nTOTAL: 161,00\n")) << r;
    EXPECT_EQ(documents("Presupuesto"), QStringList{"1"});
    EXPECT_EQ(details("concepto, importe, iva"),
              (QStringList{"Tablero|1000000|21.0", "Curso|400000|0.0"}));
}

TEST_F(cliDocuments, ALineAtARateTheExerciseLacksIsRefused) {
    ASSERT_NO_FATAL_FAILURE(open());
    const Result r = document("quote", {"--line", "1|Tablero|10||7"});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_TRUE(r.err.contains("the rate is none of 0, 21, 10, 4")) << r;
    EXPECT_TRUE(documents("Id").isEmpty());
    EXPECT_TRUE(counter("Presupuesto").value(0, "0") == "0");
}

TEST_F(cliDocuments, ACompanyWithoutBillingIsRefused) {
    ASSERT_NO_FATAL_FAILURE(open(false));
    Result r = document("quote", {"--total", "121"});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_TRUE(r.out.isEmpty()) << r;
    EXPECT_TRUE(r.err.contains("billing module")) << r;
    EXPECT_TRUE(rows(frasOut(), "select Ordre from FrasOut").isEmpty());
    r = on("documents", {"quote"});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_TRUE(r.err.contains("billing module")) << r;
}

TEST_F(cliDocuments, UnknownTypesAndMissingWordsAreUsageErrors) {
    ASSERT_NO_FATAL_FAILURE(open());
    const QStringList cases[] = {
        {"post-document", K, Y, "receipt", "--day", "15"},
        {"post-document", K, Y},
        {"convert-document", K, Y, "quote", "1", "bill"},
        {"convert-document", K, Y, "quote", "uno", "invoice"},
        {"documents", K, Y, "nota"},
        {"documents", K, Y, "invoice"},
        {"document-remove", K, Y, "quote", "uno"},
        {"print-document", K, Y, "quote", "1"},
        {"print-document", K, Y, "albaran-x", "1", "--pdf", "x.pdf"},
    };
    for (const QStringList& args : cases) {
        const Result r = run(QStringList{"--yes"} + args);
        EXPECT_EQ(r.code, 2) << args.join(' ').toStdString() << "\n" << r;
        EXPECT_TRUE(r.out.isEmpty()) << r;
        EXPECT_TRUE(r.err.startsWith("tallora5-cli: ")) << r;
    }
    EXPECT_TRUE(documents("Id").isEmpty());
}

// ---- conversions --------------------------------------------------------------------------

TEST_F(cliDocuments, AQuoteConvertedIntoAnInvoiceIsASaleAndTheQuoteIsGone) {
    ASSERT_NO_FATAL_FAILURE(open());
    ASSERT_EQ(document("quote", lines() + commercial()).code, 0);
    const Result r = on("convert-document", {"quote", "1", "invoice"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_TRUE(r.out.contains("\nDescrip.: 1\n(Factura)\n")) << r;
    EXPECT_EQ(rows(frasOut(),
                   "select Ordre, Descripcio, Client, NomClient, TOTAL, Base1, Iva1, "
                   "Base2, Iva2, data from FrasOut"),
              QStringList{"1|1|1|Ferreteria Puig|610500|450000|94500|60000|6000|2025-03-15"});
    EXPECT_EQ(
        rows(cartera(), "select FrasOut, Factura, Total, Pendiente, Vencimiento from cartera"),
        QStringList{"1|1|610500|0|2025-04-30"});
    EXPECT_EQ(documents("FrasOut, Presupuesto, Client, FormaPago"),
              QStringList{"1|0|1|Transferencia"});
    EXPECT_EQ(details("FrasOut, Presupuesto, concepto"),
              (QStringList{"1|0|Tablero", "1|0|Cola blanca"}));
    EXPECT_EQ(counter("FrasOut, Presupuesto"), QStringList{"1|1"});
}

TEST_F(cliDocuments, ADraftConvertedIntoAQuoteTakesTheNextQuoteNumber) {
    ASSERT_NO_FATAL_FAILURE(open());
    ASSERT_EQ(document("quote", lines()).code, 0);
    ASSERT_EQ(document("draft", lines()).code, 0);
    const Result r = on("convert-document", {"draft", "1", "quote"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_TRUE(r.out.contains("\nDescrip.: 2\n(Presupuesto)\n")) << r;
    EXPECT_EQ(documents("Borrador, Presupuesto"), (QStringList{"0|1", "0|2"}));
    EXPECT_TRUE(details("Id", "Borrador <> 0").isEmpty());
    EXPECT_EQ(details("concepto", "Presupuesto = 2"), (QStringList{"Tablero", "Cola blanca"}));
    EXPECT_EQ(counter("Borrador, Presupuesto"), QStringList{"1|2"});
    EXPECT_TRUE(rows(frasOut(), "select Ordre from FrasOut").isEmpty());
}

// ---- the list and the deletion ------------------------------------------------------------

TEST_F(cliDocuments, TheListShowsIdDateCustomerAndNumber) {
    ASSERT_NO_FATAL_FAILURE(open());
    ASSERT_EQ(document("quote", lines()).code, 0);
    ASSERT_EQ(document("quote", lines(), "Colmado Ruiz", "20").code, 0);
    ASSERT_EQ(document("draft", lines()).code, 0);
    Result r = on("documents", {"quote"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_EQ(r.out, "1\t15/03/2025\tFerreteria Puig\t1\n2\t20/03/2025\tColmado Ruiz\t2\n" +
                         msg(807) + "\t2\n");
    r = on("documents", {"quote", "--customer", "Colmado Ruiz"});
    EXPECT_EQ(r.out, "2\t20/03/2025\tColmado Ruiz\t2\n" + msg(807) + "\t1\n") << r;
    r = on("documents", {"quote", "--from", "16/03/2025"});
    EXPECT_EQ(r.out, "2\t20/03/2025\tColmado Ruiz\t2\n" + msg(807) + "\t1\n") << r;
    r = on("documents", {"draft"});
    EXPECT_EQ(r.out, "3\t15/03/2025\tFerreteria Puig\t1\n" + msg(807) + "\t1\n") << r;
    r = on("documents", {"delivery-note"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_EQ(r.out, msg(811) + "\n" + msg(807) + "\t0\n");
}

TEST_F(cliDocuments, ARemovalIsAskedAndKeepsTheCounter) {
    ASSERT_NO_FATAL_FAILURE(open());
    ASSERT_EQ(document("quote", lines()).code, 0);
    ASSERT_EQ(document("quote", lines(), "Colmado Ruiz").code, 0);
    Result r = on("document-remove", {"quote", "2"});
    EXPECT_EQ(r.code, 1) << "the question needs --yes\n" << r;
    EXPECT_TRUE(r.err.startsWith(msg(815) + "\n(2) Colmado Ruiz\n")) << r;
    EXPECT_TRUE(r.err.endsWith("(answered No: give --yes to answer Yes)\n")) << r;
    EXPECT_EQ(documents("Presupuesto"), (QStringList{"1", "2"}));

    r = run({"--yes", "document-remove", K, Y, "quote", "2"});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_EQ(documents("Presupuesto"), QStringList{"1"});
    EXPECT_TRUE(details("Id", "Presupuesto = 2").isEmpty());
    EXPECT_EQ(details("Id", "Presupuesto = 1").size(), 2);
    EXPECT_EQ(counter("Presupuesto"), QStringList{"2"});
    // The number is not given again.
    r = document("quote", lines());
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_TRUE(r.out.contains("\nDescrip.: 3\n")) << r;

    r = run({"--yes", "document-remove", K, Y, "quote", "9"});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_EQ(r.err, "tallora5-cli: the exercise 2025 has no quote \"9\"\n");
}

// ---- printing -----------------------------------------------------------------------------

TEST_F(cliDocuments, ADocumentIsPrintedToAPdfFile) {
    ASSERT_NO_FATAL_FAILURE(open());
    ASSERT_EQ(document("quote", lines() + commercial()).code, 0);
    const QString pdf = unit.filePath("presupuesto.pdf");
    Result r = on("print-document", {"quote", "1", "--pdf", pdf});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_EQ(r.out, pdf + "\t1\n");
    EXPECT_TRUE(r.err.isEmpty()) << r;
    ASSERT_TRUE(QFile::exists(pdf));
    const QString text = tallora::testing::pdfPages(pdf).join(u'\f');
    for (const QString& expected : {msg(6792), msg(6908).trimmed(), QStringLiteral("Fusteria Pons"),
                                    QStringLiteral("Ferreteria Puig"), QStringLiteral("Tablero"),
                                    QStringLiteral("Cola blanca"), QStringLiteral("61,05 Euros"),
                                    QStringLiteral("30/04/2025")})
        EXPECT_TRUE(text.contains(expected)) << expected.toStdString() << "\n"
                                             << text.toStdString();

    const QString missing = unit.filePath("ninguno.pdf");
    r = on("print-document", {"quote", "9", "--pdf", missing});
    EXPECT_EQ(r.code, 1) << r;
    EXPECT_EQ(r.err, "tallora5-cli: the exercise 2025 has no quote \"9\"\n");
    EXPECT_FALSE(QFile::exists(missing));
}

TEST_F(cliDocuments, AnInvoiceIsPrintedFromItsSale) {
    ASSERT_NO_FATAL_FAILURE(open());
    const Result posted = on("post-sale", QStringList{"--day", "15", "--month", "3", "--customer",
                                                      "Colmado Ruiz", "--account", Ventas} +
                                              lines());
    ASSERT_EQ(posted.code, 0) << posted;
    const QString pdf = unit.filePath("factura.pdf");
    const Result r = on("print-document", {"invoice", "1", "--pdf", pdf});
    ASSERT_EQ(r.code, 0) << r;
    EXPECT_EQ(r.out, pdf + "\t1\n");
    const QString text = tallora::testing::pdfPages(pdf).join(u'\f');
    // 45,00 + 9,45 + 2,34 of recargo + 6,00 + 0,60 + 0,08.
    for (const QString& expected : {msg(6906).trimmed(), QStringLiteral("Colmado Ruiz"),
                                    QStringLiteral("5,2 %"), QStringLiteral("63,47 Euros")})
        EXPECT_TRUE(text.contains(expected)) << expected.toStdString() << "\n"
                                             << text.toStdString();
}

}  // namespace
