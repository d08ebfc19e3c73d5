// SPDX-License-Identifier: GPL-3.0-or-later
// The dialog for what an item, or runs of a text, lead to, its place in the document map, its tool tip and
// its bookmark. OK is one step of the document.
#pragma once

#include <QDialog>

#include "designer/expressions/expression_line.h"
#include "designer/model/item_links.h"

class QComboBox;
class QFormLayout;

namespace designer {

class Note;
class RowTable;

class LinksDialog : public QDialog {
    Q_OBJECT
 public:
    // Shows the last of these elements and changes all; there is one at least. The model must live as long as
    // the dialog.
    LinksDialog(DesignModel& model, std::vector<ElementId> ids, QWidget* parent = nullptr);
    void accept() override;

 private:
    ExpressionLine* AddLine(QFormLayout& form, const char* name, const QString& label,
                            std::string ItemLinks::*member, const QString& hint);
    void BuildParameters();
    void ShowKind();
    bool Has(std::string_view property) const;
    ItemLinks Typed();
    void PutTrial(Document& copy, const ItemLinks& links) const;
    bool Complain(QWidget& control, const QString& text);
    bool IsComplete(const ItemLinks& links);

    DesignModel& m_model;
    const std::vector<ElementId> m_ids;
    const ElementId m_item;  // that is shown
    const ItemLinks m_old;
    QComboBox* m_kind;
    QFormLayout* m_form;
    ExpressionLine *m_target = nullptr, *m_label = nullptr, *m_toolTip = nullptr, *m_bookmark = nullptr;
    RowTable* m_parameters = nullptr;
    QWidget* m_reportPart = nullptr;
    Note* m_note = nullptr;
};

}  // namespace designer
