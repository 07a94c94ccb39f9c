// The environment every test runs in: dates and times of the clinic's time zone, one
// fixed locale, and windows on the offscreen platform. A test that compares a printed
// date or a formatted number is only trustworthy when these hold, so this fails first
// when the test runner did not set them.

#include <QByteArray>
#include <QDateTime>
#include <QLocale>
#include <QTimeZone>

#include <gtest/gtest.h>

TEST(TestEnvironment, RunsInTokyoTimeWithAFixedLocaleOnTheOffscreenPlatform)
{
    EXPECT_EQ(qgetenv("TZ"), QByteArray("Asia/Tokyo"));
    EXPECT_EQ(QTimeZone::systemTimeZoneId(), QByteArray("Asia/Tokyo"));
    // Midnight UTC of 2026/11/21 is nine in the morning on the clinic's clock.
    const QDateTime utc(QDate(2026, 11, 21), QTime(0, 0), Qt::UTC);
    EXPECT_EQ(utc.toLocalTime().time(), QTime(9, 0));

    EXPECT_EQ(qgetenv("LC_ALL"), QByteArray("C.UTF-8"));
    EXPECT_EQ(QLocale::system().name(), QStringLiteral("C"));

    EXPECT_EQ(qgetenv("QT_QPA_PLATFORM"), QByteArray("offscreen"));
}
