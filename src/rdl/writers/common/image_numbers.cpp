// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/common/image_numbers.h"

namespace rdl::writers {

ImageNumbers::Number ImageNumbers::Of(const std::shared_ptr<const std::string>& bytes) {
    if (const auto known = m_byAddress.find(bytes.get()); known != m_byAddress.end()) {
        return {known->second, false};
    }
    const auto [entry, isNew] = m_byBytes.try_emplace(*bytes, m_kept.size());
    if (isNew) {
        m_byAddress.emplace(bytes.get(), m_kept.size());
        m_kept.push_back(bytes);
    }
    return {entry->second, isNew};
}

}  // namespace rdl::writers
