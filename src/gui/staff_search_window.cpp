#include "gui/staff_search_window.h"

#include "dialogs/staff_search.h"
#include "gui/binder.h"
#include "gui/grid_model.h"
#include "gui/qt_platform.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

namespace gui {

StaffSearchWindow::StaffSearchWindow(QtPlatform& platform, dialogs::frm施術者検索& screen)
        : ScreenDialog(platform, screen), screen_(screen), binder_(std::make_unique<Binder>(platform, screen, this))
{
    setWindowTitle(screen.caption());
    auto* v = new QVBoxLayout(this);
    buildMenus(v);
    v->addWidget(buildFilters());
    v->addWidget(buildList(), 1);
    v->addWidget(buildCommands());
    // Enter belongs to the screen's key handling, never to a default button.
    for (auto* b : findChildren<QPushButton*>()) b->setAutoDefault(false);
    resize(520, 480);
}

StaffSearchWindow::~StaffSearchWindow() { screen_.spr_1ran.unobserve(listObserver_); }

void StaffSearchWindow::buildMenus(QLayout* layout)
{
    auto* bar = new QMenuBar;
    QMenu* func = binder_->submenu(screen_.mnFunc, bar);
    binder_->menuItem(func, screen_.mnF04);
    binder_->menuItem(func, screen_.mnF05);
    func->addSeparator();
    binder_->menuItem(func, screen_.mnF12);
    bar->addMenu(func);
    QMenu* help = binder_->submenu(screen_.mnHelp, bar);
    binder_->menuItem(help, screen_.mnDispHelp);
    bar->addMenu(help);
    layout->setMenuBar(bar);
}

QWidget* StaffSearchWindow::buildFilters()
{
    auto* box = new QGroupBox(QStringLiteral("検索条件"));
    auto* grid = new QGridLayout(box);
    auto field = [&](int row, controls::Label& label, controls::TextInput& input, int width) {
        auto* l = new QLabel;
        binder_->label(label, l);
        auto* e = new QLineEdit;
        if (width > 0) e->setMaximumWidth(width);
        binder_->text(input, e);
        grid->addWidget(l, row, 0);
        grid->addWidget(e, row, 1, width > 0 ? Qt::AlignLeft : Qt::Alignment());
    };
    field(0, screen_.lbl_a4, screen_.txt_SiboriName, 0);
    field(1, screen_.lbl_a0, screen_.txt_SiboriKana, 0);
    field(2, screen_.lbl_a2, screen_.in_SiboriID, 100);

    auto* ended = new QCheckBox;
    auto* endedPatients = new QCheckBox;
    binder_->check(screen_.chkEndSejutsuha, ended);
    binder_->check(screen_.chkEndKanja, endedPatients);
    grid->addWidget(ended, 3, 1);
    grid->addWidget(endedPatients, 4, 1);

    auto* read = new QPushButton;
    read->setToolTip(screen_.but_Read.tag());
    binder_->button(screen_.but_Read, read);
    grid->addWidget(read, 2, 2, 3, 1, Qt::AlignRight | Qt::AlignBottom);
    grid->setColumnStretch(1, 1);
    return box;
}

QWidget* StaffSearchWindow::buildList()
{
    list_ = new QTableView;
    const QStringList& titles = dialogs::frm施術者検索::columnTitles();
    binder_->grid(screen_.spr_1ran, list_, {{1, titles.at(0)}, {2, titles.at(1)}, {3, titles.at(2)}});
    list_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    list_->setColumnWidth(0, 80);
    list_->setColumnWidth(1, 180);
    list_->horizontalHeader()->setStretchLastSection(true);
    list_->verticalHeader()->hide();
    // A search ends by switching the list's redrawing back on; the row of the staff
    // member already chosen is then brought to the top, where the operator looks first.
    listObserver_ = screen_.spr_1ran.observe([this](const controls::Change& change) {
        if (change.what == controls::Change::All && screen_.spr_1ran.ReDraw()) scrollActiveRowToTop();
    });
    return list_;
}

void StaffSearchWindow::scrollActiveRowToTop()
{
    auto* model = static_cast<GridModel*>(list_->model());
    const int row = model->viewRow(screen_.spr_1ran.ActiveRow());
    if (row >= 0) list_->scrollTo(model->index(row, 0), QAbstractItemView::PositionAtTop);
}

QWidget* StaffSearchWindow::buildCommands()
{
    auto* w = new QWidget;
    auto* h = new QHBoxLayout(w);
    h->setContentsMargins(0, 0, 0, 0);
    h->addStretch(1);
    for (auto& b : screen_.but_Act) {
        auto* btn = new QPushButton;
        btn->setToolTip(b.tag());
        binder_->button(b, btn);
        h->addWidget(btn);
    }
    return w;
}

}  // namespace gui
