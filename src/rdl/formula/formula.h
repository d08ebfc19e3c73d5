// The record selection formula: a condition on a row, written {Orders.Total} > 100 and {Orders.Country} in
// ["Italy", "France"] and {Orders.Date} in Date(2024,1,1) to {?Until}.
//
// Words without regard to case; texts compare without regard to case. A comparison with Null is neither true
// nor false: it makes the whole formula Null unless the rest decides it, and a row is selected by true only.
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
    std::size_t position;  // of its brace, from 1
};
struct ParameterName {
    std::string name;
    std::size_t position;
};

// What the formula reads while it runs; numbers are positions in Fields() and Parameters().
class Inputs {
 public:
    virtual ~Inputs() = default;
    virtual Value Field(int index) = 0;
    virtual Value Parameter(int index) = 0;  // a List for a multi-value parameter
    virtual std::int64_t NowTicks() = 0;     // the run's one moment, local time
    virtual const Culture& CurrentCulture() = 0;
};

struct Node;

class Formula {
 public:
    // Raises rdl::Error: "Record selection formula: <what>, at character <n>".
    explicit Formula(std::string_view text);
    ~Formula();
    Formula(Formula&& other) noexcept;
    Formula& operator=(Formula&& other) noexcept;

    const std::vector<FieldName>& Fields() const { return m_fields; }  // each once, as first written
    const std::vector<ParameterName>& Parameters() const { return m_parameters; }

    // Null where Null decides; of kind Error where a part fails.
    Value Evaluate(Inputs& inputs) const;
    // Whether the row is selected. Raises rdl::Error when a part fails or the result is no truth value.
    bool Selects(Inputs& inputs) const;

 private:
    std::unique_ptr<Node> m_root;
    std::vector<FieldName> m_fields;
    std::vector<ParameterName> m_parameters;
};

}  // namespace rdl::formula
