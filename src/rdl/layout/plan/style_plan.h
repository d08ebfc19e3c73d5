// SPDX-License-Identifier: GPL-3.0-or-later
// Compiled styles. Constant styles are computed once and shared; for others the last few results are cached,
// since few distinct ones occur.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "rdl/definition/model.h"
#include "rdl/layout/model/style.h"
#include "rdl/layout/plan/property.h"

namespace rdl::layout {

template <typename T>
class StylePlan {
 public:
    // Later layers override earlier ones.
    void Compile(const std::vector<const Style*>& layers, const Programs& programs);
    const std::shared_ptr<const T>& Get(expr::Environment& environment);
    bool IsConstant() const { return !m_dynamic; }

 private:
    static constexpr std::size_t KeptResults = 8;
    std::shared_ptr<const T> Make(const std::vector<std::string>& texts) const;

    std::vector<std::pair<StyleProperty, Property>>
        m_properties;  // general properties before those of one side
    bool m_dynamic = false;
    std::shared_ptr<const T> m_constant = std::make_shared<const T>();
    std::vector<std::pair<std::vector<std::string>, std::shared_ptr<const T>>> m_recent;
    std::size_t m_nextRecent = 0;
};

using BoxStylePlan = StylePlan<BoxStyle>;
using CharStylePlan = StylePlan<CharStyle>;

extern template class StylePlan<BoxStyle>;
extern template class StylePlan<CharStyle>;

// Returns General for an unknown word.
HAlign ParseHAlign(std::string_view text);

}  // namespace rdl::layout
