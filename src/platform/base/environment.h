// SPDX-License-Identifier: GPL-3.0-or-later
// Variables of the environment.
#pragma once

#include <cstdlib>
#include <string>

// Returns the value of the variable; empty if it is not set.
inline std::string EnvironmentText(const char* name) {
    const char* const value = std::getenv(name);
    return value != nullptr ? value : "";
}
