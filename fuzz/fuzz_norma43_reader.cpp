// libFuzzer target for the reader of Norma 43 bank statements, on any bytes, in each of the
// encodings. A file that does not hold is an expected refusal (N43Error); anything else that
// escapes, and any crash or hang, is a defect.
#include "banking/norma43.h"
#include "context/working_context.h"

#include <QByteArray>

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const tallora::WorkingContext ctx;
    const QByteArray bytes =
        QByteArray::fromRawData(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    using tallora::banking::N43Encoding;
    for (const N43Encoding e : {N43Encoding::Detect, N43Encoding::Cp850, N43Encoding::Latin1}) {
        try {
            (void)tallora::banking::readNorma43(ctx, bytes, e);
        } catch (const tallora::banking::N43Error&) {
        }
    }
    return 0;
}
