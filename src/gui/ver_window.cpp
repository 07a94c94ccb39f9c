#include "gui/ver_window.h"

#include "dialogs/frm_ver.h"
#include "gui/binder.h"
#include "gui/qt_platform.h"

#include <QAction>
#include <QLabel>
#include <QListWidget>
#include <QMenuBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace gui {

VerWindow::VerWindow(QtPlatform& platform, dialogs::frmVer& screen)
        : ScreenDialog(platform, screen), screen_(screen), binder_(std::make_unique<Binder>(platform, screen, this))
{
    setWindowTitle(screen.caption());
    auto* v = new QVBoxLayout(this);
    auto* bar = new QMenuBar;
    QMenu* func = binder_->submenu(screen.mnFunc, bar);
    binder_->menuItem(func, screen.mnF12);
    bar->addMenu(func);
    v->setMenuBar(bar);
    auto* title = new QLabel;
    QFont f = title->font();
    f.setPointSize(f.pointSize() + 4);
    f.setBold(true);
    title->setFont(f);
    binder_->label(screen.laVer, title);
    v->addWidget(title);
    auto* list = new QListWidget;
    binder_->list(screen.lstVer, list);
    v->addWidget(list, 1);
    auto* back = new QPushButton;
    binder_->button(screen.btnReturn, back);
    v->addWidget(back, 0, Qt::AlignRight);
    resize(420, 260);
}

VerWindow::~VerWindow() = default;

}  // namespace gui
