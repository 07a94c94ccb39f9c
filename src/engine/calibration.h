#pragma once
// Each printer feeds a little off; the office measures it once and the engine moves
// every print on that printer by so much. Kept in the engine's own settings file, in
// mm, by printer name.

#include <QPointF>
#include <QString>

namespace engine {

class Calibration {
public:
    // path: the settings file; empty takes SEAL_ENGINE_SETTINGS, else "engine.ini" in
    // the user's configuration folder for sealprint.
    explicit Calibration(QString path = QString());

    QPointF offset(const QString& printerName) const;
    // Throws EngineError when the file cannot be written.
    void setOffset(const QString& printerName, QPointF mm);
    const QString& path() const { return path_; }

private:
    QString path_;
};

}  // namespace engine
