#pragma once
// QR codes for reports: the symbol of a text as dark rectangles, which the pages draw as
// vector boxes, so that a printed code is as sharp as the printer allows.
#include <QRectF>
#include <QString>

#include <vector>

namespace tallora::report {

// The dark modules of the QR symbol of `text` (UTF-8, error correction level M) laid over
// `area`, a square, without the quiet zone: the runs of each row merged into one rectangle.
// Empty when the text cannot be encoded (too long for a symbol).
std::vector<QRectF> qrModules(const QString& text, const QRectF& area);

}  // namespace tallora::report
