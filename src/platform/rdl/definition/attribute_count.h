// A look at an XML text before it is parsed.
#pragma once

#include <cstddef>
#include <string_view>

namespace rdl {

// The line, from 1, of the first tag with more than `most` attributes; 0: there is none. A parser holds each
// against each other, which takes hours where there are hundreds of thousands. `bytes` may be in UTF-8,
// UTF-16, UTF-32 or any encoding that has ASCII in it.
std::size_t LineOfTooManyAttributes(std::string_view bytes, std::size_t most);

}  // namespace rdl
