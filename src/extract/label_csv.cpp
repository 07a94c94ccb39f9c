#include "extract/label_csv.h"

#include "app/messages.h"
#include "base/text_codec.h"
#include "base/vb_error.h"
#include "report/work_file.h"

#include <QFileInfo>
#include <QStringBuilder>

namespace extract {

using namespace Qt::StringLiterals;

namespace {

// Lines are gathered and encoded in blocks of this many characters: one encoder per
// block rather than one per line.
constexpr qsizetype kFlushChars = 32 * 1024;

}  // namespace

QString sealCsvFileName(bool envelope) { return envelope ? kEnvelopeCsvName : kSealCsvName; }

QString sealCsvTitleLine()
{
    return u"cIDno,cName,cNameKana,cKikan,cDaihyo,"_s +
           u"cYubinNo,cAddress1,cTelNo,cFaxNo,cMobNo,cMst,cKeisho,nRoomNo,nTantouID"_s +
           u",拠点名, 送付先郵便番号,送付先住所,拠点電話番号,拠点FAX番号"_s + u",脚注"_s;
}

QString sealCsvLine(const LabelRecord& r, const OfficeBlock& office, const QString& footnote)
{
    // One expression, so that the line is sized once and copied once.
    static const QString q = u"\",\""_s;
    return r.cIDno % u",\""_s % r.sOutAtena % q % r.cNameKana % q % r.cKikan % q % r.cDaihyo % q % u"〒 "_s %
           r.sOutYubin % q % r.sOutAddress % q % r.cTelNo % q % r.cFaxNo % q % r.cMobNo % q % r.cMst % q % r.cKeisho %
           q % r.nRoomNo % q % r.nTantouID % q % office.cShamei1 % q % office.cMailDestinationZipNo % q %
           office.cMailDestination % q % office.cTelNo % q % office.cFaxNo % q % footnote % u'"';
}

SealCsvFile::SealCsvFile(const QString& path)
{
    // The older file goes first, so that the new one is made afresh with the user's
    // rights only.
    const QString native = base::nativePath(path);
    const QFileInfo info(native);
    if (info.exists() && !info.isDir() && !QFile::remove(native)) throw base::VbError::permissionDenied();
    file_ = report::openWorkFile(path);
    pending_.reserve(kFlushChars + 1024);
}

SealCsvFile::~SealCsvFile()
{
    // A run that stopped half-way leaves what it had written, as a line-by-line writer
    // would have.
    if (file_ && !pending_.isEmpty()) file_->write(base::toCp932(pending_));
}

void SealCsvFile::writeLine(const QString& line)
{
    if (!file_) throw base::VbError{52, QStringLiteral("ファイル名または番号が不正です。")};
    pending_ += line;
    pending_ += u"\r\n"_s;
    if (pending_.size() >= kFlushChars) flush(*file_);
}

void SealCsvFile::flush(QFile& file)
{
    report::writeWorkFile(file, base::toCp932(pending_));
    pending_.resize(0);  // keeps the block's room for the next lines
}

void SealCsvFile::close()
{
    if (!file_) return;
    const std::unique_ptr<QFile> file = std::move(file_);
    if (!pending_.isEmpty()) flush(*file);
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
