// SPDX-License-Identifier: GPL-3.0-or-later
// PDF documents with their logical structure, and that structure as another program reads it.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "rdl/writers/pdf/pdf_kit.h"

namespace rdl::writers::test {

inline std::string PdfWith(std::vector<layout::Instance> items, const ExportOptions& choices,
                           std::vector<layout::Instance> header = {}) {
    StringOutput output;
    Options options;
    options.nowTicks = 638'000'000'000'000'000;
    options.choices = choices;
    WritePdf(*SampleReport(std::move(items), std::move(header)), output, options);
    return output.bytes;
}

inline ExportOptions Choices(bool forArchive, bool tagged) {
    ExportOptions choices;
    choices.forArchive = forArchive;
    choices.tagged = tagged;
    return choices;
}

inline std::string Tagged(std::vector<layout::Instance> items) {
    return PdfWith(std::move(items), Choices(false, true));
}

inline std::string ForArchive(std::vector<layout::Instance> items) {
    return PdfWith(std::move(items), Choices(true, false));
}

// The elements with their texts as poppler reads them.
inline std::string Structure(const std::string& pdf) {
    ExpectSound(pdf);
    return PdfOnDisk(pdf).Run("pdfinfo -struct-text {}").said;
}

class PdfStructureTest : public testing::Test {
 protected:
    void SetUp() override {
        NEEDS_PROGRAM("qpdf");
        NEEDS_PROGRAM("pdfinfo");
    }
};

}  // namespace rdl::writers::test
