#pragma once
// Qt's own texts (the buttons and labels of the print, file and message dialogs) in
// Japanese, as the rest of the program speaks.

#include <QStringList>

namespace base {

// Installs Qt's Japanese translations into the running application. Looks in the
// "translations" folder beside the program first (an installation that brings its
// own), then in Qt's; without them the dialogs stay in English. A program registers
// it with Q_COREAPP_STARTUP_FUNCTION so that it runs as its application is made.
void installQtTranslations();

// The folders looked in, in order.
QStringList qtTranslationFolders();

}  // namespace base
