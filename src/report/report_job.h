#pragma once
// A report job: what the program hands to its report engine, field for field as every book,
// listing, receipt and invoice fills it.
//
//   ReportJob job;                                       // or a job kept by the shell
//   if (!Hi_Ha_Impressora(ctx, dialogs)) return;
//   Neteja_Informe(job);
//   job.ReportFileName = reportFile(ctx, "cli_dom.rpt");
//   job.DataFiles[0] = ctx.exerciseFile("gest.mdb");
//   job.Formulas[0] = "Nom= '" + ctx.EmpresaNom + "'";
//   job.WindowTitle = Missatge(ctx, 6101);
//   job.Destination = Destination::Window;
//   Marges_Informe(job, ctx);
//   job.Action(ctx, dialogs, &output);
//
// Action reads the layout (layout_reader.h) and the rows, lays every page out in memory and
// only then sends them on, so that a fault shows one message and leaves nothing half done.
#include "context/fwd.h"
#include "report_output.h"
#include "spreadsheet.h"

#include <QString>
#include <QStringList>

#include <array>

namespace tallora::report {

// Values of ReportJob::Destination.
namespace Destination {
inline constexpr int Window = 0;   // a preview, through ReportOutput::showWindow
inline constexpr int Printer = 1;  // the print dialog and a printer, through ReportOutput
inline constexpr int File = 2;     // a PDF file at PrintFileName
inline constexpr int Xlsx = 3;     // a spreadsheet (report_sheet.h) at PrintFileName
inline constexpr int Csv = 4;      // the same sheet as CSV at PrintFileName

// Xlsx or Csv: a file, no printer, no preview.
inline bool isSpreadsheet(int destination) {
    return destination == Xlsx || destination == Csv;
}
}  // namespace Destination

struct ReportResult {
    enum class Status { Done, Cancelled, Failed };
    Status status = Status::Failed;
    QString error;  // the message shown, when Failed
    int pages = 0;
    bool ok() const { return status == Status::Done; }
};

struct ReportJob {
    static constexpr int kDataFiles = 10;
    static constexpr int kFormulas = 71;

    // Path of the layout (.rpt).
    QString ReportFileName;
    // Paths of the data files, by the index a layout names them with.
    std::array<QString, kDataFiles> DataFiles;
    // Texts "name= 'value'" (formula.h tells how they are read).
    std::array<QString, kFormulas> Formulas;
    // "+field" / "-field" (report_data.h); when empty, the layout's own order.
    QStringList SortFields;
    // Conditions that limit the rows, "field = value and ..." (report_data.h).
    QString SelectionFormula;
    QString WindowTitle;
    int Destination = Destination::Window;
    // The file of Destination::File, Xlsx and Csv; written whole or not at all.
    QString PrintFileName;
    int CopiesToPrinter = 1;
    // Page margins in millimetres, as marge.cfg holds them; 0 keeps the layout's own margin
    // of that side. Content that no longer fits the width is shrunk to fit, never cut.
    int MarginLeft = 0, MarginRight = 0, MarginTop = 0, MarginBottom = 0;

    // Runs the job. A fault (layout, data, output) is shown through `dialogs` with the stop
    // icon and comes back as Failed with its message. `output` serves the window and printer
    // destinations; without it they fail with a message.
    ReportResult Action(const WorkingContext& ctx, Dialogs& dialogs,
                        ReportOutput* output = nullptr) const;
};

// Lays the job's pages out in memory; throws ReportError (or StoreError) on any fault.
RenderedReport renderReport(const ReportJob& job, const WorkingContext& ctx);

// The job's report as one spreadsheet sheet (report_sheet.h); throws as renderReport.
Sheet reportSheet(const ReportJob& job, const WorkingContext& ctx);

}  // namespace tallora::report
