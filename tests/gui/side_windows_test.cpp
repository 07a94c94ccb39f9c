// The windows of the consent screen, the progress report screen and the staff search,
// on the offscreen platform over a small installation: each window shows its model's
// controls, the operator's clicks and keys reach the model, and the model's changes
// show in the widgets.

#include "desk.h"
#include "gui/doui_window.h"
#include "gui/keika_window.h"
#include "gui/qt_platform.h"
#include "gui/staff_search_window.h"
#include "gui/views.h"

#include "dialogs/staff_search.h"
#include "selection/frm_doui.h"
#include "selection/frm_seal_sejutsu_keika.h"
#include "support/consent_db.h"

#include <QAbstractItemModel>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

using sealtest::ConsentDb;
using sealtest::ProcessValues;

namespace {

QApplication& application() { return desk::application(); }

template <class W>
W* widget(QWidget& window, const char* name)
{
    W* w = window.findChild<W*>(QString::fromUtf8(name));
    if (!w) ADD_FAILURE() << "no widget " << name;
    return w;
}

// Shows a window and makes it the active one, so that its menu keys work.
bool activate(QWidget& window)
{
    window.show();
    window.activateWindow();
    return QTest::qWaitForWindowActive(&window);
}

// Types text as the keyboard does, one character a key; Japanese too, unlike keyClicks.
void typeInto(QWidget* w, const QString& text)
{
    for (QChar ch : text) QTest::sendKeyEvent(QTest::Click, w, Qt::Key_unknown, QString(ch), Qt::NoModifier);
}

// A double click as the mouse gives it: a click, then the second press.
void doubleClick(QTableView* view, int row)
{
    const QPoint at = view->visualRect(view->model()->index(row, 1)).center();
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, at);
    QTest::mouseDClick(view->viewport(), Qt::LeftButton, {}, at);
}

bool recorded(const QStringList& transcript, const QString& part)
{
    for (const QString& line : transcript)
        if (line.contains(part)) return true;
    return false;
}

// Office 1 branch 2 with three staff members, one of them no longer managed.
class SideWindows : public ::testing::Test {
protected:
    SideWindows() : app(application()), values(install), qt({})
    {
        install.addStaff(11, QStringLiteral("佐藤 一郎"), QStringLiteral("0"), QStringLiteral("サトウ イチロウ"));
        install.addStaff(12, QStringLiteral("鈴木 花子"), QStringLiteral("0"), QStringLiteral("スズキ ハナコ"));
        install.addStaff(13, QStringLiteral("高橋 三郎"), QStringLiteral("1"), QStringLiteral("タカハシ サブロウ"));
        db = install.connect();
    }

    const QStringList& transcript() const { return values.platform.transcript(); }

    QApplication& app;
    ConsentDb install;
    ProcessValues values;
    gui::QtPlatform qt;  // the windows' dispatch; the models talk to the recording platform
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
    selection::frmDoui screen(values.platform);
    screen.iInit(*db, c.mode);
    gui::DouiWindow window(qt, screen);
    window.show();

    EXPECT_EQ(window.windowTitle(), QString::fromUtf8(c.title));
    EXPECT_EQ(widget<QPushButton>(window, "btnPrint(0)")->isVisible(), c.printsLedger);
    EXPECT_EQ(widget<QPushButton>(window, "btnPrint(1)")->isVisible(), c.printsLedger);
    EXPECT_EQ(widget<QPushButton>(window, "btnPrint(2)")->isVisible(), !c.printsLedger);
    EXPECT_EQ(widget<QCheckBox>(window, "chkEachSejyutusya")->isVisible(), !c.printsLedger);
    EXPECT_EQ(widget<QCheckBox>(window, "chkIsiMatome")->isVisible(), !c.printsLedger);
    // Controls the screen never shows stay hidden in both modes.
    for (const char* hidden : {"opt_Sel(2)", "opt_Sel(6)", "optKijun(0)", "chkChushi", "chkStaff", "laTitle(1)"})
        EXPECT_FALSE(window.findChild<QWidget*>(QString::fromUtf8(hidden))->isVisible()) << hidden;
    EXPECT_EQ(widget<QPushButton>(window, "btnPrint(2)")->text(), QStringLiteral("ﾀｯｸｼｰﾙ抽出"));
    EXPECT_EQ(widget<QPushButton>(window, "btnPrint(2)")->toolTip(), QStringLiteral("同意書更新の設定を登録します。"));
    EXPECT_EQ(widget<QLineEdit>(window, "imD_Kigen")->text(), QStringLiteral("2026/11/01"));

    QComboBox* staff = widget<QComboBox>(window, "cbSejyutsu");
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
    selection::frmDoui screen(values.platform);
    screen.iInit(*db, 1);
    gui::DouiWindow window(qt, screen);
    window.show();
    QRadioButton* sixMonths = widget<QRadioButton>(window, "optKikan(1)");
    sixMonths->click();
    ASSERT_TRUE(screen.optKikan[1].value());

    widget<QRadioButton>(window, "opt_Sel(1)")->click();
    EXPECT_TRUE(screen.opt_Sel[1].value());
    EXPECT_TRUE(widget<QRadioButton>(window, "optKikan(2)")->isChecked());
    EXPECT_FALSE(sixMonths->isChecked());
    // The kind stays chosen: the period's options are a choice of their own.
    EXPECT_TRUE(widget<QRadioButton>(window, "opt_Sel(1)")->isChecked());

    widget<QRadioButton>(window, "opt_Sel(0)")->click();
    EXPECT_TRUE(widget<QRadioButton>(window, "optKikan(0)")->isChecked());
}

TEST_F(SideWindows, DouiStaffNumberTypedAndEnteredChoosesTheStaffMember)
{
    selection::frmDoui screen(values.platform);
    screen.iInit(*db, 1);
    gui::DouiWindow window(qt, screen);
    ASSERT_TRUE(activate(window));
    QLineEdit* number = widget<QLineEdit>(window, "imNum_StaffNo");
    QComboBox* staff = widget<QComboBox>(window, "cbSejyutsu");

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
    EXPECT_TRUE(recorded(transcript(), QStringLiteral("施術者の検索に失敗しました対象の施術者が存在しません。")));

    number->selectAll();
    QTest::keyClick(number, Qt::Key_Delete);
    QTest::keyClick(number, Qt::Key_Return);
    EXPECT_EQ(staff->currentIndex(), 0);
}

TEST_F(SideWindows, DouiStaffSearchButtonOpensTheSearchAndShowsTheChoice)
{
    selection::frmDoui screen(values.platform);
    screen.iInit(*db, 1);
    gui::DouiWindow window(qt, screen);
    window.show();
    values.platform.modalDriver = [](controls::Screen& s) {
        auto& search = dynamic_cast<dialogs::frm施術者検索&>(s);
        search.spr_1ran.dblClickCell(1, 2);
    };

    widget<QPushButton>(window, "btn_StaffSelect")->click();
    EXPECT_TRUE(recorded(transcript(), QStringLiteral("screen open frm施術者検索")));
    EXPECT_EQ(widget<QLineEdit>(window, "imNum_StaffNo")->text(), QStringLiteral("12"));
    EXPECT_EQ(widget<QComboBox>(window, "cbSejyutsu")->currentText(), QStringLiteral("鈴木 花子"));
}

TEST_F(SideWindows, DouiMenuKeysInTheSealMode)
{
    selection::frmDoui screen(values.platform);
    screen.iInit(*db, 1);
    gui::DouiWindow window(qt, screen);
    ASSERT_TRUE(activate(window));
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

TEST_F(SideWindows, DouiSortMenuTicksOneEntry)
{
    selection::frmDoui screen(values.platform);
    screen.iInit(*db, 0);
    gui::DouiWindow window(qt, screen);
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
}

TEST_F(SideWindows, DouiCloseBoxGoesToTheModel)
{
    selection::frmDoui screen(values.platform);
    screen.iInit(*db, 0);
    gui::DouiWindow window(qt, screen);
    window.show();
    window.close();
    EXPECT_TRUE(screen.isUnloaded());
}

// --- the progress report window ------------------------------------------------------

TEST_F(SideWindows, KeikaShowsItsMonthsStaffAndHandOverOnly)
{
    selection::frmSeal_SejutsuKeika screen(values.platform);
    screen.iInit(*db, 0);
    gui::KeikaWindow window(qt, screen);
    window.show();

    EXPECT_EQ(window.windowTitle(), QStringLiteral("抽出条件設定"));
    EXPECT_EQ(widget<QLineEdit>(window, "imD_Kigen")->text(), QStringLiteral("2026/11/01"));
    EXPECT_EQ(widget<QLineEdit>(window, "imD_Kigen_To")->text(), QStringLiteral("2026/11/01"));
    EXPECT_TRUE(widget<QWidget>(window, "fraStaff")->isVisible());
    EXPECT_TRUE(widget<QPushButton>(window, "btnPrint(2)")->isVisible());
    EXPECT_TRUE(widget<QPushButton>(window, "btnPrint(6)")->isVisible());
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
    selection::frmSeal_SejutsuKeika screen(values.platform);
    screen.iInit(*db, 0);
    gui::KeikaWindow window(qt, screen);
    ASSERT_TRUE(activate(window));
    QLineEdit* number = widget<QLineEdit>(window, "imNum_StaffNo");
    number->setFocus();
    QTest::keyClicks(number, QStringLiteral("13"));
    widget<QLineEdit>(window, "imD_Kigen")->setFocus();

    EXPECT_EQ(screen.imNum_StaffNo.value(), 13);
    // Ended staff are found here, unlike in the list.
    EXPECT_EQ(widget<QLineEdit>(window, "txtStaffName")->text(), QStringLiteral("高橋 三郎"));
}

TEST_F(SideWindows, KeikaEnterMovesToTheNextFieldAndTheHandOverButtonRuns)
{
    selection::frmSeal_SejutsuKeika screen(qt);  // the key it sends moves the real focus
    screen.iInit(*db, 1);
    gui::KeikaWindow window(qt, screen);
    ASSERT_TRUE(activate(window));
    QLineEdit* from = widget<QLineEdit>(window, "imD_Kigen");
    from->setFocus();
    QTest::keyClick(from, Qt::Key_Return);
    EXPECT_TRUE(widget<QLineEdit>(window, "imD_Kigen_To")->hasFocus());
    EXPECT_EQ(screen.ActiveControl(), &screen.imD_Kigen_To);

    values.platform.clearTranscript();
    widget<QPushButton>(window, "btnPrint(2)")->click();
    EXPECT_TRUE(recorded(transcript(), QStringLiteral("該当するケアマネージャーデータがありません。")))
        << transcript().join(u'\n').toStdString();
    EXPECT_FALSE(screen.isUnloaded());
}

TEST_F(SideWindows, KeikaMenuKeys)
{
    selection::frmSeal_SejutsuKeika screen(values.platform);
    screen.iInit(*db, 0);
    gui::KeikaWindow window(qt, screen);
    ASSERT_TRUE(activate(window));
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
        ASSERT_TRUE(activate(*window));
        screen.activate();
        list = widget<QTableView>(*window, "spr_1ran");
    }

    QString cell(int row, int col) const { return list->model()->index(row, col).data().toString(); }

    void clickRow(int row)
    {
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                          list->visualRect(list->model()->index(row, 1)).center());
    }

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
    EXPECT_TRUE(widget<QPushButton>(*window, "but_Act(0)")->isEnabled());
    EXPECT_EQ(widget<QPushButton>(*window, "but_Act(0)")->text(), QStringLiteral("確 定"));
    EXPECT_TRUE(window->findChild<QWidget*>(QStringLiteral("in_SiboriID"))->hasFocus());
}

TEST_F(StaffSearchWindowTest, ClickedRowIsTakenByTheConfirmButton)
{
    open(0);
    clickRow(0);
    widget<QPushButton>(*window, "but_Act(0)")->click();
    EXPECT_EQ(screen.nResult, 1);
    EXPECT_EQ(screen.nSeledCD, 11);
    EXPECT_EQ(screen.csSeledName, QStringLiteral("佐藤 一郎"));
    EXPECT_TRUE(screen.isUnloaded());
}

TEST_F(StaffSearchWindowTest, DoubleClickTakesTheRow)
{
    open(0);
    doubleClick(list, 1);
    EXPECT_EQ(screen.nResult, 1);
    EXPECT_EQ(screen.nSeledCD, 12);
}

TEST_F(StaffSearchWindowTest, FilterTypedThenF4SearchesAgain)
{
    open(0);
    QLineEdit* kana = widget<QLineEdit>(*window, "txt_SiboriKana");
    kana->setFocus();
    typeInto(kana, QStringLiteral("サトウ"));
    QTest::keyClick(window.get(), Qt::Key_F4);
    ASSERT_EQ(list->model()->rowCount(), 1);
    EXPECT_EQ(cell(0, 1), QStringLiteral("佐藤 一郎"));

    // The ended staff member appears once the check box asks for ended staff.
    kana->clear();
    typeInto(kana, QStringLiteral("タカハシ"));
    widget<QCheckBox>(*window, "chkEndSejutsuha")->click();
    widget<QPushButton>(*window, "but_Read")->click();
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

TEST_F(SideWindows, EachSideScreenHasItsWindow)
{
    selection::frmDoui doui(values.platform);
    selection::frmSeal_SejutsuKeika keika(values.platform);
    dialogs::frm施術者検索 staff(values.platform);
    EXPECT_TRUE(dynamic_cast<gui::DouiWindow*>(gui::makeView(qt, doui).get()));
    EXPECT_TRUE(dynamic_cast<gui::KeikaWindow*>(gui::makeView(qt, keika).get()));
    EXPECT_TRUE(dynamic_cast<gui::StaffSearchWindow*>(gui::makeView(qt, staff).get()));
}

// The staff search opened from the consent window as a real modal window: the choice
// made in it comes back to the consent window.
TEST_F(SideWindows, StaffSearchRunsModallyOnTheDesktop)
{
    gui::QtPlatform desktop([&](controls::Screen& s) { return gui::makeView(desktop, s); });
    app::setPlatform(&desktop);
    selection::frmDoui screen(values.platform);
    screen.iInit(*db, 1);
    gui::DouiWindow window(desktop, screen);
    ASSERT_TRUE(activate(window));

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
        doubleClick(view, 0);
    });
    poll.start(20);
    QTimer safety;
    safety.setSingleShot(true);
    QObject::connect(&safety, &QTimer::timeout, [&] {
        if (QWidget* search = openSearch()) search->close();
    });
    safety.start(5000);

    widget<QPushButton>(window, "btn_StaffSelect")->click();
    app::setPlatform(&values.platform);

    EXPECT_TRUE(seen);
    EXPECT_EQ(widget<QLineEdit>(window, "imNum_StaffNo")->text(), QStringLiteral("11"));
    EXPECT_EQ(widget<QComboBox>(window, "cbSejyutsu")->currentText(), QStringLiteral("佐藤 一郎"));
}

}  // namespace

// --- every side window on an office screen -------------------------------------------

TEST_F(SideWindows, EachSideWindowFitsA1024x768ScreenAndShowsItsModel)
{
    selection::frmDoui doui(values.platform);
    doui.iInit(*db, 1);
    selection::frmSeal_SejutsuKeika keika(values.platform);
    keika.iInit(*db, 0);
    dialogs::frm施術者検索 staff{values.platform};
    staff.iInit(0, 0, -1);
    gui::DouiWindow douiWindow(qt, doui);
    gui::KeikaWindow keikaWindow(qt, keika);
    gui::StaffSearchWindow staffWindow(qt, staff);
    staff.load();
    const std::pair<QWidget*, controls::Screen*> windows[] = {
        {&douiWindow, &doui}, {&keikaWindow, &keika}, {&staffWindow, &staff}};
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
