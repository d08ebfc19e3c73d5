// SPDX-License-Identifier: GPL-3.0-or-later
// Nodes that query the environment: parameters, globals, aggregates, lookups, scopes.
#pragma once

#include <string>
#include <unordered_map>
#include <utility>

#include "rdl/expr/language/node.h"
#include "rdl/expr/operations/convert.h"

namespace rdl::expr {

// Queries the environment through a function object, so that each query needs no class of its own.
template <typename Ask>
struct AskNode final : Node {
    explicit AskNode(Ask question) : ask(std::move(question)) {}
    Value Run(Machine& machine) const override { return ask(machine); }
    Ask ask;
};

template <typename Ask>
NodePtr MakeAsk(Ask ask) {
    return std::make_unique<AskNode<Ask>>(std::move(ask));
}

// The same for a name that is computed at run time.
template <typename Ask>
struct AskByNameNode final : Node {
    AskByNameNode(NodePtr nameNode, Ask question) : name(std::move(nameNode)), ask(std::move(question)) {
        Deepen(*name);
    }
    Value Run(Machine& machine) const override {
        const Value text = name->Run(machine);
        return text.IsError() ? text : ask(machine, TextOf(text, machine.culture()));
    }
    NodePtr name;
    Ask ask;
};

template <typename Ask>
NodePtr MakeAskByName(NodePtr name, Ask ask) {
    return std::make_unique<AskByNameNode<Ask>>(std::move(name), std::move(ask));
}

// Applies a function to the value of another node. Errors pass through.
template <typename Change>
struct ChangeNode final : Node {
    ChangeNode(NodePtr value, Change how) : target(std::move(value)), change(std::move(how)) {
        Deepen(*target);
    }
    Value Run(Machine& machine) const override {
        const Value value = target->Run(machine);
        return value.IsError() ? value : change(machine, value);
    }
    NodePtr target;
    Change change;
};

template <typename Change>
NodePtr MakeChange(NodePtr value, Change change) {
    return std::make_unique<ChangeNode<Change>>(std::move(value), std::move(change));
}

struct AggregateNode final : Node {
    Value Run(Machine& machine) const override { return machine.environment.Aggregate(call); }
    AggregateCall call;
};

struct LookupNode final : Node {
    Value Run(Machine& machine) const override { return machine.environment.Lookup(call); }
    LookupCall call;
};

}  // namespace rdl::expr
