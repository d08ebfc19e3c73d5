// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/reports/rdl_engine.h"

#include <filesystem>

#include "platform/base/paths.h"
#include "platform/reports/failure.h"
#include "platform/reports/machine_host.h"
#include "platform/reports/rdl_report.h"

namespace reports {
namespace {

class RdlEngine : public report::Engine {
 public:
    std::shared_ptr<report::Report> OpenReport(const std::string& path) override {
        return OpenRdlReport(path);
    }
};

}  // namespace

std::shared_ptr<report::Engine> CreateRdlEngine() {
    return std::make_shared<RdlEngine>();
}

std::shared_ptr<RdlReport> OpenRdlReport(const std::string& path) {
    UseMachineHost();
    std::error_code failure;
    const std::filesystem::path file = std::filesystem::absolute(paths::ToMachine(path), failure);
    // An empty path, from an empty column, has no absolute form.
    if (failure || !std::filesystem::exists(file, failure)) {
        throw RuntimeError(err::FileNotFound, RuntimeError(err::FileNotFound).Description() + ": \"" +
                                                  paths::ForUser(path) + "\"");
    }
    if (!std::filesystem::is_regular_file(file, failure)) {
        throw RuntimeError(err::PathFileAccess, "\"" + paths::ForUser(path) + "\" is not a file");
    }
    return Translated([&] { return std::make_shared<RdlReport>(rdl::OpenReport(file)); });
}

std::shared_ptr<RdlReport> OpenRdlText(std::string_view bytes, const std::filesystem::path& file) {
    UseMachineHost();
    return Translated([&] { return std::make_shared<RdlReport>(rdl::OpenReportText(bytes, file)); });
}

}  // namespace reports
