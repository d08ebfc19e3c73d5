// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/model/report_data.h"

#include <algorithm>

#include "designer/document/editing.h"
#include "designer/document/names.h"
#include "designer/document/xml_text.h"
#include "designer/model/element_rows.h"
#include "designer/model/report_parameters.h"
#include "designer/new_report/part_names.h"
#include "designer/tables/tablix_shape.h"
#include "platform/base/ascii.h"
#include "platform/base/text.h"
#include "rdl/api/identifier.h"

namespace designer {
namespace {

struct PartNames {
    std::string_view collection, element;
    const char* what;
};

PartNames NamesOf(DataPart part) {
    switch (part) {
        case DataPart::Source:
            return {"DataSources", "DataSource", "data source"};
        case DataPart::Set:
            return {"DataSets", "DataSet", "data set"};
        case DataPart::Parameter:
            return {"ReportParameters", "ReportParameter", "parameter"};
        case DataPart::Image:
            break;
    }
    return {"EmbeddedImages", "EmbeddedImage", "picture"};
}

std::vector<ElementId> PartsOf(const Document& document, DataPart part) {
    return ChildrenNamed(document, document.Root(), NamesOf(part).collection, NamesOf(part).element);
}

std::string NameOf(const Document& document, ElementId id) {
    return document.Attribute(id, "Name").value_or("");
}

ElementId NamedPart(const Document& document, DataPart part, std::string_view name) {
    for (const ElementId id : PartsOf(document, part)) {
        if (SameAscii(NameOf(document, id), name)) {
            return id;
        }
    }
    return NoElement;
}

ElementId InsertNamed(Document& document, ElementId parent, std::string_view element,
                      const std::string& name) {
    const std::string tag(element);
    return InsertXml(document, parent, "<" + tag + " Name=\"" + EscapedValue(name, '"') + "\"/>");
}

// Returns the element of the part, which then has the name.
ElementId PutPart(Document& document, DataPart part, const std::string& old, const std::string& name) {
    if (const std::string fault = FaultOfName(document, part, old, name); !fault.empty()) {
        throw EditError(fault);
    }
    const PartNames names = NamesOf(part);
    if (old.empty()) {
        return InsertNamed(document, EnsureChild(document, document.Root(), names.collection), names.element,
                           name);
    }
    const ElementId id = NamedPart(document, part, old);
    if (id == NoElement) {
        throw EditError("The report has no " + std::string(names.what) + " " + old);
    }
    if (old != name) {
        Rename(document, id, name);
    }
    return id;
}

// An element that is missing stays so if it would be empty; one of a part that is new is written.
void SetIfOther(Document& document, ElementId id, std::string_view path, const std::string& text,
                bool isNew) {
    if (isNew || text != document.TextAt(id, path).value_or("")) {
        SetText(document, id, path, text);
    }
}

void WriteField(Document& document, ElementId id, const ReportField& field) {
    SetOrRemove(document, id, "DataField", field.column);
    if (field.column.empty()) {
        SetText(document, id, "Value", field.value);
    } else {
        RemoveAt(document, id, "Value");
    }
    SetOrRemove(document, id, "rd:TypeName", field.typeName);
}

// Fields that stay are not touched, one that changes keeps its place; new ones come after them.
void PutFields(Document& document, ElementId set, const std::vector<ReportField>& fields) {
    std::vector<std::string> kept;
    for (const ElementId id : ChildrenNamed(document, set, "Fields", "Field")) {
        const ReportField old = FieldOf(document, id);
        if (std::find(fields.begin(), fields.end(), old) != fields.end()) {
            kept.push_back(old.name);
            continue;
        }
        const auto found = std::find_if(fields.begin(), fields.end(),
                                        [&](const ReportField& field) { return field.name == old.name; });
        if (found == fields.end() || std::find(kept.begin(), kept.end(), old.name) != kept.end()) {
            Remove(document, id);
            continue;
        }
        kept.push_back(old.name);
        WriteField(document, id, *found);
    }
    for (const ReportField& field : fields) {
        if (std::find(kept.begin(), kept.end(), field.name) == kept.end()) {
            WriteField(document,
                       InsertNamed(document, EnsureChild(document, set, "Fields"), "Field", field.name),
                       field);
        }
    }
}

}  // namespace

std::vector<ReportSource> SourcesOf(const Document& document) {
    std::vector<ReportSource> sources;
    for (const ElementId id : PartsOf(document, DataPart::Source)) {
        sources.push_back(
            {.name = NameOf(document, id),
             .provider = document.TextAt(id, "ConnectionProperties/DataProvider").value_or(""),
             .connectString = document.TextAt(id, "ConnectionProperties/ConnectString").value_or(""),
             .isShared = document.Find(id, "DataSourceReference") != NoElement,
             .reference = document.TextAt(id, "DataSourceReference").value_or("")});
    }
    return sources;
}

std::string FaultOfName(const Document& document, DataPart part, std::string_view old,
                        std::string_view name) {
    const std::string what = NamesOf(part).what;
    if (name.empty()) {
        return "Type a name for the " + what;
    }
    if (name == old) {
        return {};
    }
    if (!rdl::IsIdentifier(name)) {
        return "A name is a letter or _, then letters, digits and _";
    }
    if (!SameAscii(name, old) && NamedPart(document, part, name) != NoElement) {
        return "The report has a " + what + " " + std::string(name) + " already";
    }
    return {};
}

std::string NewNameOf(const Document& document, DataPart part) {
    const std::string wish = part == DataPart::Source      ? "Source"
                             : part == DataPart::Set       ? "Rows"
                             : part == DataPart::Parameter ? "Parameter"
                                                           : "Picture";
    std::string name = wish;
    for (int number = 2; NamedPart(document, part, name) != NoElement; ++number) {
        name = wish + std::to_string(number);
    }
    return name;
}

std::string UseOfPart(const Document& document, DataPart part, std::string_view name) {
    constexpr std::size_t MostText = 200;
    const ElementId id = NamedPart(document, part, name);
    const auto uses = id == NoElement ? std::vector<LeftReference>() : ReferencesTo(document, id);
    if (uses.empty()) {
        return {};
    }
    const std::string owner = NamedOwnerOf(document, uses.front().element);
    const std::string text(CutText(Trim(uses.front().text), MostText));
    return SameAscii(text, name) ? owner : owner + ": " + text;
}

void RemovePart(Document& document, DataPart part, const std::string& name) {
    const ElementId id = NamedPart(document, part, name);
    if (id == NoElement) {
        throw EditError("The report has no " + std::string(NamesOf(part).what) + " " + name);
    }
    if (const std::string use = UseOfPart(document, part, name); !use.empty()) {
        throw EditError("The " + std::string(NamesOf(part).what) + " " + name + " is used and stays. " + use);
    }
    if (part == DataPart::Parameter) {  // and its cell of the layout
        std::vector<ReportParameter> parameters = ReportParametersOf(document);
        std::erase_if(parameters, [&](const ReportParameter& one) { return SameAscii(one.name, name); });
        PutReportParameters(document, parameters);
    } else {
        Remove(document, id);
    }
}

void PutSource(Document& document, const std::string& old, const ReportSource& source) {
    const ElementId id = PutPart(document, DataPart::Source, old, source.name);
    const bool wasShared = document.Find(id, "DataSourceReference") != NoElement;
    if (source.isShared != wasShared) {
        RemoveAt(document, id, source.isShared ? "ConnectionProperties" : "DataSourceReference");
    }
    if (source.isShared) {
        SetIfOther(document, id, "DataSourceReference", source.reference, old.empty() || !wasShared);
        return;
    }
    // The same provider in other capitals stays as it is written.
    const std::string provider = document.TextAt(id, "ConnectionProperties/DataProvider").value_or("");
    if (!SameAscii(Trim(provider), source.provider)) {
        SetText(document, id, "ConnectionProperties/DataProvider", source.provider);
    }
    SetIfOther(document, id, "ConnectionProperties/ConnectString", source.connectString, old.empty());
}

void PutSet(Document& document, const std::string& old, const ReportSet& set) {
    const ElementId id = PutPart(document, DataPart::Set, old, set.name);
    const bool wasShared = document.Find(id, "SharedDataSet") != NoElement;
    const bool isOther = old.empty() || set.isShared != wasShared;
    if (set.isShared != wasShared) {
        RemoveAt(document, id, set.isShared ? "Query" : "SharedDataSet");
    }
    if (set.isShared) {
        SetIfOther(document, id, SharedReference, set.reference, isOther);
    } else {
        SetIfOther(document, id, "Query/DataSourceName", set.source, isOther);
        SetIfOther(document, id, "Query/CommandText", set.query, isOther);
    }
    PutFields(document, id, set.fields);
}

std::vector<ReportField> FieldsFor(const std::vector<ReportColumn>& columns,
                                   const std::vector<ReportField>& old) {
    const auto fieldOf = [&](const std::string& column) {
        return std::find_if(old.begin(), old.end(), [&](const ReportField& field) {
            return !field.column.empty() && SameAscii(field.column, column);
        });
    };
    Names names;
    std::vector<ReportField> computed;
    for (const ReportField& field : old) {
        names.Add(field.name);
        if (field.column.empty()) {
            computed.push_back(field);
        }
    }
    std::vector<ReportField> fields;
    for (const ReportColumn& column : columns) {
        const auto known = fieldOf(column.name);
        ReportField& field = fields.emplace_back(
            known != old.end()
                ? *known
                : ReportField{.name = names.Add(column.name), .column = column.name, .value = {}});
        if (Trim(field.typeName).empty()) {
            field.typeName = column.typeName;
        }
    }
    fields.insert(fields.end(), computed.begin(), computed.end());
    return fields;
}

}  // namespace designer
