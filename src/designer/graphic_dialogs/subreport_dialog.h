// SPDX-License-Identifier: GPL-3.0-or-later
// The dialog of a subreport: its file and the values of its parameters.
#pragma once

#include <functional>

#include "designer/graphic_dialogs/item_dialog.h"
#include "designer/graphics/item_parts.h"

class QLineEdit;

namespace designer {

class PartsTable;

class SubreportDialog : public ItemDialog {
    Q_OBJECT
 public:
    // `choose` asks for a file and returns it as the report names it; empty: none.
    SubreportDialog(DesignModel& model, ElementId subreport, std::function<QString()> choose,
                    QWidget* parent = nullptr);

 protected:
    void Write(Document& document, ElementId subreport) const override;

 private:
    SubreportDesign Design() const;
    void OpenExpression();
    void AddParameters();  // those of the file; says why if it cannot be read
    void AddMissing(const std::vector<std::string>& parameters);  // those that the table does not have

    const std::function<QString()> m_choose;
    QLineEdit* m_report;
    PartsTable* m_parameters;
};

}  // namespace designer
