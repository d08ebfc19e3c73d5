// SPDX-License-Identifier: GPL-3.0-or-later
#include "scheduler/RunNotes.h"

#include <fstream>
#include <optional>
#include <sstream>
#include <system_error>

#include "platform/base/paths.h"

namespace Global {

namespace {

constexpr const char* EndWord = "end";

// Returns one line for a note, its parts between tabs. A line that was cut off lacks its last word.
std::string LineOf(const RunNote& note) {
    std::string line =
        WordOf(note.run.kind) + '\t' + note.run.reportID + '\t' + note.run.date + '\t' + note.run.time;
    for (const std::string& value : note.values) {
        line += '\t' + value;
    }
    return line + '\t' + EndWord + '\n';
}

std::optional<RunNote> NoteOf(const std::string& line, std::size_t values) {
    std::vector<std::string> parts;
    std::istringstream stream(line);
    for (std::string part; std::getline(stream, part, '\t');) {
        parts.push_back(part);
    }
    constexpr std::ptrdiff_t PartsOfRun = 4;
    if (parts.size() != PartsOfRun + values + 1 || parts.back() != EndWord) {
        return std::nullopt;
    }
    for (const RunKind kind : {RunKind::Schedule, RunKind::Package}) {
        if (parts[0] == WordOf(kind)) {
            return RunNote{{kind, parts[1], parts[2], parts[3]},
                           {parts.begin() + PartsOfRun, parts.end() - 1}};
        }
    }
    return std::nullopt;
}

}  // namespace

const std::string& WordOf(RunKind kind) {
    static const std::string schedule = "schedule";
    static const std::string package = "package";
    return kind == RunKind::Schedule ? schedule : package;
}

std::filesystem::path RunNotesFile(const std::string& name) {
    return paths::ToMachine(AppPath()) / name;
}

std::vector<RunNote> ReadRunNotes(const std::filesystem::path& file, std::size_t values) {
    std::vector<RunNote> notes;
    std::ifstream stream(file);
    for (std::string line; std::getline(stream, line);) {
        if (auto note = NoteOf(line, values)) {
            notes.push_back(std::move(*note));
        }
    }
    return notes;
}

void WriteRunNotes(const std::filesystem::path& file, const std::vector<RunNote>& notes) {
    if (notes.empty()) {
        std::error_code ignored;
        std::filesystem::remove(file, ignored);
        return;
    }
    std::string text;
    for (const RunNote& note : notes) {
        text += LineOf(note);
    }
    std::ofstream(file, std::ios::binary | std::ios::trunc) << text;
}

}  // namespace Global
