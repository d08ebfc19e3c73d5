// What the writers without pages have in common.
#pragma once

#include <string>
#include <string_view>

#include "rdl/image/image_type.h"
#include "rdl/layout/model/image_size.h"
#include "rdl/layout/model/instance.h"

namespace rdl::writers {

inline constexpr int MaxNesting = 64;  // of containers and regions within each other

// Page numbers and counts are 1 where there are no pages.
std::string WithoutPageMarks(std::string_view text);

// A link that may stand in a document: web, mail and file transfer addresses and places relative to the
// document; never script. Empty when it may not.
std::string SafeLink(const std::string& link);
// The same in the letters that addresses are made of.
std::string WebAddress(const std::string& link);

// As image::TypeOf does, with the name of the item.
image::Type TypeOfImage(const layout::Instance& image);

// The size that a picture is shown in by its item's sizing, before what Clip cuts away.
layout::ImageSize ShownSize(const layout::Instance& item, const layout::ImageSize& natural);

// The paragraph's or box's alignment, General worked out.
layout::HAlign AlignmentOf(const layout::Instance& item, layout::HAlign paragraph);

}  // namespace rdl::writers
