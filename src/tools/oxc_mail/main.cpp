// SPDX-License-Identifier: GPL-3.0-or-later
// oxc-mail: sets the mail profile up, in a window or by commands.
#include "platform/contracts/runtime.h"
#include "platform/posix/program.h"
#include "platform/regfile/registry_file.h"
#include "tools/console.h"
#include "tools/oxc_mail/mail_commands.h"
#include "tools/oxc_mail/mail_window.h"

int main(int argc, char** argv) {
    PrepareProgram();
    try {
        SetRegistry(&SettingsFile());
        const tools::MailArguments arguments = tools::ParseMailArguments({argv + 1, argv + argc});
        if (arguments.command == tools::MailCommand::Window) {
            return tools::ShowMailWindow(argc, argv);
        }
        tools::RunMailCommand(arguments);
        return 0;
    } catch (const tools::MailUsageError& error) {
        tools::ComplainOfUsage("oxc-mail", error.what());
        return 2;
    } catch (...) {
        tools::Complain("oxc-mail", CurrentError().Description());
        return 1;
    }
}
