// The in-process document driver on the engine's own document object: a job set up
// member by member reads the shipped form, and every output of a process without a
// display leaves the pages as a PDF beside the data; bad forms and data come back as
// the driver's fault texts.

#include "engine/wfd_document_impl.h"

#include "base/vb_error.h"
#include "engine/document.h"
#include "report/cls_wfdprint.h"
#include "support/engine_job.h"

#include <QFile>
#include <QFileInfo>
#include <gtest/gtest.h>

using namespace sealtest;
using report::cls_WfdPrint;

namespace {

class WfdDocumentImplTest : public ::testing::Test {
protected:
    void SetUp() override { report::registerWfdDocument(&engine::makeWfdDocument); }
    void TearDown() override { report::registerWfdDocument({}); }

    static engine::WfdDocumentImpl& impl(const cls_WfdPrint& p)
    {
        return dynamic_cast<engine::WfdDocumentImpl&>(*p.objDocument());
    }

    // A driver set up for the label sheet over csv, opened.
    void openSeal(cls_WfdPrint& p, const QString& csv, const QString& title = QStringLiteral("タックシール"))
    {
        ASSERT_EQ(p.iInit(title), 0) << p.sErrMsg.toStdString();
        ASSERT_EQ(p.iSetDataText(QStringLiteral("シール"), csv), 0);
        p.iOpen(formPath(QStringLiteral("シール.wfd")));
        ASSERT_EQ(p.sErrMsg, QString());
    }

    JobFolder jobs;
};

using Output = void (cls_WfdPrint::*)();

class WfdDocumentOutputTest : public WfdDocumentImplTest, public ::testing::WithParamInterface<Output> {};

TEST_P(WfdDocumentOutputTest, OutputWithoutADisplayLeavesThePagesBesideTheData)
{
    cls_WfdPrint p;
    openSeal(p, jobs.labels(13));  // ten cells a sheet: two pages
    ASSERT_NE(impl(p).document(), nullptr);
    EXPECT_EQ(impl(p).document()->title(), QStringLiteral("タックシール"));
    EXPECT_EQ(impl(p).document()->nPages(), 2);
    (p.*GetParam())();
    EXPECT_EQ(p.sErrMsg, QString());
    const QString pdf = jobs.path(QStringLiteral("シール.pdf"));
    EXPECT_EQ(impl(p).lastPdf(), pdf);
    EXPECT_EQ(pdfPageCount(pdf), 2);
    EXPECT_EQ(QFileInfo(pdf).permissions() & (QFileDevice::ReadOther | QFileDevice::ReadGroup), 0);
}

INSTANTIATE_TEST_SUITE_P(Outputs, WfdDocumentOutputTest,
                         ::testing::Values(&cls_WfdPrint::iPreview, &cls_WfdPrint::iPrintBk,
                                           &cls_WfdPrint::iPrintDialog),
                         ([](const auto& info) {
                             return std::vector<std::string>{"iPreview", "iPrintBk", "iPrintDialog"}.at(info.index);
                         }));

TEST_F(WfdDocumentImplTest, MissingFormIsAFaultOfOpenAndNothingIsPrinted)
{
    cls_WfdPrint p;
    ASSERT_EQ(p.iInit(QString()), 0);
    p.iSetDataText(QStringLiteral("シール"), jobs.labels(1));
    const QString form = jobs.path(QStringLiteral("ない帳票.wfd"));
    p.iOpen(form);
    EXPECT_TRUE(p.sErrMsg.startsWith(QStringLiteral("(-2147467259)"))) << p.sErrMsg.toStdString();
    EXPECT_TRUE(p.sErrMsg.contains(QStringLiteral("フォームファイルが見つかりません: ") + form))
        << p.sErrMsg.toStdString();
    p.sErrMsg.clear();
    p.iPreview();
    EXPECT_EQ(p.sErrMsg, QStringLiteral("(-2147467259)フォームファイルが開かれていません (Open)。"));
    EXPECT_FALSE(QFileInfo::exists(jobs.path(QStringLiteral("シール.pdf"))));
}

TEST_F(WfdDocumentImplTest, DataThatDoesNotFitTheFormIsAFaultOfOpen)
{
    const QString csv = jobs.write(QStringLiteral("シール.csv"), {"cIDno,cName", "1,\"山田\""});
    cls_WfdPrint p;
    ASSERT_EQ(p.iInit(QString()), 0);
    p.iSetDataText(QStringLiteral("シール"), csv);
    p.iOpen(formPath(QStringLiteral("シール.wfd")));
    EXPECT_TRUE(p.sErrMsg.startsWith(QStringLiteral("(-2147467259)"))) << p.sErrMsg.toStdString();
    EXPECT_TRUE(p.sErrMsg.contains(QStringLiteral("タイトル行がフォーム シール.wfd と合いません")))
        << p.sErrMsg.toStdString();
}

TEST_F(WfdDocumentImplTest, OpenWithoutDataIsAFault)
{
    cls_WfdPrint p;
    ASSERT_EQ(p.iInit(QString()), 0);
    p.iOpen(formPath(QStringLiteral("シール.wfd")));
    EXPECT_TRUE(p.sErrMsg.contains(QStringLiteral("SetDataText"))) << p.sErrMsg.toStdString();
}

TEST_F(WfdDocumentImplTest, DataWithoutATitleLineBindsByPosition)
{
    const QString csv = jobs.write(QStringLiteral("無題.csv"), labelLines(11));
    cls_WfdPrint p;
    ASSERT_EQ(p.iInit(QString()), 0);
    EXPECT_EQ(p.iSetDataTextNoTitle(QStringLiteral("シール"), csv), 0);
    p.iOpen(formPath(QStringLiteral("シール.wfd")));
    ASSERT_EQ(p.sErrMsg, QString());
    // Read as a titled file, the first label would have been taken for the title line.
    EXPECT_EQ(impl(p).document()->nPages(), 2);
    p.iPreview();
    EXPECT_EQ(pdfPageCount(jobs.path(QStringLiteral("無題.pdf"))), 2);
}

TEST_F(WfdDocumentImplTest, DataAddedAfterOpenIsReadByTheNextOutput)
{
    cls_WfdPrint p;
    openSeal(p, jobs.labels(10));
    EXPECT_EQ(impl(p).document()->nPages(), 1);
    const QString second = jobs.write(QStringLiteral("追加.csv"), {kLabelTitle, labelLine({})});
    p.iSetDataText(QStringLiteral("シール"), second);
    p.iPreview();
    EXPECT_EQ(p.sErrMsg, QString());
    EXPECT_EQ(impl(p).document()->nPages(), 2);
    EXPECT_EQ(pdfPageCount(jobs.path(QStringLiteral("シール.pdf"))), 2);
}

TEST_F(WfdDocumentImplTest, OnlyCommaSeparatedQuotedDataIsTaken)
{
    engine::WfdDocumentImpl doc{QString()};
    EXPECT_NO_THROW(
        doc.SetDataText(QStringLiteral("a"), QStringLiteral("a.csv"), QStringLiteral(","), QStringLiteral("\""), 0));
    try {
        doc.SetDataText(QStringLiteral("b"), QStringLiteral("b.csv"), QStringLiteral("\t"), QString(), 0);
        ADD_FAILURE() << "a tab separator was taken";
    } catch (const base::VbError& e) {
        EXPECT_EQ(e.number(), -2147467259);
        EXPECT_EQ(e.description(), QStringLiteral("区切り文字「\t」のデータは読めません。カンマ区切りだけです。"));
    }
    EXPECT_THROW(doc.SetDataText(QStringLiteral("c"), QStringLiteral("c.csv"), QString(), QStringLiteral("'"), 0),
                 base::VbError);
}

}  // namespace
