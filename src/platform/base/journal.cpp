// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/base/journal.h"

#include <unistd.h>

#include <array>
#include <cstdio>
#include <string>

#include "platform/contracts/clock.h"

namespace {

std::string Stamp(DateValue moment) {
    const DateParts parts = Split(moment);
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02d-%02d %02d:%02d:%02d ", parts.year, parts.month,
                  parts.day, parts.hour, parts.minute, parts.second);
    return text.data();
}

}  // namespace

void Journal(std::string_view text) {
    std::string line = Stamp(Now()).append(text);
    for (char& character : line) {
        const auto code = static_cast<unsigned char>(character);
        if (code < ' ' || code == 0x7F) {
            character = ' ';
        }
    }
    line += '\n';
    // A closed standard error cannot be reported.
    [[maybe_unused]] const auto written = ::write(STDERR_FILENO, line.data(), line.size());
}
