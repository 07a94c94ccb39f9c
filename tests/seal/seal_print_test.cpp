// Printing from the seal screen as the operator does it: ticks, the checks before
// print, the question, the label CSV and the script left in the temporary folder, and
// the engine's start, as transcripts of the scenario runner and as the files' bytes.

#include "seal/seal_screen.h"

#include "support/patients.h"
#include "support/scenario.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

using seal::frmPrintシール;
using sealtest::SealInstall;
using namespace Qt::StringLiterals;

namespace {

// The three patients and the office's own row for the sender block.
void addPatientsAndOffice(const SealInstall& install)
{
    sealtest::addThreePatients(install);
    install.exec(u"UPDATE RIYOUSHA SET cYubinNo = '100-0001', cAdress1 = '千代田区1-2-3', cTelNo = '03-1234-5678' "
                 u"WHERE nIDNo = 1;"
                 u"UPDATE RIYOUSHA SET cYubinNo = '150-0002', cAdress1 = '渋谷区4-5' WHERE nIDNo = 2;"
                 u"INSERT INTO CORP (iKyotenCd, iKyotenEb, nIDNo, cShamei1, cShameiKana1, iType, cTelNo, cFaxNo, "
                 u"cMailDestination, cMailDestinationZipNo) VALUES (1, 2, 1, 'ひかり鍼灸院', 'ﾋｶﾘ', 0, '03-0000-1111', "
                 u"'03-0000-2222', '港区芝1-1', '105-0014');"_s);
}

using sealtest::crlf;
using sealtest::drive;
using sealtest::fileBytes;

// Runs a script after the start; the transcript while the seal screen is open, with the
// program's folder as APP.
QStringList run(const SealInstall& install, const QStringList& body)
{
    return sealtest::whileOpen(sealtest::runAfterStart(install, body), u"frmPrintシール"_s);
}

const QString kTitle = u"cIDno,cName,cNameKana,cKikan,cDaihyo,cYubinNo,cAddress1,cTelNo,cFaxNo,cMobNo,cMst,cKeisho,"
                       u"nRoomNo,nTantouID,拠点名, 送付先郵便番号,送付先住所,拠点電話番号,拠点FAX番号,脚注"_s;

const QString kQuestion = u"box 33 シール印刷|印刷してもよろしいですか？"_s;
const QString kPrintRun = u"run 2 wfrfv10.exe /c APP\\TMP\\WfdCom.dat"_s;
const QString kPreviewRun = u"run 3 WrVb6Viewer.exe /c ./TMP\\WfdCom.dat"_s;

class Printing : public testing::Test {
protected:
    Printing() { addPatientsAndOffice(install); }
    QString tmpFile(const QString& name) const { return install.path(u"TMP/"_s + name); }
    SealInstall install;
};

}  // namespace

TEST_F(Printing, FromTickingToTheEngineInTheOrderOfTicking)
{
    const QStringList t = run(install, {u"tick fpSpread02 3 on"_s, u"tick fpSpread02 1 on"_s, u"click mnMenuPrint"_s});
    EXPECT_EQ(t, QStringList({kQuestion, kPrintRun}));

    const QString office = u"\"ひかり鍼灸院\",\"105-0014\",\"港区芝1-1\",\"03-0000-1111\",\"03-0000-2222\",\"\""_s;
    EXPECT_EQ(
        fileBytes(tmpFile(u"シール.csv"_s)),
        crlf({kTitle,
              u"1,\"山田 太郎 様\",\"ﾔﾏﾀﾞ ﾀﾛｳ\",\"\",\"\",\"〒 100-0001\",\"千代田区1-2-3\",\"03-1234-5678\",\"\",\"\","
              u"\"0\",\"様\",\"\",\"\","_s +
                  office,
              u"2,\"佐藤 花子 様\",\"ｻﾄｳ ﾊﾅｺ\",\"\",\"\",\"〒 150-0002\",\"渋谷区4-5\",\"\",\"\",\"\","
              u"\"0\",\"様\",\"\",\"\","_s +
                  office}));
    const QString app = QDir::toNativeSeparators(QDir(install.appDir()).canonicalPath());
    EXPECT_EQ(
        base::toCp932(base::fromCp932(fileBytes(tmpFile(u"WfdCom.dat"_s))).replace(app, u"APP"_s)),
        crlf({u"FileName,\"APP\\SYS\\シール.wfd\""_s, u"Title,\"シール\""_s,
              u"SetDataText,\"シール\",\"APP\\TMP\\シール.csv\""_s, u"PrintPaper, A4"_s, u"PrintOutFromDialog"_s}));
}

TEST_F(Printing, WithoutAnOrderModeTheGridOrderHolds)
{
    run(install,
        {u"check chkEnter off"_s, u"tick fpSpread02 3 on"_s, u"tick fpSpread02 1 on"_s, u"click mnMenuPreview"_s});
    const QList<QByteArray> lines = fileBytes(tmpFile(u"シール.csv"_s)).split('\n');
    ASSERT_EQ(lines.size(), 4);
    EXPECT_TRUE(lines[1].startsWith("2,"));
    EXPECT_TRUE(lines[2].startsWith("1,"));
}

TEST_F(Printing, EnvelopesUseTheirOwnFileFormAndWideAddresses)
{
    const QStringList t = run(
        install, {u"click opPMode(1)"_s, u"choose cmbHutou 2"_s, u"tick fpSpread02 3 on"_s, u"click mnMenuPreview"_s});
    // A preview asks nothing and opens the second viewer.
    EXPECT_EQ(t, QStringList({kPreviewRun}));
    EXPECT_TRUE(fileBytes(tmpFile(u"封筒印刷.csv"_s)).contains(base::toCp932(u"\"千代田区１-２-３\""_s)));
    EXPECT_TRUE(
        fileBytes(tmpFile(u"WfdCom.dat"_s)).contains(base::toCp932(u"封筒印刷長3_横.wfd\"\r\nTitle,\"封筒\""_s)));
}

TEST_F(Printing, CancelAtTheQuestionMakesNothing)
{
    const QStringList t = run(install, {u"tick fpSpread02 1 on"_s, u"answer Cancel"_s, u"click mnMenuPrint"_s});
    EXPECT_EQ(t, QStringList({kQuestion}));
    EXPECT_FALSE(QFile::exists(tmpFile(u"シール.csv"_s)));
}

TEST_F(Printing, IsRefusedWithoutTicksWithAnEmptyListOrWithoutALineToOrderBy)
{
    EXPECT_EQ(run(install, {u"click mnMenuPrint"_s}),
              QStringList({u"box 48 シール印刷|印刷対象データが選択されていません。"_s}));
    EXPECT_EQ(run(install, {u"click optMst(5)"_s, u"click mnMenuPreview"_s}),
              QStringList({u"box 48 シール印刷|印刷対象データが表示されていません。"_s}));
    EXPECT_EQ(run(install, {u"check chkCheck on"_s, u"click mnMenuPrint"_s}),
              QStringList({u"box 48 シール印刷|リストにデータがありません。「対象」をチェックして下さい。"_s}));
}

TEST_F(Printing, AHiddenTickedRowStillPrints)
{
    const QStringList t = run(install, {u"check chkEnter off"_s, u"tick fpSpread02 3 on"_s, u"type txtName 佐藤"_s,
                                        u"click btnDisp"_s, u"click mnMenuPreview"_s});
    EXPECT_EQ(t, QStringList({kPreviewRun}));
    EXPECT_TRUE(fileBytes(tmpFile(u"シール.csv"_s)).contains(base::toCp932(u"1,\"山田 太郎 様\""_s)));
}

TEST_F(Printing, AMissingTemporaryFolderShowsOneBoxAndStartsNothing)
{
    ASSERT_TRUE(QDir(install.path(u"TMP"_s)).removeRecursively());
    const QStringList t = run(install, {u"tick fpSpread02 1 on"_s, u"click mnMenuPreview"_s});
    EXPECT_EQ(t,
              QStringList(
                  {u"box 16 シール印刷|CSVタイトル行作成時にエラーが発生しました。\\r(76) パスが見つかりません。"_s}));
}

TEST_F(Printing, StartCellCopiesAndFootnoteReachTheFile)
{
    run(install, {u"choose cmbSealType 2"_s, u"cell fpSpread_3x10 10 3"_s, u"type numMaisu 2"_s,
                  u"choose cboKyakutyuList 1"_s, u"tick fpSpread02 3 on"_s, u"click mnMenuPreview"_s});
    const QList<QByteArray> lines = fileBytes(tmpFile(u"シール.csv"_s)).split('\n');
    // Title, 29 blank labels, two copies, and what follows the last CR LF.
    ASSERT_EQ(lines.size(), 33);
    EXPECT_EQ(lines[29], QByteArray("0,,,,,,,,,,,,,,,,,,,\r"));
    EXPECT_TRUE(lines[30].startsWith("1,"));
    EXPECT_EQ(lines[30], lines[31]);
    EXPECT_TRUE(lines[30].endsWith(base::toCp932(u",\"同意書在中\"\r"_s)));
    EXPECT_TRUE(fileBytes(tmpFile(u"WfdCom.dat"_s)).contains(base::toCp932(u"ビーコン用シール30M.wfd"_s)));
}

TEST_F(Printing, AfterPrintingEverythingStandsAndTheStatusIsCleared)
{
    drive(install, [&](frmPrintシール& f, controls::RecordingPlatform& p) {
        f.cmbSealType.choose(0);
        f.fpSpread01.clickCell(1, 3);
        f.fpSpread02.pressButton(1, 2, true);
        f.btnJisseki[0].click();
        EXPECT_EQ(f.job.nStartPos, 5);
        EXPECT_EQ(f.fpSpread01.backColor(1, 3), controls::Colors::Black);
        EXPECT_EQ(f.fpSpread02.value(1, 2), 1);
        EXPECT_EQ(f.lstCheck.ListCount(), 1);
        EXPECT_EQ(f.job.nCheckCount, 1);
        EXPECT_EQ(f.Status.text(), QString());
        EXPECT_EQ(p.pointer(), controls::Pointer::Normal);
    });
}

TEST_F(Printing, TheButtonsSaveTheSettingsWhateverTheRun)
{
    drive(install, [&](frmPrintシール& f, controls::RecordingPlatform&) {
        f.optKeisho[6].setValue(true);
        f.txtEtc.setText(u"  総務課御中 "_s);
        // Nothing ticked: the run is refused, the settings are saved all the same.
        f.btnJisseki[1].click();
    });
    const QString saved = base::fromCp932(fileBytes(install.settingsIni()));
    EXPECT_TRUE(saved.contains(u"タックシール宛先=総務課御中"_s)) << saved.toStdString();
    EXPECT_TRUE(saved.contains(u"Enter=1"_s));
}

TEST_F(Printing, TheFreeHonorificIsReadAgainAtPrintTime)
{
    drive(install, [&](frmPrintシール& f, controls::RecordingPlatform&) {
        f.fpSpread02.pressButton(1, 3, true);
        f.optKeisho[6].setValue(true);
        f.txtEtc.setText(u" 御家族様 "_s);
        f.mnMenuPreview.click();
        EXPECT_EQ(f.job.sKeisho, u"御家族様"_s);
        EXPECT_EQ(f.job.nKeisho, 6);
        EXPECT_TRUE(f.txtEtc.enabled());
    });
}

TEST_F(Printing, InTheEnterModeAnEmptyListDoesNotStopThePrint)
{
    drive(install, [&](frmPrintシール& f, controls::RecordingPlatform& p) {
        f.fpSpread02.pressButton(1, 1, true);
        // The number typed again takes the line and leaves the tick.
        QString id = u"2"_s;
        f.Add_Enter(id);
        ASSERT_EQ(f.lstCheck.ListCount(), 0);
        f.mnMenuPreview.click();
        // The labels follow the empty list: the file has its title only, and goes to
        // the engine all the same.
        EXPECT_EQ(fileBytes(tmpFile(u"シール.csv"_s)), crlf({kTitle}));
        EXPECT_EQ(p.transcript(), QStringList({kPreviewRun}));
    });
}
