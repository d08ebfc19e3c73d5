#include "platform/rdl/engine/engine.h"

#include "platform/paths.h"
#include "platform/rdl/data/own_files.h"
#include "platform/rdl/definition/parse.h"
#include "platform/rdl/engine/failure.h"
#include "platform/rdl/engine/rdl_report.h"
#include "platform/rdl/layout/build.h"

namespace rdl::engine {
namespace {

// Settings and mail profile hold passwords, the database holds everybody's schedules.
void ProtectOwnFiles() {
    std::vector<std::filesystem::path> own{ConfigPlace()};
    try {
        const std::filesystem::path application = paths::ToMachine(AppPath());
        own.push_back(application / "PressroomLive.dat");
        own.push_back(application / "Pressroom.dat");
    } catch (const RuntimeError&) {
        // a report alone, without an application around it
    }
    data::ProtectFiles(std::move(own));
}

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
    ProtectOwnFiles();
    std::error_code failure;
    const std::filesystem::path file = std::filesystem::absolute(paths::ToMachine(path), failure);
    // An empty path, as an empty column gives it, has no absolute form.
    if (failure || !std::filesystem::exists(file, failure)) {
        throw RuntimeError(err::FileNotFound, RuntimeError(err::FileNotFound).Description() + ": \"" +
                                                  paths::ForUser(path) + "\"");
    }
    if (!std::filesystem::is_regular_file(file, failure)) {
        throw RuntimeError(err::PathFileAccess, "\"" + paths::ForUser(path) + "\" is not a file");
    }
    return Stage(InvalidReport, [&] {
        Definition definition = ParseDefinitionFile(file);
        layout::CheckExpressions(definition);
        return std::make_shared<RdlReport>(file, std::move(definition));
    });
}

}  // namespace rdl::engine
