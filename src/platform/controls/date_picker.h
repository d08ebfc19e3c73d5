// A date with a calendar to choose it from, shown as the region writes dates.
#pragma once

#include <QDateEdit>

#include "platform/dates.h"

class DTPicker : public QDateEdit {
    Q_OBJECT
 public:
    explicit DTPicker(QWidget* parent = nullptr);

    DateValue Value() const;  // a day at midnight
    // The day of `value`. The years 100 to 9999; 380 "Invalid property value" for another.
    void Value(DateValue value);

 signals:
    void Change();  // the date is another now, by a person or by code

 protected:
    void keyPressEvent(QKeyEvent* event) override;

 private:
    void OpenCalendar();
};
