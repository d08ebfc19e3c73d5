// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/posix/password_command.h"

#include "platform/base/ascii.h"
#include "platform/contracts/system_error.h"
#include "platform/posix/child_process.h"

CommandPassword RunPasswordCommand(const std::string& command, const std::stop_token& stop) {
    constexpr int Seconds = 30;
    constexpr std::size_t LongestPassword = 4096;
    const ChildResult result = RunChild({"/bin/sh", "-c", command}, -1, Seconds, LongestPassword, stop);
    if (result.timedOut) {
        return {.failure = "PasswordCommand did not end within 30 seconds"};
    }
    if (!result.started) {
        return {.failure = "PasswordCommand cannot be started: " + SystemErrorText(result.startError),
                .startError = result.startError};
    }
    if (result.tooMuch) {
        return {.failure = "PasswordCommand wrote more than " + std::to_string(LongestPassword) + " bytes"};
    }
    if (result.signal != 0) {
        return {.failure = "PasswordCommand " + EndOf(result)};
    }
    if (result.exitCode != 0) {
        return {.failure = "PasswordCommand failed with exit code " + std::to_string(result.exitCode)};
    }
    const std::string password = result.output.substr(0, result.output.find_last_not_of("\r\n") + 1);
    if (password.empty() || HasControls(password)) {
        return {.failure = "PasswordCommand wrote no password of one line"};
    }
    return {.password = password};
}
