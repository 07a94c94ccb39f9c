#include "engine/jp_text.h"

#include <QStringView>

namespace engine {

namespace {

constexpr QStringView kNoStart = u"ぁぃぅぇぉっゃゅょゎゕゖァィゥェォッャュョヮヵヶㇰㇱㇲㇳㇴㇵㇶㇷㇸㇹㇺㇻㇼㇽㇾㇿ"
                                 u"ーｰ、。，．,.）〕］｝〉》」』】〙〗)]}・：；？！:;?!ゝゞヽヾ々〻‐゠–〜～";
constexpr QStringView kNoEnd = u"（〔［｛〈《「『【〘〖([{";
constexpr QStringView kSmallKana = u"ぁぃぅぇぉっゃゅょゎゕゖァィゥェォッャュョヮヵヶ";
constexpr QStringView kTurned = u"ー－-‐−—―～〜…‥＝=ｰ（）()｛｝〔〕【】《》〈〉「」『』［］";
constexpr QStringView kKanji = u"〇一二三四五六七八九";

}  // namespace

bool cannotStartLine(char16_t c) { return kNoStart.contains(QChar(c)); }
bool cannotEndLine(char16_t c) { return kNoEnd.contains(QChar(c)); }

bool isWordChar(char16_t c)
{
    if ((c >= u'0' && c <= u'9') || (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z')) return true;
    if ((c >= u'０' && c <= u'９') || (c >= u'Ａ' && c <= u'Ｚ') || (c >= u'ａ' && c <= u'ｚ')) return true;
    return c == u'-' || c == u'－' || c == u'‐' || c == u'.' || c == u'．' || c == u'/' || c == u'／' || c == u'#' ||
           c == u'＃';
}

QString toFullWidth(const QString& s)
{
    QString out = s;
    for (QChar& ch : out) {
        const char16_t c = ch.unicode();
        if (c > 0x20 && c < 0x7F)
            ch = QChar(char16_t(c - 0x21 + 0xFF01));
        else if (c == u' ')
            ch = QChar(u'\u3000');
    }
    return out;
}

QString toKanjiDigits(const QString& s)
{
    QString out = s;
    for (QChar& ch : out) {
        const char16_t c = ch.unicode();
        if (c >= u'0' && c <= u'9')
            ch = kKanji[c - u'0'];
        else if (c >= u'０' && c <= u'９')
            ch = kKanji[c - u'０'];
    }
    return out;
}

VerticalGlyph verticalGlyph(char16_t c)
{
    VerticalGlyph g{c};
    if (c == u'、' || c == u'。' || c == u'，' || c == u'．')
        g.shift = 0.6;
    else if (kSmallKana.contains(QChar(c)))
        g.shift = 0.1;
    else if (kTurned.contains(QChar(c)))
        g.rotate = true;
    return g;
}

}  // namespace engine
