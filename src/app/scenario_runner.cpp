#include "app/scenario_runner.h"

#include "app/globals.h"
#include "app/program_start.h"
#include "controls/buttons.h"
#include "controls/grid.h"
#include "controls/inputs.h"
#include "controls/lists.h"
#include "controls/screen.h"
#include "controls/static_controls.h"

namespace app {

using namespace controls;

namespace {

// The command word and the rest of the line.
std::pair<QString, QString> splitFirst(const QString& text)
{
    const QString t = text.trimmed();
    const qsizetype sp = t.indexOf(u' ');
    if (sp < 0) return {t, QString()};
    return {t.left(sp), t.mid(sp + 1).trimmed()};
}

// Splits n arguments; the last one takes the rest of the line.
QStringList splitArgs(const QString& rest, int n)
{
    QStringList args;
    QString r = rest;
    for (int i = 0; i < n - 1; ++i) {
        auto [first, remainder] = splitFirst(r);
        args << first;
        r = remainder;
    }
    args << r;
    return args;
}

int toInt(const QString& s, const QString& what)
{
    bool ok = false;
    const int v = s.toInt(&ok);
    if (!ok) throw std::invalid_argument(QStringLiteral("%1 is not a number: %2").arg(what, s).toStdString());
    return v;
}

bool onOff(const QString& s)
{
    if (s == QLatin1String("on")) return true;
    if (s == QLatin1String("off")) return false;
    throw std::invalid_argument(QStringLiteral("expected on or off: %1").arg(s).toStdString());
}

}  // namespace

ScenarioRunner::ScenarioRunner(QStringList script, QString appDir, ScreenFactory makeSealScreen)
        : script_(std::move(script)), appDir_(std::move(appDir)), makeSealScreen_(std::move(makeSealScreen))
{
    platform_.modalDriver = [this](Screen& modal) { drive(modal); };
}

void ScenarioRunner::startProgramsForReal()
{
    // A failed run's reason reaches the console through the log's warning.
    platform_.realStart = [](const QString& commandLine) { return runToEnd(commandLine, gsAppPath); };
}

int ScenarioRunner::run(const std::function<void(const QString&)>& out, const std::function<void(const QString&)>& err)
{
    platform_.onLine = out;
    try {
        bool started = false;
        while (next_ < script_.size()) {
            const QString line = script_[next_++].trimmed();
            if (line.isEmpty() || line.startsWith(u'#')) continue;
            auto [cmd, rest] = splitFirst(line);
            if (cmd == QLatin1String("start")) {
                const int code = runProcess({rest, appDir_, makeSealScreen_}, platform_);
                emit(QStringLiteral("end %1").arg(code));
                started = true;
                break;
            }
            execute(line);
        }
        if (!started) throw ScriptError{QStringLiteral("the script has no start")};
        // Commands after the process's end have nothing to act on.
        while (next_ < script_.size()) {
            const QString line = script_[next_++].trimmed();
            if (!line.isEmpty() && !line.startsWith(u'#'))
                throw ScriptError{QStringLiteral("the process has ended: %1").arg(line)};
        }
        return 0;
    } catch (const ScriptError& e) {
        err(QStringLiteral("script line %1: %2").arg(next_).arg(e.message));
        return 2;
    }
}

void ScenarioRunner::drive(Screen& modal)
{
    while (!modal.isUnloaded() && next_ < script_.size()) {
        const QString line = script_[next_++].trimmed();
        if (line.isEmpty() || line.startsWith(u'#')) continue;
        execute(line);
    }
}

Control& ScenarioRunner::control(const QString& name) const
{
    Screen* top = platform_.top();
    if (!top) throw ScriptError{QStringLiteral("no screen is open")};
    Control* c = top->find(name);
    if (!c) throw ScriptError{QStringLiteral("%1 has no control %2").arg(top->name(), name)};
    return *c;
}

void ScenarioRunner::execute(const QString& line)
{
    auto [cmd, rest] = splitFirst(line);
    try {
        if (cmd == QLatin1String("today")) {
            const QDate d = QDate::fromString(rest, QStringLiteral("yyyy/MM/dd"));
            if (!d.isValid()) throw ScriptError{QStringLiteral("not a date: %1").arg(rest)};
            platform_.setToday(d);
        } else if (cmd == QLatin1String("answer")) {
            if (rest == QLatin1String("OK"))
                platform_.queueAnswer(BoxAnswer::Ok);
            else if (rest == QLatin1String("Cancel"))
                platform_.queueAnswer(BoxAnswer::Cancel);
            else
                throw ScriptError{QStringLiteral("answer OK or Cancel: %1").arg(rest)};
        } else if (cmd == QLatin1String("show")) {
            show(rest);
        } else if (cmd == QLatin1String("close")) {
            Screen* top = platform_.top();
            if (!top) throw ScriptError{QStringLiteral("no screen is open")};
            top->closeByUser();
        } else if (cmd == QLatin1String("click")) {
            Control& c = control(rest);
            if (!c.enabled() || !c.visible()) throw ScriptError{QStringLiteral("%1 cannot be clicked now").arg(rest)};
            switch (c.kind()) {
            case Kind::OptionButton:
                static_cast<OptionButton&>(c).setValue(true);
                break;
            case Kind::CheckBox:
                static_cast<CheckBox&>(c).toggle();
                break;
            case Kind::Button:
            case Kind::MenuItem:
                static_cast<Button&>(c).click();
                break;
            case Kind::Picture:
                static_cast<Picture&>(c).click();
                break;
            default:
                throw ScriptError{QStringLiteral("%1 is not clickable").arg(rest)};
            }
        } else if (cmd == QLatin1String("check")) {
            const QStringList a = splitArgs(rest, 2);
            auto* box = dynamic_cast<CheckBox*>(&control(a[0]));
            if (!box) throw ScriptError{QStringLiteral("%1 is not a check box").arg(a[0])};
            box->setValue(onOff(a[1]) ? 1 : 0);
        } else if (cmd == QLatin1String("choose")) {
            const QStringList a = splitArgs(rest, 2);
            auto* list = dynamic_cast<ItemList*>(&control(a[0]));
            if (!list) throw ScriptError{QStringLiteral("%1 is not a list").arg(a[0])};
            const int n = toInt(a[1], QStringLiteral("row"));
            if (n < 0 || n >= list->ListCount()) throw ScriptError{QStringLiteral("%1 has no row %2").arg(a[0]).arg(n)};
            list->choose(n);
        } else if (cmd == QLatin1String("type")) {
            const QStringList a = splitArgs(rest, 2);
            Control& c = control(a[0]);
            if (auto* d = dynamic_cast<DateInput*>(&c)) {
                if (!d->typeText(a[1])) throw ScriptError{QStringLiteral("not a date: %1").arg(a[1])};
            } else if (auto* n = dynamic_cast<NumberInput*>(&c)) {
                if (!n->typeText(a[1])) throw ScriptError{QStringLiteral("%1 does not take %2").arg(a[0], a[1])};
            } else if (auto* t = dynamic_cast<TextInput*>(&c)) {
                t->setText(a[1]);
            } else {
                throw ScriptError{QStringLiteral("%1 takes no text").arg(a[0])};
            }
        } else if (cmd == QLatin1String("key")) {
            const QStringList a = splitArgs(rest, 2);
            Control& c = control(a[0]);
            platform_.top()->SetFocus(c);
            if (!platform_.top()->pressKey(a[1])) throw ScriptError{QStringLiteral("unknown key %1").arg(a[1])};
        } else if (cmd == QLatin1String("cell") || cmd == QLatin1String("tick")) {
            const QStringList a = splitArgs(rest, 3);
            auto* grid = dynamic_cast<Grid*>(&control(a[0]));
            if (!grid) throw ScriptError{QStringLiteral("%1 is not a grid").arg(a[0])};
            const int row = toInt(a[1], QStringLiteral("row"));
            if (row < 1 || row > grid->MaxRows())
                throw ScriptError{QStringLiteral("%1 has no row %2").arg(a[0]).arg(row)};
            if (cmd == QLatin1String("cell"))
                grid->clickCell(toInt(a[2], QStringLiteral("column")), row);
            else
                grid->pressButton(1, row, onOff(a[2]));
        } else if (cmd == QLatin1String("select") || cmd == QLatin1String("dblclick")) {
            const QStringList a = splitArgs(rest, 2);
            Control& c = control(a[0]);
            const int n = toInt(a[1], QStringLiteral("line"));
            const bool dbl = cmd == QLatin1String("dblclick");
            if (auto* grid = dynamic_cast<Grid*>(&c)) {
                if (n < 1 || n > grid->MaxRows())
                    throw ScriptError{QStringLiteral("%1 has no row %2").arg(a[0]).arg(n)};
                dbl ? grid->dblClickCell(grid->ActiveCol(), n) : grid->clickCell(grid->ActiveCol(), n);
            } else if (auto* list = dynamic_cast<ItemList*>(&c)) {
                if (n < 0 || n >= list->ListCount())
                    throw ScriptError{QStringLiteral("%1 has no line %2").arg(a[0]).arg(n)};
                if (dbl) {
                    if (auto* lb = dynamic_cast<ListBox*>(list))
                        lb->doubleClick(n);
                    else
                        throw ScriptError{QStringLiteral("%1 takes no double click").arg(a[0])};
                } else {
                    list->choose(n);
                }
            } else {
                throw ScriptError{QStringLiteral("%1 has no lines").arg(a[0])};
            }
        } else {
            throw ScriptError{QStringLiteral("unknown command %1").arg(cmd)};
        }
    } catch (const std::invalid_argument& e) {
        throw ScriptError{QString::fromStdString(e.what())};
    }
}

void ScenarioRunner::show(const QString& name)
{
    const Control& c = control(name);
    QStringList items;
    c.describe(items);
    emit(QStringLiteral("state %1 %2").arg(name, items.join(u' ')));
    if (auto* grid = dynamic_cast<const Grid*>(&c))
        for (const QString& row : grid->describeRows()) emit(QStringLiteral("state %1 %2").arg(name, row));
}

}  // namespace app
