// SPDX-License-Identifier: GPL-3.0-or-later
// The command line of oxc-mail.
#pragma once

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "platform/mail/profile/keys.h"

namespace tools {

enum class MailCommand { Window, Help, Version, Show, Set, Password, Check, Test };

struct MailArguments {
    MailCommand command = MailCommand::Window;
    std::vector<std::pair<mailer::KnownKey, std::string>> values;  // of Set
    std::string recipient;                                         // of Test
};

// The arguments cannot be used. The text says why, and never repeats what may be a password.
class MailUsageError : public std::runtime_error {
 public:
    using std::runtime_error::runtime_error;
};

// `arguments` does not hold the program's name. Raises MailUsageError.
MailArguments ParseMailArguments(const std::vector<std::string>& arguments);

// Returns the commands and the keys that `set` takes, on lines that end with a line feed.
std::string MailUsage();

}  // namespace tools
