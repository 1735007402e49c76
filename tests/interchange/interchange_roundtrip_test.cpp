// A generated year of 20,000 invoices with every kind of record exported, imported whole into
// a fresh exercise and exported again gives the same file, and the two exercises give the
// same books. An import refused at its 10,000th record, and one whose process is killed
// halfway, leave every database of the exercise and the company as it was.
#include "../table_rows.h"
#include "books/ledger_reports.h"
#include "books/operating_statement.h"
#include "books/trial_balance.h"
#include "books/vat_books.h"
#include "context/dialogs.h"
#include "context/text_encoding.h"
#include "context/working_context.h"
#include "interchange/interchange_export.h"
#include "interchange/interchange_import.h"
#include "schema/creation.h"
#include "shell/exercises.h"
#include "shell/sample_exercise.h"
#include "store/database.h"
#include "store/schema_objects.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <map>
#include <memory>

using namespace tallora;

namespace {

namespace db = schema::db;

constexpr int kInvoices = 20000;
const QDateTime kNow(QDate(2026, 11, 23), QTime(10, 30, 0));

// A company with treasury and its exercise 2026, in a unit of its own.
struct Installation {
    explicit Installation(const QDate& today) {
        ctx.resourcesDir = QStringLiteral(TALLORA_SOURCE_DIR "/resources/");
        shell::openSampleCompany(ctx, dialogs, folder.path(), today);
        // The billing files, which a company gets when it turns billing on.
        schema::createTables(
            ctx.companyFile(db::Fact), db::Fact,
            {"detalle", "documentos", "comercial_clientes", "Numeracion_Documentos"});
    }
    QTemporaryDir folder;
    WorkingContext ctx;
    ScriptedDialogs dialogs;
};

// What the sample does not post: provisions, other movements, billing documents with their
// lines (one of two lines, one with a "$"), the customers' payment details and numbering.
void addTheOtherRecords(const WorkingContext& ctx) {
    store::Database supl = store::Database::open(ctx.exerciseFile(db::Supl));
    for (int i = 1; i <= 40; ++i)
        supl.execute(
            QStringLiteral(
                "insert into Suplidos (Ordre, data, Proveidor, NomProveidor, TOTAL, descripcio, "
                "Marca, Protegit, Tipus, NomTipus) values (%1, '2026-%2-15', %3, "
                "'Gestoria Almirall', %4, 'Tasas registro', 0, %5, '%6', '%7')")
                .arg(i)
                .arg(1 + i % 12, 2, 10, QChar(u'0'))
                .arg(1 + i % 5)
                .arg(125000 + i * 1005)
                .arg(i % 2 ? -1 : 0)
                .arg(i % 2 ? QStringLiteral("S") : QStringLiteral("P"))
                .arg(i % 2 ? QStringLiteral("Suplido") : QStringLiteral("Provision")));
    store::Database tesorer = store::Database::open(ctx.exerciseFile(db::Tesorer));
    for (int i = 1; i <= 30; ++i)
        tesorer.execute(
            QStringLiteral(
                "insert into otros_movimientos (data, cta_sale_tesoreria, cta_sale_otra, "
                "cta_entra_tesoreria, cta_entra_otra, asiento, concepto, Importe) values "
                "('2026-%1-0%2', 1, 0, 0, %3, %4, 'Traspaso num. %4', %5)")
                .arg(1 + i % 12, 2, 10, QChar(u'0'))
                .arg(1 + i % 9)
                .arg(1 + i % 3)
                .arg(i)
                .arg(i * 333333));
    store::Database fact = store::Database::open(ctx.companyFile(db::Fact));
    for (int d = 1; d <= 25; ++d) {
        fact.execute(
            QStringLiteral(
                "insert into documentos (FrasOut, Client, Presupuesto, Proforma, Albaran, Fecha, "
                "Vencimiento, FormaPago, Entidad, ccc, Ejercicio, Temp, Borrador, Compte, "
                "NomCompte, BaseIRPF, TipusIRPF, Retencio) values (%1, %2, %3, 0, %4, "
                "'2026-%5-10', '2026-%5-28', 'Transferencia 30 dias', 'Caixa Penedes', "
                "'21000418450200051332', 2026, 'no', 0, 11, 'Ventas', 0, 0, 0)")
                .arg(d % 3 == 0 ? d : 0)
                .arg(1 + d % 7)
                .arg(d % 3 == 1 ? d : 0)
                .arg(d % 3 == 2 ? d : 0)
                .arg(1 + d % 12, 2, 10, QChar(u'0')));
        for (int l = 1; l <= 3; ++l)
            fact.execute(QStringLiteral(
                             "insert into detalle (FrasOut, fecha, concepto, unidades, pvp, dto, "
                             "precio_neto, importe, iva, Client, Presupuesto, Proforma, Albaran, "
                             "Ejercicio, Borrador) values (%1, '2026-%2-10', '%3', %4, %5, %6, %5, "
                             "%7, 21, %8, %9, 0, 0, 2026, 0)")
                             .arg(d % 3 == 0 ? d : 0)
                             .arg(1 + d % 12, 2, 10, QChar(u'0'))
                             .arg(l == 1
                                      ? QStringLiteral("Caja de tornillos 4 x 40\r\n(200 unidades)")
                                  : l == 2 ? QStringLiteral("Tablero de pino macizo 200 x 40 cm")
                                           : QStringLiteral("Portes y embalaje"))
                             .arg(l * 1.5)
                             .arg(l * 125000)
                             .arg(l == 2 ? 10.0 : 0.0)
                             .arg(l * 187500)
                             .arg(1 + d % 7)
                             .arg(d % 3 == 1 ? d : 0));
    }
    for (int c = 1; c <= 7; ++c)
        fact.execute(QStringLiteral(
                         "insert into comercial_clientes (Client, FormaPago, Entidad, ccc) values "
                         "(%1, 'Recibo domiciliado', 'Banco de Sabadell', '0081020%2000123456')")
                         .arg(c)
                         .arg(c));
    fact.execute(QStringLiteral(
        "insert into Numeracion_Documentos (FrasOut, Presupuesto, Proforma, Albaran, "
        "Ejercicio, Borrador) values (9, 26, 1, 25, 2026, 0)"));
}

// Every row of every table of every database of the exercise and of its company, keyed by
// file and table: what must not change when an import is refused or killed.
std::map<QString, QStringList> dumpOf(const WorkingContext& ctx) {
    std::map<QString, QStringList> out;
    for (const QString& folder : {ctx.Directori, ctx.companyFolder()}) {
        for (const QString& name : QDir(folder).entryList({QStringLiteral("*.mdb")}, QDir::Files)) {
            store::Database d = store::Database::open(folder + name);
            const QStringList tables = store::tableNames(d);
            for (const QString& table : tables)
                out[folder + name + u'/' + table] = tallora::testing::tableRows(
                    folder + name, QStringLiteral("select * from %1 order by rowid")
                                       .arg(store::quoteIdentifier(table)));
        }
    }
    return out;
}

QList<QByteArray> linesOf(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll().split('\n');
}

// The books of an exercise: the sales and purchases VAT books of the year, the operating
// statement, the summary of balances and the customers' ledger, as their rows.
QStringList booksOf(WorkingContext& ctx, Dialogs& dialogs) {
    QStringList out;
    books::BookRequest year;
    year.printDate = QDate(2026, 12, 31);
    for (books::Book book : {books::Book::Sales, books::Book::Purchases}) {
        EXPECT_TRUE(books::prepareBook(ctx, dialogs, book, year));
        out << tallora::testing::tableRows(ctx.exerciseFile(db::Llibre),
                                  QStringLiteral("select * from Diari order by rowid"));
    }
    books::OperatingRequest statement;
    EXPECT_TRUE(books::prepareOperatingStatement(ctx, dialogs, statement));
    out << books::operatingStatementRows(ctx);
    const auto totals = books::Genera_Saldos(ctx, dialogs);
    EXPECT_TRUE(totals.has_value());
    if (totals) out << books::trialBalanceRows(ctx, *totals);
    books::LedgerRequest ledger;
    ledger.extract = books::Extract::Customers;
    ledger.printDate = QDate(2026, 12, 31);
    out << books::ledgerRows(ctx, ledger);
    return out;
}

class InterchangeRoundTrip : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        try {
            source_ = std::make_unique<Installation>(QDate(2026, 3, 2));
            shell::SampleOptions options;
            options.invoices = kInvoices;
            options.seed = 11;
            shell::fillSampleExercise(source_->ctx, options);
            addTheOtherRecords(source_->ctx);
            target_ = std::make_unique<Installation>(QDate(2026, 3, 2));
        } catch (const std::exception& e) {
            setupError_ = e.what();
        }
    }
    static void TearDownTestSuite() {
        source_.reset();
        target_.reset();
    }
    void SetUp() override { ASSERT_NE(target_, nullptr) << "no generated year: " << setupError_; }

    static QString file(const char* name) {
        return source_->folder.filePath(QString::fromLatin1(name));
    }

    static inline std::unique_ptr<Installation> source_;
    static inline std::unique_ptr<Installation> target_;
    static inline std::string setupError_;
};

// In order: the round trip fills the target that the faults must leave alone.
TEST_F(InterchangeRoundTrip, AWholeYearComesBackByteForByteWithTheSameBooks) {
    const QString first = file("first.dat");
    const qint64 written = interchange::writeInterchangeFile(source_->ctx, first, {}, {}, kNow);
    ASSERT_GT(written, kInvoices);
    // Every kind of record is there.
    const QList<QByteArray> lines = linesOf(first);
    for (const char* key : {"5CLI", "5PRO", "5CTA", "5OUT", "5IN ", "5SUP", "5TSE", "5TSM", "5TSO",
                            "5CAR", "5FTC", "5FTD", "5FTM", "5FTN"}) {
        const bool found = std::any_of(lines.begin(), lines.end(),
                                       [key](const QByteArray& l) { return l.startsWith(key); });
        EXPECT_TRUE(found) << key;
    }

    const interchange::FileHeader header = interchange::readHeader(target_->ctx, first);
    EXPECT_EQ(interchange::importInterchangeFile(target_->ctx, first, header,
                                                 interchange::presetFor(header), {}),
              written);
    const QString second = file("second.dat");
    EXPECT_EQ(interchange::writeInterchangeFile(target_->ctx, second, {}, {}, kNow), written);

    // Line 3 names the folder each was made from; every other line is the same, byte for byte.
    const QList<QByteArray> again = linesOf(second);
    ASSERT_EQ(again.size(), lines.size());
    for (qsizetype i = 0; i < lines.size(); ++i)
        if (i != 2) {
            ASSERT_EQ(again[i], lines[i]) << "line " << i + 1;
        }

    EXPECT_EQ(booksOf(target_->ctx, target_->dialogs), booksOf(source_->ctx, source_->dialogs));
}

TEST_F(InterchangeRoundTrip, ARefusedTenThousandthRecordLeavesEveryFileAsItWas) {
    QList<QByteArray> lines = linesOf(file("first.dat"));
    const int bad = 9 + 10000;  // the header's nine lines, then the records
    ASSERT_GT(lines.size(), bad);
    lines[bad - 1].replace(4, 11, "abc        ");
    const QString broken = file("broken.dat");
    {
        QFile out(broken);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(lines.join('\n'));
    }
    const auto before = dumpOf(target_->ctx);
    target_->dialogs.clear();
    target_->dialogs.setNextAnswer(Dialogs::Answer::Yes);
    const interchange::FileHeader header = interchange::readHeader(target_->ctx, broken);
    EXPECT_FALSE(interchange::Importa(target_->ctx, target_->dialogs, broken, header,
                                      interchange::presetFor(header)));
    EXPECT_TRUE(target_->dialogs.lastText().contains(QString::number(bad)))
        << target_->dialogs.lastText().toStdString();
    EXPECT_EQ(dumpOf(target_->ctx), before);
}

TEST_F(InterchangeRoundTrip, AnImportKilledHalfwayLeavesEveryFileAsItWasAndTheExerciseOpens) {
    const auto before = dumpOf(target_->ctx);
    QProcess cli;
    cli.setProgram(QStringLiteral(TALLORA_CLI));
    cli.setArguments({"--unit", target_->ctx.Unitat, "--program-dir", target_->ctx.programDir,
                      "--yes", "import", "B1234567", "2026", file("first.dat"), "--whole"});
    cli.setProcessChannelMode(QProcess::SeparateChannels);
    cli.start();
    ASSERT_TRUE(cli.waitForStarted());
    // Halfway: once it has logged ten thousand records.
    int logged = 0;
    while (logged < 10000 && cli.state() == QProcess::Running) {
        cli.waitForReadyRead(1000);
        logged += static_cast<int>(cli.readAllStandardOutput().count('\n'));
    }
    ASSERT_EQ(cli.state(), QProcess::Running) << "the import ended before it was killed";
    cli.kill();
    ASSERT_TRUE(cli.waitForFinished());
    EXPECT_EQ(cli.exitStatus(), QProcess::CrashExit);

    EXPECT_EQ(dumpOf(target_->ctx), before);
    EXPECT_TRUE(shell::Obre_Exercici(target_->ctx, target_->dialogs, QStringLiteral("2026")))
        << target_->dialogs.lastText().toStdString();
}

}  // namespace
