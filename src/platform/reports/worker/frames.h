// SPDX-License-Identifier: GPL-3.0-or-later
// Frames on the socket between a program and its report process: four bytes with the length of the body, one
// with the kind, and the body. An open file may come with the first byte.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/posix/unique_fd.h"

namespace reports::worker {

// The program sends requests, the process everything else. A beat has no body: the process works.
enum class Kind : std::uint8_t { Request, Answer, Error, Beat };

inline constexpr std::uint32_t LongestBody = 16U << 20;
inline constexpr std::size_t HeadSize = 5;

struct Head {
    std::uint32_t size = 0;
    Kind kind = Kind::Request;
};

struct Frame {
    Kind kind = Kind::Request;
    std::string body;
    UniqueFd file;  // the receiver of the frame owns it
};

// Raises BadMessage if the body is longer than LongestBody.
std::string Framed(Kind kind, std::string_view body);
// Raises BadMessage for an unknown kind and for a body longer than LongestBody.
Head HeadOf(std::string_view bytes);

// Sends as many of the bytes as the socket takes, and the file, if it is not -1, with the first of them.
// Returns their number, or -1 and sets errno, like send.
ssize_t SendSome(int socket, std::string_view bytes, int file);

// For the process, whose socket waits. Returns nullopt at the end of the stream. Raises BadMessage.
std::optional<Frame> WaitForFrame(int socket);
// Returns false if the program is gone. Raises BadMessage if the body is longer than LongestBody.
bool SendFrame(int socket, Kind kind, std::string_view body);

}  // namespace reports::worker
