// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/engine/run.h"

#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "rdl/data/files/data_file.h"
#include "rdl/definition/parse.h"
#include "rdl/engine/images.h"
#include "rdl/engine/in_stage.h"
#include "rdl/engine/parameter_values.h"
#include "rdl/engine/subreport_file.h"
#include "rdl/layout/build.h"
#include "rdl/screen/picture.h"
#include "rdl/values/ascii.h"

namespace rdl::engine {
namespace {

namespace fs = std::filesystem;

constexpr int DeepestSubreport = 10;
constexpr int MostSubreports = 20'000;  // in one run; each loads its own data

// What a run and the subreports in it share: files are looked for, read and parsed once.
struct Shared {
    Shared(std::vector<std::string> folders, layout::Drawings asked)
        : images(std::move(folders)), drawings(asked) {}
    ImageFiles images;
    std::map<fs::path, std::shared_ptr<const Definition>> definitions;
    std::map<std::pair<fs::path, std::string>, fs::path> files;  // by the report and the name in it
    int subreports = 0;
    const layout::Drawings drawings;
};

using SharedPtr = std::shared_ptr<Shared>;

std::shared_ptr<layout::ReportInstance> Build(const data::LoadRequest& request, const fs::path& file,
                                              const SharedPtr& shared, int depth);

const fs::path& FileOfSubreport(Shared& shared, const data::LoadRequest& parentRequest,
                                const fs::path& parent, const std::string& reportName) {
    fs::path& known = shared.files[{parent, reportName}];
    if (known.empty()) {
        known = FindSubreport(reportName, parent, parentRequest.SearchFolders());
    }
    return known;
}

std::shared_ptr<const Definition> DefinitionOf(Shared& shared, const fs::path& file) {
    std::shared_ptr<const Definition>& known = shared.definitions[file];
    if (!known) {
        known = std::make_shared<const Definition>(ParseDefinitionFile(file));
    }
    return known;
}

// Returns the parameters of the subreport's definition, with the values that the report gives by name.
std::vector<std::unique_ptr<ReportParameterState>> FieldsOf(const Definition& definition,
                                                            const Subreport& subreport,
                                                            const std::vector<Value>& values) {
    std::vector<std::unique_ptr<ReportParameterState>> fields;
    for (const ReportParameter& parameter : definition.parameters) {
        auto field = std::make_unique<ReportParameterState>(parameter);
        for (std::size_t i = 0; i < std::min(subreport.parameters.size(), values.size()); ++i) {
            if (EqualNoCase(subreport.parameters[i].first, parameter.name)) {
                field->SetCurrent(values[i]);
            }
        }
        fields.push_back(std::move(field));
    }
    return fields;
}

std::shared_ptr<layout::ReportInstance> OpenSubreport(const data::LoadRequest& parent,
                                                      const fs::path& parentFile, const SharedPtr& shared,
                                                      int depth, const Subreport& subreport,
                                                      const std::vector<Value>& values) {
    try {
        if (depth >= DeepestSubreport) {
            throw Error("reports are nested more than " + std::to_string(DeepestSubreport) + " deep");
        }
        if (++shared->subreports > MostSubreports) {
            throw Error("there are more than " + std::to_string(MostSubreports) + " subreports");
        }
        const fs::path& file = FileOfSubreport(*shared, parent, parentFile, subreport.reportName);
        const std::shared_ptr<const Definition> definition = DefinitionOf(*shared, file);
        data::LoadRequest request = parent;
        request.definition = definition.get();
        request.reportName = file.stem().string();
        request.folder = file.parent_path().string();
        request.formula = definition->recordSelectionFormula;
        ResolveParameters(request, FieldsOf(*definition, subreport, values));
        return Build(request, file, shared, depth + 1);
    } catch (const std::exception& error) {
        throw Error("Subreport " + subreport.name + ": " + error.what());
    }
}

// The instance keeps everything that it reads from alive.
struct Running {
    SharedPtr shared;
    std::unique_ptr<layout::ReportInstance> instance;
};

std::shared_ptr<layout::ReportInstance> Build(const data::LoadRequest& request, const fs::path& file,
                                              const SharedPtr& shared, int depth) {
    layout::ReportInput input = InputOf(request);
    input.tables = InStage(Stage::Data, [&] { return data::LoadTables(request); });
    input.loadImage = [shared](const std::string& source, std::string& why) {
        return shared->images.Load(source, why);
    };
    input.readFile = [folders = request.SearchFolders()](const std::string& name) {
        return data::ReadDataFile(data::ResolveDataPath(name, folders));
    };
    input.openSubreport = [request, file, shared, depth](const Subreport& subreport,
                                                         const std::vector<Value>& values) {
        return OpenSubreport(request, file, shared, depth, subreport, values);
    };
    input.drawings = shared->drawings;
    if (shared->drawings == layout::Drawings::Pictures) {
        input.paint = screen::PictureOf;
    }
    auto running = std::make_shared<Running>();
    running->shared = shared;
    running->instance = InStage(Stage::Run, [&] { return layout::Build(std::move(input)); });
    layout::ReportInstance* instance = running->instance.get();
    return {std::move(running), instance};
}

}  // namespace

layout::ReportInput InputOf(const data::LoadRequest& request) {
    layout::ReportInput input;
    input.definition = request.definition;
    for (const data::ParameterInput& parameter : request.parameters) {
        input.parameters.push_back({parameter.value, parameter.label});
    }
    input.nowTicks = request.nowTicks;
    input.reportName = request.reportName;
    input.reportFolder = request.folder;
    input.userName = request.userName;
    input.renderFormat = request.renderFormat;
    input.watch = request.watch;
    return input;
}

std::shared_ptr<layout::ReportInstance> RunReport(const data::LoadRequest& request, const fs::path& file,
                                                  layout::Drawings drawings) {
    return Build(request, file, std::make_shared<Shared>(request.SearchFolders(), drawings), 0);
}

}  // namespace rdl::engine
