// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/definition/group_reader.h"

#include "rdl/api/filter_operators.h"

namespace rdl {
namespace {

struct BreakName {
    std::string_view name;
    PageBreak::Location location;
};

constexpr BreakName BreakNames[] = {
    {"None", PageBreak::Location::None},       {"Start", PageBreak::Location::Start},
    {"End", PageBreak::Location::End},         {"StartAndEnd", PageBreak::Location::StartAndEnd},
    {"Between", PageBreak::Location::Between},
};

Filter ReadFilter(Context& context, const XmlElement& element, const std::string& where) {
    Filter filter;
    filter.expression = context.ChildExpr(element, "FilterExpression", where);
    if (!filter.expression.IsSet()) {
        context.Fail(element, where, "a filter has no expression");
    }
    const std::string word = element.ChildText("Operator");
    const FilterOperatorRow* const known = FindFilterOperator(word);
    if (!known) {
        context.Fail(element, where, "\"" + word + "\" is no operator of a filter");
    }
    filter.op = known->name;
    if (const XmlElement* values = element.Child("FilterValues")) {
        for (const XmlElement& value : values->children) {
            if (value.name == "FilterValue") {
                filter.values.push_back(context.MakeExpr(value, where + ", FilterValue"));
            }
        }
    }
    if (filter.values.size() < FilterValuesNeeded(known->op)) {
        context.Fail(element, where, "a filter with " + filter.op + " has too few values");
    }
    return filter;
}

Sort ReadSort(Context& context, const XmlElement& element, std::string_view valueName,
              const std::string& where) {
    Sort sort;
    sort.value = context.ChildExpr(element, valueName, where);
    sort.descending = EqualNoCase(element.ChildText("Direction"), "Descending");
    return sort;
}

void ReadBreakElement(Context& context, const XmlElement& element, const std::string& where,
                      PageBreak& pageBreak) {
    const std::string word = element.ChildText("BreakLocation");
    bool known = word.empty();
    for (const BreakName& candidate : BreakNames) {
        if (EqualNoCase(candidate.name, word)) {
            pageBreak.location = candidate.location;
            known = true;
        }
    }
    if (!known) {
        context.Fail(element, where, "\"" + word + "\" is no place for a page break");
    }
    pageBreak.disabled = context.ChildExpr(element, "Disabled", where + ", PageBreak");
    pageBreak.resetPageNumber = context.ChildExpr(element, "ResetPageNumber", where + ", PageBreak");
}

}  // namespace

std::vector<Filter> ReadFilters(Context& context, const XmlElement& owner, const std::string& where) {
    std::vector<Filter> filters;
    if (const XmlElement* element = owner.Child("Filters")) {
        for (const XmlElement& child : element->children) {
            if (child.name == "Filter") {
                filters.push_back(ReadFilter(context, child, where + ", Filter"));
            }
        }
    }
    return filters;
}

std::vector<Sort> ReadSorts(Context& context, const XmlElement& owner, const std::string& where) {
    std::vector<Sort> sorts;
    const XmlElement* newer = owner.Child("SortExpressions");
    const XmlElement* element = newer ? newer : owner.Child("Sorting");
    if (!element) {
        return sorts;
    }
    const std::string_view entry = newer ? "SortExpression" : "SortBy";
    const std::string_view value = newer ? "Value" : "SortExpression";
    for (const XmlElement& child : element->children) {
        if (child.name == entry) {
            Sort sort = ReadSort(context, child, value, where + ", sort");
            if (sort.value.IsSet()) {
                sorts.push_back(std::move(sort));
            }
        }
    }
    return sorts;
}

std::vector<Variable> ReadVariables(Context& context, const XmlElement& owner, const std::string& where) {
    std::vector<Variable> variables;
    if (const XmlElement* element = owner.Child("Variables")) {
        for (const XmlElement& child : element->children) {
            if (child.name == "Variable") {
                variables.push_back({context.NameOf(child),
                                     context.ChildExpr(child, "Value", where + ", " + PlaceOf(child))});
            }
        }
    }
    return variables;
}

Group ReadGroup(Context& context, const XmlElement& element) {
    Group group;
    group.name = context.NameOf(element);
    const std::string where = group.name.empty() ? "Group" : "Group " + group.name;
    if (const XmlElement* expressions = element.Child("GroupExpressions")) {
        for (const XmlElement& child : expressions->children) {
            Expr expr = context.MakeExpr(child, where + ", GroupExpression");
            if (expr.IsSet()) {
                group.expressions.push_back(std::move(expr));
            }
        }
    }
    group.filters = ReadFilters(context, element, where);
    group.variables = ReadVariables(context, element, where);
    group.parent = context.ChildExpr(element, "Parent", where);
    group.documentMapLabel =
        context.ChildExpr(element, element.Child("DocumentMapLabel") ? "DocumentMapLabel" : "Label", where);
    group.pageBreak = ReadPageBreak(context, element, where);
    return group;
}

TablixMember ReadMember(Context& context, const XmlElement& element, std::string_view name,
                        const std::string& where) {
    TablixMember member;
    if (const XmlElement* group = element.Child("Group")) {
        member.group = ReadGroup(context, *group);
    }
    member.sorts = ReadSorts(context, element, where);
    if (const XmlElement* inner = element.Child(name)) {
        member.members.push_back(ReadMember(context, *inner, name, where));
    }
    return member;
}

PageBreak ReadPageBreak(Context& context, const XmlElement& owner, const std::string& where) {
    PageBreak pageBreak;
    if (const XmlElement* element = owner.Child("PageBreak")) {
        ReadBreakElement(context, *element, where, pageBreak);
    } else {
        const bool start = context.Flag(owner, "PageBreakAtStart", where);
        const bool end = context.Flag(owner, "PageBreakAtEnd", where);
        using Location = PageBreak::Location;
        pageBreak.location =
            start ? (end ? Location::StartAndEnd : Location::Start) : (end ? Location::End : Location::None);
    }
    pageBreak.pageName = context.ChildExpr(owner, "PageName", where);
    return pageBreak;
}

Visibility ReadVisibility(Context& context, const XmlElement& owner, const std::string& where) {
    Visibility visibility;
    if (const XmlElement* element = owner.Child("Visibility")) {
        visibility.hidden = context.ChildExpr(*element, "Hidden", where);
        visibility.toggleItem = element->ChildText("ToggleItem");
    }
    return visibility;
}

Action ReadAction(Context& context, const XmlElement& owner, const std::string& where) {
    const XmlElement* element = owner.Child("Action");
    if (!element) {
        element = owner.Find({"ActionInfo", "Actions", "Action"});
    }
    Action action;
    if (element) {
        action.hyperlink = context.ChildExpr(*element, "Hyperlink", where);
        action.bookmarkLink = context.ChildExpr(*element, "BookmarkLink", where);
    }
    return action;
}

}  // namespace rdl
