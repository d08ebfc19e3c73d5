// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/engine/report_pages.h"

#include <algorithm>
#include <stdexcept>

#include "rdl/api/host.h"
#include "rdl/engine/in_stage.h"
#include "rdl/screen/page_characters.h"
#include "rdl/screen/page_codec.h"

namespace rdl::engine {
namespace {

constexpr std::uint16_t NoGlyph = 0xFFFF;  // no font has it: nothing is drawn

bool HasMark(const layout::Page& page, const layout::TextOp& op, const text::Glyph& glyph) {
    constexpr std::string_view FirstBytes = "\xEE\x80";  // of all the marks
    return page.text.compare(op.textBegin + glyph.cluster, FirstBytes.size(), FirstBytes) == 0;
}

// Where the number of pages is not known yet its place stays empty.
void DropPageMarks(layout::Page& page) {
    for (const layout::Op& op : page.ops) {
        const auto* text = std::get_if<layout::TextOp>(&op);
        if (!text || std::string_view(page.text)
                             .substr(text->textBegin, text->textEnd - text->textBegin)
                             .find("\xEE\x80") == std::string_view::npos) {
            continue;
        }
        for (std::uint32_t i = text->firstGlyph; i < text->firstGlyph + text->glyphCount; ++i) {
            if (HasMark(page, *text, page.glyphs[i])) {
                page.glyphs[i].id = NoGlyph;
            }
        }
    }
    for (std::size_t at = 0; (at = page.text.find("\xEE\x80", at)) != std::string::npos;) {
        page.text.replace(at, 3, "   ");
    }
}

}  // namespace

ReportPages::ReportPages(std::shared_ptr<layout::ReportInstance> instance)
    : m_instance(std::move(instance)), m_info(writers::InfoOf(*m_instance)) {
    const RunWatch::Work work(m_instance->watch);
    InStage(Stage::Run, [&] { m_stream = layout::OpenPages(*m_instance); });
    m_usesTotals = m_stream->UsesTotals();
}

std::size_t ReportPages::Index(int n) const {
    if (n < 1 || n > Made()) {
        throw std::out_of_range("there is no page " + std::to_string(n));
    }
    return static_cast<std::size_t>(n) - 1;
}

bool ReportPages::Reach(int n) {
    while (Made() < n && !m_allMade) {
        if (m_failure) {
            std::rethrow_exception(m_failure);
        }
        try {
            InStage(Stage::Run, [&] { MakePage(); });
        } catch (...) {
            m_failure = std::current_exception();
            throw;
        }
    }
    return Made() >= n;
}

void ReportPages::MakePage() {
    const RunWatch::Work work(m_instance->watch);
    layout::Page page;
    if (!m_stream->NextBody(page)) {
        m_allMade = true;
        m_kept.clear();
        if (!m_usesTotals) {
            m_stream.reset();
            m_instance.reset();
        }
        return;
    }
    if (!m_usesTotals) {
        AddMarginsOf(Made(), 0, page);
    }
    m_archive.Add(page);
    NoteAnchors(page);
}

void ReportPages::AddMarginsOf(int index, int total, layout::Page& page) {
    layout::Page margins;
    m_stream->MarginsOf(index, total, margins);
    if (total == 0) {
        DropPageMarks(margins);
    }
    screen::AppendPage(page, margins);
}

void ReportPages::NoteAnchors(const layout::Page& page) {
    for (const layout::Op& op : page.ops) {
        const auto* anchor = std::get_if<layout::AnchorOp>(&op);
        if (!anchor) {
            continue;
        }
        if (!anchor->bookmark.empty()) {
            m_bookmarks.try_emplace(anchor->bookmark, Place{Made(), anchor->y});
        }
        if (!anchor->label.empty()) {
            m_map.push_back({anchor->label, anchor->level, Made(), anchor->y});
        }
    }
}

std::shared_ptr<const layout::Page> ReportPages::Content(int n) {
    constexpr std::size_t MostKept = 8;
    const auto known =
        std::find_if(m_kept.begin(), m_kept.end(), [n](const Kept& kept) { return kept.page == n; });
    if (known != m_kept.end()) {
        m_kept.splice(m_kept.begin(), m_kept, known);
        return m_kept.front().content;
    }
    auto page = std::make_shared<layout::Page>(m_archive.At(Index(n)));
    if (m_usesTotals) {
        AddMarginsOf(n - 1, m_allMade ? Made() : 0, *page);
    }
    m_kept.push_front({n, page});
    if (m_kept.size() > MostKept) {
        m_kept.pop_back();
    }
    return page;
}

void ReportPages::Draw(int n, QPainter& painter) {
    InStage(Stage::Run, [&] { m_painter.Draw(*Content(n), painter); });
}

bool ReportPages::WritePdf(Output& output, int first, int last, const std::function<bool(int page)>& goOn) {
    Index(first);
    Index(last);
    writers::Options options;
    options.nowTicks = TheHost().NowTicks();
    bool stopped = false;
    int page = first;
    const auto next = [&]() -> std::shared_ptr<const layout::Page> {
        stopped = page <= last && !goOn(page);
        return stopped || page > last ? nullptr : Content(page++);
    };
    InStage(Stage::Run, [&] { writers::WritePdf(m_info, next, output, options); });
    return !stopped;
}

std::vector<PageCharacter> ReportPages::Characters(int n) {
    return InStage(Stage::Run, [&] { return screen::CharactersOf(*Content(n)); });
}

std::vector<PageLink> ReportPages::Links(int n) {
    return InStage(Stage::Run, [&] {
        std::vector<PageLink> links;
        for (const layout::Op& op : Content(n)->ops) {
            const auto* link = std::get_if<layout::LinkOp>(&op);
            if (!link) {
                continue;
            }
            const Area area{link->x, link->y, link->width, link->height};
            if (const auto place = m_bookmarks.find(link->bookmark); place != m_bookmarks.end()) {
                links.push_back({area, {}, place->second.page, place->second.y});
            } else if (!link->uri.empty()) {
                links.push_back({area, link->uri});
            }
        }
        return links;
    });
}

}  // namespace rdl::engine
