#pragma once
// Text, number and date inputs. Setting the text by code fires Change, as the
// original's inputs do.

#include "controls/control.h"

#include <QDate>
#include <optional>

namespace controls {

class TextInput : public Control {
public:
    explicit TextInput(QString name, Kind kind = Kind::ImText) : Control(std::move(name), kind) { setTabStop(true); }

    const QString& text() const { return text_; }
    void setText(const QString& t);
    bool locked() const { return locked_; }
    void setLocked(bool on) { set(locked_, on); }
    int maxLength() const { return maxLength_; }
    void setMaxLength(int n) { maxLength_ = n; }
    Color backColor() const { return backColor_; }
    void setBackColor(Color c) { set(backColor_, c); }

    std::function<void()> Change;

    void describe(QStringList& out) const override;

private:
    QString text_;
    bool locked_ = false;
    int maxLength_ = 0;  // 0: no limit
    Color backColor_ = Colors::WindowBackground;
};

// A number input (imNumber): its text is what the operator sees; an empty text is a
// null value. The maximum is enforced on the operator's input only.
class NumberInput : public TextInput {
public:
    explicit NumberInput(QString name, double minValue = 0, double maxValue = 0)
            : TextInput(std::move(name), Kind::ImNumber), min_(minValue), max_(maxValue)
    {}

    std::optional<double> value() const;
    void setValue(double v);
    double minValue() const { return min_; }
    double maxValue() const { return max_; }
    // The operator's typing: a value outside the range is not taken.
    bool typeText(const QString& t);

private:
    double min_;
    double max_;
};

// A date input (imDate) with its display format; null when empty.
class DateInput : public TextInput {
public:
    // format: "yyyy/MM/dd" or "yyyy/MM" (a month input holds the first of the month).
    explicit DateInput(QString name, QString format = QStringLiteral("yyyy/MM/dd"))
            : TextInput(std::move(name), Kind::ImDate), format_(std::move(format))
    {}

    bool isNull() const { return !date_.isValid(); }
    QDate value() const { return date_; }
    void setValue(const QDate& d);
    void clear() { setValue(QDate()); }
    // Takes "yyyy/mm/dd" or "yyyy/mm" (empty text empties it); false if not a date.
    bool typeText(const QString& t);
    const QString& format() const { return format_; }

private:
    QString format_;
    QDate date_;
};

}  // namespace controls
