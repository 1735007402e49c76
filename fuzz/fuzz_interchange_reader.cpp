// libFuzzer target for the reader of interchange files: the header and every data line, as
// the import takes them apart, on any bytes. A field its column cannot take is an expected
// refusal; anything else that escapes, and any crash or hang, is a defect.
#include "context/working_context.h"
#include "interchange/interchange_header.h"
#include "interchange/interchange_record.h"

#include <QByteArray>
#include <QList>
#include <QStringList>

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const tallora::WorkingContext ctx;
    const QList<QByteArray> lines =
        QByteArray::fromRawData(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size))
            .split('\n');
    QStringList head;
    for (qsizetype i = 0; i < lines.size() && i < 9; ++i)
        head << tallora::interchange::decodeLine(lines[i]);
    const tallora::interchange::FileHeader header = tallora::interchange::parseHeader(ctx, head);
    (void)header.originWord();
    (void)header.version();
    // Both modes and both treasury settings read a line differently.
    const bool partial = !header.isWhole();
    const bool treasury = size % 2 == 0;
    tallora::interchange::RecordReader reader(partial, treasury);
    for (const QByteArray& bytes : lines) {
        try {
            (void)reader.read(tallora::interchange::decodeLine(bytes));
        } catch (const tallora::interchange::ValueError&) {
        }
    }
    return 0;
}
