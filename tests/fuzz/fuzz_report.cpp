// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <cstddef>
#include <optional>

#include "fuzz/targets.h"
#include "rdl/data/common/provider.h"
#include "rdl/definition/parse.h"
#include "rdl/engine/loaded_report.h"
#include "rdl/layout/build.h"

namespace fuzz {
namespace {

constexpr const char* Nowhere = "/nonexistent/fuzz.rdl";

class Counted final : public rdl::Output {
 public:
    using Output::Write;
    void Write(const char*, std::size_t size) override {
        m_size += size;
        if (m_size > Most) {
            throw rdl::Error("this is enough");
        }
    }

 private:
    static constexpr std::size_t Most = 64u << 20;
    std::size_t m_size = 0;
};

rdl::Definition Open(std::string_view input) {
    rdl::Definition definition = rdl::ParseDefinition(input, "fuzz.rdl");
    rdl::layout::CheckExpressions(definition);
    return definition;
}

// Rows that the report holds itself; servers and files are for other tests.
bool HoldsItsRows(const rdl::Definition& definition) {
    const bool sources = std::all_of(
        definition.dataSources.begin(), definition.dataSources.end(), [](const rdl::DataSource& source) {
            return source.provider == "ENTERDATA" ||
                   (source.provider == "JSON" && source.connectString.source.starts_with('['));
        });
    return sources &&
           std::all_of(definition.dataSets.begin(), definition.dataSets.end(), [](const rdl::DataSet& set) {
               return set.rowsFile.empty() && set.sharedDataSet.empty();
           });
}

// The same bytes are always written in the same format; nullopt is the screen.
std::optional<rdl::DocumentFormat> FormatOf(std::string_view input) {
    constexpr std::optional<rdl::DocumentFormat> Formats[] = {
        std::nullopt, rdl::DocumentFormat::Pdf, rdl::DocumentFormat::Rtf, rdl::DocumentFormat::Excel,
        rdl::DocumentFormat::Html};
    std::size_t sum = 0;
    for (const char c : input) {
        sum = sum * 31 + static_cast<unsigned char>(c);
    }
    return Formats[sum % std::size(Formats)];
}

void Leaf(rdl::Pages& pages) {
    constexpr int Enough = 20;
    for (int n = 1; n <= Enough && pages.Reach(n); ++n) {
        pages.Characters(n);
        pages.Links(n);
    }
}

template <typename Work>
void Raising(Work work) {
    try {
        work();
    } catch (const rdl::Error&) {
        return;
    }
}

}  // namespace

void RunDefinition(std::string_view input) {
    Raising([&] { rdl::engine::LoadedReport(Nowhere, Open(input)); });
}

void RunReport(std::string_view input) {
    Raising([&] {
        rdl::Definition definition = Open(input);
        if (!HoldsItsRows(definition)) {
            return;
        }
        rdl::engine::LoadedReport report(Nowhere, std::move(definition));
        // A mutation may well ask for a hundred thousand pages.
        report.SetBounds({std::chrono::seconds(5), std::chrono::seconds(5), 0});
        const std::optional<rdl::DocumentFormat> format = FormatOf(input);
        if (!format) {
            Leaf(*report.OpenPages());
            return;
        }
        Counted output;
        report.Write(*format, output);
    });
}

}  // namespace fuzz
