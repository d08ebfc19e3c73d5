// Texts as errors show them.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace rdl {

// Every ' replaced by ": errors are put into statements of the system that uses the engine.
inline std::string WithoutMarks(std::string_view text) {
    std::string plain(text);
    std::replace(plain.begin(), plain.end(), '\'', '"');
    return plain;
}

}  // namespace rdl
