// SPDX-License-Identifier: GPL-3.0-or-later
// The dialog of a panel of gauges and indicators: of each its kind, value, scale, and ranges or states.
#pragma once

#include "designer/graphic_dialogs/item_dialog.h"
#include "designer/graphics/gauge_parts.h"

class QComboBox;
class QPushButton;

namespace designer {

class PartsTable;

class GaugeDialog : public ItemDialog {
    Q_OBJECT
 public:
    GaugeDialog(DesignModel& model, ElementId panel, QWidget* parent = nullptr);

 protected:
    void Write(Document& document, ElementId panel) const override;

 private:
    void BuildGauges();
    std::vector<GaugeDesign> Designs() const;  // with what is typed
    ElementId Shown(const Document& document, ElementId panel) const;
    void Add(GaugeKind kind);
    void RemoveGauge();
    void ShowGauges();
    void ShowGauge();
    void ShowRanges();
    void ShowColours();
    void ChooseColour();

    std::vector<GaugeDesign> m_designs;
    int m_current = -1;  // that the lines below show
    QComboBox *m_gauges, *m_kind;
    QPushButton* m_remove = nullptr;
    ExpressionField *m_value, *m_least, *m_most;
    PartsTable* m_ranges;
};

}  // namespace designer
