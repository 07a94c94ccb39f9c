// The help menu of the seal screen: the version screen and the online help.

#include "seal/seal_screen.h"

#include "app/messages.h"
#include "dialogs/frm_ver.h"
#include "dialogs/online_help.h"

namespace seal {

namespace {
// The program number the version screen is given for this program.
constexpr short kVersionKind = 7;
}  // namespace

void frmPrintシール::bindHelpHandlers()
{
    mnVer.Click = [this] { mnVer_Click(); };
    mnDispHelp.Click = [this] { mnDispHelp_Click(); };
}

void frmPrintシール::mnVer_Click()
{
    dialogs::frmVer ver(platform());
    ver.nVerKind = kVersionKind;
    ver.laVer.setCaption(app::kSealTitle);
    platform().showModal(ver);
}

void frmPrintシール::mnDispHelp_Click()
{
    setMousePointer(controls::Pointer::Hourglass);
    dialogs::vDispOnlineHelp(1);
    setMousePointer(controls::Pointer::Normal);
}

}  // namespace seal
