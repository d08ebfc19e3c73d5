// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/oxc_schedule/command_line.h"

#include <algorithm>
#include <charconv>

#include "tools/console.h"
#include "tools/oxc_schedule/command_table.h"

namespace tools {
namespace {

struct OptionForm {
    bool isKnown = false, wantsValue = false, mayRepeat = false;
};

// Takes the first option off the front of the list. Returns its word without the marks.
std::string_view TakeForm(std::string_view& rest, OptionForm& form) {
    const std::size_t end = std::min(rest.find(' '), rest.size());
    std::string_view word = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    form = {true, false, word.ends_with('+')};
    word.remove_suffix(form.mayRepeat ? 1 : 0);
    form.wantsValue = word.ends_with('=');
    word.remove_suffix(form.wantsValue ? 1 : 0);
    return word;
}

OptionForm FormOf(const CommandRow& command, std::string_view option) {
    std::string_view rest = command.options;
    while (!rest.empty()) {
        OptionForm form;
        if (TakeForm(rest, form) == option) {
            return form;
        }
    }
    return {};
}

// Takes the command's words off the front of the arguments.
const CommandRow& TakeCommand(const std::vector<std::string>& arguments, std::size_t& at) {
    if (arguments.empty()) {
        throw ScheduleUsageError("no command is given");
    }
    const std::string first = arguments[0] == "-h" ? "--help" : arguments[0];
    at = 1;
    if (const CommandRow* form = FindCommand(first)) {
        return *form;
    }
    if (first != "package" && first != "folder" && first != "options") {
        throw ScheduleUsageError(Quoted(first) + " is no command");
    }
    if (arguments.size() < 2) {
        throw ScheduleUsageError(first + " needs a command of its own, such as " + first +
                                 (first == "options" ? " show" : " list"));
    }
    at = 2;
    if (const CommandRow* form = FindCommand(first + " " + arguments[1])) {
        return *form;
    }
    throw ScheduleUsageError(Quoted(first + " " + arguments[1]) + " is no command");
}

void TakeOption(const CommandRow& form, const std::vector<std::string>& arguments, std::size_t& at,
                CommandLine& line) {
    const std::string& argument = arguments[at];
    const bool isLong = argument.starts_with("--");
    const std::size_t sign = isLong ? argument.find('=') : std::string::npos;
    const std::string shown = argument.substr(0, sign);
    const std::string name = shown.substr(isLong ? 2 : 1);
    const OptionForm option = isLong == (name == "p") ? OptionForm{} : FormOf(form, name);
    if (!option.isKnown) {
        throw ScheduleUsageError(std::string(form.words) + " has no option " + shown);
    }
    if (!option.mayRepeat && line.Has(name)) {
        throw ScheduleUsageError(shown + " is given twice");
    }
    if (!option.wantsValue) {
        if (sign != std::string::npos) {
            throw ScheduleUsageError(shown + " takes no value");
        }
        line.options.emplace_back(name, "");
    } else if (sign != std::string::npos) {
        line.options.emplace_back(name, argument.substr(sign + 1));
    } else if (++at < arguments.size()) {
        line.options.emplace_back(name, arguments[at]);
    } else {
        throw ScheduleUsageError(shown + " needs a value");
    }
}

void CheckNames(const CommandRow& form, const CommandLine& line) {
    if (line.names.size() > form.most) {
        throw ScheduleUsageError(std::string(form.words) + " cannot use " + Quoted(line.names[form.most]));
    }
    const bool isNamedByKey = FormOf(form, "id").isKnown;
    if (line.names.size() < form.least ||
        (isNamedByKey && !form.words.ends_with("history") && line.names.empty() && !line.Has("id"))) {
        throw ScheduleUsageError(std::string(form.words) + " needs " +
                                 (form.words == "add"             ? "a report file"
                                  : form.words == "import"        ? "a file"
                                  : form.words == "folder rename" ? "the old name and the new name"
                                                                  : "a name"));
    }
    if (isNamedByKey && line.names.empty() && line.Has("folder")) {
        throw ScheduleUsageError("--folder goes with a name");
    }
    if (line.Has("json") && line.Has("prometheus")) {
        throw ScheduleUsageError("--json and --prometheus exclude each other");
    }
    if (isNamedByKey && !line.names.empty() && line.Has("id")) {
        throw ScheduleUsageError("a name and --id are given; one of them is enough");
    }
}

}  // namespace

bool CommandLine::Has(std::string_view option) const {
    return Value(option).has_value();
}

std::optional<std::string> CommandLine::Value(std::string_view option) const {
    for (const auto& [name, value] : options) {
        if (name == option) {
            return value;
        }
    }
    return std::nullopt;
}

std::string CommandLine::ValueOr(std::string_view option, const std::string& other) const {
    return Value(option).value_or(other);
}

std::vector<std::string> CommandLine::All(std::string_view option) const {
    std::vector<std::string> values;
    for (const auto& [name, value] : options) {
        if (name == option) {
            values.push_back(value);
        }
    }
    return values;
}

std::optional<std::int64_t> CommandLine::Number(std::string_view option, std::int64_t least,
                                                std::int64_t most) const {
    const std::optional<std::string> text = Value(option);
    if (!text) {
        return std::nullopt;
    }
    std::int64_t number = 0;
    const char* const end = text->data() + text->size();
    const auto read = std::from_chars(text->data(), end, number);
    if (read.ec != std::errc() || read.ptr != end || number < least || number > most) {
        throw ScheduleUsageError("--" + std::string(option) + " needs a whole number from " +
                                 std::to_string(least) + " to " + std::to_string(most) + ", not " +
                                 Quoted(*text));
    }
    return number;
}

CommandLine ParseCommandLine(const std::vector<std::string>& arguments) {
    std::size_t at = 0;
    const CommandRow& form = TakeCommand(arguments, at);
    CommandLine line;
    line.command = form.words;
    bool isOver = false;  // after "--" every argument is a name
    for (; at < arguments.size(); ++at) {
        if (!isOver && arguments[at] == "--") {
            isOver = true;
        } else if (!isOver && arguments[at].size() > 1 && arguments[at].front() == '-') {
            TakeOption(form, arguments, at, line);
        } else {
            line.names.push_back(arguments[at]);
        }
    }
    CheckNames(form, line);
    for (const std::string& parameter : line.All("p")) {
        ParameterOf(parameter);
    }
    return line;
}

std::vector<KnownCommand> KnownCommands() {
    std::vector<KnownCommand> known;
    for (const CommandRow& form : CommandTable) {
        KnownCommand command{std::string(form.words), {}};
        for (std::string_view rest = form.options; !rest.empty();) {
            OptionForm option;
            command.options.emplace_back(TakeForm(rest, option));
        }
        known.push_back(command);
    }
    return known;
}

std::int64_t HistoryLimit(const CommandLine& line) {
    constexpr std::int64_t Usual = 50, Most = 1000000;
    return line.Number("limit", 1, Most).value_or(Usual);
}

std::pair<std::string, std::string> ParameterOf(const std::string& argument) {
    const std::size_t sign = argument.find('=');
    if (sign == std::string::npos || sign == 0) {
        throw ScheduleUsageError("-p needs NAME=VALUE, not " + Quoted(argument));
    }
    return {argument.substr(0, sign), argument.substr(sign + 1)};
}

}  // namespace tools
