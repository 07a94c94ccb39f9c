// The two report patterns and the three handler kinds, as the operator sees them.

#include "app/globals.h"
#include "app/messages.h"
#include "controls/recording_platform.h"
#include "support/globals_scope.h"

#include <gtest/gtest.h>

using namespace app;

namespace {

base::VbError mismatch() { return base::VbError::typeMismatch(); }

class HandlerKinds : public ::testing::Test {
protected:
    controls::RecordingPlatform platform;
    sealtest::GlobalsScope globals{platform};
};

}  // namespace

TEST(ReportPatterns, PatternAIsSentenceCarriageReturnNumberAndDescription)
{
    EXPECT_EQ(patternAText(QStringLiteral("データ表示時にエラーが発生しました。"), mismatch()),
              QStringLiteral("データ表示時にエラーが発生しました。\r(13) 型が一致しません。"));
}

TEST(ReportPatterns, PatternBNamesTheRoutineOnlyWhereItNamesItself)
{
    EXPECT_EQ(patternBText(mismatch()), QStringLiteral("Error:型が一致しません。"));
    EXPECT_EQ(patternBText(mismatch(), QStringLiteral("getNextRow")),
              QStringLiteral("[getNextRow]Error:型が一致しません。"));
}

TEST_F(HandlerKinds, ResumeShowsEachFaultAndRunsEveryStep)
{
    QStringList ran;
    {
        Handler h(HandlerKind::Resume, Report::patternA(QStringLiteral("「種類」選択時にエラーが発生しました。")));
        h([&] { throw mismatch(); });
        h([&] {
            ran << QStringLiteral("second");
            throw base::VbError::overflow();
        });
        h([&] { ran << QStringLiteral("third"); });
        EXPECT_TRUE(h.failed());
        EXPECT_FALSE(h.stopped());
    }
    EXPECT_EQ(ran, (QStringList{QStringLiteral("second"), QStringLiteral("third")}));
    EXPECT_EQ(platform.transcript(),
              (QStringList{
                  QStringLiteral("box 16 シール印刷|「種類」選択時にエラーが発生しました。\\r(13) 型が一致しません。"),
                  QStringLiteral(
                      "box 16 シール印刷|「種類」選択時にエラーが発生しました。\\r(6) オーバーフローしました。")}));
}

TEST_F(HandlerKinds, StopSkipsTheRestAndLeavesTheHourglass)
{
    bool later = false;
    {
        Handler h(HandlerKind::Stop, Report::patternA(QStringLiteral("データチェック時にエラーが発生しました。")),
                  {.hourglass = true});
        EXPECT_EQ(platform.pointer(), controls::Pointer::Hourglass);
        h([&] { throw mismatch(); });
        h([&] { later = true; });
        EXPECT_TRUE(h.stopped());
    }
    EXPECT_FALSE(later);
    EXPECT_EQ(platform.pointer(), controls::Pointer::Hourglass);
    EXPECT_EQ(platform.transcript().size(), 1);
}

TEST_F(HandlerKinds, ResumeAndCleanStopsRestoreThePointer)
{
    {
        Handler h(HandlerKind::Resume, Report::patternA(QStringLiteral("x")), {.hourglass = true});
        h([&] { throw mismatch(); });
    }
    EXPECT_EQ(platform.pointer(), controls::Pointer::Normal);
    {
        Handler h(HandlerKind::Stop, Report::patternA(QStringLiteral("x")), {.hourglass = true});
        h([&] {});
        h.stop();
    }
    EXPECT_EQ(platform.pointer(), controls::Pointer::Normal);
}

TEST_F(HandlerKinds, StopAndCloseMarksTheScreenForClosing)
{
    short nCloseState = 0;
    Handler h(HandlerKind::StopAndClose, Report::patternA(QStringLiteral("画面起動中にエラーが発生しました。")),
              {.closeState = &nCloseState});
    h([&] {});
    EXPECT_EQ(nCloseState, 0);
    h([&] { throw mismatch(); });
    EXPECT_EQ(nCloseState, 1);
}

TEST_F(HandlerKinds, PatternBIsAPlainBoxWithoutTitle)
{
    Handler h(HandlerKind::Stop, Report::patternB(QStringLiteral("addChk_forSPSeat")));
    h([&] { throw mismatch(); });
    EXPECT_EQ(platform.transcript(), QStringList{QStringLiteral("box 0 |[addChk_forSPSeat]Error:型が一致しません。")});
}
