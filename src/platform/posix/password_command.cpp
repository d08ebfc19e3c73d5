// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/posix/password_command.h"

#include "platform/base/ascii.h"
#include "platform/base/one_line.h"
#include "platform/base/text.h"
#include "platform/contracts/system_error.h"
#include "platform/posix/child_process.h"

namespace {

// Returns what the command wrote on standard error, as ": " and one line, or an empty text.
std::string Complaint(const ChildResult& result) {
    constexpr std::size_t Longest = 200;
    const std::string line = OnOneLine(result.complaint);
    const std::string_view text = CutText(Trim(line), Longest);
    return text.empty() ? "" : ": " + std::string(text);
}

}  // namespace

CommandPassword RunPasswordCommand(const std::string& command, const std::stop_token& stop) {
    constexpr int Seconds = 30;
    constexpr std::size_t LongestPassword = 4096;
    const ChildResult result = RunChild({"/bin/sh", "-c", command}, -1, Seconds, LongestPassword, stop);
    if (result.timedOut) {
        return {.failure = "PasswordCommand did not end within 30 seconds" + Complaint(result)};
    }
    if (!result.started) {
        return {.failure = "PasswordCommand cannot be started: " + SystemErrorText(result.startError),
                .startError = result.startError};
    }
    if (result.tooMuch) {
        return {.failure = "PasswordCommand wrote more than " + std::to_string(LongestPassword) + " bytes"};
    }
    if (result.signal != 0) {
        return {.failure = "PasswordCommand " + EndOf(result) + Complaint(result)};
    }
    if (result.exitCode != 0) {
        return {.failure = "PasswordCommand failed with exit code " + std::to_string(result.exitCode) +
                           Complaint(result)};
    }
    const std::string password = result.output.substr(0, result.output.find_last_not_of("\r\n") + 1);
    if (password.empty() || HasControls(password)) {
        return {.failure = "PasswordCommand wrote no password of one line" + Complaint(result)};
    }
    return {.password = password};
}
