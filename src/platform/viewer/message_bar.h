// SPDX-License-Identifier: GPL-3.0-or-later
// An error message in a bar above the pages. It stays until the user closes it or does something else.
#pragma once

#include <QFrame>

class QLabel;

namespace viewer {

class MessageBar : public QFrame {
    Q_OBJECT
 public:
    explicit MessageBar(QWidget* parent = nullptr);
    void ShowText(const QString& text);

 signals:
    void CloseRequested();

 private:
    QLabel* m_text;
};

}  // namespace viewer
