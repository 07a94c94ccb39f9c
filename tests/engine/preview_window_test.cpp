// The preview window over a real job: page navigation, its size on an office screen,
// and the keys and wheel of a viewer.

#include "engine/document.h"
#include "engine/preview_window.h"
#include "engine/wfd_script.h"

#include "base/qt_translations.h"
#include "support/engine_job.h"

#include <QAbstractButton>
#include <QApplication>
#include <QGraphicsView>
#include <QLabel>
#include <QPrintDialog>
#include <QPrintPreviewWidget>
#include <QScreen>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>
#include <gtest/gtest.h>

namespace {

class Preview : public ::testing::Test {
protected:
    engine::Calibration calibration() const { return engine::Calibration(jobs.path("engine.ini")); }
    sealtest::JobFolder jobs;
};

TEST_F(Preview, ShowsEveryPageAndMovesBetweenThem)
{
    const auto doc = jobs.job("シール.wfd", sealtest::labelLines(15));
    engine::PreviewWindow window(*doc, calibration());
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

class PreviewKeys : public Preview {
protected:
    void SetUp() override
    {
        doc = jobs.job("シール.wfd", sealtest::labelLines(1));
        window = std::make_unique<engine::PreviewWindow>(*doc, calibration());
        window->show();
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
        view = window->findChild<QPrintPreviewWidget*>();
        ASSERT_NE(view, nullptr);
        view->updatePreview();
    }

    void wheel(bool ctrl, int delta)
    {
        QWidget* pages = view->findChild<QGraphicsView*>()->viewport();
        const QPointF at = pages->rect().center();
        QWheelEvent e(at, pages->mapToGlobal(at), QPoint(), QPoint(0, delta), Qt::NoButton,
                      ctrl ? Qt::ControlModifier : Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(pages, &e);
    }

    std::unique_ptr<engine::Document> doc;
    std::unique_ptr<engine::PreviewWindow> window;
    QPrintPreviewWidget* view = nullptr;
};

TEST_F(PreviewKeys, TheWindowFitsTheScreenItOpensOn)
{
    const QRect room = QGuiApplication::primaryScreen()->availableGeometry();
    EXPECT_LE(window->frameGeometry().height(), room.height());
    EXPECT_LE(window->frameGeometry().width(), room.width());
}

TEST_F(PreviewKeys, CtrlAndTheWheelOrPlusAndMinusZoomAndEscCloses)
{
    const double start = view->zoomFactor();
    wheel(true, 120);
    const double wheeledIn = view->zoomFactor();
    EXPECT_GT(wheeledIn, start);
    wheel(false, -120);  // the wheel alone scrolls
    EXPECT_DOUBLE_EQ(view->zoomFactor(), wheeledIn);
    wheel(true, -120);
    EXPECT_LT(view->zoomFactor(), wheeledIn);
    const double before = view->zoomFactor();
    QTest::keyClick(window.get(), Qt::Key_Plus);
    EXPECT_GT(view->zoomFactor(), before);
    QTest::keyClick(window.get(), Qt::Key_Minus);
    EXPECT_DOUBLE_EQ(view->zoomFactor(), before);
    QTest::keyClick(window.get(), Qt::Key_Escape);
    EXPECT_FALSE(window->isVisible());
}

TEST_F(PreviewKeys, CtrlPOpensThePrintDialogInJapanese)
{
    base::installQtTranslations();  // as the engine's programs do when they start
    QString title;
    QStringList buttons;
    QTimer::singleShot(0, [&] {
        auto* dialog = qobject_cast<QPrintDialog*>(QApplication::activeModalWidget());
        if (!dialog) return;
        title = dialog->windowTitle();
        for (QAbstractButton* b : dialog->findChildren<QAbstractButton*>())
            if (b->isVisible()) buttons << b->text();
        dialog->reject();
    });
    QTest::keyClick(window.get(), Qt::Key_P, Qt::ControlModifier);
    EXPECT_FALSE(title.isEmpty()) << "no print dialog";
    EXPECT_TRUE(buttons.contains(QStringLiteral("キャンセル"))) << buttons.join(u',').toStdString();
}

struct ZoomCase {
    const char* line;  // the PrintZoom line, or none
    QPrintPreviewWidget::ZoomMode mode;
    double factor;  // for a custom zoom
};
class PreviewZoom : public Preview, public ::testing::WithParamInterface<ZoomCase> {};
TEST_P(PreviewZoom, StartsAtTheScriptsZoom)
{
    QStringList extra;
    if (*GetParam().line) extra.append(QString::fromUtf8(GetParam().line));
    const auto doc = jobs.job("シール.wfd", sealtest::labelLines(1), extra);
    engine::PreviewWindow window(*doc, calibration());
    auto* view = window.findChild<QPrintPreviewWidget*>();
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(view->zoomMode(), GetParam().mode);
    if (GetParam().mode == QPrintPreviewWidget::CustomZoom) {
        EXPECT_DOUBLE_EQ(view->zoomFactor(), GetParam().factor);
    }
}
INSTANTIATE_TEST_SUITE_P(Zooms, PreviewZoom,
                         ::testing::Values(ZoomCase{"", QPrintPreviewWidget::FitInView, 0},
                                           ZoomCase{"PrintZoom, 0", QPrintPreviewWidget::FitToWidth, 0},
                                           ZoomCase{"PrintZoom, 1", QPrintPreviewWidget::CustomZoom, 1.0},
                                           ZoomCase{"PrintZoom, 150", QPrintPreviewWidget::CustomZoom, 1.5}),
                         ([](const auto& info) {
                             return std::vector<std::string>{"NoLine", "Zoom0", "Zoom1", "Zoom150"}.at(info.index);
                         }));

}  // namespace
