// SPDX-License-Identifier: GPL-3.0-or-later
// Workbooks for tests, and questions to a reader of workbooks.
#pragma once

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include "rdl/writers/sample_report.h"

namespace rdl::writers::test {

inline std::string Workbook(const std::unique_ptr<layout::ReportInstance>& report) {
    StringOutput output;
    WriteXls(*report, output, {});
    return output.bytes;
}

inline bool HasReader() {
    return std::system("/usr/bin/python3 -c 'import xlrd' 2>/dev/null") == 0;
}

// What a reader of workbooks prints for a script that has the book as `b`.
inline std::string Ask(const std::string& workbook, const std::string& script) {
    const std::filesystem::path path =
        std::filesystem::temp_directory_path() / ("oxc-xls-" + std::to_string(getpid()) + ".xls");
    std::ofstream(path, std::ios::binary) << workbook;
    const std::string command = "/usr/bin/python3 -c \"import xlrd\nb = xlrd.open_workbook('" +
                                path.string() + "', formatting_info=True)\ns = b.sheet_by_index(0)\n" +
                                script + "\" 2>&1";
    std::string answer;
    if (std::FILE* pipe = popen(command.c_str(), "r")) {
        char buffer[4096];
        std::size_t read = 0;
        while ((read = std::fread(buffer, 1, sizeof buffer, pipe)) > 0) {
            answer.append(buffer, read);
        }
        pclose(pipe);
    }
    std::filesystem::remove(path);
    return answer;
}

}  // namespace rdl::writers::test
