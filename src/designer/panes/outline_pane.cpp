// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/panes/outline_pane.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <map>

#include "designer/graphics/part_tree.h"

namespace designer {
namespace {

constexpr int IdRole = Qt::UserRole;

ElementId IdOf(const QTreeWidgetItem& entry) {
    return entry.data(0, IdRole).toUInt();
}

std::string TextOf(const ReportBand& band) {
    return band.kind == BandKind::PageHeader   ? "Page Header"
           : band.kind == BandKind::PageFooter ? "Page Footer"
                                               : "Body";
}

void SelectAmong(const DesignModel& model, QTreeWidgetItem& entry) {
    entry.setSelected(model.IsSelected(IdOf(entry)));
    for (int child = 0; child < entry.childCount(); ++child) {
        SelectAmong(model, *entry.child(child));
    }
}

QTreeWidgetItem* Find(QTreeWidgetItem& entry, ElementId id) {
    if (IdOf(entry) == id) {
        return &entry;
    }
    for (int child = 0; child < entry.childCount(); ++child) {
        if (QTreeWidgetItem* found = Find(*entry.child(child), id)) {
            return found;
        }
    }
    return nullptr;
}

}  // namespace

OutlinePane::OutlinePane(DesignModel& model, QWidget* parent) : QTreeWidget(parent), m_model(model) {
    setObjectName("outline");
    setAccessibleName(tr("Outline of the report"));
    setHeaderHidden(true);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setUniformRowHeights(true);
    setExpandsOnDoubleClick(false);  // it goes to the canvas
    connect(&m_model, &DesignModel::Changed, this, &OutlinePane::TakeChange);
    connect(&m_model, &DesignModel::SelectionChanged, this, &OutlinePane::TakeSelection);
    connect(this, &QTreeWidget::itemSelectionChanged, this, &OutlinePane::GiveSelection);
    connect(this, &QTreeWidget::itemActivated, this, &OutlinePane::Chosen);
    TakeChange();
}

std::vector<OutlinePane::Entry> OutlinePane::Entries() const {
    const ElementId root = m_model.Source().Root();
    std::vector<Entry> entries{{root, NoElement, "Report", {}}};
    for (const ReportBand& band : m_model.Items().bands) {
        if (band.element != NoElement) {
            entries.push_back({band.element, root, TextOf(band), {}});
        }
    }
    for (const ReportItem& item : m_model.Items().items) {
        entries.push_back({item.id, item.container, item.name.empty() ? item.kind : item.name, item.kind});
        for (const GraphicPart& part : PartsOf(m_model.Source(), item.id)) {
            entries.push_back({part.id, part.container, part.text, m_model.Source().Name(part.id)});
        }
    }
    return entries;
}

void OutlinePane::TakeChange() {
    std::vector<Entry> entries = Entries();
    if (entries == m_shown) {
        return;
    }
    m_shown = std::move(entries);
    m_following = true;
    std::map<ElementId, bool> wasOpen;
    for (QTreeWidgetItemIterator entry(this); *entry; ++entry) {
        wasOpen[IdOf(**entry)] = (*entry)->isExpanded();
    }
    clear();
    std::map<ElementId, QTreeWidgetItem*> made;
    for (const Entry& entry : m_shown) {
        const auto container = made.find(entry.container);
        auto* row =
            container == made.end() ? new QTreeWidgetItem(this) : new QTreeWidgetItem(container->second);
        row->setText(0, QString::fromStdString(entry.text));
        row->setToolTip(0, QString::fromStdString(entry.kind));
        row->setData(0, IdRole, entry.id);
        made[entry.id] = row;
    }
    for (const auto& [id, row] : made) {
        const auto was = wasOpen.find(id);
        const ReportItem* item = m_model.Item(id);
        // A chart has many parts, which few look for; so has a text.
        const bool isClosed =
            item && (item->kind == "Chart" || item->kind == "GaugePanel" || item->kind == "Textbox");
        row->setExpanded(was == wasOpen.end() ? !isClosed : was->second);
    }
    m_following = false;
    TakeSelection();
}

void OutlinePane::TakeSelection() {
    if (m_following || !topLevelItem(0)) {
        return;
    }
    m_following = true;
    if (QTreeWidgetItem* leader = Find(*topLevelItem(0), m_model.Leader())) {
        setCurrentItem(leader, 0, QItemSelectionModel::NoUpdate);
        scrollToItem(leader);
    }
    SelectAmong(m_model, *topLevelItem(0));
    m_following = false;
}

// Bands and the report are selected alone, items together.
void OutlinePane::GiveSelection() {
    if (m_following) {
        return;
    }
    std::vector<ElementId> ids;
    ElementId alone = NoElement;
    for (const QTreeWidgetItem* entry : selectedItems()) {
        const ElementId id = IdOf(*entry);
        if (!m_model.Item(id)) {
            alone = id;
        } else if (currentItem() != entry) {
            ids.push_back(id);
        }
    }
    if (currentItem() && currentItem()->isSelected() && m_model.Item(IdOf(*currentItem()))) {
        ids.push_back(IdOf(*currentItem()));
    }
    m_following = true;
    m_model.Select(ids.empty() && alone != NoElement ? std::vector{alone} : ids);
    m_following = false;
}

void OutlinePane::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        emit Chosen();
    } else if (event->key() == Qt::Key_Delete) {
        emit DeleteRequested();
    } else {
        QTreeWidget::keyPressEvent(event);
    }
}

}  // namespace designer
