// SPDX-License-Identifier: GPL-3.0-or-later
// The dialog of a chart: its type, what it shows, titles, legend and colours. OK is one step of the document.
#pragma once

#include <QDialog>

#include "designer/graphic_dialogs/chart_data_page.h"
#include "designer/graphics/chart_parts.h"
#include "designer/model/design_model.h"

class QCheckBox;
class QComboBox;
class QTabWidget;

namespace designer {

class ChartGallery;
class ExpressionField;
class Note;

class ChartDialog : public QDialog {
    Q_OBJECT
 public:
    // Changes a chart with a ChartDesign. The model must live as long as the dialog.
    ChartDialog(DesignModel& model, ElementId chart, QWidget* parent = nullptr);
    void accept() override;

 private:
    QWidget* MakeTypePage();
    QWidget* MakeLookPage();
    ExpressionField* MakeTitle(const QString& title, const char* name, std::string ChartDesign::*text);
    // Asks for a value that `set` writes to a design.
    std::optional<std::string> Ask(const QString& title, const std::string& value,
                                   const std::function<void(ChartDesign&, const std::string&)>& set);
    std::optional<std::string> Open(ChartDataPage::Part part, std::size_t entry, const std::string& name);
    bool IsComplete();

    DesignModel& m_model;
    const ElementId m_chart;
    const bool m_isOlder;
    ChartDesign m_design;
    QTabWidget* m_tabs;
    ChartGallery* m_gallery = nullptr;
    ChartDataPage* m_data = nullptr;
    Note* m_note = nullptr;
};

}  // namespace designer
