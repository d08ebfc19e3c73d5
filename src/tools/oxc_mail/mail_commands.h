// What the commands of oxc-mail do; only text goes in and out.
#pragma once

#include <string>

#include "tools/oxc_mail/mail_arguments.h"

namespace tools {

// Runs any command but the window. What is good news goes to standard output; raises RuntimeError with the
// bad news. No text holds the password.
void RunMailCommand(const MailArguments& arguments);

}  // namespace tools
