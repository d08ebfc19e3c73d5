// The address of alerts, which Options has stored among the settings.
#pragma once

#include <string>

namespace tools {

// Empty when there is none. The program sets the settings store before.
std::string AlertSetting();

}  // namespace tools
