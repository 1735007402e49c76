#include "interchange_header.h"

#include "context/messages.h"
#include "context/text_encoding.h"

#include <QFile>

namespace tallora::interchange {
namespace {

constexpr int kHeaderLines = 9;

QString without(QString line, const QString& prefix) {
    return line.replace(prefix, QString()).trimmed();
}

}  // namespace

QString FileHeader::originWord() const {
    return ListArchivo.size() > 2 ? ListArchivo[2].mid(18, 6) : QString();
}

QString FileHeader::version() const {
    return ListArchivo.size() > 4 ? ListArchivo[4].right(4).trimmed() : QString();
}

QString decodeLine(const QByteArray& bytes) {
    qsizetype n = bytes.size();
    while (n > 0 && (bytes[n - 1] == '\n' || bytes[n - 1] == '\r')) --n;
    return decodeWindows1252(bytes.left(n));
}

FileHeader parseHeader(const WorkingContext& ctx, const QStringList& lines) {
    FileHeader h;
    if (lines.isEmpty()) return h;
    const auto line = [&](int n) { return n <= lines.size() ? lines[n - 1] : QString(); };
    const QString inf = QStringLiteral("INF ");
    h.ListArchivo << Missatge(ctx, 6614) + without(line(1), inf)
                  << QStringLiteral("EMPRESA: ") + without(line(2), inf)
                  << QStringLiteral("ORIGEN EN: ") + without(line(3), inf)
                  << QStringLiteral("NIF: ") + without(line(4), inf)
                  << Missatge(ctx, 6615) + without(line(5), inf);
    h.content = without(line(6), QStringLiteral("CNT "));
    if (!h.isWhole()) {
        const QString dat = QStringLiteral("DAT ");
        h.customers = without(line(7), dat) == QStringLiteral("CLI");
        h.suppliers = without(line(8), dat) == QStringLiteral("PRO");
        h.chart = without(line(9), dat) == QStringLiteral("PLC");
    }
    return h;
}

FileHeader readHeader(const WorkingContext& ctx, const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return {};
    QStringList lines;
    while (lines.size() < kHeaderLines && !file.atEnd())
        lines << decodeLine(file.readLine(64 * 1024));
    return parseHeader(ctx, lines);
}

}  // namespace tallora::interchange
