// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/definition/item_reader.h"

#include <algorithm>

#include "rdl/definition/group_reader.h"
#include "rdl/definition/style_reader.h"

namespace rdl {
namespace {

template <typename Enum>
struct Word {
    std::string_view name;
    Enum value;
};

constexpr Word<Image::Source> Sources[] = {{"External", Image::Source::External},
                                           {"Embedded", Image::Source::Embedded},
                                           {"Database", Image::Source::Database}};
constexpr Word<Image::Sizing> Sizings[] = {{"AutoSize", Image::Sizing::AutoSize},
                                           {"Fit", Image::Sizing::Fit},
                                           {"FitProportional", Image::Sizing::FitProportional},
                                           {"Clip", Image::Sizing::Clip}};

using DataOutput = ReportItem::DataOutput;
constexpr Word<DataOutput> DataOutputs[] = {{"Auto", DataOutput::Auto},
                                            {"Output", DataOutput::Output},
                                            {"NoOutput", DataOutput::NoOutput},
                                            {"ContentsOnly", DataOutput::Auto}};

template <typename Enum, std::size_t Count>
Enum Choose(Context& context, const XmlElement& element, std::string_view name,
            const Word<Enum> (&words)[Count]) {
    const std::string text = element.ChildText(name);
    if (text.empty()) {
        return words[0].value;
    }
    for (const Word<Enum>& word : words) {
        if (EqualNoCase(word.name, text)) {
            return word.value;
        }
    }
    context.Fail(element, PlaceOf(element) + ", " + std::string(name), "\"" + text + "\" is not known");
}

}  // namespace

ItemPtr ReadLine(Context& context, const XmlElement& element, Extent container) {
    auto line = std::make_unique<Line>();
    ReadBasics(context, element, *line, container);
    const std::string where = PlaceOf(element);
    line->width = context.SignedSize(element, "Width", where);
    line->height = context.SignedSize(element, "Height", where);
    return line;
}

ItemPtr ReadRectangle(Context& context, const XmlElement& element, Extent container) {
    auto rectangle = std::make_unique<Rectangle>();
    ReadBasics(context, element, *rectangle, container);
    rectangle->keepTogether = context.Flag(element, "KeepTogether", PlaceOf(element));
    rectangle->omitBorderOnPageBreak = context.Flag(element, "OmitBorderOnPageBreak", PlaceOf(element));
    rectangle->items = ReadItems(context, element, {rectangle->width, rectangle->height});
    return rectangle;
}

ItemPtr ReadImage(Context& context, const XmlElement& element, Extent container) {
    auto image = std::make_unique<Image>();
    ReadBasics(context, element, *image, container);
    image->source = Choose(context, element, "Source", Sources);
    image->sizing = Choose(context, element, "Sizing", Sizings);
    image->value = context.ChildExpr(element, "Value", PlaceOf(element));
    image->mimeType = context.ChildExpr(element, "MIMEType", PlaceOf(element));
    const std::string where = PlaceOf(element) + ", Value";
    if (image->source == Image::Source::External) {
        context.RefuseAddress(element, where, image->value);
    } else if (image->source == Image::Source::Embedded) {
        context.RequireImage(element, where, image->value);
    }
    return image;
}

ItemPtr ReadSubreport(Context& context, const XmlElement& element, Extent container) {
    auto subreport = std::make_unique<Subreport>();
    ReadBasics(context, element, *subreport, container);
    const std::string where = PlaceOf(element);
    subreport->reportName = element.ChildText("ReportName");
    if (subreport->reportName.empty()) {
        context.Fail(element, where, "no report is named");
    }
    if (const XmlElement* parameters = element.Child("Parameters")) {
        for (const XmlElement& child : parameters->children) {
            subreport->parameters.emplace_back(
                std::string(child.AttributeOf("Name")),
                context.ChildExpr(child, "Value", where + ", " + PlaceOf(child)));
        }
    }
    subreport->noRows =
        context.ChildExpr(element, element.Child("NoRowsMessage") ? "NoRowsMessage" : "NoRows", where);
    subreport->mergeTransactions = context.Flag(element, "MergeTransactions", where);
    subreport->keepTogether = context.Flag(element, "KeepTogether", where);
    subreport->omitBorderOnPageBreak = context.Flag(element, "OmitBorderOnPageBreak", where);
    return subreport;
}

void ReadBasics(Context& context, const XmlElement& element, ReportItem& item, Extent container) {
    const std::string where = PlaceOf(element);
    item.name = context.NameOf(element);
    item.place = where;
    item.line = element.line;
    item.left = context.Size(element, "Left", where);
    item.top = context.Size(element, "Top", where);
    if (item.kind != ItemKind::Line) {
        item.width = context.Size(element, "Width", where, std::max(0.0, container.width - item.left));
        item.height = context.Size(element, "Height", where, std::max(0.0, container.height - item.top));
    }
    item.zIndex = context.Number(element, "ZIndex", where, -1'000'000'000, 1'000'000'000, 0);
    item.style = ReadStyle(context, element, where);
    item.visibility = ReadVisibility(context, element, where);
    item.action = ReadAction(context, element, where);
    item.toolTip = context.ChildExpr(element, "ToolTip", where);
    item.bookmark = context.ChildExpr(element, "Bookmark", where);
    item.documentMapLabel =
        context.ChildExpr(element, element.Child("DocumentMapLabel") ? "DocumentMapLabel" : "Label", where);
    item.repeatWith = element.ChildText("RepeatWith");
    item.pageBreak = ReadPageBreak(context, element, where);
    item.dataName = element.ChildText("DataElementName");
    item.dataOutput = Choose(context, element, "DataElementOutput", DataOutputs);
}

std::vector<ItemPtr> ReadItems(Context& context, const XmlElement& owner, Extent container) {
    std::vector<ItemPtr> items;
    if (const XmlElement* element = owner.Child("ReportItems")) {
        for (const XmlElement& child : element->children) {
            items.push_back(ReadItem(context, child, container));
        }
    }
    return items;
}

ItemPtr ReadCellItem(Context& context, const XmlElement* owner, Extent cell) {
    if (!owner) {
        return nullptr;
    }
    const XmlElement* contents = owner->Child("CellContents");
    if (!contents) {
        contents = owner->Child("ReportItems");
    }
    if (!contents) {
        return nullptr;
    }
    ItemPtr item;
    for (const XmlElement& child : contents->children) {
        if (child.name == "ColSpan" || child.name == "RowSpan") {
            continue;
        }
        if (item) {
            context.Fail(child, PlaceOf(child), "a cell holds more than one item");
        }
        item = ReadItem(context, child, cell);
        Fill(*item, cell);
    }
    return item;
}

void Fill(ReportItem& item, Extent cell) {
    if (item.kind == ItemKind::Line) {
        return;
    }
    item.left = item.top = 0;
    item.width = cell.width;
    item.height = cell.height;
}

}  // namespace rdl
