// Bytes that stand in a report file or in its data as text.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace rdl {

// Blanks and line ends between the letters do not count. Nothing when the text is not base64.
std::optional<std::string> FromBase64(std::string_view text);

}  // namespace rdl
