// SPDX-License-Identifier: GPL-3.0-or-later
// The dialog for the value of a property that may be an expression: what is typed is checked by the engine,
// and the names that it can use are in a tree with their help. OK is one step of the document.
#pragma once

#include <QDialog>
#include <QTimer>
#include <vector>

#include "designer/expressions/expression_check.h"
#include "designer/expressions/expression_names.h"

class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QTreeWidget;
class QTreeWidgetItem;

namespace designer {

class Note;

class ExpressionDialog : public QDialog {
    Q_OBJECT
 public:
    // Changes the property of all these elements; shows and checks the first. The model must live as long as
    // the dialog.
    ExpressionDialog(DesignModel& model, std::vector<ElementId> ids, const PropertyRow& row,
                     QWidget* parent = nullptr);
    void accept() override;

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    void BuildEditor(QWidget& side);
    void BuildNames(QWidget& side);
    void FillTree(const std::vector<ExpressionGroup>& groups, QTreeWidgetItem* parent);
    void ShowMatches(const QString& filter);
    void ShowHelp();
    void InsertName();
    bool Check();
    void MarkPlace(int position);
    std::string Value() const;

    DesignModel& m_model;
    const std::vector<ElementId> m_ids;
    const PropertyRow m_row;
    const ExpressionCheck m_check;
    const std::string m_old;
    QPlainTextEdit* m_text = nullptr;
    Note* m_note = nullptr;
    QLineEdit* m_filter = nullptr;
    QTreeWidget* m_tree = nullptr;
    QLabel* m_help = nullptr;
    QTimer m_pause;  // while the user types
};

}  // namespace designer
