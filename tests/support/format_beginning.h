// SPDX-License-Identifier: GPL-3.0-or-later
// The first bytes by which a file of each export format is known.
#pragma once

#include <string_view>

#include "platform/contracts/export_formats.h"

// A format without a case here is a warning, and an error in CI.
inline std::string_view BeginningOf(report::DocumentFormat format) {
    switch (format) {
        case report::DocumentFormat::Pdf:
            return "%PDF-1.7";
        case report::DocumentFormat::Rtf:
        case report::DocumentFormat::Word:
            return "{\\rtf1";
        case report::DocumentFormat::Excel:
            return "\xD0\xCF\x11\xE0";
        case report::DocumentFormat::Html:
            return "<!DOCTYPE html>";
        case report::DocumentFormat::Csv:
            return "\xEF\xBB\xBF";
        case report::DocumentFormat::Docx:
        case report::DocumentFormat::Xlsx:
            return "PK\x03\x04";
        case report::DocumentFormat::Png:
            return "\x89PNG\r\n";
    }
    return "no such format";
}
