// The items and the columns of a ListView. Both count from 1.
#pragma once

#include <string>
#include <vector>

class ListModel;

// Good until it is removed.
class ListItem {
 public:
    ListItem(ListModel& list, std::string key, std::string text, int icon, int smallIcon);
    ListItem(const ListItem&) = delete;
    ListItem& operator=(const ListItem&) = delete;

    const std::string Key;  // empty: none; else no other item has it
    const int Icon;         // number of the image in the list's ImageList; 0 none
    const int SmallIcon;    // the same, for small icons, lists and tables

    const std::string& Text() const { return m_cells[0]; }
    void Text(const std::string& text);
    // Column `number` + 1 of the table, from 1; empty where none was set.
    std::string SubItems(int number) const;
    void SubItems(int number, const std::string& text);
    int Index() const;  // where it stands now
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
    // At the end, or at its place while the list is sorted. 35602 "Key is not unique in collection".
    ListItem& Add(const std::string& key, const std::string& text, int icon = 0, int smallIcon = 0);
    int Count() const;
    ListItem& operator()(int index);               // 35600 "Index out of bounds"
    ListItem& operator()(const std::string& key);  // 35601 "Element not found"
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
    std::string operator()(int index) const;  // its text; 35600
    // The cells of this column, after the first, are paths and are shown as people write them; see
    // paths::ForUser. 35600
    void ShowPaths(int index);
    void Clear();

 private:
    ListModel& m_model;
};
