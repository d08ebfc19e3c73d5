#include <algorithm>
#include <cstddef>

#include "fuzz/targets.h"
#include "platform/rdl/data/provider.h"
#include "platform/rdl/definition/parse.h"
#include "platform/rdl/engine/export_format.h"
#include "platform/rdl/engine/rdl_report.h"
#include "platform/rdl/layout/build.h"
#include "platform/report_engine.h"
#include "platform/runtime.h"

namespace fuzz {
namespace {

constexpr const char* Nowhere = "/nonexistent/fuzz.rdl";

class Counted final : public rdl::writers::Output {
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

// The same bytes are always written in the same format; 0 is the screen.
int FormatOf(std::string_view input) {
    constexpr int Formats[] = {0, report::FormatPdf, report::FormatRtf, report::FormatExcel,
                               report::FormatHtml};
    std::size_t sum = 0;
    for (const char c : input) {
        sum = sum * 31 + static_cast<unsigned char>(c);
    }
    return Formats[sum % std::size(Formats)];
}

void Leaf(report::PageView& pages) {
    constexpr int Enough = 20;
    for (int n = 1; n <= Enough && pages.Reach(n); ++n) {
        pages.Letters(n);
        pages.Links(n);
    }
}

template <typename Work>
void Raising(Work work) {
    try {
        work();
    } catch (const rdl::Error&) {
        return;
    } catch (const RuntimeError&) {
        return;
    }
}

}  // namespace

void RunDefinition(std::string_view input) {
    Raising([&] { rdl::engine::RdlReport(Nowhere, Open(input)); });
}

void RunReport(std::string_view input) {
    Raising([&] {
        rdl::Definition definition = Open(input);
        if (!HoldsItsRows(definition)) {
            return;
        }
        rdl::engine::RdlReport report(Nowhere, std::move(definition));
        // A mutation may well ask for a hundred thousand pages.
        report.SetRunBounds({std::chrono::seconds(5), std::chrono::seconds(5), 0});
        const int code = FormatOf(input);
        if (code == 0) {
            Leaf(*report.OpenPages());
            return;
        }
        const rdl::engine::ExportFormat& format = rdl::engine::FindFormat(code);
        const auto instance = report.Run(format.renderName, format.hasVectors);
        Counted output;
        format.write(*instance, output, {});
    });
}

}  // namespace fuzz
