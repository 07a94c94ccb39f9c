#pragma once
// The background window behind the seal screen: it fixes the program's directory and
// SiteKey, and shows the wallpaper stretched over its whole inside.

#include "controls/screen.h"
#include "controls/static_controls.h"

namespace app {

inline const QString kSuiteTitle = QStringLiteral("Velmio");

class frmBack : public controls::Screen {
public:
    frmBack(controls::Platform& platform, QString programDir);

    controls::Picture ImgWall{QStringLiteral("ImgWall")};

protected:
    void Form_Load() override;

private:
    QString programDir_;
};

// Reads "BASEID" (without the missing-key warning) into iKyotenCd and iKyotenEb:
// characters 1 and 2, and 3 and 4. A missing or non-numeric value is the runtime's
// fault 13.
void readSiteKey();

}  // namespace app
