#include "platform/rdl/layout/links.h"

#include <algorithm>
#include <cctype>
#include <string>

namespace rdl::layout {

bool IsHarmlessLink(std::string_view uri) {
    const auto colon = uri.find(':');
    if (colon == std::string_view::npos || uri.find_first_of("/?#") < colon) {
        return true;
    }
    std::string scheme(uri.substr(0, colon));
    std::transform(scheme.begin(), scheme.end(), scheme.begin(),
                   [](unsigned char c) { return std::tolower(c); });
    return scheme == "http" || scheme == "https" || scheme == "mailto" || scheme == "ftp" ||
           scheme == "tel" || scheme == "file";
}

}  // namespace rdl::layout
