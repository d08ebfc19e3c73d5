// SPDX-License-Identifier: GPL-3.0-or-later
// The process's entry: sets the real implementations of the platform's interfaces, starts up and runs the
// message loop.
#include <iostream>
#include <string>

#include "app/Main.h"
#include "app/SchedulerService.h"
#include "mail/Delivery.h"
#include "platform/contracts/mapi.h"
#include "platform/contracts/process.h"
#include "platform/contracts/report_engine.h"
#include "platform/mail/book/address_book.h"
#include "platform/mail/system.h"
#include "platform/mail_dialogs/address_book_dialog.h"
#include "platform/posix/program.h"
#include "platform/qt/application.h"
#include "platform/qt/display.h"
#include "platform/qt/messages.h"
#include "platform/qt/qt_loop.h"
#include "platform/qt/qt_prompts.h"
#include "platform/regfile/registry_file.h"
#include "platform/reports/rdl_engine.h"
#include "platform/reports/worker/worker_engine.h"
#include "platform/shell/desktop_shell.h"

namespace {

constexpr const char* Advice = "the scheduler (oxc -sched) runs without one";

// An empty argument becomes "", so that a command line with only empty arguments is not empty.
std::string CommandLine(int argc, char** argv) {
    std::string line;
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        line += (i > 1 ? " " : "") + (argument.empty() ? "\"\"" : argument);
    }
    return line;
}

}  // namespace

int main(int argc, char** argv) {
    PrepareProgram();
    SetCommand(CommandLine(argc, argv));
    if (!Command().empty()) {
        FallBackToOffscreen();
    } else if (!MayHaveDisplay()) {
        std::cerr << "oxc: the editor needs a display, and neither DISPLAY nor WAYLAND_DISPLAY is set; "
                  << Advice << "\n";
        return 1;
    }
    TakeQtMessages();
    const bool isScheduler = !Command().empty();
    if (isScheduler) {
        SchedulerService::Start(SchedulerService::WantsJson(argc, argv));
    }
    AwaitDisplay("oxc", Advice, argv);
    // Any argument means the scheduler, so there is no --version and no --help (sic); Qt takes its options
    // from the environment.
    int qtArgc = 1;
    Application application(qtArgc, argv);
    if (!isScheduler) {
        EndOnSignals();
    }
    QtLoop loop;
    SetLoop(&loop);
    QtPrompts prompts;
    if (HasDisplay()) {
        SetPrompts(&prompts);
        mailer::SetAddressChooser(&ChooseAddresses);
    }
    SetRegistry(&SettingsFile());
    MAPI::SetMailSystem(&MAPI::MailSystem());
    MAPI::SetRefusalHandler(&Global::ReportRefusals);
    DesktopShell shell;
    SetShell(&shell);
    report::SetEngineFactory(&reports::CreateRdlEngine);
    report::SetRunEngineFactory(&reports::worker::CreateMachineWorkerEngine);

    const bool isPolling = Global::Main();
    if (isScheduler) {
        SchedulerService::Serve(isPolling);
    }
    return QApplication::exec();
}
