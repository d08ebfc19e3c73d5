// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/definition/map/map.h"

namespace rdl {
namespace {

void VisitStyle(const Style& style, const MapVisit& visit) {
    for (const auto& [name, value] : style.properties) {
        visit(value);
    }
}

void VisitPart(const MapPart& part, const MapVisit& visit) {
    for (const auto& [name, value] : part.properties) {
        visit(value);
    }
    VisitStyle(part.style, visit);
}

void VisitText(const ChartText& text, const MapVisit& visit) {
    visit(text.caption);
    visit(text.position);
    visit(text.hidden);
    VisitStyle(text.style, visit);
}

void VisitNamed(const std::vector<std::pair<std::string, Expr>>& values, const MapVisit& visit) {
    for (const auto& [name, value] : values) {
        visit(value);
    }
}

void VisitTemplate(const MapTemplate& part, const MapVisit& visit) {
    VisitPart(part, visit);
    VisitPart(part.marker, visit);
}

void VisitRule(const MapRule& rule, const MapVisit& visit) {
    VisitPart(rule, visit);
    for (const Expr& color : rule.colors) {
        visit(color);
    }
    for (const auto* parts : {&rule.buckets, &rule.markers}) {
        for (const MapPart& part : *parts) {
            VisitPart(part, visit);
        }
    }
}

}  // namespace

void WalkMap(const Map& map, const MapVisit& visit) {
    const MapViewport& viewport = map.viewport;
    for (const MapPart* part : {static_cast<const MapPart*>(&viewport), &viewport.limits, &viewport.meridians,
                                &viewport.parallels, &viewport.location, &viewport.size,
                                static_cast<const MapPart*>(&viewport.view), &map.distanceScale}) {
        VisitPart(*part, visit);
    }
    VisitNamed(viewport.view.bindings, visit);
    for (const MapLegend& legend : map.legends) {
        VisitPart(legend, visit);
        VisitText(legend.title, visit);
    }
    VisitPart(map.colorScale, visit);
    VisitText(map.colorScale.title, visit);
    for (const MapTitle& title : map.titles) {
        VisitText(title.text, visit);
        visit(title.isOutside);
    }
}

void WalkMapLayer(const MapLayer& layer, const MapVisit& visit) {
    VisitPart(layer, visit);
    VisitTemplate(layer.shapeTemplate, visit);
    VisitTemplate(layer.markers, visit);
    for (const auto* rules : {&layer.rules, &layer.markerRules}) {
        for (const MapRule& rule : *rules) {
            VisitRule(rule, visit);
        }
    }
    VisitNamed(layer.bindings, visit);
    visit(layer.file);
    for (const MapOwnLook& look : layer.looks) {
        VisitTemplate(look.shapeTemplate, visit);
        VisitTemplate(look.markers, visit);
    }
}

void WalkMapSource(const MapLayer& layer, const MapVisit& visit) {
    visit(layer.vectorData);
    VisitNamed(layer.sourceFields, visit);
}

}  // namespace rdl
