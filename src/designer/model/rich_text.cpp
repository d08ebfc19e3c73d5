// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/model/rich_text.h"

#include <algorithm>

#include "designer/document/editing.h"
#include "designer/document/properties/properties.h"
#include "designer/document/xml_text.h"
#include "designer/tables/tablix_shape.h"
#include "platform/base/ascii.h"

namespace designer {
namespace {

struct Format {
    std::string_view element, word;
    bool RichRun::*isSet;
};
constexpr Format Formats[] = {{"FontStyle", "Italic", &RichRun::isItalic},
                              {"FontWeight", "Bold", &RichRun::isBold},
                              {"TextDecoration", "Underline", &RichRun::isUnderlined}};

std::vector<ElementId> RichParagraphsOf(const Document& document, ElementId item) {
    return ChildrenNamed(document, item, "Paragraphs", "Paragraph");
}

std::vector<ElementId> RunsOf(const Document& document, ElementId paragraph) {
    return ChildrenNamed(document, paragraph, "TextRuns", "TextRun");
}

RichRun ReadRun(const Document& document, ElementId id, int paragraph, int run) {
    RichRun one{document.TextAt(id, "Value").value_or(""), paragraph, run};
    for (const Format& format : Formats) {
        const std::string style = "Style/" + std::string(format.element);
        one.*format.isSet = SameAscii(Trim(document.TextAt(id, style).value_or("")), format.word);
    }
    return one;
}

// The children of the element but those with these names.
std::string ChildrenXml(const Document& document, ElementId id,
                        std::initializer_list<std::string_view> without) {
    std::string xml;
    for (const ElementId child : id == NoElement ? std::vector<ElementId>{} : document.Children(id)) {
        if (std::find(without.begin(), without.end(), document.Name(child)) == without.end()) {
            xml += XmlOf(document, child);
        }
    }
    return xml;
}

class TextWriter {
 public:
    TextWriter(Document& document, ElementId item, const RichText& now)
        : m_document(document), m_item(item), m_now(now) {
        for (const ElementId paragraph : RichParagraphsOf(document, item)) {
            m_paragraphs.push_back(paragraph);
            m_runs.push_back(RunsOf(document, paragraph));
        }
    }

    // Changes the texts of runs that stay, and returns false if the runs are others.
    bool PutTexts(const RichText& text) {
        std::vector<TextChange> changes;
        if (text.size() != m_now.size()) {
            return false;
        }
        for (std::size_t paragraph = 0; paragraph < text.size(); ++paragraph) {
            const auto &runs = text[paragraph].runs, &old = m_now[paragraph].runs;
            if (runs.size() != old.size()) {
                return false;
            }
            for (std::size_t run = 0; run < runs.size(); ++run) {
                RichRun same = runs[run];
                same.text = old[run].text;
                if (same != old[run] || run >= m_runs[paragraph].size()) {
                    return false;
                }
                if (runs[run].text != old[run].text) {
                    changes.push_back({m_runs[paragraph][run], "Value", runs[run].text});
                }
            }
        }
        if (!changes.empty()) {
            SetTexts(m_document, changes, "Edit text");
        }
        return true;
    }

    void PutParagraphs(const RichText& text) {
        const ElementId parent = EnsureChild(m_document, m_item, "Paragraphs");
        std::vector<std::string> made;
        std::vector<int> kept;  // by new paragraphs: the one that stays
        int last = -1;
        for (const RichParagraph& paragraph : text) {
            const auto like = static_cast<std::size_t>(std::max(paragraph.like, 0));
            const bool stays = paragraph.like > last && like < m_now.size() && m_now[like] == paragraph;
            kept.push_back(stays ? paragraph.like : -1);
            last = stays ? paragraph.like : last;
            made.push_back(stays ? std::string() : ParagraphXml(paragraph));
        }
        for (std::size_t number = 0; number < text.size(); ++number) {
            if (kept[number] < 0) {
                const auto next = std::find_if(kept.begin() + static_cast<std::ptrdiff_t>(number), kept.end(),
                                               [](int one) { return one >= 0; });
                InsertXml(m_document, parent, made[number],
                          next == kept.end() ? NoElement : m_paragraphs[static_cast<std::size_t>(*next)]);
            }
        }
        for (std::size_t number = 0; number < m_paragraphs.size(); ++number) {
            if (std::find(kept.begin(), kept.end(), static_cast<int>(number)) == kept.end()) {
                Remove(m_document, m_paragraphs[number]);
            }
        }
        RemoveAt(m_document, m_item, "Value");
    }

 private:
    std::string ParagraphXml(const RichParagraph& paragraph) const {
        const bool isOld =
            paragraph.like >= 0 && static_cast<std::size_t>(paragraph.like) < m_paragraphs.size();
        std::string runs;
        for (const RichRun& run : paragraph.runs) {
            runs += RunXml(run);
        }
        return "<Paragraph><TextRuns>" + runs + "</TextRuns>" +
               (isOld ? ChildrenXml(m_document, m_paragraphs[static_cast<std::size_t>(paragraph.like)],
                                    {"TextRuns"})
                      : "<Style />") +
               "</Paragraph>";
    }

    ElementId RunOf(const RichRun& run) const {
        const auto paragraph = static_cast<std::size_t>(std::max(run.paragraph, 0)),
                   number = static_cast<std::size_t>(std::max(run.run, 0));
        const bool isThere = run.run >= 0 && paragraph < m_runs.size() && number < m_runs[paragraph].size();
        return isThere ? m_runs[paragraph][number] : NoElement;
    }

    std::string RunXml(const RichRun& run) const {
        const ElementId old = RunOf(run);
        const ElementId style = old == NoElement ? NoElement : m_document.Find(old, "Style");
        const RichRun was = old == NoElement ? RichRun{} : ReadRun(m_document, old, 0, 0);
        std::string look = ChildrenXml(m_document, style, {"FontStyle", "FontWeight", "TextDecoration"});
        for (const Format& format : Formats) {
            const ElementId own = style == NoElement ? NoElement : m_document.Find(style, format.element);
            if (run.*format.isSet != was.*format.isSet) {
                look += run.*format.isSet ? LeafOf(format.element, format.word) : "";
            } else if (own != NoElement) {
                look += XmlOf(m_document, own);
            }
        }
        return "<TextRun><Value>" + EscapedText(run.text, "\n") + "</Value>" +
               (old == NoElement ? "" : ChildrenXml(m_document, old, {"Value", "Style"})) + "<Style>" + look +
               "</Style></TextRun>";
    }

    Document& m_document;
    const ElementId m_item;
    const RichText& m_now;
    std::vector<ElementId> m_paragraphs;
    std::vector<std::vector<ElementId>> m_runs;
};

}  // namespace

std::optional<RichText> RichTextOf(const Document& document, ElementId item) {
    if (document.Name(item) != "Textbox" || IsOlderSchema(document)) {
        return std::nullopt;
    }
    RichText text;
    for (const ElementId paragraph : RichParagraphsOf(document, item)) {
        const int number = static_cast<int>(text.size());
        RichParagraph& one = text.emplace_back();
        one.like = number;
        for (const ElementId run : RunsOf(document, paragraph)) {
            one.runs.push_back(ReadRun(document, run, number, static_cast<int>(one.runs.size())));
        }
    }
    if (text.empty()) {
        text.push_back({-1, {{document.TextAt(item, "Value").value_or("")}}});
    }
    return text;
}

void PutRichText(Document& document, ElementId item, const RichText& text) {
    const auto now = RichTextOf(document, item);
    if (!now) {
        throw EditError("The schema of the report has no texts with runs");
    }
    const StepGroup group(document, "Edit text");
    TextWriter writer(document, item, *now);
    if (!writer.PutTexts(text)) {
        writer.PutParagraphs(text);
    }
}

}  // namespace designer
