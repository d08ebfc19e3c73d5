// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/posix/handed_report.h"

#include <cstdlib>

#include "platform/base/environment.h"

std::filesystem::path TakeHandedReport() {
    const std::filesystem::path file = EnvironmentText(HandedReportVariable);
    unsetenv(HandedReportVariable);
    return file.is_absolute() ? file : std::filesystem::path();
}
