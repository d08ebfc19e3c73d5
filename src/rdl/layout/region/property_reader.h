// SPDX-License-Identifier: GPL-3.0-or-later
// Evaluates properties of items, charts, gauges and maps at the evaluator's current place.
#pragma once

#include <string>

#include "rdl/layout/region/evaluator.h"
#include "rdl/layout/region/item_images.h"

namespace rdl::layout {

class PropertyReader {
 public:
    // Both must outlive the reader.
    PropertyReader(const ReportInput& input, Evaluator& evaluator)
        : m_input(input), m_evaluator(evaluator), m_images(input, evaluator) {}

    Evaluator& Place() { return m_evaluator; }
    // Returns false if the property is not set, Null or an error.
    bool IsTrue(const Property& property);
    std::string Text(const Property& property);  // empty for Null and errors
    // Returns the style with its background image; `background` may be null.
    BoxStylePtr BoxOf(BoxStylePlan& plan, BackgroundPlan* background, const std::string& item);
    // Returns null if `image` is empty. Raises rdl::Error naming `item` if it cannot be loaded.
    ImageBytes PictureOf(const GaugeImage& image, const std::string& item);
    // Returns the bytes of a data file. Raises rdl::Error if it cannot be read.
    std::string FileNamed(const std::string& name) const;
    RunWatch* Watch() const { return m_input.watch.get(); }

 protected:
    const ReportInput& m_input;
    Evaluator& m_evaluator;
    ItemImages m_images;
};

}  // namespace rdl::layout
