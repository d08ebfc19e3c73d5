// SPDX-License-Identifier: GPL-3.0-or-later
// The mail server of smtp_server.py as a child process of the test.
#pragma once

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "support/source_dir.h"
#include "support/temporary_folder.h"

class SmtpServer {
 public:
    // `arguments` as in smtp_server.py --help, without the folder.
    explicit SmtpServer(std::vector<std::string> arguments) {
        int input[2];
        int output[2];
        if (pipe(input) != 0 || pipe(output) != 0) {
            throw std::runtime_error("no pipes");
        }
        arguments.insert(arguments.begin(), {"/usr/bin/python3",
                                             SourceDir() + "/tests/support/smtp_server.py", m_folder.Path()});
        m_child = fork();
        if (m_child == 0) {
            std::vector<char*> pointers;
            for (std::string& argument : arguments) {
                pointers.push_back(argument.data());
            }
            pointers.push_back(nullptr);
            dup2(input[0], STDIN_FILENO);
            dup2(output[1], STDOUT_FILENO);
            close(input[1]);
            close(output[0]);
            execv(pointers[0], pointers.data());
            _exit(127);
        }
        close(input[0]);
        close(output[1]);
        m_input = input[1];
        std::string line;
        char letter = 0;
        while (read(output[0], &letter, 1) == 1 && letter != '\n') {
            line += letter;
        }
        close(output[0]);
        m_port = line.empty() ? 0 : std::stoi(line);
    }
    ~SmtpServer() {
        close(m_input);
        kill(m_child, SIGKILL);
        waitpid(m_child, nullptr, 0);
    }
    SmtpServer(const SmtpServer&) = delete;
    SmtpServer& operator=(const SmtpServer&) = delete;

    int Port() const { return m_port; }  // 0: it did not start
    std::filesystem::path Authority() const { return m_folder / "ca.pem"; }
    std::string Talk() const { return ReadBytes(m_folder / "talk.log"); }

    // Returns the messages that the server has accepted, in order.
    std::vector<std::string> Messages() const {
        std::vector<std::filesystem::path> files;
        for (const auto& entry : std::filesystem::directory_iterator(m_folder.Path())) {
            if (entry.path().extension() == ".eml") {
                files.push_back(entry.path());
            }
        }
        std::sort(files.begin(), files.end());
        std::vector<std::string> messages;
        for (const auto& file : files) {
            messages.push_back(ReadBytes(file));
        }
        return messages;
    }

 private:
    TemporaryFolder m_folder;
    pid_t m_child = -1;
    int m_input = -1;
    int m_port = 0;
};
