#include "data/adodb_ini.h"

#include "app/globals.h"
#include "base/conversions.h"
#include "base/ini_file.h"

namespace data {

short iGetConnectString(QString& csConnect, QString& sErrMsg)
{
    const QString section = QStringLiteral("接続情報");
    base::clsOplIniFile ini;
    if (ini.iInit(app::gsAppPath + QStringLiteral("\\adodb.ini")) != 0) {
        sErrMsg = ini.csErrorText();
        return -1;
    }
    csConnect = base::RTrim(base::csCutNull(ini.csGetProfileString(section, section)));
    if (csConnect.isEmpty()) {
        sErrMsg = kNoConnectString;
        return -1;
    }
    return 0;
}

}  // namespace data
