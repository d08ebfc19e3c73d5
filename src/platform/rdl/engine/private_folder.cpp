#include "platform/rdl/engine/private_folder.h"

#include <string_view>

namespace rdl::engine {
namespace {

constexpr std::string_view Prefix = "oxbow-courier-export-";

}  // namespace

PrivateFolder::PrivateFolder() : m_folder(Prefix) {}

}  // namespace rdl::engine
