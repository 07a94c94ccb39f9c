// The shipped forms measured from the engine's own layout boxes, for every kind of
// addressee the label CSV carries: printable margins, frames clear of text, and each
// fact printed once.

#include "engine/document.h"
#include "engine/wfd_script.h"

#include "support/engine_job.h"

#include <QPainter>
#include <QRegularExpression>
#include <QSet>
#include <gtest/gtest.h>

using namespace sealtest;

namespace {

constexpr double kPaperMargin = 5.0;  // many office printers print nothing nearer the edge
constexpr double kCellInset = 1.5;    // a label's die cut wanders by about this much
constexpr double kClearance = 0.3;    // between a frame and any text

// What the program writes for one addressee of a kind, with what must print once and
// what must not print at all.
struct KindCase {
    const char* name;
    const char* mst;
    const char* cName;
    const char* keisho;
    const char* kikan;
    const char* daihyo;
    std::vector<const char*> once;
    std::vector<const char*> never;
    bool labelsOnly = false;     // the label step's own office with its name line
    bool envelopesOnly = false;  // an own office on an envelope: the representative is the name
};

// clang-format off
const KindCase kKinds[] = {
    {"Patient", "0", "山田 太郎 様", "様", "", "", {"山田 太郎 様"}, {}},
    {"PatientWithOnchu", "0", "山田 太郎 御中", "御中", "", "", {"山田 太郎 様"}, {"御中"}},
    {"Doctor", "1", "小野 信子 先生", "先生", "医療法人社団さくら会 さくら在宅クリニック", "佐藤 一郎",
     {"さくら在宅クリニック", "小野 信子 先生"}, {"佐藤"}},
    {"DoctorStoredWithHonorific", "1", "小野 信子 先生 先生", "先生", "さくら在宅クリニック", "佐藤 一郎",
     {"先生"}, {"佐藤"}},
    {"Insurer", "2", "東京都後期高齢者医療広域連合 広域連合長 御中", "御中", "", "広域連合長",
     {"広域連合長", "御中", "東京都後期高齢者医療広域連合"}, {}},
    {"Referrer", "3", "田中 花子 様", "様", "ひまわり居宅介護支援事業所", "", {"ひまわり居宅介護支援事業所", "田中 花子 様"}, {}},
    {"CareManager", "4", "鈴木 一郎 様", "様", "みどり苑", "", {"みどり苑", "鈴木 一郎 様"}, {}},
    {"Staff", "5", "高橋 誠 様", "様", "", "", {"高橋 誠 様"}, {}},
    {"Institution", "6", "さくら総合病院 御中", "御中", "", "", {"さくら総合病院 御中"}, {}},
    {"InstitutionWithDepartment", "6", "さくら総合病院 医事課御中", "医事課御中", "さくら総合病院", "医事課御中",
     {"さくら総合病院", "医事課御中"}, {}},
    {"OwnOffice", "7", "ひだまり訪問鍼灸マッサージ 練馬 御中", "御中", "", "代表取締役　山田 太郎 御中",
     {"代表取締役　山田 太郎", "御中", "ひだまり訪問鍼灸マッサージ 練馬"}, {}, true, false},
    {"OwnOfficeOnAnEnvelope", "7", "代表取締役　山田 太郎 御中", "御中", "", "代表取締役　山田 太郎 御中",
     {"山田 太郎", "様"}, {"御中"}, false, true},
};
// clang-format on

QString kindLine(const KindCase& k)
{
    Label l;
    l.name = QString::fromUtf8(k.cName);
    l.kikan = QString::fromUtf8(k.kikan);
    l.daihyo = QString::fromUtf8(k.daihyo);
    l.yubin = QStringLiteral("〒 176-0012");
    l.address = QStringLiteral("東京都練馬区豊玉北6丁目12番3号 グランドメゾン円山 305号室");
    l.mst = QString::fromUtf8(k.mst);
    l.keisho = QString::fromUtf8(k.keisho);
    l.footnote = QStringLiteral("同意書在中");
    return labelLine(l);
}

struct FormKind {
    const char* form;
    bool envelope;
    KindCase kind;
};

void PrintTo(const FormKind& c, std::ostream* os) { *os << c.form << " " << c.kind.name; }

std::vector<FormKind> formKinds()
{
    const std::pair<const char*, bool> forms[] = {
        {"シール.wfd", false},      {"シール_2X6.wfd", false},    {"ビーコン用シール30M.wfd", false},
        {"封筒印刷長3.wfd", true},  {"封筒印刷長3_横.wfd", true}, {"封筒印刷長3_横窓.wfd", true},
        {"封筒印刷角2_2.wfd", true}};
    std::vector<FormKind> out;
    for (const auto& [form, envelope] : forms)
        for (const KindCase& k : kKinds)
            if (!(envelope ? k.labelsOnly : k.envelopesOnly)) out.push_back({form, envelope, k});
    return out;
}

class FormLayout : public ::testing::TestWithParam<FormKind> {
protected:
    // Every ink of every page of the job, by page.
    std::vector<std::vector<engine::PlacedInk>> place(const QString& form, const QStringList& dataLines)
    {
        const auto doc = jobs.job(form, dataLines);
        std::vector<std::vector<engine::PlacedInk>> pages(doc->nPages());
        for (int page = 0; page < doc->nPages(); ++page) {
            doc->setInkRecorder([&](const engine::PlacedInk& ink) { pages[page].push_back(ink); });
            QImage img(10, 10, QImage::Format_RGB32);
            QPainter p(&img);
            doc->printPage(p, page);
        }
        return pages;
    }

    sealtest::JobFolder jobs;
};

QString text(const engine::PlacedInk& ink)
{
    QString t;
    for (const engine::PlacedRun& r : ink.layout.runs) t += r.text;
    return t.remove(QRegularExpression(QStringLiteral("[\\s\u3000]")));
}

QString describe(const engine::PlacedInk& ink)
{
    return QStringLiteral("%1 (%2,%3 %4x%5)")
        .arg(ink.field)
        .arg(ink.ink.left(), 0, 'f', 2)
        .arg(ink.ink.top(), 0, 'f', 2)
        .arg(ink.ink.width(), 0, 'f', 2)
        .arg(ink.ink.height(), 0, 'f', 2);
}

TEST_P(FormLayout, KeepsMarginsAndPrintsEachFactOnce)
{
    const FormKind& c = GetParam();
    const QString form = QString::fromUtf8(c.form);
    const engine::Form f = engine::loadForm(formPath(form));
    const auto pages = place(form, {kindLine(c.kind)});
    ASSERT_FALSE(pages.empty());
    QStringList printed;
    for (const auto& inks : pages) {
        for (const engine::PlacedInk& ink : inks) {
            SCOPED_TRACE(describe(ink).toStdString());
            // 5 mm from every edge of the paper.
            EXPECT_TRUE(QRectF(QPointF(0, 0), f.paper)
                            .adjusted(kPaperMargin, kPaperMargin, -kPaperMargin, -kPaperMargin)
                            .contains(ink.ink));
            // 1.5 mm inside the label it belongs to.
            if (f.cells && f.cells->perPage() > 1) {
                EXPECT_TRUE(
                    f.cells->cell(0).adjusted(kCellInset, kCellInset, -kCellInset, -kCellInset).contains(ink.ink));
            }
            if (ink.kind == engine::PlacedInk::Text) printed.append(text(ink));
        }
        // A frame and a text either stand apart or the text sits well inside the frame.
        for (const engine::PlacedInk& frame : inks) {
            if (frame.kind != engine::PlacedInk::Frame) continue;
            for (const engine::PlacedInk& t : inks) {
                if (t.kind != engine::PlacedInk::Text || t.ink.isEmpty()) continue;
                const QRectF around = frame.ink.adjusted(-kClearance, -kClearance, kClearance, kClearance);
                const QRectF inside = frame.ink.adjusted(kClearance, kClearance, -kClearance, -kClearance);
                EXPECT_TRUE(!around.intersects(t.ink) || inside.contains(t.ink))
                    << describe(t).toStdString() << " touches the frame " << describe(frame).toStdString();
            }
        }
        // Texts of different fields never overlap.
        for (std::size_t i = 0; i < inks.size(); ++i)
            for (std::size_t j = i + 1; j < inks.size(); ++j)
                if (inks[i].kind == engine::PlacedInk::Text && inks[j].kind == engine::PlacedInk::Text &&
                    inks[i].field != inks[j].field) {
                    EXPECT_FALSE(inks[i].ink.intersects(inks[j].ink))
                        << describe(inks[i]).toStdString() << " / " << describe(inks[j]).toStdString();
                }
    }
    const QString all = printed.join(u'|');
    for (const char* once : c.kind.once) {
        const QString needle = QString::fromUtf8(once).remove(QRegularExpression(QStringLiteral("[\\s\u3000]")));
        EXPECT_EQ(all.count(needle), 1) << once << " in " << all.toStdString();
    }
    for (const char* never : c.kind.never)
        EXPECT_FALSE(all.contains(QString::fromUtf8(never))) << never << " in " << all.toStdString();
}
std::string formKindName(const ::testing::TestParamInfo<FormKind>& info)
{
    static const std::vector<std::pair<std::string, std::string>> names = {{"シール.wfd", "Seal10"},
                                                                           {"シール_2X6.wfd", "Seal12"},
                                                                           {"ビーコン用シール30M.wfd", "Seal30"},
                                                                           {"封筒印刷長3.wfd", "Naga3"},
                                                                           {"封筒印刷長3_横.wfd", "Naga3Sideways"},
                                                                           {"封筒印刷長3_横窓.wfd", "Naga3Window"},
                                                                           {"封筒印刷角2_2.wfd", "Kaku2"}};
    for (const auto& [file, name] : names)
        if (file == info.param.form) return name + "_" + info.param.kind.name;
    return "Form" + std::to_string(info.index);
}
INSTANTIATE_TEST_SUITE_P(FormsAndKinds, FormLayout, ::testing::ValuesIn(formKinds()), formKindName);

// The postal code line: "〒 123-4567" whether the code was stored with a hyphen or not,
// and nothing at all for an empty code.
TEST_F(FormLayout, PostalLineIsFormattedOrLeftOut)
{
    Label plain;
    plain.yubin = QStringLiteral("〒 1000013");
    Label empty;
    empty.id = QStringLiteral("2");
    empty.yubin = QStringLiteral("〒 ");
    for (const char* form : {"シール.wfd", "シール_2X6.wfd", "ビーコン用シール30M.wfd", "封筒印刷長3_横.wfd"}) {
        const auto pages = place(QString::fromUtf8(form), {labelLine(plain), labelLine(empty)});
        QStringList postal;
        for (const auto& inks : pages)
            for (const engine::PlacedInk& ink : inks)
                if (ink.field == u"郵便番号")
                    for (const engine::PlacedRun& r : ink.layout.runs) postal.append(r.text);
        EXPECT_EQ(postal, QStringList{QStringLiteral("〒 100-0013")}) << form;
    }
}

// 角形2号 on a printer without duplex: every front, then every back in the same order.
TEST_F(FormLayout, Kaku2PrintsAllFrontsThenAllBacks)
{
    Label a;
    a.name = QStringLiteral("石田 一郎 様");
    Label b;
    b.id = QStringLiteral("2");
    b.name = QStringLiteral("大西 二郎 様");
    const auto pages = place(QStringLiteral("封筒印刷角2_2.wfd"), {labelLine(a), labelLine(b)});
    ASSERT_EQ(pages.size(), 4u);
    auto fieldText = [&](int page, const char* field) {
        for (const engine::PlacedInk& ink : pages[page])
            if (ink.field == QString::fromUtf8(field)) return text(ink);
        return QString();
    };
    EXPECT_EQ(fieldText(0, "宛名"), "石田一郎様");
    EXPECT_EQ(fieldText(1, "宛名"), "大西二郎様");
    for (int back : {2, 3}) {
        EXPECT_TRUE(fieldText(back, "宛名").isEmpty());
        EXPECT_EQ(fieldText(back, "差出人"), "本店");
    }
}

// Data the program never writes still prints inside its label: an empty line, a line
// with fewer fields than the title line, and text far longer than its box.
TEST_F(FormLayout, BadDataStaysInsideItsLabel)
{
    Label huge;
    huge.name =
        QStringLiteral("医療法人社団さくら会さくら在宅クリニック附属訪問看護ステーション東京中央事務所総務部長代理 様");
    huge.address =
        QString(QStringLiteral("北海道札幌市中央区北一条西二丁目一番地 札幌市役所本庁舎十九階 ")).repeated(3);
    const QString shortLine = QStringLiteral("2,\"佐藤 花子 様\",\"サトウ ハナコ\"");
    const auto pages = place(QStringLiteral("ビーコン用シール30M.wfd"), {labelLine(huge), QString(), shortLine});
    ASSERT_EQ(pages.size(), 1u);
    const engine::Form f = engine::loadForm(formPath(QStringLiteral("ビーコン用シール30M.wfd")));
    QSet<QString> fieldsOfTheShortLine;
    for (const engine::PlacedInk& ink : pages[0]) {
        int cell = 0;
        while (cell < 3 && !f.cells->cell(cell).contains(ink.box.center())) ++cell;
        ASSERT_LT(cell, 3) << describe(ink).toStdString();
        EXPECT_NE(cell, 1) << "the empty line leaves its label empty";
        EXPECT_TRUE(f.cells->cell(cell).adjusted(kCellInset, kCellInset, -kCellInset, -kCellInset).contains(ink.ink))
            << describe(ink).toStdString();
        if (ink.kind == engine::PlacedInk::Text) {
            EXPECT_TRUE(ink.box.adjusted(-1e-6, -1e-6, 1e-6, 1e-6).contains(ink.ink)) << describe(ink).toStdString();
            EXPECT_GE(ink.layout.sizeMm, engine::ptToMm(5) - 1e-9);
        }
        if (cell == 2) fieldsOfTheShortLine.insert(ink.field);
    }
    EXPECT_EQ(fieldsOfTheShortLine, QSet<QString>{QStringLiteral("宛名")});
}

}  // namespace
