#pragma once
// List boxes and combo boxes: rows of text with a number each (ItemData) and the
// chosen row (ListIndex, -1 for none).

#include "controls/control.h"

namespace controls {

class ItemList : public Control {
public:
    ItemList(QString name, Kind kind) : Control(std::move(name), kind) { setTabStop(true); }

    int ListCount() const { return static_cast<int>(items_.size()); }
    const QString& List(int index) const { return items_.at(static_cast<size_t>(index)).text; }
    int ItemData(int index) const { return items_.at(static_cast<size_t>(index)).data; }
    void setItemData(int index, int data);
    void AddItem(const QString& text, int data = 0);
    void RemoveItem(int index);
    void Clear();

    int ListIndex() const { return listIndex_; }
    // Choosing a row by code fires Click, as the operator's choice does, when the row
    // changes. An index outside the list is the runtime's fault 380.
    void setListIndex(int index);
    // The operator's choice of a row.
    void choose(int index) { setListIndex(index); }

    Color backColor() const { return backColor_; }
    void setBackColor(Color c) { set(backColor_, c); }

    std::function<void()> Click;
    std::function<void()> DblClick;

    void describe(QStringList& out) const override;

private:
    struct Item {
        QString text;
        int data = 0;
    };
    std::vector<Item> items_;
    int listIndex_ = -1;
    Color backColor_ = Colors::WindowBackground;
};

class ListBox : public ItemList {
public:
    explicit ListBox(QString name) : ItemList(std::move(name), Kind::ListBox) {}
    // The operator's double click on row index: the row becomes the chosen one first.
    void doubleClick(int index);
};

class ComboBox : public ItemList {
public:
    explicit ComboBox(QString name) : ItemList(std::move(name), Kind::ComboBox) {}
    // The text of the chosen row, empty with none.
    QString Text() const { return ListIndex() >= 0 ? List(ListIndex()) : QString(); }
};

}  // namespace controls
