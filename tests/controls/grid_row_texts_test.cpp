// The bulk row write of a grid: the texts land from a column on, and only one notice
// is given for the row.

#include "controls/grid.h"

#include <gtest/gtest.h>

using controls::Change;
using controls::Grid;

TEST(GridRowTexts, WritesTheRowFromAColumnOn)
{
    Grid g(QStringLiteral("g"), 4, 2);
    g.setText(1, 2, QStringLiteral("tick"));
    QString texts[] = {QStringLiteral("a"), QString(u'b'), QStringLiteral("c"), QStringLiteral("beyond")};
    g.setRowTexts(2, 2, texts, 4);
    EXPECT_EQ(g.text(1, 2), QStringLiteral("tick"));
    EXPECT_EQ(g.text(2, 2), QStringLiteral("a"));
    EXPECT_EQ(g.text(4, 2), QStringLiteral("c"));
    EXPECT_EQ(g.text(3, 2), QStringLiteral("b"));
    EXPECT_EQ(g.text(2, 1), QString());
}

TEST(GridRowTexts, TellsObserversOnceWithRedrawOnAndNotAtAllWithItOff)
{
    Grid g(QStringLiteral("g"), 3, 3);
    std::vector<Change> seen;
    g.observe([&](const Change& c) { seen.push_back(c); });
    QString texts[] = {QStringLiteral("x"), QStringLiteral("y")};
    g.setRowTexts(3, 1, texts, 2);
    ASSERT_EQ(seen.size(), 1u);
    EXPECT_EQ(seen[0].what, Change::Row);
    EXPECT_EQ(seen[0].row, 3);
    g.setReDraw(false);
    QString again[] = {QStringLiteral("x"), QStringLiteral("y")};
    g.setRowTexts(1, 1, again, 2);
    g.setRowTexts(9, 1, again, 2);  // no such row: nothing
    EXPECT_EQ(seen.size(), 1u);
    EXPECT_EQ(g.text(1, 1), QStringLiteral("x"));
}

TEST(GridRowTexts, ClearingTextsKeepsTheTicksRowsColoursAndHiddenRows)
{
    Grid g(QStringLiteral("g"), 3, 2);
    g.setCheckBoxColumn(1);
    g.setValue(1, 2, 1);
    g.setText(2, 1, QStringLiteral("a"));
    g.setText(3, 2, QStringLiteral("b"));
    g.setRowHidden(1, true);
    g.setForeColor(2, 2, controls::Colors::Black);
    g.clearTexts(2);
    EXPECT_EQ(g.MaxRows(), 2);
    EXPECT_EQ(g.value(1, 2), 1);
    EXPECT_TRUE(g.text(2, 1).isEmpty());
    EXPECT_TRUE(g.text(3, 2).isEmpty());
    EXPECT_TRUE(g.rowHidden(1));
    EXPECT_EQ(g.foreColor(2, 2), controls::Colors::Black);
}
