// The saved print settings and the footnote list in 印刷設定.ini.

#include "seal/print_settings.h"

#include "seal/seal_job.h"

#include "support/installation.h"
#include "support/scenario.h"

#include <QFile>

#include <gtest/gtest.h>

using namespace seal;
using controls::CheckBox;
using controls::MenuItem;
using controls::TextInput;
using sealtest::ProcessValues;
using sealtest::SealInstall;

namespace {

using sealtest::fileBytes;

QByteArray cp932(const char* utf8) { return base::toCp932(QString::fromUtf8(utf8)); }

class Settings : public testing::Test {
protected:
    Settings() : values(install)
    {
        chkCheck.Click = [this] { ++checkClicks; };
        chkEnter.Click = [this] { ++enterClicks; };
        txtEtc.setText(kFreeHonorificDefault);
    }

    PrintSettingControls controls() { return {ck0, ck1, chkCheck, chkEnter, hk0, hk1, txtEtc}; }
    void writeFile(const QStringList& lines) { install.writeLines(QStringLiteral("DATA/印刷設定.ini"), lines); }
    QString ini() const { return install.settingsIni(); }
    QStringList footnotes() const { return sealtest::listTexts(cbo); }

    SealInstall install;
    ProcessValues values;
    MenuItem ck0{QStringLiteral("mnCKOnOff(0)"), QString()};
    MenuItem ck1{QStringLiteral("mnCKOnOff(1)"), QString()};
    CheckBox chkCheck{QStringLiteral("chkCheck")};
    CheckBox chkEnter{QStringLiteral("chkEnter")};
    MenuItem hk0{QStringLiteral("mnHokenjaDisp(0)"), QString()};
    MenuItem hk1{QStringLiteral("mnHokenjaDisp(1)"), QString()};
    TextInput txtEtc{QStringLiteral("txtEtc"), controls::Kind::TextBox};
    TextComboBox cbo{QStringLiteral("cboKyakutyuList")};
    int checkClicks = 0;
    int enterClicks = 0;
};

}  // namespace

// --- the settings ----------------------------------------------------------------

TEST_F(Settings, MissingFileLeavesTheBuiltInStateAndTheFootnotesAndIsNotCreated)
{
    cbo.AddItem(QStringLiteral("残る"));
    loadPrintSettings(ini(), controls());
    loadFootnotes(ini(), cbo);
    EXPECT_FALSE(ck0.checked() || ck1.checked() || hk0.checked() || hk1.checked());
    EXPECT_EQ(chkCheck.value(), 0);
    EXPECT_EQ(chkEnter.value(), 0);
    EXPECT_EQ(txtEtc.text(), QStringLiteral("医事課御中"));
    EXPECT_EQ(footnotes(), QStringList{QStringLiteral("残る")});
    savePrintSettings(ini(), controls());
    EXPECT_FALSE(QFile::exists(ini()));
    EXPECT_TRUE(values.platform.transcript().isEmpty());
}

TEST_F(Settings, ReadsEveryKeyAndAlwaysEndsInTheEnterMode)
{
    writeFile({QStringLiteral("[タックシール]"), QStringLiteral("印刷対象CK=1"), QStringLiteral("チェック順=1"),
               QStringLiteral("Enter=0"), QStringLiteral("種類：保険者データ=1"),
               QStringLiteral("タックシール宛先=総務課御中")});
    loadPrintSettings(ini(), controls());
    EXPECT_TRUE(ck1.checked());
    EXPECT_FALSE(ck0.checked());
    EXPECT_EQ(chkCheck.value(), 1);
    EXPECT_EQ(checkClicks, 1);
    EXPECT_EQ(chkEnter.value(), 1);
    EXPECT_EQ(enterClicks, 1);
    EXPECT_TRUE(hk1.checked());
    EXPECT_FALSE(hk0.checked());
    EXPECT_EQ(txtEtc.text(), QStringLiteral("総務課御中"));
}

TEST_F(Settings, AbsentKeysGiveTheirDefaults)
{
    writeFile({QStringLiteral("[他のプログラム]"), QStringLiteral("印刷対象CK=1")});
    txtEtc.setText(QStringLiteral("前の値"));
    loadPrintSettings(ini(), controls());
    EXPECT_TRUE(ck0.checked());
    EXPECT_FALSE(ck1.checked());
    EXPECT_EQ(chkCheck.value(), 0);
    EXPECT_EQ(chkEnter.value(), 1);
    EXPECT_TRUE(hk0.checked());
    EXPECT_EQ(txtEtc.text(), QStringLiteral("医事課御中"));
}

TEST_F(Settings, WritesTheKeysInOrderAndLeavesOtherSectionsAlone)
{
    writeFile({QStringLiteral("[同意台帳]"), QStringLiteral("開始=2026/04")});
    ck1.setChecked(true);
    chkEnter.setValue(1);
    hk0.setChecked(true);
    txtEtc.setText(QStringLiteral("  経理課御中 "));
    savePrintSettings(ini(), controls());
    EXPECT_EQ(fileBytes(ini()),
              cp932("[同意台帳]\r\n開始=2026/04\r\n[タックシール]\r\n印刷対象CK=1\r\nチェック順=0\r\nEnter=1\r\n"
                    "種類：保険者データ=0\r\nタックシール宛先=経理課御中\r\n"));
    EXPECT_TRUE(values.platform.transcript().isEmpty());
}

TEST_F(Settings, AFileThatCannotBeWrittenStopsAtTheFirstKeyWithABareErrorBox)
{
    QFile::link(QStringLiteral("/proc/version"), ini());
    savePrintSettings(ini(), controls());
    EXPECT_EQ(values.platform.transcript(), QStringList{QStringLiteral("box 0 |Error:")});
}

// --- footnotes -------------------------------------------------------------------

TEST_F(Settings, ACountOfZeroOrNoneWritesTheFiveDefaults)
{
    for (const char* count : {"脚注数=0", "脚注数=abc", ""}) {
        writeFile({QStringLiteral("[タックシール脚注]"), QString::fromUtf8(count)});
        loadFootnotes(ini(), cbo);
        EXPECT_EQ(footnotes(), (QStringList{QStringLiteral("療養費支給申請書在中"), QStringLiteral("同意書在中"),
                                            QStringLiteral("領収書在中"), QStringLiteral("請求書在中"),
                                            QStringLiteral("経過報告書在中")}))
            << count;
        EXPECT_EQ(cbo.ListIndex(), -1);
        EXPECT_TRUE(cbo.text().isEmpty());
    }
    writeFile({QStringLiteral("[タックシール脚注]"), QStringLiteral("脚注数=0")});
    loadFootnotes(ini(), cbo);
    EXPECT_EQ(fileBytes(ini()),
              cp932("[タックシール脚注]\r\n脚注数=5\r\n脚注1=療養費支給申請書在中\r\n脚注2=同意書在中\r\n"
                    "脚注3=領収書在中\r\n脚注4=請求書在中\r\n脚注5=経過報告書在中\r\n"));
}

TEST_F(Settings, StoredFootnotesAreListedAsTheyStandEmptyOnesToo)
{
    writeFile({QStringLiteral("[タックシール脚注]"), QStringLiteral("脚注数=3"), QStringLiteral("脚注1=請求書在中"),
               QStringLiteral("脚注2=レントゲン在中")});
    loadFootnotes(ini(), cbo);
    EXPECT_EQ(footnotes(), (QStringList{QStringLiteral("請求書在中"), QStringLiteral("レントゲン在中"), QString()}));
}

TEST_F(Settings, AddingAppendsANewFootnoteAndReloadsTheList)
{
    writeFile({QStringLiteral("[タックシール脚注]"), QStringLiteral("脚注数=2"), QStringLiteral("脚注1=同意書在中  "),
               QStringLiteral("脚注2=請求書在中")});
    loadFootnotes(ini(), cbo);
    // Trailing blanks in the file do not make another footnote.
    cbo.setText(QStringLiteral("同意書在中"));
    addFootnote(ini(), cbo);
    EXPECT_EQ(cbo.ListCount(), 2);
    EXPECT_EQ(cbo.text(), QStringLiteral("同意書在中"));
    // A leading blank does, although the profile read trims it away again.
    cbo.setText(QStringLiteral(" 同意書在中"));
    addFootnote(ini(), cbo);
    EXPECT_EQ(footnotes(),
              (QStringList{QStringLiteral("同意書在中"), QStringLiteral("請求書在中"), QStringLiteral("同意書在中")}));
    EXPECT_TRUE(fileBytes(ini()).endsWith(
        cp932("脚注数=3\r\n脚注1=同意書在中  \r\n脚注2=請求書在中\r\n脚注3= 同意書在中\r\n")));
    // The reload empties the box: the new footnote has to be chosen again.
    EXPECT_TRUE(cbo.text().isEmpty());
}

TEST_F(Settings, AddingToAnEmptyCountWritesTheDefaultsFirst)
{
    writeFile({QStringLiteral("[タックシール脚注]"), QStringLiteral("脚注数=0")});
    cbo.setText(QStringLiteral("新しい脚注"));
    addFootnote(ini(), cbo);
    EXPECT_EQ(cbo.ListCount(), 5);
    EXPECT_FALSE(footnotes().contains(QStringLiteral("新しい脚注")));
}

TEST_F(Settings, AddingNothingOrToACountThatIsNoNumberChangesNothing)
{
    writeFile({QStringLiteral("[タックシール脚注]"), QStringLiteral("脚注数=2x")});
    const QByteArray before = fileBytes(ini());
    addFootnote(ini(), cbo);
    cbo.setText(QStringLiteral("脚注"));
    addFootnote(ini(), cbo);
    EXPECT_EQ(fileBytes(ini()), before);
}
