// SPDX-License-Identifier: GPL-3.0-or-later
// oxc-schedule: makes, changes, lists and runs schedules and packages from a shell, without a display.
#include <QtCore/QCoreApplication>

#include "mail/Delivery.h"
#include "platform/contracts/mapi.h"
#include "platform/contracts/regional.h"
#include "platform/contracts/report_engine.h"
#include "platform/mail/system.h"
#include "platform/posix/program.h"
#include "platform/regfile/registry_file.h"
#include "platform/reports/rdl_engine.h"
#include "platform/reports/worker/worker_engine.h"
#include "tools/console.h"
#include "tools/oxc_schedule/command_line.h"
#include "tools/oxc_schedule/command_output.h"
#include "tools/oxc_schedule/commands.h"

int main(int argc, char** argv) {
    PrepareProgram();
    // Qt's own warnings would add lines.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    const QCoreApplication application(argc, argv);
    KeepNumbersPlain();
    SetRegistry(&SettingsFile());
    MAPI::SetMailSystem(&MAPI::MailSystem());
    MAPI::SetRefusalHandler(&Global::ReportRefusals);
    report::SetEngineFactory(&reports::CreateRdlEngine);
    report::SetRunEngineFactory(&reports::worker::CreateMachineWorkerEngine);
    try {
        return tools::RunScheduleCommand(tools::ParseCommandLine({argv + 1, argv + argc}));
    } catch (const tools::ScheduleUsageError& error) {
        tools::ComplainOfUsage("oxc-schedule", error.what());
        return 2;
    } catch (const tools::Refusal& refusal) {
        tools::Complain("oxc-schedule", refusal.Text());
        return 1;
    } catch (...) {
        tools::Complain("oxc-schedule", CurrentError().Description());
        return 1;
    }
}
