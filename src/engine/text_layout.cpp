#include "engine/text_layout.h"

#include "engine/jp_text.h"

#include <QPainter>

#include <cmath>

namespace engine {

namespace {

constexpr double kMinSizeMm = 1.0;  // below this nobody reads it; overflow is clipped
constexpr double kEps = 1e-6;

bool isSpace(char16_t c) { return c == u' ' || c == u'\u3000' || c == u'\t'; }

// Squares a vertical line takes: one per character, a surrogate pair being one.
double squareOf(char16_t c) { return QChar::isLowSurrogate(c) ? 0.0 : 1.0; }
qsizetype squares(QStringView s)
{
    qsizetype n = 0;
    for (QChar c : s) n += QChar::isLowSurrogate(c.unicode()) ? 0 : 1;
    return n;
}

// Where a line may break: before index i (0 < i < n).
std::vector<bool> breakOpportunities(QStringView p, QStringView keepTail)
{
    const qsizetype n = p.size();
    std::vector<bool> ok(n + 1, false);
    for (qsizetype i = 1; i < n; ++i) {
        const char16_t a = p[i - 1].unicode();
        const char16_t b = p[i].unicode();
        bool can = true;
        if (isSpace(b)) can = false;                     // break after the blanks, not before
        else if (cannotStartLine(b)) can = false;
        else if (cannotEndLine(a)) can = false;
        else if (isWordChar(a) && isWordChar(b)) can = false;
        else if (a == u'御' && b == u'中') can = false;
        if (QChar::isLowSurrogate(b)) can = false;  // never inside a pair
        ok[i] = can;
    }
    // The honorific at the end stays on the line of the name before it.
    if (!keepTail.isEmpty() && p.endsWith(keepTail) && p.size() > keepTail.size()) {
        // Lock from the start of the word before the honorific: "太郎 様" moves as one.
        qsizetype k = n - keepTail.size() - 1;
        while (k > 0 && isSpace(p[k].unicode())) --k;
        while (k > 0 && !isSpace(p[k - 1].unicode())) --k;
        for (qsizetype i = k + 1; i < n; ++i) ok[i] = false;
    }
    return ok;
}

template <typename Advance>
QStringList breakImpl(const QString& text, double limit, Advance adv, QStringView keepTail, bool* overflow)
{
    QStringList out;
    QString norm = text;
    norm.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    norm.replace(u'\r', u'\n');
    for (const QString& para : norm.split(u'\n')) {
        const qsizetype n = para.size();
        const std::vector<bool> can = breakOpportunities(para, keepTail);
        qsizetype start = 0;
        while (start < n && isSpace(para[start].unicode())) ++start;
        if (start >= n) {
            out.append(QString());
            continue;
        }
        double x = 0;
        qsizetype lastBreak = -1;
        for (qsizetype i = start; i < n; ++i) {
            if (i > start && can[i]) lastBreak = i;
            const char16_t c = para[i].unicode();
            const double w = adv(c);
            if (x + w > limit + kEps && i > start && !isSpace(c)) {
                qsizetype cut = lastBreak > start ? lastBreak : i;
                if (lastBreak <= start && overflow) *overflow = true;
                qsizetype end = cut;
                while (end > start && isSpace(para[end - 1].unicode())) --end;
                out.append(para.mid(start, end - start));
                start = cut;
                while (start < n && isSpace(para[start].unicode())) ++start;
                x = 0;
                lastBreak = -1;
                for (qsizetype k = start; k < i; ++k) {
                    if (k > start && can[k]) lastBreak = k;
                    x += adv(para[k].unicode());
                }
                if (i > start && can[i]) lastBreak = i;
                if (start > i) continue;  // the blank that caused the cut is dropped
            }
            if (x + w > limit + kEps && i == start && overflow) *overflow = true;
            x += w;
        }
        qsizetype end = n;
        while (end > start && isSpace(para[end - 1].unicode())) --end;
        out.append(para.mid(start, end - start));
    }
    return out;
}

bool fontHasForm(char16_t c, const void* ctx)
{
    auto* p = static_cast<const std::pair<const FontBook*, FontFace>*>(ctx);
    return p->first->hasGlyph(p->second, c);
}

}  // namespace

QStringList breakLines(const QString& text, double width, double sizeMm, const FontBook& fonts, FontFace face,
                       bool bold, const QString& keepTail, bool* overflow)
{
    if (overflow) *overflow = false;
    const double limit = width / sizeMm;
    return breakImpl(text, limit, [&](char16_t c) { return fonts.advance(face, bold, c); }, keepTail, overflow);
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
    const QString shaped = shapeText(text, style);
    const QString tail = shapeText(keepTail, style);
    const double nominal = ptToMm(style.size);
    const double along = style.vertical ? box.height() : box.width();
    const double across = style.vertical ? box.width() : box.height();

    auto lay = [&](double sz, bool* ok) {
        bool overflow = false;
        QStringList lines;
        if (style.vertical) {
            lines = breakImpl(shaped, style.wrap ? along / sz : 1e9, squareOf, tail, &overflow);
            for (const QString& l : lines)
                if (squares(l) * sz > along + kEps) overflow = true;
        } else if (style.wrap) {
            lines = breakLines(shaped, along, sz, fonts, style.face, style.bold, tail, &overflow);
        } else {
            lines = breakImpl(shaped, 1e9, [](char16_t) { return 0.0; }, tail, nullptr);
            for (const QString& l : lines)
                if (fonts.width(style.face, style.bold, l) * sz > along + kEps) overflow = true;
        }
        const double extent = (lines.size() - 1) * sz * style.lineSpacing + sz;
        *ok = !overflow && extent <= across + kEps;
        return lines;
    };

    bool ok = false;
    double size = nominal;
    QStringList lines = lay(size, &ok);
    if (!ok) {
        double lo = kMinSizeMm, hi = nominal;
        bool okLo = false;
        QStringList linesLo = lay(lo, &okLo);
        if (!okLo) {
            size = lo;
            lines = linesLo;
            out.fits = false;
        } else {
            for (int it = 0; it < 12; ++it) {
                const double mid = (lo + hi) / 2;
                bool okMid = false;
                lay(mid, &okMid);
                if (okMid) lo = mid;
                else hi = mid;
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
        if (style.valign == VAlign::Middle) top += (box.height() - extent) / 2;
        else if (style.valign == VAlign::Bottom) top += box.height() - extent;
        const double asc = fonts.ascent(style.face) * size;
        for (int k = 0; k < lines.size(); ++k) {
            const double w = fonts.width(style.face, style.bold, lines[k]) * size;
            double x = box.left();
            if (style.align == HAlign::Center) x += (box.width() - w) / 2;
            else if (style.align == HAlign::Right) x += box.width() - w;
            const double lineTop = top + k * pitch;
            if (!lines[k].isEmpty()) {
                out.runs.append({lines[k], QPointF(x, lineTop + asc)});
                out.bounds |= QRectF(x, lineTop, w, size);
            }
        }
        return out;
    }

    // Vertical: columns from the right, each character on its own em square.
    double right = box.right();
    if (style.align == HAlign::Center) right -= (box.width() - extent) / 2;
    else if (style.align == HAlign::Left) right = box.left() + extent;
    const std::pair<const FontBook*, FontFace> ctx{&fonts, style.face};
    for (int k = 0; k < lines.size(); ++k) {
        const QString& col = lines[k];
        const double len = squares(col) * size;
        double top = box.top();
        if (style.valign == VAlign::Middle) top += (box.height() - len) / 2;
        else if (style.valign == VAlign::Bottom) top += box.height() - len;
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
                const VerticalGlyph g = verticalGlyph(c, &fontHasForm, &ctx);
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
