// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <string_view>

#include "rdl/layout/drawing/chart/data.h"
#include "rdl/values/ascii.h"

namespace rdl::layout {
namespace {

struct Palette {
    std::string_view name;  // in lower case
    std::vector<Color> colors;
};

const std::vector<Palette>& Palettes() {
    static const std::vector<Palette> palettes{
        {"brightpastel",
         {0x418CF0, 0xFCB441, 0xE0400A, 0x056492, 0xBFBFBF, 0x1A3B69, 0xFFE382, 0x129CDD, 0xCA6B4B, 0x005CDB,
          0xF3D288, 0x506381, 0xF1B9A8, 0xE0830A, 0x7893BE}},
        {"berry",
         {0x8A2BE2, 0xBA55D3, 0x4169E1, 0xC71585, 0x0000FF, 0x8B008B, 0xDA70D6, 0x7B68EE, 0xC000C0, 0x0000CD,
          0x800080}},
        {"chocolate",
         {0xA0522D, 0xD2691E, 0x8B0000, 0xCD853F, 0xA52A2A, 0xF4A460, 0x8B4513, 0xC04000, 0xB22222,
          0xB65C3A}},
        {"earthtones",
         {0xFF8000, 0xB8860B, 0xC04000, 0x6B8E23, 0xCD853F, 0xC0C000, 0x228B22, 0xD2691E, 0x808000, 0x20B2AA,
          0xF4A460, 0x00C000, 0x8FBC8B, 0xB22222, 0x8B4513, 0xC00000}},
        {"excel",
         {0x9999FF, 0x993366, 0xFFFFCC, 0xCCFFFF, 0x660066, 0xFF8080, 0x0066CC, 0xCCCCFF, 0x000080, 0xFF00FF,
          0xFFFF00, 0x00FFFF, 0x800080, 0x800000, 0x008080, 0x0000FF}},
        {"fire",
         {0xFFD700, 0xFF0000, 0xFF1493, 0xDC143C, 0xFF8C00, 0xFF00FF, 0xFFFF00, 0xFF4500, 0xC71585,
          0xDDE221}},
        {"grayscale",
         {0x303030, 0xC8C8C8, 0x707070, 0xE0E0E0, 0x505050, 0xB0B0B0, 0x181818, 0x989898, 0x404040,
          0xD4D4D4}},
        {"light",
         {0xE6E6FA, 0xFFF0F5, 0xFFDAB9, 0xFFFACD, 0xFFE4E1, 0xF0FFF0, 0xF0F8FF, 0xF5F5F5, 0xFAEBD7,
          0xE0FFFF}},
        {"pacific",
         {0x1F6FB2, 0x38A3A5, 0xE9A23B, 0x5B4E9B, 0x8FB339, 0xC94F4F, 0x2B4C7E, 0x7FC8C2, 0xF2CB7D,
          0x9A8FC7}},
        {"pastel",
         {0x87CEEB, 0x32CD32, 0xBA55D3, 0xF08080, 0x4682B4, 0x9ACD32, 0x40E0D0, 0xFF69B4, 0xF0E68C, 0xD2B48C,
          0x8FBC8B, 0x6495ED, 0xDDA0DD, 0x5F9EA0, 0xFFDAB9, 0xFFA07A}},
        {"seagreen",
         {0x2E8B57, 0x66CDAA, 0x4682B4, 0x008B8B, 0x5F9EA0, 0x3CB371, 0x48D1CC, 0xB0C4DE, 0x8FBC8B,
          0x87CEEB}},
    };
    return palettes;
}

std::vector<Color> WithAlpha(std::vector<Color> colors, Color alpha) {
    for (Color& color : colors) {
        color |= alpha << 24;
    }
    return colors;
}

Color Lighter(Color color) {
    Color light = 0;
    for (const int shift : {0, 8, 16}) {
        const Color part = color >> shift & 0xFF;
        light |= (part + (255 - part) / 2) << shift;
    }
    return light;
}

const std::vector<Color>& Named(std::string_view name) {
    for (const Palette& palette : Palettes()) {
        if (palette.name == name) {
            return palette.colors;
        }
    }
    return Palettes().front().colors;
}

}  // namespace

std::vector<Color> PaletteOf(const std::string& name) {
    constexpr Color SeeThrough = 0x96, Full = 0xFF;
    const std::string lower = LowerAscii(name);
    if (lower == "semitransparent") {
        return WithAlpha(Named("brightpastel"), SeeThrough);
    }
    if (lower == "pacificsemitransparent") {
        return WithAlpha(Named("pacific"), SeeThrough);
    }
    if (lower == "pacificlight") {
        std::vector<Color> colors = Named("pacific");
        std::transform(colors.begin(), colors.end(), colors.begin(), Lighter);
        return WithAlpha(std::move(colors), Full);
    }
    return WithAlpha(Named(lower), Full);
}

}  // namespace rdl::layout
