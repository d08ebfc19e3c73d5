// Groups, sorts, filters, page breaks, visibility and actions: the parts that items, regions and members
// share.
#pragma once

#include "rdl/definition/context.h"

namespace rdl {

std::vector<Filter> ReadFilters(Context& context, const XmlElement& owner, const std::string& where);
// SortExpressions, or Sorting of the older schemas.
std::vector<Sort> ReadSorts(Context& context, const XmlElement& owner, const std::string& where);
// `element` is a Group or, in the older schemas, a Grouping.
Group ReadGroup(Context& context, const XmlElement& element);
// PageBreak and PageName, or PageBreakAtStart and PageBreakAtEnd of the older schemas.
PageBreak ReadPageBreak(Context& context, const XmlElement& owner, const std::string& where);
Visibility ReadVisibility(Context& context, const XmlElement& owner, const std::string& where);
Action ReadAction(Context& context, const XmlElement& owner, const std::string& where);
std::vector<Variable> ReadVariables(Context& context, const XmlElement& owner, const std::string& where);

}  // namespace rdl
