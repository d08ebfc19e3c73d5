// The pages of a run, put by as they are made. They lie packed in memory while they are few and then in a
// temporary file without a name, so that a report of any length can be leafed through in little memory: of a
// page there stay some twenty bytes, of the packed ones 16 MB at most.
#pragma once

#include <vector>

#include "rdl/layout/model/page.h"
#include "rdl/screen/page_images.h"
#include "rdl/writers/common/spool.h"

namespace rdl::screen {

class PageArchive {
 public:
    // Raises rdl::Error when the temporary file cannot be made or is full.
    void Add(const layout::Page& page);
    std::size_t size() const { return m_places.size(); }
    layout::Page At(std::size_t index);
    // Points.
    double Width(std::size_t index) const { return static_cast<double>(m_places.at(index).width); }
    double Height(std::size_t index) const { return static_cast<double>(m_places.at(index).height); }

 private:
    struct Place {
        std::size_t begin;
        std::uint32_t size;
        float width, height;
    };
    writers::Spool m_spool;
    PageImages m_images;
    std::vector<Place> m_places;
};

}  // namespace rdl::screen
