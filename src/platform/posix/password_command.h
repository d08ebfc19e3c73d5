// SPDX-License-Identifier: GPL-3.0-or-later
// The key PasswordCommand of a mail profile or a link: a shell command that prints a password.
#pragma once

#include <stop_token>
#include <string>

struct CommandPassword {
    std::string password = {};  // not empty, without control characters, if there is no failure
    // A sentence without its full stop that begins with "PasswordCommand", and ": " with the first 200 bytes
    // that the command wrote on standard error, as one line.
    std::string failure = {};
    int startError = 0;  // errno if the shell cannot be started
};

// Runs the command and returns its output without the line end, at most 4096 bytes. The command is killed
// after 30 seconds or on a stop request. Never raises an error.
CommandPassword RunPasswordCommand(const std::string& command, const std::stop_token& stop = {});
