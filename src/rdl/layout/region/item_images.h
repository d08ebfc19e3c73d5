// Bytes of images, wherever a report keeps them, and the pictures behind items.
#pragma once

#include <memory>
#include <string>
#include <unordered_map>

#include "rdl/layout/region/evaluator.h"

namespace rdl::layout {

using ImageBytes = std::shared_ptr<const std::string>;

class ItemImages {
 public:
    ItemImages(const ReportInput& input, Evaluator& evaluator) : m_input(input), m_evaluator(evaluator) {}

    // Null for an empty value. `mimeType` is replaced by what an embedded image says. Raises rdl::Error with
    // the item's name for one that cannot be had or has more than 64 million pixels.
    ImageBytes Load(Image::Source source, const Value& value, const std::string& item, std::string& mimeType);
    // The style with the picture that is to be seen at the current place behind the item of that name. The
    // same pointer as long as nothing changes.
    BoxStylePtr WithPicture(const BoxStylePtr& style, BackgroundPlan& plan, const std::string& item);

 private:
    ImageBytes Find(Image::Source source, const Value& value, const std::string& item, std::string& mimeType);
    ImageBytes External(const std::string& source, const std::string& item);
    ImageBytes Embedded(const std::string& name, std::string& mimeType) const;
    std::string Text(const Property& property);

    const ReportInput& m_input;
    Evaluator& m_evaluator;
    std::unordered_map<std::string, ImageBytes> m_external;
};

}  // namespace rdl::layout
