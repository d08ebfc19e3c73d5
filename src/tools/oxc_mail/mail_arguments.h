// The command line of oxc-mail.
#pragma once

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace tools {

enum class MailCommand { Window, Help, Version, Show, Set, Password, Check, Test };

struct MailArguments {
    MailCommand command = MailCommand::Window;
    std::vector<std::pair<std::string, std::string>> values;  // set: keys as docs write them
    std::string recipient;                                    // test
};

// What was typed makes no sense; the text says what, and never repeats what may be a password.
class MailUsageError : public std::runtime_error {
 public:
    using std::runtime_error::runtime_error;
};

// The arguments without the program's name. Raises MailUsageError.
MailArguments ParseMailArguments(const std::vector<std::string>& arguments);

extern const char* const MailUsage;

}  // namespace tools
