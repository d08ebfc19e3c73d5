// SPDX-License-Identifier: GPL-3.0-or-later
// A list of lines in one column. At most one line is selected. Lines count from 0.
#pragma once

#include <QListWidget>
#include <string>
#include <vector>

class ListBox : public QListWidget {
    Q_OBJECT
 public:
    explicit ListBox(QWidget* parent = nullptr);

    void AddItem(const std::string& text);
    // Removes a line. Raises 5 "Invalid procedure call or argument" for -1 and for a number without a line.
    // The selected line stays selected; if it is removed, no line is selected.
    void RemoveItem(int index);
    std::string List(int index) const;  // empty for an unknown index
    int ListCount() const { return count(); }
    int ListIndex() const;  // the selected line, or -1
    // -1 clears the selection; raises 380 "Invalid property value" for an unknown index
    void ListIndex(int index);
    std::string Text() const { return List(ListIndex()); }
    void Clear();
    // If true, files can be dropped on the list.
    void AcceptFiles(bool accept);

 signals:
    void Click();      // a line was selected, by the user (also the same line again) or by code
    void DblClick();   // on a line
    void MouseMove();  // over the list, with or without a button pressed
    // Files were dropped; paths of the system. The list itself does not use them.
    void OLEDragDrop(const std::vector<std::string>& files);

 protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

 private:
    void Select(int index);
    bool m_told = false;  // the current press has been reported as a click
};
