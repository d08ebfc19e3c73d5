// SPDX-License-Identifier: GPL-3.0-or-later
// Flows a rectangle or a body: items push down what is below them when they grow.
#pragma once

#include <memory>
#include <vector>

#include "rdl/layout/pages/flow.h"

namespace rdl::layout {

class ContainerFlow final : public Flow {
 public:
    ContainerFlow(const Instance& item, FlowContext& context);
    // A body: it has no box, and space below its last item is not required.
    ContainerFlow(const std::vector<Instance>& items, FlowContext& context);
    Outcome Place(double x, double y, double available) override;
    double Measure(double limit) override;
    void Stretch(double height) override { m_leastHeight = height; }

 private:
    enum class State { Waiting, Going, Done };
    struct Child {
        const Instance* item = nullptr;
        double top = 0, bottom = 0;  // as defined
        State state = State::Waiting;
        double actualBottom = 0;              // relative to the container's position on the current page
        std::size_t above = 0;                // in m_aboves
        std::vector<std::size_t> companions;  // items that a table repeats on its further pages
        std::unique_ptr<Flow> flow;
    };
    // The children directly above some others. All that begin below the same ones share it, so that the time
    // of a page with thousands of items is not quadratic in them.
    struct Above {
        std::vector<std::size_t> children;
        std::size_t pass = 0;  // of m_pass; what follows is of that pass
        bool areDone = false;
        std::size_t lowest = 0;  // the one that pushes down most
    };
    void Adopt(const std::vector<Instance>& items);
    void NoteCompanions(const std::vector<Instance>& items);
    void NoteAbove();
    static bool Acts(const Child& child, double nearest);
    std::vector<std::size_t> DirectlyAbove(std::size_t index) const;
    bool TopOf(const Child& child, double& top);  // false while a child above continues
    void Look(Above& above) const;
    // State of the current page: where it must end, and how far it is filled.
    struct Progress {
        double breakAt, reached;
    };
    void PlaceChild(Child& child, double x, double y, double available, Progress& progress);
    void BeginChild(const Instance& item);
    // Companions are above, beside or below the table, whose part begins at `top`.
    enum class Side { Above, Beside, Below };
    Side SideOf(const Child& companion, const Child& table) const;
    double HeightOf(const Child& table, Side side) const;
    void PlaceCompanions(const Child& table, Side side, double x, double top);
    double FinishedHeight(double reached, double available) const;
    void TurnPage(double used);
    bool Waits(double y, double available);
    void Mark(const Rect& area);

    const Instance* m_item = nullptr;
    std::vector<Child> m_children;
    std::vector<Above> m_aboves;  // the first one is empty
    std::size_t m_pass = 0;       // over the children
    double m_origin = 0;          // the container's top, relative to its position on the current page
    double m_definedBottom = 0;   // of the lowest child
    double m_leastHeight = 0;     // of the box
    bool m_begun = false;
    bool m_resetNext = false;  // the pending page break restarts page numbering
    std::vector<Painter::Stretch> m_stretches;
};

}  // namespace rdl::layout
