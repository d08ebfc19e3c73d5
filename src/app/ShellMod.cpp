#include "app/ShellMod.h"

#include "platform/registry.h"

namespace ShellMod {

std::string ReadSetting(std::uint32_t root, const std::string& key, const std::string& name,
                        const std::string& defaultText) {
    Registry& registry = TheRegistry();
    std::string result = defaultText;
    Registry::Handle handle = 0;
    if (registry.RegOpenKeyA(root, key, handle) == 0) {
        std::uint32_t type = 0;
        std::string bytes;
        if (registry.RegQueryValueExA(handle, name, type, bytes) == 0 && type == REG_SZ) {
            result = bytes.substr(0, bytes.find('\0'));
        }
    }
    registry.RegCloseKey(handle);
    return result;
}

void WriteSetting(std::uint32_t root, const std::string& key, const std::string& name,
                  const std::string& value) {
    Registry& registry = TheRegistry();
    Registry::Handle handle = 0;
    if (registry.RegCreateKeyA(root, key, handle) == 0) {
        registry.RegSetValueExA(handle, name, REG_SZ, value);
        registry.RegCloseKey(handle);
    }
}

void CreateSettingsKey(std::uint32_t root, const std::string& key) {
    Registry& registry = TheRegistry();
    Registry::Handle handle = 0;
    if (registry.RegCreateKeyA(root, key, handle) == 0) {
        registry.RegCloseKey(handle);
    }
}

}  // namespace ShellMod
