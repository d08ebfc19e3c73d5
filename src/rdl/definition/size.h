// Lengths as reports write them.
#pragma once

#include <optional>
#include <string_view>

namespace rdl {

inline constexpr double MaxSize = 455 * 72.0;  // points; what designers let pass, and what keeps sums finite

// Points of a number with in, cm, mm, pt or pc, blanks between them allowed; nullopt when it is no size.
std::optional<double> ParseSize(std::string_view text);

}  // namespace rdl
