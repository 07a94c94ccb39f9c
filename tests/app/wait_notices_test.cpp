// The timed wait notice: it ends by its clock, or earlier by OK or by losing the focus.

#include "app/wait_notices.h"
#include "controls/recording_platform.h"

#include <gtest/gtest.h>

using namespace app;

TEST(WaitNotice, ClosesItselfWhenItsTimeIsUp)
{
    controls::RecordingPlatform p;
    frmWaitMsg w(p);
    w.nSeconds = 3;
    w.nIcon = 2;
    const QDateTime start = p.now();
    p.showModal(w);
    EXPECT_TRUE(w.isUnloaded());
    EXPECT_GE(start.secsTo(p.now()), 3);
    EXPECT_TRUE(w.imgInf[2].visible());
    EXPECT_FALSE(w.imgInf[0].visible());
    EXPECT_EQ(p.transcript(),
              (QStringList{QStringLiteral("screen open frmWaitMsg"), QStringLiteral("screen close frmWaitMsg")}));
}

TEST(WaitNotice, OkEndsTheWaitEarly)
{
    controls::RecordingPlatform p;
    frmWaitMsg w(p);
    w.nSeconds = 60;
    w.load();
    w.cmdOK.click();
    const QDateTime before = p.now();
    w.activate();
    EXPECT_TRUE(w.isUnloaded());
    EXPECT_EQ(before, p.now());
}

TEST(WaitNotice, TheTextIsCentredBesideTheIconAndAboveTheButton)
{
    controls::RecordingPlatform p;
    frmWaitMsg w(p);
    w.resize(6000, 2400);
    EXPECT_EQ(w.laMsg.left() - 600, 6000 - (w.laMsg.left() + w.laMsg.width()));
    EXPECT_EQ(w.laMsg.top(), w.cmdOK.top() - (w.laMsg.top() + w.laMsg.height()));
}
