#include "gui/doui_window.h"

#include "gui/binder.h"
#include "gui/qt_platform.h"
#include "selection/frm_doui.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace gui {

namespace {}  // namespace

QMenuBar* buildSideScreenMenus(Binder& binder, selection::ConsentSideScreen& screen)
{
    auto* bar = new QMenuBar;
    QMenu* func = binder.submenu(screen.mnFunc, bar);
    for (controls::MenuItem* m : {&screen.mnF01, &screen.mnF02, &screen.mnF03, &screen.mnKugiri, &screen.mnF12})
        binder.menuItem(func, *m);
    bar->addMenu(func);

    QMenu* settings = binder.submenu(screen.mnSettei, bar);
    QMenu* sort = binder.submenu(screen.mnSetteiSort, settings);
    for (auto& m : screen.mnSort) binder.menuItem(sort, m, true);
    settings->addMenu(sort);
    bar->addMenu(settings);

    QMenu* help = binder.submenu(screen.mnHelp, bar);
    binder.menuItem(help, screen.mnDispHelp);
    bar->addMenu(help);
    return bar;
}

DouiWindow::DouiWindow(QtPlatform& platform, selection::frmDoui& screen)
        : ScreenDialog(platform, screen), screen_(screen), binder_(std::make_unique<Binder>(platform, screen, this))
{
    setWindowTitle(screen.caption());
    auto* v = new QVBoxLayout(this);
    v->setMenuBar(buildSideScreenMenus(*binder_, screen));
    v->addWidget(buildConditions());
    v->addWidget(buildStaff());
    v->addStretch(1);
    v->addWidget(buildSideScreenCommands(*binder_, screen_));
    // Enter belongs to the screen's key handling, never to a default button.
    for (auto* b : findChildren<QPushButton*>()) b->setAutoDefault(false);
    setMinimumWidth(460);
}

DouiWindow::~DouiWindow() = default;

QWidget* DouiWindow::buildConditions()
{
    auto* w = new QWidget;
    auto* grid = new QGridLayout(w);
    grid->setContentsMargins(0, 0, 0, 0);

    // Each option group has a widget of its own: Qt makes radio buttons that share a
    // parent exclusive, and the kind, the period and the base date are three choices.
    auto* kinds = new QGroupBox;
    auto* kindRow = new QHBoxLayout(kinds);
    for (int i : {0, 1, 7, 2, 3, 4, 5, 6}) {
        auto* r = new QRadioButton;
        binder_->option(screen_.opt_Sel[static_cast<size_t>(i)], r);
        kindRow->addWidget(r);
    }
    kindRow->addStretch(1);
    binder_->frame(screen_.Frame2, kinds);
    grid->addWidget(kinds, 0, 0, 1, 2);

    auto* monthLabel = new QLabel;
    binder_->label(screen_.laTitle0, monthLabel);
    auto* month = new QLineEdit;
    month->setMaximumWidth(110);
    binder_->text(screen_.imD_Kigen, month);
    grid->addWidget(monthLabel, 1, 0);
    grid->addWidget(month, 1, 1, Qt::AlignLeft);

    auto* periodLabel = new QLabel;
    binder_->label(screen_.laTitle2, periodLabel);
    auto* periods = new QWidget;
    auto* periodRow = new QHBoxLayout(periods);
    periodRow->setContentsMargins(0, 0, 0, 0);
    for (int i : {2, 0, 1}) {
        auto* r = new QRadioButton;
        binder_->option(screen_.optKikan[static_cast<size_t>(i)], r);
        periodRow->addWidget(r);
    }
    periodRow->addStretch(1);
    grid->addWidget(periodLabel, 2, 0);
    grid->addWidget(periods, 2, 1);

    auto* baseLabel = new QLabel;
    binder_->label(screen_.laTitle1, baseLabel);
    auto* bases = new QWidget;
    auto* baseRow = new QHBoxLayout(bases);
    baseRow->setContentsMargins(0, 0, 0, 0);
    for (auto& o : screen_.optKijun) {
        auto* r = new QRadioButton;
        binder_->option(o, r);
        baseRow->addWidget(r);
    }
    baseRow->addStretch(1);
    grid->addWidget(baseLabel, 3, 0);
    grid->addWidget(bases, 3, 1);

    auto* checks = new QVBoxLayout;
    for (controls::CheckBox* c :
         {&screen_.chkKijunDisp, &screen_.chkEachSejyutusya, &screen_.chkIsiMatome, &screen_.chkStaff}) {
        auto* box = new QCheckBox;
        binder_->check(*c, box);
        checks->addWidget(box);
    }
    grid->addLayout(checks, 4, 0, 1, 2);
    grid->setColumnStretch(1, 1);
    return w;
}

QWidget* DouiWindow::buildStaff()
{
    auto* box = new QGroupBox;
    auto* grid = new QGridLayout(box);
    auto* nameLabel = new QLabel;
    binder_->label(screen_.laTitle3, nameLabel);
    auto* combo = new QComboBox;
    combo->setMinimumWidth(200);
    binder_->combo(screen_.cbSejyutsu, combo);
    auto* number = new QLineEdit;
    number->setMaximumWidth(90);
    binder_->text(screen_.imNum_StaffNo, number);
    auto* search = new QPushButton;
    binder_->button(screen_.btn_StaffSelect, search);
    auto* ended = new QCheckBox;
    binder_->check(screen_.chkChushi, ended);

    grid->addWidget(nameLabel, 0, 0);
    grid->addWidget(number, 0, 1);
    grid->addWidget(combo, 0, 2);
    grid->addWidget(search, 0, 3);
    grid->addWidget(ended, 1, 1, 1, 3);
    grid->setColumnStretch(2, 1);
    binder_->frame(screen_.Frame1, box);
    return box;
}

QWidget* buildSideScreenCommands(Binder& binder, selection::ConsentSideScreen& screen)
{
    auto* w = new QWidget;
    auto* h = new QHBoxLayout(w);
    h->setContentsMargins(0, 0, 0, 0);
    auto add = [&](controls::Button& b) {
        auto* btn = new QPushButton;
        btn->setToolTip(b.tag());
        binder.button(b, btn);
        h->addWidget(btn);
    };
    add(screen.btnPrint0);
    add(screen.btnPrint1);
    add(screen.btnPrint2);
    h->addStretch(1);
    add(screen.btnPrint6);
    return w;
}

}  // namespace gui
