// SPDX-License-Identifier: GPL-3.0-or-later
// A list of items with keys, shown as icons, small icons, a list or a table: four views of one model. At most
// one item is selected. Items count from 1 in their order.
#pragma once

#include <QPersistentModelIndex>
#include <QWidget>
#include <memory>
#include <string>

#include "platform/controls/items/image_list.h"
#include "platform/controls/items/item_events.h"
#include "platform/controls/items/list_items.h"

class LabelDelegate;
class ListModel;
class QAbstractItemView;
class QListView;
class QStackedLayout;
class QTreeView;

class ListView : public QWidget, private ItemEvents {
    Q_OBJECT
 public:
    // Values of View.
    static constexpr int IconView = 0, SmallIconView = 1, ListMode = 2, ReportView = 3;
    // Values of Arrange: free, along the left edge, along the top edge.
    static constexpr int ArrangeNone = 0, ArrangeLeft = 1, ArrangeTop = 2;

    explicit ListView(QWidget* parent = nullptr);
    ~ListView() override;

    ::ListItems& ListItems() { return m_items; }
    ::ColumnHeaders& ColumnHeaders() { return m_headers; }
    // The images of all items; null: no pictures. The caller owns the list of images, which must outlive this
    // list.
    void Icons(const ImageList* images);

    bool HasSelection() const;
    ListItem& SelectedItem();  // raises 91 if no item is selected

    int View() const { return m_view; }
    void View(int view);  // keeps the selection
    int Arrange() const { return m_arrange; }
    void Arrange(int arrange);  // for icons and small icons
    bool HideColumnHeaders() const { return m_hideHeaders; }
    void HideColumnHeaders(bool hide);
    // If on, the default, a whole row of a table shows the selection and can be clicked.
    void FullRowSelect(bool on);
    void AllowColumnReorder(bool on);  // by dragging the headers
    // The column that a sorted list is sorted by, from 0: ascending, as text, without regard to case.
    int SortKey() const;
    void SortKey(int column);
    bool Sorted() const;
    void Sorted(bool sorted);
    void Refresh();
    // Opens the editor on the selected item's text; does nothing without a selection. Inside AfterLabelEdit
    // it opens after the handlers.
    void StartLabelEdit();
    // If on, the default, a click on the selected text and F2 also open the editor.
    void LabelEdit(bool on);
    void MousePointer(int pointer);  // 0 the default pointer, 11 the hourglass

    // Returns the visible view, for tests and for the focus.
    QAbstractItemView* CurrentView() const;
    // Turns drawing off while the list is filled with many items.
    class Filling {
     public:
        explicit Filling(ListView& list);
        ~Filling();
        Filling(const Filling&) = delete;
        Filling& operator=(const Filling&) = delete;

     private:
        ListView& m_list;
        bool m_drawn;
    };

 signals:
    // An item was selected by the mouse or the keyboard. A click outside all items clears the selection and
    // emits no Click.
    void Click();
    // A click beside all items has taken the selection away, or the list was emptied.
    void Deselected();
    void DblClick();  // on an item, or Enter
    // Qt::MouseButton as 1 left, 2 right, 4 middle; place in the list's own coordinates. The item there is
    // selected already; there may be none. Menu and Shift+F10 come as button 2 at the selected item.
    void MouseUp(int button, QPoint place);
    void ColumnClick(int header);  // from 1
    void KeyDown(int keyCode);     // see KeyCode; emitted before the list handles the key
    // An item's text was edited, changed or not. A handler may change `newString`, or set `cancel` to 1 to
    // keep the old text. The list takes the text after the handlers, if the item still exists.
    void AfterLabelEdit(int& cancel, std::string& newString);

 protected:
    void showEvent(QShowEvent* event) override;

 private:
    void ItemClicked() override;
    void ItemActivated() override;
    void ButtonReleased(int button, QPoint place) override;
    void KeyPressed(int keyCode) override;
    void EditAsked() override;
    void ClickedBeside() override;

    void BuildIcons();
    void BuildTable();
    void TakeIn(QAbstractItemView& view, LabelDelegate& delegate);
    void ApplyFlow();
    void FitColumnsSoon();
    void FitColumns();
    void ShowSorting();
    void OpenEditor(const QPersistentModelIndex& item);
    void LabelEdited(const QPersistentModelIndex& item, const QString& text);

    std::unique_ptr<ListModel> m_model;
    ::ListItems m_items;
    ::ColumnHeaders m_headers;
    LabelDelegate *m_labels, *m_cells;  // one delegate for each view
    QStackedLayout* m_stack;
    QListView* m_icons;
    QTreeView* m_table;
    int m_view = IconView, m_arrange = ArrangeTop;
    bool m_hideHeaders = false, m_fitting = false, m_labelEdit = true;
    bool m_telling = false;  // handlers of AfterLabelEdit are running
    QPersistentModelIndex m_editNext;
};
