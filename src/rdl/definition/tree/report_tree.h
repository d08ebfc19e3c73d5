// SPDX-License-Identifier: GPL-3.0-or-later
// The tree of a report file and, of a long one, the rows in it, which are read apart from the tree.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "rdl/definition/tree/inline_rows.h"
#include "rdl/definition/tree/xml_tree.h"
#include "rdl/spool/spool.h"
#include "rdl/xml/pieces.h"

namespace rdl {

struct ReportTree {
    xml::Document document;
    std::vector<std::shared_ptr<InlineRows>> rows;  // those of each Rows element; null for a query
    std::vector<std::shared_ptr<Spool>> texts;      // the long ones of queries; null for rows

    // Returns what was read apart of an element; null if that is nothing.
    std::shared_ptr<InlineRows> RowsOf(const XmlElement& element) const;
    std::shared_ptr<Spool> TextOf(const XmlElement& element) const;
};

// Adds the elements of `parent` as rows, with an element for each value.
void AddRows(const XmlElement& parent, InlineRows& rows);

// Reads a report without a tree of its rows. Returns nullopt for a file that must be read whole: it has
// errors, whose lines are known then, or something unusual. Raises rdl::Error for what is no report at all.
std::optional<ReportTree> ReadReportApart(const xml::NextBytes& next, const std::string& fileName,
                                          const DefinitionLimits& limits);

}  // namespace rdl
