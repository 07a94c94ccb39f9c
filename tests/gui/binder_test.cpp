// The desktop binding both ways, on the offscreen platform: the operator's act reaches
// the model's handler, and a change in the model shows in the widget.

#include "desk.h"
#include "gui/binder.h"

#include <QPushButton>
#include <QRadioButton>

using namespace controls;

namespace {

class Form : public Screen {
public:
    explicit Form(Platform& p) : Screen(QStringLiteral("frmTest"), p)
    {
        add(btnDisp);
        add(chkCheck);
        add(optA);
        add(optB);
        add(txtName);
        add(cmbSealType);
        add(lstCheck);
        add(fpSpread02);
        optA.joinGroup(&group);
        optB.joinGroup(&group);
        fpSpread02.setCheckBoxColumn(1);
    }
    Button btnDisp{QStringLiteral("btnDisp"), QStringLiteral("検索")};
    CheckBox chkCheck{QStringLiteral("chkCheck"), QStringLiteral("チェック順で印刷する")};
    OptionButton optA{QStringLiteral("optMst(0)"), QStringLiteral("利用者")};
    OptionButton optB{QStringLiteral("optMst(1)"), QStringLiteral("医者")};
    TextInput txtName{QStringLiteral("txtName")};
    ComboBox cmbSealType{QStringLiteral("cmbSealType")};
    ListBox lstCheck{QStringLiteral("lstCheck")};
    Grid fpSpread02{QStringLiteral("fpSpread02"), 3, 4};
    std::vector<OptionButton*> group;
};

class Binding : public desk::Bench {
protected:
    Binding() : form(qt), window(new QWidget), binder(qt, form, window.get()) {}

    Form form;
    std::unique_ptr<QWidget> window;
    gui::Binder binder;
};

}  // namespace

TEST_F(Binding, ClicksReachTheHandlers)
{
    QPushButton button(window.get());
    QCheckBox check(window.get());
    QRadioButton radio(window.get());
    binder.button(form.btnDisp, &button);
    binder.check(form.chkCheck, &check);
    binder.option(form.optB, &radio);
    int searches = 0, orderClicks = 0, kindClicks = 0;
    form.btnDisp.Click = [&] { ++searches; };
    form.chkCheck.Click = [&] { ++orderClicks; };
    form.optB.Click = [&] { ++kindClicks; };

    button.click();
    check.click();
    radio.click();
    EXPECT_EQ(searches, 1);
    EXPECT_EQ(orderClicks, 1);
    EXPECT_EQ(form.chkCheck.value(), 1);
    EXPECT_EQ(kindClicks, 1);
    EXPECT_TRUE(form.optB.value());
    EXPECT_EQ(button.text(), QStringLiteral("検索"));
}

TEST_F(Binding, ModelChangesShowWithoutEchoingBack)
{
    QCheckBox check(window.get());
    QLineEdit edit(window.get());
    QComboBox combo(window.get());
    binder.check(form.chkCheck, &check);
    binder.text(form.txtName, &edit);
    binder.combo(form.cmbSealType, &combo);
    int clicks = 0;
    form.chkCheck.Click = [&] { ++clicks; };

    form.chkCheck.setValue(1);
    form.txtName.setText(QStringLiteral("山田"));
    form.cmbSealType.AddItem(QStringLiteral("１０枚シート"));
    form.cmbSealType.AddItem(QStringLiteral("１２枚シート"));
    form.cmbSealType.setListIndex(1);
    form.chkCheck.setEnabled(false);

    EXPECT_TRUE(check.isChecked());
    EXPECT_FALSE(check.isEnabled());
    EXPECT_EQ(clicks, 1);  // the widget's update did not click again
    EXPECT_EQ(edit.text(), QStringLiteral("山田"));
    EXPECT_EQ(combo.count(), 2);
    EXPECT_EQ(combo.currentIndex(), 1);
}

TEST_F(Binding, TheGridShowsOnlyVisibleRowsAndTicksGoToTheGridsEvent)
{
    QTableView view(window.get());
    gui::GridModel* model = binder.grid(form.fpSpread02, &view, {{1, QString()}, {2, QStringLiteral("名前")}});
    for (int r = 1; r <= 4; ++r) form.fpSpread02.setText(2, r, QStringLiteral("患者%1").arg(r));
    form.fpSpread02.setReDraw(false);
    form.fpSpread02.setRowHidden(2, true);
    form.fpSpread02.setReDraw(true);
    ASSERT_EQ(model->rowCount(), 3);
    EXPECT_EQ(model->data(model->index(1, 1), Qt::DisplayRole).toString(), QStringLiteral("患者3"));

    std::vector<int> ticked;
    form.fpSpread02.ButtonClicked = [&](int, int row, int down) {
        if (down) ticked.push_back(row);
    };
    model->setData(model->index(1, 0), Qt::Checked, Qt::CheckStateRole);
    EXPECT_EQ(ticked, std::vector<int>{3});
    EXPECT_EQ(model->data(model->index(1, 0), Qt::CheckStateRole).toInt(), int(Qt::Checked));
}

TEST_F(Binding, AMouseTickThatRebuildsTheRowsStillClicksThePressedCell)
{
    QTableView view(window.get());
    view.resize(300, 200);
    binder.grid(form.fpSpread02, &view, {{1, QString()}, {2, QStringLiteral("名前")}});
    window->show();
    // Each tick hides the row above it, as a handler that refills the list does.
    std::vector<std::pair<int, int>> clicks, doubleClicks;
    form.fpSpread02.ButtonClicked = [&](int, int row, int) {
        form.fpSpread02.setReDraw(false);
        if (row > 1) form.fpSpread02.setRowHidden(row - 1, true);
        form.fpSpread02.setReDraw(true);
    };
    form.fpSpread02.Click = [&](int col, int row) { clicks.emplace_back(col, row); };
    form.fpSpread02.DblClick = [&](int col, int row) { doubleClicks.emplace_back(col, row); };

    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, desk::tickBoxCentre(&view, 2));
    EXPECT_EQ(form.fpSpread02.value(1, 3), 1);
    ASSERT_EQ(view.model()->rowCount(), 3);
    EXPECT_EQ(clicks, (std::vector<std::pair<int, int>>{{1, 3}}));
    // A double click on a name reads its own row; one below the last row reaches nothing.
    desk::doubleClick(view.viewport(), view.visualRect(view.model()->index(2, 1)).center());
    desk::doubleClick(view.viewport(), QPoint(150, 190));
    EXPECT_EQ(doubleClicks, (std::vector<std::pair<int, int>>{{2, 4}}));
}

TEST_F(Binding, AListClickThatRefillsTheListActsOnThePressedLine)
{
    QListWidget list(window.get());
    binder.list(form.lstCheck, &list);
    for (const char* line : {"一", "二", "三"}) form.lstCheck.AddItem(QString::fromUtf8(line));
    window->show();
    std::vector<int> removed;
    // A double click takes the line out, as the print order list does.
    form.lstCheck.DblClick = [&] {
        removed.push_back(form.lstCheck.ListIndex());
        form.lstCheck.RemoveItem(form.lstCheck.ListIndex());
    };
    const QPoint second = list.visualItemRect(list.item(1)).center();
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, second);
    EXPECT_EQ(form.lstCheck.ListIndex(), 1);
    desk::doubleClick(list.viewport(), second);
    ASSERT_EQ(list.count(), form.lstCheck.ListCount());
    desk::doubleClick(list.viewport(), list.visualItemRect(list.item(list.count() - 1)).center());
    EXPECT_EQ(list.count(), form.lstCheck.ListCount());
    EXPECT_FALSE(removed.empty());
}

TEST_F(Binding, AComboShowsTheModelsItemsEvenWhenOnlyTheirTextsChange)
{
    QComboBox combo(window.get());
    binder.combo(form.cmbSealType, &combo);
    form.cmbSealType.AddItem(QStringLiteral("１０枚シート"));
    form.cmbSealType.AddItem(QStringLiteral("１２枚シート"));
    form.cmbSealType.Clear();
    form.cmbSealType.AddItem(QStringLiteral("長形３号"));
    form.cmbSealType.AddItem(QStringLiteral("角形２号"));
    ASSERT_EQ(combo.count(), 2);
    EXPECT_EQ(combo.itemText(0), QStringLiteral("長形３号"));
    // A choice the model no longer holds goes nowhere.
    Q_EMIT combo.activated(5);
    EXPECT_EQ(form.cmbSealType.ListIndex(), -1);
}

TEST_F(Binding, EnterInABoundInputGoesToTheScreensKeyHandling)
{
    QLineEdit edit(window.get());
    binder.text(form.txtName, &edit);
    int presses = 0;
    form.txtName.KeyPress = [&](int& k) {
        if (k == Key::Return) ++presses;
    };
    QTest::keyClick(&edit, Qt::Key_Return);
    EXPECT_EQ(presses, 1);
    EXPECT_EQ(form.ActiveControl(), &form.txtName);
}

TEST_F(Binding, TheEndOfTheProcessIsKeptForTheModalCallerNotThrownThroughQt)
{
    QPushButton button(window.get());
    binder.button(form.btnDisp, &button);
    form.btnDisp.Click = [&] { qt.endProcess(0); };
    EXPECT_NO_THROW(button.click());
}

struct StyleCase {
    int style;
    int icon;
    bool okCancel;
    bool cancelDefault;
};

TEST(MessageBoxStyles, EachStyleNumberMapsToItsIconAndButtons)
{
    const StyleCase cases[] = {
        {0, QMessageBox::NoIcon, false, false},       {16, QMessageBox::Critical, false, false},
        {33, QMessageBox::Question, true, false},     {48, QMessageBox::Warning, false, false},
        {64, QMessageBox::Information, false, false}, {33 + 256, QMessageBox::Question, true, true},
    };
    for (const auto& c : cases) {
        const gui::BoxSpec look = gui::boxSpecForStyle(c.style);
        EXPECT_EQ(look.icon, c.icon) << c.style;
        EXPECT_EQ(look.okCancel, c.okCancel) << c.style;
        EXPECT_EQ(look.cancelIsDefault, c.cancelDefault) << c.style;
    }
}
