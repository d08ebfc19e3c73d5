// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/model/query_details.h"

#include <algorithm>
#include <optional>

#include "designer/document/constants.h"
#include "designer/document/editing.h"
#include "designer/document/xml_text.h"
#include "designer/model/report_parameters.h"
#include "designer/tables/tablix_shape.h"
#include "platform/base/ascii.h"
#include "rdl/api/text_literal.h"

namespace designer {
namespace {

ElementId SetNamed(const Document& document, std::string_view name) {
    for (const ElementId id : ChildrenNamed(document, document.Root(), "DataSets", "DataSet")) {
        if (SameAscii(document.Attribute(id, "Name").value_or(""), name)) {
            return id;
        }
    }
    return NoElement;
}

std::string ParametersOf(const Document& document, ElementId set) {
    const bool isShared = document.Find(set, "SharedDataSet") != NoElement;
    return std::string(isShared ? "SharedDataSet" : "Query") + "/QueryParameters";
}

// Returns the parameter that this is exactly the value of.
std::optional<ReportParameter> ParameterIn(const Document& document, std::string_view expression) {
    for (const ReportParameter& parameter : ReportParametersOf(document)) {
        if (SameAscii(Trim(expression), "=Parameters!" + parameter.name + ".Value")) {
            return parameter;
        }
    }
    return std::nullopt;
}

}  // namespace

rdl::QueryKind KindOfType(std::string_view type) {
    const rdl::QueryKindRow* const known = rdl::FindQueryKind(type);
    return known ? known->kind : rdl::QueryKind::Text;
}

QueryDetails QueryDetailsOf(const Document& document, std::string_view set) {
    QueryDetails details;
    const ElementId id = SetNamed(document, set);
    if (id == NoElement) {
        return details;
    }
    const std::string type = document.TextAt(id, "Query/CommandType").value_or("Text");
    const rdl::QueryKindRow* const known = rdl::FindQueryKind(Trim(type));
    details.type = known ? std::string(known->name) : type;
    details.seconds = NumberAt(document, id, "Query/Timeout", 0, 0, rdl::MostQuerySeconds);
    for (const ElementId one : ChildrenNamed(document, id, ParametersOf(document, id), "QueryParameter")) {
        details.parameters.push_back({static_cast<int>(details.parameters.size()),
                                      document.Attribute(one, "Name").value_or(""),
                                      document.TextAt(one, "Value").value_or("")});
    }
    details.filters = FiltersOf(document, id);
    return details;
}

void PutQueryDetails(Document& document, std::string_view set, const QueryDetails& details) {
    const ElementId id = SetNamed(document, set);
    if (id == NoElement) {
        throw EditError("The report has no data set " + std::string(set));
    }
    const QueryDetails old = QueryDetailsOf(document, set);
    if (details.type != old.type) {
        SetOrRemove(document, id, "Query/CommandType", details.type == "Text" ? "" : details.type);
    }
    if (details.seconds != old.seconds) {
        SetOrRemove(document, id, "Query/Timeout",
                    details.seconds == 0 ? "" : std::to_string(details.seconds));
    }
    std::vector<int> places;
    for (const QueryParameter& parameter : details.parameters) {
        places.push_back(parameter.place);
    }
    const std::vector<ElementId> ids =
        PutRows(document, id, ParametersOf(document, id), "QueryParameter", places, [&](std::size_t row) {
            return "<QueryParameter Name=\"" + EscapedValue(details.parameters[row].name, '"') + "\"/>";
        });
    for (std::size_t row = 0; row < ids.size(); ++row) {
        const QueryParameter& parameter = details.parameters[row];
        if (parameter.place != NewRow &&
            parameter == old.parameters[static_cast<std::size_t>(parameter.place)]) {
            continue;
        }
        SetAttribute(document, ids[row], "Name", parameter.name);
        SetText(document, ids[row], "Value", parameter.value);
    }
    if (details.filters != old.filters) {
        PutFilters(document, id, details.filters);
    }
}

std::string TestValue(const Document& document, std::string_view expression, const std::string& typed) {
    const std::string_view text = Trim(typed);
    if (text.empty() || text.starts_with('=')) {
        return std::string(text);
    }
    const auto parameter = ParameterIn(document, expression);
    const std::string type = parameter ? parameter->type : PlainNumber(text) ? "Float" : "String";
    if (type == "DateTime") {
        return "=CDate(" + rdl::TextLiteral(text) + ")";
    }
    const bool isTruth = SameAscii(text, "true") || SameAscii(text, "false");
    const bool isOwnType = type == "Boolean" ? isTruth : type != "String" && PlainNumber(text).has_value();
    return (isOwnType ? "=" : "") + std::string(text);
}

std::string FirstTestValue(const Document& document, std::string_view expression) {
    const auto parameter = ParameterIn(document, expression);
    const bool isConstant = parameter && parameter->defaultOrigin == ValueOrigin::Typed &&
                            !Trim(parameter->defaults.front().value).starts_with('=');
    return isConstant ? parameter->defaults.front().value : std::string();
}

}  // namespace designer
