// The compact column of a fetched result: every value reads back as the QVariant the
// driver would have made, whatever mix of kinds one column holds.

#include "data/ado/driver.h"

#include <QDateTime>

#include <gtest/gtest.h>

#include <limits>

using data::ado::ResultColumn;

TEST(ResultColumnTest, EachKindReadsBackWithItsTypeAndPlace)
{
    ResultColumn column;
    const QDateTime stamp(QDate(2026, 11, 21), QTime(9, 30));
    column.appendInteger(42);
    column.appendInteger(std::numeric_limits<qint64>::max());
    column.appendNull();
    column.appendDouble(-0.5);
    column.appendUtf8("東京都", 9);
    column.appendText(u"ｱｲｳ");
    column.append(QVariant(stamp));
    column.append(QVariant(true));
    column.append(QVariant(QByteArray("\x00\x01", 2)));
    column.append(QVariant(QStringLiteral("港区")));
    column.append(QVariant(7));
    column.append(QVariant());
    ASSERT_EQ(column.size(), 12);

    EXPECT_EQ(column.value(0).typeId(), QMetaType::Int);
    EXPECT_EQ(column.value(0).toInt(), 42);
    // Beyond an int a number stays whole as a qlonglong.
    EXPECT_EQ(column.value(1).typeId(), QMetaType::LongLong);
    EXPECT_EQ(column.value(1).toLongLong(), std::numeric_limits<qint64>::max());
    EXPECT_FALSE(column.value(2).isValid());
    EXPECT_EQ(column.value(3).typeId(), QMetaType::Double);
    EXPECT_EQ(column.value(3).toDouble(), -0.5);
    EXPECT_EQ(column.value(4).toString(), QStringLiteral("東京都"));
    EXPECT_EQ(column.value(5).toString(), QStringLiteral("ｱｲｳ"));
    EXPECT_EQ(column.value(6).typeId(), QMetaType::QDateTime);
    EXPECT_EQ(column.value(6).toDateTime(), stamp);
    EXPECT_EQ(column.value(7).typeId(), QMetaType::Bool);
    EXPECT_EQ(column.value(8).toByteArray(), QByteArray("\x00\x01", 2));
    EXPECT_EQ(column.value(9).toString(), QStringLiteral("港区"));
    EXPECT_EQ(column.value(10).typeId(), QMetaType::Int);
    EXPECT_FALSE(column.value(11).isValid());
}

TEST(ResultColumnTest, TextsKeepTheirBoundsAndBadBytesBecomeReplacementCharacters)
{
    ResultColumn column;
    column.appendUtf8("", 0);
    column.appendUtf8("a\xff" "b", 3);
    column.appendUtf8("\xe6\x9d\xb1", 3);
    column.appendText(QStringView());

    const QVariant empty = column.value(0);
    EXPECT_EQ(empty.typeId(), QMetaType::QString);
    EXPECT_TRUE(empty.toString().isEmpty());
    EXPECT_FALSE(empty.toString().isNull());
    EXPECT_EQ(column.value(1).toString(), QString::fromUtf16(u"a\uFFFDb"));
    EXPECT_EQ(column.value(2).toString(), QStringLiteral("東"));
    EXPECT_FALSE(column.value(3).toString().isNull());
    // Reading twice gives the same text: nothing is consumed.
    EXPECT_EQ(column.value(2).toString(), QStringLiteral("東"));
}
