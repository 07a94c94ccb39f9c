#pragma once
// The suite's online help: its address from "Velmio.Ver", the site's account from
// "EmapUser.ini" in the query, opened in the user's browser.

#include <QString>

namespace dialogs {

// The address once read; empty when the file gives none that starts with "http".
extern QString sHelpUrl;

// Reads the address into sHelpUrl: 0, or -1 when "Velmio.Ver" cannot be opened.
short iReadHelpAddress();

// The query for the account of "EmapUser.ini", empty when the file cannot be read:
// "?zi=" reversed user, "&zp=" reversed password, "&lk=" and the link code (1 when
// the code is below 1).
QString csHelpQuery(short link);

// Opens the help page for the link code (every screen passes 1).
void vDispOnlineHelp(short link);

}  // namespace dialogs
