// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/values/base64.h"

#include <QtCore/QByteArray>

namespace rdl {

std::optional<std::string> FromBase64(std::string_view text) {
    const auto decoded = QByteArray::fromBase64Encoding(
        QByteArray::fromRawData(text.data(), static_cast<qsizetype>(text.size()))
            .simplified()
            .replace(' ', ""),
        QByteArray::Base64Encoding | QByteArray::AbortOnBase64DecodingErrors);
    return decoded ? std::optional((*decoded).toStdString()) : std::nullopt;
}

std::string ToBase64(std::string_view bytes) {
    return QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size()))
        .toBase64()
        .toStdString();
}

}  // namespace rdl
