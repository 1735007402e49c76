#pragma once
// Text at the edges: our files are UTF-8, files from older installations and interchange
// files are Windows-1252.
#include <QByteArray>
#include <QString>

namespace tallora {

// UTF-8 when the bytes are valid UTF-8 (a leading byte-order mark is dropped), otherwise
// Windows-1252.
QString decodeUtf8OrWindows1252(const QByteArray& bytes);
QString decodeWindows1252(const QByteArray& bytes);
// Characters outside Windows-1252 become '?'.
QByteArray encodeWindows1252(const QString& text);

}  // namespace tallora
