// The report engine's viewer: runs a WfdCom.dat script.
#include "base/qt_translations.h"
#include "engine/viewer_app.h"

#include <QCoreApplication>

using base::installQtTranslations;
Q_COREAPP_STARTUP_FUNCTION(installQtTranslations)

int main(int argc, char** argv) { return engine::runViewer(argc, argv, "WrVb6Viewer"); }
