#pragma once
// Our form files (.wfd): JSON describing the paper, a grid of label cells or a list
// of rows, and the fields drawn in them. docs/forms.md describes the format.

#include <QColor>
#include <QHash>
#include <QList>
#include <QRectF>
#include <QSizeF>
#include <QString>
#include <QStringList>

#include <optional>

namespace engine {

enum class FieldType { Text, Postal, Frame, Line };
enum class HAlign { Left, Center, Right };
enum class VAlign { Top, Middle, Bottom };
enum class Numerals { AsIs, FullWidth, Kanji };
enum class FontFace { Gothic, Mincho };

// A test on a record's columns; a field shows only where its condition holds.
struct Condition {
    enum Test { Equals, NotEmpty, In, NotIn, SameAs, DiffersFrom, Any, All };
    Test test = Equals;
    QString column;
    QStringList values;      // Equals (one value; "" for empty), In, NotIn: against the trimmed value
    QString other;           // SameAs, DiffersFrom: another column, both trimmed
    QList<Condition> parts;  // Any, All
};

struct Field {
    QString name;
    FieldType type = FieldType::Text;
    QRectF rect;  // mm, relative to the cell, the row or the page

    // What it shows: the columns (joined), a literal with {page} {pages} {title}, or
    // an item value set by the script.
    QStringList columns;
    QString join;
    QString text;
    QString item;

    FontFace face = FontFace::Gothic;
    double size = 10.0;  // points
    bool bold = false;
    HAlign align = HAlign::Left;
    VAlign valign = VAlign::Top;
    bool vertical = false;
    bool wrap = true;
    double lineSpacing = 1.15;  // line pitch in font sizes
    Numerals numerals = Numerals::AsIs;
    QString keepWith;  // a column (the honorific) whose text at the end of the value is never broken off
    QString dropLead;  // a column whose text at the start of the value is left out (printed on its own line)
    QString dropTail;  // a column whose text at the end of the value is left out (the honorific)
    QHash<QString, QString> honorificAs;       // the keepWith text -> what prints instead
    std::optional<Condition> honorificAsWhen;  // where honorificAs applies; always without it
    double minSize = 5.0;                      // points: the smallest size the text shrinks to before it is cut
    double indent = 0;                         // ems by which a wrapped line's continuation lines start later
    bool frame = false;                        // a rectangle around the field
    double frameWidth = 0.3;
    double padding = 0.0;
    QColor color = Qt::black;
    std::optional<Condition> when;

    QList<QRectF> boxes;  // Postal: one box per digit, in the field's coordinates
};

struct CellGrid {
    int columns = 1;
    int rows = 1;
    double left = 0, top = 0;      // mm, top left of the first cell
    double width = 0, height = 0;  // one cell
    double hgap = 0, vgap = 0;     // between cells
    // parseForm holds columns × rows to limits::kSlotsPerPage, so this never overflows.
    int perPage() const { return columns * rows; }
    QRectF cell(int index) const;  // 0-based, in reading order
};

struct ListSection {
    double top = 0;  // mm, top of the first row
    double rowHeight = 0;
    int rows = 1;  // rows per page
};

struct Form {
    QString path;
    QString title;
    QString paperName;  // "A4", "A5", "B5" or "custom"
    QSizeF paper;       // mm, as the sheet lies (width across)
    bool landscape = false;
    QStringList columns;  // column order for data without a title line
    std::optional<CellGrid> cells;
    std::optional<ListSection> list;
    QList<Field> pageFields;
    QList<Field> cellFields;  // relative to the cell (grid forms)
    QList<Field> backFields;  // the back of an envelope: one page after each front
    QList<Field> rowFields;   // relative to the row (list forms)
    // All fronts, then all backs in the same order: a simplex printer is fed the
    // printed stack again. Otherwise each front is followed by its back.
    bool backsAfterFronts = false;

    // Every column title a field reads, for the check against the data's titles.
    QStringList boundColumns() const;
    // Every item path a field shows.
    QStringList itemPaths() const;
};

// Parses a form; fileName names it in messages. Throws EngineError for JSON that does
// not parse (with its line) and for missing or wrongly typed settings.
Form parseForm(const QByteArray& json, const QString& fileName);
Form loadForm(const QString& path);

// The joined form that wfrimg10 leaves behind: the reports to run one after another.
struct JoinedForm {
    QString title;
    struct Report {
        QString form;
        QList<std::pair<QString, bool>> data;  // file, hasTitle
    };
    QList<Report> reports;
};
bool isJoinedForm(const QByteArray& json);
JoinedForm parseJoinedForm(const QByteArray& json, const QString& fileName);
QByteArray joinedFormJson(const JoinedForm& joined);

// Paper sizes in mm (portrait).
QSizeF paperSize(const QString& name);

}  // namespace engine
