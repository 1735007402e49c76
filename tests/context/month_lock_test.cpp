#include "context/month_lock.h"
#include "../shell/start_fixture.h"
#include "context/dialogs.h"
#include "context/messages.h"

using namespace tallora;
using namespace tallora::testing;
using Kind = ScriptedDialogs::Shown::Kind;

namespace {

class MonthLock : public ::testing::Test {
protected:
    MonthLock() {
        ctx.Directori = withTrailingSlash(dir.path());
        ctx.Exercici = "2026";
    }
    QString file() const { return ctx.Directori + "2026blocks.DAT"; }

    static std::array<int, 12> allBut(int openMonth) {
        std::array<int, 12> months;
        months.fill(1);
        if (openMonth) months[openMonth - 1] = 0;
        return months;
    }

    QTemporaryDir dir;
    WorkingContext ctx;
    ScriptedDialogs dialogs;
};

}  // namespace

TEST_F(MonthLock, TheFileIsTheExerciseFolderPlusYearBlocks) {
    EXPECT_EQ(blocksFile(ctx), file());
}

TEST_F(MonthLock, AMissingFileLeavesEveryMonthOpen) {
    ctx.chkmesos.fill(1);
    loadMonthLock(ctx);
    EXPECT_EQ(ctx.chkmesos, (std::array<int, 12>{}));
    for (int month = 1; month <= 12; ++month) {
        EXPECT_FALSE(Mes_Bloquejat(ctx, month));
        EXPECT_TRUE(Verifica_Mes(ctx, dialogs, month));
    }
    EXPECT_TRUE(dialogs.shown().empty());
    EXPECT_EQ(Mes_Per_Defecte(ctx), std::nullopt);
}

TEST_F(MonthLock, ElevenLockedProposeTheOpenOne) {
    for (int open = 1; open <= 12; ++open) {
        ctx.chkmesos = allBut(open);
        EXPECT_EQ(Mes_Per_Defecte(ctx), open);
    }
}

TEST_F(MonthLock, TwelveLockedProposeNoneAndRefuseEveryMonth) {
    ctx.chkmesos = allBut(0);
    EXPECT_EQ(Mes_Per_Defecte(ctx), std::nullopt);
    for (int month = 1; month <= 12; ++month) {
        dialogs.clear();
        EXPECT_FALSE(Verifica_Mes(ctx, dialogs, month)) << month;
        ASSERT_EQ(dialogs.shown().size(), 1u);
        EXPECT_EQ(dialogs.shown()[0].kind, Kind::Stop);
        EXPECT_EQ(dialogs.lastText(), Missatge(ctx, 622));
    }
}

TEST_F(MonthLock, TwoOpenMonthsProposeNone) {
    ctx.chkmesos = allBut(3);
    ctx.chkmesos[7] = 0;
    EXPECT_EQ(Mes_Per_Defecte(ctx), std::nullopt);
}

TEST_F(MonthLock, OnlyTheLockedMonthIsRefused) {
    ctx.chkmesos[4] = 1;
    EXPECT_TRUE(Mes_Bloquejat(ctx, 5));
    EXPECT_FALSE(Verifica_Mes(ctx, dialogs, 5));
    EXPECT_EQ(dialogs.lastText(), Missatge(ctx, 622));
    dialogs.clear();
    EXPECT_TRUE(Verifica_Mes(ctx, dialogs, 4));
    EXPECT_TRUE(Verifica_Mes(ctx, dialogs, 6));
    EXPECT_TRUE(dialogs.shown().empty());
    for (int outside : {0, 13, -1}) EXPECT_FALSE(Mes_Bloquejat(ctx, outside));
}

TEST_F(MonthLock, TheFileIsTwelveLinesOfZeroOrOne) {
    ctx.chkmesos = {1, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1};
    ASSERT_TRUE(saveMonthLock(ctx));
    EXPECT_EQ(readTextFile(file()).value_or(""),
              "1\r\n0\r\n0\r\n1\r\n0\r\n0\r\n0\r\n1\r\n0\r\n0\r\n0\r\n1\r\n");
    const auto lines = linesOf(file());
    ASSERT_EQ(lines.size(), 12u);
    for (std::size_t i = 0; i < 12; ++i) {
        ASSERT_EQ(lines[i].size(), 1u);
        EXPECT_EQ(lines[i][0].toNumber(), static_cast<double>(ctx.chkmesos[i]));
    }
    const auto saved = ctx.chkmesos;
    ctx.chkmesos.fill(0);
    loadMonthLock(ctx);
    EXPECT_EQ(ctx.chkmesos, saved);
    EXPECT_EQ(readMonthLock(file()), saved);
}

TEST_F(MonthLock, AShortOrDamagedFileLeavesTheRestOpen) {
    writeRaw(file(), "1\r\nx\r\n1\r\n");
    EXPECT_EQ(readMonthLock(file()), (std::array<int, 12>{1, 0, 1}));
    writeRaw(file(), "");
    EXPECT_EQ(readMonthLock(file()), (std::array<int, 12>{}));
}
