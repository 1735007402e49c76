#include "qr_code.h"

#include <qrencode.h>

#include <memory>

namespace tallora::report {

std::vector<QRectF> qrModules(const QString& text, const QRectF& area) {
    const QByteArray utf8 = text.toUtf8();
    const std::unique_ptr<QRcode, decltype(&QRcode_free)> code(
        QRcode_encodeString8bit(utf8.constData(), 0, QR_ECLEVEL_M), &QRcode_free);
    std::vector<QRectF> out;
    if (!code) return out;
    const int n = code->width;
    const double module = area.width() / n;
    // A hair of overlap between neighbouring rows, so that no seam shows between them.
    const double overlap = module * 0.02;
    for (int y = 0; y < n; ++y) {
        const unsigned char* row = code->data + static_cast<std::ptrdiff_t>(y) * n;
        for (int x = 0; x < n;) {
            if (!(row[x] & 1)) {
                ++x;
                continue;
            }
            const int start = x;
            while (x < n && (row[x] & 1)) ++x;
            out.emplace_back(area.left() + start * module, area.top() + y * module,
                             (x - start) * module, module + (y + 1 < n ? overlap : 0));
        }
    }
    return out;
}

}  // namespace tallora::report
