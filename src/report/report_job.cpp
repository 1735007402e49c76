#include "report_job.h"

#include "compiled_layout.h"
#include "context/dialogs.h"
#include "context/working_context.h"
#include "layout_reader.h"
#include "paginator.h"
#include "pdf_output.h"
#include "report_data.h"
#include "report_error.h"
#include "report_sheet.h"
#include "store/store_error.h"

#include <memory>
#include <optional>

namespace tallora::report {
namespace {

PageGeometry geometryOf(const Layout& layout, const ReportJob& job) {
    const auto side = [](int own, double layouts) { return own > 0 ? own : layouts; };
    const QMarginsF m(side(job.MarginLeft, layout.margins.left()),
                      side(job.MarginTop, layout.margins.top()),
                      side(job.MarginRight, layout.margins.right()),
                      side(job.MarginBottom, layout.margins.bottom()));
    PageGeometry g;
    g.pageLayout =
        QPageLayout(layout.pageSize, layout.orientation, QMarginsF(), QPageLayout::Millimeter);
    const QSizeF paper = g.pageLayout.fullRect(QPageLayout::Millimeter).size();
    const double drawnWidth = paper.width() - layout.margins.left() - layout.margins.right();
    const double width = paper.width() - m.left() - m.right();
    const double height = paper.height() - m.top() - m.bottom();
    if (width <= 0 || height <= 0 || drawnWidth <= 0)
        throw ReportError(
            QStringLiteral("%1: the margins leave no room on the page").arg(layout.path));
    g.pageLayout.setMargins(m);
    g.scale = std::min(1.0, width / drawnWidth);
    g.contentHeight = dotsFromMm(height) / g.scale;
    return g;
}

int columnOf(DataSource& source, CompiledLayout& compiled, const QString& field,
             const QString& what) {
    const int c = source.columnIndex(field);
    if (c < 0)
        throw ReportError(QStringLiteral("%1 \"%2\": \"%3\" of %4 has no such field")
                              .arg(what, field, source.name(), source.path()));
    return compiled.rowColumn(c);
}

ReportRows readRows(const Layout& layout, const ReportJob& job, DataSource& source,
                    CompiledLayout& compiled) {
    std::vector<std::pair<int, bool>> order;
    for (int column : compiled.groupColumns) order.emplace_back(column, false);
    const QStringList& sorts = job.SortFields.isEmpty() ? layout.data->order : job.SortFields;
    for (const QString& text : sorts) {
        if (text.trimmed().isEmpty()) continue;
        SortKey key;
        try {
            key = parseSortField(text);
        } catch (const std::invalid_argument& e) {
            throw ReportError(
                QStringLiteral("sort field %1").arg(QString::fromStdString(e.what())));
        }
        order.emplace_back(columnOf(source, compiled, key.field, QStringLiteral("sort field")),
                           key.descending);
    }
    std::vector<std::pair<int, Condition>> where;
    try {
        for (Condition& c : parseSelection(job.SelectionFormula)) {
            const int column =
                columnOf(source, compiled, c.field, QStringLiteral("selection: field"));
            where.emplace_back(column, std::move(c));
        }
    } catch (const std::invalid_argument& e) {
        throw ReportError(QStringLiteral("selection \"%1\": %2")
                              .arg(job.SelectionFormula, QString::fromStdString(e.what())));
    }
    // Order and conditions name the columns of the rows read; the source wants its own.
    std::vector<std::pair<int, bool>> sourceOrder;
    for (const auto& [c, d] : order) sourceOrder.emplace_back(compiled.sourceColumns[c], d);
    for (auto& [c, cond] : where) c = compiled.sourceColumns[c];
    return source.read(compiled.sourceColumns, sourceOrder, where);
}

// A job's layout read and bound to its rows: what both the pages and the sheet are made of.
struct BoundReport {
    Layout layout;
    std::optional<DataSource> source;
    FontBook fonts;
    CompiledLayout compiled;
    ReportRows rows;
};

std::unique_ptr<BoundReport> bind(const ReportJob& job) {
    if (job.ReportFileName.trimmed().isEmpty())
        throw ReportError(QStringLiteral("no report file is given"));
    auto r = std::make_unique<BoundReport>();
    r->layout = readLayout(job.ReportFileName);
    const Layout& layout = r->layout;
    if (layout.data) {
        const QString& file = job.DataFiles[layout.data->file];
        if (file.isEmpty())
            throw ReportError(
                QStringLiteral("%1:%2: the layout reads DataFiles(%3), which the job leaves empty")
                    .arg(layout.path)
                    .arg(layout.data->line)
                    .arg(layout.data->file));
        r->source.emplace(file, layout.data->source);
        for (const JoinRule& j : layout.joins) {
            try {
                r->source->join(job.DataFiles[j.file], j.source, j.key, j.field, j.as);
            } catch (const ReportError& e) {
                throw ReportError(
                    QStringLiteral("%1:%2: %3").arg(layout.path).arg(j.line).arg(e.message()));
            }
        }
    }
    const FormulaSet formulas(job.Formulas);
    r->compiled = compileLayout(layout, r->source ? &*r->source : nullptr, formulas, r->fonts);
    if (r->source) r->rows = readRows(layout, job, *r->source, r->compiled);
    return r;
}

}  // namespace

RenderedReport renderReport(const ReportJob& job, const WorkingContext& ctx) {
    const auto bound = bind(job);
    const PageGeometry geometry = geometryOf(bound->layout, job);
    RenderedReport report =
        paginate(bound->compiled, bound->rows, geometry, bound->fonts, ctx, bound->layout.path);
    report.title = job.WindowTitle;
    return report;
}

Sheet reportSheet(const ReportJob& job, const WorkingContext& ctx) {
    const auto bound = bind(job);
    return tabulate(bound->compiled, bound->rows, ctx, job.WindowTitle);
}

ReportResult ReportJob::Action(const WorkingContext& ctx, Dialogs& dialogs,
                               ReportOutput* output) const {
    ReportResult result;
    try {
        if (Destination < Destination::Window || Destination > Destination::Csv)
            throw ReportError(QStringLiteral("unknown destination %1").arg(Destination));
        if (Destination::isSpreadsheet(Destination)) {
            const Sheet sheet = reportSheet(*this, ctx);
            const QString error = Destination == Destination::Xlsx
                                      ? writeXlsx(PrintFileName, {sheet})
                                      : writeCsv(PrintFileName, sheet, ctx.decimalMark());
            if (!error.isEmpty())
                throw ReportError(QStringLiteral("%1: %2").arg(PrintFileName, error));
            result.status = ReportResult::Status::Done;
            return result;
        }
        if (Destination != Destination::File && !output)
            throw ReportError(
                QStringLiteral("there is no window or printer to send the report to"));
        auto report = std::make_shared<RenderedReport>(renderReport(*this, ctx));
        result.pages = report->pageCount();
        result.status = ReportResult::Status::Done;
        if (Destination == Destination::File)
            writePdf(*report, PrintFileName);
        else if (Destination == Destination::Window)
            output->showWindow(std::move(report));
        else if (!output->printWithDialog(*report, std::max(1, CopiesToPrinter)))
            result.status = ReportResult::Status::Cancelled;
    } catch (const ReportError& e) {
        result.error = e.message();
    } catch (const store::StoreError& e) {
        result.error = e.message();
    } catch (const std::exception& e) {
        result.error = QString::fromStdString(e.what());
    }
    if (!result.error.isEmpty()) {
        result.status = ReportResult::Status::Failed;
        dialogs.stop(result.error, WindowTitle);
    }
    return result;
}

}  // namespace tallora::report
