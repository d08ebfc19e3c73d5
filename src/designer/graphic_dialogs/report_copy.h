// SPDX-License-Identifier: GPL-3.0-or-later
// A copy of the report in which a dialog tries what it would change.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "designer/model/design_model.h"

class QWidget;

namespace designer {

// Returns the element of a copy of the document that is `id` in the document itself.
ElementId InCopy(const Document& document, ElementId id, const Document& copy);

// Opens the dialog for expressions on a value that is not in the report yet. `place` makes it in a copy of
// the report and returns the element that has it at the path, which is one of its properties. Returns nothing
// if the user cancels.
std::optional<std::string> EditInCopy(const DesignModel& model,
                                      const std::function<ElementId(Document&)>& place, std::string_view path,
                                      QWidget* parent);

}  // namespace designer
