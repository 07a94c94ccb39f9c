#include "engine/csv_table.h"

#include "engine/engine_error.h"
#include "engine/wfd_script.h"

namespace engine {

int CsvTable::column(const QString& title) const
{
    const QString t = title.trimmed();
    for (int i = 0; i < titles.size(); ++i)
        if (titles[i] == t) return i;
    return -1;
}

QList<QStringList> parseCsvRecords(const QString& text, QList<int>* startLines)
{
    QList<QStringList> records;
    const qsizetype n = text.size();
    const QChar* s = text.constData();
    qsizetype i = 0;
    int line = 1;

    while (i < n) {
        QStringList fields;
        if (startLines) startLines->append(line);
        // One record: fields until a line end outside quotes.
        for (;;) {
            QString value;
            if (i < n && s[i] == u'"') {
                const int openedOn = line;
                ++i;
                qsizetype start = i;
                for (;;) {
                    // Without its closing quote the value would swallow every line
                    // after it, and the labels behind it would silently go missing.
                    if (i >= n)
                        throw EngineError(
                            QString(), openedOn,
                            QStringLiteral("\" で始まった値が閉じられないままファイルが終わっています。"));
                    if (s[i] == u'"' && (i + 1 >= n || s[i + 1] == u',' || s[i + 1] == u'\r' || s[i + 1] == u'\n'))
                        break;
                    if (s[i] == u'\n' || (s[i] == u'\r' && (i + 1 >= n || s[i + 1] != u'\n'))) ++line;
                    ++i;
                }
                value = text.mid(start, i - start);
                if (i < n) ++i;  // the closing quote
            } else {
                qsizetype start = i;
                while (i < n && s[i] != u',' && s[i] != u'\r' && s[i] != u'\n') ++i;
                value = text.mid(start, i - start);
            }
            fields.append(value);
            if (i < n && s[i] == u',') {
                ++i;
                continue;
            }
            break;
        }
        // The line end: CR LF, LF or CR.
        if (i < n && s[i] == u'\r') ++i;
        if (i < n && s[i] == u'\n') ++i;
        ++line;
        records.append(std::move(fields));
    }
    return records;
}

CsvTable parseCsv(const QString& text, const QString& path, bool hasTitle)
{
    CsvTable t;
    t.path = path;
    if (text.trimmed().isEmpty()) throw EngineError(path, 0, QStringLiteral("データファイルが空です。"));
    QList<int> lines;
    QList<QStringList> records;
    try {
        records = parseCsvRecords(text, &lines);
    } catch (const EngineError& e) {
        throw EngineError(path, e.line(), e.message());
    }
    int first = 0;
    if (hasTitle) {
        for (const QString& title : records[0]) t.titles.append(title.trimmed());
        first = 1;
        if (records.size() < 2)
            throw EngineError(path, 0, QStringLiteral("タイトル行だけで、データの行がありません。"));
    }
    t.rows.reserve(records.size() - first);
    t.rowLines.reserve(records.size() - first);
    for (int r = first; r < records.size(); ++r) {
        QStringList& row = records[r];
        // Lines shorter or longer than the titles (a quote inside a value splits a
        // field) still print what they have: pad or cut to the titles.
        if (hasTitle) {
            while (row.size() < t.titles.size()) row.append(QString());
            if (row.size() > t.titles.size()) row.erase(row.begin() + t.titles.size(), row.end());
        }
        t.rows.append(std::move(row));
        t.rowLines.append(lines[r]);
    }
    return t;
}

CsvTable readCsv(const QString& path, bool hasTitle)
{
    return parseCsv(readCp932File(path, QStringLiteral("データファイル")), path, hasTitle);
}

}  // namespace engine
