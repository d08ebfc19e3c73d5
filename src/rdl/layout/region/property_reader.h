// What the properties of items, charts and gauges come to at the evaluator's current place.
#pragma once

#include <string>

#include "rdl/layout/region/evaluator.h"
#include "rdl/layout/region/item_images.h"

namespace rdl::layout {

class PropertyReader {
 public:
    // Both outlive the reader.
    PropertyReader(const ReportInput& input, Evaluator& evaluator)
        : m_input(input), m_evaluator(evaluator), m_images(input, evaluator) {}

    Evaluator& Place() { return m_evaluator; }
    // False for a property that is not set, null and errors.
    bool IsTrue(const Property& property);
    std::string Text(const Property& property);  // empty for null and errors
    // A style with the picture that belongs to it; `background` may be null.
    BoxStylePtr BoxOf(BoxStylePlan& plan, BackgroundPlan* background, const std::string& item);
    // Null when `image` names none. Raises rdl::Error with the item's name for one that cannot be had.
    ImageBytes PictureOf(const GaugeImage& image, const std::string& item);

 protected:
    const ReportInput& m_input;
    Evaluator& m_evaluator;
    ItemImages m_images;
};

}  // namespace rdl::layout
