// The label CSV byte for byte: the title line, the form of a label's line, the blank
// lines of the start cell, the copies, the file's rights, and the runs that cannot
// make their file.

#include "extract/blank_labels.h"
#include "extract/label_csv.h"
#include "extract/label_records.h"

#include "support/label_grid.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "support/files.h"

using namespace extract;
using namespace sealtest;
using namespace Qt::StringLiterals;

namespace {

// Four literals, one with a blank before the mailing postal code.
const QString kTitle = u"cIDno,cName,cNameKana,cKikan,cDaihyo,cYubinNo,cAddress1,cTelNo,cFaxNo,cMobNo,cMst,cKeisho,"
                       u"nRoomNo,nTantouID,拠点名, 送付先郵便番号,送付先住所,拠点電話番号,拠点FAX番号,脚注"_s;

const OfficeBlock kOffice{u"ひかり鍼灸院"_s, u"100-0005"_s, u"東京都千代田区丸の内1-1"_s, u"03-0000-1111"_s,
                          u"03-0000-2222"_s};

class CsvRun : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(dir.isValid());
        ASSERT_TRUE(QDir(dir.path()).mkdir(u"TMP"_s));
        // Paths are given the program's way, with "\".
        csvPath = dir.path() + u"\\TMP\\シール.csv"_s;
        nativeCsv = dir.path() + u"/TMP/シール.csv"_s;
    }

    QTemporaryDir dir;
    PlatformScope scope;
    QString csvPath;
    QString nativeCsv;
};

}  // namespace

TEST(CsvLine, FirstFieldBareTheOthersQuotedWithThePostalMark)
{
    LabelRecord r;
    r.cIDno = u"123"_s;
    r.sOutAtena = u"山田 太郎 様"_s;
    r.cNameKana = u"ﾔﾏﾀﾞ ﾀﾛｳ"_s;
    r.sOutYubin = u"100-0001"_s;
    r.sOutAddress = u"東京都千代田区1-1"_s;
    r.cTelNo = u"03"_s;
    r.cMst = u"0"_s;
    r.cKeisho = u"様"_s;
    r.nRoomNo = u"-203"_s;
    EXPECT_EQ(sealCsvLine(r, kOffice, u"同意書在中"_s),
              u"123,\"山田 太郎 様\",\"ﾔﾏﾀﾞ ﾀﾛｳ\",\"\",\"\",\"〒 100-0001\",\"東京都千代田区1-1\",\"03\",\"\",\"\","
              u"\"0\",\"様\",\"-203\",\"\",\"ひかり鍼灸院\",\"100-0005\",\"東京都千代田区丸の内1-1\","
              u"\"03-0000-1111\",\"03-0000-2222\",\"同意書在中\""_s);
}

TEST(CsvLine, AnEmptyPostalCodeStillHasItsMark)
{
    const QString line = sealCsvLine(LabelRecord{}, OfficeBlock{}, QString());
    EXPECT_EQ(line,
              u",\"\",\"\",\"\",\"\",\"〒 \",\"\",\"\",\"\",\"\",\"\",\"\",\"\",\"\",\"\",\"\",\"\",\"\",\"\",\"\""_s);
}

TEST(CsvLine, QuotesAndLineBreaksInsideValuesStandAsTheyAre)
{
    LabelRecord r;
    r.cIDno = u"9"_s;
    r.sOutAtena = u"\"あおば\" 様"_s;
    r.sOutAddress = u"新宿区1-1\r\nメゾン101"_s;
    const QString line = sealCsvLine(r, kOffice, QString());
    EXPECT_TRUE(line.startsWith(u"9,\"\"あおば\" 様\","_s)) << line.toStdString();
    EXPECT_TRUE(line.contains(u",\"新宿区1-1\r\nメゾン101\","_s));
}

TEST(BlankLine, TwentyEmptyFieldsAndForDoctorsTheFirstStaffNumber)
{
    EXPECT_EQ(blankLabelLine(0, {}), u"0,,,,,,,,,,,,,,,,,,,"_s);
    EXPECT_EQ(blankLabelLine(0, {}).count(u','), 19);
    EXPECT_EQ(blankLabelLine(1, {u""_s}), u"0,,,,,,,,,,,,,,,,,,,"_s);
    EXPECT_EQ(blankLabelLine(1, {u"17"_s, u"23"_s}), u"0,,,,,,,,,,,,,,,,,,,17"_s);
    // Other kinds never carry a staff number, whatever the list holds.
    EXPECT_EQ(blankLabelLine(4, {u"17"_s}), u"0,,,,,,,,,,,,,,,,,,,"_s);
    EXPECT_EQ(blankLabelCount(1), 0);
    EXPECT_EQ(blankLabelCount(0), 0);
    EXPECT_EQ(blankLabelCount(30), 29);
}

TEST_F(CsvRun, TheFileIsCp932WithCrLfAndTheUsersAlone)
{
    // An older file with wider rights is replaced.
    {
        QFile old(nativeCsv);
        ASSERT_TRUE(old.open(QIODevice::WriteOnly));
        old.write("old contents that are longer than the new ones, and must not survive at all\r\n");
        old.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ReadOther);
    }
    auto csv = openSealCsv(csvPath);
    ASSERT_TRUE(csv);
    csv->writeLine(u"1,\"ア\""_s);
    csv->close();
    EXPECT_EQ(fileBytes(nativeCsv), base::toCp932(kTitle) + "\r\n1,\"\x83\x41\"\r\n");
    EXPECT_EQ(sealtest::fileMode(nativeCsv), 0600);
    EXPECT_TRUE(scope.platform.transcript().isEmpty());
}

TEST_F(CsvRun, StartCellCopiesAndOrderMakeTheWholeFile)
{
    auto g = makeGrid(2);
    setPatient(*g, 1, 1, u"甲野 一"_s);
    setPatient(*g, 2, 2, u"乙野 二"_s);
    tick(*g, 1);
    tick(*g, 2);
    LabelChoices c;
    c.nStartPos = 4;
    c.nMaisu = 2;
    c.nCheckCount = 2;
    c.office = kOffice;
    c.footnote = u"領収書在中"_s;
    QStringList status;
    ASSERT_EQ(makeLabelRows(csvPath, *g, {}, c, [&](const QString& s) { status << s; }), 0);

    auto line = [&](const QString& id, const QString& name) {
        return id + u",\""_s + name +
               u" 様\",\"ﾔﾏﾀﾞ\",\"\",\"\",\"〒 100-0001\",\"東京都千代田区1-1\",\"03-1111-2222\","
               u"\"03-1111-3333\",\"090-1234-5678\",\"0\",\"様\",\"\",\"\",\"ひかり鍼灸院\","
               u"\"100-0005\",\"東京都千代田区丸の内1-1\",\"03-0000-1111\",\"03-0000-2222\","
               u"\"領収書在中\""_s;
    };
    const QString blank = u"0,,,,,,,,,,,,,,,,,,,"_s;
    EXPECT_EQ(fileBytes(nativeCsv),
              crlf({kTitle, blank, blank, blank, line(u"1"_s, u"甲野 一"_s), line(u"1"_s, u"甲野 一"_s),
                    line(u"2"_s, u"乙野 二"_s), line(u"2"_s, u"乙野 二"_s)}));
    // The status bar is cleared once the labels are made.
    EXPECT_EQ(status, QStringList({u"2人中1人目を計算中です。"_s, u"2人中2人目を計算中です。"_s, QString()}));
}

TEST_F(CsvRun, NoCopiesLeaveTheTitleAndTheBlankLines)
{
    auto g = onePatient(1, u"甲野 一"_s);
    LabelChoices c;
    c.nStartPos = 3;
    c.nMaisu = 0;
    ASSERT_EQ(makeLabelRows(csvPath, *g, {}, c, {}), 0);
    EXPECT_EQ(fileBytes(nativeCsv), crlf({kTitle, u"0,,,,,,,,,,,,,,,,,,,"_s, u"0,,,,,,,,,,,,,,,,,,,"_s}));
}

TEST_F(CsvRun, StartCellThirtyPutsTheFirstAddresseeInTheLastCell)
{
    auto g = onePatient(1, u"甲野 一"_s);
    LabelChoices c;
    c.nStartPos = 30;
    ASSERT_EQ(makeLabelRows(csvPath, *g, {}, c, {}), 0);
    const QList<QByteArray> lines = fileBytes(nativeCsv).split('\n');
    ASSERT_EQ(lines.size(), 32);  // title, 29 blanks, the label, and the end after the last CR LF
    EXPECT_EQ(lines[29], QByteArray("0,,,,,,,,,,,,,,,,,,,\r"));
    EXPECT_TRUE(lines[30].startsWith("1,\""));
    EXPECT_TRUE(lines[31].isEmpty());
}

TEST_F(CsvRun, ADoctorRunFromAHandOverHasTheStaffNumberInItsBlankLines)
{
    auto g = makeGrid(1);
    setAddressee(*g, 1, u"501"_s, u"鈴木 次郎 先生"_s, u"1"_s, {{15, u"先生"_s}});
    LabelChoices c;
    c.nMst = 1;
    c.nStartPos = 2;
    c.bEnterAdd = true;
    c.asPickedIDs = {u"42"_s};
    ASSERT_EQ(makeLabelRows(csvPath, *g, {{u"501     鈴木 次郎 "_s, 501}}, c, {}), 0);
    const QList<QByteArray> lines = fileBytes(nativeCsv).split('\n');
    ASSERT_GE(lines.size(), 3);
    EXPECT_EQ(lines[1], QByteArray("0,,,,,,,,,,,,,,,,,,,42\r"));
    // The staff number also stands in the label's own nTantouID field.
    EXPECT_TRUE(lines[2].contains("\"42\""));
}

TEST_F(CsvRun, AMissingFolderShowsOneBoxAndMakesNothing)
{
    auto g = onePatient(1, u"甲野 一"_s);
    const QString missing = dir.path() + u"\\NOPE\\シール.csv"_s;
    EXPECT_EQ(makeLabelRows(missing, *g, {}, LabelChoices{}, {}), 1);
    EXPECT_EQ(scope.platform.transcript(),
              QStringList(
                  {u"box 16 シール印刷|CSVタイトル行作成時にエラーが発生しました。\\r(76) パスが見つかりません。"_s}));
    EXPECT_FALSE(QDir(dir.path() + u"/NOPE"_s).exists());
}

TEST_F(CsvRun, AFileThatCannotBeCreatedShowsOneBox)
{
    // A folder standing where the file should be: the file cannot be made, whoever runs.
    ASSERT_TRUE(QDir(dir.path()).mkpath(u"TMP/シール.csv"_s));
    auto g = makeGrid(1);
    EXPECT_EQ(makeLabelRows(csvPath, *g, {}, LabelChoices{}, {}), 1);
    EXPECT_EQ(
        scope.platform.transcript(),
        QStringList({u"box 16 シール印刷|CSVタイトル行作成時にエラーが発生しました。\\r(75) パス名が無効です。"_s}));
}

TEST_F(CsvRun, ADoctorRunWithoutStaffEntriesStopsAtTheBlankLines)
{
    auto g = makeGrid(1);
    LabelChoices c;
    c.nMst = 1;
    c.nStartPos = 2;
    EXPECT_EQ(makeLabelRows(csvPath, *g, {}, c, {}), 1);
    ASSERT_EQ(scope.platform.transcript().size(), 1);
    EXPECT_TRUE(scope.platform.transcript()[0].startsWith(
        u"box 16 シール印刷|空データ作成時にエラーが発生しました。\\r(9) "_s));
}
