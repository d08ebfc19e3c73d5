// Items on their way onto pages. A flow puts as much of its item onto the current page as there is room for
// and goes on where it stopped on the next.
#pragma once

#include <limits>
#include <memory>

#include "rdl/layout/pages/painter.h"

namespace rdl::layout {

struct FlowContext {
    Painter& painter;
    double pageHeight = 0;                                       // room that a whole page has for the body
    double left = 0;                                             // of the body on the page
    double pageWidth = std::numeric_limits<double>::infinity();  // what is wider goes on further pages
};

class Flow {
 public:
    struct Outcome {
        double used = 0;  // height on this page
        bool done = true;
        bool breakAfter = false;  // what is below belongs on a new page ...
        bool resetNext = false;   // ... whose number is 1
    };
    explicit Flow(FlowContext& context) : m_context(context) {}
    virtual ~Flow() = default;
    Flow(const Flow&) = delete;
    Flow& operator=(const Flow&) = delete;

    // Nothing is drawn, and used is 0, when the whole is better begun on the next page.
    virtual Outcome Place(double x, double y, double available) = 0;
    // The height without pages; may stop once past the limit.
    virtual double Measure(double limit) = 0;

 protected:
    // Whether something that does not fit may wait for the next page: there it has more room.
    bool MayWait(double y) const { return m_context.painter.HasContent() && !m_context.painter.IsAtTop(y); }
    FlowContext& m_context;
};

// The instance must outlive the flow.
std::unique_ptr<Flow> MakeFlow(const Instance& item, FlowContext& context);

// The height that a text box comes to with this text.
double GrownHeight(const Instance& item, const LaidText& laid);
// The width that the text of a box of this size has for its lines.
double LineWidth(const Instance& item, double width, double height);
// The sides of an item's box that are drawn on a page, when its beginning or its end stands on another one.
unsigned SidesOf(const Instance& item, bool beganBefore, bool goesOn);
// The left edge that an item of this width gets, so that no page's right edge cuts it.
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
};

// Images, drawings and lines: whole, or in slices when they are higher than a page.
class BlockFlow final : public Flow {
 public:
    BlockFlow(const Instance& item, FlowContext& context);
    Outcome Place(double x, double y, double available) override;
    double Measure(double limit) override;

 private:
    void Draw(double x, double y, double height);

    const Instance& m_item;
    double m_drawn = 0;  // on the pages before
};

}  // namespace rdl::layout
