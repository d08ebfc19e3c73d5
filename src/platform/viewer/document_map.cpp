// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/viewer/document_map.h"

#include "platform/controls/kit/plain_tip.h"

namespace viewer {
namespace {

constexpr int PageRole = Qt::UserRole, PlaceRole = Qt::UserRole + 1;

}  // namespace

DocumentMap::DocumentMap(QWidget* parent) : QTreeWidget(parent) {
    setObjectName("tvwMap");
    setHeaderHidden(true);
    setAccessibleName(tr("Document map"));
    setUniformRowHeights(true);
    setTextElideMode(Qt::ElideRight);
    const auto choose = [this](const QTreeWidgetItem* item) {
        if (item) {
            emit Chosen(item->data(0, PageRole).toInt(), item->data(0, PlaceRole).toDouble());
        }
    };
    connect(this, &QTreeWidget::currentItemChanged, this, choose);
    connect(this, &QTreeWidget::itemClicked, this, choose);  // a second click on the same entry
}

void DocumentMap::Empty() {
    const QSignalBlocker quiet(this);
    clear();
    m_shown = 0;
    m_open.clear();
    m_levels.clear();
}

void DocumentMap::Show(const std::vector<report::MapEntry>& entries) {
    if (entries.size() < m_shown) {
        Empty();
    }
    for (; m_shown < entries.size(); ++m_shown) {
        const report::MapEntry& entry = entries[m_shown];
        while (!m_levels.empty() && m_levels.back() >= entry.level) {
            m_levels.pop_back();
            m_open.pop_back();
        }
        auto* item = m_open.empty() ? new QTreeWidgetItem(this) : new QTreeWidgetItem(m_open.back());
        const QString label = QString::fromStdString(entry.label);
        item->setText(0, label);
        item->setToolTip(0, PlainTip(label));
        item->setData(0, PageRole, entry.page);
        item->setData(0, PlaceRole, entry.y);
        m_open.push_back(item);
        m_levels.push_back(entry.level);
    }
}

}  // namespace viewer
