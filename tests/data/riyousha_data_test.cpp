// The whole patient record: each field in its own type, NULLs as the empty record,
// the office in every read, and a caller's record left alone by every failure.

#include "data/riyousha_data.h"

#include "support/entity_db.h"
#include "support/param_names.h"

namespace {

using data::getRiyoushaData;
using data::RiyoushaData;

class RiyoushaDataTest : public sealtest::InstallationTest {
protected:
    // A record that no read would produce, to see that a failed read leaves it alone.
    static RiyoushaData marked()
    {
        RiyoushaData r;
        r.nIDNo = 999;
        r.cName = QStringLiteral("前の値");
        r.tBirthday = QDate(1900, 1, 1);
        r.nTantou = 77;
        return r;
    }
};

TEST_F(RiyoushaDataTest, StatementNamesThePatientAndThisOffice)
{
    EXPECT_EQ(data::sqlRiyoushaData(42),
              QStringLiteral("SELECT * FROM RIYOUSHA WHERE nIDNo = 42 and iKyotenCd = 1 and iKyotenEb = 2"));
    app::iKyotenCd = -3;
    app::iKyotenEb = 0;
    EXPECT_EQ(data::sqlRiyoushaData(-1),
              QStringLiteral("SELECT * FROM RIYOUSHA WHERE nIDNo = -1 and iKyotenCd = -3 and iKyotenEb = 0"));
}

TEST_F(RiyoushaDataTest, FieldsComeInTheRecordsOwnTypes)
{
    run(QStringLiteral("INSERT INTO RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo, cName, cNameKana, iSex, tBirthday, cAdress1,"
                       " nHokui, iHoseUmu, nTantou, nTantou10, iSejutuBui11, tHatsubyou, tSyoryoDay, tDouiDay2,"
                       " iRoomAnbunUmu, cFMCode, iKaigoLevel, tUpdateTime) VALUES"
                       " (1, 2, 7, '  山田　太郎 ', 'ヤマダ タロウ', 2, '1941/03/09', '東京都新宿区西新宿2-8-1',"
                       " 135000, 70000, 12, 31, 100000, '2025/04/01', '2025/04/15 10:30:00', '2026/10/01',"
                       " 46000, '2147483647', -5, '2026/11/20 09:00:00')"));
    RiyoushaData r;
    ASSERT_EQ(getRiyoushaData(7, r), -1) << app::gsLastError.toStdString();
    EXPECT_EQ(r.nIDNo, 7);
    EXPECT_EQ(r.cName, QStringLiteral("  山田　太郎 "));  // as it stands, untrimmed
    EXPECT_EQ(r.cNameKana, QStringLiteral("ヤマダ タロウ"));
    EXPECT_EQ(r.iSex, 2);
    EXPECT_EQ(r.tBirthday, QDate(1941, 3, 9));
    EXPECT_EQ(r.cAdress1, QStringLiteral("東京都新宿区西新宿2-8-1"));
    // 32-bit fields hold what a 16-bit one could not.
    EXPECT_EQ(r.nHokui, 135000);
    EXPECT_EQ(r.iHoseUmu, 70000);
    EXPECT_EQ(r.iSejutuBui11, 100000);
    EXPECT_EQ(r.nTantou, 12);
    EXPECT_EQ(r.nTantou10, 31);
    EXPECT_EQ(r.iKaigoLevel, -5);
    // Two date columns kept as text, one integer column read as a date, one text
    // column read as a number.
    EXPECT_EQ(r.tHatsubyou, QStringLiteral("2025/04/01"));
    EXPECT_EQ(r.tSyoryoDay, QStringLiteral("2025/04/15 10:30:00"));
    EXPECT_EQ(r.iRoomAnbunUmu, QDate(1899, 12, 30).addDays(46000));
    EXPECT_EQ(r.cFMCode, 2147483647);
    EXPECT_EQ(r.tDouiDay2, QDate(2026, 10, 1));
    EXPECT_FALSE(r.tDouiDay1.has_value());
    EXPECT_TRUE(platform_.transcript().isEmpty());
}

TEST_F(RiyoushaDataTest, NullInEveryColumnGivesTheEmptyRecord)
{
    run(QStringLiteral("INSERT INTO RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo) VALUES (1, 2, 8)"));
    RiyoushaData r = marked();
    ASSERT_EQ(getRiyoushaData(8, r), -1) << app::gsLastError.toStdString();
    RiyoushaData expected;
    expected.nIDNo = 8;
    EXPECT_TRUE(r == expected);
    EXPECT_FALSE(r.tBirthday.has_value());
    EXPECT_EQ(r.cName, QString());
    EXPECT_EQ(r.nTantou, 0);
    EXPECT_TRUE(platform_.transcript().isEmpty());
}

TEST_F(RiyoushaDataTest, NoRowHereGivesFalseSilentlyAndKeepsTheRecord)
{
    // Patient 9 exists only in another office.
    run(QStringLiteral("INSERT INTO RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo, cName) VALUES"
                       " (1, 3, 9, '別拠点'), (2, 2, 9, '別拠点')"));
    for (const qint32 id : {9, 10}) {
        RiyoushaData r = marked();
        EXPECT_EQ(getRiyoushaData(id, r), 0) << id;
        EXPECT_TRUE(r == marked()) << id;
    }
    EXPECT_TRUE(platform_.transcript().isEmpty());
    EXPECT_EQ(app::gsLastError, QString());
}

struct BadValue {
    const char* name;
    const char* assignment;  // SQL for the patient's row
    const char* box;         // the whole box line
};

class RiyoushaDataBadValueTest : public RiyoushaDataTest, public ::testing::WithParamInterface<BadValue> {};

TEST_P(RiyoushaDataBadValueTest, FaultWhileReadingShowsReadErrorAndKeepsTheRecord)
{
    run(QStringLiteral("INSERT INTO RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo, cName) VALUES (1, 2, 5, '鈴木')"));
    run(QString::fromUtf8(GetParam().assignment));
    RiyoushaData r = marked();
    EXPECT_EQ(getRiyoushaData(5, r), 0);
    EXPECT_TRUE(r == marked());
    EXPECT_EQ(platform_.transcript(), QStringList{QString::fromUtf8(GetParam().box)});
}

INSTANTIATE_TEST_SUITE_P(
    Faults, RiyoushaDataBadValueTest,
    ::testing::Values(
        BadValue{"TextInA16BitField", "UPDATE RIYOUSHA SET iSex = '女'", "box 0 |Read Error:型が一致しません。"},
        BadValue{"TooLargeFor16Bits", "UPDATE RIYOUSHA SET iTenki = 40000",
                 "box 0 |Read Error:オーバーフローしました。"},
        BadValue{"TooLargeFor32Bits", "UPDATE RIYOUSHA SET cFMCode = '3000000000'",
                 "box 0 |Read Error:オーバーフローしました。"},
        BadValue{"NotADate", "UPDATE RIYOUSHA SET iRoomAnbunUmu = 'あり'", "box 0 |Read Error:型が一致しません。"},
        BadValue{"MissingColumn", "ALTER TABLE RIYOUSHA DROP COLUMN cFMCode",
                 "box 0 |Read Error:要求された名前、または序数に対応する項目がコレクションで見つかりません。"}),
    sealtest::ByName{});

TEST_F(RiyoushaDataTest, DatabaseFailuresGoToTheLastErrorWithoutABox)
{
    // No connection text at all.
    setConnectString(QString());
    RiyoushaData r = marked();
    EXPECT_EQ(getRiyoushaData(1, r), 0);
    EXPECT_EQ(app::gsLastError, QStringLiteral("接続文字列取得できません。"));
    EXPECT_TRUE(r == marked());

    // A database without the table: the open fails with the statement in the text.
    run(QStringLiteral("DROP TABLE RIYOUSHA"));
    setConnectString(QStringLiteral("Provider=SQLite;Data Source=") + dbPath_);
    app::gsLastError.clear();
    EXPECT_EQ(getRiyoushaData(1, r), 0);
    EXPECT_TRUE(app::gsLastError.startsWith(u'(')) << app::gsLastError.toStdString();
    EXPECT_TRUE(app::gsLastError.contains(QStringLiteral("\rSQL=SELECT * FROM RIYOUSHA WHERE nIDNo = 1")))
        << app::gsLastError.toStdString();
    EXPECT_TRUE(r == marked());
    EXPECT_TRUE(platform_.transcript().isEmpty());
}

}  // namespace
