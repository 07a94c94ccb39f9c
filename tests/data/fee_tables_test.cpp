// Fee unit prices and visit fee bands of a month: the statements as the server gets
// them, the table of price codes, the months a row is valid in, and the boxes of a
// month without prices, a missing column and a bad row.

#include "data/fee_tables.h"

#include "support/entity_db.h"

namespace {

using data::cls単価;
using data::cls往療費;

TEST(FeeStatementTest, PricesOfAMonthInStartDateAndCodeOrder)
{
    EXPECT_EQ(data::sqlTanka(QStringLiteral("202611")),
              QStringLiteral("SELECT * FROM 療養費単価"
                             " WHERE SUBSTRING(CONVERT(VARCHAR, cStartDate, 112),1,4)"
                             "+SUBSTRING(CONVERT(VARCHAR, cStartDate, 112),6,2) <=   '202611'"
                             " AND SUBSTRING(CONVERT(VARCHAR, cEndDate, 112),1,4)"
                             "+SUBSTRING(CONVERT(VARCHAR, cEndDate, 112),6,2) >=   '202611'"
                             " ORDER BY cStartDate, iTankaKbn, nTankaCode"));
}

TEST(FeeStatementTest, BandsOfAMonthByDistance)
{
    EXPECT_EQ(data::sqlOuryohi(QStringLiteral("202504")),
              QStringLiteral("SELECT * FROM 往療費区分"
                             " WHERE SUBSTRING(CONVERT(VARCHAR, cStartDate, 112),1,4)"
                             "+SUBSTRING(CONVERT(VARCHAR, cStartDate, 112),6,2) <=   '202504'"
                             " AND SUBSTRING(CONVERT(VARCHAR, cEndDate, 112),1,4)"
                             "+SUBSTRING(CONVERT(VARCHAR, cEndDate, 112),6,2) >=   '202504'"
                             " ORDER BY nMaxLen"));
}

// --- the code table -------------------------------------------------------------------

struct PriceCode {
    const char* name;
    qint32 kbn;
    qint32 code;
    qint32 (cls単価::*property)() const;
};

const PriceCode kPriceCodes[] = {
    {"Massage", 1, 1, &cls単価::nマッサージ},
    {"Deformity", 1, 2, &cls単価::n変形徒手},
    {"WarmCompress", 1, 3, &cls単価::n温按法},
    {"ElectricLight", 1, 4, &cls単価::n電気光線},
    {"AcupunctureOne", 1, 11, &cls単価::n鍼灸1術},
    {"AcupunctureTwo", 1, 12, &cls単価::n鍼灸2術},
    {"AcupunctureOneFirst", 1, 13, &cls単価::n鍼灸1術初回},
    {"AcupunctureTwoFirst", 1, 14, &cls単価::n鍼灸2術初回},
    {"ElectricNeedle", 1, 15, &cls単価::n電気鍼温灸器},
    {"AcupunctureOneExam", 1, 16, &cls単価::n鍼灸1術初検料},
    {"AcupunctureTwoExam", 1, 17, &cls単価::n鍼灸2術初検料},
    {"TreatmentReport", 1, 18, &cls単価::n施術報告書交付料},
    {"VisitBase", 2, 1, &cls単価::n基本往療費},
    {"VisitAdded", 2, 2, &cls単価::n加算往療費},
    {"FlatTenPercent", 9, 1, &cls単価::n定額料金1割},
    {"FlatTwentyPercent", 9, 2, &cls単価::n定額料金2割},
    {"FlatThirtyPercent", 9, 3, &cls単価::n定額料金3割},
    {"OwnCostTreatment", 9, 11, &cls単価::n実費施術費},
    {"OwnCostTravel", 9, 12, &cls単価::n実費交通費},
};

TEST(PriceCodeTableTest, PairsOutsideTheTableNameNothing)
{
    // Neighbours of real codes, and real codes under another kind.
    const std::pair<qint32, qint32> unknown[] = {{1, 0},  {1, 5}, {1, 10}, {1, 19}, {2, 0}, {2, 3},
                                                 {2, 11}, {9, 4}, {9, 10}, {9, 13}, {3, 1}, {0, 1}};
    for (const auto& [kbn, code] : unknown) EXPECT_FALSE(data::tankaOf(kbn, code).has_value()) << kbn << "/" << code;
}

// --- reading through the database ----------------------------------------------------------

class FeeTablesTest : public sealtest::InstallationTest {
protected:
    void addPrice(const char* start, const char* end, const char* kbn, const char* code, qint32 tanka)
    {
        run(QStringLiteral("INSERT INTO 療養費単価 (cStartDate, cEndDate, iTankaKbn, nTankaCode, nTanka)"
                           " VALUES ('%1', '%2', '%3', '%4', %5)")
                .arg(QString::fromUtf8(start), QString::fromUtf8(end), QString::fromUtf8(kbn), QString::fromUtf8(code))
                .arg(tanka));
    }
    void addBand(const char* start, const char* end, qint32 maxLen, qint32 amount)
    {
        run(QStringLiteral("INSERT INTO 往療費区分 (cStartDate, cEndDate, nMaxLen, nKingakuOuryou)"
                           " VALUES ('%1', '%2', %3, %4)")
                .arg(QString::fromUtf8(start), QString::fromUtf8(end))
                .arg(maxLen)
                .arg(amount));
    }
};

TEST_F(FeeTablesTest, MonthWithoutPricesSaysSoAndKeepsThePrices)
{
    addPrice("2024/06/01", "2026/10/31", "1", "1", 450);
    addPrice("2026/12/01", "2099/12/31", "1", "1", 470);
    cls単価 tanka;
    EXPECT_EQ(tanka.iGetTanka(QStringLiteral("202611")), -1);
    EXPECT_EQ(tanka.nマッサージ(), 0);
    EXPECT_EQ(platform_.transcript(), QStringList{QStringLiteral("box 48 シール印刷|単価データがありません。")});
}

TEST_F(FeeTablesTest, MissingColumnFailsTheConnectionStepWithTheStatement)
{
    run(QStringLiteral("ALTER TABLE 療養費単価 DROP COLUMN cEndDate;"
                       "ALTER TABLE 往療費区分 DROP COLUMN cEndDate"));
    cls単価 tanka;
    EXPECT_EQ(tanka.iGetTanka(QStringLiteral("202611")), -1);
    cls往療費 ouryo;
    EXPECT_EQ(ouryo.iGetOuryohiAll(QStringLiteral("202611")), -1);
    const QStringList boxes = platform_.transcript();
    ASSERT_EQ(boxes.size(), 2);
    EXPECT_TRUE(boxes[0].startsWith(QStringLiteral("box 16 シール印刷|iGetTanka() でエラー\\r\\n(")))
        << boxes[0].toStdString();
    EXPECT_TRUE(boxes[0].contains(QStringLiteral("SQL=SELECT * FROM 療養費単価 WHERE"))) << boxes[0].toStdString();
    EXPECT_TRUE(boxes[1].startsWith(QStringLiteral("box 16 シール印刷|iGetOuryohiAll() でエラー\\r\\n(")))
        << boxes[1].toStdString();
}

TEST_F(FeeTablesTest, NoConnectionTextNamesTheRoutine)
{
    setConnectString(QString());
    cls単価 tanka;
    EXPECT_EQ(tanka.iGetTanka(QStringLiteral("202611")), -1);
    cls往療費 ouryo;
    EXPECT_EQ(ouryo.iGetOuryohiAll(QStringLiteral("202611")), -1);
    EXPECT_EQ(
        platform_.transcript(),
        (QStringList{QStringLiteral("box 16 シール印刷|iGetTanka() でエラー\\r\\n接続文字列取得できません。"),
                     QStringLiteral("box 16 シール印刷|iGetOuryohiAll() でエラー\\r\\n接続文字列取得できません。")}));
}

TEST_F(FeeTablesTest, BandOutsideTheBandsReadNamesBandAndCode)
{
    cls往療費 ouryo;
    EXPECT_EQ(ouryo.i往療区分数(), 0);
    EXPECT_EQ(ouryo.iGetOuryohi(1, 3), -1);
    EXPECT_EQ(ouryo.iGetOuryohi(0, 1), -1);
    EXPECT_EQ(ouryo.n往療単価(), 0);
    EXPECT_EQ(
        platform_.transcript(),
        (QStringList{QStringLiteral("box 16 DB Read Error!!|往療金額の取得に失敗しました。\\r\\n区分:1  コード：3"),
                     QStringLiteral("box 16 DB Read Error!!|往療金額の取得に失敗しました。\\r\\n区分:0  コード：1")}));
}

// The validity test compares "yyyymm" texts built with T-SQL's string "+" from text
// columns; these cases run once the SQLite dialect step turns that "+" into "||" and
// leaves CONVERT(VARCHAR, <text column>, 112) as the text it is, as SQL Server does.

TEST_F(FeeTablesTest, EveryPriceOfTheMonthLandsInItsProperty)
{
    qint32 price = 100;
    for (const PriceCode& c : kPriceCodes)
        addPrice("2024/06/01", "2099/12/31", QByteArray::number(c.kbn).constData(),
                 QByteArray::number(c.code).constData(), price++);
    addPrice("2024/06/01", "2099/12/31", "1", "5", 99999);  // not a priced pair
    cls単価 tanka;
    ASSERT_EQ(tanka.iGetTanka(QStringLiteral("202611")), 0) << platform_.transcript().join(u'\n').toStdString();
    price = 100;
    for (const PriceCode& c : kPriceCodes) EXPECT_EQ((tanka.*c.property)(), price++) << c.name;
    EXPECT_TRUE(platform_.transcript().isEmpty());
}

TEST_F(FeeTablesTest, ValidityRunsFromTheStartMonthToTheEndMonthAndLaterRowsWin)
{
    addPrice("2022/06/01", "2024/05/31", "1", "1", 435);
    addPrice("2024/06/15", "2026/11/30", "1", "1", 450);  // starts mid-month: the month counts
    addPrice("2026/11/01", "2099/12/31", "1", "1", 470);  // later start, read last
    addPrice("2026/12/01", "2099/12/31", "1", "2", 500);
    struct Case {
        const char* month;
        qint32 massage;
        qint32 deformity;
    };
    // One object through the months: a price one month lacks is not the last month's.
    cls単価 tanka;
    for (const Case& c :
         {Case{"202612", 470, 500}, Case{"202611", 470, 0}, Case{"202406", 450, 0}, Case{"202405", 435, 0}}) {
        ASSERT_EQ(tanka.iGetTanka(QString::fromUtf8(c.month)), 0) << c.month;
        EXPECT_EQ(tanka.nマッサージ(), c.massage) << c.month;
        EXPECT_EQ(tanka.n変形徒手(), c.deformity) << c.month;
    }
}

TEST_F(FeeTablesTest, KeyThatIsNoNumberIsAReadErrorNamingTheRow)
{
    addPrice("2024/06/01", "2099/12/31", "1", "1", 450);
    addPrice("2024/07/01", "2099/12/31", "A", "3", 1);
    cls単価 tanka;
    EXPECT_EQ(tanka.iGetTanka(QStringLiteral("202611")), -1);
    EXPECT_EQ(tanka.nマッサージ(), 0);  // nothing of a failed read is kept
    EXPECT_EQ(platform_.transcript(),
              QStringList{QStringLiteral("box 16 DB Read Error!!|単価の取得に失敗しました。\\r\\n区分:A  コード：3")});
}

TEST_F(FeeTablesTest, BandsComeByDistanceAndAreTakenByNumber)
{
    addBand("2024/06/01", "2099/12/31", 16, 2300);
    addBand("2024/06/01", "2099/12/31", 4, 1800);
    addBand("2024/06/01", "2099/12/31", 8, 2100);
    addBand("2020/04/01", "2024/05/31", 4, 1500);  // an older band
    cls往療費 ouryo;
    ASSERT_EQ(ouryo.iGetOuryohiAll(QStringLiteral("202611")), 0);
    ASSERT_EQ(ouryo.i往療区分数(), 3);
    const qint32 expected[][2] = {{1800, 4}, {2100, 8}, {2300, 16}};
    for (short band = 1; band <= 3; ++band) {
        ASSERT_EQ(ouryo.iGetOuryohi(band, 0), 0);
        EXPECT_EQ(ouryo.n往療単価(), expected[band - 1][0]);
        EXPECT_EQ(ouryo.n往療距離MAX(), expected[band - 1][1]);
    }
    // A month without bands leaves none to take.
    ASSERT_EQ(ouryo.iGetOuryohiAll(QStringLiteral("201901")), 0);
    EXPECT_EQ(ouryo.i往療区分数(), 0);
}

}  // namespace
