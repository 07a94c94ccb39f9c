#pragma once
// The connection text every unit of database work starts from: "adodb.ini" in the
// program's folder, section and key "接続情報".

#include <QString>

namespace data {

// The failure text of an empty connection text.
inline const QString kNoConnectString = QStringLiteral("接続文字列取得できません。");

// The value cut at its first NUL and right-trimmed. 0, or -1 with the reason in
// sErrMsg: the profile reader's text when the file is missing, kNoConnectString when
// the value is empty.
short iGetConnectString(QString& csConnect, QString& sErrMsg);

}  // namespace data
