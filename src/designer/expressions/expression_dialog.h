// SPDX-License-Identifier: GPL-3.0-or-later
// The dialog for the value of a property that may be an expression: what is typed is checked by the engine,
// and the names that it can use are in a tree with their help. OK is one step of the document, or gives the
// value to the dialog that asks for it.
#pragma once

#include <QDialog>
#include <QTimer>
#include <vector>

#include "designer/expressions/expression_check.h"
#include "designer/expressions/expression_names.h"
#include "designer/panes/property_rows.h"

class QLabel;
class QLineEdit;
class QTreeWidget;
class QTreeWidgetItem;

namespace designer {

class ExpressionEdit;
class Note;
class ValueLine;

// A place for a value that is not in the report yet: a dialog shows it.
struct ExpressionPlace {
    QString title;  // "Default value of Year"
    ExpressionCheck::Write write;
};

// Lets the user change the value. Returns nullopt if the user cancels.
std::optional<std::string> AskForExpression(const DesignModel& model, const ExpressionPlace& place,
                                            const std::string& value, QWidget* parent);

class ExpressionDialog : public QDialog {
    Q_OBJECT
 public:
    // Takes the value when the user is done with it; false: the dialog stays.
    using Take = std::function<bool(const std::string& value)>;
    ExpressionDialog(const DesignModel& model, const ExpressionPlace& place, const std::string& value,
                     Take take, QWidget* parent = nullptr);
    // Changes the property of all these elements; shows and checks the first. The model must live as long as
    // the dialog.
    ExpressionDialog(DesignModel& model, std::vector<ElementId> ids, const PropertyRow& row,
                     QWidget* parent = nullptr);
    void accept() override;
    void reject() override;  // asks if the value is changed

 protected:
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    void BuildEditor(QWidget& side);
    void Compute();
    void BuildNames(QWidget& side);
    void FillTree(const std::vector<ExpressionGroup>& groups, QTreeWidgetItem* parent);
    void ShowMatches(const QString& filter);
    void ShowHelp();
    void InsertName();
    bool Check();
    void MarkPlace(int position);
    std::string Value() const;

    const DesignModel& m_model;
    const ExpressionCheck m_check;
    const std::string m_old;
    const Take m_take;
    ExpressionEdit* m_text = nullptr;
    QLabel* m_signature = nullptr;
    Note* m_note = nullptr;
    ValueLine* m_value;
    QLineEdit* m_filter = nullptr;
    QTreeWidget* m_tree = nullptr;
    QLabel* m_help = nullptr;
    QTimer m_pause;  // while the user types
};

}  // namespace designer
