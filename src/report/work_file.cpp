#include "report/work_file.h"

#include "base/log.h"
#include "base/text_codec.h"
#include "base/vb_error.h"

#include <QDir>
#include <QFileInfo>

namespace report {

namespace {

base::VbError ioError() { return {57, QStringLiteral("デバイス I/O エラーです。")}; }

}  // namespace

std::unique_ptr<QFile> openWorkFile(const QString& path)
{
    if (path.isEmpty()) throw base::VbError::pathFileAccess();
    const QString native = base::nativePath(path);
    const QFileInfo info(native);
    if (!info.dir().exists()) throw base::VbError::pathNotFound();
    if (info.isDir()) throw base::VbError::pathFileAccess();

    const auto owner = QFileDevice::ReadOwner | QFileDevice::WriteOwner;
    auto file = std::make_unique<QFile>(native);
    if (!file->open(QIODevice::WriteOnly | QIODevice::Truncate, owner)) {
        throw base::VbError::pathFileAccess();
    }
    // A file left by an older run may have been made with wider rights.
    file->setPermissions(owner);
    return file;
}

void writeWorkFile(QFile& file, const QByteArray& bytes)
{
    if (file.write(bytes) != bytes.size()) throw ioError();
}

void closeWorkFile(QFile& file)
{
    const bool flushed = file.flush();
    file.close();
    if (!flushed || file.error() != QFileDevice::NoError) {
        qCWarning(base::lcReport).noquote() << "could not finish" << file.fileName();
        throw ioError();
    }
    qCInfo(base::lcReport).noquote() << "wrote" << file.fileName() << file.size() << "bytes";
}

}  // namespace report
