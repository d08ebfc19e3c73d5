// SPDX-License-Identifier: GPL-3.0-or-later
// A film of uncompressed pictures in an AVI file (RIFF). The file is not trusted: every length is checked
// against the data, and the sizes of the file and of its pictures are limited.
#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

class AviFile {
 public:
    // Reads the first video stream: 8 bits with a palette, 24 or 32 bits. Raises 35752 with a description of
    // the fault for anything else.
    explicit AviFile(std::string bytes);

    int Width() const { return m_width; }
    int Height() const { return m_height; }
    int FrameCount() const { return static_cast<int>(m_frames.size()); }  // at least 1
    std::chrono::microseconds FrameTime() const { return m_frameTime; }   // 10 ms to 10 s
    // Returns the pixels of frame `number` (from 0) by rows from the top left, as 0xffRRGGBB.
    std::vector<std::uint32_t> Frame(int number) const;

 private:
    friend class AviReader;

    std::string m_bytes;
    int m_width = 0, m_height = 0, m_bits = 0;
    bool m_topDown = false;
    std::chrono::microseconds m_frameTime{};
    std::array<std::uint32_t, 256> m_palette{};
    // offset of each frame; a repeated frame has the offset of the one before
    std::vector<std::size_t> m_frames;
};

namespace err {
inline constexpr std::int32_t NoAnimation = 35752;
}  // namespace err
