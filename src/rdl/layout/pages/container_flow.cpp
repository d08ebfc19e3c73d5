// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/pages/container_flow.h"

#include <algorithm>
#include <limits>
#include <queue>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "rdl/layout/pages/tolerance.h"

namespace rdl::layout {
namespace {

constexpr double Nowhere = std::numeric_limits<double>::infinity();

}  // namespace

ContainerFlow::ContainerFlow(const Instance& item, FlowContext& context) : Flow(context), m_item(&item) {
    Adopt(item.children);
}

ContainerFlow::ContainerFlow(const std::vector<Instance>& items, FlowContext& context) : Flow(context) {
    Adopt(items);
}

void ContainerFlow::Adopt(const std::vector<Instance>& items) {
    m_children.resize(items.size());
    for (std::size_t i = 0; i < items.size(); ++i) {
        const Instance& item = items[i];
        Child& child = m_children[i];
        child.item = &item;
        child.top = std::min(item.y, item.y + item.height);
        child.bottom = std::max(item.y, item.y + item.height);
        m_definedBottom = std::max(m_definedBottom, child.bottom);
    }
    NoteCompanions(items);
    NoteAbove();
}

void ContainerFlow::NoteCompanions(const std::vector<Instance>& items) {
    std::unordered_multimap<std::string_view, std::size_t> tables;
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (items[i].kind == InstanceKind::Table) {
            tables.emplace(items[i].name, i);
        }
    }
    for (std::size_t i = 0; i < items.size() && !tables.empty(); ++i) {
        if (!items[i].repeatWith.empty()) {
            const auto [begin, end] = tables.equal_range(items[i].repeatWith);
            for (auto table = begin; table != end; ++table) {
                m_children[table->second].companions.push_back(i);
            }
        }
    }
}

// Whether a child that ends above another one counts besides those that begin at `nearest`: only the nearest
// do, as one that ends above another one acts through that one. A line ends where it begins: it does not
// stand above itself.
bool ContainerFlow::Acts(const Child& child, double nearest) {
    return child.bottom > nearest + Tolerance || child.top > nearest - Tolerance;
}

// Children come in the order of their tops. Each is passed once, by the first one that begins below it.
void ContainerFlow::NoteAbove() {
    const auto isLower = [this](std::size_t left, std::size_t right) {
        return m_children[left].bottom > m_children[right].bottom;
    };
    std::priority_queue<std::size_t, std::vector<std::size_t>, decltype(isLower)> open(isLower);
    std::vector<std::size_t> passed;
    double nearest = -Nowhere, top = -Nowhere;
    std::size_t above = 0;
    m_aboves.resize(1);
    for (std::size_t i = 0; i < m_children.size(); ++i) {
        Child& child = m_children[i];
        if (child.top < top) {  // a line that runs upwards
            m_aboves.push_back({DirectlyAbove(i)});
            child.above = m_aboves.size() - 1;
            open.push(i);
            continue;
        }
        top = child.top;
        bool isPassing = false;
        for (; !open.empty() && m_children[open.top()].bottom <= top + Tolerance; open.pop()) {
            passed.push_back(open.top());
            nearest = std::max(nearest, m_children[open.top()].top);
            isPassing = true;
        }
        if (isPassing) {
            std::erase_if(passed, [&](std::size_t other) { return !Acts(m_children[other], nearest); });
            m_aboves.push_back({passed});
            above = m_aboves.size() - 1;
        }
        child.above = above;
        open.push(i);
    }
}

std::vector<std::size_t> ContainerFlow::DirectlyAbove(std::size_t index) const {
    const double top = m_children[index].top;
    double nearest = -Nowhere;
    for (std::size_t i = 0; i < index; ++i) {
        if (m_children[i].bottom <= top + Tolerance) {
            nearest = std::max(nearest, m_children[i].top);
        }
    }
    std::vector<std::size_t> above;
    for (std::size_t i = 0; i < index; ++i) {
        if (m_children[i].bottom <= top + Tolerance && Acts(m_children[i], nearest)) {
            above.push_back(i);
        }
    }
    return above;
}

// Those above are before those below: in one pass nothing of them changes any more.
void ContainerFlow::Look(Above& above) const {
    above.pass = m_pass;
    above.areDone = true;
    double most = -Nowhere;
    for (const std::size_t index : above.children) {
        const Child& child = m_children[index];
        above.areDone = above.areDone && child.state == State::Done;
        if (const double push = child.actualBottom - child.bottom; push > most) {
            most = push;
            above.lowest = index;
        }
    }
}

bool ContainerFlow::TopOf(const Child& child, double& top) {
    if (child.state == State::Going) {
        top = 0;
        return true;
    }
    Above& above = m_aboves[child.above];
    if (above.children.empty()) {
        top = std::max(m_origin + child.top, 0.0);
        return true;
    }
    if (above.pass != m_pass) {
        Look(above);
    }
    if (!above.areDone) {
        return false;
    }
    const Child& other = m_children[above.lowest];
    top = std::max(other.actualBottom + child.top - other.bottom, 0.0);
    return true;
}

double ContainerFlow::Measure(double limit) {
    ++m_pass;
    double reached = 0;
    for (std::size_t i = 0; i < m_children.size() && reached <= limit; ++i) {
        Child& child = m_children[i];
        double top = 0;
        if (!TopOf(child, top)) {
            top = child.top;
        }
        child.actualBottom = top + MakeFlow(*child.item, m_context)->Measure(limit);
        child.state = State::Done;
        reached = std::max(reached, child.actualBottom);
    }
    for (Child& child : m_children) {
        child.state = State::Waiting;
    }
    return FinishedHeight(reached, Nowhere);
}

double ContainerFlow::FinishedHeight(double reached, double available) const {
    if (!m_item) {
        return reached;
    }
    const double below = m_item->consumeSpace ? 0 : std::max(0.0, m_item->height - m_definedBottom);
    const double height = std::max(m_origin + std::max(m_item->height, m_leastHeight),
                                   m_children.empty() ? 0 : reached + below);
    return std::clamp(height, 0.0, std::max(available, reached));
}

bool ContainerFlow::Waits(double y, double available) {
    if (m_begun || !m_item || !MayWait(y)) {
        return false;
    }
    if (m_children.empty()) {
        return m_item->height > available + Tolerance;
    }
    if (!m_item->keepTogether) {
        return false;
    }
    const double height = Measure(m_context.pageHeight);
    return height > available + Tolerance && height <= m_context.pageHeight + Tolerance;
}

ContainerFlow::Side ContainerFlow::SideOf(const Child& companion, const Child& table) const {
    if (companion.bottom <= table.top + Tolerance) {
        return Side::Above;
    }
    return companion.top >= table.bottom - Tolerance ? Side::Below : Side::Beside;
}

// The room that companions need besides the table's.
double ContainerFlow::HeightOf(const Child& table, Side side) const {
    double height = 0;
    for (const std::size_t index : table.companions) {
        const Child& companion = m_children[index];
        if (SideOf(companion, table) == side) {
            height = std::max(
                height, side == Side::Above ? table.top - companion.top : companion.bottom - table.bottom);
        }
    }
    return height;
}

void ContainerFlow::PlaceCompanions(const Child& table, Side side, double x, double top) {
    for (const std::size_t index : table.companions) {
        const Child& companion = m_children[index];
        if (SideOf(companion, table) == side) {
            const double distance = companion.top - (side == Side::Below ? table.bottom : table.top);
            const Tags::Decoration again(m_context.painter.Elements());
            MakeFlow(*companion.item, m_context)
                ->Place(x + companion.item->x, top + distance, m_context.pageHeight);
        }
    }
}

void ContainerFlow::BeginChild(const Instance& item) {
    Painter& painter = m_context.painter;
    if (!item.pageName.empty() && (!painter.HasContent() || !painter.isPageNamed)) {
        painter.SetPageName(item.pageName);
    }
    if (item.breakBefore && item.resetPageNumber) {
        painter.resetPageNumber = true;
    }
}

void ContainerFlow::PlaceChild(Child& child, double x, double y, double available, Progress& progress) {
    double top = 0;
    if (child.state == State::Done || !TopOf(child, top) || top > progress.breakAt - Tolerance ||
        top > available - Tolerance) {
        return;
    }
    const bool begins = child.state == State::Waiting;
    if (begins && child.item->breakBefore && m_context.painter.HasContent()) {
        progress.breakAt = std::min(progress.breakAt, top);
        return;
    }
    if (!child.flow) {
        child.flow = MakeFlow(*child.item, m_context);
    }
    const double above = begins ? 0 : HeightOf(child, Side::Above);
    const double below = HeightOf(child, Side::Below);
    // Companions that fill half of a page leave no room for what they go with.
    const bool hasCompanions = !child.companions.empty() && above + below < m_context.pageHeight / 2;
    if (hasCompanions && !begins) {
        top += above;
        PlaceCompanions(child, Side::Above, x, y + top);
        PlaceCompanions(child, Side::Beside, x, y + top);
    }
    if (begins) {
        BeginChild(*child.item);
    }
    const double room = available - top - (hasCompanions ? below : 0);
    const Outcome outcome = child.flow->Place(x + child.item->x, y + top, room);
    progress.reached = std::max(progress.reached, top + outcome.used);
    if (!outcome.done) {
        child.state = State::Going;
        if (hasCompanions && outcome.used > 0) {
            PlaceCompanions(child, Side::Below, x, y + top + outcome.used);
            progress.reached += below;
        }
        return;
    }
    child.state = State::Done;
    child.actualBottom = top + outcome.used;
    child.flow.reset();
    if (child.item->breakAfter || outcome.breakAfter) {
        progress.breakAt = std::min(progress.breakAt, child.actualBottom);
        m_resetNext = outcome.resetNext || (child.item->breakAfter && child.item->resetPageNumber);
    }
}

void ContainerFlow::TurnPage(double used) {
    m_origin -= used;
    for (Child& child : m_children) {
        child.actualBottom -= used;
    }
}

void ContainerFlow::Mark(const Rect& area) {
    Tags& tags = m_context.painter.Elements();
    const bool isLink = !m_item->hyperlink.empty() || !m_item->bookmarkLink.empty();
    ElementId link = isLink ? tags.Begin(Role::Link) : tags.Current();
    {
        const Tags::Within within(tags, link);
        m_context.painter.Marks(area, *m_item);
    }
    if (isLink) {
        tags.End(link);
    }
}

Flow::Outcome ContainerFlow::Place(double x, double y, double available) {
    if (Waits(y, available)) {
        return {0, false};
    }
    Painter& painter = m_context.painter;
    const bool hasBox = m_item && m_item->box;
    const std::size_t background = hasBox ? painter.ReserveFill() : 0;
    if (m_item && !m_begun) {
        Mark({x, y, m_item->width, std::min(m_item->height, available)});
    }
    const bool wasBegun = std::exchange(m_begun, true);
    if (std::exchange(m_resetNext, false)) {
        painter.resetPageNumber = true;
    }
    Progress progress{Nowhere, 0};
    ++m_pass;
    m_stretches.clear();
    for (Child& child : m_children) {
        const std::size_t before = painter.Drawn();
        PlaceChild(child, x, y, available, progress);
        if (painter.Drawn() > before) {
            m_stretches.push_back({child.item->layer, before, painter.Drawn()});
        }
    }
    painter.Restack(m_stretches);
    const bool done = std::all_of(m_children.begin(), m_children.end(),
                                  [](const Child& child) { return child.state == State::Done; });
    const bool goesOn = std::any_of(m_children.begin(), m_children.end(),
                                    [](const Child& child) { return child.state == State::Going; });
    double used = done ? FinishedHeight(progress.reached, available) : available;
    if (!done && !goesOn && progress.breakAt < available) {
        used = std::max(progress.breakAt, progress.reached);
    }
    if (hasBox) {
        const Rect area{x, y, m_item->width, done ? used : std::min(used, available)};
        painter.FillReserved(background, area, *m_item->box);
        painter.Borders(area, *m_item->box, SidesOf(*m_item, wasBegun, !done));
        if (m_item->box->HasBackground()) {
            painter.SetContent();
        }
    }
    if (!done) {
        TurnPage(used);
    }
    const bool breaks = done && progress.breakAt < Nowhere;
    return {used, done, breaks, breaks && m_resetNext};
}

}  // namespace rdl::layout
