// A tree of nodes with keys. One node at most is selected; a click beside all nodes leaves it so.
#pragma once

#include <QTreeWidget>
#include <map>
#include <string>
#include <vector>

#include "platform/controls/items/image_list.h"
#include "platform/controls/items/item_view.h"

// Good until its tree is cleared or it is removed.
class Node : public QTreeWidgetItem {
 public:
    Node(std::string key, const std::string& text, int image);

    const std::string Key;  // empty: none
    std::string Tag;
    std::string Text() const { return text(0).toStdString(); }
    void Text(const std::string& text) { setText(0, QString::fromStdString(text)); }
    int Image() const { return m_image; }
    int Children() const { return childCount(); }
    Node* Parent() const { return static_cast<Node*>(parent()); }  // null at the root
    bool Expanded() const { return isExpanded(); }
    void Expanded(bool expanded) { setExpanded(expanded); }
    void Selected(bool selected);  // by code: no Click
    bool Selected() const { return isSelected(); }

 private:
    int m_image;
};

class TreeView;

class Nodes {
 public:
    explicit Nodes(TreeView& tree) : m_tree(tree) {}
    // Under the node `parentKey`, at the root when that is empty. 35602 "Key is not unique in collection";
    // 35601 "Element not found" for the parent. `selectedImage` is shown while the node is selected; 0:
    // `image`.
    Node& Add(const std::string& parentKey, const std::string& key, const std::string& text, int image = 0,
              int selectedImage = 0);
    int Count() const { return static_cast<int>(m_inOrder.size()); }
    Node& operator()(int index);               // in the order in which they were added, from 1; 35600
    Node& operator()(const std::string& key);  // 35601
    bool Has(const std::string& key) const { return m_byKey.count(key) > 0; }
    void Remove(const std::string& key);  // with all below it
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
    // For the nodes that are added from now on.
    void Icons(const ImageList* images) { m_images = images; }
    const ImageList* Icons() const { return m_images; }
    bool HasSelection() const;
    Node& SelectedItem();  // 91 when none is selected
    void Refresh() { viewport()->update(); }

 signals:
    void Click();     // on a node, by mouse, or by moving to it with the keyboard
    void DblClick();  // on a node, or Enter
    // In the tree's own coordinates; see ListView. The node there is selected already.
    void MouseUp(int button, QPoint place);
    void KeyDown(int keyCode);  // see KeyCode; before the tree does anything about the key

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
