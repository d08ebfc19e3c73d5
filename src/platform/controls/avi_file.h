// A film of uncompressed pictures, as AVI files hold it. The file is not trusted: every length in it is held
// against what is there, and its size and that of its pictures are limited.
#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

class AviFile {
 public:
    // The first picture stream: 8 bits with a palette, 24 or 32 bits. Raises 35752 with a description that
    // says what is wrong for anything else.
    explicit AviFile(std::string bytes);

    int Width() const { return m_width; }
    int Height() const { return m_height; }
    int FrameCount() const { return static_cast<int>(m_frames.size()); }  // at least 1
    std::chrono::microseconds FrameTime() const { return m_frameTime; }   // 10 ms to 10 s
    // The pixels of frame `number`, from 0, by rows from the top left: 0xffRRGGBB.
    std::vector<std::uint32_t> Frame(int number) const;

 private:
    friend class AviReader;

    std::string m_bytes;
    int m_width = 0, m_height = 0, m_bits = 0;
    bool m_topDown = false;
    std::chrono::microseconds m_frameTime{};
    std::array<std::uint32_t, 256> m_palette{};
    std::vector<std::size_t> m_frames;  // where each begins; one that repeats the last is there again
};

namespace err {
inline constexpr std::int32_t NoAnimation = 35752;
}  // namespace err
