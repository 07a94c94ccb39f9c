// CP932 holds every caption and message of the program, and the byte-prefix rule
// never splits a double-byte character.

#include "base/text_codec.h"

#include "support/files.h"
#include "support/printers.h"

#include <QElapsedTimer>

#include <gtest/gtest.h>

#include <algorithm>

using namespace base;

namespace {

// Captions, titles, messages and file keys as the program shows and writes them,
// with the characters that differ between Shift_JIS variants.
const char16_t* const kProgramTexts[] = {
    u"シール印刷",
    u"　エラー！！",
    u"警告！",
    u"対象年月選択",
    u"処理モードが設定されていません。",
    u"起動できません！",
    u"システム設定ファイルが見つかりません。",
    u"システム設定ファイルに、指定の項目が見つかりません。",
    u"画面起動中にエラーが発生しました。",
    u"接続文字列取得できません。",
    u"loadInitCorp でエラー",
    u"※ID入力後、Enterキーでリスト追加",
    u"※令和元年 単価変更対応済",
    u"ⅠＤ",
    u"〒 ",
    u"はり・きゅう",
    u"・・・",
    u"－ 指定なし －",
    u"～",
    u"温あん法・電気光線器具",
    u"同意書在中",
    u"医事課御中",
    u"様",
    u"①②⑳",
    u"髙橋",
    u"﨑",
    u"ケアマネ",
    u"紹介者",
    u"封筒印刷",
    u"データ抽出条件（補助）",
    u"回収条件",
    u"施術経過より抽出",
    u"タックシール脚注",
    u"帳票Format.ini",
    u"印刷設定.ini",
    u"接続情報",
    u"㈱",
    u"№",
    u"ﾔﾏﾀﾞ ﾀﾛｳ",
    u"￥",
    u"∵",
};

}  // namespace

TEST(Cp932, EveryProgramTextEncodesWithoutLossAndDecodesBack)
{
    for (const char16_t* raw : kProgramTexts) {
        const QString text = QString::fromUtf16(raw);
        bool lossy = true;
        const QByteArray bytes = toCp932(text, &lossy);
        EXPECT_FALSE(lossy) << text.toStdString();
        EXPECT_FALSE(bytes.contains('?')) << text.toStdString();
        bool bad = true;
        EXPECT_EQ(fromCp932(bytes, &bad), text);
        EXPECT_FALSE(bad) << text.toStdString();
    }
}

TEST(Cp932, TheWindowsFormsOfTheAmbiguousCharacters)
{
    // These are where Shift_JIS and CP932 part: the files of the suite hold these bytes.
    EXPECT_EQ(toCp932(u"～"), QByteArray("\x81\x60"));
    EXPECT_EQ(toCp932(u"－"), QByteArray("\x81\x7c"));
    EXPECT_EQ(toCp932(u"①"), QByteArray("\x87\x40"));
    EXPECT_EQ(toCp932(u"￥"), QByteArray("\x81\x8f"));
    EXPECT_EQ(toCp932(u"ｶﾞ"), QByteArray("\xb6\xde"));
    EXPECT_EQ(fromCp932("\x81\x60\x81\x7c\x87\x40"), QStringLiteral("～－①"));
    EXPECT_EQ(toCp932(u"髙").size(), 2);
}

TEST(Cp932, PrefixLengthKeepsWholeCharacters)
{
    const QByteArray mixed = toCp932(u"aｱ漢b");  // 1 + 1 + 2 + 1 bytes
    EXPECT_EQ(cp932PrefixLength(mixed, 0), 0);
    EXPECT_EQ(cp932PrefixLength(mixed, 2), 2);
    EXPECT_EQ(cp932PrefixLength(mixed, 3), 2);  // the kanji would be split
    EXPECT_EQ(cp932PrefixLength(mixed, 4), 4);
    EXPECT_EQ(cp932PrefixLength(mixed, 99), 5);
    // A lead byte at the very end counts as one character of its own.
    EXPECT_EQ(cp932PrefixLength(QByteArray("a\x81"), 2), 2);
    EXPECT_EQ(cp932CharBytes(0x41), 1);
    EXPECT_EQ(cp932CharBytes(0xB6), 1);
    EXPECT_EQ(cp932CharBytes(0x81), 2);
    EXPECT_EQ(cp932CharBytes(0xEE), 2);
    EXPECT_EQ(cp932CharBytes(0x80), 0);
    EXPECT_EQ(cp932CharBytes(0xFF), 0);
}

TEST(Cp932, AnUnassignedPairAndStrayBytesEachLeaveOneMark)
{
    // 0x85 0x40 is a well-formed pair CP932 leaves unassigned; 0x80 and 0xFF never
    // start a character; the lone lead byte at the end has no trail.
    const QByteArray bytes = toCp932(u"山田") + "\x85\x40" + "a\x80" + toCp932(u"様") + "\xFF" + "\x81";
    bool bad = false;
    const QChar mark(0xFFFD);
    EXPECT_EQ(fromCp932(bytes, &bad),
              QStringLiteral("山田") + mark + QStringLiteral("@a") + mark + QStringLiteral("様") + mark + mark);
    EXPECT_TRUE(bad);
}

namespace {

// The least time of a few decodes, in ms: steadier than one run on a busy machine.
double leastDecodeMs(const QByteArray& bytes, QString& out)
{
    double least = 1e9;
    for (int run = 0; run < 3; ++run) {
        QElapsedTimer t;
        t.start();
        out = fromCp932(bytes);
        least = std::min(least, t.nsecsElapsed() / 1e6);
    }
    return least;
}

}  // namespace

TEST(Cp932, OneBadByteAtTheEndOfALargeFileCostsAboutAsMuchAsTheCleanFile)
{
    // About 3 MB of label lines. A decoder made anew per character took hundreds of
    // times the clean file's time to mark the one bad byte at its end; now it costs a
    // second pass and a scan (the bound leaves room for a busy machine).
    QByteArray clean;
    const QByteArray line = toCp932(u"1,\"山田 太郎 様\",\"ﾔﾏﾀﾞ ﾀﾛｳ\",\"〒 123-4567\",\"東京都新宿区西新宿2-8-1\"\r\n");
    while (clean.size() < 3'000'000) clean += line;
    QString cleanText, badText;
    const double cleanMs = leastDecodeMs(clean, cleanText);
    const double badMs = leastDecodeMs(clean + "\xFF", badText);
    EXPECT_EQ(badText, cleanText + QChar(0xFFFD));
    EXPECT_LT(badMs, 10 * cleanMs + 50) << "clean " << cleanMs << " ms, with a bad byte " << badMs << " ms";
}
