// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/items/list_items.h"

#include "platform/controls/items/list_model.h"
#include "platform/controls/kit/collections.h"

ListItem::ListItem(ListModel& list, std::string key, std::string text, int icon, int smallIcon)
    : Key(std::move(key)), Icon(icon), SmallIcon(smallIcon), m_list(list), m_cells{std::move(text)} {}

void ListItem::Text(const std::string& text) {
    m_list.SetCell(*this, 0, text);
}

std::string ListItem::SubItems(int number) const {
    return Cell(number);
}

void ListItem::SubItems(int number, const std::string& text) {
    constexpr int Columns = 256;  // more than any table shows
    m_list.SetCell(*this, static_cast<int>(PlaceOf(number, Columns)) + 1, text);
}

const std::string& ListItem::Cell(int column) const {
    static const std::string Empty;
    const auto place = static_cast<std::size_t>(column);
    return place < m_cells.size() ? m_cells[place] : Empty;
}

int ListItem::Index() const {
    return m_list.RowOf(*this) + 1;
}

void ListItem::Selected(bool selected) {
    m_list.Select(*this, selected);
}

bool ListItem::Selected() const {
    return m_list.SelectedItem() == this;
}

ListItem& ListItems::Add(const std::string& key, const std::string& text, int icon, int smallIcon) {
    return m_model.Add(key, text, icon, smallIcon);
}

int ListItems::Count() const {
    return m_model.Count();
}

ListItem& ListItems::operator()(int index) {
    return m_model.At(static_cast<int>(PlaceOf(index, static_cast<std::size_t>(m_model.Count()))));
}

ListItem& ListItems::operator()(const std::string& key) {
    ListItem* item = m_model.Find(key);
    if (item == nullptr) {
        throw RuntimeError(err::ElementNotFound);
    }
    return *item;
}

bool ListItems::Has(const std::string& key) const {
    return m_model.Find(key) != nullptr;
}

void ListItems::Remove(int index) {
    m_model.Remove((*this)(index));
}

void ListItems::Remove(const std::string& key) {
    m_model.Remove((*this)(key));
}

void ListItems::Clear() {
    m_model.Clear();
}

void ColumnHeaders::Add(const std::string& text) {
    m_model.AddColumn(text);
}

int ColumnHeaders::Count() const {
    return static_cast<int>(m_model.Columns().size());
}

std::string ColumnHeaders::operator()(int index) const {
    return m_model.Columns()[PlaceOf(index, m_model.Columns().size())];
}

void ColumnHeaders::ShowPaths(int index) {
    m_model.ShowPathsIn(static_cast<int>(PlaceOf(index, m_model.Columns().size())));
}

void ColumnHeaders::Clear() {
    m_model.ClearColumns();
}
