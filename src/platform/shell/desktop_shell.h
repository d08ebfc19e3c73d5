// SPDX-License-Identifier: GPL-3.0-or-later
// The user's desktop: its associations, its programs, its folder dialog.
#pragma once

#include <filesystem>

#include "platform/contracts/shell.h"

class DesktopShell : public Shell {
 public:
    // `program` starts for the name oxc.exe in the application's folder. oxc-design beside it opens the
    // report files that the desktop associates with no application.
    explicit DesktopShell(std::filesystem::path program = InstalledProgram());

    // A file whose name ends in .exe is a program; if the machine cannot run it, it is opened with its
    // associated application. Returns only the failure codes 2, 3, 5, 8, 11 and 31. Success means that an
    // application was started, not that it shows the document.
    int ShellExecuteA(const std::string& verb, const std::string& file, const std::string& parameters,
                      const std::string& directory, int showMode) override;
    // Without `start` it starts in the folder that was chosen last, at first in the user's home folder.
    std::string BrowseForFolder(WindowHandle owner, const std::string& title,
                                const std::string& start = {}) override;

    // Returns the file oxc beside the executable of this process.
    static std::filesystem::path InstalledProgram();

 private:
    int Open(const std::filesystem::path& file, const std::string& parameters,
             const std::filesystem::path& folder) const;
    std::filesystem::path m_program, m_browsed;
};
