// The settings store: the five registry operations. Result codes: 0 success, 2 not found, 5 access denied.
#pragma once

#include <cstdint>
#include <string>

inline constexpr std::uint32_t HKEY_LOCAL_MACHINE = 0x80000002;
inline constexpr std::uint32_t REG_SZ = 1;

class Registry {
 public:
    using Handle = std::uint32_t;
    virtual ~Registry() = default;
    // Opens an existing key for reading.
    virtual long RegOpenKeyA(std::uint32_t root, const std::string& key, Handle& handle) = 0;
    // Type and bytes of a value; a string's bytes end with one zero character.
    virtual long RegQueryValueExA(Handle handle, const std::string& name, std::uint32_t& type,
                                  std::string& bytes) = 0;
    // Opens a key, making it and those above it.
    virtual long RegCreateKeyA(std::uint32_t root, const std::string& key, Handle& handle) = 0;
    virtual long RegSetValueExA(Handle handle, const std::string& name, std::uint32_t type,
                                const std::string& bytes) = 0;
    virtual long RegCloseKey(Handle handle) = 0;
};

// The settings file of platform/regfile, unless a test has put another in its place.
Registry& TheRegistry();
void SetRegistry(Registry* registry);
