#pragma once
// What a read may run. The program builds its SQL by concatenation without quoting,
// so a typed apostrophe could turn a search into a write; a read runs one SELECT only.

#include <QString>

namespace data::ado {

// Empty when sql is a single SELECT statement; otherwise the reason, in words for the
// operator: a ';', '--' or '/*' outside string literals, an unterminated literal, or
// a statement verb other than SELECT.
QString readSafetyViolation(QStringView sql);

}  // namespace data::ado
