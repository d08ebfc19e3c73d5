// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/pages/flow.h"

#include <algorithm>
#include <cmath>

#include "rdl/layout/model/image_size.h"
#include "rdl/layout/pages/container_flow.h"
#include "rdl/layout/pages/table_flow.h"
#include "rdl/layout/pages/tolerance.h"

namespace rdl::layout {
namespace {

const BoxStyle NoBox;

const BoxStyle& BoxOf(const Instance& item) {
    return item.box ? *item.box : NoBox;
}

double VerticalPadding(const Instance& item) {
    return static_cast<double>(BoxOf(item).paddingTop) + static_cast<double>(BoxOf(item).paddingBottom);
}

}  // namespace

bool Flows(const Instance& item) {
    return item.kind == InstanceKind::Container || item.kind == InstanceKind::Table;
}

bool IsTurned(const Instance& item) {
    return BoxOf(item).writingMode != WritingMode::Horizontal;
}

double GrownHeight(const Instance& item, const LaidText& laid) {
    if (IsTurned(item)) {
        return item.height;
    }
    const double needed = laid.lines.empty() ? 0 : laid.height + VerticalPadding(item);
    if (needed > item.height + Tolerance) {
        return item.canGrow ? needed : item.height;
    }
    return item.canShrink ? needed : item.height;
}

double LineWidth(const Instance& item, double width, double height) {
    const Rect inside = ContentOf({0, 0, width, height}, BoxOf(item));
    return IsTurned(item) ? inside.height : inside.width;
}

unsigned SidesOf(const Instance& item, bool beganBefore, bool goesOn) {
    unsigned sides = Painter::All;
    if (item.omitBorder && beganBefore) {
        sides &= ~static_cast<unsigned>(Painter::Top);
    }
    if (item.omitBorder && goesOn) {
        sides &= ~static_cast<unsigned>(Painter::Bottom);
    }
    return sides;
}

double ClearOfPageEdges(const FlowContext& context, double x, double width) {
    if (!std::isfinite(context.pageWidth) || width > context.pageWidth) {
        return x;
    }
    const double page = std::floor((x - context.left + Tolerance) / context.pageWidth);
    const double edge = context.left + (page + 1) * context.pageWidth;
    return x + width > edge + Tolerance && x < edge ? edge : x;
}

std::unique_ptr<Flow> MakeFlow(const Instance& item, FlowContext& context) {
    switch (item.kind) {
        case InstanceKind::Text:
            return std::make_unique<TextFlow>(item, context);
        case InstanceKind::Container:
            return std::make_unique<ContainerFlow>(item, context);
        case InstanceKind::Table:
            return std::make_unique<TableFlow>(item, context);
        case InstanceKind::Image:
        case InstanceKind::Line:
        case InstanceKind::Drawing:
            break;
    }
    return std::make_unique<BlockFlow>(item, context);
}

TextFlow::TextFlow(const Instance& item, FlowContext& context) : Flow(context), m_item(item) {
    context.painter.Layout().Lay(item, LineWidth(item, item.width, item.height), m_laid);
}

double TextFlow::Measure(double) {
    return GrownHeight(m_item, m_laid);
}

Flow::Outcome TextFlow::Place(double x, double y, double available) {
    Painter& painter = m_context.painter;
    const double top = m_next == 0 ? 0 : m_laid.lines[m_next].top;
    const double height =
        m_next == 0 ? GrownHeight(m_item, m_laid) : m_laid.height - top + VerticalPadding(m_item);
    Rect area{ClearOfPageEdges(m_context, x, m_item.width), y, m_item.width, height};
    std::size_t last = m_laid.lines.size();
    bool done = true;
    if (height > available + Tolerance && !IsTurned(m_item)) {
        if (m_next == 0 && MayWait(y)) {
            return {0, false};
        }
        if (m_item.canGrow || m_next > 0) {
            const double room = top + available - VerticalPadding(m_item) + Tolerance;
            last = m_next + 1;  // at least one, or there would be no end
            while (last < m_laid.lines.size() && m_laid.lines[last].top + m_laid.lines[last].height <= room) {
                ++last;
            }
            done = last >= m_laid.lines.size();
            area.height = done ? height : available;
        }
    }
    Tags& tags = painter.Elements();
    if (m_next == 0) {
        m_tags = BeginItem(tags, m_item);
    }
    painter.Fill(area, BoxOf(m_item));
    {
        const Tags::Within within(tags, m_tags.Content());
        painter.Text(area, m_item, m_laid, m_next, last);
        painter.Borders(area, BoxOf(m_item));
        if (m_next == 0) {
            painter.Marks(area, m_item);
            painter.Collect(m_item);
        }
    }
    if (done) {
        EndItem(tags, m_tags);
    }
    if (BoxOf(m_item).HasBackground()) {
        painter.SetContent();
    }
    m_next = last;
    return {area.height, done};
}

BlockFlow::BlockFlow(const Instance& item, FlowContext& context) : Flow(context), m_item(item) {}

double BlockFlow::Measure(double) {
    if (m_item.kind == InstanceKind::Image && m_item.sizing == Instance::Sizing::AutoSize &&
        m_item.imageBytes) {
        const ImageSize size = SizeOfImage(*m_item.imageBytes);
        return size.height > 0 ? size.height + VerticalPadding(m_item) : m_item.height;
    }
    return std::abs(m_item.height);
}

Flow::Outcome BlockFlow::Place(double x, double y, double available) {
    const double height = Measure(0);
    if (m_drawn == 0 && height > available + Tolerance && MayWait(y)) {
        return {0, false};
    }
    const double left = height - m_drawn;
    // Whatever is but a little too high is better drawn past the edge than on a page of its own.
    const bool isSliced = m_drawn > 0 || height > m_context.pageHeight + Tolerance;
    const double part = isSliced ? std::min(left, std::max(available, 1.0)) : left;
    if (isSliced) {
        constexpr double Everywhere = 1e5;
        m_context.painter.BeginClip({x - Everywhere, y, 2 * Everywhere, part});
    }
    Tags& tags = m_context.painter.Elements();
    if (m_drawn == 0 && m_item.kind != InstanceKind::Line) {
        m_tags = BeginItem(tags, m_item);
    }
    {
        const Tags::Within within(tags, m_tags.Content());
        Draw(x, y - m_drawn, height);
    }
    if (isSliced) {
        m_context.painter.EndClip();
    }
    m_drawn += part;
    const bool done = m_drawn >= height - Tolerance;
    if (done) {
        EndItem(tags, m_tags);
    }
    return {part, done};
}

void BlockFlow::Draw(double x, double y, double height) {
    Painter& painter = m_context.painter;
    if (m_item.kind == InstanceKind::Line) {
        painter.SetContent();
        const double from = m_item.height < 0 ? y - m_item.height : y;
        painter.Line(x, from, x + m_item.width, from + m_item.height, BoxOf(m_item).top);
        return;
    }
    Rect area{x, y, m_item.width, height};
    if (m_item.sizing == Instance::Sizing::AutoSize && m_item.imageBytes) {
        const BoxStyle& box = BoxOf(m_item);
        area.width = SizeOfImage(*m_item.imageBytes).width + static_cast<double>(box.paddingLeft) +
                     static_cast<double>(box.paddingRight);
    }
    area.x = ClearOfPageEdges(m_context, x, area.width);
    painter.Fill(area, BoxOf(m_item));
    if (m_item.drawing) {
        painter.Drawing(area, *m_item.drawing);
    }
    painter.Image(area, m_item);
    painter.Borders(area, BoxOf(m_item));
    if (m_drawn == 0) {
        painter.Marks(area, m_item);
    }
}

}  // namespace rdl::layout
