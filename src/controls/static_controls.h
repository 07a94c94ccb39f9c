#pragma once
// Controls that only show: labels, frames, pictures, the status bar.

#include "controls/control.h"

namespace controls {

class Label : public Control {
public:
    explicit Label(QString name, QString caption = {}, Kind kind = Kind::Label)
            : Control(std::move(name), kind), caption_(std::move(caption))
    {}

    const QString& caption() const { return caption_; }
    void setCaption(const QString& c) { set(caption_, c); }
    Color backColor() const { return backColor_; }
    void setBackColor(Color c) { set(backColor_, c); }
    Color foreColor() const { return foreColor_; }
    void setForeColor(Color c) { set(foreColor_, c); }

    void describe(QStringList& out) const override;

private:
    QString caption_;
    Color backColor_ = Colors::ButtonFace;
    Color foreColor_ = Colors::WindowText;
};

// A frame groups controls; disabling it makes its contents unreachable.
class Frame : public Label {
public:
    explicit Frame(QString name, QString caption = {}) : Label(std::move(name), std::move(caption), Kind::Frame) {}
};

// A picture or image control; an empty path is an empty picture. Clicking a picture is
// an event some screens use.
class Picture : public Control {
public:
    explicit Picture(QString name) : Control(std::move(name), Kind::Picture) {}

    const QString& picturePath() const { return path_; }
    void setPicturePath(const QString& p) { set(path_, p); }
    void click()
    {
        if (Click) Click();
    }
    std::function<void()> Click;

    void describe(QStringList& out) const override;

private:
    QString path_;
};

// The status bar: one text.
class StatusBar : public Control {
public:
    explicit StatusBar(QString name) : Control(std::move(name), Kind::StatusBar) {}

    const QString& text() const { return text_; }
    void setText(const QString& t) { set(text_, t); }

    void describe(QStringList& out) const override;

private:
    QString text_;
};

}  // namespace controls
