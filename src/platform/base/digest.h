// SPDX-License-Identifier: GPL-3.0-or-later
// Checksums of bytes.
#pragma once

#include <string>
#include <string_view>

// Returns the SHA-256 (FIPS 180-4) in 64 small hexadecimal digits.
std::string Sha256(std::string_view bytes);
