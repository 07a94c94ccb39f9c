#pragma once
// The label CSV, the hand-over to the report engine: its name, its title line, the
// form of one label's line, and the file itself (CP932, CR LF, the user's alone).

#include "extract/label_records.h"

#include <QFile>
#include <QString>

#include <memory>

namespace extract {

inline const QString kSealCsvName = QStringLiteral("シール.csv");
inline const QString kEnvelopeCsvName = QStringLiteral("封筒印刷.csv");

// "シール.csv" in label mode, "封筒印刷.csv" in envelope mode.
QString sealCsvFileName(bool envelope);

// The title line the forms bind their fields by (the blank before "送付先郵便番号"
// belongs to the title).
QString sealCsvTitleLine();

// One label's line: twenty fields, the first bare, the others in double quotes as
// the values stand (a quote inside is not doubled, a line break stays), the postal
// code behind "〒 ".
QString sealCsvLine(const LabelRecord& r, const OfficeBlock& office, const QString& footnote);

// The open label CSV. Opening replaces an older file and creates the new one readable
// by the user alone; each line goes out as CP932 with CR LF. Faults are the runtime's
// (base::VbError): 76 for a folder that does not exist, 75 for a file that cannot be
// created, 57 for a write that does not reach the disk.
class SealCsvFile {
public:
    explicit SealCsvFile(const QString& path);
    ~SealCsvFile();
    SealCsvFile(const SealCsvFile&) = delete;
    SealCsvFile& operator=(const SealCsvFile&) = delete;

    void writeLine(const QString& line);
    void close();

private:
    void flush(QFile& file);

    std::unique_ptr<QFile> file_;
    QString pending_;
};

// openSealCsv: creates the file at path and writes the title line. A fault shows
// "CSVタイトル行作成時にエラーが発生しました。" and gives no file.
std::unique_ptr<SealCsvFile> openSealCsv(const QString& path);

}  // namespace extract
