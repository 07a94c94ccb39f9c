#pragma once
// The two wait notices. No command of the program shows them at present; they exist so
// that a long job has a notice to show.

#include "controls/buttons.h"
#include "controls/screen.h"
#include "controls/static_controls.h"

#include <array>

namespace app {

// A timed notice: one of four icons, a text, an OK button. It closes itself after its
// time, or earlier on OK or when it loses the focus.
class frmWaitMsg : public controls::Screen {
public:
    explicit frmWaitMsg(controls::Platform& platform);

    controls::Label laMsg{QStringLiteral("laMsg")};
    controls::Button cmdOK{QStringLiteral("cmdOK"), QStringLiteral("OK")};
    std::array<controls::Picture, 4> imgInf{
        controls::Picture(QStringLiteral("imgInf(0)")), controls::Picture(QStringLiteral("imgInf(1)")),
        controls::Picture(QStringLiteral("imgInf(2)")), controls::Picture(QStringLiteral("imgInf(3)"))};

    // Set before the notice is shown.
    int nIcon = 0;     // which of imgInf is shown
    int nSeconds = 0;  // how long it stands

    // The window's inside, in twips; resizing lays the text out again.
    void resize(int width, int height);
    // The notice lost the focus.
    void deactivate() { Unload(); }

protected:
    void Form_Load() override;
    void Form_Activate() override;

private:
    int width_ = 4800;
    int height_ = 1800;
};

// A plain notice: "しばらくお待ちください。".
class frmMsgWait : public controls::Screen {
public:
    explicit frmMsgWait(controls::Platform& platform);

    controls::Frame Frame1{QStringLiteral("Frame1"), QStringLiteral("メッセージ")};
    controls::Picture imgWait{QStringLiteral("imgWait")};
    controls::Label laMessage{QStringLiteral("laMessage"), QStringLiteral("しばらくお待ちください。")};
};

}  // namespace app
