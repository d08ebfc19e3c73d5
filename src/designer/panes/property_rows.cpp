// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/panes/property_rows.h"

#include <charconv>

#include "designer/document/editing.h"
#include "designer/document/item_size.h"
#include "designer/document/names.h"
#include "designer/model/item_text.h"
#include "designer/model/placing.h"

namespace designer {
namespace {

using Kind = PropertyRow::Kind;

std::vector<PropertyRow> RowsOfItem(const DesignModel& model, const ReportItem& item) {
    std::vector<PropertyRow> rows{{Kind::Name, "General", "Name", "", ""}};
    if (TextOfItem(model.Source(), item.id)) {
        rows.push_back({Kind::ItemText, "General", "Text", "", ""});
    }
    if (CanMove(item)) {
        rows.push_back({Kind::Size, "Position", "Left", "Left", "0in"});
        rows.push_back({Kind::Size, "Position", "Top", "Top", "0in"});
    }
    if (CanResize(item)) {
        const Kind kind = item.kind == "Line" ? Kind::SignedSize : Kind::Size;
        rows.push_back({kind, "Position", "Width", "Width", ""});
        rows.push_back({kind, "Position", "Height", "Height", ""});
    }
    rows.push_back({Kind::Whole, "Position", "ZIndex", "ZIndex", "0"});
    rows.push_back({Kind::Text, "General", "ToolTip", "ToolTip", ""});
    rows.push_back({Kind::Text, "General", "Bookmark", "Bookmark", ""});
    return rows;
}

// The page is in the section since 2010, and in the report before.
std::vector<PropertyRow> RowsOfReport(const Document& document) {
    const bool hasSections = document.Find(document.Root(), "ReportSections") != NoElement;
    const std::string section = hasSections ? "ReportSections/ReportSection/" : "";
    const bool hasPage = hasSections || document.Find(document.Root(), "Page") != NoElement;
    const std::string page = section + (hasPage ? "Page/" : "");
    std::vector<PropertyRow> rows{{Kind::Text, "General", "Description", "Description", ""},
                                  {Kind::Text, "General", "Author", "Author", ""},
                                  {Kind::Text, "General", "Language", "Language", ""},
                                  {Kind::Size, "Page", "Width of the body", section + "Width", ""}};
    const std::pair<const char*, const char*> sizes[] = {
        {"PageWidth", "8.5in"}, {"PageHeight", "11in"}, {"LeftMargin", "0in"},
        {"RightMargin", "0in"}, {"TopMargin", "0in"},   {"BottomMargin", "0in"}};
    for (const auto& [name, initial] : sizes) {
        rows.push_back({Kind::Size, "Page", name, page + name, initial});
    }
    return rows;
}

// A size that is a number only gets the unit of the report.
std::string WithUnit(const Document& document, const std::string& value) {
    double number = 0;
    const auto read = std::from_chars(value.data(), value.data() + value.size(), number);
    if (read.ec != std::errc() || read.ptr != value.data() + value.size()) {
        return value;
    }
    const ElementId body = BodyOf(document);
    const std::string like = body == NoElement ? "" : document.TextAt(body, "Height").value_or("");
    const std::size_t unit = like.find_last_of("0123456789.");
    return value + (unit == std::string::npos || !PointsOf(like) ? "in" : like.substr(unit + 1));
}

void SetSizeText(Document& document, ElementId id, const PropertyRow& row, const std::string& typed) {
    const std::string value = WithUnit(document, typed);
    const auto points = PointsOf(value);
    if (!points) {
        throw EditError(row.name + ": \"" + typed + "\" is no size; write 2.5cm, 25mm, 1in, 72pt or 6pc");
    }
    if (*points < 0 && row.kind != Kind::SignedSize) {
        throw EditError(row.name + ": \"" + typed + "\" is below 0");
    }
    SetText(document, id, row.path, value);
}

void SetWhole(Document& document, ElementId id, const PropertyRow& row, const std::string& value) {
    int number = 0;
    const auto read = std::from_chars(value.data(), value.data() + value.size(), number);
    if (read.ec != std::errc() || read.ptr != value.data() + value.size() || number < 0) {
        throw EditError(row.name + ": \"" + value + "\" is no whole number from 0 on");
    }
    SetText(document, id, row.path, value);
}

}  // namespace

std::vector<PropertyRow> PropertyRowsOf(const DesignModel& model, ElementId id) {
    if (const ReportItem* item = model.Item(id)) {
        return RowsOfItem(model, *item);
    }
    if (model.Band(id)) {
        return {{Kind::Size, "Position", "Height", "Height", ""}};
    }
    return id == model.Source().Root() ? RowsOfReport(model.Source()) : std::vector<PropertyRow>{};
}

std::optional<std::string> PropertyValue(const Document& document, ElementId id, const PropertyRow& row) {
    if (row.kind == Kind::Name) {
        return document.Attribute(id, "Name");
    }
    return row.kind == Kind::ItemText ? TextOfItem(document, id) : document.TextAt(id, row.path);
}

void SetPropertyValue(Document& document, ElementId id, const PropertyRow& row, const std::string& value) {
    switch (row.kind) {
        case Kind::Name:
            Rename(document, id, value);
            break;
        case Kind::ItemText:
            SetTextOfItem(document, id, value);
            break;
        case Kind::Text:
            SetText(document, id, row.path, value);
            break;
        case Kind::Size:
        case Kind::SignedSize:
            SetSizeText(document, id, row, value);
            break;
        case Kind::Whole:
            SetWhole(document, id, row, value);
            break;
    }
}

void ResetProperty(Document& document, ElementId id, const PropertyRow& row) {
    if (row.kind == Kind::ItemText) {
        SetTextOfItem(document, id, "");
    } else if (row.kind != Kind::Name) {
        RemoveAt(document, id, row.path);
    }
}

}  // namespace designer
