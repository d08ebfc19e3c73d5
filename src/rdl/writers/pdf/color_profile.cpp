// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/pdf/color_profile.h"

#include <cmath>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

namespace rdl::writers {
namespace {

constexpr std::size_t HeaderSize = 128;

void Put(std::string& out, std::uint64_t number, int bytes) {
    for (int i = bytes - 1; i >= 0; --i) {
        out += static_cast<char>(number >> 8 * i & 0xFF);
    }
}

// A number with sixteen binary places (4.6).
void PutFixed(std::string& out, double number) {
    Put(out, static_cast<std::uint32_t>(std::lround(number * 65536)), 4);
}

std::string Begin(std::string_view type) {
    std::string tag(type);
    Put(tag, 0, 4);
    return tag;
}

std::string Numbers(std::string_view type, std::initializer_list<double> numbers) {
    std::string tag = Begin(type);
    for (const double number : numbers) {
        PutFixed(tag, number);
    }
    return tag;
}

// A text in one language (10.13), in UTF-16.
std::string Text(std::string_view ascii) {
    constexpr unsigned RecordSize = 12, TextAt = 28;
    std::string tag = Begin("mluc");
    Put(tag, 1, 4);
    Put(tag, RecordSize, 4);
    tag += "enUS";
    Put(tag, ascii.size() * 2, 4);
    Put(tag, TextAt, 4);
    for (const char c : ascii) {
        tag += '\0';
        tag += c;
    }
    return tag;
}

// The curve of each colour (10.15, function 3): a power above d, a straight line below.
std::string ToneCurve() {
    std::string tag = Begin("para");
    Put(tag, 3, 2);
    Put(tag, 0, 2);
    for (const double parameter : {2.4, 1 / 1.055, 0.055 / 1.055, 1 / 12.92, 0.04045}) {
        PutFixed(tag, parameter);
    }
    return tag;
}

// Header (7.2): version, class, colour spaces, date, signature, illuminant D50.
std::string Header(std::size_t size) {
    std::string header;
    Put(header, size, 4);
    Put(header, 0, 4);
    Put(header, 0x04200000, 4);
    header += "mntrRGB XYZ ";
    for (const unsigned part : {2025u, 1u, 1u, 0u, 0u, 0u}) {
        Put(header, part, 2);
    }
    header += "acsp";
    header.append(28, '\0');  // platform, flags, device and its attributes, perceptual intent
    for (const double part : {0.9642, 1.0, 0.8249}) {
        PutFixed(header, part);
    }
    header.resize(HeaderSize, '\0');
    return header;
}

}  // namespace

std::string SrgbProfile() {
    const std::string curve = ToneCurve();
    // Primaries and white point are adapted to D50 by the matrix in "chad".
    const std::vector<std::pair<std::string_view, std::string>> tags = {
        {"desc", Text("sRGB IEC61966-2.1")},
        {"cprt", Text("No copyright, use freely")},
        {"wtpt", Numbers("XYZ ", {0.9642, 1.0, 0.8249})},
        {"chad", Numbers("sf32", {1.047882, 0.022919, -0.050217, 0.029587, 0.990479, -0.017075, -0.009247,
                                  0.015076, 0.751678})},
        {"rXYZ", Numbers("XYZ ", {0.436066, 0.222488, 0.013916})},
        {"gXYZ", Numbers("XYZ ", {0.385147, 0.716873, 0.097076})},
        {"bXYZ", Numbers("XYZ ", {0.143066, 0.060608, 0.714096})},
        {"rTRC", curve},
        {"gTRC", curve},
        {"bTRC", curve},
    };
    std::string table, data;
    const std::size_t begin = HeaderSize + 4 + tags.size() * 12;
    std::size_t curveAt = 0;
    Put(table, tags.size(), 4);
    for (const auto& [name, bytes] : tags) {
        const bool isCurve = name.ends_with("TRC");
        // The three colours share one curve.
        const std::size_t at = isCurve && curveAt ? curveAt : begin + data.size();
        table += name;
        Put(table, at, 4);
        Put(table, bytes.size(), 4);
        if (at == begin + data.size()) {
            data += bytes;
            data.resize((data.size() + 3) / 4 * 4, '\0');
        }
        curveAt = isCurve ? at : 0;
    }
    return Header(begin + data.size()) + table + data;
}

}  // namespace rdl::writers
