// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/panes/property_rows.h"

#include <QFontDatabase>
#include <sstream>

#include "designer/document/constants.h"
#include "designer/document/item_size.h"
#include "designer/graphics/part_tree.h"
#include "designer/model/placing.h"
#include "rdl/api/style_values.h"

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
    for (const Property* property : PropertiesOf(document, owner)) {
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

// Sizes within a style, and what is 0pt by default.
bool IsInPoints(const Property& property) {
    return property.path.find("Style/") != std::string_view::npos || property.missing.ends_with("pt");
}

ElementId OwnerOf(const Document& document, ElementId id, const PropertyRow& row) {
    const ElementId owner = document.Find(id, row.part);
    if (owner == NoElement) {
        throw EditError("The report has no " + row.part);
    }
    return owner;
}

std::vector<ElementId> OwnersOf(const Document& document, const std::vector<ElementId>& ids,
                                const PropertyRow& row) {
    std::vector<ElementId> owners;
    owners.reserve(ids.size());
    for (const ElementId id : ids) {
        owners.push_back(OwnerOf(document, id, row));
    }
    return owners;
}

}  // namespace

std::string WithUnit(const Document& document, const std::string& value) {
    if (!PlainNumber(value)) {
        return value;
    }
    const ElementId body = BodyOf(document);
    const std::string like = body == NoElement ? "" : document.TextAt(body, "Height").value_or("");
    const std::size_t digit = like.find_last_of("0123456789.");
    return value + (digit == std::string::npos || !PointsOf(like) ? "in" : like.substr(digit + 1));
}

std::vector<PropertyRow> PropertyRowsOf(const DesignModel& model, ElementId id) {
    const Document& document = model.Source();
    if (id == document.Root()) {
        return RowsOfReport(document);
    }
    std::vector<PropertyRow> rows;
    const ReportItem* item = model.Item(id);
    const bool isPart = !item && !model.Band(id) && OwnerOfPart(document, id) != NoElement;
    if (isPart) {
        for (const std::string& path : PathsOfPart(document, id)) {
            Add(rows, document, id, path);
        }
        return rows;
    }
    if (!item && !model.Band(id)) {
        // A group: what it is by and in which order, and then its member.
        for (const char* part : {"Group", "Grouping", "SortExpressions/SortExpression", "Sorting/SortBy"}) {
            Add(rows, document, id, part);
        }
    }
    Add(rows, document, id, "");
    if (item) {
        std::erase_if(rows, [item](const PropertyRow& row) { return !HasPlace(*row.property, *item); });
    }
    return rows;
}

PropertyValue ValueOfRow(const Document& document, ElementId id, const PropertyRow& row) {
    return ValueOf(document, OwnerOf(document, id, row), *row.property);
}

std::string CompleteValue(const Document& document, const PropertyRow& row, const std::string& value) {
    if (row.property->kind != PropertyKind::Size || !PlainNumber(value)) {
        return value;
    }
    return IsInPoints(*row.property) ? value + "pt" : WithUnit(document, value);
}

void SetRow(Document& document, const std::vector<ElementId>& ids, const PropertyRow& row,
            const std::string& value) {
    SetValueOfAll(document, OwnersOf(document, ids, row), *row.property, CompleteValue(document, row, value));
}

void ResetRow(Document& document, const std::vector<ElementId>& ids, const PropertyRow& row) {
    ResetValueOfAll(document, OwnersOf(document, ids, row), *row.property);
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
        case PropertyKind::Color:
            for (const rdl::NamedColor& color : rdl::NamedColors()) {
                choices.emplace_back(color.name);
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
