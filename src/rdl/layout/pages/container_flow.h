// A rectangle or a body: items that push down what is below them when they grow.
#pragma once

#include <memory>
#include <vector>

#include "rdl/layout/pages/flow.h"

namespace rdl::layout {

class ContainerFlow final : public Flow {
 public:
    ContainerFlow(const Instance& item, FlowContext& context);
    // A body: no box of its own, and the room below its last item is not asked for.
    ContainerFlow(const std::vector<Instance>& items, FlowContext& context);
    Outcome Place(double x, double y, double available) override;
    double Measure(double limit) override;

 private:
    enum class State { Waiting, Going, Done };
    struct Child {
        const Instance* item = nullptr;
        double top = 0, bottom = 0;  // as defined
        State state = State::Waiting;
        double actualBottom = 0;              // from the container's place on the current page
        std::vector<std::size_t> above;       // children right above
        std::vector<std::size_t> companions;  // those that a table takes along to its further pages
        std::unique_ptr<Flow> flow;
    };
    void Adopt(const std::vector<Instance>& items);
    bool TopOf(const Child& child, double& top) const;  // false while one above goes on
    // Where a page stands: how far down it is full, and where it has to end.
    struct Progress {
        double breakAt, reached;
    };
    void PlaceChild(Child& child, double x, double y, double available, Progress& progress);
    void BeginChild(const Instance& item);
    // The companions above the table, beside it or below it, the table's part beginning at `top`.
    enum class Side { Above, Beside, Below };
    Side SideOf(const Child& companion, const Child& table) const;
    double HeightOf(const Child& table, Side side) const;
    void PlaceCompanions(const Child& table, Side side, double x, double top);
    double FinishedHeight(double reached, double available) const;
    void TurnPage(double used);
    bool Waits(double y, double available);

    const Instance* m_item = nullptr;
    std::vector<Child> m_children;
    double m_origin = 0;         // the container's top, from its place on the current page
    double m_definedBottom = 0;  // of the lowest child
    bool m_begun = false;
    bool m_resetNext = false;  // the page break that is due begins to count pages anew
    std::vector<Painter::Stretch> m_stretches;
};

}  // namespace rdl::layout
