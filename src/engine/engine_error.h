#pragma once
// The one kind of failure the engine reports: bad or missing input, named by file and
// line so that the office can find what to fix. The executables show it in a box or
// on standard error and end with a non-zero code.

#include <QString>
#include <exception>

namespace engine {

class EngineError : public std::exception {
public:
    EngineError(QString file, int line, QString message)
            : file_(std::move(file)), line_(line), message_(std::move(message))
    {}

    const QString& file() const { return file_; }
    int line() const { return line_; }  // 1-based; 0 when the fault is not on a line
    const QString& message() const { return message_; }

    // "FILE (3行目): MESSAGE", or "FILE: MESSAGE" without a line.
    QString text() const
    {
        if (line_ > 0) return QStringLiteral("%1 (%2行目): %3").arg(file_).arg(line_).arg(message_);
        if (file_.isEmpty()) return message_;
        return QStringLiteral("%1: %2").arg(file_, message_);
    }
    const char* what() const noexcept override { return "engine::EngineError"; }

private:
    QString file_;
    int line_;
    QString message_;
};

}  // namespace engine
