// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/items/tree_view.h"

#include <QHeaderView>
#include <algorithm>

#include "platform/controls/kit/collections.h"

Node::Node(std::string key, const std::string& text, int image)
    : QTreeWidgetItem(QStringList(QString::fromStdString(text))), Key(std::move(key)), m_image(image) {}

void Node::Selected(bool selected) {
    if (selected) {
        treeWidget()->setCurrentItem(this);
    } else {
        setSelected(false);
    }
}

Node& Nodes::Add(const std::string& parentKey, const std::string& key, const std::string& text, int image,
                 int selectedImage) {
    if (!key.empty() && Has(key)) {
        throw RuntimeError(err::KeyNotUnique);
    }
    QTreeWidgetItem* parent = parentKey.empty() ? m_tree.invisibleRootItem() : &(*this)(parentKey);
    auto* node = new Node(key, text, image);
    if (m_tree.Icons() != nullptr) {
        node->setIcon(0, m_tree.Icons()->Image(image, selectedImage));
    }
    parent->addChild(node);
    m_inOrder.push_back(node);
    if (!key.empty()) {
        m_byKey[key] = node;
    }
    return *node;
}

Node& Nodes::operator()(int index) {
    return *m_inOrder[PlaceOf(index, m_inOrder.size())];
}

Node& Nodes::operator()(const std::string& key) {
    const auto found = m_byKey.find(key);
    if (found == m_byKey.end()) {
        throw RuntimeError(err::ElementNotFound);
    }
    return *found->second;
}

void Nodes::Remove(const std::string& key) {
    Node& node = (*this)(key);
    // Qt would select a neighbour of a removed selected node.
    const QTreeWidgetItem* selected = m_tree.HasSelection() ? &m_tree.SelectedItem() : nullptr;
    for (; selected != nullptr; selected = selected->parent()) {
        if (selected == &node) {
            QTreeWidgetItem* near = m_tree.itemBelow(&node) != nullptr ? m_tree.itemAbove(&node) : nullptr;
            m_tree.setCurrentItem(near, 0, QItemSelectionModel::Clear);
            break;
        }
    }
    Forget(node);
    delete &node;
}

void Nodes::Forget(const Node& node) {
    for (int i = 0; i < node.childCount(); ++i) {
        Forget(static_cast<const Node&>(*node.child(i)));
    }
    m_byKey.erase(node.Key);
    std::erase(m_inOrder, &node);
}

void Nodes::Clear() {
    m_byKey.clear();
    m_inOrder.clear();
    m_tree.clear();
}

TreeView::TreeView(QWidget* parent) : ItemView(*this, parent) {
    setHeaderHidden(true);
    setColumnCount(1);
    setUniformRowHeights(true);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    // Long texts can be scrolled to and are not cut off.
    header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    header()->setStretchLastSection(false);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    connect(this, &QTreeView::expanded, this, [this] { PressToggledBranch(); });
    connect(this, &QTreeView::collapsed, this, [this] { PressToggledBranch(); });
}

// The column is at least as wide as the view, so that clicks next to short texts are handled too.
void TreeView::resizeEvent(QResizeEvent* event) {
    ItemView::resizeEvent(event);
    header()->setMinimumSectionSize(viewport()->width());
    header()->resizeSections(QHeaderView::ResizeToContents);
}

bool TreeView::HasSelection() const {
    return SelectedIndex().isValid();
}

Node& TreeView::SelectedItem() {
    if (!HasSelection()) {
        throw RuntimeError(err::ObjectNotSet);
    }
    return static_cast<Node&>(*itemFromIndex(SelectedIndex()));
}

void TreeView::ItemClicked() {
    emit Click();
}

void TreeView::ItemActivated() {
    emit DblClick();
}

void TreeView::ButtonReleased(int button, QPoint place) {
    emit MouseUp(button, viewport()->mapTo(this, place));
}

void TreeView::KeyPressed(int keyCode) {
    emit KeyDown(keyCode);
}
