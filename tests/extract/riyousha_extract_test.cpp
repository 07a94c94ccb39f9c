// The patient statement, the read into memory, and the failures of the extraction.

#include "extract/riyousha_extract.h"

#include "support/golden.h"
#include "support/installation.h"
#include "support/param_names.h"

#include <gtest/gtest.h>

using extract::csRiyoushaSql;
using extract::RiyoushaArray;
using sealtest::ProcessValues;
using sealtest::SealInstall;

// --- the statement -------------------------------------------------------------

// The schema test compiles these against the suite's tables; the pieces of the
// collection filters come before the order, and any other index narrows nothing.
TEST(PatientStatement, ForEachCollectionFilterIsItsGoldenText)
{
    const QDate november(2026, 11, 1);
    sealtest::expectGolden(QStringLiteral("patient_list_office_1_2.sql"), csRiyoushaSql(1, 2, november, 0));
    for (short other : {-1, 3}) EXPECT_EQ(csRiyoushaSql(1, 2, november, other), csRiyoushaSql(1, 2, november, 0));
    sealtest::expectGolden(QStringLiteral("patient_list_office_1_1.sql"), csRiyoushaSql(1, 1, november, 0));
    sealtest::expectGolden(QStringLiteral("patient_list_office_1_1_reimbursed.sql"), csRiyoushaSql(1, 1, november, 1));
    sealtest::expectGolden(QStringLiteral("patient_list_office_1_1_reimbursed_not_handed.sql"),
                           csRiyoushaSql(1, 1, november, 2));
}

struct SpanCase {
    QDate month;
    const char* before;
    const char* after;
};

class PatientStatementSpan : public testing::TestWithParam<SpanCase> {};

TEST_P(PatientStatementSpan, RunsFromTheDayBeforeToTheFirstOfTheNextMonth)
{
    const SpanCase& c = GetParam();
    const QString sql = csRiyoushaSql(1, 2, c.month, 0);
    const QString span = QStringLiteral("tServicyDayStart>'%1' AND tServicyDayStart<'%2' ")
                             .arg(QString::fromLatin1(c.before), QString::fromLatin1(c.after));
    EXPECT_TRUE(sql.contains(span)) << sql.toStdString();
}

INSTANTIATE_TEST_SUITE_P(Months, PatientStatementSpan,
                         testing::Values(SpanCase{QDate(2026, 1, 1), "2025/12/31", "2026/02/01"},
                                         SpanCase{QDate(2024, 3, 1), "2024/02/29", "2024/04/01"},
                                         SpanCase{QDate(2026, 12, 1), "2026/11/30", "2027/01/01"}),
                         (sealtest::Named{{"January", "LeapFebruary", "December"}}));

TEST(PatientStatement, WritesTheSiteKeyAsPlainSignedDecimals)
{
    const QString sql = csRiyoushaSql(-3, 15, QDate(2026, 11, 1), 0);
    EXPECT_TRUE(sql.contains(QStringLiteral(" WHERE RIYOUSHA.iKyotenCd = -3 AND RIYOUSHA.iKyotenEb = 15 ")));
    EXPECT_EQ(sql.count(QStringLiteral("iKyotenCd = -3")), 3);
}

// --- the read --------------------------------------------------------------------

class PatientRead : public testing::Test {
protected:
    PatientRead() : values(install) {}

    RiyoushaArray read(int kaisyu = 0, QDate month = QDate(2026, 11, 1))
    {
        RiyoushaArray a;
        EXPECT_EQ(extract::getRiyoushaData_SEAL(csRiyoushaSql(1, 2, month, kaisyu), a), -1)
            << values.platform.transcript().join(u'\n').toStdString();
        return a;
    }

    SealInstall install;
    ProcessValues values;
};

TEST_F(PatientRead, HoldsOneSpareEmptyElementAndOrdersByKana)
{
    const RiyoushaArray none = read();
    ASSERT_EQ(none.size(), 1u);
    EXPECT_EQ(none[0].nIDNo, 0);

    install.addPatient(20, QStringLiteral("山田 太郎"), QStringLiteral("ﾔﾏﾀﾞ ﾀﾛｳ"));
    install.addPatient(21, QStringLiteral("相川 花子"), QStringLiteral("ｱｲｶﾜ ﾊﾅｺ"));
    install.addPatient(22, QStringLiteral("他店 次郎"), QStringLiteral("ﾀﾃﾝ"), QStringLiteral("NULL"),
                       QStringLiteral("NULL"), 9, 2);
    const RiyoushaArray a = read();
    ASSERT_EQ(a.size(), 3u);
    EXPECT_EQ(a[0].nIDNo, 21);
    EXPECT_EQ(a[1].nIDNo, 20);
    EXPECT_EQ(a[2].nIDNo, 0);
    EXPECT_TRUE(a[2].cName.isEmpty());
}

TEST_F(PatientRead, NullsKeepTheFreshValuesAndFixedFieldsArePadded)
{
    install.addPatient(30, QStringLiteral("空欄 太郎"), QStringLiteral("ｸｳﾗﾝ"));
    install.exec(QStringLiteral("UPDATE RIYOUSHA SET cYubinNo = '123456789', cYubinNo2 = '150', cTelNo = '03-1234' "
                                "WHERE nIDNo = 30;"));
    const RiyoushaArray a = read();
    ASSERT_EQ(a.size(), 2u);
    const auto& p = a[0];
    EXPECT_EQ(p.tBirthday, QDate(1899, 12, 30));
    EXPECT_EQ(p.tExpireDay, QDate(1899, 12, 30));
    EXPECT_EQ(p.nRoomNo, 0);
    EXPECT_EQ(p.cYubinNo, QStringLiteral("12345678"));
    EXPECT_EQ(p.cYubinNo2, QStringLiteral("150     "));
    EXPECT_EQ(p.cYubinNo3, QString(8, u' '));
    EXPECT_EQ(p.cTelNo, QStringLiteral("03-1234       "));
    EXPECT_EQ(p.cMobNo, QString(14, u' '));
    EXPECT_TRUE(p.cAdress3.isEmpty());
    // No service in the month: empty, not "0".
    EXPECT_TRUE(p.jisseki_ct.isEmpty());
    EXPECT_TRUE(p.cJusyo1S0Sinsei.isEmpty());
}

TEST_F(PatientRead, ReadsTheSubRowOfThisOfficeOnly)
{
    install.addPatient(40, QStringLiteral("連絡 先子"), QStringLiteral("ﾚﾝﾗｸ"), QStringLiteral("'1950/11/21'"));
    install.exec(QStringLiteral(
        "INSERT INTO RIYOUSHA_SUB (iKyotenCd, iKyotenEb, nIDNo, cAdress3, cYubinNoS0Renraku, cJusyo1S0Renraku, "
        "cJusyo2S0Renraku, cAtenaS0Renraku, cAtenaS0Ryosyu) VALUES (1, 2, 40, '別宅', '1000001', '東京都千代田区', "
        "'1-1', '連絡 太郎', '領収 花子');"
        "INSERT INTO RIYOUSHA_SUB (iKyotenCd, iKyotenEb, nIDNo, cAdress3) VALUES (1, 3, 40, '他拠点');"));
    const RiyoushaArray a = read();
    ASSERT_EQ(a.size(), 2u);
    EXPECT_EQ(a[0].tBirthday, QDate(1950, 11, 21));
    EXPECT_EQ(a[0].cAdress3, QStringLiteral("別宅"));
    EXPECT_EQ(a[0].cJusyo2S0Renraku, QStringLiteral("1-1"));
    EXPECT_EQ(a[0].cAtenaS0Renraku, QStringLiteral("連絡 太郎"));
    EXPECT_EQ(a[0].cAtenaS0Ryosyu, QStringLiteral("領収 花子"));
}

TEST_F(PatientRead, CountsServicesInsideTheOpenMonthSpan)
{
    install.addPatient(50, QStringLiteral("月末 太郎"), QStringLiteral("ｹﾞﾂﾏﾂ"));
    install.addService(50, QStringLiteral("2026/11/01 00:00:00"));
    install.addService(50, QStringLiteral("2026/11/30 23:59:59"));
    install.addService(50, QStringLiteral("2026/12/01 00:00:00"));        // the next month
    install.addService(50, QStringLiteral("2026/10/30 10:00:00"));        // the month before
    install.addService(50, QStringLiteral("2026/11/15 10:00:00"), 1, 3);  // another branch
    EXPECT_EQ(read()[0].jisseki_ct, QStringLiteral("2"));
    // The month changes the count, never the patients. The span opens after midnight
    // of the last day before, so a visit late on November 30 counts for December too.
    const RiyoushaArray december = read(0, QDate(2026, 12, 1));
    ASSERT_EQ(december.size(), 2u);
    EXPECT_EQ(december[0].jisseki_ct, QStringLiteral("2"));
}

TEST_F(PatientRead, CollectionFiltersNarrowInTheStatement)
{
    install.addPatient(60, QStringLiteral("口座 一"), QStringLiteral("ｱ1"));
    install.addPatient(61, QStringLiteral("手渡 二"), QStringLiteral("ｱ2"));
    install.addPatient(62, QStringLiteral("現金 三"), QStringLiteral("ｱ3"));
    install.addPatient(63, QStringLiteral("無副 四"), QStringLiteral("ｱ4"));
    install.addPatient(64, QStringLiteral("空白 五"), QStringLiteral("ｱ5"));
    install.addPatient(65, QStringLiteral("無名 六"), QStringLiteral("ｱ6"));
    install.exec(
        QStringLiteral("UPDATE RIYOUSHA SET cHTIryoName = '銀行' WHERE nIDNo = 60;"
                       "UPDATE RIYOUSHA SET cHTIryoName = '手渡し' WHERE nIDNo = 61;"
                       "UPDATE RIYOUSHA SET cHTIryoName = '銀行' WHERE nIDNo = 62;"
                       "UPDATE RIYOUSHA SET cHTIryoName = '　手渡し　' || char(13) || char(10) WHERE nIDNo = 64;"
                       "INSERT INTO RIYOUSHA_SUB (iKyotenCd, iKyotenEb, nIDNo, iShoukanSiharai) VALUES "
                       "(1, 2, 60, 1), (1, 2, 61, 1), (1, 2, 62, 0), (1, 2, 64, 1), (1, 2, 65, 1);"));
    const auto ids = [](const RiyoushaArray& a) {
        QList<int> out;
        for (size_t i = 0; i + 1 < a.size(); ++i) out << a[i].nIDNo;
        return out;
    };
    EXPECT_EQ(ids(read(0)), (QList<int>{60, 61, 62, 63, 64, 65}));
    EXPECT_EQ(ids(read(1)), (QList<int>{60, 61, 64, 65}));
    // Handed over, even behind full-width blanks and line breaks, and a null name go.
    EXPECT_EQ(ids(read(2)), (QList<int>{60}));
}

// --- failures ------------------------------------------------------------------

TEST_F(PatientRead, MissingConnectionTextFailsWithoutABox)
{
    install.writeLines(QStringLiteral("adodb.ini"), {QStringLiteral("[接続情報]"), QStringLiteral("接続情報=")});
    RiyoushaArray a;
    EXPECT_EQ(extract::getRiyoushaData_SEAL(csRiyoushaSql(1, 2, QDate(2026, 11, 1), 0), a), 0);
    EXPECT_TRUE(values.platform.transcript().isEmpty());
}

TEST_F(PatientRead, UnreachableDatabaseShowsTheRoutinesBox)
{
    install.writeLines(QStringLiteral("adodb.ini"),
                       {QStringLiteral("[接続情報]"), QStringLiteral("接続情報=Provider=SQLite;Data Source=gone.db")});
    RiyoushaArray a;
    EXPECT_EQ(extract::getRiyoushaData_SEAL(csRiyoushaSql(1, 2, QDate(2026, 11, 1), 0), a), 0);
    ASSERT_EQ(values.platform.transcript().size(), 1);
    EXPECT_TRUE(values.platform.transcript()[0].startsWith(
        QStringLiteral("box 16 シール印刷|getRiyoushaData_SEAL() でエラー\\r\\n")));
    EXPECT_TRUE(a.empty());
}

class PatientExtraction : public PatientRead {
protected:
    short run(extract::RiyoushaChoice choice, RiyoushaArray& a)
    {
        return extract::RiyoushaMemorySet(choice, a, closeState);
    }
    short closeState = 0;
};

TEST_F(PatientExtraction, TickedMonthWithoutValueKeepsTheRowsAndWarns)
{
    RiyoushaArray a(3);
    a[0].nIDNo = 7;
    EXPECT_EQ(run({true, QDate(), 0}, a), 0);
    EXPECT_EQ(values.platform.transcript(),
              QStringList{QStringLiteral("box 48 対象年月選択|抽出対象月の入力に誤りがあります。")});
    EXPECT_EQ(a.size(), 3u);
    EXPECT_EQ(a[0].nIDNo, 7);
    EXPECT_EQ(closeState, 0);
}

TEST_F(PatientExtraction, EmptyMonthWhileUntickedIsAFaultOfTheDateArithmetic)
{
    RiyoushaArray a;
    EXPECT_EQ(run({false, QDate(), 0}, a), 0);
    EXPECT_EQ(values.platform.transcript(),
              QStringList{QStringLiteral(
                  "box 16 シール印刷|データ展開中にエラーが発生しました。\\r(94) Null の使い方が不正です。")});
}

TEST_F(PatientExtraction, AFailedReadClosesTheScreenLaterButLetsTheSearchGoOn)
{
    install.writeLines(QStringLiteral("adodb.ini"), {QStringLiteral("[接続情報]")});
    RiyoushaArray a;
    EXPECT_EQ(run({false, QDate(2026, 11, 1), 0}, a), -1);
    EXPECT_EQ(values.platform.transcript(),
              QStringList{QStringLiteral("box 16 シール印刷|患者データの抽出に失敗しました。")});
    EXPECT_EQ(closeState, 1);
}

TEST_F(PatientExtraction, AnyDayOfTheChosenMonthCountsTheWholeMonth)
{
    install.addPatient(70, QStringLiteral("実績 有"), QStringLiteral("ｼﾞｯｾｷ"));
    install.addService(70, QStringLiteral("2026/10/05 09:00:00"));
    RiyoushaArray a;
    EXPECT_EQ(run({true, QDate(2026, 10, 31), 0}, a), -1);
    ASSERT_EQ(a.size(), 2u);
    EXPECT_EQ(a[0].jisseki_ct, QStringLiteral("1"));
    EXPECT_EQ(values.platform.pointer(), controls::Pointer::Normal);
}
