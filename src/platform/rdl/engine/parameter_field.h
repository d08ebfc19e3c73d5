// A parameter of a report, and the values that it has been given.
#pragma once

#include <string>
#include <vector>

#include "platform/rdl/definition/model.h"
#include "platform/rdl/value.h"
#include "platform/report_engine.h"

namespace rdl::engine {

class RdlParameterField : public report::ParameterField {
 public:
    // The definition outlives the field.
    explicit RdlParameterField(const ReportParameter& definition) : m_definition(definition) {}

    int ValueType() const override;
    bool IsWholeNumber() const override { return m_definition.type == ParameterType::Integer; }
    std::string Name() const override { return m_definition.name; }
    std::string Prompt() const override { return m_prompt; }
    // Those that the report itself holds; defaults that a query gives are known when the report runs.
    std::vector<std::string> DefaultValues() const override;
    std::vector<std::string> ValidValues() const override;
    void ClearCurrentValueAndRange() override { m_current.clear(); }
    // Raises 13 naming the parameter when the value is not of its type. A parameter of one value keeps the
    // last.
    void AddCurrentValue(const report::ParameterValue& value) override;

    const ReportParameter& Definition() const { return m_definition; }
    const ValueList& Current() const { return m_current; }
    // A value of an expression; a list gives several.
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
