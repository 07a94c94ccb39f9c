#pragma once
// The suite's small text files read token by token, as the original's sequential
// input reads them: a comma or a line end ends a token.

#include <QStringList>

namespace dialogs {

// The tokens of a CP932 file, in order; nullopt-like failure is ok == false.
struct Tokens {
    bool ok = false;
    QStringList tokens;
};
Tokens readTokens(const QString& path);

// The file named by path, looked up without regard to case when the exact name is not
// there (the suite's installers write "Velmio.Ver" where the program asks for
// "Velmio.ver"; Windows does not tell them apart).
QString findFileAnyCase(const QString& path);

}  // namespace dialogs
