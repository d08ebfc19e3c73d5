// SPDX-License-Identifier: GPL-3.0-or-later
// A line for a value that may be an expression, with a button that opens the dialog for expressions.
#pragma once

#include <QWidget>

#include "designer/expressions/expression_dialog.h"

class QLineEdit;

namespace designer {

class ExpressionLine : public QWidget {
    Q_OBJECT
 public:
    // `name` is the object name of the line, `title` says what it is for to those who do not see it. The
    // model must live as long as this. `write` puts a value where it is going to stand.
    ExpressionLine(const DesignModel& model, const char* name, const QString& title,
                   ExpressionCheck::Write write, QWidget* parent = nullptr);

    std::string Text() const;
    void SetText(const std::string& text);
    QLineEdit& Line() { return *m_line; }

 signals:
    void Edited();  // by the user

 private:
    void Ask();

    const DesignModel& m_model;
    const ExpressionPlace m_place;
    QLineEdit* m_line;
};

}  // namespace designer
