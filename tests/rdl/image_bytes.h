// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <QtCore/QBuffer>
#include <QtCore/QByteArray>
#include <QtGui/QImage>
#include <string>

namespace rdl {

// Returns the image as a file of the format, "PNG" or "JPEG".
inline std::string FileOf(const QImage& image, const char* format) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    EXPECT_TRUE(image.save(&buffer, format));
    return bytes.toStdString();
}

// A picture of 8 by 4 pixels in one colour.
inline std::string SmallPicture(const char* format) {
    QImage image(8, 4, QImage::Format_RGB32);
    image.fill(0x336699);
    return FileOf(image, format);
}

}  // namespace rdl
