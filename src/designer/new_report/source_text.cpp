// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/new_report/source_text.h"

#include <array>

#include "platform/base/ascii.h"

namespace designer {
namespace {

namespace fs = std::filesystem;

struct KnownFile {
    std::string_view extension, provider;
};
constexpr std::array KnownFiles = {
    KnownFile{".csv", "CSV"},    KnownFile{".txt", "CSV"},       KnownFile{".tsv", "CSV"},
    KnownFile{".json", "JSON"},  KnownFile{".xml", "XML"},       KnownFile{".db", "SQLITE"},
    KnownFile{".db3", "SQLITE"}, KnownFile{".sqlite", "SQLITE"}, KnownFile{".sqlite3", "SQLITE"},
};

}  // namespace

std::string_view ProviderOfFile(const std::filesystem::path& file) {
    const std::string extension = ToLower(file.extension().string());
    for (const KnownFile& one : KnownFiles) {
        if (one.extension == extension) {
            return one.provider;
        }
    }
    return {};
}

std::string KnownExtensions() {
    std::string known;
    for (const KnownFile& one : KnownFiles) {
        known += (known.empty() ? "" : ", ") + std::string(one.extension);
    }
    return known;
}

std::string FileNameFrom(const fs::path& folder, const fs::path& file) {
    std::error_code error;
    if (!fs::exists(file, error)) {
        return file.string();
    }
    const fs::path whole = fs::weakly_canonical(fs::absolute(file), error);
    const fs::path relative = whole.lexically_relative(fs::weakly_canonical(folder, error));
    return relative.empty() || *relative.begin() == ".." ? fs::absolute(file).lexically_normal().string()
                                                         : relative.string();
}

std::string InQuotes(std::string_view text, std::string_view open, std::string_view close) {
    std::string quoted(open);
    for (const char c : text) {
        quoted += c;
        quoted += c == close.front() ? close : std::string_view();
    }
    return quoted + std::string(close);
}

std::string ConnectValue(const std::string& text) {
    if (text.find_first_of("=;\"'{}") == std::string::npos) {
        return text;
    }
    return InQuotes(text, "\"", "\"");
}

}  // namespace designer
