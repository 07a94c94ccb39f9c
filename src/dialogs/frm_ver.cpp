#include "dialogs/frm_ver.h"

#include "app/globals.h"
#include "app/messages.h"
#include "dialogs/token_reader.h"

namespace dialogs {

VersionValues readVersionFile(const QString& path)
{
    VersionValues v;
    const Tokens file = readTokens(path);
    for (const QString& token : file.tokens) {
        const QString upper = token.toUpper();
        const qsizetype eq = token.indexOf(u'=');
        if (upper.contains(QLatin1String("VERSION="))) v.version = token.mid(eq + 1);
        if (upper.contains(QLatin1String("UUPDATE="))) v.update = token.mid(eq + 1);
    }
    return v;
}

frmVer::frmVer(controls::Platform& platform) : Screen(QStringLiteral("frmVer"), platform)
{
    setCaption(QStringLiteral("System Version."));
    KeyPreview = true;
    add(laVer);
    add(lstVer);
    add(btnReturn);
    add(mnFunc);
    add(mnF12);
    btnReturn.Click = [this] { Unload(); };
    mnF12.Click = [this] { Unload(); };
}

void frmVer::Form_Load()
{
    const VersionValues v = readVersionFile(app::gsAppPath + QStringLiteral("\\Velmio.ver"));
    values_[0] = v.version;
    values_[1] = v.update;
    for (int i = 0; i < kEntries; ++i) {
        const auto n = static_cast<size_t>(i);
        if (values_[n].isEmpty()) continue;
        if (nVerKind != 0 && kinds_[n] != nVerKind && kinds_[n] != 0) continue;
        lstVer.AddItem(values_[n] + QStringLiteral(": ") + labels_[n]);
    }
}

void frmVer::Form_KeyDown(int& keyCode, int)
{
    try {
        if (keyCode == controls::Key::F1 + 11) Unload();
    } catch (const base::VbError& fault) {
        app::msgBox(
            QStringLiteral("フォームKeyDown()でエラー\r\n%1\r\n%2").arg(fault.number()).arg(fault.description()),
            controls::BoxStyle::Critical, QString());
    }
}

}  // namespace dialogs
