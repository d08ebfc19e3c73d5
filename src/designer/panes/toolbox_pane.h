// SPDX-License-Identifier: GPL-3.0-or-later
// The kinds of items that can be drawn on the canvas.
#pragma once

#include <QButtonGroup>
#include <QIcon>
#include <QWidget>
#include <optional>
#include <vector>

#include "designer/model/new_items.h"

class QToolButton;

namespace designer {

struct ToolText {
    NewItem kind;
    QString name;
};

// Returns the kinds in the order in which they are offered.
std::vector<ToolText> Tools();
// Draws the kind in the colours of the palette.
QIcon ToolIcon(NewItem kind, const QPalette& palette);

// A click picks a tool: the next rectangle that is drawn becomes an item of the kind. Enter, or a double
// click, inserts an item at once.
class ToolboxPane : public QWidget {
    Q_OBJECT
 public:
    explicit ToolboxPane(QWidget* parent = nullptr);
    void ShowTool(std::optional<NewItem> tool);

 signals:
    void ToolPicked(std::optional<designer::NewItem> tool);
    void InsertRequested(designer::NewItem kind);

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;

 private:
    std::vector<QToolButton*> m_buttons;  // in the order of Tools()
};

}  // namespace designer
