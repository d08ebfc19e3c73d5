#include "platform/rdl/layout/container_flow.h"

#include <algorithm>
#include <limits>

namespace rdl::layout {
namespace {

constexpr double Tolerance = 0.01;
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
        // Only the nearest count: one that ends above another one above this child acts through that one.
        double nearest = -Nowhere;
        for (std::size_t j = 0; j < i; ++j) {
            if (m_children[j].bottom <= child.top + Tolerance) {
                nearest = std::max(nearest, m_children[j].top);
            }
        }
        for (std::size_t j = 0; j < i; ++j) {
            const Child& other = m_children[j];
            if (other.bottom <= child.top + Tolerance && other.bottom > nearest + Tolerance) {
                child.above.push_back(j);
            }
        }
    }
}

bool ContainerFlow::TopOf(const Child& child, double& top) const {
    if (child.state == State::Going) {
        top = 0;
        return true;
    }
    top = child.above.empty() ? m_origin + child.top : -Nowhere;
    for (const std::size_t index : child.above) {
        const Child& other = m_children[index];
        if (other.state != State::Done) {
            return false;
        }
        top = std::max(top, other.actualBottom + child.top - other.bottom);
    }
    top = std::max(top, 0.0);
    return true;
}

double ContainerFlow::Measure(double limit) {
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
    const double below = std::max(0.0, m_item->height - m_definedBottom);
    const double height = std::max(m_origin + m_item->height, m_children.empty() ? 0 : reached + below);
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

void ContainerFlow::PlaceChild(Child& child, double x, double y, double available, double& breakAt,
                               double& reached) {
    double top = 0;
    if (child.state == State::Done || !TopOf(child, top) || top > breakAt - Tolerance ||
        top > available - Tolerance) {
        return;
    }
    if (child.state == State::Waiting && child.item->breakBefore && m_context.painter.HasContent()) {
        breakAt = std::min(breakAt, top);
        return;
    }
    if (!child.flow) {
        child.flow = MakeFlow(*child.item, m_context);
    }
    const Outcome outcome = child.flow->Place(x + child.item->x, y + top, available - top);
    reached = std::max(reached, top + outcome.used);
    if (!outcome.done) {
        child.state = State::Going;
        return;
    }
    child.state = State::Done;
    child.actualBottom = top + outcome.used;
    child.flow.reset();
    if (child.item->breakAfter || outcome.breakAfter) {
        breakAt = std::min(breakAt, child.actualBottom);
    }
}

void ContainerFlow::TurnPage(double used) {
    m_origin -= used;
    for (Child& child : m_children) {
        child.actualBottom -= used;
    }
}

Flow::Outcome ContainerFlow::Place(double x, double y, double available) {
    if (Waits(y, available)) {
        return {0, false, false};
    }
    Painter& painter = m_context.painter;
    const bool hasBox = m_item && m_item->box;
    const std::size_t background = hasBox ? painter.ReserveFill() : 0;
    if (m_item && !m_begun) {
        painter.Marks({x, y, m_item->width, std::min(m_item->height, available)}, *m_item);
    }
    m_begun = true;
    double breakAt = Nowhere;
    double reached = 0;
    for (Child& child : m_children) {
        PlaceChild(child, x, y, available, breakAt, reached);
    }
    const bool done = std::all_of(m_children.begin(), m_children.end(),
                                  [](const Child& child) { return child.state == State::Done; });
    const bool goesOn = std::any_of(m_children.begin(), m_children.end(),
                                    [](const Child& child) { return child.state == State::Going; });
    double used = done ? FinishedHeight(reached, available) : available;
    if (!done && !goesOn && breakAt < available) {
        used = std::max(breakAt, reached);
    }
    if (hasBox) {
        const Rect area{x, y, m_item->width, done ? used : std::min(used, available)};
        painter.FillReserved(background, area, *m_item->box);
        painter.Borders(area, *m_item->box);
        if (m_item->box->HasBackground()) {
            painter.SetContent();
        }
    }
    if (!done) {
        TurnPage(used);
    }
    return {used, done, done && breakAt < Nowhere};
}

}  // namespace rdl::layout
