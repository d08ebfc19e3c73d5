// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/reports/worker/settings.h"

#include <charconv>
#include <string_view>

#include "platform/base/environment.h"
#include "platform/base/paths.h"
#include "platform/reports/failure.h"

namespace reports::worker {
namespace {

constexpr const char* Memory = "OXC_REPORT_MEMORY";
constexpr const char* Folders = "OXC_REPORT_FOLDERS";

[[noreturn]] void Refuse(const char* name, std::string_view value, const char* wanted) {
    throw RuntimeError(WorkerFailed,
                       std::string(name) + " is \"" + std::string(value) + "\", and must be " + wanted);
}

std::int64_t MegabytesOf(std::string_view text) {
    constexpr std::int64_t Least = 512, Most = 1 << 20;
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || number < Least || number > Most) {
        Refuse(Memory, text, "a number of megabytes from 512 to 1048576");
    }
    return number;
}

std::vector<std::string> FoldersOf(std::string_view list) {
    std::vector<std::string> folders;
    for (std::string_view rest = list; !rest.empty();) {
        const std::string_view folder = rest.substr(0, rest.find(':'));
        rest.remove_prefix(std::min(rest.size(), folder.size() + 1));
        if (!folder.starts_with('/')) {
            Refuse(Folders, list, "absolute paths with \":\" between them");
        }
        folders.emplace_back(folder);
    }
    return folders;
}

}  // namespace

Settings SettingsOfMachine() {
    Settings settings;
    settings.program = ProgramFolder() / "oxc-report";
    if (const std::string memory = EnvironmentText(Memory); !memory.empty()) {
        settings.megabytes = MegabytesOf(memory);
    }
    settings.readable = FoldersOf(EnvironmentText(Folders));
    return settings;
}

}  // namespace reports::worker
