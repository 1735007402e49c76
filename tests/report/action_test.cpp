// Action: destinations, and faults that show one clear message and leave nothing behind.
#include "context/dialogs.h"
#include "report/report_job.h"
#include "report_fixture.h"

#include <QDirIterator>

#include <gtest/gtest.h>

using namespace tallora;
using namespace tallora::report;
using tallora::testing::ReportFixture;
using tallora::testing::sourcePath;

namespace {

// Notes what reaches the window and printer destinations.
class RecordingOutput : public ReportOutput {
public:
    void showWindow(std::shared_ptr<const RenderedReport> report) override {
        shown = std::move(report);
    }
    bool printWithDialog(const RenderedReport& report, int c) override {
        printedPages = report.pageCount();
        copies = c;
        return acceptPrint;
    }
    std::shared_ptr<const RenderedReport> shown;
    int printedPages = 0;
    int copies = 0;
    bool acceptPrint = true;
};

class ActionTest : public ::testing::Test {
protected:
    ActionTest() {
        ReportFixture::loadRows(
            f.gest(), QStringLiteral("Clients"),
            sourcePath(QStringLiteral("tests/data/reports/listings/cli_dom_esp/clients.tsv")));
        out.setPath(f.file(QStringLiteral("out")));
        QDir().mkpath(out.path());
    }
    ReportJob listing() const {
        ReportJob j;
        j.ReportFileName = sourcePath(QStringLiteral("resources/reports/cli_dom.rpt"));
        j.DataFiles[0] = f.gest();
        j.Formulas[0] = QStringLiteral("Nom= 'Comercial Brenwick S.L.'");
        j.WindowTitle = QStringLiteral("CLIENTES");
        j.Destination = Destination::File;
        j.PrintFileName = out.filePath(QStringLiteral("listado.pdf"));
        return j;
    }
    // The job fails with `error`, shows it once with the stop icon and leaves the output
    // folder as it was.
    void expectFailure(const ReportJob& j, const QString& error) {
        const QStringList before = out.entryList(QDir::Files | QDir::Hidden);
        dialogs.clear();
        const ReportResult r = j.Action(f.ctx, dialogs);
        EXPECT_EQ(r.status, ReportResult::Status::Failed);
        EXPECT_EQ(r.error, error);
        ASSERT_EQ(dialogs.shown().size(), 1u);
        EXPECT_EQ(dialogs.shown()[0].kind, ScriptedDialogs::Shown::Kind::Stop);
        EXPECT_EQ(dialogs.shown()[0].text, error);
        EXPECT_EQ(out.entryList(QDir::Files | QDir::Hidden), before);
    }

    ReportFixture f;
    ScriptedDialogs dialogs;
    QDir out;
};

}  // namespace

TEST_F(ActionTest, BrokenLayoutsNameTheFileAndTheLineOrField) {
    int cases = 0;
    QDirIterator it(sourcePath(QStringLiteral("tests/data/reports/errors")),
                    QDir::Dirs | QDir::NoDotAndDotDot);
    while (it.hasNext()) {
        const QString folder = it.next();
        SCOPED_TRACE(folder.toStdString());
        ReportJob j = listing();
        j.ReportFileName = folder + QStringLiteral("/layout.rpt");
        const auto expected = readTextFile(folder + QStringLiteral("/error.txt"));
        ASSERT_TRUE(expected.has_value());
        QString error = expected->trimmed();
        error.replace(QStringLiteral("{layout}"), j.ReportFileName)
            .replace(QStringLiteral("{data}"), f.gest());
        expectFailure(j, error);
        ++cases;
    }
    EXPECT_GE(cases, 15);
}

TEST_F(ActionTest, AMissingLayoutOrDataFileIsNamed) {
    ReportJob j = listing();
    j.ReportFileName = f.file(QStringLiteral("no_such.rpt"));
    expectFailure(j, j.ReportFileName + QStringLiteral(": report layout not found"));
    j = listing();
    j.DataFiles[0] = f.file(QStringLiteral("2025/gest.mdb"));
    expectFailure(j, j.DataFiles[0] + QStringLiteral(": data file not found"));
    j = listing();
    j.ReportFileName.clear();
    expectFailure(j, QStringLiteral("no report file is given"));
}

TEST_F(ActionTest, SortFieldsAndSelectionsThatDoNotReadAreNamed) {
    ReportJob j = listing();
    j.SortFields = {QStringLiteral("+{Clients.codigo}")};
    expectFailure(
        j, QStringLiteral("sort field \"Clients.codigo\": \"Clients\" of %1 has no such field")
               .arg(f.gest()));
    j = listing();
    j.SelectionFormula = QStringLiteral("{Clients.poblacion} = 'Girona'");
    expectFailure(j,
                  QStringLiteral(
                      "selection: field \"Clients.poblacion\": \"Clients\" of %1 has no such field")
                      .arg(f.gest()));
    j.SelectionFormula = QStringLiteral("poblacio = 'Girona' or client = 3");
    expectFailure(j, QStringLiteral("selection \"poblacio = 'Girona' or client = 3\": \"and\" is "
                                    "expected at \"or client = 3\""));
    j.SelectionFormula = QStringLiteral("poblacio = 'Girona");
    expectFailure(
        j, QStringLiteral("selection \"poblacio = 'Girona\": a quoted text has no closing quote"));
}

TEST_F(ActionTest, AFailedJobLeavesAnEarlierFileUntouched) {
    QFile earlier(out.filePath(QStringLiteral("listado.pdf")));
    ASSERT_TRUE(earlier.open(QIODevice::WriteOnly));
    earlier.write("an earlier listing");
    earlier.close();
    ReportJob j = listing();
    j.ReportFileName =
        sourcePath(QStringLiteral("tests/data/reports/errors/unknown_field/layout.rpt"));
    EXPECT_FALSE(j.Action(f.ctx, dialogs).ok());
    ASSERT_TRUE(earlier.open(QIODevice::ReadOnly));
    EXPECT_EQ(earlier.readAll(), QByteArray("an earlier listing"));
    earlier.close();
    EXPECT_EQ(out.entryList(QDir::Files | QDir::Hidden),
              QStringList{QStringLiteral("listado.pdf")});
    // A good run replaces it whole.
    EXPECT_TRUE(listing().Action(f.ctx, dialogs).ok());
    EXPECT_EQ(tallora::testing::pdfPages(out.filePath(QStringLiteral("listado.pdf"))).size(), 2);
}

TEST_F(ActionTest, APdfThatCannotBeWrittenIsNamed) {
    ReportJob j = listing();
    j.PrintFileName = f.file(QStringLiteral("missing/folder/listado.pdf"));
    dialogs.clear();
    const ReportResult r = j.Action(f.ctx, dialogs);
    EXPECT_EQ(r.status, ReportResult::Status::Failed);
    EXPECT_TRUE(r.error.startsWith(j.PrintFileName + QStringLiteral(": cannot be written")))
        << r.error.toStdString();
    EXPECT_FALSE(QFile::exists(j.PrintFileName));
    j.PrintFileName.clear();
    expectFailure(j, QStringLiteral("no PDF file name is given"));
}

TEST_F(ActionTest, TheFileDestinationWritesEveryPage) {
    const ReportJob j = listing();
    const ReportResult r = j.Action(f.ctx, dialogs);
    ASSERT_TRUE(r.ok()) << r.error.toStdString();
    EXPECT_EQ(r.pages, 2);
    EXPECT_TRUE(dialogs.shown().empty());
    EXPECT_EQ(tallora::testing::pdfPages(j.PrintFileName).size(), 2);
}

TEST_F(ActionTest, WindowAndPrinterGoThroughTheOutput) {
    ReportJob j = listing();
    RecordingOutput output;
    j.Destination = Destination::Window;
    EXPECT_TRUE(j.Action(f.ctx, dialogs, &output).ok());
    ASSERT_TRUE(output.shown);
    EXPECT_EQ(output.shown->pageCount(), 2);
    EXPECT_EQ(output.shown->title, QStringLiteral("CLIENTES"));
    j.Destination = Destination::Printer;
    j.CopiesToPrinter = 3;
    EXPECT_TRUE(j.Action(f.ctx, dialogs, &output).ok());
    EXPECT_EQ(output.printedPages, 2);
    EXPECT_EQ(output.copies, 3);
    j.CopiesToPrinter = 0;
    output.acceptPrint = false;
    EXPECT_EQ(j.Action(f.ctx, dialogs, &output).status, ReportResult::Status::Cancelled);
    EXPECT_EQ(output.copies, 1);
    EXPECT_TRUE(dialogs.shown().empty());
    expectFailure(j, QStringLiteral("there is no window or printer to send the report to"));
    j.Destination = 7;
    expectFailure(j, QStringLiteral("unknown destination 7"));
}
