// SPDX-License-Identifier: GPL-3.0-or-later
// PDF documents for tests: written from reports made by hand, and read by other people's programs.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "rdl/writers/sample_report.h"

namespace rdl::writers::test {

inline std::string PdfOf(layout::ReportInstance& report) {
    StringOutput output;
    Options options;
    options.nowTicks = 638'000'000'000'000'000;
    WritePdf(report, output, options);
    return output.bytes;
}

inline std::string PdfOf(std::vector<layout::Instance> items) {
    return PdfOf(*SampleReport(std::move(items)));
}

inline bool HasProgram(const std::string& name) {
    return std::system(("command -v " + name + " >/dev/null 2>&1").c_str()) == 0;
}

struct Ran {
    int status = 0;
    std::string said;
};

// A document in a file for as long as a test looks at it.
class PdfOnDisk {
 public:
    explicit PdfOnDisk(const std::string& bytes)
        : m_path(std::filesystem::temp_directory_path() / ("pdf-test-" + std::to_string(::getpid()) + "-")) {
        m_path += std::to_string(m_count++);
        std::ofstream(m_path, std::ios::binary) << bytes;
    }
    ~PdfOnDisk() { std::filesystem::remove(m_path); }
    PdfOnDisk(const PdfOnDisk&) = delete;
    PdfOnDisk& operator=(const PdfOnDisk&) = delete;

    // "{}" in the command is the file.
    Ran Run(std::string command) const {
        command.replace(command.find("{}"), 2, m_path.string());
        Ran ran;
        std::FILE* pipe = ::popen((command + " 2>&1").c_str(), "r");
        std::array<char, 4096> piece{};
        for (std::size_t got = 0; (got = std::fread(piece.data(), 1, piece.size(), pipe)) > 0;) {
            ran.said.append(piece.data(), got);
        }
        ran.status = ::pclose(pipe);
        return ran;
    }
    std::string Text() const { return Run("pdftotext -layout {} -").said; }
    // The document with its streams unpacked.
    std::string Unpacked() const { return Run("qpdf --qdf --object-streams=disable {} -").said; }

 private:
    std::filesystem::path m_path;
    static inline int m_count = 0;
};

inline void ExpectSound(const std::string& pdf) {
    const Ran check = PdfOnDisk(pdf).Run("qpdf --check {}");
    EXPECT_EQ(check.status, 0) << check.said;
    EXPECT_EQ(check.said.find("WARNING"), std::string::npos) << check.said;
}

}  // namespace rdl::writers::test

#define NEEDS_PROGRAM(name)                                  \
    if (!rdl::writers::test::HasProgram(name)) {             \
        GTEST_SKIP() << "this machine has no program " name; \
    }
