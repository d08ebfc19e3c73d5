// SPDX-License-Identifier: GPL-3.0-or-later
// Text conventions of statements and stored lists: dates, quotes, delimited fields.
#pragma once

#include <string>
#include <vector>

#include "platform/contracts/dates.h"
#include "platform/controls/editable_text.h"

namespace cmFunc {

// Returns year-month-day, 2002-03-07, in every region. Stored in this form, dates compare as texts.
// MomentText (platform/base/moment_text.h) gives a year below 1000 four digits; this text gives it three, as
// the rows of existing databases have it.
std::string FormatDateText(DateValue value);

// Returns year-month-day hour:minute:second, the moment of a history row. Its day is the text of
// FormatDateText.
std::string FormatMomentText(DateValue value);

// Removes every ' from the box's text without a message: statements put values between these marks and do not
// double them.
void StripQuotes(EditableText& box);

// Returns the list of recipients without ' marks and with ";" at its end. An empty list stays empty.
std::string CleanedRecipients(const std::string& list);

// Returns field `number` (from 1) of a text cut at a one-character delimiter. After the last field the count
// starts again at the first: field 3 of a:b is a. A delimiter at the very start of the text does not end a
// field. Never fails; an empty field gives an empty text.
std::string GetDelimitedField(const std::string& text, int number, const std::string& delimiter);

// Returns the package's number from the key of its item in any view: the text after the last ":". Names may
// contain ":".
std::string PackageOfKey(const std::string& key);

// Returns how many names a ";"-separated list holds: as many as it has ";", at least one. The name after the
// last ";" does not count. Mail that the engine sends itself splits the list in another way:
// platform/reports/export_mail keeps the last name, and tools/oxc_schedule/checks looks every one up.
int CountRecipients(const std::string& list);

// Returns the names that CountRecipients counts. A name may be empty.
std::vector<std::string> RecipientsOf(const std::string& list);

// Lets events run until this many seconds, rounded up, have passed.
void PauseSeconds(double seconds);

}  // namespace cmFunc
