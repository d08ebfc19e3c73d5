// SPDX-License-Identifier: GPL-3.0-or-later
// Measures how long a Desktop window takes to show the folder Sales of a team's store. The argument is a file
// with a link to the store. The exit code is 1 if the goal is missed.
#include <QMdiSubWindow>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "bench/timing.h"
#include "desktop/DeskWindows.h"
#include "desktop/DetailViews.h"
#include "desktop/frmDesk.h"
#include "platform/base/paths.h"
#include "platform/controls/child_area.h"
#include "platform/qt/application.h"
#include "platform/qt/display.h"
#include "platform/regfile/registry_file.h"
#include "shared/Global.h"

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
    const std::filesystem::path file = argv[1];
    FallBackToOffscreen();
    Application application(argc, argv);
    SetAppPath(paths::FromMachine(file.parent_path()));
    RegistryFile settings(file.parent_path() / "settings");
    SetRegistry(&settings);
    Global::ConnectionString = "Data Source=" + paths::FromMachine(file) + ";Persist Security Info=False";
    ChildArea area;
    area.resize(1200, 800);
    area.show();
    Global::CurrentFolderID = "0";
    frmDesk& window = *OpenDeskWindow(area);
    const auto untilDrawn = [&] {
        QApplication::processEvents();
        window.grab();
    };
    std::vector<double> icons;
    std::vector<double> table;
    window.tvwFolder->Nodes()("1^Sales").Selected(true);
    for (int repeat = 0; repeat < Repeats; ++repeat) {
        icons.push_back(Seconds([&] {
            window.tvwFolder_Click();
            untilDrawn();
        }));
        table.push_back(Seconds([&] {
            bldDetails("Sales");
            untilDrawn();
        }));
    }
    const auto items = static_cast<std::size_t>(window.lsvDesk->ListItems().Count());
    const bool iconsAreQuick = Print("click in the tree, icons", icons, items);
    const bool tableIsQuick = Print("table", table, items);
    std::fflush(stdout);
    std::_Exit(items > 0 && iconsAreQuick && tableIsQuick ? 0 : 1);
}
