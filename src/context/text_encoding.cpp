#include "text_encoding.h"

#include <QStringDecoder>

#include <array>

namespace tallora {
namespace {

// 0x80..0x9F of Windows-1252; the rest of the upper half is Latin-1. Unassigned bytes map
// to the C1 control of the same value, as most converters do.
constexpr std::array<char16_t, 32> kHighControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

}  // namespace

QString decodeWindows1252(const QByteArray& bytes) {
    QString out;
    out.reserve(bytes.size());
    for (char b : bytes) {
        const auto c = static_cast<unsigned char>(b);
        out += (c >= 0x80 && c < 0xA0) ? QChar(kHighControls[c - 0x80]) : QChar(c);
    }
    return out;
}

QString decodeUtf8OrWindows1252(const QByteArray& bytes) {
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = utf8.decode(bytes);
    if (utf8.hasError()) return decodeWindows1252(bytes);
    if (text.startsWith(QChar(0xFEFF))) text.remove(0, 1);
    return text;
}

QByteArray encodeWindows1252(const QString& text) {
    QByteArray out;
    out.reserve(text.size());
    for (QChar ch : text) {
        const char16_t u = ch.unicode();
        char byte = '?';
        if (u < 0x80 || (u >= 0xA0 && u <= 0xFF)) {
            byte = static_cast<char>(u);
        } else {
            for (std::size_t i = 0; i < kHighControls.size(); ++i)
                if (kHighControls[i] == u) byte = static_cast<char>(0x80 + i);
        }
        out += byte;
    }
    return out;
}

}  // namespace tallora
