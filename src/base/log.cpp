#include "base/log.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QMutex>
#include <QStandardPaths>

#include <cstdio>

namespace base {

Q_LOGGING_CATEGORY(lcBase, "sealprint.base", QtInfoMsg)
Q_LOGGING_CATEGORY(lcControls, "sealprint.controls", QtInfoMsg)
Q_LOGGING_CATEGORY(lcApp, "sealprint.app", QtInfoMsg)
Q_LOGGING_CATEGORY(lcData, "sealprint.data", QtInfoMsg)
Q_LOGGING_CATEGORY(lcExtract, "sealprint.extract", QtInfoMsg)
Q_LOGGING_CATEGORY(lcReport, "sealprint.report", QtInfoMsg)
Q_LOGGING_CATEGORY(lcSelection, "sealprint.selection", QtInfoMsg)
Q_LOGGING_CATEGORY(lcDialogs, "sealprint.dialogs", QtInfoMsg)
Q_LOGGING_CATEGORY(lcSeal, "sealprint.seal", QtInfoMsg)
Q_LOGGING_CATEGORY(lcGui, "sealprint.gui", QtInfoMsg)
Q_LOGGING_CATEGORY(lcEngine, "sealprint.engine", QtInfoMsg)

namespace {

struct Level {
    const char* name;
    QtMsgType type;
    int rank;
};
constexpr Level kLevels[] = {
    {"debug", QtDebugMsg, 0},       {"info", QtInfoMsg, 1},   {"warning", QtWarningMsg, 2},
    {"critical", QtCriticalMsg, 3}, {"fatal", QtFatalMsg, 4},
};

int rankOf(QtMsgType type)
{
    for (const Level& l : kLevels)
        if (l.type == type) return l.rank;
    return 0;
}

const char* nameOf(QtMsgType type)
{
    for (const Level& l : kLevels)
        if (l.type == type) return l.name;
    return "?";
}

}  // namespace

std::optional<QtMsgType> logLevelFromName(const QString& name)
{
    for (const Level& l : kLevels)
        if (l.type != QtFatalMsg && name.compare(QLatin1String(l.name), Qt::CaseInsensitive) == 0) return l.type;
    return std::nullopt;
}

void setLogLevel(QtMsgType level)
{
    QString rules;
    for (const Level& l : kLevels) {
        if (l.type == QtFatalMsg) continue;
        rules +=
            QStringLiteral("sealprint.*.%1=%2\n")
                .arg(QLatin1String(l.name), l.rank >= rankOf(level) ? QStringLiteral("true") : QStringLiteral("false"));
    }
    QLoggingCategory::setFilterRules(rules);
}

QString defaultLogFolder()
{
    const QString env = qEnvironmentVariable("SEAL_LOG_DIR");
    if (!env.isEmpty()) return env;
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/sealprint/log");
}

// The open file and its rotation. One per process, reached by the message handler.
struct LogFile::Sink {
    LogOptions options;
    QString path;
    QFile file;
    QMutex mutex;

    bool open()
    {
        file.setFileName(path);
        return file.open(QIODevice::WriteOnly | QIODevice::Append);
    }

    // NAME -> NAME.1 -> NAME.2 ... ; the oldest beyond `keep` goes.
    void rotate()
    {
        file.close();
        auto numbered = [this](int i) { return path + u'.' + QString::number(i); };
        QFile::remove(numbered(options.keep));
        for (int i = options.keep - 1; i >= 1; --i) QFile::rename(numbered(i), numbered(i + 1));
        if (options.keep > 0)
            QFile::rename(path, numbered(1));
        else
            QFile::remove(path);
        open();
    }

    void write(const QByteArray& line)
    {
        const QMutexLocker lock(&mutex);
        if (file.isOpen() && file.size() > 0 && file.size() + line.size() > options.maxBytes) rotate();
        if (!file.isOpen()) return;
        file.write(line);
        file.flush();
    }
};

namespace {

LogFile::Sink* gSink = nullptr;
QtMessageHandler gPrevious = nullptr;
QtMsgType gConsoleLevel = QtWarningMsg;

void handle(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (gSink) {
        const QByteArray line = QDateTime::currentDateTime().toString(Qt::ISODateWithMs).toUtf8() + ' ' + nameOf(type) +
                                ' ' + (context.category ? context.category : "default") + ": " + message.toUtf8() +
                                '\n';
        gSink->write(line);
    }
    if (rankOf(type) >= rankOf(gConsoleLevel) && gPrevious) gPrevious(type, context, message);
}

}  // namespace

LogFile::LogFile(LogOptions options)
{
    if (options.folder.isEmpty()) options.folder = defaultLogFolder();
    auto sink = std::make_unique<Sink>();
    sink->options = options;
    sink->path = QDir(options.folder).filePath(options.fileName);
    if (!QDir().mkpath(options.folder)) {
        problem_ = QStringLiteral("cannot make the log folder %1").arg(QDir::toNativeSeparators(options.folder));
    } else if (!sink->open()) {
        problem_ = QStringLiteral("cannot write the log file %1: %2")
                       .arg(QDir::toNativeSeparators(sink->path), sink->file.errorString());
    }
    if (problem_.isEmpty()) sink_ = std::move(sink);
    gSink = sink_.get();
    gConsoleLevel = options.consoleLevel;
    previous_ = qInstallMessageHandler(handle);
    gPrevious = previous_;
}

LogFile::~LogFile()
{
    qInstallMessageHandler(previous_);
    gSink = nullptr;
    gPrevious = nullptr;
}

bool LogFile::writing() const { return sink_ && sink_->file.isOpen(); }

QString LogFile::path() const { return sink_ ? sink_->path : QString(); }

}  // namespace base
