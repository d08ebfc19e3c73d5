// SPDX-License-Identifier: GPL-3.0-or-later
// Report files on the disk: read whole, written whole or not at all.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace designer {

// What shows whether another program has changed a file.
struct FileStamp {
    std::int64_t modified = 0;  // nanoseconds
    std::int64_t size = 0;
    std::uint64_t number = 0;  // of the file in its file system
    bool operator==(const FileStamp&) const = default;
};

// Returns nullopt if there is no such file.
std::optional<FileStamp> StampOf(const std::filesystem::path& file);

// Whether both names lead to one file: they are equal, or one is a link to what the other one names.
bool IsSameFile(const std::filesystem::path& one, const std::filesystem::path& other);

// Returns the bytes of the file. Raises RuntimeError 53 if it is missing and 75 if it cannot be read or is
// larger than a report may be, each with the file's name.
std::string ReadReportFile(const std::filesystem::path& file);

// Replaces or makes the file whole or not at all; one that is replaced passes its rights on, and a symbolic
// link stays one. A file with several names (hard links) is written where it is, so that all names keep the
// same report: an error may then leave a part of it. Raises as AtomicFile.
void WriteReportFile(const std::filesystem::path& file, std::string_view bytes);

// Whether the bytes are text in UTF-8, and those of a text as lines that an editor shows.
struct PlainText {
    std::string text;  // UTF-8 with line feeds
    bool hasMark = false, isLatin1 = false, hasReturns = false;
};

// Takes the bytes of any file apart, so that BytesOf returns the same bytes for the same text. Only a file
// whose lines end in several ways gets the way of its first line for all.
PlainText PlainTextOf(std::string_view bytes);
// A character that the encoding of the file does not have makes it UTF-8.
std::string BytesOf(const PlainText& plain);

}  // namespace designer
