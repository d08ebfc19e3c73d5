// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/regfile/autostart.h"

#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <system_error>
#include <utility>
#include <vector>

#include "platform/base/ascii.h"
#include "platform/base/database_files.h"
#include "platform/base/environment.h"
#include "platform/base/journal.h"
#include "platform/base/paths.h"
#include "platform/base/text.h"
#include "platform/contracts/prompts.h"
#include "platform/posix/atomic_file.h"
#include "platform/posix/service_notify.h"

namespace {

namespace fs = std::filesystem;

// The application's folder may have quotes in its name: up to the name of its program all is one path. Empty
// for any other command line; else the quotes around the path are taken off the front with it.
std::string TakeQuotedOwnProgram(std::string_view& commandLine) {
    constexpr std::string_view End = "\\oxc.exe\"";
    for (std::size_t at = 1; at + End.size() <= commandLine.size() && commandLine.front() == '"'; ++at) {
        const std::size_t after = at + End.size();
        const bool isWhole = after == commandLine.size() || commandLine[after] == ' ';
        if (isWhole && SameText(commandLine.substr(at, End.size()), End)) {
            std::string path(commandLine.substr(1, after - 2));
            commandLine.remove_prefix(after);
            return path;
        }
    }
    return {};
}

// Splits at blanks outside double quotes.
std::vector<std::string> Pieces(std::string_view commandLine) {
    std::vector<std::string> pieces;
    if (std::string program = TakeQuotedOwnProgram(commandLine); !program.empty()) {
        pieces.push_back(std::move(program));
    }
    bool isQuoted = false;
    bool isOpen = false;
    for (const char character : commandLine) {
        if (character == ' ' && !isQuoted) {
            isOpen = false;
            continue;
        }
        if (!isOpen) {
            pieces.emplace_back();
            isOpen = true;
        }
        if (character == '"') {
            isQuoted = !isQuoted;
        } else {
            pieces.back() += character;
        }
    }
    return pieces;
}

std::string_view FileName(std::string_view path) {
    const std::size_t last = path.find_last_of("\\/");
    return last == std::string_view::npos ? path : path.substr(last + 1);
}

// Quotes an argument twice, as desktop entries need it: for the command line and for the file. Line breaks
// would start another key.
std::string QuotedForEntry(std::string_view argument) {
    const bool isPlain =
        !argument.empty() && std::all_of(argument.begin(), argument.end(), [](char character) {
            return IsAsciiLetterOrDigit(character) || static_cast<unsigned char>(character) >= 0x80 ||
                   std::string_view("/-_.,:+=@").find(character) != std::string_view::npos;
        });
    if (isPlain) {
        return std::string(argument);
    }
    std::string quoted = "\"";
    for (const char character : argument) {
        if (character == '\\') {
            quoted += "\\\\\\\\";
        } else if (character == '"' || character == '`' || character == '$') {
            quoted += std::string("\\\\") + character;
        } else if (character == '%') {
            quoted += "%%";
        } else {
            quoted += static_cast<unsigned char>(character) < ' ' ? ' ' : character;
        }
    }
    return quoted + '"';
}

bool CanStandInEntry(std::string_view path) {
    for (std::size_t at = 0; at < path.size();) {
        const Character character = CharacterAt(path, at);
        if (character.code < U' ' || character.code >= NoCharacter) {
            return false;
        }
        at += character.length;
    }
    return true;
}

bool IsProgram(const fs::path& path) {
    std::error_code error;
    return fs::is_regular_file(path, error) && access(path.c_str(), X_OK) == 0;
}

// Returns the installed program: beside the running one, else where the shell finds it.
fs::path InstalledProgram() {
    fs::path beside = ProgramFolder() / "oxc";
    if (IsProgram(beside)) {
        return beside;
    }
    const std::string list = EnvironmentText("PATH");
    std::string_view rest = list;
    while (!rest.empty()) {
        const std::string_view folder = rest.substr(0, rest.find(':'));
        rest.remove_prefix(std::min(rest.size(), folder.size() + 1));
        fs::path candidate = fs::path(folder) / "oxc";
        if (candidate.is_absolute() && IsProgram(candidate)) {
            return candidate;
        }
    }
    return "oxc";
}

// A scheduler that is a service is started by its unit. An entry of the desktop would start a second one. A
// command of the service's user is no process of its manager, but uses its settings; they are the machine's,
// and the desktops of all users would start what is beside them.
bool IsOfAService(const fs::path& configuration) {
    return ServiceManager::Instance().IsThere() || configuration == "/etc";
}

}  // namespace

std::string DesktopExec(std::string_view commandLine, const fs::path& ownProgram) {
    std::vector<std::string> pieces = Pieces(commandLine);
    if (pieces.empty()) {
        return {};
    }
    const bool isOwn = SameText(FileName(pieces.front()), "oxc.exe");
    pieces.front() = isOwn ? ownProgram.string() : paths::ToMachine(pieces.front()).string();
    // Desktops search for the program under the written name, where % is doubled, and do not accept = in it.
    // The entry therefore starts the shell, which starts the program.
    std::string exec = pieces.front().find_first_of("%=") == std::string::npos
                           ? ""
                           : "sh -c " + QuotedForEntry("exec \"$0\" \"$@\"");
    for (const std::string& piece : pieces) {
        exec += (exec.empty() ? "" : " ") + QuotedForEntry(piece);
    }
    return exec;
}

std::string HomeForExec(std::string_view commandLine, const fs::path& ownProgram) {
    const std::vector<std::string> pieces = Pieces(commandLine);
    if (pieces.empty() || !SameText(FileName(pieces.front()), "oxc.exe") ||
        FileName(pieces.front()).size() == pieces.front().size()) {
        return {};
    }
    const fs::path home = paths::ToMachine(pieces.front()).parent_path();
    std::error_code error;
    const fs::path beside = ownProgram.parent_path();
    const bool found = fs::exists(beside / BlankDatabaseFile, error) ? fs::equivalent(home, beside, error)
                                                                     : home == DataHome() / "oxbow-courier";
    return found ? std::string() : "env " + QuotedForEntry("OXC_HOME=" + home.string()) + " ";
}

std::string RegionForExec(std::string_view commandLine) {
    const std::vector<std::string> pieces = Pieces(commandLine);
    if (pieces.empty() || !SameText(FileName(pieces.front()), "oxc.exe")) {
        return {};
    }
    std::string exec = "env ";
    for (const char* name : {"LC_ALL", "LC_TIME", "LANG"}) {
        const std::string region = EnvironmentText(name);
        if (!region.empty()) {
            exec += QuotedForEntry(std::string(name) + "=" + region) + " ";
            if (std::string_view(name) == "LC_ALL") {
                return exec;  // LC_ALL overrides the other variables
            }
        }
    }
    return exec == "env " ? "env LC_ALL=C.UTF-8 " : exec;
}

void WriteAutostart(const fs::path& configuration, const std::string& name, std::string_view commandLine) {
    if (IsOfAService(configuration)) {
        return;
    }
    const fs::path program = InstalledProgram();
    if (!CanStandInEntry(commandLine) || !CanStandInEntry(program.string())) {
        Journal("The scheduler will not start with the desktop: an entry of the desktop cannot hold \"" +
                std::string(commandLine) + "\", as a control character or a byte that is no UTF-8 is in it");
        return;
    }
    std::error_code error;
    const fs::path folder = configuration / "autostart";
    fs::create_directories(folder, error);
    AtomicFile file(folder / (name + ".desktop"));
    file.Write("[Desktop Entry]\nType=Application\nName=" + std::string(AppTitle) +
               "\nComment=Runs the scheduled reports\nExec=" + RegionForExec(commandLine) +
               HomeForExec(commandLine, program) + DesktopExec(commandLine, program) +
               "\nTerminal=false\nX-GNOME-Autostart-enabled=true\n");
    file.Commit();
}
