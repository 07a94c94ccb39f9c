// Profile files: reads as the Windows profile functions give them, and writes that
// change one line and keep every other byte of a file other programs share.

#include "base/ini_file.h"

#include "base/text_codec.h"
#include "support/files.h"
#include "support/printers.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using base::clsOplIniFile;
using base::csCutNull;
using base::toCp932;
using sealtest::fileBytes;
using sealtest::putBytes;

namespace {

QByteArray sj(const QString& s) { return toCp932(s); }

QString nuls(int n) { return QString(n, QChar(0)); }

class ProfileFile : public ::testing::Test {
protected:
    QString path(const QString& name = QStringLiteral("印刷設定.ini")) const { return dir.filePath(name); }

    clsOplIniFile bound(const QByteArray& content)
    {
        putBytes(path(), content);
        clsOplIniFile ini;
        EXPECT_EQ(ini.iInit(path()), 0);
        return ini;
    }

    QString value(const QByteArray& content, const QString& section, const QString& key)
    {
        return csCutNull(bound(content).csGetProfileString(section, key));
    }

    QTemporaryDir dir;
};

// A file of the kind the suite shares: other programs' sections, comments, Japanese
// text, a line without "=", a bad byte, LF-only lines and no line end at the end.
QByteArray sharedFile()
{
    return sj(QStringLiteral("; 設定ファイル（手で編集しないこと）\r\n"
                             "[Velmio]\r\n"
                             "Window=120,80\r\n"
                             "\r\n"
                             "[タックシール]\r\n"
                             "  用紙 = 1 \r\n"
                             "連続印刷\r\n"
                             "脚注=同意書在中\r\n"
                             "\r\n")) +
           QByteArray("[Other]\nbroken=\x81\x20\xFF ok\n") + sj(QStringLiteral("[ゾーン]\r\n表示=①～－髙"));
}

}  // namespace

// --- binding ------------------------------------------------------------------

TEST_F(ProfileFile, BindingReportsEmptyNameAndMissingFileInItsOwnWords)
{
    clsOplIniFile ini;
    EXPECT_EQ(ini.iInit(QString()), -1);
    EXPECT_EQ(ini.csErrorText(), QStringLiteral("Iniファイル名を指定してください。"));

    const QString missing = path(QStringLiteral("none.ini"));
    EXPECT_EQ(ini.iInit(missing), -1);
    EXPECT_EQ(ini.csErrorText(),
              QStringLiteral("指定されたIni（") + missing + QStringLiteral("）ファイルが見つかりません。"));

    putBytes(path(), "");
    EXPECT_EQ(ini.iInit(path()), 0);
}

TEST_F(ProfileFile, MissingFileReadsAsNothingAndAWriteCreatesIt)
{
    clsOplIniFile ini;
    ASSERT_EQ(ini.iInit(path()), -1);
    EXPECT_EQ(ini.csGetProfileString(QStringLiteral("タックシール"), QStringLiteral("用紙")), nuls(256));
    EXPECT_EQ(ini.nGetProfileLong(QStringLiteral("タックシール"), QStringLiteral("用紙")), 0);

    EXPECT_EQ(ini.iWriteProfileString(QStringLiteral("タックシール"), QStringLiteral("用紙"), QStringLiteral("2")), 1);
    EXPECT_EQ(fileBytes(path()), sj(QStringLiteral("[タックシール]\r\n用紙=2\r\n")));
    EXPECT_EQ(csCutNull(ini.csGetProfileString(QStringLiteral("タックシール"), QStringLiteral("用紙"))),
              QStringLiteral("2"));
}

// --- the buffer ---------------------------------------------------------------

TEST_F(ProfileFile, ValueComesBackInA256CharacterBufferPaddedWithNuls)
{
    clsOplIniFile ini = bound(sj(QStringLiteral("[s]\r\nk=abc\r\nj=髙橋\r\n")));
    EXPECT_EQ(ini.csGetProfileString(QStringLiteral("s"), QStringLiteral("k")), QStringLiteral("abc") + nuls(253));
    // The buffer counts CP932 bytes: two kanji take four of its 256.
    EXPECT_EQ(ini.csGetProfileString(QStringLiteral("s"), QStringLiteral("j")), QStringLiteral("髙橋") + nuls(252));
    EXPECT_EQ(ini.csGetProfileString(QStringLiteral("s"), QStringLiteral("absent")), nuls(256));
    EXPECT_EQ(csCutNull(ini.csGetProfileString(QStringLiteral("s"), QStringLiteral("absent"))), QString());
}

struct CutCase {
    const char* name;
    QString value;
    QString kept;
};

class ProfileBufferCut : public ProfileFile, public ::testing::WithParamInterface<CutCase> {};

TEST_P(ProfileBufferCut, LongValuesKeepAtMost255BytesOfWholeCharacters)
{
    const CutCase& c = GetParam();
    clsOplIniFile ini = bound(QByteArray("[s]\r\nk=") + sj(c.value) + "\r\n");
    const QString buffer = ini.csGetProfileString(QStringLiteral("s"), QStringLiteral("k"));
    EXPECT_EQ(csCutNull(buffer), c.kept);
    EXPECT_EQ(buffer.size() - csCutNull(buffer).size(), 256 - sj(c.kept).size()) << "NUL padding";
}

INSTANTIATE_TEST_SUITE_P(
    Lengths, ProfileBufferCut,
    ::testing::Values(CutCase{"ascii255", QString(255, u'a'), QString(255, u'a')},
                      CutCase{"ascii256", QString(256, u'a'), QString(255, u'a')},
                      CutCase{"kanji128", QString(128, u'漢'), QString(127, u'漢')},
                      // 254 ASCII bytes and a kanji: the kanji would need bytes 255 and 256.
                      CutCase{"kanjiAcrossTheEnd", QString(254, u'a') + QStringLiteral("漢"), QString(254, u'a')},
                      CutCase{"halfWidthKanaOneByteEach", QString(256, QChar(0xFF76)), QString(255, QChar(0xFF76))}),
    [](const auto& info) { return std::string(info.param.name); });

// --- names and values ---------------------------------------------------------

struct LookupCase {
    const char* name;
    QByteArray file;
    QString section;
    QString key;
    QString expected;  // after csCutNull
};

class ProfileLookup : public ProfileFile, public ::testing::WithParamInterface<LookupCase> {};

TEST_P(ProfileLookup, FindsValuesAsTheSystemDoes)
{
    const LookupCase& c = GetParam();
    EXPECT_EQ(value(c.file, c.section, c.key), c.expected);
}

INSTANTIATE_TEST_SUITE_P(
    Rules, ProfileLookup,
    ::testing::Values(LookupCase{"sectionAndKeyIgnoreAsciiCase", "[Sort]\r\nOrder=1\r\n", "sORT", "ORDER", "1"},
                      LookupCase{"blanksAroundNamesAndValueAreTrimmed", "[ s ]\r\n  key  =  v a  \r\n", "s", "key",
                                 "v a"},
                      LookupCase{"blanksAroundTheCallersNamesAreIgnored", "[s]\r\nkey=v\r\n", " s ", " key\t", "v"},
                      LookupCase{"doubleQuotesAreStripped", "[s]\r\nk=\" quoted \"\r\n", "s", "k", " quoted "},
                      LookupCase{"singleQuotesAreStripped", "[s]\r\nk='x'\r\n", "s", "k", "x"},
                      LookupCase{"unmatchedQuotesStay", "[s]\r\nk=\"x'\r\n", "s", "k", "\"x'"},
                      LookupCase{"onlyTheFirstEqualsSplits", "[s]\r\nk=a=b\r\n", "s", "k", "a=b"},
                      LookupCase{"firstOfTwoKeysWins", "[s]\r\nk=1\r\nk=2\r\n", "s", "k", "1"},
                      LookupCase{"firstOfTwoSectionsWins", "[s]\r\nj=1\r\n[s]\r\nk=2\r\n", "s", "k", ""},
                      LookupCase{"keyOfAnotherSectionIsNotFound", "[a]\r\nk=1\r\n[b]\r\nj=2\r\n", "b", "k", ""},
                      LookupCase{"commentIsNoKey", "[s]\r\n;k=1\r\n", "s", ";k", ""},
                      LookupCase{"lineWithoutEqualsIsAnEmptyKey", "[s]\r\nk\r\nj=2\r\n", "s", "j", "2"},
                      LookupCase{"lastLineWithoutLineEnd", "[s]\r\nk=end", "s", "k", "end"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(ProfileFile, JapaneseNamesCompareExactlyAndSurviveTrailBytesThatLookLikeBrackets)
{
    // "ゾーン" is 83 5D 81 5B 83 93 in CP932: its bytes hold both "]" and "[".
    // "表" and "ソ" end in the byte of "\".
    const QByteArray file = sj(QStringLiteral("[ゾーン]\r\n表ソ=一\r\n[ＡＢ]\r\nｶﾞ=半角\r\n"));
    EXPECT_EQ(value(file, QStringLiteral("ゾーン"), QStringLiteral("表ソ")), QStringLiteral("一"));
    EXPECT_EQ(value(file, QStringLiteral("ＡＢ"), QStringLiteral("ｶﾞ")), QStringLiteral("半角"));
    // Full-width letters are not folded, and half-width kana are not full-width kana.
    EXPECT_EQ(value(file, QStringLiteral("ａｂ"), QStringLiteral("ｶﾞ")), QString());
    EXPECT_EQ(value(file, QStringLiteral("ＡＢ"), QStringLiteral("ガ")), QString());
}

TEST_F(ProfileFile, BadBytesInAValueShowAsSubstitutesWithoutStoppingTheRead)
{
    clsOplIniFile ini = bound(QByteArray("[s]\r\nk=a\xFF") + "b\r\nj=2\r\n");
    EXPECT_EQ(csCutNull(ini.csGetProfileString(QStringLiteral("s"), QStringLiteral("k"))),
              QStringLiteral("a") + QChar(0xFFFD) + QStringLiteral("b"));
    EXPECT_EQ(ini.nGetProfileLong(QStringLiteral("s"), QStringLiteral("j")), 2);
}

struct LongCase {
    const char* name;
    QByteArray value;
    qint32 expected;
};

class ProfileLong : public ProfileFile, public ::testing::WithParamInterface<LongCase> {};

TEST_P(ProfileLong, TakesTheLeadingDecimalNumber)
{
    const LongCase& c = GetParam();
    EXPECT_EQ(bound("[s]\r\nk=" + c.value + "\r\n").nGetProfileLong(QStringLiteral("s"), QStringLiteral("k")),
              c.expected);
}

INSTANTIATE_TEST_SUITE_P(Values, ProfileLong,
                         ::testing::Values(LongCase{"trailingText", "12abc", 12}, LongCase{"notANumber", "abc", 0},
                                           LongCase{"negative", "-5", -5}, LongCase{"blanksAround", "  9  ", 9},
                                           LongCase{"quoted", "\"33\"", 33},
                                           LongCase{"wrapsLikeTheSystem", "4294967295", -1}),
                         [](const auto& info) { return std::string(info.param.name); });

// --- writes keep every other byte ---------------------------------------------

TEST_F(ProfileFile, ChangingAValueRewritesThatLineOnly)
{
    const QByteArray before = sharedFile();
    clsOplIniFile ini = bound(before);
    ASSERT_EQ(ini.iWriteProfileString(QStringLiteral("タックシール"), QStringLiteral("用紙"), QStringLiteral("3")), 1);

    QByteArray expected = before;
    const QByteArray oldLine = sj(QStringLiteral("  用紙 = 1 "));
    expected.replace(expected.indexOf(oldLine), oldLine.size(), sj(QStringLiteral("  用紙=3")));
    EXPECT_EQ(fileBytes(path()), expected);
}

TEST_F(ProfileFile, KeyNamesMatchWithoutCaseAndKeepTheirSpellingInTheFile)
{
    clsOplIniFile ini = bound("[Print]\r\nSortOrder=0\r\n");
    ASSERT_EQ(ini.iWriteProfileString(QStringLiteral("PRINT"), QStringLiteral("sortorder"), QStringLiteral("1")), 1);
    EXPECT_EQ(fileBytes(path()), QByteArray("[Print]\r\nSortOrder=1\r\n"));
}

TEST_F(ProfileFile, ANewKeyGoesAfterTheLastLineOfItsSection)
{
    const QByteArray before = sharedFile();
    clsOplIniFile ini = bound(before);
    ASSERT_EQ(ini.iWriteProfileString(QStringLiteral("タックシール"), QStringLiteral("敬称"), QStringLiteral("様")), 1);

    QByteArray expected = before;
    const QByteArray anchor = sj(QStringLiteral("脚注=同意書在中\r\n"));
    expected.insert(expected.indexOf(anchor) + anchor.size(), sj(QStringLiteral("敬称=様\r\n")));
    EXPECT_EQ(fileBytes(path()), expected);
}

TEST_F(ProfileFile, ANewKeyInTheLastSectionOfAFileWithoutFinalLineEnd)
{
    const QByteArray before = sharedFile();
    clsOplIniFile ini = bound(before);
    ASSERT_EQ(ini.iWriteProfileString(QStringLiteral("ゾーン"), QStringLiteral("幅"), QStringLiteral("10")), 1);
    EXPECT_EQ(fileBytes(path()), before + "\r\n" + sj(QStringLiteral("幅=10\r\n")));
}

TEST_F(ProfileFile, ANewSectionIsAppended)
{
    const QByteArray before = sharedFile();
    clsOplIniFile ini = bound(before);
    ASSERT_EQ(ini.iWriteProfileString(QStringLiteral("同意台帳"), QStringLiteral("ソート順"), QStringLiteral("1")), 1);
    EXPECT_EQ(fileBytes(path()), before + "\r\n" + sj(QStringLiteral("[同意台帳]\r\nソート順=1\r\n")));
}

TEST_F(ProfileFile, ALineWithBadBytesIsWrittenBackUntouched)
{
    const QByteArray before = sharedFile();
    clsOplIniFile ini = bound(before);
    ASSERT_EQ(ini.iWriteProfileString(QStringLiteral("Other"), QStringLiteral("broken"), QStringLiteral("fixed")), 1);
    QByteArray expected = before;
    expected.replace(QByteArray("broken=\x81\x20\xFF ok"), QByteArray("broken=fixed"));
    EXPECT_EQ(fileBytes(path()), expected);

    // Writing elsewhere leaves the bad bytes exactly where they were.
    putBytes(path(), before);
    ASSERT_EQ(ini.iWriteProfileString(QStringLiteral("Velmio"), QStringLiteral("Window"), QStringLiteral("1,1")), 1);
    EXPECT_TRUE(fileBytes(path()).contains(QByteArray("broken=\x81\x20\xFF ok\n")));
}

TEST_F(ProfileFile, OnlyTheFirstOfTwoEqualKeysChanges)
{
    clsOplIniFile ini = bound("[s]\r\nk=1\r\nk=2\r\n");
    ASSERT_EQ(ini.iWriteProfileString(QStringLiteral("s"), QStringLiteral("k"), QStringLiteral("9")), 1);
    EXPECT_EQ(fileBytes(path()), QByteArray("[s]\r\nk=9\r\nk=2\r\n"));
}

TEST_F(ProfileFile, JapaneseValuesRoundTripThroughCp932)
{
    clsOplIniFile ini = bound("");
    const QStringList values = {QStringLiteral("同意書在中"), QStringLiteral("医事課御中"), QStringLiteral("①～－髙"),
                                QStringLiteral("ｶﾞｲﾄﾞ"), QStringLiteral("東京都千代田区１－２－３")};
    for (int i = 0; i < values.size(); ++i)
        ASSERT_EQ(ini.iWriteProfileString(QStringLiteral("タックシール脚注"), QString::number(i), values[i]), 1);
    for (int i = 0; i < values.size(); ++i)
        EXPECT_EQ(csCutNull(ini.csGetProfileString(QStringLiteral("タックシール脚注"), QString::number(i))), values[i]);
    EXPECT_EQ(fileBytes(path()).left(18), sj(QStringLiteral("[タックシール脚注]")));
}

TEST_F(ProfileFile, AWriteLeavesNoTemporaryFilesAndKeepsTheFileMode)
{
    clsOplIniFile ini = bound("[s]\r\nk=1\r\n");
    QFile::setPermissions(path(), QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ReadGroup);
    ASSERT_EQ(ini.iWriteProfileString(QStringLiteral("s"), QStringLiteral("k"), QStringLiteral("2")), 1);
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files), QStringList{QStringLiteral("印刷設定.ini")});
    EXPECT_EQ(QFile::permissions(path()) & (QFileDevice::ReadGroup | QFileDevice::ReadOther | QFileDevice::WriteGroup),
              QFileDevice::ReadGroup);
}

// --- writes that cannot happen ------------------------------------------------

TEST_F(ProfileFile, AWriteWhereNoFileCanBeMadeFailsAndCreatesNothing)
{
    clsOplIniFile ini;
    const QString target = dir.filePath(QStringLiteral("nofolder/印刷設定.ini"));
    ini.iInit(target);
    EXPECT_EQ(ini.iWriteProfileString(QStringLiteral("s"), QStringLiteral("k"), QStringLiteral("v")), 0);
    EXPECT_FALSE(QFile::exists(target));
    EXPECT_FALSE(QDir(dir.filePath(QStringLiteral("nofolder"))).exists());

    // /proc takes no new files, whoever asks.
    ini.iInit(QStringLiteral("/proc/sealprint-settings.ini"));
    EXPECT_EQ(ini.iWriteProfileString(QStringLiteral("s"), QStringLiteral("k"), QStringLiteral("v")), 0);
}

TEST_F(ProfileFile, ReadOnlyFolderOrFileFailsTheWriteAndKeepsTheFile)
{
    if (sealtest::rightsDoNotBind()) GTEST_SKIP() << "file modes do not bind the superuser";
    const QByteArray before = sharedFile();
    clsOplIniFile ini = bound(before);
    QFile::setPermissions(dir.path(), QFileDevice::ReadOwner | QFileDevice::ExeOwner);
    const short r =
        ini.iWriteProfileString(QStringLiteral("タックシール"), QStringLiteral("用紙"), QStringLiteral("3"));
    QFile::setPermissions(dir.path(), QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    EXPECT_EQ(r, 0);
    EXPECT_EQ(fileBytes(path()), before);

    // A read-only file in a writable folder is not replaced either.
    QFile::setPermissions(path(), QFileDevice::ReadOwner);
    EXPECT_EQ(ini.iWriteProfileString(QStringLiteral("タックシール"), QStringLiteral("用紙"), QStringLiteral("3")), 0);
    EXPECT_EQ(fileBytes(path()), before);
}

// --- csCutNull ----------------------------------------------------------------

TEST(CutNull, CutsAtTheFirstNulOrKeepsTheWholeText)
{
    EXPECT_EQ(csCutNull(QStringLiteral("abc")), QStringLiteral("abc"));
    EXPECT_EQ(csCutNull(QStringLiteral("ab") + nuls(3) + QStringLiteral("cd")), QStringLiteral("ab"));
    EXPECT_EQ(csCutNull(nuls(256)), QString());
    EXPECT_EQ(csCutNull(QString()), QString());
    EXPECT_EQ(csCutNull(QStringLiteral(" 様 ") + nuls(1)), QStringLiteral(" 様 "));
}
