// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/oxc_schedule/checks.h"

#include <unistd.h>

#include <algorithm>
#include <array>

#include "dialogs/ValueReading.h"
#include "execution/RunReport.h"
#include "platform/base/ascii.h"
#include "platform/base/convert.h"
#include "platform/base/date_reader.h"
#include "platform/base/marks.h"
#include "platform/base/paths.h"
#include "platform/base/text.h"
#include "platform/contracts/clock.h"
#include "platform/contracts/regional.h"
#include "platform/mail/base/mail_errors.h"
#include "platform/mail/profile/mail_profile.h"
#include "platform/posix/small_file.h"
#include "scheduler/Frequencies.h"
#include "shared/Global.h"
#include "store/TextConventions.h"
#include "tools/oxc_schedule/command_output.h"

namespace tools {
namespace {

struct FrequencyOption {
    std::string_view option, word;
};

constexpr std::array FrequencyOptions = {FrequencyOption{"daily", Global::frequencies::Daily},
                                         FrequencyOption{"weekdays", Global::frequencies::Weekdays},
                                         FrequencyOption{"weekly", Global::frequencies::Weekly},
                                         FrequencyOption{"monthly", Global::frequencies::Monthly},
                                         FrequencyOption{"quarterly", Global::frequencies::Quarterly}};

int IndexOf(report::Report& report, const std::string& name) {
    for (int n = 1; n <= report.ParameterFieldCount(); ++n) {
        if (SameText(report.Parameter(n).Name(), name)) {
            return n;
        }
    }
    return 0;
}

std::string NamesOf(report::Report& report) {
    std::string names;
    for (int n = 1; n <= report.ParameterFieldCount(); ++n) {
        names += (n == 1 ? "" : ", ") + report.Parameter(n).Name();
    }
    return names.empty() ? "it has none" : "it has " + names;
}

// Both texts are values of the type.
bool SameValue(int valueType, const std::string& left, const std::string& right) {
    try {
        switch (valueType) {
            case report::NumberField:
                return CDbl(left) == CDbl(right);
            case report::BooleanField:
                return CBool(left) == CBool(right);
            case report::DateTimeField:
                return CDate(left) == CDate(right);
            default:
                return left == right;
        }
    } catch (const RuntimeError&) {
        return left == right;
    }
}

void CheckValidValues(const report::ParameterField& field, const std::string& text) {
    const std::vector<std::string> valid = field.ValidValues();
    const int type = field.ValueType();
    if (valid.empty() || std::any_of(valid.begin(), valid.end(), [type, &text](const std::string& value) {
            return SameValue(type, value, text);
        })) {
        return;
    }
    constexpr std::size_t MostNamed = 20;
    std::string list;
    for (std::size_t i = 0; i < std::min(valid.size(), MostNamed); ++i) {
        list += (i == 0 ? "" : ", ") + valid[i];
    }
    Refuse("The value " + Quoted(text) + " of the parameter " + Quoted(field.Name()) +
           " is not one of its values: " + list + (valid.size() > MostNamed ? ", ..." : ""));
}

void RefuseUnknown(report::Report& report, const NamedValues& given) {
    std::vector<int> seen;
    for (const auto& [name, value] : given) {
        const int index = IndexOf(report, name);
        if (index == 0) {
            Refuse("The report has no parameter " + Quoted(name) + "; " + NamesOf(report));
        }
        if (std::find(seen.begin(), seen.end(), index) != seen.end()) {
            Refuse("The parameter " + Quoted(name) + " is given twice");
        }
        seen.push_back(index);
    }
}

std::string ValueFor(const report::ParameterField& field, const NamedValues& given,
                     const NamedValues& stored) {
    for (const NamedValues* values : {&given, &stored}) {
        for (const auto& [name, value] : *values) {
            if (SameText(name, field.Name())) {
                return value;
            }
        }
    }
    const std::vector<std::string> defaults = field.DefaultValues();
    if (defaults.empty()) {
        Refuse("The parameter " + Quoted(field.Name()) + " has no default value: give it with -p " +
               Quoted(field.Name() + "=VALUE"));
    }
    return defaults.front();
}

DateValue DateOption(const CommandLine& line, const char* option, DateValue otherwise) {
    const auto text = line.Value(option);
    if (!text) {
        return otherwise;
    }
    const std::optional<DateValue> day = DayOf(*text);
    if (!day) {
        Refuse("The " + std::string(option) + " date " + Quoted(*text) +
               " is not a date; write it as year-month-day");
    }
    return *day;
}

}  // namespace

void RefuseControls(const std::string& what, const std::string& text) {
    if (HasControls(text) || !IsUtf8(text)) {
        Refuse(what + " " + Quoted(WithoutControls(ValidUtf8(text))) +
               " contains a control character or a byte that is not UTF-8");
    }
}

void RefuseOtherBytes(const std::string& what, const std::string& text) {
    if (!IsUtf8(text)) {
        Refuse(what + " " + Quoted(WithoutControls(ValidUtf8(text))) + " contains a byte that is not UTF-8");
    }
}

void RefuseMark(const std::string& what, const std::string& text) {
    if (text.find('\'') != std::string::npos) {
        Refuse(what + " " + Quoted(text) + " contains an apostrophe, which cannot be stored");
    }
}

NamedValues GivenParameters(const CommandLine& line) {
    NamedValues given;
    for (const std::string& argument : line.All("p")) {
        given.push_back(ParameterOf(argument));
    }
    return given;
}

std::string RequiredOption(const CommandLine& line, const std::string& option) {
    const auto value = line.Value(option);
    if (!value) {
        throw ScheduleUsageError(line.command + " needs --" + option);
    }
    return *value;
}

bool HasChanged(const std::string& original, const std::string& copy) {
    constexpr std::size_t Largest = 64 << 20;
    const auto now = ReadSmallFile(paths::ToMachine(original), Largest);
    return now && now != ReadSmallFile(paths::ToMachine(copy), Largest);
}

report::Report& OpenReportFile(const std::string& path) {
    try {
        return Global::OpenReport(path);
    } catch (const RuntimeError& error) {
        const std::string shown = paths::ForUser(path);
        Refuse(Replace(error.Description(), WithoutMarks(shown), shown));
    }
}

NamedValues CheckedParameters(report::Report& report, const NamedValues& given, const NamedValues& stored) {
    RefuseUnknown(report, given);
    Global::ClearReportParameters();
    NamedValues values;
    for (int n = 1; n <= report.ParameterFieldCount(); ++n) {
        const report::ParameterField& field = report.Parameter(n);
        const std::string text = ValueFor(field, given, stored);
        try {
            Global::HandOverParameter(report, n, text, Global::OtherFieldRule::HandOver);
        } catch (const RuntimeError& error) {
            Refuse(ValueRefusal(field, text, error));
        }
        CheckValidValues(field, text);
        values.emplace_back(field.Name(), WithoutMark(text));
    }
    return values;
}

mailer::AddressBook BookOfProfile() {
    try {
        return mailer::AddressBook(mailer::ReadMailProfile(mailer::MailProfilePath()).addressBook);
    } catch (const RuntimeError& error) {
        if (error.Number() != mailer::ErrNoProfile) {
            throw;
        }
        return mailer::AddressBook({});  // addresses can be checked without a profile
    }
}

std::string CheckedRecipients(const std::vector<std::string>& lists) {
    mailer::AddressBook book = BookOfProfile();
    std::string stored;
    for (const std::string& list : lists) {
        stored += cmFunc::CleanedRecipients(list);
    }
    if (stored.empty()) {
        Refuse("There is no recipient");
    }
    // Every name is looked up, also one that CountRecipients (store/TextConventions.h) or the split of
    // platform/reports/export_mail would pass over, and without the blanks around it.
    for (std::size_t start = 0; start < stored.size();) {
        const std::size_t end = stored.find(';', start);
        const std::string name(Trim(std::string_view(stored).substr(start, end - start)));
        if (name.empty()) {
            Refuse("A recipient in " + Quoted(stored) + " is empty");
        }
        book.Resolve(name);
        start = end + 1;
    }
    return stored;
}

std::string CheckedFormat(const std::string& format, Global::Runner runner) {
    const Global::FormatList list = runner == Global::Runner::Single ? Global::FormatList::Schedules
                                                                     : Global::FormatList::PackageCommands;
    for (const Global::OfferedFormat& offered : Global::OfferedFormats(list)) {
        if (SameAscii(report::RowOf(offered.format).word, format)) {
            return std::string(offered.word);
        }
    }
    if (!Global::RecogniseFormat(runner, format)) {
        Refuse("The format " + Quoted(format) + " is not known; pdf, html, xls, doc and rtf are");
    }
    return format;
}

std::string CheckedTime(const std::string& time) {
    constexpr std::string_view Mask = "##:##";
    const bool isTime = time.size() == Mask.size() &&
                        std::equal(time.begin(), time.end(), Mask.begin(), [](char c, char mask) {
                            return mask == '#' ? IsAsciiDigit(c) : c == mask;
                        });
    try {
        if (isTime) {
            CDate(time);
            return time;
        }
    } catch (const RuntimeError&) {
        // refused below
    }
    Refuse("The time " + Quoted(time) + " is not a time from 00:00 to 23:59");
}

std::optional<DateValue> DayOf(const std::string& text) {
    constexpr int FirstYear = 1000;  // years of four digits compare as texts
    const std::optional<DateValue> date = ReadDateText(Trim(text), Regional());
    const bool isDay = date && text.find(':') == std::string::npos && TimePart(*date).SecondOfDay() == 0 &&
                       *date != DateValue() && Year(*date) >= FirstYear;
    return isDay ? date : std::nullopt;
}

DateRange CheckedDates(const CommandLine& line) {
    const DateValue start = DateOption(line, "start", Today());
    const DateValue end = DateOption(line, "end", CDate(LastDay));
    DateRange range{cmFunc::FormatDateText(start), cmFunc::FormatDateText(end)};
    if (start >= end) {
        Refuse("The end date " + range.end + " is not later than the start date " + range.start);
    }
    if (end < Today()) {
        Refuse("The end date " + range.end + " is over: there would be no run");
    }
    return range;
}

std::string FrequencyOf(const CommandLine& line, std::string_view otherwise) {
    std::string_view word;
    for (const FrequencyOption& known : FrequencyOptions) {
        if (line.Has(known.option)) {
            if (!word.empty()) {
                throw ScheduleUsageError("one frequency is enough");
            }
            word = known.word;
        }
    }
    return std::string(word.empty() ? otherwise : word);
}

std::string GivenPath(const std::string& text) {
    return text.empty() ? "" : paths::FromMachine(text);
}

std::string CheckedOutputFolder(const std::string& systemPath) {
    if (systemPath.empty()) {
        Refuse("The output folder is empty");
    }
    const std::string stored = systemPath.ends_with('\\') ? systemPath : systemPath + "\\";
    RefuseMark("The output folder", stored);
    const std::filesystem::path folder = paths::ToMachine(stored);
    std::error_code ignored;
    if (!std::filesystem::is_directory(folder, ignored)) {
        Refuse("The output folder " + Quoted(folder.string()) + " does not exist");
    }
    if (access(folder.c_str(), W_OK | X_OK) != 0) {
        Refuse("The output folder " + Quoted(folder.string()) + " cannot be written");
    }
    return stored;
}

}  // namespace tools
