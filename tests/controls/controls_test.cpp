// Events and notices of the headless controls: what fires when code or the operator
// changes a value.

#include "base/vb_error.h"
#include "controls/buttons.h"
#include "controls/grid.h"
#include "controls/inputs.h"
#include "controls/lists.h"

#include <gtest/gtest.h>

using namespace controls;

TEST(OptionButtons, ChoosingOneClearsItsGroupAndFiresOnlyOnChange)
{
    std::vector<OptionButton*> group;
    OptionButton a(QStringLiteral("optMst(0)")), b(QStringLiteral("optMst(1)"));
    a.joinGroup(&group);
    b.joinGroup(&group);
    int clicksA = 0, clicksB = 0;
    a.Click = [&] { ++clicksA; };
    b.Click = [&] { ++clicksB; };

    a.setValue(true);
    b.setValue(true);
    EXPECT_FALSE(a.value());
    EXPECT_TRUE(b.value());
    b.setValue(true);  // already chosen: no second click
    EXPECT_EQ(clicksA, 1);
    EXPECT_EQ(clicksB, 1);
}

TEST(CheckBoxes, SettingADifferentValueByCodeFiresClick)
{
    CheckBox box(QStringLiteral("chkCheck"));
    std::vector<int> seen;
    box.Click = [&] { seen.push_back(box.value()); };
    box.setValue(1);
    box.setValue(1);
    box.toggle();
    EXPECT_EQ(seen, (std::vector<int>{1, 0}));
}

TEST(ItemLists, ChoosingARowFiresClickAndAnIndexOutsideIsFault380)
{
    ComboBox combo(QStringLiteral("cmbSealType"));
    combo.AddItem(QStringLiteral("１０枚シート"), 0);
    combo.AddItem(QStringLiteral("１２枚シート"), 1);
    int clicks = 0;
    combo.Click = [&] { ++clicks; };
    combo.setListIndex(1);
    EXPECT_EQ(combo.Text(), QStringLiteral("１２枚シート"));
    EXPECT_EQ(combo.ItemData(1), 1);
    EXPECT_EQ(clicks, 1);
    try {
        combo.setListIndex(2);
        FAIL() << "an index past the last row must fail";
    } catch (const base::VbError& e) {
        EXPECT_EQ(e.number(), 380);
    }
}

TEST(ItemLists, RemovingRowsKeepsTheChosenRowWhereItWas)
{
    ListBox list(QStringLiteral("lstCheck"));
    for (int i = 0; i < 4; ++i) list.AddItem(QString::number(i));
    list.setListIndex(2);
    list.RemoveItem(0);
    EXPECT_EQ(list.ListIndex(), 1);
    EXPECT_EQ(list.List(1), QStringLiteral("2"));
    list.RemoveItem(1);
    EXPECT_EQ(list.ListIndex(), -1);
}

TEST(Grids, TickingACheckBoxCellFiresButtonClickedOnceForEachChange)
{
    Grid grid(QStringLiteral("fpSpread02"), 33, 3);
    grid.setCheckBoxColumn(1);
    std::vector<std::tuple<int, int, int>> events;
    grid.ButtonClicked = [&](int c, int r, int down) { events.emplace_back(c, r, down); };

    grid.setValue(1, 2, 1);
    grid.setValue(1, 2, 1);
    grid.pressButton(1, 2, false);
    grid.setValue(5, 2, 1);  // not a check box column
    ASSERT_EQ(events.size(), 2u);
    EXPECT_EQ(events[0], std::make_tuple(1, 2, 1));
    EXPECT_EQ(events[1], std::make_tuple(1, 2, 0));
    EXPECT_EQ(grid.ActiveRow(), 2);
}

TEST(Grids, ReDrawOffHoldsBackNoticesUntilItIsOnAgain)
{
    Grid grid(QStringLiteral("fpSpread02"), 3, 0);
    std::vector<Change::What> notices;
    grid.observe([&](const Change& c) { notices.push_back(c.what); });

    grid.setReDraw(false);
    grid.setMaxRows(1000);
    for (int r = 1; r <= 1000; ++r) grid.setText(2, r, QStringLiteral("x"));
    grid.setRowHidden(5, true);
    EXPECT_TRUE(notices.empty());
    grid.setReDraw(true);
    ASSERT_EQ(notices.size(), 1u);
    EXPECT_EQ(notices[0], Change::All);
}

TEST(Grids, CellsStayInPlaceWhenTheShapeChanges)
{
    Grid grid(QStringLiteral("g"), 2, 2);
    grid.setText(2, 2, QStringLiteral("b2"));
    grid.setMaxCols(5);
    EXPECT_EQ(grid.text(2, 2), QStringLiteral("b2"));
    grid.setMaxRows(1);
    EXPECT_EQ(grid.text(2, 2), QString());
    grid.setText(9, 9, QStringLiteral("outside"));
    EXPECT_EQ(grid.text(9, 9), QString());
}

TEST(Grids, NextVisibleRowSkipsHiddenRows)
{
    Grid grid(QStringLiteral("g"), 1, 5);
    grid.setRowHidden(2, true);
    grid.setRowHidden(3, true);
    EXPECT_EQ(grid.nextVisibleRow(2), 4);
    grid.setRowHidden(4, true);
    grid.setRowHidden(5, true);
    EXPECT_EQ(grid.nextVisibleRow(2), 0);
}

TEST(Grids, ColoursFallBackFromCellToRowToColumn)
{
    Grid grid(QStringLiteral("fpSpread01"), 2, 5);
    grid.setBackColor(-1, 3, 0x00FFFF);
    grid.setBackColor(1, 1, Colors::Black);
    EXPECT_EQ(grid.backColor(1, 1), Colors::Black);
    EXPECT_EQ(grid.backColor(2, 3), 0x00FFFFu);
    EXPECT_EQ(grid.backColor(2, 2), Colors::WindowBackground);
}

TEST(Inputs, SettingTextFiresChangeOnlyWhenItDiffers)
{
    TextInput t(QStringLiteral("txtName"));
    int changes = 0;
    t.Change = [&] { ++changes; };
    t.setText(QStringLiteral("山田"));
    t.setText(QStringLiteral("山田"));
    EXPECT_EQ(changes, 1);
}

TEST(Inputs, NumberInputRefusesTypedValuesOutsideItsRange)
{
    NumberInput age(QStringLiteral("numtAge(0)"), 0, 200);
    EXPECT_TRUE(age.typeText(QStringLiteral("150")));
    EXPECT_FALSE(age.typeText(QStringLiteral("201")));
    EXPECT_FALSE(age.typeText(QStringLiteral("abc")));
    EXPECT_EQ(age.text(), QStringLiteral("150"));
    EXPECT_TRUE(age.typeText(QString()));
    EXPECT_FALSE(age.value().has_value());
}

TEST(Inputs, MonthInputHoldsTheFirstOfTheMonth)
{
    DateInput ym(QStringLiteral("imJissekiYm"), QStringLiteral("yyyy/MM"));
    EXPECT_TRUE(ym.isNull());
    EXPECT_TRUE(ym.typeText(QStringLiteral("2026/02")));
    EXPECT_EQ(ym.value(), QDate(2026, 2, 1));
    EXPECT_EQ(ym.text(), QStringLiteral("2026/02"));
    ym.setValue(QDate(2026, 11, 21));
    EXPECT_EQ(ym.value(), QDate(2026, 11, 1));
    EXPECT_FALSE(ym.typeText(QStringLiteral("2026/13")));
    EXPECT_TRUE(ym.typeText(QString()));
    EXPECT_TRUE(ym.isNull());
}
