// SPDX-License-Identifier: GPL-3.0-or-later
// A row of tabs, counted from 1. The form shows the contents of a tab.
#pragma once

#include <QTabBar>
#include <string>

class TabStrip : public QTabBar {
    Q_OBJECT
 public:
    explicit TabStrip(QWidget* parent = nullptr);

    // Adding the first tab selects it and emits no Click.
    void Add(const std::string& caption);
    int Count() const { return count(); }
    int SelectedItem() const { return currentIndex() + 1; }  // 0 without tabs
    void SelectedItem(int index);                            // raises 35600 "Index out of bounds"

 signals:
    // Another tab was selected, by the user or by code. Ctrl+Tab and Ctrl+Shift+Tab work anywhere in the
    // window.
    void Click();

 private:
    void Turn(int by);
};
