// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/text/near_families.h"

#include <algorithm>
#include <array>

#include "rdl/values/ascii.h"

namespace rdl::text {
namespace {

struct Row {
    std::array<std::string_view, 8> named;
    std::array<std::string_view, 4> near;  // the nearest first
};

constexpr Row Rows[] = {
    {{"Arial", "Helvetica", "Helvetica Neue", "Microsoft Sans Serif", "MS Sans Serif", "Tahoma",
      "Trebuchet MS", "Franklin Gothic Medium"},
     {"Liberation Sans", "Arimo", "Nimbus Sans"}},
    {{"Segoe UI"}, {"Selawik", "Liberation Sans", "Arimo"}},
    {{"Arial Narrow", "Helvetica Narrow"}, {"Liberation Sans Narrow", "Nimbus Sans Narrow"}},
    {{"Calibri", "Candara", "Corbel", "Aptos"}, {"Carlito", "Liberation Sans", "Arimo"}},
    {{"Verdana", "Lucida Sans", "Lucida Sans Unicode", "Lucida Grande"}, {"DejaVu Sans"}},
    {{"Century Gothic", "Avant Garde"}, {"URW Gothic", "TeX Gyre Adventor"}},
    {{"Times", "Times New Roman", "MS Serif"}, {"Liberation Serif", "Tinos", "Nimbus Roman"}},
    {{"Cambria", "Constantia"}, {"Caladea", "Liberation Serif", "Tinos"}},
    {{"Georgia"}, {"Gelasio", "P052", "TeX Gyre Pagella"}},
    {{"Palatino", "Palatino Linotype", "Book Antiqua"}, {"P052", "TeX Gyre Pagella"}},
    {{"Bookman", "Bookman Old Style"}, {"URW Bookman", "TeX Gyre Bonum"}},
    {{"Century Schoolbook", "New Century Schoolbook"}, {"C059", "TeX Gyre Schola"}},
    {{"Garamond"}, {"EB Garamond", "Liberation Serif", "Tinos"}},
    {{"Courier", "Courier New", "Consolas", "Lucida Console", "Andale Mono"},
     {"Liberation Mono", "Cousine", "Nimbus Mono PS", "DejaVu Sans Mono"}},
};

}  // namespace

std::span<const std::string_view> NearFamilies(std::string_view family) {
    for (const Row& row : Rows) {
        if (std::any_of(row.named.begin(), row.named.end(), [family](std::string_view name) {
                return !name.empty() && EqualNoCase(name, family);
            })) {
            const auto* const end = std::find(row.near.begin(), row.near.end(), std::string_view());
            return {row.near.begin(), end};
        }
    }
    return {};
}

std::vector<std::string_view> FamiliesWithNearOnes() {
    std::vector<std::string_view> names;
    for (const Row& row : Rows) {
        std::copy_if(row.named.begin(), row.named.end(), std::back_inserter(names),
                     [](std::string_view name) { return !name.empty(); });
    }
    return names;
}

}  // namespace rdl::text
