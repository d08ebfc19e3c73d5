// What went wrong, as a line above the pages that stays until it is closed or the reader goes on to something
// else.
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
    void CloseWanted();

 private:
    QLabel* m_text;
};

}  // namespace viewer
