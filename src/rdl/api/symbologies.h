// SPDX-License-Identifier: GPL-3.0-or-later
// The symbologies of bar codes, and their names in reports.
#pragma once

#include <string_view>

#include "rdl/values/named.h"

namespace rdl {

enum class Symbology {
    Code128,
    Gs1128,
    Code39,
    Code39Extended,
    Code93,
    Code11,
    Ean13,
    Ean8,
    UpcA,
    UpcE,
    Isbn,
    Interleaved2of5,
    Itf14,
    Codabar,
    Msi,
    Postnet,
    IntelligentMail,
    RoyalMail,
    Gs1DataBar,
    Pdf417,
    MicroPdf417,
    QrCode,
    MicroQr,
    DataMatrix,
    Gs1DataMatrix,
    Aztec
};

struct SymbologyRow {
    std::string_view name;  // as in a report, without regard to case, blanks and marks
    Symbology symbology;
    std::string_view title;  // for readers
};

// In the order in which they are offered. The first name of a symbology is the one that is offered.
inline constexpr SymbologyRow Symbologies[] = {
    {"Code128", Symbology::Code128, "Code 128"},
    {"GS1128", Symbology::Gs1128, "GS1-128"},
    {"EAN128", Symbology::Gs1128, "GS1-128"},
    {"UCC128", Symbology::Gs1128, "GS1-128"},
    {"Code39", Symbology::Code39, "Code 39"},
    {"Code39Extended", Symbology::Code39Extended, "Code 39"},
    {"Code93", Symbology::Code93, "Code 93"},
    {"Code11", Symbology::Code11, "Code 11"},
    {"EAN13", Symbology::Ean13, "EAN-13"},
    {"EAN8", Symbology::Ean8, "EAN-8"},
    {"UPCA", Symbology::UpcA, "UPC-A"},
    {"UPCE", Symbology::UpcE, "UPC-E"},
    {"ISBN", Symbology::Isbn, "ISBN"},
    {"ITF14", Symbology::Itf14, "ITF-14"},
    {"Interleaved2of5", Symbology::Interleaved2of5, "Interleaved 2 of 5"},
    {"Codabar", Symbology::Codabar, "Codabar"},
    {"MSI", Symbology::Msi, "MSI"},
    {"Postnet", Symbology::Postnet, "POSTNET"},
    {"IntelligentMail", Symbology::IntelligentMail, "Intelligent Mail"},
    {"RoyalMail", Symbology::RoyalMail, "Royal Mail"},
    {"GS1DataBar", Symbology::Gs1DataBar, "GS1 DataBar"},
    {"PDF417", Symbology::Pdf417, "PDF417"},
    {"MicroPDF417", Symbology::MicroPdf417, "MicroPDF417"},
    {"QRCode", Symbology::QrCode, "QR Code"},
    {"QR", Symbology::QrCode, "QR Code"},
    {"MicroQR", Symbology::MicroQr, "Micro QR Code"},
    {"DataMatrix", Symbology::DataMatrix, "Data Matrix"},
    {"GS1DataMatrix", Symbology::Gs1DataMatrix, "GS1 DataMatrix"},
    {"Aztec", Symbology::Aztec, "Aztec Code"},
};
static_assert(NamesDiffer(Symbologies));

}  // namespace rdl
