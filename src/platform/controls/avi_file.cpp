// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/avi_file.h"

#include <algorithm>
#include <string_view>

#include "platform/contracts/runtime.h"

namespace {

constexpr int LargestSide = 4096;
constexpr std::size_t ChunkHead = 8, KindSize = 4;
constexpr std::uint32_t Opaque = 0xff000000;

[[noreturn]] void Refuse(std::string_view why) {
    throw RuntimeError(err::NoAnimation, why);
}

// Returns a number of `size` bytes, lowest byte first. Raises 35752 if the block is too short.
std::uint32_t NumberAt(std::string_view block, std::size_t place, int size) {
    if (place + static_cast<std::size_t>(size) > block.size()) {
        Refuse("The animation is damaged: one of its headers is cut off");
    }
    std::uint32_t number = 0;
    for (int i = size - 1; i >= 0; --i) {
        number = number << 8 | static_cast<unsigned char>(block[place + static_cast<std::size_t>(i)]);
    }
    return number;
}

struct Chunk {
    std::string_view kind, data;
    std::size_t place;  // offset of the data in the walked block
};

// Calls `visit` for every chunk of the block, which begins at `place`.
template <typename Visit>
void ForEachChunk(std::string_view block, std::size_t place, Visit visit) {
    while (block.size() >= ChunkHead) {
        const std::size_t size = NumberAt(block, KindSize, 4);
        if (size > block.size() - ChunkHead) {
            Refuse("The animation is damaged: it is cut off");
        }
        visit(Chunk{block.substr(0, KindSize), block.substr(ChunkHead, size), place + ChunkHead});
        const std::size_t whole = std::min(ChunkHead + size + size % 2, block.size());
        block.remove_prefix(whole);
        place += whole;
    }
}

bool IsList(const Chunk& chunk, std::string_view kind) {
    return chunk.kind == "LIST" && chunk.data.substr(0, KindSize) == kind;
}

// Calls `visit` for every chunk of a list.
template <typename Visit>
void ForEachChunkOf(const Chunk& list, Visit visit) {
    ForEachChunk(list.data.substr(KindSize), list.place + KindSize, visit);
}

}  // namespace

class AviReader {
 public:
    explicit AviReader(AviFile& file) : m_file(file) {}

    void Read() {
        const std::string_view bytes = m_file.m_bytes;
        if (bytes.substr(0, KindSize) != "RIFF" || bytes.size() < ChunkHead + KindSize ||
            bytes.substr(ChunkHead, KindSize) != "AVI ") {
            Refuse("The file is not an animation");
        }
        ForEachChunk(bytes.substr(ChunkHead + KindSize), ChunkHead + KindSize, [this](const Chunk& chunk) {
            if (IsList(chunk, "hdrl")) {
                ForEachChunkOf(chunk, [this](const Chunk& part) { ReadHeader(part); });
            } else if (IsList(chunk, "movi") && m_file.m_bits != 0) {
                ForEachChunkOf(chunk, [this](const Chunk& part) { ReadMovie(part); });
            }
        });
        if (m_file.m_frames.empty()) {
            Refuse("The animation has no pictures");
        }
    }

 private:
    void ReadHeader(const Chunk& chunk) {
        if (chunk.kind == "avih") {
            UseFrameTime(NumberAt(chunk.data, 0, 4), 1);
        } else if (IsList(chunk, "strl")) {
            m_pictures = false;
            ForEachChunkOf(chunk, [this](const Chunk& part) { ReadStream(part); });
            ++m_streams;
        }
    }

    void ReadStream(const Chunk& chunk) {
        constexpr std::size_t Scale = 20, Rate = 24;
        if (chunk.kind == "strh") {
            m_pictures = chunk.data.substr(0, KindSize) == "vids" && m_file.m_bits == 0;
            if (m_pictures) {
                m_number = m_streams;
                UseFrameTime(NumberAt(chunk.data, Scale, 4) * std::uint64_t{1000000},
                             NumberAt(chunk.data, Rate, 4));
            }
        } else if (chunk.kind == "strf" && m_pictures) {
            ReadPictureFormat(chunk.data);
        }
    }

    void UseFrameTime(std::uint64_t microseconds, std::uint64_t parts) {
        constexpr std::uint64_t Shortest = 10000, Longest = 10000000;
        if (microseconds > 0 && parts > 0) {
            m_file.m_frameTime =
                std::chrono::microseconds(std::clamp(microseconds / parts, Shortest, Longest));
        }
    }

    void ReadPictureFormat(std::string_view format) {
        constexpr std::size_t Width = 4, Height = 8, Bits = 14, Compression = 16;
        const auto width = static_cast<std::int32_t>(NumberAt(format, Width, 4));
        const auto height = static_cast<std::int32_t>(NumberAt(format, Height, 4));
        const auto bits = static_cast<int>(NumberAt(format, Bits, 2));
        if (NumberAt(format, Compression, 4) != 0 || (bits != 8 && bits != 24 && bits != 32)) {
            Refuse("The animation is compressed; only pictures of 8, 24 or 32 bits as they are can be shown");
        }
        if (width < 1 || width > LargestSide || height == 0 || height > LargestSide ||
            height < -LargestSide) {
            Refuse("The pictures of the animation are empty or too large");
        }
        m_file.m_width = width;
        m_file.m_height = std::abs(height);
        m_file.m_topDown = height < 0;
        m_file.m_bits = bits;
        if (bits == 8) {
            ReadPalette(format);
        }
    }

    void ReadPalette(std::string_view format) {
        constexpr std::size_t ColoursUsed = 32;
        const std::size_t place = NumberAt(format, 0, 4);
        const std::size_t used = NumberAt(format, ColoursUsed, 4);
        const std::size_t count = used == 0 ? m_file.m_palette.size() : std::min<std::size_t>(used, 256);
        if (place > format.size()) {
            Refuse("The animation is damaged: its colours are missing");
        }
        m_file.m_palette.fill(Opaque);
        for (std::size_t i = 0; i < count; ++i) {
            m_file.m_palette[i] = Opaque | (NumberAt(format, place + 4 * i, 4) & ~Opaque);
        }
    }

    void ReadMovie(const Chunk& chunk) {
        if (IsList(chunk, "rec ")) {
            ForEachChunkOf(chunk, [this](const Chunk& part) { ReadFrame(part); });
        } else {
            ReadFrame(chunk);
        }
    }

    void ReadFrame(const Chunk& chunk) {
        const std::string number{static_cast<char>('0' + m_number / 10 % 10),
                                 static_cast<char>('0' + m_number % 10)};
        if (chunk.kind != number + "db" && chunk.kind != number + "dc") {
            return;
        }
        if (!chunk.data.empty()) {
            if (chunk.data.size() < RowSize() * static_cast<std::size_t>(m_file.m_height)) {
                Refuse("The animation is damaged: one of its pictures is too short");
            }
            m_file.m_frames.push_back(chunk.place);
        } else if (!m_file.m_frames.empty()) {
            m_file.m_frames.push_back(m_file.m_frames.back());
        }
    }

    std::size_t RowSize() const {
        return (static_cast<std::size_t>(m_file.m_width) * static_cast<std::size_t>(m_file.m_bits) + 31) /
               32 * 4;
    }

    AviFile& m_file;
    int m_streams = 0, m_number = 0;
    bool m_pictures = false;  // the current stream is the one to show
};

AviFile::AviFile(std::string bytes) : m_bytes(std::move(bytes)), m_frameTime(std::chrono::milliseconds(100)) {
    AviReader(*this).Read();
}

std::vector<std::uint32_t> AviFile::Frame(int number) const {
    const auto byte = [this](std::size_t place) {
        return std::uint32_t{static_cast<unsigned char>(m_bytes[place])};
    };
    const auto width = static_cast<std::size_t>(m_width), height = static_cast<std::size_t>(m_height);
    const std::size_t pixel = static_cast<std::size_t>(m_bits) / 8, row = (width * pixel + 3) / 4 * 4;
    std::vector<std::uint32_t> pixels;
    pixels.reserve(width * height);
    for (std::size_t y = 0; y < height; ++y) {
        std::size_t place =
            m_frames.at(static_cast<std::size_t>(number)) + row * (m_topDown ? y : height - 1 - y);
        for (std::size_t x = 0; x < width; ++x, place += pixel) {
            pixels.push_back(m_bits == 8
                                 ? m_palette[byte(place)]
                                 : Opaque | byte(place + 2) << 16 | byte(place + 1) << 8 | byte(place));
        }
    }
    return pixels;
}
