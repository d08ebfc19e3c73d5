// SPDX-License-Identifier: GPL-3.0-or-later
// What the engine says against the report as it is now, and hints. The engine is asked a moment after the
// last change. It ends with the first problem: an item that it names is left out of a copy, which may have
// more. Activating a problem selects the item that it names.
#pragma once

#include <QListWidget>
#include <QTimer>
#include <string>
#include <vector>

#include "designer/model/design_model.h"

namespace designer {

class ProblemsPane : public QListWidget {
    Q_OBJECT
 public:
    explicit ProblemsPane(DesignModel& model, QWidget* parent = nullptr);

    // A step that was refused, shown above the engine's problems until the next change.
    void ShowRefusal(const QString& text);
    // What the engine said when the design was laid out; empty if it has drawn everything. Of an item that
    // has a problem already it is not shown.
    void SetDrawingFailures(const std::vector<std::string>& texts);
    void CheckNow();
    int Count() const { return m_count; }
    // Selects the item that a message of the engine names, or the element at the line that it names.
    void SelectItemOf(const QString& message);

 signals:
    void Checked();
    void Chosen();

 private:
    void FindProblems();
    void ShowAll();
    QStringList DrawingFailures() const;

    DesignModel& m_model;
    QTimer m_timer;
    QString m_refusal;
    QStringList m_found, m_drawing, m_hints;
    int m_count = 0;
};

}  // namespace designer
