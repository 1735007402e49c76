#include "context/notation.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace tallora;
using Kind = NotationItem::Kind;

TEST(NotationWriter, QuotesTextHashesBooleansAndLeavesNumbersBare) {
    const QString out = NotationWriter()
                            .text("Bar Pepe")
                            .boolean(true)
                            .boolean(false)
                            .number(std::int64_t{-12})
                            .number(21.5)
                            .endLine()
                            .text("")
                            .result();
    EXPECT_EQ(out, QStringLiteral("\"Bar Pepe\",#TRUE#,#FALSE#,-12,21.5\r\n\"\"\r\n"));
}

TEST(NotationWriter, DoublesInnerQuotes) {
    EXPECT_EQ(NotationWriter().text("Bar \"El Sol\"").result(),
              QStringLiteral("\"Bar \"\"El Sol\"\"\"\r\n"));
}

TEST(NotationReader, ReadsEachKindOfItem) {
    NotationReader r(QStringLiteral("\"a, b\",#TRUE#, 12.5 ,#FALSE#\r\n\"x\"\n"));
    auto i = r.next();
    ASSERT_TRUE(i);
    EXPECT_EQ(i->kind, Kind::Quoted);
    EXPECT_EQ(i->text, QStringLiteral("a, b"));
    i = r.next();
    EXPECT_EQ(i->kind, Kind::Hashed);
    EXPECT_EQ(i->toBool(), true);
    i = r.next();
    EXPECT_EQ(i->kind, Kind::Bare);
    EXPECT_EQ(i->text, QStringLiteral("12.5"));
    EXPECT_EQ(i->toNumber(), 12.5);
    EXPECT_EQ(r.next()->toBool(), false);
    EXPECT_EQ(r.next()->text, QStringLiteral("x"));
    EXPECT_FALSE(r.next().has_value());
    EXPECT_TRUE(r.atEnd());
    EXPECT_EQ(r.nextText(), QString()) << "reading past the end leaves an empty text";
}

TEST(NotationReader, LineBreaksBetweenItemsDoNotMatter) {
    const QStringList expected{"2024", "Euros", "1", "21"};
    for (const QString& content :
         {QStringLiteral("\"2024\",\"Euros\",1,\"21\"\r\n"), QStringLiteral("\"2024\"\r\n\"Euros\"\n1\r\n\"21\""),
          QStringLiteral("\"2024\",\"Euros\"\r\n\r\n  1 ,\r\n\"21\"\r\n")}) {
        NotationReader r(content);
        QStringList got;
        while (auto item = r.next()) got << item->text;
        EXPECT_EQ(got, expected) << content.toStdString();
    }
}

TEST(NotationReader, EmptyItemsBetweenCommas) {
    NotationReader r(QStringLiteral("\"a\",,\"b\""));
    EXPECT_EQ(r.nextText(), QStringLiteral("a"));
    const auto empty = r.next();
    ASSERT_TRUE(empty);
    EXPECT_EQ(empty->kind, Kind::Bare);
    EXPECT_EQ(empty->text, QString());
    EXPECT_EQ(r.nextText(), QStringLiteral("b"));
}

TEST(NotationReader, DoubledQuotesReadAsOne) {
    NotationReader r(QStringLiteral("\"Bar \"\"El Sol\"\"\",\"\""));
    EXPECT_EQ(r.nextText(), QStringLiteral("Bar \"El Sol\""));
    EXPECT_EQ(r.nextText(), QString());
}

TEST(NotationReader, TextMaySpanLines) {
    NotationReader r(QStringLiteral("\"first\r\nsecond\",\"next\""));
    EXPECT_EQ(r.nextText(), QStringLiteral("first\r\nsecond"));
    EXPECT_EQ(r.nextText(), QStringLiteral("next"));
}

TEST(NotationReader, MissingClosingQuoteCostsOnlyItsLine) {
    NotationReader r(QStringLiteral("\"Bar Pepe\r\n\"Calle Mayor\r\n"));
    // The quote that would close the first text is the second line's opening quote: the
    // first text runs to it, the rest of that line is dropped.
    EXPECT_EQ(r.nextText(), QStringLiteral("Bar Pepe\r\n"));
    EXPECT_TRUE(r.atEnd());

    NotationReader lone(QStringLiteral("\"ok\"\r\n\"broken text\r\n12\r\n"));
    EXPECT_EQ(lone.nextText(), QStringLiteral("ok"));
    const auto broken = lone.next();
    ASSERT_TRUE(broken);
    EXPECT_TRUE(broken->unterminated);
    EXPECT_EQ(broken->text, QStringLiteral("broken text"));
    EXPECT_EQ(lone.nextText(), QStringLiteral("12"));
    EXPECT_FALSE(lone.next().has_value());
}

TEST(NotationReader, StrayCharactersAfterAQuoteAreDropped) {
    NotationReader r(QStringLiteral("\"a\"xyz,\"b\""));
    EXPECT_EQ(r.nextText(), QStringLiteral("a"));
    EXPECT_EQ(r.nextText(), QStringLiteral("b"));
}

TEST(NotationReader, UnterminatedHashIsMarked) {
    NotationReader r(QStringLiteral("#TRUE\r\n\"x\""));
    const auto item = r.next();
    EXPECT_TRUE(item->unterminated);
    EXPECT_EQ(item->toBool(), true);
    EXPECT_EQ(r.nextText(), QStringLiteral("x"));
}

TEST(NotationItem, BooleansFromEveryForm) {
    auto boolOf = [](const QString& content) { return NotationReader(content).next()->toBool(); };
    EXPECT_EQ(boolOf("#TRUE#"), true);
    EXPECT_EQ(boolOf("#FALSE#"), false);
    EXPECT_EQ(boolOf("\"True\""), true);
    EXPECT_EQ(boolOf("\"Falso\""), std::nullopt);
    EXPECT_EQ(boolOf("-1"), true);
    EXPECT_EQ(boolOf("0"), false);
}

TEST(NotationItem, NumbersWithEitherMark) {
    auto numberOf = [](const QString& content) { return NotationReader(content).next()->toNumber(); };
    EXPECT_EQ(numberOf("\"21,5\""), 21.5);
    EXPECT_EQ(numberOf("21.5"), 21.5);
    EXPECT_EQ(numberOf("\"abc\""), std::nullopt);
    EXPECT_EQ(numberOf("\"\""), std::nullopt);
}

TEST(NotationRoundTrip, WhatIsWrittenIsReadBack) {
    const QStringList texts{"", "plain", "with, comma", "with \"quotes\"", "Ñandú, S.L.", "  blanks  ",
                            "d\u00B4Or"};
    NotationWriter w;
    for (const QString& t : texts) w.text(t).boolean(t.size() % 2 == 0).endLine();
    w.number(std::int64_t{42}).number(-0.25);
    NotationReader r(w.result());
    for (const QString& t : texts) {
        EXPECT_EQ(r.nextText(), t);
        EXPECT_EQ(r.next()->toBool(), t.size() % 2 == 0);
    }
    EXPECT_EQ(r.next()->toNumber(), 42.0);
    EXPECT_EQ(r.next()->toNumber(), -0.25);
    EXPECT_TRUE(r.atEnd());
}

TEST(SplitLines, AllLineEndings) {
    EXPECT_EQ(splitLines("a\r\nb\nc\rd\r\n"), (QStringList{"a", "b", "c", "d"}));
    EXPECT_EQ(splitLines(""), QStringList{});
    EXPECT_EQ(splitLines("a\n\nb"), (QStringList{"a", "", "b"}));
}

TEST(TextFiles, WriteReadAppendAndMissing) {
    QTemporaryDir dir;
    const QString path = dir.filePath("list.lst");
    EXPECT_FALSE(readTextFile(path).has_value());
    ASSERT_TRUE(writeTextFile(path, "uno\r\n"));
    ASSERT_TRUE(appendTextFile(path, "dos ñ\r\n"));
    EXPECT_EQ(readTextFile(path), QStringLiteral("uno\r\ndos ñ\r\n"));
    ASSERT_TRUE(writeTextFile(path, "tres"));
    EXPECT_EQ(readTextFile(path), QStringLiteral("tres"));
}

TEST(TextFiles, AFailedWriteLeavesTheOldFile) {
    QTemporaryDir dir;
    const QString path = dir.filePath("nowhere/list.lst");
    QString error;
    EXPECT_FALSE(writeTextFile(path, "x", &error));
    EXPECT_FALSE(error.isEmpty());
}

TEST(TextFiles, WindowsLatinFilesAreRead) {
    QTemporaryDir dir;
    const QString path = dir.filePath("old.dat");
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write("\"Ca\xF1" "ada, S.L.\",\"Pla\xE7" "a \x80\"\r\n");
    f.close();
    NotationReader r(*readTextFile(path));
    EXPECT_EQ(r.nextText(), QStringLiteral("Cañada, S.L."));
    EXPECT_EQ(r.nextText(), QStringLiteral("Plaça €"));
}
