// SPDX-License-Identifier: GPL-3.0-or-later
// A date box with a calendar. It shows the date as the region writes it.
//
// It is typed part by part. A click selects its part, and what is typed takes the place of what is selected;
// with everything selected that begins at the first part. A part that has all its digits hands on to the next
// one. A year of two digits is read as everywhere else.
//
// What is typed in one go is a date in the region's form, with the region's separator, or the rest of one
// from the selected part on, or a whole one like 2028-12-24. A key that fits no such text is refused, with a
// beep and a tip: the date before the typing returns, and further typing is ignored until another key, a
// click or leaving the box. A day that the month does not have stays while the other parts may still change;
// if the box is left with it, the date before the typing returns.
#pragma once

#include <QDateEdit>
#include <optional>

#include "platform/contracts/dates.h"

class DTPicker : public QDateEdit {
    Q_OBJECT
 public:
    explicit DTPicker(QWidget* parent = nullptr);

    // A day at midnight; with digits still being typed, the day that they make, if there is such a day.
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
    QDateTime dateTimeFromText(const QString& text) const override;
    QString textFromDateTime(const QDateTime& moment) const override;

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
    // What is typed in one go.
    struct Run {
        std::optional<Parts> before;  // what the parts held
        Typing begin;                 // with the digits that were there already
        QString text;                 // digits and separators
        int part;                     // that it has come to
        bool yearFirst = false;       // its parts come in the order of 2028-12-24
        bool handedOn = false;        // a part is full, and its separator has not been typed
        bool complete = false;        // the last part is full
        bool refused = false;
    };

    int PartOfSelection() const;
    int PartOf(Section section) const;
    int FirstOf(int part) const;
    Parts PartsNow() const;
    Parts PartsBefore() const;
    Parts With(const Typing& typing, Parts parts) const;
    QString TextOf(const Parts& parts) const;
    bool AnswerKey(const QKeyEvent& event);
    void BeginRun(const Typing& begin);
    bool BeginsWithAYear() const;
    bool IsOpen() const;
    bool IsImpossible() const;
    void TakeYearFirst();
    void TypeCharacter(QChar character);
    void TypeDigit(QChar digit);
    void TypeSeparator(QChar separator);
    void HandOn();
    void Refuse();
    bool EndRun();
    bool Settle();
    void Complain();
    void TakeBack();
    enum class Erased { Before, After };  // the cursor
    void Erase(Erased side);
    void Paste(const QString& text);
    void ClosePart();
    void SelectPart(int part);
    void ShowTyping();
    void OpenCalendar();

    std::optional<Parts> m_parts;    // from the first digit until the box loses the focus
    std::optional<Typing> m_typing;  // until the part is closed
    std::optional<Run> m_run;        // until another key or a click comes or the box is left
};
