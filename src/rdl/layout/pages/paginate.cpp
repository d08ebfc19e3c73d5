// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <cmath>
#include <deque>
#include <limits>

#include "rdl/layout/pages/container_flow.h"
#include "rdl/layout/pages/cutter.h"
#include "rdl/values/error.h"

namespace rdl::layout {
namespace {

using PageFacts = SectionInstance::PageFacts;

constexpr int MostAcross = 1000;  // pages side by side

// What a page needs to be known for its header and footer.
struct PageRecord {
    std::size_t section = 0;
    int numberGroup = 0;  // pages counted together; a new one where the number starts again
    bool first = false, last = false;
    PageFacts facts;
};

class Pages final : public PageStream {
 public:
    Pages(ReportInstance& report, const Limits& limits, int knownTotal, Structure* structure)
        : m_report(report), m_limits(limits), m_knownTotal(knownTotal), m_context{m_painter} {
        m_painter.Elements().Describe(structure);
        m_painter.facts.name = report.pageName;
    }

    bool NextBody(Page& content) override {
        if (m_report.watch) {
            m_report.watch->CheckBounds();
        }
        if (m_waiting.empty() && !FillPage()) {
            return false;
        }
        content = std::move(m_waiting.front());
        m_waiting.pop_front();
        PageRecord& record = m_records.emplace_back(m_current);
        m_pagesOfGroup.resize(static_cast<std::size_t>(record.numberGroup) + 1);
        ++m_pagesOfGroup.back();
        record.facts.number = ++m_number;
        record.facts.overallNumber = static_cast<int>(m_records.size());
        record.first = m_records.size() == 1;
        record.last = m_waiting.empty() && AtEnd();
        if (static_cast<int>(m_records.size()) > m_limits.maxPages) {
            throw Error("The report has more than " + std::to_string(m_limits.maxPages) + " pages");
        }
        return true;
    }

    void MarginsOf(int page, int total, Page& content) override {
        content.Clear();
        PageRecord& record = m_records.at(static_cast<std::size_t>(page));
        SectionInstance& section = *m_report.sections[record.section];
        const PageSetup& setup = section.page;
        content.width = setup.width;
        content.height = setup.height;
        record.facts.overallTotal = total;
        record.facts.total = total > 0 ? GroupTotal(record.numberGroup, total) : 0;
        // The only page is the first to a header and the last to a footer.
        const bool hasHeader = setup.headerHeight > 0 && (setup.headerOnFirst || !record.first) &&
                               (setup.headerOnLast || !record.last || record.first);
        const bool hasFooter = setup.footerHeight > 0 && (setup.footerOnLast || !record.last) &&
                               (setup.footerOnFirst || !record.first || record.last);
        const double width = setup.width - setup.marginLeft - setup.marginRight;
        if (hasHeader) {
            Draw(section.Header(record.facts), setup.headerStyle,
                 {setup.marginLeft, setup.marginTop, width, setup.headerHeight}, content);
        }
        if (hasFooter) {
            const double top = setup.height - setup.marginBottom - setup.footerHeight;
            Draw(section.Footer(record.facts), setup.footerStyle,
                 {setup.marginLeft, top, width, setup.footerHeight}, content);
        }
    }

    bool UsesTotals() const override {
        return std::any_of(m_report.sections.begin(), m_report.sections.end(), [](const auto& section) {
            return section->usesTotalPages && section->page.headerHeight + section->page.footerHeight > 0;
        });
    }

 private:
    bool AtEnd() const { return m_section >= m_report.sections.size(); }

    int GroupTotal(int group, int total) const {
        if (m_numberGroup == 0) {
            return total;
        }
        return m_pagesOfGroup[static_cast<std::size_t>(group)];
    }

    void Draw(const std::vector<Instance>& items, const BoxStylePtr& style, const Rect& area, Page& content) {
        Painter painter;
        painter.Begin(content, area.y);
        // There is no next page to wait for: what has grown past the margin is drawn all the same.
        constexpr double Unbounded = 1e6;
        FlowContext context{painter, Unbounded, area.x};
        ContainerFlow flow(items, context);
        if (style) {
            painter.Fill(area, *style);
        }
        flow.Place(area.x, area.y, Unbounded);
        if (painter.Extent() > area.Right()) {
            EndLinesAt(area.Right(), content);
        }
        if (style) {
            painter.Borders(area, *style);
        }
    }

    // Points of the body on a page of the current section.
    Rect BodyArea(const SectionInstance& section) const {
        const PageSetup& setup = section.page;
        const Rect area{
            setup.marginLeft, setup.marginTop + setup.headerHeight,
            setup.width - setup.marginLeft - setup.marginRight,
            setup.height - setup.marginTop - setup.marginBottom - setup.headerHeight - setup.footerHeight};
        constexpr double Least = 1;
        if (area.width < Least || area.height < Least) {
            throw Error("The margins, header and footer leave no room for the body on a page");
        }
        return area;
    }

    void Begin(SectionInstance& section, const Rect& area) {
        m_context.pageHeight = area.height;
        m_context.left = area.x;
        m_context.pageWidth = section.page.columns > 1 ? std::numeric_limits<double>::infinity() : area.width;
        m_painter.CollectTexts(&section.wantedReportItems);
        m_flow = std::make_unique<ContainerFlow>(section.items, m_context);
    }

    // Makes the next page's body, or several side by side. Returns false after the last page.
    bool FillPage() {
        if (m_report.sections.empty()) {
            throw Error("The report has no body");
        }
        if (AtEnd()) {
            return false;
        }
        SectionInstance& section = *m_report.sections[m_section];
        const Rect area = BodyArea(section);
        if (!m_flow) {
            Begin(section, area);
        }
        Page page;
        page.width = section.page.width;
        page.height = section.page.height;
        m_painter.ClearExtent();
        m_painter.resetPageNumber = false;
        m_painter.facts.number = m_number + 1;
        m_painter.facts.overallNumber = static_cast<int>(m_records.size()) + 1;
        m_painter.facts.total = m_painter.facts.overallTotal = m_knownTotal;
        const bool done = FillColumns(section, area, page);
        if (m_painter.resetPageNumber && !m_records.empty()) {
            m_number = 0;
            ++m_numberGroup;
        }
        m_current = PageRecord{};
        m_current.section = m_section;
        m_current.numberGroup = m_numberGroup;
        m_current.facts.name = m_painter.facts.name;
        m_current.facts.reportItems = m_painter.TakeCollected();
        const double extent = m_painter.Extent() - area.x;
        const int across = static_cast<int>(std::max(std::ceil((extent - 0.5) / area.width), 1.0));
        if (across > MostAcross) {
            throw Error("The report is wider than " + std::to_string(MostAcross) + " pages");
        }
        if (across > 1 && std::isfinite(m_context.pageWidth)) {
            CutPages(page, area.x, area.width, across, m_waiting);
        } else {
            m_waiting.push_back(std::move(page));
        }
        if (done) {
            m_flow.reset();
            ++m_section;
        }
        return true;
    }

    // Those that a page has room for: what would stand beside it is lost to a reader.
    static int ColumnsOf(const SectionInstance& section, const Rect& area) {
        const double spacing = section.page.columnSpacing;
        const double fitting = (area.width + spacing + 0.5) / std::max(section.bodyWidth + spacing, 1.0);
        return std::clamp(static_cast<int>(std::min(fitting, 1000.0)), 1, section.page.columns);
    }

    // The space that a body has below its last item, as defined.
    static double Below(const SectionInstance& section) {
        double below = section.bodyHeight;
        for (const Instance& item : section.items) {
            below = std::min(below, section.bodyHeight - std::max(item.y, item.y + item.height));
        }
        return std::max(below, 0.0);
    }

    bool FillColumns(SectionInstance& section, const Rect& area, Page& page) {
        bool done = false;
        const PageSetup& setup = section.page;
        if (section.page.style) {
            m_painter.Begin(page, 0);
            m_painter.Fill({0, 0, setup.width, setup.height}, *setup.style);
            m_painter.Borders({setup.marginLeft, setup.marginTop, area.width,
                               setup.height - setup.marginTop - setup.marginBottom},
                              *setup.style);
            m_painter.ClearExtent();
        }
        const int columns = ColumnsOf(section, area);
        const double shared = (area.width - setup.columnSpacing * (columns - 1)) / columns;
        const double step = std::max(shared, section.bodyWidth) + setup.columnSpacing;
        for (int column = 0; column < columns && !done; ++column) {
            const double x = area.x + column * step;
            m_painter.Begin(page, area.y);
            const std::size_t background = m_painter.ReserveFill();
            const Flow::Outcome outcome = m_flow->Place(x, area.y, area.height);
            done = outcome.done;
            if (section.bodyStyle) {
                const double width = std::min(section.bodyWidth, area.width);
                const double height =
                    std::clamp(outcome.used + (done ? Below(section) : 0.0), 0.0, area.height);
                m_painter.FillReserved(background, {x, area.y, width, height}, *section.bodyStyle);
                m_painter.Borders({x, area.y, width, height}, *section.bodyStyle);
            }
        }
        return done;
    }

    ReportInstance& m_report;
    const Limits m_limits;
    const int m_knownTotal;
    Painter m_painter;
    FlowContext m_context;
    std::unique_ptr<ContainerFlow> m_flow;
    std::size_t m_section = 0;
    int m_number = 0, m_numberGroup = 0;
    PageRecord m_current;
    std::deque<Page> m_waiting;
    std::vector<PageRecord> m_records;
    std::vector<int> m_pagesOfGroup;
};

// Bodies that say how many pages there are must know before the first one is given out.
int CountPages(ReportInstance& report, const Limits& limits) {
    const bool needed = std::any_of(report.sections.begin(), report.sections.end(),
                                    [](const auto& section) { return section->bodyUsesTotalPages; });
    if (!needed) {
        return 0;
    }
    Pages pages(report, limits, 0, nullptr);
    Page page;
    int count = 0;
    while (pages.NextBody(page)) {
        ++count;
    }
    return count;
}

}  // namespace

std::unique_ptr<PageStream> OpenPages(ReportInstance& report, const Limits& limits) {
    return std::make_unique<Pages>(report, limits, CountPages(report, limits), nullptr);
}

int Paginate(ReportInstance& report, PageSink& sink, const Limits& limits, Structure* structure) {
    Pages pages(report, limits, CountPages(report, limits), structure);
    const bool hasMargins = std::any_of(
        report.sections.begin(), report.sections.end(),
        [](const auto& section) { return section->page.headerHeight > 0 || section->page.footerHeight > 0; });
    const bool atOnce = !pages.UsesTotals();
    Page page;
    int count = 0;
    const auto margins = [&](int index, int total) {
        pages.MarginsOf(index, total, page);
        if (!page.ops.empty()) {
            sink.Margins(index, page);
        }
    };
    for (; pages.NextBody(page); ++count) {
        sink.Body(count, page);
        if (hasMargins && atOnce) {
            margins(count, 0);
        }
    }
    for (int i = 0; i < count && hasMargins && !atOnce; ++i) {
        margins(i, count);
    }
    return count;
}

}  // namespace rdl::layout
