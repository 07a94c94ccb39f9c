#pragma once
// The version screen: what version of the suite is installed, from "Velmio.Ver".

#include "controls/buttons.h"
#include "controls/lists.h"
#include "controls/screen.h"
#include "controls/static_controls.h"

#include <array>

namespace dialogs {

// The two values the version file gives: VERSION= and UUPDATE=, as written.
struct VersionValues {
    QString version;
    QString update;
};
// Reads the file: a token counts when it holds the key anywhere, in any case; its
// value follows the token's first "="; a later occurrence wins. A missing file gives
// empty values.
VersionValues readVersionFile(const QString& path);

class frmVer : public controls::Screen {
public:
    explicit frmVer(controls::Platform& platform);

    controls::Label laVer{QStringLiteral("laVer")};
    controls::ListBox lstVer{QStringLiteral("lstVer")};
    controls::Button btnReturn{QStringLiteral("btnReturn"), QStringLiteral("戻 る")};
    controls::MenuItem mnFunc{QStringLiteral("mnFunc"), QStringLiteral("機能(&F)")};
    controls::MenuItem mnF12{QStringLiteral("mnF12"), QStringLiteral("戻る"), QStringLiteral("F12")};

    // The caller's program number; entries bound to another program are left out.
    short nVerKind = 0;

protected:
    void Form_Load() override;
    void Form_KeyDown(int& keyCode, int shift) override;

private:
    static constexpr int kEntries = 20;
    std::array<short, kEntries> kinds_{};
    std::array<QString, kEntries> labels_;
    std::array<QString, kEntries> values_;
};

}  // namespace dialogs
