// What the writers without pages have in common.
#pragma once

#include <string>
#include <string_view>

#include "platform/rdl/layout/image_size.h"
#include "platform/rdl/layout/instance.h"

namespace rdl::writers {

inline constexpr int MaxNesting = 64;  // of containers and regions within each other

// Page numbers and counts are 1 where there are no pages.
std::string WithoutPageMarks(std::string_view text);

// A link that may stand in a document: web, mail and file transfer addresses and places relative to the
// document; never script. Empty when it may not.
std::string SafeLink(const std::string& link);
// The same in the letters that addresses are made of.
std::string WebAddress(const std::string& link);

// PNG, JPEG, GIF or BMP by the bytes themselves; raises rdl::Error naming the item when they are none.
enum class ImageType { Png, Jpeg, Gif, Bmp };
ImageType TypeOfImage(const layout::Instance& image);
ImageType TypeOfImage(std::string_view bytes, const std::string& name);

// The size that a picture is shown in by its item's sizing, before what Clip cuts away.
layout::ImageSize ShownSize(const layout::Instance& item, const layout::ImageSize& natural);

// The paragraph's or box's alignment, General worked out.
layout::HAlign AlignmentOf(const layout::Instance& item, layout::HAlign paragraph);

}  // namespace rdl::writers
