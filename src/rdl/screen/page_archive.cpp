// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/screen/page_archive.h"

#include "rdl/screen/page_codec.h"

namespace rdl::screen {

void PageArchive::Add(const layout::Page& page) {
    const std::string packed = PackPage(page, m_images);
    m_places.push_back({m_spool.size(), static_cast<std::uint32_t>(packed.size()),
                        static_cast<float>(page.width), static_cast<float>(page.height)});
    m_spool.Append(packed);
}

layout::Page PageArchive::At(std::size_t index) {
    const Place& place = m_places.at(index);
    std::string packed;
    packed.reserve(place.size);
    m_spool.Read(place.begin, place.size, [&](std::string_view piece) { packed += piece; });
    return UnpackPage(packed, m_images);
}

}  // namespace rdl::screen
