// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/model/report_data.h"

#include <algorithm>

#include "designer/document/editing.h"
#include "designer/document/names.h"
#include "designer/document/xml_text.h"
#include "designer/new_report/names.h"
#include "platform/base/ascii.h"

namespace designer {
namespace {

struct PartNames {
    std::string_view collection, element;
    const char* what;
};

PartNames NamesOf(DataPart part) {
    return part == DataPart::Source ? PartNames{"DataSources", "DataSource", "data source"}
                                    : PartNames{"DataSets", "DataSet", "data set"};
}

std::vector<ElementId> ChildrenAt(const Document& document, ElementId owner, std::string_view path,
                                  std::string_view name) {
    const ElementId parent = document.Find(owner, path);
    std::vector<ElementId> children;
    if (parent != NoElement) {
        children = document.Children(parent);
        std::erase_if(children, [&](ElementId child) { return document.Name(child) != name; });
    }
    return children;
}

std::vector<ElementId> PartsOf(const Document& document, DataPart part) {
    return ChildrenAt(document, document.Root(), NamesOf(part).collection, NamesOf(part).element);
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

ReportField FieldOf(const Document& document, ElementId id) {
    return {.name = NameOf(document, id),
            .column = document.TextAt(id, "DataField").value_or(""),
            .value = document.TextAt(id, "Value").value_or(""),
            .typeName = document.TextAt(id, "rd:TypeName").value_or("")};
}

// Fields that stay are not touched; new ones come after them.
void PutFields(Document& document, ElementId set, const std::vector<ReportField>& fields) {
    std::vector<ReportField> kept;
    for (const ElementId id : ChildrenAt(document, set, "Fields", "Field")) {
        kept.push_back(FieldOf(document, id));
        if (std::find(fields.begin(), fields.end(), kept.back()) == fields.end()) {
            kept.pop_back();
            Remove(document, id);
        }
    }
    for (const ReportField& field : fields) {
        if (std::find(kept.begin(), kept.end(), field) != kept.end()) {
            continue;
        }
        const ElementId id = InsertNamed(document, EnsureChild(document, set, "Fields"), "Field", field.name);
        SetText(document, id, field.column.empty() ? "Value" : "DataField",
                field.column.empty() ? field.value : field.column);
        if (!field.typeName.empty()) {
            SetText(document, id, "rd:TypeName", field.typeName);
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
             .isShared = document.Find(id, "DataSourceReference") != NoElement});
    }
    return sources;
}

std::vector<ReportSet> SetsOf(const Document& document) {
    std::vector<ReportSet> sets;
    for (const ElementId id : PartsOf(document, DataPart::Set)) {
        ReportSet set{.name = NameOf(document, id),
                      .source = document.TextAt(id, "Query/DataSourceName").value_or(""),
                      .query = document.TextAt(id, "Query/CommandText").value_or(""),
                      .fields = {},
                      .parameters = {},
                      .isShared = document.Find(id, "SharedDataSet") != NoElement};
        for (const ElementId field : ChildrenAt(document, id, "Fields", "Field")) {
            set.fields.push_back(FieldOf(document, field));
        }
        for (const ElementId one : ChildrenAt(document, id, "Query/QueryParameters", "QueryParameter")) {
            set.parameters.push_back(NameOf(document, one));
        }
        sets.push_back(std::move(set));
    }
    return sets;
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
    if (!IsIdentifier(name)) {
        return "A name is a letter or _, then letters, digits and _";
    }
    if (!SameAscii(name, old) && NamedPart(document, part, name) != NoElement) {
        return "The report has a " + what + " " + std::string(name) + " already";
    }
    return {};
}

std::string NewNameOf(const Document& document, DataPart part) {
    const std::string wish = part == DataPart::Source ? "Source" : "Rows";
    std::string name = wish;
    for (int number = 2; NamedPart(document, part, name) != NoElement; ++number) {
        name = wish + std::to_string(number);
    }
    return name;
}

void PutSource(Document& document, const std::string& old, const ReportSource& source) {
    const ElementId id = PutPart(document, DataPart::Source, old, source.name);
    SetText(document, id, "ConnectionProperties/DataProvider", source.provider);
    SetText(document, id, "ConnectionProperties/ConnectString", source.connectString);
}

void PutSet(Document& document, const std::string& old, const ReportSet& set) {
    const ElementId id = PutPart(document, DataPart::Set, old, set.name);
    SetText(document, id, "Query/DataSourceName", set.source);
    SetText(document, id, "Query/CommandText", set.query);
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
        fields.push_back(known != old.end() ? *known
                                            : ReportField{.name = names.Add(column.name),
                                                          .column = column.name,
                                                          .value = {},
                                                          .typeName = column.typeName});
    }
    fields.insert(fields.end(), computed.begin(), computed.end());
    return fields;
}

}  // namespace designer
