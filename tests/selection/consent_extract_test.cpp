// The consent extraction on a real database: which consents are selected, how a
// patient's records are merged, the dates and names of each row, and the failures.

#include "selection/consent_extract.h"

#include "support/consent_fixture.h"

#include <gtest/gtest.h>

using namespace selection;

namespace {

class ConsentExtraction : public sealtest::ConsentDbTest {
protected:
    ConsentExtraction()
    {
        install.addStaff(11, QStringLiteral("佐藤 一郎"));
        install.addStaff(12, QStringLiteral("鈴木 花子"));
        install.addDoctor(QStringLiteral("D1"), QStringLiteral("山田太郎"), QStringLiteral("ヤマダ クリニック"),
                          QStringLiteral("03-1111-2222"));
        install.addDoctor(QStringLiteral("D2"), QStringLiteral("田中次郎"), QStringLiteral("田中病院"));
        install.addConsentPatient(101, QStringLiteral("青木 一"), 11, 0, QStringLiteral("2026/03/01"));
        install.addConsentPatient(102, QStringLiteral("井上 二"), 11);
        install.addConsentPatient(103, QStringLiteral("上田 三"), 0);
        install.addConsent(101, QStringLiteral("2026/08/16"), QStringLiteral("D1"), 1, QStringLiteral("山田　太郎 "),
                           QStringLiteral("ﾔﾏﾀﾞｸﾘﾆｯｸ"));
        install.addConsent(101, QStringLiteral("2026/09/15"), QStringLiteral("D1"));
        install.addConsent(102, QStringLiteral("2026/09/01"), QStringLiteral("D2"));
        install.addConsent(103, QStringLiteral("2026/09/16"), QStringLiteral("D2"));  // the exclusive end
        install.addConsent(103, QStringLiteral("2026/08/20"), QStringLiteral("D1"));
        // Left out: an ended patient, an acupuncture patient, another office's consent.
        install.exec(
            QStringLiteral("INSERT INTO RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo, cName, iSejutsuKubun, tExpireDay) "
                           "VALUES (1, 2, 104, '終了 四', 0, '2026/10/01');"
                           "INSERT INTO RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo, cName, iSejutsuKubun, nTantou) "
                           "VALUES (1, 2, 105, '鍼 五', 1, 12);"
                           "INSERT INTO RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo, cName, iSejutsuKubun) "
                           "VALUES (9, 2, 101, '他所 一', 0);"));
        install.addConsent(104, QStringLiteral("2026/09/01"), QStringLiteral("D1"));
        install.addConsent(105, QStringLiteral("2026/09/01"), QStringLiteral("D1"));
        connect();

        c.iMode = 0;
        c.iSejutsu = 0;
        c.nKikanMonths = 3;
        const DateRange r = consentDateRange(QDate(2026, 11, 1), 0, 3);
        c.tFrom = r.tFrom;
        c.tTo = r.tTo;
    }

    static std::vector<qint32> ids(const ConsentRows& rows)
    {
        std::vector<qint32> out;
        for (const ConsentRow& r : rows) out.push_back(r.nIDNo);
        return out;
    }

    DouiCondition c;
    ConsentRows rows;
    QString sErrMsg;
};

TEST_F(ConsentExtraction, ByBaseDateAPatientSplitByAnotherYieldsTwoRows)
{
    ASSERT_EQ(iGetKanjaData(*db, c, 0, rows, sErrMsg), 0) << sErrMsg.toStdString();
    // No staff sorts first; under staff 11 patient 101's two consents stand apart.
    EXPECT_EQ(ids(rows), (std::vector<qint32>{103, 101, 102, 101}));
    EXPECT_EQ(rows[0].KijunDay, QStringLiteral("2026/08/20"));
    EXPECT_EQ(rows[1].KijunDay, QStringLiteral("2026/08/16"));
    EXPECT_EQ(rows[3].KijunDay, QStringLiteral("2026/09/15"));
}

TEST_F(ConsentExtraction, ByPatientAdjacentRecordsMergeAndTheFirstWins)
{
    c.iSort = 1;
    ASSERT_EQ(iGetKanjaData(*db, c, 0, rows, sErrMsg), 0) << sErrMsg.toStdString();
    EXPECT_EQ(ids(rows), (std::vector<qint32>{103, 101, 102}));
    EXPECT_EQ(rows[1].KijunDay, QStringLiteral("2026/08/16"));
}

TEST_F(ConsentExtraction, RowsCarryTheDatesNamesAndStaff)
{
    ASSERT_EQ(iGetKanjaData(*db, c, 0, rows, sErrMsg), 0);
    const ConsentRow& aoki = rows[1];
    EXPECT_EQ(aoki.RiyouName, QStringLiteral("青木 一"));
    EXPECT_EQ(aoki.nTantou, 11);
    EXPECT_EQ(aoki.StaffName, QStringLiteral("佐藤 一郎"));
    EXPECT_EQ(aoki.DouiKigen, QStringLiteral("2026/11/30"));
    EXPECT_EQ(aoki.ShinDouiDay, QStringLiteral("2026/12/01"));
    // First pass: 2026/08/15 + 3 months = 2026/11/15; from 2026/03 that is 8 months.
    EXPECT_EQ(aoki.nKeika, 8);
    EXPECT_EQ(aoki.IshiIDno, QStringLiteral("D1"));
    EXPECT_EQ(aoki.IshiName, QStringLiteral("山田太郎"));
    EXPECT_EQ(aoki.IshiKikanName, QStringLiteral("ヤマダ クリニック"));
    EXPECT_TRUE(aoki.IshiTel.isEmpty());
    EXPECT_TRUE(aoki.IraiDay.isEmpty());

    const ConsentRow& ueda = rows[0];
    EXPECT_EQ(ueda.nTantou, 0);
    EXPECT_TRUE(ueda.StaffName.isEmpty());
    EXPECT_EQ(ueda.nKeika, 0);  // no first treatment day
}

TEST_F(ConsentExtraction, WithoutEachStaffRowsCarryNoStaffButKeepTheDatabaseOrder)
{
    c.iEachStaff = 0;
    ASSERT_EQ(iGetKanjaData(*db, c, 0, rows, sErrMsg), 0);
    EXPECT_EQ(ids(rows), (std::vector<qint32>{103, 101, 102, 101}));
    for (const ConsentRow& r : rows) EXPECT_EQ(r.nTantou, 0);
    EXPECT_EQ(rows[1].StaffName, QStringLiteral("佐藤 一郎"));
}

TEST_F(ConsentExtraction, NoRowsSaysPatientsInTheLedgerAndDoctorsForTheSeal)
{
    rows.push_back(ConsentRow{});
    rows[0].nIDNo = 77;
    EXPECT_EQ(iGetKanjaData(*db, c, 12, rows, sErrMsg), 1);
    EXPECT_EQ(sErrMsg, QStringLiteral("該当する患者データがありません。"));
    c.iMode = 1;
    EXPECT_EQ(iGetKanjaData(*db, c, 12, rows, sErrMsg), 2);
    EXPECT_EQ(sErrMsg, QStringLiteral("該当する医師データがありません。"));
    ASSERT_EQ(rows.size(), 1u);  // a run without rows replaces nothing
    EXPECT_EQ(rows[0].nIDNo, 77);
}

TEST_F(ConsentExtraction, DeformityCorrectionLeavesOutTheLastDayOfTheMonth)
{
    install.addConsentPatient(106, QStringLiteral("変形 六"), 12);
    install.addConsentPatient(107, QStringLiteral("変形 七"), 12);
    install.addConsent(106, QStringLiteral("2026/10/30"), QStringLiteral("D2"), 2);
    install.addConsent(107, QStringLiteral("2026/10/31"), QStringLiteral("D2"), 2);
    c.iSejutsu = 1;
    c.nKikanMonths = 1;
    const DateRange r = consentDateRange(QDate(2026, 11, 1), 1, 1);
    c.tFrom = r.tFrom;
    c.tTo = r.tTo;
    ASSERT_EQ(iGetKanjaData(*db, c, 0, rows, sErrMsg), 0) << sErrMsg.toStdString();
    EXPECT_EQ(ids(rows), (std::vector<qint32>{106}));
    EXPECT_EQ(rows[0].DouiKigen, QStringLiteral("2026/11/30"));
    EXPECT_EQ(rows[0].ShinDouiDay, QStringLiteral("2026/11/30"));
}

TEST_F(ConsentExtraction, AcupunctureTakesOnlyAcupuncturePatients)
{
    c.iSejutsu = 7;
    ASSERT_EQ(iGetKanjaData(*db, c, 0, rows, sErrMsg), 0);
    EXPECT_EQ(ids(rows), (std::vector<qint32>{105}));
}

TEST_F(ConsentExtraction, TelephoneFoundThoughNameDiffersInWidthAndBlanks)
{
    c.iIsiTel = 1;
    ASSERT_EQ(iGetKanjaData(*db, c, 0, rows, sErrMsg), 0);
    EXPECT_EQ(rows[1].IshiTel, QStringLiteral("03-1111-2222"));  // "山田　太郎 " / "ﾔﾏﾀﾞｸﾘﾆｯｸ"
    EXPECT_TRUE(rows[2].IshiTel.isEmpty());                      // no such doctor in DOCTOR
}

TEST_F(ConsentExtraction, TheFirstSlotSpellingResolvesDespiteItsFullWidthLetter)
{
    c.iDouiRec1 = 1;
    c.iIsiTel = 1;
    ASSERT_EQ(iGetKanjaData(*db, c, 0, rows, sErrMsg), 0) << sErrMsg.toStdString();
    // The telephone is looked up with the consent record's names ("山田　太郎 ").
    EXPECT_EQ(rows[1].IshiTel, QStringLiteral("03-1111-2222"));
    // The doctor's own names win in the end.
    EXPECT_EQ(rows[1].IshiName, QStringLiteral("山田太郎"));
}

TEST_F(ConsentExtraction, ALostConnectionFailsWithTheWrappersTextAndTheTelephoneIsEmpty)
{
    db->iDisConnect();
    EXPECT_EQ(iGetKanjaData(*db, c, 0, rows, sErrMsg), -1);
    EXPECT_FALSE(sErrMsg.isEmpty());
    EXPECT_EQ(sErrMsg, db->sErrMsg());
    QString why;
    EXPECT_TRUE(csGetIsiTel(*db, QStringLiteral("山田太郎"), QStringLiteral("ヤマダクリニック"), why).isEmpty());
    EXPECT_FALSE(why.isEmpty());
}

}  // namespace
