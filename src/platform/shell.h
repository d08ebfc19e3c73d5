// Opening documents with the program that the machine associates with them, and browsing for a folder.
#pragma once

#include <string>

// The window that a dialog belongs to, as rooms without windows of their own hand it on. It is made from a
// form by HandleOf (platform/shell/window_handle.h); none means the active window.
struct WindowHandle {
    void* window = nullptr;
    bool operator==(const WindowHandle&) const = default;
};

class Shell {
 public:
    virtual ~Shell() = default;
    // Opens `file`, a path of the system or an address (http, https, mailto). A program (.exe) is started
    // with the parameters, in `directory` if one is given. Above 32 on success, else a failure code: 2 no
    // file, 3 no folder, 5 no permission, 8 no memory, 11 a program that cannot be run, 31 no association.
    // `showMode` says how the first window is shown; desktops without that notion pass over it.
    virtual int ShellExecuteA(const std::string& verb, const std::string& file, const std::string& parameters,
                              const std::string& directory, int showMode) = 0;
    // The chosen folder as the system writes paths; empty when cancelled. `start` is the folder to begin in,
    // if there is one of that path.
    virtual std::string BrowseForFolder(WindowHandle owner, const std::string& title,
                                        const std::string& start) = 0;
};

Shell& TheShell();
void SetShell(Shell* shell);
