// SPDX-License-Identifier: GPL-3.0-or-later
// Asks the engine whether a value can stand at its place in the report.
#pragma once

#include <optional>
#include <string>

#include "designer/model/design_model.h"
#include "designer/panes/property_rows.h"

namespace designer {

struct ExpressionFault {
    std::string text;   // for users
    int position = -1;  // characters of the value before the fault; -1: no place is known
};

class ExpressionCheck {
 public:
    // Checks values of a property of an element; the model must live as long as this.
    ExpressionCheck(const DesignModel& model, ElementId id, const PropertyRow& row);

    // Returns nothing if the value is understood at its place. A report with a fault elsewhere is not opened
    // by the engine: OtherFault says so.
    std::optional<ExpressionFault> FaultOf(const std::string& value) const;
    // Returns why no value can be checked; empty if values are.
    const std::string& OtherFault() const { return m_otherFault; }

 private:
    std::string MessageFor(const std::string& value) const;

    const DesignModel& m_model;
    const ElementId m_id;
    const PropertyRow m_row;
    std::string m_otherFault;
};

}  // namespace designer
