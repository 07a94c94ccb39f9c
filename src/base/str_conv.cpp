#include "base/str_conv.h"

#include "base/vb_error.h"

#include <QHash>

namespace base {

namespace {

constexpr char16_t kHalfFirst = 0xFF61;  // "｡"
constexpr char16_t kHalfLast = 0xFF9F;   // "ﾟ"
constexpr char16_t kHalfVoiced = 0xFF9E;
constexpr char16_t kHalfSemiVoiced = 0xFF9F;

// Full-width form of each half-width katakana character U+FF61 to U+FF9F.
constexpr char16_t kFullOfHalf[kHalfLast - kHalfFirst + 1] = {
    0x3002, 0x300C, 0x300D, 0x3001, 0x30FB,                          // ｡｢｣､･
    0x30F2,                                                          // ｦ
    0x30A1, 0x30A3, 0x30A5, 0x30A7, 0x30A9, 0x30E3, 0x30E5, 0x30E7,  // ｧｨｩｪｫｬｭｮ
    0x30C3, 0x30FC,                                                  // ｯｰ
    0x30A2, 0x30A4, 0x30A6, 0x30A8, 0x30AA,                          // ｱｲｳｴｵ
    0x30AB, 0x30AD, 0x30AF, 0x30B1, 0x30B3,                          // ｶｷｸｹｺ
    0x30B5, 0x30B7, 0x30B9, 0x30BB, 0x30BD,                          // ｻｼｽｾｿ
    0x30BF, 0x30C1, 0x30C4, 0x30C6, 0x30C8,                          // ﾀﾁﾂﾃﾄ
    0x30CA, 0x30CB, 0x30CC, 0x30CD, 0x30CE,                          // ﾅﾆﾇﾈﾉ
    0x30CF, 0x30D2, 0x30D5, 0x30D8, 0x30DB,                          // ﾊﾋﾌﾍﾎ
    0x30DE, 0x30DF, 0x30E0, 0x30E1, 0x30E2,                          // ﾏﾐﾑﾒﾓ
    0x30E4, 0x30E6, 0x30E8,                                          // ﾔﾕﾖ
    0x30E9, 0x30EA, 0x30EB, 0x30EC, 0x30ED,                          // ﾗﾘﾙﾚﾛ
    0x30EF, 0x30F3,                                                  // ﾜﾝ
    0x309B, 0x309C,                                                  // ﾞﾟ
};

constexpr char16_t kFullU = 0x30A6;   // ウ
constexpr char16_t kFullVu = 0x30F4;  // ヴ

bool takesVoicedMark(char16_t full)
{
    return (full >= 0x30AB && full <= 0x30C8 && full != 0x30C3) ||  // カ to ト
           (full >= 0x30CF && full <= 0x30DB && (full - 0x30CF) % 3 == 0) || full == kFullU;
}

bool takesSemiVoicedMark(char16_t full) { return full >= 0x30CF && full <= 0x30DB && (full - 0x30CF) % 3 == 0; }

// The ASCII characters whose full-width form on a Japanese system is not the plain
// U+FF01 to U+FF5E one.
char16_t wideAscii(char16_t c)
{
    switch (c) {
    case u' ':
        return 0x3000;
    case u'"':
        return 0x201D;  // ”
    case u'\'':
        return 0x2019;  // ’
    case u'\\':
        return 0xFFE5;  // ￥
    default:
        return c + 0xFEE0;
    }
}

QString toWide(const QString& text)
{
    QString out;
    out.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t c = text[i].unicode();
        if (c >= 0x20 && c <= 0x7E) {
            out += QChar(wideAscii(c));
        } else if (c >= kHalfFirst && c <= kHalfLast) {
            char16_t full = kFullOfHalf[c - kHalfFirst];
            const char16_t next = i + 1 < text.size() ? text[i + 1].unicode() : 0;
            if (next == kHalfVoiced && takesVoicedMark(full)) {
                full = full == kFullU ? kFullVu : full + 1;
                ++i;
            } else if (next == kHalfSemiVoiced && takesSemiVoicedMark(full)) {
                full += 2;
                ++i;
            }
            out += QChar(full);
        } else {
            out += QChar(c);
        }
    }
    return out;
}

// Half-width forms of full-width characters, voiced letters as two characters.
const QHash<char16_t, QString>& narrowTable()
{
    static const QHash<char16_t, QString> table = [] {
        QHash<char16_t, QString> t;
        for (char16_t h = kHalfFirst; h <= kHalfLast; ++h) {
            const char16_t full = kFullOfHalf[h - kHalfFirst];
            t.insert(full, QString(QChar(h)));
            if (takesVoicedMark(full))
                t.insert(full == kFullU ? kFullVu : char16_t(full + 1), QString(QChar(h)) + QChar(kHalfVoiced));
            if (takesSemiVoicedMark(full)) t.insert(char16_t(full + 2), QString(QChar(h)) + QChar(kHalfSemiVoiced));
        }
        for (char16_t c = 0x21; c <= 0x7E; ++c) t.insert(wideAscii(c), QString(QChar(c)));
        t.insert(0x3000, QStringLiteral(" "));
        // The plain full-width forms of the specially mapped characters read back too.
        t.insert(0xFF02, QStringLiteral("\""));
        t.insert(0xFF07, QStringLiteral("'"));
        t.insert(0xFF3C, QStringLiteral("\\"));
        return t;
    }();
    return table;
}

QString toNarrow(const QString& text)
{
    const QHash<char16_t, QString>& table = narrowTable();
    QString out;
    out.reserve(text.size());
    for (QChar c : text) {
        const auto it = table.constFind(c.unicode());
        if (it != table.constEnd())
            out += *it;
        else
            out += c;
    }
    return out;
}

QString toKatakana(QString text)
{
    for (QChar& c : text) {
        const char16_t u = c.unicode();
        if ((u >= 0x3041 && u <= 0x3096) || u == 0x309D || u == 0x309E) c = QChar(char16_t(u + 0x60));
    }
    return text;
}

QString toHiragana(QString text)
{
    for (QChar& c : text) {
        const char16_t u = c.unicode();
        if ((u >= 0x30A1 && u <= 0x30F6) || u == 0x30FD || u == 0x30FE) c = QChar(char16_t(u - 0x60));
    }
    return text;
}

}  // namespace

QString StrConv(const QString& text, int conversion)
{
    const auto has = [conversion](int flag) { return (conversion & flag) != 0; };
    if ((has(vbWide) && has(vbNarrow)) || (has(vbKatakana) && has(vbHiragana)) ||
        (has(vbUpperCase) && has(vbLowerCase)))
        throw VbError::invalidProcedureCall();

    QString s = text;
    if (has(vbWide)) s = toWide(s);
    if (has(vbKatakana)) s = toKatakana(s);
    if (has(vbHiragana)) s = toHiragana(s);
    if (has(vbNarrow)) s = toNarrow(s);
    if (has(vbUpperCase)) s = s.toUpper();
    if (has(vbLowerCase)) s = s.toLower();
    return s;
}

}  // namespace base
