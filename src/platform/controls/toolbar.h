// SPDX-License-Identifier: GPL-3.0-or-later
// A form's toolbar: buttons with a picture above their caption, counted from 1, separators included.
#pragma once

#include <QToolBar>
#include <deque>
#include <string>

#include "platform/controls/items/image_list.h"

class ToolBar;

class ToolBarButton {
 public:
    ToolBarButton(QAction& action, std::string key, std::string tip);

    const std::string& Key() const { return m_key; }  // also the caption; empty for a separator
    const std::string& ToolTipText() const { return m_tip; }
    bool Enabled() const { return m_action.isEnabled(); }
    void Enabled(bool enabled) { m_action.setEnabled(enabled); }

 private:
    QAction& m_action;
    std::string m_key, m_tip;
};

class ToolBarButtons {
 public:
    explicit ToolBarButtons(ToolBar& bar) : m_bar(bar) {}
    // `image` is a number in the toolbar's ImageList.
    ToolBarButton& Add(const std::string& caption, const std::string& tip, int image);
    void AddSeparator();
    int Count() const { return static_cast<int>(m_buttons.size()); }
    ToolBarButton& operator()(int index);               // raises 35600 "Index out of bounds"
    ToolBarButton& operator()(const std::string& key);  // raises 35601 "Element not found"

 private:
    ToolBar& m_bar;
    std::deque<ToolBarButton> m_buttons;  // a deque keeps references valid
};

class ToolBar : public QToolBar {
    Q_OBJECT
 public:
    explicit ToolBar(QWidget* parent = nullptr);

    ToolBarButtons& Buttons() { return m_buttons; }
    // Set the images before the buttons are added. The caller owns the list of images, which must outlive the
    // toolbar.
    void Icons(const ImageList* images) { m_images = images; }
    const ImageList* Icons() const { return m_images; }

 signals:
    void ButtonClick(int index, const std::string& key);

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    ToolBarButtons m_buttons{*this};
    const ImageList* m_images = nullptr;
};
