// A list of items with keys, shown as icons, small icons, a list or a table with columns: four views of one
// model. One item at most is selected. Items are counted from 1, in the order in which they stand.
#pragma once

#include <QPersistentModelIndex>
#include <QWidget>
#include <memory>
#include <string>

#include "platform/controls/image_list.h"
#include "platform/controls/item_events.h"
#include "platform/controls/list_items.h"

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
    // Values of Arrange: nothing, along the left edge, along the top edge.
    static constexpr int ArrangeNone = 0, ArrangeLeft = 1, ArrangeTop = 2;

    explicit ListView(QWidget* parent = nullptr);
    ~ListView() override;

    ::ListItems& ListItems() { return m_items; }
    ::ColumnHeaders& ColumnHeaders() { return m_headers; }
    // Shared by all items; without one there are no pictures. It must outlive the list.
    void Icons(const ImageList* images);

    bool HasSelection() const;
    ListItem& SelectedItem();  // 91 when none is selected

    int View() const { return m_view; }
    void View(int view);  // the selection stays
    int Arrange() const { return m_arrange; }
    void Arrange(int arrange);  // of icons and small icons
    bool HideColumnHeaders() const { return m_hideHeaders; }
    void HideColumnHeaders(bool hide);
    // Whether the whole row of a table shows the selection and selects; on from the start.
    void FullRowSelect(bool on);
    void AllowColumnReorder(bool on);  // by dragging the headings
    // The column that a sorted list goes by, from 0. Sorting is ascending, by text, without regard to case.
    int SortKey() const;
    void SortKey(int column);
    bool Sorted() const;
    void Sorted(bool sorted);
    void Refresh();
    // Opens the editor on the selected item's text; nothing when none is selected. Within AfterLabelEdit it
    // opens when the handlers are done.
    void StartLabelEdit();
    // Whether a click on the selected text and F2 open the editor as well; on from the start.
    void LabelEdit(bool on);
    void MousePointer(int pointer);  // 0 the default, 11 the hourglass

    // Of the view that is shown, for tests and for focus.
    QAbstractItemView* CurrentView() const;
    // While the list is filled with many items nothing is drawn.
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
    // On an item, by mouse, or by moving to it with the keyboard: one is selected then. A click beside all
    // items takes the selection away and is no Click.
    void Click();
    // A click beside all items has taken the selection away, or the list was emptied.
    void Deselected();
    void DblClick();  // on an item, or Enter
    // Qt::MouseButton as 1 left, 2 right, 4 middle; place in the list's own coordinates. The item there is
    // selected already; there may be none. Menu and Shift+F10 come as button 2 at the selected item.
    void MouseUp(int button, QPoint place);
    void ColumnClick(int header);  // from 1
    void KeyDown(int keyCode);     // see KeyCode; before the list does anything about the key
    // An item's text was edited, changed or not. A handler may set `newString` to something else and `cancel`
    // to 1 to keep the old text. The text is taken over when the handlers are done, if the item is still
    // there.
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
    LabelDelegate *m_labels, *m_cells;  // a delegate belongs to one view
    QStackedLayout* m_stack;
    QListView* m_icons;
    QTreeView* m_table;
    int m_view = IconView, m_arrange = ArrangeTop;
    bool m_hideHeaders = false, m_fitting = false, m_labelEdit = true;
    bool m_telling = false;  // AfterLabelEdit is under way
    QPersistentModelIndex m_editNext;
};
