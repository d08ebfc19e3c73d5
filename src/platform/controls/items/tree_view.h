// SPDX-License-Identifier: GPL-3.0-or-later
// A tree of nodes with keys. At most one node is selected; a click outside all nodes keeps the selection.
#pragma once

#include <QTreeWidget>
#include <map>
#include <string>
#include <vector>

#include "platform/controls/items/image_list.h"
#include "platform/controls/items/item_view.h"

// The tree owns its nodes. A reference is valid until the node is removed or the tree is cleared.
class Node : public QTreeWidgetItem {
 public:
    Node(std::string key, const std::string& text, int image);

    const std::string Key;  // may be empty
    std::string Tag;
    std::string Text() const { return text(0).toStdString(); }
    void Text(const std::string& text) { setText(0, QString::fromStdString(text)); }
    int Image() const { return m_image; }
    int Children() const { return childCount(); }
    Node* Parent() const { return static_cast<Node*>(parent()); }  // null at the root
    bool Expanded() const { return isExpanded(); }
    void Expanded(bool expanded) { setExpanded(expanded); }
    void Selected(bool selected);  // by code: emits no Click
    bool Selected() const { return isSelected(); }

 private:
    int m_image;
};

class TreeView;

class Nodes {
 public:
    explicit Nodes(TreeView& tree) : m_tree(tree) {}
    // Adds a node below the node `parentKey`, or at the root if that is empty. Raises 35602 "Key is not
    // unique in collection", and 35601 "Element not found" for the parent. `selectedImage` is shown while the
    // node is selected; 0 means `image`.
    Node& Add(const std::string& parentKey, const std::string& key, const std::string& text, int image = 0,
              int selectedImage = 0);
    int Count() const { return static_cast<int>(m_inOrder.size()); }
    Node& operator()(int index);               // in the order of adding, from 1; raises 35600
    Node& operator()(const std::string& key);  // raises 35601
    bool Has(const std::string& key) const { return m_byKey.count(key) > 0; }
    void Remove(const std::string& key);  // with all nodes below it
    void Clear();

 private:
    void Forget(const Node& node);
    TreeView& m_tree;
    std::map<std::string, Node*> m_byKey;
    std::vector<Node*> m_inOrder;
};

class TreeView : public ItemView<QTreeWidget>, private ItemEvents {
    Q_OBJECT
 public:
    explicit TreeView(QWidget* parent = nullptr);

    ::Nodes& Nodes() { return m_nodes; }
    // Sets the images of nodes added later. The caller owns the list of images, which must outlive the tree.
    void Icons(const ImageList* images) { m_images = images; }
    const ImageList* Icons() const { return m_images; }
    bool HasSelection() const;
    Node& SelectedItem();  // raises 91 if no node is selected
    void Refresh() { viewport()->update(); }

 signals:
    void Click();     // a node was selected by the mouse or the keyboard
    void DblClick();  // a double click on a node, or Enter
    // As in ListView; `place` is in the tree's coordinates, and the node there is already selected.
    void MouseUp(int button, QPoint place);
    void KeyDown(int keyCode);  // see KeyCode; emitted before the tree handles the key

 protected:
    void resizeEvent(QResizeEvent* event) override;

 private:
    void ItemClicked() override;
    void ItemActivated() override;
    void ButtonReleased(int button, QPoint place) override;
    void KeyPressed(int keyCode) override;

    ::Nodes m_nodes{*this};
    const ImageList* m_images = nullptr;
};
