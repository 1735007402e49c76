#include "report_helpers.h"

#include "context/dialogs.h"
#include "context/file_tree.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "report_error.h"

#include <QFileInfo>
#include <QPrinterInfo>

#include <cstdint>
#include <limits>

namespace tallora::report {
namespace {

int as16Bit(int value) {
    return std::clamp(value, static_cast<int>(std::numeric_limits<std::int16_t>::min()),
                      static_cast<int>(std::numeric_limits<std::int16_t>::max()));
}

}  // namespace

PrintCapabilities systemPrintCapabilities() {
    return {QPrinterInfo::availablePrinterNames(), true};
}

bool Hi_Ha_Impressora(const WorkingContext& ctx, Dialogs& dialogs,
                      const PrintCapabilities& capabilities) {
    if (!capabilities.printers.isEmpty() || capabilities.pdfPrinter) return true;
    dialogs.stop(Missatge(ctx, 6640));
    return false;
}

void Neteja_Informe(ReportJob& job) {
    job.ReportFileName.clear();
    for (QString& file : job.DataFiles) file.clear();
    for (QString& formula : job.Formulas) formula.clear();
    job.SelectionFormula.clear();
}

void Marges_Informe(ReportJob& job, const WorkingContext& ctx) {
    job.MarginLeft = as16Bit(ctx.MargeEsquerre);
    job.MarginBottom = as16Bit(ctx.MargeInferior);
    job.MarginRight = as16Bit(ctx.MargeDret);
    job.MarginTop = as16Bit(ctx.MargeSuperior);
}

QString reportFile(const WorkingContext& ctx, const QString& name) {
    if (!ctx.programDir.isEmpty()) {
        const QString own = ctx.programFile(name);
        if (QFileInfo(own).isFile()) return own;
    }
    return findFileNoCase(withTrailingSlash(ctx.resourcesDir) + QStringLiteral("reports/"), name);
}

QString textFormula(const QString& name, const QString& value) {
    return name + QStringLiteral("= '") + value + u'\'';
}

void appendFormula(ReportJob& job, const QString& formula) {
    for (QString& f : job.Formulas) {
        if (f.isEmpty()) {
            f = formula;
            return;
        }
    }
    throw ReportError(QStringLiteral("no room left for the formula %1").arg(formula));
}

PrintRequest spreadsheetRequest(const QString& path) {
    const bool csv = path.endsWith(QStringLiteral(".csv"), Qt::CaseInsensitive);
    return {csv ? Destination::Csv : Destination::Xlsx, path};
}

QString spreadsheetFileName(const WorkingContext& ctx, QString name) {
    for (const QChar c : QStringLiteral("/\\:*?\"<>|")) name.remove(c);
    return name.simplified() + u'_' + ctx.Exercici + QStringLiteral(".xlsx");
}

QString savedText(const WorkingContext& ctx, const QString& path) {
    return fixedText(ctx, "Fichero guardado: %1", "Fitxer desat: %1").arg(path);
}

ReportResult runReport(const WorkingContext& ctx, Dialogs& dialogs, ReportJob& job,
                       ReportOutput* output, const PrintRequest& request,
                       const QString& windowTitle, const std::function<void(ReportJob&)>& fill) {
    // A spreadsheet needs no printer.
    if (!Destination::isSpreadsheet(request.destination) && !Hi_Ha_Impressora(ctx, dialogs))
        return {ReportResult::Status::Cancelled, {}, 0};
    Neteja_Informe(job);
    // A list orders its rows by its layout or by what `fill` says, never by the sort fields
    // another report left in the shared job.
    job.SortFields.clear();
    fill(job);
    job.WindowTitle = windowTitle;
    job.Destination = request.destination;
    job.PrintFileName = request.printFileName;
    Marges_Informe(job, ctx);
    return job.Action(ctx, dialogs, output);
}

}  // namespace tallora::report
