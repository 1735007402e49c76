#include "text_fitting.h"

#include <cmath>

namespace tallora::report {

int FontBook::indexOf(const FontSpec& face) {
    for (size_t i = 0; i < faces_.size(); ++i)
        if (faces_[i] == face) return static_cast<int>(i);
    QFont font(face.family);
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(face.size / 72.0 * kDotsPerInch))));
    font.setBold(face.bold);
    font.setItalic(face.italic);
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setStyleStrategy(QFont::PreferOutline);
    // A spacing of 100 % changes no advance but turns ligatures off, so that "fi" stays two
    // letters that a reader of the PDF can search and copy.
    font.setLetterSpacing(QFont::PercentageSpacing, 100);
    faces_.push_back(face);
    fonts_.push_back(font);
    metrics_.emplace_back(font);
    return static_cast<int>(faces_.size() - 1);
}

QStringList wrapLines(const QString& text, double width, const QFontMetricsF& metrics) {
    QStringList lines;
    for (const QString& paragraph : text.split(u'\n')) {
        QString line;
        for (QString word : paragraph.split(u' ', Qt::SkipEmptyParts)) {
            const QString candidate = line.isEmpty() ? word : line + u' ' + word;
            if (metrics.horizontalAdvance(candidate) <= width) {
                line = candidate;
                continue;
            }
            if (!line.isEmpty()) lines << line;
            while (word.size() > 1 && metrics.horizontalAdvance(word) > width) {
                qsizetype fit = 1;
                while (fit + 1 < word.size() &&
                       metrics.horizontalAdvance(word.left(fit + 1)) <= width)
                    ++fit;
                lines << word.left(fit);
                word = word.mid(fit);
            }
            line = word;
        }
        lines << line;
    }
    return lines;
}

double layText(const QString& text, const QRectF& box, const TextStyle& style,
               const FontBook& fonts, std::vector<TextRun>& out) {
    const QFontMetricsF& fm = fonts.metrics(style.font);
    const double lineHeight = fm.lineSpacing();
    const auto place = [&](const QString& line, double baseline) {
        if (line.isEmpty()) return;
        const double advance = fm.horizontalAdvance(line);
        double x = box.left();
        if (style.align & Qt::AlignRight)
            x = box.right() - advance;
        else if (style.align & Qt::AlignHCenter)
            x = box.left() + (box.width() - advance) / 2;
        out.push_back({QPointF(x, baseline), line, style.font, style.color});
    };
    QStringList lines;
    if (style.wrap) {
        lines = wrapLines(text, box.width(), fm);
    } else {
        QString single = text;
        single.replace(u'\n', u' ').replace(u'\t', u' ');
        if (fm.horizontalAdvance(single) > box.width())
            single = fm.elidedText(single, Qt::ElideRight, box.width());
        lines << single;
    }
    const double needed = lines.size() * lineHeight;
    const double height = std::max(box.height(), lines.size() == 1 ? fm.height() : needed);
    // A single line sits in the middle of its box; wrapped lines start at its top.
    double baseline =
        box.top() + fm.ascent() + (lines.size() == 1 ? (height - fm.height()) / 2 : 0);
    for (const QString& line : lines) {
        place(line, baseline);
        baseline += lineHeight;
    }
    return box.top() + std::max(height, needed);
}

}  // namespace tallora::report
