#include "gui/keika_window.h"

#include "gui/binder.h"
#include "gui/doui_window.h"
#include "gui/qt_platform.h"
#include "selection/frm_seal_sejutsu_keika.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace gui {

KeikaWindow::KeikaWindow(QtPlatform& platform, selection::frmSeal_SejutsuKeika& screen)
        : ScreenDialog(platform, screen), screen_(screen), binder_(std::make_unique<Binder>(platform, screen, this))
{
    setWindowTitle(screen.caption());
    auto* v = new QVBoxLayout(this);
    v->setMenuBar(buildSideScreenMenus(*binder_, screen));
    v->addWidget(buildMonths());
    v->addWidget(buildHidden());
    v->addWidget(buildStaff());
    v->addStretch(1);
    v->addWidget(buildSideScreenCommands(*binder_, screen_));
    // Enter belongs to the screen's key handling, never to a default button.
    for (auto* b : findChildren<QPushButton*>()) b->setAutoDefault(false);
    setMinimumWidth(440);
}

KeikaWindow::~KeikaWindow() = default;

QWidget* KeikaWindow::buildMonths()
{
    auto* w = new QWidget;
    auto* h = new QHBoxLayout(w);
    h->setContentsMargins(0, 0, 0, 0);
    auto* title = new QLabel;
    binder_->label(screen_.laTitle0, title);
    auto* from = new QLineEdit;
    auto* tilde = new QLabel;
    auto* to = new QLineEdit;
    from->setMaximumWidth(110);
    to->setMaximumWidth(110);
    binder_->text(screen_.imD_Kigen, from);
    binder_->label(screen_.laTitle4, tilde);
    binder_->text(screen_.imD_Kigen_To, to);
    h->addWidget(title);
    h->addWidget(from);
    h->addWidget(tilde);
    h->addWidget(to);
    h->addStretch(1);
    return w;
}

// The controls this screen carries hidden, bound all the same so that they follow
// the model should it ever show them.
QWidget* KeikaWindow::buildHidden()
{
    auto* w = new QWidget;
    auto* v = new QVBoxLayout(w);
    v->setContentsMargins(0, 0, 0, 0);
    v->setSpacing(0);  // nothing of it shows: it must take no room
    auto* kinds = new QGroupBox;
    auto* kindRow = new QHBoxLayout(kinds);
    for (auto& o : screen_.opt_Sel) {
        auto* r = new QRadioButton;
        binder_->option(o, r);
        kindRow->addWidget(r);
    }
    binder_->frame(screen_.Frame2, kinds);
    v->addWidget(kinds);

    auto addOptions = [&](controls::Label& label, std::deque<controls::OptionButton>& options) {
        auto* row = new QWidget;
        auto* h = new QHBoxLayout(row);
        h->setContentsMargins(0, 0, 0, 0);
        auto* l = new QLabel;
        binder_->label(label, l);
        h->addWidget(l);
        for (auto& o : options) {
            auto* r = new QRadioButton;
            binder_->option(o, r);
            h->addWidget(r);
        }
        h->addStretch(1);
        v->addWidget(row);
    };
    addOptions(screen_.laTitle2, screen_.optKikan);
    addOptions(screen_.laTitle1, screen_.optKijun);
    for (controls::CheckBox* c : {&screen_.chkKijunDisp, &screen_.chkStaff}) {
        auto* box = new QCheckBox;
        binder_->check(*c, box);
        v->addWidget(box);
    }
    return w;
}

QWidget* KeikaWindow::buildStaff()
{
    auto* box = new QGroupBox;
    auto* grid = new QGridLayout(box);
    auto* number = new QLineEdit;
    number->setMaximumWidth(90);
    binder_->text(screen_.imNum_StaffNo, number);
    auto* search = new QPushButton;
    binder_->button(screen_.btn_StaffSelect, search);
    auto* nameLabel = new QLabel;
    binder_->label(screen_.laTitle3, nameLabel);
    auto* name = new QLineEdit;
    name->setMinimumWidth(180);
    binder_->text(screen_.txtStaffName, name);
    grid->addWidget(number, 0, 0);
    grid->addWidget(search, 0, 1);
    grid->addWidget(nameLabel, 0, 2);
    grid->addWidget(name, 0, 3);
    grid->setColumnStretch(3, 1);
    binder_->frame(screen_.fraStaff, box);
    return box;
}

}  // namespace gui
