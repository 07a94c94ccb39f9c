#pragma once
// The headless control kit: each control keeps the state the screen's behaviour reads
// and writes, raises the events the original's control raises (also when code sets a
// value, where the behaviour depends on it), and tells observers of every change so
// that a view can follow.

#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

namespace controls {

// Colours as the original's runtime holds them: 0x00BBGGRR, or a system colour with
// the high bit set.
using Color = quint32;
namespace Colors {
inline constexpr Color Black = 0x000000;
inline constexpr Color White = 0xFFFFFF;
inline constexpr Color ScrollBars = 0x80000000;  // system colour of scroll bars
inline constexpr Color WindowBackground = 0x80000005;
inline constexpr Color WindowText = 0x80000008;
inline constexpr Color ButtonFace = 0x8000000F;
}  // namespace Colors

enum class Kind {
    Button,
    OptionButton,
    CheckBox,
    ComboBox,
    TextBox,
    ImText,
    ImNumber,
    ImDate,
    ListBox,
    Grid,
    MenuItem,
    Label,
    Frame,
    Picture,
    StatusBar
};

// What changed, for observers. Grid changes carry the cell or row; others only say
// that the control's state is different now.
struct Change {
    enum What { State, Items, Cell, Row, Rows, All };
    What what = State;
    int row = 0;
    int col = 0;
};

class Control {
public:
    using Observer = std::function<void(const Change&)>;

    Control(QString name, Kind kind) : name_(std::move(name)), kind_(kind) {}
    virtual ~Control() = default;
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    const QString& name() const { return name_; }
    Kind kind() const { return kind_; }

    bool enabled() const { return enabled_; }
    void setEnabled(bool on) { set(enabled_, on); }
    bool visible() const { return visible_; }
    void setVisible(bool on) { set(visible_, on); }
    // Position in twips, as the original moves controls about.
    int top() const { return top_; }
    void setTop(int twips) { set(top_, twips); }
    int left() const { return left_; }
    void setLeft(int twips) { set(left_, twips); }
    int width() const { return width_; }
    void setWidth(int twips) { set(width_, twips); }
    int height() const { return height_; }
    void setHeight(int twips) { set(height_, twips); }
    const QString& tag() const { return tag_; }
    void setTag(const QString& t) { set(tag_, t); }
    // Whether the control takes part in the focus chain (buttons, inputs, lists).
    bool tabStop() const { return tabStop_; }
    void setTabStop(bool on) { tabStop_ = on; }

    // Keyboard and focus events of a control that can have the focus. KeyDown gets the
    // key code and the shift state and may set the code to 0 to swallow the key;
    // KeyPress gets the character code likewise.
    std::function<void(int& keyCode, int shift)> KeyDown;
    std::function<void(int& keyAscii)> KeyPress;
    std::function<void()> GotFocus;
    std::function<void()> LostFocus;

    int observe(Observer observer);
    void unobserve(int id);

    // The control's state as "key=value" items, for the scenario runner's "show".
    virtual void describe(QStringList& out) const;

protected:
    void notify(const Change& change = {}) const;
    template <class T>
    void set(T& field, const T& value)
    {
        if (field == value) return;
        field = value;
        notify();
    }

private:
    QString name_;
    Kind kind_;
    bool enabled_ = true;
    bool visible_ = true;
    bool tabStop_ = false;
    int top_ = 0;
    int left_ = 0;
    int width_ = 0;
    int height_ = 0;
    QString tag_;
    std::vector<std::pair<int, Observer>> observers_;
    int nextObserverId_ = 1;
};

// Escapes CR and LF for transcript lines.
QString escapeForTranscript(const QString& text);

}  // namespace controls
