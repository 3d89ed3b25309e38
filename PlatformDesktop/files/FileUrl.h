#pragma once

#include <string>
#include <string_view>

namespace qb {

/// Every byte that is not plain in an address as "%XX". Those of `kept` stay as they are.
std::string percentEncoded(std::string_view text, std::string_view kept = "");
/// The address of a file by its absolute path, whatever bytes that has.
std::string fileUrl(const std::string& path);

}  // namespace qb
