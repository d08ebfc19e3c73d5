// SPDX-License-Identifier: GPL-3.0-or-later
#include <map>

#include "rdl/writers/common/writers.h"
#include "rdl/writers/html/body.h"
#include "rdl/writers/html/text.h"

namespace rdl::writers {
namespace {

constexpr std::string_view CommonSheet =
    "*{box-sizing:border-box}\n"
    "body{margin:12pt;text-rendering:geometricPrecision}\n"  // text as wide as in the layout
    "table{border-collapse:collapse;table-layout:fixed}\n"
    "th{font-weight:normal}\n"
    "td,th,.t{overflow-wrap:anywhere}\n"
    "a{color:inherit}\n"
    ".v{position:absolute;width:1px;height:1px;overflow:hidden;clip-path:inset(50%)}\n"
    ".k{break-inside:avoid}\n"
    ".bb{break-before:page}\n"
    ".ba{break-after:page}\n"
    "thead{display:table-header-group}\n"
    "tr,img{break-inside:avoid}\n"
    "@media print{body{margin:0}nav{display:none}*{print-color-adjust:exact}}\n";

// A language tag has only ASCII letters, digits and hyphens (RFC 5646, section 2.1).
std::string LanguageTag(const std::string& language) {
    const bool fits = !language.empty() && language.find_first_not_of(
                                               "ABCDEFGHIJKLMNOPQRSTUVWXYZ"
                                               "abcdefghijklmnopqrstuvwxyz0123456789-") == std::string::npos;
    return fits ? language : "en";
}

void AppendMeta(const char* name, const std::string& content, std::string& head) {
    if (!content.empty()) {
        head += std::string("<meta name=\"") + name + "\" content=\"";
        AppendHtml(content, head);
        head += "\">\n";
    }
}

// The sheets of paper that a browser prints on (CSS Paged Media 3, sections 5 and 7): those of the report.
// The first section's are the document's; a section with others names them.
class Sheets {
 public:
    // Returns the class of the section, with a space before it; empty if it has the document's sheets.
    std::string ClassOf(const layout::PageSetup& page) {
        std::string rule = "{size:";
        for (const double length : {page.width, page.height}) {
            AppendPoints(length, rule);
            rule += ' ';
        }
        rule.back() = ';';
        rule += "margin:";
        for (const double length : {page.marginTop, page.marginRight, page.marginBottom, page.marginLeft}) {
            AppendPoints(length, rule);
            rule += ' ';
        }
        rule.back() = '}';
        const auto [entry, isNew] = m_names.try_emplace(std::move(rule));
        if (isNew && m_names.size() > 1) {
            entry->second = " q" + std::to_string(m_names.size() - 1);
        }
        return entry->second;
    }

    std::string Rules() const {
        std::string rules;
        for (const auto& [rule, name] : m_names) {
            rules.append("@page").append(name).append(rule).append("\n");
            if (!name.empty()) {
                rules.append(".").append(name, 1).append("{page:").append(name, 1).append("}\n");
            }
        }
        return rules;
    }

 private:
    std::map<std::string, std::string> m_names;  // by what the sheets are
};

std::string Head(const layout::ReportInstance& report, const HtmlStyles& styles, const Sheets& sheets) {
    std::string head = "<!DOCTYPE html>\n<html lang=\"" + LanguageTag(report.language) +
                       "\">\n<head>\n<meta charset=\"utf-8\">\n"
                       "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n<title>";
    AppendHtml(report.title.empty() ? "Report" : report.title, head);
    head += "</title>\n";
    AppendMeta("author", report.author, head);
    AppendMeta("description", report.description, head);
    head += "<style>\n";
    head += CommonSheet;
    head += sheets.Rules();
    head += styles.Sheet();
    head += "</style>\n</head>\n<body>\n";
    return head;
}

void WriteSection(layout::SectionInstance& section, bool first, bool last, const std::string& sheet,
                  HtmlStyles& styles, HtmlBody& body) {
    const auto boxOf = [&](const layout::BoxStylePtr& style) {
        return styles.Box(style, HtmlStyles::Place::Block, nullptr, layout::HAlign::Left);
    };
    if (first && section.page.headerHeight > 0) {
        body.Raw("<header class=\"" + boxOf(section.page.headerStyle) + "\">\n");
        body.Items(section.Header({}), section.bodyWidth, section.page.headerHeight);
        body.Raw("</header>\n");
    }
    body.Raw("<section class=\"" + boxOf(section.bodyStyle) + (first ? "" : " bb") + sheet + "\">\n");
    body.Items(section.items, section.bodyWidth, section.bodyHeight);
    body.Raw("</section>\n");
    if (last && section.page.footerHeight > 0) {
        body.Raw("<footer class=\"" + boxOf(section.page.footerStyle) + "\">\n");
        body.Items(section.Footer({}), section.bodyWidth, section.page.footerHeight);
        body.Raw("</footer>\n");
    }
}

}  // namespace

void WriteHtml(layout::ReportInstance& report, Output& output, const Options& /*options*/) {
    HtmlStyles styles;
    Sheets sheets;
    Spool spool;
    HtmlBody body(styles, spool);
    for (std::size_t i = 0; i < report.sections.size(); ++i) {
        layout::SectionInstance& section = *report.sections[i];
        WriteSection(section, i == 0, i + 1 == report.sections.size(), sheets.ClassOf(section.page), styles,
                     body);
    }
    body.Flush();
    output.Write(Head(report, styles, sheets));
    output.Write(body.Map().Navigation());
    spool.Read([&](std::string_view piece) { output.Write(piece); });
    output.Write(std::string_view("</body>\n</html>\n"));
}

}  // namespace rdl::writers
