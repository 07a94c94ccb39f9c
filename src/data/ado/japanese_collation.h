#pragma once
// Japanese text compared as the clinic's SQL Server compares it under Japanese_CI_AS:
// case, kana type (ア = あ) and width (ｱ = ア, Ａ = A) are ignored; voicing marks are
// not (カ ≠ ガ, as accents count). A reading typed in hiragana finds one stored in
// half-width katakana, and half-width readings sort among the full-width ones.
//
// On SQLite this is the collation "Japanese_CI_AS" (the text columns of the schema
// declare it) and a LIKE that compares the same way. Both are registered on every
// SQLite connection this process opens, through SQLite's automatic extensions: our
// own driver's, the SQLite ODBC driver's (it shares the process's libsqlite3), the
// demo generator's and the test server's.

#include <QString>

struct sqlite3;

namespace data::ado {

inline constexpr char kJapaneseCollation[] = "Japanese_CI_AS";

// Registers the collation and LIKE for every SQLite connection opened from now on in
// this process. Safe to call any number of times.
void registerJapaneseCollation();
// The same on one connection that is already open. SQLITE_OK or SQLite's failure code.
int addJapaneseCollation(sqlite3* db);

// <0, 0, >0 as a sorts before, equal to or after b under Japanese_CI_AS. Characters
// are weighed ignoring voicing first; voicing only breaks a tie (か < が < き).
int compareJapaneseCi(QStringView a, QStringView b);

// SQL LIKE under Japanese_CI_AS: % any run, _ one character, escape (if not null)
// makes the next character literal.
bool likeJapaneseCi(QStringView pattern, QStringView text, QChar escape = QChar());

}  // namespace data::ado
