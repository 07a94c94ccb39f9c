#pragma once
// The system settings file "Tavrine.ini" in the program's directory, the folders it
// names, and the report form names of "帳票Format.ini".

#include <QString>

#include <optional>

namespace app {

// The value of key in "Tavrine.ini", read from the file at every call: everything
// after the first "=" of the first line whose text before that "=", trimmed of
// blanks, equals the key (trimmed too), with case. The value is not trimmed.
//
// A missing file shows "システム設定ファイルが見つかりません。" and ends the process.
// A missing key with bWarn shows the key in a warning box and gives empty text.
// A missing key without bWarn gives nothing (std::nullopt): the original's empty
// result, which its callers then convert. Callers convert value_or(QString()), so a
// number conversion (base::CInt) raises 13 as it did, and base::Val gives 0.
// A file that exists but cannot be read raises the runtime's fault (base::VbError).
std::optional<QString> csGetSystemSetting(const QString& key, bool bWarn);

// gsAppPath + the value + "\" of "SYSTEM_SYS", "SYSTEM_TMP", "SYSTEM_ICON",
// "SYSTEM_DATA", each warning when the key is missing. The value is not checked: a
// correct one starts with "\" and does not end with one.
QString csSystemSysPath();
QString csSystemTmpPath();
QString csSystemIconPath();
QString csSystemDataPath();

// The value of section/key in "帳票Format.ini" of the data folder, cut at the first
// NUL and right-trimmed; empty text when the file or the key is missing.
QString csFormatLookup(const QString& section, const QString& key);

}  // namespace app
