// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/document/item_size.h"

#include <charconv>
#include <cmath>
#include <utility>

#include "designer/document/editing.h"
#include "platform/base/ascii.h"

namespace designer {
namespace {

constexpr int DigitsAfterPoint = 5;
constexpr double LargestSize = 1e9;

struct Parsed {
    double number = 0;
    const rdl::SizeUnit* unit = nullptr;
    std::string_view written;  // the unit, in the case in which it is written
};

std::optional<Parsed> Parse(std::string_view text) {
    text = Trim(text);
    if (text.starts_with('+')) {
        text.remove_prefix(1);
    }
    Parsed parsed;
    const auto [end, error] =
        std::from_chars(text.data(), text.data() + text.size(), parsed.number, std::chars_format::fixed);
    if (error != std::errc() || !(std::abs(parsed.number) <= LargestSize)) {
        return std::nullopt;
    }
    parsed.written = Trim(text.substr(static_cast<std::size_t>(end - text.data())));
    for (const rdl::SizeUnit& unit : rdl::SizeUnits) {
        if (SameAscii(unit.name, parsed.written)) {
            parsed.unit = &unit;
            return parsed;
        }
    }
    return std::nullopt;
}

// Returns the unit of the widths that the report has.
std::string UsualUnit(const Document& document) {
    const ElementId root = document.Root();
    for (const std::string_view path : {"ReportSections/ReportSection/Width", "Width"}) {
        const auto text = document.TextAt(root, path);
        if (text && Parse(*text)) {
            return *text;
        }
    }
    return "1in";
}

// Returns what is written for the size; nullopt if what is written is that size.
std::optional<std::string> NewText(const Document& document, ElementId owner, std::string_view path,
                                   double points) {
    const std::optional<std::string> written = document.TextAt(owner, path);
    const bool isSize = written && Parse(*written);
    const std::string like = isSize ? *written : UsualUnit(document);
    std::string text = SizeText(points, like);
    const bool isSame = isSize && SizeText(*PointsOf(*written), like) == text;
    return isSame ? std::nullopt : std::optional(std::move(text));
}

}  // namespace

std::optional<double> PointsOf(std::string_view text) {
    const std::optional<Parsed> parsed = Parse(text);
    return parsed ? std::optional(parsed->number * parsed->unit->points) : std::nullopt;
}

bool IsReportSize(std::string_view text) {
    const std::optional<double> points = PointsOf(text);
    return points && *points >= 0 && *points <= rdl::MaxSize;
}

std::string SizeText(double points, std::string_view like) {
    const std::optional<Parsed> parsed = Parse(like);
    const double number = points / (parsed ? parsed->unit->points : rdl::SizeUnits[0].points);
    char digits[64];
    const auto [end, error] =
        std::to_chars(digits, digits + sizeof(digits), number, std::chars_format::fixed, DigitsAfterPoint);
    std::string text = error == std::errc() ? std::string(digits, end) : "0";
    if (text.find('.') != std::string::npos) {
        text.erase(text.find_last_not_of('0') + 1);
        text.erase(text.find_last_not_of('.') + 1);
    }
    return (text == "-0" ? "0" : text) + std::string(parsed ? parsed->written : rdl::SizeUnits[0].name);
}

void SetSize(Document& document, ElementId owner, std::string_view path, double points,
             const std::string& step) {
    if (const auto text = NewText(document, owner, path, points)) {
        SetText(document, owner, path, *text, step);
    }
}

void SetSizes(Document& document, const std::vector<SizeChange>& changes, const std::string& step) {
    std::vector<TextChange> texts;
    for (const SizeChange& change : changes) {
        if (auto text = NewText(document, change.owner, change.path, change.points)) {
            texts.push_back({change.owner, change.path, std::move(*text)});
        }
    }
    SetTexts(document, texts, step);
}

}  // namespace designer
