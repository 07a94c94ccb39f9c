// Care managers: the two facility joins, the grid's filters over every office, dates
// as text.

#include "data/ct_caremane.h"

#include "support/table_class_test.h"

#include <functional>
#include <vector>

namespace {

using data::cD_CAREMANE;
using data::cT_CAREMANE;

class CaremaneTest : public sealtest::TableClassTest<cT_CAREMANE, cD_CAREMANE, &cT_CAREMANE::clsCAREMANE> {
protected:
    void SetUp() override
    {
        TableClassTest::SetUp();
        run(QStringLiteral(
            "INSERT INTO SISETSU (iKyotenCd, iKyotenEb, nIDNo, cShamei1, cSisetsuType, cAddress1, cAddress2) VALUES "
            "(1, 2, 10, 'ひかり苑', '特養', '横浜市中区1-1', 'ひかりビル2F'),"
            "(1, 2, 20, 'みどり居宅介護支援事業所', '居宅', '横浜市西区2-2', NULL);"
            "INSERT INTO CAREMANE (iKyotenCd, iKyotenEb, nIDNo, cName, cNameKana, cAdress1, cTelNo, cMobNo, "
            "iSisetsuCode, iJigyosyoCode, iChusiFlg, tBirthday, tUpDateTime) VALUES "
            "(1, 2, 4, '高橋　介護', 'ﾀｶﾊｼ ｶｲｺﾞ', '横浜市', '045-000-0004', '090-0000-0004', 10, 20, 0, '1965/04/01', "
            "'2026/11/01 08:00:00'),"
            "(1, 2, 2, '田中　ケア', 'ﾀﾅｶ ｹｱ', NULL, NULL, NULL, 10, NULL, NULL, NULL, NULL),"
            "(1, 2, 3, '中止　済子', 'ﾁｭｳｼ ｽﾐｺ', NULL, NULL, NULL, NULL, NULL, 1, NULL, NULL),"
            "(5, 1, 1, '他拠点　ケアマネ', 'ﾀｷｮﾃﾝ', NULL, NULL, NULL, 99, NULL, 0, NULL, NULL)"));
    }
};

TEST_F(CaremaneTest, FreshFilterReadsCurrentCareManagersOfEveryOfficeByNumber)
{
    EXPECT_EQ(grid(cD_CAREMANE{}), (std::vector<qint32>{1, 2, 4}));
}

TEST_F(CaremaneTest, GridFiltersNeedAValueAboveZeroOrAText)
{
    const std::pair<std::function<void(cD_CAREMANE&)>, std::vector<qint32>> cases[] = {
        {[](cD_CAREMANE& f) { f.iChusiFlg = 1; }, {1, 2, 3, 4}},  // not 0: the stopped ones come too
        {[](cD_CAREMANE& f) { f.iSisetsuCode = 10; }, {2, 4}},
        {[](cD_CAREMANE& f) { f.iJigyosyoCode = 20; }, {4}},
        {[](cD_CAREMANE& f) { f.nIDNo = 2; }, {2}},
        {[](cD_CAREMANE& f) { f.cName = QStringLiteral("ケア"); }, {1, 2}},
        {[](cD_CAREMANE& f) { f.cNameKana = QStringLiteral("ﾀｶﾊｼ"); }, {4}},
    };
    for (size_t i = 0; i < std::size(cases); ++i) {
        cD_CAREMANE f;
        cases[i].first(f);
        EXPECT_EQ(grid(f), cases[i].second) << "case " << i;
    }
}

TEST_F(CaremaneTest, JoinsGiveTheFacilityAndTheOfficeOrNothing)
{
    cT_CAREMANE& list = opened<cT_CAREMANE>();
    ASSERT_EQ(list.iDataReadGrid(cD_CAREMANE{}), 0) << list.sErrMsg().toStdString();
    ASSERT_EQ(list.nデータ数(), 3);
    const cD_CAREMANE& full = list.clsCAREMANE(2);
    EXPECT_EQ(full.SISETSUSHAMEI, QStringLiteral("ひかり苑"));
    EXPECT_EQ(full.SISETSUSHURUI, QStringLiteral("特養"));
    EXPECT_EQ(full.JIGYOSYOSHAMEI, QStringLiteral("みどり居宅介護支援事業所"));
    EXPECT_EQ(full.JIGYOSYOSHURUI, QStringLiteral("居宅"));
    EXPECT_EQ(full.JIGYOSYOADD1, QStringLiteral("横浜市西区2-2"));
    EXPECT_EQ(full.JIGYOSYOADD2, QString());
    EXPECT_EQ(full.cMobNo, QStringLiteral("090-0000-0004"));
    EXPECT_EQ(full.sBirthday, QStringLiteral("1965/04/01"));
    EXPECT_EQ(full.tUpDateTime, QStringLiteral("2026/11/01 8:00:00"));

    const cD_CAREMANE& noOffice = list.clsCAREMANE(1);
    EXPECT_EQ(noOffice.SISETSUSHAMEI, QStringLiteral("ひかり苑"));
    EXPECT_EQ(noOffice.JIGYOSYOSHAMEI, QString());
    EXPECT_EQ(noOffice.sBirthday, QString());
    EXPECT_EQ(noOffice.iJigyosyoCode, 0);

    const cD_CAREMANE& unknownFacility = list.clsCAREMANE(0);
    EXPECT_EQ(unknownFacility.iSisetsuCode, 99);
    EXPECT_EQ(unknownFacility.SISETSUSHAMEI + unknownFacility.SISETSUSHURUI, QString());
}

TEST_F(CaremaneTest, GridStatementJoinsTheFacilityTwiceWithoutOffice)
{
    cD_CAREMANE f;
    f.cName = QStringLiteral("高橋");
    const QString sql = cT_CAREMANE::sqlDataReadGrid(f);
    EXPECT_TRUE(sql.contains(QStringLiteral("\r\n  LEFT JOIN SISETSU ON SISETSU.nIDNo = CAREMANE.iSisetsuCode\r\n")));
    EXPECT_TRUE(sql.contains(
        QStringLiteral("\r\n  LEFT JOIN SISETSU AS SISETSU2 ON SISETSU2.nIDNo = CAREMANE.iJigyosyoCode\r\n")));
    EXPECT_TRUE(sql.endsWith(QStringLiteral(" where\r\n     (CAREMANE.iChusiFlg = 0 OR iChusiFlg IS NULL)\r\n"
                                            " and\r\n     CAREMANE.cName LIKE '%高橋%'\r\n"
                                            "  order by\r\n      CAREMANE.nIDNo\r\n")))
        << sql.toStdString();
    EXPECT_FALSE(sql.contains(QStringLiteral("iKyotenCd =")));
}

TEST_F(CaremaneTest, ReadHasTheOneNumberConditionOverEveryOffice)
{
    cT_CAREMANE& list = opened<cT_CAREMANE>();
    cD_CAREMANE f;
    f.nIDNo = 3;
    ASSERT_EQ(list.iDataRead(f), 0) << list.sErrMsg().toStdString();
    ASSERT_EQ(list.nデータ数(), 1);
    EXPECT_EQ(list.clsCAREMANE(0).cName, QStringLiteral("中止　済子"));
    EXPECT_EQ(list.clsCAREMANE(0).iChusiFlg, 1);
    f.nIDNo = 1;
    ASSERT_EQ(list.iDataRead(f), 0);
    EXPECT_EQ(list.nデータ数(), 1);  // of office 5-1: no office condition
    ASSERT_EQ(list.iDataReadChk(f), 0);
    EXPECT_EQ(list.nデータ数(), 3);
}

TEST_F(CaremaneTest, SearchStaysInThisOffice)
{
    cT_CAREMANE& list = opened<cT_CAREMANE>();
    cD_CAREMANE f;
    f.cNameKana = QStringLiteral("ﾀ");
    ASSERT_EQ(list.iDataReadGrid_Jouken(f), 0) << list.sErrMsg().toStdString();
    EXPECT_EQ(ids(list), (std::vector<qint32>{2, 4}));
}

}  // namespace
