// Starting another program: the command line split the way Windows splits it, and
// where a program named by the original ("wfrfv10.exe", "C:\app\Main.exe") is found.

#include "app/program_start.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace app;

namespace {

struct SplitCase {
    const char* name;
    const char* line;
    const char* program;
    QStringList arguments;
};

class CommandLineSplit : public ::testing::TestWithParam<SplitCase> {};

TEST_P(CommandLineSplit, GivesTheProgramAndItsArguments)
{
    const SplitCase& c = GetParam();
    const ProgramCommand cmd = parseCommandLine(QString::fromUtf8(c.line));
    EXPECT_EQ(cmd.program, QString::fromUtf8(c.program));
    EXPECT_EQ(cmd.arguments, c.arguments);
}

INSTANTIATE_TEST_SUITE_P(
    WindowsRules, CommandLineSplit,
    ::testing::Values(
        SplitCase{"MenuWithMode", R"(C:\app\Main.exe 2)", R"(C:\app\Main.exe)", {"2"}},
        SplitCase{"MenuWithoutArgument", R"(C:\app\Main.exe)", R"(C:\app\Main.exe)", {}},
        // Unquoted, Windows still finds the program up to its ".exe".
        SplitCase{"ProgramInAFolderWithBlanks",
                  R"(C:\Program Files\Clinic\Main.exe 2)",
                  R"(C:\Program Files\Clinic\Main.exe)",
                  {"2"}},
        SplitCase{
            "QuotedProgram", R"("C:\Program Files\Clinic\Main.exe" 2)", R"(C:\Program Files\Clinic\Main.exe)", {"2"}},
        SplitCase{"ExeInsideAWordIsNotTheEnd", R"(tools.exec\run.exe a)", R"(tools.exec\run.exe)", {"a"}},
        SplitCase{"ProgramWithoutExe", "wfrfv10 /c TMP", "wfrfv10", {"/c", "TMP"}},
        // The engine's line as the program writes it: the path unquoted, in pieces.
        SplitCase{"UnquotedPathWithBlanks",
                  R"(wfrfv10.exe /c C:\Program Files\Clinic\TMP\WfdCom.dat)",
                  "wfrfv10.exe",
                  {"/c", R"(C:\Program)", R"(Files\Clinic\TMP\WfdCom.dat)"}},
        SplitCase{"QuotedPathStaysWhole",
                  R"(wfrfv10.exe /c "C:\Program Files\Clinic\TMP\WfdCom.dat")",
                  "wfrfv10.exe",
                  {"/c", R"(C:\Program Files\Clinic\TMP\WfdCom.dat)"}},
        SplitCase{"QuoteInsideAWord", R"(x.exe a"b c"d)", "x.exe", {"ab cd"}},
        SplitCase{"BlanksAndTabsBetween", "x.exe  a \t b  ", "x.exe", {"a", "b"}},
        SplitCase{"EmptyQuotedArgument", R"(x.exe "" b)", "x.exe", {"", "b"}},
        SplitCase{"BackslashesWithoutQuoteStay", R"(x.exe C:\a\\b\)", "x.exe", {R"(C:\a\\b\)"}},
        // 2n backslashes and a quote: n backslashes, and the quote groups.
        SplitCase{"EvenBackslashesBeforeQuote", R"(x.exe "C:\dir\\" next)", "x.exe", {R"(C:\dir\)", "next"}},
        // 2n+1 backslashes and a quote: n backslashes and a literal quote.
        SplitCase{"OddBackslashesBeforeQuote", R"(x.exe a\"b \\\"c)", "x.exe", {R"(a"b)", R"(\"c)"}},
        SplitCase{"DoubledQuoteInsideQuotes", R"(x.exe "say ""hi""")", "x.exe", {R"(say "hi")"}},
        SplitCase{"UnclosedQuoteRunsToTheEnd", R"(x.exe "open end)", "x.exe", {"open end"}},
        SplitCase{"JapaneseFolder",
                  "wfrfv10.exe /c /srv/訪問 鍼灸/TMP/WfdCom.dat",
                  "wfrfv10.exe",
                  {"/c", "/srv/訪問", "鍼灸/TMP/WfdCom.dat"}}),
    [](const auto& info) { return std::string(info.param.name); });

// An executable file, made where a test needs one.
void makeProgram(const QString& path)
{
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write("#!/bin/sh\n");
    f.close();
    ASSERT_TRUE(f.setPermissions(f.permissions() | QFileDevice::ExeOwner));
}

class ProgramLookup : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(QDir().mkpath(install()));
        ASSERT_TRUE(QDir().mkpath(beside()));
        ASSERT_TRUE(QDir().mkpath(onPath()));
        savedPath = qgetenv("PATH");
        qputenv("PATH", QFile::encodeName(onPath()));
    }
    void TearDown() override { qputenv("PATH", savedPath); }

    QString install() const { return root.filePath(QStringLiteral("Program Files/訪問 鍼灸")); }
    QString beside() const { return root.filePath(QStringLiteral("bin")); }
    QString onPath() const { return root.filePath(QStringLiteral("path")); }
    QString find(const QString& name) const { return findProgram(name, install(), beside()); }

    QTemporaryDir root;
    QByteArray savedPath;
};

TEST_F(ProgramLookup, TheInstallationFolderComesFirstThenBesideTheProgramThenThePath)
{
    for (const QString& dir : {install(), beside(), onPath()}) makeProgram(dir + QStringLiteral("/wfrfv10"));
    EXPECT_EQ(find(QStringLiteral("wfrfv10.exe")), install() + QStringLiteral("/wfrfv10"));
    QFile::remove(install() + QStringLiteral("/wfrfv10"));
    EXPECT_EQ(find(QStringLiteral("wfrfv10.exe")), beside() + QStringLiteral("/wfrfv10"));
    QFile::remove(beside() + QStringLiteral("/wfrfv10"));
    EXPECT_EQ(find(QStringLiteral("wfrfv10.exe")), onPath() + QStringLiteral("/wfrfv10"));
    QFile::remove(onPath() + QStringLiteral("/wfrfv10"));
    EXPECT_EQ(find(QStringLiteral("wfrfv10.exe")), QString());
}

TEST_F(ProgramLookup, TheNameWithExeIsFoundTooAndAPlainFileIsNot)
{
    makeProgram(beside() + QStringLiteral("/Main.exe"));
    QFile plain(install() + QStringLiteral("/Main"));
    ASSERT_TRUE(plain.open(QIODevice::WriteOnly));
    plain.close();
    EXPECT_EQ(find(QStringLiteral("Main.exe")), beside() + QStringLiteral("/Main.exe"));
}

TEST_F(ProgramLookup, AProgramGivenWithAFolderIsLookedForThereOnly)
{
    makeProgram(install() + QStringLiteral("/Main"));
    makeProgram(beside() + QStringLiteral("/Main"));
    // The original's way: the installation folder, a backslash, the name.
    EXPECT_EQ(find(install() + QStringLiteral("\\Main.exe")), install() + QStringLiteral("/Main"));
    EXPECT_EQ(find(onPath() + QStringLiteral("\\Main.exe")), QString());
    EXPECT_EQ(find(onPath() + QStringLiteral("/Main.exe")), QString());
}

TEST_F(ProgramLookup, StartingAMissingProgramSaysWhichOne)
{
    QString error;
    EXPECT_FALSE(startDetached(QStringLiteral("nosuchprog.exe /c x"), install(), &error));
    EXPECT_EQ(error, QStringLiteral("ファイルが見つかりません。(nosuchprog.exe)"));
}

}  // namespace
