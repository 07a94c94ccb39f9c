#pragma once
// The program's log. Office desktops have no console, so faults that no box shows
// would leave no trace: every program writes to a rotating file in the user's data
// folder, and to the console when there is one.
//
// One category per layer ("sealprint.app", "sealprint.engine", ...). The default level
// is info; names, addresses and other patient data go to debug only.

#include <QLoggingCategory>
#include <QString>

#include <memory>
#include <optional>

namespace base {

Q_DECLARE_LOGGING_CATEGORY(lcBase)
Q_DECLARE_LOGGING_CATEGORY(lcControls)
Q_DECLARE_LOGGING_CATEGORY(lcApp)
Q_DECLARE_LOGGING_CATEGORY(lcData)
Q_DECLARE_LOGGING_CATEGORY(lcExtract)
Q_DECLARE_LOGGING_CATEGORY(lcReport)
Q_DECLARE_LOGGING_CATEGORY(lcSelection)
Q_DECLARE_LOGGING_CATEGORY(lcDialogs)
Q_DECLARE_LOGGING_CATEGORY(lcSeal)
Q_DECLARE_LOGGING_CATEGORY(lcGui)
Q_DECLARE_LOGGING_CATEGORY(lcEngine)

// "debug", "info", "warning", "critical"; nothing for another word.
std::optional<QtMsgType> logLevelFromName(const QString& name);

// Enables the program's categories from this level up.
void setLogLevel(QtMsgType level);

struct LogOptions {
    QString folder;                         // empty: defaultLogFolder()
    QString fileName;                       // e.g. "sealprint.log"
    qint64 maxBytes = 1024 * 1024;          // a file that would grow beyond this is rotated
    int keep = 5;                           // rotated files kept: NAME.1 (newest) .. NAME.keep
    QtMsgType consoleLevel = QtWarningMsg;  // from this level up, also to the console
};

// "<user's data folder>/sealprint/log"; SEAL_LOG_DIR stands in for it.
QString defaultLogFolder();

// While it lives, every message of the process goes to the log file (and the
// console). A folder that cannot be written leaves the console alone: the program
// runs on, and problem() says why there is no file.
class LogFile {
public:
    explicit LogFile(LogOptions options);
    ~LogFile();
    LogFile(const LogFile&) = delete;
    LogFile& operator=(const LogFile&) = delete;

    bool writing() const;
    QString path() const;
    QString problem() const { return problem_; }

    struct Sink;  // the open file and its rotation

private:
    std::unique_ptr<Sink> sink_;
    QtMessageHandler previous_ = nullptr;
    QString problem_;
};

}  // namespace base
