// SPDX-License-Identifier: GPL-3.0-or-later
// What the engine says against the report as it is now. It is asked a moment after the last change.
// Activating a problem selects the item that it names.
#pragma once

#include <QListWidget>
#include <QTimer>

#include "designer/model/design_model.h"

namespace designer {

class ProblemsPane : public QListWidget {
    Q_OBJECT
 public:
    explicit ProblemsPane(DesignModel& model, QWidget* parent = nullptr);

    // A step that was refused, shown above the engine's problems until the next change.
    void ShowRefusal(const QString& text);
    // What the engine said when the design was laid out; empty if it has drawn everything.
    void SetDrawingFailure(const QString& text);
    void CheckNow();
    int Count() const { return m_count; }

 signals:
    void Checked();
    void Chosen();

 private:
    void ShowAll();
    void Choose(const QListWidgetItem& entry);

    DesignModel& m_model;
    QTimer m_timer;
    QString m_refusal, m_found, m_drawing;
    int m_count = 0;
};

}  // namespace designer
