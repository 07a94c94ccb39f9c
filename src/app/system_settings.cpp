#include "app/system_settings.h"

#include "app/globals.h"
#include "app/messages.h"
#include "base/conversions.h"
#include "base/files.h"
#include "base/ini_file.h"
#include "base/text_file.h"
#include "base/vb_error.h"
#include "controls/platform.h"

namespace app {

namespace {

const QString kSettingsFile = QStringLiteral("Tavrine.ini");

QString settingsPath() { return gsAppPath + QStringLiteral("\\") + kSettingsFile; }

QString folder(const QString& key)
{
    return gsAppPath + csGetSystemSetting(key, true).value_or(QString()) + QStringLiteral("\\");
}

}  // namespace

std::optional<QString> csGetSystemSetting(const QString& key, bool bWarn)
{
    const QString path = settingsPath();
    if (!base::bFileExists(path)) {
        msgBox(QStringLiteral("システム設定ファイルが見つかりません。"), controls::BoxStyle::Critical,
               kSettingsWarningTitle);
        platform().endProcess(0);
    }

    const base::TextFileRead file = base::readTextFile(path);
    if (!file.ok) throw base::VbError(file.errNumber, file.sErrMsg);

    const QString wanted = base::Trim(key);
    for (const QString& line : file.lines) {
        const qsizetype eq = line.indexOf(u'=');
        if (eq < 0) continue;
        if (base::Trim(QStringView(line).first(eq)) == wanted) return line.mid(eq + 1);
    }

    if (!bWarn) return std::nullopt;
    msgBox(QStringLiteral("システム設定ファイルに、指定の項目が見つかりません。") + QStringLiteral("\r") +
               QStringLiteral("[") + key + QStringLiteral("]"),
           controls::BoxStyle::Critical, kSettingsWarningTitle);
    return QString();
}

QString csSystemSysPath() { return folder(QStringLiteral("SYSTEM_SYS")); }
QString csSystemTmpPath() { return folder(QStringLiteral("SYSTEM_TMP")); }
QString csSystemIconPath() { return folder(QStringLiteral("SYSTEM_ICON")); }
QString csSystemDataPath() { return folder(QStringLiteral("SYSTEM_DATA")); }

QString csFormatLookup(const QString& section, const QString& key)
{
    base::clsOplIniFile ini;
    if (ini.iInit(csSystemDataPath() + QStringLiteral("帳票Format.ini")) != 0) return QString();
    return base::RTrim(base::csCutNull(ini.csGetProfileString(section, key)));
}

}  // namespace app
