// SPDX-License-Identifier: GPL-3.0-or-later
// A fake desktop: records what was opened and returns the answers that a test sets.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/contracts/runtime.h"
#include "platform/contracts/shell.h"

namespace fakes {

struct Opening {
    std::string verb, file, parameters, directory;
    int showMode = 0;
    bool operator==(const Opening&) const = default;
};

class FakeShell : public Shell {
 public:
    FakeShell() { SetShell(this); }
    ~FakeShell() override { SetShell(nullptr); }
    int ShellExecuteA(const std::string& verb, const std::string& file, const std::string& parameters,
                      const std::string& directory, int showMode) override {
        openings.push_back({verb, file, parameters, directory, showMode});
        RaiseIfAsked();
        return code;
    }
    std::string BrowseForFolder(WindowHandle owner, const std::string& title,
                                const std::string& start) override {
        owners.push_back(owner);
        titles.push_back(title);
        starts.push_back(start);
        RaiseIfAsked();
        return folder;
    }
    int code = 33;       // of ShellExecuteA
    std::string folder;  // the chosen folder; empty: cancelled
    std::optional<RuntimeError> error;
    std::vector<Opening> openings;
    std::vector<WindowHandle> owners;
    std::vector<std::string> titles, starts;

 private:
    void RaiseIfAsked() const {
        if (error) {
            throw *error;
        }
    }
};

}  // namespace fakes
