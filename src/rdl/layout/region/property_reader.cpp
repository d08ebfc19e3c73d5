// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/region/property_reader.h"

#include "rdl/expr/operations/convert.h"
#include "rdl/values/error_text.h"

namespace rdl::layout {

bool PropertyReader::IsTrue(const Property& property) {
    bool result = false;
    return property.isSet && expr::ToBoolean(property.Get(m_evaluator), result) && result;
}

std::string PropertyReader::Text(const Property& property) {
    const Value value = property.Get(m_evaluator);
    if (value.IsText()) {
        return std::string(value.AsText());
    }
    return value.IsError() ? std::string() : ToText(value, m_evaluator.CurrentCulture());
}

BoxStylePtr PropertyReader::BoxOf(BoxStylePlan& plan, BackgroundPlan* background, const std::string& item) {
    const BoxStylePtr& style = plan.Get(m_evaluator);
    return background ? m_images.WithPicture(style, *background, item) : style;
}

ImageBytes PropertyReader::PictureOf(const GaugeImage& image, const std::string& item) {
    std::string mimeType;
    return m_images.Load(image.source, Property(image.value, m_evaluator.Compiled()).Get(m_evaluator), item,
                         mimeType);
}

std::string PropertyReader::FileNamed(const std::string& name) const {
    if (!m_input.readFile) {
        throw Error("the file \"" + WithoutMarks(name) + "\" cannot be read");
    }
    return m_input.readFile(name);
}

}  // namespace rdl::layout
