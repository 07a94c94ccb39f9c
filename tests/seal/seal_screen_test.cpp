// The seal screen driven as the operator drives it, through the scenario runner:
// start-up, each way of leaving, the kinds and their controls, the search.

#include "seal/seal_screen.h"

#include "support/patients.h"
#include "support/scenario.h"

#include <gtest/gtest.h>

using sealtest::SealInstall;

namespace {

QStringList lines(std::initializer_list<const char*> l)
{
    QStringList out;
    for (const char* s : l) out << QString::fromUtf8(s);
    return out;
}

QStringList runWith(const SealInstall& install, const QStringList& body, const char* start = "start 5")
{
    return sealtest::runAfterStart(install, body, QString::fromUtf8(start));
}

using sealtest::driveProcess;

const QStringList kOpen = lines({"screen open frmBack", "screen open frmPrintシール"});

}  // namespace

// --- start-up and leaving --------------------------------------------------------

struct LeaveCase {
    const char* name;
    const char* start;
    const char* act;  // empty: the script ends, and the window is closed by its box
    const char* run;  // the program start recorded, empty for none
};

class Leaving : public testing::TestWithParam<LeaveCase> {};

TEST_P(Leaving, EndsTheProcessByTheExitTable)
{
    SealInstall install;
    const LeaveCase& c = GetParam();
    QStringList body;
    if (*c.act) body << QString::fromUtf8(c.act);
    QStringList expected = kOpen;
    expected << QStringLiteral("screen close frmPrintシール");
    if (*c.run) expected << QString::fromUtf8(c.run);
    expected << QStringLiteral("end 0");
    EXPECT_EQ(runWith(install, body, c.start), expected);
}

INSTANTIATE_TEST_SUITE_P(
    ExitTable, Leaving,
    testing::Values(LeaveCase{"ReturnMenu", "start 5", "click mnMenuReturn", "run 1 APP\\Main.exe"},
                    LeaveCase{"ReturnButton", "start 5", "click cmdMenu", "run 1 APP\\Main.exe"},
                    LeaveCase{"ReturnShortcut", "start 5", "key txtName Shift+F12", "run 1 APP\\Main.exe"},
                    LeaveCase{"EndMenu", "start 5", "click mnMenuExit", "run 1 APP\\Main.exe 2"},
                    LeaveCase{"EndButton", "start 5", "click btnExit", "run 1 APP\\Main.exe 2"},
                    LeaveCase{"EndShortcut", "start 5", "key txtName F12", "run 1 APP\\Main.exe 2"},
                    LeaveCase{"CloseBox", "start 5", "close", "run 1 APP\\Main.exe 2"},
                    LeaveCase{"ScriptEnd", "start 5", "", "run 1 APP\\Main.exe 2"},
                    LeaveCase{"Mode1000Close", "start 1000", "close", ""},
                    LeaveCase{"Mode1000End", "start 1000", "click btnExit", ""},
                    LeaveCase{"FractionDropped", "start 1000.9", "close", ""},
                    LeaveCase{"TextIsModeZero", "start abc", "close", "run 1 APP\\Main.exe 2"}),
    [](const testing::TestParamInfo<LeaveCase>& info) { return std::string(info.param.name); });

TEST(StartUp, WithoutRunModeTheProcessEndsWithTwoBoxes)
{
    SealInstall install;
    EXPECT_EQ(sealtest::runScript(install, lines({"start"})),
              lines({"screen open frmBack", "box 48 　エラー！！|処理モードが設定されていません。",
                     "box 16 　エラー！！|起動できません！", "end 0"}));
}

TEST(StartUp, RunMode1000DisablesBothReturnCommands)
{
    SealInstall install;
    const QStringList t =
        runWith(install, lines({"show cmdMenu", "show mnMenuReturn", "key txtName Shift+F12"}), "start 1000");
    ASSERT_GE(t.size(), 4);
    EXPECT_TRUE(t[2].contains(QStringLiteral("enabled=0"))) << t[2].toStdString();
    EXPECT_TRUE(t[3].contains(QStringLiteral("enabled=0"))) << t[3].toStdString();
    // The shortcut of a disabled menu does nothing; the script's end closes the window.
    EXPECT_EQ(t.mid(4), lines({"screen close frmPrintシール", "end 0"}));
}

TEST(StartUp, UnreachableDatabaseReportsThenClosesOnActivationAndStartsTheMenu)
{
    SealInstall install;
    install.writeLines(
        QStringLiteral("adodb.ini"),
        {QStringLiteral("[接続情報]"), QStringLiteral("接続情報=Provider=SQLite;Data Source=missing.db")});
    // The operator's commands never run: the screen is gone at its activation.
    const QStringList t = runWith(install, {});
    ASSERT_EQ(t.size(), 8) << t.join(u'\n').toStdString();
    EXPECT_EQ(t.mid(0, 2), kOpen);
    EXPECT_TRUE(t[2].startsWith(QStringLiteral("box 16 シール印刷|getRiyoushaData_SEAL() でエラー\\r\\n")));
    EXPECT_EQ(t[3], QStringLiteral("box 16 シール印刷|患者データの抽出に失敗しました。"));
    EXPECT_EQ(t[4], QStringLiteral("box 16 シール印刷|データベースの抽出に失敗しました。"));
    EXPECT_EQ(t.mid(5), lines({"screen close frmPrintシール", "run 1 APP\\Main.exe 2", "end 0"}));
}

TEST(StartUp, FirstSearchFillsTheListWithoutAMessage)
{
    SealInstall install;
    sealtest::addThreePatients(install);
    install.exec(
        QStringLiteral("UPDATE RIYOUSHA SET tBirthday = '2000/01/01', tExpireDay = '2026/11/20' WHERE nIDNo = 3;"));
    install.addService(1, QStringLiteral("2026/11/02 10:00:00"));
    const QStringList t =
        runWith(install, lines({"show fpSpread02", "show imJissekiYm", "show chkEnter", "show lblEnter"}));
    // Sorted by kana; the patient whose service ended yesterday is hidden; the month
    // count stands in column 30; the start is in the add-by-Enter mode.
    EXPECT_EQ(
        t, kOpen +
               lines({"state fpSpread02 rows=3 hidden=1 active=1,1 enabled=1 visible=1",
                      "state fpSpread02 row 1 |2|2|佐藤 花子 様|ｻﾄｳ ﾊﾅｺ|||||||||0|様|0|||||||||||||||| 様| 様",
                      "state fpSpread02 row 2 hidden |3|3|鈴木 一郎 様|ｽｽﾞｷ ｲﾁﾛｳ|||||||||0|様|0|||||||||||||||| 様| 様",
                      "state fpSpread02 row 3 |1|1|山田 太郎 様|ﾔﾏﾀﾞ ﾀﾛｳ|||||||||0|様|0||||||||||||||1|| 様| 様",
                      "state imJissekiYm text=2026/11 enabled=0 visible=1",
                      "state chkEnter value=1 caption=Enterキー追加モード enabled=1 visible=1",
                      "state lblEnter caption=※ID入力後、Enterキーでリスト追加 backcolor=8000000f enabled=1 visible=1",
                      "screen close frmPrintシール", "run 1 APP\\Main.exe 2", "end 0"}));
}

// --- marker files and settings of the installation -------------------------------

TEST(Markers, EmptyFilesCountAsPresent)
{
    SealInstall install;
    for (const char* m : {"MGNT.CID", "FRAS.CID", "SGRB.CID"}) install.touch(QString::fromLatin1(m));
    driveProcess(install, [](seal::frmPrintシール& f) {
        EXPECT_TRUE(f.btnSejutsuKeika.visible());
        // Labels only, the one choice in the middle of its frame.
        EXPECT_FALSE(f.opPMode[1].visible());
        EXPECT_EQ(f.opPMode[0].top(), 360);
        EXPECT_TRUE(f.fraJyokenHojyo.enabled());
        EXPECT_TRUE(f.LblJyoken.enabled());
        EXPECT_TRUE(f.cmbKaisyu.enabled());
        ASSERT_EQ(f.cmbKaisyu.ListCount(), 3);
        EXPECT_EQ(f.cmbKaisyu.List(1), QStringLiteral("現金回収及び口座振込の利用者を外す"));
        EXPECT_EQ(f.cmbKaisyu.List(2), QStringLiteral("口座引落だが手渡しの人を外す"));
        EXPECT_EQ(f.cmbKaisyu.ListIndex(), 0);
    });
}

TEST(Markers, AbsentFilesLeaveTheFeaturesOff)
{
    SealInstall install;
    const QStringList t = runWith(install, lines({"show btnSejutsuKeika", "show opPMode(1)", "show cmbKaisyu"}));
    ASSERT_GE(t.size(), 5);
    EXPECT_TRUE(t[2].contains(QStringLiteral(" visible=0")));
    EXPECT_TRUE(t[3].contains(QStringLiteral(" visible=1")));
    EXPECT_TRUE(t[4].startsWith(QStringLiteral("state cmbKaisyu index=-1 count=0 items=[] enabled=0")));
}

TEST(InstallationSettings, WaType5HidesCareManagersAndMovesTheTwoBelowUp)
{
    SealInstall install({QStringLiteral("和タイプ=5xyz")});
    driveProcess(install, [](seal::frmPrintシール& f) {
        EXPECT_EQ(f.job.sWaType, QStringLiteral("5"));
        EXPECT_FALSE(f.optMst[4].visible());
        EXPECT_EQ(f.optMst[5].top(), f.optMst[4].top());
        EXPECT_EQ(f.optMst[6].top(), f.optMst[4].top() + 300);
        // Indexes keep their meaning: 5 is still the staff, 6 the facilities.
        EXPECT_EQ(f.optMst[5].caption(), QStringLiteral("施術者"));
        EXPECT_EQ(f.optMst[6].caption(), QStringLiteral("施設"));
    });
    SealInstall other({QStringLiteral("和タイプ=1")});
    driveProcess(other, [](seal::frmPrintシール& f) {
        EXPECT_EQ(f.job.sWaType, QStringLiteral("1"));
        EXPECT_TRUE(f.optMst[4].visible());
        EXPECT_EQ(f.optMst[5].top(), f.optMst[4].top() + 300);
    });
}

TEST(InstallationSettings, KindsStandInTheOrderOfTheScreenWithInstitutionsAboveOwnOffices)
{
    SealInstall install;
    driveProcess(install, [](seal::frmPrintシール& f) {
        EXPECT_EQ(f.optMst[7].caption(), QStringLiteral("自社"));
        EXPECT_EQ(f.optMst[8].caption(), QStringLiteral("医療機関"));
        EXPECT_LT(f.optMst[8].top(), f.optMst[7].top());
        EXPECT_GT(f.optMst[8].top(), f.optMst[6].top());
        // Tab follows the screen: from 6 to 8, then 7.
        f.SetFocus(f.optMst[6]);
        f.focusNext();
        EXPECT_EQ(f.ActiveControl(), &f.optMst[8]);
        f.focusNext();
        EXPECT_EQ(f.ActiveControl(), &f.optMst[7]);
    });
}

TEST(InstallationSettings, ReferrersSwitchedOffCannotBeChosen)
{
    for (const char* setting : {"紹介者=0", "紹介者="}) {
        SealInstall install({QString::fromUtf8(setting)});
        const QStringList t = runWith(install, lines({"show optMst(3)"}));
        ASSERT_GE(t.size(), 3);
        EXPECT_TRUE(t[2].contains(QStringLiteral(" enabled=0"))) << setting;
    }
    SealInstall on({QStringLiteral("紹介者=1")});
    EXPECT_TRUE(runWith(on, lines({"show optMst(3)"}))[2].contains(QStringLiteral(" enabled=1")));
}
