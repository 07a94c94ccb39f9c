// Where an installation keeps the program's own files: beside the programs (a build, a
// Windows installation) or in PREFIX/share/sealprint, and the office's folder when no
// --app-dir names it.

#include "base/install_dirs.h"

#include "support/files.h"
#include "support/printers.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace base;

namespace {

class InstallDirs : public ::testing::Test {
protected:
    void SetUp() override
    {
        savedFontDir = qgetenv("SEAL_FONT_DIR");
        savedDataHome = qgetenv("XDG_DATA_HOME");
        qunsetenv("SEAL_FONT_DIR");
        qputenv("XDG_DATA_HOME", QFile::encodeName(path(QStringLiteral("home data"))));
        ASSERT_TRUE(QDir().mkpath(bin()));
    }
    void TearDown() override
    {
        qputenv("SEAL_FONT_DIR", savedFontDir);
        qputenv("XDG_DATA_HOME", savedDataHome);
    }
    QString path(const QString& rel) const { return root.filePath(rel); }
    QString bin() const { return path(QStringLiteral("訪問 鍼灸/bin")); }
    void makeFile(const QString& file)
    {
        ASSERT_TRUE(QDir().mkpath(QFileInfo(file).path()));
        sealtest::putBytes(file, "x");
    }

    QTemporaryDir root;
    QByteArray savedFontDir, savedDataHome;
};

TEST_F(InstallDirs, FormsAreLookedForBesideTheProgramsThenUnderTheSharedFolder)
{
    EXPECT_EQ(dataFolders(bin(), QStringLiteral("forms")),
              QStringList({bin() + QStringLiteral("/forms"), path(QStringLiteral("訪問 鍼灸/share/sealprint/forms"))}));
    EXPECT_EQ(findDataFolder(bin(), QStringLiteral("forms")), QString());
    ASSERT_TRUE(QDir().mkpath(path(QStringLiteral("訪問 鍼灸/share/sealprint/forms"))));
    EXPECT_EQ(findDataFolder(bin(), QStringLiteral("forms")), path(QStringLiteral("訪問 鍼灸/share/sealprint/forms")));
    ASSERT_TRUE(QDir().mkpath(bin() + QStringLiteral("/forms")));
    EXPECT_EQ(findDataFolder(bin(), QStringLiteral("forms")), bin() + QStringLiteral("/forms"));
    EXPECT_TRUE(dataFolders(QString(), QStringLiteral("forms")).isEmpty());
}

TEST_F(InstallDirs, AFontIsTakenFromTheNamedFolderThenTheInstalledOneBeforeTheSystem)
{
    const QString installed = path(QStringLiteral("訪問 鍼灸/share/sealprint/fonts/ipaexg.ttf"));
    makeFile(installed);
    EXPECT_EQ(findFontFile(bin(), QStringLiteral("ipaexg.ttf")), installed);
    const QString named = path(QStringLiteral("my fonts/ipaexg.ttf"));
    makeFile(named);
    qputenv("SEAL_FONT_DIR", QFile::encodeName(path(QStringLiteral("my fonts"))));
    EXPECT_EQ(findFontFile(bin(), QStringLiteral("ipaexg.ttf")), named);
    EXPECT_EQ(findFontFile(bin(), QStringLiteral("no-such-font.ttf")), QString());
}

TEST_F(InstallDirs, TheOfficeFolderIsTheProgramsOwnThenTheUsersThenTheProgramsAgain)
{
    // Neither holds the settings: the program's own folder, where their absence is told.
    EXPECT_EQ(installationFolder(bin()), bin());
    const QString office = path(QStringLiteral("home data/sealprint/office"));
    makeFile(office + QStringLiteral("/Tavrine.ini"));
    EXPECT_EQ(installationFolder(bin()), office);
    makeFile(bin() + QStringLiteral("/Tavrine.ini"));
    EXPECT_EQ(installationFolder(bin()), bin());
}

}  // namespace
