// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "rdl/format/format.h"
#include "rdl/writers/common/flow_text.h"
#include "rdl/writers/common/writers.h"
#include "rdl/writers/rtf/body.h"
#include "rdl/writers/rtf/text.h"

namespace rdl::writers {
namespace {

using layout::PageSetup;

void AppendInfoText(const char* word, const std::string& text, std::string& out) {
    if (!text.empty()) {
        out += std::string("{") + word + " ";
        AppendRtfName(text, out);
        out += '}';
    }
}

std::string Info(const layout::ReportInstance& report, const Options& options) {
    std::string info = "{\\info";
    AppendInfoText("\\title", report.title, info);
    AppendInfoText("\\author", report.author, info);
    AppendInfoText("\\doccomm", report.description, info);
    const DateTimeParts at = SplitTicks(options.nowTicks);
    info += "{\\creatim";
    AppendWord("\\yr", at.year, info);
    AppendWord("\\mo", at.month, info);
    AppendWord("\\dy", at.day, info);
    AppendWord("\\hr", at.hour, info);
    AppendWord("\\min", at.minute, info);
    AppendWord("\\sec", at.second, info);
    return info + "}}\n";
}

// The words for the sizes of a page: the document has its own, and so has each of its sections.
struct PageWords {
    const char *width, *height, *left, *right, *top, *bottom, *landscape;
};
constexpr PageWords DocumentWords{"\\paperw", "\\paperh", "\\margl",    "\\margr",
                                  "\\margt",  "\\margb",  "\\landscape"};
constexpr PageWords SectionWords{"\\pgwsxn",   "\\pghsxn",   "\\marglsxn", "\\margrsxn",
                                 "\\margtsxn", "\\margbsxn", "\\lndscpsxn"};

void AppendPage(const PageSetup& page, const PageWords& words, std::string& out) {
    AppendTwips(words.width, page.width, out);
    AppendTwips(words.height, page.height, out);
    AppendTwips(words.left, page.marginLeft, out);
    AppendTwips(words.right, page.marginRight, out);
    AppendTwips(words.top, page.marginTop + page.headerHeight, out);
    AppendTwips(words.bottom, page.marginBottom + page.footerHeight, out);
    out += page.width > page.height ? words.landscape : "";
}

// Everything before the text; `tables` are the fonts and colours that it uses.
std::string Head(const layout::ReportInstance& report, const Options& options, const std::string& tables) {
    std::string head = "{\\rtf1\\ansi\\ansicpg1252\\uc1\\deff0\n" + tables + Info(report, options);
    head += "\\viewkind1\\nouicompat\\htmautsp";
    if (!report.sections.empty()) {
        AppendPage(PaperOf(*report.sections.front()), DocumentWords, head);
    }
    return head + "\n";
}

void AppendSection(const PageSetup& page, bool titlePage, std::string& out) {
    out += "\\sectd\\sbkpage";
    AppendPage(page, SectionWords, out);
    AppendTwips("\\headery", page.marginTop, out);
    AppendTwips("\\footery", page.marginBottom, out);
    if (page.columns > 1) {
        AppendWord("\\cols", std::min(page.columns, 45), out);
        AppendTwips("\\colsx", page.columnSpacing, out);
    }
    out += titlePage ? "\\titlepg\n" : "\n";
}

void WriteMargin(const std::string& word, const std::vector<layout::Instance>& items,
                 const FlowBody::Backdrop& backdrop, RtfBody& body) {
    body.Raw("{" + word + " ");
    body.Margin(items, backdrop.height, backdrop);
    body.Raw("\\par}\n");
}

// The headers, or the footers, of a document's sections. A section without one would have that of the section
// before it: it has an empty one then.
class Margins {
 public:
    explicit Margins(const char* word) : m_word(word) {}
    // Writes those of the next section. `onFirst` says whether its first page has one; no value: the first
    // page is like all others.
    void Write(const std::vector<layout::Instance>& items, const FlowBody::Backdrop& backdrop,
               std::optional<bool> onFirst, RtfBody& body) {
        const double height = backdrop.height;
        if (height > 0 || m_hasOther) {
            WriteMargin(m_word, items, backdrop, body);
            m_hasOther = height > 0;
        }
        const bool hasFirst = height > 0 && onFirst.value_or(false);
        if (hasFirst || (onFirst && m_hasFirst)) {
            WriteMargin(m_word + "f", hasFirst ? items : std::vector<layout::Instance>(),
                        hasFirst ? backdrop : FlowBody::Backdrop(), body);
            m_hasFirst = hasFirst;
        }
    }

 private:
    const std::string m_word;
    bool m_hasOther = false, m_hasFirst = false;  // the last ones that were written have content
};

struct DocumentMargins {
    Margins headers{"\\header"}, footers{"\\footer"};
};

void WriteMargins(layout::SectionInstance& section, bool titlePage, DocumentMargins& margins, RtfBody& body) {
    const PageSetup& page = section.page;
    const auto onFirst = [titlePage](bool has) {
        return titlePage ? std::optional<bool>(has) : std::nullopt;
    };
    std::vector<layout::Instance> header, footer;
    if (page.headerHeight > 0) {
        header = section.Header({});
    }
    margins.headers.Write(header, {page.headerStyle, section.bodyWidth, page.headerHeight},
                          onFirst(page.headerOnFirst), body);
    if (page.footerHeight > 0) {
        footer = section.Footer({});
    }
    margins.footers.Write(footer, {page.footerStyle, section.bodyWidth, page.footerHeight},
                          onFirst(page.footerOnFirst), body);
}

void WriteSection(layout::SectionInstance& section, DocumentMargins& margins, RtfBody& body) {
    const PageSetup page = PaperOf(section);
    const bool titlePage = HasTitlePage(page);
    std::string words;
    AppendSection(page, titlePage, words);
    body.Raw(words);
    WriteMargins(section, titlePage, margins, body);
    body.Body(section.items, {section.bodyStyle, section.bodyWidth, section.bodyHeight});
}

}  // namespace

void WriteRtf(layout::ReportInstance& report, Output& output, const Options& options) {
    RtfStyles styles;
    Spool spool;
    RtfBody body(styles, spool);
    DocumentMargins margins;
    for (const auto& section : report.sections) {
        body.Raw(section == report.sections.front() ? "" : "\\sect\n");
        WriteSection(*section, margins, body);
    }
    body.Flush();
    output.Write(Head(report, options, styles.Tables()));
    spool.Read([&](std::string_view piece) { output.Write(piece); });
    output.Write(std::string_view("\\par}\n"));
}

}  // namespace rdl::writers
