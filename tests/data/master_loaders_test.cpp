// Insurers, doctors and referrers: the count and load pairs through "adodb.ini", the
// used-insurer joins, and where each failure goes.

#include "data/master_loaders.h"

#include "support/entity_db.h"

#include <QDir>

#include <functional>
#include <vector>

namespace {

using namespace data;

class LoadersTest : public sealtest::InstallationTest {
protected:
    void SetUp() override
    {
        InstallationTest::SetUp();
        run(QStringLiteral("INSERT INTO HOKENJA (cIDno, cName, iType, iFutanH, cAddress1) VALUES "
                           "('06130012', '東京都後期高齢者医療広域連合', 39, 10, '千代田区飯田橋3-5-1'),"
                           "('138123', '新宿区', 1, NULL, NULL),"
                           "('01130012', '全国健康保険協会東京支部', 1, 30, NULL),"
                           "('12130015', '東京都福祉保健局', 12, NULL, NULL),"
                           "('67130000', '使われない保険者', 1, NULL, NULL);"
                           // Patients of this office (1-2) and of another (1-3).
                           "INSERT INTO RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo, cName, cHokenNo, cFutanNo) VALUES "
                           "(1, 2, 1, '青木', '06130012', NULL),"
                           "(1, 2, 2, '石井', '06130012', '12130015'),"
                           "(1, 2, 3, '上田', NULL, '12130015'),"
                           "(1, 3, 1, '遠藤', '01130012', NULL);"));
    }

    static QStringList keys(const std::vector<HokenjaRec>& a, size_t n)
    {
        QStringList out;
        for (size_t i = 0; i < n; ++i) out << a[i].cIDno;
        return out;
    }
};

TEST_F(LoadersTest, UsedInsurerStatementIsOneTextWithTwoGroupedJoins)
{
    EXPECT_EQ(sqlHokenjaUsed(),
              QStringLiteral("select * from HOKENJA"
                             " Left Join  (      select cHokenNo from RIYOUSHA      Where iKyotenCd = 1"
                             "     And   iKyotenEb = 2 group by cHokenNo  ) as RIYOUSHA_H on chokenNo = cIDNo "
                             " Left Join  (      select cFutanNo from RIYOUSHA      Where iKyotenCd = 1"
                             "     And   iKyotenEb = 2 group by cFutanNo  ) as RIYOUSHA_F on cFutanNo = cIDNo "
                             " Where RIYOUSHA_H.cHokenNo = cIDNo Or RIYOUSHA_F.cFutanNo = cIDNo "));
    EXPECT_EQ(sqlHokenjaCount(), QStringLiteral("select * from HOKENJA"));
    EXPECT_EQ(sqlHokenjaData(), QStringLiteral("SELECT * FROM HOKENJA"));
    EXPECT_EQ(sqlDoctorCount(), QStringLiteral("select cIDno from DOCTOR"));
    EXPECT_EQ(sqlDoctorData(), QStringLiteral("SELECT * FROM DOCTOR order by CAST(cIDno AS NUMERIC(10))"));
    EXPECT_EQ(sqlSyoukaiCount(), QStringLiteral("select nIDNo from SYOUKAI"));
    EXPECT_EQ(sqlSyoukaiData(), QStringLiteral("select * from SYOUKAI order by nIDNo "));
}

TEST_F(LoadersTest, UsedInsurersComeOnceEachByEitherColumnOfThisOfficesPatients)
{
    // 06130012: two patients; 12130015: only as cFutanNo (twice); 01130012: only
    // another office's patient; 138123 and 67130000: nobody.
    const short n = getHokenjaUsedCount();
    ASSERT_EQ(n, 2) << app::gsLastError.toStdString();
    std::vector<HokenjaRec> a(static_cast<size_t>(n) + 1);
    ASSERT_EQ(getHokenjaUsedData(a), -1) << app::gsLastError.toStdString();
    QStringList got = keys(a, 2);
    got.sort();
    EXPECT_EQ(got, (QStringList{QStringLiteral("06130012"), QStringLiteral("12130015")}));
    EXPECT_EQ(a.size(), 3u);
    EXPECT_EQ(a[2].cIDno, QString());  // the spare place stays empty
}

TEST_F(LoadersTest, AllInsurersInTheTablesOrderWithNullsAsEmptyAndZero)
{
    const short n = getHokenjaCount();
    ASSERT_EQ(n, 5);
    std::vector<HokenjaRec> a(static_cast<size_t>(n) + 1);
    ASSERT_EQ(getHokenjaData(a), -1) << app::gsLastError.toStdString();
    EXPECT_EQ(keys(a, 5), (QStringList{QStringLiteral("06130012"), QStringLiteral("138123"), QStringLiteral("01130012"),
                                       QStringLiteral("12130015"), QStringLiteral("67130000")}));
    EXPECT_EQ(a[0].iType, 39);
    EXPECT_EQ(a[0].iFutanH, 10);
    EXPECT_EQ(a[0].cAddress1, QStringLiteral("千代田区飯田橋3-5-1"));
    EXPECT_EQ(a[1].iFutanH, 0);
    EXPECT_EQ(a[1].cAddress1, QString());
    EXPECT_EQ(a[1].cName2, QString());
}

TEST_F(LoadersTest, DoctorsComeByTheirKeyAsANumber)
{
    run(QStringLiteral("INSERT INTO DOCTOR (cIDno, cName, cKikan) VALUES ('10', '十番', 'A病院'), ('9', '九番', NULL), "
                       "('100', '百番', 'B医院'), ('2', '二番', NULL)"));
    const short n = getDoctorCount();
    ASSERT_EQ(n, 4);
    std::vector<DoctorRec> a(static_cast<size_t>(n) + 1);
    ASSERT_EQ(getDoctorData(a), -1) << app::gsLastError.toStdString();
    QStringList got;
    for (int i = 0; i < 4; ++i) got << a[static_cast<size_t>(i)].cIDno;
    EXPECT_EQ(got,
              (QStringList{QStringLiteral("2"), QStringLiteral("9"), QStringLiteral("10"), QStringLiteral("100")}));
    EXPECT_EQ(a[2].cKikan, QStringLiteral("A病院"));
    EXPECT_EQ(a[0].cKikan, QString());
}

TEST_F(LoadersTest, NoDoctorsCountZeroAndTheLoadLeavesTheArrayUntouched)
{
    EXPECT_EQ(getDoctorCount(), 0);
    EXPECT_EQ(app::gsLastError, QString());
    std::vector<DoctorRec> a(1);
    a[0].cName = QStringLiteral("前のまま");
    EXPECT_EQ(getDoctorData(a), 0);
    ASSERT_EQ(a.size(), 1u);
    EXPECT_EQ(a[0].cName, QStringLiteral("前のまま"));
}

TEST_F(LoadersTest, RowsAddedAfterTheCountAreStillLoaded)
{
    std::vector<HokenjaRec> a(static_cast<size_t>(getHokenjaCount()) + 1);
    run(QStringLiteral("INSERT INTO HOKENJA (cIDno) VALUES ('99999999')"));
    ASSERT_EQ(getHokenjaData(a), -1) << app::gsLastError.toStdString();
    ASSERT_EQ(a.size(), 7u);
    EXPECT_EQ(a[5].cIDno, QStringLiteral("99999999"));
}

TEST_F(LoadersTest, ReferrersComeByNumber)
{
    run(QStringLiteral(
        "INSERT INTO SYOUKAI (nIDNo, cName, cJigyousho, cBikou10) VALUES (30, '紹介　三', NULL, 'メモ'), "
        "(4, '紹介　四', '四ツ谷ケアセンター', NULL)"));
    const short n = getSyoukaicount();
    ASSERT_EQ(n, 2);
    std::vector<SyoukaiRec> a(3);
    ASSERT_EQ(getSyoukaiData(a), -1);
    EXPECT_EQ(a[0].nIDNo, 4);
    EXPECT_EQ(a[0].cJigyousho, QStringLiteral("四ツ谷ケアセンター"));
    EXPECT_EQ(a[1].nIDNo, 30);
    EXPECT_EQ(a[1].cBikou10, QStringLiteral("メモ"));
    EXPECT_EQ(a[1].cJigyousho, QString());
    EXPECT_TRUE(platform_.transcript().isEmpty());
}

TEST_F(LoadersTest, EmptyReferrerTableLoadsNothingAndSaysNotDone)
{
    EXPECT_EQ(getSyoukaicount(), 0);
    std::vector<SyoukaiRec> a(1);
    EXPECT_EQ(getSyoukaiData(a), 0);
    EXPECT_TRUE(platform_.transcript().isEmpty());
}

TEST_F(LoadersTest, SilentLoadersLeaveTheirFailureInTheLastError)
{
    dir_.remove();
    ASSERT_TRUE(QDir().mkpath(dir_.path()));  // the folder without adodb.ini
    std::vector<HokenjaRec> h(1);
    std::vector<DoctorRec> d(1);
    const QString missing =
        QStringLiteral("指定されたIni（") + app::gsAppPath + QStringLiteral("\\adodb.ini）ファイルが見つかりません。");
    const std::vector<std::function<short()>> calls = {
        [] { return getHokenjaCount(); },      [&] { return getHokenjaData(h); }, [] { return getHokenjaUsedCount(); },
        [&] { return getHokenjaUsedData(h); }, [] { return getDoctorCount(); },   [&] { return getDoctorData(d); },
    };
    for (size_t i = 0; i < calls.size(); ++i) {
        app::gsLastError.clear();
        EXPECT_EQ(calls[i](), 0) << "call " << i;
        EXPECT_EQ(app::gsLastError, missing) << "call " << i;
    }
    EXPECT_TRUE(platform_.transcript().isEmpty());
}

TEST_F(LoadersTest, SilentLoaderCopiesTheDatabaseText)
{
    run(QStringLiteral("DROP TABLE HOKENJA"));
    EXPECT_EQ(getHokenjaUsedCount(), 0);
    EXPECT_TRUE(app::gsLastError.startsWith(u'(')) << app::gsLastError.toStdString();
    EXPECT_TRUE(app::gsLastError.contains(QStringLiteral("SQL=select * from HOKENJA")));
    EXPECT_TRUE(platform_.transcript().isEmpty());
}

TEST_F(LoadersTest, ReferrerLoadersShowTheirFailureInACriticalBox)
{
    setConnectString(QString());
    EXPECT_EQ(getSyoukaicount(), 0);
    std::vector<SyoukaiRec> a(1);
    EXPECT_EQ(getSyoukaiData(a), 0);
    EXPECT_EQ(
        platform_.transcript(),
        (QStringList{QStringLiteral("box 16 シール印刷|getSyoukaicount() でエラー\\r\\n接続文字列取得できません。"),
                     QStringLiteral("box 16 シール印刷|getSyoukaiData() でエラー\\r\\n接続文字列取得できません。")}));
    EXPECT_EQ(app::gsLastError, QString());

    // The database's own text follows the routine's name.
    platform_.clearTranscript();
    setConnectString(QStringLiteral("Provider=SQLite;Data Source=") + dir_.filePath(QStringLiteral("none/x.db")));
    EXPECT_EQ(getSyoukaicount(), 0);
    ASSERT_EQ(platform_.transcript().size(), 1);
    EXPECT_TRUE(
        platform_.transcript()[0].startsWith(QStringLiteral("box 16 シール印刷|getSyoukaicount() でエラー\\r\\n(")))
        << platform_.transcript()[0].toStdString();
}

TEST_F(LoadersTest, LoadThatFailsAfterItsCountReportsQuietly)
{
    // A server that checks the key: the ordered read stops at a key that is not a
    // number, while the count, which reads the key alone, passes. Here the DOCTOR
    // view raises an error for such a row whenever its other columns are read.
    run(QStringLiteral("ALTER TABLE DOCTOR RENAME TO DOCTOR_T;"
                       "INSERT INTO DOCTOR_T (cIDno, cName) VALUES ('1', '一番'), ('A2', '英字');"
                       "CREATE VIEW DOCTOR AS SELECT cIDno, cCode, cName, cNameKana, cKikan, cKikanKana, cDaihyo, "
                       "cDaihyoKana, cYubinNo, cAddress1, cAddress2, cAddressKana, cTelNo, cFaxNo, cMobNo, cMail1, "
                       "cMail2, CASE WHEN cIDno GLOB '*[^0-9]*' THEN json('not numeric') ELSE cWeb END AS cWeb "
                       "FROM DOCTOR_T"));
    const short n = getDoctorCount();
    ASSERT_EQ(n, 2) << app::gsLastError.toStdString();
    std::vector<DoctorRec> a(3);
    EXPECT_EQ(getDoctorData(a), 0);
    EXPECT_TRUE(app::gsLastError.contains(QStringLiteral("SQL=SELECT * FROM DOCTOR")))
        << app::gsLastError.toStdString();
    EXPECT_TRUE(platform_.transcript().isEmpty());
}

TEST_F(LoadersTest, MissingColumnOfARecordFailsTheLoad)
{
    run(QStringLiteral("DROP TABLE SYOUKAI; CREATE TABLE SYOUKAI (nIDNo INTEGER, cName TEXT);"
                       "INSERT INTO SYOUKAI VALUES (1, 'a')"));
    std::vector<SyoukaiRec> a(2);
    EXPECT_EQ(getSyoukaiData(a), 0);
    ASSERT_EQ(platform_.transcript().size(), 1);
    EXPECT_TRUE(platform_.transcript()[0].startsWith(
        QStringLiteral("box 16 シール印刷|getSyoukaiData() でエラー\\r\\n3265\\r\\n")))
        << platform_.transcript()[0].toStdString();
}

}  // namespace
