#include "gui/screen_dialog.h"

#include "controls/screen.h"
#include "gui/qt_platform.h"

#include <QCloseEvent>

namespace gui {

ScreenDialog::ScreenDialog(QtPlatform& platform, controls::Screen& model) : platform_(platform), model_(model)
{
    setWindowTitle(model.caption());
}

void ScreenDialog::closeEvent(QCloseEvent* event)
{
    event->ignore();
    platform_.dispatch([&] { model_.closeByUser(); });
}

void ScreenDialog::reject()
{
    platform_.dispatch([&] { model_.closeByUser(); });
}

}  // namespace gui
