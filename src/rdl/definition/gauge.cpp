// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/definition/gauge.h"

namespace rdl {
namespace {

class Walk {
 public:
    explicit Walk(const std::function<void(const Expr&)>& visit) : m_visit(visit) {}

    void Panel(const GaugePanel& panel) {
        Part(panel.panel);
        Frame(panel.frame);
        for (const GaugeItem& item : panel.items) {
            Item(item);
        }
    }

 private:
    void One(const Expr& source) { m_visit(source); }

    void Styles(const Style& style) {
        for (const auto& [name, value] : style.properties) {
            One(value);
        }
    }

    void Part(const GaugePart& part) {
        for (const auto& [name, value] : part.properties) {
            One(value);
        }
        Styles(part.style);
    }

    void Number(const GaugeValue& value) {
        One(value.value);
        One(value.multiplier);
        One(value.addConstant);
    }

    void Frame(const GaugeFrame& frame) {
        Part(frame);
        Styles(frame.background);
    }

    void Picture(const GaugeImage& image) {
        One(image.value);
        One(image.mimeType);
    }

    void Scale(const GaugeScale& scale) {
        Part(scale);
        Number(scale.minimum);
        Number(scale.maximum);
        for (const GaugePart* part : {&scale.labels, &scale.majorTicks, &scale.minorTicks}) {
            Part(*part);
        }
        for (const GaugePart& label : scale.customLabels) {
            Part(label);
        }
        for (const GaugeRange& range : scale.ranges) {
            Part(range);
            Number(range.start);
            Number(range.end);
        }
        for (const GaugePointer& pointer : scale.pointers) {
            Part(pointer);
            Number(pointer.value);
            Part(pointer.cap);
            Part(pointer.thermometer);
        }
    }

    void Item(const GaugeItem& item) {
        Part(item);
        One(item.action.hyperlink);
        One(item.action.bookmarkLink);
        Frame(item.frame);
        for (const GaugeScale& scale : item.scales) {
            Scale(scale);
        }
        for (const GaugeValue* value : {&item.value, &item.minimum, &item.maximum}) {
            Number(*value);
        }
        for (const GaugeState& state : item.states) {
            Part(state);
            Number(state.start);
            Number(state.end);
            Picture(state.image);
        }
        Picture(item.image);
    }

    const std::function<void(const Expr&)>& m_visit;
};

}  // namespace

const Expr& GaugePart::operator[](std::string_view property) const {
    static const Expr NotSet;
    for (const auto& [key, value] : properties) {
        if (key == property) {
            return value;
        }
    }
    return NotSet;
}

void WalkGauge(const GaugePanel& panel, const std::function<void(const Expr&)>& visit) {
    Walk(visit).Panel(panel);
}

}  // namespace rdl
