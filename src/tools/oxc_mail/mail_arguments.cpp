// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/oxc_mail/mail_arguments.h"

#include <string_view>

#include "platform/base/named.h"

namespace tools {
namespace {

struct CommandWord {
    std::string_view name;
    MailCommand command;
};

constexpr CommandWord CommandWords[] = {
    {"--help", MailCommand::Help}, {"-h", MailCommand::Help},   {"--version", MailCommand::Version},
    {"show", MailCommand::Show},   {"set", MailCommand::Set},   {"password", MailCommand::Password},
    {"check", MailCommand::Check}, {"test", MailCommand::Test},
};
static_assert(NamesDiffer(CommandWords));

MailCommand CommandOf(const std::string& word) {
    for (const CommandWord& known : CommandWords) {
        if (word == known.name) {
            return known.command;
        }
    }
    throw MailUsageError("\"" + word + "\" is no command");
}

std::pair<mailer::KnownKey, std::string> Assignment(const std::string& argument) {
    const std::size_t sign = argument.find('=');
    if (sign == std::string::npos || sign == 0) {
        throw MailUsageError("set needs Key=Value");
    }
    const std::string name = argument.substr(0, sign);
    const mailer::ProfileKey* key = mailer::FindProfileKey(name);
    if (key == nullptr) {
        throw MailUsageError("the mail profile has no key \"" + name + "\"");
    }
    if (key->type == mailer::ValueType::Secret) {
        throw MailUsageError("a password on the command line can be read by others; use: oxc-mail password");
    }
    return {*key, argument.substr(sign + 1)};
}

// Returns the keys that `set` takes for these transports, on lines of their own under the heading.
std::string KeysFor(mailer::UsedBy usedBy, std::string_view heading) {
    constexpr std::size_t LongestLine = 100;
    std::string text;
    std::string line = "      " + std::string(heading);
    std::string_view between;
    for (const mailer::ProfileKey& key : mailer::ProfileKeys) {
        if (key.usedBy != usedBy || key.type == mailer::ValueType::Secret) {
            continue;
        }
        std::string item(key.name);
        if (!key.words.empty()) {
            item += " (" + Alternatives(key) + ")";
        }
        line += between;
        if (line.size() + item.size() + 2 > LongestLine) {
            text += line + "\n";
            line = std::string(12, ' ');
        } else if (!between.empty()) {
            line += ' ';
        }
        line += item;
        between = ",";
    }
    return text + line + "\n";
}

}  // namespace

std::string MailUsage() {
    using mailer::UsedBy;
    std::string text =
        "oxc-mail                      opens the window (needs a display)\n"
        "oxc-mail show                 shows the mail profile; the password only as set or not set\n"
        "oxc-mail set KEY=VALUE...     changes the mail profile; KEY= alone takes a key away\n"
        "oxc-mail password             asks for the password and stores it; an empty one takes it away\n"
        "oxc-mail check                tries server and login, folder or program, and the address book, and\n"
        "                              looks at the address of alerts; nothing is sent\n"
        "oxc-mail test RECIPIENT       sends a test message to an address or a name of the address book\n"
        "oxc-mail --help | --version\n"
        "\n"
        "Keys:\n";
    text += KeysFor(UsedBy::AllTransports, "");
    for (const UsedBy usedBy : {UsedBy::SmtpAndSendmail, UsedBy::Smtp, UsedBy::Outbox, UsedBy::Sendmail}) {
        text += KeysFor(usedBy, std::string(TransportsOf(usedBy)) + ": ");
    }
    return text +
           "\n"
           "The password is asked for at the terminal, or is the one line of standard input when that is "
           "none.\n"
           "Exit code: 0 done; 1 the profile, the server or the machine is at fault; 2 wrong usage.\n";
}

MailArguments ParseMailArguments(const std::vector<std::string>& arguments) {
    MailArguments result;
    if (arguments.empty()) {
        return result;
    }
    result.command = CommandOf(arguments[0]);
    const std::size_t count = arguments.size() - 1;
    if (result.command == MailCommand::Set) {
        if (count == 0) {
            throw MailUsageError("set needs Key=Value");
        }
        for (std::size_t n = 1; n <= count; ++n) {
            result.values.push_back(Assignment(arguments[n]));
        }
    } else if (result.command == MailCommand::Test) {
        if (count != 1 || arguments[1].empty()) {
            throw MailUsageError("test needs one recipient");
        }
        result.recipient = arguments[1];
    } else if (count != 0) {
        throw MailUsageError("\"" + arguments[0] + "\" takes no arguments");
    }
    return result;
}

}  // namespace tools
