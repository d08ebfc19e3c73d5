// SPDX-License-Identifier: GPL-3.0-or-later
// A line that shows the value of an expression for the first row of its data set, and a button that stops
// the computation or reads the rows again.
#pragma once

#include <QTimer>
#include <QWidget>

#include "designer/expressions/expression_check.h"
#include "designer/expressions/value_run.h"

class QLabel;
class QPushButton;

namespace designer {

// Where a value of the report stands.
struct ValuePlace {
    std::string dataSet;    // whose fields it may use; empty if it is in none
    bool isOfData = false;  // the rows depend on it: it is part of a data set, source or parameter
};
ValuePlace PlaceOf(const DesignModel& model, const ExpressionCheck::Write& write);

// Returns what users see of the value for the first row of this data set: "42 (Whole number); ..." in one
// line.
QString ShownValue(const rdl::ExpressionValue& value, const std::string& dataSet);

class ValueLine : public QWidget {
    Q_OBJECT
 public:
    // The model must live as long as this. `write` puts a value where it is going to stand.
    ValueLine(const DesignModel& model, ExpressionCheck::Write write, QWidget* parent = nullptr);

    const std::string& DataSet() const { return m_place.dataSet; }
    // Shows the value of the expression when it is known, in place of the one before. After Stop the user
    // asks for it.
    void Compute(const std::string& expression);
    void Clear();

 private:
    void Start();
    void Press();
    void ShowWait();
    void ShowOutcome(const ValueOutcome& outcome);
    void ShowStopped(bool isTooLong);
    void ShowText(const QString& text);

    const DesignModel& m_model;
    const ExpressionCheck::Write m_write;
    const ValuePlace m_place;
    ValueRun m_run;
    QLabel* m_label;
    QPushButton* m_button;
    std::string m_expression;
    bool m_isAsked = false;  // the user has stopped it: it begins when the button is pressed
    QTimer m_moment;         // before the wait is shown
};

}  // namespace designer
