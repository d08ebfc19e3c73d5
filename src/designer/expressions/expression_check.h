// SPDX-License-Identifier: GPL-3.0-or-later
// Asks the engine whether a value can stand at its place in the report.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "designer/model/design_model.h"

namespace designer {

struct ExpressionFault {
    std::string text;   // for users
    int position = -1;  // characters of the value before the fault; -1: no place is known
};

// Returns why the engine does not open the report, without file and line; empty if it does. The document is
// the model's or a copy of it.
std::string FaultOfReport(const DesignModel& model, const Document& document);

// Returns why the edit is refused, or why the engine would not open the report after it; empty if it would. A
// report that it does not open now is not judged.
std::string FaultOfEdit(const DesignModel& model, const std::function<void(Document&)>& work);

class ExpressionCheck {
 public:
    // Writes a value to its place in a copy of the report, whose elements have ids of its own and the same
    // indexes. May raise EditError.
    using Write = std::function<void(Document&, const std::string& value)>;
    // Checks values that are written so; the model must live as long as this.
    ExpressionCheck(const DesignModel& model, Write write);

    // Returns nullopt if the value is understood at its place. A report with a fault elsewhere is not opened
    // by the engine: OtherFault says so.
    std::optional<ExpressionFault> FaultOf(const std::string& value) const;
    // Returns why no value can be checked; empty if values are.
    const std::string& OtherFault() const { return m_otherFault; }

 private:
    std::string MessageFor(const std::string& value) const;

    const DesignModel& m_model;
    const Write m_write;
    std::string m_otherFault;
};

}  // namespace designer
