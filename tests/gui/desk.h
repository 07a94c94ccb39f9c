#pragma once
// The program on the offscreen desktop, as a clerk meets it: the real Qt platform (its
// modal loops, focus moves, key sends and event pumping) with only the message boxes,
// the program starts and the browser recorded, over a small installation; and the
// check that every bound widget shows what its model control holds.

#include "app/process.h"
#include "controls/buttons.h"
#include "controls/grid.h"
#include "controls/inputs.h"
#include "controls/lists.h"
#include "controls/screen.h"
#include "controls/static_controls.h"
#include "gui/desktop.h"
#include "gui/grid_model.h"
#include "gui/qt_platform.h"
#include "gui/views.h"
#include "seal/seal_screen.h"
#include "seal/text_combo.h"
#include "support/consent_db.h"
#include "support/globals_scope.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QStatusBar>
#include <QStyle>
#include <QStyleOptionViewItem>
#include <QTableView>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>

namespace desk {

inline QApplication& application()
{
    static int argc = 1;
    static char name[] = "test_gui";
    static char* argv[] = {name, nullptr};
    // Never destroyed: tearing Qt down among the process's exit handlers crashes.
    static QApplication* app = [] {
        auto* a = new QApplication(argc, argv);
        gui::useProgramLook(*a);
        return a;
    }();
    return *app;
}

// For windows a test builds itself: the application, and the Qt platform the windows
// dispatch through, which makes no windows of its own.
class Bench : public ::testing::Test {
protected:
    Bench() { application(); }
    gui::QtPlatform qt{{}};
};

// The Qt platform with the outside world recorded. Boxes are answered by `answer`
// (OK when unset) unless realBoxes shows them as the program does.
class DeskPlatform : public gui::QtPlatform {
public:
    DeskPlatform() : gui::QtPlatform([this](controls::Screen& s) { return window(s); }) {}

    int msgBox(const QString& text, int style, const QString& title) override
    {
        boxes << text;
        if (realBoxes) return gui::QtPlatform::msgBox(text, style, title);
        return answer ? answer(text, style) : controls::BoxAnswer::Ok;
    }
    bool startProgram(const QString& commandLine, int windowStyle) override
    {
        starts << commandLine;
        return realStarts ? gui::QtPlatform::startProgram(commandLine, windowStyle) : true;
    }
    void openUrl(const QString& url) override { urls << url; }
    void beep() override {}
    QDate today() override { return {2026, 11, 21}; }

    // Told of each window as it is made, before the screen loads.
    std::function<void(controls::Screen&, QWidget&)> opened;
    std::function<int(const QString&, int)> answer;
    bool realBoxes = false;
    bool realStarts = false;
    QStringList boxes;
    QStringList starts;
    QStringList urls;

private:
    std::unique_ptr<QWidget> window(controls::Screen& s)
    {
        std::unique_ptr<QWidget> w = gui::makeView(*this, s);
        if (w && opened) opened(s, *w);
        return w;
    }
};

// An office with patients, doctors, insurers, staff and consents (today 2026/11/21),
// and a saved settings file, as every office has after its first print.
class Office : public sealtest::ConsentDb {
public:
    explicit Office(int patients = 12) : sealtest::ConsentDb({QStringLiteral("紹介者=1")})
    {
        touch(QStringLiteral("MGNT.CID"));  // the progress report screen is offered
        for (int i = 1; i <= patients; ++i) {
            static const char16_t* names[] = {u"山田 太郎", u"佐藤 花子", u"鈴木 一郎",
                                              u"高橋 和子", u"田中 実",   u"伊藤 幸子"};
            static const char16_t* kanas[] = {u"ﾔﾏﾀﾞ ﾀﾛｳ",  u"ｻﾄｳ ﾊﾅｺ", u"ｽｽﾞｷ ｲﾁﾛｳ",
                                              u"ﾀｶﾊｼ ｶｽﾞｺ", u"ﾀﾅｶ ﾐﾉﾙ", u"ｲﾄｳ ｻﾁｺ"};
            const size_t k = static_cast<size_t>(i - 1) % 6;
            addPatient(i, QString::fromUtf16(names[k]) + QString::number(i), QString::fromUtf16(kanas[k]),
                       QStringLiteral("'19%1/0%2/15'").arg(40 + i % 50).arg(1 + i % 9));
            if (i % 2) addService(i, QStringLiteral("2026/11/0%1 10:00:00").arg(1 + i % 9));
        }
        addStaff(11, QStringLiteral("佐藤 一郎"), QStringLiteral("0"), QStringLiteral("サトウ イチロウ"));
        addStaff(12, QStringLiteral("鈴木 花子"), QStringLiteral("0"), QStringLiteral("スズキ ハナコ"));
        addDoctor(QStringLiteral("501"), QStringLiteral("医師 一"), QStringLiteral("中央病院"));
        addDoctor(QStringLiteral("502"), QStringLiteral("医師 二"), QStringLiteral("北病院"));
        writeLines(QStringLiteral("DATA/印刷設定.ini"),
                   {QStringLiteral("[タックシール]"), QStringLiteral("印刷対象CK=0"), QStringLiteral("チェック順=0"),
                    QStringLiteral("Enter=1"), QStringLiteral("種類：保険者データ=0")});
    }
};

// Runs the program's start on the installation; `body` runs inside the seal window's
// own modal loop, and the window is closed after it, as the operator leaves.
inline int runSealWindow(DeskPlatform& desk, const Office& office,
                         const std::function<void(seal::frmPrintシール&, QWidget&)>& body)
{
    auto outer = desk.opened;
    desk.opened = [&desk, &body, outer](controls::Screen& s, QWidget& w) {
        if (outer) outer(s, w);
        auto* screen = dynamic_cast<seal::frmPrintシール*>(&s);
        if (!screen) return;
        QWidget* window = &w;
        QTimer::singleShot(0, window, [&desk, screen, window, &body] {
            if (!QTest::qWaitForWindowActive(window)) ADD_FAILURE() << "the seal window is not active";
            body(*screen, *window);
            if (!screen->isUnloaded()) desk.dispatch([screen] { screen->closeByUser(); });
        });
    };
    const int code = [&] {
        sealtest::GlobalsScope globals(desk);
        return app::runProcess({QStringLiteral("5"), office.appDir(), seal::makeSealScreen}, desk);
    }();
    desk.opened = outer;
    return code;
}

// What the widgets of a window show that their model controls do not hold: one line
// per difference ("chkCheck: checked "1", model "0""). A number or date input that
// holds the operator's unfinished typing is left out; its text is the model's when
// left. The widgets are found once, by the control's name.
class Mirror {
public:
    Mirror(QWidget& window, const controls::Screen& screen)
    {
        for (controls::Control* c : screen.all()) {
            if (c->kind() == controls::Kind::MenuItem) {
                for (QAction* a : window.findChildren<QAction*>(c->name())) actions_.emplace_back(c, a);
            } else if (QWidget* w = window.findChild<QWidget*>(c->name())) {
                widgets_.emplace_back(c, w);
            }
        }
    }

    size_t boundWidgets() const { return widgets_.size(); }

    QStringList faults() const
    {
        QStringList faults;
        for (auto [c, a] : actions_) menuFaults(faults, *static_cast<controls::MenuItem*>(c), a);
        for (auto [c, w] : widgets_) widgetFaults(faults, *c, w);
        return faults;
    }

private:
    static QString flag(bool b) { return b ? QStringLiteral("1") : QStringLiteral("0"); }
    static void differ(QStringList& faults, const controls::Control& c, const char* what, const QString& shown,
                       const QString& held)
    {
        if (shown != held)
            faults << QStringLiteral("%1: %2 \"%3\", model \"%4\"").arg(c.name(), QString::fromUtf8(what), shown, held);
    }

    static void menuFaults(QStringList& faults, const controls::MenuItem& m, QAction* a)
    {
        if (m.caption() == QLatin1String("-")) return;
        differ(faults, m, "caption", a->text(), m.caption());
        differ(faults, m, "enabled", flag(a->isEnabled()), flag(m.enabled()));
        differ(faults, m, "visible", flag(a->isVisible()), flag(m.visible()));
        if (a->isCheckable()) differ(faults, m, "checked", flag(a->isChecked()), flag(m.checked()));
    }

    static void widgetFaults(QStringList& faults, controls::Control& control, QWidget* w)
    {
        auto differs = [&](const char* what, const QString& shown, const QString& held) {
            differ(faults, control, what, shown, held);
        };
        controls::Control* c = &control;
        differs("enabled", flag(!w->testAttribute(Qt::WA_ForceDisabled)), flag(c->enabled()));
        differs("visible", flag(!w->isHidden()), flag(c->visible()));
        if (auto* o = dynamic_cast<controls::OptionButton*>(c)) {
            auto* r = qobject_cast<QAbstractButton*>(w);
            differs("caption", r->text(), o->caption());
            differs("checked", flag(r->isChecked()), flag(o->value()));
        } else if (auto* k = dynamic_cast<controls::CheckBox*>(c)) {
            auto* b = qobject_cast<QAbstractButton*>(w);
            differs("caption", b->text(), k->caption());
            differs("checked", flag(b->isChecked()), flag(k->value() != 0));
        } else if (auto* b = dynamic_cast<controls::Button*>(c)) {
            if (auto* ab = qobject_cast<QAbstractButton*>(w)) differs("caption", ab->text(), b->caption());
        } else if (auto* t = dynamic_cast<controls::TextInput*>(c)) {
            auto* e = qobject_cast<QLineEdit*>(w);
            const bool typing = e->window()->focusWidget() == e &&
                                (dynamic_cast<controls::NumberInput*>(c) || dynamic_cast<controls::DateInput*>(c));
            if (!typing) differs("text", e->text(), t->text());
        } else if (auto* tc = dynamic_cast<seal::TextComboBox*>(c)) {
            differs("text", qobject_cast<QComboBox*>(w)->currentText(), tc->text());
        } else if (auto* cb = dynamic_cast<controls::ComboBox*>(c)) {
            auto* q = qobject_cast<QComboBox*>(w);
            QStringList shown, held;
            for (int i = 0; i < q->count(); ++i) shown << q->itemText(i);
            for (int i = 0; i < cb->ListCount(); ++i) held << cb->List(i);
            differs("items", shown.join(u'|'), held.join(u'|'));
            differs("index", QString::number(q->currentIndex()), QString::number(cb->ListIndex()));
        } else if (auto* lb = dynamic_cast<controls::ListBox*>(c)) {
            auto* q = qobject_cast<QListWidget*>(w);
            QStringList shown, held;
            for (int i = 0; i < q->count(); ++i) shown << q->item(i)->text();
            for (int i = 0; i < lb->ListCount(); ++i) held << lb->List(i);
            differs("items", shown.join(u'|'), held.join(u'|'));
        } else if (auto* g = dynamic_cast<controls::Grid*>(c)) {
            auto* view = qobject_cast<QTableView*>(w);
            auto* model = dynamic_cast<gui::GridModel*>(view->model());
            const int col = model->gridCol(0);
            const bool ticks = g->isCheckBoxColumn(col);
            QStringList shown, held;
            for (int r = 0; r < model->rowCount(); ++r) {
                const QVariant tick = model->data(model->index(r, 0), Qt::CheckStateRole);
                shown << QString::number(model->cellAt(model->index(r, 0))->row) +
                             (ticks ? (tick.toInt() == Qt::Checked ? u'+' : u'-') : u' ');
            }
            for (int r = 1; r <= g->MaxRows(); ++r)
                if (!g->rowHidden(r)) held << QString::number(r) + (ticks ? (g->value(col, r) ? u'+' : u'-') : u' ');
            differs("rows", shown.join(u' '), held.join(u' '));
        } else if (auto* f = dynamic_cast<controls::Frame*>(c)) {
            if (auto* box = qobject_cast<QGroupBox*>(w)) differs("caption", box->title(), f->caption());
        } else if (auto* l = dynamic_cast<controls::Label*>(c)) {
            if (auto* q = qobject_cast<QLabel*>(w)) differs("caption", q->text(), l->caption());
        } else if (auto* s = dynamic_cast<controls::StatusBar*>(c)) {
            if (auto* q = qobject_cast<QStatusBar*>(w)) differs("text", q->currentMessage(), s->text());
        }
    }

    std::vector<std::pair<controls::Control*, QWidget*>> widgets_;
    std::vector<std::pair<controls::Control*, QAction*>> actions_;
};

inline QStringList mirrorFaults(QWidget& window, const controls::Screen& screen)
{
    return Mirror(window, screen).faults();
}

// The window's widget of that name; a missing one fails the test.
template <class W>
W* child(QWidget& window, const QString& name)
{
    W* w = window.findChild<W*>(name);
    if (!w) ADD_FAILURE() << "no widget " << name.toStdString();
    return w;
}

// Shows a window and makes it the active one, so that its menu keys work.
inline bool activate(QWidget& window)
{
    window.show();
    window.activateWindow();
    return QTest::qWaitForWindowActive(&window);
}

// Types text as the keyboard does, one character a key; Japanese too, unlike keyClicks.
inline void typeKeys(QWidget* w, const QString& text)
{
    for (QChar ch : text) QTest::sendKeyEvent(QTest::Click, w, Qt::Key_unknown, QString(ch), Qt::NoModifier);
}

// A double click as the mouse gives it: a click, then the second press.
inline void doubleClick(QWidget* viewport, QPoint at)
{
    QTest::mouseClick(viewport, Qt::LeftButton, {}, at);
    QTest::mouseDClick(viewport, Qt::LeftButton, {}, at);
}

// The centre of a view's cell, for the mouse.
inline QPoint cellCentre(QTableView* view, int viewRow, int viewCol)
{
    return view->visualRect(view->model()->index(viewRow, viewCol)).center();
}

// Where the tick box of a view cell is drawn, as the style lays the cell out.
inline QPoint tickBoxCentre(QTableView* view, int viewRow)
{
    QStyleOptionViewItem option;
    option.initFrom(view->viewport());
    option.rect = view->visualRect(view->model()->index(viewRow, 0));
    option.features = QStyleOptionViewItem::HasCheckIndicator;
    option.state |= QStyle::State_Enabled;
    return view->style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, view).center();
}

}  // namespace desk
