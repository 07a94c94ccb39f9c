#pragma once
// Draws the pages of one report: a form filled from one data table. Set it up with the
// setters, then ask nPages() and printPage(painter, i). The same renderer serves the
// preview, the printer, PDF and PNG; the painter works in millimetres with its origin
// at the paper's top left corner.

#include "engine/csv_table.h"
#include "engine/field_values.h"
#include "engine/font_book.h"
#include "engine/form.h"
#include "engine/text_layout.h"

#include <QHash>
#include <QPointF>
#include <QString>

#include <functional>

class QPainter;

namespace engine {

// What one field put on a page, in mm on the paper (before offsets): the measure of a
// form's margins and of its printed text.
struct PlacedInk {
    enum Kind { Text, Frame, Line };
    QString field;
    Kind kind = Text;
    QRectF box;         // the box the field gave it
    QRectF ink;         // text: the em squares it covers; frame, line: their rectangle
    TextLayout layout;  // text only
};

class PageRenderer {
public:
    PageRenderer(const Form& form, const CsvTable& data, const FontBook& fonts);

    // Values of SetItemValue, by item path.
    void setItems(QHash<QString, QString> items) { items_ = std::move(items); }
    void setTitle(const QString& title) { title_ = title; }
    // Moves everything printed, in mm (the script's offsets and the printer's
    // calibration together).
    void setOffset(QPointF mm) { offset_ = mm; }
    // The first cell or row to use, 1-based.
    void setStartItem(int start) { start_ = std::max(1, start); }
    // Overrides the form's paper (PrintPaper for forms on a standard sheet).
    void setPaper(QSizeF mm) { paper_ = mm; }
    // The page numbers that {page} and {pages} show, where the report is joined to others.
    void setPageNumbering(int first, int total)
    {
        firstPage_ = first;
        totalPages_ = total;
    }
    // Told of everything printPage draws, in drawing order.
    void setInkRecorder(std::function<void(const PlacedInk&)> recorder) { record_ = std::move(recorder); }

    int nPages() const;
    QSizeF paperSize() const { return paper_; }
    bool landscape() const { return paper_.width() > paper_.height(); }
    void printPage(QPainter& painter, int page) const;

    // A data row whose first field is 0 or empty and whose other fields, the last one
    // aside, are empty: a used cell of a part-used sheet, left blank.
    static bool isBlankRow(const QStringList& row);
    // Rows that print something.
    int printableRows() const;
    // Label cells on a sheet, or rows on a page of a list.
    int slotsPerPage() const;

private:
    using Bound = FieldBinding;
    void drawField(QPainter& p, const Field& f, const Bound& b, const QStringList* row, QPointF origin, int page) const;
    FieldValue fieldText(const Field& f, const Bound& b, const QStringList* row, int page) const;
    void drawText(QPainter& p, const Field& f, const QString& text, const QRectF& box, const TextStyle& style,
                  const QString& keepTail = QString()) const;
    void drawFrame(QPainter& p, const Field& f, const QRectF& rect) const;
    QList<Bound> bind(const QList<Field>& fields) const;
    int pagesPerSheet() const { return form_.backFields.isEmpty() ? 1 : 2; }

    const Form& form_;
    const CsvTable& data_;
    const FontBook& fonts_;
    QList<Bound> pageBound_, cellBound_, backBound_, rowBound_;
    QHash<QString, QString> items_;
    QString title_;
    QPointF offset_;
    QSizeF paper_;
    int start_ = 1;
    int firstPage_ = 0;
    int totalPages_ = -1;
    std::function<void(const PlacedInk&)> record_;
};

// The digits of a postal code, half or full width, in order.
QString postalDigits(const QString& text);

}  // namespace engine
