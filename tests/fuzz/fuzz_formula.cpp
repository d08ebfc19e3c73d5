// SPDX-License-Identifier: GPL-3.0-or-later
#include "fuzz/targets.h"
#include "rdl/formula/formula.h"
#include "rdl/values/error.h"

namespace fuzz {
namespace {

// A row of every kind of value; a parameter with several.
class Row final : public rdl::formula::Inputs {
 public:
    rdl::Value Field(int index) override {
        switch (index % 6) {
            case 0:
                return rdl::Value::Text("Åre 1.250,5 2024-02-29");
            case 1:
                return rdl::Value::Integer(-7);
            case 2:
                return rdl::Value::Real(1e300);
            case 3:
                return rdl::Value::DateTime(rdl::MakeTicks(2024, 2, 29, 23, 59, 59));
            case 4:
                return rdl::Value::Boolean(true);
            default:
                return {};
        }
    }
    rdl::Value Parameter(int index) override {
        return index % 2 == 0
                   ? rdl::Value::List({rdl::Value::Text("North"), rdl::Value(), rdl::Value::Integer(3)})
                   : rdl::Value::Text("South");
    }
    std::int64_t NowTicks() override { return rdl::MakeTicks(2024, 2, 29, 13, 45, 30); }
    const rdl::Culture& CurrentCulture() override { return rdl::FindCulture("de-DE"); }
};

}  // namespace

void RunFormula(std::string_view input) {
    Row row;
    try {
        rdl::formula::Formula(input).Selects(row);
    } catch (const rdl::Error&) {
        return;
    }
}

}  // namespace fuzz
