// The report engine's joiner: turns a joined print script into one form for the viewer.
#include "base/qt_translations.h"
#include "engine/viewer_app.h"

#include <QCoreApplication>

using base::installQtTranslations;
Q_COREAPP_STARTUP_FUNCTION(installQtTranslations)

int main(int argc, char** argv) { return engine::runJoiner(argc, argv); }
