// A list of lines in one column, of which one at most is selected. Lines count from 0.
#pragma once

#include <QListWidget>
#include <string>
#include <vector>

class ListBox : public QListWidget {
    Q_OBJECT
 public:
    explicit ListBox(QWidget* parent = nullptr);

    void AddItem(const std::string& text);
    // 5 "Invalid procedure call or argument" for -1 and for a number that no line has. The selected line
    // stays selected; when it is the one removed, none is.
    void RemoveItem(int index);
    std::string List(int index) const;  // empty when there is none of that number
    int ListCount() const { return count(); }
    int ListIndex() const;      // the selected line; -1: none
    void ListIndex(int index);  // -1: none; 380 "Invalid property value" for a number that no line has
    std::string Text() const { return List(ListIndex()); }
    void Clear();
    // Whether files may be dropped on the list.
    void AcceptFiles(bool accept);

 signals:
    void Click();      // a line has been selected, by a person (the same again, too) or by code
    void DblClick();   // on a line
    void MouseMove();  // over the list, with or without a button
    // Files have been dropped; as the system writes paths. The list does nothing about them itself.
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
    bool m_told = false;  // the press under way has been told as a click
};
