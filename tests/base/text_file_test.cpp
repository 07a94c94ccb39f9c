// Whole text files in CP932 with CR LF, atomic replacement, and the private mode of
// working files.

#include "base/text_file.h"

#include "base/files.h"
#include "base/text_codec.h"
#include "base/vb_error.h"
#include "support/files.h"
#include "support/printers.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using namespace base;
using sealtest::fileBytes;
using sealtest::putBytes;

namespace {

class TextFile : public ::testing::Test {
protected:
    QString path(const QString& name = QStringLiteral("シール.csv")) const { return dir.filePath(name); }
    QTemporaryDir dir;
};

}  // namespace

TEST_F(TextFile, ReadsCp932LinesWhateverTheLineEnds)
{
    putBytes(path(), toCp932(QStringLiteral("郵便番号,住所\r\n123-4567,東京都\nLF行\rCR行\r\n最後")));
    const TextFileRead r = readTextFile(path());
    ASSERT_TRUE(r.ok) << r.sErrMsg.toStdString();
    EXPECT_FALSE(r.hadInvalid);
    EXPECT_EQ(r.lines, (QStringList{QStringLiteral("郵便番号,住所"), QStringLiteral("123-4567,東京都"),
                                    QStringLiteral("LF行"), QStringLiteral("CR行"), QStringLiteral("最後")}));
}

TEST_F(TextFile, BadBytesBecomeVisibleSubstitutesAndTheRestIsRead)
{
    // A lone lead byte before a line end, a byte that can never start a character,
    // and a lead byte with an impossible trail byte.
    putBytes(path(), QByteArray("a\x81\r\n") + "\xFF" + "b\r\n" + "\x81\x20" + "c\r\n" + toCp932(QStringLiteral("髙")));
    const TextFileRead r = readTextFile(path());
    ASSERT_TRUE(r.ok);
    EXPECT_TRUE(r.hadInvalid);
    const QChar bad(0xFFFD);
    EXPECT_EQ(r.lines, (QStringList{QStringLiteral("a") + bad, QString(bad) + QStringLiteral("b"),
                                    QString(bad) + QStringLiteral(" c"), QStringLiteral("髙")}));
}

TEST_F(TextFile, MissingFileAndFolderAreClearFailures)
{
    const TextFileRead missing = readTextFile(path(QStringLiteral("none.csv")));
    EXPECT_FALSE(missing.ok);
    EXPECT_EQ(missing.errNumber, 53);
    EXPECT_TRUE(missing.sErrMsg.contains(QStringLiteral("none.csv")));
    EXPECT_TRUE(missing.lines.isEmpty());

    const TextFileRead folder = readTextFile(dir.path());
    EXPECT_FALSE(folder.ok);
    EXPECT_EQ(folder.errNumber, 75);

    EXPECT_FALSE(readTextFile(QString()).ok);
}

TEST_F(TextFile, UnreadableFileIsAFailureNotAnEmptyFile)
{
    if (sealtest::rightsDoNotBind()) GTEST_SKIP() << "file modes do not bind the superuser";
    putBytes(path(), "secret\r\n");
    QFile::setPermissions(path(), QFileDevice::WriteOwner);
    const TextFileRead r = readTextFile(path());
    EXPECT_FALSE(r.ok);
    EXPECT_EQ(r.errNumber, 75);
}

TEST_F(TextFile, WritesCp932WithCrLfAfterEveryLine)
{
    const FileWrite w =
        writeTextFile(path(), {QStringLiteral("\"氏名\",\"住所\""), QString(), QStringLiteral("山田 太郎,①～－")});
    ASSERT_TRUE(w.ok);
    EXPECT_FALSE(w.lossy);
    EXPECT_EQ(fileBytes(path()), QByteArray("\"\x8e\x81\x96\xbc\",\"\x8f\x5a\x8f\x8a\"\r\n\r\n"
                                            "\x8e\x52\x93\x63 \x91\xbe\x98\x59,\x87\x40\x81\x60\x81\x7c\r\n"));
}

TEST_F(TextFile, CharactersWithoutACp932FormAreWrittenAsQuestionMarksAndReported)
{
    const FileWrite w = writeTextFile(path(), {QStringLiteral("a😀b")});
    ASSERT_TRUE(w.ok);
    EXPECT_TRUE(w.lossy);
    EXPECT_EQ(fileBytes(path()), QByteArray("a?b\r\n"));
}

TEST_F(TextFile, AWriteReplacesTheWholeFile)
{
    putBytes(path(), "a much longer old content\r\nsecond line\r\n");
    ASSERT_TRUE(writeTextFile(path(), {QStringLiteral("new")}).ok);
    EXPECT_EQ(fileBytes(path()), QByteArray("new\r\n"));
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden), QStringList{QStringLiteral("シール.csv")});
}

TEST_F(TextFile, WorkingFilesAreTheOwnersAlone)
{
    ASSERT_TRUE(writeTextFile(path(), {QStringLiteral("x")}, FileAccess::OwnerOnly).ok);
    const QFileDevice::Permissions others = QFileDevice::ReadGroup | QFileDevice::WriteGroup | QFileDevice::ExeGroup |
                                            QFileDevice::ReadOther | QFileDevice::WriteOther | QFileDevice::ExeOther;
    EXPECT_EQ(QFile::permissions(path()) & others, QFileDevice::Permissions());
    EXPECT_TRUE(QFile::permissions(path()).testFlags(QFileDevice::ReadOwner | QFileDevice::WriteOwner));

    // A working file left readable by an earlier version is made private on the next run.
    QFile::setPermissions(path(), QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ReadOther);
    ASSERT_TRUE(writeTextFile(path(), {QStringLiteral("y")}, FileAccess::OwnerOnly).ok);
    EXPECT_FALSE(QFile::permissions(path()) & QFileDevice::ReadOther);
}

TEST_F(TextFile, WritesThatCannotHappenFailWithoutTouchingAnything)
{
    const FileWrite noFolder = writeTextFile(dir.filePath(QStringLiteral("TMP/x.csv")), {QStringLiteral("x")});
    EXPECT_FALSE(noFolder.ok);
    EXPECT_EQ(noFolder.errNumber, 76);
    EXPECT_FALSE(QDir(dir.filePath(QStringLiteral("TMP"))).exists());

    const FileWrite onFolder = writeTextFile(dir.path(), {QStringLiteral("x")});
    EXPECT_FALSE(onFolder.ok);
    EXPECT_TRUE(QFileInfo(dir.path()).isDir());

    EXPECT_FALSE(writeTextFile(QStringLiteral("/proc/sealprint.csv"), {QStringLiteral("x")}).ok);
}

TEST_F(TextFile, AReadOnlyFileKeepsItsContent)
{
    if (sealtest::rightsDoNotBind()) GTEST_SKIP() << "file modes do not bind the superuser";
    putBytes(path(), "old\r\n");
    QFile::setPermissions(path(), QFileDevice::ReadOwner);
    const FileWrite w = writeTextFile(path(), {QStringLiteral("new")});
    EXPECT_FALSE(w.ok);
    EXPECT_EQ(w.errNumber, 70);
    EXPECT_EQ(fileBytes(path()), QByteArray("old\r\n"));
}

// --- the file-system questions -------------------------------------------------

TEST_F(TextFile, FileExistsFindsFilesOnlyAndUnderstandsWildcards)
{
    putBytes(path(QStringLiteral("MGNT.CID")), "");  // an empty marker counts
    QDir(dir.path()).mkdir(QStringLiteral("TMP"));
    EXPECT_TRUE(bFileExists(path(QStringLiteral("MGNT.CID"))));
    EXPECT_TRUE(bFileExists(dir.path() + QStringLiteral("\\MGNT.CID")));
    EXPECT_FALSE(bFileExists(path(QStringLiteral("FRAS.CID"))));
    EXPECT_FALSE(bFileExists(path(QStringLiteral("TMP"))));
    EXPECT_TRUE(bFileExists(path(QStringLiteral("*.CID"))));
    EXPECT_TRUE(bFileExists(path(QStringLiteral("MGN?.CID"))));
    EXPECT_FALSE(bFileExists(path(QStringLiteral("*.csv"))));
    EXPECT_FALSE(bFileExists(QString()));
}

TEST_F(TextFile, ChangingToAFolderReturnsItAndAMissingOneRaises76)
{
    const QString before = QDir::currentPath();
    QDir(dir.path()).mkdir(QStringLiteral("app"));
    const QString result = csChangeToDir(dir.filePath(QStringLiteral("app")));
    EXPECT_EQ(QDir(result).canonicalPath(), QDir(dir.filePath(QStringLiteral("app"))).canonicalPath());
    EXPECT_EQ(QDir::currentPath(), QDir(result).absolutePath());
    try {
        csChangeToDir(dir.filePath(QStringLiteral("none")));
        ADD_FAILURE() << "no fault raised";
    } catch (const VbError& e) {
        EXPECT_EQ(e.number(), 76);
    }
    QDir::setCurrent(before);
}
