// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/fake_pages.h"

#include <fstream>

namespace fakes {

FakePageView::FakePageView(FakePages script, std::vector<std::string>& calls)
    : m_script(std::move(script)), m_calls(calls) {
    m_calls.push_back("open pages");
    if (m_script.openError) {
        throw RuntimeError(*m_script.openError);
    }
}

bool FakePageView::Reach(int n) {
    while (m_made < n && !m_allMade) {
        if (m_made < static_cast<int>(m_script.pages.size())) {
            ++m_made;
        } else if (m_script.makeError) {
            throw RuntimeError(*m_script.makeError);
        } else {
            m_allMade = true;
        }
    }
    while (m_map.size() < m_script.map.size() && m_script.map[m_map.size()].page <= m_made) {
        m_map.push_back(m_script.map[m_map.size()]);
    }
    return m_made >= n;
}

void FakePageView::Draw(int n, QPainter& painter) {
    m_calls.push_back("draw " + std::to_string(n));
    if (At(n).drawError) {
        throw RuntimeError(*At(n).drawError);
    }
    if (m_script.onDraw) {
        m_script.onDraw(n, painter);
    }
}

bool FakePageView::WritePdf(const std::string& file, int first, int last,
                            const std::function<bool(int page)>& goOn) {
    for (int page = first; page <= last; ++page) {
        if (!goOn(page)) {
            return false;
        }
    }
    m_calls.push_back("pdf " + std::to_string(first) + " to " + std::to_string(last));
    std::ofstream(file) << "%PDF";
    return true;
}

std::vector<report::Character> FakePageView::Characters(int n) {
    std::vector<report::Character> characters;
    double y = 36;
    for (const std::string& line : At(n).lines) {
        double x = 36;
        for (const char c : line) {
            characters.push_back({std::string(1, c), {x, y, 6, 12}, false});
            x += 6;
        }
        if (!line.empty()) {
            characters.back().endsLine = true;
        }
        y += 12;
    }
    return characters;
}

}  // namespace fakes
