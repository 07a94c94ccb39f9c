#pragma once
// A combo box whose text the operator may type as well as choose from its rows (the
// footnote box). The text is the chosen row's until the operator types over it;
// emptying the rows empties it.

#include "controls/lists.h"

namespace seal {

class TextComboBox : public controls::ComboBox {
public:
    explicit TextComboBox(QString name) : controls::ComboBox(std::move(name))
    {
        observe([this](const controls::Change& change) {
            if (change.what == controls::Change::Items && ListCount() == 0) {
                text_.clear();
                typedAt_ = -1;
            }
        });
    }

    QString text() const { return (ListIndex() >= 0 && ListIndex() != typedAt_) ? List(ListIndex()) : text_; }
    // The operator's typing.
    void setText(const QString& t)
    {
        text_ = t;
        typedAt_ = ListIndex();
        notify();
    }

    void describe(QStringList& out) const override
    {
        out << QStringLiteral("text=%1").arg(controls::escapeForTranscript(text()));
        controls::ComboBox::describe(out);
    }

private:
    QString text_;
    int typedAt_ = -1;
};

}  // namespace seal
