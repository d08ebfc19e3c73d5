// SPDX-License-Identifier: GPL-3.0-or-later
// The settings store: the five registry operations. They return 0 for success, 2 for not found, 5 for access
// denied.
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
    // Returns type and bytes of a value. The bytes of a string end with one zero character.
    virtual long RegQueryValueExA(Handle handle, const std::string& name, std::uint32_t& type,
                                  std::string& bytes) = 0;
    // Opens a key; makes it and the keys above it if they are missing.
    virtual long RegCreateKeyA(std::uint32_t root, const std::string& key, Handle& handle) = 0;
    virtual long RegSetValueExA(Handle handle, const std::string& name, std::uint32_t type,
                                const std::string& bytes) = 0;
    virtual long RegCloseKey(Handle handle) = 0;
    // Raises an error that names the store if a part of it cannot be understood, or if it is gone: operations
    // then find less than was stored.
    virtual void RequireWhole() const {}
};

// Returns the store that a program or a test has set. Raises 91 if none was set.
Registry& TheRegistry();
// Null removes the store. The caller owns it, and it must outlive its use.
void SetRegistry(Registry* registry);
