// SPDX-License-Identifier: GPL-3.0-or-later
// The command line of oxc-schedule.
#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tools {

// The arguments cannot be used. The text says why.
class ScheduleUsageError : public std::runtime_error {
 public:
    using std::runtime_error::runtime_error;
};

struct CommandLine {
    std::string command;             // its words with one blank between them, such as "package add"
    std::vector<std::string> names;  // the arguments that are not options
    // In the given order, without their hyphens; "-p" is "p". An option without a value has an empty text.
    std::vector<std::pair<std::string, std::string>> options;

    bool Has(std::string_view option) const;
    std::optional<std::string> Value(std::string_view option) const;  // the first one
    std::string ValueOr(std::string_view option, const std::string& other) const;
    std::vector<std::string> All(std::string_view option) const;
    // Returns the option as a whole number from `least` to `most`. Raises ScheduleUsageError for any other
    // text.
    std::optional<std::int64_t> Number(std::string_view option, std::int64_t least, std::int64_t most) const;
};

// `arguments` does not hold the program's name. Every command has the options that it understands; any other
// option, a missing value and a wrong number of names raise ScheduleUsageError.
CommandLine ParseCommandLine(const std::vector<std::string>& arguments);

// Returns --limit of a command that prints runs, or 50.
std::int64_t HistoryLimit(const CommandLine& line);

// Splits NAME=VALUE. Raises ScheduleUsageError for a text without a name or without "=".
std::pair<std::string, std::string> ParameterOf(const std::string& argument);

// The commands in the order of the usage, for tests of the guide.
struct KnownCommand {
    std::string words;
    std::vector<std::string> options;  // without their hyphens
};
std::vector<KnownCommand> KnownCommands();

std::string ScheduleUsage();

}  // namespace tools
