// SPDX-License-Identifier: GPL-3.0-or-later
// Runs the commands of oxc-mail that need no window.
#pragma once

#include <string>

#include "tools/oxc_mail/mail_arguments.h"

namespace tools {

// Runs any command except Window. Writes success to standard output; raises RuntimeError on a failure. No
// text contains the password.
void RunMailCommand(const MailArguments& arguments);

}  // namespace tools
