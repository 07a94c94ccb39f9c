#include "engine/calibration.h"

#include "engine/engine_error.h"

#include <QDir>
#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>
#include <QUrl>

namespace engine {

namespace {

// Printer names hold "/" and "\", which the settings file takes as groups.
QString keyOf(const QString& printer)
{
    return QStringLiteral("calibration/") + QString::fromLatin1(QUrl::toPercentEncoding(printer));
}

}  // namespace

Calibration::Calibration(QString path) : path_(std::move(path))
{
    if (path_.isEmpty()) path_ = qEnvironmentVariable("SEAL_ENGINE_SETTINGS");
    if (path_.isEmpty())
        path_ = QDir(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation))
                    .filePath(QStringLiteral("sealprint/engine.ini"));
}

QPointF Calibration::offset(const QString& printerName) const
{
    QSettings s(path_, QSettings::IniFormat);
    const QString k = keyOf(printerName);
    return {s.value(k + QStringLiteral("/x"), 0.0).toDouble(), s.value(k + QStringLiteral("/y"), 0.0).toDouble()};
}

void Calibration::setOffset(const QString& printerName, QPointF mm)
{
    QDir().mkpath(QFileInfo(path_).absolutePath());
    QSettings s(path_, QSettings::IniFormat);
    const QString k = keyOf(printerName);
    s.setValue(k + QStringLiteral("/x"), mm.x());
    s.setValue(k + QStringLiteral("/y"), mm.y());
    s.sync();
    if (s.status() != QSettings::NoError)
        throw EngineError(path_, 0, QStringLiteral("印刷位置の調整を保存できません。"));
}

}  // namespace engine
