// The texts that statements are made of: dates, quotes kept out, fields picked out of a text.
#pragma once

#include <string>

#include "platform/contracts/dates.h"
#include "platform/controls/editable_text.h"

namespace cmFunc {

// year-month-day, whatever the regional settings: 2002-03-07. Dates stored so compare as texts.
std::string FormatDateText(DateValue value);

// Takes every ' out of the box's text, silently: statements put values between these marks and double none.
void StripQuotes(EditableText& box);

// Field `number` (from 1) of a text cut by a one-character delimiter. Beyond the last field the count begins
// again at the first: field 3 of a:b is a. Empty on any error.
std::string GetDelimitedField(const std::string& text, int number, const std::string& delimiter);

// The package's number in the key of its item, of whichever view: what stands after the last ":". Names may
// hold that character.
std::string PackageOfKey(const std::string& key);

// How many names a ";"-separated list holds: one for each ";", at least one.
int CountRecipients(const std::string& list);

// Lets events run until that many seconds have passed.
void PauseSeconds(double seconds);

}  // namespace cmFunc
