// A row of tabs, counted from 1. What a tab shows is the form's affair.
#pragma once

#include <QTabBar>
#include <string>

class TabStrip : public QTabBar {
    Q_OBJECT
 public:
    explicit TabStrip(QWidget* parent = nullptr);

    // The first one is selected when it is added; that is no click.
    void Add(const std::string& caption);
    int Count() const { return count(); }
    int SelectedItem() const { return currentIndex() + 1; }  // 0 while there is none
    void SelectedItem(int index);                            // 35600 "Index out of bounds"

 signals:
    // Another tab is selected, by a person or by code. Ctrl+Tab and Ctrl+Shift+Tab do it from anywhere in the
    // window.
    void Click();

 private:
    void Turn(int by);
};
