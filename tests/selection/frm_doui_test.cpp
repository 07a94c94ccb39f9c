// The consent screen as the operator meets it: its set-up in both modes, the kind and
// period rules, the saved sort order, the staff choice, the hand-over and the ledger.

#include "selection/frm_doui.h"

#include "base/text_codec.h"
#include "dialogs/staff_search.h"
#include "support/consent_fixture.h"
#include "support/param_names.h"

#include <QFile>

#include <gtest/gtest.h>

using namespace selection;

namespace {

using sealtest::fileBytes;

class ConsentScreen : public sealtest::ConsentDbTest {
protected:
    ConsentScreen()
    {
        install.addStaff(11, QStringLiteral("佐藤 一郎  "));
        install.addStaff(12, QStringLiteral("鈴木 花子"));
        install.addStaff(13, QStringLiteral("高橋 終了"), QStringLiteral("1"));
        install.addStaff(14, QStringLiteral("田中 休職"), QStringLiteral("2"));
        install.addDoctor(QStringLiteral("501"), QStringLiteral("山田太郎"), QStringLiteral("山田医院"));
        install.addDoctor(QStringLiteral("502"), QStringLiteral("田中次郎"), QStringLiteral("田中病院"));
        sealtest::addNovemberConsents(install, QStringLiteral("501"));
        install.addConsent(103, QStringLiteral("2026/09/11"), QStringLiteral("502"));
        connect();
    }

    QString cbTexts() const
    {
        QStringList t;
        for (int i = 0; i < screen.cbSejyutsu.ListCount(); ++i)
            t << QStringLiteral("%1:%2").arg(screen.cbSejyutsu.List(i)).arg(screen.cbSejyutsu.ItemData(i));
        return t.join(u'|');
    }

    frmDoui screen{values.platform};
};

TEST_F(ConsentScreen, SealModeShowsTheHandOverAndHidesPrinting)
{
    EXPECT_EQ(screen.iInit(*db, 1), 0);
    EXPECT_EQ(screen.caption(), QStringLiteral("　同意書更新リスト設定"));
    EXPECT_FALSE(screen.btnPrint(0).visible());
    EXPECT_FALSE(screen.btnPrint(1).visible());
    EXPECT_TRUE(screen.btnPrint(2).visible());
    EXPECT_FALSE(screen.mnF01.enabled());
    EXPECT_FALSE(screen.mnF02.enabled());
    EXPECT_TRUE(screen.mnF03.enabled());
    EXPECT_TRUE(screen.chkEachSejyutusya.visible());
    EXPECT_EQ(screen.chkEachSejyutusya.value(), 0);
    EXPECT_TRUE(screen.chkIsiMatome.visible());
    EXPECT_EQ(screen.chkIsiMatome.value(), 1);
    EXPECT_TRUE(screen.opt_Sel[0].value());
    EXPECT_TRUE(screen.optKikan[0].value());
    EXPECT_EQ(screen.cbSejyutsu.ListIndex(), 0);
    EXPECT_EQ(cbTexts(), QStringLiteral("－ 指定なし －:0|佐藤 一郎:11|鈴木 花子:12"));
    EXPECT_TRUE(screen.sSEAL_Header.isEmpty());
}

TEST_F(ConsentScreen, LedgerModeKeepsPrintingAndHidesTheSealChoices)
{
    EXPECT_EQ(screen.iInit(*db, 0), 0);
    EXPECT_EQ(screen.caption(), QStringLiteral("  同意書更新台帳"));
    EXPECT_TRUE(screen.btnPrint(0).visible());
    EXPECT_TRUE(screen.btnPrint(1).visible());
    EXPECT_FALSE(screen.btnPrint(2).visible());
    EXPECT_FALSE(screen.mnF03.enabled());
    EXPECT_FALSE(screen.chkEachSejyutusya.visible());
    for (int hidden : {2, 3, 4, 5, 6}) EXPECT_FALSE(screen.opt_Sel[static_cast<size_t>(hidden)].visible());
    EXPECT_EQ(screen.opt_Sel[6].caption(), QStringLiteral("はり・きゅう併用？？？"));
}

TEST_F(ConsentScreen, OpenedOnThe31stTheOutputMonthIsTheFirst)
{
    values.platform.setToday(QDate(2026, 10, 31));
    screen.iInit(*db, 1);
    EXPECT_EQ(screen.imD_Kigen.value(), QDate(2026, 10, 1));
    // A typed day is ignored by the range.
    screen.imD_Kigen.typeText(QStringLiteral("2026/11/29"));
    ASSERT_EQ(screen.iGetPrintCondition(), 0);
    EXPECT_EQ(screen.cond.tFrom, QDate(2026, 8, 16));
    EXPECT_EQ(screen.cond.tTo, QDate(2026, 9, 16));
}

TEST_F(ConsentScreen, TheKindSetsItsPeriodAndTheOperatorMayChangeIt)
{
    screen.iInit(*db, 1);
    screen.optKikan[1].setValue(true);
    screen.opt_Sel[1].setValue(true);
    EXPECT_TRUE(screen.optKikan[2].value());
    screen.opt_Sel[0].setValue(true);
    EXPECT_TRUE(screen.optKikan[0].value());
    screen.optKikan[1].setValue(true);
    screen.opt_Sel[7].setValue(true);
    EXPECT_TRUE(screen.optKikan[0].value());
    ASSERT_EQ(screen.iGetPrintCondition(), 0);
    EXPECT_EQ(screen.cond.iSejutsu, 7);
    EXPECT_EQ(screen.cond.nKikanMonths, 3);
}

TEST_F(ConsentScreen, AnOutputMonthLeftEmptyIsReportedAndNothingIsHandedOver)
{
    screen.iInit(*db, 1);
    screen.imD_Kigen.typeText(QString());
    values.platform.clearTranscript();
    screen.btnPrint(2).click();
    EXPECT_FALSE(screen.isUnloaded());
    EXPECT_EQ(values.platform.transcript().first(), QStringLiteral("box 64 |印刷条件の取得に失敗しました。"));
    EXPECT_TRUE(screen.sIshiID_SEAL.isEmpty());
}

TEST_F(ConsentScreen, InTheSealModeF1AndF2DoNothing)
{
    screen.iInit(*db, 1);
    values.platform.clearTranscript();
    screen.pressKey(QStringLiteral("F1"));
    screen.pressKey(QStringLiteral("F2"));
    EXPECT_TRUE(values.platform.transcript().isEmpty());
    EXPECT_FALSE(QFile::exists(install.path(QStringLiteral("TMP/同意データ.csv"))));
    screen.pressKey(QStringLiteral("F12"));
    EXPECT_TRUE(screen.isUnloaded());
}

struct SortCase {
    const char* fileValue;
    short iSort;
};

class SavedSortOrder : public ConsentScreen, public ::testing::WithParamInterface<SortCase> {};

TEST_P(SavedSortOrder, IsReadIntoTheMenuTicks)
{
    install.writeLines(
        QStringLiteral("DATA/印刷設定.ini"),
        {QStringLiteral("[同意台帳]"), QStringLiteral("ソート順=") + QString::fromUtf8(GetParam().fileValue)});
    screen.iInit(*db, 1);
    EXPECT_EQ(screen.cond.iSort, GetParam().iSort);
    EXPECT_EQ(screen.mnSort[1].checked(), GetParam().iSort != 0);
    EXPECT_EQ(screen.mnSort[0].checked(), GetParam().iSort == 0);
}

INSTANTIATE_TEST_SUITE_P(Values, SavedSortOrder,
                         ::testing::Values(SortCase{"1", 1}, SortCase{"0", 0}, SortCase{"abc", 0}, SortCase{"", 0}),
                         (sealtest::Named{{"1", "0", "abc", "empty"}}));

TEST_F(ConsentScreen, SortOrderIsWrittenOnlyAfterALedgerRunWithRows)
{
    install.writeLines(QStringLiteral("DATA/印刷設定.ini"),
                       {QStringLiteral("[タックシール]"), QStringLiteral("X=1"), QStringLiteral("[同意台帳]"),
                        QStringLiteral("ソート順=0")});
    const QByteArray before = fileBytes(install.settingsIni());
    frmDoui seal{values.platform};
    seal.iInit(*db, 1);
    seal.mnSort[1].click();
    EXPECT_TRUE(seal.mnSort[1].checked());
    EXPECT_FALSE(seal.mnSort[0].checked());
    seal.btnPrint(2).click();
    EXPECT_TRUE(seal.isUnloaded());
    EXPECT_EQ(fileBytes(install.settingsIni()), before);

    // The hand-over closed its connection; the ledger runs on a new one.
    auto ledgerDb = install.connect();
    screen.iInit(*ledgerDb, 0);
    screen.mnSort[1].click();
    screen.btnPrint(1).click();
    EXPECT_EQ(base::fromCp932(fileBytes(install.settingsIni())),
              QStringLiteral("[タックシール]\r\nX=1\r\n[同意台帳]\r\nソート順=1\r\n"));
}

TEST_F(ConsentScreen, StaffNumberEnterSelectsKnownStaffAndLeavesTheListOtherwise)
{
    screen.iInit(*db, 1);
    const auto enter = [&](const QString& number) {
        screen.imNum_StaffNo.typeText(number);
        screen.SetFocus(screen.imNum_StaffNo);
        screen.pressKey(QStringLiteral("Enter"));
    };
    enter(QStringLiteral("12"));
    EXPECT_EQ(screen.cbSejyutsu.ListIndex(), 2);
    enter(QStringLiteral("14"));  // flag 2 passes the check but is not in the list
    EXPECT_EQ(screen.cbSejyutsu.ListIndex(), 2);
    values.platform.clearTranscript();
    enter(QStringLiteral("99"));
    EXPECT_EQ(screen.cbSejyutsu.ListIndex(), 2);
    enter(QStringLiteral("13"));
    EXPECT_EQ(values.platform.transcript(),
              (QStringList{QStringLiteral("box 16 |施術者の検索に失敗しました対象の施術者が存在しません。"),
                           QStringLiteral("box 16 |施術者の検索に失敗しました管理対象から外れています。")}));
    enter(QString());
    EXPECT_EQ(screen.cbSejyutsu.ListIndex(), 0);
}

TEST_F(ConsentScreen, StaffSearchButtonTakesTheChosenNumber)
{
    screen.iInit(*db, 1);
    values.platform.modalDriver = [](controls::Screen& s) {
        auto& f = dynamic_cast<dialogs::frm施術者検索&>(s);
        f.spr_1ran.dblClickCell(1, 2);
    };
    screen.btn_StaffSelect.click();
    EXPECT_EQ(screen.imNum_StaffNo.text(), QStringLiteral("12"));
    EXPECT_EQ(screen.cbSejyutsu.ListIndex(), 2);
}

TEST_F(ConsentScreen, HandOverPerDoctorClosesTheScreenAndTheConnection)
{
    screen.iInit(*db, 1);
    screen.btnPrint(2).click();
    EXPECT_TRUE(screen.isUnloaded());
    EXPECT_EQ(screen.nデータ数, 3);
    // Each doctor once in all, with no staff numbers without "施術師ごと"; patient 103's
    // two adjacent consents count once, with the first doctor.
    EXPECT_EQ(screen.sIshiID_SEAL, QStringLiteral("501"));
    EXPECT_EQ(screen.sTantouID_SEAL, QStringLiteral("0"));
    EXPECT_EQ(screen.sTantouName_SEAL, QStringLiteral("佐藤 一郎  "));  // names stay with the rows
    EXPECT_NE(db->adoConnection().State(), 1);
}

TEST_F(ConsentScreen, HandOverPerStaffMemberListsADoctorOncePerStaff)
{
    screen.iInit(*db, 1);
    screen.chkEachSejyutusya.setValue(1);
    screen.mnF03.click();
    EXPECT_EQ(screen.sIshiID_SEAL, QStringLiteral("501,501"));
    EXPECT_EQ(screen.sTantouID_SEAL, QStringLiteral("11,12"));
    EXPECT_EQ(screen.sTantouName_SEAL, QStringLiteral("佐藤 一郎  ,鈴木 花子"));
}

TEST_F(ConsentScreen, HandOverPerRowGivesEveryPatientsDoctor)
{
    screen.iInit(*db, 1);
    screen.chkIsiMatome.setValue(0);
    screen.btnPrint(2).click();
    EXPECT_EQ(screen.sIshiID_SEAL, QStringLiteral("501,501,501"));
}

TEST_F(ConsentScreen, HandOverWithoutRowsSaysSoAndStays)
{
    screen.iInit(*db, 1);
    screen.cbSejyutsu.setListIndex(2);  // staff 12's patient has consents, but ...
    screen.opt_Sel[7].setValue(true);   // ... no acupuncture
    values.platform.clearTranscript();
    screen.btnPrint(2).click();
    EXPECT_FALSE(screen.isUnloaded());
    EXPECT_EQ(values.platform.transcript(), QStringList{QStringLiteral("box 64 |該当する医師データがありません。")});
    EXPECT_EQ(screen.nデータ数, 0);
}

TEST_F(ConsentScreen, ADatabaseLostBeforeTheHandOverFailsAndStays)
{
    EXPECT_TRUE(handOverOnALostConnection(screen, 1).startsWith(QStringLiteral("box 64 |")));
}

TEST_F(ConsentScreen, AnOfficeWithoutStaffSaysSoAndStillOpens)
{
    install.exec(QStringLiteral("DELETE FROM STAFF;"));
    EXPECT_EQ(screen.iInit(*db, 1), -1);
    EXPECT_EQ(values.platform.transcript(),
              QStringList{QStringLiteral("box 64 同意書更新リスト印刷|スタッフが存在しません。メイン画面に戻ります")});
    EXPECT_EQ(screen.cbSejyutsu.ListCount(), 0);
    EXPECT_TRUE(screen.btnPrint(2).visible());
}

TEST_F(ConsentScreen, LedgerPrintWritesTheDataFileAndStartsTheEngine)
{
    screen.iInit(*db, 0);
    values.platform.clearTranscript();
    screen.btnPrint(0).click();
    const QByteArray csv = fileBytes(install.path(QStringLiteral("TMP/同意データ.csv")));
    const QStringList lines = base::fromCp932(csv).split(QStringLiteral("\r\n"), Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 4);
    EXPECT_TRUE(lines[1].startsWith(QStringLiteral("\"1\",\"2026/11/01\",\"マッサージ\",1,101,\"青木 一\",11,")));
    EXPECT_TRUE(lines[2].startsWith(QStringLiteral("\"1\",\"2026/11/01\",\"マッサージ\",2,102,")));
    EXPECT_TRUE(lines[3].startsWith(QStringLiteral("\"1\",\"2026/11/01\",\"マッサージ\",1,103,")));
    const QString script = base::fromCp932(fileBytes(install.path(QStringLiteral("TMP/WfdCom.dat"))));
    EXPECT_TRUE(script.contains(QStringLiteral("同意台帳_TKZK.wfd")));
    EXPECT_TRUE(script.contains(QStringLiteral("同意データ.csv")));
    ASSERT_FALSE(values.platform.transcript().isEmpty());
    EXPECT_TRUE(values.platform.transcript().last().startsWith(QStringLiteral("run 2 ")));
    EXPECT_EQ(values.platform.pointer(), controls::Pointer::Normal);
}

TEST_F(ConsentScreen, LedgerWithoutPatientsSaysSoAndWritesNothing)
{
    screen.iInit(*db, 0);
    screen.opt_Sel[7].setValue(true);
    values.platform.clearTranscript();
    screen.btnPrint(1).click();
    EXPECT_EQ(values.platform.transcript(), QStringList{QStringLiteral("box 64 |該当する患者データがありません。")});
    EXPECT_FALSE(QFile::exists(install.path(QStringLiteral("TMP/同意データ.csv"))));
    EXPECT_FALSE(QFile::exists(install.settingsIni()));
}

}  // namespace
