#include "context/dialogs.h"

#include <gtest/gtest.h>

using namespace tallora;
using Answer = Dialogs::Answer;
using Kind = ScriptedDialogs::Shown::Kind;

TEST(ScriptedDialogs, AnswersInTheOrderQueued) {
    ScriptedDialogs d;
    d.setNextAnswer(Answer::No);
    d.setNextAnswer(Answer::Yes);
    d.setNextAnswer(Answer::Cancel);
    EXPECT_EQ(d.yesNo("first?"), Answer::No);
    EXPECT_EQ(d.yesNo("second?"), Answer::Yes);
    EXPECT_EQ(d.okCancel("third", "T", Dialogs::Icon::Exclamation), Answer::Cancel);
    EXPECT_EQ(d.pendingAnswers(), 0u);
    ASSERT_EQ(d.shown().size(), 3u);
    EXPECT_EQ(d.shown()[2].kind, Kind::OkCancel);
    EXPECT_EQ(d.shown()[2].icon, Dialogs::Icon::Exclamation);
    EXPECT_EQ(d.shown()[2].title, QStringLiteral("T"));
}

TEST(ScriptedDialogs, RecordsNoticesWithTheirIcons) {
    ScriptedDialogs d;
    d.information("done");
    d.stop("refused");
    ASSERT_EQ(d.shown().size(), 2u);
    EXPECT_EQ(d.shown()[0].icon, Dialogs::Icon::Information);
    EXPECT_EQ(d.shown()[1].kind, Kind::Stop);
    EXPECT_EQ(d.shown()[1].icon, Dialogs::Icon::Stop);
    EXPECT_EQ(d.lastText(), QStringLiteral("refused"));
    d.clear();
    EXPECT_TRUE(d.shown().empty());
    EXPECT_EQ(d.lastText(), QString());
}

TEST(ScriptedDialogs, AQuestionWithoutAnAnswerFailsInsteadOfBlocking) {
    ScriptedDialogs d;
    EXPECT_THROW(d.yesNo("anyone?"), std::logic_error);
    d.setNextAnswer(Answer::Ok);
    EXPECT_THROW(d.yesNo("wrong kind of answer?"), std::logic_error);
}
