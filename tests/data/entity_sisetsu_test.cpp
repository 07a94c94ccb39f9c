// Facilities and medical institutions: one table, two kinds, read over every office.

#include "data/ct_sisetsu.h"

#include "support/table_class_test.h"

#include <functional>
#include <vector>

namespace {

using data::cD_SISETSU;
using data::cT_SISETSU;

class SisetsuTest : public sealtest::TableClassTest<cT_SISETSU, cD_SISETSU, &cT_SISETSU::clsSisetsu> {
protected:
    void SetUp() override
    {
        TableClassTest::SetUp();
        run(QStringLiteral(
            "INSERT INTO SISETSU (iKyotenCd, iKyotenEb, nIDNo, cShamei1, cShameiKana1, cSisetsuType, iKikanShubetsu, "
            "cAddress1, nColorCode, nLat) VALUES "
            "(1, 2, 12, 'ひかり苑', 'ﾋｶﾘｴﾝ', '特養', 1, '横浜市', 16777215, 35.25),"
            "(1, 2, 3, '港南クリニック', 'ｺｳﾅﾝ', '診療所', 2, NULL, NULL, NULL),"
            "(1, 2, 8, 'あさひ荘', 'ｱｻﾋｿｳ', '老健', 1, NULL, NULL, NULL),"
            "(4, 4, 1, '遠方病院', 'ｴﾝﾎﾟｳ', '病院', 2, NULL, NULL, NULL),"
            "(1, 2, 20, '種別なし', NULL, NULL, NULL, NULL, NULL, NULL)"));
    }
};

TEST_F(SisetsuTest, KindOfInstitutionSplitsFacilitiesFromClinicsOverEveryOffice)
{
    cD_SISETSU facilities;
    facilities.iKikanShubetsu = 1;
    EXPECT_EQ(grid(facilities), (std::vector<qint32>{8, 12}));
    cD_SISETSU clinics;
    clinics.iKikanShubetsu = 2;
    EXPECT_EQ(grid(clinics), (std::vector<qint32>{1, 3}));
    EXPECT_EQ(grid(cD_SISETSU{}), (std::vector<qint32>{1, 3, 8, 12, 20}));
}

TEST_F(SisetsuTest, GridTextsAreContainmentSearches)
{
    const std::pair<std::function<void(cD_SISETSU&)>, std::vector<qint32>> cases[] = {
        {[](cD_SISETSU& f) { f.cShamei1 = QStringLiteral("苑"); }, {12}},
        {[](cD_SISETSU& f) { f.cShameiKana1 = QStringLiteral("ｿｳ"); }, {8}},
        {[](cD_SISETSU& f) { f.cSisetsuType = QStringLiteral("病"); }, {1}},
        {[](cD_SISETSU& f) {
             f.nIDNo = 3;
             f.iKikanShubetsu = 1;
         },
         {}},
    };
    for (size_t i = 0; i < std::size(cases); ++i) {
        cD_SISETSU f;
        cases[i].first(f);
        EXPECT_EQ(grid(f), cases[i].second) << "case " << i;
    }
}

TEST_F(SisetsuTest, StatementsNameTheTableSisetsu)
{
    cD_SISETSU f;
    f.iKikanShubetsu = 2;
    const QString sql = cT_SISETSU::sqlDataReadGrid(f);
    EXPECT_TRUE(sql.startsWith(QStringLiteral("  select\r\n      Sisetsu.cAddress1 as cAddress1,\r\n")));
    EXPECT_TRUE(sql.endsWith(QStringLiteral("  FROM\r\n      Sisetsu\r\n where\r\n     iKikanShubetsu = 2\r\n"
                                            "  order by\r\n      nIDNo\r\n")))
        << sql.toStdString();
}

TEST_F(SisetsuTest, RowValues)
{
    cT_SISETSU& list = opened<cT_SISETSU>();
    cD_SISETSU f;
    f.nIDNo = 12;
    ASSERT_EQ(list.iDataRead(f), 0) << list.sErrMsg().toStdString();
    ASSERT_EQ(list.nデータ数(), 1);
    EXPECT_EQ(list.clsSisetsu(0).nColorCode, 16777215);
    EXPECT_DOUBLE_EQ(list.clsSisetsu(0).nLat, 35.25);
}

TEST_F(SisetsuTest, ReadIsOfThisOfficeWithAnExactKind)
{
    cT_SISETSU& list = opened<cT_SISETSU>();
    cD_SISETSU f;
    f.nIDNo = -1;
    f.cSisetsuType = QStringLiteral("特養");
    ASSERT_EQ(list.iDataRead(f), 0) << list.sErrMsg().toStdString();
    EXPECT_EQ(ids(list), (std::vector<qint32>{12}));
    f.cSisetsuType = QStringLiteral("病院");  // only office 4-4 has one
    ASSERT_EQ(list.iDataRead(f), 0);
    EXPECT_EQ(list.nデータ数(), 0);
    f.cSisetsuType.clear();
    f.nIDNo = 12;
    ASSERT_EQ(list.iDataReadChk(f), 0);
    EXPECT_EQ(list.nデータ数(), 3);
    f = {};
    f.cShamei1 = QStringLiteral("遠方");
    ASSERT_EQ(list.iDataReadGrid_Jouken(f), 0);
    EXPECT_EQ(list.nデータ数(), 0);
}

}  // namespace
