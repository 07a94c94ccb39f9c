// The seal screen's kinds, honorifics and search, driven on a small installation with
// one addressee of every kind.

#include "seal/seal_screen.h"

#include "support/scenario.h"

#include <QFile>

#include <gtest/gtest.h>

using seal::frmPrintシール;
using sealtest::drive;
using sealtest::SealInstall;

namespace {

void addEveryKind(const SealInstall& install)
{
    install.addPatient(1, QStringLiteral("山田 太郎"), QStringLiteral("ﾔﾏﾀﾞ ﾀﾛｳ"), QStringLiteral("'1950/11/21'"));
    install.exec(QStringLiteral("UPDATE RIYOUSHA SET cHokenNo = '06130012' WHERE nIDNo = 1;"));
    install.addPatient(2, QStringLiteral("佐藤 花子"), QStringLiteral("サトウ ハナコ"), QStringLiteral("'1940/03/05'"));
    install.addService(1, QStringLiteral("2026/11/02 10:00:00"));
    install.exec(QStringLiteral(
        "INSERT INTO DOCTOR (cIDno, cName, cNameKana, cKikan) VALUES ('001', '医師 一', 'ｲｼ ｲﾁ', '中央病院');"
        "INSERT INTO HOKENJA (cIDno, cName, cNameKana, cDaihyo) VALUES ('06130012', '協会けんぽ', 'ｷｮｳｶｲ', '支部長');"
        "INSERT INTO SYOUKAI (nIDNo, cName, cNameKana, cJigyousho, cAddress1, cAddress2) "
        "VALUES (5, '紹介 太郎', 'ｼｮｳｶｲ', '紹介所', '住所一', '住所二');"
        "INSERT INTO CAREMANE (iKyotenCd, iKyotenEb, nIDNo, cName, cNameKana, iChusiFlg) "
        "VALUES (1, 2, 3, '介護 花子', 'ｶｲｺﾞ', 0);"
        "INSERT INTO STAFF (iKyotenCd, iKyotenEb, nIDNo, cName, cNameKana, iChusiFlg) "
        "VALUES (1, 2, 4, '施術 次郎', 'ｾｼﾞｭﾂ', 0);"
        "INSERT INTO SISETSU (iKyotenCd, iKyotenEb, nIDNo, cShamei1, cShameiKana1, iKikanShubetsu) "
        "VALUES (1, 2, 6, 'ひまわり荘', 'ﾋﾏﾜﾘ', 1), (1, 2, 7, '市民病院', 'ｼﾐﾝ', 2);"
        "INSERT INTO CORP (iKyotenCd, iKyotenEb, nIDNo, cShamei1, cShameiKana1, cDaihyo, iType) "
        "VALUES (1, 2, 1, '自社治療院', 'ｼﾞｼｬ', '院長 太郎', 0);"));
}

// The transcript lines that are boxes.
QStringList boxes(const controls::RecordingPlatform& p)
{
    QStringList out;
    for (const QString& l : p.transcript())
        if (l.startsWith(QStringLiteral("box "))) out << l;
    return out;
}

class Screen : public testing::Test {
protected:
    Screen()
    {
        addEveryKind(install);
        install.touch(QStringLiteral("DATA/印刷設定.ini"));
    }
    SealInstall install;
};

}  // namespace

// --- the kinds -------------------------------------------------------------------

struct KindCase {
    short K;
    const char* row;  // row 1, columns 2 to 33 joined by '|'
};

class Kinds : public Screen, public testing::WithParamInterface<KindCase> {};

TEST_P(Kinds, EnableTheirControlsAndFillTheirColumns)
{
    const KindCase& k = GetParam();
    const short K = k.K;
    drive(install, [&](frmPrintシール& f, controls::RecordingPlatform& p) {
        // Start from another kind, so that every choice is a change.
        f.optMst[K == 2 ? 1 : 2].setValue(true);
        f.chkJisseki.setValue(1);
        f.optAdd[3].setValue(true);
        const QStringList pickedBefore = f.job.asPickedIDs;
        p.clearTranscript();
        f.optMst[static_cast<size_t>(K)].setValue(true);
        EXPECT_TRUE(boxes(p).isEmpty()) << boxes(p).join(u'\n').toStdString();

        const bool patients = K == 0;
        EXPECT_EQ(f.job.nMst, K);
        EXPECT_EQ(f.job.nMstShown, K);
        EXPECT_EQ(f.job.bMstChanged, 0);
        const std::pair<const controls::Control*, bool> enabled[] = {
            {&f.fraAge, patients},      {&f.fraBirth, patients},
            {&f.optAdd[1], patients},   {&f.chkJisseki, patients},
            {&f.chkEndKanja, patients}, {&f.imJissekiYm, patients},
            {&f.cmbKaisyu, patients},   {&f.btnDouishoList, K == 1},
            {&f.mnDouiSet, K == 1},     {&f.btnSejutsuKeika, K == 1 || K == 4 || K == 6 || K == 8}};
        for (auto [c, on] : enabled) EXPECT_EQ(c->enabled(), on) << c->name().toStdString();
        const std::pair<const controls::Control*, bool> shown[] = {
            {&f.fraAddHokenja, K == 2}, {&f.fraAddKeamane, K == 4}, {&f.fraAdd, K != 2 && K != 4}};
        for (auto [c, on] : shown) EXPECT_EQ(c->visible(), on) << c->name().toStdString();
        EXPECT_EQ(f.numtAge[0].text(), patients ? QStringLiteral("1") : QString());
        EXPECT_EQ(f.numtAge[1].text(), patients ? QStringLiteral("150") : QString());
        EXPECT_EQ(f.numBirth.text(), patients ? QStringLiteral("0") : QString());
        EXPECT_TRUE(f.optAdd[0].value());
        EXPECT_EQ(f.lstCheck.ListCount(), 0);
        // Doctors start a fresh order of one empty entry; the others keep it.
        EXPECT_EQ(f.job.asPickedIDs, K == 1 ? QStringList{QString()} : pickedBefore);

        // The number shows from column 3 for insurers, from column 2 for the rest.
        EXPECT_EQ(f.fpSpread02.colHidden(2), K == 2);
        EXPECT_EQ(f.fpSpread02.colHidden(3), K != 2);
        ASSERT_GE(f.fpSpread02.MaxRows(), 1);
        QStringList row;
        for (int col = 2; col <= 33; ++col) row << f.fpSpread02.text(col, 1);
        EXPECT_EQ(row.join(u'|'), QString::fromUtf8(k.row));
    });
}

INSTANTIATE_TEST_SUITE_P(
    EveryKind, Kinds,
    testing::Values(KindCase{0, "2|2|佐藤 花子 様|サトウ ハナコ|||||||||0|様|0|||||||||||||||| 様| 様"},
                    KindCase{1, "001|001|医師 一 様|ｲｼ ｲﾁ|中央病院||||||||1|様||||||||||||||||||"},
                    KindCase{2, "06130012|06130012|協会けんぽ 支部長 様|ｷｮｳｶｲ||支部長|||||||2|様||||| 様|||||||||||||"},
                    KindCase{3, "5|5|紹介 太郎 様|ｼｮｳｶｲ|紹介所|||住所一|住所一||||3|様||||||||||||||||||"},
                    KindCase{4, "3|3|介護 花子 様|ｶｲｺﾞ|||||||||4|様||||||||||||||||||"},
                    KindCase{5, "4|4|施術 次郎 様|ｾｼﾞｭﾂ|||||||||5|様||||||||||||||||||"},
                    KindCase{6, "6|6|ひまわり荘 様|ﾋﾏﾜﾘ|||||||||6|様||||||||||||||||||"},
                    // The short read of the own offices brings no kana.
                    KindCase{7, "1|1|自社治療院 様|||院長 太郎 様|||||||7|様||||||||||||||||||"},
                    KindCase{8, "7|7|市民病院 様|ｼﾐﾝ|||||||||6|様||||||||||||||||||"}),
    [](const testing::TestParamInfo<KindCase>& info) { return std::to_string(info.param.K); });

TEST_F(Screen, EachKindIsReadOnceUntilTheInsurerMenuAsksAgain)
{
    drive(install, [&](frmPrintシール& f, controls::RecordingPlatform&) {
        f.optMst[1].setValue(true);
        ASSERT_EQ(f.fpSpread02.MaxRows(), 1);
        install.exec(QStringLiteral("INSERT INTO DOCTOR (cIDno, cName) VALUES ('002', '医師 二');"
                                    "INSERT INTO HOKENJA (cIDno, cName) VALUES ('39130011', '後期高齢');"));
        f.optMst[0].setValue(true);
        f.optMst[1].setValue(true);
        EXPECT_EQ(f.fpSpread02.MaxRows(), 1);
        // The insurers named by patients: the new one is named by nobody.
        f.optMst[2].setValue(true);
        EXPECT_EQ(f.fpSpread02.MaxRows(), 1);
        install.exec(QStringLiteral("INSERT INTO HOKENJA (cIDno, cName) VALUES ('01130012', '三件目');"));
        // Shown: the menu reads the other list at once.
        f.mnHokenjaDisp[1].click();
        EXPECT_EQ(f.fpSpread02.MaxRows(), 3);
        EXPECT_TRUE(f.mnHokenjaDisp[1].checked());
        EXPECT_FALSE(f.mnHokenjaDisp[0].checked());
        // Not shown: only the flag goes.
        f.optMst[0].setValue(true);
        f.mnHokenjaDisp[1].click();
        EXPECT_FALSE(f.rows.bKindRead[2]);
        EXPECT_TRUE(f.rows.bKindRead[1]);
    });
}

TEST_F(Screen, AFreeHonorificPutsTheDepartmentOnItsOwnLineForInstitutions)
{
    drive(install, [&](frmPrintシール& f, controls::RecordingPlatform&) {
        f.optMst[8].setValue(true);
        f.optKeisho[6].setValue(true);
        EXPECT_TRUE(f.txtEtc.enabled());
        EXPECT_EQ(f.job.sKeisho, QStringLiteral("医事課御中"));
        EXPECT_EQ(f.fpSpread02.text(4, 1), QStringLiteral("市民病院 医事課御中"));
        EXPECT_EQ(f.fpSpread02.text(6, 1), QStringLiteral("市民病院"));
        EXPECT_EQ(f.fpSpread02.text(7, 1), QStringLiteral("医事課御中"));
        f.optMst[6].setValue(true);
        EXPECT_EQ(f.fpSpread02.text(6, 1), QString());
        EXPECT_EQ(f.fpSpread02.text(7, 1), QStringLiteral("医事課御中"));
    });
}

// --- honorifics ------------------------------------------------------------------

TEST_F(Screen, AnHonorificGoesIntoEveryRowAndSurvivesAChangeOfKind)
{
    drive(install, [&](frmPrintシール& f, controls::RecordingPlatform&) {
        // Full-width サトウ sorts before half-width ﾔﾏﾀﾞ: 佐藤 is row 1, hidden here.
        f.txtName.setText(QStringLiteral("山田"));
        f.btnDisp.click();
        ASSERT_TRUE(f.fpSpread02.rowHidden(1));
        f.optKeisho[3].setValue(true);
        EXPECT_EQ(f.job.nKeisho, 3);
        EXPECT_EQ(f.job.sKeisho, QStringLiteral("先生"));
        EXPECT_FALSE(f.txtEtc.enabled());
        EXPECT_EQ(f.fpSpread02.text(15, 1), QStringLiteral("先生"));
        EXPECT_EQ(f.fpSpread02.text(4, 1), QStringLiteral("佐藤 花子 先生"));
        f.optMst[5].setValue(true);
        EXPECT_TRUE(f.optKeisho[3].value());
        EXPECT_EQ(f.fpSpread02.text(4, 1), QStringLiteral("施術 次郎 先生"));
    });
}

TEST_F(Screen, ABlankFreeTextGivesAnEmptyHonorificAndEnterAppliesNewText)
{
    drive(install, [&](frmPrintシール& f, controls::RecordingPlatform&) {
        f.txtEtc.setText(QStringLiteral("   "));
        f.optKeisho[6].setValue(true);
        EXPECT_EQ(f.job.sKeisho, QString());
        EXPECT_EQ(f.fpSpread02.text(4, 1), QStringLiteral("佐藤 花子 "));
        f.txtEtc.setText(QStringLiteral(" 総務課御中 "));
        f.SetFocus(f.txtEtc);
        f.pressKey(QStringLiteral("Enter"));
        EXPECT_EQ(f.job.sKeisho, QStringLiteral("総務課御中"));
        EXPECT_EQ(f.fpSpread02.text(15, 1), QStringLiteral("総務課御中"));
    });
}

// --- search ------------------------------------------------------------------------

TEST_F(Screen, ConditionClearResetsTheBoundsAndTheCopiesButNotTheTicks)
{
    drive(install, [&](frmPrintシール& f, controls::RecordingPlatform&) {
        f.fpSpread02.setValue(1, 1, 1);
        f.numtAge[0].setText(QString());
        f.numtAge[1].setText(QString());
        f.numBirth.setText(QString());
        f.numMaisu.setText(QStringLiteral("4"));
        f.btnDisp.click();
        EXPECT_EQ(f.job.nAgeFrom, 0);
        EXPECT_EQ(f.job.nAgeTo, 150);
        EXPECT_EQ(f.job.nBirthMonth, 0);
        f.txtName.setText(QStringLiteral("該当なし"));
        f.btnClr.click();
        EXPECT_EQ(f.numtAge[0].text(), QStringLiteral("1"));
        EXPECT_EQ(f.numtAge[1].text(), QStringLiteral("150"));
        EXPECT_EQ(f.numBirth.text(), QStringLiteral("0"));
        EXPECT_EQ(f.numMaisu.text(), QStringLiteral("1"));
        EXPECT_TRUE(f.txtName.text().isEmpty());
        EXPECT_EQ(f.job.nAgeFrom, 1);
        EXPECT_FALSE(f.fpSpread02.rowHidden(1));
        EXPECT_EQ(f.fpSpread02.value(1, 1), 1);
    });
}

TEST_F(Screen, OtherKindsSearchWithTheWidestBounds)
{
    drive(install, [&](frmPrintシール& f, controls::RecordingPlatform&) {
        f.numtAge[0].setText(QStringLiteral("90"));
        f.optMst[4].setValue(true);
        EXPECT_EQ(f.job.nAgeFrom, 0);
        EXPECT_EQ(f.job.nAgeTo, 150);
        EXPECT_EQ(f.job.nBirthMonth, 0);
    });
}

TEST_F(Screen, TheKanaIndexActsOnceAndAsksNoDatabase)
{
    drive(install, [&](frmPrintシール& f, controls::RecordingPlatform&) {
        install.exec(QStringLiteral("INSERT INTO RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo, cName, cNameKana) "
                                    "VALUES (1, 2, 9, '佐々木', 'ｻｻｷ');"));
        f.cmdAnk[2].click();
        EXPECT_EQ(f.fpSpread02.MaxRows(), 2);
        EXPECT_FALSE(f.fpSpread02.rowHidden(1));  // サトウ, full-width, in the さ row
        EXPECT_TRUE(f.fpSpread02.rowHidden(2));
        EXPECT_TRUE(f.job.sKanaRow.isEmpty());
        f.btnDisp.click();
        EXPECT_EQ(f.fpSpread02.MaxRows(), 3);
        for (int r = 1; r <= 3; ++r) EXPECT_FALSE(f.fpSpread02.rowHidden(r)) << r;
        EXPECT_EQ(f.cmdAnk[9].caption(), QStringLiteral("わ"));
    });
}

TEST_F(Screen, TickedMonthWithoutValueWarnsAndKeepsTheRows)
{
    const QStringList t = drive(install, [&](frmPrintシール& f, controls::RecordingPlatform&) {
        f.chkJisseki.setValue(1);
        EXPECT_TRUE(f.imJissekiYm.enabled());
        f.imJissekiYm.clear();
        f.btnDisp.click();
        EXPECT_EQ(f.fpSpread02.MaxRows(), 2);
    });
    EXPECT_EQ(t.first(), QStringLiteral("box 48 対象年月選択|抽出対象月の入力に誤りがあります。"));
}

TEST_F(Screen, ANewMonthTicksThePatientsServedInIt)
{
    drive(install, [&](frmPrintシール& f, controls::RecordingPlatform&) {
        f.chkJisseki.setValue(1);
        f.btnDisp.click();
        // Row 2 is 山田 with a service in November; 佐藤 is greyed.
        EXPECT_EQ(f.fpSpread02.foreColor(2, 1), extract::kLightGrey);
        f.fpSpread02.setValue(1, 1, 1);
        f.imJissekiYm.typeText(QStringLiteral("2026/11"));
        f.imJissekiYm.typeText(QStringLiteral("2026/10"));
        EXPECT_EQ(f.fpSpread02.value(1, 1), 0);
        EXPECT_EQ(f.fpSpread02.value(1, 2), 1);
        EXPECT_EQ(f.lstCheck.ListCount(), 1);
        EXPECT_EQ(f.lstCheck.List(0), QStringLiteral("1     山田 太郎 "));
    });
}

TEST_F(Screen, EnterMovesOnLikeTabAndSearchesOnlyWithText)
{
    drive(install, [&](frmPrintシール& f, controls::RecordingPlatform&) {
        f.SetFocus(f.txtName);
        f.pressKey(QStringLiteral("Enter"));
        EXPECT_EQ(f.ActiveControl(), &f.txtNameKana);
        // Enter on a button sends no Tab.
        f.SetFocus(f.btnDisp);
        f.pressKey(QStringLiteral("Enter"));
        EXPECT_EQ(f.ActiveControl(), &f.btnDisp);
        f.txtName.setText(QStringLiteral("佐藤"));
        f.SetFocus(f.txtName);
        f.pressKey(QStringLiteral("Enter"));
        EXPECT_TRUE(f.fpSpread02.rowHidden(2));
        EXPECT_EQ(f.fpSpread02.ActiveRow(), 1);
    });
}

TEST_F(Screen, EnterOnANumberTicksItsRowAndListsIt)
{
    drive(install, [&](frmPrintシール& f, controls::RecordingPlatform&) {
        ASSERT_EQ(f.job.bEnterAdd, seal::kTrue);
        f.txtIDNo.setText(QStringLiteral("1"));
        f.SetFocus(f.txtIDNo);
        f.pressKey(QStringLiteral("Enter"));
        // The search then narrows to that number; the tick stays on row 2.
        EXPECT_EQ(f.fpSpread02.value(1, 2), 1);
        EXPECT_TRUE(f.fpSpread02.rowHidden(1));
        ASSERT_EQ(f.lstCheck.ListCount(), 1);
        EXPECT_EQ(f.lstCheck.ItemData(0), 1);
    });
}

TEST_F(Screen, SettingMenusMarkThenSave)
{
    drive(install, [&](frmPrintシール& f, controls::RecordingPlatform&) {
        f.mnCKOnOff[1].click();
        EXPECT_TRUE(f.mnCKOnOff[1].checked());
        EXPECT_FALSE(f.mnCKOnOff[0].checked());
        f.mnCheckOn.click();
        EXPECT_TRUE(f.mnCheckOn.checked());
        EXPECT_EQ(f.chkCheck.value(), 1);
        EXPECT_EQ(f.lstCheck.backColor(), controls::Colors::WindowBackground);
        EXPECT_TRUE(f.btnAllKai[1].enabled());
    });
    QFile file(install.settingsIni());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QString text = base::fromCp932(file.readAll());
    EXPECT_TRUE(text.contains(
        QStringLiteral("[タックシール]\r\n印刷対象CK=1\r\nチェック順=1\r\nEnter=1\r\n種類：保険者データ=0\r\n"
                       "タックシール宛先=医事課御中\r\n")))
        << text.toStdString();
    // The defaults of the footnote list were written at the start.
    EXPECT_TRUE(text.contains(QStringLiteral("[タックシール脚注]\r\n脚注数=5\r\n")));
}

TEST_F(Screen, AChangeOfCollectionFilterClearsTicksAndTheOrderList)
{
    install.touch(QStringLiteral("SGRB.CID"));
    drive(install, [&](frmPrintシール& f, controls::RecordingPlatform&) {
        f.fpSpread02.setValue(1, 1, 1);
        f.fpSpread02.setValue(1, 2, 1);
        ASSERT_EQ(f.lstCheck.ListCount(), 2);
        f.cmbKaisyu.setListIndex(1);
        EXPECT_EQ(f.fpSpread02.value(1, 1), 0);
        EXPECT_EQ(f.fpSpread02.value(1, 2), 0);
        EXPECT_EQ(f.lstCheck.ListCount(), 0);
        // Nobody here has a sub row paying by transfer.
        EXPECT_EQ(f.fpSpread02.MaxRows(), 0);
        f.optMst[1].setValue(true);
        EXPECT_FALSE(f.cmbKaisyu.enabled());
    });
}

// --- print mode, sheet and envelope ---------------------------------------------------

TEST_F(Screen, PrintModeSwapsTheStartCellFrameForTheEnvelopeFrameWhoseThreeRowsHaveTheirPictures)
{
    drive(install, [&](frmPrintシール& f, controls::RecordingPlatform&) {
        EXPECT_TRUE(f.fraPosition.visible());
        EXPECT_FALSE(f.frmHutou.visible());
        f.opPMode[1].setValue(true);
        EXPECT_FALSE(f.fraPosition.visible());
        EXPECT_TRUE(f.frmHutou.visible());
        ASSERT_EQ(f.cmbHutou.ListCount(), 3);
        EXPECT_EQ(f.cmbHutou.List(2), QStringLiteral("長方3号：横"));
        for (int i = 0; i < 3; ++i) {
            f.cmbHutou.setListIndex(i);
            for (int p = 0; p < 3; ++p) EXPECT_EQ(f.picFtType[static_cast<size_t>(p)].visible(), p == i) << i << p;
        }
        f.opPMode[0].setValue(true);
        EXPECT_TRUE(f.fraPosition.visible());
    });
}

TEST_F(Screen, ASheetShowsItsOwnPictureAndTheStartCellFollowsIt)
{
    drive(install, [&](frmPrintシール& f, controls::RecordingPlatform&) {
        ASSERT_EQ(f.cmbSealType.ListCount(), 3);
        EXPECT_EQ(f.cmbSealType.List(2), QStringLiteral("３０枚シート（ビーコン）"));
        EXPECT_EQ(f.fpSpread01.backColor(1, 1), controls::Colors::Black);
        EXPECT_EQ(f.fpSpread01.backColor(2, 1), controls::Colors::White);
        // Each picture keeps its own active cell; the number follows the one on view.
        f.fpSpread01.SetActiveCell(1, 5);
        f.fpSpread_3x10.SetActiveCell(3, 10);
        f.cmbSealType.setListIndex(2);
        EXPECT_TRUE(f.fpSpread_3x10.visible());
        EXPECT_FALSE(f.fpSpread01.visible());
        EXPECT_EQ(f.job.nStartPos, 30);
        f.cmbSealType.setListIndex(1);
        EXPECT_TRUE(f.fpSpread_2x6.visible());
        EXPECT_EQ(f.job.nStartPos, 1);
        f.cmbSealType.setListIndex(0);
        EXPECT_EQ(f.job.nStartPos, 9);
    });
}

TEST_F(Screen, F4SearchesAndGivesTheListTheFocus)
{
    drive(install, [&](frmPrintシール& f, controls::RecordingPlatform&) {
        f.SetFocus(f.txtName);
        f.fpSpread02.SetActiveCell(1, 2);
        f.pressKey(QStringLiteral("F4"));
        EXPECT_EQ(f.ActiveControl(), &f.fpSpread02);
        EXPECT_EQ(f.fpSpread02.ActiveRow(), 1);
        // With no row the focus stays.
        f.txtIDNo.setText(QStringLiteral("999"));
        f.optMst[1].setValue(true);
        f.SetFocus(f.txtName);
        install.exec(QStringLiteral("DELETE FROM RIYOUSHA;"));
        f.optMst[0].setValue(true);
        f.pressKey(QStringLiteral("F4"));
        EXPECT_EQ(f.fpSpread02.MaxRows(), 0);
        EXPECT_EQ(f.ActiveControl(), &f.txtName);
    });
}
