#pragma once
// The working files the report drivers leave for the engine (WfdCom.dat, export CSV):
// they name patients and their addresses and stay on disk after the run, so they are
// created readable by the user alone.

#include <QFile>
#include <QString>

#include <memory>

namespace report {

// Creates or replaces the file at path (composed with "\"; made native here) for
// writing, with mode 0600. Faults as the original's runtime raises them on Open:
// 76 when the folder does not exist, 75 when the file cannot be created.
std::unique_ptr<QFile> openWorkFile(const QString& path);

// Writes bytes to a work file; 57 when the device refuses them.
void writeWorkFile(QFile& file, const QByteArray& bytes);

// Flushes and closes a work file; 57 when what was written does not reach the disk.
void closeWorkFile(QFile& file);

}  // namespace report
