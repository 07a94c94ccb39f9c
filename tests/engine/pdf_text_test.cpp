// A saved PDF's text layer reads as what is printed: names are searched and copied
// from it. Every shipped label and envelope form is written to PDF and read back with
// pdftotext, page by page, against the text the engine laid out.

#include "engine/document.h"
#include "engine/font_cmap.h"
#include "engine/page_output.h"
#include "engine/wfd_script.h"

#include "support/engine_job.h"

#include <QFile>
#include <QPainter>
#include <QProcess>
#include <QRegularExpression>
#include <gtest/gtest.h>

using namespace sealtest;

namespace {

// Names and places full of the ideographs that share their glyphs with Kangxi radicals.
QStringList kanjiLines()
{
    const char* const names[][2] = {{"石田 高志 様", "東京都目黒区大岡山1-2-3 高木ハイツ101"},
                                    {"大西 長子 様", "大阪府大阪市西区長堀3-4"},
                                    {"夏目 木綿子 様", "長野県長野市大字鶴賀1-1"},
                                    {"高木 長田 様", "石川県金沢市木ノ新保町1-1"}};
    QStringList lines;
    int id = 1;
    for (const auto& n : names) {
        Label l;
        l.id = QString::number(id++);
        l.name = QString::fromUtf8(n[0]);
        l.address = QString::fromUtf8(n[1]);
        l.kikan = QStringLiteral("医療法人社団 大木会");
        l.footnote = QStringLiteral("同意書在中");
        lines.append(labelLine(l));
    }
    return lines;
}

QString pdfPageText(const QString& pdf, int page)
{
    QProcess p;
    p.start(QStringLiteral("pdftotext"),
            {QStringLiteral("-raw"), QStringLiteral("-enc"), QStringLiteral("UTF-8"), QStringLiteral("-f"),
             QString::number(page), QStringLiteral("-l"), QString::number(page), pdf, QStringLiteral("-")});
    if (!p.waitForFinished(60000) || p.exitCode() != 0) {
        ADD_FAILURE() << "pdftotext failed: " << p.readAllStandardError().toStdString();
        return {};
    }
    return QString::fromUtf8(p.readAllStandardOutput());
}

QStringList words(const QString& text)
{
    return text.split(QRegularExpression(QStringLiteral("\\s+")), Qt::SkipEmptyParts);
}

class PdfText : public ::testing::TestWithParam<const char*> {
protected:
    JobFolder jobs;
};

TEST_P(PdfText, ExtractedTextEqualsThePrintedText)
{
    const QString form = QString::fromUtf8(GetParam());
    const auto job = jobs.job(form, kanjiLines());
    engine::Document& doc = *job;
    const QString pdf = jobs.path(QStringLiteral("out.pdf"));
    engine::writePdf(doc, pdf);

    for (int page = 0; page < doc.nPages(); ++page) {
        QStringList printed;
        QString printedRun;
        bool vertical = false;
        doc.setInkRecorder([&](const engine::PlacedInk& ink) {
            for (const engine::PlacedRun& r : ink.layout.runs) {
                printed += words(r.text);
                printedRun += r.text;
            }
            vertical = vertical || ink.layout.vertical;
        });
        QImage img(20, 20, QImage::Format_RGB32);
        QPainter p(&img);
        doc.printPage(p, page);
        p.end();
        doc.setInkRecorder({});

        const QString extracted = pdfPageText(pdf, page + 1);
        // Word for word; a vertical column is read one character a line, so there the
        // characters in order.
        const QString sep = vertical ? QString() : QStringLiteral(" ");
        EXPECT_EQ(words(extracted).join(sep).toStdString(), printed.join(sep).toStdString())
            << form.toStdString() << " page " << page + 1;
        const auto radical = std::find_if(extracted.begin(), extracted.end(),
                                          [](QChar c) { return c.unicode() >= 0x2E80 && c.unicode() <= 0x2FDF; });
        EXPECT_EQ(radical, extracted.end()) << "a radical on page " << page + 1 << " of " << form.toStdString();
    }
}
INSTANTIATE_TEST_SUITE_P(Forms, PdfText,
                         ::testing::Values("シール.wfd", "シール_2X6.wfd", "ビーコン用シール30M.wfd", "封筒印刷長3.wfd",
                                           "封筒印刷長3_横.wfd", "封筒印刷長3_横窓.wfd", "封筒印刷角2_2.wfd"),
                         [](const auto& info) { return "Form" + std::to_string(info.index); });

// The installed IPAex files map radicals and ideographs to the same glyphs; the font
// the engine loads maps each of those glyphs from the ideograph alone, and still has
// every glyph a Japanese text names.
TEST(TrimmedFont, KeepsEveryGlyphUnderOneCharacter)
{
    QFile file(QStringLiteral("/usr/share/fonts/opentype/ipaexfont-gothic/ipaexg.ttf"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << "fonts-ipaexfont is not installed";
    const QByteArray original = file.readAll();
    const engine::TrimmedFont trimmed = engine::trimCharacterMap(original, QStringLiteral("Test Gothic"));
    ASSERT_FALSE(trimmed.data.isEmpty());
    const QHash<char32_t, quint16> before = engine::unicodeMap(original);
    const QHash<char32_t, quint16> after = engine::unicodeMap(trimmed.data);
    ASSERT_GT(before.size(), 10000);

    EXPECT_EQ(before.value(U'⽥'), before.value(U'田'));  // the fault this mends
    EXPECT_FALSE(after.contains(U'⽥'));
    EXPECT_EQ(int(trimmed.aliases.value(u'⽥')), int(u'田'));
    EXPECT_EQ(int(trimmed.aliases.value(u'〜')), int(u'～'));  // CP932 text carries the full-width tilde
    int left = 0;
    for (auto it = before.begin(); it != before.end(); ++it) {
        if (after.contains(it.key())) {
            EXPECT_EQ(after.value(it.key()), it.value()) << std::hex << uint(it.key());
        } else {
            ++left;
            EXPECT_TRUE(engine::isAliasOnly(it.key())) << std::hex << uint(it.key());
        }
    }
    EXPECT_EQ(left, before.size() - after.size());
    // A PDF names each glyph by the lowest character mapped to it: that is never an
    // alias where the glyph has a character of its own.
    QHash<quint16, char32_t> lowest;
    QHash<quint16, bool> ownCharacter;
    for (auto it = after.begin(); it != after.end(); ++it) {
        if (!lowest.contains(it.value()) || it.key() < lowest.value(it.value())) lowest.insert(it.value(), it.key());
        if (!engine::isAliasOnly(it.key())) ownCharacter.insert(it.value(), true);
    }
    for (auto it = lowest.begin(); it != lowest.end(); ++it)
        if (ownCharacter.value(it.key())) {
            EXPECT_FALSE(engine::isAliasOnly(it.value())) << std::hex << uint(it.value());
        }
}

}  // namespace
