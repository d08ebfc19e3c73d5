// SPDX-License-Identifier: GPL-3.0-or-later
// The items and the columns of a ListView. Both count from 1.
#pragma once

#include <string>
#include <vector>

class ListModel;

// The list owns its items. A reference is valid until the item is removed.
class ListItem {
 public:
    ListItem(ListModel& list, std::string key, std::string text, int icon, int smallIcon);
    ListItem(const ListItem&) = delete;
    ListItem& operator=(const ListItem&) = delete;

    const std::string Key;  // unique in the list, or empty
    const int Icon;         // number of the image in the list's ImageList; 0 none
    const int SmallIcon;    // the same, for small icons, lists and tables

    const std::string& Text() const { return m_cells[0]; }
    void Text(const std::string& text);
    // Returns the cell in column `number` + 1 of the table (`number` from 1); empty if it was not set.
    std::string SubItems(int number) const;
    void SubItems(int number, const std::string& text);
    int Index() const;  // current position
    void Selected(bool selected);
    bool Selected() const;

 private:
    friend class ListModel;
    const std::string& Cell(int column) const;

    ListModel& m_list;
    std::vector<std::string> m_cells;
    int m_row = 0;
};

class ListItems {
 public:
    explicit ListItems(ListModel& model) : m_model(model) {}
    // Adds an item at the end, or at its place if the list is sorted. Raises 35602 "Key is not unique in
    // collection".
    ListItem& Add(const std::string& key, const std::string& text, int icon = 0, int smallIcon = 0);
    int Count() const;
    ListItem& operator()(int index);               // raises 35600 "Index out of bounds"
    ListItem& operator()(const std::string& key);  // raises 35601 "Element not found"
    bool Has(const std::string& key) const;
    void Remove(int index);
    void Remove(const std::string& key);
    void Clear();

 private:
    ListModel& m_model;
};

class ColumnHeaders {
 public:
    explicit ColumnHeaders(ListModel& model) : m_model(model) {}
    void Add(const std::string& text);
    int Count() const;
    std::string operator()(int index) const;  // text of the column; raises 35600
    // Marks a column after the first as one of paths, which are shown as users write them (paths::ForUser).
    // Raises 35600.
    void ShowPaths(int index);
    void Clear();

 private:
    ListModel& m_model;
};
