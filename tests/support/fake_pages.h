// SPDX-License-Identifier: GPL-3.0-or-later
// Pages for tests. Every character is 6 points wide and 12 high; lines begin at (36, 36).
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/contracts/report_view.h"
#include "platform/contracts/runtime.h"

namespace fakes {

struct FakePage {
    double width = 612, height = 792;
    std::vector<std::string> lines;  // ASCII
    std::vector<report::Link> links;
    std::optional<RuntimeError> drawError;
};

struct FakePages {
    std::vector<FakePage> pages = {FakePage{}};
    std::vector<report::MapEntry> map;  // in order of pages
    std::optional<RuntimeError> openError;
    std::optional<RuntimeError> makeError;  // raised after the last page
    bool waitsForTotal = false;
    std::function<void(int page, QPainter& painter)> onDraw;
};

class FakePageView : public report::PageView {
 public:
    // Raises the error of opening.
    FakePageView(FakePages script, std::vector<std::string>& calls);
    bool Reach(int n) override;
    int PagesMade() const override { return m_made; }
    bool AllMade() const override { return m_allMade; }
    double Width(int n) const override { return At(n).width; }
    double Height(int n) const override { return At(n).height; }
    bool WaitsForTotal() const override { return m_script.waitsForTotal && !m_allMade; }
    void Draw(int n, QPainter& painter) override;
    // Records "pdf FIRST to LAST" and writes "%PDF" to the file.
    bool WritePdf(const std::string& file, int first, int last,
                  const std::function<bool(int page)>& goOn) override;
    std::vector<report::Character> Characters(int n) override;
    std::vector<report::Link> Links(int n) override { return At(n).links; }
    const std::vector<report::MapEntry>& DocumentMap() const override { return m_map; }

 private:
    const FakePage& At(int n) const { return m_script.pages.at(static_cast<std::size_t>(n) - 1); }

    FakePages m_script;
    std::vector<std::string>& m_calls;
    std::vector<report::MapEntry> m_map;
    int m_made = 0;
    bool m_allMade = false;
};

}  // namespace fakes
