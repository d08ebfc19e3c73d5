#include "platform/rdl/formula/formula.h"

#include <algorithm>

#include "platform/rdl/formula/parser.h"

namespace rdl::formula {

Formula::Formula(std::string_view text) {
    Parser parser(text);
    m_root = parser.Run();
    m_fields = std::move(parser.fields);
    m_parameters = std::move(parser.parameters);
}

Formula::~Formula() = default;
Formula::Formula(Formula&& other) noexcept = default;
Formula& Formula::operator=(Formula&& other) noexcept = default;

Value Formula::Evaluate(Inputs& inputs) const {
    return EvaluateNode(*m_root, inputs);
}

bool Formula::Selects(Inputs& inputs) const {
    const Value value = Evaluate(inputs);
    if (value.IsNull()) {
        return false;
    }
    if (value.kind() == Kind::Boolean) {
        return value.AsBoolean();
    }
    std::string why = value.IsError() ? std::string(value.AsText()) : "its result is neither true nor false";
    std::replace(why.begin(), why.end(), '\'', '"');
    throw Error("Record selection formula: " + why);
}

}  // namespace rdl::formula
