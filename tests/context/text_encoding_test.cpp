#include "context/text_encoding.h"

#include <gtest/gtest.h>

using namespace tallora;

TEST(TextEncoding, Utf8IsTakenAsItIs) {
    EXPECT_EQ(decodeUtf8OrWindows1252(QStringLiteral("Plaça Ñ €").toUtf8()), QStringLiteral("Plaça Ñ €"));
    EXPECT_EQ(decodeUtf8OrWindows1252("\xEF\xBB\xBF" "abc"), QStringLiteral("abc"));
}

TEST(TextEncoding, OtherBytesAreWindows1252) {
    EXPECT_EQ(decodeUtf8OrWindows1252("Pla\xE7" "a \xD1 \x80 \x93x\x94"),
              QStringLiteral("Plaça Ñ € \u201Cx\u201D"));
}

TEST(TextEncoding, Windows1252RoundTrip) {
    const QString text = QStringLiteral("Àá ç Ñ € ´ ‘’ “” – — … ™ œ Ÿ");
    EXPECT_EQ(decodeWindows1252(encodeWindows1252(text)), text);
    EXPECT_EQ(encodeWindows1252(QStringLiteral("€")), QByteArray("\x80"));
    EXPECT_EQ(encodeWindows1252(QStringLiteral("漢")), QByteArray("?"));
}
