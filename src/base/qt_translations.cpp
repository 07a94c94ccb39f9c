#include "base/qt_translations.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace base {

QStringList qtTranslationFolders()
{
    return {QCoreApplication::applicationDirPath() + QStringLiteral("/translations"),
            QLibraryInfo::path(QLibraryInfo::TranslationsPath)};
}

void installQtTranslations()
{
    // The office's desktops may run another system language; the program is Japanese
    // whatever it is, so its dialogs are too.
    const QLocale japanese(QLocale::Japanese, QLocale::Japan);
    for (const QString& folder : qtTranslationFolders()) {
        auto* qt = new QTranslator(QCoreApplication::instance());
        if (qt->load(japanese, QStringLiteral("qt"), QStringLiteral("_"), folder)) {
            QCoreApplication::installTranslator(qt);
            return;
        }
        delete qt;
    }
}

}  // namespace base
