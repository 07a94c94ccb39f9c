#pragma once
// The original's runtime rules for numbers and texts, named after the runtime's own
// functions, so that code reading "CInt(Mid(s, 1, 2))" means what it meant there.
// Faults are raised as base::VbError with the runtime's numbers (13 type mismatch,
// 6 overflow, 5 invalid argument).

#include <QByteArray>
#include <QString>
#include <QVariant>
#include <QtGlobal>

namespace base {

// --- numbers -------------------------------------------------------------------

// The leading number of a text, 0 if there is none. Blanks, tabs and line feeds are
// ignored wherever they stand ("1 2" is 12); a sign, a decimal point, an exponent
// (E or D) and the prefixes "&H" and "&O" are understood; anything else ends the
// number ("5abc" is 5, "1,000" is 1).
double Val(QStringView text);

// True if the text as a whole is a number the conversions below accept: blanks
// around it, a sign, digits with "," grouping, a decimal point, an exponent, or
// "&H"/"&O" followed by digits.
bool IsNumeric(QStringView text);

// The number in a text as the conversions read it; 13 if IsNumeric says no.
double CDbl(QStringView text);

// Rounds to the nearest whole number, a half to the even neighbour (2.5 -> 2,
// 3.5 -> 4); 6 outside the 16-bit range.
short CInt(double value);
short CInt(QStringView text);

// As CInt, with the 32-bit range.
qint32 CLng(double value);
qint32 CLng(QStringView text);

// The whole part: Fix drops the fraction (-1.5 -> -1), Int rounds down (-1.5 -> -2).
double Fix(double value);
double Int(double value);

// A number as the runtime writes it: up to 15 significant digits, "1E+20" style for
// very large and very small values.
QString CStr(double value);

// --- texts ---------------------------------------------------------------------

// Trim the blank U+0020 only: tabs and the full-width blank U+3000 stay.
QString Trim(QStringView text);
QString LTrim(QStringView text);
QString RTrim(QStringView text);

// Characters counted from 1. A start below 1 or a negative length raises 5; parts
// beyond the end are simply missing. length -1 means "to the end".
QString Mid(QStringView text, qsizetype start, qsizetype length = -1);
QString Left(QStringView text, qsizetype length);
QString Right(QStringView text, qsizetype length);

// Length of the text in CP932 bytes (a kanji counts 2, a half-width kana 1), as the
// original counts it after converting to the system's code page.
qsizetype LenB(QStringView text);

// The start of the text that fits into bytes CP932 bytes, never half a double-byte
// character.
QString LeftB(QStringView text, qsizetype bytes);

// A fixed-length text field: cut at length characters, padded with blanks.
QString FixedText(QStringView text, qsizetype length);

// The text with every occurrence of del removed, searching again from the beginning
// after each removal, so that removing "ab" from "aabb" leaves nothing. An empty del
// leaves the text as it is.
QString csReplaceAll(const QString& text, const QString& del);

// --- database values -----------------------------------------------------------

// A database value is null when it is invalid or null.
bool IsNull(const QVariant& value);

// A value as the runtime turns it into text: numbers as CStr, dates "yyyy/MM/dd"
// (with " H:mm:ss" when a time is set), flags "True"/"False".
QString CStr(const QVariant& value);

// QString::number(n), with the texts of 0 to 63 made once and shared: a list writes
// the same small numbers (a kind's digit, a month's count) on every row.
QString numberText(qint64 n);

// Empty text for null, else the value as text.
QString csNull2Str(const QVariant& value);
// Empty text for null, else the value as text without trailing blanks.
QString csRTrimNull(const QVariant& value);
// 0 for null, else the value as a 32-bit number (CLng: 13 for a text that is not a
// number, 6 outside the range).
qint32 nNull2Long(const QVariant& value);

}  // namespace base
