// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/document/all_reports.h"

#include <algorithm>
#include <cstdlib>
#include <stdexcept>
#include <string>

#include "support/source_dir.h"
#include "support/temporary_folder.h"

namespace {

void Run(const std::string& script, const std::filesystem::path& folder) {
    const std::string command = "python3 \"" + SourceDir() + "/" + script + "\" \"" + folder.string() + "\"";
    if (std::system(command.c_str()) != 0) {
        throw std::runtime_error(script + " failed");
    }
}

void AddFrom(const std::filesystem::path& folder, std::vector<std::filesystem::path>& files) {
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        const std::string extension = entry.path().extension().string();
        if (extension == ".rdl" || extension == ".rpt") {
            files.push_back(entry.path());
        }
    }
}

}  // namespace

const std::vector<std::filesystem::path>& AllReports() {
    static const TemporaryFolder folder;
    static const std::vector<std::filesystem::path> files = [] {
        std::filesystem::create_directory(folder / "samples");
        std::filesystem::create_directory(folder / "kinds");
        Run("samples/make_samples.py", folder / "samples");
        Run("tests/reports/make_reports.py", folder / "kinds");
        std::vector<std::filesystem::path> found;
        AddFrom(SourceDir() + "/tests/fuzz/corpus", found);
        AddFrom(folder.Path(), found);
        if (const char* const more = std::getenv("OXC_MORE_REPORTS")) {
            AddFrom(more, found);
        }
        std::sort(found.begin(), found.end());
        return found;
    }();
    return files;
}
