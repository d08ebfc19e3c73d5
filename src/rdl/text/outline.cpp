// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/text/outline.h"

#include <hb.h>

#include "rdl/text/font_table.h"

namespace rdl::text {
namespace {

struct Tracer {
    std::vector<OutlineStep> steps;
    float toEm = 1;
    void Add(OutlineStep::Kind kind, float x1, float y1, float x2 = 0, float y2 = 0, float x3 = 0,
             float y3 = 0) {
        steps.push_back({kind, {x1 * toEm, x2 * toEm, x3 * toEm}, {-y1 * toEm, -y2 * toEm, -y3 * toEm}});
    }
};

hb_draw_funcs_t* TracerFunctions() {
    static hb_draw_funcs_t* const functions = [] {
        hb_draw_funcs_t* made = hb_draw_funcs_create();
        hb_draw_funcs_set_move_to_func(
            made,
            [](hb_draw_funcs_t*, void* data, hb_draw_state_t*, float x, float y, void*) {
                static_cast<Tracer*>(data)->Add(OutlineStep::Move, x, y);
            },
            nullptr, nullptr);
        hb_draw_funcs_set_line_to_func(
            made,
            [](hb_draw_funcs_t*, void* data, hb_draw_state_t*, float x, float y, void*) {
                static_cast<Tracer*>(data)->Add(OutlineStep::Line, x, y);
            },
            nullptr, nullptr);
        // Without a function of its own a quadratic curve comes as a cubic one.
        hb_draw_funcs_set_cubic_to_func(
            made,
            [](hb_draw_funcs_t*, void* data, hb_draw_state_t*, float x1, float y1, float x2, float y2,
               float x, float y,
               void*) { static_cast<Tracer*>(data)->Add(OutlineStep::Curve, x1, y1, x2, y2, x, y); },
            nullptr, nullptr);
        return made;
    }();
    return functions;
}

}  // namespace

std::vector<OutlineStep> Outline(FontId font, std::uint16_t glyph) {
    const auto lock = LockFonts();
    Face& face = FaceOf(font);
    Tracer tracer;
    tracer.toEm = 1.0F / static_cast<float>(face.Metrics().unitsPerEm);
    hb_font_get_glyph_shape(face.Shaper(), glyph, TracerFunctions(), &tracer);
    return std::move(tracer.steps);
}

}  // namespace rdl::text
