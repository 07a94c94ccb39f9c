// The windows of the consent screen, the progress report screen and the staff search,
// on the offscreen platform over a small installation: each window shows its model's
// controls, the operator's clicks and keys reach the model, and the model's changes
// show in the widgets.

#include "desk.h"
#include "gui/doui_window.h"
#include "gui/keika_window.h"
#include "gui/staff_search_window.h"

#include "dialogs/staff_search.h"
#include "selection/frm_doui.h"
#include "selection/frm_seal_sejutsu_keika.h"

#include <QAbstractItemModel>
#include <QPushButton>
#include <QRadioButton>

using desk::child;
using sealtest::ConsentDb;
using sealtest::ProcessValues;

namespace {

// Office 1 branch 2 with three staff members, one of them no longer managed.
class SideWindows : public desk::Bench {
protected:
    SideWindows() : values(install)
    {
        install.addStaff(11, QStringLiteral("佐藤 一郎"), QStringLiteral("0"), QStringLiteral("サトウ イチロウ"));
        install.addStaff(12, QStringLiteral("鈴木 花子"), QStringLiteral("0"), QStringLiteral("スズキ ハナコ"));
        install.addStaff(13, QStringLiteral("高橋 三郎"), QStringLiteral("1"), QStringLiteral("タカハシ サブロウ"));
        db = install.connect();
    }

    const QStringList& transcript() const { return values.platform.transcript(); }

    // A side screen started in a mode over the recording platform, and its window.
    template <class S, class W>
    struct Side {
        Side(SideWindows& t, short mode, controls::Platform& model) : screen(model), window(t.qt, init(screen, t, mode))
        {}
        static S& init(S& s, SideWindows& t, short mode)
        {
            s.iInit(*t.db, mode);
            return s;
        }
        S screen;
        W window;
    };
    using Doui = Side<selection::frmDoui, gui::DouiWindow>;
    using Keika = Side<selection::frmSeal_SejutsuKeika, gui::KeikaWindow>;
    Doui doui(short mode) { return Doui(*this, mode, values.platform); }
    Keika keika(short mode) { return Keika(*this, mode, values.platform); }

    ConsentDb install;
    ProcessValues values;  // the models talk to the recording platform
    std::unique_ptr<data::cT_ADODB> db;
};

// --- the consent renewal window ------------------------------------------------------

struct DouiModeCase {
    const char* name;
    short mode;
    const char* title;
    bool printsLedger;  // 印刷 and ﾌﾟﾚﾋﾞｭｰ shown, the hand-over hidden
};

class DouiModes : public SideWindows, public ::testing::WithParamInterface<DouiModeCase> {};

TEST_P(DouiModes, CaptionAndCommandsFollowTheMode)
{
    const DouiModeCase& c = GetParam();
    auto opened = doui(c.mode);
    auto& [screen, window] = opened;
    window.show();

    EXPECT_EQ(window.windowTitle(), QString::fromUtf8(c.title));
    EXPECT_EQ(child<QPushButton>(window, "btnPrint(0)")->isVisible(), c.printsLedger);
    EXPECT_EQ(child<QPushButton>(window, "btnPrint(1)")->isVisible(), c.printsLedger);
    EXPECT_EQ(child<QPushButton>(window, "btnPrint(2)")->isVisible(), !c.printsLedger);
    EXPECT_EQ(child<QCheckBox>(window, "chkEachSejyutusya")->isVisible(), !c.printsLedger);
    EXPECT_EQ(child<QCheckBox>(window, "chkIsiMatome")->isVisible(), !c.printsLedger);
    // Controls the screen never shows stay hidden in both modes.
    for (const char* hidden : {"opt_Sel(2)", "opt_Sel(6)", "optKijun(0)", "chkChushi", "chkStaff", "laTitle(1)"})
        EXPECT_FALSE(window.findChild<QWidget*>(QString::fromUtf8(hidden))->isVisible()) << hidden;
    EXPECT_EQ(child<QPushButton>(window, "btnPrint(2)")->text(), QStringLiteral("ﾀｯｸｼｰﾙ抽出"));
    EXPECT_EQ(child<QPushButton>(window, "btnPrint(2)")->toolTip(), QStringLiteral("同意書更新の設定を登録します。"));
    EXPECT_EQ(child<QLineEdit>(window, "imD_Kigen")->text(), QStringLiteral("2026/11/01"));

    QComboBox* staff = child<QComboBox>(window, "cbSejyutsu");
    ASSERT_EQ(staff->count(), 3);  // the ended staff member is not listed
    EXPECT_EQ(staff->itemText(0), QStringLiteral("－ 指定なし －"));
    EXPECT_EQ(staff->itemText(2), QStringLiteral("鈴木 花子"));
}

INSTANTIATE_TEST_SUITE_P(SideWindows, DouiModes,
                         ::testing::Values(DouiModeCase{"SealMode", 1, "　同意書更新リスト設定", false},
                                           DouiModeCase{"LedgerMode", 0, "  同意書更新台帳", true}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(SideWindows, DouiKindClickMovesThePeriodShownInItsWidgets)
{
    auto opened = doui(1);
    auto& [screen, window] = opened;
    window.show();
    QRadioButton* sixMonths = child<QRadioButton>(window, "optKikan(1)");
    sixMonths->click();
    ASSERT_TRUE(screen.optKikan[1].value());

    child<QRadioButton>(window, "opt_Sel(1)")->click();
    EXPECT_TRUE(screen.opt_Sel[1].value());
    EXPECT_TRUE(child<QRadioButton>(window, "optKikan(2)")->isChecked());
    EXPECT_FALSE(sixMonths->isChecked());
    // The kind stays chosen: the period's options are a choice of their own.
    EXPECT_TRUE(child<QRadioButton>(window, "opt_Sel(1)")->isChecked());

    child<QRadioButton>(window, "opt_Sel(0)")->click();
    EXPECT_TRUE(child<QRadioButton>(window, "optKikan(0)")->isChecked());
}

TEST_F(SideWindows, DouiStaffNumberTypedAndEnteredChoosesTheStaffMember)
{
    auto opened = doui(1);
    auto& [screen, window] = opened;
    ASSERT_TRUE(desk::activate(window));
    QLineEdit* number = child<QLineEdit>(window, "imNum_StaffNo");
    QComboBox* staff = child<QComboBox>(window, "cbSejyutsu");

    number->setFocus();
    QTest::keyClicks(number, QStringLiteral("12"));
    QTest::keyClick(number, Qt::Key_Return);
    EXPECT_EQ(screen.imNum_StaffNo.value(), 12);
    EXPECT_EQ(staff->currentText(), QStringLiteral("鈴木 花子"));

    // A number the check refuses leaves the list where it was, after the box.
    number->selectAll();
    QTest::keyClicks(number, QStringLiteral("99"));
    QTest::keyClick(number, Qt::Key_Return);
    EXPECT_EQ(staff->currentText(), QStringLiteral("鈴木 花子"));
    EXPECT_FALSE(
        transcript().filter(QStringLiteral("施術者の検索に失敗しました対象の施術者が存在しません。")).isEmpty());

    number->selectAll();
    QTest::keyClick(number, Qt::Key_Delete);
    QTest::keyClick(number, Qt::Key_Return);
    EXPECT_EQ(staff->currentIndex(), 0);
}

TEST_F(SideWindows, DouiMenuKeysInTheSealMode)
{
    auto opened = doui(1);
    auto& [screen, window] = opened;
    ASSERT_TRUE(desk::activate(window));
    values.platform.clearTranscript();

    // Print and preview are off in this mode: their keys do nothing.
    QTest::keyClick(&window, Qt::Key_F1);
    QTest::keyClick(&window, Qt::Key_F2);
    EXPECT_TRUE(transcript().isEmpty()) << transcript().join(u'\n').toStdString();

    // The hand-over finds no consents and says so; the screen stays.
    QTest::keyClick(&window, Qt::Key_F3);
    ASSERT_FALSE(transcript().isEmpty());
    EXPECT_TRUE(transcript().first().startsWith(QStringLiteral("box "))) << transcript().first().toStdString();
    EXPECT_FALSE(screen.isUnloaded());

    QTest::keyClick(&window, Qt::Key_F12);
    EXPECT_TRUE(screen.isUnloaded());
}

TEST_F(SideWindows, DouiSortMenuTicksOneEntryAndTheCloseBoxGoesToTheModel)
{
    auto opened = doui(0);
    auto& [screen, window] = opened;
    QAction* byDeadline = nullptr;
    QAction* byPatient = nullptr;
    for (QAction* a : window.findChildren<QAction*>()) {
        if (a->text() == QStringLiteral("同意期限")) byDeadline = a;
        if (a->text() == QStringLiteral("患者ID")) byPatient = a;
    }
    ASSERT_TRUE(byDeadline && byPatient);
    EXPECT_TRUE(byDeadline->isChecked());

    byPatient->trigger();
    EXPECT_EQ(screen.cond.iSort, 1);
    EXPECT_TRUE(byPatient->isChecked());
    EXPECT_FALSE(byDeadline->isChecked());

    // Choosing the ticked entry again keeps it ticked, as the model does.
    byPatient->trigger();
    EXPECT_TRUE(byPatient->isChecked());

    window.show();
    window.close();
    EXPECT_TRUE(screen.isUnloaded());
}

// --- the progress report window ------------------------------------------------------

TEST_F(SideWindows, KeikaShowsItsMonthsStaffAndHandOverOnly)
{
    auto opened = keika(0);
    auto& [screen, window] = opened;
    window.show();

    EXPECT_EQ(window.windowTitle(), QStringLiteral("抽出条件設定"));
    EXPECT_EQ(child<QLineEdit>(window, "imD_Kigen")->text(), QStringLiteral("2026/11/01"));
    EXPECT_EQ(child<QLineEdit>(window, "imD_Kigen_To")->text(), QStringLiteral("2026/11/01"));
    EXPECT_TRUE(child<QWidget>(window, "fraStaff")->isVisible());
    EXPECT_TRUE(child<QPushButton>(window, "btnPrint(2)")->isVisible());
    EXPECT_TRUE(child<QPushButton>(window, "btnPrint(6)")->isVisible());
    for (const char* hidden : {"Frame2", "opt_Sel(0)", "optKikan(0)", "laTitle(2)", "chkKijunDisp", "chkStaff",
                               "btnPrint(0)", "btnPrint(1)"})
        EXPECT_FALSE(window.findChild<QWidget*>(QString::fromUtf8(hidden))->isVisible()) << hidden;
    int on = 0;
    for (QAction* a : window.findChildren<QAction*>())
        if (a->text() == QStringLiteral("印刷") || a->text() == QStringLiteral("ﾌﾟﾚﾋﾞｭｰ") ||
            a->text() == QStringLiteral("タックシール抽出"))
            on += a->isEnabled() ? 1 : 0;
    EXPECT_EQ(on, 0);
}

TEST_F(SideWindows, KeikaStaffNumberShowsTheNameWhenTheFieldIsLeft)
{
    auto opened = keika(0);
    auto& [screen, window] = opened;
    ASSERT_TRUE(desk::activate(window));
    QLineEdit* number = child<QLineEdit>(window, "imNum_StaffNo");
    number->setFocus();
    QTest::keyClicks(number, QStringLiteral("13"));
    child<QLineEdit>(window, "imD_Kigen")->setFocus();

    EXPECT_EQ(screen.imNum_StaffNo.value(), 13);
    // Ended staff are found here, unlike in the list.
    EXPECT_EQ(child<QLineEdit>(window, "txtStaffName")->text(), QStringLiteral("高橋 三郎"));
}

TEST_F(SideWindows, KeikaEnterMovesToTheNextFieldAndTheHandOverButtonRuns)
{
    Keika opened(*this, 1, qt);  // the key the screen sends moves the real focus
    auto& [screen, window] = opened;
    ASSERT_TRUE(desk::activate(window));
    QLineEdit* from = child<QLineEdit>(window, "imD_Kigen");
    from->setFocus();
    QTest::keyClick(from, Qt::Key_Return);
    EXPECT_TRUE(child<QLineEdit>(window, "imD_Kigen_To")->hasFocus());
    EXPECT_EQ(screen.ActiveControl(), &screen.imD_Kigen_To);

    values.platform.clearTranscript();
    child<QPushButton>(window, "btnPrint(2)")->click();
    EXPECT_FALSE(transcript().filter(QStringLiteral("該当するケアマネージャーデータがありません。")).isEmpty())
        << transcript().join(u'\n').toStdString();
    EXPECT_FALSE(screen.isUnloaded());
}

TEST_F(SideWindows, KeikaMenuKeys)
{
    auto opened = keika(0);
    auto& [screen, window] = opened;
    ASSERT_TRUE(desk::activate(window));
    values.platform.clearTranscript();

    // Here only the button starts the hand-over: F3 stays off, like print and preview.
    for (Qt::Key k : {Qt::Key_F1, Qt::Key_F2, Qt::Key_F3}) QTest::keyClick(&window, k);
    EXPECT_TRUE(transcript().isEmpty()) << transcript().join(u'\n').toStdString();

    QTest::keyClick(&window, Qt::Key_F12);
    EXPECT_TRUE(screen.isUnloaded());
}

// --- the staff search window ---------------------------------------------------------

class StaffSearchWindowTest : public SideWindows {
protected:
    // The window as the modal call shows it: built, then loaded and first activated.
    void open(qint32 selected)
    {
        screen.iInit(selected, 0, -1);
        window = std::make_unique<gui::StaffSearchWindow>(qt, screen);
        screen.load();
        ASSERT_TRUE(desk::activate(*window));
        screen.activate();
        list = child<QTableView>(*window, "spr_1ran");
    }

    QString cell(int row, int col) const { return list->model()->index(row, col).data().toString(); }

    void clickRow(int row) { QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, desk::cellCentre(list, row, 1)); }

    dialogs::frm施術者検索 screen{values.platform};
    std::unique_ptr<gui::StaffSearchWindow> window;
    QTableView* list = nullptr;
};

TEST_F(StaffSearchWindowTest, FirstDisplayListsStaffAndMarksTheChosenOne)
{
    open(12);
    EXPECT_EQ(window->windowTitle(), QStringLiteral("施術者検索"));
    ASSERT_EQ(list->model()->rowCount(), 2);  // ended staff only on request
    ASSERT_EQ(list->model()->columnCount(), 3);
    EXPECT_EQ(list->model()->headerData(0, Qt::Horizontal).toString(), QStringLiteral("IDNo."));
    EXPECT_EQ(list->model()->headerData(1, Qt::Horizontal).toString(), QStringLiteral("施術者名"));
    EXPECT_EQ(list->model()->headerData(2, Qt::Horizontal).toString(), QStringLiteral("フリガナ"));
    EXPECT_EQ(cell(0, 0), QStringLiteral("11"));
    EXPECT_EQ(cell(1, 2), QStringLiteral("スズキ ハナコ"));
    EXPECT_EQ(list->currentIndex().row(), 1);
    EXPECT_TRUE(child<QPushButton>(*window, "but_Act(0)")->isEnabled());
    EXPECT_EQ(child<QPushButton>(*window, "but_Act(0)")->text(), QStringLiteral("確 定"));
    EXPECT_TRUE(window->findChild<QWidget*>(QStringLiteral("in_SiboriID"))->hasFocus());
}

TEST_F(StaffSearchWindowTest, ClickedRowIsTakenByTheConfirmButton)
{
    open(0);
    clickRow(0);
    child<QPushButton>(*window, "but_Act(0)")->click();
    EXPECT_EQ(screen.nResult, 1);
    EXPECT_EQ(screen.nSeledCD, 11);
    EXPECT_EQ(screen.csSeledName, QStringLiteral("佐藤 一郎"));
    EXPECT_TRUE(screen.isUnloaded());
}

TEST_F(StaffSearchWindowTest, DoubleClickTakesTheRow)
{
    open(0);
    desk::doubleClick(list->viewport(), desk::cellCentre(list, 1, 1));
    EXPECT_EQ(screen.nResult, 1);
    EXPECT_EQ(screen.nSeledCD, 12);
}

TEST_F(StaffSearchWindowTest, FilterTypedThenF4SearchesAgain)
{
    open(0);
    QLineEdit* kana = child<QLineEdit>(*window, "txt_SiboriKana");
    kana->setFocus();
    desk::typeKeys(kana, QStringLiteral("サトウ"));
    QTest::keyClick(window.get(), Qt::Key_F4);
    ASSERT_EQ(list->model()->rowCount(), 1);
    EXPECT_EQ(cell(0, 1), QStringLiteral("佐藤 一郎"));

    // The ended staff member appears once the check box asks for ended staff.
    kana->clear();
    desk::typeKeys(kana, QStringLiteral("タカハシ"));
    child<QCheckBox>(*window, "chkEndSejutsuha")->click();
    child<QPushButton>(*window, "but_Read")->click();
    ASSERT_EQ(list->model()->rowCount(), 1);
    EXPECT_EQ(cell(0, 0), QStringLiteral("13"));
}

TEST_F(StaffSearchWindowTest, F5TakesTheClickedRow)
{
    open(12);
    clickRow(0);
    QTest::keyClick(window.get(), Qt::Key_F5);
    EXPECT_EQ(screen.nResult, 1);
    EXPECT_EQ(screen.nSeledCD, 11);
    EXPECT_TRUE(screen.isUnloaded());
}

TEST_F(StaffSearchWindowTest, F12AndTheCloseBoxLeaveWithoutAChoice)
{
    open(12);
    QTest::keyClick(window.get(), Qt::Key_F12);
    EXPECT_TRUE(screen.isUnloaded());
    EXPECT_EQ(screen.nResult, 0);

    dialogs::frm施術者検索 other(values.platform);
    other.iInit(0, 0, -1);
    gui::StaffSearchWindow second(qt, other);
    other.load();
    second.show();
    other.activate();
    second.close();
    EXPECT_TRUE(other.isUnloaded());
    EXPECT_EQ(other.nResult, 0);
}

// --- the desktop as a whole ----------------------------------------------------------

// The staff search opened from the consent window as a real modal window: the choice
// made in it comes back to the consent window.
TEST_F(SideWindows, StaffSearchRunsModallyOnTheDesktop)
{
    gui::QtPlatform desktop([&](controls::Screen& s) { return gui::makeView(desktop, s); });
    sealtest::GlobalsScope globals(desktop);
    selection::frmDoui screen(values.platform);
    screen.iInit(*db, 1);
    gui::DouiWindow window(desktop, screen);
    ASSERT_TRUE(desk::activate(window));

    // Acts inside the search's own event loop once its window is up; the safety timer
    // closes it should the check fail, so that the test cannot hang.
    const QString title = QStringLiteral("施術者検索");
    auto openSearch = [&]() -> QWidget* {
        for (QWidget* top : QApplication::topLevelWidgets())
            if (top->isVisible() && top->windowTitle() == title) return top;
        return nullptr;
    };
    bool seen = false;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, [&] {
        QWidget* search = openSearch();
        if (!search) return;
        poll.stop();
        auto* view = search->findChild<QTableView*>(QStringLiteral("spr_1ran"));
        if (!view || view->model()->rowCount() != 2) return;
        seen = true;
        desk::doubleClick(view->viewport(), desk::cellCentre(view, 0, 1));
    });
    poll.start(20);
    QTimer safety;
    safety.setSingleShot(true);
    QObject::connect(&safety, &QTimer::timeout, [&] {
        if (QWidget* search = openSearch()) search->close();
    });
    safety.start(5000);

    child<QPushButton>(window, "btn_StaffSelect")->click();

    EXPECT_TRUE(seen);
    EXPECT_EQ(child<QLineEdit>(window, "imNum_StaffNo")->text(), QStringLiteral("11"));
    EXPECT_EQ(child<QComboBox>(window, "cbSejyutsu")->currentText(), QStringLiteral("佐藤 一郎"));
}

}  // namespace

// --- every side window on an office screen -------------------------------------------

TEST_F(SideWindows, EachSideWindowFitsA1024x768ScreenAndShowsItsModel)
{
    auto d = doui(1);
    auto k = keika(0);
    dialogs::frm施術者検索 staff{values.platform};
    staff.iInit(0, 0, -1);
    gui::StaffSearchWindow staffWindow(qt, staff);
    staff.load();
    const std::pair<QWidget*, controls::Screen*> windows[] = {
        {&d.window, &d.screen}, {&k.window, &k.screen}, {&staffWindow, &staff}};
    for (auto [window, screen] : windows) {
        window->show();
        QApplication::processEvents();
        // Under a title bar and a task bar.
        const QSize room(1024, 768 - 70);
        EXPECT_LE(window->width(), room.width()) << screen->name().toStdString();
        EXPECT_LE(window->height(), room.height()) << screen->name().toStdString();
        EXPECT_LE(window->minimumSizeHint().height(), room.height()) << screen->name().toStdString();
        EXPECT_EQ(desk::mirrorFaults(*window, *screen), QStringList()) << screen->name().toStdString();
    }
}
