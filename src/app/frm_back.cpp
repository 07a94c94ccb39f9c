#include "app/frm_back.h"

#include "app/globals.h"
#include "app/system_settings.h"
#include "base/conversions.h"
#include "base/files.h"

namespace app {

frmBack::frmBack(controls::Platform& platform, QString programDir)
        : Screen(QStringLiteral("frmBack"), platform), programDir_(std::move(programDir))
{
    setCaption(kSuiteTitle);
    add(ImgWall);
}

void readSiteKey()
{
    const QString baseId = csGetSystemSetting(QStringLiteral("BASEID"), false).value_or(QString());
    iKyotenCd = base::CInt(base::Mid(baseId, 1, 2));
    iKyotenEb = base::CInt(base::Mid(baseId, 3, 2));
}

// No handler of its own: a fault here is the system's to report, and ends the process.
void frmBack::Form_Load()
{
    setMousePointer(controls::Pointer::Hourglass);
    gsAppPath = base::csChangeToDir(programDir_);
    const QString wallpaper = csGetSystemSetting(QStringLiteral("WALLPAPER"), true).value_or(QString());
    const QString picture = csSystemIconPath() + wallpaper;
    readSiteKey();
    if (base::bFileExists(picture)) ImgWall.setPicturePath(picture);
    setMousePointer(controls::Pointer::Normal);
}

}  // namespace app
