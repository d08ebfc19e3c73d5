// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/tables/cell_text.h"

#include <algorithm>

#include "designer/document/child_order.h"
#include "designer/document/editing.h"
#include "designer/document/insertion.h"
#include "designer/document/item_size.h"
#include "designer/document/properties/properties.h"
#include "designer/document/report_items.h"
#include "designer/document/xml_text.h"

namespace designer {
namespace {

constexpr const char* FirstRun = "Paragraphs/Paragraph/TextRuns/TextRun";
constexpr const char* UsualStyle =
    "<Style><PaddingLeft>2pt</PaddingLeft><PaddingRight>2pt</PaddingRight><PaddingTop>2pt</PaddingTop>"
    "<PaddingBottom>2pt</PaddingBottom></Style>";

// Returns the style at the path of the text box, without what the look leaves out.
std::string StyleXml(const Document& document, const BoxLook& look, const std::string& path, bool takesBold) {
    const ElementId style = look.like == NoElement ? NoElement : document.Find(look.like, path);
    const bool addsBold = takesBold && look.isBold;
    std::string xml;
    bool isBoldWritten = !addsBold;
    const auto writeBold = [&] {
        xml += isBoldWritten ? "" : "<FontWeight>Bold</FontWeight>";
        isBoldWritten = true;
    };
    for (const ElementId child : style == NoElement ? std::vector<ElementId>{} : document.Children(style)) {
        const std::string name = document.Name(child);
        const bool isOfValue = name == "Format" || name == "TextAlign";
        if ((isOfValue && !look.keepsFormat) || (name == "FontWeight" && addsBold)) {
            continue;
        }
        if (PlaceInOrder("Style", name) > PlaceInOrder("Style", "FontWeight")) {
            writeBold();
        }
        xml += XmlOf(document, child);
    }
    writeBold();
    return xml.empty() ? "<Style />" : "<Style>" + xml + "</Style>";
}

bool IsTextbox(const Document& document, ElementId item) {
    return item != NoElement && document.Name(item) == "Textbox";
}

}  // namespace

std::string BoxXml(const Document& document, const std::string& name, std::string_view value,
                   const BoxLook& wished) {
    BoxLook look = wished;
    if (!IsTextbox(document, look.like)) {
        look.like = NoElement;
    }
    const bool isOlder = IsOlderSchema(document);
    const std::string box = look.like == NoElement && !(isOlder && look.isBold)
                                ? UsualStyle
                                : StyleXml(document, look, "Style", isOlder);
    const std::string text = "<Value>" + EscapedText(value, "\n") + "</Value>";
    if (isOlder) {
        return "<Textbox Name=\"" + name + "\">" + box + "<CanGrow>true</CanGrow>" + text + "</Textbox>";
    }
    return "<Textbox Name=\"" + name +
           "\"><CanGrow>true</CanGrow><KeepTogether>true</KeepTogether><Paragraphs><Paragraph><TextRuns>"
           "<TextRun>" +
           text + StyleXml(document, look, std::string(FirstRun) + "/Style", true) + "</TextRun></TextRuns>" +
           StyleXml(document, look, "Paragraphs/Paragraph/Style", false) + "</Paragraph></Paragraphs>" + box +
           "</Textbox>";
}

std::string TablixCellXml(const std::string& item) {
    return "<TablixCell><CellContents>" + item + "</CellContents></TablixCell>";
}

std::string SizeOfReport(const Document& document, double points) {
    const ElementId body = BodyOf(document);
    const auto like = body == NoElement ? std::nullopt : document.TextAt(body, "Height");
    return SizeText(points, like.value_or("1in"));
}

std::string HeaderXml(const Document& document, double points, const std::string& item) {
    return "<TablixHeader><Size>" + SizeOfReport(document, points) + "</Size><CellContents>" + item +
           "</CellContents></TablixHeader>";
}

std::string TextOfBox(const Document& document, ElementId item) {
    if (!IsTextbox(document, item)) {
        return {};
    }
    const auto plain = document.TextAt(item, std::string(FirstRun) + "/Value");
    return plain ? *plain : document.TextAt(item, "Value").value_or("");
}

void SetTextOfBox(Document& document, ElementId item, std::string_view text) {
    if (!IsTextbox(document, item)) {
        throw EditError("Only a text box can show a field");
    }
    if (IsOlderSchema(document) || document.Find(item, "Paragraphs") == NoElement) {
        SetText(document, item, IsOlderSchema(document) ? "Value" : std::string(FirstRun) + "/Value", text);
        return;
    }
    // What follows the first run of the first paragraph goes.
    for (const std::string_view path : {"Paragraphs", "Paragraphs/Paragraph/TextRuns"}) {
        const ElementId collection = document.Find(item, path);
        std::vector<ElementId> others =
            collection == NoElement ? std::vector<ElementId>{} : document.Children(collection);
        for (std::size_t index = 1; index < others.size(); ++index) {
            Remove(document, others[index]);
        }
    }
    SetText(document, item, std::string(FirstRun) + "/Value", text);
}

void EditBatch::Insert(ElementId parent, ElementId before, std::string_view xml) {
    m_splices.push_back(InsertionOf(m_document, parent, before, xml));
}

void EditBatch::Remove(ElementId id) {
    m_splices.push_back(RemovalOf(m_document, id));
}

void EditBatch::Move(ElementId parent, ElementId child, ElementId before) {
    const SourceTree& tree = m_document.Tree();
    const int first = m_document.IndexOf(child);
    Splice splice = InsertionOf(m_document, parent, before, tree.At(tree[first].whole));
    for (int index = first; index < tree.Count() && tree[index].whole.begin < tree[first].whole.end;
         ++index) {
        splice.keptIds.push_back(m_document.IdAt(index));
    }
    m_splices.push_back(std::move(splice));
    m_splices.push_back(RemovalOf(m_document, child));
}

void EditBatch::SetText(ElementId id, std::string_view text) {
    const Range content = m_document.Tree()[m_document.IndexOf(id)].Content();
    m_splices.push_back({content.begin, content.Size(), EscapedText(text, "\n"), {}});
}

void EditBatch::Apply() {
    std::stable_sort(m_splices.begin(), m_splices.end(),
                     [](const Splice& left, const Splice& right) { return left.offset < right.offset; });
    if (!m_splices.empty()) {
        m_document.Apply("Change table", std::move(m_splices));
    }
    m_splices.clear();
}

}  // namespace designer
