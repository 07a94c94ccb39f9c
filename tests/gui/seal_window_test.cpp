// The seal screen's window and the wait notices on the offscreen platform: the menu
// keys reach their commands, and the notices follow their models.

#include "app/globals.h"
#include "app/wait_notices.h"
#include "desk.h"
#include "gui/qt_platform.h"
#include "gui/seal_window.h"
#include "gui/wait_windows.h"
#include "seal/seal_screen.h"
#include "support/globals_scope.h"

#include <QApplication>
#include <QLabel>
#include <QTest>

#include <gtest/gtest.h>

namespace {

QApplication& application() { return desk::application(); }

struct KeyCase {
    QKeySequence keys;
    const char* menu;
};

}  // namespace

TEST(SealWindowKeys, EachMenuKeyReachesItsCommand)
{
    application();
    gui::QtPlatform platform({});
    sealtest::GlobalsScope globals(platform);
    seal::frmPrintシール screen(platform);
    gui::SealWindow window(platform, screen);
    QStringList reached;
    const KeyCase cases[] = {
        {QKeySequence(Qt::Key_F3), "mnDouiSet"},   {QKeySequence(Qt::Key_F4), "mnF04"},
        {QKeySequence(Qt::Key_F5), "mnMenuPrint"}, {QKeySequence(Qt::Key_F9), "mnMenuPreview"},
        {QKeySequence(Qt::Key_F12), "mnMenuExit"}, {QKeySequence(Qt::SHIFT | Qt::Key_F12), "mnMenuReturn"}};
    for (const KeyCase& c : cases) {
        auto* item = dynamic_cast<controls::MenuItem*>(screen.find(QString::fromUtf8(c.menu)));
        ASSERT_NE(item, nullptr) << c.menu;
        item->setEnabled(true);  // the kind decides some; here only the key counts
        item->Click = [&reached, &c] { reached << QString::fromUtf8(c.menu); };
    }
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    for (const KeyCase& c : cases) QTest::keySequence(&window, c.keys);
    EXPECT_EQ(reached, (QStringList{QStringLiteral("mnDouiSet"), QStringLiteral("mnF04"), QStringLiteral("mnMenuPrint"),
                                    QStringLiteral("mnMenuPreview"), QStringLiteral("mnMenuExit"),
                                    QStringLiteral("mnMenuReturn")}));
}

TEST(WaitNoticeWindow, ShowsTheChosenIconAndLaysTheTextOutFromTheModel)
{
    application();
    gui::QtPlatform platform({});
    sealtest::GlobalsScope globals(platform);
    app::frmWaitMsg notice(platform);
    notice.nIcon = 1;
    notice.laMsg.setCaption(QStringLiteral("処理が終わりました。"));
    notice.load();
    gui::WaitMsgWindow window(platform, notice);
    window.resize(400, 150);
    window.show();
    QApplication::processEvents();
    auto* text = window.findChild<QLabel*>(QStringLiteral("laMsg"));
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(text->text(), QStringLiteral("処理が終わりました。"));
    EXPECT_EQ(text->x(), notice.laMsg.left() / 15);
    EXPECT_FALSE(window.findChild<QLabel*>(QStringLiteral("imgInf(0)"))->isVisible());
    EXPECT_TRUE(window.findChild<QLabel*>(QStringLiteral("imgInf(1)"))->isVisible());
}
