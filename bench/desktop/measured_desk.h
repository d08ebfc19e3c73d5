// SPDX-License-Identifier: GPL-3.0-or-later
// Desktop windows without a screen, for measurements.
#pragma once

#include <filesystem>
#include <functional>

#include "desktop/frmDesk.h"
#include "platform/controls/child_area.h"
#include "platform/qt/application.h"
#include "platform/regfile/registry_file.h"

class MeasuredDesk {
 public:
    // Opens a window of the root on the data file, which may be a link. Settings are beside the file. One
    // object in a process, which makes the process's Qt application.
    MeasuredDesk(int& argc, char** argv, const std::filesystem::path& file);

    // Opens one more window of the root, which the other functions then use.
    void OpenRoot();
    // Selects the folder of this key in the tree, which is not clicked.
    void SelectFolder(const char* key);
    void ClickTree();
    void ShowTable(const char* folder);
    std::size_t ItemCount();
    std::size_t NodeCount();

    // Returns how long each of several runs of `work` takes until its result is drawn, in seconds.
    std::vector<double> Times(int repeats, const std::function<void()>& work);

 private:
    Application m_application;
    RegistryFile m_settings;
    ChildArea m_area;
    frmDesk* m_window = nullptr;
};
