#pragma once
// The original's file-system questions, on paths composed its way (with "\").

#include <QString>

namespace base {

// True if a directory search finds the path: a file, not a folder. "*" and "?" in
// the last part match as in a directory search. An empty path finds nothing.
bool bFileExists(const QString& path);

// Makes dir the current directory and returns the current directory after that, in
// the system's own notation. A folder that does not exist raises the runtime's
// error 76.
QString csChangeToDir(const QString& dir);

}  // namespace base
