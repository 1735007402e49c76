#pragma once
// The pages of a report, laid out in memory before they go anywhere, so that the preview,
// the printer and a PDF file get the same pages and a fault never leaves half a document.
//
// Coordinates are dots of 1/1200 inch inside the content area (the page less its margins)
// at the layout's own scale; `scale` shrinks the content uniformly when the job's margins
// leave less width than the layout was drawn for.
#include <QColor>
#include <QFont>
#include <QImage>
#include <QPageLayout>
#include <QPointF>
#include <QRectF>
#include <QString>

#include <vector>

class QPainter;

namespace tallora::report {

inline constexpr double kDotsPerInch = 1200.0;
inline constexpr double dotsFromMm(double mm) {
    return mm / 25.4 * kDotsPerInch;
}

struct TextRun {
    QPointF baseline;  // start of the text on its baseline
    QString text;
    int font = 0;  // index into RenderedReport::fonts
    QRgb color = 0xff000000;
};

struct LineRun {
    QPointF from, to;
    double width = 0;  // dots
    QRgb color = 0xff000000;
};

struct BoxRun {
    QRectF box;
    QRgb fill = 0;  // alpha 0: none
    double border = 0;
    QRgb color = 0xff000000;
};

struct RenderedPage {
    std::vector<BoxRun> boxes;
    std::vector<LineRun> lines;
    std::vector<TextRun> texts;
};

struct RenderedReport {
    QString title;
    QPageLayout pageLayout;    // page size, orientation and the margins in use (mm)
    double scale = 1;          // content dots to page dots
    std::vector<QFont> fonts;  // pixel sizes in dots
    std::vector<RenderedPage> pages;

    int pageCount() const { return static_cast<int>(pages.size()); }
    // The page in pixels at `dpi`.
    QSize pixelSize(double dpi) const;
    // Every text of a page, in the order it was laid out (for tests and searches).
    QStringList pageTexts(int page) const;
};

// Paints page `page` on a painter whose device has `dpi` dots per inch and whose origin is
// the page's top left corner.
void paintPage(QPainter& painter, const RenderedReport& report, int page, double dpi);
// A picture of one page on white, at `dpi`.
QImage renderPageImage(const RenderedReport& report, int page, double dpi = 150);

}  // namespace tallora::report
