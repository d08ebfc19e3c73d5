// SPDX-License-Identifier: GPL-3.0-or-later
// The dialog of a gauge or an indicator: its value, scale, and ranges or states.
#pragma once

#include "designer/graphic_dialogs/item_dialog.h"
#include "designer/graphics/gauge_parts.h"

namespace designer {

class PartsTable;

class GaugeDialog : public ItemDialog {
    Q_OBJECT
 public:
    // The panel has a GaugeDesign.
    GaugeDialog(DesignModel& model, ElementId panel, QWidget* parent = nullptr);

 protected:
    void Write(Document& document, ElementId panel) const override;

 private:
    void ShowRanges();
    void ShowColours();
    void ChooseColour();

    const GaugeDesign m_design;
    ExpressionField *m_value, *m_least, *m_most;
    PartsTable* m_ranges;
};

}  // namespace designer
