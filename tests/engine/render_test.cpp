// Whole jobs rendered to images: ink where each label, digit and line belongs, page
// counts, offsets, and the checks of data against form.

#include "engine/document.h"
#include "engine/engine_error.h"
#include "engine/page_output.h"
#include "engine/wfd_script.h"

#include "support/engine_job.h"

#include <QPainter>
#include <QPrinter>
#include <gtest/gtest.h>

using namespace sealtest;

namespace {

constexpr double kDpi = 100;

// The bounding box of everything not white in rect (pixels); empty if no ink.
QRect inkBounds(const QImage& img, const QRect& rect)
{
    const QRect r = rect.intersected(img.rect());
    int minX = INT_MAX, minY = INT_MAX, maxX = -1, maxY = -1;
    for (int y = r.top(); y <= r.bottom(); ++y) {
        const QRgb* line = reinterpret_cast<const QRgb*>(img.constScanLine(y));
        for (int x = r.left(); x <= r.right(); ++x) {
            const QRgb p = line[x];
            if (qRed(p) < 200 || qGreen(p) < 200 || qBlue(p) < 200) {
                minX = std::min(minX, x);
                maxX = std::max(maxX, x);
                minY = std::min(minY, y);
                maxY = std::max(maxY, y);
            }
        }
    }
    if (maxX < 0) return {};
    return QRect(QPoint(minX, minY), QPoint(maxX, maxY));
}

QRect px(const QRectF& mm)
{
    const double k = kDpi / 25.4;
    return QRect(int(mm.left() * k), int(mm.top() * k), int(mm.width() * k), int(mm.height() * k));
}

bool inked(const QImage& img, const QRectF& mm) { return !inkBounds(img, px(mm)).isEmpty(); }

// The ink inside an area, in millimetres.
QRectF inkMm(const QImage& img, const QRectF& mm)
{
    const QRect ink = inkBounds(img, px(mm));
    const double k = 25.4 / kDpi;
    return QRectF(ink.left() * k, ink.top() * k, ink.width() * k, ink.height() * k);
}

// True when the image has no ink outside the given areas.
bool inkOnlyIn(const QImage& img, std::initializer_list<QRectF> areas)
{
    QImage masked = img;
    QPainter p(&masked);
    for (const QRectF& a : areas) p.fillRect(px(a), Qt::white);
    p.end();
    return inkBounds(masked, masked.rect()).isEmpty();
}

const QRectF kA4(0, 0, 210, 297);

class Render : public ::testing::Test {
protected:
    static QImage render(const engine::Document& doc, int page)
    {
        const QSizeF s = doc.pageSize(page);
        QImage img(int(s.width() / 25.4 * kDpi), int(s.height() / 25.4 * kDpi), QImage::Format_RGB32);
        img.fill(Qt::white);
        QPainter p(&img);
        engine::scaleToMillimetres(p, kDpi);
        doc.printPage(p, page);
        return img;
    }

    JobFolder jobs;
};

// シール.wfd: 2 x 5 cells of 86.4 x 50.8 mm from (18.6, 21.5).
QRectF sealCell(int index) { return QRectF(18.6 + (index % 2) * 86.4, 21.5 + (index / 2) * 50.8, 86.4, 50.8); }
// Ink a pixel inside the cell, or none in the whole cell.
void expectUsedCells(const QImage& img, const std::vector<int>& used)
{
    for (int i = 0; i < 10; ++i) {
        if (std::count(used.begin(), used.end(), i))
            EXPECT_FALSE(inkBounds(img, px(sealCell(i)).adjusted(1, 1, -1, -1)).isEmpty()) << "cell " << i;
        else
            EXPECT_FALSE(inked(img, sealCell(i))) << "cell " << i;
    }
}

TEST_F(Render, LabelsFillCellsInReadingOrderAndStayInside)
{
    const auto doc = jobs.job("シール.wfd", labelLines(3));
    ASSERT_EQ(doc->nPages(), 1);
    const QImage img = render(*doc, 0);
    expectUsedCells(img, {0, 1, 2});
    EXPECT_TRUE(inkOnlyIn(img, {sealCell(0), sealCell(1), sealCell(2)}));
}

TEST_F(Render, LongAddressAndNameShrinkInsideTheirCell)
{
    Label l;
    l.address =
        QStringLiteral("北海道札幌市中央区北一条西二丁目一番地 札幌市役所本庁舎十九階 保健福祉局総務部総務課内 気付");
    l.name = QStringLiteral("医療法人社団さくら会さくら在宅クリニック 院長 山田太郎兵衛 先生御侍史");
    l.keisho = QStringLiteral("先生御侍史");
    l.kikan = QStringLiteral("医療法人社団さくら会さくら在宅クリニック附属訪問看護ステーション東京");
    const QRectF ink = inkMm(render(*jobs.job("シール.wfd", {labelLine(l)}), 0), kA4);
    EXPECT_TRUE(sealCell(0).contains(ink))
        << ink.left() << "," << ink.top() << " " << ink.right() << "," << ink.bottom();
}

struct PageCase {
    const char* form;
    int blanks;
    int labels;
    int copies;
    int pages;
};
class PageCount : public Render, public ::testing::WithParamInterface<PageCase> {};
TEST_P(PageCount, FollowsBlankLinesAndCopies)
{
    const PageCase& c = GetParam();
    QStringList lines;
    for (int i = 0; i < c.blanks; ++i) lines.append(kBlankLine);
    for (const QString& label : labelLines(c.labels))
        for (int k = 0; k < c.copies; ++k) lines.append(label);
    EXPECT_EQ(jobs.job(QString::fromUtf8(c.form), lines)->nPages(), c.pages);
}
INSTANTIATE_TEST_SUITE_P(
    Sheets, PageCount,
    ::testing::Values(PageCase{"シール.wfd", 0, 10, 1, 1}, PageCase{"シール.wfd", 0, 11, 1, 2},
                      PageCase{"シール.wfd", 3, 2, 2, 1}, PageCase{"シール.wfd", 3, 4, 2, 2},
                      PageCase{"シール_2X6.wfd", 11, 1, 1, 1}, PageCase{"シール_2X6.wfd", 11, 1, 2, 2},
                      PageCase{"ビーコン用シール30M.wfd", 29, 1, 1, 1},
                      PageCase{"ビーコン用シール30M.wfd", 29, 1, 31, 2}, PageCase{"封筒印刷長3.wfd", 0, 3, 2, 6},
                      PageCase{"封筒印刷長3.wfd", 1, 1, 1, 2}, PageCase{"封筒印刷角2_2.wfd", 0, 2, 1, 4}),
    [](const auto& info) { return "Case" + std::to_string(info.index); });  // front and back of each

// Blank lines skip cells, copies fill the next ones, and a repeat start skips cells too;
// a doctor's blank lines carry a staff number in the footnote's place and still print
// nothing.
TEST_F(Render, BlankLinesCopiesAndRepeatStartPlaceLabels)
{
    Label b;
    b.id = "2";
    b.name = QStringLiteral("佐藤 花子 様");
    const QString a = labelLine({});
    const struct {
        const char* what;
        QStringList lines;
        QStringList extra;
        std::vector<int> used;
    } cases[] = {
        {"start cell 4, two copies each",
         {kBlankLine, kBlankLine, kBlankLine, a, a, labelLine(b), labelLine(b)},
         {},
         {3, 4, 5, 6}},
        {"blank line with a staff number", {kBlankLine + "1234", a}, {}, {1}},
        {"repeat start 10", {a}, {"SectionRepeatStart, 10"}, {9}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        expectUsedCells(render(*jobs.job("シール.wfd", c.lines, c.extra), 0), c.used);
    }
}

TEST_F(Render, PostalDigitsSitInTheirBoxesOnNaga3)
{
    Label l;
    l.yubin = QStringLiteral("〒 160-0023");
    const QImage img = render(*jobs.job("封筒印刷長3.wfd", {labelLine(l)}), 0);
    const double lefts[7] = {64.3, 71.3, 78.3, 85.9, 92.7, 99.5, 106.3};
    QImage masked = img;
    QPainter p(&masked);
    for (int i = 0; i < 7; ++i) {
        const QRectF box(lefts[i], 12.0, 5.7, 8.0);
        const QRectF ink = inkMm(img, box.adjusted(-0.6, -0.6, 0.6, 0.6));
        ASSERT_FALSE(ink.isEmpty()) << "box " << i;
        EXPECT_TRUE(box.adjusted(-0.2, -0.2, 0.2, 0.2).contains(ink)) << "box " << i;
        EXPECT_NEAR(ink.center().x(), box.center().x(), 0.8) << "box " << i;  // centred
        p.fillRect(px(box.adjusted(-0.3, -0.3, 0.3, 0.3)), Qt::white);
    }
    p.end();
    EXPECT_FALSE(inked(masked, QRectF(0, 8, 120, 16))) << "ink in the band of the boxes";
}

TEST_F(Render, PostalCodeThatDoesNotFillTheBoxesIsPrintedAsText)
{
    Label l;
    l.yubin = QStringLiteral("〒 160-00");
    EXPECT_TRUE(inked(render(*jobs.job("封筒印刷長3.wfd", {labelLine(l)}), 0), QRectF(0, 0, 120, 24)));
}

TEST_F(Render, Naga3NameIsCentredAndLargerThanTheAddress)
{
    const QImage img = render(*jobs.job("封筒印刷長3.wfd", {labelLine({})}), 0);
    const QRectF name = inkMm(img, QRectF(50, 40, 20, 165));
    const QRectF address = inkMm(img, QRectF(88, 28, 24, 155));
    ASSERT_FALSE(name.isEmpty());
    ASSERT_FALSE(address.isEmpty());
    EXPECT_NEAR(name.center().x(), 60.0, 1.5);
    EXPECT_GT(name.width(), address.width() * 1.4);  // one column each, the name's wider
    EXPECT_GT(name.height(), 40);                    // written downwards
}

TEST_F(Render, FootnoteIsBoxedAtTheLeftBottomOnlyWhenGiven)
{
    Label with;
    with.footnote = QStringLiteral("同意書在中");
    const QRectF area(5, 95, 22, 63);  // above the sender block
    const QRectF ink = inkMm(render(*jobs.job("封筒印刷長3.wfd", {labelLine(with)}), 0), area);
    ASSERT_FALSE(ink.isEmpty());
    EXPECT_LT(ink.center().x(), 30);
    EXPECT_GT(ink.center().y(), 117.5);
    EXPECT_FALSE(inked(render(*jobs.job("封筒印刷長3.wfd", {labelLine({})}), 0), area));
}

TEST_F(Render, SidewaysEnvelopeIsLandscapeWithThePostalCodeAsText)
{
    const auto doc = jobs.job("封筒印刷長3_横.wfd", {labelLine({})});
    EXPECT_TRUE(doc->landscape(0));
    EXPECT_EQ(doc->pageSize(0), QSizeF(235, 120));
    const QRectF ink = inkMm(render(*doc, 0), QRectF(15, 12, 56, 9));
    EXPECT_GT(ink.width(), 20);  // "〒123-4567" on one line, no boxes
    EXPECT_LT(ink.height(), 6);
}

TEST_F(Render, WindowEnvelopeKeepsTheAddresseeInTheWindow)
{
    Label l;
    l.kikan = QStringLiteral("さくら訪問看護ステーション");
    const QImage img = render(*jobs.job("封筒印刷長3_横窓.wfd", {labelLine(l)}), 0);
    const QRectF window(20, 12, 94, 46);
    EXPECT_TRUE(inkOnlyIn(img, {window, QRectF(10, 95, 60, 20), QRectF(140, 85, 90, 30)}));  // footnote, sender
    EXPECT_TRUE(inked(img, window));
}

TEST_F(Render, ScriptOffsetsInTenthsOfMillimetresAndCalibrationMoveThePrint)
{
    const QRectF plain = inkMm(render(*jobs.job("シール.wfd", {labelLine({})}), 0), kA4);
    auto doc = jobs.job("シール.wfd", {labelLine({})}, {"PrintOffsetX, 50", "PrintOffsetY, -30"});
    const QRectF moved = inkMm(render(*doc, 0), kA4);
    EXPECT_NEAR(moved.left() - plain.left(), 5.0, 0.3);
    EXPECT_NEAR(moved.top() - plain.top(), -3.0, 0.3);
    doc->setCalibration(QPointF(-2.0, 1.5));  // adds to the script's offsets
    const QRectF calibrated = inkMm(render(*doc, 0), kA4);
    EXPECT_NEAR(calibrated.left() - moved.left(), -2.0, 0.3);
    EXPECT_NEAR(calibrated.top() - moved.top(), 1.5, 0.3);
}

TEST_F(Render, NothingPrintsOutsideThePaper)
{
    const auto doc = jobs.job("ビーコン用シール30M.wfd", labelLines(3), {"PrintOffsetX, -150", "PrintOffsetY, -200"});
    // Paint onto a surface 20 mm larger on every side than the paper: the left column,
    // moved 15 mm off the sheet, must be cut at the paper's edge.
    constexpr double margin = 20;
    QImage img(int((210 + 2 * margin) / 25.4 * kDpi), int((297 + 2 * margin) / 25.4 * kDpi), QImage::Format_RGB32);
    img.fill(Qt::white);
    QPainter p(&img);
    engine::scaleToMillimetres(p, kDpi);
    p.translate(margin, margin);
    doc->printPage(p, 0);
    p.end();
    const QRectF paper = kA4.translated(margin, margin);
    EXPECT_TRUE(inked(img, paper));
    EXPECT_TRUE(inkOnlyIn(img, {paper}));
}

TEST_F(Render, PaperLineChoosesTheSheetOfSheetForms)
{
    const QString csv = jobs.labels(1);
    QStringList lines = scriptLines(formPath("シール.wfd"), csv);
    lines.replace(3, "PrintPaper, B5");
    EXPECT_EQ(JobFolder::document(jobs.write("WfdCom.dat", lines))->pageSize(0), QSizeF(182, 257));
    // An envelope keeps its own size whatever the paper line says.
    lines[0] = QStringLiteral("FileName,\"%1\"").arg(formPath("封筒印刷長3.wfd"));
    EXPECT_EQ(JobFolder::document(jobs.write("WfdCom.dat", lines))->pageSize(0), QSizeF(120, 235));
}

TEST_F(Render, DataWithoutTitlesBindsByTheFormsColumnOrder)
{
    QStringList lines = scriptLines(formPath("シール.wfd"), jobs.write("シール.csv", {labelLine({})}));
    lines[2] += ",,,1";
    EXPECT_TRUE(inked(render(*JobFolder::document(jobs.write("WfdCom.dat", lines)), 0), sealCell(0)));
}

// The consent ledger: a header, one ruled row per patient where 枠線描画 is 1.
class Ledger : public Render {
protected:
    QString ledgerLine(int no, const QString& frame, const QString& staff, const QString& kijun = "1")
    {
        return QStringLiteral("\"%1\",\"2026/12/01\",\"マッサージ\",%2,%3,\"患者%2\",%4,\"2026/06/01\","
                              "\"2026/11/30\",\"\",5,\"%5\",\"\",\"\",\"\",\"\",\"医師\",\"病院\",\"03\",\"9\",%6,1,0")
            .arg(frame)
            .arg(no)
            .arg(1000 + no)
            .arg(staff == u"A" ? 1 : 2)
            .arg(staff, kijun);
    }
    std::unique_ptr<engine::Document> ledger(const QStringList& rows)
    {
        const QString title = u'"' + kLedgerColumns.join(QStringLiteral("\",\"")) + u'"';
        return jobs.document(jobs.script("同意台帳_TKZK.wfd", jobs.write("同意データ.csv", QStringList{title} + rows)));
    }
};

TEST_F(Ledger, IsLandscapeWithRowsAndRunsOnToMorePages)
{
    QStringList rows;
    for (int i = 1; i <= 30; ++i) rows.append(ledgerLine(i, "1", i <= 10 ? "A" : "B"));
    const auto doc = ledger(rows);
    EXPECT_TRUE(doc->landscape(0));
    EXPECT_EQ(doc->nPages(), 2);                                  // 25 rows to a page
    EXPECT_TRUE(inked(render(*doc, 0), QRectF(10, 5, 120, 12)));  // the heading
    const QImage second = render(*doc, 1);
    // Page two holds rows 26 to 30: ink in its fifth row, none in its sixth.
    EXPECT_TRUE(inked(second, QRectF(39, 24 + 4 * 7 + 1, 36, 5)));
    EXPECT_FALSE(inked(second, QRectF(11, 24 + 5 * 7 + 1, 270, 5)));
}

TEST_F(Ledger, RulesOnlyWhereTheRowAsksForThem)
{
    const QImage img = render(*ledger({ledgerLine(1, "1", "A"), ledgerLine(2, "0", "A")}), 0);
    // The left rule of the No column, beside row 1 and beside row 2.
    EXPECT_TRUE(inked(img, QRectF(9.6, 24 + 1, 0.8, 5)));
    EXPECT_FALSE(inked(img, QRectF(9.6, 31 + 1, 0.8, 5)));
}

TEST_F(Ledger, BaseDateShowsOnlyWhenAsked)
{
    const QRectF dateCell(105, 24.5, 20, 6);
    EXPECT_TRUE(inked(render(*ledger({ledgerLine(1, "0", "A", "1")}), 0), dateCell));
    EXPECT_FALSE(inked(render(*ledger({ledgerLine(1, "0", "A", "0")}), 0), dateCell));
}

// A fault of a job names the file and the line the user must mend, and what is wrong.
TEST_F(Render, FaultsNameTheFileTheLineAndTheCause)
{
    const QString good = jobs.labels(1);
    const QString titles = jobs.write("titles.csv", {"cIDno,cName,cAddress", "1,\"a\",\"b\""});
    const QString script = jobs.path("WfdCom.dat");
    const struct {
        QString form;
        QString csv;
        QStringList extra;
        QString file;
        int line;
        QStringList parts;
    } cases[] = {
        {"シール.wfd", titles, {}, titles, 1, {"cYubinNo", "シール.wfd"}},
        {jobs.path("無い.wfd"), good, {}, script, 1, {"無い.wfd"}},
        {"シール.wfd", jobs.path("無い.csv"), {}, script, 3, {"無い.csv"}},
        {"シール.wfd", good, {"SetItemValue,\"Header.Caption\",\"x\""}, script, 4, {"Header.Caption"}},
        // シール.wfd has ten cells: the eleventh would only print after blank sheets.
        {"シール.wfd", good, {"SectionRepeatStart, 11"}, script, 4, {"SectionRepeatStart", "10"}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.parts.first().toStdString());
        expectEngineError([&] { JobFolder::document(jobs.script(c.form, c.csv, c.extra)); }, c.file, c.line, c.parts);
    }
}

TEST_F(Render, SecondDataFileWithTheSameTitlesContinuesTheFirst)
{
    const QString a = jobs.write("a.csv", QStringList{kLabelTitle} + labelLines(8));
    const auto withSecond = [&](const QString& csv) {
        return jobs.script("シール.wfd", a, {QStringLiteral("SetDataText,\"追加\",\"%1\"").arg(csv)});
    };
    EXPECT_EQ(JobFolder::document(withSecond(jobs.write("b.csv", QStringList{kLabelTitle} + labelLines(4))))->nPages(),
              2);
    EXPECT_THROW(JobFolder::document(withSecond(jobs.write("c.csv", {"cIDno,cName", "1,\"x\""}))), engine::EngineError);
}

// A script written on another machine names a form path that does not exist here; the
// engine's own forms folder has a form of that name.
TEST_F(Render, FormNotWhereTheScriptSaysIsTakenFromTheEnginesFormsFolder)
{
    const QString script = jobs.script("C:\\Velmio\\SYS\\シール.wfd", jobs.labels(1));
    EXPECT_EQ(JobFolder::document(script, QStringLiteral(SEAL_SOURCE_DIR))->nPages(), 1);
    EXPECT_THROW(JobFolder::document(script, jobs.path(".")), engine::EngineError);
}

TEST_F(Render, PrinterGetsThePagesOfTheChosenRange)
{
    const auto doc = jobs.job("シール.wfd", labelLines(35));
    ASSERT_EQ(doc->nPages(), 4);
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(jobs.path("printed.pdf"));
    engine::printDocument(*doc, printer, 2, 3);
    EXPECT_TRUE(fileBytes(jobs.path("printed.pdf")).contains("/Count 2"));
    EXPECT_TRUE(printer.fullPage());
}

TEST_F(Render, PdfHasOnePagePerSheet)
{
    const auto doc = jobs.job("シール.wfd", labelLines(25));
    const QString pdf = jobs.path("out.pdf");
    engine::writePdf(*doc, pdf);
    EXPECT_TRUE(fileBytes(pdf).startsWith("%PDF-"));
    EXPECT_EQ(pdfPageCount(pdf), 3);
    EXPECT_EQ(doc->defaultPdfPath(), jobs.path("シール.pdf"));
    // Names and addresses: readable by the user alone.
    EXPECT_EQ(QFile::permissions(pdf) & (QFileDevice::ReadGroup | QFileDevice::ReadOther), QFileDevice::Permissions());
}

}  // namespace
