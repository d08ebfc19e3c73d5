// SPDX-License-Identifier: GPL-3.0-or-later
// Stores the pages of a run as they are made: in memory while they are few, then in an unnamed temporary
// file. A report of any length needs little memory: some twenty bytes per page, and few MB of packed
// pages.
#pragma once

#include <vector>

#include "rdl/layout/model/page.h"
#include "rdl/screen/page_images.h"
#include "rdl/spool/spool.h"

namespace rdl::screen {

class PageArchive {
 public:
    // Raises rdl::Error if the temporary file cannot be created or is full.
    void Add(const layout::Page& page);
    std::size_t size() const { return m_places.size(); }
    layout::Page At(std::size_t index);
    // In points.
    double Width(std::size_t index) const { return static_cast<double>(m_places.at(index).width); }
    double Height(std::size_t index) const { return static_cast<double>(m_places.at(index).height); }

 private:
    struct Place {
        std::size_t begin;
        std::uint32_t size;
        float width, height;
    };
    Spool m_spool;
    PageImages m_images;
    std::vector<Place> m_places;
};

}  // namespace rdl::screen
