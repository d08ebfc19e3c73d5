// SPDX-License-Identifier: GPL-3.0-or-later
// Year, month and day as they are typed.
#pragma once

#include <QDate>
#include <QDateTimeEdit>
#include <QString>

#include "platform/base/date_reader.h"

namespace typed_date {

inline constexpr int FirstYear = 100, LastYear = 9999, Months = 12, LongestMonth = 31;

inline bool IsDigit(QChar character) {
    return character >= '0' && character <= '9';
}

inline int PlacesOf(QDateTimeEdit::Section section) {
    return section == QDateTimeEdit::YearSection ? 4 : 2;
}

inline int LargestOf(QDateTimeEdit::Section section) {
    return section == QDateTimeEdit::YearSection    ? LastYear
           : section == QDateTimeEdit::MonthSection ? Months
                                                    : LongestMonth;
}

// A year of one or two digits lies in the century that conversions take it for.
inline int NumberOf(QDateTimeEdit::Section section, const QString& digits) {
    const int number = digits.toInt();
    if (section != QDateTimeEdit::YearSection || digits.isEmpty()) {
        return number;
    }
    return FullYear(number, static_cast<int>(digits.size()));
}

inline bool Fits(QDateTimeEdit::Section section, int number) {
    return number >= (section == QDateTimeEdit::YearSection ? FirstYear : 1) && number <= LargestOf(section);
}

template <typename Held>
auto& NumberIn(Held& parts, QDateTimeEdit::Section section) {
    return section == QDateTimeEdit::YearSection    ? parts.year
           : section == QDateTimeEdit::MonthSection ? parts.month
                                                    : parts.day;
}

template <typename Held>
QDate DayOf(const Held& parts) {
    return {parts.year, parts.month, parts.day};  // an invalid one when there is no such day
}

}  // namespace typed_date
