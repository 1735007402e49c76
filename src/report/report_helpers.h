#pragma once
// The common procedures around a report job, under the names the screens call them by.
#include "context/fwd.h"
#include "report_job.h"

#include <QString>
#include <QStringList>

#include <functional>

namespace tallora::report {

// What the machine can print to. Qt's own PDF printer is always there, so a machine with no
// physical printer still prints, to a file.
struct PrintCapabilities {
    QStringList printers;  // installed printers by name
    bool pdfPrinter = true;
};
PrintCapabilities systemPrintCapabilities();

// True when something can print (a printer, or the PDF printer); otherwise message 6640
// with the stop icon and false. Every print action calls it first.
bool Hi_Ha_Impressora(const WorkingContext& ctx, Dialogs& dialogs,
                      const PrintCapabilities& capabilities = systemPrintCapabilities());

// Prepares the job for a new report: empties ReportFileName, the ten DataFiles, the 71
// Formulas and the selection. Sort fields, title, destination, copies and margins stay.
void Neteja_Informe(ReportJob& job);

// The four margins from the settings of marge.cfg (millimetres, as the working context
// holds them): left, bottom, right, top, each as a 16-bit value.
void Marges_Informe(ReportJob& job, const WorkingContext& ctx);

// The path of layout `name`: the writable program folder's copy when there is one (so that
// an installation may keep its own), else the installed one in <resources>/reports/.
QString reportFile(const WorkingContext& ctx, const QString& name);

// A text formula as a layout reads it: name= 'value'.
QString textFormula(const QString& name, const QString& value);

// Puts `formula` in the first empty place of the job's formulas; throws ReportError when all
// are taken.
void appendFormula(ReportJob& job, const QString& formula);

// Where a list goes: the window, the printer, a PDF file or a spreadsheet.
struct PrintRequest {
    int destination = Destination::Window;
    QString printFileName;  // with Destination::File, Xlsx and Csv
};

// The request that saves a list as a spreadsheet at `path`: CSV for a ".csv" file, else XLSX.
PrintRequest spreadsheetRequest(const QString& path);

// The file name a list's spreadsheet is proposed under: `name` without the characters a file
// name cannot hold, the exercise's year and ".xlsx" ("ventas_2026.xlsx").
QString spreadsheetFileName(const WorkingContext& ctx, QString name);

// What a screen tells once a file is saved: "Fichero guardado: <path>".
QString savedText(const WorkingContext& ctx, const QString& path);

// The launch every list follows: Hi_Ha_Impressora (not for a spreadsheet); Neteja_Informe; the sort
// fields emptied; `fill` (layout, data files, formulas, selection, sort); WindowTitle; Destination;
// Marges_Informe; Action. With no printer nothing runs and the result is Cancelled.
ReportResult runReport(const WorkingContext& ctx, Dialogs& dialogs, ReportJob& job,
                       ReportOutput* output, const PrintRequest& request,
                       const QString& windowTitle, const std::function<void(ReportJob&)>& fill);

}  // namespace tallora::report
