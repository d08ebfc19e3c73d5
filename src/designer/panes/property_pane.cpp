// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/panes/property_pane.h"

#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QStyledItemDelegate>
#include <algorithm>
#include <cmath>

#include "designer/model/placing.h"
#include "designer/model/table_selection.h"
#include "designer/tables/tracks.h"
#include "platform/controls/kit/plain_tip.h"

namespace designer {
namespace {

constexpr int RowRole = Qt::UserRole;
// Percent of the width that names take at most: by themselves, and as the user pulls them.
constexpr int MostNames = 65, MostPulled = 85;

// The value alone is edited, in a list where there is a choice.
class ValueDelegate : public QStyledItemDelegate {
 public:
    explicit ValueDelegate(PropertyPane* pane) : QStyledItemDelegate(pane), m_pane(*pane) {}

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override {
        if (index.column() != 1 || index.data(RowRole).isNull()) {
            return nullptr;
        }
        const Property& property = *m_pane.RowAt(index.data(RowRole).toUInt()).property;
        const std::vector<std::string> choices = ChoicesFor(m_pane.Source(), property);
        QWidget* editor = choices.empty() ? QStyledItemDelegate::createEditor(parent, option, index)
                                          : MakeList(parent, property, choices);
        editor->setAccessibleName(index.siblingAtColumn(0).data().toString());
        return editor;
    }

 private:
    QWidget* MakeList(QWidget* parent, const Property& property,
                      const std::vector<std::string>& choices) const {
        auto* list = new QComboBox(parent);
        list->setAutoFillBackground(true);
        const bool isClosed = property.kind == PropertyKind::Words || property.kind == PropertyKind::Boolean;
        list->setEditable(!isClosed || property.expressions != Expressions::No);
        for (const std::string& choice : choices) {
            list->addItem(QString::fromStdString(choice));
        }
        // A choice is taken at once.
        connect(list, &QComboBox::activated, this, [this, list] {
            emit const_cast<ValueDelegate*>(this)->commitData(list);
            emit const_cast<ValueDelegate*>(this)->closeEditor(list);
        });
        return list;
    }

    const PropertyPane& m_pane;
};

QString NameOf(const PropertyRow& row) {
    return QString::fromUtf8(row.property->name);
}

bool Opens(const QKeyEvent& key) {
    return key.modifiers() == Qt::NoModifier || key.modifiers() == Qt::KeypadModifier
               ? key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter || key.key() == Qt::Key_F2
               : false;
}

QString PlaceName(const PropertyRow& row) {
    const bool isColumn = row.place == PropertyPlace::Column || row.place == PropertyPlace::ColumnMember;
    return row.place == PropertyPlace::Selection ? QString()
           : isColumn                            ? PropertyPane::tr("Column")
                                                 : PropertyPane::tr("Row");
}

QString CategoryOf(const PropertyRow& row) {
    const std::string_view written = row.property->category;
    return row.place == PropertyPlace::Selection ? QString::fromUtf8(written) : PlaceName(row);
}

}  // namespace

PropertyPane::PropertyPane(DesignModel& model, QWidget* parent) : QTreeWidget(parent), m_model(model) {
    setObjectName("properties");
    setAccessibleName(tr("Properties of the selection"));
    setColumnCount(2);
    setHeaderLabels({tr("Property"), tr("Value")});
    setItemDelegate(new ValueDelegate(this));
    setIndentation(fontMetrics().averageCharWidth() * 2);
    setAlternatingRowColors(true);
    setUniformRowHeights(true);
    setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                    QAbstractItemView::SelectedClicked);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    // Only the user changes the width: a style and a font also resize columns.
    connect(header(), &QHeaderView::sectionResized, this, [this](int column, int /*before*/, int width) {
        if (column == 0 && !m_fitting && QApplication::mouseButtons() != Qt::NoButton) {
            m_nameWidth = width / QFontMetricsF(font()).averageCharWidth();
        }
    });
    connect(&m_model, &DesignModel::Changed, this, &PropertyPane::Show);
    connect(&m_model, &DesignModel::SelectionChanged, this, [this] {
        m_part = NoElement;
        Show();
    });
    connect(this, &QTreeWidget::itemChanged, this,
            [this](QTreeWidgetItem* row, int column) { TakeValue(*row, column); });
    Show();
}

std::vector<PropertyRow> PropertyPane::RowsToShow() const {
    if (m_part != NoElement) {
        return PropertyRowsOf(m_model, m_part);
    }
    std::vector<PropertyRow> rows;
    const auto& selection = m_model.Selection();
    for (std::size_t index = 0; index < selection.size(); ++index) {
        std::vector<PropertyRow> own = PropertyRowsOf(m_model, selection[index]);
        if (index == 0) {
            rows = std::move(own);
            continue;
        }
        std::erase_if(rows, [&](const PropertyRow& row) {
            return row.property->kind == PropertyKind::Name ||
                   std::find(own.begin(), own.end(), row) == own.end();
        });
    }
    const std::vector<PropertyRow> tracks = TrackRowsOf(m_model);
    rows.insert(rows.end(), tracks.begin(), tracks.end());
    return rows;
}

// The rows stay while they are the same, and with them what is current and what is open.
void PropertyPane::Show() {
    m_part = m_model.Source().Has(m_part) ? m_part : NoElement;
    // Once for all rows: it reads the whole table.
    for (const PropertyPlace place :
         {PropertyPlace::Selection, PropertyPlace::Column, PropertyPlace::ColumnMember, PropertyPlace::Row,
          PropertyPlace::RowMember}) {
        m_places[place] = ElementsAt(m_model, place);
    }
    std::vector<PropertyRow> rows = RowsToShow();
    m_filling = true;
    if (rows != m_rows) {
        m_rows = std::move(rows);
        BuildRows();
    }
    for (QTreeWidgetItemIterator row(this); *row; ++row) {
        if (!(*row)->data(1, RowRole).isNull()) {
            ShowValue(**row, m_rows[(*row)->data(1, RowRole).toUInt()]);
        }
    }
    ShowMatches();
    m_filling = false;
}

QTreeWidgetItem* PropertyPane::CategoryRow(const QString& category, const QStringList& closed) {
    const auto found = findItems(category, Qt::MatchExactly);
    auto* parent = found.isEmpty() ? new QTreeWidgetItem(this, {category}) : found.front();
    parent->setExpanded(!closed.contains(category));
    parent->setFirstColumnSpanned(true);
    return parent;
}

// In the order of the alphabet the name says whether a property is that of a column or row.
void PropertyPane::BuildRows() {
    QStringList closed;
    for (int index = 0; index < topLevelItemCount(); ++index) {
        const bool isClosed = topLevelItem(index)->childCount() > 0 && !topLevelItem(index)->isExpanded();
        closed += isClosed ? topLevelItem(index)->text(0) : QString();
    }
    clear();
    setRootIsDecorated(!m_isAlphabetical);
    for (std::size_t index = 0; index < m_rows.size(); ++index) {
        const QString place = PlaceName(m_rows[index]), name = NameOf(m_rows[index]);
        auto* row = m_isAlphabetical ? new QTreeWidgetItem(this)
                                     : new QTreeWidgetItem(CategoryRow(CategoryOf(m_rows[index]), closed));
        row->setText(0,
                     m_isAlphabetical && !place.isEmpty() ? tr("%1 (%2)").arg(name, place.toLower()) : name);
        row->setToolTip(0, row->text(0));
        row->setData(1, RowRole, static_cast<uint>(index));
        row->setFlags(row->flags() | Qt::ItemIsEditable);
    }
    if (m_isAlphabetical) {
        sortItems(0, Qt::AscendingOrder);
    }
    FitNames();
}

void PropertyPane::SetAlphabetical(bool isAlphabetical) {
    if (m_isAlphabetical != isAlphabetical) {
        m_isAlphabetical = isAlphabetical;
        m_rows.clear();
        clear();
        Show();
    }
}

void PropertyPane::SetFilter(const QString& text) {
    m_filter = text.trimmed();
    ShowMatches();
}

// A category without a match goes too.
void PropertyPane::ShowMatches() {
    const auto matches = [this](const QTreeWidgetItem& row) {
        return m_filter.isEmpty() || row.text(0).contains(m_filter, Qt::CaseInsensitive) ||
               row.text(1).contains(m_filter, Qt::CaseInsensitive);
    };
    for (int index = 0; index < topLevelItemCount(); ++index) {
        QTreeWidgetItem& top = *topLevelItem(index);
        bool hasMatch = top.childCount() == 0 && matches(top);
        for (int child = 0; child < top.childCount(); ++child) {
            const bool isMatch = matches(*top.child(child));
            top.child(child)->setHidden(!isMatch);
            hasMatch = hasMatch || isMatch;
        }
        top.setHidden(!hasMatch);
    }
}

void PropertyPane::GoToMatch() {
    const auto isShown = [](const QTreeWidgetItem* row) {
        return row && !row->data(1, RowRole).isNull() && !row->isHidden() &&
               !(row->parent() && row->parent()->isHidden());
    };
    for (QTreeWidgetItemIterator row(this); *row && !isShown(currentItem()); ++row) {
        if (isShown(*row)) {
            setCurrentItem(*row, 1);
        }
    }
    setFocus();
}

// Also if the name is current.
void PropertyPane::EditCurrent() {
    if (currentItem()) {
        editItem(currentItem(), 1);
    }
}

void PropertyPane::SetNameWidth(double width) {
    m_nameWidth = width;
    FitNames();
}

// Up and down only: the names stay.
void PropertyPane::scrollTo(const QModelIndex& index, ScrollHint hint) {
    QTreeWidget::scrollTo(index.siblingAtColumn(0), hint);
}

// The names get the width that they need, but the values have room too.
void PropertyPane::FitNames() {
    const double character = QFontMetricsF(font()).averageCharWidth();
    if (m_nameWidth > 0) {
        const int most = viewport()->width() * MostPulled / 100;
        SetNamePixels(std::min(static_cast<int>(std::lround(m_nameWidth * character)), most));
        return;
    }
    int width = fontMetrics().horizontalAdvance(headerItem()->text(0));
    for (QTreeWidgetItemIterator row(this); *row; ++row) {
        const int levels = ((*row)->parent() ? 1 : 0) + (rootIsDecorated() ? 1 : 0);
        const bool isRow = !(*row)->data(1, RowRole).isNull();
        width = std::max(
            width, isRow ? fontMetrics().horizontalAdvance((*row)->text(0)) + levels * indentation() : 0);
    }
    const int margin = fontMetrics().averageCharWidth() * 2;
    SetNamePixels(std::min(width + margin, viewport()->width() * MostNames / 100));
}

void PropertyPane::SetNamePixels(int width) {
    m_fitting = true;
    setColumnWidth(0, width);
    m_fitting = false;
}

std::vector<ElementId> PropertyPane::OwnersOf(const PropertyRow& row) const {
    return m_part != NoElement ? std::vector{m_part} : m_places.at(row.place);
}

void PropertyPane::ShowPart(ElementId id) {
    if (id != m_part) {
        m_part = id;
        Show();
    }
}

// An editor gives its value when it loses the focus.
void PropertyPane::FinishEditing() {
    const QWidget* const typed = QApplication::focusWidget();
    if (state() == EditingState && typed && viewport()->isAncestorOf(typed)) {
        setFocus();
    }
}

// A value that is not the same for all is mixed, and its text empty.
PropertyValue PropertyPane::CommonValue(const PropertyRow& property) const {
    PropertyValue common;
    const std::vector<ElementId> owners = OwnersOf(property);
    for (const ElementId id : owners) {
        const PropertyValue own = ValueOfRow(m_model.Source(), id, property);
        const bool isFirst = id == owners.front();
        common.isMixed = common.isMixed || own.isMixed || (!isFirst && own.text != common.text);
        common.isSet = common.isSet || own.isSet;
        common.text = own.text;
    }
    if (common.isMixed) {
        common.text.clear();
    }
    return common;
}

void PropertyPane::ShowValue(QTreeWidgetItem& row, const PropertyRow& property) const {
    const PropertyValue value = CommonValue(property);
    const QString text = QString::fromStdString(value.text);
    row.setText(1, text);
    // What is set has the colour of all texts, whatever the palette is later.
    row.setData(1, Qt::ForegroundRole,
                value.isSet ? QVariant() : QVariant(palette().brush(QPalette::Disabled, QPalette::Text)));
    row.setToolTip(1, value.isMixed ? tr("There are different values") : PlainTip(text));
}

// An editor that is left as it was changes nothing, also where the values differ or none is set.
void PropertyPane::TakeValue(QTreeWidgetItem& row, int column) {
    if (m_filling || column != 1 || row.data(1, RowRole).isNull()) {
        return;
    }
    const PropertyRow property = m_rows[row.data(1, RowRole).toUInt()];
    const std::string value = row.text(1).toStdString();
    if (value != CommonValue(property).text) {
        Change(tr("Change %1 of"), property, [&](Document& document, const std::vector<ElementId>& ids) {
            SetRow(document, ids, property, value);
        });
    }
    Show();
}

// A table is as large as its columns and rows.
void PropertyPane::Change(const QString& verb, const PropertyRow& property,
                          const std::function<void(Document&, const std::vector<ElementId>&)>& work) {
    const std::vector<ElementId> ids = OwnersOf(property);
    const bool isTrack = property.place != PropertyPlace::Selection;
    const QString named = verb.arg(NameOf(property));
    const QString place = PlaceName(property).toLower();
    const QString step = !isTrack          ? StepName(m_model, named, ids)
                         : ids.size() == 1 ? named + " " + place
                                           : QString("%1 %2 %3s").arg(named).arg(ids.size()).arg(place);
    const auto table = isTrack ? SelectedTable(m_model) : std::nullopt;
    const ReportItems items = table ? m_model.Items() : ReportItems{};
    m_model.Edit(step, [&](Document& document) {
        work(document, ids);
        if (table) {
            FollowSize(document, table->region);
            GrowBandOfTable(document, items, table->region);
        }
    });
}

const PropertyRow* PropertyPane::CurrentRow() const {
    const QTreeWidgetItem* row = currentItem();
    return !row || row->data(1, RowRole).isNull() ? nullptr : &m_rows[row->data(1, RowRole).toUInt()];
}

void PropertyPane::Reset() {
    if (!CurrentRow()) {
        return;
    }
    const PropertyRow property = *CurrentRow();
    Change(tr("Reset %1 of"), property, [&](Document& document, const std::vector<ElementId>& ids) {
        if (property.place == PropertyPlace::Column || property.place == PropertyPlace::Row) {
            const std::string_view path = property.property->path;
            if (path == "Width" || path == "Height") {
                throw EditError("A column and a row have a size of their own");
            }
        }
        ResetRow(document, ids, property);
    });
}

void PropertyPane::changeEvent(QEvent* event) {
    QTreeWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        Show();
    } else if (event->type() == QEvent::FontChange) {
        setIndentation(fontMetrics().averageCharWidth() * 2);
        FitNames();
    }
}

void PropertyPane::resizeEvent(QResizeEvent* event) {
    QTreeWidget::resizeEvent(event);
    FitNames();
}

void PropertyPane::keyPressEvent(QKeyEvent* event) {
    const bool isEditing = state() == QAbstractItemView::EditingState;
    if (event->key() == Qt::Key_Delete && !isEditing) {
        Reset();
    } else if (Opens(*event) && currentItem() && !isEditing) {
        EditCurrent();
    } else {
        QTreeWidget::keyPressEvent(event);
    }
}

}  // namespace designer
