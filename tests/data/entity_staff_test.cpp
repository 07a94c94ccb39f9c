// Staff: the grid's short and long forms, the name checks, the read over every office.

#include "data/ct_staff.h"

#include "support/table_class_test.h"

#include <vector>

namespace {

using data::cD_STAFF;
using data::cT_STAFF;

class StaffTest : public sealtest::TableClassTest<cT_STAFF, cD_STAFF, &cT_STAFF::clsSTAFF> {
protected:
    void SetUp() override
    {
        TableClassTest::SetUp();
        run(QStringLiteral(
            "INSERT INTO KYOTEN VALUES (1, 2, '新宿営業所', 1), (1, 3, '渋谷営業所', 1);"
            "INSERT INTO STAFF (iKyotenCd, iKyotenEb, nIDNo, cName, cNameKana, cAdress1, iChusiFlg, cEmail, "
            "tBirthday, tNyusyaDay, tTourokuDay, nLat, iKanriSekininFlg) VALUES "
            "(1, 2, 5, '佐藤　花子', 'ｻﾄｳ ﾊﾅｺ', '新宿区1', 0, 'sato@example.jp', '1980/02/29', '2010/04/01', NULL, "
            "35.5, 1),"
            "(1, 2, 3, '鈴木　一郎', 'ｽｽﾞｷ ｲﾁﾛｳ', NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL),"
            "(1, 2, 7, '退職　者', 'ﾀｲｼｮｸ', NULL, 1, NULL, NULL, NULL, NULL, NULL, NULL),"
            "(1, 3, 1, '佐藤　花子', 'ｻﾄｳ ﾊﾅｺ', NULL, 0, NULL, NULL, NULL, NULL, NULL, NULL),"
            "(1, 3, 2, '山本　次郎', 'ﾔﾏﾓﾄ', NULL, 0, NULL, NULL, NULL, NULL, NULL, NULL)"));
    }
};

TEST_F(StaffTest, GridReadsCurrentStaffOfThisOfficeInTheLongFormAfterInit)
{
    data::cT_ADODB db;
    connect(db);
    cT_STAFF list;
    EXPECT_FALSE(list.bLongForm());
    list.iInit(db);
    EXPECT_TRUE(list.bLongForm());
    ASSERT_EQ(list.iDataReadGrid(cD_STAFF{}), 0) << list.sErrMsg().toStdString();
    EXPECT_EQ(ids(list), (std::vector<qint32>{3, 5}));
    const cD_STAFF& sato = list.clsSTAFF(1);
    EXPECT_EQ(sato.cAdress1, QStringLiteral("新宿区1"));
    EXPECT_EQ(sato.cEmail, QStringLiteral("sato@example.jp"));
    EXPECT_EQ(sato.sBirthday, QStringLiteral("1980/02/29"));
    EXPECT_EQ(sato.sNyusyaDay, QStringLiteral("2010/04/01"));
    EXPECT_EQ(sato.sTourokuDay, QString());
    EXPECT_DOUBLE_EQ(sato.nLat, 35.5);
    EXPECT_EQ(sato.iKanriSekininFlg, 1);
}

TEST_F(StaffTest, ShortFormStopsBeforeTheEmailColumn)
{
    const QString shortSql = cT_STAFF::sqlDataReadGrid(cD_STAFF{}, false);
    const QString longSql = cT_STAFF::sqlDataReadGrid(cD_STAFF{}, true);
    EXPECT_TRUE(shortSql.contains(QStringLiteral("      STAFF.nIDNo as nIDNo\r\n  FROM\r\n")));
    EXPECT_FALSE(shortSql.contains(QStringLiteral("cEmail")));
    EXPECT_TRUE(longSql.contains(QStringLiteral("      STAFF.nIDNo as nIDNo,\r\n      STAFF.cEmail as cEmail,\r\n")));
    EXPECT_TRUE(longSql.contains(QStringLiteral("      STAFF.tBirthday as tBirthday,\r\n")));
    EXPECT_TRUE(longSql.contains(QStringLiteral("      STAFF.iKanriSekininFlg as iKanriSekininFlg\r\n  FROM\r\n")));
    EXPECT_FALSE(longSql.contains(QStringLiteral("cKyotenName")));
}

TEST_F(StaffTest, GridConditionsComeBeforeTheOffice)
{
    cD_STAFF f;
    f.nIDNo = 5;
    f.cName = QStringLiteral("佐藤");
    const QString sql = cT_STAFF::sqlDataReadGrid(f, true);
    EXPECT_TRUE(sql.endsWith(QStringLiteral(" where\r\n     (iChusiFlg = 0 OR iChusiFlg IS NULL)\r\n"
                                            " and\r\n     nIDNo = 5\r\n"
                                            " and\r\n     cName LIKE '%佐藤%'\r\n"
                                            " and\r\n iKyotenCd = 1\r\n and iKyotenEb = 2\r\n"
                                            "  order by\r\n      nIDNo\r\n")))
        << sql.toStdString();

    cT_STAFF& list = opened<cT_STAFF>();
    f = {};
    f.iChusiFlg = 1;
    ASSERT_EQ(list.iDataReadGrid(f), 0);
    EXPECT_EQ(ids(list), (std::vector<qint32>{3, 5, 7}));
    f = {};
    f.cNameKana = QStringLiteral("ｻﾄｳ");
    ASSERT_EQ(list.iDataReadGrid(f), 0);
    EXPECT_EQ(ids(list), (std::vector<qint32>{5}));
}

TEST_F(StaffTest, ReadMatchesNumberOfficeAndName)
{
    cT_STAFF& list = opened<cT_STAFF>();
    cD_STAFF f;
    f.nIDNo = -1;
    f.cName = QStringLiteral("佐藤　花子");
    ASSERT_EQ(list.iDataRead(f), 0) << list.sErrMsg().toStdString();
    EXPECT_EQ(ids(list), (std::vector<qint32>{5}));
    EXPECT_TRUE(cT_STAFF::sqlDataRead(f).contains(
        QStringLiteral(" iKyotenCd = 1\r\n and iKyotenEb = 2\r\n AND cName = '佐藤　花子'\r\n")));
    f.nIDNo = 5;
    ASSERT_EQ(list.iDataReadChk(f), 0);
    EXPECT_EQ(list.nデータ数(), 0);
    f.cName.clear();
    ASSERT_EQ(list.iDataReadChk(f), 0);
    EXPECT_EQ(ids(list), (std::vector<qint32>{3, 7}));
}

TEST_F(StaffTest, NameCheckCountsOtherStaffOfEveryOffice)
{
    cD_STAFF row;
    row.nIDNo = 5;
    row.cName = QStringLiteral("佐藤　花子");
    EXPECT_EQ(cT_STAFF::sqlChkStaffName(row), QStringLiteral("  SELECT\r\n"
                                                             "      COUNT(nIDNo) AS Cnt\r\n"
                                                             "  FROM\r\n"
                                                             "      STAFF\r\n"
                                                             "  WHERE nIDNo != 5\r\n"
                                                             " AND\r\n"
                                                             "        cName = '佐藤　花子' \r\n"));
    cT_STAFF& list = opened<cT_STAFF>();
    qint32 nCnt = -1;
    ASSERT_EQ(list.iChkStaffName(row, nCnt), 0) << list.sErrMsg().toStdString();
    EXPECT_EQ(nCnt, 1);  // the namesake of office 1-3, number 1
    // The check goes by number alone: office 1-3's number 1 is "itself" here too.
    row.nIDNo = 1;
    ASSERT_EQ(list.iChkStaffName(row, nCnt), 0);
    EXPECT_EQ(nCnt, 1);
    row.cName = QStringLiteral("新人　三郎");
    ASSERT_EQ(list.iChkStaffName(row, nCnt), 0);
    EXPECT_EQ(nCnt, 0);
}

TEST_F(StaffTest, IdentityCheckReadsOneNumberOfThisOffice)
{
    cT_STAFF& list = opened<cT_STAFF>();
    cD_STAFF f;
    f.nIDNo = 1;
    ASSERT_EQ(list.iDataIdentChk(f), 0) << list.sErrMsg().toStdString();
    EXPECT_EQ(list.nデータ数(), 0);
    f.nIDNo = 7;
    ASSERT_EQ(list.iDataIdentChk(f), 0);
    ASSERT_EQ(list.nデータ数(), 1);
    EXPECT_EQ(list.clsSTAFF(0).cName, QStringLiteral("退職　者"));
}

TEST_F(StaffTest, AllOfficesAreOrderedByOfficeThenNumberWithTheOfficeName)
{
    run(QStringLiteral(
        "INSERT INTO STAFF (iKyotenCd, iKyotenEb, nIDNo, cName, iChusiFlg) VALUES (0, 9, 8, '本部', 0)"));
    cT_STAFF& list = opened<cT_STAFF>();
    ASSERT_EQ(list.iDataReadGrid_AllKyoten(cD_STAFF{}), 0) << list.sErrMsg().toStdString();
    ASSERT_EQ(list.nデータ数(), 5);
    const std::vector<std::tuple<short, short, qint32, QString>> expected = {
        {0, 9, 8, QString()},
        {1, 2, 3, QStringLiteral("新宿営業所")},
        {1, 2, 5, QStringLiteral("新宿営業所")},
        {1, 3, 1, QStringLiteral("渋谷営業所")},
        {1, 3, 2, QStringLiteral("渋谷営業所")},
    };
    for (qint32 i = 0; i < 5; ++i) {
        const cD_STAFF& s = list.clsSTAFF(i);
        EXPECT_EQ(std::make_tuple(s.iKyotenCd, s.iKyotenEb, s.nIDNo, s.cKyotenName), expected[static_cast<size_t>(i)])
            << "row " << i;
    }
    cD_STAFF f;
    f.cName = QStringLiteral("佐藤");
    ASSERT_EQ(list.iDataReadGrid_AllKyoten(f), 0);
    EXPECT_EQ(list.nデータ数(), 2);
    EXPECT_TRUE(cT_STAFF::sqlDataReadGrid_AllKyoten(f, true).endsWith(
        QStringLiteral("  order by\r\n      STAFF.iKyotenCd, STAFF.iKyotenEb, STAFF.nIDNo\r\n")));
}

TEST_F(StaffTest, SearchStaysInThisOffice)
{
    cT_STAFF& list = opened<cT_STAFF>();
    cD_STAFF f;
    f.cNameKana = QStringLiteral("ﾔﾏﾓﾄ");
    ASSERT_EQ(list.iDataReadGrid_Jouken(f), 0) << list.sErrMsg().toStdString();
    EXPECT_EQ(list.nデータ数(), 0);
    f = {};
    ASSERT_EQ(list.iDataReadGrid_Jouken(f), 0);
    EXPECT_EQ(ids(list), (std::vector<qint32>{3, 5, 7}));
}

}  // namespace
