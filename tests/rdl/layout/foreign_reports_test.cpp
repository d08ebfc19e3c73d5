// SPDX-License-Identifier: GPL-3.0-or-later
// Reports that other people wrote, over made-up rows: whatever is in them is laid out or refused with an
// error.
#include <gtest/gtest.h>

#include <filesystem>

#include "rdl/layout/report_kit.h"
#include "support/source_dir.h"

namespace rdl::layout {
namespace {

Table MadeUpRows(const DataSet& set) {
    constexpr int Rows = 40;
    Table table;
    for (const Field& field : set.fields) {
        table.fieldNames.push_back(field.name);
    }
    for (int row = 0; row < Rows; ++row) {
        for (std::size_t i = 0; i < set.fields.size(); ++i) {
            table.cells.push_back(Value::Integer((row + static_cast<int>(i)) % 7));
        }
    }
    return table;
}

TEST(ForeignReports, AreLaidOut) {
    const std::filesystem::path folder = SourceDir() + "/../shared/rdl";
    if (!std::filesystem::exists(folder)) {
        GTEST_SKIP() << "no reports of other people here";
    }
    int laidOut = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() != ".rdl") {
            continue;
        }
        SCOPED_TRACE(entry.path().filename().string());
        const Definition definition = ParseDefinitionFile(entry.path());
        ReportInput input;
        input.definition = &definition;
        for (const DataSet& set : definition.dataSets) {
            input.tables.emplace(set.name, MadeUpRows(set));
        }
        input.parameters.resize(definition.parameters.size());
        input.loadImage = [](const std::string&, std::string&) {
            return std::make_shared<const std::string>("BM");
        };
        input.openSubreport = [](const Subreport&, const std::vector<Value>&) {
            return std::make_shared<ReportInstance>();
        };
        const auto report = Build(std::move(input));
        TextSink sink;
        EXPECT_GE(Paginate(*report, sink), 1);
        std::size_t texts = 0;
        for (const auto& body : sink.bodies) {
            texts += body.size();
        }
        EXPECT_GT(texts, 0U);
        ++laidOut;
    }
    EXPECT_GT(laidOut, 5);
}

}  // namespace
}  // namespace rdl::layout
