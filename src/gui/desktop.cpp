#include "gui/desktop.h"

#include "base/install_dirs.h"
#include "base/log.h"
#include "base/qt_translations.h"
#include "engine/wfd_document_impl.h"
#include "gui/qt_platform.h"
#include "gui/views.h"
#include "report/wfd_document.h"

#include <QApplication>
#include <QFontDatabase>

namespace gui {

bool displayAvailable()
{
    return qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY") ||
           qEnvironmentVariableIsSet("QT_QPA_PLATFORM");
}

// The Japanese captions need a font that has them: IPAex Gothic, from the installed
// fonts folder or the system's. Qt's own dialogs speak Japanese too.
void useProgramLook(QApplication& app)
{
    base::installQtTranslations();
    const QString path = base::findFontFile(QCoreApplication::applicationDirPath(), QStringLiteral("ipaexg.ttf"));
    const int id = QFontDatabase::addApplicationFont(path);
    if (id < 0) {
        qCWarning(base::lcGui) << "IPAex Gothic could not be loaded; captions use the system's font";
        return;
    }
    const QStringList families = QFontDatabase::applicationFontFamilies(id);
    if (families.isEmpty()) return;
    QFont f(families.first());
    f.setPointSize(10);
    app.setFont(f);
}

int runDesktop(int& argc, char** argv, const app::ProcessStart& start)
{
    QApplication qapp(argc, argv);
    useProgramLook(qapp);
    // The in-process report driver reaches the engine's document object through this.
    report::registerWfdDocument(&engine::makeWfdDocument);
    QtPlatform* self = nullptr;
    QtPlatform platform([&self](controls::Screen& screen) { return makeView(*self, screen); });
    self = &platform;
    app::ProcessStart own = start;
    if (own.programDir.isEmpty()) own.programDir = base::installationFolder(QCoreApplication::applicationDirPath());
    return app::runProcess(own, platform);
}

}  // namespace gui
