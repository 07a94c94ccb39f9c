// The seal screen's window and the wait notices on the offscreen platform: the menu
// keys reach their commands, and the notices follow their models.

#include "app/globals.h"
#include "app/wait_notices.h"
#include "desk.h"
#include "gui/seal_window.h"
#include "gui/wait_windows.h"

namespace {

class Windows : public desk::Bench {
protected:
    sealtest::GlobalsScope globals{qt};
};
using SealWindowKeys = Windows;
using WaitNoticeWindow = Windows;

struct KeyCase {
    QKeySequence keys;
    const char* menu;
};

}  // namespace

TEST_F(SealWindowKeys, EachMenuKeyReachesItsCommand)
{
    seal::frmPrintシール screen(qt);
    gui::SealWindow window(qt, screen);
    QStringList reached, expected;
    const KeyCase cases[] = {
        {QKeySequence(Qt::Key_F3), "mnDouiSet"},   {QKeySequence(Qt::Key_F4), "mnF04"},
        {QKeySequence(Qt::Key_F5), "mnMenuPrint"}, {QKeySequence(Qt::Key_F9), "mnMenuPreview"},
        {QKeySequence(Qt::Key_F12), "mnMenuExit"}, {QKeySequence(Qt::SHIFT | Qt::Key_F12), "mnMenuReturn"}};
    for (const KeyCase& c : cases) {
        auto* item = dynamic_cast<controls::MenuItem*>(screen.find(QString::fromUtf8(c.menu)));
        ASSERT_NE(item, nullptr) << c.menu;
        item->setEnabled(true);  // the kind decides some; here only the key counts
        item->Click = [&reached, &c] { reached << QString::fromUtf8(c.menu); };
        expected << QString::fromUtf8(c.menu);
    }
    ASSERT_TRUE(desk::activate(window));
    for (const KeyCase& c : cases) QTest::keySequence(&window, c.keys);
    EXPECT_EQ(reached, expected);
}

TEST_F(WaitNoticeWindow, ShowsTheChosenIconAndLaysTheTextOutFromTheModel)
{
    app::frmWaitMsg notice(qt);
    notice.nIcon = 1;
    notice.laMsg.setCaption(QStringLiteral("処理が終わりました。"));
    notice.load();
    gui::WaitMsgWindow window(qt, notice);
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
