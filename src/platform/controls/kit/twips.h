// SPDX-License-Identifier: GPL-3.0-or-later
// Positions and sizes of the forms are in twips: 15 make a pixel at 96 dots per inch. Qt scales its pixels
// for finer screens.
#pragma once

inline constexpr int TwipsPerPixel = 15;

// Returns the nearest whole number of pixels.
constexpr int Pixels(int twips) {
    constexpr int Half = TwipsPerPixel / 2;
    return (twips + (twips < 0 ? -Half : Half)) / TwipsPerPixel;
}

constexpr int Twips(int pixels) {
    return pixels * TwipsPerPixel;
}
