// SPDX-License-Identifier: GPL-3.0-or-later
// The dialog for what an item leads to, its place in the document map, its tool tip and its bookmark. OK is
// one step of the document.
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
    // The model must live as long as the dialog.
    LinksDialog(DesignModel& model, ElementId item, QWidget* parent = nullptr);
    void accept() override;

 private:
    ExpressionLine* AddLine(QFormLayout& form, const char* name, const QString& label,
                            std::string ItemLinks::*member, const QString& hint);
    void BuildParameters();
    void ShowKind();
    ItemLinks Typed();
    void PutTrial(Document& copy, const ItemLinks& links) const;
    bool Complain(QWidget& control, const QString& text);
    bool IsComplete(const ItemLinks& links);

    DesignModel& m_model;
    const ElementId m_item;
    const ItemLinks m_old;
    QComboBox* m_kind;
    QFormLayout* m_form;
    ExpressionLine *m_target = nullptr, *m_label = nullptr, *m_toolTip = nullptr, *m_bookmark = nullptr;
    RowTable* m_parameters = nullptr;
    QWidget* m_reportPart = nullptr;
    Note* m_note = nullptr;
};

}  // namespace designer
