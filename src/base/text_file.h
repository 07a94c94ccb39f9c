#pragma once
// Whole-file reads and atomic writes of the program's text files (CP932, CR LF).
// Paths may be given the original's way, with "\": they are made native here, at the
// moment the file system is touched.

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace base {

// Who may read a file the program creates. Working files (label CSV, WfdCom.dat,
// ledger CSV) hold patients' names and addresses: they are the user's alone.
enum class FileAccess { Shared, OwnerOnly };

// The outcome of a read. On failure errNumber is the runtime's error number (53 for
// a missing file, 75 for one that cannot be opened) and sErrMsg says which file.
struct TextFileRead {
    bool ok = false;
    QStringList lines;
    bool hadInvalid = false;  // some bytes were not CP932; U+FFFD stands for each
    int errNumber = 0;
    QString sErrMsg;
};

struct BytesRead {
    bool ok = false;
    QByteArray bytes;
    int errNumber = 0;
    QString sErrMsg;
};

struct FileWrite {
    bool ok = false;
    bool lossy = false;  // some characters had no CP932 form and were written as "?"
    int errNumber = 0;
    QString sErrMsg;
};

// Reads a whole file's bytes. A directory or an unreadable file is a failure.
BytesRead readFileBytes(const QString& path);

// Reads a whole CP932 text file into lines (CR LF, LF or CR end a line).
TextFileRead readTextFile(const QString& path);

// Replaces the file with bytes: written to a temporary file beside it and renamed
// over it, so a crash leaves either the old file or the new one, never half of one.
// An existing file keeps its permissions unless access asks for the owner only.
FileWrite writeFileBytes(const QString& path, const QByteArray& bytes, FileAccess access = FileAccess::Shared);

// Writes lines as CP932, each ended by CR LF, atomically as writeFileBytes does.
FileWrite writeTextFile(const QString& path, const QStringList& lines, FileAccess access = FileAccess::Shared);

// Encodes lines the way writeTextFile stores them.
QByteArray encodeLines(const QStringList& lines, bool* lossy = nullptr);

}  // namespace base
