#pragma once
// What the program checks before it opens a screen: things whose absence would not
// fail loudly later but print wrong labels (every Japanese text as "?") or none.

#include <QList>
#include <QString>

namespace app {

struct StartupProblem {
    bool fatal = false;  // the program cannot do its work and should not start
    QString message;
};

// Checks, for programs in programDir: Qt encodes CP932; the engine's forms folder is
// there; the IPAex fonts are found (the installed folder first, then the system).
QList<StartupProblem> startupChecks(const QString& programDir);

// True if Qt's codecs turn Japanese text into CP932 bytes.
bool cp932Available();

}  // namespace app
