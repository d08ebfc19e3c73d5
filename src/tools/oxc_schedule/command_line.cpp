// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/oxc_schedule/command_line.h"
#include "tools/console.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace tools {
namespace {

// `options` are words with a blank between them. A word that ends in = needs a value; one that ends in =+ can
// be given several times.
struct CommandForm {
    std::string_view words;
    std::size_t least, most;  // names
    std::string_view options;
};

constexpr std::size_t Any = 1;

constexpr std::array Commands = {
    CommandForm{"--help", 0, 0, ""},
    CommandForm{"--version", 0, 0, ""},
    CommandForm{"init", 0, 0, "json"},
    CommandForm{"add", 1, 1,
                "folder= title= to=+ subject= message= start= end= at= daily weekdays weekly monthly format= "
                "formula= user= password-stdin p=+ json"},
    CommandForm{
        "set", 0, Any,
        "folder= id= title= move-to= to=+ subject= message= at= daily weekdays weekly monthly format= "
        "formula= user= password-stdin no-login p=+ json"},
    CommandForm{"list", 0, 0, "folder= json"},
    CommandForm{"show", 0, Any, "folder= id= json"},
    CommandForm{"remove", 0, Any, "folder= id= json"},
    CommandForm{"run", 0, Any, "folder= id= json"},
    CommandForm{"refresh", 0, Any, "folder= id= p=+ json"},
    CommandForm{"next", 0, 0, "days= json"},
    CommandForm{"history", 0, Any, "folder= id= limit= json"},
    CommandForm{"package add", 1, 1,
                "report=+ p=+ output= to=+ no-mail subject= message= start= end= at= daily weekly monthly "
                "quarterly format= json"},
    CommandForm{"package list", 0, 0, "json"},
    CommandForm{"package show", 0, Any, "id= json"},
    CommandForm{"package set", 0, Any, "id= report=+ p=+ json"},
    CommandForm{"package remove", 0, Any, "id= json"},
    CommandForm{"package run", 0, Any, "id= json"},
    CommandForm{"package history", 0, Any, "id= limit= json"},
    CommandForm{"folder list", 0, 0, "json"},
    CommandForm{"folder add", 1, 1, "in= json"},
    CommandForm{"folder rename", 2, 2, "json"},
    CommandForm{"folder remove", 1, 1, "json"},
    CommandForm{"package remove-report", 0, Any, "id= report= json"},
    CommandForm{"options show", 0, 0, "json"},
    CommandForm{"options set", 0, 0, "poll= alert= json"},
    CommandForm{"export", 0, 1, "with-passwords json"},
    CommandForm{"import", 1, 1, "dry-run replace json"},
    CommandForm{"status", 0, 0, "warn= critical= since= json prometheus"},
};

const CommandForm* FindCommand(std::string_view words) {
    const auto* const found = std::find_if(Commands.begin(), Commands.end(),
                                           [words](const CommandForm& form) { return form.words == words; });
    return found == Commands.end() ? nullptr : found;
}

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

OptionForm FormOf(const CommandForm& command, std::string_view option) {
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
const CommandForm& TakeCommand(const std::vector<std::string>& arguments, std::size_t& at) {
    if (arguments.empty()) {
        throw ScheduleUsageError("no command is given");
    }
    const std::string first = arguments[0] == "-h" ? "--help" : arguments[0];
    at = 1;
    if (const CommandForm* form = FindCommand(first)) {
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
    if (const CommandForm* form = FindCommand(first + " " + arguments[1])) {
        return *form;
    }
    throw ScheduleUsageError(Quoted(first + " " + arguments[1]) + " is no command");
}

void TakeOption(const CommandForm& form, const std::vector<std::string>& arguments, std::size_t& at,
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

void CheckNames(const CommandForm& form, const CommandLine& line) {
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
    const CommandForm& form = TakeCommand(arguments, at);
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
    for (const CommandForm& form : Commands) {
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
