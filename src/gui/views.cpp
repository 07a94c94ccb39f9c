#include "gui/views.h"

#include "app/frm_back.h"
#include "app/wait_notices.h"
#include "dialogs/frm_ver.h"
#include "dialogs/staff_search.h"
#include "gui/back_window.h"
#include "gui/doui_window.h"
#include "gui/keika_window.h"
#include "gui/seal_window.h"
#include "gui/staff_search_window.h"
#include "gui/ver_window.h"
#include "gui/wait_windows.h"
#include "seal/seal_screen.h"
#include "selection/frm_doui.h"
#include "selection/frm_seal_sejutsu_keika.h"

namespace gui {

std::unique_ptr<QWidget> makeView(QtPlatform& platform, controls::Screen& screen)
{
    if (auto* back = dynamic_cast<app::frmBack*>(&screen)) return std::make_unique<BackWindow>(*back);
    if (auto* sealScreen = dynamic_cast<seal::frmPrintシール*>(&screen))
        return std::make_unique<SealWindow>(platform, *sealScreen);
    if (auto* ver = dynamic_cast<dialogs::frmVer*>(&screen)) return std::make_unique<VerWindow>(platform, *ver);
    if (auto* wait = dynamic_cast<app::frmWaitMsg*>(&screen)) return std::make_unique<WaitMsgWindow>(platform, *wait);
    if (auto* wait = dynamic_cast<app::frmMsgWait*>(&screen)) return std::make_unique<MsgWaitWindow>(platform, *wait);
    if (auto* doui = dynamic_cast<selection::frmDoui*>(&screen)) return std::make_unique<DouiWindow>(platform, *doui);
    if (auto* keika = dynamic_cast<selection::frmSeal_SejutsuKeika*>(&screen))
        return std::make_unique<KeikaWindow>(platform, *keika);
    if (auto* staff = dynamic_cast<dialogs::frm施術者検索*>(&screen))
        return std::make_unique<StaffSearchWindow>(platform, *staff);
    return nullptr;
}

}  // namespace gui
