// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/engine/subreport_file.h"

#include <algorithm>
#include <system_error>

#include "rdl/api/host.h"
#include "rdl/api/subreport_file.h"
#include "rdl/data/files/data_file.h"
#include "rdl/engine/in_stage.h"
#include "rdl/values/error.h"

namespace rdl {

namespace fs = std::filesystem;

// Looks in the folders of a server if there are any, else beside the report.
fs::path engine::FindSubreport(const std::string& reportName, const fs::path& parent,
                               const std::vector<std::string>& folders) {
    std::string name = reportName;
    std::replace(name.begin(), name.end(), '\\', '/');
    name.erase(0, name.find_first_not_of('/'));  // from a server's root; here the report's folder
    for (const std::string& wanted : {name, name.substr(name.rfind('/') + 1)}) {
        for (const std::string& folder : folders) {
            for (const std::string& extension :
                 {std::string(), parent.extension().string(), std::string(".rdl"), std::string(".rpt")}) {
                fs::path candidate = data::ResolveDataPath(wanted + extension, {folder});
                std::error_code failure;
                if (fs::is_regular_file(candidate, failure)) {
                    return candidate;
                }
            }
        }
    }
    throw Error("there is no report \"" + reportName + "\" beside this one");
}

fs::path SubreportFile(const std::string& reportName, const fs::path& parent) {
    return engine::InStage(Stage::Open, [&] {
        const fs::path folder = parent.parent_path();
        std::vector<std::string> folders = TheHost().DataFolders();
        folders.insert(folders.begin(), fs::absolute(folder.empty() ? "." : folder).string());
        return engine::FindSubreport(reportName, parent, folders);
    });
}

}  // namespace rdl
