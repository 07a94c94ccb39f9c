#pragma once
// The original's date rules: formatting patterns, month arithmetic that clamps to the
// month's end, date texts, and the ends of consent periods.

#include <QDate>
#include <QDateTime>
#include <QString>

namespace base {

// The day the runtime's date numbers count from: a date 0 is 1899/12/30.
inline QDate dateZero() { return QDate(1899, 12, 30); }

// The system's short date form, "yyyy/MM/dd", as the target systems have it.
QString shortDate(const QDate& date);

// Formats a date with the runtime's pattern letters: yyyy, yy, y (day of the year),
// mm/m (month; minutes right after an hour), dd/d, hh/h, nn/n, ss/s; "/" and ":" are
// the separators; "\x" and "..." are literal; any other character stands for itself,
// so "yyyy/mm/01" is the first of the month. An unset date gives empty text.
QString Format(const QDate& date, QStringView pattern);
QString Format(const QDateTime& dateTime, QStringView pattern);

// Adds number intervals: "yyyy" years, "q" quarters, "m" months, "ww" weeks, "d",
// "y" or "w" days. Years and months keep the day where the month has it and clamp to
// the month's last day otherwise (2026/01/31 + 1 month = 2026/02/28). Another
// interval raises 5.
QDate DateAdd(QStringView interval, int number, const QDate& date);

// True if the text is a date the program takes: "yyyy/m/d", "yyyy-m-d",
// "yyyy年m月d日", or a year and a month alone ("yyyy/m", the first of the month),
// each optionally followed by a time "h:mm" or "h:mm:ss". The date must exist.
bool IsDate(QStringView text);

// The date of such a text; 13 if IsDate says no. The time, if any, is dropped.
QDate CDate(QStringView text);

// The end of a period that starts at date and runs months months: from the first of
// a month, add the months, then go back one day (2026/01/01, 1 -> 2026/01/31);
// from any other day, go back one day first, then add the months (2026/01/31, 1 ->
// 2026/02/28, but 2026/03/31, 1 -> 2026/04/30). As short date text.
QString csMonthEnd(const QDate& date, int months);

}  // namespace base
