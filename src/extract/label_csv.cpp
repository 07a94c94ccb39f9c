#include "extract/label_csv.h"

#include "app/messages.h"
#include "base/text_codec.h"
#include "base/vb_error.h"
#include "report/work_file.h"

#include <QFileInfo>

namespace extract {

using namespace Qt::StringLiterals;

namespace {

// Lines are gathered and handed to the file in blocks of this size.
constexpr qsizetype kFlushBytes = 64 * 1024;

void appendQuoted(QString& line, const QString& value)
{
    line += u",\""_s;
    line += value;
    line += u'"';
}

}  // namespace

QString sealCsvFileName(bool envelope) { return envelope ? kEnvelopeCsvName : kSealCsvName; }

QString sealCsvTitleLine()
{
    return u"cIDno,cName,cNameKana,cKikan,cDaihyo,"_s
           + u"cYubinNo,cAddress1,cTelNo,cFaxNo,cMobNo,cMst,cKeisho,nRoomNo,nTantouID"_s
           + u",拠点名, 送付先郵便番号,送付先住所,拠点電話番号,拠点FAX番号"_s + u",脚注"_s;
}

QString sealCsvLine(const LabelRecord& r, const OfficeBlock& office, const QString& footnote)
{
    QString line;
    line.reserve(256);
    line += r.cIDno;
    appendQuoted(line, r.sOutAtena);
    appendQuoted(line, r.cNameKana);
    appendQuoted(line, r.cKikan);
    appendQuoted(line, r.cDaihyo);
    appendQuoted(line, u"〒 "_s + r.sOutYubin);
    appendQuoted(line, r.sOutAddress);
    appendQuoted(line, r.cTelNo);
    appendQuoted(line, r.cFaxNo);
    appendQuoted(line, r.cMobNo);
    appendQuoted(line, r.cMst);
    appendQuoted(line, r.cKeisho);
    appendQuoted(line, r.nRoomNo);
    appendQuoted(line, r.nTantouID);
    appendQuoted(line, office.cShamei1);
    appendQuoted(line, office.cMailDestinationZipNo);
    appendQuoted(line, office.cMailDestination);
    appendQuoted(line, office.cTelNo);
    appendQuoted(line, office.cFaxNo);
    appendQuoted(line, footnote);
    return line;
}

SealCsvFile::SealCsvFile(const QString& path)
{
    // The older file goes first, so that the new one is made afresh with the user's
    // rights only.
    const QString native = base::nativePath(path);
    const QFileInfo info(native);
    if (info.exists() && !info.isDir() && !QFile::remove(native)) throw base::VbError::permissionDenied();
    file_ = report::openWorkFile(path);
    buffer_.reserve(kFlushBytes + 1024);
}

SealCsvFile::~SealCsvFile()
{
    // A run that stopped half-way leaves what it had written, as a line-by-line writer
    // would have.
    if (file_ && !buffer_.isEmpty()) file_->write(buffer_);
}

void SealCsvFile::writeLine(const QString& line)
{
    if (!file_) throw base::VbError{52, QStringLiteral("ファイル名または番号が不正です。")};
    buffer_ += base::toCp932(line);
    buffer_ += "\r\n";
    if (buffer_.size() >= kFlushBytes) {
        report::writeWorkFile(*file_, buffer_);
        buffer_.clear();
    }
}

void SealCsvFile::close()
{
    if (!file_) return;
    const std::unique_ptr<QFile> file = std::move(file_);
    if (!buffer_.isEmpty()) report::writeWorkFile(*file, buffer_);
    buffer_.clear();
    report::closeWorkFile(*file);
}

std::unique_ptr<SealCsvFile> openSealCsv(const QString& path)
{
    std::unique_ptr<SealCsvFile> file;
    app::Handler h(app::HandlerKind::Stop,
                   app::Report::patternA(QStringLiteral("CSVタイトル行作成時にエラーが発生しました。")));
    h([&] {
        auto opened = std::make_unique<SealCsvFile>(path);
        opened->writeLine(sealCsvTitleLine());
        file = std::move(opened);
    });
    return file;
}

}  // namespace extract
