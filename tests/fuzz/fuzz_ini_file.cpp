// The profile-file reader and writer on any file: reads never fail, a buffer is never
// longer than 256 characters, and writing one key changes one line and nothing else
// (other programs' sections stay byte for byte), reads back, and is idempotent.
//
// Input: the first line names "section=key" for the write, the rest is the file.

#include "base/ini_file.h"
#include "base/text_codec.h"

#include "fuzz_support.h"

#include <QFile>
#include <QTemporaryDir>

namespace {

QByteArray readAll(const QString& path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

// Names the profile functions cannot hold are not what this checks.
QString usableName(QString name)
{
    for (QChar c :
         {QChar(u'['), QChar(u']'), QChar(u'='), QChar(u';'), QChar(u'\r'), QChar(u'\n'), QChar(0), QChar(0xFFFD)})
        name.remove(c);
    return name.trimmed();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("印刷設定.ini"));
    const QByteArray input = fuzz::bytesOf(data, size);
    const qsizetype nl = input.indexOf('\n');
    const QByteArray head = nl < 0 ? QByteArray() : input.left(nl);
    const QByteArray file = nl < 0 ? input : input.mid(nl + 1);
    const QString names = base::fromCp932(head);
    QString section = usableName(names.section(u'=', 0, 0));
    QString key = usableName(names.section(u'=', 1));
    if (section.isEmpty()) section = QStringLiteral("タックシール");
    if (key.isEmpty()) key = QStringLiteral("用紙");

    {
        QFile f(path);
        if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate)) return 0;
        f.write(file);
    }
    base::clsOplIniFile ini;
    fuzz::check(ini.iInit(path) == 0, "an existing file binds");
    fuzz::check(ini.csGetProfileString(section, key).size() <= base::clsOplIniFile::kBufferChars,
                "a read fits its buffer");
    ini.nGetProfileLong(section, key);

    const QString value = QStringLiteral("値=1 ﾃｽﾄ");
    fuzz::check(ini.iWriteProfileString(section, key, value) == 1, "a write succeeds");
    const QByteArray after = readAll(path);
    fuzz::check(base::csCutNull(ini.csGetProfileString(section, key)) == value, "a written value reads back");

    // Only one line of the old file may differ: what lies between the common start
    // and the common end of the two files holds no line end of the old file.
    qsizetype front = 0;
    while (front < file.size() && front < after.size() && file[front] == after[front]) ++front;
    qsizetype back = 0;
    while (back < file.size() - front && back < after.size() - front &&
           file[file.size() - 1 - back] == after[after.size() - 1 - back])
        ++back;
    fuzz::check(!file.mid(front, file.size() - front - back).contains('\n'), "a write changes one line only");

    fuzz::check(ini.iWriteProfileString(section, key, value) == 1, "a second write succeeds");
    fuzz::check(readAll(path) == after, "writing the same value again changes nothing");
    return 0;
}
