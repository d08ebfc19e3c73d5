// SPDX-License-Identifier: GPL-3.0-or-later
// Checks what is to be stored in a schedule or a package. Each refusal names the value and the cause.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "execution/ExportFormat.h"
#include "platform/contracts/dates.h"
#include "platform/contracts/report_engine.h"
#include "platform/mail/book/address_book.h"
#include "tools/oxc_schedule/command_line.h"
#include "tools/oxc_schedule/records.h"

namespace tools {

// The end that the wizards store for a schedule without one.
inline constexpr const char* LastDay = "3000-12-31";

// Refuses a text with control characters or with bytes that are not UTF-8, which a name cannot hold.
void RefuseControls(const std::string& what, const std::string& text);
// Refuses a text that is not UTF-8.
void RefuseOtherBytes(const std::string& what, const std::string& text);
// Refuses a text with the mark '. `what` names it in the sentence, such as "The user".
void RefuseMark(const std::string& what, const std::string& text);

// Returns the parameters of the options -p.
NamedValues GivenParameters(const CommandLine& line);

// Returns the option. Raises ScheduleUsageError if it is not given.
std::string RequiredOption(const CommandLine& line, const std::string& option);

// Returns true if the report file, a path of the system, is there and its copy holds something else.
bool HasChanged(const std::string& original, const std::string& copy);

// Opens the report file, a path of the system, and makes it the current report. Raises as the engine does.
report::Report& OpenReportFile(const std::string& path);

// Returns the name and the stored text of every parameter of the report, in its order: the given value, else
// the stored one, else the first default value. A given name that the report does not have, a value that it
// does not take and a parameter without a value are refused; a stored name that it does not have is left out.
NamedValues CheckedParameters(report::Report& report, const NamedValues& given,
                              const NamedValues& stored = {});

// Returns the address book of the mail profile, an empty one without a profile.
mailer::AddressBook BookOfProfile();

// Returns the list as it is stored, with ";" at its end. Refuses an empty list and a recipient that is
// neither an address nor a name of the profile's address book.
std::string CheckedRecipients(const std::vector<std::string>& lists);

// Returns the word that is stored for pdf, html, xls, doc or rtf, or for a word that the runner knows.
std::string CheckedFormat(const std::string& format, Global::Runner runner);

std::string CheckedTime(const std::string& time);  // HH:MM

// Returns the day of a date without a time, year-month-day or in the order of the region, from the year 1000
// on. Returns nullopt for any other text.
std::optional<DateValue> DayOf(const std::string& text);

struct DateRange {
    std::string start, end;  // as they are stored
};
// Takes --start, else today, and --end, else the end that the wizards store. The end must be later, and not
// be over.
DateRange CheckedDates(const CommandLine& line);

// Returns the stored word of the given frequency option, or `otherwise`. Raises ScheduleUsageError for two.
std::string FrequencyOf(const CommandLine& line, std::string_view otherwise);

// Returns the path of the system for a path that the user gives. An empty one stays empty.
std::string GivenPath(const std::string& text);

// Returns the folder as it is stored, with its backslash. Refuses a folder that is missing or
// write-protected.
std::string CheckedOutputFolder(const std::string& systemPath);

}  // namespace tools
