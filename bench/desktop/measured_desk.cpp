// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/desktop/measured_desk.h"

#include "bench/timing.h"
#include "desktop/DeskWindows.h"
#include "desktop/DetailViews.h"
#include "platform/base/paths.h"
#include "platform/qt/display.h"
#include "shared/Global.h"

namespace {

// Before Qt's application is made.
char** WithoutDisplay(char** argv) {
    FallBackToOffscreen();
    return argv;
}

}  // namespace

MeasuredDesk::MeasuredDesk(int& argc, char** argv, const std::filesystem::path& file)
    : m_application(argc, WithoutDisplay(argv)), m_settings(file.parent_path() / "settings") {
    SetAppPath(paths::FromMachine(file.parent_path()));
    SetRegistry(&m_settings);
    Global::ConnectionString = "Data Source=" + paths::FromMachine(file) + ";Persist Security Info=False";
    m_area.resize(1200, 800);
    m_area.show();
    OpenRoot();
}

void MeasuredDesk::OpenRoot() {
    Global::CurrentFolderID = "0";
    m_window = OpenDeskWindow(m_area);
}

void MeasuredDesk::SelectFolder(const char* key) {
    m_window->tvwFolder->Nodes()(key).Selected(true);
}

void MeasuredDesk::ClickTree() {
    m_window->tvwFolder_Click();
}

void MeasuredDesk::ShowTable(const char* folder) {
    bldDetails(folder);
}

std::size_t MeasuredDesk::ItemCount() {
    return static_cast<std::size_t>(m_window->lsvDesk->ListItems().Count());
}

std::size_t MeasuredDesk::NodeCount() {
    return static_cast<std::size_t>(m_window->tvwFolder->Nodes().Count());
}

std::vector<double> MeasuredDesk::Times(int repeats, const std::function<void()>& work) {
    std::vector<double> times;
    for (int repeat = 0; repeat < repeats; ++repeat) {
        times.push_back(Seconds([&] {
            work();
            QApplication::processEvents();
            m_window->grab();
        }));
    }
    return times;
}
