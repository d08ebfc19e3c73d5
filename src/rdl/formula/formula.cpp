// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/formula/formula.h"

#include <algorithm>

#include "rdl/formula/parser.h"

namespace rdl::formula {
namespace {

// Returns the number of children that are always evaluated; the others may be skipped and could fail.
std::size_t CertainChildren(const Node& node) {
    const bool picks = node.kind == NodeKind::Call && node.function->picks;
    const bool hasList =
        node.kind == NodeKind::In || node.kind == NodeKind::Like || node.kind == NodeKind::StartsWith;
    return picks || hasList || node.kind == NodeKind::If ? 1 : node.children.size();
}

// The innermost part that is known to fail; null when this one does not.
const Node* FailingPart(const Node& node, Inputs& inputs) {
    if (!EvaluateNode(node, inputs).IsError()) {
        return nullptr;
    }
    for (std::size_t i = 0; i < CertainChildren(node); ++i) {
        if (const Node* part = FailingPart(*node.children[i], inputs)) {
            return part;
        }
    }
    if (node.kind == NodeKind::If) {
        const Value condition = EvaluateNode(*node.children[0], inputs);
        const bool isTrue = condition.kind() == Kind::Boolean && condition.AsBoolean();
        if (const Node* part = FailingPart(*node.children[isTrue ? 1 : 2], inputs)) {
            return part;
        }
    }
    return &node;
}

}  // namespace

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
    std::string why = "its result is neither true nor false";
    if (value.IsError()) {
        const Node* part = FailingPart(*m_root, inputs);
        why =
            std::string(value.AsText()) + ", at character " + std::to_string((part ? part->position : 0) + 1);
    }
    std::replace(why.begin(), why.end(), '\'', '"');
    throw Error("Record selection formula: " + why);
}

}  // namespace rdl::formula
