// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/api/style_values.h"

#include "rdl/format/format.h"
#include "rdl/layout/model/colors.h"

namespace rdl {

std::vector<NamedColor> NamedColors() {
    std::vector<NamedColor> colors;
    for (const std::string_view name : layout::ColorNames()) {
        colors.push_back({name, ColorOf(name).value_or(0)});
    }
    return colors;
}

std::optional<std::uint32_t> ColorOf(std::string_view text) {
    layout::Color color{};
    return layout::ParseColor(text, color) ? std::optional<std::uint32_t>(color) : std::nullopt;
}

std::string FormattedNumber(double number, std::string_view format, std::string_view language) {
    return FormatValue(Value::Real(number), format, FindCulture(language));
}

std::string FormattedDate(const SampleDate& date, std::string_view format, std::string_view language) {
    const std::int64_t ticks =
        MakeTicks(date.year, date.month, date.day, date.hour, date.minute, date.second);
    return FormatValue(Value::DateTime(ticks), format, FindCulture(language));
}

}  // namespace rdl
