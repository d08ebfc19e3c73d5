// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/posix/handed_report.h"

#include <cstdlib>

std::filesystem::path TakeHandedReport() {
    const char* const value = std::getenv(HandedReportVariable);
    const std::filesystem::path file = value != nullptr ? value : "";
    unsetenv(HandedReportVariable);
    return file.is_absolute() ? file : std::filesystem::path();
}
