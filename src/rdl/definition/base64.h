// SPDX-License-Identifier: GPL-3.0-or-later
// Base64 of report files and their data (RFC 4648, section 4).
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace rdl {

// Decodes base64; white space between the characters is ignored. Returns nullopt for any other text.
std::optional<std::string> FromBase64(std::string_view text);

}  // namespace rdl
