// Settings access.
#pragma once

#include <cstdint>
#include <string>

namespace ShellMod {

// The settings key, under HKEY_LOCAL_MACHINE.
inline constexpr const char* SettingsKey = "Software\\Norvale\\Oxbow Courier";
// Programs that the desktop starts by itself.
inline constexpr const char* AutostartKey = "Software\\Microsoft\\Windows\\CurrentVersion\\Run";

// The value's text; the default when the key or value is missing or is no string. Reports nothing.
std::string ReadSetting(std::uint32_t root, const std::string& key, const std::string& name,
                        const std::string& defaultText);
// Makes the key if need be. Failures are not tested.
void WriteSetting(std::uint32_t root, const std::string& key, const std::string& name,
                  const std::string& value);
void CreateSettingsKey(std::uint32_t root, const std::string& key);

}  // namespace ShellMod
