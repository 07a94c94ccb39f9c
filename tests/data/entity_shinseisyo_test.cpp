// Application form layouts: deleted rows never come, print type and state narrow.

#include "data/ct_shinseisyo.h"

#include "support/table_class_test.h"

#include <vector>

namespace {

using data::cD_SHINSEISYO;
using data::cT_SHINSEISYO;

class ShinseisyoTest : public sealtest::TableClassTest<cT_SHINSEISYO, cD_SHINSEISYO, &cT_SHINSEISYO::clsSHINSEISYO> {
protected:
    void SetUp() override
    {
        TableClassTest::SetUp();
        run(QStringLiteral(
            "INSERT INTO SHINSEISYO (iKyotenCd, iKyotenEb, nIDNo, cFileName, cDispName, iDelFlg, iPrintType, "
            "iStateNo) VALUES "
            "(1, 2, 1, 'a.wfd', '療養費支給申請書', 0, 1, 1),"
            "(1, 2, 2, 'b.wfd', '施術報告書', NULL, 2, 1),"
            "(1, 2, 3, 'c.wfd', '削除済み', 1, 1, 1),"
            "(1, 2, 4, 'd.wfd', '療養費支給申請書（東京）', 0, 1, 2),"
            "(2, 2, 5, 'e.wfd', '他拠点', 0, 1, 1)"));
    }
};

TEST_F(ShinseisyoTest, GridLeavesOutDeletedLayoutsAndOtherOffices)
{
    EXPECT_EQ(grid(cD_SHINSEISYO{}), (std::vector<qint32>{1, 2, 4}));
    cD_SHINSEISYO f;
    f.iPrintType = 1;
    EXPECT_EQ(grid(f), (std::vector<qint32>{1, 4}));
    f.iStateNo = 2;
    EXPECT_EQ(grid(f), (std::vector<qint32>{4}));
    EXPECT_TRUE(cT_SHINSEISYO::sqlDataReadGrid(f).endsWith(
        QStringLiteral(" where\r\n     iPrintType = 1\r\n and\r\n iKyotenCd = 1\r\n and iKyotenEb = 2\r\n"
                       " and\r\n     (iDelFlg = 0 OR iDelFlg IS NULL)\r\n and\r\n     iStateNo = 2\r\n"
                       "  order by\r\n      nIDNo\r\n")));
}

TEST_F(ShinseisyoTest, ReadsAndSearch)
{
    cT_SHINSEISYO& list = opened<cT_SHINSEISYO>();
    cD_SHINSEISYO f;
    f.nIDNo = 3;
    ASSERT_EQ(list.iDataRead(f), 0) << list.sErrMsg().toStdString();
    ASSERT_EQ(list.nデータ数(), 1);
    EXPECT_EQ(list.clsSHINSEISYO(0).iDelFlg, 1);
    EXPECT_EQ(list.clsSHINSEISYO(0).cFileName, QStringLiteral("c.wfd"));
    ASSERT_EQ(list.iDataReadChk(f), 0);
    EXPECT_EQ(list.nデータ数(), 3);
    f = {};
    f.cDispName = QStringLiteral("申請書");
    ASSERT_EQ(list.iDataReadGrid_Jouken(f), 0);
    ASSERT_EQ(list.nデータ数(), 2);
    EXPECT_EQ(list.clsSHINSEISYO(1).cDispName, QStringLiteral("療養費支給申請書（東京）"));
}

}  // namespace
