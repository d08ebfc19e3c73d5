// SPDX-License-Identifier: GPL-3.0-or-later
// Allowed targets of links.
#pragma once

#include <string_view>

namespace rdl::layout {

// Whether a link is allowed: web, mail, telephone, FTP and file addresses and relative references; not
// scripts or local programs.
bool IsHarmlessLink(std::string_view uri);

}  // namespace rdl::layout
