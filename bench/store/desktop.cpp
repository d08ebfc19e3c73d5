// SPDX-License-Identifier: GPL-3.0-or-later
// Measures how long a Desktop window of a team's store takes to open with its tree, and to show the folder
// Sales. The argument is a file
// with a link to the store. The exit code is 1 if the goal is missed.
#include <cstdio>
#include <string>
#include <vector>

#include "bench/desktop/measured_desk.h"
#include "bench/timing.h"
#include "platform/contracts/adodb.h"

namespace {

constexpr int Repeats = 5;
constexpr double Goal = 0.5;

// Returns false if the goal is missed.
bool Print(const char* what, const std::vector<double>& times, std::size_t items) {
    const double time = Median(times);
    std::printf("%-24s %7.1f ms for %zu items (goal: at most %.0f ms)\n", what, time * 1000, items,
                Goal * 1000);
    return time <= Goal;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: bench_store_desktop LINK\n");
        return 2;
    }
    MeasuredDesk window(argc, argv, argv[1]);
    int statements = 0;
    ADODB::SetStatementTrace([&statements](const std::string&) { ++statements; });
    const double opened = Median(window.Times(Repeats, [&] { window.OpenRoot(); }));
    ADODB::SetStatementTrace(nullptr);
    std::printf("%-24s %7.1f ms for a tree of %zu nodes, by %d statements\n", "new window", opened * 1000,
                window.NodeCount(), statements / Repeats);
    window.SelectFolder("1^Sales");
    const std::vector<double> icons = window.Times(Repeats, [&] { window.ClickTree(); });
    const std::vector<double> table = window.Times(Repeats, [&] { window.ShowTable("Sales"); });
    const std::size_t items = window.ItemCount();
    const bool iconsAreQuick = Print("click in the tree, icons", icons, items);
    const bool tableIsQuick = Print("table", table, items);
    std::fflush(stdout);
    std::_Exit(items > 0 && iconsAreQuick && tableIsQuick ? 0 : 1);
}
