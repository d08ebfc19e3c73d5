// SPDX-License-Identifier: GPL-3.0-or-later
// Helpers of the writers without pages.
#pragma once

#include <string>
#include <string_view>

#include "rdl/image/type.h"
#include "rdl/layout/model/image_size.h"
#include "rdl/layout/model/instance.h"

namespace rdl::writers {

inline constexpr int MaxNesting = 64;  // nesting depth of containers and regions

// Replaces page number placeholders by 1: these formats have no pages.
std::string WithoutPageMarks(std::string_view text);

// Returns the link if it is allowed in a document: web, mail and FTP addresses and relative references; else
// an empty text, as for scripts.
std::string SafeLink(const std::string& link);
// The same with all other characters percent-encoded (RFC 3986, section 2.1).
std::string WebAddress(const std::string& link);

// Returns the format of an item's image; raises errors as image::TypeOf does.
image::Type TypeOfImage(const layout::Instance& image);

// Returns the size in points at which the item's sizing shows an image, before clipping.
layout::ImageSize ShownSize(const layout::Instance& item, const layout::ImageSize& natural);

// Returns the alignment of the paragraph or its box; General becomes Left or Right.
layout::HAlign AlignmentOf(const layout::Instance& item, layout::HAlign paragraph);

}  // namespace rdl::writers
