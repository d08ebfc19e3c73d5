// SPDX-License-Identifier: GPL-3.0-or-later
// Adapts the pages of an RDL report to the contract report::PageView: lengths in points, pages from 1. Raises
// RuntimeError: 9 for a page that is not made, else the number of the stage at which the engine failed.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/contracts/report_view.h"
#include "rdl/api/pages.h"

namespace reports {

class RdlPages : public report::PageView {
 public:
    explicit RdlPages(std::unique_ptr<rdl::Pages> pages) : m_pages(std::move(pages)) {}

    bool Reach(int n) override;
    int PagesMade() const override { return m_pages->Made(); }
    bool AllMade() const override { return m_pages->AllMade(); }
    double Width(int n) const override;
    double Height(int n) const override;
    bool WaitsForTotal() const override { return m_pages->WaitsForTotal(); }
    void Draw(int n, QPainter& painter) override;
    bool WritePdf(const std::string& file, int first, int last,
                  const std::function<bool(int page)>& goOn) override;
    std::vector<report::Character> Characters(int n) override;
    std::vector<report::Link> Links(int n) override;
    const std::vector<report::MapEntry>& DocumentMap() const override;

 private:
    void Check(int n) const;

    std::unique_ptr<rdl::Pages> m_pages;
    mutable std::vector<report::MapEntry> m_map;  // the engine's entries that were asked for so far
};

}  // namespace reports
