// SPDX-License-Identifier: GPL-3.0-or-later
// A report parameter and its values.
#pragma once

#include <string>
#include <vector>

#include "rdl/api/report.h"
#include "rdl/definition/model.h"
#include "rdl/values/value.h"

namespace rdl::engine {

class ReportParameterState : public Parameter {
 public:
    // `definition` must outlive the object.
    explicit ReportParameterState(const ReportParameter& definition) : m_definition(definition) {}

    std::string Name() const override { return m_definition.name; }
    std::string Prompt() const override { return m_prompt; }
    ParameterKind Kind() const override;
    bool TakesSeveral() const override { return m_definition.multiValue; }
    std::vector<std::string> DefaultValues() const override;
    std::vector<std::string> ValidValues() const override;
    void Clear() override { m_current.clear(); }
    void Add(const Value& value) override;

    const ReportParameter& Definition() const { return m_definition; }
    const ValueList& Current() const { return m_current; }
    // Sets the value of an expression; a list gives several. Raises rdl::Error if one does not fit.
    void SetCurrent(const Value& value);
    void SetDefaults(ValueList values) { m_defaults = std::move(values); }
    void SetValid(ValueList values) { m_valid = std::move(values); }
    void SetPrompt(std::string prompt) { m_prompt = std::move(prompt); }

 private:
    const ReportParameter& m_definition;
    std::string m_prompt;
    ValueList m_defaults, m_valid, m_current;
};

}  // namespace rdl::engine
