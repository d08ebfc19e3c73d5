// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/base/digest.h"

#include <glib.h>

#include <memory>

std::string Sha256(std::string_view bytes) {
    const std::unique_ptr<char, decltype(&g_free)> digits(
        g_compute_checksum_for_data(G_CHECKSUM_SHA256, reinterpret_cast<const guchar*>(bytes.data()),
                                    bytes.size()),
        &g_free);
    return digits.get();
}
