// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/oxc_store/store_arguments.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "platform/base/ascii.h"

namespace tools {
namespace {

struct Command {
    std::string_view word;
    StoreCommand command;
    std::vector<std::string_view> options;
    bool takesPlace;
};

const std::array<Command, 9> Commands{{
    {"--help", StoreCommand::Help, {}, false},
    {"-h", StoreCommand::Help, {}, false},
    {"--version", StoreCommand::Version, {}, false},
    {"create", StoreCommand::Create, {"--to", "--editor", "--scheduler"}, false},
    {"copy", StoreCommand::Copy, {"--from", "--to"}, false},
    {"link", StoreCommand::Link, {"--to", "--password-command", "--force"}, true},
    {"unlink", StoreCommand::Unlink, {"--force"}, true},
    {"check", StoreCommand::Check, {}, true},
    {"backup", StoreCommand::Backup, {"-o"}, true},
}};

const Command& CommandOf(const std::string& word) {
    const auto* const found = std::find_if(Commands.begin(), Commands.end(),
                                           [&word](const Command& known) { return known.word == word; });
    if (found == Commands.end()) {
        throw StoreUsageError("\"" + word + "\" is no command");
    }
    return *found;
}

void SetOption(StoreArguments& result, std::string_view option, const std::string& value) {
    if (option == "--editor") {
        result.editors.push_back(value);
    } else if (option == "--scheduler") {
        result.schedulers.push_back(value);
    } else {
        std::string& single = option == "--to"                 ? result.to
                              : option == "--from"             ? result.from
                              : option == "--password-command" ? result.passwordCommand
                                                               : result.output;
        if (!single.empty()) {
            throw StoreUsageError(std::string(option) + " is given twice");
        }
        single = value;
    }
}

void Require(const std::string& value, std::string_view word, std::string_view option) {
    if (value.empty()) {
        throw StoreUsageError(std::string(word) + " needs " + std::string(option));
    }
}

}  // namespace

std::string StoreUsage() {
    return "oxc-store create --to CONNECT [--editor ROLE]... [--scheduler ROLE]...\n"
           "                              makes the tables of a team's store in a database, or brings them "
           "up to\n"
           "                              date, and gives each role the rights that it needs\n"
           "oxc-store copy --from FILE|CONNECT --to FILE|CONNECT\n"
           "                              copies all rows and the report files to an empty store, all or "
           "nothing\n"
           "oxc-store link --to CONNECT [--password-command CMD] [--force] [FILE]\n"
           "                              makes the data file a link to the store; a database in its place "
           "is kept\n"
           "                              under the name FILE.embedded. --force: although a scheduler runs "
           "there\n"
           "oxc-store unlink [--force] [FILE]\n"
           "                              takes the link away and puts FILE.embedded back\n"
           "oxc-store check [FILE|CONNECT]\n"
           "                              tries the store: version, rights, claims, time of an answer, "
           "clock\n"
           "oxc-store backup -o FILE [FILE|CONNECT]\n"
           "                              copies the store to a new database file, and the report files to "
           "the\n"
           "                              folder Cache beside it\n"
           "oxc-store --help | --version\n"
           "\n"
           "CONNECT is Host=NAME;Database=NAME[;Port=NUMBER][;Username=NAME][;Password=TEXT][;SSL "
           "Mode=WORD]\n"
           "[;SSL Root Cert=FILE]. FILE is a database or a link; without it the data file of this "
           "application's\n"
           "folder is meant. Without a password ~/.pgpass is asked.\n"
           "Exit code: 0 done; 1 the store, the server or the machine is at fault; 2 wrong usage.\n";
}

StoreArguments ParseStoreArguments(const std::vector<std::string>& arguments) {
    StoreArguments result;
    if (arguments.empty()) {
        throw StoreUsageError("a command is missing");
    }
    const Command& command = CommandOf(arguments[0]);
    result.command = command.command;
    for (std::size_t at = 1; at < arguments.size(); ++at) {
        const std::string& argument = arguments[at];
        const bool isOption =
            std::find(command.options.begin(), command.options.end(), argument) != command.options.end();
        if (isOption && argument == "--force") {
            result.isForced = true;
        } else if (isOption) {
            if (at + 1 == arguments.size() || arguments[at + 1].empty()) {
                throw StoreUsageError(argument + " needs a value");
            }
            if (HasControls(arguments[at + 1])) {
                throw StoreUsageError("the value of " + argument + " holds a control character");
            }
            SetOption(result, argument, arguments[++at]);
        } else if (argument.starts_with("-")) {
            throw StoreUsageError(arguments[0] + " has no option " + argument.substr(0, argument.find('=')));
        } else if (!command.takesPlace || !result.place.empty() || argument.empty()) {
            throw StoreUsageError(arguments[0] + " takes no more arguments");
        } else {
            result.place = argument;
        }
    }
    for (const std::string& role : result.editors) {
        if (std::find(result.schedulers.begin(), result.schedulers.end(), role) != result.schedulers.end()) {
            throw StoreUsageError("the role " + role + " is either an editor or a scheduler");
        }
    }
    if (result.command == StoreCommand::Create || result.command == StoreCommand::Link ||
        result.command == StoreCommand::Copy) {
        Require(result.to, arguments[0], "--to");
    }
    if (result.command == StoreCommand::Copy) {
        Require(result.from, arguments[0], "--from");
    } else if (result.command == StoreCommand::Backup) {
        Require(result.output, arguments[0], "-o");
    }
    return result;
}

}  // namespace tools
