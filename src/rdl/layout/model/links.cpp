// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/model/links.h"

#include <algorithm>
#include <string>

#include "rdl/values/ascii.h"

namespace rdl::layout {

bool IsHarmlessLink(std::string_view uri) {
    const auto colon = uri.find(':');
    if (colon == std::string_view::npos || uri.find_first_of("/?#") < colon) {
        return true;
    }
    const std::string scheme = LowerAscii(uri.substr(0, colon));
    return scheme == "http" || scheme == "https" || scheme == "mailto" || scheme == "ftp" ||
           scheme == "tel" || scheme == "file";
}

}  // namespace rdl::layout
