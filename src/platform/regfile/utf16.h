// SPDX-License-Identifier: GPL-3.0-or-later
// UTF-16, little-endian, as REGEDIT writes whole files and the bytes of some texts.
#pragma once

#include <string>
#include <string_view>

// A lone surrogate or half a code unit becomes U+FFFD.
std::string Utf8OfUtf16(std::string_view bytes);
// Bytes that are not UTF-8 become U+FFFD.
std::string Utf16OfUtf8(std::string_view text);
