#pragma once
// The desktop window of the staff search (frm施術者検索): the filters, the list of
// staff and the two commands.

#include "gui/screen_dialog.h"

#include <QDialog>
#include <memory>

class QTableView;

namespace dialogs {
class frm施術者検索;
}

namespace gui {

class Binder;
class QtPlatform;

class StaffSearchWindow : public ScreenDialog {
public:
    StaffSearchWindow(QtPlatform& platform, dialogs::frm施術者検索& screen);
    ~StaffSearchWindow() override;

private:
    QWidget* buildFilters();
    QWidget* buildList();
    QWidget* buildCommands();
    void buildMenus(QLayout* layout);
    void scrollActiveRowToTop();

    dialogs::frm施術者検索& screen_;
    std::unique_ptr<Binder> binder_;
    QTableView* list_ = nullptr;
    int listObserver_ = 0;
};

}  // namespace gui
