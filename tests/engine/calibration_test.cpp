// The printer's position correction: kept per printer in the engine's own settings file.

#include "engine/calibration.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

TEST(Calibration, KeptPerPrinterAcrossRuns)
{
    QTemporaryDir dir;
    const QString file = dir.filePath("sub/engine.ini");
    {
        engine::Calibration c(file);
        EXPECT_EQ(c.offset("Office/Printer 1"), QPointF(0, 0));
        c.setOffset("Office/Printer 1", QPointF(1.5, -0.5));
        c.setOffset("\\\\server\\labels", QPointF(-2, 3));
    }
    engine::Calibration again(file);
    EXPECT_EQ(again.offset("Office/Printer 1"), QPointF(1.5, -0.5));
    EXPECT_EQ(again.offset("\\\\server\\labels"), QPointF(-2, 3));
    EXPECT_EQ(again.offset("Office"), QPointF(0, 0));
}

TEST(Calibration, SettingsFileFromTheEnvironment)
{
    QTemporaryDir dir;
    qputenv("SEAL_ENGINE_SETTINGS", dir.filePath("x.ini").toLocal8Bit());
    EXPECT_EQ(engine::Calibration().path(), dir.filePath("x.ini"));
    qunsetenv("SEAL_ENGINE_SETTINGS");
    EXPECT_TRUE(engine::Calibration().path().endsWith("sealprint/engine.ini"));
}

}  // namespace
