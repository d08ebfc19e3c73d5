// A date box with a calendar. It shows the date as the region writes it.
//
// The date is typed part by part. A click selects a part, and typed digits replace the selection; if
// everything is selected, they begin with the first part. A full part passes on to the next one. A day that
// the month does not have stays while the other parts can still change; when the box loses the focus it
// becomes the last day of the month. A year with two digits is read as everywhere else.
#pragma once

#include <QDateEdit>
#include <optional>

#include "platform/contracts/dates.h"

class DTPicker : public QDateEdit {
    Q_OBJECT
 public:
    explicit DTPicker(QWidget* parent = nullptr);

    // Returns a day at midnight. While digits are typed, it is the day that they make.
    DateValue Value() const;
    // Sets the day of `value`. Raises 380 "Invalid property value" for a year outside 100 to 9999.
    void Value(DateValue value);

    void stepBy(int steps) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

 signals:
    void Change();  // the date has changed, by the user or by code

 protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    QValidator::State validate(QString& text, int& place) const override;

 private:
    // The values of the parts while the user types; they need not be a day of the calendar.
    struct Parts {
        int year, month, day;
    };
    // The digits of the part that is being typed, and the cursor position among them.
    struct Typing {
        int part;  // from 0, in the order of the region
        QString digits;
        qsizetype cursor;
    };

    int PartOfSelection() const;
    Parts PartsNow() const;
    Parts With(const Typing& typing, Parts parts) const;
    bool AnswerKey(const QKeyEvent& event);
    void TypeDigit(QChar digit);
    void KeepWhole(QChar character);
    bool TakeWhole();
    void TypeSeparator();
    void Erase(bool before);
    void Paste(const QString& text);
    void ClosePart();
    void Settle();
    void SelectPart(int part);
    void ShowTyping();
    void OpenCalendar();

    std::optional<Parts> m_parts;    // from the first digit until the box loses the focus
    std::optional<Typing> m_typing;  // until the part is closed
    QString m_whole;                 // text typed over a whole selection
    bool m_handedOn = false;         // a separator after the full part is to be ignored
};
