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
    column.appendUtf8("a\xff"
                      "b",
                      3);
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

TEST(ResultColumnTest, ARecurringTextIsHeldOnceAndReadAsOneSharedString)
{
    ResultColumn column;
    const QByteArray codes[] = {"160-0023", "160-0022", "160-0023", "160-0023", ""};
    for (const QByteArray& code : codes) column.appendUtf8(code.constData(), code.size());
    column.appendText(u"港区");
    column.appendText(u"港区");

    EXPECT_EQ(column.value(0).toString(), QStringLiteral("160-0023"));
    EXPECT_EQ(column.value(1).toString(), QStringLiteral("160-0022"));
    EXPECT_EQ(column.value(3).toString(), QStringLiteral("160-0023"));
    EXPECT_EQ(column.value(0).toString().constData(), column.value(3).toString().constData());
    EXPECT_NE(column.value(0).toString().constData(), column.value(1).toString().constData());
    EXPECT_FALSE(column.value(4).toString().isNull());
    EXPECT_EQ(column.value(6).toString(), QStringLiteral("港区"));
    // A text of its row alone reads in place; a shared one only as its value.
    QStringView view;
    EXPECT_TRUE(column.textAt(1, view));
    EXPECT_EQ(view, u"160-0022");
    EXPECT_FALSE(column.textAt(2, view));
}

TEST(ResultColumnTest, ManyDistinctTextsEachReadBackAsWritten)
{
    // More distinct texts than the table of recent ones holds, with recurring ones
    // among them, and texts too long to be looked for.
    ResultColumn column;
    for (int i = 0; i < 3000; ++i) {
        const QByteArray text = (i % 3 == 0) ? QByteArray("同じ") : QByteArray("患者") + QByteArray::number(i);
        column.appendUtf8(text.constData(), text.size());
    }
    const QByteArray longText(200, 'x');
    column.appendUtf8(longText.constData(), longText.size());
    column.appendUtf8(longText.constData(), longText.size());
    column.finish();
    for (int i = 0; i < 3000; ++i) {
        const QString want = (i % 3 == 0) ? QStringLiteral("同じ") : QStringLiteral("患者") + QString::number(i);
        ASSERT_EQ(column.value(i).toString(), want) << i;
    }
    EXPECT_EQ(column.value(3000).toString(), QString(200, u'x'));
    EXPECT_EQ(column.value(3001).toString(), QString(200, u'x'));
}
