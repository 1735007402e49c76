#include "pdf_output.h"

#include "report_error.h"

#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <QSaveFile>

namespace tallora::report {
namespace {

QPageLayout fullPage(const RenderedReport& report) {
    QPageLayout layout = report.pageLayout;
    layout.setMinimumMargins(QMarginsF());
    layout.setMargins(QMarginsF());
    return layout;
}

void paintAll(QPainter& painter, QPagedPaintDevice& device, const RenderedReport& report,
              double dpi, int first, int last) {
    for (int i = first; i <= last; ++i) {
        if (i > first) device.newPage();
        paintPage(painter, report, i, dpi);
    }
}

}  // namespace

void writePdf(const RenderedReport& report, const QString& path) {
    if (path.isEmpty()) throw ReportError(QStringLiteral("no PDF file name is given"));
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        throw ReportError(
            QStringLiteral("%1: cannot be written: %2").arg(path, file.errorString()));
    {
        QPdfWriter writer(&file);
        writer.setResolution(static_cast<int>(kDotsPerInch));
        writer.setPageLayout(fullPage(report));
        writer.setTitle(report.title);
        writer.setCreator(QStringLiteral("Tallora 5"));
        QPainter painter;
        if (!painter.begin(&writer))
            throw ReportError(QStringLiteral("%1: the PDF cannot be started").arg(path));
        paintAll(painter, writer, report, kDotsPerInch, 0, report.pageCount() - 1);
        painter.end();
    }
    if (!file.commit())
        throw ReportError(
            QStringLiteral("%1: cannot be written: %2").arg(path, file.errorString()));
}

void printPages(const RenderedReport& report, QPrinter& printer) {
    printer.setFullPage(true);
    printer.setPageSize(report.pageLayout.pageSize());
    printer.setPageOrientation(report.pageLayout.orientation());
    printer.setDocName(report.title);
    QPainter painter;
    if (!painter.begin(&printer))
        throw ReportError(
            QStringLiteral("the printer %1 cannot be started").arg(printer.printerName()));
    int first = 0, last = report.pageCount() - 1;
    if (printer.printRange() == QPrinter::PageRange && printer.fromPage() > 0) {
        first = std::min(printer.fromPage(), report.pageCount()) - 1;
        last = std::clamp(printer.toPage(), first + 1, report.pageCount()) - 1;
    }
    paintAll(painter, printer, report, printer.resolution(), first, last);
    painter.end();
}

}  // namespace tallora::report
