// Hi_Ha_Impressora, Neteja_Informe, Marges_Informe and where layouts are found.
#include "context/dialogs.h"
#include "report/report_helpers.h"
#include "report_fixture.h"

#include <gtest/gtest.h>

using namespace tallora;
using namespace tallora::report;

TEST(HiHaImpressora, APdfPrinterCountsAsAPrinter) {
    WorkingContext ctx;
    ScriptedDialogs dialogs;
    EXPECT_TRUE(Hi_Ha_Impressora(ctx, dialogs, {{}, true}));
    EXPECT_TRUE(Hi_Ha_Impressora(ctx, dialogs, {{QStringLiteral("Oficina")}, false}));
    EXPECT_TRUE(dialogs.shown().empty());
    // Qt's own PDF printer is always there, so this machine can print.
    EXPECT_TRUE(systemPrintCapabilities().pdfPrinter);
    EXPECT_TRUE(Hi_Ha_Impressora(ctx, dialogs));
    EXPECT_TRUE(dialogs.shown().empty());
}

TEST(HiHaImpressora, NoWayToPrintShowsMessage6640) {
    WorkingContext ctx;
    ScriptedDialogs dialogs;
    EXPECT_FALSE(Hi_Ha_Impressora(ctx, dialogs, {{}, false}));
    ASSERT_EQ(dialogs.shown().size(), 1u);
    EXPECT_EQ(dialogs.shown()[0].kind, ScriptedDialogs::Shown::Kind::Stop);
    EXPECT_EQ(dialogs.lastText(),
              QStringLiteral("Su sistema no tiene ninguna impresora disponible."));
    ctx.setIdioma(QStringLiteral("cat"));
    EXPECT_FALSE(Hi_Ha_Impressora(ctx, dialogs, {{}, false}));
    EXPECT_EQ(dialogs.lastText(), QStringLiteral("El seu sistema no té cap impresora disponible."));
}

TEST(NetejaInforme, EmptiesFileDataFilesFormulasAndSelection) {
    ReportJob job;
    job.ReportFileName = QStringLiteral("x.rpt");
    for (QString& d : job.DataFiles) d = QStringLiteral("d.mdb");
    for (QString& f : job.Formulas) f = QStringLiteral("a= 'b'");
    job.SelectionFormula = QStringLiteral("client = 3");
    job.SortFields = {QStringLiteral("+nom")};
    job.WindowTitle = QStringLiteral("CLIENTES");
    job.CopiesToPrinter = 2;
    Neteja_Informe(job);
    EXPECT_TRUE(job.ReportFileName.isEmpty());
    for (const QString& d : job.DataFiles) EXPECT_TRUE(d.isEmpty());
    for (const QString& f : job.Formulas) EXPECT_TRUE(f.isEmpty());
    EXPECT_TRUE(job.SelectionFormula.isEmpty());
    EXPECT_EQ(job.SortFields, QStringList{QStringLiteral("+nom")});
    EXPECT_EQ(job.WindowTitle, QStringLiteral("CLIENTES"));
    EXPECT_EQ(job.CopiesToPrinter, 2);
}

TEST(MargesInforme, TakesTheFourMarginsOfTheSettings) {
    WorkingContext ctx;
    ctx.MargeEsquerre = 25;
    ctx.MargeDret = 10;
    ctx.MargeSuperior = 20;
    ctx.MargeInferior = 15;
    ReportJob job;
    Marges_Informe(job, ctx);
    EXPECT_EQ(job.MarginLeft, 25);
    EXPECT_EQ(job.MarginRight, 10);
    EXPECT_EQ(job.MarginTop, 20);
    EXPECT_EQ(job.MarginBottom, 15);
    ctx.MargeEsquerre = 70000;
    ctx.MargeInferior = -70000;
    Marges_Informe(job, ctx);
    EXPECT_EQ(job.MarginLeft, 32767);
    EXPECT_EQ(job.MarginBottom, -32768);
}

TEST(ReportFile, TheProgramFoldersOwnLayoutWinsOverTheInstalledOne) {
    tallora::testing::ReportFixture f;
    const QString installed = reportFile(f.ctx, QStringLiteral("cli_dom.rpt"));
    EXPECT_EQ(installed,
              tallora::testing::sourcePath(QStringLiteral("resources/reports/cli_dom.rpt")));
    EXPECT_TRUE(QFile::exists(installed));
    QFile own(f.ctx.programDir + QStringLiteral("CLI_DOM.rpt"));
    ASSERT_TRUE(own.open(QIODevice::WriteOnly));
    own.close();
    EXPECT_EQ(reportFile(f.ctx, QStringLiteral("cli_dom.rpt")),
              f.ctx.programDir + QStringLiteral("CLI_DOM.rpt"));
}
