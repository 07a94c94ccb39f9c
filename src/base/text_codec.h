#pragma once
// The one way in and out of the original's text files: CP932 (Shift_JIS with the
// Windows extensions) with CR LF line ends.

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace base {

// Decodes CP932. Bytes that are not valid CP932 never stop the read: each bad byte
// becomes U+FFFD so the operator sees that something was wrong. hadInvalid tells.
QString fromCp932(QByteArrayView bytes, bool* hadInvalid = nullptr);

// Encodes CP932. A character CP932 cannot hold becomes "?" (as the system's ANSI
// conversion does); lossy tells.
QByteArray toCp932(QStringView text, bool* lossy = nullptr);

// Bytes in the CP932 character that starts with this lead byte: 1 or 2, and 0 for a
// byte that cannot start a character.
int cp932CharBytes(unsigned char lead);

// Length of the longest start of bytes that holds whole CP932 characters only and is
// at most maxBytes long: where a fixed byte buffer cuts a text, a double-byte
// character is never split.
qsizetype cp932PrefixLength(QByteArrayView bytes, qsizetype maxBytes);

// Splits decoded text into lines at CR LF, lone LF or lone CR; a final line ending
// does not make an empty last line.
QStringList splitLines(const QString& text);

// A path composed the original's way ("C:\app" + "\" + "x.ini", or a relative one
// with backslashes) as the file system wants it. Only the separators change.
QString nativePath(const QString& path);

}  // namespace base
