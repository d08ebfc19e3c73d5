// SPDX-License-Identifier: GPL-3.0-or-later
// Serializes pages for storage within the same process.
#pragma once

#include <string>
#include <string_view>

#include "rdl/layout/model/page.h"
#include "rdl/screen/page_images.h"

namespace rdl::screen {

std::string PackPage(const layout::Page& page, PageImages& images);
layout::Page UnpackPage(std::string_view bytes, PageImages& images);

// Appends the objects of `from` to `page`.
void AppendPage(layout::Page& page, const layout::Page& from);

}  // namespace rdl::screen
