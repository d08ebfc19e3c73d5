// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/reports/rdl_pages.h"

#include "platform/reports/failure.h"
#include "platform/reports/file_output.h"

namespace reports {
namespace {

report::Area AreaOf(const rdl::Area& area) {
    return {area.x, area.y, area.width, area.height};
}

}  // namespace

void RdlPages::Check(int n) const {
    if (n < 1 || n > m_pages->Made()) {
        throw RuntimeError(err::SubscriptOutOfRange);
    }
}

bool RdlPages::Reach(int n) {
    return Translated([&] { return m_pages->Reach(n); });
}

double RdlPages::Width(int n) const {
    Check(n);
    return m_pages->Width(n);
}

double RdlPages::Height(int n) const {
    Check(n);
    return m_pages->Height(n);
}

void RdlPages::Draw(int n, QPainter& painter) {
    Check(n);
    Translated([&] { m_pages->Draw(n, painter); });
}

bool RdlPages::WritePdf(const std::string& file, int first, int last,
                        const std::function<bool(int page)>& goOn) {
    Check(first);
    Check(last);
    FileOutput output(file);
    const bool isWhole = Translated([&] { return m_pages->WritePdf(output, first, last, goOn); });
    if (isWhole) {
        output.Commit();
    }
    return isWhole;
}

std::vector<report::Character> RdlPages::Characters(int n) {
    Check(n);
    return Translated([&] {
        std::vector<report::Character> characters;
        for (rdl::PageCharacter& character : m_pages->Characters(n)) {
            characters.push_back({std::move(character.text), AreaOf(character.area), character.endsLine});
        }
        return characters;
    });
}

std::vector<report::Link> RdlPages::Links(int n) {
    Check(n);
    return Translated([&] {
        std::vector<report::Link> links;
        for (rdl::PageLink& link : m_pages->Links(n)) {
            links.push_back({AreaOf(link.area), std::move(link.uri), link.page, link.y});
        }
        return links;
    });
}

const std::vector<report::MapEntry>& RdlPages::DocumentMap() const {
    const std::vector<rdl::MapEntry>& entries = m_pages->DocumentMap();
    for (std::size_t i = m_map.size(); i < entries.size(); ++i) {
        m_map.push_back({entries[i].label, entries[i].level, entries[i].page, entries[i].y});
    }
    return m_map;
}

}  // namespace reports
