#pragma once
// Profile files ("[section]" headers, "key=value" lines) read and written the way the
// Windows profile functions do, in CP932. Other programs of the suite keep their own
// sections in the same files, so a write changes the one line it is about and leaves
// every other byte as it was.

#include <QString>
#include <QtGlobal>

namespace base {

// The text up to the first NUL character; the whole text if it has none.
QString csCutNull(const QString& text);

class clsOplIniFile {
public:
    // Characters in the buffer csGetProfileString hands back.
    static constexpr int kBufferChars = 256;

    // Text of the last failure of iInit.
    QString csErrorText() const { return sErrMsg; }

    // Binds the object to a file: 0, or -1 with csErrorText when the name is empty or
    // the file does not exist. The name is kept even then, so that a later write
    // creates the file.
    short iInit(const QString& fileName);

    // GetPrivateProfileInt: the leading decimal number of the value, 0 when the file,
    // the section or the key is missing or the value does not start with a number.
    qint32 nGetProfileLong(const QString& section, const QString& key) const;

    // GetPrivateProfileString into a buffer of 256 characters: the value (blanks
    // around it and one pair of enclosing quotes removed) followed by NULs up to the
    // buffer's size in CP932 bytes; NULs alone when the key is missing. A value of 256
    // bytes or more keeps its first 255 bytes, never half a double-byte character.
    QString csGetProfileString(const QString& section, const QString& key) const;

    // WritePrivateProfileString: creates the file, the section or the key as needed
    // and replaces the file atomically. 1 on success, 0 when the file could not be
    // read or written (the old file then stays untouched).
    short iWriteProfileString(const QString& section, const QString& key, const QString& value);

private:
    QString sFileName;
    QString sErrMsg;
};

}  // namespace base
