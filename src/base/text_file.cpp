#include "base/text_file.h"

#include "base/log.h"
#include "base/text_codec.h"
#include "base/vb_error.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace base {

namespace {

QString describe(const VbError& err, const QString& path)
{
    return err.description() + QStringLiteral("（") + path + QStringLiteral("）");
}

template <typename Result>
void fail(Result& r, const VbError& err, const QString& path)
{
    qCWarning(lcBase).noquote() << "file" << path << "-" << err.number() << err.description();
    r.ok = false;
    r.errNumber = err.number();
    r.sErrMsg = describe(err, path);
}

}  // namespace

BytesRead readFileBytes(const QString& path)
{
    BytesRead r;
    const QString native = nativePath(path);
    const QFileInfo info(native);
    if (path.isEmpty() || !info.exists()) {
        fail(r, VbError::fileNotFound(), path);
        return r;
    }
    if (info.isDir()) {
        fail(r, VbError::pathFileAccess(), path);
        return r;
    }
    QFile file(native);
    if (!file.open(QIODevice::ReadOnly)) {
        fail(r, VbError::pathFileAccess(), path);
        return r;
    }
    r.bytes = file.readAll();
    if (file.error() != QFileDevice::NoError) {
        r.bytes.clear();
        fail(r, VbError::pathFileAccess(), path);
        return r;
    }
    r.ok = true;
    return r;
}

TextFileRead readTextFile(const QString& path)
{
    TextFileRead r;
    BytesRead raw = readFileBytes(path);
    if (!raw.ok) {
        r.errNumber = raw.errNumber;
        r.sErrMsg = raw.sErrMsg;
        return r;
    }
    r.lines = splitLines(fromCp932(raw.bytes, &r.hadInvalid));
    r.ok = true;
    return r;
}

FileWrite writeFileBytes(const QString& path, const QByteArray& bytes, FileAccess access)
{
    FileWrite w;
    const QString native = nativePath(path);
    if (path.isEmpty()) {
        fail(w, VbError::pathFileAccess(), path);
        return w;
    }
    const QFileInfo info(native);
    if (info.isDir()) {
        fail(w, VbError::pathFileAccess(), path);
        return w;
    }
    // A read-only file stays as it is, as the system refuses to write it; the rename
    // below would otherwise replace it regardless of its mode.
    if (info.exists() && !info.isWritable()) {
        fail(w, VbError::permissionDenied(), path);
        return w;
    }
    if (!info.dir().exists()) {
        fail(w, VbError::pathNotFound(), path);
        return w;
    }

    QSaveFile file(native);
    if (!file.open(QIODevice::WriteOnly)) {
        fail(w, VbError::permissionDenied(), path);
        return w;
    }
    if (access == FileAccess::OwnerOnly) file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    if (file.write(bytes) != bytes.size()) {
        file.cancelWriting();
        file.commit();
        fail(w, VbError::permissionDenied(), path);
        return w;
    }
    if (!file.commit()) {
        fail(w, VbError::permissionDenied(), path);
        return w;
    }
    qCInfo(lcBase).noquote() << "wrote" << path << bytes.size() << "bytes";
    w.ok = true;
    return w;
}

QByteArray encodeLines(const QStringList& lines, bool* lossy)
{
    QByteArray out;
    bool anyLossy = false;
    for (const QString& line : lines) {
        bool l = false;
        out += toCp932(line, &l);
        out += "\r\n";
        anyLossy = anyLossy || l;
    }
    if (lossy) *lossy = anyLossy;
    return out;
}

FileWrite writeTextFile(const QString& path, const QStringList& lines, FileAccess access)
{
    bool lossy = false;
    const QByteArray bytes = encodeLines(lines, &lossy);
    FileWrite w = writeFileBytes(path, bytes, access);
    w.lossy = lossy;
    return w;
}

}  // namespace base
