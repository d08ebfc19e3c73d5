// A date with a calendar to choose it from, shown as the region writes dates.
//
// It is typed part by part. A click selects its part, and what is typed takes the place of what is selected;
// with everything selected that begins at the first part. A part that is full hands on to the next one. A day
// that the month does not have stands while the other parts may still change, and becomes the month's last
// day when the box is left. A year of two digits is read as everywhere else.
#pragma once

#include <QDateEdit>
#include <optional>

#include "platform/contracts/dates.h"

class DTPicker : public QDateEdit {
    Q_OBJECT
 public:
    explicit DTPicker(QWidget* parent = nullptr);

    // A day at midnight; with digits still being typed, the day that they make.
    DateValue Value() const;
    // The day of `value`. The years 100 to 9999; 380 "Invalid property value" for another.
    void Value(DateValue value);

    void stepBy(int steps) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

 signals:
    void Change();  // the date is another now, by a person or by code

 protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    QValidator::State validate(QString& text, int& place) const override;

 private:
    // What the parts hold while the box is typed in; not always a day of the calendar.
    struct Parts {
        int year, month, day;
    };
    // The digits of the part that is being typed, and the place of the cursor among them.
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

    std::optional<Parts> m_parts;    // from the first digit until the box is left
    std::optional<Typing> m_typing;  // until the part is closed
    QString m_whole;                 // what is typed over a whole selection
    bool m_handedOn = false;         // the separator behind a full part has been taken care of
};
