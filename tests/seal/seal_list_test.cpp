// The target list and the order list: the two order modes, the commands for all rows,
// single ticks, adding by number and the space-bar style tick; and what a kind whose
// rows cannot be read leaves behind.

#include "seal/seal_screen.h"

#include "support/scenario.h"

#include <gtest/gtest.h>

using seal::frmPrintシール;
using sealtest::drive;
using sealtest::SealInstall;

namespace {

QStringList items(const controls::ListBox& l) { return sealtest::listTexts(l); }

class Lists : public testing::Test {
protected:
    Lists()
    {
        install.addPatient(11, QStringLiteral("相川 一"), QStringLiteral("ｱｲｶﾜ"));
        install.addPatient(12, QStringLiteral("井上 二"), QStringLiteral("ｲﾉｳｴ"));
        install.addPatient(13, QStringLiteral("上田 三"), QStringLiteral("ｳｴﾀﾞ"));
        install.addPatient(14, QStringLiteral("江藤 四"), QStringLiteral("ｴﾄｳ"));
        install.touch(QStringLiteral("DATA/印刷設定.ini"));
    }
    SealInstall install;
};

}  // namespace

TEST_F(Lists, StartsInTheEnterModeWithAGreyListThatIsInUse)
{
    drive(install, [](frmPrintシール& f, controls::RecordingPlatform&) {
        EXPECT_EQ(f.chkEnter.value(), 1);
        EXPECT_EQ(f.chkCheck.value(), 0);
        EXPECT_FALSE(f.mnEnterOn.checked());
        EXPECT_FALSE(f.mnCheckOn.checked());
        EXPECT_EQ(f.lstCheck.backColor(), controls::Colors::ScrollBars);
        EXPECT_FALSE(f.btnAllKai[1].enabled());
        f.fpSpread02.pressButton(1, 2, true);
        EXPECT_EQ(items(f.lstCheck), QStringList{QStringLiteral("12     井上 二 ")});
        EXPECT_EQ(f.lstCheck.ItemData(0), 12);
        // A second tick of a listed row takes its line away.
        f.fpSpread02.pressButton(1, 2, false);
        f.fpSpread02.pressButton(1, 2, true);
        EXPECT_EQ(items(f.lstCheck), QStringList{QStringLiteral("12     井上 二 ")});
    });
}

TEST_F(Lists, PlainTickModeLeavesTheOrderListAlone)
{
    drive(install, [](frmPrintシール& f, controls::RecordingPlatform&) {
        f.chkEnter.setValue(0);
        EXPECT_FALSE(f.lblEnter.visible());
        f.fpSpread02.pressButton(1, 1, true);
        EXPECT_EQ(f.lstCheck.ListCount(), 0);
        // Order by ticking: the list turns white and the ticks start again.
        f.chkCheck.setValue(1);
        EXPECT_EQ(f.lstCheck.backColor(), controls::Colors::WindowBackground);
        EXPECT_TRUE(f.btnAllKai[1].enabled());
        EXPECT_EQ(f.fpSpread02.value(1, 1), 0);
        f.fpSpread02.pressButton(1, 3, true);
        f.fpSpread02.pressButton(1, 1, true);
        EXPECT_EQ(f.lstCheck.ItemData(0), 13);
        EXPECT_EQ(f.lstCheck.ItemData(1), 11);
        f.chkCheck.setValue(0);
        EXPECT_EQ(f.lstCheck.ListCount(), 0);
        EXPECT_EQ(f.lstCheck.backColor(), controls::Colors::ScrollBars);
        EXPECT_FALSE(f.btnAllKai[1].enabled());
    });
}

TEST_F(Lists, SelectAllJoinsTheEndOfAListBegunAndSkipsHiddenRows)
{
    drive(install, [](frmPrintシール& f, controls::RecordingPlatform&) {
        f.fpSpread02.pressButton(1, 4, true);
        f.txtName.setText(QStringLiteral("三"));
        f.btnDisp.click();
        f.txtName.setText(QString());
        f.cmdAnk[0].click();  // the あ row: 相川, 井上, 上田, 江藤 all start in it
        f.txtNameKana.setText(QStringLiteral("ｳ"));
        f.cmdAnk[0].click();  // 井上 (ｲﾉｳｴ), 上田 (ｳｴﾀﾞ) and 江藤 (ｴﾄｳ) hold ｳ
        ASSERT_TRUE(f.fpSpread02.rowHidden(1));
        f.btnAllSel.click();
        EXPECT_EQ(f.fpSpread02.value(1, 1), 0);
        EXPECT_EQ(items(f.lstCheck).size(), 3);
        EXPECT_EQ(f.lstCheck.ItemData(0), 14);
        // Twice adds nothing.
        f.btnAllSel.click();
        EXPECT_EQ(items(f.lstCheck).size(), 3);
        // Unticking the visible rows leaves a hidden tick alone.
        f.fpSpread02.setValue(1, 1, 1);
        f.btnAllKai[0].click();
        EXPECT_EQ(f.fpSpread02.value(1, 1), 1);
        EXPECT_EQ(f.fpSpread02.value(1, 2), 0);
        f.btnAllKai[1].click();
        EXPECT_EQ(f.fpSpread02.value(1, 1), 0);
        EXPECT_EQ(f.lstCheck.ListCount(), 0);
    });
}

TEST_F(Lists, TypingATickedNumberTakesItsLineButLeavesTheTick)
{
    drive(install, [](frmPrintシール& f, controls::RecordingPlatform&) {
        QString id = QStringLiteral("13");
        f.Add_Enter(id);
        EXPECT_EQ(f.fpSpread02.value(1, 3), 1);
        EXPECT_EQ(f.lstCheck.ListCount(), 1);
        f.Add_Enter(id);
        EXPECT_EQ(f.fpSpread02.value(1, 3), 1);
        EXPECT_EQ(f.lstCheck.ListCount(), 0);
        // A number nobody has changes nothing.
        QString none = QStringLiteral("99");
        f.Add_Enter(none);
        EXPECT_EQ(f.lstCheck.ListCount(), 0);
    });
}

TEST_F(Lists, EnterInTheGridTicksAndMovesToTheNextVisibleRow)
{
    drive(install, [](frmPrintシール& f, controls::RecordingPlatform&) {
        f.txtNameKana.setText(QStringLiteral("ｴ"));  // 井上, 上田, 江藤; 相川 hidden
        f.btnDisp.click();
        f.SetFocus(f.fpSpread02);
        f.fpSpread02.SetActiveCell(1, 2);
        f.pressKey(QStringLiteral("Enter"));
        EXPECT_EQ(f.fpSpread02.value(1, 2), 1);
        EXPECT_EQ(f.fpSpread02.ActiveRow(), 3);
        f.fpSpread02.SetActiveCell(1, 4);
        f.pressKey(QStringLiteral("Enter"));
        EXPECT_EQ(f.fpSpread02.value(1, 4), 1);
        // The last visible row leaves the active cell where it was.
        EXPECT_EQ(f.fpSpread02.ActiveRow(), 4);
    });
}

TEST_F(Lists, AChangeOfKindClearsEveryTickAndTheList)
{
    install.exec(QStringLiteral(
        "INSERT INTO STAFF (iKyotenCd, iKyotenEb, nIDNo, cName, iChusiFlg) VALUES (1, 2, 1, '施術', 0);"));
    drive(install, [](frmPrintシール& f, controls::RecordingPlatform&) {
        f.fpSpread02.pressButton(1, 1, true);
        f.fpSpread02.pressButton(1, 4, true);
        f.optMst[5].setValue(true);
        EXPECT_EQ(f.lstCheck.ListCount(), 0);
        f.optMst[0].setValue(true);
        for (int r = 1; r <= 4; ++r) EXPECT_EQ(f.fpSpread02.value(1, r), 0) << r;
    });
}

// --- kinds that cannot be read -------------------------------------------------

TEST_F(Lists, ATableKindThatCannotBeReadWarnsAndIsTriedAgainLater)
{
    install.exec(QStringLiteral(
        "INSERT INTO STAFF (iKyotenCd, iKyotenEb, nIDNo, cName, iChusiFlg) VALUES (1, 2, 1, '施術', 0);"));
    drive(install, [&](frmPrintシール& f, controls::RecordingPlatform& p) {
        install.writeLines(QStringLiteral("adodb.ini"), {QStringLiteral("[接続情報]"), QStringLiteral("接続情報=")});
        f.optMst[5].setValue(true);
        // The kind's read, then the search: the patients fail, and the kind is tried
        // again; the last failure leaves -1, which keeps the screen open.
        EXPECT_EQ(p.transcript(),
                  (QStringList{QStringLiteral("box 16 シール印刷|データベースの抽出に失敗しました。"),
                               QStringLiteral("box 16 シール印刷|患者データの抽出に失敗しました。"),
                               QStringLiteral("box 16 シール印刷|データベースの抽出に失敗しました。")}));
        EXPECT_EQ(f.job.nCloseState, -1);
        EXPECT_FALSE(f.rows.bKindRead[5]);
        install.writeLines(
            QStringLiteral("adodb.ini"),
            {QStringLiteral("[接続情報]"), QStringLiteral("接続情報=Provider=SQLite;Data Source=seal.db")});
        f.optMst[0].setValue(true);
        f.optMst[5].setValue(true);
        EXPECT_TRUE(f.rows.bKindRead[5]);
        EXPECT_EQ(f.fpSpread02.MaxRows(), 1);
    });
}

TEST_F(Lists, InsurersThatCannotBeReadMarkTheScreenToClose)
{
    drive(install, [&](frmPrintシール& f, controls::RecordingPlatform& p) {
        install.writeLines(QStringLiteral("adodb.ini"), {QStringLiteral("[接続情報]"), QStringLiteral("接続情報=")});
        f.job.nCloseState = 0;
        f.optMst[2].setValue(true);
        EXPECT_TRUE(p.transcript().contains(QStringLiteral("box 16 シール印刷|保険者データの抽出に失敗しました。")));
        EXPECT_EQ(f.job.nCloseState, 1);
        EXPECT_FALSE(f.rows.bKindRead[2]);
        // Only the next activation closes the screen; -1 would leave it open.
        f.job.nCloseState = -1;
        f.activate();
        EXPECT_FALSE(f.isUnloaded());
    });
}
