// The print step: which form each sheet and envelope gets, and the script and program
// start that a print and a preview leave behind.

#include "extract/print_step.h"

#include "support/globals_scope.h"

#include "support/label_grid.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace extract;
using namespace sealtest;
using namespace Qt::StringLiterals;

struct FormCase {
    bool envelope;
    int sealType;
    int hutou;
    const char16_t* wfd;
    const char16_t* title;
    const char16_t* dataFile;
};

class FormChoiceTest : public ::testing::TestWithParam<FormCase> {};

TEST_P(FormChoiceTest, FormTitleAndDataByModeAndRow)
{
    const FormCase& p = GetParam();
    const SealForm f = sealForm(p.envelope, p.sealType, p.hutou);
    EXPECT_EQ(f.wfdFile, QString::fromUtf16(p.wfd));
    EXPECT_EQ(f.title, QString::fromUtf16(p.title));
    EXPECT_EQ(f.dataName, QString::fromUtf16(p.title));
    EXPECT_EQ(f.dataFile, QString::fromUtf16(p.dataFile));
}

INSTANTIATE_TEST_SUITE_P(Forms, FormChoiceTest,
                         ::testing::Values(FormCase{false, 0, 2, u"シール.wfd", u"シール", u"シール.csv"},
                                           FormCase{false, 1, 0, u"シール_2X6.wfd", u"シール", u"シール.csv"},
                                           FormCase{false, 2, 0, u"ビーコン用シール30M.wfd", u"シール", u"シール.csv"},
                                           FormCase{true, 2, 0, u"封筒印刷長3.wfd", u"封筒", u"封筒印刷.csv"},
                                           FormCase{true, 0, 1, u"封筒印刷角2_2.wfd", u"封筒", u"封筒印刷.csv"},
                                           FormCase{true, 0, 2, u"封筒印刷長3_横.wfd", u"封筒", u"封筒印刷.csv"},
                                           FormCase{true, 0, 3, u"封筒印刷長3_横窓.wfd", u"封筒", u"封筒印刷.csv"},
                                           FormCase{true, 0, -1, u"封筒印刷角2_2.wfd", u"封筒", u"封筒印刷.csv"}),
                         [](const ::testing::TestParamInfo<FormCase>& info) {
                             return std::string(info.param.envelope ? "Envelope" : "Sheet") +
                                    std::to_string(info.param.envelope ? info.param.hutou + 1 : info.param.sealType);
                         });

namespace {

class PrintStepTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(dir.isValid());
        app::gsAppPath = dir.path();
        writeCrlf(dir.path() + u"/Tavrine.ini"_s, {u"SYSTEM_SYS=\\SYS"_s, u"SYSTEM_TMP=\\TMP"_s});
        ASSERT_TRUE(QDir(dir.path()).mkdir(u"TMP"_s));
        sys = dir.path() + u"\\SYS\\"_s;
        tmp = dir.path() + u"\\TMP\\"_s;
    }

    QByteArray script() const { return fileBytes(dir.path() + u"/TMP/WfdCom.dat"_s); }

    QTemporaryDir dir;
    sealtest::GlobalsScope globals;
    PlatformScope scope;
    QString sys;
    QString tmp;
};

}  // namespace

TEST_F(PrintStepTest, APreviewOpensTheSecondViewerMaximised)
{
    const PrintSealResult r = printSeal(1, sealForm(true, 0, 0), sys);
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(script(),
              crlf({u"FileName,\""_s + sys + u"封筒印刷長3.wfd\""_s, u"Title,\"封筒\""_s,
                    u"SetDataText,\"封筒\",\""_s + tmp + u"封筒印刷.csv\""_s, u"PrintPaper, A4"_s, u"ShowWindow,2"_s}));
    EXPECT_EQ(scope.platform.transcript(), QStringList({u"run 3 WrVb6Viewer.exe /c ./TMP\\WfdCom.dat"_s}));
}
