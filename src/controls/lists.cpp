#include "controls/lists.h"

#include "base/vb_error.h"

namespace controls {

void ItemList::setItemData(int index, int data)
{
    if (index < 0 || index >= ListCount())
        throw base::VbError(381, QStringLiteral("プロパティ配列のインデックスが不正です。"));
    items_[static_cast<size_t>(index)].data = data;
}

void ItemList::AddItem(const QString& text, int data)
{
    items_.push_back({text, data});
    notify({Change::Items});
}

void ItemList::RemoveItem(int index)
{
    if (index < 0 || index >= ListCount())
        throw base::VbError(5, QStringLiteral("プロシージャの呼び出し、または引数が不正です。"));
    items_.erase(items_.begin() + index);
    if (listIndex_ >= ListCount())
        listIndex_ = -1;
    else if (listIndex_ > index)
        --listIndex_;
    else if (listIndex_ == index)
        listIndex_ = -1;
    notify({Change::Items});
}

void ItemList::Clear()
{
    if (items_.empty() && listIndex_ == -1) return;
    items_.clear();
    listIndex_ = -1;
    notify({Change::Items});
}

void ItemList::setListIndex(int index)
{
    if (index < -1 || index >= ListCount()) throw base::VbError(380, QStringLiteral("プロパティの値が不正です。"));
    if (listIndex_ == index) return;
    listIndex_ = index;
    notify();
    if (Click) Click();
}

void ItemList::describe(QStringList& out) const
{
    out << QStringLiteral("index=%1").arg(listIndex_) << QStringLiteral("count=%1").arg(ListCount());
    QStringList rows;
    for (const Item& it : items_) rows << escapeForTranscript(it.text);
    out << QStringLiteral("items=[%1]").arg(rows.join(u'|'));
    Control::describe(out);
}

void ListBox::doubleClick(int index)
{
    setListIndex(index);
    if (DblClick) DblClick();
}

}  // namespace controls
