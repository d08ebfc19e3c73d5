// SPDX-License-Identifier: GPL-3.0-or-later
// RTF documents of sample reports, written and read again.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "rdl/format/format.h"
#include "rdl/writers/rtf_reader.h"
#include "rdl/writers/sample_report.h"

namespace rdl::writers::test {

inline std::string Rtf(const std::unique_ptr<layout::ReportInstance>& report) {
    StringOutput output;
    Options options;
    options.nowTicks = MakeTicks(2024, 2, 29) + 13 * TicksPerSecond * 3600;
    WriteRtf(*report, output, options);
    return output.bytes;
}

inline RtfDocument Document(std::vector<layout::Instance> items, std::vector<layout::Instance> header = {}) {
    RtfDocument document = RtfReader::Read(Rtf(SampleReport(std::move(items), std::move(header))));
    EXPECT_TRUE(document.balanced);
    for (const RtfRowRead& row : document.rows) {
        EXPECT_EQ(row.texts.size(), row.edges.size());
        EXPECT_TRUE(std::is_sorted(row.edges.begin(), row.edges.end()));
    }
    return document;
}

}  // namespace rdl::writers::test
