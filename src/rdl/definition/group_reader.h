// SPDX-License-Identifier: GPL-3.0-or-later
// Reads what items, regions and members share: groups, sorts, filters, page breaks, visibility, actions and
// variables (MS-RDL, elements of these names). Raises rdl::Error.
#pragma once

#include "rdl/definition/context.h"

namespace rdl {

std::vector<Filter> ReadFilters(Context& context, const XmlElement& owner, const std::string& where);
// Reads SortExpressions, or Sorting of the older schemas.
std::vector<Sort> ReadSorts(Context& context, const XmlElement& owner, const std::string& where);
// `element` is a Group, or a Grouping of the older schemas.
Group ReadGroup(Context& context, const XmlElement& element);
// Reads the group and the sorts of a GaugeMember or MapMember, and the member within it, whose element is
// `name` as well.
TablixMember ReadMember(Context& context, const XmlElement& element, std::string_view name,
                        const std::string& where);
// Reads PageBreak and PageName, or PageBreakAtStart and PageBreakAtEnd of the older schemas.
PageBreak ReadPageBreak(Context& context, const XmlElement& owner, const std::string& where);
Visibility ReadVisibility(Context& context, const XmlElement& owner, const std::string& where);
Action ReadAction(Context& context, const XmlElement& owner, const std::string& where);
std::vector<Variable> ReadVariables(Context& context, const XmlElement& owner, const std::string& where);

}  // namespace rdl
