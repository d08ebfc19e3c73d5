// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <cstddef>
#include <iterator>
#include <memory>
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

struct Mark {
    std::string comment;
    std::optional<rdl::DocumentFormat> format;  // nullopt is the screen
};

const std::vector<Mark>& Marks() {
    static const std::vector<Mark> marks = [] {
        std::vector<Mark> all{{"<!--SCREEN-->", std::nullopt}};
        for (const rdl::FormatRow& row : rdl::FormatTable) {
            all.push_back({"<!--" + std::string(row.renderName) + "-->", row.format});
        }
        return all;
    }();
    return marks;
}

std::string_view WithoutBlanksAtItsEnd(std::string_view text) {
    return text.substr(0, text.find_last_not_of(" \t\r\n") + 1);
}

const Mark* MarkOf(std::string_view report) {
    const auto found = std::find_if(Marks().begin(), Marks().end(), [&](const Mark& mark) {
        return WithoutBlanksAtItsEnd(report).ends_with(mark.comment);
    });
    return found == Marks().end() ? nullptr : &*found;
}

std::optional<rdl::DocumentFormat> FormatOf(std::string_view report) {
    const Mark* mark = MarkOf(report);
    return mark ? mark->format : std::nullopt;
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
    Raising([&] { rdl::engine::LoadedReport(Nowhere, std::make_shared<rdl::Definition>(Open(input))); });
}

std::size_t FormatCount() {
    return Marks().size();
}

std::string WithFormat(std::string_view report, std::size_t choice) {
    std::string_view text = WithoutBlanksAtItsEnd(report);
    if (const Mark* mark = MarkOf(text)) {
        text.remove_suffix(mark->comment.size());
    }
    return std::string(text) + Marks()[choice % FormatCount()].comment + "\n";
}

void RunReport(std::string_view input) {
    Raising([&] {
        const auto definition = std::make_shared<const rdl::Definition>(Open(input));
        if (!HoldsItsRows(*definition)) {
            return;
        }
        rdl::engine::LoadedReport report(Nowhere, definition);
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
