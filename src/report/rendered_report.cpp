#include "rendered_report.h"

#include <QPainter>
#include <QPen>

namespace tallora::report {

QSize RenderedReport::pixelSize(double dpi) const {
    const QSizeF mm = pageLayout.fullRect(QPageLayout::Millimeter).size();
    return QSize(qRound(mm.width() / 25.4 * dpi), qRound(mm.height() / 25.4 * dpi));
}

QStringList RenderedReport::pageTexts(int page) const {
    QStringList out;
    for (const TextRun& t : pages.at(page).texts) out << t.text;
    return out;
}

void paintPage(QPainter& painter, const RenderedReport& report, int page, double dpi) {
    const RenderedPage& p = report.pages.at(page);
    const QMarginsF margins = report.pageLayout.margins(QPageLayout::Millimeter);
    painter.save();
    painter.scale(dpi / kDotsPerInch, dpi / kDotsPerInch);
    painter.translate(dotsFromMm(margins.left()), dotsFromMm(margins.top()));
    painter.scale(report.scale, report.scale);
    for (const BoxRun& b : p.boxes) {
        if (qAlpha(b.fill) != 0) painter.fillRect(b.box, QColor::fromRgba(b.fill));
        if (b.border > 0) {
            painter.setPen(QPen(QColor::fromRgba(b.color), b.border));
            painter.setBrush(Qt::NoBrush);
            painter.drawRect(b.box);
        }
    }
    for (const LineRun& l : p.lines) {
        painter.setPen(QPen(QColor::fromRgba(l.color), l.width, Qt::SolidLine, Qt::FlatCap));
        painter.drawLine(l.from, l.to);
    }
    int font = -1;
    QRgb color = 0;
    painter.setPen(QColor::fromRgba(color));
    for (const TextRun& t : p.texts) {
        if (t.font != font) {
            font = t.font;
            painter.setFont(report.fonts.at(font));
        }
        if (t.color != color) {
            color = t.color;
            painter.setPen(QColor::fromRgba(color));
        }
        painter.drawText(t.baseline, t.text);
    }
    painter.restore();
}

QImage renderPageImage(const RenderedReport& report, int page, double dpi) {
    QImage image(report.pixelSize(dpi), QImage::Format_RGB32);
    image.setDotsPerMeterX(qRound(dpi / 0.0254));
    image.setDotsPerMeterY(qRound(dpi / 0.0254));
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing |
                           QPainter::SmoothPixmapTransform);
    paintPage(painter, report, page, dpi);
    return image;
}

}  // namespace tallora::report
