// The progress report screen on a real database: each kind of addressee, the month
// range and the staff filter, the screen's set-up, its staff lookup and its hand-over.

#include "selection/frm_seal_sejutsu_keika.h"

#include "support/consent_fixture.h"

#include <gtest/gtest.h>

using namespace selection;

namespace {

class ProgressReports : public sealtest::ConsentDbTest {
protected:
    ProgressReports()
    {
        install.addStaff(11, QStringLiteral("佐藤 一郎"));
        install.addStaff(12, QStringLiteral("鈴木 花子"));
        install.addStaff(14, QStringLiteral("田中 休職"), QStringLiteral("2"));
        install.addDoctor(QStringLiteral("501"), QStringLiteral("山田太郎"), QStringLiteral("青葉医院"), {},
                          QStringLiteral("31"), QStringLiteral("アオバ"));
        install.addDoctor(QStringLiteral("502"), QStringLiteral("田中次郎"), QStringLiteral("山田病院"), {},
                          QStringLiteral("32"), QStringLiteral("ヤマダ"));
        install.exec(QStringLiteral(
            "INSERT INTO RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo, cName, nTantou, tDouiDay1, tDouiDay2, tDouiKaryoE1, "
            "tDouiKaryoE2, cDouiIsiKikan1, cDouiIsiKikan2, iTenki) VALUES "
            "(1, 2, 201, '青木', 11, '2026/01/01', '2026/06/01', '2026/10/31', NULL, '旧医院', '山田病院', 0),"
            "(1, 2, 202, '井上', 12, '2026/02/01', NULL, NULL, NULL, '青葉医院', NULL, 0),"
            "(1, 2, 203, '上田', 11, NULL, NULL, NULL, NULL, NULL, NULL, 0),"
            "(9, 2, 901, '他所', 11, NULL, '2026/03/01', NULL, '2026/10/15', NULL, '青葉医院', 0);"
            "INSERT INTO RIYOUSHA_SUB (iKyotenCd, iKyotenEb, nIDNo, iIsiCd, iIsiCd2, iCareCd, iCareSisetsuCd) VALUES "
            "(1, 2, 201, 501, 502, 61, 71), (1, 2, 202, 501, NULL, 61, 71), (1, 2, 203, NULL, NULL, NULL, 72),"
            "(9, 2, 901, NULL, 501, NULL, NULL);"
            "INSERT INTO CAREMANE (iKyotenCd, iKyotenEb, nIDNo, cName) VALUES (1, 2, 61, 'ケア 太郎');"
            "INSERT INTO SISETSU (iKyotenCd, iKyotenEb, nIDNo, cShamei1, cShameiKana1) VALUES "
            "(1, 2, 71, 'ケア事業所', 'ケアジギョウショ'), (1, 2, 72, '施設だけ', 'シセツダケ');"
            "INSERT INTO 経過報告 (iKyotenCd, iKyotenEb, nRiyoushaIDNo, tServicyMonth, nStaffIDNo) VALUES "
            "(1, 2, 201, '2026/09', 11), (1, 2, 201, '2026/10', 11), (1, 2, 202, '2026/10', 12),"
            "(1, 2, 203, '2026/09', 11), (1, 2, 203, '2026/11', 11), (1, 2, 201, '2026/12', 11);"));
        connect();
        c.sFromMonth = QStringLiteral("2026/09");
        c.sToMonth = QStringLiteral("2026/11");
        c.tFrom = QDate(2026, 10, 1);
        c.tTo = QDate(2026, 10, 31);
    }

    QStringList idsOf(short mode)
    {
        c.iKeikaMode = mode;
        ConsentRows rows;
        EXPECT_EQ(iGetKeikaData(*db, c, rows, sErrMsg), 0) << sErrMsg.toStdString();
        QStringList ids;
        for (const ConsentRow& r : rows) {
            ids << r.IshiIDno;
            EXPECT_EQ(r.nTantou, 0);
            EXPECT_TRUE(r.StaffName.isEmpty());
        }
        return ids;
    }

    KeikaCondition c;
    QString sErrMsg;
};

TEST_F(ProgressReports, EachKindOfAddresseeWithoutStaffAndWithATwoMinuteTimeOut)
{
    struct Case {
        const char* what;
        short mode;
        qint32 staff;
        QStringList ids;
    };
    const Case cases[] = {
        // 201: the newer second consent's doctor; 202: the first; 203: none, a null group.
        {"doctors", 0, 0, {QString(), QStringLiteral("501"), QStringLiteral("502")}},
        {"a staff member's doctors", 0, 12, {QStringLiteral("501")}},
        {"care managers merge patients and need one", 1, 0, {QStringLiteral("61")}},
        // 201 by its first consent's end; 901 of another office through the second
        // alternative, to which the office conditions do not bind.
        {"institutions by the end of treatment, not by reports", 2, 0, {QStringLiteral("31"), QStringLiteral("32")}},
        {"facilities only through patients with a care manager", 3, 0, {QStringLiteral("71")}},
    };
    for (const Case& k : cases) {
        SCOPED_TRACE(k.what);
        c.nStaffNo = k.staff;
        EXPECT_EQ(idsOf(k.mode), k.ids);
        EXPECT_EQ(db->adoConnection().CommandTimeout(), 120);
    }
}

TEST_F(ProgressReports, AReversedRangeFindsNothingWithoutAWarning)
{
    c.sFromMonth = QStringLiteral("2026/12");
    c.sToMonth = QStringLiteral("2026/09");
    ConsentRows rows;
    c.iKeikaMode = 0;
    EXPECT_EQ(iGetKeikaData(*db, c, rows, sErrMsg), 1);
    EXPECT_EQ(sErrMsg, QStringLiteral("該当する医師データがありません。"));
    c.iKeikaMode = 1;
    EXPECT_EQ(iGetKeikaData(*db, c, rows, sErrMsg), 2);
    EXPECT_EQ(sErrMsg, QStringLiteral("該当するケアマネージャーデータがありません。"));
    EXPECT_TRUE(values.platform.transcript().isEmpty());
}

class ProgressScreen : public ProgressReports {
protected:
    frmSeal_SejutsuKeika screen{values.platform};
};

TEST_F(ProgressScreen, SetUpShowsTheStaffFrameAndOnlyTheHandOver)
{
    values.platform.setToday(QDate(2026, 10, 31));
    EXPECT_EQ(screen.iInit(*db, 1), 0);
    EXPECT_EQ(screen.caption(), QStringLiteral("抽出条件設定"));
    EXPECT_TRUE(screen.fraStaff.visible());
    EXPECT_FALSE(screen.btnPrint(0).visible());
    EXPECT_FALSE(screen.btnPrint(1).visible());
    EXPECT_TRUE(screen.btnPrint(2).visible());
    EXPECT_FALSE(screen.mnF01.enabled());
    EXPECT_FALSE(screen.mnF02.enabled());
    EXPECT_FALSE(screen.mnF03.enabled());
    EXPECT_FALSE(screen.Frame2.visible());
    EXPECT_EQ(screen.imD_Kigen.value(), QDate(2026, 10, 1));
    EXPECT_EQ(screen.imD_Kigen_To.value(), QDate(2026, 10, 1));
    EXPECT_TRUE(values.platform.transcript().isEmpty());
}

TEST_F(ProgressScreen, HandOverGivesZerosForStaffAndClosesTheConnection)
{
    screen.iInit(*db, 0);
    screen.imD_Kigen.typeText(QStringLiteral("2026/09"));
    screen.imD_Kigen_To.typeText(QStringLiteral("2026/11/15"));
    screen.btnPrint(2).click();
    EXPECT_TRUE(screen.isUnloaded());
    EXPECT_EQ(screen.nデータ数, 3);
    EXPECT_EQ(screen.sIshiID_SEAL, QStringLiteral(",501,502"));
    EXPECT_EQ(screen.sTantouID_SEAL, QStringLiteral("0,0,0"));
    EXPECT_EQ(screen.sTantouName_SEAL, QStringLiteral(",,"));
    EXPECT_EQ(screen.keika.tTo, QDate(2026, 11, 30));
}

TEST_F(ProgressScreen, NoCareManagersSaysSoAndStays)
{
    screen.iInit(*db, 1);  // this month has no reports
    values.platform.clearTranscript();
    screen.btnPrint(2).click();
    EXPECT_FALSE(screen.isUnloaded());
    EXPECT_EQ(values.platform.transcript(),
              QStringList{QStringLiteral("box 64 |該当するケアマネージャーデータがありません。")});
}

TEST_F(ProgressScreen, AStaffNumberShowsTheNameEndedStaffIncluded)
{
    screen.iInit(*db, 0);
    screen.imNum_StaffNo.typeText(QStringLiteral("14"));
    EXPECT_EQ(screen.txtStaffName.text(), QStringLiteral("田中 休職"));
    screen.imNum_StaffNo.typeText(QStringLiteral("99"));
    EXPECT_EQ(screen.txtStaffName.text(), QStringLiteral("田中 休職"));
    EXPECT_TRUE(values.platform.transcript().isEmpty());
}

TEST_F(ProgressScreen, EnterMovesTheFocusOnFromADate)
{
    screen.iInit(*db, 0);
    controls::Control* focus = nullptr;
    values.platform.modalDriver = [&](controls::Screen&) {
        screen.SetFocus(screen.imD_Kigen);
        screen.pressKey(QStringLiteral("Enter"));
        focus = screen.ActiveControl();
    };
    values.platform.showModal(screen);
    EXPECT_EQ(focus, &screen.imD_Kigen_To);
}

TEST_F(ProgressScreen, ADatabaseLostBeforeTheHandOverFailsAndStays) { handOverOnALostConnection(screen, 0); }

}  // namespace
