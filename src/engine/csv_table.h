#pragma once
// The CP932 data files the program writes for the engine: a bare first field, the
// others in double quotes, quotes inside a value not escaped, line breaks inside a
// quoted value kept. The title line, where there is one, names the columns.

#include <QList>
#include <QString>
#include <QStringList>

namespace engine {

struct CsvTable {
    QString path;
    QStringList titles;       // trimmed; empty for a file without a title line
    QList<QStringList> rows;  // every row has titles.size() fields where there are titles
    QList<int> rowLines;      // the physical line each row starts on, for messages

    // Column of a title, compared without the blanks around it; -1 if absent.
    int column(const QString& title) const;
};

// Splits decoded text into records. A quoted field ends at a quote that is followed by
// a comma, a line end or the end of the text; any other quote belongs to the value,
// since the writer does not escape them. Line numbers are 1-based. A quoted field
// that never closes throws EngineError with the line it opened on and no file name.
QList<QStringList> parseCsvRecords(const QString& text, QList<int>* startLines = nullptr);

// Builds a table from decoded text. With hasTitle the first record names the columns.
// Throws EngineError for an empty file or one with titles and no data.
CsvTable parseCsv(const QString& text, const QString& path, bool hasTitle);

// Reads a data file. Throws EngineError when it is missing, not CP932, or empty.
CsvTable readCsv(const QString& path, bool hasTitle);

}  // namespace engine
