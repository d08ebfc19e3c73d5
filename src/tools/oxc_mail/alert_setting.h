// SPDX-License-Identifier: GPL-3.0-or-later
// The address of failure alerts that Options stores among the settings.
#pragma once

#include <string>

namespace tools {

// Returns an empty text if no address is set. The program must set the settings store first.
std::string AlertSetting();

}  // namespace tools
