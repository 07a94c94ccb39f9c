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
    return s;
}

QString cell(const QStringList* row, int column)
{
    if (!row || column < 0 || column >= row->size()) return QString();
    return row->at(column);
}

}  // namespace

QString postalDigits(const QString& text)
{
    QString d;
    for (QChar c : text) {
        const char16_t u = c.unicode();
        if (u >= u'0' && u <= u'9') d += c;
        else if (u >= u'０' && u <= u'９') d += QChar(char16_t(u - u'０' + u'0'));
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
    for (const Field& f : fields) {
        Bound b;
        for (const QString& c : f.columns) b.columns.append(data_.column(c));
        if (f.when) b.when = data_.column(f.when->column);
        if (!f.keepWith.isEmpty()) b.keepWith = data_.column(f.keepWith);
        out.append(b);
    }
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

QString PageRenderer::fieldText(const Field& f, const Bound& b, const QStringList* row, int page) const
{
    if (!f.columns.isEmpty()) {
        QStringList parts;
        for (int c : b.columns) {
            const QString v = cell(row, c).trimmed();
            if (!v.isEmpty()) parts.append(v);
        }
        return parts.join(f.join);
    }
    if (!f.item.isEmpty()) return items_.value(f.item);
    QString t = f.text;
    const int total = totalPages_ >= 0 ? totalPages_ : nPages();
    t.replace(QStringLiteral("{page}"), QString::number(firstPage_ + page + 1));
    t.replace(QStringLiteral("{pages}"), QString::number(total));
    t.replace(QStringLiteral("{title}"), title_);
    return t;
}

void PageRenderer::drawField(QPainter& p, const Field& f, const Bound& b, const QStringList* row, QPointF origin,
                             int page) const
{
    if (f.when) {
        const QString v = cell(row, b.when).trimmed();
        if (f.when->notEmpty ? v.isEmpty() : v != f.when->equals) return;
    }
    const QRectF rect = f.rect.translated(origin);
    QPen pen(f.color);
    pen.setWidthF(f.frameWidth);
    if (f.type == FieldType::Frame) {
        p.setPen(pen);
        p.setBrush(Qt::NoBrush);
        p.drawRect(rect);
        return;
    }
    if (f.type == FieldType::Line) {
        p.setPen(pen);
        p.drawLine(rect.topLeft(), rect.bottomRight());
        return;
    }
    const QString text = fieldText(f, b, row, page);
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
                if (f.frame) {
                    p.setPen(pen);
                    p.setBrush(Qt::NoBrush);
                    p.drawRect(box);
                }
                const QRectF in = box.adjusted(0.4, 0.4, -0.4, -0.4);
                drawLayout(p, layoutText(digits.mid(i, 1), in, ds, fonts_), ds, fonts_, f.color, in);
            }
            return;
        }
        // No boxes, or a code that does not fill them: the code as text, nothing lost.
        const QString shown = digits.size() == 7
                                  ? QStringLiteral("〒%1-%2").arg(digits.left(3), digits.mid(3))
                                  : text.trimmed();
        TextStyle hs = style;
        hs.vertical = false;
        drawLayout(p, layoutText(shown, inner, hs, fonts_), hs, fonts_, f.color, inner);
        return;
    }

    const QString tail = cell(row, b.keepWith).trimmed();
    drawLayout(p, layoutText(text, inner, style, fonts_, tail), style, fonts_, f.color, inner);
    if (f.frame) {
        p.setPen(pen);
        p.setBrush(Qt::NoBrush);
        p.drawRect(rect);
    }
}

void PageRenderer::printPage(QPainter& p, int page) const
{
    if (page < 0 || page >= nPages()) return;
    p.save();
    p.setRenderHint(QPainter::Antialiasing, true);
    p.setRenderHint(QPainter::TextAntialiasing, true);
    p.setClipRect(QRectF(QPointF(0, 0), paper_));
    p.translate(offset_);

    const int sheet = page / pagesPerSheet();
    const bool back = page % pagesPerSheet() == 1;
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
