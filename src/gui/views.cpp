#include "gui/views.h"

#include "app/frm_back.h"
#include "gui/back_window.h"
#include "dialogs/frm_ver.h"
#include "gui/seal_window.h"
#include "gui/ver_window.h"
#include "seal/seal_screen.h"

namespace gui {

std::unique_ptr<QWidget> makeView(QtPlatform& platform, controls::Screen& screen)
{
    if (auto* back = dynamic_cast<app::frmBack*>(&screen)) return std::make_unique<BackWindow>(*back);
    if (auto* sealScreen = dynamic_cast<seal::frmPrintシール*>(&screen)) return std::make_unique<SealWindow>(platform, *sealScreen);
    if (auto* ver = dynamic_cast<dialogs::frmVer*>(&screen)) return std::make_unique<VerWindow>(platform, *ver);
    return nullptr;
}

}  // namespace gui
