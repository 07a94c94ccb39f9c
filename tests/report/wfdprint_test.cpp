// The in-process document driver: which members of the document object each operation
// reaches and with what, the fault texts it keeps, and the object that cannot be made
// when no engine is registered.

#include "report/cls_wfdprint.h"

#include "base/vb_error.h"
#include "support/printers.h"

#include <gtest/gtest.h>

#include <QStringList>

using report::cls_WfdPrint;

namespace {

// A document object that writes down each member reached, and can be told to fail
// one of them the way an automation object fails.
class CallLog : public report::WfdDocument {
public:
    CallLog(QStringList& log, QString failing) : log_(log), failing_(std::move(failing)) {}

    void setTitle(const QString& title) override { note(QStringLiteral("Title=") + title); }
    void SetDataText(const QString& name, const QString& file, const QString& sep, const QString& quote,
                     int16_t noTitle) override
    {
        note(QStringLiteral("SetDataText(%1,%2,%3,%4,%5)").arg(name, file, sep, quote).arg(noTitle));
    }
    void setWindowStyle(int16_t style) override { note(QStringLiteral("WindowStyle=") + QString::number(style)); }
    void Open(const QString& form) override { note(QStringLiteral("Open(") + form + u')'); }
    void setShowWindow(int16_t show) override { note(QStringLiteral("ShowWindow=") + QString::number(show)); }
    void PrintOutBk(const QString& printer, int16_t from, int16_t to) override
    {
        note(QStringLiteral("PrintOutBk(%1,%2,%3)").arg(printer).arg(from).arg(to));
    }
    void PrintOutFromDialog() override { note(QStringLiteral("PrintOutFromDialog()")); }

private:
    void note(const QString& call)
    {
        log_ << call;
        if (!failing_.isEmpty() && call.startsWith(failing_))
            throw base::VbError(-2147467259, QStringLiteral("印刷エンジンが拒みました。"));
    }

    QStringList& log_;
    QString failing_;
};

class WfdPrintTest : public ::testing::Test {
protected:
    void TearDown() override { report::registerWfdDocument({}); }

    // Registers a logging document; failing names the member that faults.
    void registerLog(const QString& failing = {})
    {
        report::registerWfdDocument([this, failing] { return std::make_unique<CallLog>(log, failing); });
    }

    QStringList log;
};

TEST_F(WfdPrintTest, WithoutARegisteredEngineInitFailsAndTheRestOnlyRecordTheirFault)
{
    cls_WfdPrint p;
    EXPECT_EQ(p.iInit(QStringLiteral("シール")), -1);
    EXPECT_EQ(p.sErrMsg, QStringLiteral("(429)ActiveX コンポーネントはオブジェクトを作成できません。"));
    EXPECT_EQ(p.objDocument(), nullptr);

    // Without the object every later call is a fault of its own; the setters still say 0.
    p.sErrMsg.clear();
    EXPECT_EQ(p.iSetDataText(QStringLiteral("シール"), QStringLiteral("/tmp/シール.csv")), 0);
    EXPECT_EQ(p.sErrMsg, QStringLiteral("(91)オブジェクト変数または With ブロック変数が設定されていません。"));
    p.sErrMsg.clear();
    p.iOpen(QStringLiteral("/forms/シール.wfd"));
    EXPECT_FALSE(p.sErrMsg.isEmpty());
    p.sErrMsg.clear();
    p.iPreview();
    EXPECT_TRUE(p.sErrMsg.startsWith(QStringLiteral("(91)")));
}

TEST_F(WfdPrintTest, OnlyTheRegisteredNameCanBeCreated)
{
    registerLog();
    EXPECT_NE(report::createWfdDocument(QStringLiteral("WFRFV.Document.1")), nullptr);
    EXPECT_THROW(report::createWfdDocument(QStringLiteral("wfrfv.Document.2")), base::VbError);
    report::registerWfdDocument([] { return std::unique_ptr<report::WfdDocument>(); });
    EXPECT_THROW(report::createWfdDocument(report::kWfdDocumentProgId), base::VbError);
}

struct Job {
    const char* name;
    const char* title;
    bool noTitle;
    void (cls_WfdPrint::*output)();
    QStringList calls;
};

class WfdPrintJobTest : public WfdPrintTest, public ::testing::WithParamInterface<Job> {};

TEST_P(WfdPrintJobTest, EachOperationReachesItsMembers)
{
    registerLog();
    const Job& job = GetParam();
    cls_WfdPrint p;
    ASSERT_EQ(p.iInit(QString::fromUtf8(job.title)), 0);
    const QString name = QStringLiteral("シール");
    const QString file = QStringLiteral("C:\\Velmio\\TMP\\シール.csv");
    EXPECT_EQ(job.noTitle ? p.iSetDataTextNoTitle(name, file) : p.iSetDataText(name, file), 0);
    p.iOpen(QStringLiteral("C:\\Velmio\\Form\\シール.wfd"));
    (p.*job.output)();
    EXPECT_EQ(log, job.calls);
    EXPECT_EQ(p.sErrMsg, QString());
}

const QString kData = QStringLiteral("SetDataText(シール,C:\\Velmio\\TMP\\シール.csv,,,0)");
const QString kDataNoTitle = QStringLiteral("SetDataText(シール,C:\\Velmio\\TMP\\シール.csv,,,1)");
const QString kOpen = QStringLiteral("Open(C:\\Velmio\\Form\\シール.wfd)");
const QString kStyle = QStringLiteral("WindowStyle=4");

INSTANTIATE_TEST_SUITE_P(Operations, WfdPrintJobTest,
                         ::testing::Values(Job{"PreviewWithTitle",
                                               "タックシール",
                                               false,
                                               &cls_WfdPrint::iPreview,
                                               {QStringLiteral("Title=タックシール"), kData, kStyle, kOpen,
                                                QStringLiteral("ShowWindow=2")}},
                                           Job{"EmptyTitleSetsNoTitle",
                                               "",
                                               false,
                                               &cls_WfdPrint::iPreview,
                                               {kData, kStyle, kOpen, QStringLiteral("ShowWindow=2")}},
                                           Job{"DirectPrintNoTitleData",
                                               "",
                                               true,
                                               &cls_WfdPrint::iPrintBk,
                                               {kDataNoTitle, kStyle, kOpen, QStringLiteral("PrintOutBk(,0,0)")}},
                                           Job{"DialogPrint",
                                               "同意台帳",
                                               false,
                                               &cls_WfdPrint::iPrintDialog,
                                               {QStringLiteral("Title=同意台帳"), kData, kStyle, kOpen,
                                                QStringLiteral("PrintOutFromDialog()")}}),
                         [](const ::testing::TestParamInfo<Job>& info) { return std::string(info.param.name); });

TEST_F(WfdPrintTest, FaultOfTheObjectIsKeptWithItsNumberAndTheCallerGoesOn)
{
    registerLog(QStringLiteral("Open("));
    cls_WfdPrint p;
    ASSERT_EQ(p.iInit(QString()), 0);
    p.iOpen(QStringLiteral("X.wfd"));
    EXPECT_EQ(p.sErrMsg, QStringLiteral("(-2147467259)印刷エンジンが拒みました。"));
    // The preview is still asked for: the caller learns of faults from sErrMsg alone.
    p.iPreview();
    EXPECT_EQ(log, (QStringList{kStyle, QStringLiteral("Open(X.wfd)"), QStringLiteral("ShowWindow=2")}));
}

TEST_F(WfdPrintTest, RefusedTitleFailsInit)
{
    registerLog(QStringLiteral("Title="));
    cls_WfdPrint p;
    EXPECT_EQ(p.iInit(QStringLiteral("シール")), -1);
    EXPECT_EQ(p.sErrMsg, QStringLiteral("(-2147467259)印刷エンジンが拒みました。"));
}

}  // namespace
