#include "engine/text_layout.h"

#include "engine/jp_text.h"

#include <QPainter>

#include <cmath>

namespace engine {

namespace {

constexpr double kEps = 1e-6;

bool isSpace(char16_t c) { return c == u' ' || c == u'\u3000' || c == u'\t'; }
bool isDigit(char16_t c) { return (c >= u'0' && c <= u'9') || (c >= u'０' && c <= u'９'); }
bool isKatakana(char16_t c) { return (c >= u'ァ' && c <= u'ヺ') || c == u'ー' || (c >= u'ｦ' && c <= u'ﾟ'); }
// What follows a block number's digits and still belongs to it ("3丁目", "12番地", "305号室").
bool isNumberSuffix(char16_t c) { return QStringView(u"丁目番地号室棟階").contains(QChar(c)); }

// Squares a vertical line takes: one per character, a surrogate pair being one.
double squareOf(char16_t c) { return QChar::isLowSurrogate(c) ? 0.0 : 1.0; }
qsizetype squares(QStringView s)
{
    qsizetype n = 0;
    for (QChar c : s) n += QChar::isLowSurrogate(c.unicode()) ? 0 : 1;
    return n;
}

// How good a place is to end a line before index i: never, inside a run that reads as
// one word (katakana, a block number), an ordinary place, or between words (after a
// blank, between an address's town, block number and building).
enum BreakClass : signed char { kNever = -1, kInsideRun = 0, kPlain = 1, kBetweenParts = 2 };

std::vector<signed char> breakClasses(QStringView p, QStringView keepTail)
{
    const qsizetype n = p.size();
    std::vector<signed char> cls(n + 1, kNever);
    for (qsizetype i = 1; i < n; ++i) {
        const char16_t a = p[i - 1].unicode();
        const char16_t b = p[i].unicode();
        if (isSpace(b) || cannotStartLine(b) || cannotEndLine(a) || (isWordChar(a) && isWordChar(b)) ||
            (a == u'御' && b == u'中') || QChar::isLowSurrogate(b))
            continue;  // after the blanks, not before them; kinsoku; never inside a pair
        // A block number ends here: digits, or the suffixes after them ("2丁目", "12番地").
        qsizetype k = i - 1;
        while (k > 0 && isNumberSuffix(p[k].unicode())) --k;
        const bool numberEnds = isDigit(p[k].unicode());
        if (isSpace(a) || (isDigit(b) && !isNumberSuffix(a)) || (numberEnds && !isNumberSuffix(b)))
            cls[i] = kBetweenParts;
        else if (((isDigit(a) || isNumberSuffix(a)) && (isDigit(b) || isNumberSuffix(b))) ||
                 (isKatakana(a) && isKatakana(b)))
            cls[i] = kInsideRun;
        else
            cls[i] = kPlain;
    }
    // The honorific at the end stays on the line of the name's last character.
    if (!keepTail.isEmpty() && p.endsWith(keepTail) && n > keepTail.size()) {
        qsizetype k = n - keepTail.size() - 1;
        while (k > 0 && isSpace(p[k].unicode())) --k;
        for (qsizetype i = k + 1; i < n; ++i) cls[i] = kNever;
    }
    return cls;
}

// The end of a line that overflows at over: the best place in (start, over]. A place
// between words wins over a later ordinary one unless it leaves the line less than a
// third full, an ordinary place wins over a later one inside a run within the last
// third, and a line left almost empty is the last resort. -1 where there is none.
qsizetype chooseBreak(const std::vector<signed char>& cls, const std::vector<double>& x, qsizetype start,
                      qsizetype over, double limit)
{
    qsizetype best = -1;
    double bestScore = -1e9;
    for (qsizetype k = over; k > start; --k) {
        if (cls[k] == kNever) continue;
        const double f = (x[k] - x[start]) / limit;
        double score = f + (cls[k] == kBetweenParts ? 1.0 : cls[k] == kPlain ? 0.34 : 0.0);
        if (f < 0.2) score -= 1.0;
        if (score > bestScore + kEps) {
            best = k;
            bestScore = score;
        }
    }
    return best;
}

struct Line {
    QString text;
    bool continued = false;  // a wrapped continuation of the line before
};

template <typename Advance>
QList<Line> breakImpl(const QString& text, double limit, double indent, Advance adv, QStringView keepTail,
                      bool* overflow)
{
    QList<Line> out;
    QString norm = text;
    norm.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    norm.replace(u'\r', u'\n');
    std::vector<double> x;
    for (const QString& para : norm.split(u'\n')) {
        const qsizetype n = para.size();
        const std::vector<signed char> cls = breakClasses(para, keepTail);
        x.assign(n + 1, 0.0);
        for (qsizetype i = 0; i < n; ++i) x[i + 1] = x[i] + adv(para[i].unicode());
        qsizetype start = 0;
        while (start < n && isSpace(para[start].unicode())) ++start;
        if (start >= n) {
            out.append(Line());
            continue;
        }
        bool continued = false;
        while (start < n) {
            const double lim = continued ? limit - indent : limit;
            qsizetype over = -1;
            for (qsizetype i = start; i < n && over < 0; ++i)
                if (!isSpace(para[i].unicode()) && x[i + 1] - x[start] > lim + kEps) over = i;
            qsizetype cut = n;
            if (over == start) {
                // One character wider than the line: it stands alone and overflows.
                if (overflow) *overflow = true;
                cut = start + 1;
                if (cut < n && QChar::isLowSurrogate(para[cut].unicode())) ++cut;
            } else if (over > start) {
                cut = chooseBreak(cls, x, start, over, lim);
                if (cut < 0) {
                    if (overflow) *overflow = true;
                    cut = over;
                }
            }
            qsizetype end = cut;
            while (end > start && isSpace(para[end - 1].unicode())) --end;
            out.append(Line{para.mid(start, end - start), continued});
            start = cut;
            while (start < n && isSpace(para[start].unicode())) ++start;
            continued = true;
        }
    }
    return out;
}

QStringList texts(const QList<Line>& lines)
{
    QStringList out;
    for (const Line& l : lines) out.append(l.text);
    return out;
}

}  // namespace

QStringList breakLines(const QString& text, double width, double sizeMm, const FontBook& fonts, FontFace face,
                       bool bold, const QString& keepTail, bool* overflow, double indentEms)
{
    if (overflow) *overflow = false;
    const double limit = width / sizeMm;
    return texts(breakImpl(
        text, limit, indentEms, [&](char16_t c) { return fonts.advance(face, bold, c); }, keepTail, overflow));
}

QString shapeText(const QString& text, const TextStyle& style)
{
    QString s = text;
    if (style.numerals == Numerals::Kanji) s = toKanjiDigits(s);
    if (style.vertical || style.numerals == Numerals::FullWidth) {
        // Keep line ends; everything else printable goes full width to stand upright.
        QString out;
        out.reserve(s.size());
        for (QChar c : s) out += (c == u'\r' || c == u'\n') ? QString(c) : toFullWidth(QString(c));
        s = out;
    }
    return s;
}

TextLayout layoutText(const QString& text, const QRectF& box, const TextStyle& style, const FontBook& fonts,
                      const QString& keepTail)
{
    TextLayout out;
    out.vertical = style.vertical;
    const QString shaped = fonts.printable(style.face, shapeText(text, style));
    const QString tail = fonts.printable(style.face, shapeText(keepTail, style));
    const double nominal = ptToMm(style.size);
    const double smallest = std::min(nominal, ptToMm(style.minSize));
    const double along = style.vertical ? box.height() : box.width();
    const double across = style.vertical ? box.width() : box.height();
    // Length of a line in ems.
    auto measure = [&](QStringView s) {
        return style.vertical ? double(squares(s)) : fonts.width(style.face, style.bold, s);
    };
    auto advance = [&](char16_t c) { return style.vertical ? squareOf(c) : fonts.advance(style.face, style.bold, c); };

    auto lay = [&](double sz, bool* ok) {
        bool overflow = false;
        QList<Line> lines;
        if (style.wrap) {
            lines = breakImpl(shaped, along / sz, style.indent, advance, tail, &overflow);
        } else {
            lines = breakImpl(
                shaped, 1e9, 0, [](char16_t) { return 0.0; }, tail, nullptr);
            for (const Line& l : lines)
                if (measure(l.text) * sz > along + kEps) overflow = true;
        }
        const double extent = (lines.size() - 1) * sz * style.lineSpacing + sz;
        *ok = !overflow && extent <= across + kEps;
        return lines;
    };

    bool ok = false;
    double size = nominal;
    QList<Line> lines = lay(size, &ok);
    if (!ok) {
        double lo = smallest, hi = nominal;
        bool okLo = false;
        QList<Line> linesLo = lay(lo, &okLo);
        if (!okLo) {
            // Not even the form's smallest size holds it: as many lines as the box has,
            // the last one cut with "…".
            size = lo;
            lines = linesLo;
            out.fits = false;
            const int room = std::max(1, int(std::floor((across - size) / (size * style.lineSpacing) + kEps)) + 1);
            const bool dropped = lines.size() > room;
            if (dropped) lines.resize(room);
            for (int k = 0; k < lines.size(); ++k) {
                const double avail = along / size - (lines[k].continued ? style.indent : 0);
                QString& t = lines[k].text;
                if (measure(t) <= avail + kEps && !(dropped && k == lines.size() - 1)) continue;
                const QString ellipsis = QStringLiteral("…");
                while (!t.isEmpty() && measure(QString(t + ellipsis)) > avail + kEps)
                    t.chop(t.size() > 1 && QChar::isLowSurrogate(t.back().unicode()) ? 2 : 1);
                while (!t.isEmpty() && isSpace(t.back().unicode())) t.chop(1);
                t += ellipsis;
            }
        } else {
            for (int it = 0; it < 12; ++it) {
                const double mid = (lo + hi) / 2;
                bool okMid = false;
                lay(mid, &okMid);
                if (okMid)
                    lo = mid;
                else
                    hi = mid;
            }
            size = lo;
            lines = lay(size, &ok);
        }
    }
    out.sizeMm = size;
    const double pitch = size * style.lineSpacing;
    const double extent = (lines.size() - 1) * pitch + size;

    if (!style.vertical) {
        double top = box.top();
        if (style.valign == VAlign::Middle)
            top += (box.height() - extent) / 2;
        else if (style.valign == VAlign::Bottom)
            top += box.height() - extent;
        const double asc = fonts.ascent(style.face) * size;
        for (int k = 0; k < lines.size(); ++k) {
            const QString& line = lines[k].text;
            const double w = fonts.width(style.face, style.bold, line) * size;
            double x = box.left();
            if (style.align == HAlign::Center)
                x += (box.width() - w) / 2;
            else if (style.align == HAlign::Right)
                x += box.width() - w;
            else if (lines[k].continued)
                x += style.indent * size;
            const double lineTop = top + k * pitch;
            if (!line.isEmpty()) {
                out.runs.append({line, QPointF(x, lineTop + asc)});
                out.bounds |= QRectF(x, lineTop, w, size);
            }
        }
        return out;
    }

    // Vertical: columns from the right, each character on its own em square; a
    // continuation column starts lower by the indent.
    double right = box.right();
    if (style.align == HAlign::Center)
        right -= (box.width() - extent) / 2;
    else if (style.align == HAlign::Left)
        right = box.left() + extent;
    for (int k = 0; k < lines.size(); ++k) {
        const QString& col = lines[k].text;
        const double lead = lines[k].continued ? style.indent * size : 0;
        const double len = squares(col) * size + lead;
        double top = box.top() + lead;
        if (style.valign == VAlign::Middle)
            top += (box.height() - len) / 2;
        else if (style.valign == VAlign::Bottom)
            top += box.height() - len;
        const double cx = right - size / 2 - k * pitch;
        int square = -1;
        for (int j = 0; j < col.size(); ++j) {
            const char16_t c = col[j].unicode();
            if (QChar::isLowSurrogate(c)) continue;
            ++square;
            if (isSpace(c)) continue;
            const double cy = top + square * size + size / 2;
            if (QChar::isHighSurrogate(c) && j + 1 < col.size()) {
                out.runs.append({col.mid(j, 2), QPointF(cx, cy)});
            } else {
                const VerticalGlyph g = verticalGlyph(c);
                out.runs.append({QString(QChar(g.ch)), QPointF(cx, cy), g.rotate, g.shift});
            }
            out.bounds |= QRectF(cx - size / 2, cy - size / 2, size, size);
        }
    }
    return out;
}

void drawLayout(QPainter& painter, const TextLayout& layout, const TextStyle& style, const FontBook& fonts,
                const QColor& color, const QRectF& clip)
{
    if (layout.runs.isEmpty()) return;
    painter.save();
    if (!layout.fits || !clip.contains(layout.bounds)) painter.setClipRect(clip, Qt::IntersectClip);
    // Every size is drawn with one small font and a scaled painter (u is the painter
    // unit in mm after scaling): one font engine per face, small enough for its glyph
    // cache, keeps long runs fast.
    constexpr int kPixels = 48;
    const double sz = layout.sizeMm;
    const double u = sz / kPixels;
    painter.scale(u, u);
    painter.setFont(fonts.font(style.face, style.bold, kPixels));
    painter.setPen(color);
    const double asc = fonts.ascent(style.face) * sz;
    for (const PlacedRun& r : layout.runs) {
        if (!layout.vertical) {
            painter.drawText(QPointF(r.origin.x() / u, r.origin.y() / u), r.text);
            continue;
        }
        const double adv = fonts.advance(style.face, style.bold, r.text[0].unicode()) * sz;
        if (r.rotate) {
            painter.save();
            painter.translate(r.origin.x() / u, r.origin.y() / u);
            painter.rotate(90);
            painter.drawText(QPointF(-adv / 2 / u, (asc - sz / 2) / u), r.text);
            painter.restore();
        } else {
            const double dx = r.shift * sz;
            painter.drawText(QPointF((r.origin.x() - adv / 2 + dx) / u, (r.origin.y() - sz / 2 + asc - dx) / u),
                             r.text);
        }
    }
    painter.restore();
}

}  // namespace engine
