// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/shell/desktop_shell.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QProcess>
#include <cerrno>
#include <initializer_list>
#include <string_view>
#include <system_error>
#include <vector>

#include "platform/base/paths.h"
#include "platform/base/text.h"
#include "platform/contracts/runtime.h"
#include "platform/shell/associations.h"
#include "platform/shell/detached_process.h"
#include "platform/shell/window_handle.h"

namespace {

namespace fs = std::filesystem;

constexpr int Success = 33;
constexpr int NoFile = 2;
constexpr int NoFolder = 3;
constexpr int NoPermission = 5;
constexpr int NoMemory = 8;
constexpr int NoProgram = 11;
constexpr int NoAssociation = 31;

bool IsAddress(const std::string& file) {
    for (const std::string_view scheme : {"http://", "https://", "mailto:"}) {
        if (SameText(std::string_view(file).substr(0, scheme.size()), scheme)) {
            return true;
        }
    }
    return false;
}

int CodeOf(associations::Outcome outcome) {
    switch (outcome) {
        case associations::Outcome::Started:
            return Success;
        case associations::Outcome::NoApplication:
            return NoAssociation;
        case associations::Outcome::Unrunnable:
            return NoProgram;
        case associations::Outcome::NoPermission:
            return NoPermission;
        case associations::Outcome::NoMemory:
            return NoMemory;
    }
    return NoAssociation;
}

int CodeOfStart(int failure) {
    switch (failure) {
        case 0:
            return Success;
        case ENOMEM:
        case EAGAIN:
            return NoMemory;
        case EACCES:
        case EPERM:
            return NoPermission;
        default:
            // The program exists; something that it needs is missing, such as its interpreter.
            return NoProgram;
    }
}

bool IsFolder(const fs::path& path) {
    std::error_code error;
    return fs::is_directory(path, error);
}

// Returns 0 if the file exists and can be read, else a failure code.
int CodeOfMissing(const fs::path& file) {
    if (faccessat(AT_FDCWD, file.c_str(), R_OK, AT_EACCESS) == 0) {
        return 0;
    }
    switch (errno) {
        case EACCES:
        case EPERM:
            return NoPermission;
        case ENOENT:
            return IsFolder(fs::absolute(file).parent_path()) ? NoFile : NoFolder;
        case ENOTDIR:
        case ENAMETOOLONG:
            return NoFolder;
        case ENOMEM:
            return NoMemory;
        default:
            return NoFile;
    }
}

// What the desktop knows of report files is installed with the designer; a build tree is not installed.
bool IsReportFile(const fs::path& file) {
    const std::string ending = file.extension().string();
    return SameText(ending, ".rpt") || SameText(ending, ".rdl");
}

bool MayRun(const fs::path& file) {
    return faccessat(AT_FDCWD, file.c_str(), X_OK, AT_EACCESS) == 0;
}

std::vector<std::string> Pieces(const std::string& parameters) {
    std::vector<std::string> pieces;
    for (const QString& piece : QProcess::splitCommand(QString::fromStdString(parameters))) {
        pieces.push_back(piece.toStdString());
    }
    return pieces;
}

// Empty when there is no such folder, or none that may be read.
fs::path FolderToBegin(const std::string& start) {
    if (!paths::IsAbsolute(start)) {
        return {};
    }
    try {
        fs::path folder = paths::ToMachine(start);
        return IsFolder(folder) && faccessat(AT_FDCWD, folder.c_str(), R_OK | X_OK, AT_EACCESS) == 0
                   ? folder
                   : fs::path();
    } catch (const RuntimeError&) {
        return {};  // a drive that is not there
    }
}

}  // namespace

QWidget* OwnerOf(WindowHandle handle) {
    if (handle.window == nullptr) {
        return QApplication::activeWindow();
    }
    return static_cast<QWidget*>(handle.window)->window();
}

DesktopShell::DesktopShell(fs::path program) : m_program(std::move(program)) {}

fs::path DesktopShell::InstalledProgram() {
    return ProgramFolder() / "oxc";
}

int DesktopShell::ShellExecuteA(const std::string& verb, const std::string& file,
                                const std::string& parameters, const std::string& directory,
                                int /*showMode*/) {
    // Desktops support only the verb "open".
    if (!verb.empty() && !SameText(verb, "open")) {
        return NoAssociation;
    }
    if (file.empty()) {
        return NoFile;
    }
    if (IsAddress(file)) {
        return CodeOf(associations::OpenAddress(file));
    }
    try {
        const fs::path folder = directory.empty() ? fs::path() : paths::ToMachine(directory);
        if (!folder.empty() && !IsFolder(folder)) {
            return NoFolder;
        }
        if (SameText(file, AppPath() + "\\oxc.exe")) {
            return Open(m_program, parameters, folder);
        }
        const bool inFolder = !folder.empty() && !paths::IsAbsolute(file);
        return Open(paths::ToMachine(inFolder ? folder.string() + "/" + file : file), parameters, folder);
    } catch (const RuntimeError&) {
        return NoFolder;  // a missing drive, or an impossible name
    }
}

int DesktopShell::Open(const fs::path& file, const std::string& parameters, const fs::path& folder) const {
    if (const int code = CodeOfMissing(file)) {
        return code;
    }
    const bool program = file == m_program || SameText(file.extension().string(), ".exe");
    if (!program || IsFolder(file)) {
        const int code = CodeOf(associations::OpenFile(file, folder));
        const fs::path designer = m_program.parent_path() / "oxc-design";
        return code == NoAssociation && IsReportFile(file) && MayRun(designer)
                   ? CodeOfStart(StartDetached(designer, {fs::absolute(file).string()}, folder))
                   : code;
    }
    const int code =
        MayRun(file) ? CodeOfStart(StartDetached(fs::absolute(file), Pieces(parameters), folder)) : NoProgram;
    if (code != NoProgram) {
        return code;
    }
    const int associated = CodeOf(associations::OpenFile(file, folder));
    return associated == NoAssociation ? NoProgram : associated;
}

std::string DesktopShell::BrowseForFolder(WindowHandle owner, const std::string& title,
                                          const std::string& start) {
    const fs::path asked = FolderToBegin(start);
    const QString begin = !asked.empty()        ? QString::fromStdString(asked.string())
                          : IsFolder(m_browsed) ? QString::fromStdString(m_browsed.string())
                                                : QDir::homePath();
    const QString chosen =
        QFileDialog::getExistingDirectory(OwnerOf(owner), QString::fromStdString(title), begin);
    if (chosen.isEmpty()) {
        return {};
    }
    m_browsed = chosen.toStdString();
    return paths::FromMachine(chosen.toStdString());
}
