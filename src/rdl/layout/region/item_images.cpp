// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/region/item_images.h"

#include <functional>

#include "rdl/image/decoder.h"
#include "rdl/layout/model/image_size.h"
#include "rdl/values/ascii.h"
#include "rdl/values/base64.h"
#include "rdl/values/error.h"

namespace rdl::layout {
namespace {

constexpr double MostPixels = 64e6, PointsPerPixel = 0.75;

[[noreturn]] void Fail(const std::string& item, const std::string& what) {
    throw Error("Image \"" + item + "\": " + what);
}

// Sources without a type for bytes (XML, JSON, rows typed in) hold images as base64.
ImageBytes FromText(std::string_view text, const std::string& item) {
    std::optional<std::string> decoded = FromBase64(text);
    if (!decoded || SizeOfImage(*decoded).width <= 0) {
        Fail(item, "its value is a text and no image");
    }
    return std::make_shared<const std::string>(std::move(*decoded));
}

BackgroundPicture::Repeat ParseRepeat(std::string_view word, bool isChart) {
    using Repeat = BackgroundPicture::Repeat;
    if (EqualNoCase(word, "RepeatX")) {
        return Repeat::Across;
    }
    if (EqualNoCase(word, "RepeatY")) {
        return Repeat::Down;
    }
    if (EqualNoCase(word, "Clip") || EqualNoCase(word, "NoRepeat")) {
        return Repeat::None;
    }
    return EqualNoCase(word, "Fit") || (isChart && !EqualNoCase(word, "Repeat")) ? Repeat::Stretch
                                                                                 : Repeat::Both;
}

// TopLeft, Bottom ... as shares of the room that is left.
void SetPosition(std::string_view word, bool isChart, BackgroundPicture& picture) {
    const auto has = [word](std::string_view part) { return word.find(part) != std::string_view::npos; };
    const bool isDefault = word.empty() || EqualNoCase(word, "Default");
    const float middle = isDefault && !isChart ? 0.0F : 0.5F;
    picture.alignX = has("Left") ? 0 : has("Right") ? 1 : middle;
    picture.alignY = has("Top") ? 0 : has("Bottom") ? 1 : middle;
}

}  // namespace

std::string ItemImages::Text(const Property& property) {
    const Value value = property.Get(m_evaluator);
    return value.IsError() ? std::string() : ToText(value, m_evaluator.CurrentCulture());
}

ImageBytes ItemImages::External(const std::string& source, const std::string& item) {
    constexpr std::size_t MaxKept = 256;
    const auto known = m_external.find(source);
    if (known != m_external.end()) {
        return known->second;
    }
    std::string why;
    auto bytes = m_input.loadImage ? m_input.loadImage(source, why) : nullptr;
    if (!bytes) {
        Fail(item, why.empty() ? "it cannot be loaded" : why);
    }
    if (m_external.size() >= MaxKept) {
        m_external.clear();
    }
    m_external.emplace(source, bytes);
    return bytes;
}

ImageBytes ItemImages::Embedded(const std::string& name, std::string& mimeType) const {
    for (const EmbeddedImage& image : m_input.definition->images) {
        if (image.name == name) {
            mimeType = image.mimeType;
            // The definition lives as long as the instances do.
            return {std::shared_ptr<const std::string>(), &image.bytes};
        }
    }
    return nullptr;
}

ImageBytes ItemImages::Load(Image::Source source, const Value& value, const std::string& item,
                            std::string& mimeType) {
    ImageBytes bytes = Find(source, value, item, mimeType);
    // Some formats embed the image unchanged: the reader of the document would have to decode it.
    const ImageSize size = bytes ? SizeOfImage(*bytes) : ImageSize();
    if (size.width * size.height > MostPixels * PointsPerPixel * PointsPerPixel) {
        throw Error("Image \"" + item + "\" has more than 64 million pixels");
    }
    if (bytes) {
        Check(*bytes, item);
    }
    return bytes;
}

// Formats differ in what they make of a damaged image: some would carry it to the reader of the document. So
// each image is decoded once here, whatever the format.
void ItemImages::Check(const std::string& bytes, const std::string& item) {
    constexpr std::size_t MaxKept = 100'000;
    const std::size_t mark = std::hash<std::string_view>()(bytes) ^ bytes.size();
    if (m_checked.contains(mark)) {
        return;
    }
    image::CheckImage(bytes, item);
    if (m_checked.size() >= MaxKept) {
        m_checked.clear();
    }
    m_checked.insert(mark);
}

ImageBytes ItemImages::Find(Image::Source source, const Value& value, const std::string& item,
                            std::string& mimeType) {
    if (value.IsError()) {
        Fail(item, std::string(value.AsText()));
    }
    if (value.IsNull() || (value.IsText() && value.AsText().empty())) {
        return nullptr;
    }
    if (value.kind() == Kind::Bytes) {
        return std::make_shared<const std::string>(value.AsText());
    }
    const std::string text = ToText(value, m_evaluator.CurrentCulture());
    switch (source) {
        case Image::Source::Database:
            return FromText(text, item);
        case Image::Source::External:
            return External(text, item);
        case Image::Source::Embedded:
            break;
    }
    ImageBytes bytes = Embedded(text, mimeType);
    if (!bytes) {
        Fail(item, "the report has no embedded image \"" + text + "\"");
    }
    return bytes;
}

BoxStylePtr ItemImages::WithPicture(const BoxStylePtr& style, BackgroundPlan& plan, const std::string& item) {
    std::string type = Text(plan.type);
    const std::string source = Text(plan.source);
    const auto kind = EqualNoCase(source, "Embedded")   ? Image::Source::Embedded
                      : EqualNoCase(source, "Database") ? Image::Source::Database
                                                        : Image::Source::External;
    ImageBytes bytes = Load(kind, plan.value.Get(m_evaluator), item, type);
    if (!bytes) {
        return style;
    }
    const std::string place = Text(plan.repeat) + ' ' + Text(plan.position);
    if (plan.madeOf == style && plan.made && plan.madePlace == place &&
        (plan.made->picture->bytes == bytes || *plan.made->picture->bytes == *bytes)) {
        return plan.made;
    }
    auto picture = std::make_shared<BackgroundPicture>();
    picture->bytes = std::move(bytes);
    picture->mimeType = std::move(type);
    picture->item = item;
    picture->repeat = ParseRepeat(Text(plan.repeat), plan.isChart);
    SetPosition(Text(plan.position), plan.isChart, *picture);
    auto made = std::make_shared<BoxStyle>(*style);
    made->picture = std::move(picture);
    plan.madeOf = style;
    plan.madePlace = place;
    plan.made = made;
    return made;
}

}  // namespace rdl::layout
