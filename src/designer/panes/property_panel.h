// SPDX-License-Identifier: GPL-3.0-or-later
// The property pane below a line that finds properties, the choice of their order, and the button for an
// expression.
#pragma once

#include <QWidget>

#include "designer/panes/property_pane.h"

class QLineEdit;
class QToolButton;

namespace designer {

// What the user has chosen of it.
struct PropertyLook {
    bool isAlphabetical = false;
    double nameWidth = 0;  // as PropertyPane::NameWidth
};

class PropertyPanel : public QWidget {
    Q_OBJECT
 public:
    explicit PropertyPanel(DesignModel& model, QWidget* parent = nullptr);
    PropertyPane& Rows() { return *m_rows; }
    PropertyLook Look() const;
    void SetLook(const PropertyLook& look);

 signals:
    void ExpressionRequested();  // for the current row

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;

 private:
    QToolButton* AddButton(const char* name, const QString& text, const QString& title, const QString& tip);

    void FitFind();  // its hint is not cut

    PropertyPane* m_rows;
    QLineEdit* m_find;
    QToolButton* m_order;
};

}  // namespace designer
