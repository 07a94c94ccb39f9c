#include "gui/binder.h"

#include "gui/colors.h"
#include "gui/grid_model.h"
#include "gui/qt_platform.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMouseEvent>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QStatusBar>
#include <QTableView>

namespace gui {

void ClickableLabel::mouseReleaseEvent(QMouseEvent* event)
{
    QLabel::mouseReleaseEvent(event);
    Q_EMIT clicked();
}

Binder::Binder(QtPlatform& platform, controls::Screen& screen, QWidget* window)
        : platform_(platform), screen_(screen), window_(window)
{
    screen_.FocusMoved = [this](controls::Control* c) {
        QWidget* w = widgetOf(c);
        if (w && !w->hasFocus()) w->setFocus(Qt::OtherFocusReason);
    };
}

Binder::~Binder()
{
    screen_.FocusMoved = nullptr;
    for (auto& [c, id] : observers_) c->unobserve(id);
}

void Binder::act(const std::function<void()>& f) { platform_.dispatch(f); }

void Binder::common(controls::Control& c, QWidget* w, std::function<void()> refresh)
{
    widgets_.insert(&c, w);
    controlsOf_.insert(w, &c);
    w->setObjectName(c.name());
    w->installEventFilter(this);
    auto sync = [&c, w, refresh] {
        w->setEnabled(c.enabled());
        w->setVisible(c.visible());
        if (refresh) refresh();
    };
    sync();
    observers_.emplace_back(&c, c.observe([sync](const controls::Change&) { sync(); }));
}

bool Binder::eventFilter(QObject* watched, QEvent* event)
{
    auto* w = qobject_cast<QWidget*>(watched);
    controls::Control* c = w ? controlsOf_.value(w) : nullptr;
    if (!c) return false;
    if (event->type() == QEvent::FocusIn) {
        if (screen_.ActiveControl() != c) act([&] { screen_.SetFocus(*c); });
        return false;
    }
    if (event->type() == QEvent::KeyPress) {
        auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
            // A number or date input takes the operator's text when the field is left;
            // Enter's own handling reads it, so it must be the model's first.
            commitTypedText(*c, w);
            act([&] {
                screen_.SetFocus(*c);
                screen_.pressKey(QStringLiteral("Enter"));
            });
            return true;
        }
    }
    return false;
}

namespace {

// The cell under the mouse when its button goes down, read before the view or its
// delegate acts on the press (a tick box's delegate takes the press for itself).
class PressedCell : public QObject {
public:
    PressedCell(QAbstractItemView* view, Binder::CellOf cellOf) : QObject(view), view_(view), cellOf_(std::move(cellOf))
    {
        view->viewport()->installEventFilter(this);
    }

    std::optional<GridModel::Cell> take() { return std::exchange(cell_, std::nullopt); }

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::MouseButtonPress)
            cell_ = cellOf_(view_->indexAt(static_cast<QMouseEvent*>(event)->position().toPoint()));
        return false;
    }

private:
    QAbstractItemView* view_;
    Binder::CellOf cellOf_;
    std::optional<GridModel::Cell> cell_;
};

}  // namespace

void Binder::cellClicks(QAbstractItemView* view, CellOf cellOf, CellAct click, CellAct doubleClick)
{
    // A view's index holds only until its model changes, and the click itself may change
    // it (a tick that refills the rows) before the view tells of the click. So the cell
    // is read while the index is fresh: the click's when the button goes down, the
    // double click's at once.
    auto* pressed = new PressedCell(view, cellOf);
    connect(view, &QAbstractItemView::clicked, this, [this, pressed, click](const QModelIndex&) {
        if (const auto cell = pressed->take()) act([&] { click(*cell); });
    });
    connect(view, &QAbstractItemView::doubleClicked, this, [this, cellOf, doubleClick](const QModelIndex& i) {
        if (const auto cell = cellOf(i)) act([&] { doubleClick(*cell); });
    });
}

void Binder::commitTypedText(controls::Control& c, QWidget* w)
{
    auto* edit = qobject_cast<QLineEdit*>(w);
    auto* number = dynamic_cast<controls::NumberInput*>(&c);
    auto* date = dynamic_cast<controls::DateInput*>(&c);
    if (!edit || !(number || date)) return;
    if (edit->text() == (number ? number->text() : date->text())) return;
    act([&] {
        const bool ok = number ? number->typeText(edit->text()) : date->typeText(edit->text());
        if (!ok) {
            QApplication::beep();
            const QSignalBlocker block(edit);
            edit->setText(number ? number->text() : date->text());
        }
    });
}

void Binder::button(controls::Button& c, QAbstractButton* w)
{
    common(c, w, [&c, w] { w->setText(c.caption()); });
    connect(w, &QAbstractButton::clicked, this, [this, &c] { act([&] { c.click(); }); });
}

void Binder::option(controls::OptionButton& c, QRadioButton* w)
{
    common(c, w, [&c, w] {
        const QSignalBlocker block(w);
        w->setText(c.caption());
        w->setChecked(c.value());
    });
    connect(w, &QRadioButton::clicked, this, [this, &c] { act([&] { c.setValue(true); }); });
}

void Binder::check(controls::CheckBox& c, QCheckBox* w)
{
    common(c, w, [&c, w] {
        const QSignalBlocker block(w);
        w->setText(c.caption());
        w->setChecked(c.value() != 0);
    });
    connect(w, &QCheckBox::clicked, this, [this, &c](bool on) { act([&] { c.setValue(on ? 1 : 0); }); });
}

void Binder::menu(controls::MenuItem& c, QAction* w)
{
    w->setObjectName(c.name());
    auto sync = [&c, w] {
        w->setText(c.caption());
        w->setEnabled(c.enabled());
        w->setVisible(c.visible());
        w->setCheckable(c.checked() || w->isCheckable());
        w->setChecked(c.checked());
    };
    sync();
    if (!c.shortcut().isEmpty()) w->setShortcut(QKeySequence(c.shortcut()));
    observers_.emplace_back(&c, c.observe([sync](const controls::Change&) { sync(); }));
    connect(w, &QAction::triggered, this, [this, &c, w] {
        act([&] { c.click(); });
        w->setChecked(c.checked());
    });
}

QMenu* Binder::submenu(controls::MenuItem& title, QWidget* owner)
{
    auto* m = new QMenu(owner);
    menu(title, m->menuAction());
    return m;
}

void Binder::menuItem(QMenu* m, controls::MenuItem& item, bool checkable)
{
    if (item.caption() == QLatin1String("-")) {
        m->addSeparator()->setObjectName(item.name());
        return;
    }
    QAction* a = m->addAction(item.caption());
    a->setCheckable(checkable);
    menu(item, a);
}

void Binder::text(controls::TextInput& c, QLineEdit* w)
{
    common(c, w, [&c, w] {
        if (w->text() != c.text()) {
            const QSignalBlocker block(w);
            w->setText(c.text());
        }
        w->setReadOnly(c.locked());
        if (c.maxLength() > 0) w->setMaxLength(c.maxLength());
    });
    auto* number = dynamic_cast<controls::NumberInput*>(&c);
    auto* date = dynamic_cast<controls::DateInput*>(&c);
    if (number || date) {
        // Number and date inputs take the operator's text when it is complete.
        connect(w, &QLineEdit::editingFinished, this, [this, &c, w] { commitTypedText(c, w); });
        if (date) w->setPlaceholderText(date->format().toLower());
    } else {
        connect(w, &QLineEdit::textEdited, this, [this, &c](const QString& t) { act([&] { c.setText(t); }); });
    }
}

void Binder::combo(controls::ComboBox& c, QComboBox* w)
{
    common(c, w, [&c, w] {
        const QSignalBlocker block(w);
        bool same = w->count() == c.ListCount();
        for (int i = 0; same && i < c.ListCount(); ++i) same = w->itemText(i) == c.List(i);
        if (!same) {
            w->clear();
            for (int i = 0; i < c.ListCount(); ++i) w->addItem(c.List(i));
        }
        w->setCurrentIndex(c.ListIndex());
    });
    // The items mirror the model's at every change, so an index the list no longer
    // holds can only come from a choice made as the list shrank.
    connect(w, &QComboBox::activated, this, [this, &c](int i) {
        if (i >= 0 && i < c.ListCount()) act([&] { c.setListIndex(i); });
    });
}

void Binder::list(controls::ListBox& c, QListWidget* w)
{
    common(c, w, [&c, w] {
        const QSignalBlocker block(w);
        w->clear();
        for (int i = 0; i < c.ListCount(); ++i) w->addItem(c.List(i));
        w->setCurrentRow(c.ListIndex());
        QPalette pal = w->palette();
        pal.setColor(QPalette::Base, toQColor(c.backColor()));
        w->setPalette(pal);
    });
    auto cellOf = [&c, w](const QModelIndex& i) -> std::optional<GridModel::Cell> {
        if (!i.isValid() || i.model() != w->model() || i.row() >= c.ListCount()) return std::nullopt;
        return GridModel::Cell{0, i.row()};
    };
    cellClicks(
        w, cellOf,
        [&c](const GridModel::Cell& cell) {
            if (c.ListIndex() == cell.row) {
                if (c.Click) c.Click();
            } else {
                c.setListIndex(cell.row);
            }
        },
        [&c](const GridModel::Cell& cell) { c.doubleClick(cell.row); });
}

void Binder::label(controls::Label& c, QLabel* w)
{
    common(c, w, [&c, w] { w->setText(c.caption()); });
}

void Binder::frame(controls::Frame& c, QGroupBox* w)
{
    common(c, w, [&c, w] { w->setTitle(c.caption()); });
}

void Binder::picture(controls::Picture& c, ClickableLabel* w)
{
    common(c, w, [&c, w] {
        if (c.picturePath().isEmpty()) return;
        const QPixmap pm(c.picturePath());
        if (!pm.isNull()) w->setPixmap(pm);
    });
    connect(w, &ClickableLabel::clicked, this, [this, &c] { act([&] { c.click(); }); });
}

void Binder::status(controls::StatusBar& c, QStatusBar* w)
{
    common(c, w, [&c, w] { w->showMessage(c.text()); });
}

GridModel* Binder::grid(controls::Grid& c, QTableView* w, std::vector<std::pair<int, QString>> columns)
{
    std::vector<GridModel::Column> cols;
    for (auto& [col, title] : columns) cols.push_back({col, title});
    auto* model = new GridModel(c, std::move(cols), platform_, w);
    w->setModel(model);
    w->setSelectionBehavior(QAbstractItemView::SelectRows);
    w->setSelectionMode(QAbstractItemView::SingleSelection);
    w->verticalHeader()->setDefaultSectionSize(22);
    common(c, w, [&c, w, model] {
        const int vr = model->viewRow(c.ActiveRow());
        if (vr >= 0 && w->currentIndex().row() != vr) w->setCurrentIndex(model->index(vr, 0));
    });
    cellClicks(
        w, [model](const QModelIndex& i) { return model->cellAt(i); },
        [&c](const GridModel::Cell& cell) { c.clickCell(cell.col, cell.row); },
        [&c](const GridModel::Cell& cell) { c.dblClickCell(cell.col, cell.row); });
    return model;
}

}  // namespace gui
