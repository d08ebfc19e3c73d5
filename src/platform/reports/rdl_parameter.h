// SPDX-License-Identifier: GPL-3.0-or-later
// Adapts a parameter of an RDL report to the contract report::ParameterField.
#pragma once

#include "platform/contracts/report_engine.h"
#include "rdl/api/report.h"

namespace reports {

class RdlParameter : public report::ParameterField {
 public:
    // The report owns `parameter`, which must outlive the object.
    explicit RdlParameter(rdl::Parameter& parameter) : m_parameter(parameter) {}

    int ValueType() const override;
    bool IsWholeNumber() const override { return m_parameter.Kind() == rdl::ParameterKind::Integer; }
    std::string Name() const override { return m_parameter.Name(); }
    std::string Prompt() const override { return m_parameter.Prompt(); }
    std::vector<std::string> DefaultValues() const override { return m_parameter.DefaultValues(); }
    std::vector<std::string> ValidValues() const override { return m_parameter.ValidValues(); }
    void ClearCurrentValueAndRange() override { m_parameter.Clear(); }
    // Raises 13 with the parameter's name if the value does not have its type.
    void AddCurrentValue(const report::ParameterValue& value) override;

 private:
    rdl::Parameter& m_parameter;
};

}  // namespace reports
