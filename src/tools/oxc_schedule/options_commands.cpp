// SPDX-License-Identifier: GPL-3.0-or-later
// The commands on the settings that the window Options edits.
#include <string>

#include "platform/contracts/registry.h"
#include "platform/mail/book/address_book.h"
#include "shared/Global.h"
#include "shared/ShellMod.h"
#include "tools/oxc_schedule/checks.h"
#include "tools/oxc_schedule/command_output.h"
#include "tools/oxc_schedule/commands.h"

namespace tools {
namespace {

QJsonObject Describe() {
    return {{"poll", Global::PollSeconds}, {"alert", Json(Global::AlertWho)}};
}

std::string CheckedAlert(const std::string& text) {
    RefuseControls("The address", text);
    if (!text.empty()) {
        BookOfProfile().Resolve(text);
    }
    return text;
}

// A failure to write is otherwise only a line on standard error.
void Save(const char* name, const std::string& value) {
    ShellMod::WriteSetting(name, value);
    if (ShellMod::RequireSetting(HKEY_LOCAL_MACHINE, ShellMod::SettingsKey, name, "") != value) {
        Refuse("The setting " + Quoted(name) + " cannot be written");
    }
}

}  // namespace

void ShowOptions(const CommandLine& line) {
    if (line.Has("json")) {
        return Print(Describe());
    }
    Print("Polling interval:  " + std::to_string(Global::PollSeconds) +
          " seconds\nOn error alert:    " + (Global::AlertWho.empty() ? "nobody" : Global::AlertWho) + "\n");
}

void SetOptions(const CommandLine& line) {
    constexpr std::int64_t Most = 32767;  // the system converts it to 16 bits
    const auto poll = line.Number("poll", 0, Most);
    const auto alert = line.Value("alert");
    if (!poll && !alert) {
        throw ScheduleUsageError("options set needs --poll or --alert");
    }
    const std::string who = alert ? CheckedAlert(*alert) : "";
    if (poll) {
        Save("Poll", std::to_string(*poll));
        Global::PollSeconds = static_cast<std::int16_t>(*poll);
    }
    if (alert) {
        Save("AlertWho", who);
        Global::AlertWho = who;
    }
    PrintChange(line,
                "The options are stored. A running scheduler takes them at its next start, or with SIGHUP.\n",
                Describe());
}

}  // namespace tools
