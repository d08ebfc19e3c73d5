// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/pdf/archive.h"

#include <algorithm>

#include "rdl/format/format.h"
#include "rdl/format/iso_date.h"
#include "rdl/values/error.h"
#include "rdl/values/utf8.h"
#include "rdl/writers/pdf/color_profile.h"

namespace rdl::writers {
namespace {

constexpr std::size_t MostObjects = 8'388'607;
constexpr double LeastLength = 3, MostLength = 14'400;

constexpr std::size_t MostPropertyBytes = 10'000;  // as a string of the information dictionary holds them

// Unlike XmlText (writers/common/xml_text.h) in one line: the same text is a string of the information
// dictionary.
std::string ForXml(std::string_view text) {
    std::string out;
    for (std::size_t i = 0; i < text.size() && out.size() < MostPropertyBytes;) {
        const char32_t code = NextCharacter(text, i);
        const bool isPlain = code >= 0x20 && code != 0x7F && code != 0xFFFE && code != 0xFFFF;
        AppendUtf8(isPlain ? code : U' ', out);
    }
    return out;
}

// Unlike AppendXml only for the content of elements: quotation marks stay, as in the dictionary.
std::string Escaped(std::string_view text) {
    std::string out;
    for (const char c : text) {
        if (c == '<' || c == '>' || c == '&') {
            out += c == '<' ? "&lt;" : c == '>' ? "&gt;" : "&amp;";
        } else {
            out += c;
        }
    }
    return out;
}

// One property as a list of its kind: Alt with the default language, or Seq.
std::string Listed(const std::string& property, const std::string& kind, const std::string& text) {
    if (text.empty()) {
        return {};
    }
    const std::string item = kind == "Alt" ? "<rdf:li xml:lang=\"x-default\">" : "<rdf:li>";
    return "<" + property + "><rdf:" + kind + ">" + item + Escaped(text) + "</rdf:li></rdf:" + kind + "></" +
           property + ">\n";
}

std::string Metadata(const DocumentInfo& document, std::int64_t nowTicks) {
    const DateTimeParts at = SplitTicks(nowTicks);
    const std::string date = IsoDate(at) + "T" + IsoTime(at);
    std::string xmp =
        "<?xpacket begin=\"\xEF\xBB\xBF\" id=\"W5M0MpCehiHzreSzNTczkc9d\"?>\n"
        "<x:xmpmeta xmlns:x=\"adobe:ns:meta/\">\n"
        "<rdf:RDF xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\">\n"
        "<rdf:Description rdf:about=\"\" xmlns:dc=\"http://purl.org/dc/elements/1.1/\""
        " xmlns:xmp=\"http://ns.adobe.com/xap/1.0/\" xmlns:pdf=\"http://ns.adobe.com/pdf/1.3/\""
        " xmlns:pdfaid=\"http://www.aiim.org/pdfa/ns/id/\">\n"
        "<pdfaid:part>2</pdfaid:part>\n<pdfaid:conformance>B</pdfaid:conformance>\n"
        "<dc:format>application/pdf</dc:format>\n";
    xmp += Listed("dc:title", "Alt", document.title);
    xmp += Listed("dc:creator", "Seq", document.author);
    xmp += Listed("dc:description", "Alt", document.description);
    xmp.append("<pdf:Producer>").append(Producer).append("</pdf:Producer>\n");
    xmp.append("<xmp:CreateDate>").append(date).append("</xmp:CreateDate>\n");
    xmp.append("<xmp:ModifyDate>").append(date).append("</xmp:ModifyDate>\n");
    return xmp + "</rdf:Description>\n</rdf:RDF>\n</x:xmpmeta>\n<?xpacket end=\"r\"?>";
}

}  // namespace

void LimitForArchive(PdfFile& file) {
    file.Limit(MostObjects, "PDF/A");
}

void CheckPageForArchive(double width, double height) {
    if (std::min(width, height) < LeastLength || std::max(width, height) > MostLength) {
        std::string size;
        PdfNumber(size, width);
        size += " x ";
        PdfNumber(size, height);
        throw Error("PDF/A: a page of " + size + " points; its sides must be from 3 to 14400 points long");
    }
}

DocumentInfo InfoForArchive(const DocumentInfo& document) {
    return {ForXml(document.title), ForXml(document.author), ForXml(document.description),
            ForXml(document.language)};
}

std::string WriteArchiveEntries(PdfFile& file, const DocumentInfo& document, std::int64_t nowTicks) {
    const int profile = file.Stream("/N 3", SrgbProfile());
    const int metadata =
        file.Stream("/Type/Metadata/Subtype/XML", Metadata(document, nowTicks), PdfFile::Filter::None);
    return "/OutputIntents[<</Type/OutputIntent/S/GTS_PDFA1/OutputConditionIdentifier(sRGB IEC61966-2.1)"
           "/Info(sRGB IEC61966-2.1)/DestOutputProfile " +
           PdfReference(profile) + ">>]/Metadata " + PdfReference(metadata);
}

}  // namespace rdl::writers
