#pragma once
// How the program shows a failure: a modal box, in fixed Japanese texts, where it
// happened. Caught faults are reported in one of two patterns; what a handler does
// after its box is one of three kinds. Every handler states its kind through Handler,
// so no handler writes its own try/catch.

#include "base/vb_error.h"
#include "controls/platform.h"

#include <QString>
#include <utility>

namespace app {

// Titles of the boxes.
inline const QString kSealTitle = QStringLiteral("シール印刷");
inline const QString kStartErrorTitle = QStringLiteral("　エラー！！");
inline const QString kSettingsWarningTitle = QStringLiteral("警告！");
inline const QString kServiceMonthTitle = QStringLiteral("対象年月選択");

// A box on the process's platform; returns the answer.
int msgBox(const QString& text, int style, const QString& title = kSealTitle);

// Pattern A: the handler's sentence, CR, "(", number, ") ", description.
QString patternAText(const QString& sentence, const base::VbError& fault);
// Pattern B: "Error:" and the description, with "[routine]" in front where a routine
// names itself.
QString patternBText(const base::VbError& fault, const QString& routine = {});

// What follows the box.
enum class HandlerKind {
    Resume,        // go on with the next step
    Stop,          // skip the rest of the handler
    StopAndClose,  // skip the rest, and close the screen at its next activation
};

// How a caught fault is worded.
struct Report {
    enum Form { A, B } form = A;
    QString text;  // pattern A: the sentence; pattern B: the routine name or empty
    QString title = kSealTitle;

    static Report patternA(QString sentence, QString title = kSealTitle)
    {
        return {A, std::move(sentence), std::move(title)};
    }
    static Report patternB(QString routine = {}) { return {B, std::move(routine), {}}; }
};

// One run of a handler. Its steps run in order through operator(); a fault in a step
// (base::VbError) shows the box of the handler's report, then:
//   Resume: the next step runs, and may fail and report again;
//   Stop: every later step is skipped;
//   StopAndClose: as Stop, and *closeState becomes 1.
// With the hourglass option the pointer is the hourglass from the start; it returns to
// normal at the end unless a Stop kind failed, which leaves the hourglass standing
// until the next handler clears it.
class Handler {
public:
    struct Options {
        bool hourglass = false;
        short* closeState = nullptr;
    };

    Handler(HandlerKind kind, Report report, Options options);
    Handler(HandlerKind kind, Report report) : Handler(kind, std::move(report), Options{}) {}
    ~Handler();
    Handler(const Handler&) = delete;
    Handler& operator=(const Handler&) = delete;

    template <class Step>
    Handler& operator()(Step&& step)
    {
        if (stopped_) return *this;
        try {
            std::forward<Step>(step)();
        } catch (const base::VbError& fault) {
            fail(fault);
        }
        return *this;
    }

    // True once any step failed.
    bool failed() const { return failed_; }
    // True once the handler skips its remaining steps (after a Stop kind failed, or
    // after stop()).
    bool stopped() const { return stopped_; }
    // Ends the handler early without a fault (the original's Exit Sub).
    void stop() { stopped_ = true; }

private:
    void fail(const base::VbError& fault);

    HandlerKind kind_;
    Report report_;
    Options options_;
    bool failed_ = false;
    bool stopped_ = false;
};

// The system's own report of a fault that no handler caught; the process then ends.
QString unhandledFaultText(const base::VbError& fault);

}  // namespace app
