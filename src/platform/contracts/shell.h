// SPDX-License-Identifier: GPL-3.0-or-later
// Opens documents with the program that the desktop associates with them, and browses for folders.
#pragma once

#include <string>

// The window that a dialog belongs to, for rooms that have no windows. HandleOf
// (platform/shell/window_handle.h) makes it from a form. Null means the active window.
struct WindowHandle {
    void* window = nullptr;
    bool operator==(const WindowHandle&) const = default;
};

class Shell {
 public:
    virtual ~Shell() = default;
    // Opens `file`, a path of the system or an address (http, https, mailto). A program (.exe) starts with
    // the parameters, in `directory` if that is not empty. Returns a number above 32 on success, else a
    // failure code: 2 file missing, 3 folder missing, 5 no permission, 8 out of memory, 11 a program that
    // cannot be run, 31 no association. `showMode` is the state of the first window; desktops that do not
    // support it ignore it.
    virtual int ShellExecuteA(const std::string& verb, const std::string& file, const std::string& parameters,
                              const std::string& directory, int showMode) = 0;
    // Returns the chosen folder as a path of the system, or an empty text after a cancel. `start` is the
    // folder to start in, if it exists.
    virtual std::string BrowseForFolder(WindowHandle owner, const std::string& title,
                                        const std::string& start) = 0;
};

// Returns the shell that a program or a test has set. Raises 91 if none was set.
Shell& TheShell();
// Null removes the shell. The caller owns it, and it must outlive its use.
void SetShell(Shell* shell);
