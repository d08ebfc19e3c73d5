// SPDX-License-Identifier: GPL-3.0-or-later
#include <hb-subset.h>

#include <new>

#include "rdl/text/font_table.h"
#include "rdl/values/error.h"

namespace rdl::text {

std::string Subset(FontId font, const std::vector<std::uint16_t>& glyphs) {
    const auto lock = LockFonts();
    hb_subset_input_t* input = hb_subset_input_create_or_fail();
    if (input == nullptr) {
        throw std::bad_alloc();
    }
    // A character that no font has shows as the font's empty box, as it does on the screen.
    hb_subset_input_set_flags(
        input, HB_SUBSET_FLAGS_RETAIN_GIDS | HB_SUBSET_FLAGS_NO_HINTING | HB_SUBSET_FLAGS_NOTDEF_OUTLINE);
    hb_set_t* set = hb_subset_input_glyph_set(input);
    for (const std::uint16_t glyph : glyphs) {
        hb_set_add(set, glyph);
    }
    // Glyphs are already chosen: the tables that choose them are dead weight.
    hb_set_t* dropped = hb_subset_input_set(input, HB_SUBSET_SETS_DROP_TABLE_TAG);
    for (const hb_tag_t tag :
         {HB_TAG('G', 'S', 'U', 'B'), HB_TAG('G', 'P', 'O', 'S'), HB_TAG('G', 'D', 'E', 'F'),
          HB_TAG('k', 'e', 'r', 'n'), HB_TAG('D', 'S', 'I', 'G')}) {
        hb_set_add(dropped, tag);
    }
    const bool hasMemory =
        hb_set_allocation_successful(set) != 0 && hb_set_allocation_successful(dropped) != 0;
    hb_face_t* subset =
        hasMemory ? hb_subset_or_fail(hb_font_get_face(FaceOf(font).Shaper()), input) : nullptr;
    hb_subset_input_destroy(input);
    if (!hasMemory) {
        throw std::bad_alloc();
    }
    if (subset == nullptr) {
        throw Error("The font " + File(font).family +
                    " cannot be embedded: it is damaged, or there is not enough memory");
    }
    hb_blob_t* blob = hb_face_reference_blob(subset);
    unsigned length = 0;
    const char* bytes = hb_blob_get_data(blob, &length);
    std::string program(bytes, length);
    hb_blob_destroy(blob);
    hb_face_destroy(subset);
    return program;
}

}  // namespace rdl::text
