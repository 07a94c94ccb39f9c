// The version screen and the online help, on real files in a temporary program folder.

#include "dialogs/frm_ver.h"
#include "dialogs/online_help.h"
#include "support/installation.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace dialogs;

namespace {

class HelpFiles : public ::testing::Test {
protected:
    void write(const QString& name, const QString& text)
    {
        sealtest::putBytes(dir.filePath(name), base::toCp932(text));
    }
    QStringList versionLines()
    {
        frmVer v(values.platform);
        v.nVerKind = 7;
        v.laVer.setCaption(QStringLiteral("シール印刷"));
        v.load();
        QStringList lines;
        for (int i = 0; i < v.lstVer.ListCount(); ++i) lines << v.lstVer.List(i);
        return lines;
    }

    QTemporaryDir dir;
    sealtest::ProcessValues values{dir.path()};
    controls::RecordingPlatform& platform = values.platform;
};

}  // namespace

TEST_F(HelpFiles, VersionLinesAreTheValueAColonAndABlank)
{
    write(QStringLiteral("Velmio.Ver"),
          QStringLiteral("[Velmio]\r\nversion=5.2.1,build 77\r\nxxUUPDATE=2026.10 "
                         "修正\r\nUUPDATE=2026.11\r\n[OnlineHelp]\r\nADDRESS=https://help.example.jp/\r\n"));
    EXPECT_EQ(versionLines(), (QStringList{QStringLiteral("5.2.1: "), QStringLiteral("2026.11: ")}));
}

TEST_F(HelpFiles, AVersionFileWithoutTheKeysOrWithoutTheFileGivesAnEmptyList)
{
    EXPECT_TRUE(versionLines().isEmpty());
    write(QStringLiteral("Velmio.Ver"), QStringLiteral("[OnlineHelp]\r\nADDRESS=http://x\r\n"));
    EXPECT_TRUE(versionLines().isEmpty());
    write(QStringLiteral("Velmio.Ver"), QStringLiteral("VERSION=6.0\r\n"));
    EXPECT_EQ(versionLines(), QStringList{QStringLiteral("6.0: ")});
    EXPECT_TRUE(platform.transcript().isEmpty());
}

TEST_F(HelpFiles, TheAccountGoesOutReversedAndTheQueryIsNotAppendedTwice)
{
    write(QStringLiteral("Velmio.Ver"), QStringLiteral("[OnlineHelp]\r\nADDRESS= https://help.example.jp/velmio \r\n"));
    write(QStringLiteral("EmapUser.ini"), QStringLiteral("ZENRIN_USER=abc123\r\nZENRIN_PWD=pw9,ZENRIN_PWD=secret\r\n"));
    vDispOnlineHelp(1);
    vDispOnlineHelp(1);
    EXPECT_EQ(platform.transcript(),
              (QStringList{QStringLiteral("open https://help.example.jp/velmio?zi=321cba&zp=terces&lk=1"),
                           QStringLiteral("open https://help.example.jp/velmio?zi=321cba&zp=terces&lk=1")}));
}

TEST_F(HelpFiles, HelpWithoutAccountOrWithHalfAnAccount)
{
    write(QStringLiteral("Velmio.Ver"), QStringLiteral("[OnlineHelp]\r\nADDRESS=http://help.example.jp\r\n"));
    vDispOnlineHelp(1);
    write(QStringLiteral("EmapUser.ini"), QStringLiteral("ZENRIN_USER=yamada\r\n"));
    vDispOnlineHelp(0);
    EXPECT_EQ(platform.transcript(), (QStringList{QStringLiteral("open http://help.example.jp"),
                                                  QStringLiteral("open http://help.example.jp?zi=adamay&zp=&lk=1")}));
}

TEST_F(HelpFiles, MissingFileAndUnusableAddressHaveTheirBoxes)
{
    vDispOnlineHelp(1);
    write(QStringLiteral("Velmio.Ver"), QStringLiteral("[OnlineHelp]\r\nADDRESS=HTTP://HELP.EXAMPLE.JP\r\n"));
    vDispOnlineHelp(1);
    EXPECT_EQ(platform.transcript(),
              (QStringList{QStringLiteral("box 16 データ参照エラー|環境ファイルの取得に失敗しました。"),
                           QStringLiteral("box 48 機能制限中|オンラインヘルプは現在ご利用いただけません。")}));
}
