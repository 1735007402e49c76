#pragma once
// Fonts and the fitting of texts into their boxes: measured once in dots of 1/1200 inch
// with unhinted outlines, so that every device gets the same line breaks and ellipses.
#include "layout.h"
#include "rendered_report.h"

#include <QFont>
#include <QFontMetricsF>

#include <vector>

namespace tallora::report {

class FontBook {
public:
    // The index of the font, added on first use.
    int indexOf(const FontSpec& face);
    const QFontMetricsF& metrics(int font) const { return metrics_.at(font); }
    const std::vector<QFont>& fonts() const { return fonts_; }

private:
    std::vector<FontSpec> faces_;
    std::vector<QFont> fonts_;
    std::vector<QFontMetricsF> metrics_;
};

struct TextStyle {
    int font = 0;
    QRgb color = 0xff000000;
    Qt::Alignment align = Qt::AlignLeft;
    bool wrap = false;
};

// Lays `text` in `box` (dots; a height of 0 is one line): one run, cut with an ellipsis
// when too wide, or, wrapped, one run a line. Appends the runs and gives the bottom of the
// space used, which is below the box when wrapped lines need more room.
double layText(const QString& text, const QRectF& box, const TextStyle& style,
               const FontBook& fonts, std::vector<TextRun>& out);

// The lines of `text` broken at blanks (and inside a word longer than `width`).
QStringList wrapLines(const QString& text, double width, const QFontMetricsF& metrics);

}  // namespace tallora::report
