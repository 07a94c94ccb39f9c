#pragma once
// Controls the operator clicks: command buttons, option buttons, check boxes, menu items.

#include "controls/control.h"

namespace controls {

using Handler = std::function<void()>;

// A click on a disabled or hidden control is not possible for the operator; code can
// still call the handler directly.
class Button : public Control {
public:
    explicit Button(QString name, QString caption = {}, Kind kind = Kind::Button)
            : Control(std::move(name), kind), caption_(std::move(caption))
    {
        setTabStop(true);
    }

    const QString& caption() const { return caption_; }
    void setCaption(const QString& c) { set(caption_, c); }

    // The operator's click.
    void click()
    {
        if (Click) Click();
    }
    Handler Click;

    void describe(QStringList& out) const override;

private:
    QString caption_;
};

// One element of an option button group (a control array in one frame): choosing it
// clears the others of its group. Setting the value to true by code fires Click as the
// operator's click does, when the value changes.
class OptionButton : public Button {
public:
    explicit OptionButton(QString name, QString caption = {})
            : Button(std::move(name), std::move(caption), Kind::OptionButton)
    {}

    bool value() const { return value_; }
    void setValue(bool on);
    // Joins a group; all members of a group share one vector owned by the screen.
    void joinGroup(std::vector<OptionButton*>* group)
    {
        group_ = group;
        group_->push_back(this);
    }

    void describe(QStringList& out) const override;

private:
    void setValueSilently(bool on) { set(value_, on); }
    bool value_ = false;
    std::vector<OptionButton*>* group_ = nullptr;
};

// Check box: 0 unticked, 1 ticked. Setting a different value by code fires Click.
class CheckBox : public Button {
public:
    explicit CheckBox(QString name, QString caption = {}) : Button(std::move(name), std::move(caption), Kind::CheckBox)
    {}

    int value() const { return value_; }
    void setValue(int v);
    // The operator's click toggles the tick.
    void toggle() { setValue(value_ ? 0 : 1); }

    void describe(QStringList& out) const override;

private:
    int value_ = 0;
};

// Menu item: caption, tick, and a shortcut key ("F3", "Shift+F12") that clicks it.
class MenuItem : public Button {
public:
    MenuItem(QString name, QString caption, QString shortcut = {})
            : Button(std::move(name), std::move(caption), Kind::MenuItem), shortcut_(std::move(shortcut))
    {
        setTabStop(false);
    }

    bool checked() const { return checked_; }
    void setChecked(bool on) { set(checked_, on); }
    const QString& shortcut() const { return shortcut_; }

    void describe(QStringList& out) const override;

private:
    bool checked_ = false;
    QString shortcut_;
};

}  // namespace controls
