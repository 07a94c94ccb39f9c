// Focus and keys on a screen: menu shortcuts first, then the screen (with KeyPreview),
// then the focused control; Tab walks the focus chain.

#include "controls/buttons.h"
#include "controls/inputs.h"
#include "controls/recording_platform.h"
#include "controls/screen.h"

#include <gtest/gtest.h>

using namespace controls;

namespace {

class KeyScreen : public Screen {
public:
    explicit KeyScreen(Platform& p) : Screen(QStringLiteral("frmTest"), p)
    {
        add(txtA);
        add(btnB);
        add(txtC);
        add(mnF04);
        txtA.KeyPress = [this](int& k) { log << QStringLiteral("txtA press %1").arg(k); };
        txtA.KeyDown = [this](int& k, int) { log << QStringLiteral("txtA down %1").arg(k); };
        mnF04.Click = [this] { log << QStringLiteral("mnF04"); };
    }
    TextInput txtA{QStringLiteral("txtA")};
    Button btnB{QStringLiteral("btnB")};
    TextInput txtC{QStringLiteral("txtC")};
    MenuItem mnF04{QStringLiteral("mnF04"), QStringLiteral("検索"), QStringLiteral("F4")};
    QStringList log;
    bool swallowEnter = false;

protected:
    void Form_KeyDown(int& keyCode, int) override { log << QStringLiteral("form down %1").arg(keyCode); }
    void Form_KeyPress(int& keyAscii) override
    {
        log << QStringLiteral("form press %1").arg(keyAscii);
        if (swallowEnter) keyAscii = 0;
    }
};

// The screen with the focus in txtA.
class ScreenKeys : public ::testing::Test {
protected:
    ScreenKeys() { s.SetFocus(s.txtA); }
    RecordingPlatform p;
    KeyScreen s{p};
};

}  // namespace

TEST_F(ScreenKeys, TheScreenSeesAKeyBeforeTheControlWithKeyPreview)
{
    s.KeyPreview = true;
    s.pressKey(QStringLiteral("Enter"));
    EXPECT_EQ(s.log, (QStringList{QStringLiteral("form down 13"), QStringLiteral("txtA down 13"),
                                  QStringLiteral("form press 13"), QStringLiteral("txtA press 13")}));

    s.log.clear();
    s.swallowEnter = true;
    s.pressKey(QStringLiteral("Enter"));
    EXPECT_EQ(s.log.last(), QStringLiteral("form press 13"));
}

TEST_F(ScreenKeys, AMenuShortcutTakesTheKeyAndADisabledMenuDoesNot)
{
    s.KeyPreview = true;
    s.pressKey(QStringLiteral("F4"));
    EXPECT_EQ(s.log, QStringList{QStringLiteral("mnF04")});
    s.log.clear();
    s.mnF04.setEnabled(false);
    s.pressKey(QStringLiteral("F4"));
    EXPECT_EQ(s.log, (QStringList{QStringLiteral("form down 115"), QStringLiteral("txtA down 115")}));
    EXPECT_FALSE(s.pressKey(QStringLiteral("F13")));
}

TEST_F(ScreenKeys, TabSkipsControlsThatCannotTakeTheFocusAndWrapsAround)
{
    s.btnB.setEnabled(false);
    s.pressKey(QStringLiteral("Tab"));
    EXPECT_EQ(s.ActiveControl(), &s.txtC);
    s.pressKey(QStringLiteral("Tab"));  // the menu item is not in the chain
    EXPECT_EQ(s.ActiveControl(), &s.txtA);
    p.sendKey(QStringLiteral("{TAB}"));  // no open screen: nothing happens
    EXPECT_EQ(s.ActiveControl(), &s.txtA);
}
