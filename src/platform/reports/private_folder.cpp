#include "platform/reports/private_folder.h"

#include <string_view>

namespace reports {
namespace {

constexpr std::string_view Prefix = "oxbow-courier-export-";

}  // namespace

PrivateFolder::PrivateFolder() : m_folder(Prefix) {}

}  // namespace reports
