// SPDX-License-Identifier: GPL-3.0-or-later
// Places items on pages. A flow places as much of its item as the current page holds and continues on the
// next page. Lengths are points.
#pragma once

#include <limits>
#include <memory>

#include "rdl/layout/pages/painter.h"

namespace rdl::layout {

struct FlowContext {
    Painter& painter;
    double pageHeight = 0;                                       // height of a page available to the body
    double left = 0;                                             // left edge of the body
    double pageWidth = std::numeric_limits<double>::infinity();  // wider content continues on further pages
};

class Flow {
 public:
    struct Outcome {
        double used = 0;  // height on this page
        bool done = true;
        bool breakAfter = false;  // what is below starts a new page ...
        bool resetNext = false;   // ... whose number is 1
    };
    explicit Flow(FlowContext& context) : m_context(context) {}
    virtual ~Flow() = default;
    Flow(const Flow&) = delete;
    Flow& operator=(const Flow&) = delete;

    // Places the next part at (x, y) in `available` height. Draws nothing and returns used = 0 if the item
    // should start on the next page.
    virtual Outcome Place(double x, double y, double available) = 0;
    // Returns the height without page breaks; may stop early once above `limit`.
    virtual double Measure(double limit) = 0;
    // Makes the box of a rectangle at least this high, from its start on the first page. Others ignore it.
    virtual void Stretch(double) {}

 protected:
    // Whether an item that does not fit may wait for the next page, where it has more space.
    bool MayWait(double y) const { return m_context.painter.HasContent() && !m_context.painter.IsAtTop(y); }
    FlowContext& m_context;
};

// Returns the flow of an item, which must outlive it.
std::unique_ptr<Flow> MakeFlow(const Instance& item, FlowContext& context);

// Whether an item is placed part by part with the items in it: a rectangle, a table.
bool Flows(const Instance& item);
// Whether the lines of a text box run down or up.
bool IsTurned(const Instance& item);
// Returns the height of a text box that can grow or shrink to this text.
double GrownHeight(const Instance& item, const LaidText& laid);
// Returns the line width in a text box of this size.
double LineWidth(const Instance& item, double width, double height);
// Returns the sides of a box to draw on a page if its start or end is on another page.
unsigned SidesOf(const Instance& item, bool beganBefore, bool goesOn);
// Returns the left edge of an item moved so that no page's right edge cuts it.
double ClearOfPageEdges(const FlowContext& context, double x, double width);

class TextFlow final : public Flow {
 public:
    TextFlow(const Instance& item, FlowContext& context);
    Outcome Place(double x, double y, double available) override;
    double Measure(double limit) override;

 private:
    const Instance& m_item;
    LaidText m_laid;
    std::size_t m_next = 0;  // line
    ItemTags m_tags;
};

// Images, drawings and lines: drawn whole, or in slices if higher than a page.
class BlockFlow final : public Flow {
 public:
    BlockFlow(const Instance& item, FlowContext& context);
    Outcome Place(double x, double y, double available) override;
    double Measure(double limit) override;

 private:
    void Draw(double x, double y, double height);

    const Instance& m_item;
    double m_drawn = 0;  // height drawn on previous pages
    ItemTags m_tags;
};

}  // namespace rdl::layout
