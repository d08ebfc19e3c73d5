// The pages of a run for the screen.
#pragma once

#include <list>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/rdl/layout/instance.h"
#include "platform/rdl/layout/page.h"
#include "platform/rdl/screen/page_archive.h"
#include "platform/rdl/screen/page_painter.h"
#include "platform/rdl/writers/writers.h"
#include "platform/report_view.h"
#include "platform/runtime.h"

namespace rdl::engine {

class RdlPageView : public report::PageView {
 public:
    explicit RdlPageView(std::shared_ptr<layout::ReportInstance> instance);

    bool Reach(int n) override;
    int PagesMade() const override { return static_cast<int>(m_archive.size()); }
    bool AllMade() const override { return m_allMade; }
    double Width(int n) const override { return m_archive.Width(Index(n)); }
    double Height(int n) const override { return m_archive.Height(Index(n)); }
    bool WaitsForTotal() const override { return m_usesTotals && !m_allMade; }
    void Draw(int n, QPainter& painter) override;
    bool WritePdf(const std::string& file, int first, int last,
                  const std::function<bool(int page)>& goOn) override;
    std::vector<report::Letter> Letters(int n) override;
    std::vector<report::Link> Links(int n) override;
    const std::vector<report::MapEntry>& DocumentMap() const override { return m_map; }

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
    // With its header and footer as far as they are known.
    std::shared_ptr<const layout::Page> Content(int n);
    void AddMarginsOf(int index, int total, layout::Page& page);

    std::shared_ptr<layout::ReportInstance> m_instance;
    const writers::DocumentInfo m_info;
    std::unique_ptr<layout::PageStream> m_stream;  // as long as it is needed
    bool m_usesTotals = false, m_allMade = false;
    std::optional<RuntimeError> m_failure;
    screen::PageArchive m_archive;
    screen::PagePainter m_painter;
    std::list<Kept> m_kept;  // last used first
    std::map<std::string, Place> m_bookmarks;
    std::vector<report::MapEntry> m_map;
};

}  // namespace rdl::engine
