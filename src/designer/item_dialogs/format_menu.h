// SPDX-License-Identifier: GPL-3.0-or-later
// The commands that change how the selected items look: the usual ones at once, all others by dialogs.
#pragma once

#include <QMenu>
#include <functional>
#include <string_view>
#include <vector>

#include "designer/item_dialogs/selection_values.h"
#include "designer/model/design_model.h"
#include "designer/model/text_parts.h"

namespace designer {

class FormatMenu : public QMenu {
    Q_OBJECT
 public:
    explicit FormatMenu(DesignModel& model, QWidget* parent = nullptr);

    // Adds the dialogs for groups and regions to another menu.
    void AddTableCommands(QMenu& menu);

    // Enables what the selection allows, and ticks what it has; nothing if `off` says why the canvas is not
    // there.
    void ShowCommands(const QString& off);

 signals:
    void Working();  // before a command: what is being typed is taken
    void Done();     // after it

 private:
    enum class Needs { Element, Item, Text, Fill, Border, Group, Region };
    struct Entry {
        QAction* action;
        Needs needs;
        std::string_view property = {}, value = {};  // ticked if the items have this value
    };
    QAction* Add(QMenu& menu, const char* name, const QString& text, const QKeySequence& keys, Needs needs,
                 const std::function<void()>& work);
    // A command that gives the items the value, or takes it away from items that have it.
    void AddToggle(const char* name, const QString& text, const QKeySequence& keys, std::string_view property,
                   std::string_view value);
    void AddFontCommands();
    void AddAlignmentCommands();
    void AddBorderCommands();
    QString ReasonAgainst(Needs needs, const SelectionValues& values) const;
    void Set(const QString& verb, std::string_view property, const std::string& value);
    void Toggle(const QString& verb, std::string_view property, const std::string& value);
    void ChangeFontSize(int step);
    void AskForColour(const QString& verb, std::string_view property);
    enum class Borders { None, All, Around };
    void SetBorders(Borders borders);
    void SetBordersAround(Document& document) const;
    std::vector<ElementId> Ids() const { return StyledElements(m_model); }

    DesignModel& m_model;
    std::vector<Entry> m_entries;
};

}  // namespace designer
