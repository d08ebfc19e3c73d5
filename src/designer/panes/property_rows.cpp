// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/panes/property_rows.h"

#include <QFontDatabase>
#include <charconv>
#include <sstream>

#include "designer/document/editing.h"
#include "designer/document/item_size.h"
#include "designer/model/placing.h"
#include "designer/model/table_selection.h"

namespace designer {
namespace {

constexpr const char* Section = "ReportSections/ReportSection";

bool HasPlace(const Property& property, const ReportItem& item) {
    if (property.path == "Left" || property.path == "Top") {
        return CanMove(item);
    }
    return (property.path != "Width" && property.path != "Height") || CanResize(item);
}

void Add(std::vector<PropertyRow>& rows, const Document& document, ElementId id, const std::string& part) {
    const ElementId owner = document.Find(id, part);
    if (owner == NoElement) {
        return;
    }
    for (const Property* property : PropertiesOf(document.Name(owner), IsOlderSchema(document))) {
        rows.push_back({property, part});
    }
}

std::vector<PropertyRow> RowsOfReport(const Document& document) {
    std::vector<PropertyRow> rows;
    const ElementId root = document.Root();
    Add(rows, document, root, "");
    if (document.Find(root, Section) != NoElement) {
        std::erase_if(rows, [](const PropertyRow& row) { return row.property->path == "Width"; });
        Add(rows, document, root, Section);
        Add(rows, document, root, std::string(Section) + "/Page");
    } else {
        Add(rows, document, root, "Page");
    }
    return rows;
}

std::string WithUnit(const Document& document, const std::string& value) {
    double number = 0;
    const auto read = std::from_chars(value.data(), value.data() + value.size(), number);
    if (read.ec != std::errc() || read.ptr != value.data() + value.size()) {
        return value;
    }
    const ElementId body = BodyOf(document);
    const std::string like = body == NoElement ? "" : document.TextAt(body, "Height").value_or("");
    const std::size_t digit = like.find_last_of("0123456789.");
    return value + (digit == std::string::npos || !PointsOf(like) ? "in" : like.substr(digit + 1));
}

ElementId OwnerOf(const Document& document, ElementId id, const PropertyRow& row) {
    const ElementId owner = document.Find(id, row.part);
    if (owner == NoElement) {
        throw EditError("The report has no " + row.part);
    }
    return owner;
}

}  // namespace

std::vector<PropertyRow> PropertyRowsOf(const DesignModel& model, ElementId id) {
    const Document& document = model.Source();
    if (id == document.Root()) {
        return RowsOfReport(document);
    }
    std::vector<PropertyRow> rows;
    const ReportItem* item = model.Item(id);
    if (item || model.Band(id)) {
        Add(rows, document, id, "");
    } else if (SelectedTable(model)) {
        // A group: what it is by and in which order, and then its member.
        for (const char* part :
             {"Group", "Grouping", "SortExpressions/SortExpression", "Sorting/SortBy", "."}) {
            Add(rows, document, id, std::string_view(part) == "." ? "" : part);
        }
    }
    if (item) {
        std::erase_if(rows, [item](const PropertyRow& row) { return !HasPlace(*row.property, *item); });
    }
    return rows;
}

PropertyValue ValueOfRow(const Document& document, ElementId id, const PropertyRow& row) {
    return ValueOf(document, OwnerOf(document, id, row), *row.property);
}

void SetRow(Document& document, ElementId id, const PropertyRow& row, const std::string& value) {
    const bool isSize = row.property->kind == PropertyKind::Size;
    SetValue(document, OwnerOf(document, id, row), *row.property, isSize ? WithUnit(document, value) : value);
}

void ResetRow(Document& document, ElementId id, const PropertyRow& row) {
    ResetValue(document, OwnerOf(document, id, row), *row.property);
}

std::vector<std::string> ChoicesFor(const Document& document, const Property& property) {
    std::vector<std::string> choices;
    const auto addNames = [&](std::string_view collection) {
        const ElementId parent = document.Find(document.Root(), collection);
        for (const ElementId child :
             parent == NoElement ? std::vector<ElementId>{} : document.Children(parent)) {
            choices.push_back(document.Attribute(child, "Name").value_or(""));
        }
    };
    switch (property.kind) {
        case PropertyKind::Words: {
            std::istringstream words{std::string(property.words)};
            for (std::string word; words >> word;) {
                choices.push_back(word);
            }
            break;
        }
        case PropertyKind::Boolean:
            choices = {"true", "false"};
            break;
        case PropertyKind::Font:
            for (const QString& family : QFontDatabase::families()) {
                choices.push_back(family.toStdString());
            }
            break;
        case PropertyKind::DataSet:
            addNames("DataSets");
            break;
        case PropertyKind::DataSource:
            addNames("DataSources");
            break;
        case PropertyKind::Image:
            addNames("EmbeddedImages");
            break;
        case PropertyKind::Item:
            for (const ReportItem& item : ReadReportItems(document).items) {
                choices.push_back(item.name);
            }
            break;
        default:
            break;
    }
    return choices;
}

}  // namespace designer
