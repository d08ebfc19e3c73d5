// SPDX-License-Identifier: GPL-3.0-or-later
// The command line of oxc-store.
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

namespace tools {

enum class StoreCommand { Help, Version, Create, Copy, Link, Unlink, Check, Backup };

struct StoreArguments {
    StoreCommand command = StoreCommand::Help;
    std::string to, from, passwordCommand, output;
    std::string place;  // FILE or CONNECT; empty: the live file
    std::vector<std::string> editors, schedulers;
    bool isForced = false;
};

// The arguments cannot be used. The text says why, and never repeats what may be a password.
class StoreUsageError : public std::runtime_error {
 public:
    using std::runtime_error::runtime_error;
};

// `arguments` does not hold the program's name. Raises StoreUsageError.
StoreArguments ParseStoreArguments(const std::vector<std::string>& arguments);

// Returns the commands, on lines that end with a line feed.
std::string StoreUsage();

}  // namespace tools
