// The staff search: its statements, the list it shows, the choice it hands back, the
// check of one number, and its failures.

#include "dialogs/staff_search.h"

#include "support/globals_scope.h"

#include "app/globals.h"
#include "support/golden.h"
#include "support/installation.h"
#include "support/param_names.h"

#include <gtest/gtest.h>

using namespace dialogs;

namespace {

TEST(StaffStatements, ListWithAndWithoutFiltersTheCheckAndTheMaster)
{
    sealtest::GlobalsScope globals;
    app::iKyotenCd = 1;
    app::iKyotenEb = 2;
    sealtest::expectGolden(QStringLiteral("staff_list_every_filter.sql"),
                           sqlStaffList({QStringLiteral("山"), QStringLiteral("ヤマ"), 1, 7, 55}));
    // Without filters only current staff of this office.
    EXPECT_TRUE(sqlStaffList({}).endsWith(
        QStringLiteral("              STAFF where (iChusiFlg = 0 OR iChusiFlg IS NULL) and "
                       "iKyotenCd = 1 and iKyotenEb = 2      )staff order by     nIDNo    ,cName ")));
    sealtest::expectGolden(QStringLiteral("staff_check_12.sql"), sqlChkStaff(12));
    sealtest::expectGolden(QStringLiteral("staff_master.sql"), sqlStaffMast());
}

class StaffSearch : public ::testing::Test {
protected:
    StaffSearch() : values(install)
    {
        install.exec(
            QStringLiteral("INSERT INTO STAFF (iKyotenCd, iKyotenEb, nIDNo, cName, cNameKana, iChusiFlg) VALUES "
                           "(1, 2, 3, '佐藤 一郎  ', 'サトウ イチロウ', 0),"
                           "(1, 2, 5, '鈴木 花子', 'スズキ ハナコ', NULL),"
                           "(1, 2, 8, '高橋 終了', 'タカハシ', 1),"
                           "(1, 2, 9, '田中 休職', 'タナカ', 2),"
                           "(7, 2, 4, '他所 四郎', 'タショ', 0);"));
    }

    // Runs the search screen with the operator's acts.
    short runSearch(cls施術者検索& search, qint32 endStaff, const std::function<void(frm施術者検索&)>& act)
    {
        values.platform.modalDriver = [&](controls::Screen& s) {
            if (auto* f = dynamic_cast<frm施術者検索*>(&s)) act(*f);
        };
        return search.iDspStart(endStaff, -1);
    }

    static QStringList column(const controls::Grid& g, int col)
    {
        QStringList out;
        for (int r = 1; r <= g.MaxRows(); ++r) out << g.text(col, r);
        return out;
    }

    sealtest::SealInstall install;
    sealtest::ProcessValues values;
};

struct FirstDisplayCase {
    const char* name;
    qint32 endStaff;
    qint32 preselected;
    const char* ids;  // the numbers listed, in order
    int activeRow;
};

class FirstDisplay : public StaffSearch, public ::testing::WithParamInterface<FirstDisplayCase> {};

TEST_P(FirstDisplay, ListsTheStaffTrimmedWithThePreselectedRowActive)
{
    const FirstDisplayCase& c = GetParam();
    cls施術者検索 search;
    search.nSeledCD = c.preselected;
    QStringList ids, names;
    bool confirmOn = false;
    int active = 0;
    EXPECT_EQ(runSearch(search, c.endStaff,
                        [&](frm施術者検索& f) {
                            ids = column(f.spr_1ran, 1);
                            names = column(f.spr_1ran, 2);
                            confirmOn = f.but_Act[0].enabled();
                            active = f.spr_1ran.ActiveRow();
                            EXPECT_EQ(f.chkEndSejutsuha.value(), c.endStaff);
                            EXPECT_EQ(f.ActiveControl(), &f.in_SiboriID);
                        }),
              1);
    EXPECT_EQ(ids.join(u' '), QString::fromUtf8(c.ids));
    EXPECT_EQ(names[0], QStringLiteral("佐藤 一郎"));
    EXPECT_TRUE(confirmOn);
    EXPECT_EQ(active, c.activeRow);
}

// iChusiFlg 2 is not current for the search.
INSTANTIATE_TEST_SUITE_P(StaffSearch, FirstDisplay,
                         ::testing::Values(FirstDisplayCase{"CurrentStaffOnly", 0, 0, "3 5", 1},
                                           FirstDisplayCase{"EndedStaffWhenAsked", 1, 0, "3 5 8 9", 1},
                                           FirstDisplayCase{"PreselectedNumber", 0, 5, "3 5", 2}),
                         sealtest::ByName());

TEST_F(StaffSearch, ConfirmingTheActiveRowHandsBackNumberAndName)
{
    cls施術者検索 search;
    const short status = runSearch(search, 0, [](frm施術者検索& f) {
        f.spr_1ran.clickCell(2, 2);
        f.but_Act[0].click();
    });
    EXPECT_EQ(status, 0);
    EXPECT_EQ(search.nSeledCD, 5);
    EXPECT_EQ(search.csSeledName(), QStringLiteral("鈴木 花子"));
}

TEST_F(StaffSearch, DoubleClickOnARowChoosesItAndOnTheHeaderDoesNothing)
{
    cls施術者検索 search;
    bool openAfterHeader = false;
    const short status = runSearch(search, 0, [&](frm施術者検索& f) {
        f.spr_1ran.dblClickCell(1, 0);
        openAfterHeader = !f.isUnloaded();
        f.spr_1ran.dblClickCell(1, 1);
    });
    EXPECT_TRUE(openAfterHeader);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(search.nSeledCD, 3);
}

TEST_F(StaffSearch, FiltersByNumberNameAndReadingAndZeroIsNoFilter)
{
    cls施術者検索 search;
    runSearch(search, 0, [&](frm施術者検索& f) {
        f.in_SiboriID.typeText(QStringLiteral("5"));
        f.but_Read.click();
        EXPECT_EQ(column(f.spr_1ran, 1), QStringList{QStringLiteral("5")});
        f.in_SiboriID.typeText(QStringLiteral("0"));
        f.txt_SiboriKana.setText(QStringLiteral("サトウ"));
        f.mnF04.click();
        EXPECT_EQ(column(f.spr_1ran, 1), QStringList{QStringLiteral("3")});
        f.txt_SiboriKana.setText(QString());
        f.txt_SiboriName.setText(QStringLiteral("鈴木"));
        f.but_Read.click();
        EXPECT_EQ(column(f.spr_1ran, 1), QStringList{QStringLiteral("5")});
    });
}

TEST_F(StaffSearch, NothingFoundEmptiesTheListAndConfirmIsRefused)
{
    cls施術者検索 search;
    const short status = runSearch(search, 0, [&](frm施術者検索& f) {
        f.txt_SiboriName.setText(QStringLiteral("存在しない"));
        f.but_Read.click();
        EXPECT_EQ(f.spr_1ran.MaxRows(), 0);
        EXPECT_FALSE(f.but_Act[0].enabled());
        values.platform.clearTranscript();
        f.mnF05.click();
        EXPECT_FALSE(f.isUnloaded());
    });
    EXPECT_EQ(status, 1);
    EXPECT_EQ(values.platform.transcript(),
              (QStringList{QStringLiteral("beep"), QStringLiteral("box 48 |有効な行が選択されていません！"),
                           QStringLiteral("screen close frm施術者検索")}));
}

TEST_F(StaffSearch, AnApostropheInTheNameGoesDownTheFailurePath)
{
    cls施術者検索 search;
    runSearch(search, 0, [&](frm施術者検索& f) {
        values.platform.clearTranscript();
        f.txt_SiboriName.setText(QStringLiteral("O'Brien"));
        f.but_Read.click();
        EXPECT_FALSE(f.lock.held());
    });
    const QStringList t = values.platform.transcript();
    ASSERT_GE(t.size(), 4);
    EXPECT_EQ(t[0], QStringLiteral("beep"));
    EXPECT_EQ(t[2], QStringLiteral("beep"));
    EXPECT_TRUE(t[3].startsWith(QStringLiteral("box 16 |システムエラーが発生しました！\\r\\n\\r\\n")));
    EXPECT_TRUE(t[3].endsWith(QStringLiteral("\\r\\niDsp1ranSub() でエラー")));
}

TEST_F(StaffSearch, EnterMovesTheFocusOnButWhileBusyKeysAreSwallowedAndTheCloseBoxIsRefused)
{
    cls施術者検索 search;
    runSearch(search, 0, [&](frm施術者検索& f) {
        f.SetFocus(f.txt_SiboriName);
        f.pressKey(QStringLiteral("Enter"));
        EXPECT_EQ(f.ActiveControl(), &f.txt_SiboriKana);

        f.lock.take();
        const int rows = f.spr_1ran.MaxRows();
        f.txt_SiboriName.setText(QStringLiteral("鈴木"));
        f.but_Read.click();  // a second search does not start
        EXPECT_EQ(f.spr_1ran.MaxRows(), rows);
        f.SetFocus(f.txt_SiboriName);
        f.pressKey(QStringLiteral("Enter"));
        EXPECT_EQ(f.ActiveControl(), &f.txt_SiboriName);
        f.closeByUser();
        EXPECT_FALSE(f.isUnloaded());
        f.lock.release();
    });
}

TEST_F(StaffSearch, ReturnClosesWithoutAChoice)
{
    cls施術者検索 search;
    search.nSeledCD = 3;
    EXPECT_EQ(runSearch(search, 0, [](frm施術者検索& f) { f.but_Act[1].click(); }), 1);
    EXPECT_EQ(search.nSeledCD, 3);
}

TEST_F(StaffSearch, AnOfficeWithoutStaffClosesTheSearchAfterItsNotice)
{
    install.exec(QStringLiteral("DELETE FROM STAFF;"));
    cls施術者検索 search;
    bool driven = false;
    EXPECT_EQ(runSearch(search, 0, [&](frm施術者検索&) { driven = true; }), 1);
    EXPECT_FALSE(driven);
    EXPECT_TRUE(values.platform.transcript().contains(QStringLiteral("box 64 |該当する患者データがありません。")));
}

struct CheckCase {
    const char* what;
    qint32 id;
    qint32 acceptEnded;
    short status;
    const char* text;  // CsErrStr, or the name on success
};

class StaffCheck : public StaffSearch, public ::testing::WithParamInterface<CheckCase> {};

TEST_P(StaffCheck, ChecksOneNumberWithoutADialog)
{
    const CheckCase& c = GetParam();
    cls施術者検索 search;
    EXPECT_EQ(search.iChkStaff(c.id, c.acceptEnded), c.status) << c.what;
    EXPECT_EQ(c.status == 0 ? search.csSeledName() : search.CsErrStr(), QString::fromUtf8(c.text)) << c.what;
    EXPECT_TRUE(values.platform.transcript().isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Numbers, StaffCheck,
                         ::testing::Values(CheckCase{"current", 3, 0, 0, "佐藤 一郎"},
                                           CheckCase{"null flag", 5, 0, 0, "鈴木 花子"},
                                           CheckCase{"unknown", 77, 0, 1, "対象の施術者が存在しません。"},
                                           CheckCase{"other office", 4, 0, 1, "対象の施術者が存在しません。"},
                                           CheckCase{"ended", 8, 0, 1, "管理対象から外れています。"},
                                           CheckCase{"ended, accepted", 8, 1, 0, "高橋 終了"},
                                           CheckCase{"flag 2 counts as current here", 9, 0, 0, "田中 休職"}),
                         [](const auto& info) { return sealtest::caseName(info.param.what); });

TEST_F(StaffSearch, CheckOnALostDatabaseFailsWithTheRoutineName)
{
    install.writeLines(QStringLiteral("adodb.ini"), {QStringLiteral("[接続情報]"), QStringLiteral("接続情報=")});
    cls施術者検索 search;
    EXPECT_EQ(search.iChkStaff(3, 0), 1);
    EXPECT_EQ(search.CsErrStr(), QStringLiteral("接続文字列取得できません。\r\niChkStaff でエラー"));
}

}  // namespace
