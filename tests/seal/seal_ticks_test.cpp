// The start cell pictures of the three sheets, leaving the order-by-ticking mode, the
// lines of lstCheck under the operator's clicks, and the doctors' staff numbers.

#include "seal/seal_screen.h"

#include "support/patients.h"
#include "support/scenario.h"

#include <gtest/gtest.h>

using seal::frmPrintシール;
using sealtest::drive;
using sealtest::listTexts;
using sealtest::SealInstall;
using namespace Qt::StringLiterals;

namespace {

// The three patients, doctors in the order of their numbers.
void addAddressees(const SealInstall& install)
{
    sealtest::addThreePatients(install);
    install.addService(3, u"2026/11/02 10:00:00"_s);
    install.exec(u"INSERT INTO DOCTOR (cIDno, cName, cNameKana, cKikan) VALUES "
                 u"('501', '医師 一', 'ｲｼ ｲﾁ', '中央病院'), ('502', '医師 二', 'ｲｼ ﾆ', '北病院');"_s);
}

class Ticks : public testing::Test {
protected:
    Ticks() { addAddressees(install); }
    SealInstall install;
};

}  // namespace

// --- the start cell ---------------------------------------------------------------------

struct StartCellCase {
    int sheet;
    int col;
    int row;
    short nStartPos;
};

class StartCell : public Ticks, public testing::WithParamInterface<StartCellCase> {};

TEST_P(StartCell, CountsAlongTheRowsFromTheTopLeft)
{
    const StartCellCase& p = GetParam();
    drive(install, [&](frmPrintシール& f) {
        f.cmbSealType.choose(p.sheet);
        controls::Grid& g = p.sheet == 0 ? f.fpSpread01 : p.sheet == 1 ? f.fpSpread_2x6 : f.fpSpread_3x10;
        g.clickCell(p.col, p.row);
        EXPECT_EQ(f.job.nStartPos, p.nStartPos);
        EXPECT_EQ(g.backColor(p.col, p.row), controls::Colors::Black);
        EXPECT_EQ(g.backColor(1, 1) == controls::Colors::Black, p.nStartPos == 1);
    });
}

INSTANTIATE_TEST_SUITE_P(Sheets, StartCell,
                         testing::Values(StartCellCase{0, 1, 2, 3}, StartCellCase{0, 2, 5, 10},
                                         StartCellCase{1, 2, 6, 12}, StartCellCase{2, 3, 10, 30},
                                         StartCellCase{2, 2, 1, 2}, StartCellCase{1, 1, 1, 1}),
                         [](const testing::TestParamInfo<StartCellCase>& info) {
                             return "Sheet" + std::to_string(info.param.sheet) + "Cell" +
                                    std::to_string(info.param.nStartPos);
                         });

TEST_F(Ticks, EachPictureKeepsItsCellAcrossSheetChanges)
{
    drive(install, [&](frmPrintシール& f) {
        f.fpSpread01.clickCell(1, 5);
        ASSERT_EQ(f.job.nStartPos, 9);
        f.cmbSealType.choose(2);
        // A picture not clicked since the start stands at its first cell.
        EXPECT_EQ(f.job.nStartPos, 1);
        EXPECT_TRUE(f.fpSpread_3x10.visible());
        EXPECT_FALSE(f.fpSpread01.visible());
        f.fpSpread_3x10.clickCell(3, 2);
        EXPECT_EQ(f.job.nStartPos, 6);
        f.cmbSealType.choose(0);
        EXPECT_EQ(f.job.nStartPos, 9);
        EXPECT_EQ(f.fpSpread01.backColor(1, 5), controls::Colors::Black);
        f.cmbSealType.choose(2);
        EXPECT_EQ(f.job.nStartPos, 6);
    });
}

TEST_F(Ticks, AClickBesideTheCellsWhitensThePictureAndKeepsTheNumber)
{
    drive(install, [&](frmPrintシール& f) {
        f.fpSpread_2x6.clickCell(2, 3);
        ASSERT_EQ(f.job.nStartPos, 6);
        f.fpSpread_2x6.clickCell(0, 3);
        EXPECT_EQ(f.job.nStartPos, 6);
        EXPECT_EQ(f.fpSpread_2x6.backColor(2, 3), controls::Colors::White);
    });
}

// --- the order modes ----------------------------------------------------------------

TEST_F(Ticks, LeavingOrderByTickingKeepsTheListInUseWhileTheEnterModeIsOn)
{
    drive(install, [&](frmPrintシール& f) {
        ASSERT_EQ(f.chkEnter.value(), 1);
        f.fpSpread02.pressButton(1, 1, true);
        EXPECT_EQ(f.lstCheck.ListCount(), 1);

        f.chkCheck.toggle();
        EXPECT_EQ(f.lstCheck.backColor(), controls::Colors::WindowBackground);
        EXPECT_TRUE(f.btnAllKai[1].enabled());
        EXPECT_EQ(f.lstCheck.ListCount(), 0);
        EXPECT_EQ(f.fpSpread02.value(1, 1), 0);

        f.chkCheck.toggle();
        // chkEnter still ticked: the list keeps its white background and button.
        EXPECT_EQ(f.lstCheck.backColor(), controls::Colors::WindowBackground);
        f.chkEnter.toggle();
        EXPECT_EQ(f.lstCheck.backColor(), controls::Colors::ScrollBars);
        EXPECT_FALSE(f.btnAllKai[1].enabled());
        EXPECT_FALSE(f.lblEnter.visible());
    });
}

// --- the lines of lstCheck ------------------------------------------------------------

TEST_F(Ticks, AClickOnALineShowsItsRowAndADoubleClickUnticksThePatientAndTakesTheLine)
{
    drive(install, [&](frmPrintシール& f) {
        f.fpSpread02.pressButton(1, 3, true);
        f.fpSpread02.pressButton(1, 1, true);
        f.fpSpread02.SetActiveCell(5, 2);
        f.lstCheck.choose(0);
        EXPECT_EQ(f.fpSpread02.ActiveRow(), 3);
        EXPECT_EQ(f.fpSpread02.ActiveCol(), 1);
        EXPECT_EQ(f.lstCheck.ListCount(), 2);
        EXPECT_EQ(f.fpSpread02.value(1, 3), 1);

        f.lstCheck.doubleClick(0);
        EXPECT_EQ(f.fpSpread02.value(1, 3), 0);
        EXPECT_EQ(listTexts(f.lstCheck), QStringList({u"2     佐藤 花子 "_s}));
    });
}

TEST_F(Ticks, ADoubleClickOnALineWhoseRowIsGoneTakesOnlyTheLine)
{
    drive(install, [&](frmPrintシール& f) {
        f.lstCheck.AddItem(u"77     消えた 人 "_s, 77);
        f.fpSpread02.pressButton(1, 1, true);
        f.lstCheck.doubleClick(0);
        EXPECT_EQ(f.lstCheck.ListCount(), 1);
        EXPECT_EQ(f.fpSpread02.value(1, 1), 1);
    });
}

TEST_F(Ticks, ADoctorListedTwiceKeepsHisTickUntilHisLastLine)
{
    drive(install, [&](frmPrintシール& f) {
        f.optMst[1].setValue(true);
        ASSERT_EQ(f.fpSpread02.text(2, 1), u"501"_s);
        ASSERT_EQ(f.job.asPickedIDs, QStringList({QString()}));
        // As a hand-over leaves him: ticked once, listed for two patients, with the
        // staff numbers of both.
        f.fpSpread02.pressButton(1, 1, true);
        f.lstCheck.AddItem(u"501     医師 一 "_s, 501);
        f.fpSpread02.pressButton(1, 2, true);
        f.job.asPickedIDs = {u"7"_s, u"8"_s, u"9"_s};
        ASSERT_EQ(f.lstCheck.ListCount(), 3);

        f.lstCheck.doubleClick(1);
        EXPECT_EQ(f.fpSpread02.value(1, 1), 1);
        EXPECT_EQ(f.lstCheck.ListCount(), 2);
        EXPECT_EQ(f.job.asPickedIDs, QStringList({u"7"_s, u"9"_s}));

        f.lstCheck.doubleClick(0);
        EXPECT_EQ(f.fpSpread02.value(1, 1), 0);
        EXPECT_EQ(listTexts(f.lstCheck), QStringList({u"502     医師 二 "_s}));
        EXPECT_EQ(f.job.asPickedIDs, QStringList({u"9"_s}));
        EXPECT_EQ(f.fpSpread02.ActiveRow(), 1);
    });
}

TEST_F(Ticks, TickingADoctorGrowsTheStaffListWithAnEmptyEntry)
{
    drive(install, [&](frmPrintシール& f) {
        f.optMst[1].setValue(true);
        f.fpSpread02.pressButton(1, 1, true);
        f.fpSpread02.pressButton(1, 2, true);
        EXPECT_EQ(f.job.asPickedIDs, QStringList({QString(), QString()}));
        // Taking a line off by its tick leaves the staff list as it was.
        f.fpSpread02.pressButton(1, 1, false);
        EXPECT_EQ(f.job.asPickedIDs.size(), 2);
    });
}
