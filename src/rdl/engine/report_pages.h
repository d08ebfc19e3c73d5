// SPDX-License-Identifier: GPL-3.0-or-later
// The pages of a run for the screen.
#pragma once

#include <exception>
#include <list>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "rdl/api/pages.h"
#include "rdl/layout/model/instance.h"
#include "rdl/layout/model/page.h"
#include "rdl/screen/page_archive.h"
#include "rdl/screen/page_painter.h"
#include "rdl/writers/common/writers.h"

namespace rdl::engine {

class ReportPages : public Pages {
 public:
    explicit ReportPages(std::shared_ptr<layout::ReportInstance> instance);

    bool Reach(int n) override;
    int Made() const override { return static_cast<int>(m_archive.size()); }
    bool AllMade() const override { return m_allMade; }
    double Width(int n) const override { return m_archive.Width(Index(n)); }
    double Height(int n) const override { return m_archive.Height(Index(n)); }
    bool WaitsForTotal() const override { return m_usesTotals && !m_allMade; }
    void Draw(int n, QPainter& painter) override;
    bool WritePdf(Output& output, int first, int last, const std::function<bool(int page)>& goOn) override;
    std::vector<PageCharacter> Characters(int n) override;
    std::vector<PageLink> Links(int n) override;
    const std::vector<MapEntry>& DocumentMap() const override { return m_map; }

 private:
    struct Place {
        int page = 0;
        double y = 0;
    };
    struct Kept {
        int page;
        std::shared_ptr<const layout::Page> content;
    };
    std::size_t Index(int n) const;
    void MakePage();
    void NoteAnchors(const layout::Page& page);
    // Returns the page with header and footer as far as known.
    std::shared_ptr<const layout::Page> Content(int n);
    void AddMarginsOf(int index, int total, layout::Page& page);

    std::shared_ptr<layout::ReportInstance> m_instance;
    const writers::DocumentInfo m_info;
    std::unique_ptr<layout::PageStream> m_stream;  // null once it is no longer needed
    bool m_usesTotals = false, m_allMade = false;
    std::exception_ptr m_failure;  // raised again by every later call
    screen::PageArchive m_archive;
    screen::PagePainter m_painter;
    std::list<Kept> m_kept;  // most recently used first
    std::map<std::string, Place> m_bookmarks;
    std::vector<MapEntry> m_map;
};

}  // namespace rdl::engine
