// SPDX-License-Identifier: GPL-3.0-or-later
// The program with a configuration folder for one test.
#pragma once

#include <gmock/gmock.h>
#include <stdlib.h>
#include <sys/wait.h>

#include <algorithm>
#include <string>

#include "support/config_home.h"

struct MailOutcome {
    int code = -1;
    std::string output, complaint;
};

class MailProgram : public testing::Test {
 public:
    void SetUp() override {
        for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
            unsetenv(name);
        }
    }

    std::filesystem::path File() const { return m_folder.MailProfile(); }
    std::string Profile() const { return ReadBytes(File()); }

    // `arguments` as in a shell, `input` on standard input.
    MailOutcome Run(const std::string& arguments, const std::string& input = {}) const {
        WriteBytes(m_folder / "stdin", input);
        const std::string line = "cd '" + m_folder.Path().string() + "' && '" OXC_MAIL_PROGRAM "' " +
                                 arguments + " <stdin >stdout 2>stderr";
        const int status = std::system(line.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadBytes(m_folder / "stdout"),
                ReadBytes(m_folder / "stderr")};
    }
    static void ExpectOneLine(const std::string& complaint) {
        EXPECT_THAT(complaint, testing::StartsWith("oxc-mail: "));
        EXPECT_EQ(std::count(complaint.begin(), complaint.end(), '\n'), 1) << complaint;
    }

 protected:
    ConfigHome m_folder;
};
