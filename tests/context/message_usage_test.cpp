// Every message the code asks for must exist in both languages: a number missing from the
// catalogue would only show up on screen, so the sources are scanned for it here.
#include "context/messages.h"

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>

#include <gtest/gtest.h>

using namespace tallora;

TEST(MessageUsage, EveryNumberInTheSourcesExistsInBothLanguages) {
    const QRegularExpression call(QStringLiteral(R"(Missatge\s*\(\s*[^,()]+,\s*(\d+)\s*\))"));
    const auto& catalogue = MessageCatalogue::builtIn();
    int calls = 0;
    QDirIterator it(QStringLiteral(TALLORA_SOURCE_DIR "/src"), {"*.cpp", "*.h"}, QDir::Files,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
        const QString source = QString::fromUtf8(file.readAll());
        for (auto m = call.globalMatch(source); m.hasNext();) {
            const int n = m.next().captured(1).toInt();
            ++calls;
            EXPECT_TRUE(catalogue.contains(20000 + n)) << "Spanish message " << n << " in " << path.toStdString();
            EXPECT_TRUE(catalogue.contains(10000 + n)) << "Catalan message " << n << " in " << path.toStdString();
        }
    }
    RecordProperty("calls", calls);
}

TEST(MessageUsage, TheScanFindsCallsAndMissingNumbers) {
    // The pattern itself must catch the forms the code writes.
    const QRegularExpression call(QStringLiteral(R"(Missatge\s*\(\s*[^,()]+,\s*(\d+)\s*\))"));
    const auto m = call.match(QStringLiteral("x = Missatge(ctx_, 6407) + Missatge( *ctx , 9 );"));
    ASSERT_TRUE(m.hasMatch());
    EXPECT_EQ(m.captured(1), QStringLiteral("6407"));
    auto all = call.globalMatch(QStringLiteral("Missatge(ctx_, 6407) + Missatge( *ctx , 9 )"));
    all.next();
    EXPECT_EQ(all.next().captured(1), QStringLiteral("9"));
    EXPECT_FALSE(MessageCatalogue::builtIn().contains(20009));
}
