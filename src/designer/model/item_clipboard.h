// SPDX-License-Identifier: GPL-3.0-or-later
// Report items as a text for the clipboard: one ReportItems element in the namespace of the report.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "designer/document/document.h"

namespace designer {

// The type of such a text on the clipboard.
inline constexpr const char* ItemsMimeType = "application/x-oxbow-courier-items+xml";

std::string ItemsText(const Document& document, const std::vector<ElementId>& ids);

// Returns the elements in such a text, each as InsertXml takes it. nullopt if the text is no ReportItems
// element, or if anything in it is no report item.
std::optional<std::vector<std::string>> ItemsIn(std::string_view text);

// Inserts the items into the container, a band or a Rectangle, moved by `shift` points to the right and down,
// with names that the report does not have. Returns their ids.
std::vector<ElementId> PasteItems(Document& document, ElementId container,
                                  const std::vector<std::string>& items, double shift);

}  // namespace designer
