// SPDX-License-Identifier: GPL-3.0-or-later
// Loads images from all sources of a report, and background images.
#pragma once

#include <memory>
#include <string>
#include <unordered_map>
#include <unordered_set>

#include "rdl/layout/region/evaluator.h"

namespace rdl::layout {

using ImageBytes = std::shared_ptr<const std::string>;

class ItemImages {
 public:
    ItemImages(const ReportInput& input, Evaluator& evaluator) : m_input(input), m_evaluator(evaluator) {}

    // Returns null for an empty value. Sets `mimeType` for an embedded image. Raises rdl::Error naming `item`
    // if the image cannot be loaded, is damaged or empty, or has more than 64 million pixels.
    ImageBytes Load(Image::Source source, const Value& value, const std::string& item, std::string& mimeType);
    // Returns the style with the background image at the current place. The pointer changes only if the
    // result does.
    BoxStylePtr WithPicture(const BoxStylePtr& style, BackgroundPlan& plan, const std::string& item);

 private:
    void Check(const std::string& bytes, const std::string& item);
    ImageBytes Find(Image::Source source, const Value& value, const std::string& item, std::string& mimeType);
    ImageBytes External(const std::string& source, const std::string& item);
    ImageBytes Embedded(const std::string& name, std::string& mimeType) const;
    std::string Text(const Property& property);

    const ReportInput& m_input;
    Evaluator& m_evaluator;
    std::unordered_map<std::string, ImageBytes> m_external;
    std::unordered_set<std::size_t> m_checked;  // hashes of images that are whole
};

}  // namespace rdl::layout
