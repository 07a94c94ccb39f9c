// The help menu of the seal screen: the version screen over it, and the online help.

#include "base/text_codec.h"
#include "seal/seal_screen.h"
#include "support/scenario.h"

#include <gtest/gtest.h>

using sealtest::SealInstall;

namespace {

QStringList run(const SealInstall& install, const QString& body)
{
    return sealtest::runAfterStart(install, body.split(u'\n'));
}

void writeFile(const SealInstall& install, const QString& name, const QString& text)
{
    sealtest::putBytes(install.path(name), base::toCp932(text));
}

}  // namespace

TEST(SealHelpMenu, TheVersionScreenOpensOverTheSealScreenWithItsLinesAndClosesByF12)
{
    SealInstall install;
    writeFile(install, QStringLiteral("Velmio.Ver"), QStringLiteral("VERSION=5.3.0\r\nUUPDATE=2026.11\r\n"));
    const QStringList t =
        run(install, QStringLiteral("click mnVer\nshow laVer\nshow lstVer\nkey lstVer F12\nclick btnExit"));
    const qsizetype open = t.indexOf(QStringLiteral("screen open frmVer"));
    ASSERT_GE(open, 0) << t.join(u'\n').toStdString();
    EXPECT_TRUE(t.at(open + 1).startsWith(QStringLiteral("state laVer caption=シール印刷 ")));
    EXPECT_TRUE(t.at(open + 2).contains(QStringLiteral("items=[5.3.0: |2026.11: ]"))) << t.at(open + 2).toStdString();
    EXPECT_EQ(t.at(open + 3), QStringLiteral("screen close frmVer"));
    EXPECT_EQ(t.last(), QStringLiteral("end 0"));
}

TEST(SealHelpMenu, OnlineHelpOpensTheAddressOrSaysWhyNot)
{
    SealInstall install;
    QStringList t = run(install, QStringLiteral("click mnDispHelp\nclick btnExit"));
    EXPECT_TRUE(t.contains(QStringLiteral("box 16 データ参照エラー|環境ファイルの取得に失敗しました。")));

    writeFile(install, QStringLiteral("Velmio.Ver"),
              QStringLiteral("[OnlineHelp]\r\nADDRESS=https://help.example.jp/seal\r\n"));
    t = run(install, QStringLiteral("click mnDispHelp\nclick btnExit"));
    EXPECT_TRUE(t.contains(QStringLiteral("open https://help.example.jp/seal"))) << t.join(u'\n').toStdString();
}
