// Opening documents with the program that the machine associates with them, and browsing for a folder.
#pragma once

#include <string>

class Shell {
 public:
    virtual ~Shell() = default;
    // Above 32 on success, else a failure code (2 no file, 3 no folder, 5 no permission, 31 no association
    // ...).
    virtual int ShellExecuteA(const std::string& verb, const std::string& file, const std::string& parameters,
                              const std::string& directory, int showMode) = 0;
    // The chosen folder as the system writes paths; empty when cancelled.
    virtual std::string BrowseForFolder(const std::string& title) = 0;
};

Shell& TheShell();
void SetShell(Shell* shell);
