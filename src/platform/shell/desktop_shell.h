// The desktop of the user's machine: its associations, its programs, its folder dialog.
#pragma once

#include <filesystem>

#include "platform/shell.h"

class DesktopShell : public Shell {
 public:
    // `program` is started for the name oxc.exe in the application's folder.
    explicit DesktopShell(std::filesystem::path program = InstalledProgram());

    // A program is a file whose name ends in .exe; one that the machine does not run by itself is opened with
    // what is associated with it. Of the failure codes 2, 3, 5, 8, 11 and 31 are met. Whether an application
    // that was started then shows the document is its own affair.
    int ShellExecuteA(const std::string& verb, const std::string& file, const std::string& parameters,
                      const std::string& directory, int showMode) override;
    // Without a folder to begin in it begins in the one that was chosen last, at first in the user's own.
    std::string BrowseForFolder(WindowHandle owner, const std::string& title,
                                const std::string& start = {}) override;

    // The file oxc beside the executable of this process.
    static std::filesystem::path InstalledProgram();

 private:
    int Open(const std::filesystem::path& file, const std::string& parameters,
             const std::filesystem::path& folder) const;
    std::filesystem::path m_program, m_browsed;
};
