#include "engine/page_renderer.h"

#include "engine/text_layout.h"

#include <QPainter>
#include <QPen>

#include <algorithm>
#include <limits>

namespace engine {

namespace {

TextStyle styleOf(const Field& f)
{
    TextStyle s;
    s.face = f.face;
    s.bold = f.bold;
    s.size = f.size;
    s.align = f.align;
    s.valign = f.valign;
    s.vertical = f.vertical;
    s.wrap = f.wrap;
    s.lineSpacing = f.lineSpacing;
    s.numerals = f.numerals;
    s.minSize = f.minSize;
    s.indent = f.indent;
    return s;
}

}  // namespace

QString postalDigits(const QString& text)
{
    QString d;
    for (QChar c : text) {
        const char16_t u = c.unicode();
        if (u >= u'0' && u <= u'9')
            d += c;
        else if (u >= u'０' && u <= u'９')
            d += QChar(char16_t(u - u'０' + u'0'));
    }
    return d;
}

PageRenderer::PageRenderer(const Form& form, const CsvTable& data, const FontBook& fonts)
        : form_(form), data_(data), fonts_(fonts), paper_(form.paper)
{
    pageBound_ = bind(form_.pageFields);
    cellBound_ = bind(form_.cellFields);
    backBound_ = bind(form_.backFields);
    rowBound_ = bind(form_.rowFields);
}

QList<PageRenderer::Bound> PageRenderer::bind(const QList<Field>& fields) const
{
    QList<Bound> out;
    for (const Field& f : fields) out.append(bindField(f, data_));
    return out;
}

bool PageRenderer::isBlankRow(const QStringList& row)
{
    if (row.isEmpty()) return true;
    const QString first = row[0].trimmed();
    if (!first.isEmpty() && first != u"0") return false;
    for (int i = 1; i + 1 < row.size(); ++i)
        if (!row[i].trimmed().isEmpty()) return false;
    return true;
}

int PageRenderer::printableRows() const
{
    if (form_.list) return int(data_.rows.size());
    int n = 0;
    for (const QStringList& row : data_.rows)
        if (!isBlankRow(row)) ++n;
    return n;
}

int PageRenderer::slotsPerPage() const { return form_.cells ? form_.cells->perPage() : form_.list->rows; }

int PageRenderer::nPages() const
{
    // In 64 bits: the document refuses a job of more than limits::kPagesPerJob pages,
    // and it must see the true count to do so.
    const qint64 slots = qint64(start_) - 1 + data_.rows.size();
    const qint64 per = slotsPerPage();
    return int(std::min<qint64>((slots + per - 1) / per * pagesPerSheet(), std::numeric_limits<int>::max()));
}

FieldValue PageRenderer::fieldText(const Field& f, const Bound& b, const QStringList* row, int page) const
{
    if (!f.columns.isEmpty()) return columnValue(f, b, row);
    if (!f.item.isEmpty()) return {items_.value(f.item), QString()};
    QString t = f.text;
    const int total = totalPages_ >= 0 ? totalPages_ : nPages();
    t.replace(QStringLiteral("{page}"), QString::number(firstPage_ + page + 1));
    t.replace(QStringLiteral("{pages}"), QString::number(total));
    t.replace(QStringLiteral("{title}"), title_);
    return {t, QString()};
}

void PageRenderer::drawText(QPainter& p, const Field& f, const QString& text, const QRectF& box, const TextStyle& style,
                            const QString& keepTail) const
{
    const TextLayout layout = layoutText(text, box, style, fonts_, keepTail);
    drawLayout(p, layout, style, fonts_, f.color, box);
    if (record_) record_({f.name, PlacedInk::Text, box, layout.bounds, layout});
}

void PageRenderer::drawFrame(QPainter& p, const Field& f, const QRectF& rect) const
{
    QPen pen(f.color);
    pen.setWidthF(f.frameWidth);
    p.setPen(pen);
    p.setBrush(Qt::NoBrush);
    p.drawRect(rect);
    if (record_)
        record_({f.name,
                 PlacedInk::Frame,
                 rect,
                 rect.adjusted(-f.frameWidth / 2, -f.frameWidth / 2, f.frameWidth / 2, f.frameWidth / 2),
                 {}});
}

void PageRenderer::drawField(QPainter& p, const Field& f, const Bound& b, const QStringList* row, QPointF origin,
                             int page) const
{
    if (b.when && !holds(*b.when, row)) return;
    const QRectF rect = f.rect.translated(origin);
    if (f.type == FieldType::Frame) {
        drawFrame(p, f, rect);
        return;
    }
    if (f.type == FieldType::Line) {
        QPen pen(f.color);
        pen.setWidthF(f.frameWidth);
        p.setPen(pen);
        p.drawLine(rect.topLeft(), rect.bottomRight());
        if (record_) record_({f.name, PlacedInk::Line, rect, rect.normalized(), {}});
        return;
    }
    const FieldValue value = fieldText(f, b, row, page);
    const QString& text = value.text;
    if (text.trimmed().isEmpty()) return;
    const TextStyle style = styleOf(f);
    const QRectF inner = rect.adjusted(f.padding, f.padding, -f.padding, -f.padding);

    if (f.type == FieldType::Postal) {
        const QString digits = postalDigits(text);
        if (digits.isEmpty()) return;
        if (!f.boxes.isEmpty() && digits.size() == f.boxes.size()) {
            TextStyle ds = style;
            ds.align = HAlign::Center;
            ds.valign = VAlign::Middle;
            ds.vertical = false;
            ds.wrap = false;
            for (int i = 0; i < digits.size(); ++i) {
                const QRectF box = f.boxes[i].translated(origin);
                if (f.frame) drawFrame(p, f, box);
                drawText(p, f, digits.mid(i, 1), box.adjusted(0.4, 0.4, -0.4, -0.4), ds);
            }
            return;
        }
        // No boxes, or a code that does not fill them: the code as text, nothing lost.
        TextStyle hs = style;
        hs.vertical = false;
        drawText(p, f, postalLine(text), inner, hs);
        return;
    }

    drawText(p, f, text, inner, style, value.honorific);
    if (f.frame) drawFrame(p, f, rect);
}

void PageRenderer::printPage(QPainter& p, int page) const
{
    if (page < 0 || page >= nPages()) return;
    p.save();
    p.setRenderHint(QPainter::Antialiasing, true);
    p.setRenderHint(QPainter::TextAntialiasing, true);
    p.setClipRect(QRectF(QPointF(0, 0), paper_));
    p.translate(offset_);

    const int sheets = nPages() / pagesPerSheet();
    const int sheet = form_.backsAfterFronts ? page % sheets : page / pagesPerSheet();
    const bool back = form_.backsAfterFronts ? page >= sheets : page % pagesPerSheet() == 1;
    const int per = slotsPerPage();
    const int firstSlot = sheet * per;
    auto rowAt = [&](int slot) -> const QStringList* {
        const int r = slot - (start_ - 1);
        return r >= 0 && r < data_.rows.size() ? &data_.rows[r] : nullptr;
    };

    // Page fields read the first record of the page.
    const QStringList* firstRow = nullptr;
    for (int s = firstSlot; s < firstSlot + per && !firstRow; ++s) firstRow = rowAt(s);
    if (!back)
        for (int i = 0; i < form_.pageFields.size(); ++i)
            drawField(p, form_.pageFields[i], pageBound_[i], firstRow, QPointF(0, 0), page);

    for (int s = 0; s < per; ++s) {
        const QStringList* row = rowAt(firstSlot + s);
        if (!row) continue;
        if (form_.cells) {
            if (isBlankRow(*row)) continue;
            const QPointF origin = form_.cells->cell(s).topLeft();
            const QList<Field>& fields = back ? form_.backFields : form_.cellFields;
            const QList<Bound>& bound = back ? backBound_ : cellBound_;
            for (int i = 0; i < fields.size(); ++i) drawField(p, fields[i], bound[i], row, origin, page);
        } else {
            const QPointF origin(0, form_.list->top + s * form_.list->rowHeight);
            for (int i = 0; i < form_.rowFields.size(); ++i)
                drawField(p, form_.rowFields[i], rowBound_[i], row, origin, page);
        }
    }
    p.restore();
}

}  // namespace engine
