// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/canvas/text_look.h"

#include <algorithm>
#include <optional>
#include <string>

#include "designer/document/item_size.h"
#include "designer/document/properties/properties.h"
#include "designer/tables/tablix_shape.h"
#include "platform/base/ascii.h"
#include "rdl/api/style_values.h"

namespace designer {
namespace {

constexpr const char* UsualFamily = "Arial";
constexpr double UsualSize = 10;  // points
constexpr double LeastFont = 1, MostFont = 200;

std::string StyleOf(const Document& document, ElementId owner, const std::string& name) {
    return owner == NoElement ? std::string()
                              : std::string(Trim(document.TextAt(owner, "Style/" + name).value_or("")));
}

// Returns nullopt for an expression, for a text that is no colour, and for a colour that lets all through.
std::optional<QColor> ColourAt(const Document& document, ElementId owner, const std::string& name) {
    const auto colour = rdl::ColorOf(StyleOf(document, owner, name));
    return colour && qAlpha(*colour) > 0 ? std::optional(QColor::fromRgba(*colour)) : std::nullopt;
}

double PaddingAt(const Document& document, ElementId box, const char* side) {
    return std::max(0.0, PointsOf(StyleOf(document, box, std::string("Padding") + side)).value_or(0));
}

RunLook RunLookOf(const Document& document, ElementId run) {
    const std::string family = StyleOf(document, run, "FontFamily");
    const double size = PointsOf(StyleOf(document, run, "FontSize")).value_or(UsualSize);
    RunLook look;
    look.font.setFamily(family.empty() || family.starts_with('=') ? QString(UsualFamily)
                                                                  : QString::fromStdString(family));
    look.font.setPointSizeF(std::clamp(size, LeastFont, MostFont));
    look.colour = ColourAt(document, run, "Color").value_or(Qt::black);
    return look;
}

Qt::AlignmentFlag AcrossOf(const std::string& word) {
    return SameAscii(word, "Right")     ? Qt::AlignRight
           : SameAscii(word, "Center")  ? Qt::AlignHCenter
           : SameAscii(word, "Justify") ? Qt::AlignJustify
                                        : Qt::AlignLeft;
}

Qt::AlignmentFlag DownOf(const std::string& word) {
    return SameAscii(word, "Bottom")   ? Qt::AlignBottom
           : SameAscii(word, "Middle") ? Qt::AlignVCenter
                                       : Qt::AlignTop;
}

// Returns the colour of the innermost element around the text that has one.
QColor PaperOf(const Document& document, ElementId box) {
    for (ElementId around = box; around != NoElement; around = document.Parent(around)) {
        if (const auto colour = ColourAt(document, around, "BackgroundColor")) {
            return *colour;
        }
    }
    return Qt::white;
}

}  // namespace

TextLook TextLookOf(const Document& document, ElementId box) {
    TextLook look;
    look.paper = PaperOf(document, box);
    look.padding = {PaddingAt(document, box, "Left"), PaddingAt(document, box, "Top"),
                    PaddingAt(document, box, "Right"), PaddingAt(document, box, "Bottom")};
    look.vertical = DownOf(StyleOf(document, box, "VerticalAlign"));
    // Before 2008 the text has no runs, and the style is that of the text box.
    const bool isOlder = IsOlderSchema(document);
    for (const ElementId paragraph :
         isOlder ? std::vector<ElementId>{} : ChildrenNamed(document, box, "Paragraphs", "Paragraph")) {
        look.paragraphs.push_back(AcrossOf(StyleOf(document, paragraph, "TextAlign")));
        std::vector<RunLook>& runs = look.runs.emplace_back();
        for (const ElementId run : ChildrenNamed(document, paragraph, "TextRuns", "TextRun")) {
            runs.push_back(RunLookOf(document, run));
        }
        if (runs.empty()) {
            runs.push_back(RunLookOf(document, NoElement));
        }
    }
    if (look.runs.empty()) {
        look.paragraphs.push_back(AcrossOf(StyleOf(document, box, "TextAlign")));
        look.runs.push_back({RunLookOf(document, isOlder ? box : NoElement)});
    }
    return look;
}

const RunLook& LookOfRun(const TextLook& look, int paragraph, int run) {
    const auto line = static_cast<std::size_t>(std::max(paragraph, 0));
    const std::vector<RunLook>& runs = look.runs[line < look.runs.size() ? line : 0];
    const auto place = static_cast<std::size_t>(std::max(run, 0));
    return runs[place < runs.size() ? place : 0];
}

Qt::AlignmentFlag AlignmentOfParagraph(const TextLook& look, int paragraph) {
    const auto line = static_cast<std::size_t>(std::max(paragraph, 0));
    return look.paragraphs[line < look.paragraphs.size() ? line : 0];
}

}  // namespace designer
