// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/model/item_text.h"

#include <vector>

#include "designer/document/editing.h"
#include "designer/document/properties/properties.h"

namespace designer {
namespace {

constexpr const char* FirstValue = "Paragraphs/Paragraph/TextRuns/TextRun/Value";
constexpr const char* RunValue = "TextRuns/TextRun/Value";

std::vector<ElementId> ParagraphsOf(const Document& document, ElementId item) {
    const ElementId paragraphs = document.Find(item, "Paragraphs");
    return paragraphs == NoElement ? std::vector<ElementId>{} : document.Children(paragraphs);
}

bool HasOneRunEach(const Document& document, const std::vector<ElementId>& paragraphs) {
    for (const ElementId paragraph : paragraphs) {
        const ElementId runs = document.Find(paragraph, "TextRuns");
        if (runs == NoElement || document.Children(runs).size() != 1) {
            return false;
        }
    }
    return true;
}

std::vector<std::string_view> LinesOf(std::string_view text) {
    std::vector<std::string_view> lines;
    for (std::size_t end = text.find('\n'); end != std::string_view::npos; end = text.find('\n')) {
        lines.push_back(text.substr(0, end));
        text.remove_prefix(end + 1);
    }
    lines.push_back(text);
    return lines;
}

}  // namespace

std::optional<std::string> TextOfItem(const Document& document, ElementId item) {
    if (document.Name(item) != "Textbox") {
        return std::nullopt;
    }
    const std::vector<ElementId> paragraphs = ParagraphsOf(document, item);
    if (paragraphs.empty()) {
        return document.TextAt(item, "Value").value_or("");
    }
    if (!HasOneRunEach(document, paragraphs)) {
        return std::nullopt;
    }
    std::string text;
    for (const ElementId paragraph : paragraphs) {
        text +=
            (paragraph == paragraphs.front() ? "" : "\n") + document.TextAt(paragraph, RunValue).value_or("");
    }
    return text;
}

void SetTextOfItem(Document& document, ElementId item, std::string_view text) {
    if (!TextOfItem(document, item)) {
        throw EditError("The text has runs with formats of their own");
    }
    std::vector<ElementId> paragraphs = ParagraphsOf(document, item);
    if (paragraphs.empty()) {
        SetText(document, item, IsOlderSchema(document) ? "Value" : FirstValue, text);
        return;
    }
    if (paragraphs.size() == 1) {
        SetText(document, paragraphs.front(), RunValue, text);
        return;
    }
    const std::vector<std::string_view> lines = LinesOf(text);
    while (paragraphs.size() > lines.size()) {
        Remove(document, paragraphs.back());
        paragraphs.pop_back();
    }
    while (paragraphs.size() < lines.size()) {
        paragraphs.push_back(Duplicate(document, paragraphs.back()));
    }
    for (std::size_t index = 0; index < lines.size(); ++index) {
        SetText(document, paragraphs[index], RunValue, lines[index]);
    }
}

}  // namespace designer
