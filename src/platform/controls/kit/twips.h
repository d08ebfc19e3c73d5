// Places and sizes of the forms are counted in twips, of which 15 make a pixel at 96 dots an inch. Qt scales
// its pixels for finer screens by itself.
#pragma once

inline constexpr int TwipsPerPixel = 15;

// The nearest whole pixel.
constexpr int Pixels(int twips) {
    constexpr int Half = TwipsPerPixel / 2;
    return (twips + (twips < 0 ? -Half : Half)) / TwipsPerPixel;
}

constexpr int Twips(int pixels) {
    return pixels * TwipsPerPixel;
}
