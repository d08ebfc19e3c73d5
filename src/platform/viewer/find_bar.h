// SPDX-License-Identifier: GPL-3.0-or-later
// The search bar.
#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;

namespace viewer {

class FindBar : public QWidget {
    Q_OBJECT
 public:
    explicit FindBar(QWidget* parent = nullptr);

    // takes the keyboard focus; empty `words` keep the words of the last search
    void Open(const QString& words = {});
    QString Words() const;
    void ShowState(const QString& text);
    void ShowMiss(const QString& text);  // on another background

 signals:
    void WordsChanged(const QString& words);
    void NextRequested();
    void PreviousRequested();
    void Closed();

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

 private:
    void Show(const QString& text, const QColor& back, const QColor& front);
    QLineEdit* m_words;
    QLabel* m_state;
};

}  // namespace viewer
