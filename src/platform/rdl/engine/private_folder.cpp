#include "platform/rdl/engine/private_folder.h"

namespace rdl::engine {
namespace {

constexpr std::string_view Prefix = "oxbow-courier-export-";
constexpr std::size_t LongestName = 120;  // bytes; leaves room for the extension everywhere

bool IsRefused(char c) {
    return static_cast<unsigned char>(c) < 0x20 || c == 0x7F ||
           std::string_view("/\\:*?\"<>|").find(c) != std::string_view::npos;
}

}  // namespace

PrivateFolder::PrivateFolder() : m_folder(Prefix) {}

std::string SafeFileName(std::string_view title) {
    std::string name(title);
    for (char& c : name) {
        if (IsRefused(c)) {
            c = '_';
        }
    }
    if (name.size() > LongestName) {
        std::size_t end = LongestName;
        while (end > 0 && (static_cast<unsigned char>(name[end]) & 0xC0) == 0x80) {
            --end;  // not within a character
        }
        name.resize(end);
    }
    while (!name.empty() && (name.back() == ' ' || name.back() == '.')) {
        name.pop_back();
    }
    const std::size_t first = name.find_first_not_of(" .");
    return first == std::string::npos ? "Report" : name.substr(first);
}

}  // namespace rdl::engine
