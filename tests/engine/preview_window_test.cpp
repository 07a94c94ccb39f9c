// The preview window over a real job: page navigation and the printer correction.

#include "engine/document.h"
#include "engine/preview_window.h"
#include "engine/wfd_script.h"

#include "engine_test_support.h"

#include <QLabel>
#include <QPrintPreviewWidget>
#include <QTest>
#include <gtest/gtest.h>

namespace {

class Preview : public ::testing::Test {
protected:
    static void SetUpTestSuite() { enginetest::ensureGuiApp(); }
    QTemporaryDir dir;
};

TEST_F(Preview, ShowsEveryPageAndMovesBetweenThem)
{
    QStringList lines{enginetest::kLabelTitle};
    for (int i = 0; i < 15; ++i) lines.append(enginetest::labelLine({}));
    enginetest::writeCp932(dir.filePath("シール.csv"), lines);
    enginetest::writeCp932(dir.filePath("WfdCom.dat"),
                           enginetest::scriptLines(enginetest::formPath("シール.wfd"), dir.filePath("シール.csv")));
    engine::Document doc(engine::readWfdScript(dir.filePath("WfdCom.dat")), QString());
    engine::PreviewWindow window(doc, engine::Calibration(dir.filePath("engine.ini")));
    window.show();
    auto* view = window.findChild<QPrintPreviewWidget*>();
    ASSERT_NE(view, nullptr);
    view->updatePreview();
    QCoreApplication::processEvents();
    EXPECT_EQ(view->pageCount(), 2);
    bool labelSaysTwo = false;
    for (QLabel* l : window.findChildren<QLabel*>()) labelSaysTwo = labelSaysTwo || l->text().contains("/ 2");
    EXPECT_TRUE(labelSaysTwo);
    view->setCurrentPage(2);
    EXPECT_EQ(view->currentPage(), 2);
    EXPECT_TRUE(window.windowTitle().startsWith("シール"));
}

struct ZoomCase {
    const char* line;  // the PrintZoom line, or none
    QPrintPreviewWidget::ZoomMode mode;
    double factor;     // for a custom zoom
};
class PreviewZoom : public Preview, public ::testing::WithParamInterface<ZoomCase> {};
TEST_P(PreviewZoom, StartsAtTheScriptsZoom)
{
    enginetest::writeCp932(dir.filePath("シール.csv"), {enginetest::kLabelTitle, enginetest::labelLine({})});
    QStringList extra;
    if (*GetParam().line) extra.append(QString::fromUtf8(GetParam().line));
    enginetest::writeCp932(dir.filePath("WfdCom.dat"), enginetest::scriptLines(enginetest::formPath("シール.wfd"),
                                                                               dir.filePath("シール.csv"), extra));
    engine::Document doc(engine::readWfdScript(dir.filePath("WfdCom.dat")), QString());
    engine::PreviewWindow window(doc, engine::Calibration(dir.filePath("engine.ini")));
    auto* view = window.findChild<QPrintPreviewWidget*>();
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(view->zoomMode(), GetParam().mode);
    if (GetParam().mode == QPrintPreviewWidget::CustomZoom) { EXPECT_DOUBLE_EQ(view->zoomFactor(), GetParam().factor); }
}
INSTANTIATE_TEST_SUITE_P(Zooms, PreviewZoom,
                         ::testing::Values(ZoomCase{"", QPrintPreviewWidget::FitInView, 0},
                                           ZoomCase{"PrintZoom, 0", QPrintPreviewWidget::FitToWidth, 0},
                                           ZoomCase{"PrintZoom, 1", QPrintPreviewWidget::CustomZoom, 1.0},
                                           ZoomCase{"PrintZoom, 150", QPrintPreviewWidget::CustomZoom, 1.5}),
                         ([](const auto& info) { return std::vector<std::string>{"NoLine", "Zoom0", "Zoom1", "Zoom150"}.at(info.index); }));

}  // namespace
