// SPDX-License-Identifier: GPL-3.0-or-later
// Base64 of report files, their data and the documents (RFC 4648, section 4).
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace rdl {

// Decodes base64; ASCII white space between the characters is ignored and the padding at the end may be
// missing. Returns nullopt for any other text.
std::optional<std::string> FromBase64(std::string_view text);
// Returns one line, with padding.
std::string ToBase64(std::string_view bytes);

}  // namespace rdl
