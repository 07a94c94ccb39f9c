// Whole jobs rendered to images: ink where each label, digit and line belongs, page
// counts, offsets, and the checks of data against form.

#include "engine/document.h"
#include "engine/engine_error.h"
#include "engine/page_output.h"
#include "engine/wfd_script.h"

#include "engine_test_support.h"

#include <QPainter>
#include <QPrinter>
#include <gtest/gtest.h>

using enginetest::Label;

namespace {

constexpr double kDpi = 100;

class Render : public ::testing::Test {
protected:
    static void SetUpTestSuite() { enginetest::ensureGuiApp(); }

    QString write(const QString& name, const QStringList& lines)
    {
        const QString path = dir.filePath(name);
        enginetest::writeCp932(path, lines);
        return path;
    }
    // A job of a shipped form over label lines.
    std::unique_ptr<engine::Document> job(const QString& form, const QStringList& dataLines,
                                          const QStringList& extra = {})
    {
        const QString csv = write("シール.csv", QStringList{enginetest::kLabelTitle} + dataLines);
        const QString script = write("WfdCom.dat", enginetest::scriptLines(enginetest::formPath(form), csv, extra));
        return std::make_unique<engine::Document>(engine::readWfdScript(script), QString());
    }
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
    static QRect px(const QRectF& mm) { return enginetest::mmToPx(mm, kDpi); }
    static QRectF inkMm(const QImage& img, const QRectF& mm)
    {
        return enginetest::pxToMm(enginetest::inkBounds(img, px(mm)), kDpi);
    }

    QTemporaryDir dir;
};

// シール.wfd: 2 x 5 cells of 86.4 x 50.8 mm from (18.6, 21.5).
QRectF sealCell(int index) { return QRectF(18.6 + (index % 2) * 86.4, 21.5 + (index / 2) * 50.8, 86.4, 50.8); }

TEST_F(Render, LabelsFillCellsInReadingOrderAndStayInside)
{
    QStringList lines;
    for (int i = 1; i <= 3; ++i) {
        Label l;
        l.id = QString::number(i);
        lines.append(enginetest::labelLine(l));
    }
    const auto doc = job("シール.wfd", lines);
    ASSERT_EQ(doc->nPages(), 1);
    const QImage img = render(*doc, 0);
    for (int i = 0; i < 10; ++i) {
        const QRect ink = enginetest::inkBounds(img, px(sealCell(i)).adjusted(1, 1, -1, -1));
        if (i < 3)
            EXPECT_FALSE(ink.isEmpty()) << "cell " << i;
        else
            EXPECT_TRUE(ink.isEmpty()) << "cell " << i;
    }
    // Nothing outside the cells in use.
    QImage masked = img;
    QPainter p(&masked);
    for (int i = 0; i < 3; ++i) p.fillRect(px(sealCell(i)), Qt::white);
    p.end();
    EXPECT_TRUE(enginetest::inkBounds(masked, masked.rect()).isEmpty());
}

TEST_F(Render, LongAddressAndNameShrinkInsideTheirCell)
{
    Label l;
    l.address =
        QStringLiteral("北海道札幌市中央区北一条西二丁目一番地 札幌市役所本庁舎十九階 保健福祉局総務部総務課内 気付");
    l.name = QStringLiteral("医療法人社団さくら会さくら在宅クリニック 院長 山田太郎兵衛 先生御侍史");
    l.keisho = QStringLiteral("先生御侍史");
    l.kikan = QStringLiteral("医療法人社団さくら会さくら在宅クリニック附属訪問看護ステーション東京");
    const auto doc = job("シール.wfd", {enginetest::labelLine(l)});
    const QImage img = render(*doc, 0);
    const QRectF ink = inkMm(img, QRectF(0, 0, 210, 297));
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
    for (int i = 0; i < c.blanks; ++i) lines.append(enginetest::kBlankLine);
    for (int i = 0; i < c.labels; ++i)
        for (int k = 0; k < c.copies; ++k) {
            Label l;
            l.id = QString::number(i + 1);
            lines.append(enginetest::labelLine(l));
        }
    EXPECT_EQ(job(QString::fromUtf8(c.form), lines)->nPages(), c.pages);
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

// Start cell 4 on 10 cells, two copies each: cells 4 and 5 hold the first addressee,
// 6 and 7 the second.
TEST_F(Render, StartCellAndCopiesPlaceLabels)
{
    Label a;
    Label b;
    b.id = "2";
    b.name = QStringLiteral("佐藤 花子 様");
    const auto doc = job("シール.wfd", {enginetest::kBlankLine, enginetest::kBlankLine, enginetest::kBlankLine,
                                        enginetest::labelLine(a), enginetest::labelLine(a), enginetest::labelLine(b),
                                        enginetest::labelLine(b)});
    const QImage img = render(*doc, 0);
    for (int i = 0; i < 10; ++i) {
        const bool used = i >= 3 && i <= 6;
        EXPECT_EQ(!enginetest::inkBounds(img, px(sealCell(i)).adjusted(1, 1, -1, -1)).isEmpty(), used) << "cell " << i;
    }
}

// A doctor's blank lines carry a staff number in the footnote's place; a used cell
// must still stay clean.
TEST_F(Render, BlankLineWithStaffNumberPrintsNothing)
{
    const auto doc = job("シール.wfd", {enginetest::kBlankLine + "1234", enginetest::labelLine({})});
    const QImage img = render(*doc, 0);
    EXPECT_TRUE(enginetest::inkBounds(img, px(sealCell(0))).isEmpty());
    EXPECT_FALSE(enginetest::inkBounds(img, px(sealCell(1))).isEmpty());
}

TEST_F(Render, PostalDigitsSitInTheirBoxesOnNaga3)
{
    Label l;
    l.yubin = QStringLiteral("〒 160-0023");
    const auto doc = job("封筒印刷長3.wfd", {enginetest::labelLine(l)});
    const QImage img = render(*doc, 0);
    const double lefts[7] = {64.3, 71.3, 78.3, 85.9, 92.7, 99.5, 106.3};
    for (int i = 0; i < 7; ++i) {
        const QRectF box(lefts[i], 12.0, 5.7, 8.0);
        const QRectF ink = inkMm(img, box.adjusted(-0.6, -0.6, 0.6, 0.6));
        ASSERT_FALSE(ink.isEmpty()) << "box " << i;
        EXPECT_TRUE(box.adjusted(-0.2, -0.2, 0.2, 0.2).contains(ink)) << "box " << i;
        // Centred in the box.
        EXPECT_NEAR(ink.center().x(), box.center().x(), 0.8) << "box " << i;
    }
    // Nothing else in the band of the boxes.
    QImage masked = img;
    QPainter p(&masked);
    for (double left : lefts) p.fillRect(px(QRectF(left, 12.0, 5.7, 8.0).adjusted(-0.3, -0.3, 0.3, 0.3)), Qt::white);
    p.end();
    EXPECT_TRUE(enginetest::inkBounds(masked, px(QRectF(0, 8, 120, 16))).isEmpty());
}

TEST_F(Render, PostalCodeThatDoesNotFillTheBoxesIsPrintedAsText)
{
    Label l;
    l.yubin = QStringLiteral("〒 160-00");
    const auto doc = job("封筒印刷長3.wfd", {enginetest::labelLine(l)});
    EXPECT_FALSE(enginetest::inkBounds(render(*doc, 0), px(QRectF(0, 0, 120, 24))).isEmpty());
}

TEST_F(Render, Naga3NameIsCentredAndLargerThanTheAddress)
{
    Label l;
    l.name = QStringLiteral("山田 太郎 様");
    l.address = QStringLiteral("東京都新宿区西新宿2-8-1");
    const auto doc = job("封筒印刷長3.wfd", {enginetest::labelLine(l)});
    const QImage img = render(*doc, 0);
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
    const QImage a = render(*job("封筒印刷長3.wfd", {enginetest::labelLine(with)}), 0);
    const QImage b = render(*job("封筒印刷長3.wfd", {enginetest::labelLine({})}), 0);
    const QRectF area(5, 95, 22, 63);  // above the sender block
    const QRectF ink = inkMm(a, area);
    ASSERT_FALSE(ink.isEmpty());
    EXPECT_LT(ink.center().x(), 30);
    EXPECT_GT(ink.center().y(), 117.5);
    EXPECT_TRUE(inkMm(b, area).isEmpty());
}

TEST_F(Render, SidewaysEnvelopeIsLandscapeWithThePostalCodeAsText)
{
    const auto doc = job("封筒印刷長3_横.wfd", {enginetest::labelLine({})});
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
    const QImage img = render(*job("封筒印刷長3_横窓.wfd", {enginetest::labelLine(l)}), 0);
    QImage masked = img;
    QPainter p(&masked);
    p.fillRect(px(QRectF(20, 12, 94, 46)), Qt::white);   // the window
    p.fillRect(px(QRectF(10, 95, 60, 20)), Qt::white);   // footnote place
    p.fillRect(px(QRectF(140, 85, 90, 30)), Qt::white);  // sender block
    p.end();
    EXPECT_TRUE(enginetest::inkBounds(masked, masked.rect()).isEmpty());
    EXPECT_FALSE(enginetest::inkBounds(img, px(QRectF(20, 12, 94, 46))).isEmpty());
}

TEST_F(Render, ScriptOffsetsMoveThePrintInTenthsOfMillimetres)
{
    const QImage plain = render(*job("シール.wfd", {enginetest::labelLine({})}), 0);
    const QImage moved =
        render(*job("シール.wfd", {enginetest::labelLine({})}, {"PrintOffsetX, 50", "PrintOffsetY, -30"}), 0);
    const QRectF a = inkMm(plain, QRectF(0, 0, 210, 297));
    const QRectF b = inkMm(moved, QRectF(0, 0, 210, 297));
    EXPECT_NEAR(b.left() - a.left(), 5.0, 0.3);
    EXPECT_NEAR(b.top() - a.top(), -3.0, 0.3);
}

TEST_F(Render, CalibrationAddsToTheScriptOffsets)
{
    auto doc = job("シール.wfd", {enginetest::labelLine({})}, {"PrintOffsetX, 10"});
    const QRectF a = inkMm(render(*doc, 0), QRectF(0, 0, 210, 297));
    doc->setCalibration(QPointF(-2.0, 1.5));
    const QRectF b = inkMm(render(*doc, 0), QRectF(0, 0, 210, 297));
    EXPECT_NEAR(b.left() - a.left(), -2.0, 0.3);
    EXPECT_NEAR(b.top() - a.top(), 1.5, 0.3);
}

TEST_F(Render, NothingPrintsOutsideThePaper)
{
    const auto doc = job("ビーコン用シール30M.wfd",
                         {enginetest::labelLine({}), enginetest::labelLine({}), enginetest::labelLine({})},
                         {"PrintOffsetX, -150", "PrintOffsetY, -200"});
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
    const QRect paper = px(QRectF(margin, margin, 210, 297));
    EXPECT_FALSE(enginetest::inkBounds(img, paper).isEmpty());
    QImage outside = img;
    QPainter mask(&outside);
    mask.fillRect(paper, Qt::white);
    mask.end();
    EXPECT_TRUE(enginetest::inkBounds(outside, outside.rect()).isEmpty());
}

TEST_F(Render, PaperLineChoosesTheSheetOfSheetForms)
{
    const QString csv = write("シール.csv", {enginetest::kLabelTitle, enginetest::labelLine({})});
    QStringList lines = enginetest::scriptLines(enginetest::formPath("シール.wfd"), csv);
    lines.replace(3, "PrintPaper, B5");
    const QString script = write("WfdCom.dat", lines);
    engine::Document doc(engine::readWfdScript(script), QString());
    EXPECT_EQ(doc.pageSize(0), QSizeF(182, 257));
    // An envelope keeps its own size whatever the paper line says.
    lines[0] = QStringLiteral("FileName,\"%1\"").arg(enginetest::formPath("封筒印刷長3.wfd"));
    write("WfdCom.dat", lines);
    engine::Document env(engine::readWfdScript(script), QString());
    EXPECT_EQ(env.pageSize(0), QSizeF(120, 235));
}

TEST_F(Render, RepeatStartSkipsCells)
{
    const auto doc = job("シール.wfd", {enginetest::labelLine({})}, {"SectionRepeatStart, 10"});
    const QImage img = render(*doc, 0);
    EXPECT_TRUE(enginetest::inkBounds(img, px(sealCell(0))).isEmpty());
    EXPECT_FALSE(enginetest::inkBounds(img, px(sealCell(9))).isEmpty());
}

TEST_F(Render, DataWithoutTitlesBindsByTheFormsColumnOrder)
{
    const QString csv = write("シール.csv", {enginetest::labelLine({})});
    QStringList lines = enginetest::scriptLines(enginetest::formPath("シール.wfd"), csv);
    lines[2] += ",,,1";
    const QString script = write("WfdCom.dat", lines);
    engine::Document doc(engine::readWfdScript(script), QString());
    EXPECT_FALSE(enginetest::inkBounds(render(doc, 0), px(sealCell(0))).isEmpty());
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
    static QString ledgerTitle()
    {
        return QStringLiteral(
            "\"枠線描画\",\"何月分\",\"種別\",\"No\",\"患者ID\",\"患者名\",\"施術者ID\",\"同意日\","
            "\"同意書期限\",\"新同意日\",\"経過\",\"担当者\",\"依頼日\",\"予備1\",\"予備2\",\"受取日\","
            "\"同意医師\",\"同意医師機関\",\"同意医師TEL\",\"同意医師IDNo\",\"基準日表示\","
            "\"初回フラグ\",\"初療日未入力フラグ\"");
    }
    std::unique_ptr<engine::Document> ledger(const QStringList& rows)
    {
        const QString csv = write("同意データ.csv", QStringList{ledgerTitle()} + rows);
        QStringList lines = enginetest::scriptLines(enginetest::formPath("同意台帳_TKZK.wfd"), csv);
        return std::make_unique<engine::Document>(engine::readWfdScript(write("WfdCom.dat", lines)), QString());
    }
};

TEST_F(Ledger, IsLandscapeWithRowsAndRunsOnToMorePages)
{
    QStringList rows;
    for (int i = 1; i <= 30; ++i) rows.append(ledgerLine(i, "1", i <= 10 ? "A" : "B"));
    const auto doc = ledger(rows);
    EXPECT_TRUE(doc->landscape(0));
    EXPECT_EQ(doc->nPages(), 2);  // 25 rows to a page
    const QImage img = render(*doc, 0);
    EXPECT_FALSE(enginetest::inkBounds(img, px(QRectF(10, 5, 120, 12))).isEmpty());  // the heading
    const QImage second = render(*doc, 1);
    // Page two holds rows 26 to 30: ink in its fifth row, none in its sixth.
    EXPECT_FALSE(enginetest::inkBounds(second, px(QRectF(39, 24 + 4 * 7 + 1, 36, 5))).isEmpty());
    EXPECT_TRUE(enginetest::inkBounds(second, px(QRectF(11, 24 + 5 * 7 + 1, 270, 5))).isEmpty());
}

TEST_F(Ledger, RulesOnlyWhereTheRowAsksForThem)
{
    const auto doc = ledger({ledgerLine(1, "1", "A"), ledgerLine(2, "0", "A")});
    const QImage img = render(*doc, 0);
    // The left rule of the No column, beside row 1 and beside row 2.
    EXPECT_FALSE(enginetest::inkBounds(img, px(QRectF(9.6, 24 + 1, 0.8, 5))).isEmpty());
    EXPECT_TRUE(enginetest::inkBounds(img, px(QRectF(9.6, 31 + 1, 0.8, 5))).isEmpty());
}

TEST_F(Ledger, BaseDateShowsOnlyWhenAsked)
{
    const QImage on = render(*ledger({ledgerLine(1, "0", "A", "1")}), 0);
    const QImage off = render(*ledger({ledgerLine(1, "0", "A", "0")}), 0);
    const QRectF dateCell(105, 24.5, 20, 6);
    EXPECT_FALSE(enginetest::inkBounds(on, px(dateCell)).isEmpty());
    EXPECT_TRUE(enginetest::inkBounds(off, px(dateCell)).isEmpty());
}

TEST_F(Render, TitlesThatDoNotMatchTheFormNameTheMissingColumns)
{
    const QString csv = write("シール.csv", {"cIDno,cName,cAddress", "1,\"a\",\"b\""});
    const QString script = write("WfdCom.dat", enginetest::scriptLines(enginetest::formPath("シール.wfd"), csv));
    try {
        engine::Document doc(engine::readWfdScript(script), QString());
        FAIL();
    } catch (const engine::EngineError& e) {
        EXPECT_EQ(e.file(), csv);
        EXPECT_EQ(e.line(), 1);
        EXPECT_TRUE(e.message().contains("cYubinNo")) << e.text().toStdString();
        EXPECT_TRUE(e.message().contains("シール.wfd"));
    }
}

TEST_F(Render, OnlyBlankLinesIsNotASuccess)
{
    EXPECT_THROW(job("シール.wfd", {enginetest::kBlankLine, enginetest::kBlankLine}), engine::EngineError);
}

TEST_F(Render, MissingFormAndDataNameTheScriptLine)
{
    const QString csv = write("シール.csv", {enginetest::kLabelTitle, enginetest::labelLine({})});
    const QString s1 = write("a.dat", enginetest::scriptLines(dir.filePath("無い.wfd"), csv));
    try {
        engine::Document doc(engine::readWfdScript(s1), QString());
        FAIL();
    } catch (const engine::EngineError& e) {
        EXPECT_EQ(e.line(), 1);
        EXPECT_TRUE(e.message().contains("無い.wfd"));
    }
    const QString s2 =
        write("b.dat", enginetest::scriptLines(enginetest::formPath("シール.wfd"), dir.filePath("無い.csv")));
    try {
        engine::Document doc(engine::readWfdScript(s2), QString());
        FAIL();
    } catch (const engine::EngineError& e) {
        EXPECT_EQ(e.line(), 3);
        EXPECT_TRUE(e.message().contains("無い.csv"));
    }
}

TEST_F(Render, ItemThatTheFormDoesNotHaveIsNamed)
{
    try {
        job("シール.wfd", {enginetest::labelLine({})}, {"SetItemValue,\"Header.Caption\",\"x\""});
        FAIL();
    } catch (const engine::EngineError& e) {
        EXPECT_EQ(e.line(), 4);
        EXPECT_TRUE(e.message().contains("Header.Caption"));
    }
}

TEST_F(Render, SecondDataFileWithTheSameTitlesContinuesTheFirst)
{
    QStringList first{enginetest::kLabelTitle};
    QStringList second{enginetest::kLabelTitle};
    for (int i = 0; i < 8; ++i) first.append(enginetest::labelLine({}));
    for (int i = 0; i < 4; ++i) second.append(enginetest::labelLine({}));
    const QString a = write("a.csv", first);
    const QString b = write("b.csv", second);
    const QString script =
        write("WfdCom.dat", enginetest::scriptLines(enginetest::formPath("シール.wfd"), a,
                                                    {QStringLiteral("SetDataText,\"追加\",\"%1\"").arg(b)}));
    engine::Document doc(engine::readWfdScript(script), QString());
    EXPECT_EQ(doc.nPages(), 2);
    const QString c = write("c.csv", {"cIDno,cName", "1,\"x\""});
    write("WfdCom.dat", enginetest::scriptLines(enginetest::formPath("シール.wfd"), a,
                                                {QStringLiteral("SetDataText,\"追加\",\"%1\"").arg(c)}));
    EXPECT_THROW(engine::Document(engine::readWfdScript(script), QString()), engine::EngineError);
}

// A script written on another machine names a form path that does not exist here; the
// engine's own forms folder has a form of that name.
TEST_F(Render, FormNotWhereTheScriptSaysIsTakenFromTheEnginesFormsFolder)
{
    const QString csv = write("シール.csv", {enginetest::kLabelTitle, enginetest::labelLine({})});
    const QString script = write("WfdCom.dat", enginetest::scriptLines("C:\\Velmio\\SYS\\シール.wfd", csv));
    engine::Document doc(engine::readWfdScript(script), QStringLiteral(SEAL_SOURCE_DIR));
    EXPECT_EQ(doc.nPages(), 1);
    EXPECT_THROW(engine::Document(engine::readWfdScript(script), dir.path()), engine::EngineError);
}

TEST_F(Render, PrinterGetsThePagesOfTheChosenRange)
{
    QStringList lines;
    for (int i = 0; i < 35; ++i) lines.append(enginetest::labelLine({}));
    const auto doc = job("シール.wfd", lines);
    ASSERT_EQ(doc->nPages(), 4);
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(dir.filePath("printed.pdf"));
    engine::printDocument(*doc, printer, 2, 3);
    QFile f(dir.filePath("printed.pdf"));
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    EXPECT_TRUE(f.readAll().contains("/Count 2"));
    EXPECT_TRUE(printer.fullPage());
}

TEST_F(Render, PdfHasOnePagePerSheet)
{
    QStringList lines;
    for (int i = 0; i < 25; ++i) lines.append(enginetest::labelLine({}));
    const auto doc = job("シール.wfd", lines);
    const QString pdf = dir.filePath("out.pdf");
    engine::writePdf(*doc, pdf);
    QFile f(pdf);
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    const QByteArray bytes = f.readAll();
    EXPECT_TRUE(bytes.startsWith("%PDF-"));
    EXPECT_EQ(bytes.count("/Type /Page\n") + bytes.count("/Type /Page\r") + bytes.count("/Type /Page "), 3);
    EXPECT_EQ(doc->defaultPdfPath(), dir.filePath("シール.pdf"));
    // Names and addresses: readable by the user alone.
    EXPECT_EQ(QFile::permissions(pdf) & (QFileDevice::ReadGroup | QFileDevice::ReadOther), QFileDevice::Permissions());
}

}  // namespace
