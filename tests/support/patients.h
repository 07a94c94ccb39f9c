#pragma once
// Three patients of office 1 branch 2, in kana order 佐藤 (row 1, number 2), 鈴木 (row 2,
// number 3), 山田 (row 3, number 1), on an installation whose settings file is there
// but empty.

#include "support/installation.h"

namespace sealtest {

inline void addThreePatients(const SealInstall& install)
{
    install.addPatient(1, QStringLiteral("山田 太郎"), QStringLiteral("ﾔﾏﾀﾞ ﾀﾛｳ"), QStringLiteral("'1950/11/21'"));
    install.addPatient(2, QStringLiteral("佐藤 花子"), QStringLiteral("ｻﾄｳ ﾊﾅｺ"), QStringLiteral("'1940/03/05'"));
    install.addPatient(3, QStringLiteral("鈴木 一郎"), QStringLiteral("ｽｽﾞｷ ｲﾁﾛｳ"), QStringLiteral("'1960/01/01'"));
    install.touch(QStringLiteral("DATA/印刷設定.ini"));
}

}  // namespace sealtest
