// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/items/list_view.h"

#include <QHeaderView>
#include <QListView>
#include <QScopedValueRollback>
#include <QStackedLayout>
#include <QTimer>
#include <QTreeView>
#include <algorithm>

#include "platform/contracts/runtime.h"
#include "platform/controls/items/item_view.h"
#include "platform/controls/items/label_delegate.h"
#include "platform/controls/items/list_model.h"

namespace {

// Initial widths of a table's columns, in average characters.
constexpr int FirstLeast = 24, FirstMost = 60, OthersLeast = 10, OthersMost = 40;
constexpr int Spacing = 2;  // pixels between icons

class IconsView : public ItemView<QListView> {
 public:
    IconsView(ItemEvents& events, QWidget* parent) : ItemView(events, parent) { ClickBesideDeselects(true); }
};

class TableView : public ItemView<QTreeView> {
 public:
    TableView(ItemEvents& events, QWidget* parent) : ItemView(events, parent) { ClickBesideDeselects(true); }
};

}  // namespace

ListView::ListView(QWidget* parent)
    : QWidget(parent),
      m_model(std::make_unique<ListModel>()),
      m_items(*m_model),
      m_headers(*m_model),
      m_labels(new LabelDelegate(this)),
      m_cells(new LabelDelegate(this)),
      m_stack(new QStackedLayout(this)),
      m_icons(new IconsView(*this, this)),
      m_table(new TableView(*this, this)) {
    BuildIcons();
    BuildTable();
    m_cells->SetShape(LabelDelegate::Shape::Row);
    TakeIn(*m_icons, *m_labels);
    TakeIn(*m_table, *m_cells);
    // The keyboard moves along the items, whichever cell was clicked.
    connect(
        &m_model->Selection(), &QItemSelectionModel::currentChanged, this, [this](const QModelIndex& now) {
            if (now.column() > 0) {
                m_model->Selection().setCurrentIndex(now.siblingAtColumn(0), QItemSelectionModel::NoUpdate);
            }
        });
    connect(m_model.get(), &ListModel::Cleared, this, &ListView::Deselected);
    connect(m_model.get(), &QAbstractItemModel::columnsInserted, this, &ListView::FitColumnsSoon);
    connect(m_model.get(), &QAbstractItemModel::headerDataChanged, this, &ListView::FitColumnsSoon);
    View(IconView);
}

void ListView::TakeIn(QAbstractItemView& view, LabelDelegate& delegate) {
    view.setModel(m_model.get());
    const std::unique_ptr<QItemSelectionModel> own(view.selectionModel());
    view.setSelectionModel(&m_model->Selection());
    view.setItemDelegate(&delegate);
    view.setEditTriggers(QAbstractItemView::SelectedClicked);
    view.setSelectionBehavior(QAbstractItemView::SelectRows);
    m_stack->addWidget(&view);
    connect(&delegate, &LabelDelegate::Edited, this, &ListView::LabelEdited);
}

// The views use the model until they are destroyed.
ListView::~ListView() {
    delete m_icons;
    delete m_table;
}

void ListView::BuildIcons() {
    m_icons->setResizeMode(QListView::Adjust);
    m_icons->setWrapping(true);
    m_icons->setUniformItemSizes(true);
    m_icons->setSpacing(Spacing);
    m_icons->setTextElideMode(Qt::ElideRight);
    m_icons->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_icons->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
}

void ListView::BuildTable() {
    m_table->setRootIsDecorated(false);
    m_table->setItemsExpandable(false);
    m_table->setUniformRowHeights(true);
    m_table->setAllColumnsShowFocus(true);
    m_table->setTextElideMode(Qt::ElideRight);
    QHeaderView& headings = *m_table->header();
    headings.setFirstSectionMovable(true);
    headings.setSectionsMovable(false);
    headings.setSectionsClickable(true);
    headings.setHighlightSections(false);
    headings.setStretchLastSection(true);
    connect(&headings, &QHeaderView::sectionClicked, this, [this](int section) {
        emit ColumnClick(section + 1);
        ShowSorting();  // the header would reverse its mark on a second click
    });
}

void ListView::Icons(const ImageList* images) {
    m_model->Icons(images);
}

bool ListView::HasSelection() const {
    return m_model->SelectedItem() != nullptr;
}

ListItem& ListView::SelectedItem() {
    ListItem* item = m_model->SelectedItem();
    if (item == nullptr) {
        throw RuntimeError(err::ObjectNotSet);
    }
    return *item;
}

QAbstractItemView* ListView::CurrentView() const {
    return m_view == ReportView ? static_cast<QAbstractItemView*>(m_table) : m_icons;
}

void ListView::View(int view) {
    const bool focused = CurrentView()->hasFocus();
    m_view = view;
    m_labels->SetShape(view == IconView ? LabelDelegate::Shape::Large : LabelDelegate::Shape::Small);
    ApplyFlow();
    m_stack->setCurrentWidget(CurrentView());
    setFocusProxy(CurrentView());
    if (focused) {
        CurrentView()->setFocus();
    }
    if (HasSelection()) {
        CurrentView()->scrollTo(m_model->Selection().currentIndex());
    }
}

void ListView::Arrange(int arrange) {
    m_arrange = arrange;
    ApplyFlow();
}

void ListView::ApplyFlow() {
    m_icons->setWordWrap(m_view == IconView);
    const bool down = m_view == ListMode || m_arrange == ArrangeLeft;
    m_icons->setFlow(down ? QListView::TopToBottom : QListView::LeftToRight);
    m_icons->setResizeMode(m_view != ListMode && m_arrange == ArrangeNone ? QListView::Fixed
                                                                          : QListView::Adjust);
}

void ListView::HideColumnHeaders(bool hide) {
    m_hideHeaders = hide;
    m_table->setHeaderHidden(hide);
}

void ListView::FullRowSelect(bool on) {
    ListItem* selected = m_model->SelectedItem();
    m_model->WholeRows(on);
    m_table->setSelectionBehavior(on ? QAbstractItemView::SelectRows : QAbstractItemView::SelectItems);
    if (selected != nullptr) {
        selected->Selected(true);
    }
}

void ListView::AllowColumnReorder(bool on) {
    m_table->header()->setSectionsMovable(on);
}

int ListView::SortKey() const {
    return m_model->SortKey();
}

void ListView::SortKey(int column) {
    m_model->SortKey(column);
    ShowSorting();
}

bool ListView::Sorted() const {
    return m_model->Sorted();
}

void ListView::Sorted(bool sorted) {
    m_model->Sorted(sorted);
    ShowSorting();
}

void ListView::ShowSorting() {
    QHeaderView& headings = *m_table->header();
    headings.setSortIndicatorShown(Sorted());
    headings.setSortIndicator(SortKey(), Qt::AscendingOrder);
}

void ListView::Refresh() {
    m_model->PutInOrder();
    CurrentView()->viewport()->update();
}

void ListView::MousePointer(int pointer) {
    constexpr int Hourglass = 11;
    if (pointer == Hourglass) {
        setCursor(Qt::WaitCursor);
    } else {
        unsetCursor();
    }
}

// Columns are added before the items that they should fit: the items that exist at the next event count.
void ListView::FitColumnsSoon() {
    if (!m_fitting) {
        m_fitting = true;
        QTimer::singleShot(0, this, &ListView::FitColumns);
    }
}

void ListView::FitColumns() {
    m_fitting = false;
    const int unit = m_table->fontMetrics().averageCharWidth();
    QHeaderView& headings = *m_table->header();
    int others = 0;
    for (int column = m_model->columnCount() - 1; column >= 0; --column) {
        m_table->resizeColumnToContents(column);
        // A long name leaves the columns next to it visible.
        const int least = unit * (column == 0 ? FirstLeast : OthersLeast);
        const int most = column == 0
                             ? std::clamp(m_table->viewport()->width() - others, least, unit * FirstMost)
                             : unit * OthersMost;
        headings.resizeSection(column, std::clamp(headings.sectionSize(column), least, most));
        others += headings.sectionSize(column);
    }
}

void ListView::StartLabelEdit() {
    if (!HasSelection()) {
        return;
    }
    m_model->PutInOrder();
    const QPersistentModelIndex item = m_model->index(SelectedItem().Index() - 1, 0);
    if (m_telling) {
        m_editNext = item;
    } else {
        OpenEditor(item);
    }
}

void ListView::LabelEdit(bool on) {
    m_labelEdit = on;
    for (QAbstractItemView* view :
         {static_cast<QAbstractItemView*>(m_icons), static_cast<QAbstractItemView*>(m_table)}) {
        view->setEditTriggers(on ? QAbstractItemView::SelectedClicked : QAbstractItemView::NoEditTriggers);
    }
}

void ListView::OpenEditor(const QPersistentModelIndex& item) {
    if (!item.isValid() || m_labels->Editing() || m_cells->Editing()) {
        return;
    }
    m_model->At(item.row()).Selected(true);
    CurrentView()->scrollTo(item);
    CurrentView()->edit(item);
}

void ListView::LabelEdited(const QPersistentModelIndex& item, const QString& text) {
    int cancel = 0;
    std::string newString = text.toStdString();
    {
        const QScopedValueRollback telling(m_telling, true);
        emit AfterLabelEdit(cancel, newString);
    }
    if (item.isValid() && cancel == 0) {
        ListItem& edited = m_model->At(item.row());
        if (edited.Text() != newString) {
            edited.Text(newString);
        }
    }
    // Delayed: the view still handles the key or the focus change that ended the edit.
    QTimer::singleShot(0, this, [this, next = std::exchange(m_editNext, {})] { OpenEditor(next); });
}

void ListView::showEvent(QShowEvent* event) {
    m_icons->setAccessibleName(accessibleName());
    m_table->setAccessibleName(accessibleName());
    QWidget::showEvent(event);
}

void ListView::ItemClicked() {
    emit Click();
}

void ListView::ItemActivated() {
    emit DblClick();
}

void ListView::ButtonReleased(int button, QPoint place) {
    emit MouseUp(button, CurrentView()->viewport()->mapTo(this, place));
}

void ListView::KeyPressed(int keyCode) {
    emit KeyDown(keyCode);
}

void ListView::ClickedBeside() {
    emit Deselected();
}

void ListView::EditAsked() {
    if (m_labelEdit) {
        StartLabelEdit();
    }
}

ListView::Filling::Filling(ListView& list) : m_list(list), m_drawn(list.updatesEnabled()) {
    list.setUpdatesEnabled(false);
}

ListView::Filling::~Filling() {
    m_list.setUpdatesEnabled(m_drawn);
}
