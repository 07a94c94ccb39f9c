#pragma once
// Binds the controls of one screen model to the widgets of its window. The widget
// forwards the operator's act to the model (through QtPlatform::dispatch) and redraws
// from the model's change notices; it keeps no state of its own and blocks its own
// echo with QSignalBlocker.

#include "controls/buttons.h"
#include "controls/grid.h"
#include "controls/inputs.h"
#include "controls/lists.h"
#include "controls/screen.h"
#include "controls/static_controls.h"

#include "gui/grid_model.h"

#include <QHash>
#include <QLabel>
#include <QObject>

#include <optional>

class QAbstractButton;
class QAbstractItemView;
class QAction;
class QCheckBox;
class QComboBox;
class QGroupBox;
class QLineEdit;
class QListWidget;
class QMenu;
class QRadioButton;
class QStatusBar;
class QTableView;

namespace gui {

class QtPlatform;

// A label that can be clicked (the sheet and envelope pictures).
class ClickableLabel : public QLabel {
    Q_OBJECT
public:
    using QLabel::QLabel;
Q_SIGNALS:
    void clicked();

protected:
    void mouseReleaseEvent(QMouseEvent* event) override;
};

class Binder : public QObject {
public:
    Binder(QtPlatform& platform, controls::Screen& screen, QWidget* window);
    ~Binder() override;

    void button(controls::Button& c, QAbstractButton* w);
    void option(controls::OptionButton& c, QRadioButton* w);
    void check(controls::CheckBox& c, QCheckBox* w);
    void menu(controls::MenuItem& c, QAction* w);
    // A menu or submenu titled by its model item (add it to the bar or the parent menu),
    // and an item of a menu: a caption of "-" is a separator line.
    QMenu* submenu(controls::MenuItem& title, QWidget* owner);
    void menuItem(QMenu* m, controls::MenuItem& item, bool checkable = false);
    void text(controls::TextInput& c, QLineEdit* w);
    void combo(controls::ComboBox& c, QComboBox* w);
    void list(controls::ListBox& c, QListWidget* w);
    void label(controls::Label& c, QLabel* w);
    void frame(controls::Frame& c, QGroupBox* w);
    void picture(controls::Picture& c, ClickableLabel* w);
    void status(controls::StatusBar& c, QStatusBar* w);
    GridModel* grid(controls::Grid& c, QTableView* w, std::vector<std::pair<int, QString>> columns);

    // The grid cell (a list's line as row, column 0) under a view index, if the view's
    // model still holds it.
    using CellOf = std::function<std::optional<GridModel::Cell>(const QModelIndex&)>;

    // The widget of a control, for focus moves the model makes.
    QWidget* widgetOf(const controls::Control* c) const { return widgets_.value(c); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void common(controls::Control& c, QWidget* w, std::function<void()> refresh);
    void act(const std::function<void()>& f);
    // The mouse's clicks and double clicks on the cells of a grid or list view.
    using CellAct = std::function<void(const GridModel::Cell&)>;
    void cellClicks(QAbstractItemView* view, CellOf cellOf, CellAct click, CellAct doubleClick);
    // Hands the text typed into a number or date input to its model control.
    void commitTypedText(controls::Control& c, QWidget* w);

    QtPlatform& platform_;
    controls::Screen& screen_;
    QWidget* window_;
    QHash<const controls::Control*, QWidget*> widgets_;
    QHash<QWidget*, controls::Control*> controlsOf_;
    std::vector<std::pair<controls::Control*, int>> observers_;
};

}  // namespace gui
