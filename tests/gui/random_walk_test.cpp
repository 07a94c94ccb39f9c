// A seeded random walk of mouse clicks, double clicks and keys over the seal window and
// the windows it opens (the consent and progress side screens, the staff search),
// as an impatient clerk would give them. After each event every open window must
// still show what its model holds; a crash, a fault that ends the program, or a widget
// that disagrees fails the walk, which then tells its seed and its last events.
// SEAL_WALK_SEED and SEAL_WALK_EVENTS choose another walk.

#include "desk.h"

#include "gui/binder.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>

#include <cstdio>
#include <exception>
#include <map>
#include <random>
#include <set>

using desk::DeskPlatform;
using seal::frmPrintシール;

namespace {

// Told when the walk dies of an exception no one caught.
std::string gLastWords;

class Walk {
public:
    Walk(DeskPlatform& desk, unsigned seed, int events) : desk_(desk), seed_(seed), target_(events), rng_(seed) {}

    // Keeps track of the windows the program opens.
    void opened(controls::Screen& s, QWidget& w)
    {
        QPointer<QWidget> guard(&w);
        windows_.push_back({guard, &s, std::make_shared<desk::Mirror>(w, s)});
    }

    // Runs the walk inside the seal window's loop; returns when it is over.
    void run(frmPrintシール& seal)
    {
        seal_ = &seal;
        QEventLoop over;
        over_ = &over;
        next();
        over.exec();
        over_ = nullptr;
    }

    int events() const { return events_; }
    const QString& failure() const { return failure_; }
    const std::set<QString>& reached() const { return reached_; }
    QString trail() const
    {
        return QStringLiteral("seed %1, event %2; last events:\n  ").arg(seed_).arg(events_) +
               trail_.join(QStringLiteral("\n  "));
    }

private:
    struct Open {
        QPointer<QWidget> window;
        controls::Screen* screen;
        std::shared_ptr<desk::Mirror> mirror;
    };

    // Each event is its own zero timer, set before the event is given: an event that opens
    // a modal window waits in that window's loop, where the next events then run. A
    // timer that comes due while its window is still taking the last event waits.
    void next()
    {
        QTimer::singleShot(0, [this] { tick(); });
    }

    void tick()
    {
        Open* open = top();
        if (open && !giving_.empty() && giving_.back() == open->window) {
            next();
            return;
        }
        // The last event has settled: the windows must show their models now.
        record();
        check();
        if (events_ >= target_ || !failure_.isEmpty() || !open) {
            if (over_) over_->quit();
            // Leaving every open window at once, as the end of the process does.
            desk_.dispatch([] { throw controls::ProcessEnd{0}; });
            return;
        }
        next();
        giving_.push_back(open->window);
        step(*open);
        giving_.pop_back();
    }

    int pick(int n) { return std::uniform_int_distribution<int>(0, n - 1)(rng_); }
    bool chance(int percent) { return pick(100) < percent; }

    // The window the clerk can reach: the topmost one still open.
    Open* top()
    {
        for (auto it = windows_.rbegin(); it != windows_.rend(); ++it)
            if (it->window && it->window->isVisible() && !it->screen->isUnloaded()) return &*it;
        return nullptr;
    }

    bool leaves(QWidget* w, bool onSeal) const
    {
        // The seal window's own way out ends the walk too soon; the side screens' are fair.
        static const QStringList out{QStringLiteral("btnExit"), QStringLiteral("cmdMenu")};
        return onSeal && out.contains(w->objectName());
    }

    void note(const QString& what)
    {
        trail_ << QStringLiteral("%1 %2").arg(events_).arg(what);
        if (trail_.size() > 25) trail_.removeFirst();
        gLastWords = trail().toStdString();
    }

    void step(Open& open)
    {
        QWidget* window = open.window;
        if (!window->isActiveWindow()) window->activateWindow();
        const bool onSeal = open.screen == seal_;
        QList<QWidget*> targets;
        for (QWidget* w : window->findChildren<QWidget*>()) {
            if (w->objectName().isEmpty() || !w->isVisible() || !w->isEnabled() || leaves(w, onSeal)) continue;
            if (qobject_cast<QAbstractButton*>(w) || qobject_cast<QLineEdit*>(w) || qobject_cast<QComboBox*>(w) ||
                qobject_cast<QAbstractItemView*>(w) || qobject_cast<gui::ClickableLabel*>(w))
                targets << w;
        }
        ++events_;
        if (targets.isEmpty() || chance(6)) {
            keyOnWindow(window, onSeal);
        } else {
            act(targets.at(pick(static_cast<int>(targets.size()))));
        }
    }

    void keyOnWindow(QWidget* window, bool onSeal)
    {
        static const Qt::Key keys[] = {Qt::Key_F3,     Qt::Key_F4,  Qt::Key_F5, Qt::Key_F9,
                                       Qt::Key_Escape, Qt::Key_Tab, Qt::Key_F12};
        Qt::Key key = keys[pick(onSeal ? 6 : 7)];
        QWidget* to = QApplication::focusWidget() && QApplication::focusWidget()->window() == window
                          ? QApplication::focusWidget()
                          : window;
        note(QStringLiteral("key %1 on %2").arg(QKeySequence(key).toString(), to->objectName()));
        QTest::keyClick(to, key);
    }

    void act(QWidget* w)
    {
        const QString name = w->objectName();
        if (auto* view = qobject_cast<QAbstractItemView*>(w)) {
            QAbstractItemModel* model = view->model();
            if (!model || model->rowCount() == 0) {
                note(QStringLiteral("click on empty %1").arg(name));
                QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, QPoint(5, 5));
                return;
            }
            const QModelIndex i = model->index(pick(model->rowCount()), pick(model->columnCount()));
            const QRect r = view->visualRect(i);
            const QPoint at = chance(50) ? QPoint(r.left() + 10, r.center().y()) : r.center();
            switch (pick(5)) {
            case 0:
                note(QStringLiteral("double click %1 row %2").arg(name).arg(i.row()));
                desk::doubleClick(view->viewport(), at);
                return;
            case 1: {
                static const Qt::Key keys[] = {Qt::Key_Space, Qt::Key_Return, Qt::Key_Down, Qt::Key_Up};
                const Qt::Key k = keys[pick(4)];
                note(QStringLiteral("key %1 on %2").arg(QKeySequence(k).toString(), name));
                view->setFocus();
                QTest::keyClick(view, k);
                return;
            }
            default:
                note(QStringLiteral("click %1 row %2 col %3").arg(name).arg(i.row()).arg(i.column()));
                QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, at);
                return;
            }
        }
        if (auto* edit = qobject_cast<QLineEdit*>(w)) {
            static const QStringList bits{QStringLiteral("1"),       QStringLiteral("2"), QStringLiteral("0"),
                                          QStringLiteral("山"),      QStringLiteral("ｻ"), QStringLiteral("/"),
                                          QStringLiteral("2026/10"), QStringLiteral("x")};
            QTest::mouseClick(edit, Qt::LeftButton);
            if (chance(30)) {
                note(QStringLiteral("Enter in %1").arg(name));
                QTest::keyClick(edit, Qt::Key_Return);
            } else if (chance(20)) {
                note(QStringLiteral("Backspace in %1").arg(name));
                QTest::keyClick(edit, Qt::Key_Backspace);
            } else {
                const QString typed = bits.at(pick(static_cast<int>(bits.size())));
                note(QStringLiteral("type %1 in %2").arg(typed, name));
                for (QChar ch : typed)
                    QTest::sendKeyEvent(QTest::Click, edit, Qt::Key_unknown, QString(ch), Qt::NoModifier);
            }
            return;
        }
        if (auto* combo = qobject_cast<QComboBox*>(w)) {
            const Qt::Key k = chance(50) ? Qt::Key_Down : Qt::Key_Up;
            note(QStringLiteral("key %1 on %2").arg(QKeySequence(k).toString(), name));
            combo->setFocus();
            QTest::keyClick(combo, k);
            return;
        }
        note(QStringLiteral("click %1").arg(name));
        // A tick box or option is clicked on its box; a button anywhere on it.
        const bool box = qobject_cast<QCheckBox*>(w) || qobject_cast<QRadioButton*>(w);
        QTest::mouseClick(w, Qt::LeftButton, {}, box ? QPoint(8, w->height() / 2) : w->rect().center());
    }

    // Which modes the walk has been through.
    void record()
    {
        const frmPrintシール& f = *seal_;
        for (size_t k = 0; k < f.optMst.size(); ++k)
            if (f.optMst[k].value()) reached_.insert(QStringLiteral("kind %1").arg(k));
        for (size_t m = 0; m < f.opPMode.size(); ++m)
            if (f.opPMode[m].value()) reached_.insert(QStringLiteral("method %1").arg(m));
        reached_.insert(QStringLiteral("enter add %1").arg(f.chkEnter.value()));
        reached_.insert(QStringLiteral("check order %1").arg(f.chkCheck.value()));
        int shown = 0;
        for (int r = 1; r <= f.fpSpread02.MaxRows(); ++r) shown += f.fpSpread02.rowHidden(r) ? 0 : 1;
        reached_.insert(shown ? QStringLiteral("list full") : QStringLiteral("list empty"));
        if (Open* open = top()) reached_.insert(QStringLiteral("window ") + open->screen->name());
    }

    void check()
    {
        for (const Open& o : windows_) {
            if (!o.window || o.screen->isUnloaded() || !o.window->isVisible()) continue;
            const QStringList faults = o.mirror->faults();
            if (!faults.isEmpty()) {
                failure_ = o.screen->name() + QStringLiteral(" disagrees with its model:\n  ") +
                           faults.join(QStringLiteral("\n  "));
                return;
            }
        }
    }

    DeskPlatform& desk_;
    unsigned seed_;
    int target_;
    std::mt19937 rng_;
    frmPrintシール* seal_ = nullptr;
    QEventLoop* over_ = nullptr;
    std::vector<QWidget*> giving_;  // the windows taking an event, innermost last
    std::vector<Open> windows_;
    int events_ = 0;
    QString failure_;
    QStringList trail_;
    std::set<QString> reached_;
};

unsigned walkSeed()
{
    bool ok = false;
    const unsigned seed = qEnvironmentVariable("SEAL_WALK_SEED").toUInt(&ok);
    return ok ? seed : 20261121u;
}

int walkEvents()
{
    bool ok = false;
    const int n = qEnvironmentVariable("SEAL_WALK_EVENTS").toInt(&ok);
    return ok && n > 0 ? n : 5000;
}

}  // namespace

TEST(RandomWalk, FiveThousandEventsOverTheSealWindowAndItsSideScreensLeaveEveryWidgetTrueToItsModel)
{
    desk::application();
    desk::Office office(30);
    for (int i = 1; i <= 30; i += 3)
        office.addConsent(i, QStringLiteral("2026/06/%1").arg(1 + i % 27, 2, 10, QChar(u'0')), QStringLiteral("501"));
    DeskPlatform desk;
    desk.answer = [](const QString&, int style) {
        // Questions are answered either way; a clerk cancels as often as not.
        static std::mt19937 answers(7);
        return (style & 7) == controls::BoxStyle::OkCancel && answers() % 2 ? controls::BoxAnswer::Cancel
                                                                            : controls::BoxAnswer::Ok;
    };
    Walk walk(desk, walkSeed(), walkEvents());
    std::set_terminate([] {
        std::fprintf(stderr, "random walk died of an uncaught exception: %s\n", gLastWords.c_str());
        std::abort();
    });
    desk.opened = [&walk](controls::Screen& s, QWidget& w) { walk.opened(s, w); };
    QElapsedTimer clock;
    clock.start();
    desk::runSealWindow(desk, office, [&](frmPrintシール& f, QWidget&) { walk.run(f); });
    std::set_terminate(nullptr);

    EXPECT_EQ(walk.failure(), QString()) << walk.trail().toStdString();
    EXPECT_EQ(walk.events(), walkEvents()) << "the program ended early; " << walk.trail().toStdString() << "\nboxes:\n"
                                           << desk.boxes.join(u'\n').toStdString();
    // The walk went through every kind, both print methods, both settings of the two
    // tick boxes, an empty and a full list, and the side screens.
    QStringList missed;
    for (const char* mode : {"kind 0", "kind 1", "kind 2", "kind 3", "kind 5", "kind 6", "kind 7", "kind 8", "method 0",
                             "method 1", "enter add 0", "enter add 1", "check order 0", "check order 1", "list empty",
                             "list full", "window frmDoui", "window frmSeal_SejutsuKeika"})
        if (!walk.reached().count(QString::fromUtf8(mode))) missed << QString::fromUtf8(mode);
    QStringList reached(walk.reached().begin(), walk.reached().end());
    EXPECT_EQ(missed, QStringList()) << "seed " << walkSeed() << "; reached " << reached.join(u',').toStdString()
                                     << "\n"
                                     << walk.trail().toStdString();
    EXPECT_LT(clock.elapsed(), 60000) << "seed " << walkSeed();
}
