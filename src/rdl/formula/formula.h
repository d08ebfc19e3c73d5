// SPDX-License-Identifier: GPL-3.0-or-later
// The record selection formula: a condition on a row, such as {Orders.Total} > 100 and {Orders.Country} in
// ["Italy", "France"] and {Orders.Date} in Date(2024,1,1) to {?Until}.
//
// Keywords and text comparisons ignore case. A comparison with Null is Null: so is the whole formula unless
// its other parts decide it. Only True selects a row.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "rdl/format/format.h"
#include "rdl/values/error.h"
#include "rdl/values/value.h"

namespace rdl::formula {

struct FieldName {
    std::string table;  // empty for {Field}
    std::string field;
    std::size_t position;  // of its opening brace, in characters, from 1
};
struct ParameterName {
    std::string name;
    std::size_t position;
};

// What the formula reads while it runs. Indexes refer to Fields() and Parameters().
class Inputs {
 public:
    virtual ~Inputs() = default;
    virtual Value Field(int index) = 0;
    virtual Value Parameter(int index) = 0;  // a List for a multi-value parameter
    virtual std::int64_t NowTicks() = 0;     // start of the run, local time
    virtual const Culture& CurrentCulture() = 0;
};

struct Node;

class Formula {
 public:
    // Compiles `text`. Raises rdl::Error: "Record selection formula: <what>, at character <n>".
    explicit Formula(std::string_view text);
    ~Formula();
    Formula(Formula&& other) noexcept;
    Formula& operator=(Formula&& other) noexcept;

    const std::vector<FieldName>& Fields() const { return m_fields; }  // without duplicates, as first written
    const std::vector<ParameterName>& Parameters() const { return m_parameters; }

    // Returns Null if Null decides, and a value of kind Error if a part fails.
    Value Evaluate(Inputs& inputs) const;
    // Whether the row is selected. Raises rdl::Error if a part fails or the result is not a Boolean.
    bool Selects(Inputs& inputs) const;

 private:
    std::unique_ptr<Node> m_root;
    std::vector<FieldName> m_fields;
    std::vector<ParameterName> m_parameters;
};

}  // namespace rdl::formula
